#include "net/csocketmaster.h"

#include "net/modsocketmaster.h"

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <climits>
#include <netdb.h>
#include <netinet/in.h>
#include <new>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace velmora {

namespace {

std::string Fonte(const char* membro) {
    return std::string("CSocketMaster.") + membro;
}

bool Transitorio(int err) {
    return err == EAGAIN || err == EWOULDBLOCK || err == EINTR;
}

std::int32_t Limita(std::size_t n) {
    return static_cast<std::int32_t>(std::min<std::size_t>(n, INT32_MAX));
}

std::string Pontilhado(std::uint32_t enderecoRede) {
    in_addr a{};
    a.s_addr = enderecoRede;
    char texto[INET_ADDRSTRLEN] = {};
    ::inet_ntop(AF_INET, &a, texto, sizeof texto);
    return texto;
}

sockaddr_in Endereco(std::uint32_t enderecoRede, std::int32_t porta) {
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(static_cast<std::uint16_t>(porta));
    sa.sin_addr.s_addr = enderecoRede;
    return sa;
}

// The first IPv4 address of a name, by a blocking look-up; `erro` gets the Winsock number
// of a failure.
std::optional<std::uint32_t> PrimeiroEndereco(const std::string& nome, std::int32_t& erro) {
    addrinfo dicas{};
    dicas.ai_family = AF_INET;
    addrinfo* lista = nullptr;
    const int r = ::getaddrinfo(nome.c_str(), nullptr, &dicas, &lista);
    if (r != 0 || lista == nullptr) {
        erro = r != 0 ? NumeroWinsockBusca(r) : 11004;
        return std::nullopt;
    }
    const auto endereco = reinterpret_cast<const sockaddr_in*>(lista->ai_addr)->sin_addr.s_addr;
    ::freeaddrinfo(lista);
    erro = 0;
    return endereco;
}

// A dotted address at once, else the blocking look-up of the name.
std::optional<std::uint32_t> ResolveHostNow(const std::string& host, std::int32_t& erro) {
    const in_addr_t a = ::inet_addr(host.c_str());
    if (a != INADDR_NONE) return a;
    if (host.empty()) {
        erro = sckAddressFamily;
        return std::nullopt;
    }
    return PrimeiroEndereco(host, erro);
}

// Port and dotted address of one end of a socket.
bool LePonta(int socket, bool remota, std::int32_t& porta, std::string& ip) {
    sockaddr_in sa{};
    socklen_t tam = sizeof sa;
    auto* p = reinterpret_cast<sockaddr*>(&sa);
    if ((remota ? ::getpeername(socket, p, &tam) : ::getsockname(socket, p, &tam)) != 0)
        return false;
    porta = ntohs(sa.sin_port);
    ip = Pontilhado(sa.sin_addr.s_addr);
    return true;
}

// Runs its function when the scope ends, however it ends.
template <class F> class AoSair {
  public:
    explicit AoSair(F f) : f_(std::move(f)) {}
    ~AoSair() { f_(); }
    AoSair(const AoSair&) = delete;
    AoSair& operator=(const AoSair&) = delete;

  private:
    F f_;
};

} // namespace

std::shared_ptr<CSocketMaster> CSocketMaster::Cria(modSocketMaster& mod) {
    return std::make_shared<CSocketMaster>(Chave{}, mod);
}

CSocketMaster::CSocketMaster(Chave, modSocketMaster& mod) : mod_(mod) {
    mod_.InitiateProcesses();
}

CSocketMaster::~CSocketMaster() {
    CancelResolves();
    // A temporary holder's socket now belongs to the object that accepted it
    if (!classeAceite_) {
        try {
            DestroySocket();
        } catch (const ErroSocket&) {
        }
    }
    mod_.FinalizeProcesses();
}

// ---- Properties

