#include "comandos.h"

#include <cstdio>
#include <cstring>

namespace {

struct Subcomando {
    const char* nome;
    int (*executa)(const velmora::cli::Argumentos&);
    const char* uso;
};

// One row per subcommand; keep the table in alphabetical order.
constexpr Subcomando subcomandos[] = {
    {"analisa", velmora::cli::ComandoAnalisa,
     "analisa --regra N --tabuleiro TEXTO (--tempo S | --prof D)"},
    {"configuracao", velmora::cli::ComandoConfiguracao, "configuracao exporta|importa ARQUIVO"},
    {"lista", velmora::cli::ComandoLista,
     "lista --regra N --modo humano|computador --tabuleiro TEXTO"},
    {"partida", velmora::cli::ComandoPartida,
     "partida [--tipo HH|HC|CH|CC] [--regra N] [--nivel1 N] [--nivel2 N] [--comeca 1|2] "
     "[--tempo S]"},
    {"perft", velmora::cli::ComandoPerft,
     "perft --regra N --modo humano|computador --prof D [--tabuleiro TEXTO]"},
    {"recordes", velmora::cli::ComandoRecordes, "recordes [--nivel N]"},
};

void MostraUso() {
    std::fprintf(stderr, "uso: velmora-cli SUBCOMANDO [opções]\n");
    for (const auto& s : subcomandos) std::fprintf(stderr, "  velmora-cli %s\n", s.uso);
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        MostraUso();
        return 2;
    }
    for (const auto& s : subcomandos) {
        if (std::strcmp(argv[1], s.nome) == 0) {
            velmora::cli::Argumentos args(argv + 2, argv + argc);
            return s.executa(args);
        }
    }
    if (std::strcmp(argv[1], "--help") != 0 && std::strcmp(argv[1], "ajuda") != 0)
        std::fprintf(stderr, "subcomando desconhecido: %s\n", argv[1]);
    MostraUso();
    return 2;
}
