// The four generators on hand-built positions, in list order, and the leaf counts from the
// initial position.
#include "apoio.h"

#include "core/fazjogada.h"
#include "core/perft.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

namespace velmora {
namespace {

using teste::Lista;
using teste::Pos;
using Jogadas = std::vector<std::string>;

struct Caso {
    std::set<int> regras;
    Posicao pos;
    Jogadas esperado; // the human's list
};

TEST(Gerador, ListasDoHumano) {
    // man 1 and king 10 of side 1; man 2 and king 20 of side 2
    const Posicao cercado1 = Pos(1, {{55, 1}, {44, 2}, {46, 2}, {64, 2}, {66, 2}});
    const Posicao cercado2 = Pos(2, {{55, 2}, {44, 1}, {46, 1}, {64, 1}, {66, 1}});
    const Posicao dama1 = Pos(1, {{55, 10}, {13, 2}}), dama2 = Pos(2, {{55, 20}, {84, 1}});
    const Posicao fundo = Pos(1, {{37, 1}, {26, 2}, {24, 2}});
    const Posicao paraTras = Pos(1, {{55, 1}, {64, 2}});
    const Posicao longe = Pos(1, {{55, 10}, {33, 2}});
    const Posicao volta = Pos(1, {{82, 10}, {64, 2}, {26, 2}, {33, 2}});
    const Posicao volta75 = Pos(1, {{82, 10}, {64, 2}, {26, 2}, {33, 2}, {75, 2}});
    const Posicao roda = Pos(1, {{55, 1}, {44, 2}, {24, 2}, {26, 2}, {46, 2}});
    const Posicao maior = Pos(1, {{86, 1}, {75, 1}, {59, 1}, {64, 2}, {48, 2}, {28, 2}});
    const Jogadas voa1 = {"55-44", "55-33", "55-22", "55-46", "55-37", "55-28", "55-19",
                          "55-64", "55-73", "55-82", "55-66", "55-77", "55-88"};
    const Jogadas voa2 = {"55-66", "55-77", "55-88", "55-64", "55-73", "55-82", "55-46",
                          "55-37", "55-28", "55-19", "55-44", "55-33", "55-22"};
    const Jogadas curta1 = {"55-44", "55-46", "55-64", "55-66"};
    const Caso casos[] = {
        {{1}, cercado1, {"55-33-44", "55-37-46", "55-73-64", "55-77-66"}},
        {{2, 3, 4}, cercado1, {"55-33-44", "55-37-46"}},
        {{1}, cercado2, {"55-77-66", "55-73-64", "55-37-46", "55-33-44"}},
        {{2, 3, 4}, cercado2, {"55-77-66", "55-73-64"}},
        {{1, 2, 3}, dama1, voa1},
        {{2, 3}, dama2, voa2},
        {{4}, dama1, curta1},
        {{4}, dama2, {"55-66", "55-64", "55-46", "55-44"}},
        // a man reaching the far row in mid-capture stays a man
        {{1, 3}, fundo, {"37-15-26-15-33-24"}},
        {{2, 4}, fundo, {"37-15-26"}},
        // a backward capture only: under 2, 3, 4 the man has its plain moves
        {{1}, paraTras, {"55-73-64"}},
        {{2, 3, 4}, paraTras, {"55-44", "55-46"}},
        {{4}, longe, curta1},
        {{1, 2, 3}, longe, {"55-22-33"}},
        {{4}, Pos(1, {{55, 10}, {44, 2}}), {"55-33-44"}},
        {{1, 2, 3}, Pos(1, {{88, 10}, {77, 2}, {66, 2}}), {"88-79"}},
        {{1, 2, 3}, Pos(1, {{88, 10}, {77, 2}, {66, 1}}), {"88-79", "66-55", "66-57"}},
        // the king comes round to face the piece it took first, and stops there
        {{1, 2, 3}, volta, {"82-37-64-37-15-26-15-42-33"}},
        {{1, 2, 3}, volta75, {"82-37-64-37-15-26-15-42-33"}},
        {{1, 2, 3}, Pos(1, {{82, 10}, {64, 2}, {28, 1}}), {"82-55-64", "82-46-64", "82-37-64"}},
        {{1, 3},
         roda,
         {"55-33-44-33-15-24-15-37-26-37-55-46", "55-37-46-37-15-26-15-33-24-33-55-44"}},
        {{2, 4}, roda, {"55-33-44-33-15-24", "55-37-46-37-15-26"}},
        {{1, 2, 3, 4}, Pos(1, {{82, 1}, {73, 2}, {64, 2}}), {}},
        {{1, 2, 3, 4}, Pos(1, {{13, 2}}), {}},
        {{1, 2, 3, 4}, maior, {"59-37-48-37-19-28"}},
    };
    for (size_t i = 0; i < std::size(casos); ++i) {
        const Caso& c = casos[i];
        for (int regra : c.regras) {
            const auto l = Lista(regra, c.pos, true);
            EXPECT_EQ(l.jogadas, c.esperado) << "caso " << i << ", regra " << regra;
            const int quadrados = c.esperado.empty() ? 1 : (int(c.esperado[0].size()) + 1) / 3;
            EXPECT_EQ(l.maior, quadrados) << "caso " << i << ", regra " << regra;
        }
    }
}

TEST(Gerador, ComputadorEscolheEntrePecasQueCapturam) {
    // pieces 1 (86, plain moves only), 2 (75, takes one) and 3 (59, takes two)
    const Posicao p = Pos(1, {{86, 1}, {75, 1}, {59, 1}, {64, 2}, {48, 2}, {28, 2}});
    const std::string um = "75-53-64", dois = "59-37-48-37-19-28";
    for (int regra = 1; regra <= 4; ++regra) {
        const Jogadas natural = regra == 1 ? Jogadas{dois} : Jogadas{um, dois};
        EXPECT_EQ(Lista(regra, p, false).jogadas, natural);
        Gerador g;
        g.DefineOrdem({0, 3, 2, 1, 4, 5, 6, 7, 8, 9, 10, 11, 12}); // piece 3 first
        EXPECT_EQ(Lista(regra, p, false, std::move(g)).jogadas,
                  Jogadas(natural.rbegin(), natural.rend()));
    }
}

// The masks a search hands in are trusted only while they are the board's own: once a move
// that did not belong to the board was carried over them, the routes come from the mailbox.
TEST(Gerador, MascarasAlheiasAoTabuleiroNaoDaoRotas) {
    Posicao p = Pos(1, {{75, 1}, {64, 2}});
    Mascaras m = LeMascaras(p);
    m.lados[1] |= Bit(44); // a piece of side 2 the mailbox does not have
    m.vazias &= ~Bit(44);
    for (const bool fiel : {true, false}) {
        m.fiel = fiel;
        for (const bool humano : {true, false}) {
            Gerador g;
            g.Regra = 1;
            p.IniLista = 1;
            const Gerador::Analise a = g.Analisa(p, m);
            if (humano)
                g.ListaHumano(p, a, &m);
            else
                g.ListaComputador(p, m.damas, a, &m);
            ASSERT_EQ(p.FimLista, 1);
            EXPECT_EQ(JogadaEmNumeros(g.Slot(1)), fiel ? "75-53-64-53-35-44" : "75-53-64");
        }
    }
}

// Plays `jogos` random games of at most `lances` moves under a rule set (lists made the
// slow way) and hands each move, with the positions before and after it, to `aoLance`.
template <class AoLance>
void JogosAoAcaso(std::mt19937& rng, int regra, int jogos, int lances, AoLance&& aoLance) {
    Gerador g;
    g.Atalho = false;
    g.Regra = regra;
    for (int jogo = 0; jogo < jogos; ++jogo) {
        Posicao p = PosicaoInicial();
        for (int lance = 0; lance < lances; ++lance) {
            p.IniLista = 1;
            g.ListaHumano(p);
            if (p.FimLista < p.IniLista) break;
            const Jogada j =
                g.Slot(p.IniLista + static_cast<int>(rng() % (p.FimLista - p.IniLista + 1)));
            const Posicao antes = p;
            FazJogada(p, j.c.data(), j.tam, true);
            p.Vez = static_cast<uint8_t>(3 - p.Vez);
            aoLance(antes, j, p);
        }
    }
}

// Boards for the comparison of the fast lists with the slow ones: random placements (kings,
// men on any row, now and then a thirteenth piece) and positions of random games.
std::vector<Posicao> PosicoesAoAcaso(std::mt19937& rng) {
    std::vector<Posicao> r;
    for (int k = 0; k < 800; ++k) {
        std::string t = std::to_string(1 + rng() % 2) + ",";
        const int cheio = 20 + static_cast<int>(rng() % 60); // percent of dark squares taken
        for (int i = 1; i <= 64; ++i) {
            static constexpr int codigos[] = {1, 2, 10, 20, 1, 2};
            if (CasaClara(CasaDoIndice(i))) {
                // now and then a piece on a light square, which only a text can put there
                t += std::to_string(rng() % 50 == 0 ? codigos[rng() % 6] : 0) + ",";
                continue;
            }
            const bool ocupada = static_cast<int>(rng() % 100) < cheio;
            t += std::to_string(ocupada ? codigos[rng() % 6] : 3) + ",";
        }
        if (auto p = PosicaoDoTexto(t))
            r.push_back(*p);
        else {
            // too many pieces for the text: the same board built square by square
            Tabuleiro tab{};
            int i = 0, pos = 2;
            while (i < 64) {
                const auto fim = t.find(',', pos);
                tab[++i] = std::stoi(t.substr(pos, fim - pos));
                pos = static_cast<int>(fim) + 1;
            }
            Posicao montada;
            MontaPosicao(montada, tab);
            montada.Vez = static_cast<uint8_t>(t[0] - '0');
            r.push_back(montada);
        }
    }
    for (int regra = 1; regra <= 4; ++regra)
        JogosAoAcaso(
            rng, regra, 12, 80,
            [&r](const Posicao&, const Jogada&, const Posicao& depois) { r.push_back(depois); });
    return r;
}

struct ListaCompleta {
    std::vector<std::string> jogadas;
    int maior = 0;
    bool todasDamas = false;
};

TEST(Gerador, AtalhoDaAsMesmasListasQueOCaminhoLento) {
    std::mt19937 rng(20261123);
    const std::vector<Posicao> posicoes = PosicoesAoAcaso(rng);
    int comparadas = 0, comCaptura = 0;
    for (const Posicao& base : posicoes) {
        for (int regra = 1; regra <= 4; ++regra) {
            // one piece order, one rotation seed and one stored move for both ways
            std::array<int, 13> ordem{};
            {
                Gerador g;
                g.EmbaralhaOrdem([&rng](int n) { return static_cast<int>(rng() % n); });
                ordem = g.Ordem();
            }
            const uint32_t semente = rng();
            const int escolha = static_cast<int>(rng() % 4);
            Jogada guardada;
            auto lista = [&](bool atalho, int modo) {
                Gerador g;
                g.Atalho = atalho;
                g.Regra = regra;
                g.DefineOrdem(ordem);
                g.SemeiaRotacao(semente);
                Posicao p = base;
                p.IniLista = 1;
                ListaCompleta l;
                if (modo == 0)
                    g.ListaHumano(p);
                else {
                    if (modo == 2) {
                        g.SegueLinha = 1;
                        g.Slot(1) = guardada;
                    }
                    l.todasDamas = g.ListaComputador(p, base);
                }
                for (int i = p.IniLista + (modo == 2); i <= p.FimLista; ++i)
                    l.jogadas.push_back(JogadaEmNumeros(g.Slot(i)));
                // the captures followed in place leave the board as it was
                Posicao depois = p;
                depois.IniLista = base.IniLista;
                depois.FimLista = base.FimLista;
                EXPECT_EQ(depois, base) << TextoComVez(base) << " regra " << regra;
                l.maior = g.MaiorTexto;
                const auto a = g.Analisa(base);
                if (!atalho && a.tipo != 0) {
                    // the analysis says what the slow list found
                    EXPECT_EQ(a.tipo, std::min(l.maior, 3))
                        << TextoComVez(base) << " regra " << regra;
                    comCaptura += a.tipo == 3;
                }
                return l;
            };
            for (int modo = 0; modo <= 2; ++modo) {
                const ListaCompleta lenta = lista(false, modo), rapida = lista(true, modo);
                if (modo == 1 && !lenta.jogadas.empty()) {
                    Jogada j;
                    const std::string& texto = lenta.jogadas[escolha % lenta.jogadas.size()];
                    for (size_t i = 0; i < texto.size(); i += 3)
                        j.c[j.tam++] = static_cast<uint8_t>(std::stoi(texto.substr(i, 2)));
                    guardada = j;
                }
                ASSERT_EQ(rapida.maior, lenta.maior) << TextoComVez(base) << " regra " << regra;
                ASSERT_EQ(rapida.todasDamas, lenta.todasDamas) << TextoComVez(base);
                // Side 2's flying kings of rule set 1 start at a random direction, drawn once
                // for every king asked: with a capture the fast way asks fewer kings, so only
                // the set of moves can be compared there.
                bool rodam = false;
                if (regra == 1 && base.Vez == 2 && lenta.maior >= 3)
                    for (int n = 1; n <= 12; ++n) rodam |= (base.Peca(n, 2) & DAMA) != 0;
                auto a = rapida.jogadas, b = lenta.jogadas;
                if (rodam) {
                    std::sort(a.begin(), a.end());
                    std::sort(b.begin(), b.end());
                }
                ASSERT_EQ(a, b) << TextoComVez(base) << " regra " << regra << " modo " << modo;
                ++comparadas;
            }
        }
    }
    EXPECT_GT(comparadas, 10000);
    EXPECT_GT(comCaptura, 1000); // the capture lists were tried too
}

// A king that takes four pieces round a square, ending where it began, for each side; men
// of each side crowned by a plain move and at the end of a capture.
std::vector<Posicao> VoltasECoroacoes() {
    return {
        Pos(1, {{64, 10}, {55, 2}, {35, 2}, {33, 2}, {53, 20}, {86, 1}}),
        Pos(2, {{64, 20}, {55, 1}, {35, 10}, {33, 1}, {53, 1}, {17, 2}}),
        Pos(1, {{24, 1}, {35, 1}, {13, 2}, {26, 2}, {15, 20}}),
        Pos(2, {{75, 2}, {86, 1}, {42, 10}}),
    };
}

// The lists read off the masks (the capture routes, the pieces asked, the all-kings
// test) are those read off the mailbox and Pecas, also on boards whose Pecas is not the
// mailbox's (an entry dropped, or two swapped), as a stored move that did not fit leaves it.
TEST(Gerador, ListasDasMascarasIguaisAsDePecas) {
    std::mt19937 rng(7011);
    std::vector<Posicao> posicoes = PosicoesAoAcaso(rng);
    for (size_t k = 0, n = posicoes.size(); k < n; k += 2) {
        Posicao p = posicoes[k];
        const int lado = p.Vez;
        const int a = 1 + static_cast<int>(rng() % 12), b = 1 + static_cast<int>(rng() % 12);
        if (k % 4)
            p.Peca(a, lado) = 0;
        else
            std::swap(p.Peca(a, lado), p.Peca(b, lado));
        posicoes.push_back(p);
    }
    for (const Posicao& p : VoltasECoroacoes()) posicoes.push_back(p);
    // A king of each side that can take along all four rays, under several rotations: the
    // seed of the rotation changes with each board.
    for (int k = 0; k < 8; ++k) {
        posicoes.push_back(Pos(2, {{55, 20}, {44, 1}, {46, 1}, {64, 10}, {66, 1}, {86, 1}}));
        posicoes.push_back(Pos(1, {{55, 10}, {44, 2}, {46, 2}, {64, 20}, {66, 2}, {24, 2}}));
    }
    int capturas = 0;
    uint32_t semente = 12345;
    for (const Posicao& base : posicoes) {
        ++semente;
        const Mascaras m = LeMascaras(base);
        const Mascara damas = DamasDe(base) & static_cast<Mascara>(rng() | uint64_t{rng()} << 32);
        for (int regra = 1; regra <= 4; ++regra) {
            // `todasTomam`: an analysis that names every piece of the side, as if each could
            // take; those that cannot give their plain moves the mailbox's way
            auto lista = [&](const Mascaras* mascaras, bool humano, bool todasTomam) {
                Gerador g;
                g.Regra = regra;
                g.SemeiaRotacao(semente);
                Posicao p = base;
                p.IniLista = 1;
                Gerador::Analise a = g.Analisa(p, m);
                if (todasTomam) a = {3, m.lados[p.Vez - 1]};
                bool todas = false;
                if (humano)
                    g.ListaHumano(p, a, mascaras);
                else
                    todas = g.ListaComputador(p, damas, a, mascaras);
                std::vector<std::string> r{std::to_string(g.MaiorTexto) + (todas ? "T" : "")};
                for (int i = p.IniLista; i <= p.FimLista; ++i)
                    r.push_back(JogadaEmNumeros(g.Slot(i)));
                return r;
            };
            for (const bool humano : {true, false}) {
                for (const bool todasTomam : {false, true}) {
                    const auto comMascaras = lista(&m, humano, todasTomam);
                    ASSERT_EQ(comMascaras, lista(nullptr, humano, todasTomam))
                        << TextoComVez(base) << " regra " << regra << " humano " << humano
                        << " todas " << todasTomam;
                    capturas += !todasTomam && comMascaras[0][0] >= '3';
                }
            }
        }
    }
    EXPECT_GT(capturas, 1000);
}

// The generator's own way of playing a move lifts the piece once and sets it down once; it
// must leave every board as the step-by-step way does: whole moves of every list of random
// boards under the four rule sets, and each route's first step alone as the generators play
// it (the piece taken stays as 64).
TEST(FazJogadaGerada, IgualAoPassoAPasso) {
    std::mt19937 rng(515);
    const std::vector<Posicao> posicoes = PosicoesAoAcaso(rng);
    int capturas = 0, coroacoes = 0;
    for (const Posicao& base : posicoes) {
        for (int regra = 1; regra <= 4; ++regra) {
            Gerador g;
            g.Regra = regra;
            Posicao p = base;
            p.IniLista = 1;
            g.ListaComputador(p);
            for (int i = p.IniLista; i <= p.FimLista; ++i) {
                const Jogada& j = g.Slot(i);
                for (bool conclui : {true, false}) {
                    const int n = conclui ? j.tam : std::min<int>(j.tam, 3);
                    Posicao lenta = base, rapida = base;
                    ASSERT_TRUE(FazJogada(lenta, j.c.data(), n, conclui));
                    FazJogadaGerada(rapida, j.c.data(), n, conclui);
                    ASSERT_EQ(rapida, lenta) << JogadaEmNumeros(j) << " " << TextoComVez(base);
                    if (!conclui) continue;
                    // played in place and taken back: the same board, then the one before
                    Posicao noLugar = base;
                    Desfazer d;
                    JogaNoLugar(noLugar, j.c.data(), n, d);
                    ASSERT_EQ(noLugar, lenta) << JogadaEmNumeros(j) << " " << TextoComVez(base);
                    DesfazJogada(noLugar, j.c.data(), n, d);
                    ASSERT_EQ(noLugar, base) << JogadaEmNumeros(j) << " " << TextoComVez(base);
                }
                capturas += j.tam >= 6;
                const int para = j.c[j.tam == 2 ? 1 : j.tam - 2];
                coroacoes += !(base.Casas[j.c[0]] & DAMA) && (para < 21 || para >= 82);
            }
        }
    }
    EXPECT_GT(capturas, 500); // routes of two jumps and more
    EXPECT_GT(coroacoes, 500);
}

// The masks carried over each move of random games (captures, crowning, flying kings) are
// those read from the board it led to; the sixteen-at-a-time reading agrees with the plain
// one on every board.
TEST(Mascaras, SeguemOsLancesDeJogosAoAcaso) {
    std::mt19937 rng(7);
    int lances = 0;
    for (int regra = 1; regra <= 4; ++regra) {
        auto confere = [&](const Posicao& antes, const Jogada& j, const Posicao& depois) {
            Mascaras m = LeMascaras(antes);
            AplicaJogada(m, j.c.data(), j.tam, depois);
            ASSERT_EQ(LeMascaras(depois), LeMascarasSimples(depois)) << TextoComVez(depois);
            ASSERT_EQ(m, LeMascaras(depois)) << JogadaEmNumeros(j) << " " << TextoComVez(antes);
            ++lances;
        };
        JogosAoAcaso(rng, regra, 30, 100, confere);
    }
    EXPECT_GT(lances, 5000);
}

// A king that takes four pieces round a square can end where it began, and a man can be
// crowned by a plain move or at the end of a capture: played in place, each move of these
// lists leaves the board the step-by-step way does, and taken back, the board it found.
TEST(JogaNoLugar, VoltaAoComecoCoroacaoEDesfaz) {
    const std::vector<Posicao> posicoes = VoltasECoroacoes();
    int voltas = 0, coroacoes = 0;
    for (const Posicao& base : posicoes) {
        for (int regra = 1; regra <= 4; ++regra) {
            Gerador g;
            g.Regra = regra;
            Posicao p = base;
            p.IniLista = 1;
            g.ListaHumano(p);
            ASSERT_GE(p.FimLista, p.IniLista) << TextoComVez(base);
            for (int i = p.IniLista; i <= p.FimLista; ++i) {
                const Jogada& j = g.Slot(i);
                Posicao lenta = base, noLugar = base;
                ASSERT_TRUE(FazJogada(lenta, j.c.data(), j.tam, true));
                Desfazer d;
                JogaNoLugar(noLugar, j.c.data(), j.tam, d);
                ASSERT_EQ(noLugar, lenta) << JogadaEmNumeros(j) << " regra " << regra;
                DesfazJogada(noLugar, j.c.data(), j.tam, d);
                ASSERT_EQ(noLugar, base) << JogadaEmNumeros(j) << " regra " << regra;
                const int para = j.c[j.tam == 2 ? 1 : j.tam - 2];
                voltas += para == j.c[0];
                coroacoes += !(base.Casas[j.c[0]] & DAMA) && (lenta.Casas[para] & DAMA);
            }
        }
    }
    EXPECT_GE(voltas, 4);    // the ring of each king, under every rule set
    EXPECT_GE(coroacoes, 8); // both sides' men, plain and taking
}

// Perft walks the tree on one position, playing each child in place and taking it back
// (the last plies on the masks); the plain way copies the position into every child. Both
// count the same leaves from random boards and game positions under the four rule sets and
// both ways of listing, and the leaves' boards print the same.
TEST(Perft, NoLugarContaOMesmoQueComCopias) {
    std::mt19937 rng(1411);
    std::vector<Posicao> posicoes = PosicoesAoAcaso(rng);
    std::shuffle(posicoes.begin(), posicoes.end(), rng);
    posicoes.resize(150);
    posicoes.push_back(*PosicaoDoTexto(
        "1,0,2,0,2,0,2,0,20,3,0,3,0,3,0,3,0,0,3,0,10,0,20,0,3,1,0,3,0,3,0,3,0,0,10,0,3,0,3,0,"
        "1,3,0,3,0,3,0,3,0,0,3,0,10,0,3,0,3,20,0,3,0,1,0,3,0,"));
    uint64_t folhas = 0;
    for (const Posicao& base : posicoes) {
        for (int regra = 1; regra <= 4; ++regra) {
            for (ModoLista modo : {ModoLista::Humano, ModoLista::Computador}) {
                PerftImpresso n[2];
                for (bool atalho : {false, true}) {
                    Gerador g;
                    g.Regra = regra;
                    g.Atalho = atalho;
                    Posicao p = base;
                    p.IniLista = 1;
                    n[atalho] = PerftComImpressao(g, p, 3, modo);
                    if (atalho) {
                        // the counting run plays the same tree
                        Gerador h;
                        h.Regra = regra;
                        ASSERT_EQ(Perft(h, p, 3, modo), n[1].folhas);
                    }
                }
                ASSERT_EQ(n[1].folhas, n[0].folhas) << TextoComVez(base) << " regra " << regra;
                // the leaves played on the masks are the boards the mailbox leads to
                ASSERT_EQ(n[1].impressao, n[0].impressao)
                    << TextoComVez(base) << " regra " << regra;
                folhas += n[0].folhas;
            }
        }
    }
    EXPECT_GT(folhas, 100000u);
}

TEST(Perft, DaPosicaoInicial) {
    // rules 2, 3, 4 share the first four counts with rule 1
    const struct {
        int regra;
        ModoLista modo;
        uint64_t folhas[6];
    } casos[] = {
        {1, ModoLista::Humano, {7, 49, 302, 1469, 7473, 37628}},
        {1, ModoLista::Computador, {7, 49, 302, 1469, 7473, 37628}},
        {2, ModoLista::Humano, {7, 49, 302, 1469, 7361, 36473}},
        {2, ModoLista::Computador, {7, 49, 302, 1469, 7361, 36768}},
        {3, ModoLista::Humano, {7, 49, 302, 1469, 7484, 37756}},
        {3, ModoLista::Computador, {7, 49, 302, 1469, 7493, 38102}},
        {4, ModoLista::Humano, {7, 49, 302, 1469, 7361, 36473}},
        {4, ModoLista::Computador, {7, 49, 302, 1469, 7361, 36768}},
    };
    for (const auto& c : casos) {
        Gerador g;
        g.Regra = c.regra;
        for (int d = 1; d <= 6; ++d)
            EXPECT_EQ(Perft(g, PosicaoInicial(), d, c.modo), c.folhas[d - 1]) << c.regra;
        EXPECT_FALSE(g.Estouro);
    }
}

// Seconds under the sanitizers: labelled slow.
TEST(PerftLento, Regra1Profundidades7e8) {
    for (ModoLista modo : {ModoLista::Humano, ModoLista::Computador}) {
        Gerador g;
        g.Regra = 1;
        EXPECT_EQ(Perft(g, PosicaoInicial(), 7, modo), 187302u);
        EXPECT_EQ(Perft(g, PosicaoInicial(), 8, modo), 907836u);
    }
}

} // namespace
} // namespace velmora
