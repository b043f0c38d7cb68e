#pragma once
// A control array of Socket controls, like WS of the board window: element 0 exists from
// the start and carries the properties that every element loaded later starts with; the
// others are loaded and unloaded at run time by index. Events carry the element's index.
#include "net/socket.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace velmora {

class modSocketMaster;

struct EventosMatrizSocket {
    std::function<void(int Index)> CloseSck;
    std::function<void(int Index)> Connect;
    std::function<void(int Index, std::int32_t requestID)> ConnectionRequest;
    std::function<void(int Index, std::int32_t bytesTotal)> DataArrival;
    std::function<void(int Index, std::int32_t Number, const std::string& Description,
                       std::int32_t Scode, const std::string& Source, const std::string& HelpFile,
                       std::int32_t HelpContext, bool& CancelDisplay)>
        Error;
    std::function<void(int Index)> SendComplete;
    std::function<void(int Index, std::int32_t bytesSent, std::int32_t bytesRemaining)>
        SendProgress;
};

class MatrizSocket {
  public:
    explicit MatrizSocket(modSocketMaster& mod, const PropriedadesSocket& modelo = {});
    MatrizSocket(const MatrizSocket&) = delete;
    MatrizSocket& operator=(const MatrizSocket&) = delete;

    EventosMatrizSocket Eventos;

    // False when the element is loaded already or the index is negative.
    bool Load(int index);
    // False when the element isn't loaded, and for element 0, which stays. An element may
    // be unloaded from inside one of its own events.
    bool Unload(int index);
    bool Loaded(int index) const { return elementos_.count(index) != 0; }
    // The element; std::out_of_range when it isn't loaded.
    Socket& operator()(int index);
    const Socket& operator()(int index) const;

  private:
    void Liga(int index, Socket& s);

    modSocketMaster& mod_;
    std::map<int, std::unique_ptr<Socket>> elementos_;
};

} // namespace velmora
