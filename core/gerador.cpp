#include "core/gerador.h"

#include "core/casas.h"
#include "core/fazjogada.h"

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace velmora {

// A plain move is written as one word: its length and its two squares are the first bytes.
static_assert(offsetof(Jogada, c) == 1);

namespace {

// Direction orders; the first entry is the count.
constexpr int ordemTodas[] = {4, 1, 2, 3, 4};
constexpr int ordemTodasInversa[] = {4, 4, 3, 2, 1};
constexpr int frente1[] = {2, 1, 2};
constexpr int frente2[] = {2, 4, 3};

inline bool ParaFrente(int lado, int d) {
    return lado == 1 ? d <= 2 : d >= 3;
}

} // namespace

Gerador::Gerador() : ListaJogadas(std::make_unique<Jogada[]>(CAPACIDADE + 1)) {
    OrdemNatural();
}

void Gerador::OrdemNatural() {
    OrdemPecas[0] = 0;
    for (int i = 1; i <= 12; ++i) OrdemPecas[i] = i;
    InverteOrdem();
}

namespace {

// The human's order: piece number n in place n.
constexpr int numeroNatural[13] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};

static_assert(sizeof(Posicao::Pecas) == 26);

#if defined(__SSE2__)
// Every other bit of x from bit 0 on, packed into its low byte.
inline unsigned Compacta(unsigned x) {
    x &= 0x5555u;
    x = (x | (x >> 1)) & 0x3333u;
    x = (x | (x >> 2)) & 0x0f0fu;
    return (x | (x >> 4)) & 0x00ffu;
}

// The squares of Pecas (seven bits of each entry), sixteen entries to a register: the
// numbers 0..7 in `baixo`, 5..12 in `alto` (the last sixteen bytes of the table). Entry
// [n][lado - 1] is byte 2n + lado - 1 of the table.
struct EntradasDePecas {
    __m128i baixo, alto;

    explicit EntradasDePecas(const Posicao& p) {
        const auto* pecas = reinterpret_cast<const uint8_t*>(p.Pecas.data());
        const __m128i sete = _mm_set1_epi8(0x7f);
        baixo = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pecas)), sete);
        alto = _mm_and_si128(_mm_loadu_si128(reinterpret_cast<const __m128i*>(pecas + 10)), sete);
    }
    // One bit per byte of each register: the entries that hold square `casa`.
    std::pair<unsigned, unsigned> Iguais(int casa) const {
        const __m128i c = _mm_set1_epi8(static_cast<char>(casa));
        return {static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(baixo, c))),
                static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(alto, c)))};
    }
    // The piece numbers (bits 1..12) of side `lado` among such bits.
    static unsigned Numeros(unsigned b, unsigned a, int lado) {
        return (Compacta(b >> (lado - 1)) | Compacta(a >> (lado - 1)) << 5) & 0x1ffeu;
    }
};
#endif

// The piece numbers (as bits 1..12) of side `lado` whose square in Pecas is one of the
// squares of `tomam`: sixteen entries of Pecas compared at a time.
unsigned NumerosNasCasas(const Posicao& p, int lado, Mascara tomam) {
    unsigned numeros = 0;
#if defined(__SSE2__)
    const EntradasDePecas e(p);
    for (; tomam; tomam &= tomam - 1) {
        const auto [b, a] = e.Iguais(CasaDoBit(__builtin_ctzll(tomam)));
        numeros |= EntradasDePecas::Numeros(b, a, lado);
    }
#else
    for (int n = 1; n <= 12; ++n)
        numeros |= static_cast<unsigned>((tomam & Bit(p.Peca(n, lado) & 127)) != 0) << n;
#endif
    return numeros;
}

