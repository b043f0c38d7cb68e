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

class Registro : public Ganchos {
  public:
    Contexto* ctx = nullptr;
    std::vector<std::string> chamadas;
    bool agendado = false;
    void AgendaPlayGame() override { agendado = true; }
    void finaliza(uint8_t r) override {
        chamadas.push_back("finaliza " + std::to_string(r));
        ctx->StartInitGame = true; // one game only
    }
    void Restart_Game() override { chamadas.push_back("Restart_Game"); }
};

// Plays the first move of its list, as a stand-in for the engine.
class CpuDeTeste : public Pensador {
  public:
    explicit CpuDeTeste(Contexto& c) : ctx(c) {}
    int vezes = 0;
    uint8_t PensaJogada() override {
        ++vezes;
        Gerador& g = ctx.gerador();
        ctx.Atual.IniLista = 1;
        g.ListaHumano(ctx.Atual);
        const Jogada j = g.Slot(1);
        ctx.FazJogadaNaTela(j);
        ctx.Atual.Vez = static_cast<uint8_t>(3 - ctx.Atual.Vez);
        ctx.GravaHistorico(ctx.Atual.Vez, false);
        return 0;
    }

  private:
    Contexto& ctx;
};

// What the player sees at each wait for a click.
struct Foto {
    std::string msg, clicado, tabuleiro;
    std::set<int> marcadas;
    int vez, atual, ultima, contaEmpate;
    bool voltou;
    int16_t saldo;
};

class Turno : public ::testing::Test {
  protected:
    PlataformaSimulada plat;
    Contexto ctx{plat};
    Registro ganchos;
    CpuDeTeste cpu{ctx};
    std::deque<int> cliques;
    // Runs at a wait with no click queued; may queue clicks or browse. Nothing queued and
    // no browsing: the game is stopped there.
    std::function<void()> aoEsperar;
    std::vector<Foto> fotos;    // at every wait
    std::vector<Foto> decisoes; // at the waits that found no click queued

    void SetUp() override {
        ganchos.ctx = &ctx;
        ctx.ganchos = &ganchos;
        ctx.pensador = &cpu;
        ctx.Game.Modo = 3;
        ctx.Game.Tipo = "HH";
        plat.aoProcessar = [this] { Bomba(); };
    }
    void Bomba() {
        if (!ctx.EsperaClique()) return;
        Foto f{ctx.painel.lbMsg.Texto, ctx.TextoClicado, TextoComVez(ctx.Atual), {},
               ctx.Atual.Vez,          ctx.JogadaAtual,  ctx.UltimaJogada,       ctx.ContaEmpate,
               ctx.Game.Voltou,        ctx.Atual.Saldo};
        for (int s = 1; s <= 100; ++s)
            if (ctx.painel.Marcadas[s]) f.marcadas.insert(s);
        fotos.push_back(f);
        if (cliques.empty()) decisoes.push_back(f);
        if (cliques.empty() && aoEsperar) aoEsperar();
        if (ganchos.agendado) return; // browsing ends this turn
        if (cliques.empty()) {
            ctx.Game.Fim = true;
            return;
        }
        const int casa = cliques.front();
        cliques.pop_front();
        ctx.Clique(casa);
    }
    // PlayGame, and again each time browsing asked for it.
    void Joga(bool novo) {
        if (novo)
            ctx.IniciaJogo();
        else
            ctx.PlayGame();
        while (ganchos.agendado) {
            ganchos.agendado = false;
            ctx.PlayGame();
        }
    }
    void Carrega(int regra, const std::string& texto) {
        ctx.Game.Regra = regra;
        ASSERT_TRUE(ctx.CarregaBoard(texto));
    }
    // Clicks the first move of the list: its origin, then its landing squares until no
    // other move agrees with the clicks.
    void JogaPrimeira() {
        Gerador& g = ctx.gerador();
        const int ini = ctx.Atual.IniLista, fim = ctx.Atual.FimLista;
        const Jogada j = g.Slot(ini);
        auto casa = [](const Jogada& m, int q) { // the q-th square clicked for m
            const int k = q == 0 ? 0 : 3 * q - 2;
            return k < m.tamanho() ? m[k] : -1;
        };
        for (int n = 1; casa(j, n - 1) != -1; ++n) {
            cliques.push_back(casa(j, n - 1));
            int iguais = 0;
            for (int i = ini; i <= fim; ++i) {
                bool igual = true;
                for (int q = 0; q < n; ++q) igual = igual && casa(g.Slot(i), q) == casa(j, q);
                iguais += igual;
            }
            if (iguais == 1) return;
        }
    }
};

