// The end of a game: the player is told, the session's score, the tally and the records
// change, and an on-line result is reported. Also the two ways a connected player leaves a
// game: handing it over, and disconnecting.
#include "session/form1.h"

#include <cmath>

namespace velmora {

namespace {
// Counts one running end of game, so that InitGame waits for it to return.
class Contador {
  public:
    explicit Contador(int& n) : n_(n) { ++n_; }
    ~Contador() { --n_; }
    Contador(const Contador&) = delete;
    Contador& operator=(const Contador&) = delete;

  private:
    int& n_;
};
} // namespace

bool Form1::ContraCPU() const {
    return ctx.Game.Tipo.find('C') != std::string::npos && !ctx.Game.Conectado;
}

void Form1::finaliza(uint8_t resultado) {
    const Contador emCurso(emFinaliza_);
    auto& G = ctx.Game;
    Painel& p = ctx.painel;
    Tempo.stop();
    ctx.TempoJogo = std::floor(TempoDecorrido());
    if (!G.Voltou) p.Label12.Texto = FormataTempo(static_cast<long>(ctx.TempoJogo));
    p.Label18.Texto = "Jogo terminado";
    const bool conectado = G.Conectado;

    if (resultado == 3) {
        // A draw seen by the computer: no score, and the same side starts.
        if (!conectado) Mensagem("Jogo Empatado");
        AtualizaPlacar();
        if (G.Tipo == "CC") InitGame();
        return;
    }
    if (resultado != 1 && resultado != 2) return;
    if (G.Tipo == "CC") {
        auto& v = ctx.Jogador[resultado];
        ++v.Vitorias;
        Mensagem(v.Nome + "-" + std::to_string(v.Nivel) + " venceu");
        InitGame();
        return;
    }
    if (!ContraCPU()) {
        if (conectado)
            finalizaConectado(resultado);
        else
            finalizaDoisHumanos(resultado);
    } else {
        const bool humanoVenceu =
            (resultado == 1 && G.Tipo[0] == 'H') || (resultado == 2 && G.Tipo[1] == 'H');
        if (G.Modo == 2) {
            finalizaTorneio(humanoVenceu);
            return;
        }
        auto& cpu = ctx.Jogador[LadoComputador()];
        if (humanoVenceu) {
            Mensagem("Parabéns, você foi o vencedor!");
            VerificaRecord();
            ++ctx.Jogador[LadoHumano()].Vitorias;
            AtualizaPlacar();
            if (!G.Voltou) placar_.SomaPerdeu(cpu.Nivel);
        } else {
            Mensagem("Você perdeu!");
            ++cpu.Vitorias;
            AtualizaPlacar();
            placar_.SomaVenceu(cpu.Nivel);
        }
    }
    // A connected game alternated at once; the others alternate here.
    if (!conectado) G.Comeca = G.Comeca == 1 ? 2 : 1;
}

void Form1::finalizaDoisHumanos(uint8_t resultado) {
    auto& v = ctx.Jogador[resultado];
    ++v.Vitorias;
    Mensagem(v.Nome + " venceu");
    AtualizaPlacar();
    plataforma.ProcessaEventos();
}

void Form1::finalizaConectado(uint8_t resultado) {
    auto& G = ctx.Game;
    Painel& p = ctx.painel;
    ++ctx.Jogador[resultado].Vitorias;
    G.AceitaClique = false;
    G.Comeca = G.Comeca == 1 ? 2 : 1;
    if (resultado == 1) {
        p.Label27.Texto = "Você venceu";
        p.Label27.Visivel = true;
        const double nota = plataforma.Decorrido();
        p.Ocupado = true;
        rede_->AtribuiVitoria(1, true);
        p.Ocupado = false;
        // The text stays at least 5 seconds, so that the loser's side can finish.
        const double passou = plataforma.Decorrido() - nota;
        if (std::floor(passou) < 5) ctx.Espera(5 - passou);
        G.AceitaClique = true;
        p.Label27.Visivel = false;
        rede_->EnviaPeer("/PODJOGAR\\");
    } else {
        modelo.Label7.Habilitado = false;
        p.Label24.Habilitado = p.Label22.Habilitado = false;
        p.Label24.Cor = p.Label22.Cor = cor::Cinza;
        rede_->AtribuiVitoria(2, true);
        p.Label27.Texto = ctx.Jogador[2].Nome + " venceu";
        p.Label27.Visivel = true;
        const double nota = std::floor(plataforma.Decorrido());
        LogDebug(" ::::::: Entrei no loop de espera");
        EmEspera[EsperaAtribui] = true;
        // The winner's "/PODJOGAR\" sets AceitaClique; 25 seconds without it drop the link.
        while (!ctx.StartInitGame && G.Conectado && !G.AceitaClique) {
            if (plataforma.Decorrido() - nota > 25) {
                LogDebug("::::::: SAIDO DEVIDO TEMPO LIMITE DE ESPERA PELO ATRIBUI:::");
                EmEspera[EsperaAtribui] = false;
                rede_->FechaSocketEmUso();
                rede_->WS_Close();
                return;
            }
            plataforma.ProcessaEventos();
            plataforma.ProcessaEventos();
            plataforma.Dorme(5);
        }
        EmEspera[EsperaAtribui] = false;
        LogDebug(" ::::::: Saí do loop de espera");
        if (ctx.StartInitGame) return;
        p.Label27.Visivel = false;
        G.AceitaClique = true;
        modelo.Label7.Habilitado = true;
        p.Label24.Habilitado = true;
        p.Label24.Cor = cor::Clara;
        HabilitaEntregar();
    }
    AtualizaPlacar();
    plataforma.ProcessaEventos();
}

bool Form1::VerificaRecord() {
    auto& G = ctx.Game;
    if (!ContraCPU() || G.Voltou) return false;
    const int nivel = ctx.Jogador[LadoComputador()].Nivel;
    const std::string& nome = ctx.Jogador[LadoHumano()].Nome;
    int lugar = 0;
    // A time equal to a stored one goes behind it.
    for (int r = 1; r <= PosicoesDeRecorde && lugar == 0; ++r)
        if (recordes_.TempoRecord(nivel, r) > ctx.TempoJogo) lugar = r;
    if (lugar != 0) {
        Musica("passport.mid");
        recordes_.GravaRecord(nome, static_cast<int32_t>(ctx.TempoJogo), nivel, lugar);
        PosicaoRecord = lugar;
        tela_.MostraRecordes(nivel, lugar);
    }
    tela_.FechaMusica();
    return lugar != 0;
}

bool Form1::EntregaPartida() {
    auto& G = ctx.Game;
    Painel& p = ctx.painel;
    G.AceitaClique = false;
    p.Label24.Habilitado = false;
    modelo.Label7.Habilitado = false;
    p.Label24.Cor = cor::Cinza;
    p.Label27.Texto = "Você entregou o jogo.";
    p.Label27.Visivel = true;
    plataforma.ProcessaEventos();
    ++ctx.Jogador[2].Vitorias;
    rede_->EnviaPeer("Entregar:Perder");
    rede_->AtribuiVitoria(2, true);
    G.Fim = true;
    G.AceitaClique = false;
    LogDebug("Entrei no loop Espera (ENTREGAR)");
    EmEspera[EsperaEntregar] = true;
    // No time limit: the liveness check ends it when the link fails.
    while (!ctx.StartInitGame && !G.AceitaClique && G.Conectado) {
        plataforma.ProcessaEventos();
        plataforma.Dorme(5);
    }
    LogDebug("Saí no loop Espera (ENTREGAR)");
    EmEspera[EsperaEntregar] = false;
    if (ctx.StartInitGame) return false;
    p.Label27.Visivel = false;
    p.Label24.Cor = cor::Clara;
    modelo.Label7.Habilitado = true;
    if (!G.Conectado) return false;
    AtualizaPlacar();
    return true;
}

void Form1::Label26_Click() {
    if (encerrado_) return;
    Som("Click.wav");
    auto& G = ctx.Game;
    Painel& p = ctx.painel;
    if (!G.Fim) {
        G.AceitaClique = true;
        // Early in a game, with something already decided with this peer, leaving is free.
        const bool livre = ctx.JogadaAtual < 5 &&
                           (ctx.Jogador[1].Vitorias > 0 || ctx.Jogador[2].Vitorias > 0 || Empatou);
        if (!livre) {
            p.Label24.Habilitado = false;
            modelo.Label7.Habilitado = false;
            p.Label24.Cor = cor::Cinza;
            G.Fim = true;
            p.Label27.Visivel = false;
            ++ctx.Jogador[2].Vitorias;
            AtualizaPlacar();
            modelo.LbNV[1].Texto.clear();
            modelo.LbNV[2].Texto.clear();
        }
    }
    modelo.Text4.Texto.clear();
    rede_->FechaSocketEmUso();
    G.Conectado = false;
    rede_->DescarregaSocketEmUso();
    AjeitaForm();
    InitGame();
}

} // namespace velmora
