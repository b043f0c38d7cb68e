#pragma once
// CSocketMaster: one asynchronous TCP or UDP endpoint over a non-blocking IPv4 socket. It
// owns at most one OS socket, keeps its own send and receive buffers as byte strings and
// turns the notifications that modSocketMaster delivers into events. All calls and all
// events happen on the thread that runs the event loop; a handler runs inside the
// notification or the operation that raised it, and may call any operation, close the
// object or drop the last reference to it.
//
// Operations called by the owner throw ErroSocket; failures found while handling a
// notification set State to sckError and raise the Error event instead.
//
// Objects are made with Cria and shared: the registry holds them weakly, and keeps one alive
// for as long as it is handling one of its notifications.
#include "net/dado.h"
#include "net/errosocket.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace velmora {

class modSocketMaster;
struct BufferBusca;

// Values of State.
enum EstadoSck : std::int32_t {
    sckClosed = 0,
    sckOpen = 1,
    sckListening = 2,
    sckResolvingHost = 4,
    sckHostResolved = 5,
    sckConnecting = 6,
    sckConnected = 7,
    sckClosing = 8,
    sckError = 9,
};

// Values of Protocol.
enum ProtocoloSck : std::int32_t { sckTCPProtocol = 0, sckUDPProtocol = 1 };

// The events, in the order of their declaration. Error's CancelDisplay stands true when the
// event is raised; a handler that sets it false asks for the text to be shown (through
// modSocketMaster::CaixaMensagem). Scode and HelpContext are always 0, HelpFile empty.
struct EventosSocket {
    std::function<void()> CloseSck;
    std::function<void()> Connect;
    std::function<void(std::int32_t requestID)> ConnectionRequest;
    std::function<void(std::int32_t bytesTotal)> DataArrival;
    std::function<void(std::int32_t Number, const std::string& Description, std::int32_t Scode,
                       const std::string& Source, const std::string& HelpFile,
                       std::int32_t HelpContext, bool& CancelDisplay)>
        Error;
    std::function<void()> SendComplete;
    std::function<void(std::int32_t bytesSent, std::int32_t bytesRemaining)> SendProgress;
};

class CSocketMaster : public std::enable_shared_from_this<CSocketMaster> {
    struct Chave {
        explicit Chave() = default;
    };

  public:
    // `mod` must outlive the object.
    static std::shared_ptr<CSocketMaster> Cria(modSocketMaster& mod);
    CSocketMaster(Chave, modSocketMaster& mod);
    ~CSocketMaster();
    CSocketMaster(const CSocketMaster&) = delete;
    CSocketMaster& operator=(const CSocketMaster&) = delete;

    EventosSocket Eventos;

    // Properties
    std::int32_t RemotePort() const { return remotePort_; }
    void RemotePort(std::int32_t porta);
    const std::string& RemoteHost() const { return remoteHost_; }
    void RemoteHost(std::string host);
    const std::string& RemoteHostIP() const { return remoteHostIP_; }
    // The port the OS gave, once known; else the port asked for.
    std::int32_t LocalPort() const { return portaObtida_ != 0 ? portaObtida_ : localPort_; }
    void LocalPort(std::int32_t porta);
    std::int32_t State() const { return state_; }
    std::string LocalHostName() const;
    std::string LocalIP() const;
    std::int32_t BytesReceived() const;
    std::int32_t SocketHandle() const { return socketHandle_; }
    const std::string& Tag() const { return tag_; }
    void Tag(std::string tag) { tag_ = std::move(tag); }
    std::int32_t Protocol() const { return protocol_; }
    void Protocol(std::int32_t protocolo);

