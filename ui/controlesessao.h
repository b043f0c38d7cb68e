#pragma once
// What the board window asks of the game session behind it. The window draws the state and
// turns the player's clicks into these calls; the session decides what they mean.
#include <QString>

namespace velmora::ui {

class ControleSessao {
  public:
    virtual ~ControleSessao() = default;
    // Opens the new game dialog when nothing runs, or arranges for that.
    virtual void InitGame() = 0;
    // "Reiniciar", and "Entregar partida" when it is allowed.
    virtual void Reiniciar() = 0;
    // "Sugerir empate".
    virtual void SugerirEmpate() = 0;
    // "Desconectar".
    virtual void Desconectar() = 0;
    // The Yes of "Deseja iniciar um novo jogo?" after a finished game: the same session
    // plays again from the start.
    virtual void NovoJogoAposFim() = 0;
    // The window unloads: the options are written and the links closed.
    virtual void Encerra() = 0;
    // Options changed through FrmOpc ("OK"): they are in force at once.
    virtual void OpcoesMudaram() {}
    // One message to the peer on the link in use; nothing without a link.
    virtual void EnviaPeer(const QString& texto) { (void)texto; }
};

} // namespace velmora::ui
