#include "ui/frmporta.h"

#include "ui/caixas.h"

#include <QApplication>
#include <QDesktopServices>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace velmora::ui {

FrmPorta::FrmPorta(TestePorta& teste, clsRegistryAccess& reg, Caixas& caixas, std::string ipLocal,
                   std::string paginaRoteador, std::function<void()> fechaSockets, QWidget* pai)
    : QDialog(pai), Text1(new QLineEdit(this)), Label4(new QLabel(this)), Label1(new QLabel(this)),
      LinhaIp(new QLabel(this)), LinhaPadrao(new QLabel(this)),
      Command4(new QPushButton("Testar Porta", this)), Command1(new QPushButton("OK", this)),
      Command2(new QPushButton("Cancelar", this)), Command3(new QPushButton("Padrão", this)),
      Command5(new QPushButton("Ajuda para roteador", this)), teste_(teste), reg_(reg),
      caixas_(caixas), pagina_(std::move(paginaRoteador)), fechaSockets_(std::move(fechaSockets)) {
    setObjectName("FrmPorta");
    setWindowTitle("Porta de conexão");
    Text1->setObjectName("Text1");
    Text1->setValidator(new QIntValidator(0, 65535, Text1));
    for (QLabel* l : {Label4, Label1}) l->setWordWrap(true);
    Label4->setObjectName("Label4");
    Label1->setObjectName("Label1");
    Command5->setVisible(false);
    std::string linhaIp, linhaPadrao;
    logica_.Carrega(reg_, ipLocal, linhaIp, linhaPadrao);
    LinhaIp->setText(QString::fromStdString(linhaIp));
    LinhaPadrao->setText(QString::fromStdString(linhaPadrao));
    Text1->setText(QString::fromStdString(logica_.Text1));

    auto* porta = new QHBoxLayout;
    porta->addWidget(new QLabel("Porta:", this));
    porta->addWidget(Text1);
    porta->addWidget(Command4);
    porta->addWidget(Command3);
    auto* botoes = new QHBoxLayout;
    botoes->addWidget(Command5);
    botoes->addStretch();
    botoes->addWidget(Command2);
    botoes->addWidget(Command1);
    auto* tudo = new QVBoxLayout(this);
    tudo->addWidget(LinhaIp);
    tudo->addWidget(LinhaPadrao);
    tudo->addLayout(porta);
    tudo->addWidget(Label4);
    tudo->addWidget(Label1);
    tudo->addStretch();
    tudo->addLayout(botoes);
    resize(440, 260);

    connect(Command4, &QPushButton::clicked, this, &FrmPorta::Testa);
    connect(Command1, &QPushButton::clicked, this, &FrmPorta::Confirma);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
    connect(Command3, &QPushButton::clicked, this, [this] {
        logica_.Padrao(reg_);
        Text1->setText(QString::fromStdString(logica_.Text1));
    });
    connect(Command5, &QPushButton::clicked, this,
            [this] { QDesktopServices::openUrl(QUrl(QString::fromStdString(pagina_))); });
    connect(Text1, &QLineEdit::textEdited, this, [this](const QString& t) {
        logica_.MudouTexto(t.toStdString());
        Mostra();
    });
}

void FrmPorta::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    if (ativado_) return;
    ativado_ = true;
    QTimer::singleShot(0, this, &FrmPorta::Testa);
}

int FrmPorta::Testar(const std::string& porta) {
    if (fechaSockets_) fechaSockets_();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const int codigo = teste_.TestaPorta(porta, 4);
    QApplication::restoreOverrideCursor();
    return codigo;
}

void FrmPorta::Testa() {
    logica_.Text1 = Text1->text().toStdString();
    logica_.Testa([this](const std::string& p) { return Testar(p); },
                  [this](const std::string& t) {
                      caixas_.Mensagem(this, QString::fromStdString(t), windowTitle());
                  });
    Mostra();
}

void FrmPorta::Confirma() {
    logica_.Text1 = Text1->text().toStdString();
    for (QPushButton* b : {Command1, Command2, Command3, Command4}) b->setEnabled(false);
    logica_.Confirma(
        reg_, [this](const std::string& p) { return Testar(p); },
        [this](const std::string& t) {
            caixas_.Mensagem(this, QString::fromStdString(t), windowTitle());
        });
    for (QPushButton* b : {Command1, Command2, Command3, Command4}) b->setEnabled(true);
    Mostra();
    if (logica_.Fechou)
        accept();
    else
        Text1->setFocus();
}

void FrmPorta::Mostra() {
    if (Text1->text().toStdString() != logica_.Text1)
        Text1->setText(QString::fromStdString(logica_.Text1));
    Label4->setText(TextoParaTela(QString::fromStdString(logica_.Label4)));
    Label1->setText(QString::fromStdString(logica_.Label1));
    Command5->setVisible(logica_.Command5Visivel);
}

} // namespace velmora::ui