void CSocketMaster::RemotePort(std::int32_t porta) {
    if (protocol_ == sckTCPProtocol && state_ != sckClosed)
        Levanta(sckInvalidOp, Fonte("RemotePort"));
    if (porta < 0 || porta > 65535) Levanta(sckBadArgument, Fonte("RemotePort"));
    remotePort_ = porta;
}

void CSocketMaster::RemoteHost(std::string host) {
    if (protocol_ == sckTCPProtocol && state_ != sckClosed)
        Levanta(sckInvalidOp, Fonte("RemoteHost"));
    remoteHost_ = std::move(host);
}

void CSocketMaster::LocalPort(std::int32_t porta) {
    if (state_ != sckClosed) Levanta(sckInvalidOp, Fonte("LocalPort"));
    if (porta < 0 || porta > 65535) Levanta(sckBadArgument, Fonte("LocalPort"));
    localPort_ = porta;
}

void CSocketMaster::Protocol(std::int32_t protocolo) {
    if (state_ != sckClosed) Levanta(sckInvalidOp, Fonte("Protocol"));
    if (protocolo != sckTCPProtocol && protocolo != sckUDPProtocol)
        Levanta(sckBadArgument, Fonte("Protocol"));
    protocol_ = protocolo;
}

std::string CSocketMaster::LocalHostName() const {
    char nome[256] = {};
    if (::gethostname(nome, sizeof nome - 1) != 0)
        Levanta(NumeroWinsock(errno), Fonte("GetLocalHostName"));
    return std::string(nome);
}

std::string CSocketMaster::LocalIP() const {
    if (state_ == sckConnected) return enderecoLocal_;
    std::int32_t erro = 0;
    const auto endereco = PrimeiroEndereco(LocalHostName(), erro);
    if (!endereco) Levanta(erro, Fonte("GetLocalIP"));
    return Pontilhado(*endereco);
}

std::int32_t CSocketMaster::BytesReceived() const {
    if (protocol_ == sckUDPProtocol) return PendingDatagramLength();
    return Limita(recepcao_.size());
}

// ---- Creating, binding, listening, connecting

bool CSocketMaster::SocketExists() {
    if (socketHandle_ != -1) return true;
    const bool udp = protocol_ == sckUDPProtocol;
    const int s = ::socket(AF_INET, (udp ? SOCK_DGRAM : SOCK_STREAM) | SOCK_NONBLOCK | SOCK_CLOEXEC,
                           udp ? IPPROTO_UDP : IPPROTO_TCP);
    if (s == -1) {
        const auto numero = NumeroWinsock(errno);
        state_ = sckError;
        DisparaErro(numero, Fonte("SocketExists"));
        return false;
    }
    socketHandle_ = s;
    ProcessOptions();
    return mod_.RegisterSocket(s, shared_from_this(), true);
}

void CSocketMaster::ProcessOptions() {
    if (protocol_ == sckUDPProtocol) {
        const int um = 1;
        ::setsockopt(socketHandle_, SOL_SOCKET, SO_BROADCAST, &um, sizeof um);
        // The largest datagram that IPv4 carries
        tamanhoEnvio_ = tamanhoRecepcao_ = 65507;
        return;
    }
    int valor = 0;
    socklen_t tam = sizeof valor;
    if (::getsockopt(socketHandle_, SOL_SOCKET, SO_RCVBUF, &valor, &tam) != 0)
        Levanta(NumeroWinsock(errno), Fonte("ProcessOptions"));
    tamanhoRecepcao_ = valor > 0 ? valor : 65536;
    tam = sizeof valor;
    if (::getsockopt(socketHandle_, SOL_SOCKET, SO_SNDBUF, &valor, &tam) != 0)
        Levanta(NumeroWinsock(errno), Fonte("ProcessOptions"));
    tamanhoEnvio_ = valor > 0 ? valor : 65536;
}

