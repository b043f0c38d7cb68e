#pragma once
// The sockets of velmora-servico, on one Asio thread: the web listener (both request
// forms, the port test's dial-back) and the relay. Requests that touch the database run
// on a small pool of worker threads and their replies come back to the socket thread.
// Every connection has a deadline, and the counts of connections and of waiting requests
// are bounded, so a slow or silent client holds nothing for long.
#include "server/opcoes.h"
#include "server/servico.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace velmora::servidor {

class Servidor {
  public:
    using Registro = std::function<void(std::string_view)>;
    Servidor(const Opcoes& o, Servico& servico, Registro log);
    ~Servidor();
    Servidor(const Servidor&) = delete;
    Servidor& operator=(const Servidor&) = delete;

    // Opens both listening sockets (port 0 takes a free port); throws std::system_error.
    void Abre();
    std::uint16_t PortaWeb() const;
    std::uint16_t PortaRelay() const;
    // Runs the socket thread until Para.
    void Inicia();
    // Stops accepting, lets the requests in progress finish (a few seconds at most),
    // closes the relay's connections and joins the threads.
    void Para();

    // For tests and measurements
    std::size_t ConexoesRelay() const;
    std::size_t ParesRelay() const;
    std::size_t ConexoesWeb() const;

    struct Estado;

  private:
    std::unique_ptr<Estado> e_;
};

} // namespace velmora::servidor
