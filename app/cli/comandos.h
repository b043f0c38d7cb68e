#pragma once
// The subcommands of velmora-cli. Each takes the arguments after its own name and
// returns the process exit code: 0 done, 1 failed, 2 bad arguments or bad input.
#include <string>
#include <vector>

namespace velmora::cli {

using Argumentos = std::vector<std::string>;

int ComandoPerft(const Argumentos& args);
int ComandoLista(const Argumentos& args);
int ComandoAnalisa(const Argumentos& args);
int ComandoPartida(const Argumentos& args);
int ComandoRecordes(const Argumentos& args);
int ComandoConfiguracao(const Argumentos& args);

} // namespace velmora::cli
