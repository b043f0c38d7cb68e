#include "net/bomba.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace velmora {

double RelogioPadrao() {
    using namespace std::chrono;
    return duration<double>(steady_clock::now().time_since_epoch()).count();
}

void BombaPadrao() {
    // The timer bounds the wait, so that the caller gets to test its clock
    QTimer despertador;
    despertador.setSingleShot(true);
    despertador.start(10);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace velmora
