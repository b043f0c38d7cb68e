#pragma once
// A scripted run of a game by typed address, for screenshots, switched on by
// VELMORA_CAPTURA_REDE=<folder> with VELMORA_CAPTURA_PAPEL=escuta (create the game) or the
// address to dial: it fills the new game dialog's "Por IP" tab, connects, plays the first
// legal moves of this side by clicks on the board, photographs the board after twelve
// moves as <folder>/tabuleiro-<Servidor|Cliente>.png and ends the program.
//
// With VELMORA_CAPTURA_PAPEL=online it goes through the service instead: the "On-line" tab
// with VELMORA_CAPTURA_NICK and VELMORA_CAPTURA_SENHA, the lobby, then the game played by
// clicks to its end. Once the panels show the totals after the award (or 10 s after the
// end), it photographs the board as <folder>/online-<nick>.png, writes what both panels
// show to <folder>/online-<nick>.txt and ends the program.
namespace velmora::ui {
class TelaQt;
}

namespace velmora::ace {

bool PreparaCapturaRede(ui::TelaQt& tela);

} // namespace velmora::ace
