#include "ui/janelatabuleiro.h"

#include "ui/ambiente.h"
#include "ui/barratitulo.h"
#include "ui/caixas.h"
#include "ui/desenhos.h"
#include "peer/conexaopeer.h"
#include "service/redeservico.h"
#include "peer/filtrapalavroes.h"
#include "ui/estilo.h"
#include "ui/frmopcoes.h"
#include "ui/frmrecordes.h"
#include "ui/frmsobre.h"
#include "ui/vistatabuleiro.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QScreen>
#include <QTextEdit>

namespace velmora::ui {

namespace {

constexpr int LarguraPalco = 800, AlturaPalco = 600;
constexpr int Lado = 64; // one square
constexpr int XTab = 16, YTab = 42;
constexpr int XDir = 546, LDir = 240;

QColor CorDe(uint32_t c) {
    return QColor::fromRgb(static_cast<QRgb>(c));
}

QLabel* Rotulo_(QWidget* pai, const QString& nome, const QRect& r, int pixels = 13,
                bool negrito = false, Qt::Alignment alinha = Qt::AlignLeft | Qt::AlignVCenter) {
    auto* l = new QLabel(pai);
    l->setObjectName(nome);
    l->setGeometry(r);
    QFont f = l->font();
    f.setPixelSize(pixels);
    f.setBold(negrito);
    l->setFont(f);
    l->setAlignment(alinha);
    return l;
}

} // namespace

// ---------------------------------------------------------------- small pictures

BarraRelogio::BarraRelogio(QWidget* pai) : QWidget(pai) {}

void BarraRelogio::Define(double fracao, QColor cor) {
    fracao_ = std::clamp(fracao, 0.0, 1.0);
    cor_ = std::move(cor);
    update();
}

void BarraRelogio::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), QColor(0xD8, 0xD8, 0xD0));
    p.fillRect(QRectF(0, 0, width() * fracao_, height()), cor_);
    p.setPen(QColor(0x80, 0x80, 0x80));
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}

Insignias::Insignias(QWidget* pai) : QWidget(pai) {}

void Insignias::Define(int estrelas, bool ouro, bool medalha) {
    if (estrelas == estrelas_ && ouro == ouro_ && medalha == medalha_) return;
    estrelas_ = estrelas;
    ouro_ = ouro;
    medalha_ = medalha;
    update();
}

void Insignias::paintEvent(QPaintEvent*) {
    QPainter p(this);
    const double h = height();
    for (int i = 0; i < estrelas_; ++i) DesenhaEstrela(p, QRectF(i * h, 0, h, h), ouro_);
    if (medalha_) DesenhaMedalha(p, QRectF(width() - h * 1.1, 0, h * 1.1, h));
}

Lampada::Lampada(QWidget* pai) : QWidget(pai) {}

void Lampada::Acende(bool acesa) {
    if (acesa_ == acesa) return;
    acesa_ = acesa;
    update();
}

void Lampada::paintEvent(QPaintEvent*) {
    QPainter p(this);
    DesenhaLampada(p, QRectF(rect()), acesa_);
}

// ---------------------------------------------------------------- the window

JanelaTabuleiro::JanelaTabuleiro(Form1& form1, const AmbienteUi& ambiente, QWidget* pai)
    : QWidget(pai, Qt::Window | Qt::FramelessWindowHint), f_(form1), ctx_(form1.ctx),
      amb_(ambiente) {
    setObjectName("Form1");
    setWindowTitle("Velmora Ace");
    setMinimumSize(LarguraPalco, AlturaPalco);
    resize(LarguraPalco, AlturaPalco);
    Monta();
    Atualiza();
    // Some changes of the view-model come without a call to repaint (a text set just before
    // a wait): the window looks again ten times a second.
    atualizador_.setInterval(100);
    connect(&atualizador_, &QTimer::timeout, this, &JanelaTabuleiro::Atualiza);
    atualizador_.start();
}

JanelaTabuleiro::~JanelaTabuleiro() = default;

