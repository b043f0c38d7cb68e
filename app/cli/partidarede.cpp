// partida --rede: one copy of the game against another over TCP, without a window. The
// copy listens ("escuta", as "Servidor") or dials HOST[:P] (as "Cliente"); the local side
// is played by the computer (--tipo C) or by a person on standard input (--tipo H). Every
// message box is printed in brackets, every chat line received and each game's result as
// it comes, and the score at the end. Exit 0 when the session ended by either side's
// leaving, 1 when the port can't be opened or the address can't be reached, 2 for bad
// arguments.
#include "partidarede.h"

#include "opcoes.h"
#include "terminalrede.h"

#include "core/casas.h"
#include "core/tabuleiro.h"
#include "net/modsocketmaster.h"
#include "peer/conexaodireta.h"
#include "peer/conexaopeer.h"
#include "session/form1.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdio>
#include <deque>
#include <optional>
#include <sstream>
#include <unistd.h>

namespace velmora::cli {

namespace {

struct Ajustes {
    bool escuta = true;
    std::string host;
    int porta = 2001;
    bool computador = false;
    int nivel = 1;
    double tempo = 0;
    int regra = 1;
    int limite = 90;
    std::string nome = "Jogador";
    int jogos = 0; // 0: until someone leaves
};

// The terminal as the session's and the peer link's screen.
class TelaRede : public Tela, public TelaPeer {
  public:
    TelaRede(const Ajustes& a, Linhas& l) : a_(a), linhas_(l) {}
    std::function<bool(CamposNovoJogo&, FrmNewGame&)> primeiroDialogo;
    int dialogos = 0;

    SaidaDialogo MostraNovoJogo(FrmNewGame& d) override {
        if (++dialogos > 1) return SaidaDialogo::Sair; // the session is over
        CamposNovoJogo c;
        c.Aba = 5;
        c.Option1 = a_.escuta;
        c.TxtRede = a_.nome;
        c.Opt_regra3 = a_.regra;
        return d.JOGAR(c) ? SaidaDialogo::Jogar : SaidaDialogo::Sair;
    }
    void Mensagem(const std::string& texto, const std::string&) override {
        std::printf("[%s]\n", ParaTerminal(texto).c_str());
        std::fflush(stdout);
    }
    bool Pergunta(const std::string& texto, const std::string&) override {
        std::printf("[%s] (s/n): não\n", ParaTerminal(texto).c_str());
        std::fflush(stdout);
        return false;
    }
    bool PerguntaEmpate(const std::string& texto) override {
        std::printf("[%s] (s/n): ", texto.c_str());
        std::fflush(stdout);
        bool r = false;
        if (a_.computador) {
            r = decideEmpate && decideEmpate();
        } else {
            // The answer is the next line; ten seconds without one is a refusal.
            QTimer limite;
            limite.setSingleShot(true);
            limite.start(10000);
            while (linhas_.Vazia() && !linhas_.Fim() && limite.isActive())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
            if (!linhas_.Vazia()) r = SimOuNao(linhas_.Tira()).value_or(false);
        }
        std::printf("%s\n", r ? "sim" : "não");
        std::fflush(stdout);
        return r;
    }
    void LinhaChat(const std::string& texto) override {
        std::printf("Chat: %s\n", ParaTerminal(texto).c_str());
        std::fflush(stdout);
    }
    void Status(const std::string& texto) override {
        std::printf("%s\n", ParaTerminal(texto).c_str());
        std::fflush(stdout);
    }
    std::function<bool()> decideEmpate;

  private:
    const Ajustes& a_;
    Linhas& linhas_;
};

// Prints the board when it changes, the large message and the message line, and each
// game's result.
class Relato {
  public:
    explicit Relato(Form1& f) : f_(f) {}
    int terminados = 0;
    void Mostra() {
        const Contexto& c = f_.ctx;
        const std::string tab = TextoTabuleiro(c.Atual);
        if (tab != tabuleiro_ && c.Game.Conectado) {
            tabuleiro_ = tab;
            std::printf("%sVez do lado %d\n", DesenhoTabuleiro(c.Atual).c_str(), c.Atual.Vez);
        }
        for (const Controle* x : {&c.painel.lbMsg, &c.painel.Label27}) {
            std::string& visto = vistos_[x == &c.painel.lbMsg ? 0 : 1];
            const std::string agora = x->Visivel ? x->Texto : "";
            if (agora == visto) continue;
            visto = agora;
            if (agora.empty()) continue;
            std::printf("%s\n", agora.c_str());
            if (agora == "Jogo empatado" || agora == "Você aceitou" ||
                agora == c.Jogador[2].Nome + " aceitou o empate") {
                std::printf("Resultado: empate\n");
                ++terminados;
            }
        }
        for (int k = 1; k <= 2; ++k) {
            if (c.Jogador[k].Vitorias > vitorias_[k]) {
                std::printf("Resultado: %s venceu\n", c.Jogador[k].Nome.c_str());
                ++terminados;
            }
            vitorias_[k] = c.Jogador[k].Vitorias;
        }
        std::fflush(stdout);
    }

