#include "ui/frmnewgame.h"

#include "store/configuracao.h"
#include "store/numeros.h"
#include "ui/ambiente.h"
#include "ui/barratitulo.h"
#include "ui/caixas.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace velmora::ui {

namespace {

const std::array<const char*, 6> TitulosDasAbas = {"",
                                                   "Jogar contra o computador",
                                                   "Jogar Contra outro jogador",
                                                   "Jogar On-line",
                                                   "Jogar com meus amigos",
                                                   "Jogar on-line por IP"};
const std::array<const char*, 6> NomesDasAbas = {"",        "Computador", "Dois jogadores",
                                                 "On-line", "Amigos",     "Por IP"};
const std::array<const char*, 5> NomesDasRegras = {"", "Peão captura para trás",
                                                   "Não captura para trás",
                                                   "Não inicia captura para trás", "Regra AFC"};
const std::array<const char*, 6> NomesDosNiveis = {
    "", "Iniciante", "Amador", "Intermediário", "Experiente", "Profissional"};
constexpr const char* Apagado = "xw?wx";

std::string Texto(const QLineEdit* e) {
    return e->text().toStdString();
}
QString Q(const std::string& s) {
    return QString::fromStdString(s);
}

QString SemCerquilha(QString t) {
    t.remove('#');
    return t;
}

QString TiraBrancos(const QString& t) {
    qsizetype i = 0, f = t.size();
    while (i < f && t[i] == ' ') ++i;
    while (f > i && t[f - 1] == ' ') --f;
    return t.mid(i, f - i);
}

void MarcaRegra(std::array<QRadioButton*, 5>& opcoes, int regra) {
    // with no option of the group checked, none shows checked
    QButtonGroup* grupo = opcoes[1]->group();
    grupo->setExclusive(false);
    for (int i = 1; i <= 4; ++i) opcoes[i]->setChecked(i == regra);
    grupo->setExclusive(true);
}

} // namespace

