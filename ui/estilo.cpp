#include "ui/estilo.h"

#include "ui/desenhos.h"

#include <QFontMetrics>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QWidget>

namespace velmora::ui {

QString FolhaDeEstilo() {
    // Colours: wood #ECE9D8 and #D8CFB4, navy #23344A, gold #C88A22, dark wood #7A4B2A.
    return QStringLiteral(
        "QDialog, QMessageBox, QInputDialog { background: #ECE9D8; color: #23344A; }"
        "QLabel { color: #23344A; }"
        "QPushButton { background: #23344A; color: #F3E3B5; border: 1px solid #C88A22;"
        " border-radius: 4px; padding: 5px 14px; min-width: 64px; font-weight: bold; }"
        "QPushButton:hover { background: #2F4662; color: #FFFFFF; }"
        "QPushButton:pressed { background: #C88A22; color: #23344A; }"
        "QPushButton:default { border: 2px solid #C88A22; }"
        "QPushButton:focus { border: 2px solid #E0B04A; }"
        "QPushButton:disabled { background: #9AA3AE; color: #E8E8E8; border-color: #9AA3AE; }"
        "QGroupBox { border: 1px solid #7A4B2A; border-radius: 5px; margin-top: 14px; }"
        "QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 4px;"
        " color: #7A4B2A; font-weight: bold; }"
        "QCheckBox, QRadioButton { color: #23344A; spacing: 7px; }"
        "QCheckBox::indicator { width: 14px; height: 14px; border: 1px solid #23344A;"
        " border-radius: 3px; background: #FFFDF5; }"
        "QCheckBox::indicator:checked { background: #C88A22; border: 2px solid #23344A; }"
        "QCheckBox::indicator:hover { border-color: #C88A22; }"
        "QLineEdit, QComboBox, QListWidget, QTextEdit, QPlainTextEdit, QSpinBox {"
        " background: #FFFDF5; color: #23344A; border: 1px solid #7A4B2A; border-radius: 3px;"
        " padding: 3px; selection-background-color: #C88A22; selection-color: #23344A; }"
        "QListWidget::item:selected { background: #C88A22; color: #23344A; }"
        "QScrollBar:horizontal { background: #D8CFB4; height: 16px; border: 1px solid #7A4B2A;"
        " border-radius: 4px; }"
        "QScrollBar:vertical { background: #D8CFB4; width: 14px; border: 1px solid #7A4B2A;"
        " border-radius: 4px; }"
        "QScrollBar::handle { background: #23344A; border: 1px solid #C88A22; border-radius: 3px;"
        " min-width: 22px; min-height: 22px; }"
        "QScrollBar::handle:hover { background: #2F4662; }"
        "QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; border: none; }"
        "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"
        "QHeaderView::section { background: #23344A; color: #F3E3B5; border: none;"
        " border-right: 1px solid #33465E; padding: 4px; font-weight: bold; }"
        "QToolTip { background: #23344A; color: #F3E3B5; border: 1px solid #C88A22; padding: 3px; "
        "}");
}

void DaEstilo(QWidget* janela, const QString& propria) {
    if (!janela) return;
    // One call only: a second sheet set before the window shows leaves its children
    // polished under the first.
    const QString folha = FolhaDeEstilo() + propria;
    if (janela->styleSheet() != folha) janela->setStyleSheet(folha);
}

QPixmap FiguraDoAviso(Aviso tipo, qreal escala) {
    const int lado = 44;
    QPixmap figura(QSize(lado, lado) * escala);
    figura.setDevicePixelRatio(escala);
    figura.fill(Qt::transparent);
    QPainter p(&figura);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(paleta::CasaEscura);
    p.drawRoundedRect(QRectF(2, 2, lado - 4, lado - 4), 7, 7);
    // a light man for a notice, the gold-crowned king for a question
    DesenhaPeca(p, QRectF(4, 4, lado - 8, lado - 8), tipo == Aviso::Pergunta ? 10 : 1);
    return figura;
}

void DaEstiloDeAviso(QMessageBox& caixa, Aviso tipo) {
    DaEstilo(&caixa);
    caixa.setIconPixmap(FiguraDoAviso(tipo, caixa.devicePixelRatioF()));
}

void TextoElidido(QLabel* rotulo, const QString& inteiro) {
    const int largura = rotulo->contentsRect().width();
    const QString visto =
        largura > 0 ? rotulo->fontMetrics().elidedText(inteiro, Qt::ElideRight, largura) : inteiro;
    if (rotulo->text() != visto) rotulo->setText(visto);
    const QString dica = visto != inteiro ? inteiro : QString();
    if (rotulo->toolTip() != dica) rotulo->setToolTip(dica);
}

} // namespace velmora::ui
