// velmora-cli: leaf counts, move lists, analysis, and refusals of bad arguments.
#include "apoio.h"
#include "executa.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using teste::Aspas;
using teste::Executa;
using teste::Texto;

TEST(Cli, Perft) {
    auto s = Executa("perft --regra 1 --modo humano --prof 5");
    EXPECT_EQ(s.codigo, 0);
    EXPECT_EQ(s.texto.rfind("1 7\n2 49\n3 302\n4 1469\n5 7473\ntempo ", 0), 0u) << s.texto;
    s = Executa("perft --regra 3 --modo computador --prof 5");
    EXPECT_EQ(s.codigo, 0);
    EXPECT_NE(s.texto.find("\n5 7493\n"), std::string::npos) << s.texto;
}

TEST(Cli, ListaEAnalise) {
    const std::string duasRotas = Texto(1, {{66, 1}, {55, 2}, {33, 2}, {35, 2}});
    auto s = Executa("lista --regra 1 --modo humano --tabuleiro " + Aspas(duasRotas));
    EXPECT_EQ(s.codigo, 0);
    EXPECT_EQ(s.texto, "66-44-55-44-22-33\n66-44-55-44-26-35\nMaiorTexto=6\n");

    s = Executa("lista --regra 2 --modo computador --tabuleiro " +
                Aspas(Texto(2, {{19, 2}, {28, 1}, {37, 1}})));
    EXPECT_EQ(s.codigo, 0);
    EXPECT_EQ(s.texto, "MaiorTexto=1\n");

    s = Executa("analisa --regra 1 --prof 3 --tabuleiro " + Aspas(Texto(1, {{62, 1}, {13, 2}})));
    EXPECT_EQ(s.codigo, 0);
    EXPECT_NE(s.texto.find("Valor: Unknown\n"), std::string::npos) << s.texto;
    EXPECT_NE(s.texto.find("Linha: A3-B4\n"), std::string::npos) << s.texto;
}

TEST(Cli, ArgumentosRuinsSaemCom2) {
    const std::string inicial = Texto(1, {{62, 1}, {13, 2}});
    std::string letras = inicial;
    letras[4] = 'x';
    const std::string casos[] = {
        "",
        "xyz",
        "perft --regra 5 --prof 2",
        "perft --regra 1 --prof",
        "perft --regra 1 --prof 0",
        "perft --regra 1 --prof abc",
        "perft --regra 1 --prof 99",
        "perft --regra 1 --modo outro --prof 2",
        "perft --foo 1",
        "lista --regra 1",
        "lista --tabuleiro " + Aspas("1,2,3,"),
        "lista --tabuleiro " + Aspas("3" + inicial.substr(1)),
        "lista --tabuleiro " + Aspas(letras),
        "lista --tabuleiro " + Aspas(Texto(1, {{12, 1}})),
        "lista --tabuleiro " + Aspas(Texto(1, {{62, 1},
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
                                               {53, 1}})),
        "lista --tabuleiro " + Aspas(std::string(100000, '9')),
        "perft --prof 1 --tabuleiro " + Aspas(inicial + inicial),
        "analisa --tabuleiro " + Aspas(inicial),
        "analisa --tabuleiro " + Aspas(inicial) + " --tempo 1 --prof 2",
        "analisa --tabuleiro " + Aspas(inicial) + " --tempo -1",
        "partida --tipo XX",
        "partida --nivel1 9",
    };
    for (const auto& a : casos) {
        const auto s = Executa(a);
        EXPECT_EQ(s.codigo, 2) << a; // and not a signal
    }
}

} // namespace
} // namespace velmora
