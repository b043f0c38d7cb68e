// Re-entry as it happens in play: buttons, the history and the tournament clock acting in
// the middle of a running turn, inside the event loop.
#include "apoio.h"

#include "store/placar.h"

#include <map>

namespace velmora::teste {
namespace {

using Reentrada = Sessao;

TEST_F(Reentrada, NovoJogoDuranteAJogadaDoComputadorEsperaOLacoSairECancelarDeixaAPosicao) {
    std::string posicaoNoDialogo;
    bool emPlayNoDialogo = true, pensandoNoDialogo = true;
    cpu.aoPensar = [&](int passo) {
        if (cpu.chamadas == 1 && passo == 3) form.Label6_Click();
    };
    tela.dialogos = {{SaidaDialogo::Cancelar, {}}};
    tela.aoAbrirDialogo = [&] {
        emPlayNoDialogo = form.ctx.Game.EmPlay;
        pensandoNoDialogo = cpu.ativo;
        posicaoNoDialogo = form.ctx.TextoTabuleiro();
    };
    tela.depoisDoDialogo = [&] {
        // Idle: the old position stays, and a click offers a new game.
        EXPECT_EQ(form.ctx.TextoTabuleiro(), posicaoNoDialogo);
        EXPECT_TRUE(form.ctx.Game.Fim);
        form.imgpd_MouseDown(62);
        form.EncerraPrograma();
    };
    Roda([&] { Comeca(1, 2); });

    ASSERT_EQ(tela.rotulos, std::vector<std::string>{"Cancelar"});
    EXPECT_FALSE(emPlayNoDialogo);
    EXPECT_FALSE(pensandoNoDialogo);
    EXPECT_EQ(cpu.chamadas, 1);
    EXPECT_NE(posicaoNoDialogo, TextoTabuleiro(PosicaoInicial())); // the computer's move stands
    ASSERT_EQ(tela.perguntas.size(), 1u);
    EXPECT_EQ(tela.perguntas[0], "O Jogo está concluído.\nDeseja iniciar um novo jogo?");
    EXPECT_EQ(tela.titulos[0], "Pergunta");
    LacosNuncaSobrepostos();
}

TEST_F(Reentrada, ReiniciarDuasVezesContraOComputadorDaDuasVitoriasEAlternaDuasVezes) {
    int reinicios = 0;
    humano.ativo = false;
    aCadaEvento = [&] {
        auto& G = form.ctx.Game;
        if (!form.ctx.EsperaClique() || G.Fim) return;
        if (reinicios == 2) {
            form.EncerraPrograma();
            return;
        }
        ++reinicios;
        form.Label7_Click();
    };
    Roda([&] { Comeca(1, 1); });

    EXPECT_EQ(reinicios, 2);
    EXPECT_EQ(form.ctx.Jogador[2].Vitorias, 2);
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias, 0);
    EXPECT_EQ(form.modelo.LbPT2.Texto, "2");
    EXPECT_EQ(form.ctx.Game.Comeca, 1); // 1, then 2, then 1
    EXPECT_EQ(cpu.chamadas, 1);         // the second game began with the computer
    EXPECT_EQ(form.placar().Venceu(3), 2);
    EXPECT_EQ(form.placar().Perdeu(3), 0);
    LacosNuncaSobrepostos();
}

TEST_F(Reentrada, ReiniciarEnquantoOComputadorPensaEsperaOFimDaJogada) {
    humano.ativo = false;
    cpu.aoPensar = [&](int passo) {
        if (cpu.chamadas == 1 && passo == 2) form.Label7_Click();
    };
    aCadaEvento = [&] {
        if (form.ctx.Jogador[2].Vitorias == 1 && form.ctx.EsperaClique()) form.EncerraPrograma();
    };
    Roda([&] { Comeca(1, 2); });
    EXPECT_EQ(form.ctx.Jogador[2].Vitorias, 1);
    EXPECT_EQ(form.ctx.Game.Comeca, 1);
    // The new game is the initial position: the computer's last move did not land on it.
    EXPECT_EQ(form.ctx.TextoTabuleiro(), TextoTabuleiro(PosicaoInicial()));
}

TEST_F(Reentrada, ReiniciarDuranteAMensagemDeInicioNaoAbreUmSegundoLaco) {
    // Two people: "Reiniciar" in the second of "Ana inicie o jogo", then "Novo jogo" in the
    // game that follows, whose dialog must open.
    humano.ativo = false;
    int reinicios = 0, novos = 0;
    aCadaEvento = [&] {
        auto& c = form.ctx;
        if (reinicios == 0 && c.painel.Label27.Visivel && !c.Game.EmPlay) {
            ++reinicios;
            form.Label7_Click();
        } else if (reinicios == 1 && novos == 0 && c.EsperaClique() && !c.Game.Fim) {
            ++novos;
            form.Label6_Click();
        }
    };
    Roda([&] { Comeca(3, 1); }, 10);

    EXPECT_EQ(reinicios, 1);
    EXPECT_EQ(novos, 1);
    EXPECT_EQ(tela.rotulos, std::vector<std::string>{"Cancelar"});
    EXPECT_TRUE(tela.encerrou); // "Sair" in that dialog
    EXPECT_EQ(form.ctx.Game.Comeca, 2);
    LacosNuncaSobrepostos();
}

TEST_F(Reentrada, VoltarJogadaDeDentroDoTurnoEVencerNaoContaParaRecordeNemPlacar) {
    int voltas = 0;
    std::string relogioNoFim, estadoNoFim;
    tela.aoMensagem = [&](const std::string&) {
        relogioNoFim = form.ctx.painel.Label12.Texto;
        estadoNoFim = form.ctx.painel.Label18.Texto;
        form.EncerraPrograma(); // after this game's end
    };
    cpu.decisao = [&](int chamada) { return voltas > 0 && chamada >= 3 ? 1 : 0; };
    aCadaEvento = [&] {
        auto& c = form.ctx;
        if (voltas == 0 && c.EsperaClique() && c.JogadaAtual == 5) {
            ++voltas;
            form.Image6_Click(1); // PlayGame from inside the waiting turn
            EXPECT_EQ(c.JogadaAtual, 3);
        }
    };
    Roda([&] { Comeca(1, 1); });

    auto& c = form.ctx;
    EXPECT_EQ(voltas, 1);
    EXPECT_TRUE(c.RetomaHistorico);
    EXPECT_EQ(c.Jogador[1].Vitorias, 1);
    ASSERT_FALSE(tela.mensagens.empty());
    EXPECT_EQ(tela.mensagens.back(), "Parabéns, você foi o vencedor!");
    EXPECT_TRUE(c.Game.Voltou);
    EXPECT_EQ(relogioNoFim, "Desligado");
    EXPECT_EQ(estadoNoFim, "Jogo terminado");
    EXPECT_EQ(form.placar().Perdeu(3), 0);
    EXPECT_TRUE(form.recordes().Tabela(3).empty());
    EXPECT_TRUE(tela.recordes.empty());
    LacosNuncaSobrepostos();
}

TEST_F(Reentrada, TempoDoTorneioEsgotadoNaVezDoJogadorEliminaEAbreODialogo) {
    humano.ativo = false;
    form.Timer2.setInterval(1);
    // The state each width of the bar settles in.
    std::map<double, Barra> barras;
    aCadaEvento = [&] {
        Barra b = form.modelo.PicCrono[1];
        b.Visivel = form.modelo.PicTIMER[1].Visivel;
        if (b.Largura > 0) barras[b.Largura] = b;
    };
    bool emPlayNoDialogo = true;
    tela.aoAbrirDialogo = [&] { emPlayNoDialogo = form.ctx.Game.EmPlay; };
    Roda([&] { Comeca(2, 1); });

    ASSERT_FALSE(tela.mensagens.empty());
    EXPECT_EQ(tela.mensagens.back(), "Tempo limite esgotado.\n\nVocê foi eliminado.");
    ASSERT_EQ(rede.atribuicoes.size(), 1u);
    EXPECT_EQ(rede.atribuicoes[0], std::make_pair(2, true));
    EXPECT_EQ(tela.rotulos, std::vector<std::string>{"Sair"});
    EXPECT_FALSE(emPlayNoDialogo);
    EXPECT_TRUE(tela.encerrou); // "Sair" in that dialog
    // A turn begins with 5 seconds gone; the bar shows after 10, turns red at 80%.
    ASSERT_EQ(barras.size(), 57u);
    EXPECT_EQ(barras.begin()->first, 5);
    EXPECT_EQ(barras.rbegin()->first, 61);
    for (const auto& [largura, b] : barras) {
        if (largura == 5) continue; // set up by the turn, before the first tick
        EXPECT_EQ(b.Visivel, largura > 10) << largura;
        EXPECT_EQ(b.Cor, largura >= 48 ? cor::BarraVermelha : cor::BarraVerde) << largura;
    }
    LacosNuncaSobrepostos();
}

} // namespace
} // namespace velmora::teste
