#pragma once
// The new game dialog as the session sees it: the fields that "JOGAR" reads, the cancel
// label, and the confirmation that runs inside the dialog. The window (or a script) fills
// the fields and calls JOGAR; the dialog closes when it returns true.
#include <functional>
#include <string>

namespace velmora {

// The dialog's inputs, with the defaults of a first run.
struct CamposNovoJogo {
    int Aba = 1;   // the tab, 1 to 5 (stored as OPTJ)
    int Nivel = 3; // the selected level 1..5, 8 for the tournament, 0 for none
    // The checked option of each rule group, 0 when none is checked.
    int Opt_regra = 1, Opt_regra2 = 1, Opt_regra3 = 1;
    std::string TxtHC = "Jogador";                          // tab 1
    std::string TxtHH1 = "Jogador 1", TxtHH2 = "Jogador 2"; // tab 2
    bool Visitante = false;                                 // tab 3: the login choice
    std::string Text4 = "Jogador";                          // tab 3: visitor's nick
    std::string Combo3, Text2;                              // tab 3: nick and password
    bool ChkNaRede = false;                                 // tabs 3 and 4
    std::string Text1, Text3;                               // tab 4: nick and group password
    std::string TxtRede = "Jogador";                        // tab 5
    bool Option1 = true;                                    // tab 5: "Criar Jogo"
};

// How the dialog was left.
enum class SaidaDialogo { Jogar, Cancelar, Sair };

class FrmNewGame {
  public:
    explicit FrmNewGame(std::function<bool(CamposNovoJogo&)> jogar, std::string cancelar)
        : Label2(std::move(cancelar)), jogar_(std::move(jogar)) {}
    // The cancel label: "Sair" ends the program, "Cancelar" only closes the dialog.
    std::string Label2;
    // "JOGAR": writes the session's fields; true when the dialog must close. The fields
    // may change (a visitor's retry switches the tab).
    bool JOGAR(CamposNovoJogo& campos) { return jogar_(campos); }

    // PuxaNivel: the selected level, 3 when none.
    static int PuxaNivel(const CamposNovoJogo& c) { return c.Nivel >= 1 ? c.Nivel : 3; }

  private:
    std::function<bool(CamposNovoJogo&)> jogar_;
};

} // namespace velmora
