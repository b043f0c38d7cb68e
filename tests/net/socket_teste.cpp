// The Socket control and the control array: forwarding, saved properties, elements loaded
// and unloaded at run time, also from inside their own events.
#include "apoio.h"

#include "net/matrizsocket.h"
#include "net/socket.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace velmora {
namespace {

using namespace teste;

TEST(ControleSocket, RepassaEventosEPropriedadesSalvas) {
    modSocketMaster mod;
    Socket escuta(mod, {0, sckTCPProtocol, "", 0, "escuta"});
    Socket servidor(mod);
    std::string recebido;
    escuta.Eventos.ConnectionRequest = [&](std::int32_t id) { servidor.Accept(id); };
    servidor.Eventos.DataArrival = [&](std::int32_t) { servidor.GetData(recebido); };
    escuta.Listen();

    Socket cliente(mod, {0, sckTCPProtocol, "127.0.0.1", escuta.LocalPort(), "c"});
    cliente.Eventos.Connect = [&] { cliente.SendData(std::string("oi")); };
    cliente.Connect();
    ASSERT_TRUE(EsperaAte([&] { return recebido == "oi"; }));
    EXPECT_EQ(servidor.RemotePort(), cliente.LocalPort());
    const auto salvas = cliente.Salva();
    EXPECT_EQ(salvas.RemoteHost + ":" + std::to_string(salvas.RemotePort) + " " + salvas.Tag,
              "127.0.0.1:" + std::to_string(escuta.LocalPort()) + " c");
    EXPECT_THROW(cliente.RemotePort(1), ErroSocket);
}

TEST(ControleSocket, MatrizCarregaEDescarregaAteDentroDoProprioEvento) {
    modSocketMaster mod;
    MatrizSocket WS(mod, {0, sckTCPProtocol, "", 2001, "modelo"});
    EXPECT_THROW(WS(1), std::out_of_range);
    EXPECT_TRUE(WS.Load(1));
    EXPECT_FALSE(WS.Load(1));
    EXPECT_EQ(WS(1).RemotePort(), 2001); // a new element starts as element 0
    EXPECT_FALSE(WS.Unload(0));
    EXPECT_FALSE(WS.Unload(2));
    WS.Load(2);

    std::vector<std::string> vistos;
    WS.Eventos.ConnectionRequest = [&](int Index, std::int32_t id) {
        vistos.push_back("pedido " + std::to_string(Index));
        WS(Index).CloseSck();
        WS(Index).Accept(id);
    };
    WS.Eventos.DataArrival = [&](int Index, std::int32_t n) {
        vistos.push_back("dados " + std::to_string(Index) + " " + std::to_string(n));
        // The link's socket goes and a fresh one takes its index, as on a lost link
        WS.Unload(Index);
        WS.Load(Index);
    };
    WS(1).Listen();
    WS(2).Connect("127.0.0.1", WS(1).LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return WS(1).State() == sckConnected; }));
    WS(2).SendData("Nick:#");
    ASSERT_TRUE(EsperaAte([&] { return vistos.size() == 2; }));
    EXPECT_EQ(vistos, (std::vector<std::string>{"pedido 1", "dados 1 6"}));
    EXPECT_EQ(WS(1).State(), sckClosed);
    EXPECT_TRUE(EsperaAte([&] { return WS(2).State() == sckClosing; }));
}

} // namespace
} // namespace velmora
