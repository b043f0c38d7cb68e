// partida: a game session without a window, run by the same controller as the desktop
// program. Standard input is read as words: square names ("C3") are clicks on the board,
// a few words are the buttons, and the answers to questions and to the new game dialog
// come from there too (or from --resposta). The board and every text the player would read
// are printed as they change. The session goes on from game to game until the input ends.
#include "comandos.h"
#include "opcoes.h"
#include "partidaonline.h"
#include "partidarede.h"

#include "core/casas.h"
#include "core/tabuleiro.h"
#include "session/form1.h"
#include "store/placar.h"
#include "store/recordes.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cstdio>
#include <deque>
#include <map>
#include <optional>
#include <unistd.h>

namespace velmora::cli {

namespace {

// The words of standard input, read as they arrive while the game's events run.
class Entrada {
  public:
    Entrada() : notificador_(STDIN_FILENO, QSocketNotifier::Read) {
        QObject::connect(&notificador_, &QSocketNotifier::activated, &notificador_,
                         [this] { Le(); });
    }
    bool Vazia() const { return palavras_.empty(); }
    bool Fim() const { return fim_ && palavras_.empty(); }
    // The next word; waits for it, letting events run. Nothing at the end of the input.
    std::optional<std::string> Proxima() {
        while (palavras_.empty() && !fim_)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        if (palavras_.empty()) return std::nullopt;
        std::string p = palavras_.front();
        palavras_.pop_front();
        return p;
    }
    // Lets events run until something arrives, at most until the next timer.
    void Aguarda() {
        if (palavras_.empty() && !fim_)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

  private:
    void Le() {
        char bloco[4096];
        const ssize_t n = ::read(STDIN_FILENO, bloco, sizeof bloco);
        if (n <= 0) {
            fim_ = true;
            notificador_.setEnabled(false);
            Separa(" ");
            return;
        }
        Separa(std::string(bloco, static_cast<size_t>(n)));
    }
    void Separa(const std::string& texto) {
        for (char c : texto) {
            if (c == ' ' || c == '\n' || c == '\r' || c == '\t') {
                if (!parcial_.empty()) palavras_.push_back(parcial_);
                parcial_.clear();
            } else {
                parcial_ += c;
            }
        }
    }
    QSocketNotifier notificador_;
    std::deque<std::string> palavras_;
    std::string parcial_;
    bool fim_ = false;
};

std::optional<bool> Resposta(const std::string& p) {
    if (p == "s" || p == "S" || p == "sim") return true;
    if (p == "n" || p == "N" || p == "nao" || p == "não") return false;
    return std::nullopt;
}

// The message boxes, the questions and the new game dialog, on the terminal.
class TelaTerminal : public Tela {
  public:
    TelaTerminal(Entrada& e, std::optional<bool> resposta, CamposNovoJogo campos)
        : entrada_(e), resposta_(resposta), campos_(std::move(campos)) {}

    SaidaDialogo MostraNovoJogo(FrmNewGame& d) override {
        for (;;) {
            std::printf("Novo jogo (jogar, %s): ", d.Label2 == "Cancelar" ? "cancelar" : "sair");
            std::fflush(stdout);
            const auto p = entrada_.Proxima();
            std::printf("%s\n", p ? p->c_str() : "sair");
            if (!p || *p == "sair") return SaidaDialogo::Sair;
            if (*p == "cancelar")
                return d.Label2 == "Cancelar" ? SaidaDialogo::Cancelar : SaidaDialogo::Sair;
            CamposNovoJogo c = campos_;
            if (*p == "jogar" && d.JOGAR(c)) return SaidaDialogo::Jogar;
        }
    }
    void Mensagem(const std::string& texto, const std::string&) override {
        std::printf("[%s]\n", texto.c_str());
        std::fflush(stdout);
    }
    bool Pergunta(const std::string& texto, const std::string&) override {
        for (;;) {
            std::printf("[%s] (s/n): ", texto.c_str());
            std::fflush(stdout);
            std::optional<bool> r = resposta_;
            if (!r) {
                const auto p = entrada_.Proxima();
                r = p ? Resposta(*p) : std::optional<bool>(false);
            }
            if (r) {
                std::printf("%s\n", *r ? "sim" : "não");
                return *r;
            }
        }
    }
    void MostraRecordes(int nivel, int posicao) override {
        std::printf("Recordes (%s):\n", NomeDoNivel(nivel).c_str());
        int r = 0;
        for (const Recorde& x : Recordes().Tabela(nivel)) {
            ++r;
            std::printf("%s%03d %s %s\n", r == posicao ? "> " : "  ", r, x.nome.c_str(),
                        FormataTempo(x.tempo).c_str());
        }
        if (nivel != 8) std::printf("%s\n", Placar().Texto(nivel).c_str());
    }

