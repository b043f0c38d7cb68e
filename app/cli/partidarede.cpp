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

#include "net/modsocketmaster.h"
#include "peer/conexaodireta.h"
#include "peer/conexaopeer.h"
#include "session/form1.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>

namespace velmora::cli {

namespace {

struct Ajustes : AjustesRede {
    bool escuta = true;
    std::string host;
    int porta = 2001;
    int limite = 90;
    std::string nome = "Jogador";
};

// The terminal's new-game dialog: the direct link's tab, listening or dialling.
class TelaRede : public TelaTerminal {
  public:
    TelaRede(const Ajustes& a, Linhas& l) : TelaTerminal(a.computador, l), a_(a) {}

  protected:
    CamposNovoJogo CamposDoJogo() const override {
        CamposNovoJogo c;
        c.Aba = 5;
        c.Option1 = a_.escuta;
        c.TxtRede = a_.nome;
        c.Opt_regra3 = a_.regra;
        return c;
    }

  private:
    const Ajustes& a_;
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

    MesaRede<TelaRede> mesa(a);
    auto& linhas = mesa.linhas;
    auto& tela = mesa.tela;
    auto& form = mesa.form;
    auto& peer = mesa.peer;
    form.UsaRede(peer);
    PensadorRede pensador(form, a.tempo);
    Relato relato(form);
    ComandosRede comandos(form, peer, linhas, relato, a);
    int saida = 0;
    tela.decideEmpate = [&form] { return EmpateConvem(form); };

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
        ComecaPartidaRede(form, pensador, a);
    };

    comandos.Liga();
    RodaAteEncerrar(form, relato);
    if (saida != 0) return saida;
    ImprimePlacar(form);
    return 0;
}

} // namespace velmora::cli
