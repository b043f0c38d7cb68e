#include "core/jogada.h"

#include "core/casas.h"
#include "core/fazjogada.h"

namespace velmora {

std::string JogadaEmNumeros(const Jogada& j) {
    std::string s;
    for (int i = 0; i < j.tam; ++i) {
        if (i) s += '-';
        s += std::to_string(j.c[i]);
    }
    return s;
}

std::string JogadaEmNomes(const Jogada& j) {
    std::string s;
    for (int i = 0; i < j.tam; ++i) {
        if (i) s += '-';
        s += NomeCasa(j.c[i]);
    }
    return s;
}

bool JogadaNoTabuleiro(const uint8_t* s, int n) {
    if (n < 2) return false;
    for (int i = 0; i < n; ++i) {
        // the third byte of a step may be 0 only in a plain move, which has no third byte
        if (!CasaDoTabuleiro(s[i])) return false;
    }
    return true;
}

} // namespace velmora
