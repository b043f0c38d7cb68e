#include "server/senha.h"

#include <sodium.h>

#include <array>
#include <mutex>

namespace velmora::servidor {

namespace {

void Inicia() {
    static std::once_flag uma;
    std::call_once(uma, [] {
        if (sodium_init() < 0) std::abort();
    });
}

} // namespace

std::string HashSenha(const std::string& senha, const CustoSenha& custo) {
    Inicia();
    std::array<char, crypto_pwhash_STRBYTES> saida{};
    if (crypto_pwhash_str_alg(saida.data(), senha.data(), senha.size(), custo.operacoes,
                              custo.memoria, crypto_pwhash_ALG_ARGON2ID13) != 0)
        return {};
    return std::string(saida.data());
}

bool ConfereSenha(const std::string& senha, const std::string& hash, const CustoSenha& custo) {
    Inicia();
    if (hash.empty() || hash.size() >= crypto_pwhash_STRBYTES) {
        // Same work as a real check, and a refusal
        (void)HashSenha(senha, custo);
        return false;
    }
    return crypto_pwhash_str_verify(hash.c_str(), senha.data(), senha.size()) == 0;
}

} // namespace velmora::servidor