QRect JanelaTabuleiro::RetanguloServidor(int casa) {
    return {XTab + (casa % 10 - 2) * Lado, YTab + (casa / 10 - 1) * Lado, Lado, Lado};
}

void JanelaTabuleiro::Monta() {
    palco_ = new QWidget(this);
    palco_->setObjectName("palco");
    palco_->setFixedSize(LarguraPalco, AlturaPalco);

    Image3 = new BarraTitulo("Velmora Ace", palco_);
    Image3->setObjectName("Image3");
    Image3->setGeometry(0, 0, LarguraPalco, 30);
    const std::array<std::pair<Icone, const char*>, 4> ct = {{{Icone::Minimizar, ""},
                                                              {Icone::Minimizar, "Minimizar"},
                                                              {Icone::TelaCheia, "Tela cheia"},
                                                              {Icone::Fechar, "Fechar"}}};
    for (std::size_t i = 1; i <= 3; ++i) {
        ImgCT[i] = new BotaoIcone(ct[i].first, Qt::white, ct[i].second, Image3);
        ImgCT[i]->setObjectName(QString("ImgCT_%1").arg(i));
        ImgCT[i]->setFixedSize(30, 30);
        ImgCT[i]->move(LarguraPalco - 32 * static_cast<int>(4 - i), 0);
    }
    connect(ImgCT[1], &BotaoIcone::clicado, this, [this] { showMinimized(); });
    connect(ImgCT[2], &BotaoIcone::clicado, this, &JanelaTabuleiro::TelaCheiaClick);
    connect(ImgCT[3], &BotaoIcone::clicado, this, [this] { f_.Image1_Click(); });

    // the board and what stands over it and below it
    VistaTabuleiro_ = new VistaTabuleiro(ctx_.painel, palco_);
    VistaTabuleiro_->setObjectName("imgpd");
    VistaTabuleiro_->setGeometry(XTab, YTab, 8 * Lado, 8 * Lado);
    connect(VistaTabuleiro_, &VistaTabuleiro::casaPressionada, this,
            &JanelaTabuleiro::imgpd_MouseDown);
    connect(VistaTabuleiro_, &VistaTabuleiro::casaDuploClique, this,
            &JanelaTabuleiro::imgpd_DblClick);

    Label27 =
        Rotulo_(palco_, "Label27", QRect(XTab + 40, YTab + 8 * Lado / 2 - 50, 8 * Lado - 80, 100),
                24, true, Qt::AlignCenter);
    Label27->setWordWrap(true);
    Label27->setStyleSheet("QLabel { color: white; background: rgba(20, 30, 45, 210); "
                           "border: 2px solid #C88A22; border-radius: 10px; }");
    Label27->hide();

    const int yBaixo = YTab + 8 * Lado + 6;
    lbMsg = Rotulo_(palco_, "lbMsg", QRect(XTab, yBaixo, 8 * Lado, 26), 16, true);
    lbMsg->setStyleSheet("QLabel { color: #8B1A1A; }");

    // the computer's report of its turn
    relatorio_ = new QWidget(palco_);
    relatorio_->setObjectName("relatorio");
    relatorio_->setGeometry(XDir, YTab + 252, LDir, 100);
    relatorio_->setStyleSheet("QWidget#relatorio { background: #F2EEDF; border: 1px solid "
                              "#D3CCB4; border-radius: 6px; }");
    lbSide = Rotulo_(relatorio_, "lbSide", QRect(10, 11, 12, 12));
    lbYMM = Rotulo_(relatorio_, "lbYMM", QRect(28, 4, 120, 26), 13, true);
    lbMoves = Rotulo_(relatorio_, "lbMoves", QRect(148, 4, 84, 26), 13, true,
                      Qt::AlignRight | Qt::AlignVCenter);
    const std::array<std::pair<const char*, const char*>, 4> campos = {{{"lbValue", "Valor:"},
                                                                        {"lbPly", "Profundidade:"},
                                                                        {"lbCutoff", "Cortes:"},
                                                                        {"lbPosns", "Posições:"}}};
    for (std::size_t i = 0; i < campos.size(); ++i) {
        const int x = i % 2 == 0 ? 10 : 122, y = i < 2 ? 36 : 64;
        Rotulo_(relatorio_, QString("rotulo_") + campos[i].first, QRect(x, y, 108, 13), 10)
            ->setText(campos[i].second);
        relatorioCampos_[i] =
            Rotulo_(relatorio_, campos[i].first, QRect(x, y + 13, 108, 15), 12, true);
    }

    // the players' panel: the opponent at the top, the local player at the bottom
    auto cartao = [this](int lado, int y) {
        const auto i = static_cast<std::size_t>(lado);
        auto* fundo = new QWidget(palco_);
        fundo->setObjectName(QString("cartao%1").arg(lado));
        fundo->setGeometry(XDir, y, LDir, 92);
        fundo->setStyleSheet(QString("QWidget#cartao%1 { background: #F7F4E8; border: 1px "
                                     "solid #B9B29A; border-radius: 8px; }")
                                 .arg(lado));
        Imglamp[i - 1] = new Lampada(fundo);
        Imglamp[i - 1]->setObjectName(QString("Imglamp_%1").arg(lado - 1));
        Imglamp[i - 1]->setGeometry(8, 9, 20, 20);
        LbNome[i] = Rotulo_(fundo, QString("LbNome_%1").arg(lado), QRect(34, 6, 150, 24), 16, true);
        LbNV[i] = Rotulo_(fundo, QString("LbNV_%1").arg(lado), QRect(184, 6, 50, 24), 11);
        LbNV[i]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        lbnivel[i] = Rotulo_(fundo, QString("lbnivel_%1").arg(lado), QRect(34, 30, 124, 18), 12);
        Estrelas[i] = new Insignias(fundo);
        Estrelas[i]->setObjectName(QString("LBEstrelas%1").arg(lado));
        Estrelas[i]->setGeometry(150, 30, 84, 16);
        rotuloVitorias[i] =
            Rotulo_(fundo, QString("rotuloVitorias%1").arg(lado), QRect(10, 52, 64, 18), 12);
        rotuloVitorias[i]->setText("Vitórias:");
        LbPT[i] = Rotulo_(fundo, QString("LbPT%1").arg(lado), QRect(74, 52, 40, 18), 13, true);
        Rotulo_(fundo, QString("rotuloPecas%1").arg(lado), QRect(124, 52, 50, 18), 12)
            ->setText("Peças:");
        QLabel* pecas =
            Rotulo_(fundo, lado == 1 ? "Label2" : "Label3", QRect(174, 52, 40, 18), 13, true);
        (lado == 1 ? Label2 : Label3) = pecas;
        PicCrono[i] = new BarraRelogio(fundo);
        PicCrono[i]->setObjectName(QString("PicCrono_%1").arg(lado));
        PicCrono[i]->setGeometry(10, 76, LDir - 20, 8);
        PicCrono[i]->hide();
    };
    cartao(2, YTab);
    cartao(1, YTab + 8 * Lado - 92);

    // the state of the game
    int y = YTab + 100;
    LbVez = Rotulo_(palco_, "LbVez", QRect(XDir, y, LDir, 26), 17, true, Qt::AlignCenter);
    LbVez->setStyleSheet("QLabel { color: #23344A; }");
    y += 28;
    Label18 = Rotulo_(palco_, "Label18", QRect(XDir, y, 150, 20), 13);
    Label12 = Rotulo_(palco_, "Label12", QRect(XDir + 150, y, 90, 20), 14, true,
                      Qt::AlignRight | Qt::AlignVCenter);
    y += 22;
    rotuloRegra_ = Rotulo_(palco_, "rotuloRegra", QRect(XDir, y, 44, 20), 12);
    rotuloRegra_->setText("Regra:");
    Label20 = Rotulo_(palco_, "Label20", QRect(XDir + 44, y, LDir - 44, 20), 12);
    for (QLabel* l : {rotuloRegra_, Label20}) l->setStyleSheet("QLabel { color: #5A4A2A; }");
    y += 24;
    historico_ = new QWidget(palco_);
    historico_->setObjectName("historico");
    historico_->setGeometry(XDir, y, LDir, 34);
    const std::array<std::pair<Icone, const char*>, 4> hist = {
        {{Icone::Primeira, "Primeira jogada"},
         {Icone::Anterior, "Voltar uma jogada"},
         {Icone::Proxima, "Avançar uma jogada"},
         {Icone::Ultima, "Última jogada"}}};
    for (std::size_t i = 0; i < 4; ++i) {
        Image6[i] = new BotaoIcone(hist[i].first, paleta::Barra, hist[i].second, historico_);
        Image6[i]->setObjectName(QString("Image6_%1").arg(i));
        Image6[i]->DefineDuploComoClique(true);
        Image6[i]->move(i < 2 ? static_cast<int>(i) * 36 : LDir - static_cast<int>(4 - i) * 36, 0);
        connect(Image6[i], &BotaoIcone::clicado, this, [this, i] {
            f_.Image6_Click(static_cast<int>(i));
            Atualiza();
        });
    }
    Label10 =
        Rotulo_(historico_, "Label10", QRect(72, 0, LDir - 144, 34), 15, true, Qt::AlignCenter);

    // the chat of a connected game stands where the history stands off-line
    Text4 = new QTextEdit(palco_);
    Text4->setObjectName("Text4");
    Text4->setReadOnly(true);

    Text3 = new QLineEdit(palco_);
    Text3->setObjectName("Text3");

    Text3->installEventFilter(this);
    Label25 = new Rotulo("Enviar", palco_);
    Label25->setObjectName("Label25");

    connect(Label25, &Rotulo::clicado, this, &JanelaTabuleiro::Label25_Click);

    // the buttons
    Label6 = new Rotulo("Novo jogo", palco_);
    Label7 = new Rotulo("Reiniciar", palco_);
    Label22 = new Rotulo("Entregar partida", palco_);
    Label24 = new Rotulo("Sugerir empate", palco_);
    Label26 = new Rotulo("Desconectar", palco_);
    for (auto [r, nome] : {std::pair<Rotulo*, const char*>{Label6, "Label6"},
                           {Label7, "Label7"},
                           {Label22, "Label22"},
                           {Label24, "Label24"},
                           {Label26, "Label26"}})
        r->setObjectName(nome);
    Label6->DefineDestaque(true);
    PosicionaControles(false);
    connect(Label6, &Rotulo::clicado, this, [this] { f_.Label6_Click(); });
    connect(Label7, &Rotulo::clicado, this, [this] { f_.Label7_Click(); });
    connect(Label22, &Rotulo::clicado, this, [this] { f_.Label22_Click(); });
    connect(Label24, &Rotulo::clicado, this, [this] { f_.Label24_Click(); });
    connect(Label26, &Rotulo::clicado, this, [this] { f_.Label26_Click(); });

    // the picture buttons
    y = YTab + 8 * Lado - 92 - 44;
    const QColor corIcone = paleta::Barra;
    Image7 = new BotaoIcone(Icone::NovoJogo, corIcone, "Novo jogo", palco_);
    Image12 = new BotaoIcone(Icone::Recordes, corIcone, "Recordes", palco_);
    Image13 = new BotaoIcone(Icone::Opcoes, corIcone, "Opções", palco_);
    Image4 = new BotaoIcone(Icone::Sobre, corIcone, "Sobre o Velmora Ace", palco_);
    Image14 = new BotaoIcone(Icone::Ajuda, corIcone, "Ajuda", palco_);
    Image15 = new BotaoIcone(Icone::Ranking, corIcone, "Ranking", palco_);
    int x = XDir;
    for (auto [b, nome] : {std::pair<BotaoIcone*, const char*>{Image7, "Image7"},
                           {Image12, "Image12"},
                           {Image13, "Image13"},
                           {Image4, "Image4"},
                           {Image14, "Image14"},
                           {Image15, "Image15"}}) {
        b->setObjectName(nome);
        b->setFixedSize(36, 36);
        b->move(x, y);
        x += 40;
    }
    connect(Image7, &BotaoIcone::clicado, this, [this] {
        if (ctx_.painel.Image7.Habilitado) f_.Image7_Click();
    });
    connect(Image12, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image12_Click);
    connect(Image13, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image13_Click);
    connect(Image4, &BotaoIcone::clicado, this, [this] {
        // the screen opens it beside a connected game, modally otherwise
        if (abreSobre) abreSobre(this);
    });
    connect(Image14, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image14_Click);
    connect(Image15, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image15_Click);

    // the hidden aid
    Image9 = new BotaoIcone(Icone::Torneio, QColor(0xD6, 0xCF, 0xB4), "", palco_);
    Image9->setObjectName("Image9");
    Image9->setFixedSize(22, 22);
    Image9->setCursor(Qt::ArrowCursor);
    Image9->move(LarguraPalco - 28, AlturaPalco - 28);
    connect(Image9, &BotaoIcone::clicadoDireito, this, &JanelaTabuleiro::Image9_RightClick);
    Label28 = Rotulo_(palco_, "Label28", QRect(LarguraPalco - 80, AlturaPalco - 26, 50, 18), 11);
    Label28->hide();
}

