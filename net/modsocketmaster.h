#pragma once
// modSocketMaster: the registry that joins the OS socket notifications to the CSocketMaster
// objects. It knows which object owns which socket and which name look-up, holds accepted
// sockets that no object has claimed yet, and delivers the five socket events (read,
// write, accept, connect, close) and the end of a look-up on the thread of the event loop,
// through QSocketNotifier and QHostInfo.
//
// One registry per running copy: whoever runs the copy creates it (after the
// QCoreApplication) and hands it to every socket; it must outlive them all.
//
// The OS notifications are level-triggered; the registry hands them out as Winsock does:
// a read, accept or close is reported once, and reported again only after the object has
// called recv or accept; a write only after a send that would block; a connect once.
#include <QObject>
#include <QSocketNotifier>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmora {

class CSocketMaster;

// Where a look-up writes its answer: the first IPv4 address, in network order.
struct BufferBusca {
    std::uint32_t endereco = 0;
};

// Messages of the window procedure, and the socket events (low word of lParam).
inline constexpr std::uint32_t MensagemBusca = 0x8000;
inline constexpr std::uint32_t MensagemSocket = 0x8001;
inline constexpr std::int32_t FD_READ = 1;
inline constexpr std::int32_t FD_WRITE = 2;
inline constexpr std::int32_t FD_ACCEPT = 8;
inline constexpr std::int32_t FD_CONNECT = 16;
inline constexpr std::int32_t FD_CLOSE = 32;
inline constexpr std::intptr_t FazLParam(std::int32_t evento, std::int32_t erro) {
    return static_cast<std::intptr_t>((static_cast<std::uint32_t>(erro) & 0xFFFFu) << 16 |
                                      (static_cast<std::uint32_t>(evento) & 0xFFFFu));
}

class modSocketMaster {
  public:
    modSocketMaster();
    ~modSocketMaster();
    modSocketMaster(const modSocketMaster&) = delete;
    modSocketMaster& operator=(const modSocketMaster&) = delete;

    // Shows an error text in a message box titled with its source; asked for by an Error
    // handler that sets CancelDisplay to false. Without it nothing is shown.
    std::function<void(const std::string& titulo, const std::string& texto)> CaixaMensagem;

    // Every object calls these at its creation and its end. Result 0.
    std::int32_t InitiateProcesses();
    std::int32_t FinalizeProcesses();

    bool RegisterSocket(std::int32_t socket, const std::shared_ptr<CSocketMaster>& object,
                        bool notify);
    void UnregisterSocket(std::int32_t socket);
    bool IsSocketRegistered(std::int32_t socket) const;
    void RegisterResolve(std::int32_t handle, const std::shared_ptr<CSocketMaster>& object);
    void UnregisterResolve(std::int32_t handle);
    // Makes a temporary holder for a just-accepted socket.
    void RegisterAcceptedSocket(std::int32_t socket);
    bool IsAcceptedSocket(std::int32_t socket) const;
    std::shared_ptr<CSocketMaster> TakeAcceptedSocket(std::int32_t socket) const;
    void UnregisterAcceptedSocket(std::int32_t socket);
    void RebindSocketOwner(std::int32_t socket, const std::shared_ptr<CSocketMaster>& object);
    static std::string ErrorDescription(std::int32_t number);

    // Hands a message to the object that owns the look-up (MensagemBusca, wParam the
    // handle) or the socket (MensagemSocket, wParam the socket); a message for a handle or
    // socket that no row holds is dropped.
    void WindowProc(std::uint32_t message, std::intptr_t wParam, std::intptr_t lParam);

    // What the OS does on its own under Winsock. Starts a look-up of `nome` whose answer
    // goes to `buffer` (if it still exists) and then to the window procedure; result the
    // handle, 0 when it couldn't start. A look-up can't be stopped: once its row is freed,
    // its answer is dropped like any late one.
    std::int32_t IniciaBusca(const std::string& nome, std::weak_ptr<BufferBusca> buffer);
    // A connect is under way: its end is reported as FD_CONNECT.
    void AguardaConexao(std::int32_t socket);
    // The object has called recv or accept (or listen): reads may be reported again.
    void ReativaLeitura(std::int32_t socket);
    // A send would have blocked: report when the socket can take more.
    void ReativaEscrita(std::int32_t socket);

    // For diagnostics and tests.
    std::int32_t ObjetosVivos() const { return objetos_; }
    bool Iniciado() const { return iniciado_; }
    // The stand-in of the message window: up from the first registered socket to the last.
    bool JanelaAtiva() const { return janela_; }
    std::size_t LinhasTabelaSockets() const { return tabelaSockets_.size(); }
    std::size_t LinhasTabelaBuscas() const { return tabelaBuscas_.size(); }
    std::size_t SocketsNaColecao() const { return colecaoSockets_.size(); }

  private:
    struct Linha {
        std::int32_t chave = -1;
        std::weak_ptr<CSocketMaster> dono;
    };
    // What the OS reports about one socket, and how far it is.
    enum class Modo { Ocioso, Escuta, Conectando, Conectado, Datagrama, Fechado };
    struct Notificacoes {
        std::unique_ptr<QSocketNotifier> leitura;
        std::unique_ptr<QSocketNotifier> escrita;
        Modo modo = Modo::Ocioso;
    };

    static void Guarda(std::vector<Linha>& tabela, std::int32_t chave,
                       const std::shared_ptr<CSocketMaster>& dono);
    static void Libera(std::vector<Linha>& tabela, std::int32_t chave);
    static std::shared_ptr<CSocketMaster> Procura(const std::vector<Linha>& tabela,
                                                  std::int32_t chave);
    void PreparaNotificacoes(std::int32_t socket, Modo modo);
    void DescartaNotificacoes(std::int32_t socket);
    static Modo Sonda(std::int32_t socket);
    void AoLer(std::int32_t socket);
    void AoEscrever(std::int32_t socket);
    void Entrega(std::int32_t socket, std::int32_t evento, std::int32_t erro);

    QObject contexto_; // parent of the notifiers
    // Expires with the registry: a look-up's answer tests it before coming in
    std::shared_ptr<modSocketMaster*> vida_;
    std::int32_t objetos_ = 0;
    bool iniciado_ = false;
    bool janela_ = false;
    int profundidade_ = 0; // notifier handlers running, one inside the other
    std::map<std::int32_t, std::weak_ptr<CSocketMaster>> colecaoSockets_;
    std::map<std::int32_t, std::shared_ptr<CSocketMaster>> colecaoAceitos_;
    std::vector<Linha> tabelaBuscas_;
    std::vector<Linha> tabelaSockets_;
    std::map<std::int32_t, Notificacoes> notificacoes_;
};

} // namespace velmora
