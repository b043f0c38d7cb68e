// Clicks on the board, and the draw offer button.
#include "session/form1.h"

namespace velmora {

void Form1::imgpd_MouseDown(int Index, bool botaoDireito) {
    if (encerrado_ || Index < 12 || Index > 89) return;
    auto& G = ctx.Game;
    if (G.Conectado) {
        if (botaoDireito && Index == 89 && ctx.Anterior == 12) rede_->EnviaPeer(">>Informa:V--");
        ctx.Anterior = Index;
    }
    if (!G.AceitaClique) return;
    if (G.Conectado && !ctx.Minhavez()) return;
    Clicado = Index;
    if (!G.Fim || G.Conectado) {
        if (ContraCPU() && ctx.LadoCarregado == 2) {
            // The history shows a position with the computer to move.
            Som("talk.wav");
            ctx.painel.lbMsg.Texto =
                "Você deve voltar ou avançar uma jogada para que seja a sua vez de jogar";
            tela_.Redesenha();
        } else {
            ctx.Clique(Index);
        }
        return;
    }
    if (!tela_.Pergunta("O Jogo está concluído.\nDeseja iniciar um novo jogo?", "Pergunta")) return;
    // The same session plays again from the start; a tournament from its first stage.
    ctx.Jogador[1].Vitorias = ctx.Jogador[2].Vitorias = 0;
    if (G.Modo == 2) {
        ctx.Jogador[2].Nome = NomeBot(1);
        ctx.Jogador[2].Nivel = 1;
    }
    AtualizaPlacar();
    G.Voltou = false;
    ctx.defineinicio();
    Tempo.start();
    ctx.painel.Label18.Texto = "Jogo iniciado";
    ctx.ContaEmpate = 0;
    G.Fim = true;
    ctx.PlayGame();
}

void Form1::Label24_Click() {
    if (encerrado_) return;
    auto& G = ctx.Game;
    Painel& p = ctx.painel;
    if (G.Fim || p.Label24.Cor == cor::Cinza) return;
    // One offer per game, and only in the first half of the turn's time.
    if (G.Modo == 4 &&
        (modelo.PicCrono[1].Largura > 0.5 * modelo.PicTIMER[1].Largura || G.OfertaFeita)) {
        p.Label24.Habilitado = false;
        tela_.Beep();
        return;
    }
    p.Label27.Texto = "Aguarde...";
    p.Label27.Visivel = true;
    plataforma.ProcessaEventos();
    G.AceitaClique = false;
    modelo.Label7.Habilitado = false;
    p.Label24.Habilitado = false;
    p.Label24.Cor = cor::Cinza;
    ctx.EsperandoEmpate = true;
    p.Timer3.Habilitado = true;
    Timer3.start();
    Timer2.stop();
    G.OfertaFeita = true;
    rede_->EnviaPeer("PedirEmpate");
}

} // namespace velmora
