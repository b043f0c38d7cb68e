#include "service/endereco.h"

#include "store/configuracao.h"

#include <cstdlib>

namespace velmora {

namespace {

std::string Ambiente(const char* nome) {
    const char* v = std::getenv(nome);
    return v ? NormalizaEndereco(v) : std::string();
}

} // namespace

std::string NormalizaEndereco(std::string_view endereco) {
    const auto ini = endereco.find_first_not_of(" \t\r\n");
    if (ini == std::string_view::npos) return {};
    const auto fim = endereco.find_last_not_of(" \t\r\n");
    std::string e(endereco.substr(ini, fim - ini + 1));
    while (!e.empty() && e.back() == '/') e.pop_back();
    if (e.empty()) return {};
    if (e.find("://") == std::string::npos) e = "http://" + e;
    return e;
}

std::string EnderecoServico() {
    if (auto e = Ambiente("VELMORA_SERVICO"); !e.empty()) return e;
    return std::string(EnderecoPadrao);
}

std::string EnderecoServico(clsRegistryAccess& reg) {
    if (auto e = Ambiente("VELMORA_SERVICO"); !e.empty()) return e;
    if (auto e = NormalizaEndereco(LeOpcao(reg, "EnderecoServico", "")); !e.empty()) return e;
    return std::string(EnderecoPadrao);
}

std::string EnderecoTestePorta(clsRegistryAccess& reg) {
    if (auto e = Ambiente("VELMORA_TESTEPORTA"); !e.empty()) return e;
    if (auto e = NormalizaEndereco(LeOpcao(reg, "EnderecoTestePorta", "")); !e.empty()) return e;
    return EnderecoServico(reg);
}

} // namespace velmora
