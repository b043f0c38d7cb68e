#include "core/plataforma.h"

#include <chrono>
#include <ctime>
#include <thread>

namespace velmora {

double HoraDoDia(double adiantamento) {
    using namespace std::chrono;
    const auto agora =
        system_clock::now() + duration_cast<system_clock::duration>(duration<double>(adiantamento));
    const std::time_t t = system_clock::to_time_t(agora);
    std::tm local{};
    localtime_r(&t, &local);
    const double fracao =
        duration<double>(agora.time_since_epoch()).count() - static_cast<double>(t);
    return local.tm_hour * 3600.0 + local.tm_min * 60.0 + local.tm_sec + fracao;
}

double SegundosMonotonicos() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void DormeDeVerdade(double ms) {
    if (ms > 0) std::this_thread::sleep_for(std::chrono::duration<double, std::milli>(ms));
}

double PlataformaSemTela::Agora() {
    return HoraDoDia();
}

double PlataformaSemTela::Decorrido() {
    return SegundosMonotonicos();
}

void PlataformaSemTela::Dorme(double ms) {
    DormeDeVerdade(ms);
}

} // namespace velmora
