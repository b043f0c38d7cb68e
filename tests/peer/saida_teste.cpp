// When a command-line copy that was asked for a number of games leaves the link.
#include "apoio.h"

#include "app/cli/terminalrede.h"

#include <QCoreApplication>

namespace velmora::teste {
namespace {

class Saida : public Copia {
  protected:
    // The games asked for are over, with this copy's last move sent and not yet confirmed.
    void FimDosJogos() {
        Conecta("Servidor", 4);
        auto& c = form.ctx;
        c.Game.Fim = true;
        c.Game.EmPlay = false;
        c.Recebeu_Jogada = false;
        relato.terminados = 1;
        ajustes.jogos = 1;
        comandos.Liga();
    }
    // A turn of the session's pump, then the events it scheduled.
    void Bombeia() {
        form.ctx.plataforma.ProcessaEventos();
        QCoreApplication::processEvents();
    }
    cli::Linhas linhas;
    cli::Relato relato{form};
    cli::AjustesRede ajustes;
    cli::ComandosRede comandos{form, peer, linhas, relato, ajustes};
};

// Closing while the move that ended the game is on its way would make the other copy count
// the close as a surrender: the copy waits for that move's confirmation.
TEST_F(Saida, EsperaAConfirmacaoDaUltimaJogada) {
    FimDosJogos();
    Bombeia();
    relogio.Avanca(2.0);
    Bombeia();
    EXPECT_TRUE(form.ctx.Game.Conectado);
    Recebe("J_OK");
    Bombeia();
    EXPECT_FALSE(form.ctx.Game.Conectado);
}

// With no confirmation at all, it leaves five seconds after the end.
TEST_F(Saida, SemConfirmacaoSaiDepoisDeCincoSegundos) {
    FimDosJogos();
    Bombeia();
    relogio.Avanca(4.8);
    Bombeia();
    EXPECT_TRUE(form.ctx.Game.Conectado);
    relogio.Avanca(0.3);
    Bombeia();
    EXPECT_FALSE(form.ctx.Game.Conectado);
}

} // namespace
} // namespace velmora::teste
