#include "store/arvoreregistro.h"

#include "store/texto1252.h"

#include <algorithm>

namespace velmora {

const ChaveRegistro* ChaveRegistro::Filha(std::string_view n) const {
    auto it = filhas.find(MinusculasCp1252(n));
    return it == filhas.end() ? nullptr : &it->second;
}

ChaveRegistro* ChaveRegistro::Filha(std::string_view n) {
    auto it = filhas.find(MinusculasCp1252(n));
    return it == filhas.end() ? nullptr : &it->second;
}

ChaveRegistro& ChaveRegistro::CriaFilha(std::string_view n) {
    auto [it, nova] = filhas.try_emplace(MinusculasCp1252(n));
    if (nova) it->second.nome = std::string(n);
    return it->second;
}

bool ChaveRegistro::ApagaFilha(std::string_view n) {
    return filhas.erase(MinusculasCp1252(n)) > 0;
}

const ValorRegistro* ChaveRegistro::Valor(std::string_view n) const {
    auto it = valores.find(MinusculasCp1252(n));
    return it == valores.end() ? nullptr : &it->second;
}

void ChaveRegistro::PoeValor(std::string_view n, int tipo, std::string dados) {
    auto [it, novo] = valores.try_emplace(MinusculasCp1252(n));
    if (novo) {
        it->second.nome = std::string(n);
        it->second.ordem = proximaOrdem++;
    }
    it->second.tipo = tipo;
    it->second.dados = std::move(dados);
}

bool ChaveRegistro::ApagaValor(std::string_view n) {
    return valores.erase(MinusculasCp1252(n)) > 0;
}

std::vector<const ValorRegistro*> ChaveRegistro::ValoresEmOrdem() const {
    std::vector<const ValorRegistro*> v;
    v.reserve(valores.size());
    for (const auto& [_, valor] : valores) v.push_back(&valor);
    std::sort(v.begin(), v.end(), [](auto* a, auto* b) { return a->ordem < b->ordem; });
    return v;
}

bool NomeDeValorValido(std::string_view nome) {
    return nome.size() <= MaxNomeValor && nome.find_first_of("\r\n") == std::string_view::npos;
}

std::optional<std::size_t> IndiceDaRaiz(std::string_view nome) {
    for (std::size_t i = 0; i < Raizes.size(); ++i)
        if (IguaisSemCaixa(nome, Raizes[i].longo) || IguaisSemCaixa(nome, Raizes[i].curto))
            return i;
    return std::nullopt;
}

const ChaveRegistro* ArvoreRegistro::Chave(std::size_t raiz,
                                           const std::vector<std::string>& partes) const {
    const ChaveRegistro* c = &raizes.at(raiz);
    for (const auto& p : partes)
        if (!(c = c->Filha(p))) return nullptr;
    return c;
}

ChaveRegistro* ArvoreRegistro::Chave(std::size_t raiz, const std::vector<std::string>& partes) {
    ChaveRegistro* c = &raizes.at(raiz);
    for (const auto& p : partes)
        if (!(c = c->Filha(p))) return nullptr;
    return c;
}

ChaveRegistro& ArvoreRegistro::CriaChave(std::size_t raiz, const std::vector<std::string>& partes) {
    ChaveRegistro* c = &raizes.at(raiz);
    for (const auto& p : partes) c = &c->CriaFilha(p);
    return *c;
}

std::optional<std::vector<std::string>> PartesDoCaminho(std::string_view subchave) {
    std::vector<std::string> partes;
    size_t i = 0;
    while (i <= subchave.size()) {
        size_t f = subchave.find('\\', i);
        if (f == std::string_view::npos) f = subchave.size();
        if (f > i) {
            const std::string_view parte = subchave.substr(i, f - i);
            if (parte.size() > MaxNomeChave || partes.size() >= MaxProfundidade)
                return std::nullopt;
            for (char c : parte)
                if (static_cast<unsigned char>(c) < 0x20) return std::nullopt;
            partes.emplace_back(parte);
        }
        i = f + 1;
    }
    return partes;
}

} // namespace velmora
