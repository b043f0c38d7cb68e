#include "ui/desenhos.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QRadialGradient>
#include <cmath>
#include <numbers>

namespace velmora::ui {

namespace {

struct CoresPeca {
    QColor clara, escura, aro, coroa;
};

CoresPeca CoresDoLado(int lado) {
    if (lado == 1)
        return {{0xFB, 0xF4, 0xE4}, {0xC9, 0xB8, 0x96}, {0x8A, 0x77, 0x55}, {0xB8, 0x86, 0x0B}};
    return {{0xB0, 0x3A, 0x2E}, {0x4A, 0x0F, 0x0B}, {0x2A, 0x06, 0x04}, {0xF2, 0xC1, 0x4E}};
}

// A crown of three points inside `r`.
void DesenhaCoroa(QPainter& p, const QRectF& r, const QColor& cor) {
    const double x = r.left(), y = r.top(), w = r.width(), h = r.height();
    QPolygonF coroa;
    coroa << QPointF(x, y + h) << QPointF(x, y + 0.25 * h) << QPointF(x + 0.27 * w, y + 0.6 * h)
          << QPointF(x + 0.5 * w, y) << QPointF(x + 0.73 * w, y + 0.6 * h)
          << QPointF(x + w, y + 0.25 * h) << QPointF(x + w, y + h);
    p.setBrush(cor);
    p.setPen(QPen(cor.darker(160), std::max(1.0, w / 18)));
    p.drawPolygon(coroa);
}

QPolygonF Estrela(const QRectF& r, int pontas, double interno) {
    QPolygonF pts;
    const QPointF c = r.center();
    const double R = std::min(r.width(), r.height()) / 2;
    for (int i = 0; i < 2 * pontas; ++i) {
        const double a = -std::numbers::pi / 2 + i * std::numbers::pi / pontas;
        const double raio = (i % 2 == 0) ? R : R * interno;
        pts << QPointF(c.x() + raio * std::cos(a), c.y() + raio * std::sin(a));
    }
    return pts;
}

} // namespace

void DesenhaPeca(QPainter& p, const QRectF& r, int codigo) {
    int lado = 0;
    bool dama = false;
    switch (codigo) {
    case 1:
        lado = 1;
        break;
    case 10:
        lado = 1, dama = true;
        break;
    case 2:
        lado = 2;
        break;
    case 20:
        lado = 2, dama = true;
        break;
    default:
        return;
    }
    const CoresPeca c = CoresDoLado(lado);
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF peca =
        r.adjusted(r.width() * 0.1, r.height() * 0.1, -r.width() * 0.1, -r.height() * 0.1);
    // a shadow below, then the body with its light from the upper left
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 70));
    p.drawEllipse(peca.translated(r.width() * 0.03, r.height() * 0.05));
    QRadialGradient luz(peca.left() + peca.width() * 0.35, peca.top() + peca.height() * 0.3,
                        peca.width() * 0.75);
    luz.setColorAt(0, c.clara);
    luz.setColorAt(1, c.escura);
    p.setBrush(luz);
    p.setPen(QPen(c.aro, std::max(1.0, peca.width() / 28)));
    p.drawEllipse(peca);
    // the grooves of a draughts piece
    p.setBrush(Qt::NoBrush);
    p.setPen(QPen(c.aro.lighter(lado == 1 ? 115 : 180), std::max(0.8, peca.width() / 40)));
    const double d1 = peca.width() * 0.14, d2 = peca.width() * 0.26;
    p.drawEllipse(peca.adjusted(d1, d1, -d1, -d1));
    if (!dama)
        p.drawEllipse(peca.adjusted(d2, d2, -d2, -d2));
    else {
        const QRectF coroa(peca.left() + peca.width() * 0.28, peca.top() + peca.height() * 0.32,
                           peca.width() * 0.44, peca.height() * 0.34);
        DesenhaCoroa(p, coroa, c.coroa);
    }
    p.restore();
}

void DesenhaLampada(QPainter& p, const QRectF& r, bool acesa) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    QRadialGradient g(r.center() - QPointF(r.width() * 0.15, r.height() * 0.15), r.width() * 0.6);
    if (acesa) {
        g.setColorAt(0, QColor(0xE8, 0xFF, 0xD8));
        g.setColorAt(0.5, QColor(0x3C, 0xD0, 0x4A));
        g.setColorAt(1, QColor(0x11, 0x6B, 0x1B));
    } else {
        g.setColorAt(0, QColor(0xC8, 0xC8, 0xC8));
        g.setColorAt(1, QColor(0x55, 0x55, 0x55));
    }
    p.setBrush(g);
    p.setPen(QPen(QColor(0x33, 0x33, 0x33), 1));
    p.drawEllipse(r.adjusted(1, 1, -1, -1));
    p.restore();
}

