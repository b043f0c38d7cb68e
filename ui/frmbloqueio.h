#pragma once
// The block list: up to 20 players, by nick (lower case) or by "ID:" and a number, kept in
// the settings as block1..block20, and the dialog Frmbloqueio that edits it.
#include <QDialog>
#include <string_view>

class QListWidget;
class QPushButton;

namespace velmora {
class clsRegistryAccess;
}

namespace velmora::ui {

class Caixas;

inline constexpr int MaximoBloqueados = 20;

// True when that player is on the list; only in the on-line mode (4) is anyone blocked.
bool EstaBloqueado(clsRegistryAccess& reg, int modo, std::string_view nick, long idt);

class Frmbloqueio : public QDialog {
    Q_OBJECT
  public:
    Frmbloqueio(clsRegistryAccess& reg, Caixas& caixas, QWidget* pai = nullptr);

    QStringList Linhas() const;
    void SelecionaLinha(int linha);

    // The buttons' actions.
    void AdicionaNick();
    void AdicionaID();
    void Remove();

  private:
    bool Cheia();
    void Grava();

    clsRegistryAccess& reg_;
    Caixas& caixas_;
    QListWidget* List1;
    QPushButton* Command1;
    QPushButton* Command4;
    QPushButton* Command2;
    QPushButton* Command3;
};

} // namespace velmora::ui
