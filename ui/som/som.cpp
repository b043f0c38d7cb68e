// The device and the sound effects.
#include "ui/som/interno.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace velmora {

namespace {

constexpr int kTaxa = 44100;
constexpr int kCanais = 2;
constexpr int kQuadrosPorBloco = 1024;
// A sound that the device stops consuming is abandoned this long after its due end.
constexpr Uint64 kFolgaMs = 2000;

// While the device is probed, the audio libraries below SDL write their own complaints to
// stderr ("ALSA lib ... Unknown PCM default" on a machine with no sound card). The game
// treats a missing device as silence, not as an error, so those lines are held back.
class CalaStderr {
  public:
    CalaStderr() {
        std::fflush(stderr);
        salvo_ = ::dup(STDERR_FILENO);
        const int nulo = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (salvo_ >= 0 && nulo >= 0) ::dup2(nulo, STDERR_FILENO);
        if (nulo >= 0) ::close(nulo);
    }
    ~CalaStderr() {
        std::fflush(stderr);
        if (salvo_ >= 0) {
            ::dup2(salvo_, STDERR_FILENO);
            ::close(salvo_);
        }
    }
    CalaStderr(const CalaStderr&) = delete;
    CalaStderr& operator=(const CalaStderr&) = delete;

  private:
    int salvo_ = -1;
};

} // namespace

Dispositivo::Dispositivo(const std::string& fonteSons) {
    CalaStderr calado;
    SDL_SetHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Velmora Ace");
    // SDL would take SIGINT and SIGTERM for its own event queue, which nobody reads here:
    // the program would then outlive a logout or a kill.
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return;
    sdl_ = true;
    // Without MIDI support the music is silent; the sounds don't need it.
    formatos_ = Mix_Init(MIX_INIT_MID);
    std::error_code erro;
    if (!fonteSons.empty() && std::filesystem::is_regular_file(fonteSons, erro)) {
        Mix_SetSoundFonts(fonteSons.c_str());
    }
    audio_ = Mix_OpenAudio(kTaxa, MIX_DEFAULT_FORMAT, kCanais, kQuadrosPorBloco) == 0;
}

Dispositivo::~Dispositivo() {
    if (audio_) {
        Mix_HaltChannel(-1);
        Mix_HaltMusic();
        Mix_CloseAudio();
    }
    if (formatos_ != 0) Mix_Quit();
    if (sdl_) SDL_QuitSubSystem(SDL_INIT_AUDIO);
}

bool Sons::Interno::Abre() {
    if (estado == Estado::NaoTentado) {
        dispositivo.emplace(fonteSons);
        if (dispositivo->Aberto()) {
            estado = Estado::Aberto;
        } else {
            dispositivo.reset();
            estado = Estado::Falhou;
        }
    }
    return estado == Estado::Aberto;
}

std::filesystem::path Sons::Interno::Caminho(const std::string& nome) const {
    const auto inicio = nome.find_first_not_of("/\\");
    return pasta / (inicio == std::string::npos ? std::string() : nome.substr(inicio));
}

Sons::Sons(std::filesystem::path pasta, std::string fonteSons)
    : interno_(std::make_unique<Interno>()) {
    interno_->pasta = std::move(pasta);
    interno_->fonteSons = std::move(fonteSons);
}

Sons::~Sons() = default;

bool Sons::Disponivel() {
    return interno_->Abre();
}

void Sons::TocaSom(const std::string& nome) {
    if (!interno_->Abre()) return;
    auto& guardado = interno_->sons[nome];
    if (!guardado) {
        const auto caminho = interno_->Caminho(nome);
        std::error_code erro;
        if (!std::filesystem::is_regular_file(caminho, erro)) {
            interno_->sons.erase(nome);
            return;
        }
        guardado.reset(Mix_LoadWAV(caminho.c_str()));
        if (!guardado) {
            interno_->sons.erase(nome);
            return;
        }
    }
    Mix_Chunk* som = guardado.get();

    int taxa = 0, canais = 0;
    Uint16 formato = 0;
    Mix_QuerySpec(&taxa, &formato, &canais);
    const Uint64 bytesPorSegundo =
        static_cast<Uint64>(taxa) * static_cast<Uint64>(canais) * (SDL_AUDIO_BITSIZE(formato) / 8);
    const Uint64 duracaoMs = bytesPorSegundo == 0 ? 0 : Uint64{som->alen} * 1000 / bytesPorSegundo;

    const int canal = Mix_PlayChannel(-1, som, 0);
    if (canal < 0) return;
    // The caller waits for the sound, as the game expects; a device that stalls doesn't hold
    // the game for longer than the sound plus a little.
    const Uint64 limite = SDL_GetTicks64() + duracaoMs + kFolgaMs;
    while (Mix_Playing(canal) != 0) {
        if (SDL_GetTicks64() > limite) {
            Mix_HaltChannel(canal);
            break;
        }
        SDL_Delay(2);
    }
}

} // namespace velmora