FrmNewGame::FrmNewGame(const AmbienteUi& ambiente, Configuracao& opcoes,
                       velmora::FrmNewGame& sessao, bool naRede, QWidget* pai)
    : QDialog(pai, Qt::Dialog | Qt::FramelessWindowHint), amb_(ambiente), opcoes_(opcoes),
      sessao_(sessao) {
    setObjectName("FrmNewGame");
    setWindowTitle("Novo jogo");
    setModal(true);
    setStyleSheet("QDialog#FrmNewGame { background: #ECE9D8; border: 1px solid #23344A; }"
                  "QLabel#LbActive { color: #23344A; font-size: 17px; font-weight: bold; }");

    Image2 = new BarraTitulo("Velmora Ace - Novo jogo", this);
    LbActive = new QLabel(this);
    LbActive->setObjectName("LbActive");
    paineis = new QStackedWidget(this);

    auto* abas = new QVBoxLayout;
    abas->setSpacing(6);
    for (int i = 1; i <= 5; ++i) {
        Image1[i] = new Rotulo(NomesDasAbas[i], this);
        Image1[i]->setObjectName(QString("Image1_%1").arg(i));
        Image1[i]->setMinimumWidth(130);
        Image1[i]->setToolTip(TitulosDasAbas[i]);
        connect(Image1[i], &Rotulo::clicado, this, [this, i] { Image1_Click(i); });
        abas->addWidget(Image1[i]);
    }
    abas->addStretch();

    PicPainel[1] = MontaAba1();
    PicPainel[2] = MontaAba2();
    PicPainel[3] = MontaAba3();
    PicPainel[4] = MontaAba4();
    PicPainel[5] = MontaAba5();
    for (int i = 1; i <= 5; ++i) {
        PicPainel[i]->setObjectName(QString("PicPainel_%1").arg(i));
        paineis->addWidget(PicPainel[i]);
    }

    auto* direita = new QVBoxLayout;
    direita->addWidget(LbActive);
    direita->addWidget(paineis, 1);

    auto* meio = new QHBoxLayout;
    meio->setContentsMargins(14, 12, 14, 6);
    meio->setSpacing(14);
    meio->addLayout(abas);
    meio->addLayout(direita, 1);

    Label20 = new Rotulo("Ajuda", this);
    Label11 = new Rotulo("Opções", this);
    Label18 = new Rotulo("Opções avançadas", this);
    Label2 = new Rotulo(QString::fromStdString(sessao_.Label2), this);
    Label3 = new Rotulo("JOGAR", this);
    Label3->DefineDestaque(true);
    Label3->setMinimumWidth(110);
    Label2->setMinimumWidth(90);
    for (auto [r, nome] : {std::pair<Rotulo*, const char*>{Label20, "Label20"},
                           {Label11, "Label11"},
                           {Label18, "Label18"},
                           {Label2, "Label2"},
                           {Label3, "Label3"}})
        r->setObjectName(nome);
    auto* pe = new QHBoxLayout;
    pe->setContentsMargins(14, 6, 14, 12);
    pe->addWidget(Label20);
    pe->addWidget(Label11);
    pe->addWidget(Label18);
    pe->addStretch();
    pe->addWidget(Label2);
    pe->addWidget(Label3);

    auto* tudo = new QVBoxLayout(this);
    tudo->setContentsMargins(1, 1, 1, 1);
    tudo->setSpacing(0);
    tudo->addWidget(Image2);
    tudo->addLayout(meio, 1);
    tudo->addLayout(pe);
    resize(640, 430);

    connect(Label3, &Rotulo::clicado, this, &FrmNewGame::Label3_Click);
    connect(Label2, &Rotulo::clicado, this, &FrmNewGame::Label2_Click);
    connect(Label20, &Rotulo::clicado, this, [this] { amb_.Abre(amb_.Ajuda()); });
    connect(Label11, &Rotulo::clicado, this, [this] {
        if (abreOpcoes) abreOpcoes(this);
    });
    connect(Label18, &Rotulo::clicado, this, [this] {
        if (abrePorta) abrePorta(this);
    });

    // Opening, in its order.
    DefineStatusInicial();
    PoeNoCombo();
    Image1_Click(static_cast<int>(NumeroTolerante(LeMemoria(amb_.reg, "OPTJ"), 1, 5)));
    Label18->setVisible(PortaAtual(amb_.reg) != PortaPadrao(amb_.reg));
    Label10->DefineTexto(Combo3->count() > 0 ? "Cadastrar um novo Nick"
                                             : "Se você não possui Nick e senha, clique aqui");
    if (naRede) {
        ChkNaRede->setVisible(true);
        ChkNaRede->setChecked(true);
    }
    Image1_Click(static_cast<int>(NumeroTolerante(LeMemoria(amb_.reg, "OPTJ"), 1, 5)));
    Torneio(false);
    // The level DF goes through Label23's click, with its sound, once the dialog shows.
    const int df = static_cast<int>(NumeroTolerante(LeMemoria(amb_.reg, "DF")));
    nivel_ = df >= 1 && df <= 5 ? df : 3;
    for (int i = 1; i <= 5; ++i) Label23[i]->DefineDestaque(i == nivel_);
}

void FrmNewGame::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    if (aberto_) return;
    aberto_ = true;
    QTimer::singleShot(0, this, [this] {
        if (nivel_ >= 1 && nivel_ <= 5) Label23_Click(nivel_);
    });
}

QWidget* FrmNewGame::GrupoDeRegras(std::array<QRadioButton*, 5>& opcoes, QWidget* pai) {
    auto* caixa = new QGroupBox("Regra", pai);
    auto* linhas = new QVBoxLayout(caixa);
    auto* grupo = new QButtonGroup(caixa);
    for (int i = 1; i <= 4; ++i) {
        opcoes[i] = new QRadioButton(NomesDasRegras[i], caixa);
        grupo->addButton(opcoes[i], i);
        linhas->addWidget(opcoes[i]);
    }
    return caixa;
}

