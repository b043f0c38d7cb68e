// The move exchange: a move goes out at the end of FazJogada, a received one is played
// blind and confirmed, and the start check and the two conflicts repair what a wrong
// start can break.
#include "peer/conexaopeer.h"

#include "core/fazjogada.h"
#include "peer/fio.h"

namespace velmora {

using namespace fio;

namespace {
// Leaving now would count as a surrender (the test of the disconnect button).
bool SairContaComoEntrega(const Form1& f) {
    const auto& c = f.ctx;
    return !(c.JogadaAtual < 5 &&
             (c.Jogador[1].Vitorias > 0 || c.Jogador[2].Vitorias > 0 || f.Empatou));
}
} // namespace

void ConexaoPeer::AtualizaLabel26() {
    ctx().painel.Label26.Texto =
        SairContaComoEntrega(form_) ? "Entregar e desconectar" : "Desconectar";
}

void ConexaoPeer::EnviaJogada(const Jogada& j) {
    auto& m = form_.modelo;
    m.PicTIMER[1].Visivel = m.PicTIMER[2].Visivel = false;
    EnviaPeer(std::string(MarcaJogada) + j.texto() + std::string(Separador) + "T" +
              std::string(Separador));
    AtualizaLabel26();
}

bool ConexaoPeer::RecebeJogada(std::string& texto) {
    auto& c = ctx();
    auto& m = form_.modelo;
    if (!c.painel.PicVezDois.Visivel && c.Minhavez()) {
        // A move on this copy's own turn: the two copies disagree about the turn.
        Log(" : : : Erro : : :");
        EnviaPeer(std::string(ErroVez));
        return false;
    }
    const size_t marca = texto.find(MarcaJogada);
    const std::string resto = texto.substr(marca + 1);
    const std::string lance = Pedaco(resto, Separador, 2);
    const std::string bandeira = Pedaco(resto, Separador, 3);
    // A move that names squares off the board (or can't be one) is refused before it
    // touches anything.
    if (lance.size() < 2 || lance.size() > static_cast<size_t>(Jogada::MAXIMO) ||
        !JogadaNoTabuleiro(reinterpret_cast<const uint8_t*>(lance.data()),
                           static_cast<int>(lance.size())))
        ForaDoIntervalo();
    m.PicCrono[1].Largura = m.PicCrono[2].Largura = 0;
    form_.Timer2.stop();
    // The flag says whether the move is whole; this program always sends and plays whole
    // moves, so a half one is played whole as well.
    (void)bandeira;
    c.Make_Enviar = false;
    if (c.JogadaAtual < INT16_MAX) ++c.JogadaAtual;
    c.FazJogadaNaTela(Jogada(lance));
    c.Make_Enviar = true;
    c.Ja_Joguei = true;
    if (c.Game.TempoLimite > 0)
        m.PicCrono[1].Largura = m.PicTIMER[1].Largura / c.Game.TempoLimite * 3;
    form_.Timer2.start();
    EnviaPeer(std::string(JogadaOK));
    // The whole message goes from the text: up to the third separator behind the mark.
    size_t fim = marca + MarcaJogada.size();
    for (int k = 0; k < 2; ++k) {
        const size_t s = texto.find(Separador, fim);
        if (s == std::string::npos) {
            fim = texto.size();
            break;
        }
        fim = s + Separador.size();
    }
    texto = Apara(texto.substr(0, marca) + texto.substr(fim));
    return !texto.empty();
}

void ConexaoPeer::RecebeJOK() {
    auto& m = form_.modelo;
    form_.Timer2.start();
    m.PicCrono[1].Largura = m.PicCrono[2].Largura = 0;
    m.PicTIMER[1].Visivel = m.PicTIMER[2].Visivel = false;
    ctx().Recebeu_Jogada = true;
}

bool ConexaoPeer::RecebeVerifica() {
    auto& c = ctx();
    AceitaVerifica = false;
    if (c.painel.PicVezDois.Visivel) return false; // the copies agree
    // Both believe that they start: this copy yields, and the sender starts.
    c.Game.Fim = true;
    c.Game.Comeca = c.Tipo_c == "Cliente" ? 1 : 2;
    Log("Restart_game");
    corrige_ = true;
    form_.TimerCorrige.start();
    return true;
}

void ConexaoPeer::RecebeErroInicio(bool responde) {
    auto& c = ctx();
    if (responde) EnviaPeer(std::string(ErroInicioOK));
    c.Game.Comeca = 1;
    c.Atual.Vez = 1;
    Log("Restart_game");
    c.Game.Fim = true;
    corrige_ = true;
    form_.TimerCorrige.start();
}

void ConexaoPeer::TimerCorrige_Timer() {
    // A start sequence on the stack gives way first.
    if (emInicio_) return;
    form_.TimerCorrige.stop();
    auto& c = ctx();
    corrige_ = false;
    if (saiuParaCorrigir_) {
        saiuParaCorrigir_ = false;
        c.StartInitGame = false;
    }
    if (!c.Game.Conectado) return;
    // The running turn leaves on Game.Fim, and the new game starts once it has.
    c.Game.Fim = true;
    c.defineinicio();
    c.PlayGame();
}

void ConexaoPeer::RecebeErroVez() {
    form_.TimerVerifica.stop();
    ctx().Game.valendo = false;
    Close_Valendo = false;
    EnviaPeer(std::string(ErroVezOK));
}

void ConexaoPeer::RecebeErroVezOK() {
    form_.TimerVerifica.stop();
    ctx().Game.valendo = false;
    Close_Valendo = false;
    form_.Label26_Click();
}

} // namespace velmora
