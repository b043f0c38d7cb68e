#pragma once
// What the session asks of the on-line layers (peer link, lobby, service). The peer and
// service work implements it; the default is a copy that is never connected.
#include "core/jogada.h"

#include <string>

namespace velmora {

// How the lobby window was left.
struct ResultadoLobby {
    bool JogarComoVisitante = false; // the user asked there to play as a visitor
};

class Rede {
  public:
    virtual ~Rede() = default;
    // One message on the link in use; silent without a link.
    virtual void EnviaPeer(const std::string& texto) { (void)texto; }
    // 0 both sockets, 1 or 2 one of them; errors ignored.
    virtual void FechaSockets(int k) { (void)k; }
    // Reports this player's win (1) or loss (2) to the service; true when it was asked.
    virtual bool AtribuiVitoria(int vencedor, bool terminou) {
        (void)vencedor;
        (void)terminou;
        return false;
    }
    // The socket in use: closed, its close handler run, unloaded.
    virtual void FechaSocketEmUso() {}
    virtual void WS_Close() {}
    virtual void DescarregaSocketEmUso() {}
    virtual bool SocketConectado() { return false; }

    // The lobby (tabs 3 and 4) and the direct connection dialog (tab 5), modally. They end
    // when the handshake has called Form1::EstaConectado, or without a link.
    virtual ResultadoLobby AbreLobby() { return {}; }
    virtual void AbreConexaoDireta() {}

    // The turn cycle's calls while connected.
    virtual void HandshakeInicio() {}
    virtual void IniciaVigilancia() {}
    virtual void EnviaJogada(const Jogada& j) { (void)j; }
    virtual void AtualizaLabel26() {}

    // The liveness and correction timers of the board window.
    virtual void TimerManda_Timer() {}
    virtual void TimerVerifica_Timer() {}
    virtual void TimerCorrige_Timer() {}
};

} // namespace velmora
