#include "core/perft.h"

#include "core/fazjogada.h"

namespace velmora {

namespace {

// Keeps the compiler from dropping a leaf's move: every leaf is really played.
inline void Observa(const Posicao& p) {
    asm volatile("" : : "m"(p));
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
    if (!g.Atalho) {
        // the plain way: each child on a copy of the position
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
    // The children are played on p itself and taken back: no copy of the position.
    if (prof == 1 && g.MaiorTexto == 2) {
        // a list of plain moves only: the leaves' loop needs nothing else
        for (int i = p.IniLista; i <= p.FimLista; ++i) {
            const Jogada& j = g.Slot(i);
            const int de = j.c[0], para = j.c[1];
            Desfazer d;
            JogaSimplesNoLugar(p, de, para, d);
            Observa(p);
            DesfazSimples(p, de, para, d);
        }
        return static_cast<uint64_t>(p.FimLista - p.IniLista + 1);
    }
    const int ini = p.IniLista, fim = p.FimLista;
    const uint8_t vez = p.Vez;
    Desfazer d;
    for (int i = ini; i <= fim; ++i) {
        const Jogada& j = g.Slot(i);
        JogaNoLugar(p, j.c.data(), j.tam, d);
        if (prof == 1) {
            Observa(p);
            ++total;
        } else {
            Mascaras mf = m;
            AplicaJogada(mf, j.c.data(), j.tam, p);
            p.Vez = static_cast<uint8_t>(3 - vez);
            p.IniLista = static_cast<int16_t>(fim + 1);
            total += Conta(g, p, mf, prof - 1, modo);
            p.Vez = vez;
            p.IniLista = static_cast<int16_t>(ini);
        }
        DesfazJogada(p, j.c.data(), j.tam, d);
    }
    p.FimLista = static_cast<int16_t>(fim);
    return total;
}

} // namespace

uint64_t Perft(Gerador& g, const Posicao& raiz, int prof, ModoLista modo) {
    if (prof == 0) return 1;
    Posicao p = raiz;
    return Conta(g, p, LeMascaras(p), prof, modo);
}

} // namespace velmora
