#pragma once
// What the two networked games of the command line share: the terminal's text, the lines of
// standard input read while the game's events run, the terminal as the game's screen, the
// report of boards and results, the commands typed during a game, the computer's turn of a
// connected game and the moment between two games.
#include "net/modsocketmaster.h"
#include "peer/conexaopeer.h"
#include "session/form1.h"
#include "session/relogio.h"

#include <QCoreApplication>
#include <QTimer>

#include <QSocketNotifier>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <unistd.h>

namespace velmora::cli {

// Message texts as the terminal shows them: CR LF, CR CR and CR are line breaks.
inline std::string ParaTerminal(std::string t) {
    std::string r;
    for (size_t i = 0; i < t.size(); ++i) {
        if (t[i] == '\r') {
            r += '\n';
            if (i + 1 < t.size() && t[i + 1] == '\n') ++i;
        } else {
            r += t[i];
        }
    }
    return r;
}

// Lines of standard input, read as they arrive while the game's events run.
class Linhas {
  public:
    Linhas() : notificador_(STDIN_FILENO, QSocketNotifier::Read) {
        QObject::connect(&notificador_, &QSocketNotifier::activated, &notificador_,
                         [this] { Le(); });
    }
    bool Fim() const { return fim_ && linhas_.empty(); }
    bool Vazia() const { return linhas_.empty(); }
    std::string Tira() {
        std::string l = linhas_.front();
        linhas_.pop_front();
        return l;
    }
    void Devolve(std::string l) { linhas_.push_front(std::move(l)); }

  private:
    void Le() {
        char bloco[4096];
        const ssize_t n = ::read(STDIN_FILENO, bloco, sizeof bloco);
        if (n <= 0) {
            fim_ = true;
            notificador_.setEnabled(false);
            if (!parcial_.empty()) linhas_.push_back(parcial_);
            parcial_.clear();
            return;
        }
        for (ssize_t i = 0; i < n; ++i) {
            const char c = bloco[i];
            if (c == '\n') {
                if (!parcial_.empty() && parcial_.back() == '\r') parcial_.pop_back();
                linhas_.push_back(parcial_);
                parcial_.clear();
            } else {
                parcial_ += c;
            }
        }
    }
    QSocketNotifier notificador_;
    std::deque<std::string> linhas_;
    std::string parcial_;
    bool fim_ = false;
};

inline std::optional<bool> SimOuNao(const std::string& p) {
    if (p == "s" || p == "S" || p == "sim") return true;
    if (p == "n" || p == "N" || p == "nao" || p == "não") return false;
    return std::nullopt;
}

// The computer's turn of a connected game: the engine's move for the local side, or the
// loss when it has none.
class PensadorRede : public Pensador {
  public:
    PensadorRede(Form1& f, double tempo) : f_(f), tempo_(tempo) {}
    uint8_t PensaJogada() override {
        Contexto& c = f_.ctx;
        Gerador& g = c.gerador();
        c.Atual.IniLista = 1;
        g.ListaHumano(c.Atual);
        if (g.MaiorTexto < 2) {
            c.painel.lbMsg.Texto = "Você perdeu.";
            c.Game.Fim = true;
            c.Atual.Vez = static_cast<uint8_t>(3 - c.Atual.Vez);
            return 2; // the peer's record wins
        }
        const Jogada primeira = g.Slot(c.Atual.IniLista);
        const double budget = tempo_ > 0 ? tempo_ : f_.motor.TempoNivel(c.Jogador[1].Nivel);
        c.painel.Ocupado = true;
        f_.motor.Aprofunda(c.Atual, budget);
        c.painel.Ocupado = false;
        if (c.Game.Fim || !c.Game.Conectado) return 0;
        Jogada s = f_.motor.Linha(0, 0);
        if (s.tam < 2) s = primeira;
        c.FazJogadaNaTela(s);
        c.Atual.Vez = static_cast<uint8_t>(3 - c.Atual.Vez);
        c.plataforma.ProcessaEventos();
        c.GravaHistorico(c.Atual.Vez, false);
        return 0;
    }

