#include "core/perft.h"

#include "core/casas.h"
#include "core/fazjogada.h"

namespace velmora {

namespace {

// Keeps the compiler from dropping a leaf's move: every leaf is really played.
inline void Observa(const Posicao& p) {
    asm volatile("" : : "m"(p));
}

inline void Observa(Mascara lado, Mascara vazias, Mascara damas, int saldo) {
    asm volatile("" : : "r"(lado), "r"(vazias), "r"(damas), "r"(saldo));
}

// The last ply of a node where nothing can be taken: each plain move is played on the
// masks and the balance, the child board made and observed, without a list or the mailbox.
template <int Lado> uint64_t JogaFolhas(const Mascaras& m, int saldo, int regra) {
    constexpr int f1 = Lado == 1 ? -11 : 11, f2 = Lado == 1 ? -9 : 9;
    constexpr Mascara fundo = Lado == 1 ? Mascara{0xff} : Mascara{0xff} << 56;
    constexpr int coroa = Lado == 1 ? 20 : -20;
    const Mascara proprias = m.lados[Lado - 1], v = m.vazias;
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
        Observa(proprias ^ ambas, v ^ ambas, novasDamas, novoSaldo);
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
uint64_t JogaFolhasDeCaptura(const Gerador& g, const Posicao& p, const Mascaras& m) {
    const int lado = p.Vez;
    const Mascara fundo = lado == 1 ? Mascara{0xff} : Mascara{0xff} << 56;
    for (int i = p.IniLista; i <= p.FimLista; ++i) {
        const Jogada& j = g.Slot(i);
        const int saltos = j.tam / 3;
        const Mascara de = Bit(j.c[0]), para = Bit(j.c[3 * saltos - 2]);
        Mascara tomadas = 0;
        int ganho = 0;
        for (int k = 0; k < saltos; ++k) {
            const int f = j.c[3 * k], t = j.c[3 * k + 1];
            const Mascara c = Bit(j.c[3 * k + 2]);
            tomadas |= c;
            ganho += (m.damas & c) ? 30 : 10;
            ganho += (lado == 1 ? f > t : f < t) ? 1 : -1;
        }
        const bool dama = m.damas & de;
        const bool coroa = !dama && (para & fundo) && j.tam % 3 == 0;
        ganho += coroa ? 20 : 0;
        const Mascara proprias = (m.lados[lado - 1] & ~de) | para;
        const Mascara outras = m.lados[2 - lado] & ~tomadas;
        const Mascara damas = (m.damas & ~(de | tomadas)) | (dama || coroa ? para : 0);
        const Mascara vazias = (m.vazias | de | tomadas) & ~para;
        Observa(proprias, vazias, damas, p.Saldo + (lado == 1 ? ganho : -ganho));
        Observa(outras, 0, 0, 0);
    }
    return static_cast<uint64_t>(p.FimLista - p.IniLista + 1);
}

// The leaves below a quiet board with side `vez` to move.
uint64_t FolhasQuietas(Gerador& g, int vez, const Mascaras& m, int saldo) {
    if (g.Regra == 1 && vez == 2) {
        // the list would stand in this order's rotation: it is kept turning
        int reis = 0;
        for (Mascara r = m.lados[1] & m.damas; r; r &= r - 1) ++reis;
        g.PulaRotacoes(reis);
    }
    return vez == 1 ? JogaFolhas<1>(m, saldo, g.Regra) : JogaFolhas<2>(m, saldo, g.Regra);
}

// m: the masks of p, carried down from the root.
// `dada`: the analysis of p when the caller made it already.
uint64_t Conta(Gerador& g, Posicao& p, const Mascaras& m, int prof, ModoLista modo,
               const Gerador::Analise* dada = nullptr) {
    const Gerador::Analise a = dada ? *dada : g.Atalho ? g.Analisa(p, m) : Gerador::Analise{};
    if (prof == 1 && a.tipo == 2) return FolhasQuietas(g, p.Vez, m, p.Saldo);
    if (modo == ModoLista::Humano)
        g.ListaHumano(p, a);
    else
        g.ListaComputador(p, m.damas, a);
    if (g.MaiorTexto < 2) return 0;
    if (prof == 1 && a.tipo == 3) return JogaFolhasDeCaptura(g, p, m);
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
    const int ini = p.IniLista, fim = p.FimLista;
    const uint8_t vez = p.Vez;
    Desfazer d;
    for (int i = ini; i <= fim; ++i) {
        const Jogada& j = g.Slot(i);
        if (prof == 2 && j.tam == 2) {
            // A plain move to the last ply but one: played on the masks and the balance
            // first; the board is touched only when the child has something to take.
            const int de = j.c[0], para = j.c[1];
            const bool coroa =
                !(p.Casas[de] & DAMA) && static_cast<unsigned>(para - (vez == 1 ? 12 : 82)) < 8u;
            Mascaras mf = m;
            AplicaSimples(mf, Bit(de), Bit(para), coroa);
            const Gerador::Analise af = g.Analisa(3 - vez, mf);
            if (af.tipo == 2) {
                const int saldo = p.Saldo + (coroa ? (vez == 1 ? 20 : -20) : 0);
                total += FolhasQuietas(g, 3 - vez, mf, saldo);
                continue;
            }
            JogaSimplesNoLugar(p, de, para, d);
            p.Vez = static_cast<uint8_t>(3 - vez);
            p.IniLista = static_cast<int16_t>(fim + 1);
            total += Conta(g, p, mf, 1, modo, &af);
            p.Vez = vez;
            p.IniLista = static_cast<int16_t>(ini);
            DesfazSimples(p, de, para, d);
            continue;
        }
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
