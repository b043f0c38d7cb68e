#pragma once
// Counting the leaves of the move tree: the generator's own check.
#include "core/gerador.h"
#include "core/posicao.h"

#include <cstdint>

namespace velmora {

enum class ModoLista { Humano, Computador };

// Leaves at depth `prof` below p. Every leaf is played: the inner plies on the position
// itself (and taken back), the last one on the board's masks and balance. The lists stack
// in the generator's table from p.IniLista on.
uint64_t Perft(Gerador& g, const Posicao& p, int prof, ModoLista modo);

// The same, with a print of the leaves' boards: a sum over the leaves of a mix of each
// board's sides, kings and balance, the same whatever order the leaves come in.
struct PerftImpresso {
    uint64_t folhas = 0;
    uint64_t impressao = 0;
};
PerftImpresso PerftComImpressao(Gerador& g, const Posicao& p, int prof, ModoLista modo);

} // namespace velmora