// True when every piece of side `lado` in Pecas stands on a square of `damas`.
bool TodasEm(const Posicao& p, int lado, Mascara damas) {
    unsigned fora = 0;
#if defined(__SSE2__)
    const EntradasDePecas e(p);
    // the entries that hold a piece, less those on the squares of `damas`
    auto [b, a] = e.Iguais(0);
    b = ~b & 0xffffu;
    a = ~a & 0xffffu;
    for (; damas && (a | b); damas &= damas - 1) {
        const auto [nb, na] = e.Iguais(CasaDoBit(__builtin_ctzll(damas)));
        b &= ~nb;
        a &= ~na;
    }
    fora = EntradasDePecas::Numeros(b, a, lado);
#else
    for (int n = 1; n <= 12; ++n) {
        const int casa = p.Peca(n, lado) & 127;
        fora |= static_cast<unsigned>(casa != 0 && !(damas & Bit(casa))) << n;
    }
#endif
    return fora == 0;
}

} // namespace

void Gerador::InverteOrdem() {
    lugarNaOrdem.fill(0);
    for (int i = 1; i <= 12; ++i) lugarNaOrdem[OrdemPecas[i] & NUMERO] = static_cast<uint8_t>(i);
}

template <int Lado>
void Gerador::GeraQueTomam(Posicao& p, Mascara tomam, bool computador, const Mascaras* m) {
    // The pieces that can take are found by their squares, and asked by their places in the
    // order, from the lowest place up, as a walk over all twelve would ask them.
    unsigned numeros = 0;
    if (m && m->fiel && !m->soLenta[Lado - 1]) {
        // each square's own number: Pecas holds the same
        for (Mascara t = tomam; t; t &= t - 1)
            numeros |= 1u << (p.Casas[CasaDoBit(__builtin_ctzll(t))] & NUMERO);
    } else {
        numeros = NumerosNasCasas(p, Lado, tomam);
    }
    unsigned lugares = numeros;
    const int* numeroDoLugar = numeroNatural;
    if (computador) {
        lugares = 0;
        for (unsigned n = numeros; n; n &= n - 1) lugares |= 1u << lugarNaOrdem[__builtin_ctz(n)];
        numeroDoLugar = OrdemPecas.data();
    }
    Jogada vazia{Jogada::SemZerar{}};
    vazia.tam = 0;
    // Under rule sets 2 to 4 each capturing piece of the computer's list keeps its own
    // longest routes: the walk over all twelve starts each place afresh, the last ones
    // after the final piece too.
    auto recomeca = [&] {
        if (computador && Regra != 1 && MaiorTexto >= 3) {
            MaiorTexto = 3;
            BaseCaptura = ProximaLivre;
        }
    };
    // The routes are read off the masks when they are the board's own. A board with a
    // piece on a light square goes the mailbox's way.
    const bool mascaras = m && m->fiel && !m->soLenta[0] && !m->soLenta[1];
    int ultimo = 0;
    for (; lugares; lugares &= lugares - 1) {
        recomeca();
        ultimo = __builtin_ctz(lugares);
        const int casa = p.Peca(numeroDoLugar[ultimo], Lado) & 127;
        // The masks' routes leave out the piece's plain moves (13 at most), which its first
        // capture would wipe: that holds while the plain offers cannot fill the table.
        if (mascaras && ProximaLivre + 16 <= CAPACIDADE && RotasNasMascaras<Lado>(casa, *m))
            continue;
        GeraPeca(p, casa, 0, vazia, 0);
    }
    if (ultimo < 12) recomeca();
}

int Gerador::Rotacao() {
    // xorshift32: a fresh rotation for each call
    rotacao ^= rotacao << 13;
    rotacao ^= rotacao >> 17;
    rotacao ^= rotacao << 5;
    return 1 + static_cast<int>(rotacao % 4);
}

inline void Gerador::AnotaSimples(int de, int para) {
    if (2 > MaiorTexto) {
        MaiorTexto = 2;
        ProximaLivre = BaseCaptura;
    }
    if (MaiorTexto != 2) return;
    if (SegueLinha) {
        const Jogada& guardada = ListaJogadas[iniNo];
        if (guardada.tam == 2 && guardada.c[0] == de && guardada.c[1] == para) return;
    }
    if (ProximaLivre >= CAPACIDADE) {
        Estouro = true;
        return;
    }
    Jogada& slot = ListaJogadas[++ProximaLivre];
    slot.tam = 2;
    slot.c[0] = static_cast<uint8_t>(de);
    slot.c[1] = static_cast<uint8_t>(para);
}

