// Liveness of a game for points, and what a silent, closed or failing link means: each
// copy judges alone, from its own board, whether the peer walked away (a win), whether the
// local line is at fault (nothing), or whether the game doesn't count.
#include "peer/conexaopeer.h"

#include "peer/fio.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <vector>

namespace velmora {

namespace {

// Public hosts that answer on the DNS port; the first entry is never tried.
constexpr const char* EnderecosPublicos =
    "1.1.1.1 8.8.8.8 9.9.9.9 208.67.222.222 1.0.0.1 8.8.4.4 149.112.112.112 208.67.220.220 "
    "94.140.14.14 185.228.168.9 76.76.2.0";

// A TCP connect to port 53 within `ms`: true when the host answered (accepted or refused).
bool SondaTcp(const std::string& endereco, int ms) {
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(53);
    if (inet_pton(AF_INET, endereco.c_str(), &sa.sin_addr) != 1) return false;
    const int s = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (s < 0) return false;
    bool ok = false;
    const int r = ::connect(s, reinterpret_cast<const sockaddr*>(&sa), sizeof sa);
    if (r == 0) {
        ok = true;
    } else if (errno == EINPROGRESS) {
        pollfd p{s, POLLOUT, 0};
        if (::poll(&p, 1, ms) == 1) {
            int erro = 0;
            socklen_t n = sizeof erro;
            ::getsockopt(s, SOL_SOCKET, SO_ERROR, &erro, &n);
            ok = erro == 0 || erro == ECONNREFUSED;
        }
    }
    ::close(s);
    return ok;
}

} // namespace

bool ConexaoPeer::JogoComRelogio() const {
    const auto& c = form_.ctx;
    return c.Game.Conectado && c.Game.Modo == 4 &&
           !(c.Jogador[1].Visitante && c.Jogador[2].Visitante);
}

void ConexaoPeer::IniciaVigilancia() {
    Close_Valendo = true;
}

void ConexaoPeer::TimerManda_Timer() {
    if (!JogoComRelogio()) return;
    const int i = form_.BarraEmUso();
    const auto& m = form_.modelo;
    if (m.PicCrono[i].Largura > m.PicTIMER[i].Largura / 2) Envia(ws_C, fio::Ping);
}

void ConexaoPeer::TimerVerifica_Timer() {
    if (!JogoComRelogio()) return;
    const int i = form_.BarraEmUso();
    const auto& m = form_.modelo;
    // A clock not yet laid out counts nothing.
    if (m.PicTIMER[i].Largura <= 0 || m.PicCrono[i].Largura < m.PicTIMER[i].Largura / 2) return;
    int& conta = form_.Conta_Verifica;
    ++conta;
    const auto anota = [&] {
        Log("Conta_Verifica = " + std::to_string(conta) +
            " Close_Valendo = " + (Close_Valendo ? "True" : "False"));
    };
    if (conta <= 9) {
        if (!Close_Valendo) {
            Close_Valendo = true;
            anota();
        }
        return;
    }
    if (conta == 10) {
        if (vaiVencer(1.0) == 1) {
            anota();
            FechaSockets(0);
            Log(">>Perdeu contato (Conta_Verifica = 10)");
            int w = 1;
            ApuraCaiu(w);
        } else {
            ApagaMarca();
        }
        return;
    }
    if (conta <= 15) {
        if (TemInternet && !TestandoInternet) {
            form_.TimerVerifica.stop();
            const bool ok = TestaInternet(300);
            form_.TimerVerifica.start();
            if (!ok) {
                Close_Valendo = true;
                DerrubouConexao();
                return;
            }
        }
        if (Close_Valendo) {
            Close_Valendo = false;
            anota();
        }
        anota();
        Log("::: WS(" + std::to_string(ws_C) +
            ").state = " + std::to_string(WS.Loaded(ws_C) ? WS(ws_C).State() : 0));
        Envia(ws_C, fio::Ping);
        return;
    }
    form_.TimerVerifica.stop();
    anota();
    FechaSockets(0);
    Log(">>Perdeu contato");
    int w = 0;
    ApuraCaiu(w);
}

void ConexaoPeer::WS_CloseSck(int Index) {
    auto& c = ctx();
    if (NoServidor && !c.Game.Conectado) SairLobby = true;
    form_.Timer2.stop();
    form_.TimerVerifica.stop();
    form_.TimerManda.stop();
    c.painel.Habilitado = true;
    if (!c.Game.Conectado) return;
    if (NoServidor && FalhaNoServidor) {
        c.SaidoMovePedra = false;
        WS.Unload(Index);
        form_.Timer2.stop();
        form_.InitGame();
        return;
    }
    int w = 0;
    FechouWS(Index, w);
}

void ConexaoPeer::FechouWS(int Index, int& wVenceu) {
    auto& c = ctx();
    auto& G = c.Game;
    c.SaidoMovePedra = false;
    Descarrega(Index);
    Log(std::string(">FechouWS< Game.Conectado = ") + (G.Conectado ? "True" : "False") +
        "  Close_Valendo= " + (Close_Valendo ? "True" : "False") +
        "  GameEnds= " + (G.Fim ? "True" : "False"));
    if (Close_Valendo && wVenceu == 0) {
        wVenceu = vaiVencer(1.0);
        if (vaiVencer(1.0) == 2) Close_Valendo = false;
    }
    if ((wVenceu == 1 || !Close_Valendo) && G.Conectado && G.Modo == 4) {
        if (wVenceu == 1) {
            Close_Valendo = true;
        } else if (vaiVencer(1.0) == 1) {
            Close_Valendo = true;
            wVenceu = 1;
        }
    }
    const std::string nome = NomePeer();
    if (G.Conectado && !G.Fim && G.Modo == 4 && G.valendo) {
        if (!((wVenceu == 1 || c.JogadaAtual >= 5) && Close_Valendo)) {
            Log("WS_CloseSck :: " + nome + " saiu do jogo.");
            Caixa(nome + " saiu do jogo.");
        } else {
            const int i = form_.BarraEmUso();
            const auto& m = form_.modelo;
            if (c.QuantasPecas(1) == 12 && c.QuantasPecas(2) == 12 &&
                m.PicCrono[i].Largura >= m.PicTIMER[i].Largura) {
                Log("Acabou o tempo e os dois tinham 12 peças");
                Caixa(" Falha na conexão com " + nome);
            } else {
                Log("WS_CloseSck :: " + nome + " entregou o jogo e saiu.");
                Painel& p = c.painel;
                p.Label27.Texto = nome + " entregou o jogo e saiu.";
                p.Label27.Visivel = true;
                ++c.Jogador[1].Vitorias;
                form_.AtualizaPlacar();
                p.Ocupado = true;
                Pump();
                p.Habilitado = false;
                form_.rede().AtribuiVitoria(1, false); // through the service when on-line
                p.Label27.Visivel = false;
                p.Habilitado = true;
                p.Ocupado = false;
                Caixa(nome + " entregou o jogo e saiu.");
            }
        }
    }
    form_.Timer2.stop();
    form_.InitGame();
}

void ConexaoPeer::ApuraCaiu(int& wVenceu) {
    auto& c = ctx();
    Painel& p = c.painel;
    form_.TimerVerifica.stop();
    form_.TimerManda.stop();
    form_.Timer2.stop();
    Log("### A conexão foi encerrada ###");
    const int meu = c.LadoLocal();
    const int proprio = c.ValordasPecas(meu), outro = c.ValordasPecas(3 - meu);
    const auto premia = [&](const char* motivo) {
        Log(std::string("Atribuir pontos :: (") + motivo + ")");
        c.Game.valendo = true;
        Close_Valendo = true;
        Log(">>> " + NomePeer() + " abandonou o jogo");
        form_.Timer2.stop();
        form_.TimerVerifica.stop();
        form_.TimerManda.stop();
        int um = 1;
        FechouWS(ws_C, um);
    };
    if (proprio > outro + 3 || wVenceu == 1) return premia("Superioridade no jogo");
    if (wVenceu == 0) wVenceu = vaiVencer(1.0);
    if (wVenceu == 1) {
        p.Label27.Texto = NomePeer() + " abandonou o jogo";
        p.Label27.Visivel = true;
        return premia("Mandava no jogo");
    }
    if (wVenceu == 2) {
        Close_Valendo = false;
        c.Game.valendo = true;
    }
    p.Label27.Texto = "Falha na conexão";
    p.Label27.Visivel = true;
    Log("Não validar :: (igualdade ou inferioridade no jogo)");
    form_.Timer2.stop();
    c.Jogador[1].ID = c.Jogador[2].ID = "0";
    Log("# # # A conexão foi encerrada # # #");
    p.Habilitado = false;
    Espera(2);
    p.Habilitado = true;
    p.Label27.Visivel = false;
    form_.LimpaPlacar();
    form_.Label26_Click();
}

void ConexaoPeer::DerrubouConexao() {
    auto& c = ctx();
    Painel& p = c.painel;
    form_.TimerVerifica.stop();
    form_.TimerManda.stop();
    form_.Tempo.stop();
    form_.Timer2.stop();
    Log("### A conexão foi encerrada ###");
    c.Jogador[1].ID = c.Jogador[2].ID = "0";
    Log("# # # A conexão foi caiu # # #");
    p.Habilitado = false;
    Espera(2);
    p.Habilitado = true;
    p.Label27.Visivel = false;
    form_.LimpaPlacar();
    form_.Label26_Click();
}

void ConexaoPeer::WS_Error(int Index, std::int32_t Number, const std::string& Description) {
    auto& c = ctx();
    Log("WS_Error: (index:" + std::to_string(Index) + "/ws_C:" + std::to_string(ws_C) +
        ")  Erro: " + std::to_string(Number) + ": " + Description);
    UltimoErro = std::to_string(Number) + ": " + Description;
    if (Form8Aberto) {
        Log("Form8Aberto = TRUE");
        return;
    }
    if (NoServidor && c.Game.Conectado) {
        FalhaNoServidor = true;
        Fecha(Index);
        return;
    }
    if (c.Game.Conectado && c.Game.Modo == 4 &&
        !(c.Jogador[1].Visitante && c.Jogador[2].Visitante)) {
        if (vaiVencer(1.0) == 2) return DerrubouConexao();
        if (!TestaInternet(300)) DerrubouConexao();
    }
}

bool ConexaoPeer::TestaInternet(int limiteMs) {
    TestandoInternet = true;
    std::vector<std::string> lista;
    for (size_t ini = 0; ini < std::string_view(EnderecosPublicos).size();) {
        const std::string_view t = EnderecosPublicos;
        size_t fim = t.find(' ', ini);
        if (fim == std::string_view::npos) fim = t.size();
        if (fim > ini) lista.emplace_back(t.substr(ini, fim - ini));
        ini = fim + 1;
    }
    const double nota = Decorrido();
    bool ok = false;
    for (size_t k = 1; k < lista.size() && !ok; ++k) {
        ok = pingaEndereco ? pingaEndereco(lista[k], 200) : SondaTcp(lista[k], 200);
        if (ok) break;
        Pump();
        if ((Decorrido() - nota) * 1000 > limiteMs) break;
    }
    TestandoInternet = false;
    return ok;
}

void ConexaoPeer::ApagaMarca() {
    ctx().DesmarcaTodas();
}

} // namespace velmora
