#include "net/modsocketmaster.h"

#include "net/csocketmaster.h"
#include "net/errosocket.h"

#include <QHostAddress>
#include <QHostInfo>
#include <QString>
#include <QtGlobal>

#include <algorithm>
#include <arpa/inet.h>
#include <cerrno>
#include <exception>
#include <netinet/in.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace velmora {

namespace {

// Counts the notifier handlers on the stack, so that a notifier is never deleted while
// its own handler runs.
class Profundidade {
  public:
    explicit Profundidade(int& n) : n_(n) { ++n_; }
    ~Profundidade() { --n_; }
    Profundidade(const Profundidade&) = delete;
    Profundidade& operator=(const Profundidade&) = delete;

  private:
    int& n_;
};

} // namespace

modSocketMaster::modSocketMaster() : vida_(std::make_shared<modSocketMaster*>(this)) {}

modSocketMaster::~modSocketMaster() {
    // Holders that no object claimed give up their sockets while the tables still exist
    auto aceitos = std::move(colecaoAceitos_);
    colecaoAceitos_.clear();
    for (const auto& par : aceitos) {
        UnregisterSocket(par.first);
        ::close(par.first);
    }
    aceitos.clear();
    notificacoes_.clear();
}

std::int32_t modSocketMaster::InitiateProcesses() {
    ++objetos_;
    iniciado_ = true;
    return 0;
}

std::int32_t modSocketMaster::FinalizeProcesses() {
    const bool ultimo = objetos_ == 1;
    objetos_ = std::max(objetos_ - 1, 0);
    if (iniciado_ && ultimo) {
        tabelaBuscas_.clear();
        tabelaSockets_.clear();
        iniciado_ = false;
    }
    return 0;
}

void modSocketMaster::Guarda(std::vector<Linha>& tabela, std::int32_t chave,
                             const std::shared_ptr<CSocketMaster>& dono) {
    for (const auto& l : tabela)
        if (l.chave == chave) return;
    for (auto& l : tabela) {
        if (l.chave == -1) {
            l.chave = chave;
            l.dono = dono;
            return;
        }
    }
    tabela.push_back({chave, dono});
}

void modSocketMaster::Libera(std::vector<Linha>& tabela, std::int32_t chave) {
    for (auto& l : tabela) {
        if (l.chave == chave) {
            l.chave = -1;
            l.dono.reset();
        }
    }
}

std::shared_ptr<CSocketMaster> modSocketMaster::Procura(const std::vector<Linha>& tabela,
                                                        std::int32_t chave) {
    if (chave == -1) return nullptr;
    for (const auto& l : tabela)
        if (l.chave == chave) return l.dono.lock();
    return nullptr;
}

bool modSocketMaster::RegisterSocket(std::int32_t socket,
                                     const std::shared_ptr<CSocketMaster>& object, bool notify) {
    janela_ = true;
    Guarda(tabelaSockets_, socket, object);
    // An accepted socket (notify false) keeps the notifications that its listener asked
    // for, which are the same five events; it is a connected one, even if its peer has
    // reset it already
    PreparaNotificacoes(socket, notify ? Sonda(socket) : Modo::Conectado);
    colecaoSockets_.try_emplace(socket, object);
    return true;
}

void modSocketMaster::UnregisterSocket(std::int32_t socket) {
    Libera(tabelaSockets_, socket);
    colecaoSockets_.erase(socket);
    DescartaNotificacoes(socket);
    if (colecaoSockets_.empty()) janela_ = false;
}

bool modSocketMaster::IsSocketRegistered(std::int32_t socket) const {
    return colecaoSockets_.count(socket) != 0;
}

void modSocketMaster::RegisterResolve(std::int32_t handle,
                                      const std::shared_ptr<CSocketMaster>& object) {
    Guarda(tabelaBuscas_, handle, object);
}

void modSocketMaster::UnregisterResolve(std::int32_t handle) {
    Libera(tabelaBuscas_, handle);
}

void modSocketMaster::RegisterAcceptedSocket(std::int32_t socket) {
    auto holder = CSocketMaster::Cria(*this);
    holder->Accept(socket);
    colecaoAceitos_[socket] = std::move(holder);
}

bool modSocketMaster::IsAcceptedSocket(std::int32_t socket) const {
    return colecaoAceitos_.count(socket) != 0;
}

std::shared_ptr<CSocketMaster> modSocketMaster::TakeAcceptedSocket(std::int32_t socket) const {
    const auto it = colecaoAceitos_.find(socket);
    return it == colecaoAceitos_.end() ? nullptr : it->second;
}

void modSocketMaster::UnregisterAcceptedSocket(std::int32_t socket) {
    colecaoAceitos_.erase(socket);
}

void modSocketMaster::RebindSocketOwner(std::int32_t socket,
                                        const std::shared_ptr<CSocketMaster>& object) {
    for (auto& l : tabelaSockets_)
        if (l.chave == socket) l.dono = object;
}