  private:
    Form1& f_;
    std::string tabuleiro_;
    std::string vistos_[2];
    int vitorias_[3] = {0, 0, 0};
};

std::optional<Ajustes> LeAjustes(const Argumentos& args, std::string& erro) {
    Opcoes o(args,
             {"rede", "porta", "tipo", "nivel1", "tempo", "regra", "nome1", "jogos", "limite"});
    if (!o.ok()) {
        erro = o.erro;
        return std::nullopt;
    }
    Ajustes a;
    const std::string rede = o.texto("rede");
    const auto porta = o.inteiro("porta", 1, 65535, 2001);
    const auto nivel = o.inteiro("nivel1", 1, 5, 1);
    const auto regra = o.inteiro("regra", 1, 4, 1);
    const auto jogos = o.inteiro("jogos", 1, 1000000, 0);
    const auto limite = o.inteiro("limite", 60, 86400, 90);
    if (!porta || !nivel || !regra || !jogos || !limite) {
        erro = o.erro;
        return std::nullopt;
    }
    a.porta = static_cast<int>(*porta);
    a.nivel = static_cast<int>(*nivel);
    a.regra = static_cast<int>(*regra);
    a.jogos = static_cast<int>(*jogos);
    a.limite = static_cast<int>(*limite);
    if (o.tem("tempo")) {
        const auto t = o.real("tempo", 0.001, 3600);
        if (!t) {
            erro = o.erro;
            return std::nullopt;
        }
        a.tempo = *t;
    }
    const std::string tipo = o.texto("tipo", "C");
    if (tipo != "C" && tipo != "H") {
        erro = "--tipo espera C ou H";
        return std::nullopt;
    }
    a.computador = tipo == "C";
    a.nome = o.texto("nome1", a.computador ? "Computador" : "Jogador");
    if (a.nome.empty() || a.nome.find('#') != std::string::npos) {
        erro = "--nome1 não pode ser vazio nem ter \"#\"";
        return std::nullopt;
    }
    if (rede == "escuta") {
        a.escuta = true;
        return a;
    }
    a.escuta = false;
    a.host = rede;
    const size_t dois = rede.rfind(':');
    if (dois != std::string::npos) {
        a.host = rede.substr(0, dois);
        const std::string p = rede.substr(dois + 1);
        char* fim = nullptr;
        const long v = std::strtol(p.c_str(), &fim, 10);
        if (p.empty() || *fim != '\0' || v < 1 || v > 65535) {
            erro = "--rede espera escuta ou HOST[:PORTA], não \"" + rede + "\"";
            return std::nullopt;
        }
        a.porta = static_cast<int>(v);
    }
    if (a.host.empty()) {
        erro = "--rede espera escuta ou HOST[:PORTA]";
        return std::nullopt;
    }
    return a;
}

} // namespace

bool PedePartidaRede(const Argumentos& args) {
    for (const auto& a : args)
        if (a == "--rede") return true;
    return false;
}

int ComandoPartidaRede(const Argumentos& args) {
    // A line reaches a program that drives this one as soon as it is written
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::string erro;
    const auto lidos = LeAjustes(args, erro);
    if (!lidos) return ErroDeUso(erro);
    const Ajustes a = *lidos;

    int argc = 1;
    char nomeProg[] = "velmora-cli";
    char* argv[] = {nomeProg, nullptr};
    QCoreApplication app(argc, argv);
    modSocketMaster mod;
    Linhas linhas;
    TelaRede tela(a, linhas);
    RelogioReal relogio;
    ValoresDoPrograma valores;
    valores.CaminhoApp = CaminhoDoPrograma(QCoreApplication::applicationDirPath().toStdString());
    Form1 form(tela, relogio, valores);
    ConexaoPeer peer(form, mod, &tela);
    form.UsaRede(peer);
    PensadorRede pensador(form, a.tempo);
    Relato relato(form);
    int saida = 0;

    tela.decideEmpate = [&form] {
        // The computer takes a draw when it doesn't stand better on the board.
        const auto& c = form.ctx;
        return c.ValordasPecas(c.LadoLocal()) <= c.ValordasPecas(3 - c.LadoLocal());
    };

    peer.abreConexaoDireta = [&] {
        ConexaoDireta d(peer, form);
        d.PortaDireta = a.porta;
        d.Form_Load();
        form.ctx.Game.TempoLimite = a.limite;
        d.Form_Activate();
        if (a.escuta) {
            if (!d.ErroEscuta.empty()) {
                std::fprintf(stderr, "velmora-cli: a porta %d não pode ser aberta: %s\n", a.porta,
                             d.ErroEscuta.c_str());
                saida = 1;
                return;
            }
            std::printf("Aguardando conexão na porta %d\n", a.porta);
        } else {
            d.Text1 = a.host;
            d.Command1_Click();
            std::printf("Conectando a %s:%d\n", a.host.c_str(), a.porta);
        }
        std::fflush(stdout);
        for (;;) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
            if (d.Timer1_Timer()) break;
            const bool carregado = peer.WS.Loaded(1);
            const int estado = carregado ? peer.WS(1).State() : sckClosed;
            const bool vivo = estado == sckListening || estado == sckConnected ||
                              estado == sckConnecting || estado == sckResolvingHost ||
                              estado == sckHostResolved || estado == sckOpen;
            if (!vivo && form.ConexaoAberta) {
                // The other side came and left (or was refused) before the game.
                std::printf("[A conexão foi encerrada antes do início do jogo]\n");
                std::fflush(stdout);
                return;
            }
            if (!vivo) {
                std::string texto =
                    peer.UltimoErro.empty() ? "a conexão foi encerrada" : peer.UltimoErro;
                std::fprintf(stderr, "velmora-cli: sem conexão com %s:%d: %s\n",
                             a.escuta ? "o outro jogador" : a.host.c_str(), a.porta, texto.c_str());
                saida = 1;
                return;
            }
        }
        auto& c = form.ctx;
        std::printf("Conectado como %s com %s, regra: %s\n", c.Tipo_c.c_str(),
                    c.Jogador[2].Nome.c_str(), NomeRegra(c.Game.Regra));
        std::fflush(stdout);
        c.Jogador[1].Nivel = c.Jogador[2].Nivel = static_cast<int16_t>(a.nivel);
        if (a.computador) {
            c.Game.Tipo = c.Tipo_c == "Cliente" ? "HC" : "CH";
            form.UsaPensador(&pensador);
        }
    };

