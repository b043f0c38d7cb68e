#pragma once
// One running copy of the game: its records, the live position, the history, the flags of
// the turn cycle and the view-model of the board window. Owned by whoever runs the copy;
// two copies can live in one process.
#include "core/gerador.h"
#include "core/jogada.h"
#include "core/painel.h"
#include "core/plataforma.h"
#include "core/posicao.h"
#include "core/registros.h"
#include "core/tabuleiro.h"

#include <array>
#include <cstdint>
#include <memory>
#include <random>
#include <string>

namespace velmora {

class Contexto;

// The computer's turn, plugged in by the engine.
class Pensador {
public:
    virtual ~Pensador() = default;
    // One computer turn at Atual: 0 play goes on, 1 or 2 the winner, 3 a draw.
    virtual uint8_t PensaJogada() = 0;
};

// What the turn cycle asks of the layers above it (clocks, peer, end of game). Every call
// has a do-nothing default, which is the headless behaviour.
class Ganchos {
public:
    virtual ~Ganchos() = default;
    // PlayGame was called while its loop runs: call it again once Game.EmPlay is false.
    virtual void AgendaPlayGame() {}
    // Empty and hide the clock bars, stop the move clock.
    virtual void ZeraRelogios() {}
    virtual void exibevez() {}
    virtual void StatusBotoes() {}
    // Connected: the start handshake of a game.
    virtual void HandshakeInicio() {}
    // Stop the move clock (Timer2).
    virtual void ParaTimer2() {}
    // Connected in the on-line mode: the liveness timers.
    virtual void IniciaVigilancia() {}
    // Tournament and on-line: set up the move clock for the turn.
    virtual void PreparaRelogioJogada() {}
    // A real move was played and must reach the peer (connected, Make_Enviar set).
    virtual void EnviaJogada(const Jogada& j) { (void)j; }
    // A piece was taken on the real board while connected (Label26's text).
    virtual void AtualizaLabel26() {}
    // The game clock (Tempo) stops: play went on from an earlier position.
    virtual void ParaTempo() {}
    virtual void IniciaTempo() {}
    // Image6_Click came while a move was being played on the board: call it again once
    // the move has ended. Without a timer to do that, the click is dropped.
    virtual void AdiaImage6(int Index) { (void)Index; }
    virtual void finaliza(uint8_t resultado) { (void)resultado; }
    virtual void Restart_Game() {}
    // After finaliza, sets up the next game of the same session. The default clears the
    // per-game flags, sets up the board and clears the draw counter.
    virtual void PreparaProximoJogo(Contexto& c);
    // A message box with an OK button.
    virtual void Mensagem(const std::string& texto) { (void)texto; }
    // A Yes/No question; true for Yes.
    virtual bool Pergunta(const std::string& texto) {
        (void)texto;
        return false;
    }
    // A debug line, when the log is on.
    virtual void LogDebug(const std::string& texto) { (void)texto; }
};

class Contexto {
public:
    explicit Contexto(Plataforma& plataforma);

