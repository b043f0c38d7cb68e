#pragma once
// The value of a win. Points live on the game's fixed scale: everyone starts at 1000, the
// stars come at 1500, 2000, 3000, 4000 and 5000, the medal at 10000. Beside the points each
// account keeps a Glicko-2 rating (start 1500, deviation 350, volatility 0.06, tau 0.75),
// used only to weigh a win by how surprising it was.
//
// A win is worth  fator * (30 + 30 * (1 - E))  to the winner and costs the loser
// fator * (25 + 30 * (1 - E)), where E is the winner's expected score from the two ratings
// (so beating a stronger player is worth more, and losing to a weaker one costs more),
// and fator = 0.5^n, n being the wins the winner already took from the same opponent in
// the last 24 hours. A visitor (no account) counts as a fresh rating, and a win over a
// visitor is worth half. Below 1000 points a loss costs less, in proportion, down to a
// quarter at 250 points and under. Points never fall below 0.
//
// For a player of steady strength the expected change per game is about 30p - 25(1-p)
// (p his share of wins): a player who wins 85% of his games gains about 22 points a game,
// one who wins half gains 2.5, and one who wins 40% slowly loses points.
#include <cstdint>
#include <vector>

namespace velmora::servidor {

struct Glicko {
    double r = 1500.0;
    double rd = 350.0;
    double sigma = 0.06;
};

inline constexpr std::int64_t kPontosIniciais = 1000;

// Glicko-2 update of `a` after one game against `b`; `resultado` 1 won, 0 lost.
Glicko AtualizaGlicko(const Glicko& a, const Glicko& b, double resultado);

// Expected score of `a` against `b`.
double Esperado(const Glicko& a, const Glicko& b);

struct Premio {
    std::int64_t ganho = 0;
    std::int64_t perda = 0;
    std::int64_t pontosVencedor = 0; // new totals
    std::int64_t pontosPerdedor = 0;
    Glicko vencedor, perdedor;
};

// `repeticoes`: earlier wins of this winner over this opponent in the last 24 hours.
Premio CalculaPremio(std::int64_t pontosVencedor, const Glicko& gVencedor,
                     std::int64_t pontosPerdedor, const Glicko& gPerdedor, int repeticoes,
                     bool perdedorVisitante);

// A season of simulated players of known strength (Elo-like, 400-point logistic), paired
// at random as the relay pairs strangers, scored by the rule above.
struct ResultadoSimulacao {
    double correlacaoPosto = 0; // Spearman, points against true strength
    int jogosAteMedalha = -1;   // games the strongest player needed to reach 10000
    double pontosMedios = 0;
    std::vector<std::int64_t> pontosPorQuintil; // mean points of each fifth, weakest first
};
ResultadoSimulacao SimulaTemporada(int jogadores, int rodadas, unsigned semente);

} // namespace velmora::servidor
