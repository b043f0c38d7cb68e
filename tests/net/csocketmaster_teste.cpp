// The socket object: states and transitions, the errors raised to the caller, the data
// paths, and the edge cases of accepting and closing.
#include "apoio.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace teste;

class Socket_ : public ::testing::Test {
  protected:
    modSocketMaster mod;
};

TEST_F(Socket_, PorEnderecoVaiDe0A6A7SemBuscaPorNomePassaPor4) {
    auto p = Escuta(mod);
    std::vector<std::int32_t> estados;
    p.cliente->Eventos.Connect = [&] { estados.push_back(p.cliente->State()); };
    p.cliente->Connect("127.0.0.1", p.escuta->LocalPort());
    estados.insert(estados.begin(), p.cliente->State());
    ASSERT_TRUE(EsperaAte([&] { return estados.size() == 2; }));
    EXPECT_EQ(estados, (std::vector<std::int32_t>{sckConnecting, sckConnected}));
    EXPECT_EQ(p.cliente->RemotePort(), p.escuta->LocalPort());
    EXPECT_EQ(p.cliente->LocalIP(), "127.0.0.1");
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->State() == sckConnected; }));
    EXPECT_EQ(p.servidor->RemotePort(), p.cliente->LocalPort());

    auto q = Escuta(mod);
    q.cliente->Connect("localhost", q.escuta->LocalPort());
    EXPECT_EQ(q.cliente->State(), sckResolvingHost);
    ASSERT_TRUE(EsperaAte([&] { return q.cliente->State() == sckConnected; }));
    EXPECT_EQ(q.cliente->RemoteHostIP(), "127.0.0.1");
}

TEST_F(Socket_, FechoDuranteABuscaIgnoraARespostaEGuardaHostEPorta) {
    auto cliente = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*cliente);
    cliente->Connect("localhost", 9);
    cliente->CloseSck();
    EXPECT_EQ(cliente->State(), sckClosed);
    Pausa(300);
    EXPECT_EQ(cliente->State(), sckClosed);
    EXPECT_TRUE(eventos->empty());
    EXPECT_EQ(cliente->RemoteHost() + ":" + std::to_string(cliente->RemotePort()), "localhost:9");

    cliente->Connect("nome-que-nao-existe.invalid");
    ASSERT_TRUE(EsperaAte([&] { return !eventos->empty(); }, 15000));
    EXPECT_EQ(cliente->State(), sckError);
    EXPECT_EQ(eventos->at(0), "Error 11001 Host not found. CSocketMaster.ConnectToIP");
}

TEST_F(Socket_, ConexaoRecusadaEEventoDeErroQuePodePedirACaixa) {
    auto livre = CSocketMaster::Cria(mod);
    livre->Bind(0);
    const auto porta = livre->LocalPort();
    livre->CloseSck();

    std::string caixa;
    mod.CaixaMensagem = [&](const std::string& titulo, const std::string& texto) {
        caixa = titulo + ": " + texto;
    };
    auto cliente = CSocketMaster::Cria(mod);
    std::string erro;
    cliente->Eventos.Error = [&](std::int32_t n, const std::string& d, std::int32_t,
                                 const std::string& f, const std::string&, std::int32_t,
                                 bool& CancelDisplay) {
        erro = std::to_string(n) + " " + d + " " + f.substr(0, 14) + std::to_string(CancelDisplay);
        CancelDisplay = false;
    };
    cliente->Connect("127.0.0.1", porta);
    ASSERT_TRUE(EsperaAte([&] { return !erro.empty(); }));
    EXPECT_EQ(erro, "10061 Connection refused. CSocketMaster.1");
    EXPECT_EQ(cliente->State(), sckError);
    EXPECT_EQ(caixa.substr(caixa.find(':')), ": Connection refused.");
    cliente->CloseSck();
    EXPECT_EQ(cliente->State(), sckClosed);
}