    bool executando = false, saindo = false;
    const auto desconecta = [&] {
        if (saindo) return;
        saindo = true;
        QTimer::singleShot(0, &app, [&form] {
            if (form.ctx.Game.Conectado) form.Label26_Click();
        });
    };
    const auto executa = [&](const std::string& linha) {
        std::istringstream in(linha);
        std::string p;
        in >> p;
        if (p.empty()) return true;
        if (p == "chat") {
            std::string resto;
            std::getline(in, resto);
            peer.EnviaChat(resto);
            return true;
        }
        if (p == "empate")
            form.Label24_Click();
        else if (p == "entregar")
            form.Label22_Click();
        else if (p == "desconectar" || p == "sair")
            desconecta();
        else if (CasaDoNome(p) != 0) {
            if (!form.ctx.EsperaClique()) return false; // waits for this side's turn
            do {
                if (const int casa = CasaDoNome(p); casa != 0) form.imgpd_MouseDown(casa);
            } while (in >> p);
        } else {
            std::printf("Entrada inválida: %s (casas A1 a H8, empate, entregar, desconectar, "
                        "chat TEXTO)\n",
                        p.c_str());
        }
        return true;
    };
    form.AoProcessarEventos = [&] {
        relato.Mostra();
        if (executando || form.Encerrado()) return;
        executando = true;
        if (a.jogos > 0 && relato.terminados >= a.jogos && EntreJogos(form)) desconecta();
        if (!linhas.Vazia()) {
            std::string l = linhas.Tira();
            if (!executa(l)) linhas.Devolve(l);
        } else if (linhas.Fim() && !a.computador && form.ctx.Game.Conectado) {
            desconecta(); // nobody is left to play this side
        }
        executando = false;
    };

    form.Form_Load();
    form.Form_Activate();
    while (!form.Encerrado()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    relato.Mostra();
    if (saida != 0) return saida;
    const auto& j = form.ctx.Jogador;
    std::printf("Placar: %s %d x %d %s\n", j[1].Nome.c_str(), j[1].Vitorias, j[2].Vitorias,
                j[2].Nome.c_str());
    std::fflush(stdout);
    return 0;
}

} // namespace velmora::cli
