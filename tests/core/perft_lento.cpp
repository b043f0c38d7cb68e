// The deep leaf counts of rule set 1 from the initial position, in both list modes.
#include "core/perft.h"
#include "core/tabuleiro.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(PerftLento, Regra1Profundidades7e8) {
    for (ModoLista modo : {ModoLista::Humano, ModoLista::Computador}) {
        Gerador g;
        g.Regra = 1;
        EXPECT_EQ(Perft(g, PosicaoInicial(), 7, modo), 187302u);
        EXPECT_EQ(Perft(g, PosicaoInicial(), 8, modo), 907836u);
        EXPECT_FALSE(g.Estouro);
    }
}

} // namespace
} // namespace velmora
