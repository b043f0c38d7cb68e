#include "service/endereco.h"

#include <cstdlib>

namespace velmora {

std::string EnderecoServico() {
    std::string e = "http://127.0.0.1:8080";
    if (const char* v = std::getenv("VELMORA_SERVICO"); v && *v) e = v;
    while (!e.empty() && e.back() == '/') e.pop_back();
    return e;
}

} // namespace velmora
