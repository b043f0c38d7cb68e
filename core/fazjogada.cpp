// The captures' side of playing a move in place and taking it back.
#include "core/fazjogada.h"

namespace velmora {

void JogaCapturaNoLugar(Posicao& p, const uint8_t* s, int n, Desfazer& d) {
    const int lado = p.Vez;
    const int de = s[0];
    uint8_t peca = p.Casas[de];
    d.saldo = p.Saldo;
    d.peca = peca;
    const int numero = peca & NUMERO;
    d.pecaAntes = (numero >= 1 && numero <= 12) ? p.Pecas[numero][lado - 1] : 0;
    int ganho = 0; // for the mover
    int para = s[1];
    if (n >= 3) {
        const int saltos = n / 3;
        const int outro = 2 - lado;
        for (int k = 0; k < saltos; ++k) {
            const int f = s[3 * k], t = s[3 * k + 1], c = s[3 * k + 2];
            const uint8_t tomada = p.Casas[c];
            d.tomadas[k] = tomada;
            ganho += (tomada & DAMA) ? 30 : 10;
            ganho += (lado == 1 ? f > t : f < t) ? 1 : -1;
            const int numTomada = tomada & NUMERO;
            if (numTomada >= 1 && numTomada <= 12) {
                d.numerosAntes[k] = p.Pecas[numTomada][outro];
                p.Pecas[numTomada][outro] = 0;
            }
            p.Casas[c] = 0;
        }
        para = s[3 * saltos - 2];
    }
    p.Casas[de] = 0;
    const int fundo = lado == 1 ? 12 : 82;
    if (static_cast<unsigned>(para - fundo) < 8u && peca != 0 && !(peca & DAMA) &&
        (n == 2 || n % 3 == 0)) {
        peca |= DAMA;
        ganho += 20;
    }
    p.Casas[para] = peca;
    if (numero >= 1 && numero <= 12)
        p.Pecas[numero][lado - 1] = static_cast<uint8_t>(para | (peca & DAMA));
    p.Saldo = static_cast<int16_t>(p.Saldo + (lado == 1 ? ganho : -ganho));
}

void DesfazCaptura(Posicao& p, const uint8_t* s, int n, const Desfazer& d) {
    const int lado = p.Vez;
    const int de = s[0];
    const int para = n >= 3 ? s[3 * (n / 3) - 2] : s[1];
    p.Casas[para] = 0; // first: the move may end where it began
    p.Casas[de] = d.peca;
    const int numero = d.peca & NUMERO;
    if (numero >= 1 && numero <= 12) p.Pecas[numero][lado - 1] = d.pecaAntes;
    if (n >= 3) {
        const int saltos = n / 3;
        const int outro = 2 - lado;
        for (int k = 0; k < saltos; ++k) {
            const uint8_t tomada = d.tomadas[k];
            p.Casas[s[3 * k + 2]] = tomada;
            const int numTomada = tomada & NUMERO;
            if (numTomada >= 1 && numTomada <= 12) p.Pecas[numTomada][outro] = d.numerosAntes[k];
        }
    }
    p.Saldo = d.saldo;
}

} // namespace velmora
