#include "session/relogio.h"

#include "core/plataforma.h"

namespace velmora {

double RelogioReal::Agora() {
    return HoraDoDia(adiantamento_);
}

double RelogioReal::Decorrido() {
    return SegundosMonotonicos() + adiantamento_;
}

void RelogioReal::Dorme(double ms) {
    if (ms <= 0) return;
    if (pulaPausas_)
        adiantamento_ += ms / 1000.0;
    else
        DormeDeVerdade(ms);
}

void RelogioSimulado::Avanca(double segundos) {
    agora_ += segundos;
    decorrido_ += segundos;
    while (agora_ >= 86400) agora_ -= 86400;
}

} // namespace velmora
