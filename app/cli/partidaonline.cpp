// partida --online: one copy of the game meets another through the on-line service, without
// a window. It runs the lobby as the "On-line" tab opens it (or the "Amigos" tab with
// --grupo), printing each status line the lobby shows, and then plays the game exactly as
// partida --rede does: the local side by the computer (--tipo C) or by a person on
// standard input (--tipo H). Exit 0 when a session was played and ended, 1 when the lobby
// ended without a peer, 2 for bad arguments.
#include "partidaonline.h"

#include "opcoes.h"
#include "terminalrede.h"

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

#include <algorithm>
#include <cstdio>
#include <optional>

namespace velmora::cli {

namespace {

struct Ajustes : AjustesRede {
    std::string nome;
    std::string senha;
    std::string grupo; // friends: the group password
    bool visitante = false;
    bool naRede = false;
};

// The terminal's new-game dialog: the "On-line" tab, or the "Amigos" tab with a group.
class TelaRede : public TelaTerminal {
  public:
    TelaRede(const Ajustes& a, Linhas& l) : TelaTerminal(a.computador, l), a_(a) {}

  protected:
    CamposNovoJogo CamposDoJogo() const override {
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
        return c;
    }

  private:
    const Ajustes& a_;
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

    MesaRede<TelaRede> mesa(a);
    auto& mod = mesa.mod;
    auto& linhas = mesa.linhas;
    auto& tela = mesa.tela;
    auto& form = mesa.form;
    auto& peer = mesa.peer;
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
    ComandosRede comandos(form, peer, linhas, relato, a);
    bool jogou = false;
    tela.decideEmpate = [&form] { return EmpateConvem(form); };

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
        ComecaPartidaRede(form, pensador, a);
        return r;
    };

    comandos.Liga();
    RodaAteEncerrar(form, relato);
    if (!jogou) return 1;
    ImprimePlacar(form);
    const auto& j = form.ctx.Jogador;
    // The points as the panel shows them after the service's award
    for (int k = 1; k <= 2; ++k)
        if (!form.modelo.LbNV[k].Texto.empty())
            std::printf("Pontos de %s: %s\n", j[k].Nome.c_str(), form.modelo.LbNV[k].Texto.c_str());
    std::fflush(stdout);
    return 0;
}

} // namespace velmora::cli
