#include "ui/telaqt.h"

#include "net/dl.h"
#include "net/getconteudo.h"
#include "net/modsocketmaster.h"
#include "service/endereco.h"
#include "session/form1.h"
#include "ui/atualizacao.h"
#include "ui/caixas.h"
#include "ui/frmcadastro.h"
#include "ui/frmnewgame.h"
#include "ui/frmopcoes.h"
#include "ui/frmporta.h"
#include "ui/frmrecordes.h"
#include "ui/frmsobre.h"
#include "ui/frmsplash.h"
#include "ui/janelatabuleiro.h"
#include "ui/redeqt.h"
#include "ui/som/tocador.h"

#include <QApplication>
#include <QFontMetrics>
#include <QTimer>

namespace velmora::ui {

namespace {
constexpr int TwipsPorPixel = 15;
// The names' labels of the board window hold 150 pixels, where the session's limit is
// 1500 twips: a name is measured in the label's own font and scaled to that limit.
constexpr int EscalaDoNome = 10;
} // namespace

TelaQt::TelaQt(Caixas& caixas, Tocador& tocador, std::function<void(const QUrl&)> abreUrl)
    : caixas_(caixas), tocador_(tocador), abreUrl_(std::move(abreUrl)) {}

TelaQt::~TelaQt() {
    Libera();
}

QWidget* TelaQt::Pai() const {
    return janela_.get();
}

void TelaQt::Liga(Form1& form1) {
    if (janela_) return;
    form1_ = &form1;
    amb_ = std::make_unique<AmbienteUi>(AmbienteUi{form1.registro(), caixas_,
                                                   [this](const std::string& nome) {
                                                       // the windows' own sounds follow "Tocar Som"
                                                       // as the session's do
                                                       if (form1_ && form1_->config.TocarSom)
                                                           tocador_.TocaSom(nome);
                                                   },
                                                   std::filesystem::path(form1.Programa.CaminhoApp),
                                                   abreUrl_});
    janela_ = std::make_unique<JanelaTabuleiro>(form1, *amb_);
    janela_->aoPrimeiraAtivacao = [this] { form1_->Form_Activate(); };
    janela_->abreSobre = [this](QWidget* pai) { MostraSobre(pai); };
    rede_ = std::make_unique<RedeQt>(form1, *amb_, [this] { return Pai(); });
}

void TelaQt::Libera() {
    if (form1_) form1_->UsaRede(semRede_);
    rede_.reset();
    janela_.reset();
    amb_.reset();
    form1_ = nullptr;
}

void TelaQt::MostraSplash(const std::string& versao) {
    splash_ = std::make_unique<FrmSplash>(QString::fromStdString(versao));
    splash_->show();
    QCoreApplication::processEvents();
}

void TelaQt::EscondeSplash() {
    if (splash_) splash_->hide();
}

void TelaQt::MostraJanela() {
    if (!janela_ && localizaForm1)
        if (Form1* f = localizaForm1()) Liga(*f);
    if (!janela_) return;
    janela_->Atualiza();
    janela_->show();
    janela_->activateWindow();
    if (aoMostrarJanela) aoMostrarJanela(*janela_);
}

void TelaQt::DescarregaSplash() {
    splash_.reset();
}

Retangulo TelaQt::RetanguloDaCasa(int casa) {
    const QRect r = JanelaTabuleiro::RetanguloServidor(casa);
    return {r.top() * TwipsPorPixel, r.left() * TwipsPorPixel, r.width() * TwipsPorPixel,
            r.height() * TwipsPorPixel};
}

int TelaQt::LarguraDoTexto(const std::string& texto, int fonte) {
    QFont f = QApplication::font();
    f.setBold(true);
    f.setPixelSize(fonte * 16 / 9);
    return QFontMetrics(f).horizontalAdvance(QString::fromStdString(texto)) * EscalaDoNome;
}

SaidaDialogo TelaQt::MostraNovoJogo(velmora::FrmNewGame& dialogo) {
    if (!form1_ || !amb_) return SaidaDialogo::Cancelar;
    FrmNewGame janela(*amb_, form1_->config, dialogo, form1_->NaRede, Pai());
    janela.move(Pai() ? Pai()->geometry().center() - QPoint(janela.width() / 2, janela.height() / 2)
                      : janela.pos());
    janela.abreOpcoes = [this](QWidget* pai) {
        FrmOpc opc(
            form1_->config, form1_->registro(), caixas_, [this] { FechaMusica(); }, pai);
        if (opc.exec() == QDialog::Accepted) form1_->ctx.Velocit = form1_->config.Velocit;
    };
    janela.abreSobre = [this](QWidget* pai) { MostraSobre(pai); };
    // "JOGAR" of the on-line and friends tabs: the session opens the lobby
    janela.conectaOnline = [&dialogo](CamposNovoJogo& c) { return dialogo.JOGAR(c); };
    janela.abreCadastro = [this](QWidget* pai) {
        ui::FrmCadastro cadastro(rede_->Servico().pedidos(), form1_->registro(), caixas_,
                                 LeMarcado(form1_->registro(), "Check1"), pai);
        cadastro.exec();
        return cadastro.NickCriado();
    };
    janela.abrePorta = [this](QWidget* pai) {
        ConexaoPeer& peer = rede_->Peer();
        FrmPorta porta(
            rede_->Porta(), form1_->registro(), caixas_,
            peer.WS.Loaded(0) ? peer.WS(0).LocalIP() : std::string(),
            rede_->Servico().pedidos().PaginaRoteador(), [&peer] { peer.FechaSockets(0); }, pai);
        porta.exec();
    };
    if (aoMostrarNovoJogo)
        QTimer::singleShot(0, &janela, [this, &janela] { aoMostrarNovoJogo(janela); });
    janela.exec();
    return janela.Fechado() ? janela.Resultado() : SaidaDialogo::Cancelar;
}

void TelaQt::Mensagem(const std::string& texto, const std::string& titulo) {
    caixas_.Mensagem(Pai(), QString::fromStdString(texto), QString::fromStdString(titulo));
}

bool TelaQt::Pergunta(const std::string& texto, const std::string& titulo) {
    return caixas_.Pergunta(Pai(), QString::fromStdString(texto), QString::fromStdString(titulo));
}

void TelaQt::MostraRecordes(int nivel, int posicao) {
    if (!form1_) return;
    form1_->PosicaoRecord = posicao;
    FrmMostraRecords viewer(
        form1_->recordes(), form1_->placar(), nivel, form1_->PosicaoRecord,
        [this](const std::string& s) {
            if (amb_) amb_->Som(s);
        },
        Pai());
    viewer.exec();
}

void TelaQt::TocaSom(const std::string& nome) {
    tocador_.TocaSom(nome);
}

void TelaQt::TocaMusica(const std::string& nome) {
    if (nome == "Close")
        tocador_.FechaMusica();
    else
        tocador_.TocaMusica(nome);
}

void TelaQt::FechaMusica() {
    tocador_.FechaMusica();
}

void TelaQt::Beep() {
    QApplication::beep();
}

bool TelaQt::TelaCheia() {
    return janela_ && janela_->TelaCheia();
}

void TelaQt::RestauraTela() {
    if (janela_) janela_->RestauraTela();
}

void TelaQt::Redesenha() {
    if (janela_) janela_->Atualiza();
}

void TelaQt::DescarregaFormularios() {
    // the modal dialogs first, so that their loops return, then the windows
    while (QWidget* modal = QApplication::activeModalWidget()) {
        modal->close();
        if (QApplication::activeModalWidget() == modal) break;
    }
    QApplication::closeAllWindows();
}

void TelaQt::EncerraPrograma() {
    if (aoEncerrar)
        aoEncerrar();
    else
        QCoreApplication::exit(0);
}

void TelaQt::MostraSobre(QWidget* pai) {
    auto sobre = std::make_unique<FrmSobre>(VersaoPrograma, pai ? pai : Pai());
    sobre->abreUrl = abreUrl_;
    sobre->enderecoContato = QUrl(QString::fromStdString(Servico()) + "/html/faleconosco.html");
    sobre->getUpdate = [this] {
        dl DL1;
        Busca segunda = getConteudoForm1;
        if (!segunda) {
            if (!wsg_) {
                sockets_ = std::make_unique<modSocketMaster>();
                wsg_ = std::make_unique<ClienteGetConteudo>(*sockets_);
            }
            segunda = [this](const std::string& url, std::int32_t tempo) {
                return wsg_->GetConteudo(url, tempo);
            };
        }
        return GetUpdate([&DL1](const std::string& url,
                                std::int32_t tempo) { return DL1.GetConteudo(url, "Id", tempo); },
                         segunda, Servico(), "Velmora Ace", TemposSobre, VersaoPrograma);
    };
    sobre->respondeUpdate = [this](QWidget* dono, const std::string& resultado) {
        RespondeAtualizacaoSobre(
            resultado, caixas_, dono,
            [this, dono](const OfertaAtualizacao& oferta) { AbreFrmUp(oferta, dono); },
            VersaoPrograma);
    };
    if (form1_ && form1_->ctx.Game.Conectado) {
        // a connected game goes on while the box is open
        sobre->setAttribute(Qt::WA_DeleteOnClose);
        sobre.release()->show(); // its parent, the board window, owns it until it closes
        return;
    }
    sobre->exec();
}

void TelaQt::AbreFrmUp(const OfertaAtualizacao& oferta, QWidget* pai) {
    EntregaAtualizacao entrega =
        entregaAtualizacao ? entregaAtualizacao() : EntregaDoSistema([this] {
            if (form1_)
                form1_->EncerraPrograma();
            else
                EncerraPrograma();
        });
    FrmUp up(caixas_, std::move(entrega), oferta.endereco, oferta.sha256, pai ? pai : Pai());
    if (form1_) up.servico = velmora::EnderecoServico(form1_->registro());
    up.exec();
}

} // namespace velmora::ui

namespace velmora::ui {

std::string TelaQt::Servico() const {
    if (form1_) return velmora::EnderecoServico(form1_->registro());
    return velmora::EnderecoServico();
}

} // namespace velmora::ui
