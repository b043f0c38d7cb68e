#pragma once
// Form2: the dialog of a game by typed address. "Criar Jogo" listens and shows this
// computer's addresses and the e-mail invitation; "Entrar no jogo" asks for the address to
// dial. It closes by itself once the handshake has connected the session.
#include "peer/conexaodireta.h"

#include <QDialog>
#include <QTimer>

class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

namespace velmora::ui {

struct AmbienteUi;

class Form2 : public QDialog {
    Q_OBJECT
  public:
    Form2(ConexaoPeer& peer, Form1& form, const AmbienteUi& amb, QWidget* pai = nullptr);
    ConexaoDireta logica;

    QLineEdit* Text1;
    QLabel *Label2, *Label3, *Label4, *Label7, *Label8;
    QPushButton *Command1, *Command2, *Command3, *Command4;
    QWidget* Picture1;
    QTimer Timer1;

  protected:
    void showEvent(QShowEvent* e) override;
    void reject() override;

  private:
    void Desenha();
    void Command3_Click();
    const AmbienteUi& amb_;
    bool mostrado_ = false;
};

} // namespace velmora::ui
