// The search, the computer's turn, the budgets and the forecast, on a simulated clock that
// moves only when the engine pumps or sleeps.
#include "apoio.h"

#include "engine/motor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace velmora {
namespace {

using teste::Pos;

class Motor_ : public ::testing::Test {
  protected:
    PlataformaSimulada plat;
    Contexto ctx{plat};
    Motor motor{ctx};
    double passo = 0;               // seconds the clock moves at each pump
    std::vector<std::string> visto; // lbYMM at each pump

    void SetUp() override {
        plat.aoProcessar = [this] {
            plat.Avanca(passo);
            const std::string& t = ctx.painel.lbYMM.Texto;
            if (!t.empty() && (visto.empty() || visto.back() != t)) visto.push_back(t);
        };
    }
    // A computer turn at `p`, with the history started there.
    uint8_t Pensa(const Posicao& p, int regra = 1, int nivel = 1) {
        ctx.Game.Regra = regra;
        ctx.Atual = p;
        ctx.RedesenhaCasas();
        ctx.GravaInicioHistorico();
        ctx.Game.Fim = false;
        ctx.Jogador[p.Vez].Nivel = static_cast<int16_t>(nivel);
        return motor.PensaJogada();
    }
};

TEST_F(Motor_, NoHorizonteSoAvaliaSemCapturaPendente) {
    const struct {
        Posicao pos;
        int saldo; // written over the material
        int valor;
        int64_t nos;
    } casos[] = {
        {Pos(1, {{55, 1}, {13, 2}}), 7, 7, 1},
        {Pos(2, {{55, 1}, {13, 2}}), 7, -7, 1},
        {Pos(1, {{55, 1}, {44, 2}, {46, 2}, {19, 2}}), -20, -20 + 11, 3}, // a capture pending
    };
    for (const auto& c : casos) {
        Posicao p = c.pos;
        p.Saldo = static_cast<int16_t>(c.saldo);
        motor.Nos = 0;
        EXPECT_EQ(motor.AlfaBeta(p, 0, 0, -10000, 10000), c.valor) << c.saldo;
        EXPECT_EQ(motor.Nos, c.nos) << c.saldo;
        EXPECT_EQ(ValorPosicao(p), p.Vez == 1 ? c.saldo : -c.saldo);
    }
}

TEST_F(Motor_, AprofundamentoParaCedo) {
    const struct {
        Posicao pos;
        int valor, iteracoes;
        bool unica;
        std::string jogada;
    } casos[] = {
        {Pos(1, {{62, 1}, {13, 2}}), 0, 1, true, "62-53"},
        {Pos(1, {{82, 1}, {73, 2}, {64, 2}}), -10000, 1, false, ""},
        // whatever side 2 plays then, 35 takes its last piece: no move for it at ply 3
        {Pos(1, {{35, 1}, {88, 1}, {15, 2}}), 9997, 2, false, "88-77"},
    };
    for (const auto& c : casos) {
        Posicao p = c.pos;
        EXPECT_EQ(motor.Aprofunda(p, 1e6), c.valor);
        EXPECT_EQ(motor.LimiteProf, c.iteracoes) << c.valor;
        EXPECT_EQ(motor.JogadaUnica, c.unica) << c.valor;
        EXPECT_EQ(JogadaEmNumeros(motor.Linha(0, 0)), c.jogada) << c.valor;
    }
    EXPECT_EQ(plat.decorrido, 0.0); // stopped by the values, not by the clock
}

TEST_F(Motor_, MesmaBuscaMesmaLinha) {
    std::vector<std::string> linhas[2];
    for (auto& linha : linhas) {
        Posicao p = PosicaoInicial();
        motor.Aprofunda(p, 1e6, 9);
        for (int j = 0; j < Motor::PLY_MAXIMO && !motor.Linha(0, j).vazia(); ++j)
            linha.push_back(JogadaEmNumeros(motor.Linha(0, j)));
    }
    EXPECT_GE(linhas[0].size(), 7u);
    EXPECT_EQ(linhas[0], linhas[1]);
}

TEST_F(Motor_, AtalhoDoGeradorNaoMudaABusca) {
    const Posicao posicoes[] = {
        PosicaoInicial(),
        Pos(1, {{62, 1},
                {64, 1},
                {73, 1},
                {75, 1},
                {77, 1},
                {55, 1},
                {57, 1},
                {46, 2},
                {35, 2},
                {37, 2},
                {24, 2},
                {26, 2},
                {28, 2},
                {13, 2}}),
        Pos(2, {{82, 10}, {66, 1}, {55, 1}, {37, 20}, {24, 2}, {26, 2}, {44, 2}}),
    };
    for (int regra = 1; regra <= 4; ++regra) {
        for (const Posicao& inicio : posicoes) {
            ctx.Game.Regra = regra;
            struct Resultado {
                int valor;
                int64_t nos;
                int cortes, maxPly;
                std::string lance;
            } r[2];
            for (int atalho = 0; atalho <= 1; ++atalho) {
                ctx.gerador().Atalho = atalho == 1;
                ctx.gerador().SemeiaRotacao(7);
                Posicao p = inicio;
                const int v = motor.Aprofunda(p, 1e6, 9);
                r[atalho] = {v, motor.Nos, motor.Cortes, motor.MaxPly,
                             JogadaEmNumeros(motor.Linha(0, 0))};
                // the captures followed in place gave the root its squares back
                p.IniLista = inicio.IniLista;
                p.FimLista = inicio.FimLista;
                EXPECT_EQ(p, inicio) << regra << " " << TextoComVez(inicio);
            }
            EXPECT_EQ(r[0].valor, r[1].valor) << regra << " " << TextoComVez(inicio);
            // Under rule set 1 side 2's kings draw their first direction at random, once
            // for every king asked, and the fast way asks fewer: only the value must agree.
            if (regra == 1) continue;
            EXPECT_EQ(r[0].nos, r[1].nos) << regra << " " << TextoComVez(inicio);
            EXPECT_EQ(r[0].cortes, r[1].cortes);
            EXPECT_EQ(r[0].maxPly, r[1].maxPly);
            EXPECT_EQ(r[0].lance, r[1].lance);
        }
    }
    ctx.gerador().Atalho = true;
}

// Searches at a fixed depth recorded from the engine before its fast paths (random boards
// of all four rule sets, a stored line followed across the iterations, moves of that line
// that no longer belong to the board): each must visit the same nodes with the same cuts,
// depth, value and first move.
TEST(Busca, RepeteAsBuscasGravadas) {
    struct Gravada {
        const char* tabuleiro;
        int regra, prof, valor;
        int64_t nos;
        int cortes, maxPly;
        const char* lance;
    };
    static const Gravada gravadas[] = {
        {"2,0,3,0,3,0,3,0,3,1,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,3,"
         "0,3,0,3,0,0,3,0,3,0,3,0,10,3,0,20,0,3,0,3,0,",
         1, 5, -30, 3458, 1015, 6, "C1-A3"},
        {"2,0,3,0,10,0,10,0,3,3,0,3,0,3,0,3,0,0,20,0,2,0,3,0,3,3,0,3,0,3,0,3,0,0,3,0,2,0,2,0,2,1,0,"
         "1,0,2,0,2,0,0,2,0,3,0,2,0,3,1,0,10,0,3,0,3,0,",
         2, 5, -12, 4383, 1743, 14, "B6-C5"},
        {"1,0,3,0,3,0,3,0,3,3,0,3,0,3,0,1,0,0,3,0,3,0,1,0,3,3,0,3,0,3,0,10,0,0,2,0,3,0,1,0,3,3,0,3,"
         "0,3,0,1,0,0,3,0,3,0,3,0,2,3,0,3,0,3,0,3,0,",
         2, 7, 70, 17928, 5504, 11, "F6-E7"},
        {"1,0,3,0,2,0,2,0,3,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,1,0,3,0,3,0,0,10,0,3,0,3,0,3,3,0,3,"
         "0,3,0,3,0,0,3,0,2,0,3,0,3,3,0,3,0,20,0,20,0,",
         2, 5, -59, 945, 334, 8, "B4-A3"},
        {"1,0,2,0,10,0,10,0,2,1,0,2,0,2,0,3,0,0,3,0,10,0,2,0,3,3,0,2,0,1,0,3,0,0,3,0,3,0,3,0,1,3,0,"
         "10,0,1,0,3,0,0,2,0,2,0,2,0,1,20,0,20,0,10,0,3,0,",
         2, 7, 72, 29842, 7990, 17, "D6-A3-C5"},
        {"1,0,3,0,10,0,3,0,3,3,0,2,0,3,0,3,0,0,3,0,3,0,10,0,3,2,0,20,0,3,0,3,0,0,3,0,3,0,3,0,2,2,0,"
         "3,0,3,0,3,0,0,3,0,3,0,2,0,2,3,0,20,0,3,0,1,0,",
         4, 6, -41, 2066, 604, 9, "D8-B6-C7-B6-D4-C5"},
        {"2,0,3,0,3,0,3,0,20,1,0,1,0,1,0,2,0,0,3,0,10,0,10,0,10,2,0,3,0,1,0,3,0,0,2,0,3,0,2,0,10,3,"
         "0,2,0,3,0,3,0,0,1,0,1,0,3,0,3,3,0,1,0,3,0,20,0,",
         1, 5, -27, 677, 244, 11, "C3-E1-D2"},
        {"1,0,3,0,3,0,10,0,3,2,0,1,0,2,0,2,0,0,1,0,2,0,10,0,3,3,0,3,0,2,0,2,0,0,3,0,3,0,3,0,10,3,0,"
         "2,0,3,0,3,0,0,1,0,1,0,2,0,1,3,0,3,0,3,0,3,0,",
         3, 7, 78, 7481, 2017, 11, "F6-D4-E5-D4-G1-F2"},
        {"2,0,3,0,3,0,3,0,3,3,0,3,0,1,0,3,0,0,3,0,10,0,3,0,3,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,3,"
         "0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,20,0,3,0,3,0,",
         3, 6, -30, 10401, 2944, 8, "C1-B2"},
        {"2,0,3,0,3,0,10,0,2,3,0,3,0,1,0,3,0,0,3,0,1,0,3,0,3,3,0,2,0,2,0,2,0,0,3,0,2,0,1,0,2,2,0,3,"
         "0,3,0,1,0,0,3,0,3,0,3,0,3,1,0,3,0,3,0,3,0,",
         1, 7, 10, 584, 203, 10, "E5-C7-D6"},
        {"1,0,3,0,3,0,3,0,3,3,0,3,0,1,0,3,0,0,3,0,3,0,3,0,3,2,0,3,0,3,0,1,0,0,3,0,3,0,3,0,3,3,0,3,"
         "0,2,0,3,0,0,3,0,3,0,3,0,3,3,0,3,0,3,0,20,0,",
         2, 5, -30, 737, 190, 6, "E7-D8"},
        {"2,0,2,0,3,0,3,0,2,2,0,1,0,3,0,3,0,0,10,0,3,0,3,0,3,3,0,3,0,3,0,3,0,0,2,0,10,0,2,0,1,2,0,"
         "3,0,10,0,2,0,0,2,0,3,0,3,0,3,3,0,3,0,20,0,3,0,",
         3, 6, 53, 606, 213, 9, "F4-D2-E3"},
        {"1,0,3,0,3,0,10,0,3,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,2,3,0,3,0,2,0,3,0,0,3,0,3,0,3,0,3,3,0,3,"
         "0,3,0,3,0,0,2,0,3,0,3,0,3,1,0,10,0,3,0,3,0,",
         3, 6, 51, 1783, 635, 9, "C1-A3-B2"},
        {"1,0,2,0,10,0,2,0,2,1,0,3,0,2,0,3,0,0,1,0,3,0,3,0,1,3,0,3,0,3,0,10,0,0,3,0,1,0,2,0,2,10,0,"
         "2,0,20,0,1,0,0,2,0,10,0,1,0,10,20,0,3,0,3,0,3,0,",
         3, 7, 103, 6844, 2344, 15, "D2-A5-C3"},
        {"2,0,10,0,10,0,3,0,3,3,0,3,0,3,0,3,0,0,3,0,2,0,1,0,2,3,0,3,0,1,0,20,0,0,3,0,3,0,3,0,1,3,0,"
         "3,0,3,0,2,0,0,10,0,3,0,3,0,3,1,0,3,0,3,0,3,0,",
         3, 6, -88, 899, 204, 8, "G5-E7-F6"},
        {"1,0,3,0,3,0,3,0,3,2,0,2,0,2,0,3,0,0,1,0,3,0,1,0,3,3,0,1,0,3,0,3,0,0,1,0,2,0,3,0,10,3,0,"
         "20,0,3,0,2,0,0,3,0,3,0,3,0,3,20,0,3,0,3,0,3,0,",
         3, 6, -27, 2123, 706, 13, "F6-D8-E7"},
        {"1,0,2,0,20,0,2,0,3,2,0,3,0,1,0,3,0,0,3,0,3,0,20,0,10,3,0,3,0,3,0,2,0,0,2,0,3,0,1,0,3,10,"
         "0,3,0,3,0,3,0,0,3,0,3,0,20,0,3,20,0,3,0,10,0,20,0,",
         2, 6, -41, 1477, 417, 12, "E1-G3-F2"},
        {"2,0,3,0,3,0,3,0,3,2,0,3,0,3,0,3,0,0,10,0,2,0,1,0,3,3,0,3,0,3,0,2,0,0,1,0,1,0,3,0,1,3,0,"
         "10,0,2,0,1,0,0,3,0,1,0,10,0,2,1,0,3,0,3,0,1,0,",
         1, 7, -93, 8504, 3228, 12, "A7-C5-B6-C5-A3-B4"},
        {"1,0,20,0,2,0,3,0,10,1,0,20,0,2,0,3,0,0,2,0,3,0,3,0,3,10,0,3,0,2,0,3,0,0,2,0,3,0,20,0,3,3,"
         "0,1,0,3,0,2,0,0,2,0,1,0,3,0,3,1,0,1,0,3,0,1,0,",
         3, 6, -20, 4282, 1534, 14, "H8-D4-E5"},
        {"1,0,3,0,10,0,3,0,3,3,0,3,0,3,0,3,0,0,10,0,2,0,3,0,1,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,10,1,0,"
         "1,0,1,0,2,0,0,1,0,1,0,1,0,3,3,0,1,0,3,0,3,0,",
         3, 7, 9995, 555, 142, 6, "D8-F6"},
        {"2,0,3,0,20,0,10,0,3,3,0,3,0,1,0,1,0,0,2,0,3,0,2,0,1,3,0,1,0,3,0,3,0,0,20,0,3,0,3,0,1,2,0,"
         "3,0,3,0,3,0,0,20,0,2,0,3,0,3,3,0,3,0,10,0,20,0,",
         4, 7, 10, 7229, 1990, 10, "B6-D4-C5"},
        {"1,0,3,0,3,0,2,0,2,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,3,0,3,0,3,0,0,10,0,2,0,2,0,3,3,0,3,"
         "0,20,0,3,0,0,3,0,1,0,3,0,3,20,0,3,0,3,0,1,0,",
         2, 6, -41, 2059, 711, 9, "B4-C5"},
        {"2,0,10,0,3,0,2,0,3,3,0,3,0,3,0,3,0,0,10,0,2,0,1,0,3,3,0,3,0,1,0,20,0,0,1,0,3,0,3,0,3,3,0,"
         "3,0,3,0,3,0,0,3,0,2,0,1,0,3,3,0,1,0,3,0,20,0,",
         2, 5, 38, 767, 176, 7, "D6-F4-E5"},
        {"1,0,10,0,3,0,3,0,3,3,0,3,0,3,0,2,0,0,3,0,3,0,3,0,3,3,0,3,0,3,0,3,0,0,1,0,3,0,1,0,2,3,0,3,"
         "0,3,0,3,0,0,3,0,10,0,3,0,3,3,0,3,0,3,0,3,0,",
         4, 5, 60, 2035, 429, 7, "D2-C3"},
        {"1,0,20,0,3,0,3,0,3,3,0,3,0,3,0,3,0,0,20,0,3,0,3,0,3,3,0,10,0,3,0,3,0,0,3,0,3,0,3,0,2,3,0,"
         "3,0,20,0,3,0,0,3,0,3,0,3,0,3,3,0,3,0,3,0,3,0,",
         2, 6, -9994, 684, 158, 6, "C5-G1-E3"},
        {"2,0,10,0,3,0,3,0,3,10,0,3,0,3,0,3,0,0,1,0,20,0,3,0,3,3,0,3,0,3,0,3,0,0,3,0,3,0,10,0,20,3,"
         "0,1,0,3,0,3,0,0,3,0,3,0,3,0,3,3,0,3,0,3,0,3,0,",
         2, 5, -19, 1376, 422, 8, "D6-H2-F4"},
        {"2,0,3,0,20,0,3,0,3,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,1,0,20,0,3,0,3,0,0,3,0,20,0,3,0,3,3,0,"
         "3,0,20,0,1,0,0,3,0,1,0,20,0,1,3,0,20,0,20,0,20,0,",
         1, 6, 9993, 4868, 1182, 9, "E1-B4-D2"},
    };
    for (const Gravada& b : gravadas) {
        PlataformaSemTela plataforma;
        Contexto ctx(plataforma);
        ctx.Game.Regra = b.regra;
        ctx.Atual = *PosicaoDoTexto(b.tabuleiro);
        Motor motor(ctx);
        const int v = motor.Aprofunda(ctx.Atual, 1e9, b.prof);
        SCOPED_TRACE(std::string(b.tabuleiro) + " regra " + std::to_string(b.regra));
        EXPECT_EQ(v, b.valor);
        EXPECT_EQ(motor.Nos, b.nos);
        EXPECT_EQ(motor.Cortes, b.cortes);
        EXPECT_EQ(motor.MaxPly, b.maxPly);
        EXPECT_EQ(JogadaEmNomes(motor.Linha(0, 0)), b.lance);
    }
}

TEST_F(Motor_, VezDoComputador) {
    passo = 1;
    EXPECT_EQ(Pensa(Pos(2, {{19, 2}, {82, 1}})), 0); // a single move
    EXPECT_EQ(visto, (std::vector<std::string>{"Pensando...", "Minha vez de jogar"}));
    EXPECT_EQ(ctx.painel.lbValue.Texto, "Unknown");
    EXPECT_EQ(ctx.painel.lbMoves.Texto, "H8-G7");
    EXPECT_EQ(motor.LimiteProf, 1);
    EXPECT_EQ(ctx.Atual.Vez, 1);
    EXPECT_EQ(ctx.Historico[ctx.JogadaAtual], TextoComVez(ctx.Atual));

    EXPECT_EQ(Pensa(Pos(2, {{19, 2}, {28, 1}, {37, 1}})), 1); // no move
    EXPECT_EQ(ctx.painel.lbMsg.Texto, "CPU Perdeu.");
    EXPECT_TRUE(ctx.Game.Fim);
    EXPECT_EQ(ctx.Atual.Vez, 1);
}

TEST_F(Motor_, APausaDosNiveisUmEDoisSaiDoTempoDoNivel) {
    // Each pump between iterations costs a tenth of a second. At level 1 the 400 ms pause
    // uses up the budget (0.32, 0.4 or 0.48 s), so a single iteration runs; level 2 keeps
    // what its 0.64 to 0.96 s leave after the pause, three to six iterations.
    passo = 0.1;
    const struct { int nivel, minimo, maximo; } casos[] = {{1, 1, 1}, {2, 3, 6}};
    for (const auto& c : casos) {
        std::set<int> vistas;
        for (int vez = 0; vez < 16; ++vez) {
            plat.Avanca(0.037); // another draw of the budget
            EXPECT_EQ(Pensa(PosicaoInicial(), 1, c.nivel), 0);
            EXPECT_NE(ctx.TextoTabuleiro(), TextoTabuleiro(PosicaoInicial())); // it moved
            vistas.insert(motor.LimiteProf);
        }
        EXPECT_GE(*vistas.begin(), c.minimo) << c.nivel;
        EXPECT_LE(*vistas.rbegin(), c.maximo) << c.nivel;
    }
}

TEST_F(Motor_, FimPostoEntreIteracoesJogaOLanceAchadoMenosEmOutroTabuleiro) {
    // A handler runs at the second pump, between the first two iterations: it ends the game
    // (a new dialog waits), or it also loads another board, as the history does.
    const Posicao outra = Pos(2, {{62, 1}, {64, 1}, {13, 2}, {15, 2}});
    for (const bool carrega : {false, true}) {
        int bombas = 0;
        plat.aoProcessar = [&] {
            plat.Avanca(0.5);
            if (++bombas != 2) return;
            ctx.Game.Fim = true;
            if (carrega) ctx.CarregaBoard(TextoComVez(outra));
        };
        EXPECT_EQ(Pensa(PosicaoInicial(), 1, 3), 0) << carrega;
        EXPECT_TRUE(ctx.Game.Fim);
        if (carrega) {
            EXPECT_EQ(ctx.TextoTabuleiro(), TextoTabuleiro(outra)); // nothing played on it
            EXPECT_EQ(ctx.Atual.Vez, 2);
            EXPECT_EQ(ctx.UltimaJogada, 1);
        } else {
            EXPECT_EQ(ctx.QuantasPecas(1), 12); // the move found was played
            EXPECT_NE(ctx.TextoTabuleiro(), TextoTabuleiro(PosicaoInicial()));
            EXPECT_EQ(ctx.Atual.Vez, 2);
            EXPECT_EQ(ctx.UltimaJogada, 2);
            EXPECT_EQ(ctx.Historico[2], TextoComVez(ctx.Atual));
        }
    }
}

TEST_F(Motor_, OLanceJogadoEhSempreDaListaDaPosicao) {
    ctx.Game.Regra = 1;
    const Posicao duas = Pos(1, {{62, 1}, {13, 2}});
    const auto listadas = teste::Lista(1, duas, false).jogadas;
    const auto daLista = [&](const Jogada& j) {
        return std::find(listadas.begin(), listadas.end(), JogadaEmNumeros(j)) != listadas.end();
    };
    // A fresh engine has no line at all: the first move listed.
    Posicao p = duas;
    EXPECT_EQ(JogadaEmNumeros(motor.JogadaDaRaiz(p)), listadas.front());
    // No move: nothing, not a move of the line before.
    Posicao sem = Pos(1, {{82, 1}, {73, 2}, {64, 2}});
    EXPECT_TRUE(motor.JogadaDaRaiz(sem).vazia());
    // The line of another position's search is not played here.
    Posicao inicial = PosicaoInicial();
    motor.Aprofunda(inicial, 1e6, 3);
    p = duas;
    EXPECT_TRUE(daLista(motor.JogadaDaRaiz(p)));
    // After its own search: the line's first move.
    p = duas;
    motor.Aprofunda(p, 1e6, 3);
    const Jogada melhor = motor.Linha(0, 0);
    p = duas;
    EXPECT_EQ(motor.JogadaDaRaiz(p), melhor);
}

TEST_F(Motor_, RepeticaoNoFimDaLinha) {
    // two kings of one square: the best line ends shuffling to and fro from depth 16 on;
    // the clock allows 16 iterations in the 2.1 seconds, or 15
    const struct {
        const char* tipo;
        double passo;
        int iteracoes;
        uint8_t resultado;
    } casos[] = {{"CC", 0.135, 16, 3}, {"CH", 0.135, 16, 0}, {"CC", 0.145, 15, 0}};
    for (const auto& c : casos) {
        ctx.Game.Tipo = c.tipo;
        passo = c.passo;
        EXPECT_EQ(Pensa(Pos(1, {{46, 10}, {24, 20}}), 4, 5), c.resultado) << c.tipo;
        EXPECT_EQ(motor.LimiteProf, c.iteracoes);
        EXPECT_EQ(motor.LinhaRepete(), c.iteracoes == 16);
        EXPECT_EQ(ctx.VaiEmpatar, c.iteracoes == 16 && c.resultado == 0);
        EXPECT_EQ(ctx.Game.Fim, c.resultado == 3);
        EXPECT_EQ(ctx.TipoCasa(46), 3); // the move was played in every case
    }
}

TEST_F(Motor_, TempoDeCadaNivel) {
    auto sorteios = [this](int nivel) { // the budgets seen over many draws, in milliseconds
        std::set<long> vistos;
        for (int i = 0; i < 80; ++i, plat.Avanca(0.37))
            vistos.insert(std::lround(1000 * motor.TempoNivel(nivel)));
        return vistos;
    };
    const long fora[] = {400, 800, 1200, 2400, 3000, 5000, 6000, 10000, 12000, 12000};
    const long torneio[] = {1500, 3000, 4000, 5000, 6000, 7000, 10000, 12000, 14000, 14000};
    for (int modo : {1, 2}) {
        ctx.Game.Modo = modo;
        for (int nivel = 1; nivel <= 10; ++nivel) {
            const long T = (modo == 2 ? torneio : fora)[nivel - 1];
            ctx.JogadaAtual = 2; // the first moves of the strong levels are quicker
            if (nivel >= 5) {
                EXPECT_EQ(sorteios(nivel), std::set<long>{T * 7 / 10});
            }
            ctx.JogadaAtual = 3;
            EXPECT_EQ(sorteios(nivel), (std::set<long>{T * 8 / 10, T, T * 12 / 10})) << nivel;
        }
    }
    ctx.Game.Modo = 1;
    ctx.Atual = Pos(1, {{82, 1}, {84, 1}, {86, 1}, {13, 2}}); // side 2 behind by two
    EXPECT_EQ(sorteios(4), std::set<long>{2880});
    EXPECT_EQ(sorteios(3), (std::set<long>{1200, 1440})); // 0.96 only when side 2 is not behind
    ctx.Atual = Pos(1, {{82, 1}, {84, 1}, {13, 2}});      // behind by one
    EXPECT_EQ(sorteios(4), (std::set<long>{2400, 2880}));
}

TEST_F(Motor_, PrevisaoDoVencedor) {
    // side 1: two kings and three men (value 9); side 2: a king and two men (5); rule 4,
    // so that one iteration sees no contact and the value is the balance itself
    const Posicao base =
        Pos(1, {{84, 10}, {88, 10}, {73, 1}, {75, 1}, {77, 1}, {13, 20}, {15, 2}, {17, 2}});
    const Posicao mais = // value 10 against 5
        Pos(1,
            {{84, 10}, {88, 10}, {73, 1}, {75, 1}, {77, 1}, {79, 1}, {13, 20}, {15, 2}, {17, 2}});
    struct {
        const char* tipo_c;
        Posicao pos;
        int vez, saldo, esperado;
    } const casos[] = {
        {"Servidor", base, 1, 26, 0},  {"Servidor", base, 1, 27, 1}, {"Servidor", base, 1, -27, 2},
        {"Servidor", base, 2, -27, 2}, {"Cliente", base, 2, -27, 1}, {"Cliente", base, 1, 26, 0},
        {"Cliente", base, 2, 26, 0},   {"Servidor", mais, 1, 0, 1},  {"Cliente", mais, 1, 0, 2},
    };
    ctx.Game.Regra = 4;
    passo = 1;
    for (const auto& c : casos) {
        ctx.Tipo_c = c.tipo_c;
        ctx.Atual = c.pos;
        ctx.Atual.Vez = static_cast<uint8_t>(c.vez);
        ctx.Atual.Saldo = static_cast<int16_t>(c.saldo);
        EXPECT_EQ(motor.VaiVencer(0.5f), c.esperado) << c.tipo_c << " " << c.vez << " " << c.saldo;
        EXPECT_EQ(motor.LimiteProf, 0);
        EXPECT_EQ(motor.Nos, 0);
    }
}

} // namespace
} // namespace velmora
