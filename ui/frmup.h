#pragma once
// FrmUp: the update window. On its first activation it fetches the installer named by the
// last check into the temporary folder, with its bar moving, and hands it to the system:
// as root the package is installed without questions, otherwise the desktop opens it and
// the download page is opened in the browser. Then the program ends. A download that fails,
// or a file that isn't a whole package of the program, closes the window with its box, and
// play goes on with the installed version.
#include "net/dl.h"
#include "service/endereco.h"

#include <QDialog>
#include <QString>
#include <QUrl>
#include <functional>
#include <string>

namespace velmora::ui {

class Caixas;
class ProgressBarXP;

// What the hand-over reaches outside the window.
struct EntregaAtualizacao {
    std::function<bool()> administrador;                 // the effective user is root
    std::function<void(const QString& arquivo)> instala; // installs a package, no questions
    std::function<void(const QUrl&)> abre;               // the desktop's handler
    std::function<void()> encerra;                       // ends the program
};
// The real hand-over: apt-get (or dpkg) started on its own, QDesktopServices, and `encerra`.
EntregaAtualizacao EntregaDoSistema(std::function<void()> encerra);

class FrmUp : public QDialog {
    Q_OBJECT
  public:
    enum class Fim { Nenhum, SemDownload, SemArquivo, Entregue };

    // `LinkUpdate`: the installer's address; `sha256`: its digest when the service named one.
    FrmUp(Caixas& caixas, EntregaAtualizacao entrega, std::string LinkUpdate,
          std::string sha256 = {}, QWidget* pai = nullptr);

    ProgressBarXP* ProgressBarXP1;
    dl DL1;
    std::int32_t TimeOut = 30; // seconds of silence before the download is given up
    std::string TituloApp = "Velmora Ace";
    std::string servico; // the service's base address; empty: the environment's or the default

    // Where the installer goes: the title without blanks and ".deb" in the temporary folder.
    QString Arquivo() const;
    Fim Resultado() const { return fim_; }
    // The download, the checks and the hand-over (the first activation runs it).
    void Form_Activate();
    // Closing the window during the download stops it; its failure box follows.
    void reject() override;

  protected:
    void showEvent(QShowEvent*) override;

  private:
    Caixas& caixas_;
    EntregaAtualizacao entrega_;
    std::string link_;
    std::string sha256_;
    bool ativado_ = false;
    bool baixando_ = false;
    Fim fim_ = Fim::Nenhum;
};

} // namespace velmora::ui
