#include "store/placar.h"

#include "store/ini.h"
#include "store/numeros.h"
#include "store/recordes.h"

#include <limits>

namespace velmora {

Placar::Placar(std::filesystem::path arquivo) : arquivo_(std::move(arquivo)) {}

std::int64_t Placar::Conta(const std::string& chave) const {
    return NumeroTolerante(LeIni("CPU", chave, arquivo_, ""));
}

bool Placar::SomaUm(const std::string& chave) {
    EdicaoIni e(arquivo_);
    std::int64_t n = NumeroTolerante(e.Le("CPU", chave, ""));
    if (n < std::numeric_limits<std::int64_t>::max()) ++n;
    e.Grava("CPU", chave, std::to_string(n));
    return e.Salva();
}

std::int64_t Placar::Venceu(int nivel) const {
    return Conta("Venceu" + std::to_string(nivel));
}
std::int64_t Placar::Perdeu(int nivel) const {
    return Conta("Perdeu" + std::to_string(nivel));
}
bool Placar::SomaVenceu(int nivel) {
    return SomaUm("Venceu" + std::to_string(nivel));
}
bool Placar::SomaPerdeu(int nivel) {
    return SomaUm("Perdeu" + std::to_string(nivel));
}

std::string Placar::Texto(int nivel) const {
    return "No nível " + NomeDoNivel(nivel) + ":\nCPU já obteve " + std::to_string(Venceu(nivel)) +
           " vitórias e " + std::to_string(Perdeu(nivel)) + " Derrotas";
}

} // namespace velmora