bool CSocketMaster::BindInternal(Variante porta, std::optional<std::string> ip) {
    if (state_ == sckOpen) return true;
    std::int32_t p = localPort_;
    if (!std::holds_alternative<std::monostate>(porta)) {
        const auto n = NumeroDe(porta);
        if (!n) Levanta(sckUnsupported, Fonte("BindInternal"));
        const auto i = InteiroDe(*n);
        if (!i || *i < 0 || *i > 65535) Levanta(sckBadArgument, Fonte("BindInternal"));
        p = static_cast<std::int32_t>(*i);
    }
    std::uint32_t endereco = htonl(INADDR_ANY);
    if (ip && !ip->empty()) {
        std::int32_t erro = 0;
        const auto r = ResolveHostNow(*ip, erro);
        if (!r) Levanta(sckBadArgument, "Invalid argument", Fonte("BindInternal"));
        endereco = *r;
    }
    if (!SocketExists()) return false;
    const sockaddr_in sa = Endereco(endereco, p);
    // A port in use: no error and no change of state; the owner reads State
    if (::bind(socketHandle_, reinterpret_cast<const sockaddr*>(&sa), sizeof sa) != 0) return false;
    if (p != 0) {
        localPort_ = p;
        return true;
    }
    std::string ipLocal;
    if (!LePonta(socketHandle_, false, portaObtida_, ipLocal))
        Levanta(NumeroWinsock(errno), Fonte("BindInternal"));
    return true;
}

void CSocketMaster::Bind(Variante localPort, std::optional<std::string> localIP) {
    const auto vivo = shared_from_this();
    if (state_ != sckClosed) Levanta(sckInvalidOp, Fonte("Bind"));
    if (BindInternal(std::move(localPort), std::move(localIP))) state_ = sckOpen;
}

void CSocketMaster::Listen() {
    const auto vivo = shared_from_this();
    if (state_ != sckClosed && state_ != sckOpen) Levanta(sckInvalidOp, Fonte("Listen"));
    if (!SocketExists()) return;
    if (state_ == sckClosed) {
        // A listener can come back on its port at once, as on Windows; a port that another
        // socket listens on stays refused
        const int um = 1;
        ::setsockopt(socketHandle_, SOL_SOCKET, SO_REUSEADDR, &um, sizeof um);
    }
    if (!BindInternal({}, std::nullopt)) return;
    if (::listen(socketHandle_, 5) != 0) Levanta(NumeroWinsock(errno), Fonte("Listen"));
    state_ = sckListening;
    mod_.ReativaLeitura(socketHandle_);
}

void CSocketMaster::Connect(std::optional<std::string> remoteHost, Variante remotePort) {
    const auto vivo = shared_from_this();
    if (state_ != sckClosed) Levanta(sckInvalidOp, Fonte("Connect"));
    if (remoteHost) remoteHost_ = std::move(*remoteHost);
    if (!std::holds_alternative<std::monostate>(remotePort)) {
        const auto n = NumeroDe(remotePort);
        if (!n) Levanta(sckUnsupported, Fonte("Connect"));
        const auto i = InteiroDe(*n);
        if (!i || *i < 1 || *i > 65535) Levanta(sckBadArgument, Fonte("Connect"));
        remotePort_ = static_cast<std::int32_t>(*i);
    }
    if (!SocketExists()) return;
    if (!BindInternal({}, std::nullopt)) return;
    if (protocol_ == sckUDPProtocol) {
        state_ = sckOpen;
        return;
    }
    std::uint32_t endereco = 0;
    if (ResolveIfHostname(remoteHost_, endereco) == 0) ConnectToIP(endereco, 0);
}