void Gerador::AnotaJogada(const Jogada& m) {
    const int n = m.tam;
    if (n > MaiorTexto) {
        MaiorTexto = n;
        ProximaLivre = BaseCaptura;
    }
    if (n != MaiorTexto) return;
    if (SegueLinha && ListaJogadas[iniNo] == m) return;
    if (ProximaLivre >= CAPACIDADE) {
        Estouro = true;
        return;
    }
    ListaJogadas[++ProximaLivre] = m;
}

void Gerador::GeraPeca(Posicao& p, int casa, int saltos, Jogada& texto, int barrada) {
    switch (Regra) {
    case 1:
        GeraRegra1(p, casa, saltos, texto, barrada);
        break;
    case 2:
        GeraRegra2(p, casa, saltos, texto, barrada);
        break;
    case 3:
        GeraRegra3(p, casa, saltos, texto, barrada);
        break;
    case 4:
        GeraRegra4(p, casa, saltos, texto, barrada);
        break;
    default:
        break;
    }
}

void Gerador::GeraRegra1(Posicao& p, int casa, int saltos, Jogada& texto, int barrada) {
    const bool dama = p.Casas[casa] & DAMA;
    if (!dama)
        return p.Vez == 1 ? GeraCurta<1, 1>(p, casa, saltos, texto, barrada)
                          : GeraCurta<1, 2>(p, casa, saltos, texto, barrada);
    if (p.Vez == 1) return GeraDama(p, casa, saltos, texto, barrada, ordemTodas);
    const int r = Rotacao();
    int ordem[5] = {4, 0, 0, 0, 0};
    for (int i = 1; i <= 4; ++i) ordem[i] = r + i > 4 ? r + i - 4 : r + i;
    GeraDama(p, casa, saltos, texto, barrada, ordem);
}

void Gerador::GeraRegra2(Posicao& p, int casa, int saltos, Jogada& texto, int barrada) {
    if (!(p.Casas[casa] & DAMA))
        return p.Vez == 1 ? GeraCurta<2, 1>(p, casa, saltos, texto, barrada)
                          : GeraCurta<2, 2>(p, casa, saltos, texto, barrada);
    GeraDama(p, casa, saltos, texto, barrada, p.Vez == 1 ? ordemTodas : ordemTodasInversa);
}

void Gerador::GeraRegra3(Posicao& p, int casa, int saltos, Jogada& texto, int barrada) {
    if (!(p.Casas[casa] & DAMA))
        return p.Vez == 1 ? GeraCurta<3, 1>(p, casa, saltos, texto, barrada)
                          : GeraCurta<3, 2>(p, casa, saltos, texto, barrada);
    GeraDama(p, casa, saltos, texto, barrada, p.Vez == 1 ? ordemTodas : ordemTodasInversa);
}

void Gerador::GeraRegra4(Posicao& p, int casa, int saltos, Jogada& texto, int barrada) {
    if (p.Vez == 1)
        GeraCurta<4, 1>(p, casa, saltos, texto, barrada);
    else
        GeraCurta<4, 2>(p, casa, saltos, texto, barrada);
}

template <class Segue>
inline void Gerador::Salto(Posicao& p, Jogada& rota, int de, int para, int saltada, Segue&& segue) {
    if (Atalho) {
        auto& C = p.Casas;
        const uint8_t peca = C[de], tomada = C[saltada];
        C[para] = peca;
        C[de] = 0;
        C[saltada] = BORDA; // jumped: it blocks the way until the move ends
        rota.acrescenta(static_cast<uint8_t>(de), static_cast<uint8_t>(para),
                        static_cast<uint8_t>(saltada));
        segue(p, rota);
        rota.tam = static_cast<uint8_t>(rota.tam - 3);
        C[saltada] = tomada;
        C[para] = 0; // it was free: the jump landed there
        C[de] = peca;
        return;
    }
    Jogada copiaRota = rota;
    copiaRota.acrescenta(static_cast<uint8_t>(de), static_cast<uint8_t>(para),
                         static_cast<uint8_t>(saltada));
    Posicao copia = p;
    FazJogadaGerada(copia, copiaRota.c.data() + copiaRota.tam - 3, 3, false);
    segue(copia, copiaRota);
}

