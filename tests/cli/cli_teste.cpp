// velmora-cli run as a child process: leaf counts, move lists, a whole game, and refusals
// of bad arguments.
#include "apoio.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sys/wait.h>

namespace velmora {
namespace {

using teste::Texto;

struct Saida {
    std::string texto; // standard output
    int codigo = -1;   // exit code; -1 when the process died of a signal
};

// Runs velmora-cli through the shell and keeps what it printed and how it ended.
Saida Executa(const std::string& argumentos) {
    const std::string comando = std::string(VELMORA_CLI) + " " + argumentos + " 2>/dev/null";
    Saida s;
    FILE* f = popen(comando.c_str(), "r");
    if (!f) return s;
    std::array<char, 4096> b;
    for (size_t n; (n = fread(b.data(), 1, b.size(), f)) > 0;) s.texto.append(b.data(), n);
    const int estado = pclose(f);
    if (WIFEXITED(estado)) s.codigo = WEXITSTATUS(estado);
    return s;
}

TEST(Cli, PerftELista) {
    auto s = Executa("perft --regra 1 --modo humano --prof 5");
    EXPECT_EQ(s.codigo, 0);
    EXPECT_EQ(s.texto.rfind("1 7\n2 49\n3 302\n4 1469\n5 7473\ntempo ", 0), 0u) << s.texto;

    s = Executa("lista --regra 1 --modo humano --tabuleiro '" +
                Texto(1, {{66, 1}, {55, 2}, {33, 2}, {35, 2}}) + "'");
    EXPECT_EQ(s.codigo, 0);
    EXPECT_EQ(s.texto, "66-44-55-44-22-33\n66-44-55-44-26-35\nMaiorTexto=6\n");
}

TEST(Cli, ArgumentosRuinsSaemCom2) {
    const std::string tabuleiro = " --tabuleiro '" + Texto(1, {{62, 1}, {13, 2}}) + "'";
    std::string treze = "lista --tabuleiro '2,"; // thirteen men of side 2
    for (int i = 1, n = 0; i <= 64; ++i)
        treze += CasaClara(CasaDoIndice(i)) ? "0," : n++ < 13 ? "2," : "3,";
    const std::string longo(100000, '9');
    const std::string casos[] = {"",
                                 "xyz",
                                 "perft --regra 5 --prof 2",
                                 "perft --regra 1 --prof",
                                 "perft --regra 1 --prof 0",
                                 "perft --regra 1 --prof abc",
                                 "perft --regra 1 --prof 99",
                                 "perft --regra 1 --modo outro --prof 2",
                                 "perft --foo 1",
                                 "lista --regra 1",
                                 "lista --tabuleiro '1,2,3,'",
                                 "lista --tabuleiro '1,0,x,0,2,0,2,0,2,2,0,2,0,2,0,2,0,0'",
                                 treze + "'",
                                 "lista --tabuleiro " + longo,
                                 "analisa" + tabuleiro,
                                 "analisa --tempo 1 --prof 2" + tabuleiro,
                                 "partida --tipo XX",
                                 "partida --nivel1 9"};
    for (const auto& a : casos) EXPECT_EQ(Executa(a).codigo, 2) << a; // and not a signal
}

// Two beginners without --tempo: their 400 ms pause comes out of their budget, so most of
// their moves are the first iteration's; each move is followed by the computer's report.
TEST(Cli, IniciantesPensamUmaIteracaoNaMaiorParteDasJogadas) {
    const auto s = Executa("partida --tipo CC --nivel1 1 --nivel2 1 --regra 4");
    ASSERT_EQ(s.codigo, 0) << s.texto;
    int relatos = 0, rasos = 0, jogadas = 0;
    for (size_t i = 0; (i = s.texto.find('\n', i)) != std::string::npos;) {
        const std::string linha = s.texto.substr(i + 1, s.texto.find('\n', i + 1) - i - 1);
        ++i;
        jogadas += linha.rfind("Jogada: ", 0) == 0;
        if (linha.rfind("Computador: Valor: ", 0) != 0) continue;
        ++relatos;
        EXPECT_NE(linha.find("  Posições: "), std::string::npos) << linha;
        rasos += linha.find("  Profundidade: 1  ") != std::string::npos;
    }
    EXPECT_GE(relatos, jogadas);
    EXPECT_GT(jogadas, 4);
    EXPECT_GT(2 * rasos, relatos) << rasos << " of " << relatos;
}

// Two computers of the first level play for some twenty seconds: labelled slow.
TEST(CliLento, PartidaEntreComputadoresChegaAoFim) {
    // a twentieth of a second a move: a whole game in seconds
    const auto s = Executa("partida --tipo CC --nivel1 1 --nivel2 1 --tempo 0.05");
    ASSERT_EQ(s.codigo, 0) << s.texto;
    EXPECT_EQ(s.texto.rfind("Regra: Peão captura para trás\n", 0), 0u);
    const std::string ultima = s.texto.substr(s.texto.find_last_of('\n', s.texto.size() - 2) + 1);
    EXPECT_TRUE(ultima == "Vencedor: CPU 1\n" || ultima == "Vencedor: CPU 2\n" ||
                ultima == "Resultado: empate\n")
        << ultima;
}

} // namespace
} // namespace velmora
