// The value of a win, the rating beside the points, and a simulated season.
#include "server/pontos.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace velmora::servidor;

TEST(Pontos, VencerUmMaisForteValeMaisEPerderParaUmMaisFracoCustaMais) {
    const Glicko fraco{1300, 60, 0.06}, medio{1500, 60, 0.06}, forte{1800, 60, 0.06};
    const auto contraForte = CalculaPremio(1000, medio, 1000, forte, 0, false);
    const auto contraIgual = CalculaPremio(1000, medio, 1000, medio, 0, false);
    const auto contraFraco = CalculaPremio(1000, medio, 1000, fraco, 0, false);
    EXPECT_GT(contraForte.ganho, contraIgual.ganho);
    EXPECT_GT(contraIgual.ganho, contraFraco.ganho);
    EXPECT_GT(contraForte.perda, contraFraco.perda);
    // An even game: 30 + 15 won, 25 + 15 lost
    EXPECT_EQ(contraIgual.ganho, 45);
    EXPECT_EQ(contraIgual.perda, 40);
    EXPECT_EQ(contraIgual.pontosVencedor, 1045);
    EXPECT_EQ(contraIgual.pontosPerdedor, 960);
    // The rating moves the right way
    EXPECT_GT(contraIgual.vencedor.r, 1500);
    EXPECT_LT(contraIgual.perdedor.r, 1500);
    EXPECT_LT(contraIgual.vencedor.rd, 60.1);
}

TEST(Pontos, RepeticaoVisitanteEPisoZero) {
    const Glicko g;
    const auto primeira = CalculaPremio(2000, g, 2000, g, 0, false);
    const auto segunda = CalculaPremio(2000, g, 2000, g, 1, false);
    const auto quinta = CalculaPremio(2000, g, 2000, g, 4, false);
    EXPECT_EQ(segunda.ganho, (primeira.ganho + 1) / 2);
    EXPECT_LE(quinta.ganho, primeira.ganho / 16 + 1);
    const auto visitante = CalculaPremio(2000, g, 1000, g, 0, true);
    EXPECT_EQ(visitante.ganho, (primeira.ganho + 1) / 2);
    // Never below 0; below 1000 a loss costs less
    const auto quaseZero = CalculaPremio(1000, g, 3, g, 0, false);
    EXPECT_EQ(quaseZero.pontosPerdedor, 0);
    const auto aos500 = CalculaPremio(1000, g, 500, g, 0, false);
    EXPECT_EQ(aos500.perda, (primeira.perda + 1) / 2);
}

TEST(Pontos, GlickoNaoExplodeNosExtremos) {
    Glicko a{4000, 30, 0.2}, b{0, 350, 0.01};
    for (int i = 0; i < 200; ++i) {
        a = AtualizaGlicko(a, b, i % 2);
        b = AtualizaGlicko(b, a, (i + 1) % 2);
        ASSERT_TRUE(std::isfinite(a.r) && std::isfinite(a.rd) && std::isfinite(a.sigma));
        ASSERT_GE(a.rd, 30);
        ASSERT_LE(a.rd, 350);
    }
}

TEST(Pontos, UmaTemporadaOrdenaOsJogadoresPelaForca) {
    // 300 players of known strength, 400 games each against random opponents
    for (unsigned semente = 1; semente <= 3; ++semente) {
        const auto r = SimulaTemporada(300, 400, semente);
        EXPECT_GT(r.correlacaoPosto, 0.95) << semente;
        // The strongest player earns the medal in a season of a few hundred games
        EXPECT_GT(r.jogosAteMedalha, 150) << semente;
        EXPECT_LT(r.jogosAteMedalha, 400) << semente;
        // Each fifth, weakest to strongest, ends higher than the one below
        for (std::size_t q = 1; q < r.pontosPorQuintil.size(); ++q)
            EXPECT_GT(r.pontosPorQuintil[q], r.pontosPorQuintil[q - 1]);
        EXPECT_GT(r.pontosPorQuintil.front(), 0);
    }
}
