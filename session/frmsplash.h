#pragma once
// The start of the program: fixes the process-wide values, shows the splash for 800 ms,
// then creates the board window's controller (which loads the settings and lays out the
// board) and shows the window. The first activation of the window opens the first dialog.
#include "session/form1.h"

#include <QTimer>

#include <memory>

namespace velmora {

class FrmSplash {
  public:
    FrmSplash(Tela& tela, Relogio& relogio);
    // Steps up to the splash on screen; the timer does the rest.
    void Form_Load();
    ValoresDoPrograma Valores;
    QTimer Timer1;
    // Form1, once the timer has fired; it lives to the end of the process.
    std::unique_ptr<Form1> form1;
    bool Descarregado = false;

  private:
    void Timer1_Timer();
    Tela& tela_;
    Relogio& relogio_;
};

} // namespace velmora
