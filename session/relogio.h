#pragma once
// The clock the session reads: the time of day, a monotonic elapsed time for every wait and
// budget, and plain sleeps. The program uses the real one; tests use one that moves only
// when something sleeps, so a 25-second wait takes no time at all.
namespace velmora {

class Relogio {
  public:
    virtual ~Relogio() = default;
    // Seconds since midnight, with fractions.
    virtual double Agora() = 0;
    // Seconds from a fixed point, never going back.
    virtual double Decorrido() = 0;
    // A sleep that runs no events.
    virtual void Dorme(double ms) = 0;
    // Called at each pump of events.
    virtual void AoProcessar() {}
};

// The machine's clock. With `pulaPausas` the sleeps take no time but move the clock by
// their length, as if they had happened: a headless game then runs its animations and
// pauses at once while the computer still thinks for its real time.
class RelogioReal : public Relogio {
  public:
    explicit RelogioReal(bool pulaPausas = false) : pulaPausas_(pulaPausas) {}
    double Agora() override;
    double Decorrido() override;
    void Dorme(double ms) override;

  private:
    bool pulaPausas_;
    double adiantamento_ = 0; // seconds of sleeps skipped so far
};

// A clock that moves only when someone sleeps, advances it, or pumps (by `porEvento`).
class RelogioSimulado : public Relogio {
  public:
    explicit RelogioSimulado(double agora = 12 * 3600.0) : agora_(agora) {}
    double Agora() override { return agora_; }
    double Decorrido() override { return decorrido_; }
    void Dorme(double ms) override { Avanca(ms / 1000.0); }
    void AoProcessar() override { Avanca(porEvento); }
    void Avanca(double segundos);
    // Seconds added at each pump of events.
    double porEvento = 0;

  private:
    double agora_;
    double decorrido_ = 0;
};

} // namespace velmora