int CSocketMaster::ResolveIfHostname(const std::string& host, std::uint32_t& endereco) {
    const in_addr_t a = ::inet_addr(host.c_str());
    if (a != INADDR_NONE) {
        endereco = a;
        return 0;
    }
    state_ = sckResolvingHost;
    try {
        bufferBusca_ = std::make_shared<BufferBusca>();
    } catch (const std::bad_alloc&) {
        state_ = sckError;
        Levanta(sckOutOfMemory, Fonte("ResolveIfHostname"));
    }
    const std::int32_t handle = mod_.IniciaBusca(host, bufferBusca_);
    if (handle <= 0) {
        bufferBusca_.reset();
        state_ = sckError;
        DisparaErro(11003, Fonte("ResolveIfHostname"));
        return 2;
    }
    mod_.RegisterResolve(handle, shared_from_this());
    buscas_.insert(handle);
    return 1;
}

void CSocketMaster::PostResolution(std::int32_t handle, std::int32_t erro) {
    buscas_.erase(handle);
    mod_.UnregisterResolve(handle);
    // A late answer, after a close
    if (state_ != sckResolvingHost) return;
    if (erro != 0) {
        bufferBusca_.reset();
        ConnectToIP(1, erro);
        return;
    }
    state_ = sckHostResolved;
    const std::uint32_t endereco = bufferBusca_ ? bufferBusca_->endereco : 0;
    bufferBusca_.reset();
    ConnectToIP(endereco, 0);
}

void CSocketMaster::ConnectToIP(std::uint32_t endereco, std::int32_t erro) {
    if (erro != 0) {
        state_ = sckError;
        DisparaErro(erro, Fonte("ConnectToIP"));
        return;
    }
    state_ = sckConnecting;
    const sockaddr_in sa = Endereco(endereco, remotePort_);
    const int r = ::connect(socketHandle_, reinterpret_cast<const sockaddr*>(&sa), sizeof sa);
    const int err = errno;
    if (r == 0 || err == EINPROGRESS || Transitorio(err)) {
        mod_.AguardaConexao(socketHandle_);
        return;
    }
    const auto numero = NumeroWinsock(err);
    if (numero == sckAddressNotAvailable) Levanta(numero, Fonte("ConnectToIP"));
    state_ = sckError;
    DisparaErro(numero, Fonte("ConnectToIP"));
}

// ---- Notifications

void CSocketMaster::WndProc(std::uint32_t message, std::intptr_t wParam, std::intptr_t lParam) {
    const auto vivo = shared_from_this();
    const auto baixa = static_cast<std::int32_t>(lParam & 0xFFFF);
    const auto alta = static_cast<std::int32_t>((lParam >> 16) & 0xFFFF);
    try {
        if (message == MensagemBusca)
            PostResolution(static_cast<std::int32_t>(wParam), alta);
        else if (message == MensagemSocket)
            PostSocket(baixa, alta);
    } catch (const ErroSocket& e) {
        // Nobody called: an error on the way of a notification reaches the owner as an event
        DisparaErro(e.Numero, e.Descricao, e.Fonte);
    }
}

void CSocketMaster::PostSocket(std::int32_t evento, std::int32_t erro) {
    if (erro != 0) {
        state_ = sckError;
        DisparaErro(erro, Fonte("PostSocket"));
        return;
    }
    switch (evento) {
    case FD_READ:
        if (protocol_ == sckUDPProtocol) {
            if (state_ != sckOpen) return;
            const auto tamanho = PendingDatagramLength();
            if (tamanho > 0) Dispara(Eventos.DataArrival, tamanho);
            DrainDatagram();
        } else if (state_ == sckConnected) {
            // DataArrival tells all that is buffered, not only this read
            if (RecvDataToBuffer() >= 1) Dispara(Eventos.DataArrival, Limita(recepcao_.size()));
        }
        return;
    case FD_WRITE:
        if (state_ == sckConnected && PendenteEnvio() > 0) SendBufferedData();
        return;
    case FD_ACCEPT:
        if (state_ == sckListening) PostAccept();
        return;
    case FD_CONNECT:
        if (state_ != sckConnecting) return;
        ReadLocalInfo();
        ReadRemoteInfo();
        state_ = sckConnected;
        Dispara(Eventos.Connect);
        return;
    case FD_CLOSE:
        if (state_ != sckConnected) return;
        // The peer closed: what is left in the receive buffer can't be fetched any more
        state_ = sckClosing;
        Dispara(Eventos.CloseSck);
        return;
    default:
        return;
    }
}

