#include "ui/vistatabuleiro.h"

#include "core/casas.h"
#include "ui/desenhos.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace velmora::ui {

VistaTabuleiro::VistaTabuleiro(const Painel& painel, QWidget* pai) : QWidget(pai), painel_(painel) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(160, 160);
}

void VistaTabuleiro::DefineEspelhado(bool espelhado) {
    if (espelhado_ == espelhado) return;
    espelhado_ = espelhado;
    update();
}

double VistaTabuleiro::Lado() const {
    return std::min(width(), height()) / 8.0;
}

QRectF VistaTabuleiro::RetanguloCelula(double coluna, double linha, double largura,
                                       double altura) const {
    // coluna and linha as in the layout of a "Servidor": 0, 0 is square 12, top left
    if (espelhado_) {
        coluna = 8 - coluna - largura;
        linha = 8 - linha - altura;
    }
    const double l = Lado();
    return {coluna * l, linha * l, largura * l, altura * l};
}

QRectF VistaTabuleiro::RetanguloCasa(int casa) const {
    if (!CasaDoTabuleiro(casa)) return {};
    return RetanguloCelula(casa % 10 - 2, casa / 10 - 1, 1, 1);
}

int VistaTabuleiro::CasaEm(QPointF ponto) const {
    const double l = Lado();
    if (ponto.x() < 0 || ponto.y() < 0 || ponto.x() >= 8 * l || ponto.y() >= 8 * l) return 0;
    int coluna = static_cast<int>(ponto.x() / l), linha = static_cast<int>(ponto.y() / l);
    if (espelhado_) {
        coluna = 7 - coluna;
        linha = 7 - linha;
    }
    return 10 * (linha + 1) + coluna + 2;
}

void VistaTabuleiro::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), paleta::Moldura);
    const double l = Lado();
    QFont fonte = font();
    fonte.setPixelSize(std::max(8, static_cast<int>(l * 0.16)));
    fonte.setBold(true);
    p.setFont(fonte);
    for (int casa = 12; casa <= 89; ++casa) {
        if (!CasaDoTabuleiro(casa)) continue;
        const QRectF r = RetanguloCasa(casa);
        const bool clara = CasaClara(casa);
        p.fillRect(r, clara ? paleta::CasaClara : paleta::CasaEscura);
        if (painel_.Marcadas[casa]) {
            p.save();
            p.setRenderHint(QPainter::Antialiasing);
            QColor fundo = paleta::Marca;
            fundo.setAlpha(110);
            p.fillRect(r, fundo);
            p.setPen(QPen(paleta::Marca.lighter(130), std::max(2.0, l / 16)));
            p.drawRect(r.adjusted(l / 20, l / 20, -l / 20, -l / 20));
            p.restore();
        }
        // the coordinates along the edge that stands at the bottom and at the left
        const QPointF c = r.topLeft();
        const bool naBase = r.bottom() >= 8 * l - 1, naEsquerda = c.x() < 1;
        const QString nome = QString::fromStdString(NomeCasa(casa));
        p.setPen(clara ? paleta::CasaEscura : paleta::CasaClara);
        if (naBase)
            p.drawText(r.adjusted(0, 0, -l * 0.06, -l * 0.02), Qt::AlignRight | Qt::AlignBottom,
                       nome.left(1));
        if (naEsquerda)
            p.drawText(r.adjusted(l * 0.05, l * 0.02, 0, 0), Qt::AlignLeft | Qt::AlignTop,
                       nome.mid(1));
        DesenhaPeca(p, r, painel_.imgpd[casa]);
    }
    const ImagemMovel& m = painel_.ImgMove;
    if (m.Visivel) DesenhaPeca(p, RetanguloCelula(m.Esquerda, m.Topo, m.Largura, m.Altura), m.Peca);
}

void VistaTabuleiro::mousePressEvent(QMouseEvent* e) {
    const int casa = CasaEm(e->position());
    if (casa) emit casaPressionada(casa, e->button());
}

void VistaTabuleiro::mouseDoubleClickEvent(QMouseEvent* e) {
    const int casa = CasaEm(e->position());
    if (casa) emit casaDuploClique(casa);
}

} // namespace velmora::ui
