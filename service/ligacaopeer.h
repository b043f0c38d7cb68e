#pragma once
// The lobby's sockets over the peer link of the board window: WS(1) listens, WS(2) dials
// the relay or a peer, and the peer link's own events (a connect, an incoming peer, the
// relay closing, a blocked nick, the end of the handshake) are passed on to the lobby
// while it is open. The two keep their own copies of the relay flags; each call from the
// lobby hands its flags to the peer link first.
#include "peer/conexaopeer.h"
#include "service/lobby.h"

namespace velmora {

// The peer link's two calls on the service's client: the other copy's "GETPT:" (the panel
// shows the totals) and the end of the handshake (Jogando_Online).
void LigaServico(ConexaoPeer& peer, ServicoOnline& servico);

class LigacaoPeer : public LigacaoLobby {
  public:
    LigacaoPeer(ConexaoPeer& peer, Form1& form) : peer_(peer), form_(form) {}
    ~LigacaoPeer() override;
    LigacaoPeer(const LigacaoPeer&) = delete;
    LigacaoPeer& operator=(const LigacaoPeer&) = delete;

    void Lobby(Form8* lobby) override;
    void CarregaWS(int k) override;
    void FechaSockets(int k) override;
    void FechaWS(int k) override;
    void Conecta(const std::string& host, int porta) override;
    bool Escuta(int porta) override;
    int PortaEscuta() override;
    std::string EnderecoLocal() override;
    bool TestaInternet(int ms) override;

  private:
    // The lobby's flags, as the peer link reads them in its handlers.
    void PassaFlags();
    // After each event of the sockets: the blocked nick and the end of the handshake.
    void DepoisDoEvento(bool estavaConectado);
    void Liga();

    ConexaoPeer& peer_;
    Form1& form_;
    Form8* lobby_ = nullptr;
    EventosMatrizSocket originais_;
};

} // namespace velmora
