#pragma once
// The peer link of the desktop program: its sockets, the direct connection dialog, the
// timed draw question and the window brought back for a chat line; on top of it the
// service client and the lobby of the "On-line" and "Amigos" tabs.
#include "net/getconteudo.h"
#include "net/modsocketmaster.h"
#include "peer/conexaopeer.h"
#include "service/buscas.h"
#include "service/ligacaopeer.h"
#include "service/online.h"
#include "service/redeservico.h"
#include "service/testaporta.h"

#include <functional>
#include <memory>

class QWidget;

namespace velmora::ui {

struct AmbienteUi;

class RedeQt : public TelaPeer {
  public:
    // `janela` gives the board window, the parent of the dialogs.
    RedeQt(Form1& form, const AmbienteUi& amb, std::function<QWidget*()> janela);
    ~RedeQt() override;
    ConexaoPeer& Peer() { return *peer_; }
    ServicoOnline& Servico() { return *servico_; }
    TestePorta& Porta() { return *porta_; }

    bool PerguntaEmpate(const std::string& texto) override;
    void RestauraJanela() override;

  private:
    std::unique_ptr<modSocketMaster> mod_;
    std::unique_ptr<ConexaoPeer> peer_;
    std::function<QWidget*()> janela_;
    std::unique_ptr<ClienteGetConteudo> wsg_;
    std::unique_ptr<BuscasReais> buscas_;
    std::unique_ptr<ServicoOnline> servico_;
    std::unique_ptr<TestePorta> porta_;
    std::unique_ptr<LigacaoPeer> ligacao_;
    std::unique_ptr<RedeComServico> comServico_;
};

} // namespace velmora::ui
