#pragma once
// FrmNewGame: where a session is chosen, in five tabs. It remembers what was typed through
// the settings, validates at "JOGAR", and hands its fields to whoever opened it.
#include "session/frmnewgame.h"

#include <QDialog>
#include <array>
#include <functional>
#include <string>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QStackedWidget;
class QWidget;

namespace velmora {
struct Configuracao;
}

namespace velmora::ui {

struct AmbienteUi;
class BarraTitulo;
class BotaoIcone;
class Rotulo;

// The window of the session's new game dialog (velmora::FrmNewGame): its cancel label,
// and its "JOGAR", which runs the session's confirmation with the fields of the form.
class FrmNewGame : public QDialog {
    Q_OBJECT
  public:
    // `opcoes`: ChkChat sets HabilitaChat at once. `naRede`: Game.NaRede.
    FrmNewGame(const AmbienteUi& ambiente, Configuracao& opcoes, velmora::FrmNewGame& sessao,
               bool naRede = false, QWidget* pai = nullptr);

    SaidaDialogo Resultado() const { return saida_; }
    bool Fechado() const { return fechado_; }
    CamposNovoJogo Campos() const;

    // Called for "JOGAR" on tabs 3, 4 and 5 once the fields are valid: true when a link
    // stands and the dialog may close. Without it the dialog says that on-line play isn't
    // available in this build and stays open.
    std::function<bool(CamposNovoJogo&)> conectaOnline;
    // Label11 and F9.
    std::function<void(QWidget* pai)> abreOpcoes;
    std::function<void(QWidget* pai)> abreSobre;
    // The registration dialog (Label10) and the port dialog (Label18); true from the
    // registration when a nick was created.
    std::function<bool(QWidget* pai)> abreCadastro;
    std::function<void(QWidget* pai)> abrePorta;

    int PuxaNivel() const;
    int PuxaRegra(int grupo) const;
    int AbaSelecionada() const { return aba_; }

    // The handlers, as the clicks call them.
    void Image1_Click(int aba);
    void Label23_Click(int nivel);
    void ImGTPON_Click(int i);
    void Torneio(bool ligado);
    void Label3_Click(); // "JOGAR"
    void Label2_Click(); // "Sair" / "Cancelar"
    void PoeNoCombo();

    // --- the controls, by their design names ---
    BarraTitulo* Image2;
    std::array<Rotulo*, 6> Image1{}; // tabs 1..5
    QLabel* LbActive;
    QStackedWidget* paineis;
    std::array<QWidget*, 6> PicPainel{};
    // tab 1
    QLineEdit* TxtHC;
    std::array<QRadioButton*, 5> Opt_regra{};
    std::array<Rotulo*, 6> Label23{};
    BotaoIcone* Image4; // tournament on
    BotaoIcone* Image3; // back to the levels
    QLabel* textoTorneio;
    QWidget* niveis;
    // tab 2
    QLineEdit* TxtHH1;
    QLineEdit* TxtHH2;
    std::array<QRadioButton*, 5> Opt_regra2{};
    // tab 3
    std::array<QRadioButton*, 3> ImGTPON{};
    QWidget* PicVisitante;
    QWidget* PicLogin;
    QLineEdit* Text4;
    QComboBox* Combo3;
    QLineEdit* Text2;
    QCheckBox* Check1;
    QCheckBox* ChkChat;
    QCheckBox* ChkNaRede;
    Rotulo* Label10;
    Rotulo* Label21;
    // tab 4
    QLineEdit* Text1;
    QLineEdit* Text3;
    // tab 5
    QLineEdit* TxtRede;
    QRadioButton* Option1;
    QRadioButton* Option2;
    QWidget* Picture5;
    std::array<QRadioButton*, 5> Opt_regra3{};
    // the foot
    Rotulo* Label3;  // "JOGAR"
    Rotulo* Label2;  // "Sair" / "Cancelar"
    Rotulo* Label11; // options
    Rotulo* Label18; // "Opções avançadas"
    Rotulo* Label20; // "Ajuda"

  protected:
    void keyPressEvent(QKeyEvent*) override;
    void showEvent(QShowEvent*) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void reject() override;

  private:
    QWidget* MontaAba1();
    QWidget* MontaAba2();
    QWidget* MontaAba3();
    QWidget* MontaAba4();
    QWidget* MontaAba5();
    QWidget* GrupoDeRegras(std::array<QRadioButton*, 5>& opcoes, QWidget* pai);
    void DefineStatusInicial();
    void AvaliaChecks();
    void Combo3_Change();
    void GravaMemorias();
    void Fecha(SaidaDialogo saida);
    bool Valida();
    void MostraCancelar();

    const AmbienteUi& amb_;
    Configuracao& opcoes_;
    velmora::FrmNewGame& sessao_;
    SaidaDialogo saida_ = SaidaDialogo::Cancelar;
    bool fechado_ = false;
    bool aberto_ = false;
    int aba_ = 1;
    int nivel_ = 3;
};

} // namespace velmora::ui
