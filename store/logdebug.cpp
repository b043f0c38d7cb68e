#include "store/logdebug.h"

#include "store/caminhos.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>

namespace velmora {

namespace {

double AgoraLocal() {
    const std::time_t t = std::time(nullptr);
    std::tm tm{};
    localtime_r(&t, &tm);
    return tm.tm_hour * 3600.0 + tm.tm_min * 60.0 + tm.tm_sec;
}

std::string Hora(double segundos) {
    long s = static_cast<long>(segundos);
    if (s < 0) s = 0;
    s %= 86400;
    char b[16];
    std::snprintf(b, sizeof b, "%02ld:%02ld:%02ld", s / 3600, (s / 60) % 60, s % 60);
    return b;
}

bool LigadoPeloAmbiente() {
    const char* v = std::getenv("VELMORA_DEBUG");
    return v && std::string_view(v) == "1";
}

} // namespace

Diario::Diario() : Diario(LigadoPeloAmbiente(), PastaDados() / "debug.txt") {}

Diario::Diario(bool ligado, std::filesystem::path arquivo)
    : ligado_(ligado), arquivo_(std::move(arquivo)) {}

void Diario::LogDebug(std::string_view texto) const {
    if (!ligado_) return;
    const std::string linha = Hora(relogio ? relogio() : AgoraLocal()) + "  " + std::string(texto);
    if (ouvinte) ouvinte(linha);
    std::error_code ec;
    std::filesystem::create_directories(arquivo_.parent_path(), ec);
    std::ofstream f(arquivo_, std::ios::app | std::ios::binary);
    f << linha << '\n'; // a failed log write is silent, like every file failure here
}

} // namespace velmora
