#include "ui/frmmsgbox.h"

#include "ui/barratitulo.h"
#include "ui/caixas.h"
#include "ui/estilo.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmora::ui {

FrmMSGBOX::FrmMSGBOX(const QString& pergunta, QWidget* pai, int intervaloMs)
    : QDialog(pai, Qt::Dialog | Qt::FramelessWindowHint), Label5(new BarraTitulo("Pergunta", this)),
      Label1(new QLabel(TextoParaTela(pergunta), this)), Label2(new QLabel("10 segundos", this)),
      Command1(new QPushButton("SIM", this)), Command2(new QPushButton("NÃO", this)) {
    setObjectName("FrmMSGBOX");
    setWindowTitle("Pergunta");
    setModal(true);
    Label1->setObjectName("Label1");
    Label2->setObjectName("Label2");
    Command1->setObjectName("Command1");
    Command2->setObjectName("Command2");
    Label1->setAlignment(Qt::AlignCenter);
    Label1->setWordWrap(true);
    QFont f = Label1->font();
    f.setPointSizeF(f.pointSizeF() * 1.3);
    f.setBold(true);
    Label1->setFont(f);
    Label2->setAlignment(Qt::AlignCenter);

    auto* botoes = new QHBoxLayout;
    botoes->addStretch();
    botoes->addWidget(Command1);
    botoes->addWidget(Command2);
    botoes->addStretch();
    auto* corpo = new QVBoxLayout;
    corpo->setContentsMargins(18, 14, 18, 14);
    corpo->setSpacing(12);
    corpo->addWidget(Label1);
    corpo->addWidget(Label2);
    corpo->addLayout(botoes);
    auto* tudo = new QVBoxLayout(this);
    tudo->setContentsMargins(1, 1, 1, 1);
    tudo->setSpacing(0);
    tudo->addWidget(Label5);
    tudo->addLayout(corpo);
    setMinimumWidth(300);
    DaEstilo(this, "QDialog#FrmMSGBOX { border: 1px solid #23344A; background: #ECE9D8; }");

    connect(Command1, &QPushButton::clicked, this, [this] { Responde(true); });
    connect(Command2, &QPushButton::clicked, this, [this] { Responde(false); });
    connect(&Timer1, &QTimer::timeout, this, &FrmMSGBOX::Tique);
    connect(this, &QDialog::finished, this, [this] { Timer1.stop(); });
    if (intervaloMs > 0) {
        Timer1.setInterval(intervaloMs);
        Timer1.start();
    }
}

QString FrmMSGBOX::TextoLabel2() const {
    return Label2->text();
}

void FrmMSGBOX::Tique() {
    if (contador_ < 1) return;
    --contador_;
    if (contador_ < 1) {
        // silence refuses
        Timer1.stop();
        Responde(false);
        return;
    }
    Label2->setText(QString::number(contador_ - 1) + " segundos");
}

void FrmMSGBOX::Responde(bool sim) {
    resposta_ = sim;
    Timer1.stop();
    done(sim ? QDialog::Accepted : QDialog::Rejected);
}

bool FrmMSGBOX::Pergunta(QWidget* pai, const QString& pergunta, int intervaloMs) {
    FrmMSGBOX caixa(pergunta, pai, intervaloMs);
    caixa.exec();
    return caixa.RespostaEmpate();
}

} // namespace velmora::ui
