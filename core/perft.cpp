#include "core/perft.h"

#include "core/casas.h"
#include "core/fazjogada.h"

namespace velmora {

namespace {

// What perft does with each leaf it has played: keeps the compiler from dropping the
// move, and, for the tests, adds a print of the leaf's board (both sides, the kings, the
// balance) to a sum that does not depend on the order of the leaves.
template <bool Imprime> struct Folhas {
    uint64_t impressao = 0;

    void Anota(Mascara lado1, Mascara lado2, Mascara damas, int saldo) {
        if constexpr (Imprime) {
            auto gira = [](uint64_t x, int k) { return (x << k) | (x >> (64 - k)); };
            impressao += (lado1 * 0x9e3779b97f4a7c15u) ^ gira(lado2 * 0xc2b2ae3d27d4eb4fu, 21) ^
                         gira(damas * 0x165667b19e3779f9u, 42) ^
                         static_cast<uint64_t>(saldo) * 0x27d4eb2f165667c5u;
        } else {
            asm volatile("" : : "r"(lado1), "r"(lado2), "r"(damas), "r"(saldo));
        }
    }
    // A leaf played on the mailbox.
    void Anota(const Posicao& p) {
        if constexpr (Imprime) {
            const Mascaras m = LeMascaras(p);
            Anota(m.lados[0], m.lados[1], m.damas, p.Saldo);
        } else {
            asm volatile("" : : "m"(p));
        }
    }
};

// The last ply of a node where nothing can be taken: each plain move is played on the
// masks and the balance, the child board made and observed, without a list or the mailbox.
template <int Lado, class F> uint64_t JogaFolhas(const Mascaras& m, int saldo, int regra, F& f) {
    constexpr int f1 = Lado == 1 ? -11 : 11, f2 = Lado == 1 ? -9 : 9;
    constexpr Mascara fundo = Lado == 1 ? Mascara{0xff} : Mascara{0xff} << 56;
    constexpr int coroa = Lado == 1 ? 20 : -20;
    const Mascara proprias = m.lados[Lado - 1], outras = m.lados[2 - Lado], v = m.vazias;
    const Mascara damas = proprias & m.damas, homens = proprias & ~m.damas;
    uint64_t folhas = 0;
    auto joga = [&](Mascara de, Mascara para, bool dama) {
        const Mascara ambas = de | para;
        Mascara novasDamas = m.damas;
        int novoSaldo = saldo;
        if (dama) {
            novasDamas ^= ambas;
        } else if (para & fundo) {
            novasDamas |= para;
            novoSaldo += coroa;
        }
        if constexpr (Lado == 1)
            f.Anota(proprias ^ ambas, outras, novasDamas, novoSaldo);
        else
            f.Anota(outras, proprias ^ ambas, novasDamas, novoSaldo);
        ++folhas;
    };
    auto passos = [&]<int d>(Mascara pecas, bool dama) {
        for (Mascara b = pecas & Ve<d>(v); b; b &= b - 1) {
            const Mascara de = b & -b;
            joga(de, Anda<d>(de), dama);
        }
    };
    passos.template operator()<f1>(homens, false);
    passos.template operator()<f2>(homens, false);
    if (regra == 4) {
        passos.template operator()<-11>(damas, true);
        passos.template operator()<-9>(damas, true);
        passos.template operator()<9>(damas, true);
        passos.template operator()<11>(damas, true);
        return folhas;
    }
    for (Mascara resto = damas; resto; resto &= resto - 1) {
        const int s = __builtin_ctzll(resto);
        const Mascara de = resto & -resto;
        for (int d = 1; d <= 4; ++d) {
            // the free squares up to the first piece met, or the edge
            Mascara livres = Raios[s][d];
            const Mascara bloqueio = livres & ~v;
            if (bloqueio) {
                const int w = PrimeiraCasa(bloqueio, d);
                livres &= ~(Raios[w][d] | Mascara{1} << w);
            }
            for (; livres; livres &= livres - 1) joga(de, livres & -livres, true);
        }
    }
    return folhas;
}

// The last ply of a node where a piece can take: each route of the list is played on the
// masks and the balance (the jumped pieces gone, points by direction, the crown at the
// end), the child board made and observed, without the mailbox.
template <class F>
uint64_t JogaFolhasDeCaptura(const Gerador& g, const Posicao& p, const Mascaras& m, F& f) {
    for (int i = p.IniLista; i <= p.FimLista; ++i) {
        const Jogada& j = g.Slot(i);
        const int lado = p.Vez;
        const CapturaLida c = LeCaptura(m, lado, j.c.data(), j.tam);
        const Mascara proprias = (m.lados[lado - 1] & ~c.de) | c.para;
        const Mascara outras = m.lados[2 - lado] & ~c.tomadas;
        const Mascara damas = (m.damas & ~(c.de | c.tomadas)) | (c.dama ? c.para : 0);
        const int saldo = p.Saldo + (lado == 1 ? c.ganho : -c.ganho);
        if (lado == 1)
            f.Anota(proprias, outras, damas, saldo);
        else
            f.Anota(outras, proprias, damas, saldo);
    }
    return static_cast<uint64_t>(p.FimLista - p.IniLista + 1);
}

// The leaves below a quiet board with side `vez` to move.
template <class F> uint64_t FolhasQuietas(Gerador& g, int vez, const Mascaras& m, int saldo, F& f) {
    if (g.Regra == 1 && vez == 2) {
        // the list would stand in this order's rotation: it is kept turning
        int reis = 0;
        for (Mascara r = m.lados[1] & m.damas; r; r &= r - 1) ++reis;
        g.PulaRotacoes(reis);
    }
    return vez == 1 ? JogaFolhas<1>(m, saldo, g.Regra, f) : JogaFolhas<2>(m, saldo, g.Regra, f);
}

// m: the masks of p, carried down from the root.
// `dada`: the analysis of p when the caller made it already.
template <class F>
uint64_t Conta(Gerador& g, Posicao& p, const Mascaras& m, int prof, ModoLista modo, F& f,
               const Gerador::Analise* dada = nullptr) {
    const Gerador::Analise a = dada ? *dada : g.Atalho ? g.Analisa(p, m) : Gerador::Analise{};
    if (prof == 1 && a.tipo == 2) return FolhasQuietas(g, p.Vez, m, p.Saldo, f);
    if (modo == ModoLista::Humano)
        g.ListaHumano(p, a, &m);
    else
        g.ListaComputador(p, m.damas, a, &m);
    if (g.MaiorTexto < 2) return 0;
    if (prof == 1 && a.tipo == 3) return JogaFolhasDeCaptura(g, p, m, f);
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
                f.Anota(filho);
                ++total;
            } else {
                Mascaras mf = m;
                AplicaJogada(mf, j.c.data(), j.tam, filho);
                total += Conta(g, filho, mf, prof - 1, modo, f);
            }
        }
        return total;
    }
    // The children are played on p itself and taken back: no copy of the position.
    const int ini = p.IniLista, fim = p.FimLista;
    const uint8_t vez = p.Vez;
    Desfazer d;
    for (int i = ini; i <= fim; ++i) {
        const Jogada& j = g.Slot(i);
        if (prof == 2 && j.tam == 2) {
            // A plain move to the last ply but one: played on the masks and the balance
            // first; the board is touched only when the child has something to take.
            const int de = j.c[0], para = j.c[1];
            // a man reaching the far row; both tests made, neither guessed
            const bool coroa =
                !(p.Casas[de] & DAMA) & (static_cast<unsigned>(para - (vez == 1 ? 12 : 82)) < 8u);
            const Mascaras mf = ComSimples(m, Bit(de), Bit(para), coroa);
            const Gerador::Analise af = g.Analisa(3 - vez, mf);
            if (af.tipo == 2) {
                const int saldo = p.Saldo + (coroa ? (vez == 1 ? 20 : -20) : 0);
                total += FolhasQuietas(g, 3 - vez, mf, saldo, f);
                continue;
            }
            JogaSimplesNoLugar(p, de, para, d);
            p.Vez = static_cast<uint8_t>(3 - vez);
            p.IniLista = static_cast<int16_t>(fim + 1);
            total += Conta(g, p, mf, 1, modo, f, &af);
            p.Vez = vez;
            p.IniLista = static_cast<int16_t>(ini);
            DesfazSimples(p, de, para, d);
            continue;
        }
        JogaNoLugar(p, j.c.data(), j.tam, d);
        if (prof == 1) {
            f.Anota(p);
            ++total;
        } else {
            Mascaras mf = m;
            AplicaJogada(mf, j.c.data(), j.tam, p);
            p.Vez = static_cast<uint8_t>(3 - vez);
            p.IniLista = static_cast<int16_t>(fim + 1);
            total += Conta(g, p, mf, prof - 1, modo, f);
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
    Folhas<false> f;
    return Conta(g, p, LeMascaras(p), prof, modo, f);
}

PerftImpresso PerftComImpressao(Gerador& g, const Posicao& raiz, int prof, ModoLista modo) {
    Posicao p = raiz;
    Folhas<true> f;
    if (prof == 0) {
        f.Anota(p);
        return {1, f.impressao};
    }
    const uint64_t n = Conta(g, p, LeMascaras(p), prof, modo, f);
    return {n, f.impressao};
}

} // namespace velmora
