// A whole tournament against scripted opponents: eight stages won, one lost and replayed,
// and the run's total time in the table of level 8.
#include "apoio.h"

#include <map>
#include <set>

namespace velmora::teste {
namespace {

class Torneio : public Sessao {};

TEST_F(Torneio, OitavasDeFinalEMiroNaQuintaENaSetimaFase) {
    EXPECT_EQ(NomeFase(5), "Oitavas de Final");
    EXPECT_EQ(NomeFase(9), "");
    std::map<int, std::set<std::string>> nomes;
    for (int i = 0; i < 200; ++i) {
        for (int fase : {5, 7}) nomes[fase].insert(form.NomeBot(fase));
        relogio.Avanca(0.013);
    }
    EXPECT_EQ(nomes[5], (std::set<std::string>{"Katinaira (Bot)", "Miro (Bot)"}));
    EXPECT_EQ(nomes[7], (std::set<std::string>{"Joe (Bot)", "Miro (Bot)"}));
}

TEST_F(Torneio, OitoFasesVencidasComUmaDerrotaEntramNaTabelaDoNivel8) {
    // Each computer turn takes 10 simulated seconds. The opponent resigns at its second turn,
    // except in the first game of stage 3, where it claims the win after a long think.
    int fase3 = 0;
    std::map<int, std::string> nomePorFase;
    std::vector<int> comecos;
    cpu.segundos = 10;
    cpu.decisao = [&](int) {
        const int fase = form.ctx.Jogador[2].Nivel;
        if (fase == 3 && fase3 == 0) {
            relogio.Avanca(500);
            ++fase3;
            return 2;
        }
        return cpu.chamadas % 2 == 0 ? 1 : 0;
    };
    double inicio = 0;
    tela.aoMensagem = [&](const std::string& m) {
        comecos.push_back(form.ctx.Game.Comeca);
        if (m.rfind("Parabens", 0) == 0) form.EncerraPrograma(); // the champion
    };
    aCadaEvento = [&] {
        const auto& bot = form.ctx.Jogador[2];
        if (!nomePorFase.count(bot.Nivel)) nomePorFase[bot.Nivel] = bot.Nome;
        EXPECT_EQ(nomePorFase[bot.Nivel], bot.Nome) << "the name is drawn once per stage";
        EXPECT_EQ(form.modelo.lbnivel[2].Texto, NomeFase(bot.Nivel));
    };
    Roda([&] {
        inicio = relogio.Agora();
        Comeca(2, 1);
    });
    const double total = relogio.Agora() - inicio;

    ASSERT_EQ(tela.mensagens.size(), 10u); // welcome, 7 stages passed, 1 loss, the champion
    EXPECT_EQ(tela.mensagens[0], "Bem vindo ao torneio.\n\nPara ser campeão é preciso ganhar os "
                                 "8 jogos da eliminatória\n\nSeu primeiro oponente será: " +
                                     nomePorFase[1] + "\n\nBoa sorte");
    EXPECT_EQ(tela.mensagens[1],
              "Parabéns, você eliminou " + nomePorFase[1] +
                  " e passou para a proxima fase!\n\nSeu proximo oponente será " + nomePorFase[2]);
    EXPECT_EQ(tela.mensagens[3],
              "Infelizmente  você não conseguiu passar por " + nomePorFase[3] + " !");
    EXPECT_EQ(tela.mensagens.back(), "Parabens Ana,\n\nVocê é o grande campeão");
    EXPECT_EQ(form.ctx.Jogador[2].Nivel, 8);
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias, 7);

    // The starting side alternates after each won stage and not after the lost game.
    ASSERT_EQ(comecos.size(), 10u);
    EXPECT_NE(comecos[1], comecos[2]);
    EXPECT_EQ(comecos[3], comecos[4]); // the loss, then the replay

    // The whole run, the lost game's 500 seconds included, is the record of level 8.
    ASSERT_EQ(form.recordes().Tabela(8).size(), 1u);
    const auto rec = form.recordes().Tabela(8)[0];
    EXPECT_EQ(rec.nome, "Ana");
    EXPECT_EQ(rec.tempo, static_cast<int32_t>(form.ctx.TempoJogo));
    EXPECT_GT(rec.tempo, 500 + 8 * 10);
    // Each game after the first starts one second on, as every game does.
    EXPECT_GE(rec.tempo, total - 1);
    EXPECT_LE(rec.tempo, total + 10);
    EXPECT_EQ(tela.recordes, (std::vector<std::pair<int, int>>{{8, 1}}));
    // No tally in a tournament; the score is not shown.
    EXPECT_EQ(form.placar().Venceu(3) + form.placar().Perdeu(3), 0);
    EXPECT_FALSE(form.modelo.LbPT2.Visivel);
}

TEST_F(Torneio, OTabuleiroNovoDoTorneioNaoMostraAHistoriaDoJogoAnterior) {
    // Four positions into a game against the computer, "Novo jogo" chooses the tournament;
    // the welcome box shows over the fresh board.
    RespostaDialogo torneio{SaidaDialogo::Jogar, Aba(1)};
    torneio.campos.Nivel = 8;
    torneio.campos.TxtHC = "Ana";
    tela.dialogos = {torneio};
    std::string contador, antes;
    tela.aoMensagem = [&](const std::string& m) {
        if (m.rfind("Bem vindo", 0) != 0) return;
        contador = form.ctx.painel.Label10.Texto;
        form.EncerraPrograma();
    };
    aCadaEvento = [&] {
        auto& c = form.ctx;
        if (antes.empty() && c.EsperaClique() && c.JogadaAtual == 4) {
            antes = c.painel.Label10.Texto;
            form.Label6_Click();
        }
    };
    Roda([&] { Comeca(1, 2); });
    EXPECT_EQ(antes, "4/4");
    EXPECT_EQ(contador, "1/1");
}

TEST_F(Torneio, ReiniciarNaoMudaAFaseNemQuemComecaEContaNoPlacarDaFase) {
    humano.ativo = false;
    int reinicios = 0, comeca = 0;
    std::string nome;
    aCadaEvento = [&] {
        auto& c = form.ctx;
        if (!c.EsperaClique() || c.Game.Fim) return;
        if (reinicios++ == 0) {
            c.Jogador[2].Nivel = 4;
            nome = c.Jogador[2].Nome;
            relogio.Avanca(30);
            comeca = c.Game.Comeca;
            form.Label7_Click();
        } else {
            form.EncerraPrograma();
        }
    };
    Roda([&] { Comeca(2, 1); });
    EXPECT_EQ(form.ctx.Jogador[2].Nivel, 4);
    EXPECT_EQ(form.ctx.Jogador[2].Nome, nome);
    EXPECT_EQ(form.placar().Venceu(4), 1);
    // A game lost to the computer: the same side begins the replay of the stage.
    EXPECT_EQ(form.ctx.Game.Comeca, comeca);
    EXPECT_GE(form.ctx.TempoJogo, 30); // the run's clock goes on
    EXPECT_GE(relogio.Agora() - form.ctx.InicioJogo, 30);
}

} // namespace
} // namespace velmora::teste
