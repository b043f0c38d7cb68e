#pragma once
// Form1 without widgets: the controller of one running copy. It owns the game context, the
// engine, the settings, records and tally, the timers of the board window and the state of
// its controls. The window (or a headless driver) draws `ctx.painel` and `modelo`, and turns
// clicks into the handlers below; dialogs and boxes go through `Tela`, the on-line layers
// through `Rede`.
#include "core/contexto.h"
#include "core/utilidades.h"
#include "engine/motor.h"
#include "session/form1modelo.h"
#include "session/frmnewgame.h"
#include "session/plataformaqt.h"
#include "session/rede.h"
#include "session/relogio.h"
#include "session/tela.h"
#include "store/configuracao.h"
#include "store/logdebug.h"
#include "store/placar.h"
#include "store/recordes.h"
#include "store/registro.h"

#include <QTimer>

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

inline constexpr const char* VersaoPrograma = "3.9.0";

// The process-wide values fixed at start-up.
struct ValoresDoPrograma {
    std::string CaminhoApp; // the program's folder, never ending in "/"
    std::string TituloApp = "Velmora Ace";
    double Escala = 1.0;
    bool UsaEscala = false;
};

// A game set up without the dialog: what the headless program fills.
struct PartidaSemTela {
    int Modo = 1;            // 1 vs computer, 2 tournament, 3 two at one screen
    std::string Tipo = "HC"; // HH, HC, CH or CC
    int Regra = 1;
    int Comeca = 0; // 0: a fair draw
    std::string Nome1 = "Jogador", Nome2 = "Computador";
    int Nivel1 = 1, Nivel2 = 3;
};

class Form1 : public Ganchos {
  public:
    // The four wait loops that InitGame must see leave.
    enum LacoDeEspera : int {
        EsperaEntregar = 0, // the surrender path
        EsperaInicio = 1,   // the peer's start
        EsperaAtribui = 2,  // after a loss is reported
        EsperaDespacho = 3  // inside the peer dispatcher
    };

    Form1(Tela& tela, Relogio& relogio, ValoresDoPrograma valores = {});
    ~Form1() override;
    Form1(const Form1&) = delete;
    Form1& operator=(const Form1&) = delete;

    // ---------------------------------------------------------------- state
    ValoresDoPrograma Programa;
    PlataformaQt plataforma;
    Contexto ctx;
    Motor motor;
    Form1Modelo modelo;
    Configuracao config;

    std::array<bool, 4> EmEspera{};
    bool PodeIniciar = false;
    bool CancelouNovoJogo = false;
    bool Ele_Desistiu = false;  // the peer resigned
    bool Empatou = false;       // a draw by agreement happened with this peer
    bool EsperaTimeOut = false; // the peer answered "RestartTimeOut"
    bool ConexaoAberta = false;
    bool NaRede = false;    // Game.NaRede
    std::string SenhaGrupo; // Game.SenhaGrupo
    std::string SenhaDigitada; // the on-line tab's password, for the lobby's login
    int Conta_Verifica = 0;
    int SegundosInicio = 0; // seconds this copy spent in the start sequence of the game
    int PosicaoRecord = 0;  // the row the records viewer marks
    int Clicado = 0;        // the last square clicked

    // The timers of the board window, with their intervals.
    QTimer Tempo, Timer2, Timer3, Timer1, tmr, TimerInitGame, TimerSaidoMovePedra, timerDentro,
        TimerSair, TimerManda, TimerVerifica, TimerCorrige;

    // ---------------------------------------------------------------- wiring
    void UsaRede(Rede& r) { rede_ = &r; }
    Rede& rede() { return *rede_; }
    Tela& tela() { return tela_; }
    clsRegistryAccess& registro() { return registro_; }
    Recordes& recordes() { return recordes_; }
    Placar& placar() { return placar_; }
    Diario& diario() { return diario_; }
    // Runs at each pump of events, after the pending events: a headless driver's hook.
    std::function<void()> AoProcessarEventos;
    // The program has ended: every loop is leaving.
    bool Encerrado() const { return encerrado_; }

    // ---------------------------------------------------------------- life cycle
    void Form_Load();
    void Form_Activate();
    // A game without the dialog; runs PlayGame.
    void InicioSemTela(const PartidaSemTela& p);
    void Form_Unload();
    void EncerraPrograma();
    // "Sair" in the new game dialog: ends without writing the options.
    void SairDoDialogo();
    void AjeitaForm();
    void MapeaCasasPosition();

    // ---------------------------------------------------------------- session
    void InitGame();
    // "JOGAR": writes the session's fields for the tab; true when the dialog closes.
    bool Jogar(CamposNovoJogo& campos);
    void OrientaTabuleiro(const std::string& tipo);
    void AtualizaPlacar();
    void LimpaPlacar();
    void MostraNivel(int lado);
    void HabilitaEntregar();
    // Called by the handshake when a peer link is up.
    void EstaConectado();
    // A copy that plays against the computer, not connected.
    bool ContraCPU() const;
    // The record of the computer (1 or 2) and of the human, in a game against it.
    int LadoComputador() const {
        return ctx.Game.Tipo.size() == 2 && ctx.Game.Tipo[0] == 'C' ? 1 : 2;
    }
    int LadoHumano() const { return ctx.Game.Tipo.size() == 2 && ctx.Game.Tipo[0] == 'H' ? 1 : 2; }

