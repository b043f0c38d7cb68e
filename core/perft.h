#pragma once
// Counting the leaves of the move tree: the generator's own check.
#include "core/gerador.h"
#include "core/posicao.h"

#include <cstdint>

namespace velmora {

enum class ModoLista { Humano, Computador };

// Leaves at depth `prof` below p; every leaf is played on the position and taken back. The lists
// stack in the generator's table from p.IniLista on.
uint64_t Perft(Gerador& g, const Posicao& p, int prof, ModoLista modo);

// The same, with a print of the leaves' boards: a sum over the leaves of a mix of each
// board's sides, kings and balance, the same whatever order the leaves come in.
struct PerftImpresso {
    uint64_t folhas = 0;
    uint64_t impressao = 0;
};
PerftImpresso PerftComImpressao(Gerador& g, const Posicao& p, int prof, ModoLista modo);

} // namespace velmora
