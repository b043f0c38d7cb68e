#include "ui/plataformaqt.h"

#include <QCoreApplication>
#include <QThread>
#include <QTime>

namespace velmora::ui {

PlataformaQt::PlataformaQt() {
    relogio_.start();
}

double PlataformaQt::Agora() {
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

double PlataformaQt::Decorrido() {
    return relogio_.nsecsElapsed() / 1e9;
}

void PlataformaQt::Dorme(double ms) {
    if (ms > 0) QThread::usleep(static_cast<unsigned long>(ms * 1000));
}

void PlataformaQt::ProcessaEventos() {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void PlataformaQt::TocaSom(const std::string& nome) {
    if (aoTocarSom) aoTocarSom(nome);
}

void PlataformaQt::Redesenha() {
    if (aoRedesenhar) aoRedesenhar();
}

} // namespace velmora::ui