void CSocketMaster::PostAccept() {
    sockaddr_in sa{};
    socklen_t tam = sizeof sa;
    const int novo = ::accept4(socketHandle_, reinterpret_cast<sockaddr*>(&sa), &tam,
                               SOCK_NONBLOCK | SOCK_CLOEXEC);
    const int err = errno;
    mod_.ReativaLeitura(socketHandle_);
    if (novo == -1) {
        // A caller that went away before its turn: there was nothing to accept after all
        if (Transitorio(err) || err == ECONNABORTED || err == EPROTO) return;
        state_ = sckError;
        DisparaErro(NumeroWinsock(err), Fonte("PostSocket"));
        return;
    }
    try {
        mod_.RegisterAcceptedSocket(novo);
    } catch (...) {
        mod_.UnregisterSocket(novo);
        ::close(novo);
        throw;
    }
    // The handler sees who calls in the remote fields
    const auto portaSalva = remotePort_;
    auto ipSalvo = remoteHostIP_;
    auto hostSalvo = remoteHost_;
    remoteHost_.clear();
    if (LePonta(novo, true, remotePort_, remoteHostIP_)) remoteHost_ = remoteHostIP_;

    const AoSair fim([&] {
        if (state_ == sckListening) {
            remotePort_ = portaSalva;
            remoteHostIP_ = std::move(ipSalvo);
            remoteHost_ = std::move(hostSalvo);
        }
        // A request that no object took is dropped
        if (mod_.IsAcceptedSocket(novo)) {
            mod_.UnregisterSocket(novo);
            ::close(novo);
            mod_.UnregisterAcceptedSocket(novo);
        }
    });
    Dispara(Eventos.ConnectionRequest, novo);
}

std::int32_t CSocketMaster::RecvDataToBuffer() {
    const auto antes = recepcao_.size();
    const auto tamanho = static_cast<std::size_t>(tamanhoRecepcao_);
    recepcao_.resize(antes + tamanho);
    const ssize_t n = ::recv(socketHandle_, recepcao_.data() + antes, tamanho, 0);
    const int err = errno;
    recepcao_.resize(antes + static_cast<std::size_t>(std::max<ssize_t>(n, 0)));
    mod_.ReativaLeitura(socketHandle_);
    if (n < 0) {
        if (Transitorio(err)) return 0;
        state_ = sckError;
        Levanta(NumeroWinsock(err), Fonte("RecvDataToBuffer"));
    }
    return static_cast<std::int32_t>(n);
}

// ---- Sending

std::int16_t CSocketMaster::SendData(const Dado& data) {
    const auto vivo = shared_from_this();
    if (protocol_ == sckUDPProtocol) {
        if (!SocketExists() || !BindInternal({}, std::nullopt)) return 2;
        state_ = sckOpen;
    } else if (state_ != sckConnected) {
        return 1;
    }
    auto bytes = BytesDe(data);
    if (!bytes) Levanta(sckUnsupported, Fonte("SendData"));
    if (bytes->empty()) return 0;
    const bool vazio = PendenteEnvio() == 0;
    if (vazio) {
        envio_.clear();
        inicioEnvio_ = 0;
    } else if (inicioEnvio_ > envio_.size() / 2) {
        envio_.erase(0, inicioEnvio_);
        inicioEnvio_ = 0;
    }
    envio_ += *bytes;
    // A queue that was not empty is being flushed by the write notifications already
    if (vazio) {
        if (protocol_ == sckUDPProtocol)
            SendBufferedDataUDP();
        else
            SendBufferedData();
    }
    return 0;
}

