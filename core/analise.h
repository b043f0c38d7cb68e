#pragma once
// What the side to move can play, read off the masks in a few word operations without
// building the list: whether it can take, with which pieces, or only move. In a header, so
// that the search and perft reach it without going through the generator.
#include "core/mascaras.h"

namespace velmora {

struct Analise {
    // The value MaiorTexto would end with when no piece can take (2 with a plain move,
    // 1 with none); 3 when some piece can take; 0 when only the list can tell (an
    // unknown rule set, a piece without a number).
    int tipo = 0;
    // The squares of the pieces that can take.
    Mascara tomam = 0;
};

namespace analise {

// 1 when the first piece that a flying king on bit s meets along direction d, past free
// squares and before the edge, is in `alvos`: the pieces that are not the king's own and
// have a free square behind them along d.
inline int SaltaLonge(int s, int d, Mascara ocupadas, Mascara alvos) {
    const Mascara x = Raios[s][d] & ocupadas;
    if (!(x & alvos)) return 0; // nothing to take on this ray at all
    const int w = PrimeiraCasa(x, d);
    return static_cast<int>((alvos >> w) & 1);
}

// The flying kings of `damas` that can take going along step d: the first piece each
// meets past free squares is one of `alheias` with a free square behind it. The targets
// are spread back against d through the free squares (1, 2, then 4 steps at a time, a
// step off a row's edge landing on a light square, which is never free).
template <int d> inline Mascara VeemAlvos(Mascara damas, Mascara alheias, Mascara vazias) {
    Mascara alcance = alheias & Ve<d>(vazias), livres = vazias;
    alcance |= livres & Ve<d>(alcance);
    livres &= Ve<d>(livres);
    alcance |= livres & Ve<d>(Ve<d>(alcance));
    livres &= Ve<d>(Ve<d>(livres));
    alcance |= livres & Ve<d>(Ve<d>(Ve<d>(Ve<d>(alcance))));
    return damas & Ve<d>(alcance);
}

// Short jumps along step d from the pieces of `de` over those of `inimigas`.
template <int d> inline Mascara Salta(Mascara de, Mascara inimigas, Mascara vazias) {
    return de & Ve<d>(inimigas) & Ve<d>(Ve<d>(vazias));
}

// The mover's pieces are taken from the masks of the mailbox: in every position that
// MontaPosicao and FazJogada build they are exactly the pieces of Pecas, each with its
// number. A piece without a number (a thirteenth one) or on a light square leaves the
// question to the slow way.
template <int Lado> Analise AnalisaLado(const Mascaras& m, int regra) {
    constexpr int f1 = Lado == 1 ? -11 : 11, f2 = Lado == 1 ? -9 : 9;
    Analise a;
    if (m.soLenta[Lado - 1]) return a;
    const Mascara proprias = m.lados[Lado - 1], inimigas = m.lados[2 - Lado], v = m.vazias;
    const Mascara damas = proprias & m.damas, homens = proprias & ~m.damas;
    const Mascara anda = (homens & (Ve<f1>(v) | Ve<f2>(v))) |
                         (damas & (Ve<-11>(v) | Ve<-9>(v) | Ve<9>(v) | Ve<11>(v)));
    // A man takes forward, and backward too under rule set 1; a king of rule set 4 takes
    // like a man in every direction.
    a.tomam = Salta<f1>(homens, inimigas, v) | Salta<f2>(homens, inimigas, v);
    if (regra == 1) a.tomam |= Salta<-f1>(homens, inimigas, v) | Salta<-f2>(homens, inimigas, v);
    if (regra == 4) {
        a.tomam |= Salta<-11>(damas, inimigas, v) | Salta<-9>(damas, inimigas, v) |
                   Salta<9>(damas, inimigas, v) | Salta<11>(damas, inimigas, v);
    } else if (damas & (damas - 1)) {
        // Two kings or more: from the pieces each king could take along a direction, back
        // through the free squares to the kings that see them, all kings at once.
        const Mascara alheias = ~v & ~proprias;
        a.tomam |= VeemAlvos<-11>(damas, alheias, v) | VeemAlvos<-9>(damas, alheias, v) |
                   VeemAlvos<9>(damas, alheias, v) | VeemAlvos<11>(damas, alheias, v);
    } else if (damas) {
        const Mascara ocupadas = ~v, alheias = ocupadas & ~proprias;
        const Mascara alvos[5] = {0, alheias & Ve<-11>(v), alheias & Ve<-9>(v), alheias & Ve<9>(v),
                                  alheias & Ve<11>(v)};
        for (Mascara resto = damas; resto; resto &= resto - 1) {
            const int s = __builtin_ctzll(resto);
            const int toma =
                SaltaLonge(s, 1, ocupadas, alvos[1]) | SaltaLonge(s, 2, ocupadas, alvos[2]) |
                SaltaLonge(s, 3, ocupadas, alvos[3]) | SaltaLonge(s, 4, ocupadas, alvos[4]);
            if (toma) a.tomam |= resto & -resto;
        }
    }
    a.tipo = a.tomam ? 3 : anda ? 2 : 1;
    return a;
}

} // namespace analise

// The analysis for side `vez` to move under rule set `regra` on the board of m.
inline Analise AnalisaMascaras(int regra, int vez, const Mascaras& m) {
    if (regra < 1 || regra > 4) return {};
    if (vez == 1) return analise::AnalisaLado<1>(m, regra);
    if (vez == 2) return analise::AnalisaLado<2>(m, regra);
    return {};
}

} // namespace velmora
