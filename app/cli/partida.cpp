// partida: a whole game through the turn cycle, without a window. A human side reads its
// clicks from standard input as square names ("C3"); the board and the messages the player
// would read are printed as they change.
#include "comandos.h"
#include "opcoes.h"

#include "core/casas.h"
#include "core/contexto.h"
#include "core/tabuleiro.h"
#include "engine/motor.h"

#include <cstdio>
#include <deque>
#include <iostream>
#include <sstream>

namespace velmora::cli {

namespace {

// Real clock, no animation pauses, clicks from standard input while a turn waits for one.
class PlataformaTerminal : public PlataformaSemTela {
public:
    Contexto* ctx = nullptr;
    bool fimDaEntrada = false;

    void Dorme(double) override {}
    void ProcessaEventos() override {
        if (!ctx) return;
        Mostra();
        if (!ctx->EsperaClique()) return;
        while (cliques.empty() && !fimDaEntrada) {
            std::string linha;
            if (!std::getline(std::cin, linha)) {
                fimDaEntrada = true;
                break;
            }
            std::istringstream palavras(linha);
            std::string p;
            while (palavras >> p) {
                const int casa = CasaDoNome(p);
                if (casa == 0) std::printf("Casa inválida: %s (use A1 a H8)\n", p.c_str());
                else cliques.push_back(casa);
            }
        }
        if (fimDaEntrada && cliques.empty()) {
            ctx->Game.Fim = true;
            return;
        }
        const int casa = cliques.front();
        cliques.pop_front();
        ctx->Clique(casa);
    }
    // Prints the board after each recorded position and each new message.
    void Mostra() {
        if (ctx->JogadaAtual != jogadaMostrada || ctx->UltimaJogada != ultimaMostrada) {
            jogadaMostrada = ctx->JogadaAtual;
            ultimaMostrada = ctx->UltimaJogada;
            if (!ctx->painel.lbMoves.Texto.empty())
                std::printf("Jogada: %s\n", ctx->painel.lbMoves.Texto.c_str());
            std::printf("%s", DesenhoTabuleiro(ctx->Atual).c_str());
            std::printf("Posição %d/%d, vez do lado %d\n", ctx->JogadaAtual, ctx->UltimaJogada,
                        ctx->Atual.Vez);
        }
        for (Controle* c : {&ctx->painel.lbMsg, &ctx->painel.Label27}) {
            std::string& visto = c == &ctx->painel.lbMsg ? msgVista : label27Vista;
            const std::string agora = c->Visivel ? c->Texto : "";
            if (agora != visto) {
                visto = agora;
                if (!agora.empty()) std::printf("%s\n", agora.c_str());
            }
        }
        std::fflush(stdout);
    }

private:
    std::deque<int> cliques;
    int jogadaMostrada = -1, ultimaMostrada = -1;
    std::string msgVista, label27Vista;
};

// One game, then out: the end of the game is told and the loop is left.
class GanchosTerminal : public Ganchos {
public:
    explicit GanchosTerminal(Contexto& c) : ctx(c) {}
    uint8_t resultado = 0;
    void Mensagem(const std::string& texto) override { std::printf("%s\n", texto.c_str()); }
    bool Pergunta(const std::string& texto) override {
        std::printf("%s (respondido: não)\n", texto.c_str());
        return false;
    }
    void finaliza(uint8_t r) override {
        resultado = r;
        ctx.StartInitGame = true;
    }
    void Restart_Game() override { resultado = 4; }

private:
    Contexto& ctx;
};

} // namespace

int ComandoPartida(const Argumentos& args) {
    Opcoes o(args, {"tipo", "regra", "nivel1", "nivel2", "comeca"});
    if (!o.ok()) return ErroDeUso(o.erro);
    const std::string tipo = o.texto("tipo", "HC");
    if (tipo != "HH" && tipo != "HC" && tipo != "CH" && tipo != "CC")
        return ErroDeUso("--tipo espera HH, HC, CH ou CC");
    const auto regra = o.inteiro("regra", 1, 4, 1);
    const auto nivel1 = o.inteiro("nivel1", 1, 5, 1);
    const auto nivel2 = o.inteiro("nivel2", 1, 5, 1);
    const auto comeca = o.inteiro("comeca", 1, 2, 1);
    if (!regra || !nivel1 || !nivel2 || !comeca) return ErroDeUso(o.erro);

    PlataformaTerminal plataforma;
    Contexto ctx(plataforma);
    plataforma.ctx = &ctx;
    Motor motor(ctx);
    GanchosTerminal ganchos(ctx);
    ctx.pensador = &motor;
    ctx.ganchos = &ganchos;
    ctx.Game.Modo = tipo == "HH" ? 3 : 1;
    ctx.Game.Tipo = tipo;
    ctx.Game.Regra = static_cast<int>(*regra);
    ctx.Game.Comeca = static_cast<int>(*comeca);
    ctx.Tipo_c = "Servidor";
    ctx.Jogador[1].Nome = tipo[0] == 'C' ? "CPU 1" : "Jogador 1";
    ctx.Jogador[2].Nome = tipo[1] == 'C' ? "CPU 2" : "Jogador 2";
    ctx.Jogador[1].Nivel = static_cast<int16_t>(*nivel1);
    ctx.Jogador[2].Nivel = static_cast<int16_t>(*nivel2);
    std::printf("Regra: %s\n", NomeRegra(ctx.Game.Regra));
    ctx.IniciaJogo();
    plataforma.Mostra();

    switch (ganchos.resultado) {
    case 1:
    case 2: std::printf("Vencedor: %s\n", ctx.Jogador[ganchos.resultado].Nome.c_str()); break;
    case 3:
    case 4: std::printf("Resultado: empate\n"); break;
    default: std::printf("Partida interrompida\n"); return 1;
    }
    return 0;
}

} // namespace velmora::cli
