#include "server/limites.h"

#include <algorithm>

namespace velmora::servidor {

bool LimiteTaxa::Permite(const std::string& endereco, double agora) {
    if (!ligado_) return true;
    std::lock_guard trava(mutex_);
    if (baldes_.size() > 100'000) {
        // Forget the addresses whose bucket is full again
        std::erase_if(baldes_, [&](const auto& kv) {
            return kv.second.fichas + (agora - kv.second.ultimo) * taxa_ >= capacidade_;
        });
    }
    auto [it, novo] = baldes_.try_emplace(endereco, Balde{capacidade_, agora});
    auto& b = it->second;
    b.fichas = std::min(capacidade_, b.fichas + std::max(0.0, agora - b.ultimo) * taxa_);
    b.ultimo = agora;
    if (b.fichas < 1.0) return false;
    b.fichas -= 1.0;
    return true;
}

} // namespace velmora::servidor
