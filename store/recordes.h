#pragma once
// The records file: one table of the fastest wins for each level ("Nivel1".."Nivel5", and
// "Nivel8" for the tournament), 100 places, "N<pos>" the name and "P<pos>" the time in
// whole seconds. A missing name is empty, a missing time 999999 (a free place).
#include "store/caminhos.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

inline constexpr int PosicoesDeRecorde = 100;
inline constexpr std::int32_t TempoLivre = 999999;

struct Recorde {
    std::string nome;
    std::int32_t tempo = TempoLivre;
};

class Recordes {
  public:
    explicit Recordes(std::filesystem::path arquivo = ArquivoRecordes());

    std::string NomeRecord(int nivel, int posicao) const;
    // A time that isn't a number reads as 0.
    std::int32_t TempoRecord(int nivel, int posicao) const;
    // Inserts at `posicao` (1 to 100): the entries from there down move one place, the
    // 100th is lost. One rewrite of the file. False when the position is out of range or
    // the write failed (the file is then unchanged).
    bool GravaRecord(std::string_view nome, std::int32_t tempo, int nivel, int posicao);
    // The table as a viewer shows it: from position 1 up to the first empty name.
    std::vector<Recorde> Tabela(int nivel) const;

    const std::filesystem::path& Arquivo() const { return arquivo_; }

  private:
    std::filesystem::path arquivo_;
};

// "Iniciante", "Amador", "Intermediário", "Experiente", "Profissional", "Torneio" for
// 1 to 5 and 8; empty for any other level.
std::string NomeDoNivel(int nivel);

} // namespace velmora
