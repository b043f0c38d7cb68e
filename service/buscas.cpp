#include "service/buscas.h"

#include <limits>
#include <utility>

namespace velmora {

BuscasReais::BuscasReais(ClienteGetConteudo& wsg, const Laco& laco) : wsg_(wsg), laco_(laco) {
    for (auto& d : dls_) d = NovoDl();
}

std::function<double()> BuscasReais::Relogio() const {
    return [this] {
        return EstaCancelado() ? std::numeric_limits<double>::max() / 4 : laco_.relogio();
    };
}

std::unique_ptr<dl> BuscasReais::NovoDl() const {
    auto d = std::make_unique<dl>();
    d->Relogio = Relogio();
    d->Bomba = laco_.bomba;
    return d;
}

std::string BuscasReais::Dl(Instancia i, const std::string& url, std::int32_t TimeOut) {
    if (EstaCancelado()) return {};
    auto& d = dls_[static_cast<std::size_t>(i)];
    std::string r = d->GetConteudo(url, "Id", TimeOut);
    // A wait cut short leaves its control deaf for good: a fresh one takes its place
    if (d->Cancelled()) d = NovoDl();
    return r;
}

std::string BuscasReais::GetConteudo(const std::string& url, std::int32_t tempo) {
    if (EstaCancelado()) return "FALSE";
    // The board window's client keeps its own clock and pump outside this call
    auto relogio = std::exchange(wsg_.Relogio, Relogio());
    auto bomba = std::exchange(wsg_.Bomba, laco_.bomba);
    std::string r = wsg_.GetConteudo(url, tempo);
    wsg_.Relogio = std::move(relogio);
    wsg_.Bomba = std::move(bomba);
    return r;
}

} // namespace velmora
