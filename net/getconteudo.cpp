#include "net/getconteudo.h"

#include "net/bomba.h"

#include <cmath>
#include <cstdlib>
#include <utility>

namespace velmora {

namespace {

// Host and port of a URL: what stands before the first "/" once every "http://" is gone.
std::pair<std::string, std::int32_t> HostPorta(std::string url) {
    const std::string esquema = "http://";
    for (auto p = url.find(esquema); p != std::string::npos; p = url.find(esquema))
        url.erase(p, esquema.size());
    std::string host = url.substr(0, url.find('/'));
    std::int32_t porta = 80;
    const auto doisPontos = host.rfind(':');
    if (doisPontos != std::string::npos) {
        const std::string numero = host.substr(doisPontos + 1);
        char* resto = nullptr;
        const long n = std::strtol(numero.c_str(), &resto, 10);
        if (!numero.empty() && *resto == '\0' && n >= 1 && n <= 65535) {
            porta = static_cast<std::int32_t>(n);
            host.erase(doisPontos);
        }
    }
    return {host, porta};
}

} // namespace

ClienteGetConteudo::ClienteGetConteudo(modSocketMaster& mod)
    : Relogio(RelogioPadrao), Bomba(BombaPadrao), WSG(mod), e_(std::make_shared<Estado>()) {
    WSG.Eventos.Connect = [this] { WSG.SendData("GET " + e_->url + "\r\n\r\n"); };
    WSG.Eventos.DataArrival = [this](std::int32_t) {
        std::string texto;
        WSG.GetData(texto);
        // Only the first arrival of a call counts
        if (e_->resposta.empty()) e_->resposta = std::move(texto);
    };
}

ClienteGetConteudo::~ClienteGetConteudo() {
    e_->vivo = false;
}

std::string ClienteGetConteudo::GetConteudo(const std::string& url, std::int32_t& tempo) {
    const auto e = e_;
    e->resposta.clear();
    e->url = url.rfind("http://", 0) == 0 ? url : "http://" + url;
    const auto [host, porta] = HostPorta(e->url);
    try {
        WSG.CloseSck();
        WSG.Connect(host, porta);
    } catch (const ErroSocket&) {
        // Nothing will arrive: the wait ends in a time-out
    }
    if (tempo == 0) tempo = 2;
    const auto relogio = Relogio;
    const auto bomba = Bomba;
    const double inicio = std::floor(relogio());
    const std::int32_t limite = tempo;
    while (e->resposta.empty()) {
        if (!e->vivo) return "FALSE";
        if (relogio() > inicio + limite) {
            try {
                WSG.CloseSck();
            } catch (const ErroSocket&) {
            }
            return "FALSE";
        }
        bomba();
    }
    return e->resposta;
}

} // namespace velmora
