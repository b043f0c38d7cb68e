// Hostile and careless peers: a burst of a megabyte, closes and resets in the middle of a
// transfer, and a thousand connections that must leave no descriptor behind.
#include "apoio.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

namespace velmora {
namespace {

using namespace teste;

class Robustez : public ::testing::Test {
  protected:
    void SetUp() override {
        p.servidor->Eventos.DataArrival = [this](std::int32_t) {
            std::string s;
            p.servidor->GetData(s);
            recebido += s;
        };
    }
    // A peer of Qt's own writes a block and then closes, or resets.
    void EnviaEFecha(const QByteArray& bloco, bool reset) {
        par.connectToHost("127.0.0.1", quint16(p.escuta->LocalPort()));
        ASSERT_TRUE(par.waitForConnected(3000));
        par.write(bloco);
        par.flush();
        const linger l{1, 0};
        if (reset) ::setsockopt(int(par.socketDescriptor()), SOL_SOCKET, SO_LINGER, &l, sizeof l);
        reset ? par.abort() : par.disconnectFromHost();
    }
    modSocketMaster mod;
    Par p = Escuta(mod);
    QTcpSocket par;
    std::string recebido;
};

TEST_F(Robustez, MegabyteNumaRajadaChegaInteiro) {
    QByteArray bloco(1 << 20, 'x');
    for (int i = 0; i < bloco.size(); ++i) bloco[i] = char(i % 251);
    EnviaEFecha(bloco, false);
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->State() == sckClosing; }));
    EXPECT_TRUE(recebido == bloco.toStdString());
}

TEST_F(Robustez, ResetNoMeioDaRecepcaoTerminaEmErro) {
    auto eventos = RegistraEventos(*p.servidor);
    EnviaEFecha(QByteArray(300000, 'y'), true);
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->State() >= sckClosing; }));
    if (p.servidor->State() == sckError) {
        EXPECT_EQ(eventos->back(),
                  "Error 10054 Connection reset by peer. CSocketMaster.PostSocket");
    }
    EXPECT_EQ(p.escuta->State(), sckListening);
}

TEST_F(Robustez, ParQueSomeNoMeioDeUmEnvioGrande) {
    p.servidor->Eventos.DataArrival = [this](std::int32_t) { p.servidor->CloseSck(); };
    p.cliente->Connect("127.0.0.1", p.escuta->LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return p.cliente->State() == sckConnected; }));
    EXPECT_EQ(p.cliente->SendData(std::string(8u << 20, 'z')), 0);
    ASSERT_TRUE(EsperaAte([&] { return p.cliente->State() >= sckClosing; }));
    p.cliente->SendData("mais");
    p.cliente->CloseSck();
    EXPECT_EQ(p.cliente->SendData("mais"), 1);
}

TEST_F(Robustez, MilConexoesNaoDeixamDescritoresAbertos) {
    Pausa(20);
    const int antes = ContaDescritores();
    auto& cliente = p.cliente;
    for (int i = 0; i < 1000; ++i) {
        recebido.clear();
        cliente->Connect("127.0.0.1", p.escuta->LocalPort());
        ASSERT_TRUE(EsperaAte([&] { return cliente->State() == sckConnected; })) << i;
        cliente->SendData("x");
        ASSERT_TRUE(EsperaAte([&] { return recebido == "x"; })) << i;
        // Both ends close, in either order
        if (i % 2 == 0) cliente->CloseSck();
        p.servidor->CloseSck();
        ASSERT_TRUE(EsperaAte([&] { return cliente->State() != sckConnected; })) << i;
        cliente->CloseSck();
    }
    Pausa(20);
    EXPECT_EQ(ContaDescritores(), antes);
    EXPECT_EQ(mod.SocketsNaColecao(), 1u); // the listener
}

} // namespace
} // namespace velmora
