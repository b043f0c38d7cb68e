#pragma once
// The dialog of a game by typed address, without its widgets: one copy listens on the
// direct port, the other types an address and dials; when the handshake has made the
// session connected, the dialog closes by itself. The window draws these fields and calls
// the handlers; a headless driver does the same.
#include "peer/conexaopeer.h"

#include <functional>
#include <string>

namespace velmora {

class ConexaoDireta {
  public:
    ConexaoDireta(ConexaoPeer& peer, Form1& form);

    // The port of a direct link on both sides.
    int PortaDireta = 2001;
    int Porta = 0; // the lobby's port in force, read on load
    std::string Caption, Text1, Label2, Label3, Label4, Label7, Label8;
    bool Picture1Visivel = true, Command3Visivel = true;
    bool Command1Habilitado = true, Command2Habilitado = true;
    bool Ocupado = false;
    bool Timer1Ativo = false, Timer4Ativo = false;
    // Listening failed (the port is taken): the socket error's text.
    std::string ErroEscuta;
    // This computer's public address, or the empty text (the service's answer).
    std::function<std::string()> meuIp;

    bool Servidor() const;
    void Form_Load();
    // The first Activate: the side's branch (listening starts here).
    void Form_Activate();
    // Dial the address in Text1; nothing with an empty Text1.
    void Command1_Click();
    // Cancel: the socket in use closes.
    void Command2_Click();
    // One tick of Timer1; true when the dialog must close (the session is connected).
    bool Timer1_Timer();
    // The mailto address of the invitation, with the public address at the end.
    std::string Convite(const std::string& ip) const;
    // The text of the box shown before each invitation.
    static std::string AvisoConvite();

  private:
    ConexaoPeer& peer_;
    Form1& form_;
    bool ativado_ = false;
};

} // namespace velmora
