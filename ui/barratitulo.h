#pragma once
// The title bar the windows draw themselves: dragging it with the left button moves the
// window; it may hold the window's own buttons at its right.
#include "ui/desenhos.h"

#include <QPoint>
#include <QWidget>

namespace velmora::ui {

class BarraTitulo : public QWidget {
    Q_OBJECT
  public:
    explicit BarraTitulo(const QString& titulo, QWidget* pai = nullptr);
    void DefineTitulo(const QString& titulo);
    QString Titulo() const { return titulo_; }

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseMoveEvent(QMouseEvent*) override;
    void mouseReleaseEvent(QMouseEvent*) override;

  private:
    QString titulo_;
    bool arrastando_ = false;
    QPoint inicio_;
};

// A picture button: an icon drawn by code, its hover picture, a click and (when asked) a
// double click that counts as a click.
class BotaoIcone : public QWidget {
    Q_OBJECT
  public:
    BotaoIcone(Icone icone, QColor cor, const QString& dica, QWidget* pai = nullptr);
    void DefineDuploComoClique(bool sim) { duploComoClique_ = sim; }
    bool Realcado() const { return realce_; }
    void DefineRealce(bool realce);

  signals:
    void clicado();
    void clicadoDireito();

  protected:
    void paintEvent(QPaintEvent*) override;
    void enterEvent(QEnterEvent*) override;
    void leaveEvent(QEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;
    void changeEvent(QEvent*) override;

  private:
    Icone icone_;
    QColor cor_;
    bool realce_ = false;
    bool duploComoClique_ = false;
};

// A label that acts as a button (the windows' "Novo jogo", "JOGAR"...): it reacts to the
// left button, draws grey when disabled or when painted grey, and underlines on hover.
class Rotulo : public QWidget {
    Q_OBJECT
  public:
    explicit Rotulo(const QString& texto, QWidget* pai = nullptr);
    void DefineTexto(const QString& texto);
    QString Texto() const { return texto_; }
    // Painted grey while still enabled (the window decides what a grey label means).
    void DefineCinza(bool cinza);
    bool Cinza() const { return cinza_; }
    void DefineDuploComoClique(bool sim) { duploComoClique_ = sim; }
    void DefineDestaque(bool destaque);
    QSize sizeHint() const override;

  signals:
    void clicado();

  protected:
    void paintEvent(QPaintEvent*) override;
    void enterEvent(QEnterEvent*) override;
    void leaveEvent(QEvent*) override;
    void mousePressEvent(QMouseEvent*) override;
    void mouseDoubleClickEvent(QMouseEvent*) override;

  private:
    QString texto_;
    bool cinza_ = false;
    bool sobre_ = false;
    bool destaque_ = false;
    bool duploComoClique_ = false;
};

} // namespace velmora::ui
