#pragma once
// The desktop program's sounds and music over SDL2_mixer.
//
// The audio device opens at the first sound or piece of music, once. When it can't be opened
// (no sound card, no sound server, an unknown SDL_AUDIODRIVER), every call returns at once for
// the rest of the run and the game goes on in silence. The settings "Tocar Som" and
// "Tocar Música" are the caller's business: Sons plays whatever it is asked to.
//
// SDL's audio is one per process, so a program owns one Sons.
#include "ui/som/tocador.h"

#include <filesystem>
#include <memory>
#include <string>

namespace velmora {

// The General MIDI sound font the music is played with.
inline constexpr const char* kFonteSonsPadrao = "/usr/share/sounds/sf2/TimGM6mb.sf2";

class Sons final : public Tocador {
  public:
    // `pasta`: the folder where the sound and music files lie (beside the executable).
    // `fonteSons`: the sound font for MIDI; ignored when the file doesn't exist.
    explicit Sons(std::filesystem::path pasta, std::string fonteSons = kFonteSonsPadrao);
    ~Sons() override;
    Sons(const Sons&) = delete;
    Sons& operator=(const Sons&) = delete;

    void TocaSom(const std::string& nome) override;
    void TocaMusica(const std::string& nome) override;
    void FechaMusica() override;

    // Opens the device if that hasn't been tried yet; false means the run is silent.
    bool Disponivel();
    // A piece of music is playing now.
    bool TocandoMusica() const;

  private:
    struct Interno;
    std::unique_ptr<Interno> interno_;
};

} // namespace velmora
