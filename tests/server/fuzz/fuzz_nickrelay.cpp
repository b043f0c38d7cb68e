// Fuzzer of the relay's first-message reader: any bytes read without fault; a complete
// message stays complete, with the same fields, however it was cut before.
#include "server/nickrelay.h"

#include <cstdint>
#include <cstdlib>
#include <string>

using namespace velmora::servidor;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
    const std::string bytes(reinterpret_cast<const char*>(dados), tamanho);
    const auto l = LeNickRelay(bytes);
    if (l.estado == Leitura::Completo) {
        if (l.nick.tamanho != bytes.size() || bytes.size() > kTamanhoMaximoNick) std::abort();
        if (l.nick.grupo.size() + 2 > bytes.size()) std::abort();
        // Every shorter cut was incomplete or already complete, never invalid
        for (std::size_t n = 0; n < bytes.size(); n += 1 + bytes.size() / 16)
            if (LeNickRelay(std::string_view(bytes).substr(0, n)).estado == Leitura::Invalido)
                std::abort();
    }
    return 0;
}
