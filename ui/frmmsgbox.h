#pragma once
// FrmMSGBOX: the timed question about a draw. It counts down from the moment it opens and,
// when nobody answers, closes by itself with a refusal.
#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;

namespace velmora::ui {

class BarraTitulo;

class FrmMSGBOX : public QDialog {
    Q_OBJECT
  public:
    // `intervaloMs` is the tick of Timer1; 0 starts no timer, and the caller drives Tique().
    explicit FrmMSGBOX(const QString& pergunta, QWidget* pai = nullptr, int intervaloMs = 1000);

    // The answer of the last box: true only for "SIM".
    bool RespostaEmpate() const { return resposta_; }
    // One tick of Timer1.
    void Tique();
    int Contador() const { return contador_; }
    QString TextoLabel2() const;

    // Shows the question modally and gives the answer.
    static bool Pergunta(QWidget* pai, const QString& pergunta, int intervaloMs = 1000);

  private:
    void Responde(bool sim);

    BarraTitulo* Label5;
    QLabel* Label1;
    QLabel* Label2;
    QPushButton* Command1;
    QPushButton* Command2;
    QTimer Timer1;
    int contador_ = 11;
    bool resposta_ = false;
};

} // namespace velmora::ui