// Where a jump of a short piece goes on: rule set 2 calls itself, rule set 3 finishes the
// capture of a man under rule set 1 (backward jumps allowed after the first), the others go
// through GeraPeca.
void Gerador::Continua(Posicao& copia, int casa, int saltos, Jogada& texto, int barrada,
                       int geradora) {
    switch (geradora) {
    case 2:
        GeraRegra2(copia, casa, saltos, texto, barrada);
        break;
    case 3: {
        const int guardada = Regra;
        Regra = 1;
        GeraRegra1(copia, casa, saltos, texto, barrada);
        Regra = guardada;
        break;
    }
    default:
        GeraPeca(copia, casa, saltos, texto, barrada);
        break;
    }
}

// A man under every rule set, and a king under rule set 4: steps to the next square and
// jumps a piece next to it.
template <int Geradora, int Lado>
void Gerador::GeraCurta(Posicao& p, int casa, int saltos, Jogada& texto, int barrada) {
    constexpr uint8_t inimigo = BitDoLado(3 - Lado);
    const bool dama = p.Casas[casa] & DAMA;
    const int* ordem;
    if (Geradora == 1 || dama)
        ordem = Lado == 1 ? ordemTodas : ordemTodasInversa;
    else
        ordem = Lado == 1 ? frente1 : frente2;
    const int direcoes = ordem[0];

    for (int i = 1; i <= direcoes; ++i) {
        const int d = ordem[i];
        if (Geradora == 1 && d == barrada) continue;
        const int m = casa + Direcoes[d];
        const uint8_t vizinha = p.Casas[m];
        if (vizinha & inimigo) {
            const int l = m + Direcoes[d];
            if (p.Casas[l] == 0) {
                Salto(p, texto, casa, l, m, [&](Posicao& q, Jogada& rota) {
                    Continua(q, l, saltos + 1, rota, 5 - d, Geradora);
                });
            }
        } else if (saltos == 0 && vizinha == 0 && (dama || ParaFrente(Lado, d))) {
            AnotaSimples(casa, m);
        }
    }
    if (texto.tam) AnotaJogada(texto); // an empty text is always dropped
}

// A flying king: moves along a free diagonal and jumps a single piece at any distance,
// landing on any free square behind it.
void Gerador::GeraDama(Posicao& p, int casa, int saltos, Jogada& texto, int barrada,
                       const int* ordem) {
    const uint8_t proprio = BitDoLado(p.Vez);
    for (int i = 1; i <= ordem[0]; ++i) {
        const int d = ordem[i];
        if (d == barrada) continue;
        const int passo = Direcoes[d];
        int w = casa, saltada = 0;
        for (;;) {
            if (p.Casas[w + passo] & (BORDA | proprio)) break;
            w += passo;
            if (p.Casas[w] != 0) {
                if (saltada) break;
                saltada = w;
                continue;
            }
            if (saltada) {
                Salto(p, texto, casa, w, saltada,
                      [&](Posicao& q, Jogada& rota) { GeraPeca(q, w, saltos + 1, rota, 5 - d); });
            } else if (saltos == 0) {
                AnotaSimples(casa, w);
            }
        }
    }
    if (texto.tam) AnotaJogada(texto);
}

namespace {

inline constexpr auto casaDoBit = [] {
    std::array<uint8_t, 64> t{};
    for (int i = 0; i < 64; ++i) t[i] = static_cast<uint8_t>(CasaDoBit(i));
    return t;
}();

} // namespace

