// The turn cycle and the history, driven by clicks fed through the event pump of a
// simulated platform whose clock moves only when the game waits.
#include "apoio.h"

#include "core/contexto.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <set>

namespace velmora {
namespace {

using teste::Jog;
using teste::Pos;
using teste::Texto;

// Records the hooks' calls, and plays the computer's turns with the first move of its list.
class Arredores : public Ganchos, public Pensador {
  public:
    explicit Arredores(Contexto& c) : ctx(c) {}
    std::vector<std::string> chamadas;
    bool agendado = false;
    int vezes = 0; // computer turns
    void AgendaPlayGame() override { agendado = true; }
    void finaliza(uint8_t r) override {
        chamadas.push_back("finaliza " + std::to_string(r));
        ctx.StartInitGame = true; // one game only
    }
    void Restart_Game() override { chamadas.push_back("Restart_Game"); }
    uint8_t PensaJogada() override {
        ++vezes;
        ctx.Atual.IniLista = 1;
        ctx.gerador().ListaHumano(ctx.Atual);
        ctx.FazJogadaNaTela(Jogada(ctx.gerador().Slot(1)));
        ctx.Atual.Vez = static_cast<uint8_t>(3 - ctx.Atual.Vez);
        ctx.GravaHistorico(ctx.Atual.Vez, false);
        return 0;
    }

  private:
    Contexto& ctx;
};

// What the player sees at a wait for a click.
struct Foto {
    std::string msg, clicado, tabuleiro;
    std::set<int> marcadas;
    int vez, atual, ultima, contaEmpate, saldo;
    bool voltou;
};

class Turno : public ::testing::Test {
  protected:
    PlataformaSimulada plat;
    Contexto ctx{plat};
    Arredores ganchos{ctx};
    std::deque<int> cliques;
    int lanceDaFila = 0; // clicks queued by JogaPrimeira belong to this position
    // Runs at a wait with no click queued: queues clicks or browses, else the game stops.
    std::function<void()> aoEsperar;
    std::vector<Foto> fotos;    // at every wait
    std::vector<Foto> decisoes; // at the waits that found no click queued

