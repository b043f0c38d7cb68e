#pragma once
// The peer link of the desktop program: its sockets, the direct connection dialog, the
// timed draw question and the window brought back for a chat line.
#include "net/modsocketmaster.h"
#include "peer/conexaopeer.h"

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

    bool PerguntaEmpate(const std::string& texto) override;
    void RestauraJanela() override;

  private:
    std::unique_ptr<modSocketMaster> mod_;
    std::unique_ptr<ConexaoPeer> peer_;
    std::function<QWidget*()> janela_;
};

} // namespace velmora::ui
