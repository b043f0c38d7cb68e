#include "ui/caixas.h"

#include "ui/estilo.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace velmora::ui {

QString TextoParaTela(const QString& texto) {
    QString t = texto;
    t.replace("\r\n", "\n");
    t.replace('\r', '\n');
    QString limpo;
    limpo.reserve(t.size());
    for (QChar c : t)
        if (c == '\n' || c == '\t' || c.unicode() >= 0x20) limpo += c;
    return limpo;
}

void CaixasQt::Mensagem(QWidget* pai, const QString& texto, const QString& titulo) {
    QMessageBox caixa(QMessageBox::Information, titulo, TextoParaTela(texto), QMessageBox::Ok, pai);
    caixa.button(QMessageBox::Ok)->setText("OK");
    DaEstiloDeAviso(caixa, Aviso::Informacao);
    caixa.exec();
}

bool CaixasQt::Pergunta(QWidget* pai, const QString& texto, const QString& titulo) {
    QMessageBox caixa(QMessageBox::Question, titulo, TextoParaTela(texto),
                      QMessageBox::Yes | QMessageBox::No, pai);
    caixa.button(QMessageBox::Yes)->setText("Sim");
    caixa.button(QMessageBox::No)->setText("Não");
    caixa.setDefaultButton(QMessageBox::Yes);
    DaEstiloDeAviso(caixa, Aviso::Pergunta);
    return caixa.exec() == QMessageBox::Yes;
}

std::optional<QString> CaixasQt::Entrada(QWidget* pai, const QString& prompt,
                                         const QString& titulo) {
    QInputDialog caixa(pai);
    caixa.setWindowTitle(titulo);
    caixa.setLabelText(TextoParaTela(prompt));
    caixa.setOkButtonText("OK");
    caixa.setCancelButtonText("Cancelar");
    DaEstilo(&caixa);
    if (caixa.exec() != QDialog::Accepted) return std::nullopt;
    return caixa.textValue();
}

} // namespace velmora::ui
