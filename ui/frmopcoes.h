#pragma once
// FrmOpc, "Opções": the program options of this run. "OK" puts them in force at once; they
// reach the settings store when the program ends. Closing in any other way changes nothing.
#include <QDialog>
#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;
class QScrollBar;

namespace velmora {
class clsRegistryAccess;
struct Configuracao;
} // namespace velmora

namespace velmora::ui {

class Caixas;

class FrmOpc : public QDialog {
    Q_OBJECT
  public:
    FrmOpc(Configuracao& opcoes, clsRegistryAccess& reg, Caixas& caixas,
           std::function<void()> fechaMusica, QWidget* pai = nullptr);

    QCheckBox* Check1;
    QCheckBox* Check2;
    QScrollBar* HScroll1;
    QCheckBox* Check3;
    QCheckBox* Check4;
    QPushButton* Command2;
    QPushButton* Command3;
    QPushButton* Command1;
    QLabel* Label3;

    void Confirma();

  private:
    Configuracao& opcoes_;
    clsRegistryAccess& reg_;
    Caixas& caixas_;
    std::function<void()> fechaMusica_;
};

} // namespace velmora::ui
