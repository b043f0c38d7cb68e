#include "core/utilidades.h"

#include <cstdio>

namespace velmora {

std::string Troca(std::string texto, const std::string& procurado, const std::string& novo) {
    // Searching from the start again would never end if the new text held the old one.
    if (procurado.empty() || novo.find(procurado) != std::string::npos) return texto;
    for (size_t pos = texto.find(procurado); pos != std::string::npos;
         pos = texto.find(procurado)) {
        texto.replace(pos, procurado.size(), novo);
    }
    return texto;
}

std::string Pedaco(const std::string& texto, const std::string& sep, int n) {
    if (sep.empty() || n < 1) return {};
    std::string t = texto;
    if (t.compare(0, sep.size(), sep) != 0) t = sep + t;
    if (t.size() < 2 * sep.size() || t.compare(t.size() - sep.size(), sep.size(), sep) != 0)
        t += sep;
    size_t pos = 0;
    for (int i = 1; i < n; ++i) {
        pos = t.find(sep, pos + sep.size());
        if (pos == std::string::npos) return {};
    }
    const size_t ini = pos + sep.size();
    const size_t fim = t.find(sep, ini);
    if (fim == std::string::npos) return {};
    return t.substr(ini, fim - ini);
}

std::string FormataTempo(long segundos) {
    if (segundos < 0) segundos = 0;
    char b[32];
    std::snprintf(b, sizeof b, "%02ld:%02ld:%02ld", segundos / 3600, (segundos / 60) % 60,
                  segundos % 60);
    return b;
}

} // namespace velmora