// GeraCurta on the masks: a jump takes the jumped piece out of `alheias`, so that it blocks
// the way without being taken again, and frees the square it left. A route is offered
// where it cannot go on: the shorter routes GeraCurta offers on the way back are always
// dropped, the list holding a longer one by then.
template <int Geradora, int Lado, bool Dama>
bool Gerador::RotasCurtas(int s, Mascara vazias, Mascara alheias, Jogada& rota) {
    const Mascara de = Mascara{1} << s;
    bool saltou = false;
    auto tenta = [&]<int d>() {
        constexpr int passo = Direcoes[d], b = PassoDoBit(passo);
        const Mascara saltada = Anda<passo>(de), para = Anda<passo>(saltada);
        if (!(saltada & alheias) || !(para & vazias)) return;
        rota.acrescenta(casaDoBit[s], casaDoBit[s + 2 * b], casaDoBit[s + b]);
        // rule set 3 goes on as rule set 1 after the first jump
        RotasCurtas<Geradora == 3 ? 1 : Geradora, Lado, Dama>(s + 2 * b, (vazias | de) & ~para,
                                                              alheias & ~saltada, rota);
        rota.tam = static_cast<uint8_t>(rota.tam - 3);
        saltou = true;
    };
    // every direction, or forward only, in the side's order
    constexpr bool todas = Geradora == 1 || Dama;
    if constexpr (Lado == 1) {
        tenta.template operator()<1>();
        tenta.template operator()<2>();
        if constexpr (todas) {
            tenta.template operator()<3>();
            tenta.template operator()<4>();
        }
    } else {
        tenta.template operator()<4>();
        tenta.template operator()<3>();
        if constexpr (todas) {
            tenta.template operator()<2>();
            tenta.template operator()<1>();
        }
    }
    if (!saltou && rota.tam) AnotaJogada(rota);
    return saltou;
}

namespace {

// A flying king's capture along direction d from bit s: the landing squares (0 when there
// is none) and, in `saltada`, the bit of the piece jumped. Only the first piece met
// matters: one of `alheias` with free squares behind it, up to the next piece. Without
// branches: a ray with no piece left meets the light corner square past its end, which
// holds nothing.
template <int d>
inline Mascara PousosNaDirecao(int s, Mascara ocupadas, Mascara alheias, int& saltada) {
    constexpr Mascara canto = d >= 3 ? Mascara{1} << 63 : 1; // past the ray's end
    const int w = PrimeiraCasa<d>((Raios[s][d] & ocupadas) | canto);
    const Mascara alem = Raios[w][d];
    const int z = PrimeiraCasa<d>((alem & ocupadas) | canto);
    saltada = w;
    return alem & ~(Raios[z][d] | Mascara{1} << z) & (Mascara{0} - ((alheias >> w) & 1));
}

} // namespace

