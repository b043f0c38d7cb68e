#include "ui/frmsplash.h"

#include "ui/desenhos.h"

#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

namespace velmora::ui {

FrmSplash::FrmSplash(const QString& versao, QWidget* pai)
    : QWidget(pai, Qt::SplashScreen | Qt::FramelessWindowHint), versao_(versao) {
    setObjectName("FrmSplash");
    setWindowTitle("Velmora Ace");
    setFixedSize(460, 280);
    if (const QScreen* tela = QGuiApplication::primaryScreen())
        move(tela->availableGeometry().center() - QPoint(width() / 2, height() / 2));
}

void FrmSplash::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QLinearGradient fundo(0, 0, 0, height());
    fundo.setColorAt(0, paleta::Barra.lighter(140));
    fundo.setColorAt(1, paleta::Barra.darker(130));
    p.fillRect(rect(), fundo);

    // a corner of a board with a man of each side and a king
    const double l = 44;
    const QPointF origem(30, 56);
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            p.fillRect(QRectF(origem.x() + c * l, origem.y() + r * l, l, l),
                       (r + c) % 2 ? paleta::CasaEscura : paleta::CasaClara);
    DesenhaPeca(p, QRectF(origem.x() + 1 * l, origem.y(), l, l), 2);
    DesenhaPeca(p, QRectF(origem.x() + 3 * l, origem.y(), l, l), 20);
    DesenhaPeca(p, QRectF(origem.x(), origem.y() + 3 * l, l, l), 1);
    DesenhaPeca(p, QRectF(origem.x() + 2 * l, origem.y() + 3 * l, l, l), 10);
    p.setPen(QPen(paleta::Destaque, 2));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(origem.x(), origem.y(), 4 * l, 4 * l));

    QFont f = font();
    f.setPixelSize(30);
    f.setBold(true);
    p.setFont(f);
    p.setPen(Qt::white);
    const QRectF texto(origem.x() + 4 * l + 20, 70, width() - origem.x() - 4 * l - 30, 90);
    p.drawText(texto, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, "Velmora Ace");
    f.setPixelSize(15);
    f.setBold(false);
    p.setFont(f);
    p.setPen(QColor(0xE8, 0xE0, 0xC8));
    p.drawText(QRectF(texto.left(), 166, texto.width(), 24), Qt::AlignLeft, "Jogo de damas");
    f.setPixelSize(20);
    f.setBold(true);
    p.setFont(f);
    p.setPen(paleta::Destaque.lighter(130));
    p.drawText(QRectF(texto.left(), 196, texto.width(), 30), Qt::AlignLeft, versao_);
    p.setPen(QPen(paleta::Destaque, 3));
    p.drawRect(rect().adjusted(1, 1, -2, -2));
}

} // namespace velmora::ui
