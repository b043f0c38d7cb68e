#pragma once
// partida --online: a session against another copy met through the on-line service.
#include "comandos.h"

namespace velmora::cli {

// The arguments ask for a game through the service's lobby.
bool PedePartidaOnline(const Argumentos& args);
int ComandoPartidaOnline(const Argumentos& args);

} // namespace velmora::cli
