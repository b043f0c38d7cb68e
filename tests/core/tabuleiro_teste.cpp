// Squares, their names, and the board text in both directions.
#include "apoio.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace velmora {
namespace {

using teste::Texto;

const std::string INICIAL = "1,0,2,0,2,0,2,0,2,2,0,2,0,2,0,2,0,0,2,0,2,0,2,0,2,3,0,3,0,3,0,3,0,"
                            "0,3,0,3,0,3,0,3,1,0,1,0,1,0,1,0,0,1,0,1,0,1,0,1,1,0,1,0,1,0,1,0,";

TEST(Casas, IndiceDaCelula) {
    const std::pair<int, int> casos[] = {{1, 12},  {8, 19},  {9, 22}, {16, 29}, {17, 32},
                                         {57, 82}, {64, 89}, {65, 0}, {0, 0}};
    for (auto [indice, casa] : casos) EXPECT_EQ(CasaDoIndice(indice), casa) << indice;
}

TEST(Casas, ClarasEEscuras) {
    const std::vector<int> claras = {12, 14, 16, 18, 23, 25, 27, 29, 32, 34, 36,
                                     38, 43, 45, 47, 49, 52, 54, 56, 58, 63, 65,
                                     67, 69, 72, 74, 76, 78, 83, 85, 87, 89};
    int escuras = 0;
    for (int i = 1; i <= 64; ++i) {
        const int s = CasaDoIndice(i);
        const bool clara = std::find(claras.begin(), claras.end(), s) != claras.end();
        EXPECT_EQ(CasaClara(s), clara) << s;
        escuras += !clara;
    }
    EXPECT_EQ(escuras, 32);
    EXPECT_FALSE(CasaClara(82)); // the bottom-left corner is dark
}

TEST(Casas, NomesEIdaEVolta) {
    EXPECT_EQ(NomeCasa(82), "A1");
    EXPECT_EQ(NomeCasa(13), "B8");
    EXPECT_EQ(NomeCasa(19), "H8");
    EXPECT_EQ(NomeCasa(89), "H1");
    for (int i = 1; i <= 64; ++i) EXPECT_EQ(CasaDoNome(NomeCasa(CasaDoIndice(i))), CasaDoIndice(i));
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
    for (int s = 1; s <= 100; ++s) EXPECT_EQ(lida.Casas[s] & ~NUMERO, p.Casas[s] & ~NUMERO) << s;
    // read back, the pieces are numbered from the back rows
    EXPECT_EQ(lida.Peca(1, 1), 88);
    EXPECT_EQ(lida.Peca(1, 2), 13);
    EXPECT_EQ(lida.Casas[88], LADO1 + 1);
    EXPECT_EQ(lida.Casas[62], LADO1 + 12);
    EXPECT_EQ(TextoComVez(lida), INICIAL);
    for (int n = 1; n <= 12; ++n)
        for (int lado = 1; lado <= 2; ++lado)
            EXPECT_EQ(lida.Casas[lida.Peca(n, lado)], BitDoLado(lado) + n);
}

TEST(Texto, DamasContamTrinta) {
    const Posicao p = teste::Pos(2, {{13, 20}});
    EXPECT_EQ(p.Casas[13], 160 + 1);
    EXPECT_EQ(p.Peca(1, 2), 13 + 128);
    EXPECT_EQ(p.Saldo, -30);
    EXPECT_EQ(p.Vez, 2);
    EXPECT_EQ(TipoCasa(p, 13), 20);

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
    EXPECT_EQ(ValordasPecas(q, 2), 1);
    EXPECT_EQ(q.Saldo, 8 * 10 + 2 * 30 - 10);
}

TEST(Texto, RecusaTextosMalFormados) {
    const std::string treze = Texto(1, {{62, 1},
                                        {64, 1},
                                        {66, 1},
                                        {68, 1},
                                        {73, 1},
                                        {75, 1},
                                        {77, 1},
                                        {79, 1},
                                        {82, 1},
                                        {84, 1},
                                        {86, 1},
                                        {88, 1},
                                        {53, 10}});
    const std::string casos[] = {
        "",
        "1,",
        INICIAL.substr(0, INICIAL.size() - 2), // 64 fields
        INICIAL + "0,",                        // 66 fields
        INICIAL.substr(0, INICIAL.size() - 1), // the last comma missing
        "3" + INICIAL.substr(1),               // side 3
        "0" + INICIAL.substr(1),
        "x" + INICIAL.substr(1),
        "1,0,a" + INICIAL.substr(5),
        "1,0,-2" + INICIAL.substr(5),
        "1,0,,0" + INICIAL.substr(5),
        "1,0,5" + INICIAL.substr(5), // no such cell code
        "1,0,002" + INICIAL.substr(5),
        "1 ,0" + INICIAL.substr(3),
        Texto(1, {{12, 1}}), // a man on a light square
        Texto(1, {{12, 3}}),
        treze,
        std::string(100000, ','),
    };
    for (const auto& t : casos) EXPECT_FALSE(LeTextoTabuleiro(t).has_value()) << t;
    EXPECT_FALSE(PosicaoDoTexto(treze).has_value());
    EXPECT_TRUE(LeTextoTabuleiro(Texto(2, {})).has_value());
}

} // namespace
} // namespace velmora
