#include "ui/progressbarxp.h"

#include <QPainter>
#include <QPalette>
#include <QTransform>
#include <algorithm>
#include <cmath>

namespace velmora::ui {

namespace {

QRgb Rgb(std::uint32_t valor) {
    return qRgb(static_cast<int>(valor & 0xFF), static_cast<int>(valor >> 8 & 0xFF),
                static_cast<int>(valor >> 16 & 0xFF));
}

void Ponto(QImage& img, int x, int y, QRgb c) {
    if (x >= 0 && y >= 0 && x < img.width() && y < img.height()) img.setPixel(x, y, c);
}

// A line of width 1 from (x1, y) towards (x2, y), its last point left out.
void LinhaH(QImage& img, int x1, int x2, int y, QRgb c) {
    const int passo = x2 >= x1 ? 1 : -1;
    for (int x = x1; x != x2; x += passo) Ponto(img, x, y, c);
}

void LinhaV(QImage& img, int x, int y1, int y2, QRgb c) {
    const int passo = y2 >= y1 ? 1 : -1;
    for (int y = y1; y != y2; y += passo) Ponto(img, x, y, c);
}

// A filled rectangle from (x1, y1) to (x2, y2), right and bottom edges left out.
void Caixa(QImage& img, int x1, int y1, int x2, int y2, QRgb c) {
    for (int y = std::max(y1, 0); y < std::min(y2, img.height()); ++y)
        for (int x = std::max(x1, 0); x < std::min(x2, img.width()); ++x) img.setPixel(x, y, c);
}

// The outline of the rectangle from (x1, y1) to (x2, y2), right and bottom edges included
// as its last row and column.
void Moldura(QImage& img, int x1, int y1, int x2, int y2, QRgb c) {
    for (int x = x1; x < x2; ++x) {
        Ponto(img, x, y1, c);
        Ponto(img, x, y2 - 1, c);
    }
    for (int y = y1; y < y2; ++y) {
        Ponto(img, x1, y, c);
        Ponto(img, x2 - 1, y, c);
    }
}

// The colour of step k of n between two colours, each channel by whole steps.
QRgb Passo(QRgb a, QRgb b, int k, int n) {
    if (n <= 1) return a;
    const auto canal = [&](int ca, int cb) { return ca + (cb - ca) * k / (n - 1); };
    return qRgb(canal(qRed(a), qRed(b)), canal(qGreen(a), qGreen(b)), canal(qBlue(a), qBlue(b)));
}

// n horizontal lines from row y down, from x1 to x2, running from colour a to colour b.
void Degrade(QImage& img, int x1, int x2, int y, int n, QRgb a, QRgb b) {
    for (int k = 0; k < n; ++k) LinhaH(img, x1, x2, y + k, Passo(a, b, k, n));
}

// The same colours across columns, for a fill from x1 to x2 over rows y1 to y2.
void DegradeColunas(QImage& img, int x1, int x2, int y1, int y2, QRgb a, QRgb b) {
    const int n = x2 - x1;
    for (int k = 0; k < n; ++k) LinhaV(img, x1 + k, y1, y2, Passo(a, b, k, n));
}

QRgb Mistura(QRgb a, QRgb b) {
    return qRgb((qRed(a) + qRed(b)) / 2, (qGreen(a) + qGreen(b)) / 2, (qBlue(a) + qBlue(b)) / 2);
}

Qt::BrushStyle Hachura(std::int32_t estilo) {
    switch (estilo) {
    case 0:
        return Qt::HorPattern;
    case 1:
        return Qt::VerPattern;
    case 2:
        return Qt::FDiagPattern;
    case 3:
        return Qt::BDiagPattern;
    case 5:
        return Qt::DiagCrossPattern;
    default:
        return Qt::CrossPattern;
    }
}

} // namespace

ProgressBarXP::ProgressBarXP(QWidget* pai) : QWidget(pai) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    DrawProgressBar();
}

std::uint32_t ProgressBarXP::Shade(std::uint32_t cor, int k) {
    k = std::clamp(k, 0, 255);
    std::uint32_t r = 0;
    for (int desloca : {0, 8, 16}) {
        const int c = static_cast<int>(cor >> desloca & 0xFF);
        const int v = std::min(255, k + c * (255 - k) / 255);
        r |= static_cast<std::uint32_t>(v) << desloca;
    }
    return r;
}

QColor ProgressBarXP::Cor(std::uint32_t valor) const {
    if (!(valor & 0x80000000u)) return QColor(Rgb(valor));
    switch (valor & 0xFF) {
    case 5:
        return palette().color(QPalette::Base);
    case 8:
        return palette().color(QPalette::WindowText);
    case 14:
        return palette().color(QPalette::HighlightedText);
    case 15:
        return palette().color(QPalette::Button);
    default:
        return palette().color(QPalette::Highlight);
    }
}

