#include "ui/frmsobre.h"

#include "ui/estilo.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmora::ui {

FrmSobre::FrmSobre(const QString& versao, QWidget* pai) : QDialog(pai) {
    setObjectName("FrmSobre");
    setWindowTitle("Sobre o Velmora Ace");
    auto* titulo = new QLabel("Velmora Ace", this);
    QFont f = titulo->font();
    f.setPixelSize(26);
    f.setBold(true);
    titulo->setFont(f);
    auto* versaoRotulo = new QLabel("Versão " + versao, this);
    versaoRotulo->setObjectName("versao");
    auto* texto = new QLabel("Jogo de damas no tabuleiro de 8 por 8 casas, contra o computador, "
                             "em torneio ou entre duas pessoas na mesma tela.",
                             this);
    texto->setWordWrap(true);
    texto->setFixedWidth(340);
    Label10 = new QLabel("<a href=\"#\">Procurar uma versão mais nova</a>", this);
    Label10->setObjectName("Label10");
    connect(Label10, &QLabel::linkActivated, this, [this] { Label10_Click(); });
    auto* contato = new QLabel("<a href=\"#\">Fale conosco</a>", this);
    contato->setObjectName("Label11");
    connect(contato, &QLabel::linkActivated, this, [this] {
        if (abreUrl && enderecoContato.isValid()) abreUrl(enderecoContato);
    });
    Command1 = new QPushButton("OK", this);
    Command1->setObjectName("Command1");
    auto* ok = Command1;
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* coluna = new QVBoxLayout(this);
    coluna->addWidget(titulo);
    coluna->addWidget(versaoRotulo);
    coluna->addWidget(texto);
    coluna->addWidget(Label10);
    coluna->addWidget(contato);
    coluna->addWidget(ok, 0, Qt::AlignRight);
    coluna->setSizeConstraint(QLayout::SetFixedSize);
    titulo->setStyleSheet("QLabel { color: #7A4B2A; }");
    DaEstilo(this);
}

void FrmSobre::Label10_Click() {
    if (!getUpdate) return;
    QApplication::setOverrideCursor(Qt::BusyCursor);
    Command1->setEnabled(false);
    // the check lets events run: the box may be closed before it ends
    const QPointer<FrmSobre> vivo(this);
    const auto busca = getUpdate; // a copy: the box may end while its check runs
    const std::string resultado = busca();
    QApplication::restoreOverrideCursor();
    if (!vivo) return;
    Command1->setEnabled(true);
    if (const auto responde = respondeUpdate) responde(this, resultado);
}

} // namespace velmora::ui
