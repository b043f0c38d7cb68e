#pragma once
// Per-address rate limits: a bucket of `capacidade` tokens per address, refilled at
// `porSegundo`. Safe across threads. Old full buckets are dropped so the table stays small.
#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <unordered_map>

namespace velmora::servidor {

class LimiteTaxa {
  public:
    LimiteTaxa(double capacidade, double porSegundo) : capacidade_(capacidade), taxa_(porSegundo) {}
    // Takes one token; false when the address has none left.
    bool Permite(const std::string& endereco, double agoraSegundos);
    void Desliga() { ligado_ = false; }

  private:
    struct Balde {
        double fichas;
        double ultimo;
    };
    double capacidade_, taxa_;
    bool ligado_ = true;
    std::mutex mutex_;
    std::unordered_map<std::string, Balde> baldes_;
};

} // namespace velmora::servidor
