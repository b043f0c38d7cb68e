#pragma once
// Password hashes: argon2id from libsodium, salted, in the self-describing text form
// ("$argon2id$v=19$m=...,t=...,p=1$salt$hash"). The password itself is never kept.
#include <cstddef>
#include <string>

namespace velmora::servidor {

struct CustoSenha {
    unsigned long long operacoes = 2;
    std::size_t memoria = 19u * 1024u * 1024u; // bytes
};

// Empty text when libsodium can't make the hash (out of memory).
std::string HashSenha(const std::string& senha, const CustoSenha& custo);
// Also spends the same effort when `hash` is empty, so that an unknown nick and a wrong
// password take the same time.
bool ConfereSenha(const std::string& senha, const std::string& hash, const CustoSenha& custo);

} // namespace velmora::servidor
