#pragma once
// FrmSobre: the about box, with the program's version, the contact page and the search for
// a newer version (the link Label10).
#include <QDialog>
#include <QUrl>
#include <functional>
#include <string>

class QLabel;
class QPushButton;

namespace velmora::ui {

class FrmSobre : public QDialog {
    Q_OBJECT
  public:
    explicit FrmSobre(const QString& versao, QWidget* pai = nullptr);

    // Runs the update check and gives its result; without it the link does nothing.
    std::function<std::string()> getUpdate;
    // What to do with the check's result (a box, or the question and the update window).
    std::function<void(QWidget* pai, const std::string& resultado)> respondeUpdate;
    // Opens a page in the browser (the contact page).
    std::function<void(const QUrl&)> abreUrl;
    QUrl enderecoContato;

    // The link: the check runs with a busy cursor and the OK button disabled.
    void Label10_Click();

    QLabel* Label10;
    QPushButton* Command1;
};

} // namespace velmora::ui
