#pragma once
// The registration dialog: nick, password and its confirmation, over the confirm logic of
// the service client. Esc closes it; Enter walks the boxes and confirms when all are filled.
#include "service/cadastro.h"

#include <QDialog>

class QLineEdit;
class QPushButton;

namespace velmora::ui {

class Caixas;

class FrmCadastro : public QDialog {
    Q_OBJECT
  public:
    FrmCadastro(Pedidos& pedidos, clsRegistryAccess& reg, Caixas& caixas, bool guardaSenha,
                QWidget* pai = nullptr);

    // The nick was created: the new game dialog goes on as if "JOGAR" was pressed.
    bool NickCriado() const { return logica_.NickCriado; }
    void Confirma();

    QLineEdit *Text1, *Text2, *Text3;
    QPushButton *Label8, *Label7;

  protected:
    void keyPressEvent(QKeyEvent* e) override;

  private:
    void Mostra();
    velmora::FrmCadastro logica_;
    Pedidos& pedidos_;
    clsRegistryAccess& reg_;
    Caixas& caixas_;
};

} // namespace velmora::ui
