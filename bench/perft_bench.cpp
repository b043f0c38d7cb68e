// Perft from the initial position and two middle games: every leaf is played.
#include "core/gerador.h"
#include "core/perft.h"
#include "core/tabuleiro.h"

#include <benchmark/benchmark.h>

namespace {

using namespace velmora;

void Perft(benchmark::State& estado, int regra, ModoLista modo) {
    const int prof = static_cast<int>(estado.range(0));
    Gerador g;
    g.Regra = regra;
    const Posicao p = PosicaoInicial();
    uint64_t folhas = 0;
    for (auto _ : estado) {
        folhas += velmora::Perft(g, p, prof, modo);
    }
    estado.counters["folhas/s"] =
        benchmark::Counter(static_cast<double>(folhas), benchmark::Counter::kIsRate);
}

// A middle-game position with kings of both sides: the flying-king code at work.
void PerftDe(benchmark::State& estado, const char* texto, int regra) {
    const auto p = PosicaoDoTexto(texto);
    Gerador g;
    g.Regra = regra;
    uint64_t folhas = 0;
    for (auto _ : estado) folhas += velmora::Perft(g, *p, static_cast<int>(estado.range(0)),
                                                   ModoLista::Humano);
    estado.counters["folhas/s"] =
        benchmark::Counter(static_cast<double>(folhas), benchmark::Counter::kIsRate);
}

void PerftDamas(benchmark::State& estado, int regra) {
    PerftDe(estado,
            "1,0,3,0,2,0,20,0,3,3,0,2,0,3,0,2,0,0,2,0,3,0,3,0,3,3,0,3,0,1,0,3,0,0,3,0,20,0,3,0,3,"
            "3,0,1,0,3,0,1,0,0,10,0,3,0,1,0,3,3,0,1,0,3,0,10,0,",
            regra);
}

// Three kings and three men a side, nothing to take: the flying kings' plain moves, then
// their captures deeper down.
void PerftReis(benchmark::State& estado, int regra) {
    PerftDe(estado,
            "1,0,2,0,2,0,2,0,20,3,0,3,0,3,0,3,0,0,3,0,10,0,20,0,3,1,0,3,0,3,0,3,0,0,10,0,3,0,3,0,"
            "1,3,0,3,0,3,0,3,0,0,3,0,10,0,3,0,3,20,0,3,0,1,0,3,0,",
            regra);
}

} // namespace

BENCHMARK_CAPTURE(Perft, regra1_humano, 1, velmora::ModoLista::Humano)
    ->Arg(9)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Perft, regra1_computador, 1, velmora::ModoLista::Computador)
    ->Arg(9)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Perft, regra4_humano, 4, velmora::ModoLista::Humano)
    ->Arg(9)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Perft, regra4_computador, 4, velmora::ModoLista::Computador)
    ->Arg(9)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Perft, regra1_prof10, 1, velmora::ModoLista::Humano)
    ->Arg(10)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(Perft, regra4_computador_prof10, 4, velmora::ModoLista::Computador)
    ->Arg(10)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_CAPTURE(PerftDamas, regra1, 1)->Arg(6)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PerftReis, regra1, 1)->Arg(7)->Unit(benchmark::kMillisecond)->Iterations(1);
