// The one piece of music, played in the background.
#include "ui/som/interno.h"

namespace velmora {

void Sons::TocaMusica(const std::string& nome) {
    if (nome == "Close") {
        FechaMusica();
        return;
    }
    if (!interno_->Abre()) return;
    FechaMusica();
    const auto caminho = interno_->Caminho(nome);
    std::error_code erro;
    if (!std::filesystem::is_regular_file(caminho, erro)) return;
    MusicaCarregada musica(Mix_LoadMUS(caminho.c_str()));
    if (!musica) return;
    if (Mix_PlayMusic(musica.get(), 0) != 0) return;
    interno_->musica = std::move(musica);
}

void Sons::FechaMusica() {
    if (!interno_->musica) return;
    Mix_HaltMusic();
    interno_->musica.reset();
}

bool Sons::TocandoMusica() const {
    return interno_->musica && Mix_PlayingMusic() != 0;
}

} // namespace velmora
