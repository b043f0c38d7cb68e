// The progress bar of the update window, pixel by pixel, against pictures made here from the
// drawing rules of its style: each pixel takes the colour of the last rule that covers it.
#include "ui/progressbarxp.h"

#include <QImage>
#include <QPixmap>
#include <gtest/gtest.h>

namespace velmora::ui {
namespace {

// A colour value (0x00BBGGRR) as a pixel.
QRgb V(std::uint32_t v) {
    return qRgb(static_cast<int>(v & 0xFF), static_cast<int>(v >> 8 & 0xFF),
                static_cast<int>(v >> 16 & 0xFF));
}

// The picture of style 0 at `pct` percent, in colour `cor`, made pixel by pixel.
QImage Referencia(int W, int H, int pct, QRgb cor) {
    // Shade(cor, 150), channel by channel
    const auto sombra = [](int c) { return std::min(255, 150 + c * 105 / 255); };
    const QRgb palida = qRgb(sombra(qRed(cor)), sombra(qGreen(cor)), sombra(qBlue(cor)));
    const auto degrau = [](QRgb a, QRgb b, int k) {
        return qRgb(qRed(a) + (qRed(b) - qRed(a)) * k / 5,
                    qGreen(a) + (qGreen(b) - qGreen(a)) * k / 5,
                    qBlue(a) + (qBlue(b) - qBlue(a)) * k / 5);
    };
    pct = std::min(pct, 100);
    const int bruto = 3 + (W - 3) * pct / 98;
    int E = std::max(bruto - (bruto - 3) % 8, 3);
    if (E < 15) E = 12;
    const int L = E + 4 > W ? E - 4 : E;

    struct Canto {
        int x, y;
        std::uint32_t v;
    };
    const std::vector<Canto> cantos = {
        {0, 0, 0xFFFFFF},         {0, 1, 0xA6ABAC},         {0, 2, 0x7D7E7F},
        {1, 0, 0xA7ABAC},         {1, 1, 0x777777},         {2, 0, 0x7D7E7F},
        {2, 2, 0xBEBEBE},         {0, H - 1, 0xFFFFFF},     {1, H - 1, 0xA6ABAC},
        {2, H - 1, 0x7D7E7F},     {0, H - 3, 0x7D7E7F},     {0, H - 2, 0xA7ABAC},
        {1, H - 2, 0x777777},     {W - 1, 0, 0xFFFFFF},     {W - 1, 1, 0xBEBEBE},
        {W - 1, 2, 0x7D7E7F},     {W - 2, 2, 0xBEBEBE},     {W - 2, 1, 0xBEBEBE},
        {W - 1, H - 1, 0xFFFFFF}, {W - 1, H - 2, 0xBEBEBE}, {W - 2, H - 1, 0xBEBEBE},
        {W - 1, H - 3, 0x7D7E7F}, {W - 2, H - 2, 0x777777}, {W - 3, H - 1, 0x7D7E7F}};

    QImage img(W, H, QImage::Format_RGB32);
    for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
            // from the last rule drawn to the first
            QRgb c = qRgb(255, 255, 255);
            bool achou = false;
            for (auto it = cantos.rbegin(); it != cantos.rend(); ++it)
                if (it->x == x && it->y == y) {
                    c = V(it->v);
                    achou = true;
                    break;
                }
            const bool dentroX = x >= 2 && x <= W - 3, dentroY = y >= 2 && y <= H - 3;
            if (achou) {
            } else if (x == 0 || y == 0 || x == W - 1 || y == H - 1) {
                c = V(0x686868);
            } else if (x == W - 2 && dentroY) {
                c = V(0xEFEFEF);
            } else if (y == 2 && dentroX) {
                c = V(0xEFEFEF);
            } else if (x == 2 && dentroY) {
                c = V(0xEFEFEF);
            } else if (x == 1 && dentroY) {
                c = V(0xBEBEBE);
            } else if (y == H - 2 && dentroX) {
                c = V(0xEFEFEF);
            } else if (y == 1 && dentroX) {
                c = V(0xBEBEBE);
            } else if (x >= 10 && (x - 10) % 8 <= 1 && x - 1 - (x - 10) % 8 <= E) {
                c = qRgb(255, 255, 255); // the gap after a block
            } else if (x >= 4 && x < L && y >= H - 10 && y < H - 4) {
                c = degrau(cor, palida, y - (H - 10));
            } else if (x >= 4 && x < L && y >= 8 && y < H - 8) {
                c = cor;
            } else if (x >= 4 && x < L && y >= 3 && y < 9) {
                c = degrau(palida, cor, y - 3);
            }
            img.setPixel(x, y, c);
        }
    return img;
}

// The first pixel where two pictures differ, as a text; empty when they are equal.
std::string Diferenca(const QImage& a, const QImage& b) {
    if (a.size() != b.size()) return "sizes differ";
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if ((a.pixel(x, y) & 0xFFFFFF) != (b.pixel(x, y) & 0xFFFFFF))
                return "(" + std::to_string(x) + "," + std::to_string(y) + ") " +
                       QString::number(a.pixel(x, y) & 0xFFFFFF, 16).toStdString() + " vs " +
                       QString::number(b.pixel(x, y) & 0xFFFFFF, 16).toStdString();
    return {};
}

class Barra : public ::testing::Test {
  protected:
    void SetUp() override {
        barra.resize(200, 20);
        barra.Color(RGB(49, 106, 197));
    }
    ProgressBarXP barra;
    const QRgb azul = qRgb(49, 106, 197);
};

TEST_F(Barra, StyleZeroMatchesTheRulesAtEmptyPartialAndFull) {
    for (const QSize tamanho : {QSize(200, 20), QSize(320, 24), QSize(57, 19)}) {
        barra.resize(tamanho);
        for (int pct : {0, 1, 13, 37, 50, 98, 99, 100}) {
            barra.Value(pct);
            EXPECT_EQ(
                Diferenca(barra.Imagem(), Referencia(tamanho.width(), tamanho.height(), pct, azul)),
                "")
                << tamanho.width() << "x" << tamanho.height() << " at " << pct << "%";
        }
    }
}

TEST_F(Barra, PixelsWorkedOutByHand) {
    const QImage& img = barra.Imagem();
    barra.Value(0);
    // even at 0 a first block stands: pixels 4 to 9, then the gap
    EXPECT_EQ(img.pixel(5, 10) & 0xFFFFFF, azul & 0xFFFFFF);
    EXPECT_EQ(img.pixel(9, 10) & 0xFFFFFF, azul & 0xFFFFFF);
    EXPECT_EQ(img.pixel(10, 10) & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_EQ(img.pixel(12, 10) & 0xFFFFFF, 0xFFFFFFu);
    // the pale top line: Shade(RGB(49, 106, 197), 150) is RGB(170, 193, 231)
    EXPECT_EQ(img.pixel(5, 3) & 0xFFFFFF, qRgb(170, 193, 231) & 0xFFFFFF);
    barra.Value(50);
    // raw end 3 + 197 * 50 / 98 = 103, on the block grid 99: the last gap is 98 and 99
    EXPECT_EQ(barra.Imagem().pixel(96, 10) & 0xFFFFFF, azul & 0xFFFFFF);
    EXPECT_EQ(barra.Imagem().pixel(98, 10) & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_EQ(barra.Imagem().pixel(100, 10) & 0xFFFFFF, 0xFFFFFFu);
    // blocks stand at 4 + 8k to 9 + 8k: 84 to 89 and 92 to 97, the gap between
    EXPECT_EQ(barra.Imagem().pixel(89, 10) & 0xFFFFFF, azul & 0xFFFFFF);
    EXPECT_EQ(barra.Imagem().pixel(90, 10) & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_EQ(barra.Imagem().pixel(91, 10) & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_EQ(barra.Imagem().pixel(92, 10) & 0xFFFFFF, azul & 0xFFFFFF);
    // frame and corners
    EXPECT_EQ(barra.Imagem().pixel(0, 0) & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_EQ(barra.Imagem().pixel(1, 1) & 0xFFFFFF, 0x777777u);
    EXPECT_EQ(barra.Imagem().pixel(100, 0) & 0xFFFFFF, 0x686868u);
    EXPECT_EQ(barra.Imagem().pixel(100, 1) & 0xFFFFFF, 0xBEBEBEu);
    EXPECT_EQ(barra.Imagem().pixel(199, 19) & 0xFFFFFF, 0xFFFFFFu);
}

TEST_F(Barra, TheScreenShowsTheOffScreenPicture) {
    barra.Value(37);
    barra.show();
    const QImage tela = barra.grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(Diferenca(tela, barra.Imagem()), "");
}

TEST_F(Barra, ValueIsKeptAsAPercentageOfMax) {
    barra.Max(200);
    barra.Value(50);
    EXPECT_EQ(barra.Percentagem(), 25);
    EXPECT_EQ(barra.Value(), 50);
    EXPECT_EQ(Diferenca(barra.Imagem(), Referencia(200, 20, 25, azul)), "");
    // past the end the bar is drawn full
    barra.Max(100);
    barra.Value(150);
    EXPECT_EQ(barra.Percentagem(), 150);
    EXPECT_EQ(Diferenca(barra.Imagem(), Referencia(200, 20, 100, azul)), "");
    // Min is added to the percentage, and divides the value read back
    barra.Min(2);
    barra.Value(40);
    EXPECT_EQ(barra.Percentagem(), 42);
    EXPECT_EQ(barra.Value(), 21);
    // a range of 0 and negative values draw without harm
    barra.Min(0);
    barra.Max(0);
    barra.Value(5);
    barra.Max(100);
    barra.Value(-40);
    EXPECT_EQ(Diferenca(barra.Imagem(), Referencia(200, 20, 0, azul)), "");
}

TEST_F(Barra, ShadeGoesFromTheColourToWhite) {
    EXPECT_EQ(ProgressBarXP::Shade(RGB(49, 106, 197), 0), RGB(49, 106, 197));
    EXPECT_EQ(ProgressBarXP::Shade(RGB(49, 106, 197), 255), RGB(255, 255, 255));
    EXPECT_EQ(ProgressBarXP::Shade(RGB(49, 106, 197), 150), RGB(170, 193, 231));
    EXPECT_EQ(ProgressBarXP::Shade(RGB(0, 0, 0), 100), RGB(100, 100, 100));
}

TEST_F(Barra, StandingOnItsEndItFillsFromTheBottom) {
    barra.resize(20, 200);
    barra.Orientation(1);
    barra.Value(50);
    const QImage& img = barra.Imagem();
    ASSERT_EQ(img.size(), QSize(20, 200));
    EXPECT_EQ(img.pixel(10, 190) & 0xFFFFFF, azul & 0xFFFFFF);
    EXPECT_EQ(img.pixel(10, 20) & 0xFFFFFF, 0xFFFFFFu);
    // the same picture as the bar lying down, turned a quarter
    const QImage deitada = Referencia(200, 20, 50, azul);
    EXPECT_EQ(Diferenca(img, deitada.transformed(QTransform().rotate(-90))), "");
}

TEST_F(Barra, EveryStyleDrawsAtEveryValueAndSize) {
    barra.ShowText(true);
    QImage padrao(8, 8, QImage::Format_RGB32);
    padrao.fill(Qt::red);
    barra.Image(padrao);
    for (int estilo = 0; estilo <= 9; ++estilo)
        for (const QSize t : {QSize(1, 1), QSize(3, 30), QSize(200, 20)})
            for (int v : {-5, 0, 50, 100, 1000}) {
                barra.Scrolling(estilo);
                barra.resize(t);
                barra.Value(v);
                EXPECT_EQ(barra.Imagem().size(), t);
            }
    // the text shows the percentage over the bar
    barra.resize(200, 20);
    barra.Scrolling(3);
    barra.ShowText(false);
    barra.Value(50);
    const QImage sem = barra.Imagem();
    barra.ShowText(true);
    EXPECT_NE(Diferenca(sem, barra.Imagem()), "");
}

} // namespace
} // namespace velmora::ui