void CSocketMaster::SendBufferedData() {
    while (PendenteEnvio() > 0) {
        const auto bloco = std::min(PendenteEnvio(), static_cast<std::size_t>(tamanhoEnvio_));
        const ssize_t n = ::send(socketHandle_, envio_.data() + inicioEnvio_, bloco, MSG_NOSIGNAL);
        const int err = errno;
        if (n > 0) {
            totalEnviado_ += n;
            inicioEnvio_ += static_cast<std::size_t>(n);
            if (PendenteEnvio() > 0) continue;
            envio_.clear();
            inicioEnvio_ = 0;
            const auto total = totalEnviado_;
            totalEnviado_ = 0;
            Dispara(Eventos.SendProgress, Limita(static_cast<std::size_t>(total)), 0);
            Dispara(Eventos.SendComplete);
            // Bytes that a handler queued have a flush of their own
            return;
        }
        if (n < 0 && err == EINTR) continue;
        if (n == 0 || Transitorio(err)) {
            // The OS takes no more for now: the write notification takes it up again
            mod_.ReativaEscrita(socketHandle_);
            if (totalEnviado_ >= 1)
                Dispara(Eventos.SendProgress, Limita(static_cast<std::size_t>(totalEnviado_)),
                        Limita(PendenteEnvio()));
            return;
        }
        state_ = sckError;
        DisparaErro(NumeroWinsock(err), Fonte("SendBufferedData"));
        return;
    }
}

void CSocketMaster::SendBufferedDataUDP() {
    std::int32_t erro = 0;
    const auto destino = ResolveHostNow(remoteHost_, erro);
    if (!destino) {
        envio_.clear();
        inicioEnvio_ = 0;
        if (erro == sckAddressFamily) Levanta(sckAddressFamily, Fonte("SendBufferedDataUDP"));
        Levanta(sckBadArgument, "Invalid argument", Fonte("SendBufferedDataUDP"));
    }
    std::string dados;
    dados.swap(envio_);
    inicioEnvio_ = 0;
    const sockaddr_in sa = Endereco(*destino, remotePort_);
    if (::sendto(socketHandle_, dados.data(), dados.size(), MSG_NOSIGNAL,
                 reinterpret_cast<const sockaddr*>(&sa), sizeof sa) != -1)
        return;
    const int err = errno;
    if (Transitorio(err)) Levanta(sckWouldBlock, Fonte("SendBufferedDataUDP"));
    state_ = sckError;
    DisparaErro(NumeroWinsock(err), Fonte("SendBufferedDataUDP"));
}

// ---- Receiving

void CSocketMaster::GetData(Dado& data, std::optional<TipoDado> type, Variante maxLen) {
    const auto vivo = shared_from_this();
    if (protocol_ == sckUDPProtocol) {
        if (state_ != sckOpen) Levanta(sckBadState, Fonte("GetData"));
        if (PendingDatagramLength() <= 0) return;
    } else if (state_ != sckConnected && !classeAceite_) {
        // A closed or closing link: silently nothing
        return;
    }
    const auto n = NumeroDe(maxLen);
    if (n && *n < 0) Levanta(sckBadArgument, Fonte("GetData"));
    RecvData(data, false, type, n ? maxLen : Variante{}, Fonte("GetData"));
}

void CSocketMaster::GetData(std::string& data, Variante maxLen) {
    Dado d{data};
    GetData(d, std::nullopt, std::move(maxLen));
    if (auto* s = std::get_if<std::string>(&d)) data = std::move(*s);
}