    // ---------------------------------------------------------------- clocks
    void Tempo_Timer();
    void Timer2_Timer();
    void Timer3_Timer();
    // The bar index of the clock in use.
    int BarraEmUso() const;

    // ---------------------------------------------------------------- end of game
    bool VerificaRecord();
    // The surrender of a connected game; true when the next game may start.
    bool EntregaPartida();

    // ---------------------------------------------------------------- tournament
    std::string NomeBot(int fase);

    // ---------------------------------------------------------------- controls
    void imgpd_MouseDown(int Index, bool botaoDireito = false);
    void Image6_Click(int Index) { ctx.Image6_Click(Index); }
    void Label6_Click();  // "Novo jogo"
    void Label7_Click();  // "Reiniciar"
    void Label22_Click(); // "Entregar partida"
    void Label24_Click(); // "Sugerir empate"
    void Label26_Click(); // disconnect
    void Image7_Click();
    void Image1_Click(); // close
    void Form_KeyDown(int tecla);
    static constexpr int TeclaEsc = 27;
    // Starts the chat log's flash (Timer1).
    void PiscaText4();

    // ---------------------------------------------------------------- Ganchos
    void AgendaPlayGame() override;
    void ZeraRelogios() override;
    void exibevez() override;
    void StatusBotoes() override;
    void HandshakeInicio() override;
    void ParaTimer2() override;
    void IniciaVigilancia() override;
    void PreparaRelogioJogada() override;
    void EnviaJogada(const Jogada& j) override;
    void AtualizaLabel26() override;
    void ParaTempo() override;
    void IniciaTempo() override;
    void AdiaImage6(int Index) override;
    void finaliza(uint8_t resultado) override;
    void Restart_Game() override;
    void PreparaProximoJogo(Contexto& c) override;
    void Mensagem(const std::string& texto) override;
    bool Pergunta(const std::string& texto) override;
    void LogDebug(const std::string& texto) override;

  private:
    void LigaTimers();
    void AoProcessar();
    void PararTimers();
    // Any wait loop, animation, start sequence or end of game on the stack.
    bool AlgoEsperando() const;
    void Som(const std::string& nome);
    void Musica(const std::string& nome);
    // "Jogo iniciado" and the start time of the next game of the same session.
    void InicioDoProximoJogo();
    // The time of the game so far, midnight corrected.
    double TempoDecorrido();
    void CorrigeMeiaNoite();
    void AlternaComeca() { ctx.Game.Comeca = ctx.Game.Comeca == 1 ? 2 : 1; }
    SaidaDialogo AbreNovoJogo();
    bool JogarLocal(CamposNovoJogo& c);
    bool JogarOnline(CamposNovoJogo& c);
    bool JogarPorIP(CamposNovoJogo& c);
    void finalizaDoisHumanos(uint8_t resultado);
    void finalizaConectado(uint8_t resultado);
    void finalizaTorneio(bool humanoVenceu);
    void FimDoTempoLocal();
    void FimDoTempoOponente();
    void MostraBoasVindas();

    Tela& tela_;
    Rede semRede_;
    Rede* rede_ = &semRede_;
    Diario diario_;
    clsRegistryAccess registro_;
    Recordes recordes_;
    Placar placar_;
    FrmNewGame* dialogo_ = nullptr; // the new game dialog while it is open
    QTimer adiaReiniciar_;          // "Reiniciar" pressed while the computer thinks or a move plays
    QTimer adiaHistorico_;          // a history arrow pressed while a move plays
    int historicoAdiado_ = 0;       // the arrow's index
    int piscadas_ = 0;              // ticks of Timer1's flash

    std::string rotuloCancelar_ = "Sair";
    bool ativado_ = false;
    bool encerrado_ = false;
    bool boasVindas_ = false;
    bool iniciandoJogo_ = false; // PlayGame's start sequence, before the first turn
    int emFinaliza_ = 0;
    bool pensando_ = false; // a computer turn is running
    std::string lbMsgVisto_;

    // The engine, seen through the session: notes while a computer turn runs.
    class PensadorSessao : public Pensador {
      public:
        explicit PensadorSessao(Form1& f) : f_(f) {}
        uint8_t PensaJogada() override;
        Pensador* real = nullptr;

      private:
        Form1& f_;
    };
    PensadorSessao pensador_;

  public:
    // Plugs another computer player in (a test's scripted one); nullptr restores the engine.
    void UsaPensador(Pensador* p) { pensador_.real = p ? p : &motor; }
};

// The tournament stage's name shown for the opponent, 1 to 8.
std::string NomeFase(int fase);
// The folder of the program's files, without a trailing "/": the executable's folder
// `pasta`, or, when the files aren't there and the program is installed, the folder
// share/velmora-ace beside the executable's bin folder.
std::string CaminhoDoPrograma(std::string pasta);

} // namespace velmora
