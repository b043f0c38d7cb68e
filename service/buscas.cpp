#include "service/buscas.h"

namespace velmora {

BuscasReais::BuscasReais(ClienteGetConteudo& wsg, const Laco& laco) : wsg_(wsg) {
    for (auto& d : dls_) {
        d = std::make_unique<dl>();
        d->Relogio = laco.relogio;
        d->Bomba = laco.bomba;
    }
    wsg_.Relogio = laco.relogio;
    wsg_.Bomba = laco.bomba;
}

std::string BuscasReais::Dl(Instancia i, const std::string& url, std::int32_t TimeOut) {
    return dls_[static_cast<std::size_t>(i)]->GetConteudo(url, "Id", TimeOut);
}

std::string BuscasReais::GetConteudo(const std::string& url, std::int32_t tempo) {
    return wsg_.GetConteudo(url, tempo);
}

} // namespace velmora
