#pragma once
// The pictures of the windows, drawn by code: pieces, lamps, stars, medals and the small
// icons of the buttons. Everything is vector drawing in the painter's logical units, so it
// stays sharp at any device pixel ratio.
#include <QColor>
#include <QRectF>

class QPainter;

namespace velmora::ui {

// Colours of the board and of the two sides.
namespace paleta {
inline const QColor CasaClara{0xEE, 0xD9, 0xB0};
inline const QColor CasaEscura{0x7A, 0x4B, 0x2A};
inline const QColor Marca{0x3C, 0xB3, 0x71};
inline const QColor Moldura{0x3B, 0x24, 0x14};
inline const QColor Fundo{0xEC, 0xE9, 0xD8};
inline const QColor Barra{0x23, 0x34, 0x4A};
inline const QColor Destaque{0xC8, 0x8A, 0x22};
} // namespace paleta

// A piece by its cell code: 1 and 10 man and king of side 1 (light), 2 and 20 of side 2
// (dark). Nothing for any other code.
void DesenhaPeca(QPainter& p, const QRectF& r, int codigo);
// The turn lamp: lit or out.
void DesenhaLampada(QPainter& p, const QRectF& r, bool acesa);
// A rank star; `ouro` is the picture of 5000 points and more.
void DesenhaEstrela(QPainter& p, const QRectF& r, bool ouro);
// The medal of 10000 points.
void DesenhaMedalha(QPainter& p, const QRectF& r);

enum class Icone {
    NovoJogo,  // Image7
    Recordes,  // Image12
    Opcoes,    // Image13
    Sobre,     // Image4
    Ajuda,     // Image14
    Ranking,   // Image15
    Primeira,  // Image6(0)
    Anterior,  // Image6(1)
    Proxima,   // Image6(2)
    Ultima,    // Image6(3)
    Minimizar, // ImgCT(1)
    TelaCheia, // ImgCT(2)
    Fechar,    // ImgCT(3), Image1
    Torneio,   // the tournament switch of the new game dialog
    Niveis,    // and its way back to the levels
};
// A button's picture in `cor`; `realce` draws the hover picture.
void DesenhaIcone(QPainter& p, const QRectF& r, Icone icone, const QColor& cor, bool realce);

} // namespace velmora::ui
