#pragma once
// The 64 squares of the board window, drawn from the view-model: the piece in each cell
// (imgpd), the marked squares, and the flying piece of the animation. Clicks come back as
// square numbers; for a "Cliente" the layout is mirrored (cell k takes the place of 101 - k).
#include "core/painel.h"

#include <QWidget>

namespace velmora::ui {

class VistaTabuleiro : public QWidget {
    Q_OBJECT
  public:
    explicit VistaTabuleiro(const Painel& painel, QWidget* pai = nullptr);

    void DefineEspelhado(bool espelhado);
    bool Espelhado() const { return espelhado_; }
    // The rectangle of a square in this widget, in the layout in force.
    QRectF RetanguloCasa(int casa) const;
    // The square under a point, 0 off the board.
    int CasaEm(QPointF ponto) const;

  signals:
    void casaPressionada(int casa, Qt::MouseButton botao);
    void casaDuploClique(int casa);

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;

  private:
    double Lado() const;
    QRectF RetanguloCelula(double coluna, double linha, double largura, double altura) const;

    const Painel& painel_;
    bool espelhado_ = false;
};

} // namespace velmora::ui
