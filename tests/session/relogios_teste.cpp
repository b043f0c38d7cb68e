// The game clock across midnight, and the move clock's arithmetic and its on-line ends.
#include "apoio.h"

namespace velmora::teste {
namespace {

using Relogios = Sessao;

TEST_F(Relogios, JogoAtravessandoAMeiaNoiteTemTempoContinuo) {
    form.ctx.InicioJogo = 86390; // 23:59:50
    relogio.Avanca(86395 - relogio.Agora());
    form.Tempo_Timer();
    EXPECT_EQ(form.ctx.painel.Label12.Texto, "00:00:05");
    relogio.Avanca(15); // 00:00:10
    form.Tempo_Timer();
    EXPECT_EQ(form.ctx.painel.Label12.Texto, "00:00:20");
    form.ctx.Game.Modo = 3;
    form.ctx.Game.Tipo = "HH";
    form.finaliza(1);
    EXPECT_EQ(form.ctx.TempoJogo, 20);
}

TEST_F(Relogios, InicioDaVezLimitesEModosSemRelogio) {
    auto& c = form.ctx;
    auto& m = form.modelo;
    c.Game.Modo = 4;
    c.Game.Conectado = true;
    c.Game.TempoLimite = 30; // a service reply of 30 acts as 60
    c.Atual.Vez = 1;
    form.PreparaRelogioJogada();
    EXPECT_EQ(c.Game.TempoLimite, 60);
    EXPECT_EQ(m.PicCrono[1].Largura, 5);
    EXPECT_TRUE(form.Timer2.isActive());
    form.SegundosInicio = 8;
    form.PreparaRelogioJogada();
    EXPECT_EQ(m.PicCrono[1].Largura, 7);
    form.SegundosInicio = 30; // at most 20 percent
    form.PreparaRelogioJogada();
    EXPECT_EQ(m.PicCrono[1].Largura, 12);
    c.Atual.Vez = 2;
    form.PreparaRelogioJogada();
    EXPECT_EQ(m.PicCrono[1].Largura, 0);

    // The peer's bar runs on its turn; a "Cliente" reads the bars the other way round.
    form.Timer2_Timer();
    EXPECT_EQ(m.PicCrono[2].Largura, 1);
    c.Tipo_c = "Cliente";
    form.Timer2_Timer();
    EXPECT_EQ(m.PicCrono[1].Largura, 1);

    for (int modo : {1, 3, 5}) {
        c.Game.Modo = modo;
        m.PicCrono[1].Largura = m.PicCrono[2].Largura = 0;
        form.Timer2_Timer();
        EXPECT_EQ(m.PicCrono[1].Largura + m.PicCrono[2].Largura, 0) << modo;
    }
    c.Game.Modo = 4;
    c.Game.Conectado = false;
    form.Timer2_Timer();
    EXPECT_EQ(m.PicCrono[1].Largura, 0);
}

TEST_F(Relogios, TempoLocalEsgotadoOnLine) {
    auto& c = form.ctx;
    tela.dialogos = {{SaidaDialogo::Cancelar, {}}};
    c.Game.Modo = 4;
    c.Game.Conectado = true;
    c.Game.valendo = true;
    c.Atual.Vez = 1;
    form.PreparaRelogioJogada();
    form.modelo.PicCrono[1].Largura = 59.5;
    form.Timer2_Timer();
    // Both sides still hold 12 pieces: no "Você perdeu".
    ASSERT_EQ(tela.mensagens.size(), 1u);
    EXPECT_EQ(tela.mensagens[0], "Tempo limite esgotado");
    EXPECT_EQ(rede.atribuicoes, (std::vector<std::pair<int, bool>>{{2, false}}));
    EXPECT_FALSE(c.Game.valendo);
    EXPECT_FALSE(form.TimerVerifica.isActive());
    // A piece taken, past the fifth move: the player is told of the loss.
    tela.dialogos = {{SaidaDialogo::Cancelar, {}}};
    c.Atual.Casas[62] = 0;
    c.JogadaAtual = 9;
    form.modelo.PicCrono[1].Largura = 59.5;
    form.Timer2_Timer();
    EXPECT_EQ(tela.mensagens.back(), "Tempo limite esgotado. Você perdeu");
}

TEST_F(Relogios, TempoDoOponenteTemVinteSegundosDeGracaEDoisDeEspera) {
    auto& c = form.ctx;
    tela.dialogos = {{SaidaDialogo::Cancelar, {}}};
    c.Game.Modo = 4;
    c.Game.Conectado = true;
    c.Game.valendo = true;
    c.Atual.Vez = 2;
    c.Atual.Casas[33] = 0; // the peer is a man behind
    form.PreparaRelogioJogada();
    form.modelo.PicCrono[2].Largura = 70;
    form.Timer2_Timer();
    EXPECT_TRUE(rede.enviadas.empty()); // 71 steps: still within the grace
    const double antes = relogio.Decorrido();
    form.modelo.PicCrono[2].Largura = 79;
    form.Timer2_Timer();
    EXPECT_EQ(rede.enviadas, std::vector<std::string>{"RestartTimeOut"});
    EXPECT_NEAR(relogio.Decorrido() - antes, 2, 0.1);
    // Silent and behind on the board: the win is reported.
    EXPECT_EQ(rede.atribuicoes, (std::vector<std::pair<int, bool>>{{1, false}}));
    EXPECT_FALSE(c.painel.Label27.Visivel);
}

} // namespace
} // namespace velmora::teste
