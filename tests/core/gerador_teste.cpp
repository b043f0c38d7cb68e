// The four generators on hand-built positions, in list order, and the leaf counts from the
// initial position.
#include "apoio.h"

#include "core/perft.h"

#include <gtest/gtest.h>

#include <set>

namespace velmora {
namespace {

using teste::Lista;
using teste::Pos;
using Jogadas = std::vector<std::string>;

struct Caso {
    const char* nome;
    Posicao pos;
    std::set<int> regras;
    Jogadas esperado; // the human's list
};

int Quadrados(const std::string& jogada) {
    return static_cast<int>(std::count(jogada.begin(), jogada.end(), '-')) + 1;
}

TEST(Gerador, ListasDoHumano) {
    // side 1 plays; man 1, king 10 of side 1; man 2, king 20 of side 2
    const Jogadas reiCentro1 = {"55-44", "55-33", "55-22", "55-46", "55-37", "55-28", "55-19",
                                "55-64", "55-73", "55-82", "55-66", "55-77", "55-88"};
    const Jogadas reiCentro2 = {"55-66", "55-77", "55-88", "55-64", "55-73", "55-82", "55-46",
                                "55-37", "55-28", "55-19", "55-44", "55-33", "55-22"};
    const Jogadas umaCasa = {"55-44", "55-46", "55-64", "55-66"};
    const Caso casos[] = {
        {"homem1 nas quatro direcoes",
         Pos(1, {{55, 1}, {44, 2}, {46, 2}, {64, 2}, {66, 2}}),
         {1},
         {"55-33-44", "55-37-46", "55-73-64", "55-77-66"}},
        {"homem1 so para a frente",
         Pos(1, {{55, 1}, {44, 2}, {46, 2}, {64, 2}, {66, 2}}),
         {2, 3, 4},
         {"55-33-44", "55-37-46"}},
        {"homem2 nas quatro direcoes",
         Pos(2, {{55, 2}, {44, 1}, {46, 1}, {64, 1}, {66, 1}}),
         {1},
         {"55-77-66", "55-73-64", "55-37-46", "55-33-44"}},
        {"homem2 so para a frente",
         Pos(2, {{55, 2}, {44, 1}, {46, 1}, {64, 1}, {66, 1}}),
         {2, 3, 4},
         {"55-77-66", "55-73-64"}},
        {"dama1 voadora", Pos(1, {{55, 10}, {13, 2}}), {1, 2, 3}, reiCentro1},
        {"dama2 voadora", Pos(2, {{55, 20}, {84, 1}}), {2, 3}, reiCentro2},
        {"dama1 de uma casa", Pos(1, {{55, 10}, {13, 2}}), {4}, umaCasa},
        {"dama2 de uma casa",
         Pos(2, {{55, 20}, {84, 1}}),
         {4},
         Jogadas(umaCasa.rbegin(), umaCasa.rend())},
        // a man reaching the far row in mid-capture stays a man
        {"volta da ultima fila",
         Pos(1, {{37, 1}, {26, 2}, {24, 2}}),
         {1, 3},
         {"37-15-26-15-33-24"}},
        {"para na ultima fila", Pos(1, {{37, 1}, {26, 2}, {24, 2}}), {2, 4}, {"37-15-26"}},
        // only a backward capture: none under 2, 3, 4, so plain moves
        {"so captura para tras", Pos(1, {{55, 1}, {64, 2}}), {1}, {"55-73-64"}},
        {"sem captura para tras", Pos(1, {{55, 1}, {64, 2}}), {2, 3, 4}, {"55-44", "55-46"}},
        {"dama longe de uma peca", Pos(1, {{55, 10}, {33, 2}}), {4}, umaCasa},
        {"dama voadora longe de uma peca", Pos(1, {{55, 10}, {33, 2}}), {1, 2, 3}, {"55-22-33"}},
        {"dama curta ao lado", Pos(1, {{55, 10}, {44, 2}}), {4}, {"55-33-44"}},
        {"duas pecas seguidas", Pos(1, {{88, 10}, {77, 2}, {66, 2}}), {1, 2, 3}, {"88-79"}},
        {"peca propria atras",
         Pos(1, {{88, 10}, {77, 2}, {66, 1}}),
         {1, 2, 3},
         {"88-79", "66-55", "66-57"}},
        // the king comes round to face the piece it took first, and stops there
        {"peca ja tomada barra",
         Pos(1, {{82, 10}, {64, 2}, {26, 2}, {33, 2}}),
         {1, 2, 3},
         {"82-37-64-37-15-26-15-42-33"}},
        {"peca ja tomada barra e esconde",
         Pos(1, {{82, 10}, {64, 2}, {26, 2}, {33, 2}, {75, 2}}),
         {1, 2, 3},
         {"82-37-64-37-15-26-15-42-33"}},
        {"outra casa de parada",
         Pos(1, {{82, 10}, {64, 2}, {28, 1}}),
         {1, 2, 3},
         {"82-55-64", "82-46-64", "82-37-64"}},
        {"mesmas pecas em outra ordem",
         Pos(1, {{55, 1}, {44, 2}, {24, 2}, {26, 2}, {46, 2}}),
         {1, 3},
         {"55-33-44-33-15-24-15-37-26-37-55-46", "55-37-46-37-15-26-15-33-24-33-55-44"}},
        {"mesmas pecas so para a frente",
         Pos(1, {{55, 1}, {44, 2}, {24, 2}, {26, 2}, {46, 2}}),
         {2, 4},
         {"55-33-44-33-15-24", "55-37-46-37-15-26"}},
        {"sem jogada", Pos(1, {{82, 1}, {73, 2}, {64, 2}}), {1, 2, 3, 4}, {}},
        {"sem pecas", Pos(1, {{13, 2}}), {1, 2, 3, 4}, {}},
        {"a maior captura",
         Pos(1, {{86, 1}, {75, 1}, {59, 1}, {64, 2}, {48, 2}, {28, 2}}),
         {1, 2, 3, 4},
         {"59-37-48-37-19-28"}},
    };
    for (const auto& c : casos) {
        for (int regra : c.regras) {
            const auto l = Lista(regra, c.pos, true);
            EXPECT_EQ(l.jogadas, c.esperado) << c.nome << ", regra " << regra;
            EXPECT_EQ(l.maior, c.esperado.empty() ? 1 : Quadrados(c.esperado[0]))
                << c.nome << ", regra " << regra;
        }
    }
}

TEST(Gerador, ComputadorEscolheEntrePecasQueCapturam) {
    const Posicao p = Pos(1, {{86, 1}, {75, 1}, {59, 1}, {64, 2}, {48, 2}, {28, 2}});
    const std::string curta = "75-53-64", longa = "59-37-48-37-19-28";
    for (int regra = 1; regra <= 4; ++regra) {
        Gerador g;
        g.Regra = regra;
        // pieces 1 (86, plain moves only), 2 (75) and 3 (59) in natural order, then reversed
        const auto natural = Lista(g, p, false);
        g.OrdemPecas = {0, 3, 2, 1, 4, 5, 6, 7, 8, 9, 10, 11, 12};
        const auto invertida = Lista(g, p, false);
        if (regra == 1) {
            EXPECT_EQ(natural.jogadas, Jogadas{longa});
            EXPECT_EQ(invertida.jogadas, Jogadas{longa});
        } else {
            EXPECT_EQ(natural.jogadas, (Jogadas{curta, longa})) << regra;
            EXPECT_EQ(invertida.jogadas, (Jogadas{longa, curta})) << regra;
        }
    }
}

TEST(Gerador, DamaDoLado2NaRegra1GiraAsDirecoes) {
    const Posicao p = Pos(2, {{55, 20}, {84, 1}});
    std::set<int> inicios;
    Gerador g;
    g.Regra = 1;
    for (uint32_t semente = 1; semente <= 40; ++semente) {
        g.SemeiaRotacao(semente * 2654435761u);
        const auto l = Lista(g, p, true);
        ASSERT_EQ(l.jogadas.size(), 13u);
        std::vector<int> direcoes; // the direction of each move, once per run
        for (const auto& j : l.jogadas) {
            const int para = std::stoi(j.substr(3));
            const int d =
                para < 55 ? ((55 - para) % 11 == 0 ? 1 : 2) : ((para - 55) % 9 == 0 ? 3 : 4);
            if (direcoes.empty() || direcoes.back() != d) direcoes.push_back(d);
        }
        ASSERT_EQ(direcoes.size(), 4u);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(direcoes[i + 1], direcoes[i] % 4 + 1);
        inicios.insert(direcoes[0]);
    }
    EXPECT_EQ(inicios.size(), 4u);
}

TEST(Perft, Regra1DaPosicaoInicial) {
    const uint64_t esperado[] = {7, 49, 302, 1469, 7473, 37628};
    for (ModoLista modo : {ModoLista::Humano, ModoLista::Computador}) {
        Gerador g;
        g.Regra = 1;
        for (int d = 1; d <= 6; ++d)
            EXPECT_EQ(Perft(g, PosicaoInicial(), d, modo), esperado[d - 1]);
        EXPECT_FALSE(g.Estouro);
    }
}

TEST(Perft, OutrasRegrasDaPosicaoInicial) {
    // the counts of depths 5 and 6; the first four are those of rule set 1
    struct {
        int regra;
        ModoLista modo;
        uint64_t d5, d6;
    } const casos[] = {
        {2, ModoLista::Humano, 7361, 36473}, {2, ModoLista::Computador, 7361, 36768},
        {3, ModoLista::Humano, 7484, 37756}, {3, ModoLista::Computador, 7493, 38102},
        {4, ModoLista::Humano, 7361, 36473}, {4, ModoLista::Computador, 7361, 36768},
    };
    for (const auto& c : casos) {
        Gerador g;
        g.Regra = c.regra;
        EXPECT_EQ(Perft(g, PosicaoInicial(), 4, c.modo), 1469u) << c.regra;
        EXPECT_EQ(Perft(g, PosicaoInicial(), 5, c.modo), c.d5) << c.regra;
        EXPECT_EQ(Perft(g, PosicaoInicial(), 6, c.modo), c.d6) << c.regra;
    }
}

} // namespace
} // namespace velmora
