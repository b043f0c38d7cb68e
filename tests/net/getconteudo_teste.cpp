// The minimal GET client: the exact request line, the first arrival as the whole reply,
// and "FALSE" when the time runs out.
#include "apoio.h"

#include "net/bomba.h"
#include "net/getconteudo.h"

#include <QTimer>

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace teste;

class GetConteudo_ : public ::testing::Test {
  protected:
    // A clock that moves 0.1 s with each round of events
    void RelogioDeTeste(double inicio) {
        t = inicio;
        cliente.Relogio = [this] { return t; };
        cliente.Bomba = [this] {
            BombaPadrao();
            t += 0.1;
        };
    }
    modSocketMaster mod;
    ClienteGetConteudo cliente{mod};
    ServidorWeb web;
    double t = 0;
};

TEST_F(GetConteudo_, PedidoSemVersaoNemCabecalhosEARespostaCortadaNaPrimeiraChegada) {
    web.Responde = [](QTcpSocket* s, const QByteArray&) {
        s->write("Resposta:#OK");
        s->flush();
        QTimer::singleShot(300, s, [s] {
            s->write("#120#77");
            s->flush();
        });
    };
    const std::string url = web.Url("/html/cadastro.php?tipo=Entrar&nick=ze&senha=a b");
    std::int32_t tempo = 4;
    EXPECT_EQ(cliente.GetConteudo(url, tempo), "Resposta:#OK");
    ASSERT_EQ(web.pedidos.size(), 1u);
    EXPECT_EQ(web.pedidos[0].toStdString(), "GET " + url + "\r\n\r\n");
    // The link stays open after a reply
    EXPECT_EQ(cliente.WSG.State(), sckConnected);

    // The next call closes it and starts anew; a URL without its scheme gets one
    const std::string semEsquema = web.Url("/update.php").substr(7);
    EXPECT_EQ(cliente.GetConteudo(semEsquema, 4), "Resposta:#OK");
    ASSERT_EQ(web.pedidos.size(), 2u);
    EXPECT_EQ(web.pedidos[1].toStdString(), "GET http://" + semEsquema + "\r\n\r\n");
}

TEST_F(GetConteudo_, SemRespostaDaFalseNoFimDoTempoContadoEmSegundosInteiros) {
    RelogioDeTeste(100.7);
    std::int32_t tempo = 0;
    EXPECT_EQ(cliente.GetConteudo(web.Url("/html/getip.php"), tempo), "FALSE");
    EXPECT_EQ(tempo, 2);
    // Noted as 100: the wait ends past 102
    EXPECT_GT(t, 102.0);
    EXPECT_LT(t, 102.3);
    EXPECT_EQ(cliente.WSG.State(), sckClosed);
    EXPECT_EQ(web.pedidos.size(), 1u);
}

TEST_F(GetConteudo_, ServidorAusenteOuNomeInvalidoTambemDaoFalse) {
    auto livre = std::make_unique<ServidorWeb>();
    const auto url = livre->Url("/x");
    livre.reset();
    RelogioDeTeste(0);
    EXPECT_EQ(cliente.GetConteudo(url, 1), "FALSE");
    RelogioDeTeste(0);
    EXPECT_EQ(cliente.GetConteudo("http://", 1), "FALSE");
}

} // namespace
} // namespace velmora