  private:
    Entrada& entrada_;
    std::optional<bool> resposta_;
    CamposNovoJogo campos_;
};

// Prints the board after each recorded position and each new message of the board.
class Quadro {
  public:
    explicit Quadro(Contexto& c) : ctx_(c) {}
    void Mostra() {
        if (ctx_.JogadaAtual != atual_ || ctx_.UltimaJogada != ultima_) {
            atual_ = ctx_.JogadaAtual;
            ultima_ = ctx_.UltimaJogada;
            if (!ctx_.painel.lbMoves.Texto.empty() && ctx_.JogadaAtual > 1)
                std::printf("Jogada: %s\n", ctx_.painel.lbMoves.Texto.c_str());
            std::printf("%s", DesenhoTabuleiro(ctx_.Atual).c_str());
            std::printf("Posição %d/%d, vez do lado %d\n", ctx_.JogadaAtual, ctx_.UltimaJogada,
                        ctx_.Atual.Vez);
        }
        for (const Controle* c : {&ctx_.painel.lbMsg, &ctx_.painel.Label27}) {
            std::string& visto = vistos_[c];
            const std::string agora = c->Visivel ? c->Texto : "";
            if (agora == visto) continue;
            visto = agora;
            if (!agora.empty()) std::printf("%s\n", agora.c_str());
        }
        std::fflush(stdout);
    }

  private:
    Contexto& ctx_;
    int atual_ = -1, ultima_ = -1;
    std::map<const Controle*, std::string> vistos_;
};

// The computer's turn through the engine, with its report printed after each move as the
// board window shows it: value, depth, cutoffs and positions.
class PensadorComRelato : public Pensador {
  public:
    PensadorComRelato(Form1& f, Quadro& q) : form_(f), quadro_(q) {}
    uint8_t PensaJogada() override {
        const uint8_t r = form_.motor.PensaJogada();
        quadro_.Mostra();
        const Painel& p = form_.ctx.painel;
        std::printf("Computador: Valor: %s  Profundidade: %d  MaxPly: %s  Cortes: %s  "
                    "Posições: %s\n",
                    p.lbValue.Texto.c_str(), form_.motor.LimiteProf, p.lbPly.Texto.c_str(),
                    p.lbCutoff.Texto.c_str(), p.lbPosns.Texto.c_str());
        std::fflush(stdout);
        return r;
    }