QWidget* FrmNewGame::MontaAba1() {
    auto* painel = new QWidget(this);
    TxtHC = new QLineEdit(painel);
    TxtHC->setObjectName("TxtHC");
    TxtHC->setMaxLength(40);
    auto* form = new QFormLayout;
    form->addRow("Seu nome:", TxtHC);

    niveis = new QWidget(painel);
    auto* linhaNiveis = new QGridLayout(niveis);
    linhaNiveis->setContentsMargins(0, 0, 0, 0);
    for (int i = 1; i <= 5; ++i) {
        Label23[i] = new Rotulo(NomesDosNiveis[i], niveis);
        Label23[i]->setObjectName(QString("Label23_%1").arg(i));
        connect(Label23[i], &Rotulo::clicado, this, [this, i] { Label23_Click(i); });
        linhaNiveis->addWidget(Label23[i], (i - 1) / 3, (i - 1) % 3);
    }
    textoTorneio = new QLabel("Disputar uma eliminatória contra personagens controlados  pelo "
                              "computador. Para ser campeão deve vencer 8 jogos.",
                              painel);
    textoTorneio->setObjectName("textoTorneio");
    textoTorneio->setWordWrap(true);
    Image4 = new BotaoIcone(Icone::Torneio, paleta::Destaque, "Torneio", painel);
    Image4->setObjectName("Image4");
    Image3 = new BotaoIcone(Icone::Niveis, paleta::Barra, "Níveis", painel);
    Image3->setObjectName("Image3");
    connect(Image4, &BotaoIcone::clicado, this, [this] { Torneio(true); });
    connect(Image3, &BotaoIcone::clicado, this, [this] {
        Torneio(false);
        Label23_Click(3);
    });
    auto* rotuloTorneio = new QLabel("Torneio", painel);
    auto* rotuloNiveis = new QLabel("Níveis", painel);
    rotuloTorneio->setObjectName("rotuloTorneio");
    rotuloNiveis->setObjectName("rotuloNiveis");

    auto* nivel = new QGroupBox("Nível", painel);
    auto* colunaNivel = new QVBoxLayout(nivel);
    colunaNivel->addWidget(niveis);
    colunaNivel->addWidget(textoTorneio);
    auto* chaves = new QHBoxLayout;
    chaves->addWidget(Image4);
    chaves->addWidget(rotuloTorneio);
    chaves->addSpacing(16);
    chaves->addWidget(Image3);
    chaves->addWidget(rotuloNiveis);
    chaves->addStretch();
    colunaNivel->addLayout(chaves);

    auto* coluna = new QVBoxLayout(painel);
    coluna->setContentsMargins(0, 0, 0, 0);
    coluna->addLayout(form);
    coluna->addWidget(GrupoDeRegras(Opt_regra, painel));
    coluna->addWidget(nivel);
    coluna->addStretch();
    return painel;
}

QWidget* FrmNewGame::MontaAba2() {
    auto* painel = new QWidget(this);
    TxtHH1 = new QLineEdit(painel);
    TxtHH2 = new QLineEdit(painel);
    TxtHH1->setObjectName("TxtHH1");
    TxtHH2->setObjectName("TxtHH2");
    TxtHH1->setMaxLength(40);
    TxtHH2->setMaxLength(40);
    TxtHH1->installEventFilter(this);
    auto* form = new QFormLayout;
    form->addRow("Jogador 1:", TxtHH1);
    form->addRow("Jogador 2:", TxtHH2);
    auto* coluna = new QVBoxLayout(painel);
    coluna->setContentsMargins(0, 0, 0, 0);
    coluna->addLayout(form);
    coluna->addWidget(GrupoDeRegras(Opt_regra2, painel));
    coluna->addStretch();
    return painel;
}