  private:
    Form1& f_;
    double tempo_;
};

// Between two games, with the last one's end fully told: leaving now costs nothing.
inline bool EntreJogos(const Form1& f) {
    const auto& c = f.ctx;
    if (!c.Game.Conectado || !c.Game.Fim || c.Game.EmPlay) return false;
    // The start sequence of the next game may be running; the other waits may not.
    for (int k : {Form1::EsperaEntregar, Form1::EsperaAtribui, Form1::EsperaDespacho})
        if (f.EmEspera[k]) return false;
    return !(c.painel.Label27.Visivel && c.painel.Label27.Texto == "Você venceu");
}

// What both networked games read from their arguments.
struct AjustesRede {
    bool computador = true; // the local side is played by the engine (--tipo C)
    int nivel = 1;
    double tempo = 0; // seconds per move; 0: the level's own time
    int regra = 1;
    int jogos = 0; // 0: until someone leaves
};

// The terminal as the session's and the peer link's screen: boxes in brackets, questions
// answered "não", a draw offer answered by the computer or by the next input line, chat
// and status lines as they come. Each game fills its one new-game dialog its own way; a
// second dialog means the session is over.
class TelaTerminal : public Tela, public TelaPeer {
  public:
    TelaTerminal(bool computador, Linhas& linhas) : computador_(computador), linhas_(linhas) {}
    SaidaDialogo MostraNovoJogo(FrmNewGame& d) final;
    void Mensagem(const std::string& texto, const std::string& titulo) override;
    bool Pergunta(const std::string& texto, const std::string& titulo) override;
    bool PerguntaEmpate(const std::string& texto) override;
    void LinhaChat(const std::string& texto) override;
    void Status(const std::string& texto) override;
    // The computer's answer to a draw offer
    std::function<bool()> decideEmpate;

  protected:
    virtual CamposNovoJogo CamposDoJogo() const = 0;

  private:
    bool computador_;
    Linhas& linhas_;
    int dialogos_ = 0;
};

// The computer takes a draw when it doesn't stand better on the board.
bool EmpateConvem(const Form1& f);

// Prints the board when it changes, the large message and the message line, and each
// game's result.
class Relato {
  public:
    explicit Relato(Form1& f) : f_(f) {}
    int terminados = 0;
    void Mostra();

  private:
    Form1& f_;
    std::string tabuleiro_;
    std::string vistos_[2];
    int vitorias_[3] = {0, 0, 0};
};

// The lines typed during a connected game (squares, "empate", "entregar", "desconectar",
// "chat TEXTO") run between the game's events; the session is left when the games asked
// for are played, or when input ends with nobody to play the local side.
class ComandosRede {
  public:
    ComandosRede(Form1& f, ConexaoPeer& peer, Linhas& linhas, Relato& relato, const AjustesRede& a);
    // Hooks the commands into the session's event pump.
    void Liga();
    void Desconecta();

  private:
    bool Executa(const std::string& linha);
    void AoProcessar();
    // Whether the other copy has seen the end of the last game: it confirmed this side's
    // last move, or five seconds passed since the games were over.
    bool OutroViuOFim();
    Form1& f_;
    ConexaoPeer& peer_;
    Linhas& linhas_;
    Relato& relato_;
    const AjustesRede& a_;
    bool executando_ = false, saindo_ = false;
    double fimEm_ = -1;  // when the wait began, on the session's clock
    QTimer despertador_; // wakes the commands up when that wait is over
};

// Once connected: who plays whom under which rule, and the computer on the local side.
void ComecaPartidaRede(Form1& f, PensadorRede& pensador, const AjustesRede& a);

// Runs the session until it ends, then prints the last report.
void RodaAteEncerrar(Form1& f, Relato& relato);

// The final score line.
void ImprimePlacar(const Form1& f);

// What a networked game of the command line runs on, built in this order: the Qt
// application, the sockets, the lines typed, the terminal as screen, the board window and
// its peer link. `Tela` is the game's own screen, made from its settings and the lines.
template <class Tela> struct MesaRede {
    template <class Ajustes>
    explicit MesaRede(const Ajustes& a)
        : app(argc, argv), tela(a, linhas), form(tela, relogio, Valores()), peer(form, mod, &tela) {
    }
    MesaRede(const MesaRede&) = delete;
    MesaRede& operator=(const MesaRede&) = delete;

    int argc = 1;
    char nomeProg[12] = "velmora-cli";
    char* argv[2] = {nomeProg, nullptr};
    QCoreApplication app;
    modSocketMaster mod;
    Linhas linhas;
    Tela tela;
    RelogioReal relogio;
    Form1 form;
    ConexaoPeer peer;

  private:
    static ValoresDoPrograma Valores() {
        ValoresDoPrograma v;
        v.CaminhoApp = CaminhoDoPrograma(QCoreApplication::applicationDirPath().toStdString());
        return v;
    }
};

} // namespace velmora::cli
