// The service's replies, as any bytes: every reader takes them, and the list reader agrees
// with cutting field by field. Input: one byte that picks a local address, then the reply.
#include "core/utilidades.h"
#include "service/respostas.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace velmora;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    if (tamanho == 0) return 0;
    const std::string local = dados[0] % 2 ? "10.0.0.1" : "";
    const std::string_view r(reinterpret_cast<const char*>(dados + 1), tamanho - 1);

    const auto lista = CarregaIpstoList(r, local);
    for (const auto& linha : lista)
        if (linha.substr(0, linha.find(':')) == local) std::abort();
    (void)ClassificaLista(Limpa(r));
    (void)LeParametros(r);
    (void)LeServidor(r);
    (void)LeLogin(r);
    (void)LeCadastro(r);
    (void)LePodeCadastrar(r);
    (void)LeBloqueio(r);
    (void)LeAtribui(r);
    (void)LeTestePorta(r);
    (void)LeMeuIP(r);
    (void)LeGETPT(r);

    // the one-pass cutting equals Pedaco, field by field
    const std::string t(r);
    const auto campos = Campos(t, "#");
    for (std::size_t n = 1; n <= campos.size() && n <= 64; ++n)
        if (campos[n - 1] != Pedaco(t, "#", static_cast<int>(n))) std::abort();
    return 0;
}