// GeraDama on the masks: the landing squares of each direction walked from the nearest, as
// the mailbox's walk meets them. A jumped piece stays out of `vazias` and blocks, the way
// back too, so no direction needs barring. The plain moves are not offered: this runs only
// for a king that can take, whose first capture wipes them. The rays are read before any
// is walked, without branches, so that side 2's drawn order costs no guess of a branch;
// past the first square only the two across the jump are read, the one along it being
// what every landing square of that jump sees alike.
template <int Geradora, int Lado, int Vinda>
bool Gerador::RotasLongas(int s, Mascara vazias, Mascara alheias, Jogada& rota, Mascara frente,
                          int saltadaFrente) {
    int r = 4; // the drawn rotation: the order starts after direction r
    if constexpr (Geradora == 1 && Lado == 2) r = Rotacao();
    const Mascara ocupadas = ~vazias;
    std::array<Mascara, 5> pousos;
    std::array<int, 5> saltadas;
    auto le = [&]<int d>() { pousos[d] = PousosNaDirecao<d>(s, ocupadas, alheias, saltadas[d]); };
    if constexpr (Vinda == 0) {
        le.template operator()<1>();
        le.template operator()<2>();
        le.template operator()<3>();
        le.template operator()<4>();
    } else {
        constexpr int a = Vinda == 1 || Vinda == 4 ? 2 : 1;
        le.template operator()<a>();
        le.template operator()<5 - a>();
        pousos[Vinda] = frente;
        saltadas[Vinda] = saltadaFrente;
        pousos[5 - Vinda] = 0;
    }
    if (!(pousos[1] | pousos[2] | pousos[3] | pousos[4])) {
        if (rota.tam) AnotaJogada(rota);
        return false;
    }
    const Mascara de = Mascara{1} << s;
    auto caminha = [&]<int d>() {
        Mascara livres = pousos[d];
        if (!livres) return;
        const int w = saltadas[d];
        const Mascara restantes = alheias & ~(Mascara{1} << w);
        int saltadaAlem;
        const Mascara alem =
            PousosNaDirecao<d>(PrimeiraCasa<d>(livres), ocupadas, restantes, saltadaAlem);
        do {
            const int t = PrimeiraCasa<d>(livres);
            const Mascara para = Mascara{1} << t;
            livres &= ~para;
            rota.acrescenta(casaDoBit[s], casaDoBit[t], casaDoBit[w]);
            RotasLongas<Geradora, Lado, d>(t, (vazias | de) & ~para, restantes, rota, alem,
                                           saltadaAlem);
            rota.tam = static_cast<uint8_t>(rota.tam - 3);
        } while (livres);
    };
    auto emOrdem = [&]<int d1, int d2, int d3, int d4>() {
        caminha.template operator()<d1>();
        caminha.template operator()<d2>();
        caminha.template operator()<d3>();
        caminha.template operator()<d4>();
    };
    if (Lado == 2 && Geradora != 1)
        emOrdem.template operator()<4, 3, 2, 1>();
    else if (r == 1)
        emOrdem.template operator()<2, 3, 4, 1>();
    else if (r == 2)
        emOrdem.template operator()<3, 4, 1, 2>();
    else if (r == 3)
        emOrdem.template operator()<4, 1, 2, 3>();
    else
        emOrdem.template operator()<1, 2, 3, 4>();
    return true;
}

template <int Lado> bool Gerador::RotasNasMascaras(int casa, const Mascaras& m) {
    constexpr int lado = Lado;
    const Mascara de = Bit(casa);
    if (!(m.lados[lado - 1] & de)) return false;
    const bool dama = m.damas & de;
    const int s = __builtin_ctzll(de);
    const Mascara alheias = m.lados[2 - lado];
    Jogada rota{Jogada::SemZerar{}};
    rota.tam = 0;
    if (dama && Regra != 4) {
        // A flying king. One that finds nothing to take draws its rotation again on the
        // mailbox, so the draw is taken back.
        const uint32_t guardada = rotacao;
        bool saltou = false;
        if (Regra == 1)
            saltou = RotasLongas<1, Lado, 0>(s, m.vazias, alheias, rota, 0, 0);
        else if (Regra == 2 || Regra == 3)
            saltou = RotasLongas<2, Lado, 0>(s, m.vazias, alheias, rota, 0, 0);
        if (!saltou) rotacao = guardada;
        return saltou;
    }
    auto curta = [&]<int Geradora, bool Dama>() {
        return RotasCurtas<Geradora, Lado, Dama>(s, m.vazias, alheias, rota);
    };
    switch (Regra) {
    case 1:
        return curta.template operator()<1, false>();
    case 2:
        return curta.template operator()<2, false>();
    case 3:
        return curta.template operator()<3, false>();
    case 4:
        return dama ? curta.template operator()<4, true>() : curta.template operator()<4, false>();
    default:
        return false;
    }
}

Gerador::Analise Gerador::Analisa(const Posicao& p) const {
    return Analisa(p, LeMascaras(p));
}

Gerador::Analise Gerador::Analisa(const Posicao& p, const Mascaras& m) const {
    return Analisa(p.Vez, m);
}

