#pragma once
// The clock and the event pump that the service's waits run with. The program uses the
// steady clock and one round of Qt's event loop; a test puts its own clock in, so that a
// 20-second wait doesn't take 20 seconds.
#include <functional>

namespace velmora {

struct Laco {
    Laco();
    std::function<double()> relogio; // seconds
    std::function<void()> bomba;     // one round of the event loop

    double Agora() const { return relogio(); }
    void Bomba() const { bomba(); }
    // Waits `segundos`, letting events run; at least one round of the loop.
    void Espera(double segundos) const;
};

} // namespace velmora