void ProgressBarXP::Value(std::int32_t valor) {
    const std::int64_t p =
        max_ != 0 ? static_cast<std::int64_t>(valor) * 100 / max_ + min_ : std::int64_t{min_};
    percentagem_ = static_cast<std::int32_t>(std::clamp<std::int64_t>(p, INT32_MIN, INT32_MAX));
    DrawProgressBar();
}

std::int32_t ProgressBarXP::Value() const {
    double v = percentagem_ / 100.0 * max_;
    if (min_ >= 1) v /= min_;
    return static_cast<std::int32_t>(std::lround(v));
}

void ProgressBarXP::Min(std::int32_t v) {
    min_ = v;
    DrawProgressBar();
}
void ProgressBarXP::Max(std::int32_t v) {
    max_ = v;
    DrawProgressBar();
}
void ProgressBarXP::Color(std::uint32_t c) {
    cor_ = c;
    DrawProgressBar();
}
void ProgressBarXP::BrushStyle(std::int32_t v) {
    hachura_ = v;
    DrawProgressBar();
}
void ProgressBarXP::Image(const QImage& imagem) {
    padrao_ = imagem;
    DrawProgressBar();
}
void ProgressBarXP::Orientation(std::int32_t v) {
    orientacao_ = v;
    DrawProgressBar();
}
void ProgressBarXP::Scrolling(std::int32_t v) {
    estilo_ = v;
    DrawProgressBar();
}
void ProgressBarXP::ShowText(bool v) {
    mostraTexto_ = v;
    DrawProgressBar();
}
void ProgressBarXP::Font(const QFont& f) {
    fonte_ = f;
    DrawProgressBar();
}

void ProgressBarXP::DesenhaBlocos(QImage& img, bool finos, bool lacunas) const {
    const int W = img.width(), H = img.height();
    const int pct = std::min(percentagem_, 100);
    const QRgb cor = Cor(cor_).rgb();
    const std::uint32_t valor = cor & 0xFFFFFF;
    const QRgb palida = Rgb(Shade(RGB(qRed(valor), qGreen(valor), qBlue(valor)), 150));
    const QRgb fundo = estilo_ == 6 ? Mistura(cor, qRgb(255, 255, 255)) : cor;

    const int esquerda = 3;
    const int passo = finos ? 4 : 8;
    const int bruto =
        esquerda + static_cast<int>(static_cast<std::int64_t>(W - esquerda) * pct / 98);
    int fim = bruto - (bruto - esquerda) % passo;
    if (fim < esquerda) fim = esquerda;
    if (fim < 15) fim = 12;
    const int L = fim + 4 > W ? fim - 4 : fim;

    Degrade(img, 4, L, 3, 6, palida, fundo);
    Caixa(img, 4, 8, L, H - 8, fundo);
    Degrade(img, 4, L, H - 10, 6, fundo, palida);

    if (lacunas)
        for (int x = esquerda + 6; x <= fim; x += 8)
            Caixa(img, x + 1, 0, x + 3, H, qRgb(255, 255, 255));

    const QRgb escuro = Rgb(0xBEBEBE), claro = Rgb(0xEFEFEF);
    LinhaH(img, 2, W - 2, 1, escuro);
    LinhaH(img, 2, W - 2, H - 2, claro);
    LinhaV(img, 1, 2, H - 2, escuro);
    LinhaV(img, 2, 2, H - 2, claro);
    LinhaH(img, 2, W - 2, 2, claro);
    LinhaV(img, W - 2, 2, H - 2, claro);
    Moldura(img, 0, 0, W, H, Rgb(0x686868));

    struct Canto {
        int x, y;
        std::uint32_t cor;
    };
    const Canto cantos[] = {// top left
                            {0, 0, 0xFFFFFF},
                            {0, 1, 0xA6ABAC},
                            {0, 2, 0x7D7E7F},
                            {1, 0, 0xA7ABAC},
                            {1, 1, 0x777777},
                            {2, 0, 0x7D7E7F},
                            {2, 2, 0xBEBEBE},
                            // bottom left
                            {0, H - 1, 0xFFFFFF},
                            {1, H - 1, 0xA6ABAC},
                            {2, H - 1, 0x7D7E7F},
                            {0, H - 3, 0x7D7E7F},
                            {0, H - 2, 0xA7ABAC},
                            {1, H - 2, 0x777777},
                            // top right
                            {W - 1, 0, 0xFFFFFF},
                            {W - 1, 1, 0xBEBEBE},
                            {W - 1, 2, 0x7D7E7F},
                            {W - 2, 2, 0xBEBEBE},
                            {W - 2, 1, 0xBEBEBE},
                            // bottom right
                            {W - 1, H - 1, 0xFFFFFF},
                            {W - 1, H - 2, 0xBEBEBE},
                            {W - 2, H - 1, 0xBEBEBE},
                            {W - 1, H - 3, 0x7D7E7F},
                            {W - 2, H - 2, 0x777777},
                            {W - 3, H - 1, 0x7D7E7F}};
    for (const Canto& c : cantos) Ponto(img, c.x, c.y, Rgb(c.cor));
}