TEST_F(Turno, PecaComUmaSoJogadaJogaNoPrimeiroClique) {
    cliques = {62}; // A3 has only A3-B4
    Joga(true);
    ASSERT_EQ(fotos.size(), 2u);
    EXPECT_EQ(fotos[1].vez, 2);
    EXPECT_EQ(ctx.TipoCasa(53), 1);
    EXPECT_EQ(ctx.TipoCasa(62), 3);
    EXPECT_EQ(ctx.JogadaAtual, 2);
    EXPECT_EQ(ctx.Historico[2].substr(0, 2), "2,");
}

TEST_F(Turno, CasaForaDasChegadasApagaTudo) {
    for (int terceira : {44, 33}) { // an empty square, then a piece of the other side
        SCOPED_TRACE(terceira);
        fotos.clear();
        cliques = {64, terceira};
        Joga(true);
        ASSERT_EQ(fotos.size(), 3u);
        EXPECT_EQ(fotos[1].marcadas, (std::set<int>{64, 53, 55}));
        EXPECT_EQ(fotos[1].clicado, std::string(1, char(64)));
        EXPECT_EQ(fotos[2].msg, "Movimento ilegal");
        EXPECT_EQ(fotos[2].clicado, "");
        EXPECT_TRUE(fotos[2].marcadas.empty());
        EXPECT_EQ(fotos[2].tabuleiro, TextoComVez(PosicaoInicial()));
    }
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
    EXPECT_EQ(fotos[3].vez, 2);
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

// Kings of one square shuffle: side 1 between 46 and 57, side 2 between 24 and 13.
std::deque<int> VaiEVem(int lances) {
    const int ciclo[4][2] = {{46, 57}, {24, 13}, {57, 46}, {13, 24}};
    std::deque<int> c;
    for (int i = 0; i < lances; ++i) c.insert(c.end(), {ciclo[i % 4][0], ciclo[i % 4][1]});
    return c;
}

TEST_F(Turno, TrintaLancesDeDamaEmpatam) {
    Carrega(4, Texto(1, {{46, 10}, {82, 1}, {24, 20}}));
    cliques = VaiEVem(30);
    Joga(false);
    ASSERT_EQ(fotos.size(), 60u);
    EXPECT_EQ(fotos[58].contaEmpate, 29);
    EXPECT_EQ(ctx.painel.lbMsg.Texto, "Jogo empatado");
    EXPECT_EQ(ganchos.chamadas, std::vector<std::string>{"Restart_Game"});
    EXPECT_EQ(ctx.ContaEmpate, 0);
}

TEST_F(Turno, CapturaNoTrigesimoLanceZeraAContagem) {
    Carrega(4, Texto(1, {{46, 10}, {82, 1}, {24, 20}}));
    cliques = VaiEVem(28);
    cliques.insert(cliques.end(), {46, 35, 24}); // offers the king; 24x35 is side 2's only move
    Joga(false);
    ASSERT_EQ(fotos.size(), 60u);
    EXPECT_EQ(fotos[58].contaEmpate, 29);
    EXPECT_EQ(fotos[59].contaEmpate, 0);
    EXPECT_EQ(fotos[59].vez, 1);
    EXPECT_EQ(ctx.TipoCasa(46), 20);
    EXPECT_TRUE(ganchos.chamadas.empty());
    EXPECT_NE(ctx.painel.lbMsg.Texto, "Jogo empatado");
}

TEST_F(Turno, ContagemDeLancesDeDamaNaTela) {
    const struct {
        const char* nome;
        Posicao pos;
        Jogada jogada;
        int conta; // from 5
    } casos[] = {
        {"dama anda", Pos(1, {{55, 10}}), Jog({55, 44}), 6},
        {"homem anda", Pos(1, {{55, 1}}), Jog({55, 44}), 0},
        {"homem coroado conta como dama", Pos(1, {{24, 1}}), Jog({24, 13}), 6},
        {"homem2 coroado", Pos(2, {{73, 2}}), Jog({73, 82}), 6},
        {"dama toma", Pos(1, {{55, 10}, {44, 2}}), Jog({55, 22, 44}), 0},
        {"dama toma duas", Pos(1, {{82, 10}, {64, 2}, {35, 2}}), Jog({82, 46, 64, 46, 24, 35}), 0},
    };
    for (const auto& c : casos) {
        ctx.Atual = c.pos;
        ctx.RedesenhaCasas();
        ctx.ContaEmpate = 5;
        ASSERT_TRUE(ctx.FazJogadaNaTela(c.jogada)) << c.nome;
        EXPECT_EQ(ctx.ContaEmpate, c.conta) << c.nome;
    }
}

TEST_F(Turno, VoltarEAvancarNoModo3) {
    aoEsperar = [this] {
        switch (decisoes.size() - 1) {
        case 0:
        case 1:
        case 2:
        case 3:
            JogaPrimeira();
            break;
        case 4:
            ctx.Image6_Click(2);
            break; // forward at the last position
        case 5:
            ctx.Image6_Click(1);
            break;
        case 6:
            ctx.Image6_Click(2);
            break;
        case 7:
            ctx.Image6_Click(0);
            break;
        case 8:
            ctx.Image6_Click(1);
            break; // back at the first position
        case 9:
        case 10:
            ctx.Image6_Click(2);
            break;
        case 11:
            JogaPrimeira();
            break; // a new move from entry 3
        default:
            break;
        }
    };
    Joga(true);
    ASSERT_EQ(decisoes.size(), 13u);
    const int atual[] = {1, 2, 3, 4, 5, 5, 4, 5, 1, 1, 2, 3, 4};
    for (size_t i = 0; i < decisoes.size(); ++i) EXPECT_EQ(decisoes[i].atual, atual[i]) << i;
    for (size_t i = 0; i < 12; ++i) {
        EXPECT_FALSE(decisoes[i].voltou) << i;
        EXPECT_EQ(decisoes[i].ultima, i >= 4 ? 5 : static_cast<int>(i) + 1) << i;
        EXPECT_EQ(decisoes[i].tabuleiro, decisoes[decisoes[i].atual - 1].tabuleiro) << i;
    }
    EXPECT_TRUE(decisoes[12].voltou);
    EXPECT_EQ(decisoes[12].ultima, 4);
    EXPECT_EQ(ctx.painel.Label18.Texto, "Voltou jogadas");
    EXPECT_EQ(ctx.painel.Label10.Texto, "4/4");
    EXPECT_TRUE(ctx.RetomaHistorico);
}

TEST_F(Turno, SaldoDepoisDeVoltarEMaterial) {
    Carrega(1, Texto(1, {{55, 1}, {88, 1}, {44, 2}, {13, 2}}));
    aoEsperar = [this] {
        if (decisoes.size() == 1)
            cliques = {55}; // its capture is the only move
        else if (decisoes.size() == 2)
            ctx.Image6_Click(1);
        else if (decisoes.size() == 3)
            ctx.Image6_Click(2);
    };
    Joga(false);
    ASSERT_EQ(decisoes.size(), 4u);
    EXPECT_EQ(decisoes[1].saldo, 11);
    EXPECT_EQ(decisoes[2].saldo, 0);
    EXPECT_EQ(decisoes[3].atual, 2);
    EXPECT_EQ(decisoes[3].saldo, 10);
}

TEST_F(Turno, NoModo1VoltaDuasPosicoes) {
    ctx.Game.Modo = 1;
    ctx.Game.Tipo = "HC";
    aoEsperar = [this] {
        if (decisoes.size() <= 2)
            JogaPrimeira();
        else if (decisoes.size() == 3)
            ctx.Image6_Click(1); // at entry 5
    };
    Joga(true);
    ASSERT_EQ(decisoes.size(), 4u);
    EXPECT_EQ(decisoes[2].atual, 5);
    EXPECT_EQ(decisoes[3].atual, 3);
    EXPECT_EQ(decisoes[3].vez, 1);
    EXPECT_EQ(decisoes[3].tabuleiro, ctx.Historico[3]);
    EXPECT_EQ(cpu.vezes, 2);
}

TEST_F(Turno, NoModo1ComOComputadorPrimeiroVoltaAoInicio) {
    ctx.Game.Modo = 1;
    ctx.Game.Tipo = "HC";
    ctx.Game.Comeca = 2;
    aoEsperar = [this] {
        if (decisoes.size() == 1)
            JogaPrimeira();
        else if (decisoes.size() == 2)
            ctx.Image6_Click(0);
    };
    Joga(true);
    ASSERT_EQ(decisoes.size(), 3u);
    EXPECT_EQ(decisoes[1].atual, 4);
    EXPECT_EQ(ctx.Game.Comeca, 2);
    EXPECT_EQ(cpu.vezes, 3); // the computer moved again from the first position
    EXPECT_EQ(decisoes[2].atual, 2);
    EXPECT_EQ(decisoes[2].ultima, 2);
    EXPECT_EQ(decisoes[2].vez, 1);
}

TEST_F(Turno, ForaDosModos1e3NaoHaNavegacao) {
    for (int modo : {2, 4, 5}) {
        ctx.Game.Modo = modo;
        aoEsperar = [this] {
            if (decisoes.size() == 1)
                JogaPrimeira();
            else if (decisoes.size() == 2)
                ctx.Image6_Click(1);
        };
        decisoes.clear();
        Joga(true);
        ASSERT_EQ(decisoes.size(), 2u) << modo;
        EXPECT_EQ(ctx.JogadaAtual, 2) << modo;
        EXPECT_FALSE(ganchos.agendado);
    }
}

} // namespace
} // namespace velmora
