#pragma once
// The tally file: in section "CPU", "Venceu<n>" counts the games the computer won at level
// n and "Perdeu<n>" those it lost. Each event reads the count, adds one and writes it back.
#include "store/caminhos.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace velmora {

class Placar {
  public:
    explicit Placar(std::filesystem::path arquivo = ArquivoPlacar());

    // A missing key or text that isn't a number counts 0.
    std::int64_t Venceu(int nivel) const;
    std::int64_t Perdeu(int nivel) const;
    // One more; false when the write failed.
    bool SomaVenceu(int nivel);
    bool SomaPerdeu(int nivel);

    // The tally line of a level: "No nível <name>:" and, on a second line,
    // "CPU já obteve <won> vitórias e <lost> Derrotas".
    std::string Texto(int nivel) const;

  private:
    std::int64_t Conta(const std::string& chave) const;
    bool SomaUm(const std::string& chave);
    std::filesystem::path arquivo_;
};

} // namespace velmora