void JanelaTabuleiro::resizeEvent(QResizeEvent*) {
    palco_->move((width() - LarguraPalco) / 2, (height() - AlturaPalco) / 2);
}

void JanelaTabuleiro::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.fillRect(rect(), telaCheia_ ? QColor(0x1B, 0x22, 0x2C) : paleta::Fundo);
    p.fillRect(palco_->geometry(), paleta::Fundo);
    p.setPen(paleta::Barra);
    p.drawRect(palco_->geometry().adjusted(0, 0, -1, -1));
}

// ---------------------------------------------------------------- drawing the state

void JanelaTabuleiro::Estilo(QWidget* w, const QString& estilo) {
    // a style sheet set again costs a new polish of the widget: only changes are applied
    if (w->styleSheet() != estilo) w->setStyleSheet(estilo);
}

void JanelaTabuleiro::PosicionaControles(bool conectado) {
    if (posicionado_ && conectado == layoutConectado_) return;
    posicionado_ = true;
    layoutConectado_ = conectado;
    const int meio = LDir / 2 - 3, direita = XDir + LDir / 2 + 3;
    if (!conectado) {
        Label6->setGeometry(XDir, YTab + 212, meio, 30);
        Label7->setGeometry(direita, YTab + 212, meio, 30);
    } else {
        Label6->setGeometry(XDir, YTab + 154, meio, 30);
        Label7->setGeometry(direita, YTab + 154, meio, 30);
    }
    Label22->setGeometry(XDir, YTab + 190, meio, 30);
    Label24->setGeometry(direita, YTab + 190, meio, 30);
    Label26->setGeometry(XDir, YTab + 226, LDir, 30);
    Text4->setGeometry(XDir, YTab + 262, LDir, 80);
    Text3->setGeometry(XDir, YTab + 346, LDir - 70, 26);
    Label25->setGeometry(XDir + LDir - 66, YTab + 346, 66, 26);
    relatorio_->setVisible(!conectado);
}

