#include "store/configuracao.h"

#include "store/numeros.h"
#include "store/texto1252.h"

#include <limits>

namespace velmora {

namespace {

std::string CaminhoDa(std::string_view subchave) {
    std::string c(ChaveConfig);
    if (!subchave.empty()) c += "\\" + std::string(subchave);
    return c;
}

bool LeBool(clsRegistryAccess& reg, std::string_view nome) {
    const bool padrao = PadraoDe(nome) == "True";
    return TextoParaBool(LeOpcao(reg, nome, PadraoDe(nome)), padrao);
}

int Inteiro(std::string_view texto) {
    return static_cast<int>(
        NumeroTolerante(texto, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace

std::string LeConfig(clsRegistryAccess& reg, std::string_view nome, std::string_view padrao,
                     std::string_view subchave) {
    return reg.ReadString(CaminhoDa(subchave), nome, padrao);
}

bool GravaConfig(clsRegistryAccess& reg, std::string_view nome, std::string_view valor,
                 std::string_view subchave) {
    reg.WriteString(CaminhoDa(subchave), nome, valor);
    return LeConfig(reg, nome, "", subchave) == valor;
}

std::string LeOpcao(clsRegistryAccess& reg, std::string_view nome, std::string_view padrao) {
    return reg.ReadString(ChaveConfig, nome, padrao);
}

bool GravaOpcao(clsRegistryAccess& reg, std::string_view nome, std::string_view valor) {
    return reg.WriteString(ChaveConfig, nome, valor) != 0;
}

bool TextoParaBool(std::string_view texto, bool padrao) {
    const std::string t = MinusculasCp1252(Utf8ParaCp1252(texto));
    if (t == "true" || t == "verdadeiro") return true;
    if (t == "false" || t == "falso") return false;
    return padrao;
}

std::string BoolParaTexto(bool valor) {
    return valor ? "True" : "False";
}

Configuracao GetConfig(clsRegistryAccess& reg) {
    Configuracao c;
    c.MarcaMovimentos = LeBool(reg, "MarcaMovimentos");
    c.TocarSom = LeBool(reg, "TocarSom");
    c.TocarMusica = LeBool(reg, "TocarMusica");
    const auto v = NumeroTolerante(LeOpcao(reg, "Velocit", "2"));
    c.Velocit = v > 0 && v <= 255 ? static_cast<std::uint8_t>(v) : 2;
    c.HabilitaChat = LeBool(reg, "HabilitaChat");
    c.HabilitaChatIngles = LeBool(reg, "HabilitaChatIngles");
    return c;
}

void SetConfig(clsRegistryAccess& reg, const Configuracao& c) {
    clsRegistryAccess::Lote lote(reg);
    GravaOpcao(reg, "TocarSom", BoolParaTexto(c.TocarSom));
    GravaOpcao(reg, "TocarMusica", BoolParaTexto(c.TocarMusica));
    GravaOpcao(reg, "Velocit", std::to_string(c.Velocit));
    GravaOpcao(reg, "HabilitaChat", BoolParaTexto(c.HabilitaChat));
    GravaOpcao(reg, "HabilitaChatIngles", BoolParaTexto(c.HabilitaChatIngles));
    GravaOpcao(reg, "MarcaMovimentos", BoolParaTexto(c.MarcaMovimentos));
}

int PortaPadrao(clsRegistryAccess& reg) {
    return Inteiro(LeOpcao(reg, "PortaDefault", "2001"));
}

int PortaAtual(clsRegistryAccess& reg) {
    return Inteiro(LeOpcao(reg, "mpt", std::to_string(PortaPadrao(reg))));
}

std::string_view PadraoDe(std::string_view nome) {
    for (const auto& p : PadroesDasOpcoes)
        if (p.nome == nome) return p.padrao;
    return {};
}

std::string LeMemoria(clsRegistryAccess& reg, std::string_view nome) {
    return LeOpcao(reg, nome, PadraoDe(nome));
}

bool LeMarcado(clsRegistryAccess& reg, std::string_view nome) {
    return LeMemoria(reg, nome) == "1";
}

} // namespace velmora
