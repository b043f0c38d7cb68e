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
    const struct {
        Posicao pos;
        Jogada jogada;
        int variacao; // of Saldo
        bool coroa;   // the piece on the last landing square is a king
        bool conclui = true;
    } casos[] = {
        // side 1 takes forwards and backwards, a man and a king, with a man and a king
        {Pos(1, {{55, 1}, {44, 2}}), Jog({55, 33, 44}), 11, false},
        {Pos(1, {{55, 1}, {64, 2}}), Jog({55, 73, 64}), 9, false},
        {Pos(1, {{55, 1}, {44, 20}}), Jog({55, 33, 44}), 31, false},
        {Pos(1, {{55, 10}, {66, 2}}), Jog({55, 77, 66}), 9, true},
        {Pos(1, {{33, 10}, {66, 20}}), Jog({33, 88, 66}), 29, true},
        // side 2: a man and a king forwards, a man backwards
        {Pos(2, {{33, 2}, {44, 1}, {66, 10}}), Jog({33, 55, 44, 55, 77, 66}), -(10 + 30 + 1 + 1),
         false},
        {Pos(2, {{55, 2}, {44, 1}}), Jog({55, 33, 44}), -9, false},
        // crowned only where the move ends, by 20
        {Pos(1, {{37, 1}, {26, 2}}), Jog({37, 15, 26}), 10 + 1 + 20, true},
        // a step of the generators: the piece taken stays as 64, no point, no crown
        {Pos(1, {{37, 1}, {26, 2}}), Jog({37, 15, 26}), 10, false, false},
        {Pos(1, {{37, 1}, {26, 2}, {24, 2}}), Jog({37, 15, 26, 15, 33, 24}), 11 + 9, false},
        {Pos(1, {{24, 1}}), Jog({24, 13}), 20, true},
        {Pos(2, {{73, 2}}), Jog({73, 82}), -20, true},
        {Pos(2, {{77, 2}}), Jog({77, 88}), -20, true},
        {Pos(2, {{73, 20}}), Jog({73, 84}), 0, true},
        {Pos(2, {{64, 2}}), Jog({64, 73}), 0, false},
    };
    for (const auto& c : casos) {
        Posicao p = c.pos;
        const int n = c.jogada.tamanho(), de = c.jogada[0], para = c.jogada[n == 2 ? 1 : n - 2];
        const int numero = p.Casas[de] & NUMERO;
        SCOPED_TRACE(JogadaEmNumeros(c.jogada));
        ASSERT_TRUE(FazJogada(p, c.jogada.c.data(), n, c.conclui));
        EXPECT_EQ(p.Saldo - c.pos.Saldo, c.variacao);
        EXPECT_EQ(Coroada(p, para), c.coroa);
        EXPECT_EQ(p.Casas[de], 0);
        EXPECT_EQ(p.Casas[para] & NUMERO, numero);
        EXPECT_EQ(p.Peca(numero, p.Vez), para | (c.coroa ? DAMA : 0));
        for (int k = 2; k < n; k += 3) {
            EXPECT_EQ(p.Casas[c.jogada[k]], c.conclui ? 0 : BORDA);
            EXPECT_EQ(p.Peca(c.pos.Casas[c.jogada[k]] & NUMERO, 3 - p.Vez), 0);
        }
        EXPECT_EQ(p.Vez, c.pos.Vez); // the callers turn it over
    }
}

// Border squares hold exactly 64, and every piece entry names a square of the board.
void ConfereInvariantes(const Posicao& p) {
    for (int k = 1; k <= 10; ++k)
        for (int s : {k, k + 90, 10 * k - 9, 10 * k}) ASSERT_EQ(p.Casas[s], BORDA) << s;
    for (const auto& par : p.Pecas)
        for (int casa : par) ASSERT_TRUE(casa == 0 || CasaDoTabuleiro(casa & 127)) << casa;
}

TEST(FazJogada, TextoQualquerNaoSaiDoTabuleiro) {
    std::mt19937 rng(20240611);
    std::uniform_int_distribution<int> byte(0, 255), tamanho(0, 60), perto(10, 91);
    const Posicao inicios[] = {PosicaoInicial(),
                               Pos(2, {{55, 20}, {37, 1}, {26, 2}, {82, 10}, {13, 2}})};
    for (int rodada = 0; rodada < 200; ++rodada) {
        Posicao p = inicios[rodada % 2];
        for (int k = 0; k < 30; ++k) {
            std::vector<uint8_t> s(tamanho(rng));
            // half of the strings keep near the board, so that some are played
            for (auto& b : s) b = static_cast<uint8_t>(rodada % 4 < 2 ? byte(rng) : perto(rng));
            const int n = static_cast<int>(s.size());
            const Posicao antes = p;
            const bool ok = FazJogada(p, s.data(), n, k % 2 == 0);
            ConfereInvariantes(p);
            if (n < 2 || !CasaDoTabuleiro(s[0]) || !CasaDoTabuleiro(s[1])) {
                EXPECT_FALSE(ok);
                EXPECT_EQ(p, antes); // refused before it touched anything
            }
            EXPECT_TRUE(!JogadaNoTabuleiro(s.data(), n) || ok);
        }
    }
}

TEST(FazJogada, SoJogadasDentroDoTabuleiro) {
    using Texto = std::vector<uint8_t>;
    for (const Texto& s : {Texto{66, 44, 55}, Texto{12, 89}, Texto{66, 44, 55, 44, 22, 33}})
        EXPECT_TRUE(JogadaNoTabuleiro(s.data(), static_cast<int>(s.size())));
    for (const Texto& s :
         {Texto{}, Texto{66}, Texto{66, 44, 0}, Texto{11, 22}, Texto{20, 22}, Texto{66, 90},
          Texto{66, 44, 55, 44, 22, 100}, Texto{255, 0}, Texto{66, 44, 55, 44, 22, 33, 1}})
        EXPECT_FALSE(JogadaNoTabuleiro(s.data(), static_cast<int>(s.size()))) << s.size();
}

} // namespace
} // namespace velmora
