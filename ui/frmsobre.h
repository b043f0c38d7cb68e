#pragma once
// FrmSobre: the about box, with the program's version.
#include <QDialog>

namespace velmora::ui {

class FrmSobre : public QDialog {
    Q_OBJECT
  public:
    explicit FrmSobre(const QString& versao, QWidget* pai = nullptr);
};

} // namespace velmora::ui