template <int Lado, class Numero> void Gerador::ListaSemCaptura(const Posicao& p, Numero&& numero) {
    // Every plain move is offered, so MaiorTexto is 2 from the first one on; with it set at
    // once the kings' own offers change nothing before them.
    MaiorTexto = 2;
    constexpr int lado = Lado;
    constexpr int f1 = Direcoes[lado == 1 ? 1 : 4], f2 = Direcoes[lado == 1 ? 2 : 3];
    // The board is read into a local copy and the list's end kept in a register: the bytes
    // written into the slots could otherwise be any of them, and each would be read again.
    std::array<uint8_t, 101> C;
    std::memcpy(C.data(), p.Casas.data(), C.size());
    Jogada* const lista = ListaJogadas.get();
    int proxima = ProximaLivre;
    // The stored move of the line stands first already; its copy in the list is dropped.
    // Most nodes have none, and their offers skip that test.
    const Jogada& guardada = lista[iniNo];
    const bool comGuardada = SegueLinha && guardada.tam == 2;
    const int gDe = comGuardada ? guardada.c[0] : 0, gPara = comGuardada ? guardada.c[1] : 0;
    auto percorre = [&](auto testaGuardada) {
        // A move is written as one word: its length, its first square (in `base`, once per
        // piece) and its second square. Written always (the byte after them is free), kept
        // only when the square is free and it isn't the stored move.
        auto oferece = [&](uint32_t base, int para) {
            const uint32_t palavra = base | static_cast<uint32_t>(para) << 16;
            std::memcpy(reinterpret_cast<unsigned char*>(lista + proxima + 1), &palavra,
                        sizeof palavra);
            if constexpr (decltype(testaGuardada)::value)
                proxima += (C[para] == 0) & !(static_cast<int>(base >> 8) == gDe && para == gPara);
            else
                proxima += C[para] == 0;
        };
        // A king's directions in its generator's order: under rule set 1 side 2 draws its
        // first direction for each king, as GeraRegra1 does.
        const int* ordemDama = lado == 1 ? ordemTodas : ordemTodasInversa;
        int rodada[5] = {4, 0, 0, 0, 0};
        for (int i = 1; i <= 12; ++i) {
            const int casa = p.Peca(numero(i), lado) & 127;
            if (casa == 0) continue;
            const uint32_t base = 2u | static_cast<uint32_t>(casa) << 8;
            if (!(C[casa] & DAMA)) {
                oferece(base, casa + f1);
                oferece(base, casa + f2);
                continue;
            }
            if (Regra == 4) { // a short king: one step each way
                for (int k = 1; k <= 4; ++k) oferece(base, casa + Direcoes[ordemDama[k]]);
                continue;
            }
            const int* ordem = ordemTodas;
            if (Regra == 1 && lado == 2) {
                const int r = Rotacao();
                for (int k = 1; k <= 4; ++k) rodada[k] = r + k > 4 ? r + k - 4 : r + k;
                ordem = rodada;
            } else if (Regra != 1) {
                ordem = ordemDama;
            }
            // A flying king with nothing to take: every free square up to the first piece.
            for (int k = 1; k <= 4; ++k) {
                const int passo = Direcoes[ordem[k]];
                for (int w = casa + passo; C[w] == 0; w += passo) oferece(base, w);
            }
        }
    };
    if (comGuardada)
        percorre(std::true_type{});
    else
        percorre(std::false_type{});
    ProximaLivre = proxima;
}

bool Gerador::ListaComputador(Posicao& p, const Posicao& referencia) {
    const Mascaras m = LeMascaras(p);
    return ListaComputador(p, DamasDe(referencia), Atalho ? Analisa(p, m) : Analise{}, &m);
}

bool Gerador::ListaComputador(Posicao& p, const Posicao& referencia, const Analise& a) {
    return ListaComputador(p, DamasDe(referencia), a);
}

bool Gerador::ListaComputador(Posicao& p, Mascara damasReferencia, const Analise& a,
                              const Mascaras* m) {
    if (p.Vez == 1) return ListaComputadorDe<1>(p, damasReferencia, a, m);
    if (p.Vez == 2) return ListaComputadorDe<2>(p, damasReferencia, a, m);
    p.FimLista = static_cast<int16_t>(p.IniLista - 1); // no side to move, no move
    return false;
}

