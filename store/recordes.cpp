#include "store/recordes.h"

#include "store/ini.h"
#include "store/numeros.h"

#include <limits>

namespace velmora {

namespace {

std::string Secao(int nivel) {
    return "Nivel" + std::to_string(nivel);
}
std::string ChaveNome(int p) {
    return "N" + std::to_string(p);
}
std::string ChaveTempo(int p) {
    return "P" + std::to_string(p);
}

std::int32_t Tempo(const EdicaoIni& e, int nivel, int posicao) {
    return static_cast<std::int32_t>(NumeroTolerante(
        e.Le(Secao(nivel), ChaveTempo(posicao), std::to_string(TempoLivre)),
        std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

} // namespace

Recordes::Recordes(std::filesystem::path arquivo) : arquivo_(std::move(arquivo)) {}

std::string Recordes::NomeRecord(int nivel, int posicao) const {
    return LeIni(Secao(nivel), ChaveNome(posicao), arquivo_, "");
}

std::int32_t Recordes::TempoRecord(int nivel, int posicao) const {
    return Tempo(EdicaoIni(arquivo_), nivel, posicao);
}

bool Recordes::GravaRecord(std::string_view nome, std::int32_t tempo, int nivel, int posicao) {
    if (posicao < 1 || posicao > PosicoesDeRecorde) return false;
    EdicaoIni e(arquivo_);
    const std::string secao = Secao(nivel);
    // from the bottom up, so that each entry is read before it is overwritten
    for (int i = PosicoesDeRecorde; i > posicao; --i) {
        e.Grava(secao, ChaveNome(i), e.Le(secao, ChaveNome(i - 1), ""));
        e.Grava(secao, ChaveTempo(i), std::to_string(Tempo(e, nivel, i - 1)));
    }
    e.Grava(secao, ChaveNome(posicao), nome);
    e.Grava(secao, ChaveTempo(posicao), std::to_string(tempo));
    return e.Salva();
}

std::vector<Recorde> Recordes::Tabela(int nivel) const {
    const EdicaoIni e(arquivo_);
    std::vector<Recorde> t;
    for (int p = 1; p <= PosicoesDeRecorde; ++p) {
        std::string nome = e.Le(Secao(nivel), ChaveNome(p), "");
        if (nome.empty()) break;
        t.push_back({std::move(nome), Tempo(e, nivel, p)});
    }
    return t;
}

std::string NomeDoNivel(int nivel) {
    switch (nivel) {
    case 1:
        return "Iniciante";
    case 2:
        return "Amador";
    case 3:
        return "Intermediário";
    case 4:
        return "Experiente";
    case 5:
        return "Profissional";
    case 8:
        return "Torneio";
    default:
        return "";
    }
}

} // namespace velmora
