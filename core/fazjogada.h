#pragma once
// Plays a move string on a position. The one place where a move changes a position: the
// generators (one step at a time), the search (a whole move on a copy) and the real board.
#include "core/casas.h"
#include "core/jogada.h"
#include "core/posicao.h"

#include <cstdint>

namespace velmora {

// Plays the bytes s[0..n) on p. With Conclui, the move is a whole one: the last step may
// crown, jumped pieces vanish and each jump scores +-1 by its direction; without it (the
// generators) a jumped piece stays as 64 and nothing is crowned.
// aoPasso(f, t, c) runs after each step's change (the screen's part); when it returns true
// the move is given up there. A step that names a square off the board is refused before
// it touches anything, and the result is false; otherwise true.
template <class AoPasso, bool Verifica = true>
bool FazJogadaCom(Posicao& p, const uint8_t* s, int n, bool Conclui, AoPasso&& aoPasso) {
    if (n < 2 || (p.Vez != 1 && p.Vez != 2)) return false;
    const int lado = p.Vez;
    int resta = n;
    for (;;) {
        const int f = s[0], t = s[1], c = resta >= 3 ? s[2] : 0;
        if (Verifica &&
            (!CasaDoTabuleiro(f) || !CasaDoTabuleiro(t) || (c != 0 && !CasaDoTabuleiro(c))))
            return false;
        const bool dama = (p.Casas[f] & DAMA) != 0;
        p.Casas[t] = p.Casas[f];
        if (Conclui && resta < 4 && !dama && p.Casas[f] != 0) {
            if (lado == 1 ? t < 21 : t >= 82) {
                p.Casas[t] |= DAMA;
                p.Saldo = static_cast<int16_t>(p.Saldo + (lado == 1 ? 20 : -20));
            }
        }
        p.Casas[f] = 0;
        const int numero = p.Casas[t] & NUMERO;
        if (numero >= 1 && numero <= 12)
            p.Peca(numero, lado) = static_cast<uint8_t>(t | (p.Casas[t] & DAMA));
        if (c != 0) {
            const uint8_t tomada = p.Casas[c];
            int valor = (tomada & DAMA) ? 30 : 10;
            if (Conclui) {
                // A jump in the mover's forward direction earns the mover a point.
                const bool frente = lado == 1 ? f > t : f < t;
                valor += frente ? 1 : -1;
            }
            p.Saldo = static_cast<int16_t>(p.Saldo + (lado == 1 ? valor : -valor));
            const int numTomada = tomada & NUMERO;
            if (numTomada >= 1 && numTomada <= 12) p.Peca(numTomada, 3 - lado) = 0;
            p.Casas[c] = Conclui ? 0 : BORDA;
        }
        if (aoPasso(f, t, c)) return true;
        if (resta < 6) break; // fewer than 3 left after this step
        s += 3;
        resta -= 3;
    }
    return true;
}

inline bool FazJogada(Posicao& p, const uint8_t* s, int n, bool Conclui) {
    return FazJogadaCom(p, s, n, Conclui, [](int, int, int) { return false; });
}

// The same for a move the generator wrote itself, whose squares are all on the board and
// whose steps follow on (each step starts where the last one landed): the search, perft
// and the generators play millions of them. The piece is lifted once and set down once on
// its last landing square; the squares it passes over end empty, as they began.
inline void FazJogadaGerada(Posicao& p, const uint8_t* s, int n, bool Conclui) {
    const int lado = p.Vez;
    if (n < 2 || (lado != 1 && lado != 2)) return;
    const int de = s[0];
    uint8_t peca = p.Casas[de];
    int ganho = 0; // for the mover
    int para = s[1];
    if (n >= 3) {
        const int saltos = n / 3; // trailing bytes short of a step are not a step
        const int outro = 2 - lado;
        for (int k = 0; k < saltos; ++k) {
            const int f = s[3 * k], t = s[3 * k + 1], c = s[3 * k + 2];
            const uint8_t tomada = p.Casas[c];
            ganho += (tomada & DAMA) ? 30 : 10;
            // a jump in the mover's forward direction earns the mover a point
            if (Conclui) ganho += (lado == 1 ? f > t : f < t) ? 1 : -1;
            const int numTomada = tomada & NUMERO;
            if (numTomada >= 1 && numTomada <= 12) p.Pecas[numTomada][outro] = 0;
            p.Casas[c] = Conclui ? 0 : BORDA;
        }
        para = s[3 * saltos - 2];
    }
    p.Casas[de] = 0; // first: the move may end where it began
    // crowned only where a whole move ends
    // the far row as one unsigned compare: the side changes from move to move, and a
    // branch on it would be mispredicted half the time
    const int fundo = lado == 1 ? 12 : 82; // first square of the mover's far row
    if (Conclui && static_cast<unsigned>(para - fundo) < 8u && peca != 0 && !(peca & DAMA) &&
        (n == 2 || n % 3 == 0)) {
        peca |= DAMA;
        ganho += 20;
    }
    p.Casas[para] = peca;
    const int numero = peca & NUMERO;
    if (numero >= 1 && numero <= 12)
        p.Pecas[numero][lado - 1] = static_cast<uint8_t>(para | (peca & DAMA));
    p.Saldo = static_cast<int16_t>(p.Saldo + (lado == 1 ? ganho : -ganho));
}

// What a whole move played in place changed, so that it can be taken back: perft and the
// search walk the tree on one position instead of copying it into every child.
struct Desfazer {
    int16_t saldo;
    uint8_t peca;      // the byte of the moving piece on its first square
    uint8_t pecaAntes; // its entry in Pecas
    // the bytes of the jumped squares, in the move's order, and the Pecas entries of the
    // jumped pieces: as many as a move can hold
    uint8_t tomadas[Jogada::MAXIMO / 3];
    uint8_t numerosAntes[Jogada::MAXIMO / 3];
};

// FazJogadaGerada of a whole move (crowning, points by direction), keeping in `d` what
// DesfazJogada needs to give the position back.
void JogaCapturaNoLugar(Posicao& p, const uint8_t* s, int n, Desfazer& d);
void DesfazCaptura(Posicao& p, const uint8_t* s, int n, const Desfazer& d);

// A plain move (from, to) played in place: the common case, kept apart so that a loop over
// a list of plain moves needs nothing else.
inline void JogaSimplesNoLugar(Posicao& p, int de, int para, Desfazer& d) {
    const int lado = p.Vez;
    uint8_t peca = p.Casas[de];
    d.saldo = p.Saldo;
    d.peca = peca;
    d.pecaAntes = 0;
    p.Casas[de] = 0;
    const int fundo = lado == 1 ? 12 : 82; // first square of the mover's far row
    int ganho = 0;
    if (static_cast<unsigned>(para - fundo) < 8u && peca != 0 && !(peca & DAMA)) {
        peca |= DAMA;
        ganho = lado == 1 ? 20 : -20;
    }
    p.Casas[para] = peca;
    const int numero = peca & NUMERO;
    if (numero >= 1 && numero <= 12) {
        uint8_t& entrada = p.Pecas[numero][lado - 1];
        d.pecaAntes = entrada;
        entrada = static_cast<uint8_t>(para | (peca & DAMA));
    }
    p.Saldo = static_cast<int16_t>(p.Saldo + ganho);
}

// A plain move of the mover's own piece to a free square, crowned when `coroa`: what
// FazJogadaGerada does with it, without the tests a move of any kind needs.
inline void JogaSimples(Posicao& p, int de, int para, bool coroa) {
    uint8_t peca = p.Casas[de];
    p.Casas[de] = 0;
    if (coroa) {
        peca |= DAMA;
        p.Saldo = static_cast<int16_t>(p.Saldo + (p.Vez == 1 ? 20 : -20));
    }
    p.Casas[para] = peca;
    const int numero = peca & NUMERO;
    if (numero >= 1 && numero <= 12)
        p.Pecas[numero][p.Vez - 1] = static_cast<uint8_t>(para | (peca & DAMA));
}

inline void DesfazSimples(Posicao& p, int de, int para, const Desfazer& d) {
    p.Casas[para] = 0;
    p.Casas[de] = d.peca;
    const int numero = d.peca & NUMERO;
    if (numero >= 1 && numero <= 12) p.Pecas[numero][p.Vez - 1] = d.pecaAntes;
    p.Saldo = d.saldo;
}

inline void JogaNoLugar(Posicao& p, const uint8_t* s, int n, Desfazer& d) {
    if (n == 2) [[likely]]
        JogaSimplesNoLugar(p, s[0], s[1], d);
    else
        JogaCapturaNoLugar(p, s, n, d);
}

// Takes back the move s[0..n) that JogaNoLugar played on p; p.Vez is the mover's again.
inline void DesfazJogada(Posicao& p, const uint8_t* s, int n, const Desfazer& d) {
    if (n == 2) [[likely]]
        DesfazSimples(p, s[0], s[1], d);
    else
        DesfazCaptura(p, s, n, d);
}

// True when every square the move names lies on the board; a move from the peer is played
// only then.
bool JogadaNoTabuleiro(const uint8_t* s, int n);

} // namespace velmora