    // --- records ---
    RegistroJogo Game;
    std::array<RegistroJogador, 3> Jogador; // 1 and 2; 1 is always the person at this screen
    Posicao Atual;
    std::string Tipo_c = "Servidor";
    uint8_t Velocit = 2;
    Tabuleiro Tabuleiro_{};
    // --- history ---
    static constexpr int MAX_HISTORICO = 300;
    std::array<std::string, MAX_HISTORICO + 1> Historico;
    int16_t UltimaJogada = 0;
    int16_t JogadaAtual = 0;
    int16_t LadoCarregado = 0;
    bool VoltouTabuleiro = false;
    bool RetomaHistorico = false;
    bool HistoricoCheio = false; // more than 300 positions: recording and browsing closed
    int16_t ContaEmpate = 0;
    // --- flags of the turn cycle ---
    bool NoMovePedra = false;
    // A real move is being played on the board, from its first step to its last: a handler
    // that would set up another board waits until it is false.
    bool MovendoNaTela = false;
    // PlayGame's start sequence runs: it pumps (the one-second message, the handshake)
    // before Game.EmPlay is set, and PlayGame must not run twice at once then either.
    bool IniciandoPlay = false;
    // Counts the boards set up from outside a turn (defineinicio, the history's loads): a
    // turn that sees it change while it waits knows its position is gone.
    uint32_t TabuleirosPostos = 0;
    bool SaidoMovePedra = false;
    bool Ja_Joguei = false;
    bool Make_Enviar = true;
    bool Recebeu_Jogada = false;
    bool PediuEMpate = false;
    bool EsperandoEmpate = false;
    bool VaiEmpatar = false;
    bool StartInitGame = false;
    bool ContraCPU = false;
    int Anterior = 0;
    std::string TextoClicado;
    double InicioJogo = 0; // time of day the game clock counts from
    double TempoJogo = 0;

    Painel painel;
    Plataforma& plataforma;
    Ganchos* ganchos = &semGanchos;
    Pensador* pensador = nullptr;
    // The generator, with the rule set of the game in force.
    Gerador& gerador() {
        gerador_->Regra = Game.Regra;
        return *gerador_;
    }
    // True while a human turn waits for a click on the board.
    bool EsperaClique() const { return esperandoClique; }

    // --- board ---
    void defineinicio();
    void mostratabuleiro();
    // Reads a board text; false (and nothing changed) for a text that is not one.
    bool CarregaBoard(const std::string& texto);
    std::string TextoTabuleiro() const { return velmora::TextoTabuleiro(Atual); }
    int TipoCasa(int casa) const { return velmora::TipoCasa(Atual, casa); }
    int QuantasPecas(int lado) const { return velmora::QuantasPecas(Atual, lado); }
    int ValordasPecas(int lado) const { return velmora::ValordasPecas(Atual, lado); }

    // --- moves and turns ---
    // The real move on Atual, animated and sent. Returns false when a step named a square
    // off the board (nothing of that step was done).
    bool FazJogadaNaTela(const Jogada& j);
    bool movepedra(int f, int t);
    void PlayGame();
    uint8_t JogadaHumano();
    void AnotaClique(int casa);
    // A click on a square reached the game: note it and wake the waiting turn.
    void Clique(int casa);
    bool Minhavez() const;
    void MarcaCasa(int casa);
    void DesmarcaCasa(int casa);
    void DesmarcaTodas();
    // Starts a game from outside: fills nothing, clears the per-game flags, sets up the
    // board and runs PlayGame. The caller fills Game and Jogador first.
    void IniciaJogo();

    // --- history ---
    void GravaInicioHistorico();
    // After a human move (humano) or a computer move; `lado` is the side to move next.
    void GravaHistorico(int lado, bool humano);
    void Image6_Click(int Index);
    void AtualizaLabel10();

    // --- helpers ---
    void Espera(double segundos);
    bool Sorte(int p);
    // A whole number 0..n-1 from the generator last seeded.
    int Aleatorio(int n);
    void Semeia();
    void Log(const std::string& texto) { ganchos->LogDebug(texto); }
    void AtualizaContagem();
    // The board part of the next game's set-up.
    void PreparaProximoJogoPadrao();
    // The local side: 2 for a "Cliente", else 1.
    int LadoLocal() const { return Tipo_c == "Cliente" ? 2 : 1; }
    void RedesenhaCasas();

private:
    void MostraVez();
    Ganchos semGanchos;
    std::unique_ptr<Gerador> gerador_;
    std::mt19937 rng;
    uint32_t sementes = 0;
    bool cliquePendente = false;
    // A handler called PlayGame during the start sequence: the sequence leaves to it.
    bool playDuranteInicio = false;
    bool esperandoClique = false;
};

} // namespace velmora
