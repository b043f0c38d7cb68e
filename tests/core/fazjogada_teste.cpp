// FazJogada: the balance, crowning, the jumped pieces, and strings that are not moves.
#include "apoio.h"

#include "core/fazjogada.h"

#include <gtest/gtest.h>

#include <random>

namespace velmora {
namespace {

using teste::Jog;
using teste::Pos;

bool Coroada(const Posicao& p, int casa) {
    return (p.Casas[casa] & DAMA) != 0;
}

TEST(FazJogada, SaldoECoroacao) {
    struct {
        const char* nome;
        Posicao pos;
        Jogada jogada;
        int variacao; // of Saldo
        bool coroa;   // the piece on the last landing square is a king
    } const casos[] = {
        {"homem1 toma homem para a frente", Pos(1, {{55, 1}, {44, 2}}), Jog({55, 33, 44}), 11,
         false},
        {"homem1 toma homem para tras", Pos(1, {{55, 1}, {64, 2}}), Jog({55, 73, 64}), 9, false},
        {"homem1 toma dama para a frente", Pos(1, {{55, 1}, {44, 20}}), Jog({55, 33, 44}), 31,
         false},
        {"dama1 toma homem para tras", Pos(1, {{55, 10}, {66, 2}}), Jog({55, 77, 66}), 9, true},
        {"dama1 toma dama para tras de longe", Pos(1, {{33, 10}, {66, 20}}), Jog({33, 88, 66}), 29,
         true},
        {"homem2 toma homem e dama para a frente", Pos(2, {{33, 2}, {44, 1}, {66, 10}}),
         Jog({33, 55, 44, 55, 77, 66}), -(10 + 30 + 1 + 1), false},
        {"homem2 toma para tras", Pos(2, {{55, 2}, {44, 1}}), Jog({55, 33, 44}), -9, false},
        {"coroado ao tomar", Pos(1, {{37, 1}, {26, 2}}), Jog({37, 15, 26}), 10 + 1 + 20, true},
        {"passa pela ultima fila", Pos(1, {{37, 1}, {26, 2}, {24, 2}}),
         Jog({37, 15, 26, 15, 33, 24}), 11 + 9, false},
        {"homem1 chega a fila 8", Pos(1, {{24, 1}}), Jog({24, 13}), 20, true},
        {"homem2 chega a 82", Pos(2, {{73, 2}}), Jog({73, 82}), -20, true},
        {"homem2 chega a 84", Pos(2, {{73, 2}}), Jog({73, 84}), -20, true},
        {"homem2 chega a 86", Pos(2, {{75, 2}}), Jog({75, 86}), -20, true},
        {"homem2 chega a 88", Pos(2, {{77, 2}}), Jog({77, 88}), -20, true},
        {"dama2 chega a 84", Pos(2, {{73, 20}}), Jog({73, 84}), 0, true},
        {"homem2 para antes do fim", Pos(2, {{64, 2}}), Jog({64, 73}), 0, false},
    };
    for (const auto& c : casos) {
        Posicao p = c.pos;
        const int de = c.jogada[0],
                  para = c.jogada[c.jogada.tamanho() == 2 ? 1 : c.jogada.tamanho() - 2];
        const int numero = p.Casas[de] & NUMERO;
        ASSERT_TRUE(FazJogada(p, c.jogada.c.data(), c.jogada.tamanho(), true)) << c.nome;
        EXPECT_EQ(p.Saldo - c.pos.Saldo, c.variacao) << c.nome;
        EXPECT_EQ(Coroada(p, para), c.coroa) << c.nome;
        EXPECT_EQ(p.Casas[de], 0) << c.nome;
        EXPECT_EQ(p.Peca(numero, p.Vez), para | (c.coroa ? DAMA : 0)) << c.nome;
        EXPECT_EQ(p.Casas[para] & NUMERO, numero) << c.nome;
        for (int k = 2; k < c.jogada.tamanho(); k += 3) {
            const int tomada = c.jogada[k];
            EXPECT_EQ(p.Casas[tomada], 0) << c.nome;
            EXPECT_EQ(p.Peca(c.pos.Casas[tomada] & NUMERO, 3 - p.Vez), 0) << c.nome;
        }
        EXPECT_EQ(p.Vez, c.pos.Vez) << c.nome; // the callers turn it over
    }
}

TEST(FazJogada, PassoDoGeradorNaoConcluiNemCoroa) {
    Posicao p = Pos(1, {{37, 1}, {26, 2}});
    const Jogada j = Jog({37, 15, 26});
    ASSERT_TRUE(FazJogada(p, j.c.data(), j.tamanho(), false));
    EXPECT_EQ(p.Casas[26], BORDA);
    EXPECT_FALSE(Coroada(p, 15));
    EXPECT_EQ(p.Saldo, 0 + 10); // the piece's value, no point for the direction
    EXPECT_EQ(p.Peca(1, 2), 0);
}

// Border squares hold exactly 64, and every piece entry names a square of the board.
void ConfereInvariantes(const Posicao& p) {
    for (int k = 1; k <= 10; ++k)
        for (int s : {k, k + 90, 10 * k - 9, 10 * k}) ASSERT_EQ(p.Casas[s], BORDA) << s;
    for (int n = 1; n <= 12; ++n)
        for (int lado = 1; lado <= 2; ++lado) {
            const int casa = p.Peca(n, lado) & 127;
            ASSERT_TRUE(casa == 0 || CasaDoTabuleiro(casa)) << casa;
        }
}

TEST(FazJogada, TextoQualquerNaoSaiDoTabuleiro) {
    std::mt19937 rng(20240611);
    std::uniform_int_distribution<int> byte(0, 255), tamanho(0, 60), perto(10, 91);
    const Posicao inicios[] = {PosicaoInicial(),
                               Pos(2, {{55, 20}, {37, 1}, {26, 2}, {82, 10}, {13, 2}})};
    int recusadas = 0;
    for (int rodada = 0; rodada < 200; ++rodada) {
        Posicao p = inicios[rodada % 2];
        for (int k = 0; k < 30; ++k) {
            std::vector<uint8_t> s(tamanho(rng));
            // half of the strings keep near the board, so that some are played
            for (auto& b : s) b = static_cast<uint8_t>(rodada % 4 < 2 ? byte(rng) : perto(rng));
            const Posicao antes = p;
            const bool ok = FazJogada(p, s.data(), static_cast<int>(s.size()), k % 2 == 0);
            ConfereInvariantes(p);
            if (s.size() >= 2 && (!CasaDoTabuleiro(s[0]) || !CasaDoTabuleiro(s[1]))) {
                EXPECT_FALSE(ok);
                EXPECT_EQ(p, antes); // refused before it touched anything
            }
            if (s.size() < 2) {
                EXPECT_FALSE(ok);
            }
            if (JogadaNoTabuleiro(s.data(), static_cast<int>(s.size()))) {
                EXPECT_TRUE(ok);
            }
            recusadas += !ok;
        }
    }
    EXPECT_GT(recusadas, 0);
    EXPECT_LT(recusadas, 6000);
}

TEST(FazJogada, SoJogadasDentroDoTabuleiro) {
    const std::pair<std::vector<uint8_t>, bool> casos[] = {
        {{66, 44, 55}, true},
        {{66, 44}, true},
        {{12, 89}, true},
        {{66}, false},
        {{}, false},
        {{66, 44, 0}, false},
        {{11, 22}, false},
        {{20, 22}, false},
        {{66, 90}, false},
        {{66, 44, 55, 44, 22, 100}, false},
        {{66, 44, 55, 44, 22, 33, 1}, false},
        {{255, 0}, false},
        {{66, 44, 55, 44, 21}, false},
    };
    for (const auto& [s, esperado] : casos)
        EXPECT_EQ(JogadaNoTabuleiro(s.data(), static_cast<int>(s.size())), esperado)
            << JogadaEmNumeros(Jogada(std::string(s.begin(), s.end())));
}

} // namespace
} // namespace velmora
