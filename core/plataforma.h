#pragma once
// What the game core needs from the world around it: the clock, the pump of pending events,
// plain sleeps, sounds and the repaint of the screen. The desktop build plugs Qt in; the
// headless build and the tests plug in their own.
#include <functional>
#include <string>

namespace velmora {

class Plataforma {
  public:
    virtual ~Plataforma() = default;
    // Time of day in seconds since midnight, with fractions.
    virtual double Agora() = 0;
    // Seconds from any fixed point, never going back: every budget and wait is measured
    // on it, so that none of them breaks at midnight.
    virtual double Decorrido() = 0;
    // A plain sleep that pumps nothing.
    virtual void Dorme(double ms) = 0;
    // Runs the pending events (timers, sockets, clicks) to their end.
    virtual void ProcessaEventos() = 0;
    // Plays a sound file of the program's folder to its end; silent when it can't.
    virtual void TocaSom(const std::string& nome) { (void)nome; }
    // The view-model changed: the screen should show it at the next pump.
    virtual void Redesenha() {}
};

// The machine's clock, shared by every real platform: the local time of day in seconds
// since midnight, with fractions, `adiantamento` seconds from now; seconds on a monotonic
// clock; a sleep of the thread.
double HoraDoDia(double adiantamento = 0);
double SegundosMonotonicos();
void DormeDeVerdade(double ms);

// Real clock, real sleeps, no events, no sound: the headless program's platform.
class PlataformaSemTela : public Plataforma {
  public:
    double Agora() override;
    double Decorrido() override;
    void Dorme(double ms) override;
    void ProcessaEventos() override {}
};

// A clock that moves only when someone sleeps or advances it: tests run long waits at once.
class PlataformaSimulada : public Plataforma {
  public:
    double agora = 12 * 3600.0; // seconds since midnight
    double decorrido = 0;
    void Avanca(double segundos) {
        agora += segundos;
        decorrido += segundos;
        while (agora >= 86400) agora -= 86400;
    }
    double Agora() override { return agora; }
    double Decorrido() override { return decorrido; }
    void Dorme(double ms) override { Avanca(ms / 1000.0); }
    void ProcessaEventos() override {
        if (aoProcessar) aoProcessar();
    }
    // Runs inside every pump: the test's stand-in for timers and clicks.
    std::function<void()> aoProcessar;
};

} // namespace velmora
