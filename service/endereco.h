#pragma once
// Where the service lives. Both addresses are a scheme and a host (and port), without a
// path or a closing "/". The build's default is the local velmora-servico; the setting
// "EnderecoServico" moves it, and the environment variable VELMORA_SERVICO moves it again
// over the setting. The port test endpoint follows the service unless "EnderecoTestePorta"
// or VELMORA_TESTEPORTA names another host.
#include "store/registro.h"

#include <string>
#include <string_view>

namespace velmora {

inline constexpr std::string_view EnderecoPadrao = "http://127.0.0.1:8080";
inline constexpr std::string_view VersaoServico = "3.9.0";

std::string EnderecoServico(clsRegistryAccess& reg);
// The same where no settings are at hand: the environment, else the build's default.
std::string EnderecoServico();
std::string EnderecoTestePorta(clsRegistryAccess& reg);

// An address as the requests use it: trimmed, "http://" in front when no scheme is given,
// no "/" at the end. Empty stays empty.
std::string NormalizaEndereco(std::string_view endereco);

} // namespace velmora
