#include "ui/frmcadastro.h"

#include "ui/caixas.h"

#include <QApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmora::ui {

namespace {

QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

} // namespace

FrmCadastro::FrmCadastro(Pedidos& pedidos, clsRegistryAccess& reg, Caixas& caixas, bool guardaSenha,
                         QWidget* pai)
    : QDialog(pai), Text1(new QLineEdit(this)), Text2(new QLineEdit(this)),
      Text3(new QLineEdit(this)), Label8(new QPushButton("Cadastrar", this)),
      Label7(new QPushButton("Cancelar", this)), pedidos_(pedidos), reg_(reg), caixas_(caixas) {
    setObjectName("FrmCadastro");
    setWindowTitle("Cadastrar um novo Nick");
    logica_.guardaSenha = guardaSenha;
    Text1->setObjectName("Text1");
    Text2->setObjectName("Text2");
    Text3->setObjectName("Text3");
    Label8->setObjectName("Label8");
    Label7->setObjectName("Label7");
    Text1->setMaxLength(30);
    Text2->setEchoMode(QLineEdit::Password);
    Text3->setEchoMode(QLineEdit::Password);
    Label8->setAutoDefault(false);
    Label7->setAutoDefault(false);

    auto* titulo =
        new QLabel("Escolha um nick e uma senha para jogar on-line e somar pontos", this);
    titulo->setWordWrap(true);
    auto* campos = new QFormLayout;
    campos->addRow("Nick:", Text1);
    campos->addRow("Senha:", Text2);
    campos->addRow("Confirme a senha:", Text3);
    auto* botoes = new QHBoxLayout;
    botoes->addStretch();
    botoes->addWidget(Label7);
    botoes->addWidget(Label8);
    auto* tudo = new QVBoxLayout(this);
    tudo->addWidget(titulo);
    tudo->addLayout(campos);
    tudo->addLayout(botoes);
    resize(380, 200);
    connect(Label8, &QPushButton::clicked, this, &FrmCadastro::Confirma);
    connect(Label7, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmCadastro::Confirma() {
    logica_.Text1 = Text1->text().toStdString();
    logica_.Text2 = Text2->text().toStdString();
    logica_.Text3 = Text3->text().toStdString();
    logica_.foco = velmora::FrmCadastro::Foco::Nenhum;
    logica_.Confirma(
        pedidos_, reg_,
        [this](const std::string& t) { caixas_.Mensagem(this, Q(t), windowTitle()); },
        [this](bool ocupado) {
            Label8->setEnabled(!ocupado);
            Label7->setEnabled(!ocupado);
            if (ocupado)
                QApplication::setOverrideCursor(Qt::WaitCursor);
            else
                QApplication::restoreOverrideCursor();
        });
    Mostra();
    if (logica_.Fechou) {
        if (logica_.NickCriado)
            accept();
        else
            reject();
    }
}

void FrmCadastro::Mostra() {
    Text1->setText(Q(logica_.Text1));
    Text2->setText(Q(logica_.Text2));
    Text3->setText(Q(logica_.Text3));
    Label8->setEnabled(logica_.BotoesHabilitados);
    Label7->setEnabled(logica_.BotoesHabilitados);
    switch (logica_.foco) {
    case velmora::FrmCadastro::Foco::Nick:
        Text1->setFocus();
        break;
    case velmora::FrmCadastro::Foco::NickSelecionado:
        Text1->setFocus();
        Text1->selectAll();
        break;
    case velmora::FrmCadastro::Foco::Senha:
        Text2->setFocus();
        break;
    case velmora::FrmCadastro::Foco::Nenhum:
        break;
    }
}

void FrmCadastro::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Escape) {
        reject();
        return;
    }
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        logica_.Text1 = Text1->text().toStdString();
        logica_.Text2 = Text2->text().toStdString();
        logica_.Text3 = Text3->text().toStdString();
        const std::string passo = logica_.Enter();
        if (passo == "senha")
            Text2->setFocus();
        else if (passo == "confirmacao")
            Text3->setFocus();
        else if (passo == "confirma")
            Confirma();
        return;
    }
    QDialog::keyPressEvent(e);
}

} // namespace velmora::ui
