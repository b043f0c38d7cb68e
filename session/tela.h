#pragma once
// What the session asks of the screen: the start-up steps, the modal dialogs and message
// boxes, sounds and music, full screen and the end of the program. The desktop build shows
// real windows; the headless program and the tests answer from a script. Every call but
// the dialogs has a do-nothing default.
#include "session/form1modelo.h"
#include "session/frmnewgame.h"

#include <string>

namespace velmora {

class Tela {
  public:
    virtual ~Tela() = default;

    // --- start-up ---
    // The ratio of the splash picture's width on this screen to its design width.
    virtual double MedeEscala() { return 1.0; }
    virtual void AjustaEscalaSplash() {}
    virtual void MostraSplash(const std::string& versao) { (void)versao; }
    virtual void EscondeSplash() {}
    // The board window appears, without a modal wait.
    virtual void MostraJanela() {}
    virtual void DescarregaSplash() {}
    // The board window passes through the screen adjuster.
    virtual void AjustaEscala() {}
    // The screen rectangle of the board image of a square, in twips.
    virtual Retangulo RetanguloDaCasa(int casa);
    // The width of a name in twips at the given point size.
    virtual int LarguraDoTexto(const std::string& texto, int fonte);

    // --- dialogs and boxes ---
    // Shows the new game dialog modally; "JOGAR" runs dialogo.JOGAR inside it.
    virtual SaidaDialogo MostraNovoJogo(FrmNewGame& dialogo) = 0;
    virtual void Mensagem(const std::string& texto, const std::string& titulo) = 0;
    // Yes and No; true for Yes.
    virtual bool Pergunta(const std::string& texto, const std::string& titulo) = 0;
    // The records viewer, modally, on a level's table with a row marked (0 none).
    virtual void MostraRecordes(int nivel, int posicao) {
        (void)nivel;
        (void)posicao;
    }

    // --- sounds and music (the session decides whether they are on) ---
    virtual void TocaSom(const std::string& nome) { (void)nome; }
    virtual void TocaMusica(const std::string& nome) { (void)nome; }
    // "Close musica": stops the music, harmless when none plays.
    virtual void FechaMusica() {}
    virtual void Beep() {}

    // --- window ---
    virtual bool TelaCheia() { return false; }
    // Leaves full screen, restoring the screen mode.
    virtual void RestauraTela() {}
    // The view-model changed.
    virtual void Redesenha() {}

    // --- end ---
    // Unloads every open form, in the order the program lists them.
    virtual void DescarregaFormularios() {}
    // Ends the process. The session has already made every loop leave.
    virtual void EncerraPrograma() {}
};

} // namespace velmora