void DesenhaEstrela(QPainter& p, const QRectF& r, bool ouro) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(ouro ? QColor(0xF5, 0xC2, 0x18) : QColor(0xB8, 0xC4, 0xD0));
    p.setPen(QPen(ouro ? QColor(0x9A, 0x6B, 0x00) : QColor(0x5A, 0x66, 0x72), 1));
    p.drawPolygon(Estrela(r.adjusted(1, 1, -1, -1), 5, 0.45));
    p.restore();
}

void DesenhaMedalha(QPainter& p, const QRectF& r) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    const double w = r.width(), h = r.height();
    // ribbon
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x1F, 0x4E, 0xA8));
    p.drawPolygon(
        QPolygonF{{QPointF(r.left() + w * 0.2, r.top()), QPointF(r.left() + w * 0.45, r.top()),
                   QPointF(r.left() + w * 0.6, r.top() + h * 0.45),
                   QPointF(r.left() + w * 0.4, r.top() + h * 0.5)}});
    p.setBrush(QColor(0xC0, 0x27, 0x2D));
    p.drawPolygon(
        QPolygonF{{QPointF(r.left() + w * 0.55, r.top()), QPointF(r.left() + w * 0.8, r.top()),
                   QPointF(r.left() + w * 0.6, r.top() + h * 0.5),
                   QPointF(r.left() + w * 0.4, r.top() + h * 0.45)}});
    // the disc
    const QRectF disco(r.left() + w * 0.15, r.top() + h * 0.35, w * 0.7, h * 0.62);
    QRadialGradient g(disco.center() - QPointF(w * 0.1, h * 0.1), w * 0.5);
    g.setColorAt(0, QColor(0xFF, 0xF1, 0xA8));
    g.setColorAt(1, QColor(0xC9, 0x8E, 0x10));
    p.setBrush(g);
    p.setPen(QPen(QColor(0x8A, 0x5A, 0x00), 1));
    p.drawEllipse(disco);
    p.setBrush(QColor(0xFF, 0xE0, 0x66));
    p.drawPolygon(Estrela(disco.adjusted(w * 0.14, h * 0.12, -w * 0.14, -h * 0.12), 5, 0.45));
    p.restore();
}

