#pragma once
// The notification area while the lobby waits for an opponent: the icon with its tip and
// balloon, the hiding of the lobby, the new game dialog and the board window below the
// screen, and their return to where they stood. Where the desktop has no notification area
// the three windows are minimised instead, and come back the same way.
#include <QObject>
#include <QString>
#include <QSystemTrayIcon>
#include <functional>

class QWidget;

namespace velmora::ui {

class Bandeja : public QObject {
    Q_OBJECT
  public:
    explicit Bandeja(const QIcon& icone, QObject* pai = nullptr);

    void BandejaAdiciona(const QString& tip);
    // Takes away a balloon that still stands, then shows this one.
    void BandejaAviso(const QString& texto, const QString& titulo);
    void BandejaRemove();
    bool NaBandeja() const { return icone_.isVisible(); }

    // "Aguardar minimizado": the icon, the positions noted, the windows below the screen
    // (minimised without a notification area), the balloon.
    void AguardarMinimizado(QWidget* lobby, QWidget* dialogo, QWidget* tabuleiro);
    // The icon away, and the windows back to `posicoes` when the board window and the
    // lobby both stand below the screen.
    void RetornaForms(const QString& posicoes, QWidget* lobby, QWidget* dialogo,
                      QWidget* tabuleiro);

    // Top and left of the lobby, the dialog and the board window when they were hidden.
    QString PosicaoJanelas;
    // A double click on the icon (the owner calls RetornaForms).
    std::function<void()> aoDuploClique;
    // Whether the desktop has a notification area; tests may choose.
    bool usaBandeja;

  private:
    QSystemTrayIcon icone_;
};

} // namespace velmora::ui
