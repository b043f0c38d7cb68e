#include "ui/form8.h"

#include "ui/barratitulo.h"
#include "ui/caixas.h"
#include "ui/estilo.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>

namespace velmora::ui {

namespace {

QString Q(const std::string& s) {
    return TextoParaTela(QString::fromStdString(s));
}

// The strip in which a small piece slides from end to end while the lobby works.
class Faixa : public QWidget {
  public:
    Faixa(const Form8& lobby, QWidget* pai) : QWidget(pai), lobby_(lobby) { setMinimumHeight(22); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0xE8, 0xE2, 0xD0));
        p.drawRoundedRect(rect().adjusted(0, 6, 0, -6), 5, 5);
        const double frac =
            std::clamp(static_cast<double>(lobby_.PosicaoImagem) / Form8::LarguraFaixa, 0.0, 1.0);
        const int lado = height();
        const int x = static_cast<int>(frac * (width() - lado));
        p.setBrush(QColor(0x8B, 0x1A, 0x1A));
        p.drawEllipse(QRect(x, 0, lado, lado).adjusted(2, 2, -2, -2));
        p.setBrush(QColor(0xC0, 0x50, 0x40));
        p.drawEllipse(QRect(x, 0, lado, lado).adjusted(6, 6, -6, -6));
    }

  private:
    const Form8& lobby_;
};

} // namespace

JanelaForm8::JanelaForm8(Form1& f, ServicoOnline& servico, TestePorta& porta, LigacaoLobby& ligacao,
                         Caixas& caixas, std::vector<QPointer<QWidget>> janelas, QWidget* pai)
    : QDialog(pai), Label4(new QLabel(this)), LbComunica(new QLabel(this)),
      Label8(new QLabel(this)), Label2(new Rotulo("", this)),
      Label7(new Rotulo("Clique aqui para jogar como visitante", this)),
      Label6(new Rotulo("Aguardar minimizado", this)), Command1(new QPushButton("Cancelar", this)),
      caixas_(caixas), outras_(std::move(janelas)) {
    setObjectName("Form8");
    setWindowTitle("Velmora Ace - On-line");
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    lobby_ = std::make_unique<Form8>(f, servico, porta, ligacao, *this);
    faixa_ = new Faixa(*lobby_, this);
    Label4->setObjectName("Label4");
    LbComunica->setObjectName("LbComunica");
    Label8->setObjectName("Label8");
    Label2->setObjectName("Label2");
    Label7->setObjectName("Label7");
    Label6->setObjectName("Label6");
    Command1->setObjectName("Command1");
    for (QLabel* l : {Label4, LbComunica}) {
        l->setWordWrap(true);
        l->setAlignment(Qt::AlignCenter);
    }
    QFont grande = Label4->font();
    grande.setPointSizeF(grande.pointSizeF() * 1.15);
    Label4->setFont(grande);
    Label4->setMinimumHeight(110);
    // the program's one look, with the port lines quieter than the status
    DaEstilo(this, "QLabel#LbComunica { color: #5a4a2a; } QLabel#Label8 { color: #6b6b6b; }");
    bandeja_.setIcon(QApplication::windowIcon());

    auto* links = new QHBoxLayout;
    links->addWidget(Label6);
    links->addStretch();
    links->addWidget(Label8);
    auto* botoes = new QHBoxLayout;
    botoes->addWidget(Label2);
    botoes->addWidget(Label7);
    botoes->addStretch();
    botoes->addWidget(Command1);
    auto* tudo = new QVBoxLayout(this);
    tudo->addWidget(faixa_);
    tudo->addWidget(Label4, 1);
    tudo->addWidget(LbComunica);
    tudo->addLayout(links);
    tudo->addLayout(botoes);
    resize(480, 300);

    connect(Command1, &QPushButton::clicked, this, [this] { lobby_->Command1_Click(); });
    connect(Label2, &Rotulo::clicado, this, [this] { lobby_->Label2_Click(); });
    connect(Label7, &Rotulo::clicado, this, [this] { lobby_->Label7_Click(); });
    connect(Label6, &Rotulo::clicado, this, [this] { lobby_->Label6_Click(); });
    connect(&bandeja_, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason r) {
                if (r == QSystemTrayIcon::DoubleClick || r == QSystemTrayIcon::Trigger)
                    RetornaForms();
            });
    // The sliding picture and the port follow Timer3 of the logic
    connect(&lobby_->Timer3, &QTimer::timeout, faixa_, qOverload<>(&QWidget::update));
    lobby_->Form_Load();
    Redesenha();
}