void JanelaTabuleiro::Sincroniza(QLabel* r, const Controle& c) {
    const QString t = QString::fromStdString(c.Texto);
    if (r->text() != t) r->setText(t);
    r->setVisible(c.Visivel);
}

void JanelaTabuleiro::Sincroniza(Rotulo* r, const Controle& c) {
    if (!c.Texto.empty()) r->DefineTexto(QString::fromStdString(c.Texto));
    r->setVisible(c.Visivel);
    r->setEnabled(c.Habilitado);
    r->DefineCinza(c.Cor == cor::Cinza);
}

void JanelaTabuleiro::Atualiza() {
    const Painel& p = ctx_.painel;
    const Form1Modelo& m = f_.modelo;
    // a "Cliente" sees its own side at the bottom: image 12 takes the place of image 89
    VistaTabuleiro_->DefineEspelhado(m.imgpd[12] != Retangulo{} &&
                                     m.imgpd[12] == m.PosicaoCasa[89]);
    VistaTabuleiro_->update();

    Sincroniza(Label27, p.Label27);
    lbMsg->setText(QString::fromStdString(p.lbMsg.Texto));
    lbYMM->setText(QString::fromStdString(p.lbYMM.Texto));
    lbMoves->setText(QString::fromStdString(p.lbMoves.Texto));
    Estilo(lbMoves, QString("QLabel { color: %1; }").arg(CorDe(p.lbMoves.Cor).name()));
    Estilo(
        lbSide,
        QString("QLabel { background: %1; border-radius: 6px; }").arg(CorDe(p.lbSide.Cor).name()));
    const std::array<const Controle*, 4> relatorio = {&p.lbValue, &p.lbPly, &p.lbCutoff,
                                                      &p.lbPosns};
    for (std::size_t i = 0; i < relatorio.size(); ++i)
        relatorioCampos_[i]->setText(QString::fromStdString(relatorio[i]->Texto));

    Sincroniza(Label2, p.Label2);
    Sincroniza(Label3, p.Label3);
    Label12->setText(QString::fromStdString(p.Label12.Texto));
    Label18->setText(QString::fromStdString(p.Label18.Texto));
    Label10->setText(QString::fromStdString(p.Label10.Texto));
    historico_->setVisible(p.Label10.Visivel);
    Imglamp[0]->Acende(p.Imglamp[0].Visivel);
    Imglamp[1]->Acende(p.Imglamp[1].Visivel);

    Sincroniza(Label6, m.Label6);
    Sincroniza(Label7, m.Label7);
    Sincroniza(Label22, p.Label22);
    Sincroniza(Label24, p.Label24);
    Sincroniza(Label26, p.Label26);
    Image7->setEnabled(p.Image7.Habilitado);
    if (p.Ocupado != ocupado_) {
        ocupado_ = p.Ocupado;
        if (ocupado_)
            setCursor(Qt::BusyCursor);
        else
            unsetCursor();
    }

    // the players' panel
    for (std::size_t i = 1; i <= 2; ++i) {
        QFont f = LbNome[i]->font();
        const int px = m.FonteLbNome[i] == 8 ? 13 : 16;
        if (f.pixelSize() != px) {
            f.setPixelSize(px);
            LbNome[i]->setFont(f);
        }
        // Still too wide at the smaller size: it ends in "…", whole in the tooltip.
        TextoElidido(LbNome[i], QString::fromStdString(m.LbNome[i].Texto));
        LbNome[i]->setVisible(m.LbNome[i].Visivel);
        Sincroniza(lbnivel[i], m.lbnivel[i]);
        Sincroniza(LbNV[i], m.LbNV[i]);
        int estrelas = 0;
        for (std::size_t k = 1; k <= 5; ++k) estrelas += m.Estrelas[i][k] ? 1 : 0;
        Estrelas[i]->Define(estrelas, m.ImagemEstrelas[i] == 2, m.Medalha[i].Visivel);
        const Barra& total = m.PicTIMER[i];
        const Barra& gasto = m.PicCrono[i];
        PicCrono[i]->Define(total.Largura > 0 ? gasto.Largura / total.Largura : 0,
                            CorDe(gasto.Cor));
        PicCrono[i]->setVisible(total.Visivel);
    }
    Sincroniza(LbPT[1], m.LbPT1);
    Sincroniza(LbPT[2], m.LbPT2);
    rotuloVitorias[1]->setVisible(m.LbPT1.Visivel);
    rotuloVitorias[2]->setVisible(m.LbPT2.Visivel);
    Sincroniza(LbVez, m.LbVez);
    Sincroniza(Label20, m.Label20);
    rotuloRegra_->setVisible(m.Label20.Visivel && !m.Label20.Texto.empty());

    // the chat, where the history and the report stand off-line
    PosicionaControles(ctx_.Game.Conectado);
    Text4->setVisible(m.Text4.Visivel);
    Text3->setVisible(m.Text3.Visivel);
    Label25->setVisible(m.Text3.Visivel);
    if (Text4->toPlainText() != QString::fromStdString(m.Text4.Texto)) {
        Text4->setPlainText(QString::fromStdString(m.Text4.Texto));
        Text4->moveCursor(QTextCursor::End);
    }
    Estilo(Text4, m.Text4.Cor == cor::VermelhoEscuro ? "QTextEdit { color: #800000; }" : "");
    if (m.Foco == "Text3" && Text3->isVisible() && !Text3->hasFocus()) Text3->setFocus();
}