void modSocketMaster::WindowProc(std::uint32_t message, std::intptr_t wParam,
                                 std::intptr_t lParam) {
    if (message != MensagemBusca && message != MensagemSocket) return;
    if (wParam < INT32_MIN || wParam > INT32_MAX) return;
    const auto chave = static_cast<std::int32_t>(wParam);
    // The reference keeps the object alive while it handles the message, even if a
    // handler drops its owner's last reference.
    const auto objeto = Procura(message == MensagemBusca ? tabelaBuscas_ : tabelaSockets_, chave);
    if (objeto) objeto->WndProc(message, wParam, lParam);
}

std::int32_t modSocketMaster::IniciaBusca(const std::string& nome,
                                          std::weak_ptr<BufferBusca> buffer) {
    // No context object: Qt loses the handler of a look-up whose context has gone, so the
    // answer always comes, and finds out here whether this registry still exists
    return QHostInfo::lookupHost(
        QString::fromStdString(nome), [vida = std::weak_ptr<modSocketMaster*>(vida_),
                                       buffer = std::move(buffer)](const QHostInfo& info) {
            const auto registro = vida.lock();
            if (!registro) return;
            std::int32_t erro = 0;
            if (info.error() == QHostInfo::HostNotFound) {
                erro = 11001;
            } else if (info.error() != QHostInfo::NoError) {
                erro = 11003;
            } else {
                erro = 11004; // a name without an IPv4 address
                for (const auto& a : info.addresses()) {
                    if (a.protocol() != QAbstractSocket::IPv4Protocol) continue;
                    if (auto b = buffer.lock()) b->endereco = htonl(a.toIPv4Address());
                    erro = 0;
                    break;
                }
            }
            try {
                (*registro)->WindowProc(MensagemBusca, info.lookupId(), FazLParam(0, erro));
            } catch (const std::exception& e) {
                qWarning("modSocketMaster: %s", e.what());
            }
        });
}

modSocketMaster::Modo modSocketMaster::Sonda(std::int32_t socket) {
    int valor = 0;
    socklen_t tam = sizeof valor;
    if (::getsockopt(socket, SOL_SOCKET, SO_TYPE, &valor, &tam) != 0) return Modo::Ocioso;
    if (valor == SOCK_DGRAM) return Modo::Datagrama;
    valor = 0;
    tam = sizeof valor;
    if (::getsockopt(socket, SOL_SOCKET, SO_ACCEPTCONN, &valor, &tam) == 0 && valor != 0)
        return Modo::Escuta;
    sockaddr_in par{};
    socklen_t tamPar = sizeof par;
    if (::getpeername(socket, reinterpret_cast<sockaddr*>(&par), &tamPar) == 0)
        return Modo::Conectado;
    return Modo::Ocioso;
}

void modSocketMaster::PreparaNotificacoes(std::int32_t socket, Modo modo) {
    if (notificacoes_.count(socket) != 0) return;
    Notificacoes n;
    n.leitura = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read, &contexto_);
    n.leitura->setEnabled(false);
    QObject::connect(n.leitura.get(), &QSocketNotifier::activated, &contexto_,
                     [this, socket] { AoLer(socket); });
    n.escrita = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Write, &contexto_);
    n.escrita->setEnabled(false);
    QObject::connect(n.escrita.get(), &QSocketNotifier::activated, &contexto_,
                     [this, socket] { AoEscrever(socket); });
    n.modo = modo;
    // An idle stream socket reports a hang-up to poll: it is watched only from its
    // listen or connect on
    if (n.modo != Modo::Ocioso) n.leitura->setEnabled(true);
    notificacoes_.emplace(socket, std::move(n));
}

void modSocketMaster::DescartaNotificacoes(std::int32_t socket) {
    const auto it = notificacoes_.find(socket);
    if (it == notificacoes_.end()) return;
    Notificacoes n = std::move(it->second);
    notificacoes_.erase(it);
    n.leitura->setEnabled(false);
    n.escrita->setEnabled(false);
    if (profundidade_ > 0) {
        // A notifier may be the one whose handler is running: it ends once control is
        // back in the event loop (and with its parent at the latest)
        n.leitura.release()->deleteLater();
        n.escrita.release()->deleteLater();
    }
}

void modSocketMaster::AguardaConexao(std::int32_t socket) {
    const auto it = notificacoes_.find(socket);
    if (it == notificacoes_.end()) return;
    it->second.modo = Modo::Conectando;
    it->second.leitura->setEnabled(false);
    it->second.escrita->setEnabled(true);
}

void modSocketMaster::ReativaLeitura(std::int32_t socket) {
    const auto it = notificacoes_.find(socket);
    if (it == notificacoes_.end()) return;
    auto& n = it->second;
    if (n.modo == Modo::Ocioso) n.modo = Sonda(socket);
    if (n.modo == Modo::Escuta || n.modo == Modo::Conectado || n.modo == Modo::Datagrama)
        n.leitura->setEnabled(true);
}

