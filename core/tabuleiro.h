#pragma once
// The board as text cells and as a position: the initial setup, the text form of a board
// ("1,0,2,0,...,"), and the small counts read off a position.
#include "core/posicao.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace velmora {

// Text cells 1..64 in reading order (index 0 unused). Codes: 0 light square, 3 dark
// square empty, 1 and 10 man and king of side 1, 2 and 20 of side 2.
using Tabuleiro = std::array<int16_t, 65>;

struct TextoLido {
    int lado = 0; // the side to move written in front of the cells
    Tabuleiro celulas{};
};

// The initial position, side 1 to move: number 1 of each side stands on its front row.
Posicao PosicaoInicial();
// Rebuilds a position from text cells: pieces numbered from the back rows, pure material in
// Saldo. Vez, IniLista and FimLista keep their values in `p`.
void MontaPosicao(Posicao& p, const Tabuleiro& t);
// The text code of a square: 0 for square 0 or a light square, 3 dark and empty...
int TipoCasa(const Posicao& p, int casa);
Tabuleiro CelulasDe(const Posicao& p);
// The 64 cell codes, each followed by a comma.
std::string TextoTabuleiro(const Posicao& p);
// The side to move, a comma, then TextoTabuleiro: a board text.
std::string TextoComVez(const Posicao& p);
// Reads a board text strictly: 65 numbers each followed by a comma, a side of 1 or 2, cell
// codes of the table, at most 12 pieces a side. Nothing for anything else.
std::optional<TextoLido> LeTextoTabuleiro(const std::string& texto);
// A whole position from a board text, with its side to move; nothing for a bad text.
std::optional<Posicao> PosicaoDoTexto(const std::string& texto);
int QuantasPecas(const Posicao& p, int lado);
// Men count 1, kings 3.
int ValordasPecas(const Posicao& p, int lado);
// The board drawn in text, side 1 at the bottom: "o"/"O" side 1, "x"/"X" side 2.
std::string DesenhoTabuleiro(const Posicao& p);

} // namespace velmora
