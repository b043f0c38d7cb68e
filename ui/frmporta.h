#pragma once
// The port dialog: the port in a box, a test that asks the outside endpoint whether the port
// can be reached, the default port, and router help. Over the port test of the service client.
#include "service/testaporta.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace velmora::ui {

class Caixas;

class FrmPorta : public QDialog {
    Q_OBJECT
  public:
    // `fechaSockets` closes the board window's peer sockets before each test.
    FrmPorta(TestePorta& teste, clsRegistryAccess& reg, Caixas& caixas, std::string ipLocal,
             std::string paginaRoteador, std::function<void()> fechaSockets = {},
             QWidget* pai = nullptr);

    void Testa();
    void Confirma();

    QLineEdit* Text1;
    QLabel *Label4, *Label1, *LinhaIp, *LinhaPadrao;
    QPushButton *Command4, *Command1, *Command2, *Command3, *Command5;

  protected:
    void showEvent(QShowEvent* e) override;

  private:
    int Testar(const std::string& porta);
    void Mostra();
    velmora::FrmPorta logica_;
    TestePorta& teste_;
    clsRegistryAccess& reg_;
    Caixas& caixas_;
    std::string pagina_;
    std::function<void()> fechaSockets_;
    bool ativado_ = false;
};

} // namespace velmora::ui
