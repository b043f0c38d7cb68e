#pragma once
// partida --rede: a session against another copy over TCP.
#include "comandos.h"

namespace velmora::cli {

// The arguments ask for a game over the network.
bool PedePartidaRede(const Argumentos& args);
int ComandoPartidaRede(const Argumentos& args);

} // namespace velmora::cli
