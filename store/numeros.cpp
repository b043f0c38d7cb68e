#include "store/numeros.h"

#include <algorithm>
#include <limits>

namespace velmora {

std::int64_t NumeroTolerante(std::string_view texto) {
    size_t i = 0;
    while (i < texto.size() && (texto[i] == ' ' || texto[i] == '\t')) ++i;
    bool negativo = false;
    if (i < texto.size() && (texto[i] == '+' || texto[i] == '-')) negativo = texto[i++] == '-';
    constexpr auto limite = std::numeric_limits<std::int64_t>::max();
    std::int64_t v = 0;
    for (; i < texto.size() && texto[i] >= '0' && texto[i] <= '9'; ++i) {
        const int d = texto[i] - '0';
        if (v > (limite - d) / 10)
            return negativo ? std::numeric_limits<std::int64_t>::min() : limite;
        v = v * 10 + d;
    }
    return negativo ? -v : v;
}

std::int64_t NumeroTolerante(std::string_view texto, std::int64_t minimo, std::int64_t maximo) {
    return std::clamp(NumeroTolerante(texto), minimo, maximo);
}

} // namespace velmora
