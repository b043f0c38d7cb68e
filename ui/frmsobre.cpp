#include "ui/frmsobre.h"

#include "ui/estilo.h"

#include <QLabel>
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
                             "em torneio ou entre duas pessoas na mesma tela.\n\n"
                             "A procura de atualizações não está disponível nesta versão.",
                             this);
    texto->setWordWrap(true);
    texto->setFixedWidth(340);
    auto* ok = new QPushButton("OK", this);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* coluna = new QVBoxLayout(this);
    coluna->addWidget(titulo);
    coluna->addWidget(versaoRotulo);
    coluna->addWidget(texto);
    coluna->addWidget(ok, 0, Qt::AlignRight);
    coluna->setSizeConstraint(QLayout::SetFixedSize);
    titulo->setStyleSheet("QLabel { color: #7A4B2A; }");
    DaEstilo(this);
}

} // namespace velmora::ui
