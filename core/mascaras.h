#pragma once
// The board as bit masks, one bit per mailbox square 0..95: the empty squares, each side's
// pieces, the kings. Every square a piece on the board can reach in two steps lies in that
// range, and the border squares are in no mask. A search reads them from the mailbox once
// and carries them down move by move, so that a node learns which pieces can take without
// looking at the squares one by one.
#include "core/posicao.h"

#include <array>
#include <cstdint>

namespace velmora {

using Mascara = unsigned __int128;

constexpr Mascara Bit(int casa) {
    return static_cast<Mascara>(1) << casa;
}

struct Mascaras {
    Mascara vazias = 0;
    std::array<Mascara, 2> lados{}; // squares holding the bit of side 1, of side 2
    Mascara damas = 0;
    // A piece of that side without a piece number (a thirteenth one): only the slow way
    // knows what such a board allows.
    std::array<bool, 2> semNumero{};
    bool operator==(const Mascaras&) const = default;
};

Mascaras LeMascaras(const Posicao& p);
// The same one square at a time: the way of machines without SSE2, and the tests' reference.
Mascaras LeMascarasSimples(const Posicao& p);

// Carries m over the whole move s[0..n) played from its position; `depois` is the position
// the move led to (it tells whether the piece was crowned).
void AplicaJogada(Mascaras& m, const uint8_t* s, int n, const Posicao& depois);

} // namespace velmora
