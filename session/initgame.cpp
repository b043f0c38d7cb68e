// Starting sessions and games: InitGame and its two timers, the next game of a session,
// "Novo jogo", "Reiniciar" and the picture button beside them.
#include "session/form1.h"

#include <cmath>

namespace velmora {

void Form1::InitGame() {
    if (encerrado_) return;
    auto& G = ctx.Game;
    if (G.EmPlay) {
        // The old loop must leave first; TimerInitGame comes back when it has.
        G.SairPlay = true;
        G.Fim = true;
        TimerInitGame.start();
        return;
    }
    if (AlgoEsperando()) {
        // A wait or an animation is on the stack: make it leave, and poll until it has.
        ctx.StartInitGame = PodeIniciar = ctx.SaidoMovePedra = true;
        G.AceitaClique = true;
        TimerSaidoMovePedra.start();
        return;
    }
    ctx.painel.ImgMove.Visivel = false;
    ctx.StartInitGame = PodeIniciar = false;
    ctx.SaidoMovePedra = false; // nothing is animating now; the next game's moves must run
    G.AceitaClique = true;
    const SaidaDialogo saida = AbreNovoJogo();
    if (saida == SaidaDialogo::Sair) {
        SairDoDialogo();
        return;
    }
    if (saida == SaidaDialogo::Cancelar) {
        // The old position stays; a click on the board offers a new game.
        CancelouNovoJogo = false;
        return;
    }
    ctx.LadoCarregado = 0;
    G.OfertaFeita = false;
    G.Fim = true;
    AtualizaPlacar();
    G.Voltou = false;
    ctx.defineinicio();
    Tempo.start();
    ctx.painel.Label18.Texto = "Jogo iniciado";
    ctx.ContaEmpate = 0;
    AjeitaForm();
    ctx.PlayGame();
}

void Form1::InicioDoProximoJogo() {
    // In a tournament the clock runs on from the games before.
    if (ctx.Game.Modo == 2) ctx.InicioJogo = plataforma.Agora() - ctx.TempoJogo - 1;
    Tempo.start();
    ctx.painel.Label18.Texto = "Jogo iniciado";
    ctx.ContaEmpate = 0;
}

void Form1::Restart_Game() {
    if (encerrado_) return;
    auto& G = ctx.Game;
    // A drawn game of a tournament counts in the run's time like any other.
    if (G.Modo == 2 && Tempo.isActive()) ctx.TempoJogo = std::floor(TempoDecorrido());
    ctx.LadoCarregado = 0;
    G.OfertaFeita = false;
    G.Voltou = false;
    G.Fim = true;
    ctx.defineinicio();
    InicioDoProximoJogo();
    G.AceitaClique = true;
    ctx.PlayGame();
}

void Form1::PreparaProximoJogo(Contexto&) {
    auto& G = ctx.Game;
    AtualizaPlacar();
    ctx.LadoCarregado = 0;
    G.OfertaFeita = false;
    G.Voltou = false;
    ctx.defineinicio();
    InicioDoProximoJogo();
}

void Form1::Label6_Click() {
    if (encerrado_) return;
    Som("Click.wav");
    rotuloCancelar_ = "Cancelar";
    InitGame();
}

void Form1::Image7_Click() {
    if (encerrado_ || !ctx.painel.Image7.Habilitado) return;
    Som("Click.wav");
    auto& G = ctx.Game;
    if (G.Conectado) {
        Label26_Click();
        return;
    }
    if (G.Modo != 4 && !G.Fim && !Pergunta("Deseja sair do jogo atual e iniciar um novo jogo"))
        return;
    InitGame();
}

void Form1::Label22_Click() {
    const Controle& l = ctx.painel.Label22;
    if (ctx.painel.Ocupado || ctx.Game.Fim || !l.Habilitado || l.Cor == cor::Cinza) return;
    Label7_Click();
}

void Form1::Label7_Click() {
    if (encerrado_) return;
    if (pensando_ || ctx.MovendoNaTela) {
        // The engine is searching the live position, or a move is being played on it: the
        // board is set up anew only once that turn has ended, so that no step of the move
        // lands on a fresh board.
        adiaReiniciar_.start();
        return;
    }
    Som("Click.wav");
    auto& G = ctx.Game;
    // In a tournament the abandoned game is one the computer won, after which the stage is
    // replayed by the same starting side.
    bool perdeuNoTorneio = false;
    if (!G.Fim && !(G.Conectado && Ele_Desistiu)) {
        if (G.Conectado) {
            if (!EntregaPartida()) return;
        } else if (ContraCPU()) {
            // The game is handed to the computer.
            auto& cpu = ctx.Jogador[LadoComputador()];
            if (!G.Voltou) placar_.SomaVenceu(cpu.Nivel);
            ++cpu.Vitorias;
            AtualizaPlacar();
            if (G.Modo == 2) {
                ctx.TempoJogo = std::floor(TempoDecorrido());
                perdeuNoTorneio = true;
            }
        } else {
            AtualizaPlacar();
        }
    }
    G.AceitaClique = true;
    ctx.LadoCarregado = 0;
    G.OfertaFeita = false;
    G.Voltou = false;
    G.Fim = true;
    ctx.defineinicio();
    InicioDoProximoJogo();
    if (!perdeuNoTorneio) G.Comeca = G.Comeca == 2 ? 1 : 2;
    Ele_Desistiu = false;
    ctx.PlayGame();
}

} // namespace velmora
