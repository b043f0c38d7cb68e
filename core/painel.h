#pragma once
// The controls of the board window as states: the logic writes them, the window draws them.
// Every message the player reads is here, so the headless build and the tests see it too.
#include <array>
#include <cstdint>
#include <string>

namespace velmora {

// Colours as 0xRRGGBB.
namespace cor {
inline constexpr uint32_t Preto = 0x000000;
inline constexpr uint32_t Vermelho = 0xFF0000;
inline constexpr uint32_t Azul = 0x0000FF;
inline constexpr uint32_t CinzaEscuro = 0x404040;
inline constexpr uint32_t Cinza = 0x808080;
inline constexpr uint32_t Fundo = 0xECE9D8; // the window's background
} // namespace cor

struct Controle {
    std::string Texto;
    bool Visivel = true;
    bool Habilitado = true;
    uint32_t Cor = cor::Preto;
    int Largura = 0;
};

// The moving piece of the animation, in the board's cell units (one square = 1.0).
struct ImagemMovel {
    bool Visivel = false;
    double Esquerda = 0, Topo = 0, Largura = 1, Altura = 1;
    int Peca = 0; // cell code of the piece it shows (1, 10, 2, 20)
};

struct Painel {
    Controle lbMsg, lbMoves, lbYMM, lbSide, lbValue, lbPly, lbCutoff, lbPosns;
    Controle Label2, Label3, Label10, Label12, Label18, Label22, Label24, Label26, Label27;
    Controle Image7, PicVezDois, Timer3;
    std::array<Controle, 2> Imglamp;
    // The turn pictures of side 2, hidden at the start of each game.
    Controle VezLado2;
    ImagemMovel ImgMove;
    std::array<bool, 101> Marcadas{}; // squares highlighted by MarcaCasa
    // The picture in each cell (indexed by square): 0 none, else the cell code of the piece
    // (1, 10, 2, 20). Drawn and cleared step by step, so the animation can run ahead of it.
    std::array<uint8_t, 101> imgpd{};
    bool Ocupado = false;             // the busy mouse pointer
    bool Habilitado = true;           // the window accepts input
};

} // namespace velmora
