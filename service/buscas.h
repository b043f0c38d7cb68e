#pragma once
// The two ways a request reaches the service. `Dl` is the download control (one of the
// owner window's instances DL1, DL2, DL3) and `GetConteudo` the minimal client on the board
// window's socket, which sends the bare request line and takes the first arrival. Neither
// ever fails to the caller: every failure is a text without the caller's marker.
#include "net/dl.h"
#include "net/getconteudo.h"
#include "service/laco.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velmora {

// The download control's default time-out, in seconds.
inline constexpr std::int32_t TempoPadraoDl = 8;

enum class Instancia { DL1 = 0, DL2 = 1, DL3 = 2 };

class Buscas {
  public:
    virtual ~Buscas() = default;
    // The document as text (each line followed by CR LF); empty on a time-out.
    virtual std::string Dl(Instancia dl, const std::string& url,
                           std::int32_t TimeOut = TempoPadraoDl) = 0;
    // The first arrival of the reply, "FALSE" after `tempo` seconds (0 becomes 2).
    virtual std::string GetConteudo(const std::string& url, std::int32_t tempo) = 0;

    // When set and true (a lobby that was cancelled), no fetch starts any more, and a wait
    // in progress ends at its next round, as if its time had run out.
    std::function<bool()> Cancelado;
    bool EstaCancelado() const { return Cancelado && Cancelado(); }
};

// The real fetches: three download controls of the owner window and the board window's
// client, all waiting with the given loop.
class BuscasReais : public Buscas {
  public:
    BuscasReais(ClienteGetConteudo& wsg, const Laco& laco);
    std::string Dl(Instancia dl, const std::string& url, std::int32_t TimeOut) override;
    std::string GetConteudo(const std::string& url, std::int32_t tempo) override;

  private:
    std::unique_ptr<dl> NovoDl() const;
    // The loop's clock, run out at once while cancelled.
    std::function<double()> Relogio() const;

    ClienteGetConteudo& wsg_;
    Laco laco_;
    std::array<std::unique_ptr<dl>, 3> dls_;
};

} // namespace velmora
