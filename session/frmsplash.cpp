#include "session/frmsplash.h"

#include <QCoreApplication>

namespace velmora {

FrmSplash::FrmSplash(Tela& tela, Relogio& relogio) : tela_(tela), relogio_(relogio) {
    Timer1.setInterval(800);
    Timer1.setSingleShot(true);
    QObject::connect(&Timer1, &QTimer::timeout, &Timer1, [this] { Timer1_Timer(); });
}

void FrmSplash::Form_Load() {
    Valores.CaminhoApp = CaminhoDoPrograma(QCoreApplication::applicationDirPath().toStdString());
    Valores.TituloApp = "Velmora Ace";
    Valores.Escala = 1.0;
    const double escala = tela_.MedeEscala();
    if (escala > 0 && escala != 1.0) {
        Valores.Escala = escala;
        Valores.UsaEscala = true;
        tela_.AjustaEscalaSplash();
    }
    tela_.MostraSplash(VersaoPrograma);
    QCoreApplication::processEvents();
    Timer1.start();
}

void FrmSplash::Timer1_Timer() {
    Timer1.stop();
    tela_.EscondeSplash();
    form1 = std::make_unique<Form1>(tela_, relogio_, Valores);
    form1->Form_Load();
    tela_.MostraJanela();
    tela_.DescarregaSplash();
    Descarregado = true;
}

} // namespace velmora
