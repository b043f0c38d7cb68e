#pragma once
// The platform of the desktop program: the clock of the machine, Qt's pump of pending
// events, and a window that repaints when the view-model changes.
#include "core/plataforma.h"

#include <QElapsedTimer>
#include <functional>

namespace velmora::ui {

class PlataformaQt : public Plataforma {
  public:
    PlataformaQt();
    double Agora() override;
    double Decorrido() override;
    void Dorme(double ms) override;
    void ProcessaEventos() override;
    void TocaSom(const std::string& nome) override;
    void Redesenha() override;

    // Who plays a sound ("mover.wav"); silent when empty.
    std::function<void(const std::string&)> aoTocarSom;
    // Who repaints; the board window sets it.
    std::function<void()> aoRedesenhar;

  private:
    QElapsedTimer relogio_;
};

} // namespace velmora::ui
