#include "core/perft.h"

#include "core/fazjogada.h"

namespace velmora {

namespace {

// Keeps the compiler from dropping a leaf's move: every leaf is really played.
inline void Observa(const Posicao& p) { asm volatile("" : : "r"(&p) : "memory"); }

uint64_t Conta(Gerador& g, Posicao& p, int prof, ModoLista modo) {
    if (modo == ModoLista::Humano) g.ListaHumano(p);
    else g.ListaComputador(p);
    if (g.MaiorTexto < 2) return 0;
    uint64_t total = 0;
    for (int i = p.IniLista; i <= p.FimLista; ++i) {
        Posicao filho = p;
        const Jogada& m = g.Slot(i);
        FazJogadaGerada(filho, m.c.data(), m.tam, true);
        filho.Vez = static_cast<uint8_t>(3 - p.Vez);
        filho.IniLista = static_cast<int16_t>(p.FimLista + 1);
        if (prof == 1) {
            Observa(filho);
            ++total;
        } else {
            total += Conta(g, filho, prof - 1, modo);
        }
    }
    return total;
}

} // namespace

uint64_t Perft(Gerador& g, const Posicao& raiz, int prof, ModoLista modo) {
    if (prof == 0) return 1;
    Posicao p = raiz;
    return Conta(g, p, prof, modo);
}

} // namespace velmora
