#include "core/mascaras.h"

#include "core/casas.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace velmora {

namespace {

// True when Pecas holds the numbered pieces of the mailbox and no other: each entry on a
// square that holds that side's piece of that number, as many entries as pieces.
bool PecasDoTabuleiro(const Posicao& p, const Mascaras& r) {
    for (int lado = 1; lado <= 2; ++lado) {
        int entradas = 0;
        for (int n = 1; n <= 12; ++n) {
            const int casa = p.Peca(n, lado) & 127;
            if (casa == 0) continue;
            if (!CasaDoTabuleiro(casa)) return false;
            const uint8_t v = p.Casas[casa];
            if (!(v & BitDoLado(lado)) || (v & NUMERO) != n) return false;
            ++entradas;
        }
        if (entradas != __builtin_popcountll(r.lados[lado - 1])) return false;
    }
    return true;
}

// The light squares of a side's pieces also send the board to the slow way; and whether
// Pecas is the mailbox's.
void MarcaLenta(Mascaras& r, bool sem1, bool sem2, const Posicao& p) {
    r.soLenta = {sem1 || (r.lados[0] & ~CASAS_ESCURAS) != 0,
                 sem2 || (r.lados[1] & ~CASAS_ESCURAS) != 0};
    r.fiel = PecasDoTabuleiro(p, r);
}

} // namespace

Mascaras LeMascarasSimples(const Posicao& p) {
    Mascaras r;
    const auto& C = p.Casas;
    bool sem[2] = {false, false};
    for (int i = 0; i < 64; ++i) {
        const uint8_t v = C[CasaDoBit(i)];
        const Mascara b = Mascara{1} << i;
        if (v == 0 && (CASAS_ESCURAS & b)) r.vazias |= b;
        if (v & LADO1) r.lados[0] |= b;
        if (v & LADO2) r.lados[1] |= b;
        if (v & DAMA) r.damas |= b;
        for (int l = 0; l < 2; ++l)
            if ((v & BitDoLado(l + 1)) && !(v & NUMERO)) sem[l] = true;
    }
    MarcaLenta(r, sem[0], sem[1], p);
    return r;
}

Mascaras LeMascaras(const Posicao& p) {
#if !defined(__SSE2__)
    return LeMascarasSimples(p);
#else
    Mascaras r;
    const auto& C = p.Casas;
    // two rows of eight squares at a time: a byte compare, then one bit per byte
    const __m128i zero = _mm_setzero_si128();
    const __m128i lado1 = _mm_set1_epi8(static_cast<char>(LADO1));
    const __m128i lado2 = _mm_set1_epi8(static_cast<char>(LADO2));
    const __m128i numero = _mm_set1_epi8(NUMERO);
    auto bits = [](__m128i x) { return static_cast<Mascara>(_mm_movemask_epi8(x)); };
    Mascara sem1 = 0, sem2 = 0, vazias = 0;
    for (int k = 0; k < 4; ++k) {
        // rows 2k+1 and 2k+2 begin at squares 20k+12 and 20k+22
        const __m128i a = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(C.data() + 20 * k + 12));
        const __m128i b = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(C.data() + 20 * k + 22));
        const __m128i v = _mm_unpacklo_epi64(a, b);
        const Mascara vaz = bits(_mm_cmpeq_epi8(v, zero));
        const Mascara l1 = ~bits(_mm_cmpeq_epi8(_mm_and_si128(v, lado1), zero)) & 0xffff;
        const Mascara l2 = ~bits(_mm_cmpeq_epi8(_mm_and_si128(v, lado2), zero)) & 0xffff;
        const Mascara semNumero = bits(_mm_cmpeq_epi8(_mm_and_si128(v, numero), zero));
        sem1 |= l1 & semNumero;
        sem2 |= l2 & semNumero;
        vazias |= vaz << (16 * k);
        r.lados[0] |= l1 << (16 * k);
        r.lados[1] |= l2 << (16 * k);
        r.damas |= bits(v) << (16 * k); // bit 128 of each byte
    }
    r.vazias = vazias & CASAS_ESCURAS;
    MarcaLenta(r, sem1 != 0, sem2 != 0, p);
    return r;
#endif
}

Mascara DamasDe(const Posicao& p) {
    const Mascaras m = LeMascaras(p);
    return m.damas & (m.lados[0] | m.lados[1]);
}

void AplicaJogada(Mascaras& m, const uint8_t* s, int n, const Posicao& depois) {
    if (n < 2) return;
    if (n == 2) {
        // a plain move, the common case: the same changes as one step of the loop below
        AplicaSimples(m, Bit(s[0]), Bit(s[1]), depois.Casas[s[1]] & DAMA);
        return;
    }
    int ultima = s[1];
    // the steps of FazJogada: (from, to, jumped), the last jumped square may be missing
    for (int i = 0;; i += 3) {
        const int t = s[i + 1], c = n - i >= 3 ? s[i + 2] : 0;
        const Mascara de = Bit(s[i]), para = Bit(t);
        const int lado = (m.lados[0] & de) ? 0 : 1;
        const Mascara dama = (m.damas & de) ? para : 0;
        m.lados[lado] = (m.lados[lado] & ~de) | para;
        m.damas = (m.damas & ~(de | para)) | dama;
        m.vazias = (m.vazias | de) & ~para;
        if (c != 0) {
            const Mascara tomada = Bit(c);
            m.lados[0] &= ~tomada;
            m.lados[1] &= ~tomada;
            m.damas &= ~tomada;
            m.vazias |= tomada;
        }
        ultima = t;
        if (n - i < 6) break;
    }
    if (depois.Casas[ultima] & DAMA) m.damas |= Bit(ultima); // crowned at the end
}

} // namespace velmora
