// perft and lista: the generator's counts and move lists, for checking the rules.
#include "comandos.h"
#include "opcoes.h"

#include "core/gerador.h"
#include "core/perft.h"
#include "core/tabuleiro.h"

#include <chrono>
#include <cstdio>

namespace velmora::cli {

namespace {

// The position, rule set and list mode shared by both subcommands.
struct Preparo {
    Posicao posicao;
    int regra = 1;
    ModoLista modo = ModoLista::Humano;
};

std::optional<Preparo> Prepara(Opcoes& o, bool exigeTabuleiro, std::string& erro) {
    Preparo p;
    const auto regra = o.inteiro("regra", 1, 4, 1);
    if (!regra) return erro = o.erro, std::nullopt;
    p.regra = static_cast<int>(*regra);
    const std::string modo = o.texto("modo", "humano");
    if (modo == "computador") p.modo = ModoLista::Computador;
    else if (modo != "humano") return erro = "--modo espera humano ou computador", std::nullopt;
    if (o.tem("tabuleiro")) {
        auto pos = PosicaoDoTexto(o.texto("tabuleiro"));
        if (!pos)
            return erro = "tabuleiro inválido: são 65 números, cada um seguido de vírgula "
                          "(o lado que joga, 1 ou 2, e as 64 casas: 0 clara, 3 escura vazia, "
                          "1 e 10 peão e dama do lado 1, 2 e 20 do lado 2)",
                   std::nullopt;
        p.posicao = *pos;
    } else if (exigeTabuleiro) {
        return erro = "falta --tabuleiro", std::nullopt;
    } else {
        p.posicao = PosicaoInicial();
    }
    p.posicao.IniLista = 1;
    return p;
}

} // namespace

int ComandoPerft(const Argumentos& args) {
    Opcoes o(args, {"regra", "modo", "prof", "tabuleiro"});
    if (!o.ok()) return ErroDeUso(o.erro);
    std::string erro;
    auto p = Prepara(o, false, erro);
    if (!p) return ErroDeUso(erro);
    if (!o.tem("prof")) return ErroDeUso("falta --prof");
    const auto prof = o.inteiro("prof", 1, 30, 1);
    if (!prof) return ErroDeUso(o.erro);

    Gerador g;
    g.Regra = p->regra;
    uint64_t total = 0;
    const auto inicio = std::chrono::steady_clock::now();
    for (int d = 1; d <= *prof; ++d) {
        const uint64_t n = Perft(g, p->posicao, d, p->modo);
        total += n;
        std::printf("%d %llu\n", d, static_cast<unsigned long long>(n));
        std::fflush(stdout);
        if (g.Estouro) return std::fprintf(stderr, "a tabela de jogadas encheu\n"), 1;
    }
    const double s =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
    std::printf("tempo %.3f s, %.0f folhas/s\n", s, s > 0 ? total / s : 0.0);
    return 0;
}

int ComandoLista(const Argumentos& args) {
    Opcoes o(args, {"regra", "modo", "tabuleiro"});
    if (!o.ok()) return ErroDeUso(o.erro);
    std::string erro;
    auto p = Prepara(o, true, erro);
    if (!p) return ErroDeUso(erro);
    Gerador g;
    g.Regra = p->regra;
    if (p->modo == ModoLista::Humano) g.ListaHumano(p->posicao);
    else g.ListaComputador(p->posicao);
    if (g.MaiorTexto >= 2)
        for (int i = p->posicao.IniLista; i <= p->posicao.FimLista; ++i)
            std::printf("%s\n", JogadaEmNumeros(g.Slot(i)).c_str());
    std::printf("MaiorTexto=%d\n", g.MaiorTexto);
    return 0;
}

} // namespace velmora::cli
