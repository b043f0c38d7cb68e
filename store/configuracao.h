#pragma once
// The program's settings: text values under one key of the registry layer. Booleans are
// stored as "True"/"False" and read in any of the forms of TextoParaBool; numbers are
// plain decimal text, read tolerantly. Every read that fails gives the default, so a first
// run with no key at all works.
#include "store/registro.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

inline constexpr std::string_view ChaveConfig = "HKCU\\Software\\Norvane\\Velmora Ace";

// The six program options, read once at start (GetConfig) and written once at the end
// (SetConfig). Field names are the value names.
struct Configuracao {
    bool MarcaMovimentos = true;
    bool TocarSom = true;
    bool TocarMusica = false;
    std::uint8_t Velocit = 2; // animation delay factor; a stored 0 reads as 2
    bool HabilitaChat = true;
    bool HabilitaChatIngles = true;
    bool operator==(const Configuracao&) const = default;
};

// A value under the key, or under its sub-key `subchave` when not empty.
std::string LeConfig(clsRegistryAccess& reg, std::string_view nome, std::string_view padrao,
                     std::string_view subchave = "");
// Writes, reads back, and gives true when the text read is the text written.
bool GravaConfig(clsRegistryAccess& reg, std::string_view nome, std::string_view valor,
                 std::string_view subchave = "");
// The same for the key itself; GravaOpcao gives the registry layer's success.
std::string LeOpcao(clsRegistryAccess& reg, std::string_view nome, std::string_view padrao);
bool GravaOpcao(clsRegistryAccess& reg, std::string_view nome, std::string_view valor);

// "true"/"verdadeiro" and "false"/"falso", in any case; any other text gives `padrao`.
bool TextoParaBool(std::string_view texto, bool padrao);
// How a boolean is stored: "True" or "False".
std::string BoolParaTexto(bool valor);

Configuracao GetConfig(clsRegistryAccess& reg);
// One rewrite of the store for the six values.
void SetConfig(clsRegistryAccess& reg, const Configuracao& c);

// The default listening port, "PortaDefault" (2001), and the port in use, "mpt"
// (defaulting to the former).
int PortaPadrao(clsRegistryAccess& reg);
int PortaAtual(clsRegistryAccess& reg);

// The defaults of the values that the dialogs read through LeOpcao.
struct PadraoDeOpcao {
    std::string_view nome;
    std::string_view padrao;
};
inline constexpr std::array<PadraoDeOpcao, 23> PadroesDasOpcoes = {{
    {"TocarSom", "True"},
    {"TocarMusica", "False"},
    {"Velocit", "2"},
    {"HabilitaChat", "True"},
    {"HabilitaChatIngles", "True"},
    {"MarcaMovimentos", "True"},
    {"OPTJ", "1"},
    {"DF", "3"},
    {"Regra1", "1"},
    {"Regra2", "1"},
    {"Regra3", "1"},
    {"TxtHC", "Jogador"},
    {"TxtHH1", "Jogador 1"},
    {"TxtHH2", "Jogador 2"},
    {"Text4", "Jogador"},
    {"TxtRede", "Jogador"},
    {"ChkChat", "1"},
    {"Check1", "1"},
    {"ImGTPON", "2"},
    {"PortaDefault", "2001"},
    {"Numerodesistencias", "0"},
    {"Text1", ""},
    {"Text3", ""},
}};
// The default of a value name, empty for a name without one (case as in the table).
std::string_view PadraoDe(std::string_view nome);
// LeOpcao with the default of the table.
std::string LeMemoria(clsRegistryAccess& reg, std::string_view nome);
// A check box memory ("ChkChat", "Check1"): checked only when the text is "1".
bool LeMarcado(clsRegistryAccess& reg, std::string_view nome);

} // namespace velmora
