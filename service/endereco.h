#pragma once
// Where the web service lives.
#include <string>

namespace velmora {

// The service's base address (scheme and host, no path, no "/" at the end):
// VELMORA_SERVICO when set, else the build's default.
std::string EnderecoServico();

} // namespace velmora