TEST_F(Socket_, ErrosDoChamadorEBindFalhoSemErro) {
    auto s = CSocketMaster::Cria(mod);
    std::string texto;
    EXPECT_EQ(Erro([&] { s->Connect("127.0.0.1", 0); }),
              "40014|The argument passed to a function was not in the correct format or in the "
              "specified range.|CSocketMaster.Connect");
    EXPECT_EQ(Erro([&] { s->Connect("127.0.0.1", "porta"); }),
              "40018|Unsupported variant type.|CSocketMaster.Connect");
    EXPECT_EQ(Erro([&] { s->PeekData(texto); }),
              "40006|Wrong protocol or connection state for the requested transaction or "
              "request|CSocketMaster.PeekData");
    EXPECT_EQ(Erro([&] { s->Bind(0, "nome-que-nao-existe.invalid"); }),
              "40014|Invalid argument|CSocketMaster.BindInternal");
    s->Listen();
    EXPECT_EQ(Erro([&] { s->Connect(); }),
              "40020|Invalid operation at current state|CSocketMaster.Connect");
    EXPECT_EQ(Erro([&] { s->RemotePort(80); }).substr(0, 6), "40020|");
    // A socket that another object holds can't be accepted
    auto outro = CSocketMaster::Cria(mod);
    EXPECT_EQ(Erro([&] { outro->Accept(s->SocketHandle()); }).substr(0, 6), "40006|");
    EXPECT_EQ(outro->SocketHandle(), -1);

    // A failed bind raises nothing: Listen on a busy port leaves the object in 0
    auto eventos = RegistraEventos(*outro);
    outro->LocalPort(s->LocalPort());
    EXPECT_EQ(Erro([&] { outro->Listen(); }), "nenhum");
    EXPECT_EQ(outro->State(), sckClosed);
    EXPECT_TRUE(eventos->empty());
}

TEST_F(Socket_, DadosSaoEspiadosLidosEmPartesOuComoValoresFixos) {
    auto p = Conecta(mod);
    std::vector<std::int32_t> totais;
    p.servidor->Eventos.DataArrival = [&](std::int32_t n) { totais.push_back(n); };
    p.cliente->SendData("abcdef");
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->BytesReceived() == 6; }));
    EXPECT_EQ(totais.back(), 6);
    std::string s;
    p.servidor->PeekData(s, 2);
    EXPECT_EQ(s, "ab");
    p.servidor->GetData(s, 4);
    EXPECT_EQ(s, "abcd");
    EXPECT_EQ(Erro([&] { p.servidor->GetData(s, -1); }).substr(0, 6), "40014|");
    p.servidor->GetData(s);
    EXPECT_EQ(s, "ef");

    // Fixed-size values in the machine's byte order; too few bytes take nothing
    p.cliente->SendData(Dado{std::int32_t{-123456}});
    p.cliente->SendData(Dado{true});
    p.cliente->SendData(Dado{std::uint8_t{7}});
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->BytesReceived() == 7; }));
    Dado d;
    p.servidor->GetData(d, TipoDado::Long);
    EXPECT_EQ(d, Dado{std::int32_t{-123456}});
    d = Dado{false};
    p.servidor->GetData(d);
    EXPECT_EQ(d, Dado{true});
    d = Dado{0.0};
    p.servidor->GetData(d);
    EXPECT_EQ(d, Dado{0.0});
    EXPECT_EQ(p.servidor->BytesReceived(), 1);
}

TEST_F(Socket_, FechoDoParDeixaO8OndeEnvioELeituraSaoSilenciosos) {
    auto p = Conecta(mod);
    auto eventos = RegistraEventos(*p.cliente);
    p.servidor->SendData("resto");
    p.servidor->CloseSck();
    ASSERT_TRUE(EsperaAte([&] { return p.cliente->State() == sckClosing; }));
    EXPECT_EQ(eventos->back(), "CloseSck");
    EXPECT_EQ(p.cliente->SendData("x"), 1);
    std::string s = "intacto";
    p.cliente->GetData(s);
    EXPECT_EQ(s, "intacto");
    p.cliente->CloseSck();
    p.cliente->GetData(s);
    EXPECT_EQ(s, "intacto");
    EXPECT_EQ(p.cliente->SendData("x"), 1);
}

TEST_F(Socket_, BytesAntesDoAcceptChegamNumSoDataArrivalDeDentroDoAccept) {
    auto escuta = CSocketMaster::Cria(mod);
    auto dono = CSocketMaster::Cria(mod);
    std::vector<std::string> vistos;
    bool noAccept = false;
    const auto marca = [&](const std::string& e) { vistos.push_back((noAccept ? "+" : "") + e); };
    dono->Eventos.DataArrival = [&](std::int32_t n) { marca("DataArrival " + std::to_string(n)); };
    dono->Eventos.CloseSck = [&] { marca("CloseSck"); };
    escuta->Eventos.ConnectionRequest = [&](std::int32_t id) {
        Pausa(300); // events run before the owner answers, as in the peers' handshake
        noAccept = true;
        dono->Accept(id);
        noAccept = false;
    };
    escuta->Listen();
    QTcpSocket par;
    par.connectToHost("127.0.0.1", quint16(escuta->LocalPort()));
    ASSERT_TRUE(par.waitForConnected(3000));
    par.write("Nick:#1#fulano");
    par.flush();
    par.disconnectFromHost();
    ASSERT_TRUE(EsperaAte([&] { return !vistos.empty(); }));
    EXPECT_EQ(vistos, (std::vector<std::string>{"+DataArrival 14", "+CloseSck"}));
    EXPECT_EQ(dono->State(), sckClosing);
    EXPECT_EQ(escuta->State(), sckListening);
}

