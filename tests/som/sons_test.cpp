// Sons: silence when there is no device, waiting as long as a sound lasts when there is one.
// SDL's "dummy" driver stands in for a sound card: it consumes the audio at the real rate.
#include "ui/som/sons.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

namespace {

using velmora::Sons;
using Relogio = std::chrono::steady_clock;

const std::filesystem::path kPastaApp = VELMORA_PASTA_APP;

// Sets SDL_AUDIODRIVER for one test and puts back what was there.
class Driver {
  public:
    explicit Driver(const char* nome) {
        if (const char* antes = std::getenv("SDL_AUDIODRIVER")) antes_ = antes;
        setenv("SDL_AUDIODRIVER", nome, 1);
    }
    ~Driver() {
        if (antes_) {
            setenv("SDL_AUDIODRIVER", antes_->c_str(), 1);
        } else {
            unsetenv("SDL_AUDIODRIVER");
        }
    }
    Driver(const Driver&) = delete;
    Driver& operator=(const Driver&) = delete;

  private:
    std::optional<std::string> antes_;
};

template <typename F> double Segundos(F&& f) {
    const auto inicio = Relogio::now();
    f();
    return std::chrono::duration<double>(Relogio::now() - inicio).count();
}

// The length of a 16-bit PCM wave, from its header.
double Duracao(const std::string& nome) {
    std::FILE* f = std::fopen((kPastaApp / nome).c_str(), "rb");
    if (!f) return 0;
    unsigned char h[44] = {};
    const size_t lidos = std::fread(h, 1, sizeof h, f);
    std::fclose(f);
    if (lidos != sizeof h) return 0;
    auto le32 = [&](int i) { return h[i] | (h[i + 1] << 8) | (h[i + 2] << 16) | (h[i + 3] << 24); };
    return double(le32(40)) / le32(28); // data bytes / bytes per second
}

TEST(SonsSemDispositivo, TudoVoltaNaHoraESemErro) {
    Driver driver("nenhum-driver-de-audio");
    Sons sons(kPastaApp);
    const double gasto = Segundos([&] {
        EXPECT_FALSE(sons.Disponivel());
        for (int i = 0; i < 20; ++i) {
            sons.TocaSom("talk.wav");
            sons.TocaSom("alarme.wav");
            sons.TocaMusica("sweethrt.mid");
            sons.FechaMusica();
            sons.TocaMusica("Close");
        }
    });
    EXPECT_FALSE(sons.TocandoMusica());
    EXPECT_LT(gasto, 0.5);
}

TEST(SonsSemDispositivo, DepoisDeFalharNaoTentaDeNovo) {
    Driver driver("nenhum-driver-de-audio");
    Sons sons(kPastaApp);
    EXPECT_FALSE(sons.Disponivel());
    // a driver that would work now is not tried: the run stays silent
    Driver outro("dummy");
    EXPECT_FALSE(sons.Disponivel());
    EXPECT_LT(Segundos([&] { sons.TocaSom("alarme.wav"); }), 0.2);
}

class SonsComDriverMudo : public ::testing::Test {
  protected:
    void SetUp() override {
        if (!sons_.Disponivel()) GTEST_SKIP() << "SDL offers no dummy audio driver here";
    }
    Driver driver_{"dummy"};
    Sons sons_{kPastaApp};
};

TEST_F(SonsComDriverMudo, OSomTocaAteOFimAntesDeVoltar) {
    for (const char* nome : {"talk.wav", "alarme.wav", "mover.wav"}) {
        SCOPED_TRACE(nome);
        const double duracao = Duracao(nome);
        ASSERT_GT(duracao, 0.05);
        const double gasto = Segundos([&] { sons_.TocaSom(nome); });
        EXPECT_GE(gasto, duracao * 0.7);
        EXPECT_LE(gasto, duracao + 4.0);
    }
}

TEST_F(SonsComDriverMudo, OSinalDeTerminoContinuaAEncerrarOPrograma) {
    for (int sinal : {SIGTERM, SIGINT}) {
        struct sigaction atual {};
        ASSERT_EQ(sigaction(sinal, nullptr, &atual), 0);
        EXPECT_EQ(atual.sa_handler, SIG_DFL) << sinal;
    }
}

TEST_F(SonsComDriverMudo, NomeComBarraNaFrenteEOMesmoArquivo) {
    const double gasto = Segundos([&] { sons_.TocaSom("/talk.wav"); });
    EXPECT_GE(gasto, Duracao("talk.wav") * 0.7);
}

TEST_F(SonsComDriverMudo, ArquivoQueFaltaNaoTocaNada) {
    const double gasto = Segundos([&] {
        sons_.TocaSom("nao-existe.wav");
        sons_.TocaSom("");
        sons_.TocaSom("/");
        sons_.TocaMusica("nao-existe.mid");
    });
    EXPECT_LT(gasto, 0.2);
    EXPECT_FALSE(sons_.TocandoMusica());
}

TEST_F(SonsComDriverMudo, ArquivoQueNaoEOndaNaoTocaNada) {
    // the help page is a file of the folder, but no sound
    EXPECT_LT(Segundos([&] { sons_.TocaSom("velmora.html"); }), 0.2);
    sons_.TocaMusica("velmora.html");
    EXPECT_FALSE(sons_.TocandoMusica());
}

TEST_F(SonsComDriverMudo, AMusicaTocaAoFundoEUmaSubstituiAOutra) {
    sons_.TocaMusica("sweethrt.mid");
    if (!sons_.TocandoMusica()) GTEST_SKIP() << "SDL_mixer plays no MIDI here";
    // the game goes on while it plays: effects still wait only for themselves
    const double gasto = Segundos([&] { sons_.TocaSom("Click.wav"); });
    EXPECT_LE(gasto, Duracao("Click.wav") + 4.0);
    EXPECT_TRUE(sons_.TocandoMusica());

    sons_.TocaMusica("passport.mid");
    EXPECT_TRUE(sons_.TocandoMusica());
    sons_.FechaMusica();
    EXPECT_FALSE(sons_.TocandoMusica());
    sons_.FechaMusica(); // closing what isn't open is harmless

    sons_.TocaMusica("passport.mid");
    sons_.TocaMusica("Close");
    EXPECT_FALSE(sons_.TocandoMusica());
}

TEST_F(SonsComDriverMudo, MusicaQueFaltaCalaAQueTocava) {
    sons_.TocaMusica("sweethrt.mid");
    if (!sons_.TocandoMusica()) GTEST_SKIP() << "SDL_mixer plays no MIDI here";
    sons_.TocaMusica("nao-existe.mid");
    EXPECT_FALSE(sons_.TocandoMusica());
}

} // namespace
