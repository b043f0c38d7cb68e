#include "session/relogio.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace velmora {

double RelogioReal::Agora() {
    using namespace std::chrono;
    const auto agora = system_clock::now() +
                       duration_cast<system_clock::duration>(duration<double>(adiantamento_));
    const std::time_t t = system_clock::to_time_t(agora);
    std::tm local{};
    localtime_r(&t, &local);
    const double fracao =
        duration<double>(agora.time_since_epoch()).count() - static_cast<double>(t);
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + fracao;
}

double RelogioReal::Decorrido() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count() + adiantamento_;
}

void RelogioReal::Dorme(double ms) {
    if (ms <= 0) return;
    if (pulaPausas_)
        adiantamento_ += ms / 1000.0;
    else
        std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(ms));
}

void RelogioSimulado::Avanca(double segundos) {
    agora_ += segundos;
    decorrido_ += segundos;
    while (agora_ >= 86400) agora_ -= 86400;
}

} // namespace velmora
