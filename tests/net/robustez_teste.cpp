// Hostile and careless peers: a burst of a megabyte, closes and resets in the middle of a
// transfer, and a thousand connections that must leave no descriptor behind.
#include "apoio.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

namespace velmora {
namespace {

using namespace teste;

// A peer of Qt's own that writes a block and then closes or resets.
void EnviaEFecha(QTcpSocket& par, int porta, const QByteArray& bloco, bool reset) {
    par.connectToHost("127.0.0.1", quint16(porta));
    ASSERT_TRUE(par.waitForConnected(3000));
    par.write(bloco);
    par.flush();
    if (reset) {
        const linger l{1, 0};
        ::setsockopt(int(par.socketDescriptor()), SOL_SOCKET, SO_LINGER, &l, sizeof l);
        par.abort();
    } else {
        par.disconnectFromHost();
    }
}

class Robustez : public ::testing::Test {
  protected:
    void SetUp() override {
        escuta = CSocketMaster::Cria(mod);
        servidor = CSocketMaster::Cria(mod);
        escuta->Eventos.ConnectionRequest = [this](std::int32_t id) { servidor->Accept(id); };
        servidor->Eventos.DataArrival = [this](std::int32_t) {
            std::string s;
            servidor->GetData(s);
            recebido += s;
        };
        escuta->Listen();
    }
    modSocketMaster mod;
    std::shared_ptr<CSocketMaster> escuta, servidor;
    std::string recebido;
};

TEST_F(Robustez, MegabyteNumaRajadaChegaInteiro) {
    QByteArray bloco(1 << 20, 'x');
    for (int i = 0; i < bloco.size(); ++i) bloco[i] = char(i % 251);
    QTcpSocket par;
    EnviaEFecha(par, escuta->LocalPort(), bloco, false);
    ASSERT_TRUE(EsperaAte([&] { return servidor->State() == sckClosing; }));
    EXPECT_EQ(recebido.size(), std::size_t(bloco.size()));
    EXPECT_TRUE(recebido == bloco.toStdString());
}

TEST_F(Robustez, ResetNoMeioDaRecepcaoETerminaEmErroSemQueda) {
    auto eventos = std::make_shared<std::vector<std::string>>();
    servidor->Eventos.Error = [eventos](std::int32_t n, const std::string&, std::int32_t,
                                        const std::string&, const std::string&, std::int32_t,
                                        bool&) { eventos->push_back(std::to_string(n)); };
    QTcpSocket par;
    EnviaEFecha(par, escuta->LocalPort(), QByteArray(300000, 'y'), true);
    ASSERT_TRUE(EsperaAte(
        [&] { return servidor->State() == sckError || servidor->State() == sckClosing; }));
    if (servidor->State() == sckError) {
        EXPECT_EQ(eventos->at(0), "10054");
    }
    servidor->CloseSck();
    EXPECT_EQ(escuta->State(), sckListening);
}

TEST_F(Robustez, ParQueSomeNoMeioDeUmEnvioGrande) {
    auto cliente = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*cliente);
    servidor->Eventos.DataArrival = [this](std::int32_t) { servidor->CloseSck(); };
    cliente->Connect("127.0.0.1", escuta->LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return cliente->State() == sckConnected; }));
    EXPECT_EQ(cliente->SendData(std::string(8u << 20, 'z')), 0);
    ASSERT_TRUE(
        EsperaAte([&] { return cliente->State() == sckError || cliente->State() == sckClosing; }));
    // Sending on the broken link is silent, and the object comes back to 0
    cliente->SendData("mais");
    cliente->CloseSck();
    EXPECT_EQ(cliente->State(), sckClosed);
    EXPECT_EQ(cliente->SendData("mais"), 1);
}

TEST_F(Robustez, MilConexoesNaoDeixamDescritoresAbertos) {
    Pausa(20);
    const int antes = ContaDescritores();
    auto cliente = CSocketMaster::Cria(mod);
    for (int i = 0; i < 1000; ++i) {
        recebido.clear();
        cliente->Connect("127.0.0.1", escuta->LocalPort());
        ASSERT_TRUE(EsperaAte([&] { return cliente->State() == sckConnected; })) << i;
        cliente->SendData("x");
        ASSERT_TRUE(EsperaAte([&] { return recebido == "x"; })) << i;
        // Both ends close, in either order
        if (i % 2 == 0) {
            cliente->CloseSck();
            servidor->CloseSck();
        } else {
            servidor->CloseSck();
            ASSERT_TRUE(EsperaAte([&] { return cliente->State() == sckClosing; })) << i;
            cliente->CloseSck();
        }
    }
    Pausa(20);
    EXPECT_EQ(ContaDescritores(), antes);
    EXPECT_EQ(mod.SocketsNaColecao(), 1u); // the listener
    escuta->CloseSck();
    EXPECT_EQ(ContaDescritores(), antes - 1);
}

} // namespace
} // namespace velmora