    void SetUp() override {
        ctx.ganchos = &ganchos;
        ctx.pensador = &ganchos;
        ctx.Game.Modo = 3;
        ctx.Game.Tipo = "HH";
        plat.aoProcessar = [this] { Bomba(); };
    }
    void Bomba() {
        if (!ctx.EsperaClique()) return;
        Foto f{ctx.painel.lbMsg.Texto, ctx.TextoClicado, TextoComVez(ctx.Atual), {},
               ctx.Atual.Vez,          ctx.JogadaAtual,  ctx.UltimaJogada,       ctx.ContaEmpate,
               ctx.Atual.Saldo,        ctx.Game.Voltou};
        for (int s = 1; s <= 100; ++s)
            if (ctx.painel.Marcadas[s]) f.marcadas.insert(s);
        fotos.push_back(f);
        if (lanceDaFila && lanceDaFila != ctx.JogadaAtual) cliques.clear(); // already played
        if (cliques.empty()) {
            decisoes.push_back(f);
            if (aoEsperar) aoEsperar();
        }
        if (ganchos.agendado) return; // browsing ends this turn
        if (cliques.empty()) {
            ctx.Game.Fim = true;
            return;
        }
        ctx.Clique(cliques.front());
        cliques.pop_front();
    }
    // PlayGame, and again each time browsing asked for it.
    void Joga(bool novo) {
        novo ? ctx.IniciaJogo() : ctx.PlayGame();
        while (ganchos.agendado) {
            ganchos.agendado = false;
            ctx.PlayGame();
        }
    }
    void Carrega(int regra, const std::string& texto) {
        ctx.Game.Regra = regra;
        ASSERT_TRUE(ctx.CarregaBoard(texto));
    }
    // Clicks the first move of the list: its origin, then its landing squares.
    void JogaPrimeira() {
        const Jogada& j = ctx.gerador().Slot(ctx.Atual.IniLista);
        cliques = {j[0]};
        for (int k = 1; k < j.tamanho(); k += 3) cliques.push_back(j[k]);
        lanceDaFila = ctx.JogadaAtual;
    }
};

TEST_F(Turno, CliquesNaPosicaoInicial) {
    // C3 has two landing squares: a third square, with a piece or empty, is no move;
    // A3 has only A3-B4, played at the first click
    cliques = {64, 33, 64, 44, 62};
    Joga(true);
    ASSERT_EQ(fotos.size(), 6u);
    for (int i : {1, 3}) {
        EXPECT_EQ(fotos[i].marcadas, (std::set<int>{64, 53, 55}));
        EXPECT_EQ(fotos[i].clicado, std::string(1, char(64)));
        EXPECT_EQ(fotos[i + 1].msg, "Movimento ilegal");
        EXPECT_EQ(fotos[i + 1].clicado, "");
        EXPECT_TRUE(fotos[i + 1].marcadas.empty());
        EXPECT_EQ(fotos[i + 1].tabuleiro, TextoComVez(PosicaoInicial()));
    }
    EXPECT_EQ(fotos[5].vez, 2);
    EXPECT_EQ(fotos[5].tabuleiro, ctx.Historico[2]);
    EXPECT_EQ(ctx.TipoCasa(53), 1);
}

TEST_F(Turno, RotasComAMesmaPrimeiraChegadaPedemMais) {
    Carrega(1, Texto(1, {{66, 1}, {55, 2}, {33, 2}, {35, 2}}));
    cliques = {66, 44, 22};
    Joga(false);
    ASSERT_EQ(fotos.size(), 4u);
    EXPECT_EQ(fotos[0].marcadas, std::set<int>{66}); // the only piece that can move
    EXPECT_EQ(fotos[1].msg, "Mais...");
    EXPECT_EQ(fotos[1].marcadas, (std::set<int>{66, 44}));
    EXPECT_EQ(fotos[2].msg, "Mais...");
    EXPECT_EQ(fotos[2].clicado, std::string({char(66), char(44), '?', char(44)}));
    EXPECT_EQ(fotos[2].marcadas, (std::set<int>{66, 44, 22, 26}));
    EXPECT_EQ(fotos[3].msg, "");
    EXPECT_EQ(fotos[3].tabuleiro, Texto(2, {{22, 1}, {35, 2}}));
}

TEST_F(Turno, LadoSemJogadaPerdeNaSuaVez) {
    const std::pair<std::string, int> casos[] = {
        {Texto(1, {{82, 1}, {73, 2}, {64, 2}}), 2},
        {Texto(2, {{19, 2}, {28, 1}, {37, 1}}), 1},
    };
    for (const auto& [texto, vencedor] : casos) {
        ganchos.chamadas.clear();
        ctx.StartInitGame = false;
        Carrega(1, texto);
        Joga(false);
        EXPECT_TRUE(fotos.empty());
        EXPECT_EQ(ctx.painel.lbMsg.Texto, "Você perdeu.");
        EXPECT_EQ(ganchos.chamadas,
                  std::vector<std::string>{"finaliza " + std::to_string(vencedor)});
        EXPECT_EQ(ctx.Atual.Vez, vencedor);
    }
}

TEST_F(Turno, TrintaLancesDeDamaEmpatam) {
    // kings of one square: side 1 between 46 and 57, side 2 between 24 and 13; the 30th move
    // is one more such step, or side 2 taking the king that side 1 offered on 35
    const std::deque<int> fim[] = {{46, 57, 24, 13}, {46, 35, 24}};
    for (const auto& ultimos : fim) {
        const bool empata = ultimos.size() == 4;
        SCOPED_TRACE(empata);
        fotos.clear();
        ganchos.chamadas.clear();
        Carrega(4, Texto(1, {{46, 10}, {82, 1}, {24, 20}}));
        const int ciclo[4][2] = {{46, 57}, {24, 13}, {57, 46}, {13, 24}};
        cliques.clear();
        for (int i = 0; i < 28; ++i)
            cliques.insert(cliques.end(), {ciclo[i % 4][0], ciclo[i % 4][1]});
        cliques.insert(cliques.end(), ultimos.begin(), ultimos.end());
        Joga(false);
        ASSERT_EQ(fotos.size(), 60u);
        EXPECT_EQ(fotos[58].contaEmpate, 29);
        EXPECT_EQ(ctx.painel.lbMsg.Texto == "Jogo empatado", empata);
        EXPECT_EQ(ganchos.chamadas,
                  empata ? std::vector<std::string>{"Restart_Game"} : std::vector<std::string>{});
        EXPECT_EQ(ctx.ContaEmpate, 0);
        EXPECT_EQ(fotos.back().vez, empata ? 2 : 1); // play went on after the capture
    }
}

TEST_F(Turno, ContagemDeLancesDeDamaNaTela) {
    const struct {
        Posicao pos;
        Jogada jogada;
        int conta; // from 5
    } casos[] = {
        {Pos(1, {{55, 10}}), Jog({55, 44}), 6},
        {Pos(1, {{55, 1}}), Jog({55, 44}), 0},
        {Pos(1, {{24, 1}}), Jog({24, 13}), 6}, // a man crowned counts as a king's step
        {Pos(1, {{82, 10}, {64, 2}, {35, 2}}), Jog({82, 46, 64, 46, 24, 35}), 0},
    };
    for (const auto& c : casos) {
        ctx.Atual = c.pos;
        ctx.RedesenhaCasas();
        ctx.ContaEmpate = 5;
        ASSERT_TRUE(ctx.FazJogadaNaTela(c.jogada));
        EXPECT_EQ(ctx.ContaEmpate, c.conta) << JogadaEmNumeros(c.jogada);
    }
}

TEST_F(Turno, VoltarEAvancarNoModo3) {
    Posicao p = PosicaoInicial(); // a man of side 2 on 53, to be taken at once
    std::swap(p.Casas[33], p.Casas[53]);
    Carrega(1, TextoComVez(p));
    // at each wait: four moves, forward at the last position, back, forward, to the first,
    // back at the first, forward twice, and a new move from entry 3
    const int acao[] = {-1, -1, -1, -1, 2, 1, 2, 0, 1, 2, 2, -1};
    aoEsperar = [&] {
        const size_t i = decisoes.size() - 1;
        if (i >= std::size(acao)) return;
        if (acao[i] < 0)
            JogaPrimeira();
        else
            ctx.Image6_Click(acao[i]);
    };
    Joga(false);
    ASSERT_EQ(decisoes.size(), 13u);
    const int atual[] = {1, 2, 3, 4, 5, 5, 4, 5, 1, 1, 2, 3, 4};
    for (size_t i = 0; i < decisoes.size(); ++i) {
        const Foto& d = decisoes[i];
        EXPECT_EQ(d.atual, atual[i]) << i;
        EXPECT_EQ(d.voltou, i == 12) << i;
        EXPECT_EQ(d.ultima, i >= 12 ? 4 : i >= 4 ? 5 : int(i) + 1) << i;
        // the capture's point for its direction is gone once the board is read back
        const int material = PosicaoDoTexto(d.tabuleiro)->Saldo;
        EXPECT_EQ(d.saldo, material + (i >= 1 && i <= 4 ? 1 : 0)) << i;
        if (i < 12) { // each entry as it was first seen
            EXPECT_EQ(d.tabuleiro, decisoes[atual[i] - 1].tabuleiro) << i;
        }
    }
    EXPECT_EQ(ctx.painel.Label18.Texto, "Voltou jogadas");
    EXPECT_EQ(ctx.painel.Label10.Texto, "4/4");
}

TEST_F(Turno, NoModo1OPassoSaoDuasPosicoes) {
    ctx.Game.Modo = 1;
    ctx.Game.Tipo = "HC";
    aoEsperar = [&] { // the human moves twice, then goes one step back from entry 5
        if (decisoes.size() <= 2)
            JogaPrimeira();
        else if (decisoes.size() == 3)
            ctx.Image6_Click(1);
    };
    Joga(true);
    ASSERT_EQ(decisoes.size(), 4u);
    EXPECT_EQ(decisoes[2].atual, 5);
    EXPECT_EQ(decisoes[3].atual, 3);
    EXPECT_EQ(decisoes[3].tabuleiro, decisoes[1].tabuleiro);
    EXPECT_EQ(decisoes[3].vez, 1);
    EXPECT_EQ(ganchos.vezes, 2);
}

} // namespace
} // namespace velmora
