// The search at a fixed depth from a few positions, in nodes per second.
#include "core/contexto.h"
#include "core/tabuleiro.h"
#include "engine/motor.h"

#include <benchmark/benchmark.h>

namespace {

using namespace velmora;

const char* const posicoes[] = {
    // the start
    "1,0,2,0,2,0,2,0,2,2,0,2,0,2,0,2,0,0,2,0,2,0,2,0,2,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,1,0,1,"
    "0,1,0,1,0,0,1,0,1,0,1,0,1,1,0,1,0,1,0,1,0,",
    // a quiet middle game, eleven men a side
    "1,0,2,0,2,0,2,0,2,2,0,3,0,2,0,2,0,0,2,0,2,0,3,0,2,3,0,2,0,3,0,3,0,0,3,0,3,0,1,0,3,1,0,3,"
    "0,1,0,1,0,0,1,0,1,0,3,0,1,1,0,1,0,1,0,1,0,",
    // kings on both sides
    "1,0,3,0,2,0,20,0,3,3,0,2,0,3,0,2,0,0,2,0,3,0,3,0,3,3,0,3,0,1,0,3,0,0,3,0,20,0,3,0,3,3,0,1,"
    "0,3,0,1,0,0,10,0,3,0,1,0,3,3,0,1,0,3,0,10,0,",
};

void Busca(benchmark::State& estado) {
    PlataformaSemTela plataforma;
    Contexto ctx(plataforma);
    ctx.Game.Regra = 1;
    const Posicao inicio = *PosicaoDoTexto(posicoes[estado.range(0)]);
    Motor motor(ctx);
    int64_t nos = 0;
    for (auto _ : estado) {
        ctx.Atual = inicio;
        motor.Aprofunda(ctx.Atual, 1e9, static_cast<int>(estado.range(1)));
        nos += motor.Nos;
    }
    estado.counters["nos/s"] = benchmark::Counter(static_cast<double>(nos),
                                                  benchmark::Counter::kIsRate);
}

} // namespace

BENCHMARK(Busca)->Args({0, 12})->Args({1, 12})->Args({2, 9})->Unit(benchmark::kMillisecond);
