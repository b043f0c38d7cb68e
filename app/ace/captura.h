#pragma once
// A scripted run for screenshots, switched on by VELMORA_CAPTURA=<folder>: it photographs
// the first new game dialog, starts a game against the computer, plays a few moves for the
// player through the board's clicks, photographs the board in the middle of the game and
// ends the program. The moment the first dialog appeared is noted, as milliseconds since
// the epoch, in <folder>/inicio-ms.txt.
#include <QString>

namespace velmora {
class Form1;
namespace ui {
class TelaQt;
}
} // namespace velmora

namespace velmora::ace {

// Prepares the run when the variable is set; false otherwise.
bool PreparaCaptura(ui::TelaQt& tela);

} // namespace velmora::ace