QWidget* FrmNewGame::MontaAba3() {
    auto* painel = new QWidget(this);
    auto* escolha = new QHBoxLayout;
    auto* grupo = new QButtonGroup(painel);
    ImGTPON[1] = new QRadioButton("Jogar como visitante", painel);
    ImGTPON[2] = new QRadioButton("Entrar com Nick e senha", painel);
    for (int i = 1; i <= 2; ++i) {
        ImGTPON[i]->setObjectName(QString("ImGTPON_%1").arg(i));
        grupo->addButton(ImGTPON[i], i);
        escolha->addWidget(ImGTPON[i]);
        connect(ImGTPON[i], &QRadioButton::clicked, this, [this, i] { ImGTPON_Click(i); });
    }

    PicVisitante = new QWidget(painel);
    PicVisitante->setObjectName("PicVisitante");
    Text4 = new QLineEdit(PicVisitante);
    Text4->setObjectName("Text4");
    Text4->setMaxLength(40);
    auto* formVisitante = new QFormLayout(PicVisitante);
    formVisitante->setContentsMargins(0, 0, 0, 0);
    formVisitante->addRow("Seu nome:", Text4);

    PicLogin = new QWidget(painel);
    PicLogin->setObjectName("PicLogin");
    Combo3 = new QComboBox(PicLogin);
    Combo3->setObjectName("Combo3");
    Combo3->setEditable(true);
    Combo3->setInsertPolicy(QComboBox::NoInsert);
    Text2 = new QLineEdit(PicLogin);
    Text2->setObjectName("Text2");
    Text2->setEchoMode(QLineEdit::Password);
    Check1 = new QCheckBox("Salvar senha neste computador", PicLogin);
    Check1->setObjectName("Check1");
    ChkChat = new QCheckBox("Ativar bate papo", PicLogin);
    ChkChat->setObjectName("ChkChat");
    auto* formLogin = new QFormLayout(PicLogin);
    formLogin->setContentsMargins(0, 0, 0, 0);
    formLogin->addRow("Nick:", Combo3);
    formLogin->addRow("Senha:", Text2);
    formLogin->addRow(Check1);
    formLogin->addRow(ChkChat);

    Label10 = new Rotulo("Se você não possui Nick e senha, clique aqui", painel);
    Label10->setObjectName("Label10");
    Label21 = new Rotulo("Acessar perfil", painel);
    Label21->setObjectName("Label21");
    ChkNaRede = new QCheckBox("Procurar jogadores na rede local", painel);
    ChkNaRede->setObjectName("ChkNaRede");
    ChkNaRede->setVisible(false);

    connect(Combo3, &QComboBox::currentTextChanged, this, [this] { Combo3_Change(); });
    connect(Text2, &QLineEdit::textChanged, this, [this] { AvaliaChecks(); });
    connect(ChkChat, &QCheckBox::clicked, this,
            [this](bool marcado) { opcoes_.HabilitaChat = marcado; });
    connect(Label10, &Rotulo::clicado, this, [this] {
        // A nick just created fills the saved logins; the dialog goes on as with "JOGAR"
        if (abreCadastro && abreCadastro(this)) {
            PoeNoCombo();
            Label3_Click();
        }
    });
    connect(Label21, &Rotulo::clicado, this, [this] {
        amb_.Abre(QUrl(EnderecoServico(amb_.reg) + "/html/perfil.php?prog=velmora&s=" +
                       TiraBrancos(Text2->text()) + "&n=" + TiraBrancos(Combo3->currentText())));
    });

    auto* links = new QHBoxLayout;
    links->addWidget(Label10);
    links->addWidget(Label21);
    links->addStretch();
    auto* coluna = new QVBoxLayout(painel);
    coluna->setContentsMargins(0, 0, 0, 0);
    coluna->addLayout(escolha);
    coluna->addWidget(PicVisitante);
    coluna->addWidget(PicLogin);
    coluna->addLayout(links);
    coluna->addWidget(ChkNaRede);
    coluna->addStretch();
    return painel;
}

QWidget* FrmNewGame::MontaAba4() {
    auto* painel = new QWidget(this);
    Text1 = new QLineEdit(painel);
    Text3 = new QLineEdit(painel);
    Text1->setObjectName("Text1");
    Text3->setObjectName("Text3");
    Text1->setMaxLength(40);
    Text1->installEventFilter(this);
    auto* form = new QFormLayout;
    form->addRow("Seu nick:", Text1);
    form->addRow("Senha de grupo:", Text3);
    auto* dica = new QLabel("Somente as pessoas que colocarem a mesma senha de grupo poderão "
                            "jogar com você",
                            painel);
    dica->setWordWrap(true);
    auto* coluna = new QVBoxLayout(painel);
    coluna->setContentsMargins(0, 0, 0, 0);
    coluna->addLayout(form);
    coluna->addWidget(dica);
    coluna->addStretch();
    return painel;
}

