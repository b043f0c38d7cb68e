#pragma once
// Where the program's writable files live. The environment is read at each call, so a
// test that points the variables at a temporary folder is obeyed at once.
#include <filesystem>

namespace velmora {

// The settings store: $VELMORA_CONFIG when set, else
// $XDG_CONFIG_HOME/velmora-ace/registro.reg (XDG_CONFIG_HOME defaults to ~/.config).
std::filesystem::path ArquivoRegistro();

// The data folder of the records, the tally and debug.txt: $VELMORA_DADOS when set, else
// $XDG_DATA_HOME/velmora-ace (XDG_DATA_HOME defaults to ~/.local/share).
std::filesystem::path PastaDados();

// "Velmora.rec" and "Velmora.sav" in the data folder.
std::filesystem::path ArquivoRecordes();
std::filesystem::path ArquivoPlacar();

} // namespace velmora