JanelaForm8::~JanelaForm8() {
    bandeja_.hide();
    lobby_.reset();
}

void JanelaForm8::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    if (ativado_) return;
    ativado_ = true;
    if (lobby_->Descarregado) {
        QTimer::singleShot(0, this, [this] { done(QDialog::Rejected); });
        return;
    }
    QTimer::singleShot(0, this, [this] { lobby_->Form_Activate(); });
}

void JanelaForm8::closeEvent(QCloseEvent* e) {
    // The window closes only through the lobby's own ways out
    if (!lobby_->Descarregado) {
        e->ignore();
        lobby_->Command1_Click();
        return;
    }
    QDialog::closeEvent(e);
}

void JanelaForm8::reject() {
    if (!lobby_->Descarregado) {
        lobby_->Command1_Click();
        return;
    }
    QDialog::reject();
}

void JanelaForm8::Redesenha() {
    const Form8& l = *lobby_;
    Label4->setText(Q(l.Label4.Texto));
    LbComunica->setText(Q(l.LbComunica.Texto));
    Label8->setText(l.Label8.Texto.empty() || l.Label8.Texto == "0"
                        ? QString()
                        : "Porta " + QString::fromStdString(l.Label8.Texto));
    Label2->DefineTexto(QString::fromStdString(l.Label2.Texto));
    Label2->setVisible(l.Label2.Visivel && !l.Label2.Texto.empty());
    Label7->setVisible(l.Label7.Visivel);
    Label6->setVisible(l.Label6.Visivel);
    Command1->setText(QString::fromStdString(l.Command1.Texto));
    Command1->setEnabled(l.Command1.Habilitado);
}

void JanelaForm8::Mensagem(const std::string& texto) {
    caixas_.Mensagem(this, QString::fromStdString(texto), "Velmora Ace");
}

bool JanelaForm8::Pergunta(const std::string& texto) {
    return caixas_.Pergunta(this, QString::fromStdString(texto), "Velmora Ace");
}

void JanelaForm8::Ocupado(bool ocupado) {
    if (ocupado)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void JanelaForm8::Descarrega() {
    QTimer::singleShot(0, this, [this] { done(QDialog::Rejected); });
}

void JanelaForm8::TocaSom(const std::string& nome) {
    (void)nome; // the window has no sound of its own; the board window's player plays it
}

void JanelaForm8::AbrePagina(const std::string& url) {
    QDesktopServices::openUrl(QUrl(QString::fromStdString(url)));
}

void JanelaForm8::AbreAtualizacao(const std::string& link) {
    if (Atualiza) Atualiza(link);
}

void JanelaForm8::BandejaAdiciona(const std::string& tip) {
    bandeja_.setToolTip(QString::fromStdString(tip));
    bandeja_.show();
}

void JanelaForm8::BandejaAviso(const std::string& texto, const std::string& titulo) {
    if (!bandeja_.isVisible()) return;
    bandeja_.showMessage(QString::fromStdString(titulo), Q(texto), QSystemTrayIcon::Information);
}

void JanelaForm8::BandejaRemove() {
    bandeja_.hide();
}

std::vector<QWidget*> JanelaForm8::Janelas() {
    // The lobby, the new game dialog and the board window, in that order
    std::vector<QWidget*> w{this};
    for (auto& o : outras_)
        if (o) w.push_back(o.data());
    return w;
}

void JanelaForm8::EscondeJanelas() {
    PosicaoJanelas.clear();
    const int altura = screen() ? screen()->geometry().height() : 2000;
    for (QWidget* w : Janelas()) {
        PosicaoJanelas.push_back(w->pos());
        w->move(w->x(), 2 * altura + 1);
    }
}

bool JanelaForm8::Escondida() {
    const int altura = screen() ? screen()->geometry().height() : 2000;
    const auto w = Janelas();
    return w.back()->y() >= altura;
}

void JanelaForm8::RetornaForms() {
    BandejaRemove();
    const int altura = screen() ? screen()->geometry().height() : 2000;
    const auto w = Janelas();
    if (w.front()->y() < altura || w.back()->y() < altura) return;
    for (std::size_t i = 0; i < w.size() && i < PosicaoJanelas.size(); ++i)
        w[i]->move(PosicaoJanelas[i]);
}

void JanelaForm8::CentraJanelas() {
    const QRect tela = screen() ? screen()->availableGeometry() : QRect(0, 0, 1024, 768);
    for (QWidget* w : Janelas())
        if (w != this) w->move(w->x(), tela.y() + (tela.height() - w->height()) / 2);
}

} // namespace velmora::ui
