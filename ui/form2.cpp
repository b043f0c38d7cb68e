#include "ui/form2.h"

#include "ui/ambiente.h"
#include "ui/caixas.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

namespace velmora::ui {

Form2::Form2(ConexaoPeer& peer, Form1& form, const AmbienteUi& amb, QWidget* pai)
    : QDialog(pai), logica(peer, form), amb_(amb) {
    setObjectName("Form2");
    setModal(true);
    setMinimumWidth(460);
    Picture1 = new QWidget(this);
    Text1 = new QLineEdit(Picture1);
    Text1->setObjectName("Text1");
    Command1 = new QPushButton("Conectar", Picture1);
    Command1->setObjectName("Command1");
    Label2 = new QLabel(Picture1);
    Label7 = new QLabel(Picture1);
    for (QLabel* l : {Label2, Label7}) l->setWordWrap(true);
    auto* linha = new QHBoxLayout;
    linha->addWidget(Text1, 1);
    linha->addWidget(Command1);
    auto* chamada = new QVBoxLayout(Picture1);
    chamada->setContentsMargins(0, 0, 0, 0);
    chamada->addWidget(Label2);
    chamada->addLayout(linha);
    chamada->addWidget(Label7);

    Label3 = new QLabel(this);
    Label4 = new QLabel(this);
    Label8 = new QLabel(this);
    Label3->setObjectName("Label3");
    Label4->setObjectName("Label4");
    Label8->setObjectName("Label8");
    for (QLabel* l : {Label3, Label4, Label8}) {
        l->setWordWrap(true);
        l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    Command2 = new QPushButton("Cancelar", this);
    Command3 = new QPushButton("Convidar por e-mail", this);
    Command4 = new QPushButton("Ajuda", this);
    Command2->setObjectName("Command2");
    Command3->setObjectName("Command3");
    auto* botoes = new QHBoxLayout;
    botoes->addWidget(Command3);
    botoes->addWidget(Command4);
    botoes->addStretch();
    botoes->addWidget(Command2);
    auto* corpo = new QVBoxLayout(this);
    corpo->addWidget(Picture1);
    corpo->addWidget(Label4);
    corpo->addWidget(Label8);
    corpo->addWidget(Label3);
    corpo->addStretch();
    corpo->addLayout(botoes);

    connect(Command1, &QPushButton::clicked, this, [this] {
        logica.Text1 = Text1->text().trimmed().toStdString();
        logica.Command1_Click();
        Desenha();
        if (logica.Timer1Ativo) Timer1.start();
    });
    connect(Text1, &QLineEdit::returnPressed, Command1, &QPushButton::click);
    connect(Command2, &QPushButton::clicked, this, [this] {
        logica.Command2_Click();
        QDialog::reject();
    });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(Command4, &QPushButton::clicked, this, [this] { amb_.Abre(amb_.Ajuda()); });
    Timer1.setInterval(1000);
    connect(&Timer1, &QTimer::timeout, this, [this] {
        Desenha();
        if (logica.Timer1_Timer()) {
            Timer1.stop();
            accept();
        }
    });
    logica.Form_Load();
}

void Form2::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    if (mostrado_) return;
    mostrado_ = true;
    logica.Form_Activate();
    Text1->setText(QString::fromStdString(logica.Text1));
    Desenha();
    if (logica.Timer1Ativo) Timer1.start();
}

void Form2::reject() {
    logica.Command2_Click();
    QDialog::reject();
}

void Form2::Desenha() {
    const auto tela = [](const std::string& t) { return TextoParaTela(QString::fromStdString(t)); };
    setWindowTitle(QString::fromStdString(logica.Caption));
    Picture1->setVisible(logica.Picture1Visivel);
    Command3->setVisible(logica.Command3Visivel && logica.Servidor());
    Label2->setText(tela(logica.Label2));
    Label7->setText(tela(logica.Label7));
    Label3->setText(tela(logica.Label3).trimmed());
    Label4->setText(tela(logica.Label4));
    Label8->setText(tela(logica.Label8));
    Label4->setVisible(logica.Servidor());
    Label8->setVisible(logica.Servidor());
    Command1->setEnabled(logica.Command1Habilitado);
    Command2->setEnabled(logica.Command2Habilitado);
}

void Form2::Command3_Click() {
    amb_.caixas.Mensagem(this, QString::fromStdString(ConexaoDireta::AvisoConvite()),
                         "Velmora Ace");
    const std::string ip = logica.meuIp ? logica.meuIp() : "";
    amb_.Abre(QUrl(QString::fromStdString(logica.Convite(ip))));
}

} // namespace velmora::ui
