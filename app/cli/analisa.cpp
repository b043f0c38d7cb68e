// analisa: the computer's deepening search on one position.
#include "comandos.h"
#include "opcoes.h"

#include "core/contexto.h"
#include "core/tabuleiro.h"
#include "engine/motor.h"

#include <cstdio>

namespace velmora::cli {

int ComandoAnalisa(const Argumentos& args) {
    Opcoes o(args, {"regra", "tabuleiro", "tempo", "prof"});
    if (!o.ok()) return ErroDeUso(o.erro);
    const auto regra = o.inteiro("regra", 1, 4, 1);
    if (!regra) return ErroDeUso(o.erro);
    if (!o.tem("tabuleiro")) return ErroDeUso("falta --tabuleiro");
    auto pos = PosicaoDoTexto(o.texto("tabuleiro"));
    if (!pos) return ErroDeUso("tabuleiro inválido");
    if (o.tem("tempo") == o.tem("prof")) return ErroDeUso("dê --tempo S ou --prof D");
    double segundos = 1e9;
    int prof = Motor::PLY_MAXIMO;
    if (o.tem("tempo")) {
        auto t = o.real("tempo", 0, 3600);
        if (!t) return ErroDeUso(o.erro);
        segundos = *t;
    } else {
        auto d = o.inteiro("prof", 1, Motor::PLY_MAXIMO, 1);
        if (!d) return ErroDeUso(o.erro);
        prof = static_cast<int>(*d);
    }

    PlataformaSemTela plataforma;
    Contexto ctx(plataforma);
    ctx.Game.Regra = static_cast<int>(*regra);
    ctx.Atual = *pos;
    Motor motor(ctx);
    const int v = motor.Aprofunda(ctx.Atual, segundos, prof);
    if (motor.JogadaUnica) std::printf("Valor: Unknown\n");
    else std::printf("Valor: %d\n", v);
    std::printf("MaxPly: %d\nProfundidade: %d\nCortes: %d\nNos: %lld\n", motor.MaxPly,
                motor.LimiteProf, motor.Cortes, static_cast<long long>(motor.Nos));
    std::string linha;
    for (int j = 0; j < Motor::PLY_MAXIMO && !motor.Linha(0, j).vazia(); ++j) {
        if (j) linha += ' ';
        linha += JogadaEmNomes(motor.Linha(0, j));
    }
    std::printf("Linha: %s\n", linha.c_str());
    return 0;
}

} // namespace velmora::cli