// ---------------------------------------------------------------- the clicks

void JanelaTabuleiro::imgpd_MouseDown(int casa, Qt::MouseButton botao) {
    if (ctx_.Game.AceitaClique && botao == Qt::LeftButton) Label28->setText("cheat");
    f_.imgpd_MouseDown(casa, botao == Qt::RightButton);
    Atualiza();
}

void JanelaTabuleiro::imgpd_DblClick(int casa) {
    if (casa != 89 || Label28->isHidden()) return;
    // Off-line no assisted turn follows and the game would stand still: the aid works
    // only in a connected game, on the local player's turn.
    if (ctx_.Game.Conectado && ctx_.Minhavez()) ctx_.Game.JogaPorMim = true;
}

void JanelaTabuleiro::Image12_Click() {
    if (ctx_.Game.Conectado) {
        amb_.Som("talk.wav");
        return;
    }
    f_.PosicaoRecord = 0;
    const auto cpu = static_cast<std::size_t>(f_.LadoComputador());
    FrmMostraRecords viewer(
        f_.recordes(), f_.placar(), ctx_.Jogador[cpu].Nivel, f_.PosicaoRecord,
        [this](const std::string& s) { amb_.Som(s); }, this);
    viewer.exec();
}

void JanelaTabuleiro::Image13_Click() {
    auto opc = std::make_unique<FrmOpc>(
        f_.config, f_.registro(), amb_.caixas, [this] { f_.tela().FechaMusica(); }, this);
    connect(opc.get(), &QDialog::accepted, this, [this] { ctx_.Velocit = f_.config.Velocit; });
    if (ctx_.Game.Conectado) {
        opc->setAttribute(Qt::WA_DeleteOnClose);
        opc.release()->show(); // its parent, this window, owns it until it closes
        return;
    }
    opc->exec();
}

