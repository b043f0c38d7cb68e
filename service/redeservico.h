#pragma once
// The on-line layers as the session sees them: the peer link's Rede, with the service's two
// calls plugged in. Every call goes to `base` except the award of a win, which asks the
// service, and the lobby, which `Lobby` opens (the desktop's window or a headless run).
#include "service/lobby.h"
#include "service/online.h"
#include "session/rede.h"

#include <functional>

namespace velmora {

class RedeComServico : public Rede {
  public:
    RedeComServico(Rede& base, ServicoOnline& servico) : base_(base), servico_(servico) {}

    // Opens the lobby modally and tells how it was left; unset, the base's lobby.
    std::function<ResultadoLobby()> Lobby;

    bool AtribuiVitoria(int vencedor, bool terminou) override {
        return servico_.AtribuiVitoria(vencedor, terminou);
    }
    ResultadoLobby AbreLobby() override { return Lobby ? Lobby() : base_.AbreLobby(); }
    // The peer link underneath.
    Rede& Base() { return base_; }

    void EnviaPeer(const std::string& texto) override { base_.EnviaPeer(texto); }
    void FechaSockets(int k) override { base_.FechaSockets(k); }
    void FechaSocketEmUso() override { base_.FechaSocketEmUso(); }
    void WS_Close() override { base_.WS_Close(); }
    void DescarregaSocketEmUso() override { base_.DescarregaSocketEmUso(); }
    bool SocketConectado() override { return base_.SocketConectado(); }
    void AbreConexaoDireta() override { base_.AbreConexaoDireta(); }
    void HandshakeInicio() override { base_.HandshakeInicio(); }
    void IniciaVigilancia() override { base_.IniciaVigilancia(); }
    void EnviaJogada(const Jogada& j) override { base_.EnviaJogada(j); }
    void AtualizaLabel26() override { base_.AtualizaLabel26(); }
    void TimerManda_Timer() override { base_.TimerManda_Timer(); }
    void TimerVerifica_Timer() override { base_.TimerVerifica_Timer(); }
    void TimerCorrige_Timer() override { base_.TimerCorrige_Timer(); }

  private:
    Rede& base_;
    ServicoOnline& servico_;
};

// A lobby run headless: loaded, activated, pumped until it unloads. The password is the
// one typed in the new game dialog; `getUpdate` may be empty.
ResultadoLobby AbreLobbySemTela(Form1& f, ServicoOnline& servico, TestePorta& porta,
                                LigacaoLobby& ligacao, JanelaLobby& janela,
                                const std::function<std::string()>& getUpdate = {});

} // namespace velmora
