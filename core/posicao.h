#pragma once
// The engine's position: a plain value record, copied whole at every node of the search.
#include <array>
#include <cstdint>

namespace velmora {

struct Posicao {
    int16_t Saldo = 0; // material balance seen from side 1
    uint8_t Vez = 1;   // side to move, 1 or 2
    // Square of each piece number 1..12 and side (index [numero][lado - 1]), bit 128 for a
    // king, 0 when the piece is gone. Row 0 is unused.
    std::array<std::array<uint8_t, 2>, 13> Pecas{};
    std::array<uint8_t, 101> Casas{}; // the mailbox, index 1..100
    int16_t IniLista = 1;             // first slot of this node's moves in the move list
    int16_t FimLista = 0;             // last slot; below IniLista when there is no move

    uint8_t& Peca(int numero, int lado) { return Pecas[numero][lado - 1]; }
    uint8_t Peca(int numero, int lado) const { return Pecas[numero][lado - 1]; }
    bool operator==(const Posicao&) const = default;
};

// Writes 64 on every square of the ring and 0 on the board proper.
void LimpaMailbox(Posicao& p);

} // namespace velmora