void JanelaTabuleiro::Image14_Click() {
    amb_.Abre(amb_.Ajuda());
}

void JanelaTabuleiro::Image15_Click() {
    amb_.Abre(QUrl(EnderecoServico(amb_.reg) + "/html/ranking_velmora.php"));
}

void JanelaTabuleiro::Image9_RightClick() {
    Label28->show();
}

void JanelaTabuleiro::TelaCheiaClick() {
    if (!telaCheia_) {
        // The window fills the screen from its corner, the display keeps its mode. The
        // geometry is set as well, for displays without a window manager to honour the state.
        telaCheia_ = true;
        showFullScreen();
        if (const QScreen* tela = screen()) setGeometry(tela->geometry());
        return;
    }
    RestauraTela();
}

void JanelaTabuleiro::RestauraTela() {
    if (!telaCheia_) return;
    telaCheia_ = false;
    showNormal();
    resize(LarguraPalco, AlturaPalco);
    for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
    if (const QScreen* tela = screen()) {
        const QRect area = tela->availableGeometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
}

// ---------------------------------------------------------------- chat

QString JanelaTabuleiro::LinhaDeChat(const QString& nome, const QString& texto) {
    if (texto.size() >= 20) return nome + " diz:\n" + texto;
    return nome + " diz:   " + texto;
}

void JanelaTabuleiro::Label25_Click() {
    Rede* rede = &f_.rede();
    if (auto* comServico = dynamic_cast<RedeComServico*>(rede)) rede = &comServico->Base();
    if (auto* peer = dynamic_cast<ConexaoPeer*>(rede)) {
        // The peer link filters, sends and logs the line, or tells why it can't.
        if (peer->EnviaChat(Text3->text().toStdString())) Text3->clear();
        Atualiza();
        Text4->moveCursor(QTextCursor::End);
        Text3->setFocus();
        return;
    }
    Form1Modelo& m = f_.modelo;
    const bool ativo =
        f_.config.HabilitaChat &&
        (ctx_.Jogador[2].Lingua == ctx_.Jogador[1].Lingua || f_.config.HabilitaChatIngles);
    if (!ativo) {
        m.Text4.Texto += "\n\nVocê deve ativar o 'Bate papo' em 'Opções' para enviar mensagens";
        f_.PiscaText4();
        amb_.Som("talk.wav");
        Atualiza();
        return;
    }
    const QString texto = FiltraPalavroes(Text3->text());
    if (texto.isEmpty()) return;
    f_.rede().EnviaPeer("Mensagem:" + texto.toStdString());
    m.Text4.Texto +=
        "\n\n" + LinhaDeChat(QString::fromStdString(ctx_.Jogador[1].Nome), texto).toStdString();
    Text3->clear();
    Atualiza();
    Text4->moveCursor(QTextCursor::End);
    Text3->setFocus();
}

// ---------------------------------------------------------------- keys, activation, closing

void JanelaTabuleiro::keyPressEvent(QKeyEvent* e) {
    if (ctx_.Game.Conectado) {
        f_.Form_KeyDown(e->key() == Qt::Key_Escape ? Form1::TeclaEsc : e->key());
        Text3->setFocus();
        return;
    }
    if (e->key() == Qt::Key_Escape) {
        f_.Form_KeyDown(Form1::TeclaEsc);
        return;
    }
    QWidget::keyPressEvent(e);
}

bool JanelaTabuleiro::eventFilter(QObject* objeto, QEvent* evento) {
    if (objeto == Text3 && evento->type() == QEvent::KeyPress) {
        const auto* tecla = static_cast<QKeyEvent*>(evento);
        if (tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter) {
            Label25_Click();
            return true;
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

void JanelaTabuleiro::mouseMoveEvent(QMouseEvent* e) {
    for (std::size_t i = 1; i <= 3; ++i) ImgCT[i]->DefineRealce(false);
    QWidget::mouseMoveEvent(e);
}

void JanelaTabuleiro::PrimeiraAtivacao() {
    if (ativado_) return;
    ativado_ = true;
    // the body of the first activation runs once the activation itself is over
    if (aoPrimeiraAtivacao) QTimer::singleShot(0, this, [this] { aoPrimeiraAtivacao(); });
}

bool JanelaTabuleiro::event(QEvent* e) {
    if (e->type() == QEvent::WindowActivate) PrimeiraAtivacao();
    // A display without a window manager may never make the window active: a shown window
    // counts as activated a moment later.
    if (e->type() == QEvent::Show && !ativado_)
        QTimer::singleShot(0, this, [this] { PrimeiraAtivacao(); });
    return QWidget::event(e);
}

void JanelaTabuleiro::closeEvent(QCloseEvent* e) {
    if (f_.Encerrado()) {
        e->accept();
        return;
    }
    // the window manager's close button takes the window's own path
    e->ignore();
    f_.Image1_Click();
}

// ---------------------------------------------------------------- reading back

QWidget* JanelaTabuleiro::Controle_(const QString& nome) const {
    return palco_->findChild<QWidget*>(nome);
}

QString JanelaTabuleiro::Texto(const QString& controle) const {
    if (auto* l = palco_->findChild<QLabel*>(controle)) return l->text();
    if (auto* r = palco_->findChild<Rotulo*>(controle)) return r->Texto();
    if (auto* t = palco_->findChild<QTextEdit*>(controle)) return t->toPlainText();
    if (auto* t = palco_->findChild<QLineEdit*>(controle)) return t->text();
    return {};
}

bool JanelaTabuleiro::Visivel(const QString& controle) const {
    if (auto* w = palco_->findChild<QWidget*>(controle)) return !w->isHidden();
    return false;
}

} // namespace velmora::ui
