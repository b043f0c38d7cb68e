#pragma once
// The debug log: one stream of free text lines, off unless VELMORA_DEBUG=1. Each line is
// the time of day, two blanks and the text; it is appended to debug.txt in the data folder
// and handed to a listener (the diagnostic window sets one). One object per running copy.
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace velmora {

class Diario {
  public:
    // On when VELMORA_DEBUG is "1"; the file is debug.txt in the data folder.
    Diario();
    Diario(bool ligado, std::filesystem::path arquivo);

    bool Ligado() const { return ligado_; }
    void Liga(bool ligado) { ligado_ = ligado; }
    const std::filesystem::path& Arquivo() const { return arquivo_; }

    // Off, does nothing. On, writes "hh:mm:ss  texto" to the file and to the listener.
    void LogDebug(std::string_view texto) const;

    // Receives each whole line, without its line end.
    std::function<void(const std::string& linha)> ouvinte;
    // Time of day in seconds since midnight; the local clock unless a test sets another.
    std::function<double()> relogio;

  private:
    bool ligado_;
    std::filesystem::path arquivo_;
};

} // namespace velmora
