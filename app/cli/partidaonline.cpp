// partida --online: one copy of the game meets another through the on-line service, without
// a window. It runs the lobby as the "On-line" tab opens it (or the "Amigos" tab with
// --grupo), printing each status line the lobby shows, and then plays the game exactly as
// partida --rede does: the local side by the computer (--tipo C) or by a person on
// standard input (--tipo H). Exit 0 when a session was played and ended, 1 when the lobby
// ended without a peer, 2 for bad arguments.
#include "partidaonline.h"

#include "opcoes.h"
#include "terminalrede.h"

#include "core/casas.h"
#include "core/tabuleiro.h"
#include "net/dl.h"
#include "net/getconteudo.h"
#include "net/modsocketmaster.h"
#include "peer/conexaopeer.h"
#include "service/atualizacao.h"
#include "service/endereco.h"
#include "service/ligacaopeer.h"
#include "service/redeservico.h"
#include "session/form1.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <deque>
#include <optional>
#include <sstream>
#include <unistd.h>

namespace velmora::cli {

namespace {

struct Ajustes {
    std::string nome;
    std::string senha;
    std::string grupo; // friends: the group password
    bool visitante = false;
    bool computador = true;
    int nivel = 1;
    double tempo = 0;
    int regra = 1;
    int jogos = 0; // 0: until someone leaves
    bool naRede = false;
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
        c.ChkNaRede = a_.naRede;
        if (!a_.grupo.empty()) {
            c.Aba = 4;
            c.Text1 = a_.nome;
            c.Text3 = a_.grupo;
        } else {
            c.Aba = 3;
            c.Visitante = a_.visitante;
            c.Text4 = a_.nome;
            c.Combo3 = a_.nome;
            c.Text2 = a_.senha;
        }
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

// The lobby's window as the terminal: each new status line printed once, boxes in
// brackets, questions answered "não".
class JanelaTerminal : public JanelaLobby {
  public:
    Form8* lobby = nullptr;
    void Mensagem(const std::string& texto) override {
        std::printf("[%s]\n", ParaTerminal(texto).c_str());
        std::fflush(stdout);
    }
    bool Pergunta(const std::string& texto) override {
        std::printf("[%s] (s/n): não\n", ParaTerminal(texto).c_str());
        std::fflush(stdout);
        return false;
    }
    void Redesenha() override {
        if (!lobby) return;
        for (auto [controle, visto] :
             {std::pair{&lobby->Label4, &status_}, std::pair{&lobby->LbComunica, &porta_}}) {
            if (controle->Texto == *visto || controle->Texto.empty()) continue;
            *visto = controle->Texto;
            std::printf("%s\n", ParaTerminal(*visto).c_str());
        }
        std::fflush(stdout);
    }

  private:
    std::string status_, porta_;
};

// The peer link's sockets for the lobby, telling the terminal which lobby is open.
class LigacaoTerminal : public LigacaoPeer {
  public:
    LigacaoTerminal(ConexaoPeer& peer, Form1& form, JanelaTerminal& janela)
        : LigacaoPeer(peer, form), janela_(janela) {}
    void Lobby(Form8* lobby) override {
        janela_.lobby = lobby;
        LigacaoPeer::Lobby(lobby);
    }

  private:
    JanelaTerminal& janela_;
};

std::optional<Ajustes> LeAjustes(Argumentos args, std::string& erro) {
    Ajustes a;
    const auto tira = [&args](const std::string& nome) {
        const auto antes = args.size();
        std::erase(args, nome);
        return args.size() != antes;
    };
    tira("--online");
    a.visitante = tira("--visitante");
    a.naRede = tira("--na-rede");
    Opcoes o(args, {"nome1", "senha", "grupo", "tipo", "nivel1", "tempo", "regra", "jogos"});
    if (!o.ok()) {
        erro = o.erro;
        return std::nullopt;
    }
    const auto nivel = o.inteiro("nivel1", 1, 5, 1);
    const auto regra = o.inteiro("regra", 1, 4, 1);
    const auto jogos = o.inteiro("jogos", 1, 1000000, 0);
    if (!nivel || !regra || !jogos) {
        erro = o.erro;
        return std::nullopt;
    }
    a.nivel = static_cast<int>(*nivel);
    a.regra = static_cast<int>(*regra);
    a.jogos = static_cast<int>(*jogos);
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
    a.nome = o.texto("nome1");
    a.senha = o.texto("senha");
    a.grupo = o.texto("grupo");
    if (a.nome.empty() || a.nome.find('#') != std::string::npos) {
        erro = "--nome1 é obrigatório e não pode ter \"#\"";
        return std::nullopt;
    }
    if (a.grupo.empty() && !a.visitante && a.senha.empty()) {
        erro = "--senha é obrigatória (ou --visitante, ou --grupo)";
        return std::nullopt;
    }
    return a;
}

} // namespace

bool PedePartidaOnline(const Argumentos& args) {
    return std::find(args.begin(), args.end(), "--online") != args.end();
}

int ComandoPartidaOnline(const Argumentos& args) {
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
    ClienteGetConteudo wsg(mod);
    Laco laco;
    BuscasReais buscas(wsg, laco);
    ServicoOnline servico(form, buscas);
    TestePorta porta(servico, mod);
    JanelaTerminal janela;
    LigacaoTerminal ligacao(peer, form, janela);
    LigaServico(peer, servico);
    RedeComServico rede(peer, servico);
    form.UsaRede(rede);
    PensadorRede pensador(form, a.tempo);
    Relato relato(form);
    bool jogou = false;

    tela.decideEmpate = [&form] {
        // The computer takes a draw when it doesn't stand better on the board.
        const auto& c = form.ctx;
        return c.ValordasPecas(c.LadoLocal()) <= c.ValordasPecas(3 - c.LadoLocal());
    };

    rede.Lobby = [&] {
        auto& c = form.ctx;
        // The copy that the relay makes "Servidor" hands its rule to the other.
        c.Game.Regra = static_cast<int16_t>(a.regra);
        const auto atualizacao = [&] {
            dl DL1;
            return GetUpdate(DL1, wsg, EnderecoServico(form.registro()), "Velmora Ace", TemposLobby,
                             std::string(VersaoServico));
        };
        const ResultadoLobby r =
            AbreLobbySemTela(form, servico, porta, ligacao, janela, atualizacao);
        if (!c.Game.Conectado) return r;
        jogou = true;
        std::printf("Conectado como %s com %s, regra: %s\n", c.Tipo_c.c_str(),
                    c.Jogador[2].Nome.c_str(), NomeRegra(c.Game.Regra));
        std::fflush(stdout);
        c.Jogador[1].Nivel = c.Jogador[2].Nivel = static_cast<int16_t>(a.nivel);
        if (a.computador) {
            c.Game.Tipo = c.Tipo_c == "Cliente" ? "HC" : "CH";
            form.UsaPensador(&pensador);
        }
        return r;
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
    if (!jogou) return 1;
    const auto& j = form.ctx.Jogador;
    std::printf("Placar: %s %d x %d %s\n", j[1].Nome.c_str(), j[1].Vitorias, j[2].Vitorias,
                j[2].Nome.c_str());
    // The points as the panel shows them after the service's award
    for (int k = 1; k <= 2; ++k)
        if (!form.modelo.LbNV[k].Texto.empty())
            std::printf("Pontos de %s: %s\n", j[k].Nome.c_str(), form.modelo.LbNV[k].Texto.c_str());
    std::fflush(stdout);
    return 0;
}

} // namespace velmora::cli
