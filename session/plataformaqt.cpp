#include "session/plataformaqt.h"

#include <QCoreApplication>

namespace velmora {

void PlataformaQt::ProcessaEventos() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    relogio_.AoProcessar();
    if (aoProcessar) aoProcessar();
}

} // namespace velmora
