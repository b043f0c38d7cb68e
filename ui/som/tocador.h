#pragma once
// What the game asks of the sound: effects played to their end, one piece of music in the
// background, and a way to stop it. The game logic holds a Tocador&; the desktop program plugs
// in Sons (sons.h), a headless run or a test plugs in TocadorMudo or a recorder of its own.
#include <string>

namespace velmora {

struct Tocador {
    virtual ~Tocador() = default;
    // Plays the wave file `nome` ("mover.wav") of the program's folder and returns when it has
    // ended: the whole program waits for it. Silent when the file or the device is missing.
    virtual void TocaSom(const std::string& nome) = 0;
    // Starts the MIDI piece `nome` ("sweethrt.mid") in the background, in place of any piece
    // that plays, once, with no loop. The text "Close" stops the music instead.
    virtual void TocaMusica(const std::string& nome) = 0;
    // Stops the music; harmless when none plays.
    virtual void FechaMusica() = 0;
};

// Plays nothing, at once.
struct TocadorMudo final : Tocador {
    void TocaSom(const std::string&) override {}
    void TocaMusica(const std::string&) override {}
    void FechaMusica() override {}
};

} // namespace velmora
