#pragma once
// The controls of the board window that the session writes, beyond those the turn cycle
// shares (core/painel.h). Arrays are indexed as the window numbers its controls: 1 and 2
// for the two players, index 0 unused.
#include "core/painel.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace velmora {

namespace cor {
inline constexpr uint32_t Clara = 0xFFFFFF;         // an enabled button drawn light
inline constexpr uint32_t BarraVerde = 0x00C000;    // the move clock below 80 percent
inline constexpr uint32_t BarraVermelha = 0xC00000; // the move clock from 80 percent
inline constexpr uint32_t VermelhoEscuro = 0x800000;
} // namespace cor

// One bar of the move clock, in steps: a full bar is Game.TempoLimite steps wide.
struct Barra {
    double Largura = 0;
    bool Visivel = false;
    uint32_t Cor = cor::BarraVerde;
};

// A board cell's place on the window, in twips.
struct Retangulo {
    int Topo = 0, Esquerda = 0, Largura = 0, Altura = 0;
    bool operator==(const Retangulo&) const = default;
};

inline Controle ComTexto(std::string texto) {
    Controle c;
    c.Texto = std::move(texto);
    return c;
}

struct Form1Modelo {
    // The window, in twips.
    int Largura = 0, Altura = 0;
    // The control that holds the input focus ("Text3" or empty).
    std::string Foco;

    Controle Label6 = ComTexto("Novo jogo");
    Controle Label7 = ComTexto("Reiniciar");
    Controle Label20, Label21; // the rule set's name
    Controle LbVez;            // whose turn
    Controle LbPT1, LbPT2;     // wins of the session
    Controle Image8;           // on-line layout only
    Controle Text3, Text4;     // chat input and chat log
    std::array<Controle, 3> LbNome, lbnivel, LbNV, Medalha;
    std::array<int, 3> FonteLbNome{0, 9, 9}; // point size of each name
    // The five rank stars of each side (index 1..5), and which picture they take: 1 below
    // 5000 points, 2 from there.
    std::array<std::array<bool, 6>, 3> Estrelas{};
    std::array<int, 3> ImagemEstrelas{0, 1, 1};
    // The move clock: index 1 the local player, 2 the opponent.
    std::array<Barra, 3> PicCrono, PicTIMER;
    // The screen rectangle of each board image (MapeaCasasPosition), and the one each
    // image takes for the role in play (OrientaTabuleiro).
    std::array<Retangulo, 101> PosicaoCasa{};
    std::array<Retangulo, 101> imgpd{};
};

} // namespace velmora