QWidget* FrmNewGame::MontaAba5() {
    auto* painel = new QWidget(this);
    TxtRede = new QLineEdit(painel);
    TxtRede->setObjectName("TxtRede");
    TxtRede->setMaxLength(40);
    auto* form = new QFormLayout;
    form->addRow("Seu nome:", TxtRede);
    auto* grupo = new QButtonGroup(painel);
    Option1 = new QRadioButton("Criar Jogo", painel);
    Option2 = new QRadioButton("Entrar no jogo", painel);
    Option1->setObjectName("Option1");
    Option2->setObjectName("Option2");
    grupo->addButton(Option1);
    grupo->addButton(Option2);
    Option1->setChecked(true);
    Picture5 = GrupoDeRegras(Opt_regra3, painel);
    Picture5->setObjectName("Picture5");
    connect(Option1, &QRadioButton::toggled, this,
            [this](bool criar) { Picture5->setVisible(criar); });
    auto* opcoes = new QHBoxLayout;
    opcoes->addWidget(Option1);
    opcoes->addWidget(Option2);
    opcoes->addStretch();
    auto* coluna = new QVBoxLayout(painel);
    coluna->setContentsMargins(0, 0, 0, 0);
    coluna->addLayout(form);
    coluna->addLayout(opcoes);
    coluna->addWidget(Picture5);
    coluna->addStretch();
    return painel;
}

// ---------------------------------------------------------------- memories

void FrmNewGame::DefineStatusInicial() {
    clsRegistryAccess& r = amb_.reg;
    MarcaRegra(Opt_regra, static_cast<int>(NumeroTolerante(LeMemoria(r, "Regra1"))));
    MarcaRegra(Opt_regra2, static_cast<int>(NumeroTolerante(LeMemoria(r, "Regra2"))));
    MarcaRegra(Opt_regra3, static_cast<int>(NumeroTolerante(LeMemoria(r, "Regra3"))));
    TxtHC->setText(Q(LeMemoria(r, "TxtHC")));
    TxtHH1->setText(Q(LeMemoria(r, "TxtHH1")));
    TxtHH2->setText(Q(LeMemoria(r, "TxtHH2")));
    Text1->setText(Q(LeMemoria(r, "Text1")));
    Text3->setText(Q(LeMemoria(r, "Text3")));
    Text4->setText(Q(LeMemoria(r, "Text4")));
    TxtRede->setText(Q(LeMemoria(r, "TxtRede")));
    ChkChat->setChecked(LeMarcado(r, "ChkChat"));
    Check1->setChecked(LeMarcado(r, "Check1"));
}

void FrmNewGame::GravaMemorias() {
    clsRegistryAccess& r = amb_.reg;
    clsRegistryAccess::Lote lote(r);
    GravaOpcao(r, "Regra1", std::to_string(PuxaRegra(1)));
    GravaOpcao(r, "Regra2", std::to_string(PuxaRegra(2)));
    GravaOpcao(r, "Regra3", std::to_string(PuxaRegra(3)));
    GravaOpcao(r, "Nivel", std::to_string(PuxaNivel()));
    GravaOpcao(r, "TxtHC", Texto(TxtHC));
    GravaOpcao(r, "TxtHH1", Texto(TxtHH1));
    GravaOpcao(r, "TxtHH2", Texto(TxtHH2));
    GravaOpcao(r, "Text1", Texto(Text1));
    GravaOpcao(r, "Text3", Texto(Text3));
    GravaOpcao(r, "Text4", Texto(Text4));
    GravaOpcao(r, "TxtRede", Texto(TxtRede));
    GravaOpcao(r, "ChkChat", ChkChat->isChecked() ? "1" : "0");
    GravaOpcao(r, "Check1", Check1->isChecked() ? "1" : "0");
}

void FrmNewGame::PoeNoCombo() {
    clsRegistryAccess& r = amb_.reg;
    const QSignalBlocker bloqueio(Combo3);
    Combo3->clear();
    Text2->clear();
    const auto ultimo = NumeroTolerante(LeOpcao(r, "NoCombo3", "0"), 0, 1000);
    for (auto k = ultimo; k >= 1; --k) {
        const std::string nick = LeOpcao(r, "combo3N" + std::to_string(k), "");
        if (nick.empty()) break;
        if (nick != Apagado) Combo3->addItem(Q(nick));
    }
    if (Combo3->count() > 0)
        Combo3->setCurrentIndex(0);
    else
        Combo3->setEditText("");
}

