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

} // namespace velmora
