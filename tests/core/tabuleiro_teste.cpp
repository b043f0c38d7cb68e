// Squares, their names, and the board text in both directions.
#include "apoio.h"

#include <gtest/gtest.h>

#include <set>

namespace velmora {
namespace {

using teste::Texto;

const std::string INICIAL = "1,0,2,0,2,0,2,0,2,2,0,2,0,2,0,2,0,0,2,0,2,0,2,0,2,3,0,3,0,3,0,3,0,"
                            "0,3,0,3,0,3,0,3,1,0,1,0,1,0,1,0,0,1,0,1,0,1,0,1,1,0,1,0,1,0,1,0,";

TEST(Casas, IndicesCoresENomes) {
    const std::pair<int, int> indices[] = {{1, 12},  {8, 19},  {9, 22}, {17, 32},
                                           {57, 82}, {64, 89}, {65, 0}, {0, 0}};
    for (auto [i, casa] : indices) EXPECT_EQ(CasaDoIndice(i), casa) << i;
    const std::set<int> claras = {12, 14, 16, 18, 23, 25, 27, 29, 32, 34, 36, 38, 43, 45, 47, 49,
                                  52, 54, 56, 58, 63, 65, 67, 69, 72, 74, 76, 78, 83, 85, 87, 89};
    for (int i = 1; i <= 64; ++i) {
        const int s = CasaDoIndice(i);
        EXPECT_EQ(CasaClara(s), claras.count(s) == 1) << s;
        EXPECT_EQ(CasaDoNome(NomeCasa(s)), s);
    }
    EXPECT_EQ(NomeCasa(82), "A1");
    EXPECT_EQ(NomeCasa(13), "B8");
    EXPECT_EQ(CasaDoNome("c3"), 64);
    for (const char* ruim : {"", "A", "A0", "A9", "I1", "@1", "A10", "1A", " A1"})
        EXPECT_EQ(CasaDoNome(ruim), 0) << ruim;
}

TEST(Texto, PosicaoInicialEscritaELida) {
    const Posicao p = PosicaoInicial();
    EXPECT_EQ(TextoComVez(p), INICIAL);
    EXPECT_EQ(TipoCasa(p, 0), 0);
    EXPECT_EQ(TipoCasa(p, 12), 0);
    EXPECT_EQ(TipoCasa(p, 44), 3);
    EXPECT_EQ(p.Peca(1, 1), 62); // number 1 of each side on its front row
    EXPECT_EQ(p.Peca(1, 2), 33);

    const Posicao lida = PosicaoDoTexto(INICIAL).value();
    EXPECT_EQ(lida.Vez, 1);
    EXPECT_EQ(lida.Saldo, 0);
    EXPECT_EQ(TextoComVez(lida), INICIAL);
    for (int s = 1; s <= 100; ++s) EXPECT_EQ(lida.Casas[s] & ~NUMERO, p.Casas[s] & ~NUMERO) << s;
    // read back, the pieces are numbered from the back rows
    EXPECT_EQ(lida.Peca(1, 1), 88);
    EXPECT_EQ(lida.Peca(1, 2), 13);
    EXPECT_EQ(lida.Casas[88], LADO1 + 1);
}

TEST(Texto, DamasEValores) {
    const Posicao p = teste::Pos(2, {{13, 20}});
    EXPECT_EQ(p.Casas[13], 160 + 1);
    EXPECT_EQ(p.Peca(1, 2), 13 + 128);
    EXPECT_EQ(p.Saldo, -30);

    const Posicao q = teste::Pos(1, {{82, 1},
                                     {84, 1},
                                     {86, 1},
                                     {88, 1},
                                     {73, 1},
                                     {75, 1},
                                     {77, 1},
                                     {79, 1},
                                     {62, 10},
                                     {64, 10},
                                     {13, 2}});
    EXPECT_EQ(ValordasPecas(q, 1), 14);
    EXPECT_EQ(QuantasPecas(q, 1), 10);
    EXPECT_EQ(q.Saldo, 8 * 10 + 2 * 30 - 10);
}

TEST(Texto, RecusaTextosMalFormados) {
    // the first characters replaced: side 3 or 0, a letter, a sign, an empty field, an
    // unknown code, a leading zero, a blank
    const std::pair<int, const char*> inicios[] = {{1, "3"},     {1, "0"},       {1, "x"},
                                                   {5, "1,0,a"}, {5, "1,0,-2"},  {5, "1,0,,0"},
                                                   {5, "1,0,5"}, {5, "1,0,002"}, {3, "1 ,0"}};
    for (auto [n, novo] : inicios) EXPECT_FALSE(PosicaoDoTexto(novo + INICIAL.substr(n))) << novo;
    Posicao treze = PosicaoInicial();
    treze.Casas[53] = LADO1; // a 13th man of side 1
    const std::string outros[] = {
        "",
        "1,",
        INICIAL + "0,",
        std::string(100000, ','),
        INICIAL.substr(0, INICIAL.size() - 2), // 64 fields
        INICIAL.substr(0, INICIAL.size() - 1), // the last comma missing
        TextoComVez(treze),
        Texto(1, {{12, 1}}), // pieces and empty squares are dark squares only
        Texto(1, {{12, 3}}),
    };
    for (const auto& t : outros) EXPECT_FALSE(PosicaoDoTexto(t)) << t.substr(0, 200);
    EXPECT_TRUE(PosicaoDoTexto(Texto(2, {})));
}

} // namespace
} // namespace velmora
