#pragma once
// FrmSplash: the program's name and version, shown while the board window is made.
#include <QWidget>

namespace velmora::ui {

class FrmSplash : public QWidget {
    Q_OBJECT
  public:
    explicit FrmSplash(const QString& versao, QWidget* pai = nullptr);
    QString Versao() const { return versao_; }

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    QString versao_;
};

} // namespace velmora::ui
