// Liveness of a game for points and the verdicts on a silent or closed link.
#include "apoio.h"

namespace velmora::teste {
namespace {

class Vigilancia : public Copia {
  protected:
    // A clocked game (mode 4, not two visitors) with the clock in use past its half.
    void JogoComRelogio(double fracao = 0.6) {
        Conecta("Servidor", 4);
        auto& m = form.modelo;
        m.PicTIMER[1].Largura = m.PicTIMER[2].Largura = 60;
        m.PicCrono[1].Largura = 60 * fracao;
        form.ctx.Game.valendo = true;
    }
    int Pings() const {
        int n = 0;
        for (const auto& e : enviadas) n += e == "/P!G";
        return n;
    }
};

TEST_F(Vigilancia, SilencioAteOsTemporizadoresAgirem) {
    JogoComRelogio();
    auto& c = form.ctx;
    // "Servidor" pings in the second half of a turn.
    peer.TimerManda_Timer();
    EXPECT_EQ(Pings(), 1);
    enviadas.clear();
    for (int k = 1; k <= 9; ++k) peer.TimerVerifica_Timer();
    EXPECT_EQ(form.Conta_Verifica, 9);
    EXPECT_TRUE(enviadas.empty());
    // At 10 a forecast other than a win closes nothing.
    previsoes = {0};
    peer.TimerVerifica_Timer();
    EXPECT_EQ(form.Conta_Verifica, 10);
    EXPECT_TRUE(c.Game.Conectado);
    // 11 to 15 ping from this side too, and the link no longer counts against the peer.
    for (int k = 11; k <= 15; ++k) peer.TimerVerifica_Timer();
    EXPECT_EQ(Pings(), 5);
    EXPECT_FALSE(peer.Close_Valendo);
    // Any data at all clears the count.
    Recebe("P/G");
    EXPECT_EQ(form.Conta_Verifica, 0);
    for (int k = 1; k <= 15; ++k) peer.TimerVerifica_Timer();
    EXPECT_TRUE(c.Game.Conectado);
    // At 16 this copy gives up; even material and no forecast: no award.
    previsoes = {0};
    peer.TimerVerifica_Timer();
    EXPECT_FALSE(c.Game.Conectado);
    EXPECT_TRUE(NoDiario(">>Perdeu contato"));
    EXPECT_TRUE(NoDiario("Não validar :: (igualdade ou inferioridade no jogo)"));
    EXPECT_FALSE(NoDiario("AtribuiVitoria(1"));
}

TEST_F(Vigilancia, SilencioComPrevisaoDeVitoria) {
    JogoComRelogio();
    for (int k = 1; k <= 9; ++k) peer.TimerVerifica_Timer();
    previsoes = {1, 1, 1, 1};
    form.ctx.JogadaAtual = 8;
    peer.TimerVerifica_Timer();
    EXPECT_TRUE(NoDiario(">>Perdeu contato (Conta_Verifica = 10)"));
    EXPECT_TRUE(NoDiario("Atribuir pontos :: (Superioridade no jogo)"));
    EXPECT_TRUE(NoDiario("AtribuiVitoria(1, False)"));
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias, 1);
    ASSERT_FALSE(tela.mensagens.empty());
    EXPECT_EQ(tela.mensagens.back(), "Bia entregou o jogo e saiu.");
}

TEST_F(Vigilancia, SemRelogioNadaConta) {
    // By typed address, or between two visitors, the timers do nothing.
    JogoComRelogio();
    form.ctx.Game.Modo = 5;
    for (int k = 0; k < 30; ++k) {
        peer.TimerVerifica_Timer();
        peer.TimerManda_Timer();
    }
    EXPECT_EQ(form.Conta_Verifica, 0);
    EXPECT_TRUE(enviadas.empty());
    form.ctx.Game.Modo = 4;
    form.ctx.Jogador[1].Visitante = form.ctx.Jogador[2].Visitante = true;
    for (int k = 0; k < 30; ++k) peer.TimerVerifica_Timer();
    EXPECT_EQ(form.Conta_Verifica, 0);
}

TEST_F(Vigilancia, PeerSaiNaJogada2ENaJogada7) {
    auto& c = form.ctx;
    // Move 2, this copy not ahead: the peer just left, nothing is reported.
    JogoComRelogio(0.1);
    c.JogadaAtual = 2;
    previsoes = {0, 0, 0};
    peer.WS_CloseSck(1);
    ASSERT_EQ(tela.mensagens.size(), 1u);
    EXPECT_EQ(tela.mensagens[0], "Bia saiu do jogo.");
    EXPECT_EQ(c.Jogador[1].Vitorias, 0);
    EXPECT_FALSE(NoDiario("AtribuiVitoria("));

    // Move 7 with a forecast other than 2: the peer handed the game over.
    tela.mensagens.clear();
    JogoComRelogio(0.1);
    c.JogadaAtual = 7;
    previsoes = {0, 0};
    peer.WS_CloseSck(1);
    ASSERT_EQ(tela.mensagens.size(), 1u);
    EXPECT_EQ(tela.mensagens[0], "Bia entregou o jogo e saiu.");
    EXPECT_EQ(c.Jogador[1].Vitorias, 1);
    EXPECT_TRUE(NoDiario("AtribuiVitoria(1, False)"));

    // Move 7 with a forecast of 2: just left.
    tela.mensagens.clear();
    JogoComRelogio(0.1);
    c.Jogador[1].Vitorias = 0;
    c.JogadaAtual = 7;
    previsoes = {2, 2, 2};
    peer.WS_CloseSck(1);
    EXPECT_EQ(tela.mensagens, std::vector<std::string>{"Bia saiu do jogo."});
    EXPECT_EQ(c.Jogador[1].Vitorias, 0);
}

TEST_F(Vigilancia, DozePecasComORelogioEsgotado) {
    JogoComRelogio(1.0);
    form.ctx.defineinicio();
    form.ctx.Game.Fim = false;
    form.ctx.JogadaAtual = 9;
    previsoes = {0, 0};
    peer.WS_CloseSck(1);
    EXPECT_TRUE(NoDiario("Acabou o tempo e os dois tinham 12 peças"));
    EXPECT_EQ(tela.mensagens, std::vector<std::string>{" Falha na conexão com Bia"});
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias, 0);
}