  private:
    Form1& form_;
    Quadro& quadro_;
};

// A word typed while the board waits: a click, a button, or nothing known.
void Executa(Form1& form, const std::string& p) {
    static const std::map<std::string, int> historia = {
        {"primeira", 0}, {"volta", 1}, {"avanca", 2}, {"ultima", 3}};
    if (const int casa = CasaDoNome(p); casa != 0)
        form.imgpd_MouseDown(casa);
    else if (p == "novo")
        form.Label6_Click();
    else if (p == "reiniciar")
        form.Label7_Click();
    else if (p == "entregar")
        form.Label22_Click();
    else if (p == "sair")
        form.Image1_Click();
    else if (auto it = historia.find(p); it != historia.end())
        form.Image6_Click(it->second);
    else
        std::printf("Entrada inválida: %s (casas A1 a H8, novo, reiniciar, entregar, "
                    "primeira, volta, avanca, ultima, sair)\n",
                    p.c_str());
}

} // namespace

int ComandoPartida(const Argumentos& args) {
    if (PedePartidaOnline(args)) return ComandoPartidaOnline(args);
    if (PedePartidaRede(args)) return ComandoPartidaRede(args);
    Opcoes o(args, {"tipo", "modo", "regra", "nivel1", "nivel2", "comeca", "resposta", "nome1",
                    "nome2", "tempo"});
    if (!o.ok()) return ErroDeUso(o.erro);
    const std::string tipo = o.texto("tipo", "HC");
    if (tipo != "HH" && tipo != "HC" && tipo != "CH" && tipo != "CC")
        return ErroDeUso("--tipo espera HH, HC, CH ou CC");
    const auto modo = o.inteiro("modo", 1, 3, tipo == "HH" ? 3 : 1);
    const auto regra = o.inteiro("regra", 1, 4, 1);
    const auto nivel1 = o.inteiro("nivel1", 1, 5, 1);
    const auto nivel2 = o.inteiro("nivel2", 1, 5, 1);
    const auto comeca = o.inteiro("comeca", 1, 2, 1);
    if (!modo || !regra || !nivel1 || !nivel2 || !comeca) return ErroDeUso(o.erro);
    if (*modo == 2 && tipo != "HC") return ErroDeUso("o torneio (--modo 2) é jogado como HC");
    if (*modo == 3 && tipo != "HH") return ErroDeUso("--modo 3 é jogado como HH");
    if (*modo == 1 && tipo == "HH") return ErroDeUso("--modo 1 tem um lado do computador");
    double tempo = 0;
    if (o.tem("tempo")) {
        const auto t = o.real("tempo", 0.001, 3600);
        if (!t) return ErroDeUso(o.erro);
        tempo = *t;
    }
    std::optional<bool> resposta;
    if (o.tem("resposta")) {
        resposta = Resposta(o.texto("resposta"));
        if (!resposta) return ErroDeUso("--resposta espera sim ou nao");
    }

    int argc = 1;
    char nome[] = "velmora-cli";
    char* argv[] = {nome, nullptr};
    QCoreApplication app(argc, argv);

    PartidaSemTela p;
    p.Modo = static_cast<int>(*modo);
    p.Tipo = tipo;
    p.Regra = static_cast<int>(*regra);
    p.Comeca = static_cast<int>(*comeca);
    p.Nivel1 = static_cast<int>(*nivel1);
    p.Nivel2 = static_cast<int>(*nivel2);
    const bool cc = tipo == "CC";
    p.Nome1 = o.texto("nome1", tipo[0] == 'C' ? (cc ? "CPU 1" : "Computador")
                                              : (tipo == "HH" ? "Jogador 1" : "Jogador"));
    p.Nome2 = o.texto("nome2", tipo[1] == 'C' ? (cc ? "CPU 2" : "Computador")
                                              : (tipo == "HH" ? "Jogador 2" : "Jogador"));
    // What "jogar" in a later new game dialog chooses: the same kind of session.
    CamposNovoJogo campos;
    campos.Aba = p.Modo == 3 ? 2 : 1;
    campos.Nivel = p.Modo == 2 ? 8 : p.Nivel2;
    campos.Opt_regra = campos.Opt_regra2 = p.Regra;
    campos.TxtHC = p.Nome1;
    campos.TxtHH1 = p.Nome1;
    campos.TxtHH2 = p.Nome2;

    Entrada entrada;
    TelaTerminal tela(entrada, resposta, campos);
    // The computer thinks for real. Animations and pauses take no time but count on the
    // clock, so each level's budget, its 400 ms pause included, is spent as in the window.
    RelogioReal relogio(true);
    ValoresDoPrograma valores;
    valores.CaminhoApp = CaminhoDoPrograma(QCoreApplication::applicationDirPath().toStdString());
    Form1 form(tela, relogio, valores);
    form.motor.TempoFixo = tempo;
    Quadro quadro(form.ctx);
    PensadorComRelato relato(form, quadro);
    form.UsaPensador(&relato);
    bool emJogo = false;
    int ultimaJogada = 0;
    form.AoProcessarEventos = [&] {
        quadro.Mostra();
        if (cc && !form.Encerrado()) {
            // Two computers play one game: nobody is there to end the session. The game is
            // over when it ends, or when the next one has begun (a draw by the king-move
            // count starts it at once, with the score unchanged).
            const int jogada = form.ctx.JogadaAtual;
            if (emJogo && (form.ctx.Game.Fim || jogada < ultimaJogada))
                return form.EncerraPrograma();
            if (!form.ctx.Game.Fim) emJogo = true;
            ultimaJogada = jogada;
        }
        if (form.Encerrado() || !form.ctx.EsperaClique() || form.ctx.Game.Fim) return;
        if (entrada.Fim()) {
            form.EncerraPrograma(); // nothing more to play
            return;
        }
        if (entrada.Vazia()) entrada.Aguarda();
        if (!entrada.Vazia() && form.ctx.EsperaClique()) Executa(form, *entrada.Proxima());
    };
    form.Form_Load();

    std::printf("Regra: %s\n", NomeRegra(p.Regra));
    form.InicioSemTela(p);
    // The board is idle (a dialog was cancelled) or a timer will start the next session.
    while (!form.Encerrado()) {
        if (form.TimerInitGame.isActive() || form.TimerSaidoMovePedra.isActive() ||
            form.timerDentro.isActive()) {
            // A new dialog or game is on its way: it comes before the next word.
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            continue;
        }
        const auto palavra = entrada.Proxima();
        if (palavra)
            Executa(form, *palavra);
        else
            form.EncerraPrograma();
    }
    quadro.Mostra();
    const auto& j = form.ctx.Jogador;
    std::printf("Placar: %s %d x %d %s\n", j[1].Nome.c_str(), j[1].Vitorias, j[2].Vitorias,
                j[2].Nome.c_str());
    if (cc) {
        if (j[1].Vitorias == j[2].Vitorias)
            std::printf("Resultado: empate\n");
        else
            std::printf("Vencedor: %s\n", j[j[1].Vitorias > j[2].Vitorias ? 1 : 2].Nome.c_str());
    }
    return 0;
}

} // namespace velmora::cli