    // Operations
    void CloseSck();
    void Connect(std::optional<std::string> remoteHost = std::nullopt, Variante remotePort = {});
    void Bind(Variante localPort = {}, std::optional<std::string> localIP = std::nullopt);
    // 0 sent or queued, 1 a TCP object that isn't connected, 2 a UDP object without a
    // socket or a binding. Neither 1 nor 2 raises anything.
    std::int16_t SendData(const Dado& data);
    std::int16_t SendData(const std::string& bytes) { return SendData(Dado{bytes}); }
    std::int16_t SendData(std::string_view bytes) { return SendData(Dado{std::string(bytes)}); }
    std::int16_t SendData(const char* bytes) { return SendData(std::string_view(bytes)); }
    // The type of `data` rules; an Empty `data` takes `type`, else a byte string.
    void GetData(Dado& data, std::optional<TipoDado> type = std::nullopt, Variante maxLen = {});
    void GetData(std::string& data, Variante maxLen = {});
    void PeekData(Dado& data, std::optional<TipoDado> type = std::nullopt, Variante maxLen = {});
    void PeekData(std::string& data, Variante maxLen = {});
    void Listen();
    void Accept(std::int32_t requestID);

    // Called by modSocketMaster only: 0x8000 a finished look-up, 0x8001 a socket event.
    void WndProc(std::uint32_t message, std::intptr_t wParam, std::intptr_t lParam);

    // True while this object is the temporary holder of an accepted socket.
    bool TemporarioDeAceite() const { return classeAceite_; }

  private:
    bool SocketExists();
    void ProcessOptions();
    bool BindInternal(Variante porta, std::optional<std::string> ip);
    // 1 when a look-up was started; else the address (network order) through `endereco`.
    int ResolveIfHostname(const std::string& host, std::uint32_t& endereco);
    void PostResolution(std::int32_t handle, std::int32_t erro);
    void ConnectToIP(std::uint32_t endereco, std::int32_t erro);
    void PostSocket(std::int32_t evento, std::int32_t erro);
    void PostAccept();
    std::int32_t RecvDataToBuffer();
    void SendBufferedData();
    void SendBufferedDataUDP();
    std::int32_t RecvData(Dado& data, bool peek, std::optional<TipoDado> type,
                          const Variante& maxLen, const std::string& fonte);
    std::string ReadBytes(std::size_t tamanho, bool peek, const std::string& fonte);
    std::int32_t PendingDatagramLength() const;
    void DrainDatagram();
    void ReadLocalInfo();
    void ReadRemoteInfo();
    void DestroySocket();
    void CancelResolves();

    // Raises an event through a copy of its handler, so that a handler may replace the
    // handlers or end the owner without pulling the running code from under itself.
    template <class F, class... A> static void Dispara(const F& evento, A&&... args) {
        if (auto f = evento) f(std::forward<A>(args)...);
    }
    void DisparaErro(std::int32_t numero, const std::string& descricao, const std::string& fonte);
    void DisparaErro(std::int32_t numero, const std::string& fonte);
    std::size_t PendenteEnvio() const { return envio_.size() - inicioEnvio_; }

    modSocketMaster& mod_;
    std::int32_t socketHandle_ = -1;
    std::int32_t state_ = sckClosed;
    std::string tag_;
    std::string remoteHost_;
    std::int32_t remotePort_ = 0;
    std::string remoteHostIP_;
    std::int32_t localPort_ = 0;
    std::int32_t portaObtida_ = 0;
    std::string enderecoLocal_;
    std::int32_t protocol_ = sckTCPProtocol;
    std::shared_ptr<BufferBusca> bufferBusca_;
    std::int32_t tamanhoEnvio_ = 0;
    std::int32_t tamanhoRecepcao_ = 0;
    std::string envio_;           // bytes queued; those before inicioEnvio_ went out
    std::size_t inicioEnvio_ = 0; // already sent head of envio_
    std::string recepcao_;
    bool classeAceite_ = false;
    std::set<std::int32_t> buscas_; // running look-ups
    std::int64_t totalEnviado_ = 0; // bytes sent since the queue was last empty
};

} // namespace velmora
