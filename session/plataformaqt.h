#pragma once
// The turn cycle's platform over Qt: the pump is QCoreApplication::processEvents, so timers
// and sockets run inside every wait, with or without a window. The clock is injected.
#include "core/plataforma.h"
#include "session/relogio.h"

#include <functional>
#include <string>

namespace velmora {

class PlataformaQt : public Plataforma {
  public:
    explicit PlataformaQt(Relogio& relogio) : relogio_(relogio) {}
    double Agora() override { return relogio_.Agora(); }
    double Decorrido() override { return relogio_.Decorrido(); }
    void Dorme(double ms) override { relogio_.Dorme(ms); }
    void ProcessaEventos() override;
    void TocaSom(const std::string& nome) override {
        if (som) som(nome);
    }
    void Redesenha() override {
        if (redesenha) redesenha();
    }
    Relogio& relogio() { return relogio_; }

    // Runs after the pending events, at each pump.
    std::function<void()> aoProcessar;
    std::function<void(const std::string&)> som;
    std::function<void()> redesenha;

  private:
    Relogio& relogio_;
};

} // namespace velmora