TEST_F(Vigilancia, FimDoLinkEntreJogosOuPorIP) {
    auto& c = form.ctx;
    JogoComRelogio();
    c.Game.Fim = true; // between two games
    c.JogadaAtual = 9;
    previsoes = {1, 1, 1};
    peer.WS_CloseSck(1);
    EXPECT_TRUE(tela.mensagens.empty());
    EXPECT_GE(tela.dialogos, 1); // straight to the new game dialog
    Conecta("Cliente", 5);
    c.JogadaAtual = 9;
    peer.WS_CloseSck(1);
    EXPECT_TRUE(tela.mensagens.empty());
    EXPECT_EQ(c.Jogador[1].Vitorias, 0);
}

TEST_F(Vigilancia, ErroDoSocketComALinhaLocalEmFalha) {
    JogoComRelogio();
    auto& c = form.ctx;
    // The forecast says the peer wins: a broken link costs this player nothing.
    previsoes = {2};
    peer.WS_Error(1, 10054, "Connection is forcefully rejected.");
    EXPECT_FALSE(c.Game.Conectado);
    EXPECT_TRUE(NoDiario("# # # A conexão foi caiu # # #"));
    EXPECT_EQ(peer.UltimoErro, "10054: Connection is forcefully rejected.");
    // Out of a clocked game an error changes nothing.
    Conecta("Servidor", 5);
    peer.WS_Error(1, 10054, "x");
    EXPECT_TRUE(c.Game.Conectado);
}

} // namespace
} // namespace velmora::teste