void CSocketMaster::PeekData(Dado& data, std::optional<TipoDado> type, Variante maxLen) {
    const auto vivo = shared_from_this();
    if (protocol_ == sckUDPProtocol) {
        if (state_ != sckOpen) Levanta(sckBadState, Fonte("PeekData"));
        if (PendingDatagramLength() <= 0) return;
    } else if (state_ != sckConnected) {
        Levanta(sckBadState, Fonte("PeekData"));
    }
    const auto n = NumeroDe(maxLen);
    if (n && *n < 0) Levanta(sckBadArgument, Fonte("PeekData"));
    RecvData(data, true, type, n ? maxLen : Variante{}, Fonte("PeekData"));
}

void CSocketMaster::PeekData(std::string& data, Variante maxLen) {
    Dado d{data};
    PeekData(d, std::nullopt, std::move(maxLen));
    if (auto* s = std::get_if<std::string>(&d)) data = std::move(*s);
}

std::int32_t CSocketMaster::RecvData(Dado& data, bool peek, std::optional<TipoDado> type,
                                     const Variante& maxLen, const std::string& fonte) {
    const TipoDado tipo = TipoDe(data).value_or(type.value_or(TipoDado::ByteArray));
    const auto fixo = TamanhoFixo(tipo);
    if (!fixo) Levanta(sckUnsupported, fonte);
    const bool udp = protocol_ == sckUDPProtocol;
    const std::size_t disponivel =
        udp ? static_cast<std::size_t>(std::max(PendingDatagramLength(), 0)) : recepcao_.size();

    std::size_t tamanho = *fixo;
    if (*fixo == 0) {
        tamanho = disponivel;
        if (const auto n = NumeroDe(maxLen)) {
            const auto limite = InteiroDe(*n).value_or(0);
            if (limite <= 0 || disponivel == 0) {
                data = DadoDe(tipo, {});
                if (udp) {
                    DrainDatagram();
                    Levanta(sckMsgTooBig, Fonte("RecvData"));
                }
                return 0;
            }
            tamanho = std::min(disponivel, static_cast<std::size_t>(limite));
        }
        if (tamanho == 0) {
            data = DadoDe(tipo, {});
            return 0;
        }
    } else if (disponivel < *fixo) {
        return 0; // too few bytes for the type: nothing is taken
    }
    data = DadoDe(tipo, ReadBytes(tamanho, peek, fonte));
    return Limita(tamanho);
}

std::string CSocketMaster::ReadBytes(std::size_t tamanho, bool peek, const std::string&) {
    if (protocol_ != sckUDPProtocol) {
        std::string bytes = recepcao_.substr(0, tamanho);
        if (!peek) recepcao_.erase(0, tamanho);
        return bytes;
    }
    std::string bytes(tamanho, '\0');
    sockaddr_in de{};
    socklen_t tam = sizeof de;
    const ssize_t n = ::recvfrom(socketHandle_, bytes.data(), tamanho, peek ? MSG_PEEK : 0,
                                 reinterpret_cast<sockaddr*>(&de), &tam);
    const int err = errno;
    mod_.ReativaLeitura(socketHandle_);
    if (n < 0) Levanta(NumeroWinsock(err), Fonte("RecvData"));
    bytes.resize(static_cast<std::size_t>(n));
    remotePort_ = ntohs(de.sin_port);
    remoteHostIP_ = Pontilhado(de.sin_addr.s_addr);
    remoteHost_ = remoteHostIP_;
    return bytes;
}

std::int32_t CSocketMaster::PendingDatagramLength() const {
    if (socketHandle_ == -1) return 0;
    int n = 0;
    if (::ioctl(socketHandle_, FIONREAD, &n) != 0) return 0;
    return n;
}

void CSocketMaster::DrainDatagram() {
    char c = 0;
    (void)::recv(socketHandle_, &c, 1, MSG_DONTWAIT);
    mod_.ReativaLeitura(socketHandle_);
}

// ---- Accepting

