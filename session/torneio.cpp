// The tournament: eight elimination games against named opponents, played by the computer
// at the stage's strength. Its run lives in memory only.
#include "session/form1.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {
struct Oponentes {
    const char* seSorteFalsa;
    const char* seSorteVerdadeira;
};
constexpr std::array<Oponentes, 8> NomesDosBots{{{"Valber", "Rui"},
                                                 {"Jhonny", "Fred"},
                                                 {"Valdomiro", "James"},
                                                 {"Gleivasta", "Michael"},
                                                 {"Katinaira", "Miro"},
                                                 {"Esmeralda", "Celso"},
                                                 {"Joe", "Miro"},
                                                 {"Jackson", "Renan"}}};
constexpr std::array<const char*, 8> NomesDasFases{
    "Primeiro oponente", "Segundo oponente", "Terceiro oponente", "Quarto oponente",
    "Oitavas de Final",  "Quartas de Final", "Semi Final",        "Final"};
} // namespace

std::string NomeFase(int fase) {
    if (fase < 1 || fase > 8) return "";
    return NomesDasFases[fase - 1];
}

std::string Form1::NomeBot(int fase) {
    const auto& o = NomesDosBots[std::clamp(fase, 1, 8) - 1];
    return std::string(ctx.Sorte(50) ? o.seSorteVerdadeira : o.seSorteFalsa) + " (Bot)";
}

void Form1::MostraBoasVindas() {
    Mensagem("Bem vindo ao torneio.\n\n"
             "Para ser campeão é preciso ganhar os 8 jogos da eliminatória\n\n"
             "Seu primeiro oponente será: " +
             ctx.Jogador[2].Nome + "\n\nBoa sorte");
}

void Form1::finalizaTorneio(bool humanoVenceu) {
    auto& G = ctx.Game;
    auto& humano = ctx.Jogador[LadoHumano()];
    auto& bot = ctx.Jogador[LadoComputador()];
    if (!humanoVenceu) {
        // A lost game costs time and nothing else: the same stage is played again.
        G.Fim = true;
        Mensagem("Infelizmente  você não conseguiu passar por " + bot.Nome + " !");
        Tempo.stop();
        return;
    }
    if (bot.Nivel < 8) {
        const std::string eliminado = bot.Nome;
        bot.Nome = NomeBot(bot.Nivel + 1);
        Mensagem("Parabéns, você eliminou " + eliminado + " e passou para a proxima fase!\n\n" +
                 "Seu proximo oponente será " + bot.Nome);
        ++bot.Nivel;
        ++humano.Vitorias;
        ++bot.Vitorias;
        AtualizaPlacar();
        G.Comeca = G.Comeca == 1 ? 2 : 1;
        return;
    }
    // The champion: the run's whole time goes to the table of level 8, and play goes on
    // against the same final opponent with the clock running on.
    Mensagem("Parabens " + humano.Nome + ",\n\nVocê é o grande campeão");
    Tempo.stop();
    VerificaRecord();
}

} // namespace velmora