void FrmNewGame::Combo3_Change() {
    clsRegistryAccess& r = amb_.reg;
    Text2->clear();
    Label21->setVisible(false);
    const QString nick = Combo3->currentText();
    const auto ultimo = NumeroTolerante(LeOpcao(r, "NoCombo3", "0"), 0, 1000);
    for (std::int64_t k = 1; k <= ultimo; ++k) {
        const QString salvo = Q(LeOpcao(r, "combo3N" + std::to_string(k), ""));
        if (!nick.isEmpty() && salvo.compare(nick, Qt::CaseInsensitive) == 0) {
            Text2->setText(Q(LeOpcao(r, "combo3S" + std::to_string(k), "")));
            Label21->setVisible(true);
            break;
        }
    }
    AvaliaChecks();
}

void FrmNewGame::AvaliaChecks() {
    const bool ambos = !Combo3->currentText().isEmpty() && !Text2->text().isEmpty();
    ChkChat->setVisible(ambos);
    Check1->setVisible(ambos);
}

// ---------------------------------------------------------------- handlers

int FrmNewGame::PuxaNivel() const {
    return nivel_ >= 1 ? nivel_ : 3;
}

int FrmNewGame::PuxaRegra(int grupo) const {
    const std::array<QRadioButton*, 5>* opcoes = grupo == 1   ? &Opt_regra
                                                 : grupo == 2 ? &Opt_regra2
                                                 : grupo == 3 ? &Opt_regra3
                                                              : nullptr;
    if (!opcoes) return 0;
    for (int i = 1; i <= 4; ++i)
        if ((*opcoes)[i]->isChecked()) return i;
    return 0;
}

void FrmNewGame::MostraCancelar() {
    Label2->DefineTexto(QString::fromStdString(sessao_.Label2));
}

void FrmNewGame::Image1_Click(int aba) {
    if (aba < 1 || aba > 5) aba = 1;
    aba_ = aba;
    paineis->setCurrentWidget(PicPainel[aba]);
    LbActive->setText(TitulosDasAbas[aba]);
    for (int i = 1; i <= 5; ++i) Image1[i]->DefineDestaque(i == aba);
    QLineEdit* primeiro = nullptr;
    switch (aba) {
    case 1:
        primeiro = TxtHC;
        break;
    case 2:
        primeiro = TxtHH1;
        break;
    case 3: {
        const auto login = NumeroTolerante(LeMemoria(amb_.reg, "ImGTPON"));
        ImGTPON_Click(login == 1 ? 1 : 2);
        return;
    }
    case 4:
        primeiro = Text1;
        break;
    case 5:
        primeiro = TxtRede;
        break;
    }
    primeiro->selectAll();
    primeiro->setFocus();
}

void FrmNewGame::ImGTPON_Click(int i) {
    ImGTPON[i == 1 ? 1 : 2]->setChecked(true);
    PicLogin->setVisible(i != 1);
    Label10->setVisible(i != 1);
    PicVisitante->setVisible(i == 1);
    Label21->setVisible(false);
    if (i == 1) {
        Text4->setFocus();
    } else {
        Combo3->setFocus();
        Combo3_Change();
    }
}

void FrmNewGame::Label23_Click(int nivel) {
    amb_.Som("click.wav");
    for (int i = 1; i <= 5; ++i) Label23[i]->DefineDestaque(i == nivel);
    nivel_ = nivel;
    GravaOpcao(amb_.reg, "DF", std::to_string(nivel));
}

void FrmNewGame::Torneio(bool ligado) {
    niveis->setVisible(!ligado);
    textoTorneio->setVisible(ligado);
    Image4->setEnabled(!ligado);
    Image3->setEnabled(ligado);
    if (ligado) nivel_ = 8;
}

