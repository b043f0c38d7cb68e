#include "core/perft.h"

#include "core/fazjogada.h"

namespace velmora {

namespace {

// Keeps the compiler from dropping a leaf's move: every leaf is really played.
inline void Observa(const Posicao& p) {
    asm volatile("" : : "r"(&p) : "memory");
}

// m: the masks of p, carried down from the root.
uint64_t Conta(Gerador& g, Posicao& p, const Mascaras& m, int prof, ModoLista modo) {
    const Gerador::Analise a = g.Atalho ? g.Analisa(p, m) : Gerador::Analise{};
    if (modo == ModoLista::Humano)
        g.ListaHumano(p, a);
    else
        g.ListaComputador(p, p, a);
    if (g.MaiorTexto < 2) return 0;
    uint64_t total = 0;
    for (int i = p.IniLista; i <= p.FimLista; ++i) {
        Posicao filho = p;
        const Jogada& j = g.Slot(i);
        FazJogadaGerada(filho, j.c.data(), j.tam, true);
        filho.Vez = static_cast<uint8_t>(3 - p.Vez);
        filho.IniLista = static_cast<int16_t>(p.FimLista + 1);
        if (prof == 1) {
            Observa(filho);
            ++total;
        } else {
            Mascaras mf = m;
            AplicaJogada(mf, j.c.data(), j.tam, filho);
            total += Conta(g, filho, mf, prof - 1, modo);
        }
    }
    return total;
}

} // namespace

uint64_t Perft(Gerador& g, const Posicao& raiz, int prof, ModoLista modo) {
    if (prof == 0) return 1;
    Posicao p = raiz;
    return Conta(g, p, LeMascaras(p), prof, modo);
}

} // namespace velmora
