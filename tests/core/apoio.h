#pragma once
// Shared by the tests of the core and the engine: boards written as a few pieces, moves
// written as square numbers, move lists read back as text.
#include "core/casas.h"
#include "core/gerador.h"
#include "core/jogada.h"
#include "core/tabuleiro.h"

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace velmora::teste {

using Pecas = std::initializer_list<std::pair<int, int>>;

// A board text: the side to move, then every dark square empty except the pieces given as
// (square, cell code).
inline std::string Texto(int vez, Pecas pecas) {
    std::string t = std::to_string(vez) + ",";
    for (int i = 1; i <= 64; ++i) {
        const int s = CasaDoIndice(i);
        int codigo = CasaClara(s) ? 0 : 3;
        for (const auto& [casa, c] : pecas)
            if (casa == s) codigo = c;
        t += std::to_string(codigo) + ",";
    }
    return t;
}

inline Posicao Pos(int vez, Pecas pecas) {
    return PosicaoDoTexto(Texto(vez, pecas)).value();
}

inline Jogada Jog(std::initializer_list<uint8_t> casas) {
    return Jogada(std::string(casas.begin(), casas.end()));
}

struct ListaLida {
    std::vector<std::string> jogadas; // "66-44-55" each, in list order
    int maior = 0;                    // MaiorTexto after the list
};

// The human's or the computer's list of p, with the generator given or a fresh one.
inline ListaLida Lista(int regra, Posicao p, bool humano, Gerador&& g = Gerador()) {
    g.Regra = regra;
    p.IniLista = 1;
    humano ? g.ListaHumano(p) : g.ListaComputador(p);
    ListaLida l{{}, g.MaiorTexto};
    for (int i = p.IniLista; i <= p.FimLista; ++i) l.jogadas.push_back(JogadaEmNumeros(g.Slot(i)));
    return l;
}

} // namespace velmora::teste
