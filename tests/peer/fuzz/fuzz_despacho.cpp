// Fuzzer of the peer dispatcher: each input is cut into reads at 0xFF bytes, and each read
// goes to a connected copy as the socket would deliver it: merged messages, random bytes,
// huge reads. No read may crash it or read out of bounds, and the board's ring stays whole.
#include "core/casas.h"
#include "net/modsocketmaster.h"
#include "peer/conexaopeer.h"
#include "session/form1.h"

#include <QCoreApplication>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

using namespace velmora;

class TelaMuda : public Tela, public TelaPeer {
  public:
    SaidaDialogo MostraNovoJogo(FrmNewGame&) override { return SaidaDialogo::Cancelar; }
    void Mensagem(const std::string&, const std::string&) override {}
    bool Pergunta(const std::string&, const std::string&) override { return false; }
    bool PerguntaEmpate(const std::string&) override { return sim = !sim; }
    bool sim = false;
};

// No computer thinks inside a read: its turn ends the game.
class SemPensar : public Pensador {
  public:
    explicit SemPensar(Contexto& c) : c_(c) {}
    uint8_t PensaJogada() override {
        c_.Game.Fim = true;
        return 0;
    }

  private:
    Contexto& c_;
};

struct Copia {
    RelogioSimulado relogio;
    TelaMuda tela;
    Form1 form{tela, relogio};
    modSocketMaster mod;
    ConexaoPeer peer{form, mod, &tela};
    SemPensar pensador{form.ctx};
    Copia() {
        form.UsaRede(peer);
        form.UsaPensador(&pensador);
        peer.semSockets = true;
        peer.vaiVencer = [](double) { return 0; };
        peer.pingaEndereco = [](const std::string&, int) { return false; };
        form.Form_Load();
        form.config.TocarSom = false;
        // A game that a read starts (after a surrender, a draw) leaves at its first turn.
        form.AoProcessarEventos = [this] {
            if (form.ctx.Game.EmPlay) form.ctx.Game.SairPlay = form.ctx.Game.Fim = true;
        };
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* dados, size_t tamanho) {
    static int argc = 1;
    static char nome[] = "fuzz";
    static char* argv[] = {nome, nullptr};
    static QCoreApplication* app = [] {
        ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
        return new QCoreApplication(argc, argv);
    }();
    (void)app;
    Copia c;
    auto& ctx = c.form.ctx;
    ctx.Tipo_c = tamanho > 0 && (dados[0] & 1) ? "Cliente" : "Servidor";
    ctx.Game.Modo = tamanho > 0 && (dados[0] & 2) ? 4 : 5;
    ctx.Jogador[2].Nome = "Bia";
    ctx.Game.Tipo = "HH";
    c.form.EstaConectado();
    ctx.Game.Comeca = 0; // no game starts from inside a read
    ctx.Game.Fim = false;
    const Posicao inicial = ctx.Atual;
    std::string leitura;
    for (size_t i = 0; i < tamanho; ++i) {
        if (dados[i] == 0xFF) {
            c.peer.Despacha(1, leitura);
            leitura.clear();
            ctx.Game.Comeca = 0;
        } else {
            leitura += static_cast<char>(dados[i]);
        }
    }
    c.peer.Despacha(1, leitura);
    for (int s = 0; s <= 100; ++s)
        if (!CasaDoTabuleiro(s) && ctx.Atual.Casas[s] != inicial.Casas[s]) std::abort();
    return 0;
}
