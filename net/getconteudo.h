#pragma once
// The minimal web client on a socket of its own (WSG): it dials the host, sends "GET ", the
// whole URL and two CR LF (no version, no headers), and takes the first arrival as the
// whole reply. A host written with a port ("host:8080") is dialled on that port, any other
// on port 80. One call at a time; the socket stays open after a reply and the next call
// closes it.
#include "net/socket.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velmora {

class modSocketMaster;

class ClienteGetConteudo {
  public:
    explicit ClienteGetConteudo(modSocketMaster& mod);
    ~ClienteGetConteudo();
    ClienteGetConteudo(const ClienteGetConteudo&) = delete;
    ClienteGetConteudo& operator=(const ClienteGetConteudo&) = delete;

    // The clock (seconds) and the pump of the wait; RelogioPadrao and BombaPadrao at first.
    std::function<double()> Relogio;
    std::function<void()> Bomba;

    // The first arrival of the reply, or "FALSE" when `tempo` seconds pass first (counted
    // from the start of the whole second in which the call began). A `tempo` of 0 becomes 2.
    std::string GetConteudo(const std::string& url, std::int32_t& tempo);
    std::string GetConteudo(const std::string& url, std::int32_t&& tempo) {
        return GetConteudo(url, tempo);
    }

    Socket WSG;

  private:
    struct Estado {
        std::string resposta; // the reply field
        std::string url;      // the request of the call in progress
        bool vivo = true;
    };
    std::shared_ptr<Estado> e_;
};

} // namespace velmora
