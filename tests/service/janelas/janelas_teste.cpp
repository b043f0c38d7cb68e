// The on-line windows over their logic: the registration dialog against the fake service,
// the lobby window reaching the relay and cancelled by its button, the port dialog. With
// VELMORA_CAPTURAS set to a folder, each window is saved there as a picture.
#include "../apoio_sessao.h"
#include "service/cadastro.h"
#include "ui/caixas.h"
#include "ui/form8.h"
#include "ui/frmcadastro.h"
#include "ui/frmporta.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTimer>

using namespace velmora;
using namespace velmora::teste;

namespace {

class CaixasNotas : public ui::Caixas {
  public:
    std::vector<std::string> mensagens;
    void Mensagem(QWidget*, const QString& t, const QString&) override {
        mensagens.push_back(t.toStdString());
    }
    bool Pergunta(QWidget*, const QString&, const QString&) override { return false; }
    std::optional<QString> Entrada(QWidget*, const QString&, const QString&) override {
        return std::nullopt;
    }
};

void Captura(QWidget& w, const char* nome) {
    const char* pasta = std::getenv("VELMORA_CAPTURAS");
    if (!pasta) return;
    w.grab().save(QString(pasta) + "/" + nome);
}

class LigacaoRelay : public LigacaoLobby {
  public:
    Form8* lobby = nullptr;
    int fechou = 0;
    void Lobby(Form8* l) override { lobby = l; }
    void CarregaWS(int) override {}
    void FechaSockets(int) override { ++fechou; }
    void FechaWS(int) override {}
    void Conecta(const std::string&, int) override {
        QTimer::singleShot(5, [this] {
            if (lobby && lobby->TentandoServidor) lobby->ConectouServidor();
        });
    }
    bool Escuta(int) override { return true; }
    int PortaEscuta() override { return 2001; }
    std::string EnderecoLocal() override { return "10.0.0.2"; }
};

class Janelas : public CopiaComServico {
  protected:
    CaixasNotas caixas;
};

} // namespace

TEST_F(Janelas, CadastroCriaONickEFecha) {
    Respostas({{"tipo=Cadastro", "Resposta:#OK"}});
    ui::FrmCadastro d(online->pedidos(), form->registro(), caixas, true);
    d.show();
    d.Text1->setText("Nova Jogadora");
    d.Text2->setText("abcd");
    d.Text3->setText("abc");
    Captura(d, "cadastro.png");
    d.Label8->click();
    EXPECT_EQ(caixas.mensagens.back(),
              "A senha não é igual a confirmação. Por favor digite a senha novamente");
    EXPECT_TRUE(d.Text2->text().isEmpty());
    EXPECT_TRUE(d.isVisible());
    d.Text2->setText("abcd");
    d.Text3->setText("abcd");
    d.Label8->click();
    EXPECT_EQ(caixas.mensagens.back(), "Nick cadastrado com sucesso!");
    EXPECT_TRUE(d.NickCriado());
    EXPECT_EQ(d.result(), QDialog::Accepted);
    EXPECT_EQ(PoeNoCombo(form->registro()), std::vector<std::string>{"Nova Jogadora"});
}

TEST_F(Janelas, LobbyChegaAoRelayEOBotaoCancela) {
    Respostas({{"tipo=ta", "OK"},
               {"tipo=Entrar", "Resposta:#ok#2350#8"},
               {"Acao=Parametros", "R**x**n**a**b**porta:2001**tempo:60**TA:30"},
               {"Acao=Server", "IPSERVER#127.0.0.1#7000"}});
    form->ctx.Game.Modo = 4;
    form->ctx.Jogador[1].Nome = "ana";
    form->SenhaDigitada = "1234";
    LigacaoRelay ligacao;
    TestePorta porta(*online, mod);
    ui::JanelaForm8 janela(*form, *online, porta, ligacao, caixas);
    janela.lobby().Senha = form->SenhaDigitada;
    janela.show();
    ASSERT_TRUE(EsperaAte([&] { return janela.lobby().NoServidor; }, 10000));
    EsperaAte([] { return false; }, 100);
    EXPECT_EQ(
        janela.Label4->text(),
        "\nCONECTADO AO SERVIDOR  |  Aguardando outro jogador entrar...\n\nPor favor aguarde...");
    EXPECT_EQ(janela.Command1->text(), "Cancelar");
    Captura(janela, "lobby.png");
    janela.Command1->click();
    EXPECT_TRUE(EsperaAte([&] { return !janela.isVisible(); }, 2000));
    EXPECT_TRUE(janela.lobby().CancelouLobby);
    EXPECT_EQ(LeOpcao(form->registro(), "Numerodesistencias", ""), "1");
}

TEST_F(Janelas, DialogoDaPortaTestaAoAbrir) {
    servico.Responde = [](const Pedido&) { return Resposta{"RESP Offline"}; };
    TestePorta teste(*online, mod);
    ui::FrmPorta d(teste, form->registro(), caixas, "10.0.0.2", "http://x/roteador.html");
    QTcpServer livre;
    livre.listen(QHostAddress::Any, 0);
    const QString p = QString::number(livre.serverPort());
    livre.close();
    d.Text1->setText(p);
    d.show();
    ASSERT_TRUE(EsperaAte([&] { return !d.Label4->text().isEmpty(); }, 5000));
    EXPECT_EQ(d.Label4->text(), "A porta " + p + " pode ser aberta mas está inacessível");
    EXPECT_TRUE(caixas.mensagens.empty()); // the first test shows no box
    EXPECT_TRUE(d.Command5->isVisible());
    Captura(d, "porta.png");
}

TEST_F(Janelas, AguardarMinimizadoEscondeEDevolveAsJanelas) {
    QWidget tabuleiro;
    tabuleiro.resize(300, 200);
    tabuleiro.move(120, 90);
    tabuleiro.show();
    LigacaoRelay ligacao;
    TestePorta porta(*online, mod);
    ui::JanelaForm8 janela(*form, *online, porta, ligacao, caixas, {&tabuleiro});
    janela.move(50, 60);
    const QPoint antes = tabuleiro.pos(), lobbyAntes = janela.pos();
    EXPECT_FALSE(janela.Escondida());
    janela.lobby().Label6_Click();
    EXPECT_TRUE(janela.Escondida());
    EXPECT_GT(tabuleiro.y(), 1000);
    // a double click on the icon brings them back where they stood
    janela.RetornaForms();
    EXPECT_EQ(tabuleiro.pos(), antes);
    EXPECT_EQ(janela.pos(), lobbyAntes);
    // with nothing hidden, nothing moves
    tabuleiro.move(10, 10);
    janela.RetornaForms();
    EXPECT_EQ(tabuleiro.pos(), QPoint(10, 10));
    // hidden again, the connection centres the board on the screen
    janela.lobby().Label6_Click();
    form->ctx.Game.Conectado = true;
    janela.lobby().EstaConectado();
    EXPECT_FALSE(janela.Escondida());
}
