#include "service/laco.h"

#include "net/bomba.h"

namespace velmora {

Laco::Laco() : relogio(RelogioPadrao), bomba(BombaPadrao) {}

void Laco::Espera(double segundos) const {
    const double fim = relogio() + segundos;
    do {
        bomba();
    } while (relogio() < fim);
}

} // namespace velmora
