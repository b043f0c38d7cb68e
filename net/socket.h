#pragma once
// Socket: the control that windows place on themselves, a thin shell of one CSocketMaster
// (cmSocket). Every member forwards to cmSocket and every event of cmSocket is raised
// again under the same name with the same arguments; SendData keeps its result code to
// itself.
#include "net/csocketmaster.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace velmora {

class modSocketMaster;

// The saved properties of the control, with their defaults.
struct PropriedadesSocket {
    std::int32_t LocalPort = 0;
    std::int32_t Protocol = sckTCPProtocol;
    std::string RemoteHost;
    std::int32_t RemotePort = 0;
    std::string Tag;
};

class Socket {
  public:
    explicit Socket(modSocketMaster& mod, const PropriedadesSocket& propriedades = {});
    ~Socket();
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    EventosSocket Eventos;

    // The properties as they would be saved with the window.
    PropriedadesSocket Salva() const;

    std::int32_t RemotePort() const { return cmSocket->RemotePort(); }
    void RemotePort(std::int32_t v) { cmSocket->RemotePort(v); }
    const std::string& RemoteHost() const { return cmSocket->RemoteHost(); }
    void RemoteHost(std::string v) { cmSocket->RemoteHost(std::move(v)); }
    const std::string& RemoteHostIP() const { return cmSocket->RemoteHostIP(); }
    std::int32_t LocalPort() const { return cmSocket->LocalPort(); }
    void LocalPort(std::int32_t v) { cmSocket->LocalPort(v); }
    std::int32_t State() const { return cmSocket->State(); }
    std::string LocalHostName() const { return cmSocket->LocalHostName(); }
    std::string LocalIP() const { return cmSocket->LocalIP(); }
    std::int32_t BytesReceived() const { return cmSocket->BytesReceived(); }
    std::int32_t SocketHandle() const { return cmSocket->SocketHandle(); }
    const std::string& Tag() const { return cmSocket->Tag(); }
    void Tag(std::string v) { cmSocket->Tag(std::move(v)); }
    std::int32_t Protocol() const { return cmSocket->Protocol(); }
    void Protocol(std::int32_t v) { cmSocket->Protocol(v); }

    void Accept(std::int32_t requestID) { cmSocket->Accept(requestID); }
    void Bind(Variante localPort = {}, std::optional<std::string> localIP = std::nullopt) {
        cmSocket->Bind(std::move(localPort), std::move(localIP));
    }
    void CloseSck() { cmSocket->CloseSck(); }
    void Connect(std::optional<std::string> remoteHost = std::nullopt, Variante remotePort = {}) {
        cmSocket->Connect(std::move(remoteHost), std::move(remotePort));
    }
    void GetData(Dado& data, std::optional<TipoDado> type = std::nullopt, Variante maxLen = {}) {
        cmSocket->GetData(data, type, std::move(maxLen));
    }
    void GetData(std::string& data, Variante maxLen = {}) {
        cmSocket->GetData(data, std::move(maxLen));
    }
    void Listen() { cmSocket->Listen(); }
    void PeekData(Dado& data, std::optional<TipoDado> type = std::nullopt, Variante maxLen = {}) {
        cmSocket->PeekData(data, type, std::move(maxLen));
    }
    void PeekData(std::string& data, Variante maxLen = {}) {
        cmSocket->PeekData(data, std::move(maxLen));
    }
    void SendData(const Dado& data) { cmSocket->SendData(data); }
    void SendData(const std::string& bytes) { cmSocket->SendData(bytes); }
    void SendData(std::string_view bytes) { cmSocket->SendData(bytes); }
    void SendData(const char* bytes) { cmSocket->SendData(bytes); }

  private:
    std::shared_ptr<CSocketMaster> cmSocket;
};

} // namespace velmora
