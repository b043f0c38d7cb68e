#include "net/matrizsocket.h"

#include <stdexcept>

namespace velmora {

MatrizSocket::MatrizSocket(modSocketMaster& mod, const PropriedadesSocket& modelo) : mod_(mod) {
    auto& s = *elementos_.emplace(0, std::make_unique<Socket>(mod_, modelo)).first->second;
    Liga(0, s);
}

bool MatrizSocket::Load(int index) {
    if (index < 0 || Loaded(index)) return false;
    const PropriedadesSocket modelo = elementos_.at(0)->Salva();
    auto& s = *elementos_.emplace(index, std::make_unique<Socket>(mod_, modelo)).first->second;
    Liga(index, s);
    return true;
}

bool MatrizSocket::Unload(int index) {
    if (index == 0) return false;
    return elementos_.erase(index) != 0;
}

Socket& MatrizSocket::operator()(int index) {
    const auto it = elementos_.find(index);
    if (it == elementos_.end())
        throw std::out_of_range("Control array element '" + std::to_string(index) +
                                "' doesn't exist");
    return *it->second;
}

const Socket& MatrizSocket::operator()(int index) const {
    return const_cast<MatrizSocket&>(*this)(index);
}

void MatrizSocket::Liga(int index, Socket& s) {
    auto& e = s.Eventos;
    e.CloseSck = [this, index] {
        if (auto f = Eventos.CloseSck) f(index);
    };
    e.Connect = [this, index] {
        if (auto f = Eventos.Connect) f(index);
    };
    e.ConnectionRequest = [this, index](std::int32_t requestID) {
        if (auto f = Eventos.ConnectionRequest) f(index, requestID);
    };
    e.DataArrival = [this, index](std::int32_t bytesTotal) {
        if (auto f = Eventos.DataArrival) f(index, bytesTotal);
    };
    e.Error = [this, index](std::int32_t Number, const std::string& Description, std::int32_t Scode,
                            const std::string& Source, const std::string& HelpFile,
                            std::int32_t HelpContext, bool& CancelDisplay) {
        if (auto f = Eventos.Error)
            f(index, Number, Description, Scode, Source, HelpFile, HelpContext, CancelDisplay);
    };
    e.SendComplete = [this, index] {
        if (auto f = Eventos.SendComplete) f(index);
    };
    e.SendProgress = [this, index](std::int32_t bytesSent, std::int32_t bytesRemaining) {
        if (auto f = Eventos.SendProgress) f(index, bytesSent, bytesRemaining);
    };
}

} // namespace velmora
