#pragma once
// Whole-file reads with a size limit, atomic rewrites and the copy of a damaged file.
// A rewrite goes to a temporary file in the same folder, is flushed to the disk and then
// renamed over the old one: a crash or a full disk leaves either the old file or the new.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace velmora {

struct Leitura {
    enum class Estado {
        Ausente, // no such file: reads as empty, may be written freely
        Lido,    // `bytes` holds the whole file
        Grande,  // larger than the limit: not read, must be kept before any rewrite
        Erro,    // exists but can't be read (a folder, no permission): never rewrite it
    };
    Estado estado = Estado::Ausente;
    std::string bytes;
    std::uintmax_t tamanho = 0;
};

Leitura LeArquivo(const std::filesystem::path& arquivo, std::size_t limite);

// Replaces the file with `bytes`, creating its folder when needed. A new file gets
// `modoNovo`; an existing one keeps its permissions. False when anything failed, and
// then the old file is untouched.
bool GravaArquivoAtomico(const std::filesystem::path& arquivo, std::string_view bytes,
                         mode_t modoNovo);

// Copies the file beside itself as "<name>.danificado" (or ".danificado.2" and so on when
// that name is taken, never replacing an earlier copy). Gives the copy's path.
std::optional<std::filesystem::path> GuardaCopiaDanificada(const std::filesystem::path& arquivo);

// What tells one state of a file from another: a rewrite by another copy of the program
// or by hand changes it.
struct Identidade {
    bool existe = false;
    dev_t dispositivo = 0;
    ino_t inode = 0;
    off_t tamanho = 0;
    std::int64_t segundos = 0;
    std::int64_t nanos = 0;
    bool operator==(const Identidade&) const = default;
};
Identidade IdentidadeDe(const std::filesystem::path& arquivo);

} // namespace velmora
