#pragma once
// The board as 64-bit masks, one bit per square of the 8 by 8 board in reading order (row 1
// of the mailbox is bits 0..7): the empty dark squares, each side's pieces, the kings. A
// diagonal step is a shift by 7 or 9; a step off the edge of a row wraps onto a light
// square of another row, which is in no mask, so it finds neither a piece nor a free square.
// A search reads the masks from the mailbox once and carries them down move by move, so
// that a node learns which pieces can take without looking at the squares one by one.
#include "core/casas.h"
#include "core/posicao.h"

#include <array>
#include <cstdint>

namespace velmora {

using Mascara = uint64_t;

// The bit of mailbox square `casa` (12..89 without the ring): row r, column c give bit
// 8 * (r - 1) + c - 1.
constexpr int IndiceDaCasa(int casa) {
    return 8 * ((casa - 1) / 10 - 1) + (casa - 1) % 10 - 1;
}
// The mailbox square of bit i.
constexpr int CasaDoBit(int i) {
    return 10 * (i / 8 + 1) + i % 8 + 2;
}

// 256 entries: any byte of a move or of Pecas may be looked up.
inline constexpr std::array<Mascara, 256> BitsDasCasas = [] {
    std::array<Mascara, 256> b{};
    for (int s = 12; s <= 89; ++s)
        if (s % 10 >= 2) b[s] = Mascara{1} << IndiceDaCasa(s);
    return b;
}();

// The bit of a mailbox square (0..255); none for a square of the ring or beyond.
constexpr Mascara Bit(int casa) {
    return BitsDasCasas[casa];
}

// The 32 dark squares, the only ones a piece moves on.
inline constexpr Mascara CASAS_ESCURAS = [] {
    Mascara m = 0;
    for (int i = 0; i < 64; ++i)
        if ((i / 8 + i % 8) % 2 == 1) m |= Mascara{1} << i;
    return m;
}();

// The mailbox steps -11, -9, 9, 11 as shifts of the masks.
constexpr int PassoDoBit(int passo) {
    return passo == -11 ? -9 : passo == -9 ? -7 : passo == 9 ? 7 : 9;
}

// The squares along each direction from each square (bits of the masks), up to the edge
// of the board.
inline constexpr auto Raios = [] {
    std::array<std::array<Mascara, 5>, 64> r{};
    for (int i = 0; i < 64; ++i) {
        const int s = CasaDoBit(i);
        for (int d = 1; d <= 4; ++d)
            for (int w = s + Direcoes[d]; CasaDoTabuleiro(w); w += Direcoes[d]) r[i][d] |= Bit(w);
    }
    return r;
}();

// The first square of m met going along direction d (m not empty): the lowest going
// down the board, the highest going up.
inline int PrimeiraCasa(Mascara m, int d) {
    return d >= 3 ? __builtin_ctzll(m) : 63 - __builtin_clzll(m);
}
// The same with the direction known when compiling.
template <int d> inline int PrimeiraCasa(Mascara m) {
    if constexpr (d >= 3)
        return __builtin_ctzll(m);
    else
        return 63 - __builtin_clzll(m);
}

// Moves the bit of the square one mailbox step `d` away onto the square itself.
template <int d> inline Mascara Ve(Mascara m) {
    constexpr int b = PassoDoBit(d);
    if constexpr (b > 0)
        return m >> b;
    else
        return m << -b;
}

// Moves the squares of m one mailbox step `d` along: from s to s + d.
template <int d> inline Mascara Anda(Mascara m) {
    constexpr int b = PassoDoBit(d);
    if constexpr (b > 0)
        return m << b;
    else
        return m >> -b;
}

struct Mascaras {
    Mascara vazias = 0;             // empty dark squares
    std::array<Mascara, 2> lados{}; // squares holding the bit of side 1, of side 2
    Mascara damas = 0;
    // Only the slow way knows what such a board allows: a piece of that side without a
    // piece number (a thirteenth one), or standing on a light square.
    std::array<bool, 2> soLenta{};
    // The masks are the mailbox's and Pecas lists its numbered pieces, each on its own
    // square. False when LeMascaras found Pecas otherwise, or once a move that did not
    // belong to the board (the search plays its stored line's move even then) was carried
    // over the masks: the lists then read the mailbox and Pecas instead.
    bool fiel = true;
    bool operator==(const Mascaras&) const = default;
};

// m carried over a plain move from the square of bit `de` to that of bit `para`, of the
// side whose mask holds `de` (side 2 when neither does); `coroada` when the move crowned.
// Built field by field from m's words, with both sides written through all-ones or
// all-zero words rather than an index: a copy of m changed in place would be read back
// from a wider store than the read, which the processor cannot forward.
inline Mascaras ComSimples(const Mascaras& m, Mascara de, Mascara para, bool coroada) {
    const Mascara l0 = m.lados[0], l1 = m.lados[1], damas = m.damas;
    const Mascara doLado1 = Mascara{0} - ((l0 & de) != 0);
    Mascaras r;
    r.vazias = (m.vazias | de) & ~para;
    r.lados[0] = (l0 & ~(de & doLado1)) | (para & doLado1);
    r.lados[1] = (l1 & ~(de & ~doLado1)) | (para & ~doLado1);
    r.damas = (damas & ~(de | para)) | (para & (Mascara{0} - (((damas & de) != 0) | coroada)));
    r.soLenta = m.soLenta;
    r.fiel = m.fiel;
    return r;
}
inline void AplicaSimples(Mascaras& m, Mascara de, Mascara para, bool coroada) {
    m = ComSimples(m, de, para, coroada);
}

// What a capture route s[0..n) (three squares a jump) that the list of a board of m gave
// side `lado` does: the piece goes from `de` to `para`, ending a king when `dama`, and takes
// the pieces of `tomadas`; `ganho` is what the mover gains: 10 for a man taken, 30 for a
// king, +-1 by each jump's direction, 20 for the crown.
struct CapturaLida {
    Mascara de, para, tomadas;
    int ganho;
    bool dama;
};
inline CapturaLida LeCaptura(const Mascaras& m, int lado, const uint8_t* s, int n) {
    const int saltos = n / 3;
    CapturaLida r{Bit(s[0]), Bit(s[3 * saltos - 2]), 0, 0, false};
    for (int k = 0; k < saltos; ++k) {
        const int f = s[3 * k], t = s[3 * k + 1];
        const Mascara c = Bit(s[3 * k + 2]);
        r.tomadas |= c;
        r.ganho += (m.damas & c) ? 30 : 10;
        r.ganho += (lado == 1 ? f > t : f < t) ? 1 : -1;
    }
    const Mascara fundo = lado == 1 ? Mascara{0xff} : Mascara{0xff} << 56;
    const bool dama = m.damas & r.de;
    const bool coroa = !dama && (r.para & fundo) && n % 3 == 0;
    r.ganho += coroa ? 20 : 0;
    r.dama = dama || coroa;
    return r;
}

// m carried over a capture read by LeCaptura for side `lado`, built as ComSimples builds.
inline Mascaras ComCaptura(const Mascaras& m, int lado, const CapturaLida& c) {
    const Mascara lado1 = Mascara{0} - (lado == 1);
    Mascaras r;
    r.vazias = (m.vazias | c.de | c.tomadas) & ~c.para;
    r.lados[0] = (m.lados[0] & ~((c.de & lado1) | (c.tomadas & ~lado1))) | (c.para & lado1);
    r.lados[1] = (m.lados[1] & ~((c.de & ~lado1) | (c.tomadas & lado1))) | (c.para & ~lado1);
    r.damas = (m.damas & ~(c.de | c.tomadas)) | (c.dama ? c.para : 0);
    r.soLenta = m.soLenta;
    r.fiel = m.fiel;
    return r;
}

Mascaras LeMascaras(const Posicao& p);
// The same one square at a time: the way of machines without SSE2, and the tests' reference.
Mascaras LeMascarasSimples(const Posicao& p);

// The squares that hold a king of either side on p.
Mascara DamasDe(const Posicao& p);

// Carries m over the whole move s[0..n) played from its position; `depois` is the position
// the move led to (it tells whether the piece was crowned).
void AplicaJogada(Mascaras& m, const uint8_t* s, int n, const Posicao& depois);

} // namespace velmora
