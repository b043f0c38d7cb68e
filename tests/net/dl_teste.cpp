// The download control against a small web server of the test's own: documents as CR LF
// lines, the time-out counted from the last progress, cancelling, a stale key, a server
// that isn't there.
#include "apoio.h"

#include "net/bomba.h"
#include "net/dl.h"

#include <QTemporaryDir>
#include <QTimer>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace teste;
namespace fs = std::filesystem;

std::string Le(const fs::path& p) {
    std::ifstream f(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), std::istreambuf_iterator<char>()};
}

// Each test gets a temporary folder of its own, so that "temp01.dat" is not shared with
// tests running beside it.
class Download_ : public ::testing::Test {
  protected:
    void SetUp() override { qputenv("TMPDIR", dir.path().toUtf8()); }
    void TearDown() override { qunsetenv("TMPDIR"); }
    // Replies with `corpo` and closes.
    void Serve(const QByteArray& corpo, bool comTamanho = true) {
        web.Responde = [corpo, comTamanho](QTcpSocket* s, const QByteArray&) {
            s->write(Cabecalho(comTamanho ? corpo.size() : -1) + corpo);
            s->disconnectFromHost();
        };
    }
    QTemporaryDir dir;
    const fs::path pasta = dir.path().toStdString();
    ServidorWeb web;
};

class Barra : public ObjetoProgresso {
  public:
    void Value(std::int32_t v) override { valores.push_back(v); }
    std::vector<std::int32_t> valores;
};

TEST_F(Download_, DocumentoVoltaEmLinhasComCrLfEOArquivoComumSome) {
    Serve("linha1\nlinha2\r\n\r\nultima");
    dl d;
    EXPECT_EQ(d.GetConteudo(web.Url("/update.php?prog=Velmora%20Ace")),
              "linha1\r\nlinha2\r\n\r\nultima\r\n");
    EXPECT_EQ(d.Status(), 1);
    EXPECT_EQ(d.Percent(), 100);
    EXPECT_EQ(dl::ArquivoConteudo(), pasta / "temp01.dat");
    EXPECT_FALSE(fs::exists(dl::ArquivoConteudo()));
    ASSERT_EQ(web.pedidos.size(), 1u);
    EXPECT_TRUE(web.pedidos[0].startsWith("GET /update.php?prog=Velmora%20Ace HTTP/1.1\r\n"));

    // Without a size there is no percentage: short, but read all the same
    Serve("sem tamanho", false);
    dl outro;
    EXPECT_EQ(outro.GetConteudo(web.Url()), "sem tamanho\r\n");
    EXPECT_EQ(outro.Status(), 3);

    // A server that isn't there ends the wait at once, with no text
    auto ausente = std::make_unique<ServidorWeb>();
    const auto url = ausente->Url();
    ausente.reset();
    dl terceiro;
    const double inicio = RelogioPadrao();
    EXPECT_EQ(terceiro.GetConteudo(url), "");
    EXPECT_LT(RelogioPadrao() - inicio, 4.0);
    EXPECT_EQ(terceiro.Status(), 3);
}

TEST_F(Download_, TempoContaDesdeOUltimoProgressoEDepoisOControleFicaSurdo) {
    // Five bytes 300 ms apart, then silence: slower than the time-out, but always moving
    web.Responde = [](QTcpSocket* s, const QByteArray&) {
        s->write(Cabecalho(100));
        for (int i = 1; i <= 5; ++i)
            QTimer::singleShot(300 * i, s, [s] {
                s->write("x");
                s->flush();
            });
    };
    dl d;
    double ultimoProgresso = 0;
    int progressos = 0;
    d.Progress = [&](std::int64_t lidos, std::int64_t total, const std::string& sID) {
        EXPECT_EQ(total, 100);
        EXPECT_EQ(sID, "lento");
        EXPECT_LE(lidos, 5);
        ++progressos;
        ultimoProgresso = RelogioPadrao();
    };
    const double inicio = RelogioPadrao();
    EXPECT_EQ(d.GetConteudo(web.Url(), "lento", 1), "");
    const double fim = RelogioPadrao();
    EXPECT_GE(progressos, 2);
    EXPECT_GT(fim - inicio, 1.8);
    EXPECT_GE(fim - ultimoProgresso, 1.0);
    EXPECT_LT(fim - ultimoProgresso, 1.8);
    EXPECT_TRUE(d.Cancelled());

    // Once timed out, the instance ignores its reads for good (a clock of its own here)
    Serve("ok");
    double t = 0;
    d.Relogio = [&] { return t; };
    d.Bomba = [&] {
        BombaPadrao();
        t += 0.05;
    };
    EXPECT_EQ(d.GetConteudo(web.Url(), "Id", 2), "");
    dl novo;
    EXPECT_EQ(novo.GetConteudo(web.Url()), "ok\r\n");
}

TEST_F(Download_, DownloadMostraOProgressoEMoveOArquivo) {
    QByteArray corpo(200000, '\0');
    for (int i = 0; i < corpo.size(); ++i) corpo[i] = char(i % 253);
    Serve(corpo);
    dl d;
    Barra barra;
    std::vector<std::string> completos;
    std::int64_t ultimoLido = 0;
    d.Progress = [&](std::int64_t lidos, std::int64_t, const std::string&) { ultimoLido = lidos; };
    d.Completed = [&](std::int64_t bytes, const std::string& sID) {
        completos.push_back(sID + " " + std::to_string(bytes));
        EXPECT_TRUE(fs::exists(pasta / "baixado.bin"));
    };
    EXPECT_EQ(d.Download(web.Url("/instalador.exe"), (pasta / "baixado.bin").string(), &barra,
                         "arquivo", 8),
              1);
    EXPECT_EQ(completos, std::vector<std::string>{"arquivo 200000"});
    EXPECT_EQ(ultimoLido, 200000);
    EXPECT_TRUE(Le(pasta / "baixado.bin") == corpo.toStdString());
    ASSERT_FALSE(barra.valores.empty());
    EXPECT_TRUE(std::is_sorted(barra.valores.begin(), barra.valores.end()));
    // No temporary file of the read is left behind
    EXPECT_EQ(std::distance(fs::directory_iterator(pasta), fs::directory_iterator()), 1);
}

TEST_F(Download_, CancelamentoDevolve2EAChaveAntigaContinuaOAlvo) {
    web.Responde = [](QTcpSocket* s, const QByteArray&) {
        s->write(Cabecalho(1 << 20) + QByteArray(1000, 'a'));
    };
    dl d;
    d.Progress = [&](std::int64_t, std::int64_t, const std::string& sID) { d.CancelDownload(sID); };
    EXPECT_EQ(d.Download(web.Url(), (pasta / "a.bin").string(), nullptr, "x", 8), 2);
    EXPECT_FALSE(d.Cancelled());

    // The key is still pending with its first target: the next file goes there
    d.Progress = nullptr;
    Serve("conteudo");
    EXPECT_EQ(d.Download(web.Url(), (pasta / "b.bin").string(), nullptr, "x", 8), 1);
    EXPECT_EQ(Le(pasta / "a.bin"), "conteudo");
    EXPECT_FALSE(fs::exists(pasta / "b.bin"));
}

} // namespace
} // namespace velmora
