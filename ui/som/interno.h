#pragma once
// The SDL side of Sons, shared by som.cpp and musica.cpp; nothing outside ui/som includes it.
#include "ui/som/sons.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <map>
#include <optional>

namespace velmora {

struct LiberaSom {
    void operator()(Mix_Chunk* som) const { Mix_FreeChunk(som); }
};
struct LiberaMusica {
    void operator()(Mix_Music* musica) const { Mix_FreeMusic(musica); }
};
using SomCarregado = std::unique_ptr<Mix_Chunk, LiberaSom>;
using MusicaCarregada = std::unique_ptr<Mix_Music, LiberaMusica>;

// SDL's audio subsystem and the mixer's device, undone in reverse order of what was done.
class Dispositivo {
  public:
    explicit Dispositivo(const std::string& fonteSons);
    ~Dispositivo();
    Dispositivo(const Dispositivo&) = delete;
    Dispositivo& operator=(const Dispositivo&) = delete;
    bool Aberto() const { return audio_; }

  private:
    bool sdl_ = false;
    int formatos_ = 0; // what Mix_Init started
    bool audio_ = false;
};

struct Sons::Interno {
    enum class Estado { NaoTentado, Aberto, Falhou };

    std::filesystem::path pasta;
    std::string fonteSons;
    Estado estado = Estado::NaoTentado;
    // Declared first, destroyed last: the sounds and the music are freed before the device.
    std::optional<Dispositivo> dispositivo;
    std::map<std::string, SomCarregado> sons;
    MusicaCarregada musica;

    // Opens the device at the first call; true while it is open.
    bool Abre();
    // The file of that name in the folder; a leading "/" or "\" is allowed and ignored.
    std::filesystem::path Caminho(const std::string& nome) const;
};

} // namespace velmora
