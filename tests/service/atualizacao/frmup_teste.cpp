// The update window against a service on loopback: the download with its bar moving, the
// hand-over as root and as a plain user, and every failure with its box; then the lobby's
// and the about box's answers to a check.
#include "servicofalso.h"

#include "net/bomba.h"
#include "net/getconteudo.h"
#include "net/modsocketmaster.h"
#include "ui/atualizacao.h"
#include "ui/caixas.h"
#include "ui/frmsobre.h"
#include "ui/frmup.h"
#include "ui/progressbarxp.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QCursor>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <cstdlib>
#include <deque>
#include <gtest/gtest.h>

namespace velmora::ui {
namespace {

using teste::ServicoFalso;

class CaixasRoteiro : public Caixas {
  public:
    std::vector<QString> vistas; // "M:" a message, "P:" a question
    std::deque<bool> respostas;  // No when none is left
    void Mensagem(QWidget*, const QString& texto, const QString&) override {
        vistas.push_back("M:" + texto);
    }
    bool Pergunta(QWidget*, const QString& texto, const QString&) override {
        vistas.push_back("P:" + texto);
        if (respostas.empty()) return false;
        const bool r = respostas.front();
        respostas.pop_front();
        return r;
    }
    std::optional<QString> Entrada(QWidget*, const QString&, const QString&) override {
        return std::nullopt;
    }
};

// Where the temporary folder and the service's address point during one test.
class Atualizacao : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(tmp.isValid());
        tmpAntes = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
        setenv("TMPDIR", tmp.path().toUtf8().constData(), 1);
        setenv("VELMORA_SERVICO", servico.Base().c_str(), 1);
        servico.pacote = teste::PacoteFalso(64 * 1024);
    }
    void TearDown() override {
        if (tmpAntes.empty())
            unsetenv("TMPDIR");
        else
            setenv("TMPDIR", tmpAntes.c_str(), 1);
        unsetenv("VELMORA_SERVICO");
    }
    EntregaAtualizacao Entrega(bool root) {
        EntregaAtualizacao e;
        e.administrador = [root] { return root; };
        e.instala = [this](const QString& arquivo) {
            instalados.push_back(arquivo);
            // what is handed on is whole at that moment
            inteiro = QFile(arquivo).size() == servico.pacote.size();
        };
        e.abre = [this](const QUrl& u) { abertos.push_back(u); };
        e.encerra = [this] { ++encerramentos; };
        return e;
    }
    // Runs the window on `link` until it closes.
    FrmUp::Fim Baixa(const std::string& link, bool root, const std::string& sha256 = {}) {
        FrmUp up(caixas, Entrega(root), link, sha256);
        ProgressBarXP* barra = up.ProgressBarXP1;
        // VELMORA_FOTO_ATUALIZACAO names a picture of the window in the middle of a download
        const char* foto = std::getenv("VELMORA_FOTO_ATUALIZACAO");
        up.DL1.Bomba = [this, barra, foto, &up] {
            BombaPadrao();
            if (amostras.empty() || amostras.back() != barra->Percentagem()) {
                amostras.push_back(barra->Percentagem());
                if (foto && *foto && barra->Percentagem() >= 40 && barra->Percentagem() < 70)
                    up.grab().save(foto, "PNG");
            }
        };
        up.exec();
        arquivo = up.Arquivo();
        return up.Resultado();
    }

    QTemporaryDir tmp;
    std::string tmpAntes;
    ServicoFalso servico;
    CaixasRoteiro caixas;
    std::vector<QString> instalados;
    bool inteiro = false;
    std::vector<QUrl> abertos;
    int encerramentos = 0;
    std::vector<int> amostras; // the bar's percentages, as they changed
    QString arquivo;
};

TEST_F(Atualizacao, AsAPlainUserThePackageAndTheDownloadPageAreOpenedAndTheProgramEnds) {
    servico.modo = ServicoFalso::Modo::Lento;
    EXPECT_EQ(Baixa(servico.UrlPacote(), false), FrmUp::Fim::Entregue);
    EXPECT_EQ(servico.downloads, 1);
    EXPECT_EQ(arquivo, tmp.filePath("VelmoraAce.deb"));
    EXPECT_EQ(QFile(arquivo).size(), servico.pacote.size());
    // the bar moved through the download, never back
    EXPECT_GE(amostras.size(), 4u);
    for (std::size_t i = 1; i < amostras.size(); ++i) EXPECT_GT(amostras[i], amostras[i - 1]);
    const QString base = QString::fromStdString(servico.Base());
    ASSERT_EQ(caixas.vistas.size(), 2u);
    EXPECT_EQ(caixas.vistas[0], "M:O Velmora Ace será fechado para que a atualização seja feita");
    EXPECT_EQ(caixas.vistas[1], "M:Se a atualização automatica falhar faça o download em " + base);
    ASSERT_EQ(abertos.size(), 2u);
    EXPECT_EQ(abertos[0], QUrl(base + "/html/download.php?prog=velmace"));
    EXPECT_EQ(abertos[1], QUrl::fromLocalFile(arquivo));
    EXPECT_TRUE(instalados.empty());
    EXPECT_EQ(encerramentos, 1);
}