void ProgressBarXP::DesenhaPlano(QImage& img) const {
    const int W = img.width(), H = img.height();
    const int pct = std::clamp(percentagem_, 0, 100);
    const QColor base = Cor(cor_);
    const std::uint32_t valor = RGB(base.red(), base.green(), base.blue());
    const auto tom = [&](int k) { return Rgb(Shade(valor, k)); };
    // styles 5, 7 and 8 fill percentage / 101 of the width
    const int cheio = estilo_ == 5 || estilo_ == 7 || estilo_ == 8 ? W * pct / 101 : W * pct / 100;
    QPainter p(&img);
    switch (estilo_) {
    case 3:
        Moldura(img, 0, 0, W, H, tom(100));
        Caixa(img, 1, 1, std::min(cheio, W - 1), H - 1, tom(180));
        break;
    case 4:
        DegradeColunas(img, 0, cheio, 0, H, tom(200), tom(0));
        break;
    case 5:
        DegradeColunas(img, 0, W, 0, H, tom(100), tom(230));
        DegradeColunas(img, 0, cheio, 0, H, tom(250), tom(120));
        LinhaV(img, std::max(cheio - 1, 0), 0, H, tom(25));
        Moldura(img, 0, 0, W, H, tom(10));
        break;
    case 6:
        DegradeColunas(img, 1, cheio, 1, H - 1, Mistura(base.rgb(), qRgb(255, 255, 255)),
                       base.rgb());
        break;
    case 7:
        p.fillRect(QRect(2, 2, std::max(cheio - 4, 0), H - 4), QBrush(base, Hachura(hachura_)));
        p.setPen(QColor(0x80, 0x80, 0x80));
        p.drawLine(0, 0, W - 1, 0);
        p.drawLine(0, 0, 0, H - 1);
        p.setPen(Qt::white);
        p.drawLine(0, H - 1, W - 1, H - 1);
        p.drawLine(W - 1, 0, W - 1, H - 1);
        break;
    case 8:
        if (!padrao_.isNull())
            p.fillRect(QRect(2, 2, std::max(cheio - 4, 0), H - 4), QBrush(padrao_));
        p.setPen(Qt::white);
        p.drawLine(0, 0, W - 1, 0);
        p.drawLine(0, 0, 0, H - 1);
        p.setPen(QColor(0x80, 0x80, 0x80));
        p.drawLine(0, H - 1, W - 1, H - 1);
        p.drawLine(W - 1, 0, W - 1, H - 1);
        break;
    default: { // 9: blends with grey
        const QRgb cinza = qRgb(0xC0, 0xC0, 0xC0);
        Degrade(img, 1, cheio, 1, std::max(H / 2 - 1, 1), Mistura(tom(150), cinza),
                Mistura(tom(180), cinza));
        Degrade(img, 1, cheio, H / 2, std::max(H - H / 2 - 1, 1), Mistura(tom(180), cinza),
                Mistura(tom(190), base.rgb()));
        Moldura(img, 0, 0, W, H, cinza);
        break;
    }
    }
}

void ProgressBarXP::DesenhaTexto(QImage& img) const {
    if (!mostraTexto_) return;
    QPainter p(&img);
    p.setFont(fonte_);
    const QString texto = estilo_ == 2 ? QStringLiteral("Searching..")
                                       : QString::number(std::min(percentagem_, 100)) + " %";
    if (estilo_ == 6 || estilo_ == 9) {
        // drawn twice: once in grey, once inverting what it covers over the fill
        p.setPen(QColor(0xC0, 0xC0, 0xC0));
        p.drawText(img.rect(), Qt::AlignCenter, texto);
        p.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        p.setPen(Qt::white);
        p.drawText(img.rect(), Qt::AlignCenter, texto);
        return;
    }
    p.setPen(Qt::black);
    p.drawText(img.rect(), Qt::AlignCenter, texto);
}

void ProgressBarXP::DrawProgressBar() {
    const bool empe = orientacao_ != 0;
    const int W = std::max(empe ? height() : width(), 1);
    const int H = std::max(empe ? width() : height(), 1);
    QImage img(W, H, QImage::Format_RGB32);
    img.fill(estilo_ == 6 ? qRgb(0, 0, 0) : qRgb(255, 255, 255));
    if (estilo_ <= 2)
        DesenhaBlocos(img, estilo_ == 1 || estilo_ == 2, estilo_ == 0);
    else
        DesenhaPlano(img);
    // standing on its end, the bar fills from the bottom
    if (empe) img = img.transformed(QTransform().rotate(-90));
    DesenhaTexto(img);
    imagem_ = std::move(img);
    update();
}

void ProgressBarXP::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.drawImage(rect(), imagem_);
}

void ProgressBarXP::resizeEvent(QResizeEvent*) {
    DrawProgressBar();
}

} // namespace velmora::ui