template <int Lado>
bool Gerador::ListaComputadorDe(Posicao& p, Mascara damasReferencia, const Analise& a,
                                const Mascaras* m) {
    MaiorTexto = 1;
    ProximaLivre = BaseCaptura = p.IniLista - 1 + SegueLinha;
    iniNo = p.IniLista;
    constexpr int lado = Lado;
    // Every piece of the side counts, whether it is asked or not; with masks true to Pecas
    // its pieces are those of the masks.
    const bool todasDamas = m && m->fiel && !m->soLenta[lado - 1]
                                ? !(m->lados[lado - 1] & ~damasReferencia)
                                : TodasEm(p, lado, damasReferencia);
    Jogada vazia{Jogada::SemZerar{}}; // the route, built in place as captures are followed
    vazia.tam = 0;
    // A node holds at most 12 pieces of 13 plain moves each: the fast way never reaches
    // the end of the table.
    if (Atalho && a.tipo == 2 && ProximaLivre + 157 <= CAPACIDADE) {
        ListaSemCaptura<Lado>(p, [this](int i) { return OrdemPecas[i]; });
        p.FimLista = static_cast<int16_t>(ProximaLivre);
        return todasDamas;
    }
    // With a capture on the board, a piece that cannot take adds nothing to the list: only
    // the pieces that can are asked.
    if (Atalho && a.tipo == 3) {
        GeraQueTomam<Lado>(p, a.tomam, true, m);
        p.FimLista = static_cast<int16_t>(ProximaLivre);
        return todasDamas;
    }
    for (int i = 1; i <= 12; ++i) {
        if (Regra != 1 && MaiorTexto >= 3) {
            MaiorTexto = 3;
            BaseCaptura = ProximaLivre;
        }
        const int casa = p.Peca(OrdemPecas[i], lado) & 127;
        if (casa == 0) continue;
        GeraPeca(p, casa, 0, vazia, 0);
    }
    p.FimLista = static_cast<int16_t>(ProximaLivre);
    return todasDamas;
}

template bool Gerador::ListaComputadorDe<1>(Posicao&, Mascara, const Analise&, const Mascaras*);
template bool Gerador::ListaComputadorDe<2>(Posicao&, Mascara, const Analise&, const Mascaras*);

void Gerador::ListaComputador(Posicao& p) {
    ListaComputador(p, p);
}

void Gerador::ListaHumano(Posicao& p) {
    const Mascaras m = LeMascaras(p);
    ListaHumano(p, Atalho ? Analisa(p, m) : Analise{}, &m);
}

void Gerador::ListaHumano(Posicao& p, const Analise& a, const Mascaras* m) {
    if (p.Vez == 1) return ListaHumanoDe<1>(p, a, m);
    if (p.Vez == 2) return ListaHumanoDe<2>(p, a, m);
    SegueLinha = 0;
    p.FimLista = static_cast<int16_t>(p.IniLista - 1); // no side to move, no move
}

template <int Lado> void Gerador::ListaHumanoDe(Posicao& p, const Analise& a, const Mascaras* m) {
    MaiorTexto = 1;
    SegueLinha = 0;
    ProximaLivre = BaseCaptura = p.IniLista - 1;
    iniNo = p.IniLista;
    constexpr int lado = Lado;
    if (Atalho && a.tipo == 2 && ProximaLivre + 157 <= CAPACIDADE) {
        ListaSemCaptura<Lado>(p, [](int i) { return i; });
        p.FimLista = static_cast<int16_t>(ProximaLivre);
        return;
    }
    if (Atalho && a.tipo == 3) {
        GeraQueTomam<Lado>(p, a.tomam, false, m);
        p.FimLista = static_cast<int16_t>(ProximaLivre);
        return;
    }
    Jogada vazia{Jogada::SemZerar{}}; // the route, built in place as captures are followed
    vazia.tam = 0;
    for (int numero = 1; numero <= 12; ++numero) {
        const int casa = p.Peca(numero, lado) & 127;
        if (casa == 0) continue;
        GeraPeca(p, casa, 0, vazia, 0);
    }
    p.FimLista = static_cast<int16_t>(ProximaLivre);
}

} // namespace velmora
