#pragma once
// FrmMostraRecords: one table of the fastest wins at a time, with the computer's lifetime
// tally for that level, stepping through the levels 1 to 5. A new record opens it with its
// row marked.
#include <QDialog>
#include <functional>
#include <string>

class QLabel;
class QTableWidget;

namespace velmora {
class Recordes;
class Placar;
} // namespace velmora

namespace velmora::ui {

class Rotulo;

class FrmMostraRecords : public QDialog {
    Q_OBJECT
  public:
    // `posicaoRecord` is the shared position to mark, 0 for none: stepping to another level
    // clears it. `tocaSom` plays a sound of the program's folder.
    FrmMostraRecords(const Recordes& recordes, const Placar& placar, int nivel, int& posicaoRecord,
                     std::function<void(const std::string&)> tocaSom, QWidget* pai = nullptr);

    void ExibeRecords(int nivel);
    int Nivel() const { return nivel_; }
    int LinhasMostradas() const { return linhas_; }
    // The Label8 click: the next level, 1 after 5.
    void ProximoNivel();

    // What the window shows, for those who read it back.
    QString TextoLabel8() const;
    QString TextoLabel7() const;
    bool Label7Visivel() const;
    QTableWidget* Tabela() const { return tabela_; }

  protected:
    void keyPressEvent(QKeyEvent*) override;
    void showEvent(QShowEvent*) override;

  private:
    void MarcaPosicao();
    void RolaParaMarca();

    const Recordes& recordes_;
    const Placar& placar_;
    int& posicaoRecord_;
    std::function<void(const std::string&)> tocaSom_;
    int nivel_ = 1;
    int linhas_ = 0;
    Rotulo* Label8;
    QLabel* Label7;
    QTableWidget* tabela_;
    Rotulo* Label6;
};

} // namespace velmora::ui