void modSocketMaster::ReativaEscrita(std::int32_t socket) {
    const auto it = notificacoes_.find(socket);
    if (it == notificacoes_.end()) return;
    if (it->second.modo == Modo::Conectado) it->second.escrita->setEnabled(true);
}

void modSocketMaster::AoLer(std::int32_t socket) {
    Profundidade p(profundidade_);
    const auto it = notificacoes_.find(socket);
    if (it == notificacoes_.end()) return;
    auto& n = it->second;
    n.leitura->setEnabled(false);
    switch (n.modo) {
    case Modo::Escuta:
        Entrega(socket, FD_ACCEPT, 0);
        return;
    case Modo::Datagrama:
        Entrega(socket, FD_READ, 0);
        return;
    case Modo::Conectado:
        break;
    default:
        return;
    }
    // A stream: bytes waiting are a read; none, and the peer has closed or reset
    int esperando = 0;
    if (::ioctl(socket, FIONREAD, &esperando) == 0 && esperando > 0) {
        Entrega(socket, FD_READ, 0);
        return;
    }
    char c = 0;
    const ssize_t r = ::recv(socket, &c, 1, MSG_PEEK | MSG_DONTWAIT);
    const int err = errno;
    if (r > 0) {
        Entrega(socket, FD_READ, 0);
    } else if (r == 0) {
        n.modo = Modo::Fechado;
        Entrega(socket, FD_CLOSE, 0);
    } else if (err == EAGAIN || err == EWOULDBLOCK || err == EINTR) {
        n.leitura->setEnabled(true);
    } else {
        n.modo = Modo::Fechado;
        Entrega(socket, FD_CLOSE, NumeroWinsock(err));
    }
}

void modSocketMaster::AoEscrever(std::int32_t socket) {
    Profundidade p(profundidade_);
    const auto it = notificacoes_.find(socket);
    if (it == notificacoes_.end()) return;
    auto& n = it->second;
    n.escrita->setEnabled(false);
    if (n.modo != Modo::Conectando) {
        Entrega(socket, FD_WRITE, 0);
        return;
    }
    int erro = 0;
    socklen_t tam = sizeof erro;
    if (::getsockopt(socket, SOL_SOCKET, SO_ERROR, &erro, &tam) != 0) erro = errno;
    if (erro == 0) {
        n.modo = Modo::Conectado;
        n.leitura->setEnabled(true);
    } else {
        n.modo = Modo::Fechado;
    }
    Entrega(socket, FD_CONNECT, NumeroWinsock(erro));
}

void modSocketMaster::Entrega(std::int32_t socket, std::int32_t evento, std::int32_t erro) {
    // Nothing may leave a notifier's handler into the event loop
    try {
        WindowProc(MensagemSocket, socket, FazLParam(evento, erro));
    } catch (const std::exception& e) {
        qWarning("modSocketMaster: %s", e.what());
    }
}

std::string modSocketMaster::ErrorDescription(std::int32_t number) {
    static constexpr std::pair<std::int32_t, const char*> textos[] = {
        {10004, "Interrupted function call."},
        {10013, "Permission denied."},
        {10014, "Bad address."},
        {10022, "Invalid argument."},
        {10024, "Too many open files."},
        {10035, "Resource temporarily unavailable."},
        {10036, "Operation now in progress."},
        {10037, "Operation already in progress."},
        {10038, "Socket operation on nonsocket."},
        {10039, "Destination address required."},
        {10040, "Message too long."},
        {10041, "Protocol wrong type for socket."},
        {10042, "Bad protocol option."},
        {10043, "Protocol not supported."},
        {10044, "Socket type not supported."},
        {10045, "Operation not supported."},
        {10046, "Protocol family not supported."},
        {10047, "Address family not supported by protocol family."},
        {10048, "Address already in use."},
        {10049, "Cannot assign requested address."},
        {10050, "Network is down."},
        {10051, "Network is unreachable."},
        {10052, "Network dropped connection on reset."},
        {10053, "Software caused connection abort."},
        {10054, "Connection reset by peer."},
        {10055, "No buffer space available."},
        {10056, "Socket is already connected."},
        {10057, "Socket is not connected."},
        {10058, "Cannot send after socket shutdown."},
        {10060, "Connection timed out."},
        {10061, "Connection refused."},
        {10065, "No route to host."},
        {10067, "Too many processes."},
        {10091, "Network subsystem is unavailable."},
        {10092, "Winsock.dll version out of range."},
        {10093, "Successful WSAStartup not yet performed."},
        {11001, "Host not found."},
        {11002, "Nonauthoritative host not found."},
        {11003, "This is a nonrecoverable error."},
        {11004, "Valid name, no data record of requested type."},
    };
    for (const auto& [n, t] : textos)
        if (n == number) return t;
    return "Unknown error.";
}

} // namespace velmora
