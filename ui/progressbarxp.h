#pragma once
// ProgressBarXP: a drawn progress bar with rounded corners and blocks, in ten styles
// (Scrolling 0 to 9). Everything is drawn into an off-screen picture of the control's size,
// which the widget copies to the screen; every setter redraws at once.
//
// Colours are colour values as the drawing rules give them: 0x00BBGGRR (blue in the high
// byte, RGB(r, g, b) builds one), and a value with the top bit set names a system colour by
// the index in its low bits (0x8000000D, the default, is the selection's colour).
//
// Style 0, the one the update window shows: blocks 6 pixels wide with gaps of 2, the fill
// running from a pale shade of the colour at the top and bottom to the colour itself in
// the middle, a grey frame with rounded corners. Lines end before their last point and
// rectangles before their right and bottom edges, as in the drawing layer the rules come
// from; a gradient of n lines runs from its first colour on the first line to its last on
// the last, each channel by whole steps.
#include "net/dl.h"

#include <QFont>
#include <QImage>
#include <QWidget>
#include <cstdint>

namespace velmora::ui {

constexpr std::uint32_t RGB(int r, int g, int b) {
    return static_cast<std::uint32_t>(r & 0xFF) | static_cast<std::uint32_t>(g & 0xFF) << 8 |
           static_cast<std::uint32_t>(b & 0xFF) << 16;
}

class ProgressBarXP : public QWidget, public ObjetoProgresso {
    Q_OBJECT
  public:
    explicit ProgressBarXP(QWidget* pai = nullptr);

    // The position: kept as a percentage, whole part of valor * 100 / Max + Min.
    void Value(std::int32_t valor) override;
    std::int32_t Value() const;
    std::int32_t Percentagem() const { return percentagem_; }

    void Min(std::int32_t v);
    std::int32_t Min() const { return min_; }
    void Max(std::int32_t v);
    std::int32_t Max() const { return max_; }
    void Color(std::uint32_t c);
    std::uint32_t Color() const { return cor_; }
    void BrushStyle(std::int32_t v);
    void Image(const QImage& imagem);
    void Orientation(std::int32_t v);
    void Scrolling(std::int32_t v);
    std::int32_t Scrolling() const { return estilo_; }
    void ShowText(bool v);
    void Font(const QFont& f);

    // Draws everything again into the off-screen picture and shows it.
    void DrawProgressBar();
    // The off-screen picture as last drawn.
    const QImage& Imagem() const { return imagem_; }

    // Shade(colour, k): each channel c becomes k + c * (255 - k) / 255, at most 255.
    static std::uint32_t Shade(std::uint32_t cor, int k);
    // A colour value on the screen (system colours read from the palette).
    QColor Cor(std::uint32_t valor) const;

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;

  private:
    void DesenhaBlocos(QImage& img, bool finos, bool lacunas) const;
    void DesenhaPlano(QImage& img) const;
    void DesenhaTexto(QImage& img) const;

    std::int32_t percentagem_ = 0;
    std::int32_t min_ = 0;
    std::int32_t max_ = 100;
    std::uint32_t cor_ = 0x8000000Du;
    std::int32_t hachura_ = 4;
    QImage padrao_;
    std::int32_t orientacao_ = 0;
    std::int32_t estilo_ = 0;
    bool mostraTexto_ = false;
    QFont fonte_;
    QImage imagem_;
};

} // namespace velmora::ui