TEST_F(Socket_, PedidoSemRespostaEFechadoEOEscutadorContinua) {
    auto escuta = CSocketMaster::Cria(mod);
    std::string quemChama;
    escuta->Eventos.ConnectionRequest = [&](std::int32_t) { quemChama = escuta->RemoteHostIP(); };
    escuta->RemoteHost("guardado");
    escuta->Listen();
    auto cliente = CSocketMaster::Cria(mod);
    cliente->Connect("127.0.0.1", escuta->LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return cliente->State() == sckClosing; }));
    EXPECT_EQ(quemChama, "127.0.0.1");
    EXPECT_EQ(escuta->State(), sckListening);
    EXPECT_EQ(escuta->RemoteHost(), "guardado");

    // The next caller is offered too; this time the listener itself takes the link
    escuta->Eventos.ConnectionRequest = [&](std::int32_t id) {
        escuta->CloseSck();
        escuta->Accept(id);
    };
    auto segundo = CSocketMaster::Cria(mod);
    segundo->Connect("127.0.0.1", escuta->LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return escuta->State() == sckConnected; }));
    segundo->SendData("ola");
    ASSERT_TRUE(EsperaAte([&] { return escuta->BytesReceived() == 3; }));

    // Closed first, the port lingers in the OS; listening on it again works at once
    const auto porta = escuta->LocalPort();
    escuta->CloseSck();
    escuta->LocalPort(porta);
    escuta->Listen();
    EXPECT_EQ(escuta->State(), sckListening);
}

TEST_F(Socket_, EnvioGrandeEmPartesTerminaComProgressoECompleto) {
    auto p = Conecta(mod);
    auto eventos = RegistraEventos(*p.cliente);
    const std::size_t tamanho = 16u << 20;
    std::string dados(tamanho, '\0');
    for (std::size_t i = 0; i < tamanho; ++i) dados[i] = static_cast<char>(i * 7 + i / 4096);
    std::string recebido;
    p.servidor->Eventos.DataArrival = [&](std::int32_t) {
        std::string s;
        p.servidor->GetData(s);
        recebido += s;
    };
    EXPECT_EQ(p.cliente->SendData(dados), 0);
    ASSERT_TRUE(EsperaAte([&] { return recebido.size() == tamanho; }, 30000));
    ASSERT_TRUE(EsperaAte([&] { return eventos->back() == "SendComplete"; }));
    EXPECT_TRUE(recebido == dados);
    // Partial progress while the OS was full, then the whole total and the end, once
    ASSERT_GE(eventos->size(), 3u);
    EXPECT_EQ(eventos->at(eventos->size() - 2), "SendProgress " + std::to_string(tamanho) + " 0");
    EXPECT_EQ(std::count(eventos->begin(), eventos->end(), "SendComplete"), 1);
    EXPECT_EQ(eventos->front().rfind("SendProgress ", 0), 0u);
    EXPECT_NE(eventos->front().substr(eventos->front().rfind(' ')), " 0");
}

TEST_F(Socket_, DatagramasVaoEVoltamEntreDoisObjetos) {
    auto a = CSocketMaster::Cria(mod);
    auto b = CSocketMaster::Cria(mod);
    a->Protocol(sckUDPProtocol);
    b->Protocol(sckUDPProtocol);
    b->Bind(0, "127.0.0.1");
    std::string recebido;
    b->Eventos.DataArrival = [&](std::int32_t n) {
        EXPECT_EQ(n, 5);
        b->GetData(recebido);
    };
    a->RemoteHost("127.0.0.1");
    a->RemotePort(b->LocalPort());
    EXPECT_EQ(a->SendData("ola!!"), 0);
    ASSERT_TRUE(EsperaAte([&] { return !recebido.empty(); }));
    EXPECT_EQ(recebido, "ola!!");
    EXPECT_EQ(b->RemotePort(), a->LocalPort());
    a->RemoteHost("");
    EXPECT_EQ(Erro([&] { a->SendData("x"); }).substr(0, 6), "10047|");
}

} // namespace
} // namespace velmora