TEST_F(Atualizacao, AsRootThePackageIsInstalledWithoutQuestions) {
    const std::string soma =
        QCryptographicHash::hash(servico.pacote, QCryptographicHash::Sha256).toHex().toStdString();
    // an older file of the same name is replaced
    {
        QFile velho(tmp.filePath("VelmoraAce.deb"));
        ASSERT_TRUE(velho.open(QIODevice::WriteOnly));
        velho.write("velho");
    }
    EXPECT_EQ(Baixa(servico.UrlPacote(), true, soma), FrmUp::Fim::Entregue);
    ASSERT_EQ(instalados.size(), 1u);
    EXPECT_EQ(instalados[0], tmp.filePath("VelmoraAce.deb"));
    EXPECT_TRUE(inteiro);
    ASSERT_EQ(caixas.vistas.size(), 1u);
    EXPECT_EQ(caixas.vistas[0], "M:O Velmora Ace será fechado para que a atualização seja feita");
    EXPECT_TRUE(abertos.empty());
    EXPECT_EQ(encerramentos, 1);
}

TEST_F(Atualizacao, FailuresCloseTheWindowWithTheirBoxAndRunNothing) {
    const QString base = QString::fromStdString(servico.Base());
    const QString semArquivo = "M:Não foi possivel localizar o arquivo de instalação\r\rTente "
                               "novamente mais tarde ou faça o download no site " +
                               base;
    struct Caso {
        const char* nome;
        std::function<std::string()> prepara;
        FrmUp::Fim fim;
        QString caixa;
        std::string sha256;
    };
    std::string fechado;
    {
        ServicoFalso outro;
        fechado = outro.UrlPacote(); // a port where nobody listens any more
    }
    const std::vector<Caso> casos = {
        {"cut in the middle",
         [&] {
             servico.modo = ServicoFalso::Modo::Cortado;
             return servico.UrlPacote();
         },
         FrmUp::Fim::SemDownload,
         "M:Não foi possivel fazer o download da atualização",
         {}},
        {"wrong address",
         [&] { return servico.Base() + "/pacote/outro.deb"; },
         FrmUp::Fim::SemDownload,
         "M:Não foi possivel fazer o download da atualização",
         {}},
        {"service down",
         [&] { return fechado; },
         FrmUp::Fim::SemDownload,
         "M:Não foi possivel fazer o download da atualização",
         {}},
        {"not a package",
         [&] {
             servico.modo = ServicoFalso::Modo::Inteiro;
             servico.pacote = "<html><body>Em manutenção</body></html>";
             return servico.UrlPacote();
         },
         FrmUp::Fim::SemArquivo,
         semArquivo,
         {}},
        {"wrong digest",
         [&] {
             servico.pacote = teste::PacoteFalso(4096);
             return servico.UrlPacote();
         },
         FrmUp::Fim::SemArquivo, semArquivo, std::string(64, '0')},
    };
    for (const Caso& c : casos) {
        SCOPED_TRACE(c.nome);
        caixas.vistas.clear();
        const std::string link = c.prepara();
        EXPECT_EQ(Baixa(link, true, c.sha256), c.fim);
        EXPECT_EQ(caixas.vistas, std::vector<QString>{c.caixa});
        EXPECT_FALSE(QFile::exists(arquivo)) << "a file that failed stays behind";
        EXPECT_TRUE(instalados.empty());
        EXPECT_TRUE(abertos.empty());
        EXPECT_EQ(encerramentos, 0);
    }
}

TEST_F(Atualizacao, ClosingTheWindowStopsTheDownload) {
    servico.modo = ServicoFalso::Modo::Lento;
    servico.pedacos = 50;
    servico.intervaloMs = 50;
    FrmUp up(caixas, Entrega(true), servico.UrlPacote());
    up.DL1.Bomba = [&up] {
        BombaPadrao();
        if (up.ProgressBarXP1->Percentagem() >= 10) up.reject();
    };
    up.exec();
    EXPECT_EQ(up.Resultado(), FrmUp::Fim::SemDownload);
    EXPECT_EQ(caixas.vistas,
              std::vector<QString>{"M:Não foi possivel fazer o download da atualização"});
    EXPECT_TRUE(instalados.empty());
    EXPECT_EQ(encerramentos, 0);
}

// ---------------------------------------------------------------- the lobby and the about box

