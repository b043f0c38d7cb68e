#pragma once
// The program's one look, shared by every window beside the board: the wood background, navy
// text and buttons, gold for what is active, the board's own pieces as the message boxes'
// pictures. A window adopts it with DaEstilo(this, its own rules).
#include <QPixmap>
#include <QString>

class QLabel;
class QMessageBox;
class QWidget;

namespace velmora::ui {

// The style sheet of the dialogs and message boxes.
QString FolhaDeEstilo();
// Puts the look on a window and everything in it, with the window's own rules after it
// (they win). Called once, in place of the window's own setStyleSheet.
void DaEstilo(QWidget* janela, const QString& propria = {});

// The picture of a message box: a light man for a notice, a gold king for a question.
enum class Aviso { Informacao, Pergunta };
QPixmap FiguraDoAviso(Aviso tipo, qreal escala);
// A message box in the program's look, with that picture in place of the stock icon.
void DaEstiloDeAviso(QMessageBox& caixa, Aviso tipo);

// Shows `inteiro` in the label, ended with "…" when it is wider than the label, with the
// whole text as the tooltip then; nothing is cut in the middle of a letter.
void TextoElidido(QLabel* rotulo, const QString& inteiro);

} // namespace velmora::ui
