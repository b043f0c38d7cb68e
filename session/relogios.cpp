// The two clocks: the game clock (Tempo) that feeds the records, and the move clock
// (Timer2) of the tournament and of games through the service, kept as two bars whose
// width is the time: a full bar is Game.TempoLimite steps.
#include "session/form1.h"

#include <cmath>

namespace velmora {

namespace {
// The least time per move.
constexpr int TempoMinimo = 60;
} // namespace

void Form1::CorrigeMeiaNoite() {
    // The time of day fell below the start: midnight has passed.
    if (plataforma.Agora() < ctx.InicioJogo) ctx.InicioJogo -= 86400;
}

double Form1::TempoDecorrido() {
    CorrigeMeiaNoite();
    return plataforma.Agora() - ctx.InicioJogo;
}

void Form1::Tempo_Timer() {
    ctx.painel.Label12.Texto = FormataTempo(static_cast<long>(std::floor(TempoDecorrido())));
    tela_.Redesenha();
}

int Form1::BarraEmUso() const {
    const int vez = ctx.Atual.Vez;
    if (ctx.Tipo_c == "Cliente") return vez == 1 ? 2 : 1;
    return vez == 2 ? 2 : 1;
}

void Form1::ZeraRelogios() {
    for (int i = 1; i <= 2; ++i) {
        modelo.PicCrono[i].Largura = 0;
        modelo.PicCrono[i].Visivel = false;
        modelo.PicTIMER[i].Visivel = false;
    }
    Timer2.stop();
    // PlayGame's start sequence (its one-second message) runs until ParaTimer2; a new
    // dialog must wait for it. Connected, the handshake's own wait flag stands instead.
    iniciandoJogo_ = ctx.Game.Comeca != 0 && !ctx.Game.Conectado;
}

void Form1::ParaTimer2() {
    Timer2.stop();
    iniciandoJogo_ = false;
}

void Form1::PreparaRelogioJogada() {
    auto& G = ctx.Game;
    if (G.TempoLimite < TempoMinimo) G.TempoLimite = TempoMinimo;
    for (int i = 1; i <= 2; ++i) {
        modelo.PicTIMER[i].Largura = G.TempoLimite;
        modelo.PicCrono[i].Visivel = true;
    }
    const double passo = modelo.PicTIMER[1].Largura / G.TempoLimite;
    Barra& local = modelo.PicCrono[1];
    if (ctx.Minhavez()) {
        // A turn begins with the seconds of the start sequence, normally 5, at most 20%.
        const int x = SegundosInicio;
        local.Largura = (x > 4 ? x - 1 : 5) * passo;
        local.Largura = std::min(local.Largura, 0.2 * modelo.PicTIMER[1].Largura);
    } else {
        local.Largura = 0;
    }
    modelo.PicCrono[2].Largura = 0;
    modelo.PicTIMER[1].Visivel = modelo.PicTIMER[2].Visivel = false;
    Timer2.start();
}

void Form1::Timer2_Timer() {
    if (encerrado_) return;
    plataforma.ProcessaEventos();
    plataforma.ProcessaEventos();
    auto& G = ctx.Game;
    if ((G.Modo == 4 && !G.Conectado) || (G.Modo != 4 && G.Modo != 2)) return;
    const int i = BarraEmUso();
    if (G.TempoLimite < TempoMinimo) G.TempoLimite = TempoMinimo;
    Barra& crono = modelo.PicCrono[i];
    Barra& fundo = modelo.PicTIMER[i];
    if (fundo.Largura <= 0) fundo.Largura = G.TempoLimite;
    const double passo = fundo.Largura / G.TempoLimite;
    crono.Largura += passo;
    plataforma.ProcessaEventos();
    // Each test reads the widths anew: a move may have reset them meanwhile.
    modelo.PicTIMER[3 - i].Visivel = false;
    fundo.Visivel = crono.Largura > 10 * passo;
    if (crono.Largura < fundo.Largura) EsperaTimeOut = false;
    if (crono.Largura >= 0.8 * fundo.Largura) {
        crono.Cor = cor::BarraVermelha;
    } else {
        crono.Cor = cor::BarraVerde;
        Conta_Verifica = 0;
    }
    // The local player's last tenth may run out up to four times as fast.
    if (G.Modo == 4 && i == 1 && crono.Largura > 0.9 * fundo.Largura &&
        crono.Largura < fundo.Largura && ctx.Sorte(30))
        crono.Largura += 3 * passo;
    tela_.Redesenha();
    if (G.Modo == 2 && crono.Largura > fundo.Largura) {
        Timer2.stop();
        ctx.painel.Habilitado = true;
        Mensagem("Tempo limite esgotado.\n\nVocê foi eliminado.");
        G.AceitaClique = false;
        rede_->AtribuiVitoria(2, true);
        InitGame();
        return;
    }
    if (G.Modo == 4 && crono.Largura >= fundo.Largura) {
        if (i == 1)
            FimDoTempoLocal();
        else
            FimDoTempoOponente();
    }
}

void Form1::FimDoTempoLocal() {
    auto& G = ctx.Game;
    G.AceitaClique = false;
    Tempo.stop();
    Timer2.stop();
    TimerVerifica.stop();
    LogDebug(":: Timeout excedido. INITGAME :: MODO OK ");
    rede_->AtribuiVitoria(2, false);
    G.valendo = false;
    rede_->FechaSockets(0);
    // Nothing was decided yet with this peer, or nobody took a piece: no loss is told.
    const bool intacto = ctx.QuantasPecas(1) == 12 && ctx.QuantasPecas(2) == 12;
    const bool cedo = ctx.JogadaAtual < 5 &&
                      (ctx.Jogador[1].Vitorias > 0 || ctx.Jogador[2].Vitorias > 0 || Empatou);
    Mensagem(intacto || cedo ? "Tempo limite esgotado" : "Tempo limite esgotado. Você perdeu");
    LimpaPlacar();
    InitGame();
}

void Form1::FimDoTempoOponente() {
    auto& G = ctx.Game;
    const Barra& crono = modelo.PicCrono[2];
    const Barra& fundo = modelo.PicTIMER[2];
    const double passo = fundo.Largura / G.TempoLimite;
    // The peer has 20 steps more, for the delay of the link.
    if (crono.Largura < fundo.Largura + 20 * passo) return;
    Painel& p = ctx.painel;
    p.Label27.Texto = "Aguarde...";
    p.Label27.Visivel = true;
    Tempo.stop();
    Timer2.stop();
    LogDebug(":: Tempo do oponente esgotou ::");
    rede_->EnviaPeer("RestartTimeOut");
    LogDebug("::: RestartTimeOut ");
    const double inicio = plataforma.Decorrido();
    while (plataforma.Decorrido() - inicio < 2) {
        plataforma.ProcessaEventos();
        // A move came and reset the clock, or the peer answered: it is alive.
        if (crono.Largura < fundo.Largura || EsperaTimeOut) return;
        plataforma.Dorme(5);
    }
    LogDebug("::::Saí no RestartTimeOut :::");
    if (!ctx.Recebeu_Jogada) LogDebug(":: O cara não recebeu a minha ultima jogada::");
    LogDebug(std::string(":: Saindo :: Game.valendo = ") + (G.valendo ? "True" : "False"));
    const int local = ctx.LadoLocal();
    if (ctx.ValordasPecas(local) > ctx.ValordasPecas(3 - local) && G.valendo) {
        LogDebug(":: oponente pode estar tentando trapacear. Atribuindo meus pontos mesmo "
                 "assim :: NOT OK MESMO !!! ");
        p.Habilitado = false;
        rede_->AtribuiVitoria(1, false);
        p.Habilitado = true;
    }
    p.Label27.Visivel = false;
    rede_->FechaSockets(0);
    InitGame();
}

void Form1::Timer3_Timer() {
    // An unanswered draw offer: the move clock runs on.
    if (ctx.EsperandoEmpate && !encerrado_) Timer2.start();
}

} // namespace velmora
