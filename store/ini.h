#pragma once
// The ini text format of the records and tally files: "[section]" lines and "key=value"
// lines, CR LF line ends, Windows-1252 on disk. Sections and keys match without regard to
// case; blanks around names and values are ignored, as is the order of lines. A file
// edited by hand is read as it stands, and a rewrite keeps every line it doesn't change.
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "store/arquivos.h"

namespace velmora {

// The lines of one file, in Windows-1252, without their line ends.
class DocumentoIni {
  public:
    static DocumentoIni Interpreta(std::string bytes);
    // The value of the first matching key in a matching section; a value in quotes loses
    // them. Nothing when there is no such key.
    std::optional<std::string> Le(std::string_view secao, std::string_view chave) const;
    // Replaces the key's line, or adds it at the end of its section, or adds the section at
    // the end of the file. Line breaks and NULs in the texts become blanks.
    void Grava(std::string_view secao, std::string_view chave, std::string_view valor);
    std::string Texto() const;

  private:
    std::vector<std::string> linhas_;
};

// A run of reads and writes of one file, read once and rewritten once (atomically) by
// Salva. Texts are UTF-8.
class EdicaoIni {
  public:
    explicit EdicaoIni(std::filesystem::path arquivo);
    // `padrao` when the key is missing or empty. At most 254 bytes of the value, up to its
    // first NUL, as a 255-byte buffer gives them.
    std::string Le(std::string_view secao, std::string_view chave, std::string_view padrao) const;
    void Grava(std::string_view secao, std::string_view chave, std::string_view valor);
    // Creates folder and file when needed. A file too large to read is first copied aside
    // (".danificado"); one that can't be read is never replaced. False on any failure.
    bool Salva();

    static constexpr std::size_t LimiteArquivo = 1u << 20;

  private:
    std::filesystem::path arquivo_;
    Leitura::Estado estado_;
    DocumentoIni documento_;
};

// One key of an ini file: `padrao` when file, section or key is missing or the value empty.
std::string LeIni(std::string_view secao, std::string_view chave,
                  const std::filesystem::path& arquivo, std::string_view padrao);
// Writes one key, creating file and section when needed. False when the write failed.
bool GravaIni(std::string_view secao, std::string_view chave, std::string_view valor,
              const std::filesystem::path& arquivo);

} // namespace velmora
