#pragma once
// Squares of the 10 by 10 mailbox: row r (1..8, top to bottom), column c (1..8), square
// 10*r + c + 1, so the board proper is 12..89 and the ring around it is border.
#include <array>
#include <cstdint>
#include <string>

namespace velmora {

// Steps along the diagonals: direction 1 up-left, 2 up-right, 3 down-left, 4 down-right.
// The opposite of direction d is 5 - d.
inline constexpr std::array<int, 5> Direcoes{0, -11, -9, 9, 11};

// Byte codes of a mailbox square, tested as bit masks.
inline constexpr uint8_t LADO1 = 16;
inline constexpr uint8_t LADO2 = 32;
inline constexpr uint8_t BORDA = 64; // border, or a piece already jumped in a capture being built
inline constexpr uint8_t DAMA = 128;
inline constexpr uint8_t NUMERO = 15;

constexpr uint8_t BitDoLado(int lado) { return lado == 1 ? LADO1 : LADO2; }

// Square of text cell i (1..64, reading order); 0 above 64 or below 1.
int CasaDoIndice(int i);
// True for the 32 light squares, which never hold a piece.
bool CasaClara(int casa);
// True for the 64 squares of the board proper (12..89 without the ring).
constexpr bool CasaDoTabuleiro(int casa) {
    return casa >= 12 && casa <= 89 && casa % 10 >= 2;
}
// Coordinate of a square: 82 is "A1", 13 is "B8".
std::string NomeCasa(int casa);
// The inverse of NomeCasa, case-insensitive; 0 for a text that names no square.
int CasaDoNome(const std::string& nome);

} // namespace velmora
