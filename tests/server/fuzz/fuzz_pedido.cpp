// Fuzzer of the request reader: any bytes, whole or cut anywhere, read without fault, and
// what it reads is bounded and consistent.
#include "server/pedido.h"

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace velmora::servidor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
    const std::string bytes(reinterpret_cast<const char*>(dados), tamanho);
    const auto l = LePedido(bytes);
    if (l.estado == Leitura::Completo) {
        if (l.consumidos > bytes.size() || l.consumidos > kTamanhoMaximoPedido) std::abort();
        if (l.pedido.caminho.empty()) std::abort();
        if (l.pedido.metodo != "GET" && l.pedido.metodo != "HEAD") std::abort();
        const auto q = LeConsulta(l.pedido.consulta);
        if (q.size() > 64) std::abort();
        for (const auto& [k, v] : q) {
            const auto limpo = TextoLimpo(v, 64);
            if (limpo.size() > 64) std::abort();
            for (const char c : limpo)
                if (static_cast<unsigned char>(c) < 0x20) std::abort();
        }
        // Values bounded by the key after them are never longer than the query
        const auto& consulta = l.pedido.consulta;
        const auto c = LeCredenciais(consulta);
        const auto g = ValorAte(consulta, "grupo", "compatibilidade");
        if (c.nick.size() + c.senha.size() > consulta.size() || g.size() > consulta.size())
            std::abort();
    }
    // A prefix of a complete request is never complete with more bytes consumed
    if (tamanho > 1) {
        const auto p = LePedido(std::string_view(bytes).substr(0, tamanho / 2));
        if (p.estado == Leitura::Completo && p.consumidos > tamanho / 2) std::abort();
    }
    return 0;
}
