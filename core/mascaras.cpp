#include "core/mascaras.h"

#include "core/casas.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace velmora {

Mascaras LeMascarasSimples(const Posicao& p) {
    Mascaras r;
    const auto& C = p.Casas;
    for (int s = 0; s < 96; ++s) {
        if (C[s] == 0) r.vazias |= Bit(s);
        if (C[s] & LADO1) r.lados[0] |= Bit(s);
        if (C[s] & LADO2) r.lados[1] |= Bit(s);
        if (C[s] & DAMA) r.damas |= Bit(s);
        for (int l = 0; l < 2; ++l)
            if ((C[s] & BitDoLado(l + 1)) && !(C[s] & NUMERO)) r.semNumero[l] = true;
    }
    return r;
}

Mascaras LeMascaras(const Posicao& p) {
#if !defined(__SSE2__)
    return LeMascarasSimples(p);
#else
    Mascaras r;
    const auto& C = p.Casas;
    // sixteen squares at a time: a byte compare, then one bit per byte
    const __m128i zero = _mm_setzero_si128();
    const __m128i lado1 = _mm_set1_epi8(static_cast<char>(LADO1));
    const __m128i lado2 = _mm_set1_epi8(static_cast<char>(LADO2));
    const __m128i numero = _mm_set1_epi8(NUMERO);
    auto bits = [](__m128i x) { return static_cast<uint16_t>(_mm_movemask_epi8(x)); };
    unsigned sem1 = 0, sem2 = 0;
    for (int k = 0; k < 6; ++k) {
        const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(C.data() + 16 * k));
        const uint16_t vaz = bits(_mm_cmpeq_epi8(v, zero));
        const uint16_t l1 =
            static_cast<uint16_t>(~bits(_mm_cmpeq_epi8(_mm_and_si128(v, lado1), zero)));
        const uint16_t l2 =
            static_cast<uint16_t>(~bits(_mm_cmpeq_epi8(_mm_and_si128(v, lado2), zero)));
        const uint16_t semNumero = bits(_mm_cmpeq_epi8(_mm_and_si128(v, numero), zero));
        sem1 |= l1 & semNumero;
        sem2 |= l2 & semNumero;
        r.vazias |= static_cast<Mascara>(vaz) << (16 * k);
        r.lados[0] |= static_cast<Mascara>(l1) << (16 * k);
        r.lados[1] |= static_cast<Mascara>(l2) << (16 * k);
        r.damas |= static_cast<Mascara>(bits(v)) << (16 * k); // bit 128 of each byte
    }
    r.semNumero = {sem1 != 0, sem2 != 0};
    return r;
#endif
}

void AplicaJogada(Mascaras& m, const uint8_t* s, int n, const Posicao& depois) {
    if (n < 2) return;
    if (n == 2) {
        // a plain move, the common case: the same changes as one step of the loop below
        const int f = s[0], t = s[1];
        const Mascara de = Bit(f), para = Bit(t);
        const int lado = (m.lados[0] >> f) & 1 ? 0 : 1;
        const Mascara coroada = (depois.Casas[t] & DAMA) ? para : 0;
        m.lados[lado] = (m.lados[lado] & ~de) | para;
        m.damas = (m.damas & ~(de | para)) | (((m.damas >> f) & 1) << t) | coroada;
        m.vazias = (m.vazias | de) & ~para;
        return;
    }
    int ultima = s[1];
    // the steps of FazJogada: (from, to, jumped), the last jumped square may be missing
    for (int i = 0;; i += 3) {
        const int f = s[i], t = s[i + 1], c = n - i >= 3 ? s[i + 2] : 0;
        const int lado = (m.lados[0] >> f) & 1 ? 0 : 1;
        const Mascara dama = ((m.damas >> f) & 1) << t;
        m.lados[lado] = (m.lados[lado] & ~Bit(f)) | Bit(t);
        m.damas = (m.damas & ~Bit(f) & ~Bit(t)) | dama;
        m.vazias = (m.vazias | Bit(f)) & ~Bit(t);
        if (c != 0) {
            m.lados[0] &= ~Bit(c);
            m.lados[1] &= ~Bit(c);
            m.damas &= ~Bit(c);
            m.vazias |= Bit(c);
        }
        ultima = t;
        if (n - i < 6) break;
    }
    if (depois.Casas[ultima] & DAMA) m.damas |= Bit(ultima); // crowned at the end
}

} // namespace velmora