bool FrmNewGame::Valida() {
    if (aba_ == 4 && Text3->text().isEmpty()) {
        amb_.caixas.Mensagem(this,
                             "Informe a senha de grupo\r\rSomente as pessoas que colocarem a "
                             "mesma senha de grupo poderão jogar com você",
                             "Jogar com meus amigos");
        Text3->setFocus();
        return false;
    }
    if (aba_ == 3) {
        const bool visitante = ImGTPON[1]->isChecked();
        const QString nome = SemCerquilha(visitante ? Text4->text() : Combo3->currentText());
        if (nome.isEmpty()) {
            amb_.caixas.Mensagem(this,
                                 "Por favor informe o seu Nick e senha, ou cadastre um novo nick",
                                 "Jogar On-line");
            return false;
        }
        if (!visitante && Text2->text().isEmpty()) {
            amb_.caixas.Mensagem(this, "Informe a senha", "Jogar On-line");
            Text2->setFocus();
            return false;
        }
    }
    return true;
}

void FrmNewGame::Label3_Click() {
    sessao_.Label2 = "Sair";
    MostraCancelar();
    GravaOpcao(amb_.reg, "OPTJ", std::to_string(aba_));
    CamposNovoJogo campos = Campos();
    if (aba_ == 3 || aba_ == 4) {
        if (!Valida()) return;
        if (!(conectaOnline ? conectaOnline(campos) : sessao_.JOGAR(campos))) return;
    } else if (!sessao_.JOGAR(campos)) {
        MostraCancelar();
        return;
    }
    Fecha(SaidaDialogo::Jogar);
}

void FrmNewGame::Label2_Click() {
    if (Label2->Texto() == "Cancelar") {
        Fecha(SaidaDialogo::Cancelar);
        return;
    }
    // "Sair": the process ends with nothing written
    saida_ = SaidaDialogo::Sair;
    fechado_ = true;
    done(QDialog::Rejected);
}

void FrmNewGame::Fecha(SaidaDialogo saida) {
    saida_ = saida;
    fechado_ = true;
    GravaMemorias();
    done(saida == SaidaDialogo::Jogar ? QDialog::Accepted : QDialog::Rejected);
}

void FrmNewGame::reject() {
    // Esc doesn't close the dialog: only its two labels do
}

CamposNovoJogo FrmNewGame::Campos() const {
    CamposNovoJogo c;
    c.Aba = aba_;
    c.Nivel = nivel_;
    c.Opt_regra = PuxaRegra(1);
    c.Opt_regra2 = PuxaRegra(2);
    c.Opt_regra3 = PuxaRegra(3);
    c.TxtHC = Texto(TxtHC);
    c.TxtHH1 = Texto(TxtHH1);
    c.TxtHH2 = Texto(TxtHH2);
    c.Visitante = ImGTPON[1]->isChecked();
    c.Text4 = Texto(Text4);
    c.Combo3 = Combo3->currentText().toStdString();
    c.Text2 = Texto(Text2);
    c.ChkNaRede = ChkNaRede->isVisible() && ChkNaRede->isChecked();
    c.Text1 = Texto(Text1);
    c.Text3 = Texto(Text3);
    c.TxtRede = Texto(TxtRede);
    c.Option1 = Option1->isChecked();
    return c;
}

// ---------------------------------------------------------------- keys

void FrmNewGame::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_F9) {
        if (abreSobre) abreSobre(this);
        return;
    }
    if (e->key() == Qt::Key_Y && (e->modifiers() & Qt::ControlModifier)) {
        ChkNaRede->setVisible(true);
        ChkNaRede->setChecked(true);
        return;
    }
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter) {
        if (aba_ == 2 && (TxtHH1->text().isEmpty() || TxtHH2->text().isEmpty())) return;
        if (aba_ == 4 && (Text1->text().isEmpty() || Text3->text().isEmpty())) return;
        Label3_Click();
        return;
    }
    QDialog::keyPressEvent(e);
}

bool FrmNewGame::eventFilter(QObject* objeto, QEvent* evento) {
    if (evento->type() == QEvent::KeyPress) {
        const auto* tecla = static_cast<QKeyEvent*>(evento);
        if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
            if (objeto == TxtHH1 && !TxtHH1->text().isEmpty() && TxtHH2->text().isEmpty()) {
                TxtHH2->setFocus();
                return true;
            }
            if (objeto == Text1 && !Text1->text().isEmpty() && Text3->text().isEmpty()) {
                Text3->setFocus();
                return true;
            }
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

} // namespace velmora::ui