TEST_F(Atualizacao, ServiceOfferingANewerVersionLeadsToTheQuestionAndADownload) {
    // the whole road: the check, the lobby's question, the window on the offered address
    const std::string soma =
        QCryptographicHash::hash(servico.pacote, QCryptographicHash::Sha256).toHex().toStdString();
    servico.respostaHttp = "!*!x!*!3.9.1!*!" + servico.UrlPacote() + "!*!!*!!*!sha256:" + soma;
    servico.modo = ServicoFalso::Modo::Lento;
    modSocketMaster mod;
    ClienteGetConteudo wsg(mod);
    dl DL1;
    const std::string resultado = GetUpdate(DL1, wsg, servico.Base(), "Velmora Ace", TemposLobby);
    caixas.respostas = {true};
    FrmUp::Fim fim = FrmUp::Fim::Nenhum;
    OfereceAtualizacaoLobby(resultado, caixas, nullptr, [&](const OfertaAtualizacao& o) {
        EXPECT_EQ(o.sha256, soma);
        fim = Baixa(o.endereco, false, o.sha256);
    });
    EXPECT_EQ(fim, FrmUp::Fim::Entregue);
    ASSERT_FALSE(caixas.vistas.empty());
    EXPECT_EQ(caixas.vistas[0],
              "P:Está disponível uma atualização do Velmora Ace. Deseja atualizar agora?");
    EXPECT_GE(amostras.size(), 4u);
    EXPECT_EQ(abertos.size(), 2u);
    EXPECT_EQ(encerramentos, 1);
}

TEST_F(Atualizacao, LobbyShowsTheMessageFirstThenAsks) {
    std::vector<std::string> abertas;
    const AbreFrmUp abre = [&](const OfertaAtualizacao& o) { abertas.push_back(o.endereco); };
    const std::string oferta = "!*!Link!*!x!*!3.9.1!*!http://s/p.deb!*!!*!Linha um;Linha dois\r\n";
    caixas.respostas = {true};
    OfereceAtualizacaoLobby(oferta, caixas, nullptr, abre);
    ASSERT_EQ(caixas.vistas.size(), 2u);
    EXPECT_EQ(caixas.vistas[0], "M:Linha um\rLinha dois");
    EXPECT_EQ(caixas.vistas[1],
              "P:Está disponível uma atualização do Velmora Ace. Deseja atualizar agora?");
    EXPECT_EQ(abertas, std::vector<std::string>{"http://s/p.deb"});

    // "no" leaves the lobby to go on
    caixas.vistas.clear();
    abertas.clear();
    OfereceAtualizacaoLobby("!*!Link!*!x!*!3.9.1!*!http://s/p.deb!*!!*!", caixas, nullptr, abre);
    EXPECT_EQ(caixas.vistas.size(), 1u);
    EXPECT_TRUE(abertas.empty());

    // a compulsory update opens the window without asking
    caixas.vistas.clear();
    OfereceAtualizacaoLobby("!*!Link!*!x!*!3.9.1!*!http://s/q.deb!*!obrigatorio!*!", caixas,
                            nullptr, abre);
    EXPECT_TRUE(caixas.vistas.empty());
    EXPECT_EQ(abertas, std::vector<std::string>{"http://s/q.deb"});

    // any other result is ignored
    abertas.clear();
    for (const char* r : {"Não foi possível conectar ao servidor",
                          "Você já está utilizando a versão mais recente do Velmora Ace", ""})
        OfereceAtualizacaoLobby(r, caixas, nullptr, abre);
    EXPECT_TRUE(caixas.vistas.empty());
    EXPECT_TRUE(abertas.empty());
}

TEST_F(Atualizacao, AboutBoxChecksWithABusyCursorAndAsksFromThisVersion) {
    servico.respostaHttp = "!*!x!*!3.9.1!*!" + servico.UrlPacote() + "!*!!*!";
    FrmSobre sobre("3.9.0");
    bool ocupado = false, desligado = false;
    std::vector<std::string> abertas;
    sobre.getUpdate = [&] {
        ocupado = QApplication::overrideCursor() &&
                  QApplication::overrideCursor()->shape() == Qt::BusyCursor;
        desligado = !sobre.Command1->isEnabled();
        dl DL1;
        return GetUpdate(
            [&DL1](const std::string& u, std::int32_t t) { return DL1.GetConteudo(u, "Id", t); },
            nullptr, servico.Base(), "Velmora Ace", TemposSobre);
    };
    sobre.respondeUpdate = [&](QWidget* pai, const std::string& r) {
        RespondeAtualizacaoSobre(
            r, caixas, pai, [&](const OfertaAtualizacao& o) { abertas.push_back(o.endereco); });
    };
    caixas.respostas = {true};
    sobre.Label10_Click();
    EXPECT_TRUE(ocupado);
    EXPECT_TRUE(desligado);
    EXPECT_TRUE(sobre.Command1->isEnabled());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(caixas.vistas, std::vector<QString>{"P:Você está utilizando a versão 3.9.0\r\n\r\n"
                                                  "Deseja atualizar para a versão 3.9.1 agora?"});
    EXPECT_EQ(abertas, std::vector<std::string>{servico.UrlPacote()});

    // the same version, and a service that says nothing: the result as it is
    caixas.vistas.clear();
    servico.respostaHttp = "!*!x!*!3.9.0!*!" + servico.UrlPacote() + "!*!!*!";
    sobre.Label10_Click();
    servico.respostaHttp.clear();
    sobre.Label10_Click();
    EXPECT_EQ(caixas.vistas, (std::vector<QString>{
                                 "M:Você já está utilizando a versão mais recente do Velmora Ace",
                                 "M:Não foi possível conectar ao servidor"}));
    EXPECT_EQ(abertas.size(), 1u);
}

} // namespace
} // namespace velmora::ui
