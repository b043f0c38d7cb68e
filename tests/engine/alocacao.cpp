// A search allocates nothing: every operator new of this binary is counted.
#include "apoio.h"

#include "engine/motor.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long> alocacoes{0};
}

void* operator new(std::size_t n) {
    ++alocacoes;
    if (void* p = std::malloc(n ? n : 1)) return p;
    throw std::bad_alloc();
}
// Kept out of line, so that the compiler pairs each delete with its new and not with free.
__attribute__((noinline)) void operator delete(void* p) noexcept {
    std::free(p);
}
__attribute__((noinline)) void operator delete(void* p, std::size_t) noexcept {
    std::free(p);
}

namespace velmora {
namespace {

TEST(Alocacao, BuscaNaoAlocaNada) {
    PlataformaSimulada plat;
    Contexto ctx(plat);
    Motor motor(ctx);
    const struct {
        int regra, prof;
        Posicao pos;
    } casos[] = {
        {1, 7, PosicaoInicial()},
        {1, 5, teste::Pos(2, {{55, 20}, {19, 20}, {33, 2}, {82, 10}, {64, 1}, {68, 1}, {37, 1}})},
        {4, 9, teste::Pos(1, {{46, 10}, {84, 1}, {24, 20}, {13, 2}})},
    };
    for (const auto& c : casos) {
        ctx.Game.Regra = c.regra;
        ctx.gerador();
        ctx.Atual = c.pos;
        Posicao p = c.pos;
        const long antes = alocacoes;
        motor.AlfaBeta(p, 0, c.prof, -10000, 10000);
        EXPECT_EQ(alocacoes - antes, 0) << c.regra;
        EXPECT_GT(motor.Nos, 100) << c.regra;
    }
    const long antes = alocacoes;
    std::vector<int> v(3); // the count works
    EXPECT_EQ(alocacoes - antes, 1);
}

} // namespace
} // namespace velmora
