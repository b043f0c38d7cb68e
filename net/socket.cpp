#include "net/socket.h"

#include "net/modsocketmaster.h"

namespace velmora {

Socket::Socket(modSocketMaster& mod, const PropriedadesSocket& propriedades)
    : cmSocket(CSocketMaster::Cria(mod)) {
    cmSocket->Protocol(propriedades.Protocol);
    cmSocket->LocalPort(propriedades.LocalPort);
    cmSocket->RemoteHost(propriedades.RemoteHost);
    cmSocket->RemotePort(propriedades.RemotePort);
    cmSocket->Tag(propriedades.Tag);

    // Each event goes on through a copy of this control's handler, so that a handler may
    // end the control that raised it
    auto& e = cmSocket->Eventos;
    e.CloseSck = [this] {
        if (auto f = Eventos.CloseSck) f();
    };
    e.Connect = [this] {
        if (auto f = Eventos.Connect) f();
    };
    e.ConnectionRequest = [this](std::int32_t requestID) {
        if (auto f = Eventos.ConnectionRequest) f(requestID);
    };
    e.DataArrival = [this](std::int32_t bytesTotal) {
        if (auto f = Eventos.DataArrival) f(bytesTotal);
    };
    e.Error = [this](std::int32_t Number, const std::string& Description, std::int32_t Scode,
                     const std::string& Source, const std::string& HelpFile,
                     std::int32_t HelpContext, bool& CancelDisplay) {
        if (auto f = Eventos.Error)
            f(Number, Description, Scode, Source, HelpFile, HelpContext, CancelDisplay);
    };
    e.SendComplete = [this] {
        if (auto f = Eventos.SendComplete) f();
    };
    e.SendProgress = [this](std::int32_t bytesSent, std::int32_t bytesRemaining) {
        if (auto f = Eventos.SendProgress) f(bytesSent, bytesRemaining);
    };
}

Socket::~Socket() {
    // cmSocket may outlive this control for the rest of a notification that it is handling:
    // it must raise nothing into the control any more
    cmSocket->Eventos = {};
}

PropriedadesSocket Socket::Salva() const {
    return {cmSocket->LocalPort(), cmSocket->Protocol(), cmSocket->RemoteHost(),
            cmSocket->RemotePort(), cmSocket->Tag()};
}

} // namespace velmora
