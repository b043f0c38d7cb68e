#include "ui/janelatabuleiro.h"

#include "core/registros.h"
#include "store/configuracao.h"
#include "store/placar.h"
#include "store/recordes.h"
#include "ui/ambiente.h"
#include "ui/barratitulo.h"
#include "ui/caixas.h"
#include "ui/controlesessao.h"
#include "ui/desenhos.h"
#include "ui/filtrapalavroes.h"
#include "ui/frmopcoes.h"
#include "ui/frmrecordes.h"
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

const char* NomeFase(int fase) {
    static const char* const nomes[] = {"",
                                        "Primeiro oponente",
                                        "Segundo oponente",
                                        "Terceiro oponente",
                                        "Quarto oponente",
                                        "Oitavas de Final",
                                        "Quartas de Final",
                                        "Semi Final",
                                        "Final"};
    return fase >= 1 && fase <= 8 ? nomes[fase] : "";
}

const char* TextoNivel(int nivel) {
    switch (nivel) {
    case 1:
        return "(Iniciante)";
    case 2:
        return "(Amador)";
    case 3:
        return "(Intermediário)";
    case 4:
        return "(Experiente)";
    case 5:
        return "(Profissional)";
    default:
        return "";
    }
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

JanelaTabuleiro::JanelaTabuleiro(Contexto& ctx, const AmbienteUi& ambiente, Configuracao& opcoes,
                                 QWidget* pai)
    : QWidget(pai, Qt::Window | Qt::FramelessWindowHint), ctx_(ctx), amb_(ambiente),
      opcoes_(opcoes) {
    setObjectName("Form1");
    setWindowTitle("Velmora Ace");
    setMinimumSize(LarguraPalco, AlturaPalco);
    resize(LarguraPalco, AlturaPalco);
    Monta();

    tmr.setInterval(5000);
    tmr.setSingleShot(true);
    connect(&tmr, &QTimer::timeout, this, [this] {
        ctx_.painel.lbMsg.Texto.clear();
        msgVista_.clear();
        Atualiza();
    });
    Timer1.setInterval(300);
    connect(&Timer1, &QTimer::timeout, this, [this] {
        if (++tiquesTimer1_ == 1) {
            Text4->setStyleSheet("QTextEdit { color: #800000; }");
        } else {
            Text4->setStyleSheet(QString());
            Timer1.stop();
        }
    });
    TimerSair.setInterval(300);
    TimerSair.setSingleShot(true);
    connect(&TimerSair, &QTimer::timeout, this, &JanelaTabuleiro::Descarrega);

    LimpaPlacar();
    Text3->clear();
    Text4->clear();
    Atualiza();
}

JanelaTabuleiro::~JanelaTabuleiro() = default;

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
    for (int i = 1; i <= 3; ++i) {
        ImgCT[i] = new BotaoIcone(ct[i].first, Qt::white, ct[i].second, Image3);
        ImgCT[i]->setObjectName(QString("ImgCT_%1").arg(i));
        ImgCT[i]->setFixedSize(30, 30);
        ImgCT[i]->move(LarguraPalco - 32 * (4 - i), 0);
    }
    connect(ImgCT[1], &BotaoIcone::clicado, this, [this] { showMinimized(); });
    connect(ImgCT[2], &BotaoIcone::clicado, this, &JanelaTabuleiro::TelaCheiaClick);
    connect(ImgCT[3], &BotaoIcone::clicado, this, &JanelaTabuleiro::FechaClick);

    // the board and what stands over it and below it
    VistaTabuleiro_ = new VistaTabuleiro(ctx_.painel, palco_);
    VistaTabuleiro_->setObjectName("imgpd");
    VistaTabuleiro_->setGeometry(XTab, YTab, 8 * Lado, 8 * Lado);
    connect(VistaTabuleiro_, &VistaTabuleiro::casaPressionada, this,
            &JanelaTabuleiro::imgpd_MouseDown);
    connect(VistaTabuleiro_, &VistaTabuleiro::casaDuploClique, this,
            &JanelaTabuleiro::imgpd_DblClick);

    Label27 =
        Rotulo_(palco_, "Label27", QRect(XTab + 40, YTab + 8 * Lado / 2 - 45, 8 * Lado - 80, 90),
                26, true, Qt::AlignCenter);
    Label27->setWordWrap(true);
    Label27->setStyleSheet("QLabel { color: white; background: rgba(20, 30, 45, 200); "
                           "border: 2px solid #C88A22; border-radius: 10px; }");
    Label27->hide();

    const int yBaixo = YTab + 8 * Lado + 6;
    lbMsg = Rotulo_(palco_, "lbMsg", QRect(XTab, yBaixo, 300, 24), 15, true);
    lbMsg->setStyleSheet("QLabel { color: #8B1A1A; }");
    lbSide = Rotulo_(palco_, "lbSide", QRect(XTab + 306, yBaixo + 6, 12, 12));
    lbYMM = Rotulo_(palco_, "lbYMM", QRect(XTab + 322, yBaixo, 96, 24), 12);
    lbMoves = Rotulo_(palco_, "lbMoves", QRect(XTab + 418, yBaixo, 94, 24), 12, true);
    lbRelatorio = Rotulo_(palco_, "lbRelatorio", QRect(XTab, yBaixo + 24, 8 * Lado, 18), 11);
    lbRelatorio->setStyleSheet("QLabel { color: #505050; }");

    // the players' panel: the opponent at the top, the local player at the bottom
    auto cartao = [this](int lado, int y) {
        auto* fundo = new QWidget(palco_);
        fundo->setObjectName(QString("cartao%1").arg(lado));
        fundo->setGeometry(XDir, y, LDir, 92);
        fundo->setStyleSheet(QString("QWidget#cartao%1 { background: #F7F4E8; border: 1px "
                                     "solid #B9B29A; border-radius: 8px; }")
                                 .arg(lado));
        Imglamp[static_cast<std::size_t>(lado - 1)] = new Lampada(fundo);
        Imglamp[static_cast<std::size_t>(lado - 1)]->setObjectName(
            QString("Imglamp_%1").arg(lado - 1));
        Imglamp[static_cast<std::size_t>(lado - 1)]->setGeometry(8, 9, 20, 20);
        LbNome[lado] =
            Rotulo_(fundo, QString("LbNome_%1").arg(lado), QRect(34, 6, 200, 24), 16, true);
        lbnivel[lado] = Rotulo_(fundo, QString("lbnivel_%1").arg(lado), QRect(34, 30, 130, 18), 12);
        Estrelas[lado] = new Insignias(fundo);
        Estrelas[lado]->setObjectName(QString("LBEstrelas%1").arg(lado));
        Estrelas[lado]->setGeometry(150, 30, 84, 16);
        Rotulo_(fundo, QString("rotuloVitorias%1").arg(lado), QRect(10, 52, 64, 18), 12)
            ->setText("Vitórias:");
        LbPT[lado] = Rotulo_(fundo, QString("LbPT%1").arg(lado), QRect(74, 52, 40, 18), 13, true);
        Rotulo_(fundo, QString("rotuloPecas%1").arg(lado), QRect(124, 52, 50, 18), 12)
            ->setText("Peças:");
        QLabel* pecas =
            Rotulo_(fundo, lado == 1 ? "Label2" : "Label3", QRect(174, 52, 40, 18), 13, true);
        (lado == 1 ? Label2 : Label3) = pecas;
        LbNV[lado] = Rotulo_(fundo, QString("LbNV_%1").arg(lado), QRect(164, 6, 70, 18), 11);
        LbNV[lado]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        PicCrono[lado] = new BarraRelogio(fundo);
        PicCrono[lado]->setObjectName(QString("PicCrono_%1").arg(lado));
        PicCrono[lado]->setGeometry(10, 76, LDir - 20, 8);
        PicCrono[lado]->hide();
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
    Label20 = Rotulo_(palco_, "Label20", QRect(XDir, y, LDir, 20), 12);
    Label20->setStyleSheet("QLabel { color: #5A4A2A; }");
    y += 24;
    historico_ = new QWidget(palco_);
    historico_->setObjectName("historico");
    historico_->setGeometry(XDir, y, LDir, 34);
    const std::array<std::pair<Icone, const char*>, 4> hist = {
        {{Icone::Primeira, "Primeira jogada"},
         {Icone::Anterior, "Voltar uma jogada"},
         {Icone::Proxima, "Avançar uma jogada"},
         {Icone::Ultima, "Última jogada"}}};
    for (int i = 0; i < 4; ++i) {
        Image6[static_cast<std::size_t>(i)] =
            new BotaoIcone(hist[static_cast<std::size_t>(i)].first, paleta::Barra,
                           hist[static_cast<std::size_t>(i)].second, historico_);
        BotaoIcone* b = Image6[static_cast<std::size_t>(i)];
        b->setObjectName(QString("Image6_%1").arg(i));
        b->DefineDuploComoClique(true);
        b->move(i < 2 ? i * 36 : LDir - (4 - i) * 36, 0);
        connect(b, &BotaoIcone::clicado, this, [this, i] { Image6_Click(i); });
    }
    Label10 =
        Rotulo_(historico_, "Label10", QRect(72, 0, LDir - 144, 34), 15, true, Qt::AlignCenter);

    // the chat of a connected game stands where the history stands off-line
    Text4 = new QTextEdit(palco_);
    Text4->setObjectName("Text4");
    Text4->setReadOnly(true);
    Text4->setGeometry(XDir, YTab + 150, LDir, 140);
    Text3 = new QLineEdit(palco_);
    Text3->setObjectName("Text3");
    Text3->setGeometry(XDir, YTab + 294, LDir - 70, 26);
    Text3->installEventFilter(this);
    Label25 = new Rotulo("Enviar", palco_);
    Label25->setObjectName("Label25");
    Label25->setGeometry(XDir + LDir - 66, YTab + 294, 66, 26);
    connect(Label25, &Rotulo::clicado, this, &JanelaTabuleiro::Label25_Click);
    Image8 = Label25;

    // the buttons
    y = YTab + 212;
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
    Label6->setGeometry(XDir, y, LDir / 2 - 3, 30);
    Label7->setGeometry(XDir + LDir / 2 + 3, y, LDir / 2 - 3, 30);
    Label22->setGeometry(XDir, y + 36, LDir / 2 - 3, 30);
    Label24->setGeometry(XDir + LDir / 2 + 3, y + 36, LDir / 2 - 3, 30);
    Label26->setGeometry(XDir, y + 72, LDir, 30);
    connect(Label6, &Rotulo::clicado, this, &JanelaTabuleiro::Label6_Click);
    connect(Label7, &Rotulo::clicado, this, &JanelaTabuleiro::Label7_Click);
    connect(Label22, &Rotulo::clicado, this, &JanelaTabuleiro::Label22_Click);
    connect(Label24, &Rotulo::clicado, this, &JanelaTabuleiro::Label24_Click);
    connect(Label26, &Rotulo::clicado, this, &JanelaTabuleiro::Label26_Click);

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
    connect(Image7, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image7_Click);
    connect(Image12, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image12_Click);
    connect(Image13, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image13_Click);
    connect(Image4, &BotaoIcone::clicado, this, [this] {
        if (abreSobre) abreSobre(this);
    });
    connect(Image14, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image14_Click);
    connect(Image15, &BotaoIcone::clicado, this, &JanelaTabuleiro::Image15_Click);

    // the hidden aid
    Image9 = new BotaoIcone(Icone::Torneio, QColor(0xC8, 0xBE, 0xA0), "", palco_);
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

void JanelaTabuleiro::SincronizaRotulo(QLabel* r, const Controle& c) {
    const QString t = QString::fromStdString(c.Texto);
    if (r->text() != t) r->setText(t);
    r->setVisible(c.Visivel);
}

void JanelaTabuleiro::SincronizaBotao(Rotulo* r, const Controle& c) {
    r->DefineTexto(QString::fromStdString(c.Texto.empty() ? r->Texto().toStdString() : c.Texto));
    r->setEnabled(c.Habilitado);
    r->DefineCinza(c.Cor == cor::Cinza);
}

void JanelaTabuleiro::Atualiza() {
    Painel& p = ctx_.painel;
    VistaTabuleiro_->DefineEspelhado(ctx_.Tipo_c == "Cliente");
    VistaTabuleiro_->update();

    SincronizaRotulo(Label27, p.Label27);
    if (p.lbMsg.Texto != msgVista_) {
        // each change of the message line gives it five more seconds
        msgVista_ = p.lbMsg.Texto;
        if (!msgVista_.empty())
            tmr.start();
        else
            tmr.stop();
    }
    lbMsg->setText(QString::fromStdString(p.lbMsg.Texto));
    lbYMM->setText(QString::fromStdString(p.lbYMM.Texto));
    lbMoves->setText(QString::fromStdString(p.lbMoves.Texto));
    lbMoves->setStyleSheet(QString("QLabel { color: %1; }").arg(CorDe(p.lbMoves.Cor).name()));
    lbSide->setStyleSheet(
        QString("QLabel { background: %1; border-radius: 6px; }").arg(CorDe(p.lbSide.Cor).name()));
    QStringList relatorio;
    for (const Controle* c : {&p.lbValue, &p.lbPly, &p.lbCutoff, &p.lbPosns})
        if (!c->Texto.empty()) relatorio << QString::fromStdString(c->Texto);
    lbRelatorio->setText(relatorio.join("   "));

    SincronizaRotulo(Label2, p.Label2);
    SincronizaRotulo(Label3, p.Label3);
    Label10->setText(QString::fromStdString(p.Label10.Texto));
    Label12->setText(QString::fromStdString(p.Label12.Texto));
    Label18->setText(QString::fromStdString(p.Label18.Texto));
    Imglamp[0]->Acende(p.Imglamp[0].Visivel);
    Imglamp[1]->Acende(p.Imglamp[1].Visivel);

    Label22->setEnabled(p.Label22.Habilitado);
    Label22->DefineCinza(p.Label22.Cor == cor::Cinza);
    Label24->setEnabled(p.Label24.Habilitado);
    Label24->DefineCinza(p.Label24.Cor == cor::Cinza);
    if (!p.Label26.Texto.empty()) Label26->DefineTexto(QString::fromStdString(p.Label26.Texto));
    Image7->setEnabled(p.Image7.Habilitado);
    if (p.Ocupado) {
        if (!testAttribute(Qt::WA_SetCursor) || cursor().shape() != Qt::BusyCursor)
            setCursor(Qt::BusyCursor);
    } else if (testAttribute(Qt::WA_SetCursor)) {
        unsetCursor();
    }

    AtualizaPlacar();
    exibevez();
    AjeitaForm();
}

void JanelaTabuleiro::LimpaPlacar() {
    for (int lado = 1; lado <= 2; ++lado) {
        Estrelas[lado]->Define(0, false, false);
        LbNome[lado]->clear();
        lbnivel[lado]->clear();
        LbNV[lado]->clear();
    }
}

void JanelaTabuleiro::AtualizaPlacar() {
    for (int lado = 1; lado <= 2; ++lado) {
        const QString nome =
            QString::fromStdString(ctx_.Jogador[static_cast<std::size_t>(lado)].Nome);
        if (LbNome[lado]->text() != nome) {
            QFont f = LbNome[lado]->font();
            f.setPixelSize(QFontMetrics(f).horizontalAdvance(nome) > LbNome[lado]->width() ? 12
                                                                                           : 16);
            LbNome[lado]->setFont(f);
            LbNome[lado]->setText(nome);
        }
        LbPT[lado]->setText(QString::number(ctx_.Jogador[static_cast<std::size_t>(lado)].Vitorias));
        LbPT[lado]->setVisible(ctx_.Game.Modo != 2);
        palco_->findChild<QLabel*>(QString("rotuloVitorias%1").arg(lado))
            ->setVisible(ctx_.Game.Modo != 2);
        MostraNivel(lado);
    }
    Label20->setText(QString("Regra: ") + NomeRegra(ctx_.Game.Regra));
}

void JanelaTabuleiro::MostraNivel(int lado) {
    const auto& j = ctx_.Jogador[static_cast<std::size_t>(lado)];
    if (ctx_.Game.Conectado) {
        Estrelas[lado]->Define(0, false, false);
        lbnivel[lado]->clear();
        if (!ctx_.Game.Conectado || ctx_.Game.Modo != 4) return;
        const long pts = j.Pontos;
        const int estrelas = pts >= 5000   ? 5
                             : pts >= 4000 ? 4
                             : pts >= 3000 ? 3
                             : pts >= 2000 ? 2
                             : pts >= 1500 ? 1
                                           : 0;
        Estrelas[lado]->Define(estrelas, pts >= 5000, pts >= 10000);
        return;
    }
    Estrelas[lado]->Define(0, false, false);
    if (lado == 2 && ctx_.Game.Modo == 2) {
        lbnivel[2]->setText(NomeFase(j.Nivel));
    } else if (ctx_.Game.Tipo.size() == 2 &&
               ctx_.Game.Tipo[static_cast<std::size_t>(lado - 1)] == 'C') {
        lbnivel[lado]->setText(TextoNivel(j.Nivel));
    } else {
        lbnivel[lado]->clear();
    }
}

void JanelaTabuleiro::exibevez() {
    const bool segundo = ctx_.painel.PicVezDois.Visivel;
    const bool hh = ctx_.Game.Tipo == "HH";
    const bool conectado = ctx_.Game.Conectado;
    QString t;
    if (!segundo)
        t = (hh && !conectado) ? QString::fromStdString(ctx_.Jogador[1].Nome) : "Sua vez";
    else if (hh && conectado)
        t = "Aguarde...";
    else
        t = QString::fromStdString(ctx_.Jogador[2].Nome);
    LbVez->setText(t);
}

void JanelaTabuleiro::AjeitaForm() {
    const bool c = ctx_.Game.Conectado;
    for (QWidget* w : {static_cast<QWidget*>(Label22), static_cast<QWidget*>(Label24),
                       static_cast<QWidget*>(Label26), Image8, static_cast<QWidget*>(Text3),
                       static_cast<QWidget*>(Text4)})
        w->setVisible(c);
    historico_->setVisible(!c);
    Label20->setVisible(!c);
}

void JanelaTabuleiro::DefineRelogio(int i, double fracao, bool visivel, QColor cor) {
    if (i < 1 || i > 2) return;
    PicCrono[i]->Define(fracao, std::move(cor));
    PicCrono[i]->setVisible(visivel);
}

void JanelaTabuleiro::DefineLbNV(int lado, const QString& texto) {
    if (lado >= 1 && lado <= 2) LbNV[lado]->setText(texto);
}

// ---------------------------------------------------------------- the clicks

bool JanelaTabuleiro::Pergunta(const QString& texto, const QString& titulo) {
    return amb_.caixas.Pergunta(this, texto, titulo);
}

void JanelaTabuleiro::Toca(const std::string& nome) {
    amb_.Som(nome);
}

void JanelaTabuleiro::imgpd_MouseDown(int casa, Qt::MouseButton botao) {
    RegistroJogo& g = ctx_.Game;
    if (g.Conectado) {
        if (botao == Qt::RightButton && casa == 89 && ctx_.Anterior == 12 && controle_)
            controle_->EnviaPeer(">>Informa:V--");
        ctx_.Anterior = casa;
    }
    if (!g.AceitaClique) return;
    if (g.Conectado && !ctx_.Minhavez()) return;
    Clicado_ = casa;
    if (!g.Fim || g.Conectado) {
        const bool contraCpu = g.Tipo.find('C') != std::string::npos && !g.Conectado;
        if (contraCpu && ctx_.LadoCarregado == 2) {
            Toca("talk.wav");
            ctx_.painel.lbMsg.Texto =
                "Você deve voltar ou avançar uma jogada para que seja a sua vez de jogar";
        } else {
            Label28->setText("cheat");
            ctx_.Clique(casa);
        }
        Atualiza();
        return;
    }
    if (Pergunta("O Jogo está concluído.\rDeseja iniciar um novo jogo?", "Pergunta") && controle_)
        controle_->NovoJogoAposFim();
}

void JanelaTabuleiro::imgpd_DblClick(int casa) {
    if (casa != 89 || Label28->isHidden()) return;
    // Off-line the computer would have no turn to play for the player, and the game would
    // stand still: the aid works only in a connected game, on the local player's turn.
    if (ctx_.Game.Conectado && ctx_.Minhavez()) ctx_.Game.JogaPorMim = true;
}

void JanelaTabuleiro::Label6_Click() {
    Toca("Click.wav");
    cancelarDoDialogo_ = "Cancelar";
    if (controle_) controle_->InitGame();
}

void JanelaTabuleiro::Image7_Click() {
    if (!Image7->isEnabled()) return;
    Toca("Click.wav");
    if (ctx_.Game.Conectado) {
        Label26_Click();
        return;
    }
    cancelarDoDialogo_ = "Sair";
    if (ctx_.Game.Modo != 4 && !ctx_.Game.Fim &&
        !Pergunta("Deseja sair do jogo atual e iniciar um novo jogo", "Pergunta"))
        return;
    if (controle_) controle_->InitGame();
}

void JanelaTabuleiro::Label7_Click() {
    if (controle_) controle_->Reiniciar();
}

void JanelaTabuleiro::Label22_Click() {
    const Painel& p = ctx_.painel;
    if (p.Ocupado || ctx_.Game.Fim || p.Label22.Cor == cor::Cinza) return;
    Label7_Click();
}

void JanelaTabuleiro::Label24_Click() {
    if (ctx_.Game.Fim || ctx_.painel.Label24.Cor == cor::Cinza) return;
    if (controle_) controle_->SugerirEmpate();
}

void JanelaTabuleiro::Label26_Click() {
    if (controle_) controle_->Desconectar();
}

void JanelaTabuleiro::Image12_Click() {
    if (ctx_.Game.Conectado) {
        Toca("talk.wav");
        return;
    }
    const std::size_t cpu = !ctx_.Game.Tipo.empty() && ctx_.Game.Tipo[0] == 'C' ? 1 : 2;
    int posicao = 0;
    const Recordes recordes;
    const Placar placar;
    FrmMostraRecords viewer(
        recordes, placar, ctx_.Jogador[cpu].Nivel, posicao,
        [this](const std::string& s) { Toca(s); }, this);
    viewer.exec();
}

void JanelaTabuleiro::Image13_Click() {
    auto opc = std::make_unique<FrmOpc>(
        opcoes_, amb_.reg, amb_.caixas, [] {}, this);
    connect(opc.get(), &QDialog::accepted, this, [this] {
        if (controle_) controle_->OpcoesMudaram();
    });
    if (ctx_.Game.Conectado) {
        opc->setAttribute(Qt::WA_DeleteOnClose);
        opc.release()->show(); // the window owns it, and it deletes itself on closing
        return;
    }
    opc->exec();
}

void JanelaTabuleiro::Image14_Click() {
    amb_.Abre(amb_.Ajuda());
}

void JanelaTabuleiro::Image15_Click() {
    amb_.Abre(QUrl(EnderecoServico() + "/html/ranking_velmora.php"));
}

void JanelaTabuleiro::Image6_Click(int i) {
    ctx_.Image6_Click(i);
    Atualiza();
}

void JanelaTabuleiro::Image9_RightClick() {
    Label28->show();
}

void JanelaTabuleiro::FechaClick() {
    if (ctx_.Game.Conectado) {
        if (!ctx_.painel.Ocupado) Label26_Click();
        return;
    }
    if (!Pergunta("Deseja fechar o Velmora Ace?", "Velmora Ace")) return;
    if (telaCheia_) {
        telaCheia_ = false;
        showNormal();
        TimerSair.start();
        return;
    }
    Descarrega();
}

void JanelaTabuleiro::TelaCheiaClick() {
    if (!telaCheia_) {
        telaCheia_ = true;
        showFullScreen();
        return;
    }
    telaCheia_ = false;
    showNormal();
    for (int i = 0; i < 4; ++i) QCoreApplication::processEvents();
    if (const QScreen* tela = screen()) {
        const QRect area = tela->availableGeometry();
        move(area.center() - QPoint(width() / 2, height() / 2));
    }
}

void JanelaTabuleiro::Descarrega() {
    if (encerrada_) return;
    encerrada_ = true;
    if (telaCheia_) {
        telaCheia_ = false;
        showNormal();
    }
    if (controle_) controle_->Encerra();
    // every loop that waits sees the game end and returns to the main loop, which ends
    ctx_.Game.Fim = true;
    ctx_.Game.SairPlay = true;
    ctx_.StartInitGame = true;
    ctx_.SaidoMovePedra = true;
    close();
    QApplication::closeAllWindows();
    QCoreApplication::exit(0);
}

// ---------------------------------------------------------------- chat

QString JanelaTabuleiro::LinhaDeChat(const QString& nome, const QString& texto) {
    if (texto.size() >= 20) return nome + " diz:\n" + texto;
    return nome + " diz:   " + texto;
}

void JanelaTabuleiro::PiscaText4() {
    tiquesTimer1_ = 0;
    Timer1.start();
}

void JanelaTabuleiro::Label25_Click() {
    const bool ativo = opcoes_.HabilitaChat && (ctx_.Jogador[2].Lingua == ctx_.Jogador[1].Lingua ||
                                                opcoes_.HabilitaChatIngles);
    if (!ativo) {
        Text4->setPlainText(Text4->toPlainText() +
                            "\n\nVocê deve ativar o 'Bate papo' em 'Opções' para enviar mensagens");
        PiscaText4();
        Toca("talk.wav");
        return;
    }
    const QString texto = FiltraPalavroes(Text3->text());
    if (texto.isEmpty()) return;
    if (controle_) controle_->EnviaPeer("Mensagem:" + texto);
    Text4->setPlainText(Text4->toPlainText() + "\n\n" +
                        LinhaDeChat(QString::fromStdString(ctx_.Jogador[1].Nome), texto));
    Text3->clear();
    Text4->moveCursor(QTextCursor::End);
    Text3->setFocus();
}

// ---------------------------------------------------------------- keys, activation, closing

void JanelaTabuleiro::keyPressEvent(QKeyEvent* e) {
    if (ctx_.Game.Conectado) {
        Text3->setFocus();
        return;
    }
    if (e->key() == Qt::Key_Escape) {
        if (Pergunta("Deseja fechar o Velmora Ace?", "Velmora Ace")) FechaClick();
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
    for (int i = 1; i <= 3; ++i) ImgCT[i]->DefineRealce(false);
    QWidget::mouseMoveEvent(e);
}

bool JanelaTabuleiro::event(QEvent* e) {
    if (e->type() == QEvent::WindowActivate && !ativado_) {
        ativado_ = true;
        // the body of the first activation runs once the activation itself is over
        if (aoPrimeiraAtivacao) QTimer::singleShot(0, this, [this] { aoPrimeiraAtivacao(); });
    }
    return QWidget::event(e);
}

void JanelaTabuleiro::closeEvent(QCloseEvent* e) {
    if (encerrada_) {
        e->accept();
        return;
    }
    e->ignore();
    FechaClick();
}

// ---------------------------------------------------------------- reading back

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