void DesenhaIcone(QPainter& p, const QRectF& r0, Icone icone, const QColor& cor0, bool realce) {
    p.save();
    p.setRenderHint(QPainter::Antialiasing);
    const QColor cor = realce ? cor0.lighter(140) : cor0;
    if (realce) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(255, 255, 255, 40));
        p.drawRoundedRect(r0, 4, 4);
    }
    const QRectF r =
        r0.adjusted(r0.width() * 0.18, r0.height() * 0.18, -r0.width() * 0.18, -r0.height() * 0.18);
    const double x = r.left(), y = r.top(), w = r.width(), h = r.height();
    const double traco = std::max(1.4, w / 9);
    QPen pen(cor, traco, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    auto seta = [&](double x0, bool paraDireita) {
        QPolygonF t;
        if (paraDireita)
            t << QPointF(x0, y + h * 0.15) << QPointF(x0 + w * 0.4, y + h / 2)
              << QPointF(x0, y + h * 0.85);
        else
            t << QPointF(x0 + w * 0.4, y + h * 0.15) << QPointF(x0, y + h / 2)
              << QPointF(x0 + w * 0.4, y + h * 0.85);
        p.setBrush(cor);
        p.setPen(Qt::NoPen);
        p.drawPolygon(t);
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
    };
    switch (icone) {
    case Icone::NovoJogo: {
        // two pieces, one on the other, and a plus
        DesenhaPeca(p, QRectF(x - w * 0.1, y + h * 0.25, w * 0.8, h * 0.8), 2);
        DesenhaPeca(p, QRectF(x + w * 0.15, y - h * 0.05, w * 0.8, h * 0.8), 1);
        break;
    }
    case Icone::Recordes: {
        // a cup
        QPainterPath taca;
        taca.moveTo(x + w * 0.2, y);
        taca.lineTo(x + w * 0.8, y);
        taca.cubicTo(x + w * 0.8, y + h * 0.55, x + w * 0.6, y + h * 0.6, x + w * 0.5,
                     y + h * 0.62);
        taca.cubicTo(x + w * 0.4, y + h * 0.6, x + w * 0.2, y + h * 0.55, x + w * 0.2, y);
        p.setBrush(cor);
        p.drawPath(taca);
        p.setBrush(Qt::NoBrush);
        p.drawArc(QRectF(x, y + h * 0.05, w * 0.3, h * 0.3), 90 * 16, 180 * 16);
        p.drawArc(QRectF(x + w * 0.7, y + h * 0.05, w * 0.3, h * 0.3), 270 * 16, 180 * 16);
        p.drawLine(QPointF(x + w * 0.5, y + h * 0.62), QPointF(x + w * 0.5, y + h * 0.85));
        p.drawLine(QPointF(x + w * 0.25, y + h), QPointF(x + w * 0.75, y + h));
        break;
    }
    case Icone::Opcoes: {
        // a gear
        const QPointF c = r.center();
        const double R = w / 2, ri = w * 0.36;
        QPolygonF dentes;
        for (int i = 0; i < 32; ++i) {
            const double a = i * std::numbers::pi / 16;
            const double raio = (i / 2) % 2 == 0 ? R : ri;
            dentes << QPointF(c.x() + raio * std::cos(a), c.y() + raio * std::sin(a));
        }
        QPainterPath roda;
        roda.setFillRule(Qt::OddEvenFill);
        roda.addPolygon(dentes);
        roda.closeSubpath();
        roda.addEllipse(c, w * 0.15, w * 0.15);
        p.setBrush(cor);
        p.setPen(Qt::NoPen);
        p.drawPath(roda);
        break;
    }
    case Icone::Sobre:
    case Icone::Ajuda: {
        p.drawEllipse(r);
        QFont f = p.font();
        f.setBold(true);
        f.setPixelSize(static_cast<int>(h * 0.7));
        p.setFont(f);
        p.drawText(r, Qt::AlignCenter, icone == Icone::Sobre ? "i" : "?");
        break;
    }
    case Icone::Ranking: {
        p.setBrush(cor);
        p.drawRect(QRectF(x, y + h * 0.5, w * 0.3, h * 0.5));
        p.drawRect(QRectF(x + w * 0.35, y + h * 0.2, w * 0.3, h * 0.8));
        p.drawRect(QRectF(x + w * 0.7, y + h * 0.65, w * 0.3, h * 0.35));
        break;
    }
    case Icone::Primeira:
        p.drawLine(QPointF(x + w * 0.05, y + h * 0.15), QPointF(x + w * 0.05, y + h * 0.85));
        seta(x + w * 0.12, false);
        seta(x + w * 0.5, false);
        break;
    case Icone::Anterior:
        seta(x + w * 0.3, false);
        break;
    case Icone::Proxima:
        seta(x + w * 0.3, true);
        break;
    case Icone::Ultima:
        seta(x + w * 0.05, true);
        seta(x + w * 0.43, true);
        p.drawLine(QPointF(x + w * 0.95, y + h * 0.15), QPointF(x + w * 0.95, y + h * 0.85));
        break;
    case Icone::Minimizar:
        p.drawLine(QPointF(x + w * 0.1, y + h * 0.8), QPointF(x + w * 0.9, y + h * 0.8));
        break;
    case Icone::TelaCheia:
        p.drawRect(QRectF(x + w * 0.1, y + h * 0.15, w * 0.8, h * 0.7));
        p.drawLine(QPointF(x + w * 0.1, y + h * 0.3), QPointF(x + w * 0.9, y + h * 0.3));
        break;
    case Icone::Fechar:
        p.drawLine(QPointF(x + w * 0.15, y + h * 0.15), QPointF(x + w * 0.85, y + h * 0.85));
        p.drawLine(QPointF(x + w * 0.85, y + h * 0.15), QPointF(x + w * 0.15, y + h * 0.85));
        break;
    case Icone::Torneio: {
        p.setBrush(cor);
        p.drawPolygon(Estrela(r, 5, 0.45));
        break;
    }
    case Icone::Niveis:
        for (int i = 0; i < 3; ++i) {
            const double alto = h * (0.35 + 0.3 * i);
            p.setBrush(cor);
            p.drawRect(QRectF(x + i * w * 0.36, y + h - alto, w * 0.26, alto));
        }
        break;
    }
    p.restore();
}

} // namespace velmora::ui
