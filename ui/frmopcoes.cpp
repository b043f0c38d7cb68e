#include "ui/frmopcoes.h"

#include "store/configuracao.h"
#include "ui/caixas.h"
#include "ui/estilo.h"
#include "ui/frmbloqueio.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace velmora::ui {

FrmOpc::FrmOpc(Configuracao& opcoes, clsRegistryAccess& reg, Caixas& caixas,
               std::function<void()> fechaMusica, QWidget* pai)
    : QDialog(pai), Check1(new QCheckBox("Tocar Música", this)),
      Check2(new QCheckBox("Tocar Som", this)), HScroll1(new QScrollBar(Qt::Horizontal, this)),
      Check3(new QCheckBox("Ativar bate papo em jogos on-line", this)),
      Check4(new QCheckBox("Ativar bate papo em jogos com pessoas de outros paises", this)),
      Command2(new QPushButton("Bloqueio", this)),
      Command3(new QPushButton("Configurar porta de comunicação", this)),
      Command1(new QPushButton("OK", this)),
      Label3(new QLabel("É recomendado testar a porta de comunicação para ter maior facilidade "
                        "de conexão com outros jogadores",
                        this)),
      opcoes_(opcoes), reg_(reg), caixas_(caixas), fechaMusica_(std::move(fechaMusica)) {
    setObjectName("FrmOpc");
    setWindowTitle("Opções");
    for (auto [w, nome] : {std::pair<QWidget*, const char*>{Check1, "Check1"},
                           {Check2, "Check2"},
                           {HScroll1, "HScroll1"},
                           {Check3, "Check3"},
                           {Check4, "Check4"},
                           {Command1, "Command1"},
                           {Command2, "Command2"},
                           {Command3, "Command3"},
                           {Label3, "Label3"}})
        w->setObjectName(nome);

    HScroll1->setRange(2, 6);
    HScroll1->setPageStep(1);
    HScroll1->setMinimumWidth(220);
    Label3->setWordWrap(true);

    auto* velocidade = new QGroupBox("Velocidade da movimentação das peças", this);
    auto* linha = new QHBoxLayout(velocidade);
    linha->addWidget(new QLabel("Mais lento", velocidade));
    linha->addWidget(HScroll1, 1);
    linha->addWidget(new QLabel("Mais rápido", velocidade));

    auto* tudo = new QVBoxLayout(this);
    tudo->addWidget(Check1);
    tudo->addWidget(Check2);
    tudo->addWidget(velocidade);
    tudo->addWidget(Check3);
    tudo->addWidget(Check4);
    auto* botoes = new QHBoxLayout;
    botoes->addWidget(Command2);
    botoes->addWidget(Command3);
    tudo->addLayout(botoes);
    tudo->addWidget(Label3);
    tudo->addWidget(Command1, 0, Qt::AlignRight);

    Check1->setChecked(opcoes_.TocarMusica);
    Check2->setChecked(opcoes_.TocarSom);
    HScroll1->setValue(8 - opcoes_.Velocit);
    Check3->setChecked(opcoes_.HabilitaChat);
    Check4->setChecked(opcoes_.HabilitaChatIngles);
    Check4->setVisible(Check3->isChecked());
    DaEstilo(this);

    connect(Check3, &QCheckBox::clicked, this, [this] { Check4->setVisible(Check3->isChecked()); });
    connect(Command1, &QPushButton::clicked, this, &FrmOpc::Confirma);
    connect(Command2, &QPushButton::clicked, this, [this] {
        Frmbloqueio bloqueio(reg_, caixas_, this);
        bloqueio.exec();
    });
    connect(Command3, &QPushButton::clicked, this, [this] {
        caixas_.Mensagem(this,
                         "O teste da porta de comunicação não está disponível nesta versão: "
                         "o jogo on-line ainda não faz parte dela.",
                         windowTitle());
    });
}

void FrmOpc::Confirma() {
    opcoes_.TocarMusica = Check1->isChecked();
    opcoes_.TocarSom = Check2->isChecked();
    opcoes_.Velocit = static_cast<std::uint8_t>(8 - HScroll1->value());
    opcoes_.HabilitaChat = Check3->isChecked();
    opcoes_.HabilitaChatIngles = Check4->isChecked();
    if (!opcoes_.TocarMusica && fechaMusica_) fechaMusica_();
    accept();
}

} // namespace velmora::ui
