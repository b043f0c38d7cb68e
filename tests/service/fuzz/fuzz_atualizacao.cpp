// Fuzzer: any reply of the update check, read as an offer, and any text read as a version.
// A value text is digits without leading zeros; an offer is only ever made for a newer version.
#include "service/atualizacao.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
    const std::string texto(reinterpret_cast<const char*>(dados), tamanho);
    const std::string valor = velmora::ValorVersao(texto);
    if (valor.empty() || (valor.size() > 1 && valor[0] == '0')) std::abort();
    for (char c : valor)
        if (c < '0' || c > '9') std::abort();

    const velmora::Busca fixa = [&texto](const std::string&, std::int32_t) { return texto; };
    const std::string resultado =
        velmora::GetUpdate(fixa, fixa, "http://s", "Velmora Ace", velmora::TemposLobby);
    const velmora::OfertaAtualizacao o = velmora::LeOferta(resultado);
    if (o.link && !velmora::MaiorVersion("3.9.0", o.versao)) std::abort();
    if (!o.sha256.empty() && o.sha256.size() != 64) std::abort();
    return 0;
}