void CSocketMaster::Accept(std::int32_t requestID) {
    const auto vivo = shared_from_this();
    if (state_ != sckClosed) Levanta(sckInvalidOp, Fonte("Accept"));
    protocol_ = sckTCPProtocol;
    socketHandle_ = requestID;
    try {
        ProcessOptions();
    } catch (const ErroSocket&) {
        // Not a socket this object may own
        socketHandle_ = -1;
        throw;
    }

    if (mod_.IsAcceptedSocket(requestID)) {
        // The owner takes the socket over from its temporary holder
        auto holder = mod_.TakeAcceptedSocket(requestID);
        mod_.UnregisterAcceptedSocket(requestID);
        ReadLocalInfo();
        ReadRemoteInfo();
        state_ = sckConnected;
        recepcao_ += holder->recepcao_;
        holder->recepcao_.clear();
        mod_.RebindSocketOwner(requestID, vivo);
        const bool fechou = holder->state_ == sckClosing;
        holder.reset();
        if (!recepcao_.empty()) Dispara(Eventos.DataArrival, Limita(recepcao_.size()));
        if (fechou && socketHandle_ == requestID && state_ == sckConnected) {
            state_ = sckClosing;
            Dispara(Eventos.CloseSck);
        }
        return;
    }
    if (!mod_.IsSocketRegistered(requestID)) {
        // This object is the temporary holder being made
        classeAceite_ = true;
        state_ = sckConnected;
        ReadLocalInfo();
        mod_.RegisterSocket(requestID, vivo, false);
        return;
    }
    socketHandle_ = -1;
    tamanhoEnvio_ = tamanhoRecepcao_ = 0;
    Levanta(sckBadState, Fonte("Accept"));
}

// ---- Closing

void CSocketMaster::CloseSck() {
    if (socketHandle_ == -1) return;
    state_ = sckClosing;
    CancelResolves();
    DestroySocket();
    portaObtida_ = 0;
    remoteHostIP_.clear();
    recepcao_.clear();
    envio_.clear();
    inicioEnvio_ = 0;
    totalEnviado_ = 0;
    tamanhoEnvio_ = tamanhoRecepcao_ = 0;
    state_ = sckClosed;
}

void CSocketMaster::DestroySocket() {
    if (socketHandle_ == -1) return;
    const int s = socketHandle_;
    // Unwatched first: no notifier may outlive its descriptor
    mod_.UnregisterSocket(s);
    socketHandle_ = -1;
    if (::close(s) != 0 && errno != EINTR) {
        state_ = sckError;
        Levanta(NumeroWinsock(errno), Fonte("DestroySocket"));
    }
}

void CSocketMaster::CancelResolves() {
    // The look-up itself runs to its end (Qt can't abort one without losing its handler);
    // with its row freed, the answer finds no owner
    for (const auto handle : buscas_) mod_.UnregisterResolve(handle);
    buscas_.clear();
    bufferBusca_.reset();
}

void CSocketMaster::ReadLocalInfo() {
    std::int32_t porta = 0;
    std::string ip;
    if (!LePonta(socketHandle_, false, porta, ip)) return;
    portaObtida_ = porta;
    enderecoLocal_ = std::move(ip);
}

void CSocketMaster::ReadRemoteInfo() {
    std::int32_t porta = 0;
    std::string ip;
    if (!LePonta(socketHandle_, true, porta, ip)) return;
    remotePort_ = porta;
    remoteHostIP_ = ip;
    remoteHost_ = std::move(ip);
}

// ---- Errors

void CSocketMaster::DisparaErro(std::int32_t numero, const std::string& descricao,
                                const std::string& fonte) {
    bool cancelDisplay = true;
    Dispara(Eventos.Error, numero, descricao, 0, fonte, std::string(), 0, cancelDisplay);
    if (!cancelDisplay && mod_.CaixaMensagem) mod_.CaixaMensagem(fonte, descricao);
}

void CSocketMaster::DisparaErro(std::int32_t numero, const std::string& fonte) {
    DisparaErro(numero, modSocketMaster::ErrorDescription(numero), fonte);
}

} // namespace velmora
