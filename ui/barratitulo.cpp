#include "ui/barratitulo.h"

#include <QEnterEvent>
#include <QLinearGradient>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>

namespace velmora::ui {

// ---------------------------------------------------------------- title bar

BarraTitulo::BarraTitulo(const QString& titulo, QWidget* pai) : QWidget(pai), titulo_(titulo) {
    setFixedHeight(30);
}

void BarraTitulo::DefineTitulo(const QString& titulo) {
    titulo_ = titulo;
    update();
}

void BarraTitulo::paintEvent(QPaintEvent*) {
    QPainter p(this);
    QLinearGradient g(0, 0, 0, height());
    g.setColorAt(0, paleta::Barra.lighter(135));
    g.setColorAt(1, paleta::Barra);
    p.fillRect(rect(), g);
    p.setPen(Qt::white);
    QFont f = font();
    f.setBold(true);
    f.setPixelSize(14);
    p.setFont(f);
    p.drawText(rect().adjusted(12, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, titulo_);
}

void BarraTitulo::mousePressEvent(QMouseEvent* e) {
    if (e->button() != Qt::LeftButton) return;
    // The window manager moves the window where it can; elsewhere the bar moves it.
    if (QWindow* w = window()->windowHandle(); w && w->startSystemMove()) return;
    arrastando_ = true;
    inicio_ = e->globalPosition().toPoint() - window()->frameGeometry().topLeft();
}

void BarraTitulo::mouseMoveEvent(QMouseEvent* e) {
    if (arrastando_ && (e->buttons() & Qt::LeftButton))
        window()->move(e->globalPosition().toPoint() - inicio_);
}

void BarraTitulo::mouseReleaseEvent(QMouseEvent*) {
    arrastando_ = false;
}

// ---------------------------------------------------------------- picture button

BotaoIcone::BotaoIcone(Icone icone, QColor cor, const QString& dica, QWidget* pai)
    : QWidget(pai), icone_(icone), cor_(std::move(cor)) {
    setToolTip(dica);
    setAccessibleName(dica);
    setCursor(Qt::PointingHandCursor);
    setFixedSize(34, 34);
}

void BotaoIcone::DefineRealce(bool realce) {
    if (realce_ == realce) return;
    realce_ = realce;
    update();
}

void BotaoIcone::paintEvent(QPaintEvent*) {
    QPainter p(this);
    QColor cor = cor_;
    if (!isEnabled()) cor = QColor(0x9A, 0x9A, 0x9A);
    DesenhaIcone(p, QRectF(rect()), icone_, cor, realce_ && isEnabled());
}

void BotaoIcone::enterEvent(QEnterEvent*) {
    DefineRealce(true);
}
void BotaoIcone::leaveEvent(QEvent*) {
    DefineRealce(false);
}

void BotaoIcone::changeEvent(QEvent* e) {
    if (e->type() == QEvent::EnabledChange) update();
    QWidget::changeEvent(e);
}

void BotaoIcone::mousePressEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton)
        emit clicado();
    else if (e->button() == Qt::RightButton)
        emit clicadoDireito();
}

void BotaoIcone::mouseDoubleClickEvent(QMouseEvent* e) {
    if (duploComoClique_ && e->button() == Qt::LeftButton) emit clicado();
}

// ---------------------------------------------------------------- label button

Rotulo::Rotulo(const QString& texto, QWidget* pai) : QWidget(pai), texto_(texto) {
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(texto);
    setMinimumHeight(26);
}

void Rotulo::DefineTexto(const QString& texto) {
    if (texto_ == texto) return;
    texto_ = texto;
    setAccessibleName(texto);
    updateGeometry();
    update();
}

void Rotulo::DefineCinza(bool cinza) {
    if (cinza_ == cinza) return;
    cinza_ = cinza;
    update();
}

void Rotulo::DefineDestaque(bool destaque) {
    destaque_ = destaque;
    update();
}

QSize Rotulo::sizeHint() const {
    QFont f = font();
    f.setBold(true);
    const QFontMetrics m(f);
    return {m.horizontalAdvance(texto_) + 24, std::max(26, m.height() + 10)};
}

void Rotulo::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const bool ativo = isEnabled() && !cinza_;
    QColor fundo = destaque_ ? paleta::Destaque : paleta::Barra;
    if (!ativo)
        fundo = QColor(0xB4, 0xB4, 0xB4);
    else if (sobre_)
        fundo = fundo.lighter(125);
    p.setPen(Qt::NoPen);
    p.setBrush(fundo);
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 5, 5);
    QFont f = font();
    f.setBold(true);
    p.setFont(f);
    p.setPen(ativo ? Qt::white : QColor(0xEE, 0xEE, 0xEE));
    p.drawText(rect(), Qt::AlignCenter, texto_);
}

void Rotulo::enterEvent(QEnterEvent*) {
    sobre_ = true;
    update();
}

void Rotulo::leaveEvent(QEvent*) {
    sobre_ = false;
    update();
}

void Rotulo::mousePressEvent(QMouseEvent* e) {
    if (e->button() == Qt::LeftButton) emit clicado();
}

void Rotulo::mouseDoubleClickEvent(QMouseEvent* e) {
    if (duploComoClique_ && e->button() == Qt::LeftButton) emit clicado();
}

} // namespace velmora::ui
