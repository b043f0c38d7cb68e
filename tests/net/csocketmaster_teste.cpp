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

// The error that an operation raises, as "number|text|source".
template <class F> std::string Erro(F&& f) {
    try {
        f();
    } catch (const ErroSocket& e) {
        return std::to_string(e.Numero) + "|" + e.Descricao + "|" + e.Fonte;
    }
    return "nenhum";
}

TEST_F(Socket_, ConexaoPorEnderecoNuncaPassaPelaBusca) {
    auto escuta = CSocketMaster::Cria(mod);
    auto servidor = CSocketMaster::Cria(mod);
    escuta->Eventos.ConnectionRequest = [&](std::int32_t id) { servidor->Accept(id); };
    escuta->Listen();
    EXPECT_EQ(escuta->State(), sckListening);
    ASSERT_NE(escuta->LocalPort(), 0);

    auto cliente = CSocketMaster::Cria(mod);
    std::vector<std::int32_t> estados;
    cliente->Eventos.Connect = [&] { estados.push_back(cliente->State()); };
    cliente->Connect("127.0.0.1", escuta->LocalPort());
    estados.insert(estados.begin(), cliente->State());
    ASSERT_TRUE(
        EsperaAte([&] { return servidor->State() == sckConnected && estados.size() == 2; }));
    EXPECT_EQ(estados, (std::vector<std::int32_t>{sckConnecting, sckConnected}));

    EXPECT_EQ(cliente->RemoteHostIP(), "127.0.0.1");
    EXPECT_EQ(cliente->RemoteHost(), "127.0.0.1");
    EXPECT_EQ(cliente->RemotePort(), escuta->LocalPort());
    EXPECT_EQ(cliente->LocalIP(), "127.0.0.1");
    EXPECT_EQ(servidor->RemotePort(), cliente->LocalPort());
    EXPECT_EQ(escuta->State(), sckListening);
}

TEST_F(Socket_, ConexaoPorNomeBuscaEConecta) {
    auto escuta = CSocketMaster::Cria(mod);
    auto servidor = CSocketMaster::Cria(mod);
    escuta->Eventos.ConnectionRequest = [&](std::int32_t id) { servidor->Accept(id); };
    escuta->Listen();
    auto cliente = CSocketMaster::Cria(mod);
    cliente->Connect("localhost", escuta->LocalPort());
    EXPECT_EQ(cliente->State(), sckResolvingHost);
    EXPECT_EQ(mod.LinhasTabelaBuscas(), 1u);
    EXPECT_TRUE(EsperaAte([&] { return servidor->State() == sckConnected; }));
    EXPECT_EQ(cliente->State(), sckConnected);
    EXPECT_EQ(cliente->RemoteHostIP(), "127.0.0.1");
}

TEST_F(Socket_, FechoDuranteABuscaIgnoraARespostaAtrasada) {
    auto cliente = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*cliente);
    cliente->Connect("localhost", 9);
    ASSERT_EQ(cliente->State(), sckResolvingHost);
    cliente->CloseSck();
    EXPECT_EQ(cliente->State(), sckClosed);
    EXPECT_EQ(cliente->SocketHandle(), -1);
    Pausa(300);
    EXPECT_EQ(cliente->State(), sckClosed);
    EXPECT_TRUE(eventos->empty());
    // Host and port survive the close
    EXPECT_EQ(cliente->RemoteHost(), "localhost");
    EXPECT_EQ(cliente->RemotePort(), 9);
}

TEST_F(Socket_, NomeInexistenteTerminaNoEventoDeErro) {
    auto cliente = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*cliente);
    cliente->Connect("nome-que-nao-existe.invalid", 80);
    ASSERT_TRUE(EsperaAte([&] { return !eventos->empty(); }, 15000));
    EXPECT_EQ(cliente->State(), sckError);
    EXPECT_EQ(eventos->at(0), "Error 11001 Host not found. CSocketMaster.ConnectToIP");
}

TEST_F(Socket_, ListenEmPortaOcupadaFicaFechadoSemErro) {
    auto primeiro = CSocketMaster::Cria(mod);
    primeiro->Listen();
    auto segundo = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*segundo);
    segundo->LocalPort(primeiro->LocalPort());
    EXPECT_NO_THROW(segundo->Listen());
    EXPECT_EQ(segundo->State(), sckClosed);
    EXPECT_TRUE(eventos->empty());
    // The socket stays until the owner closes it
    EXPECT_NE(segundo->SocketHandle(), -1);
    segundo->CloseSck();
    EXPECT_EQ(segundo->SocketHandle(), -1);
}

TEST_F(Socket_, ConexaoRecusadaChegaComoEventoDeErro) {
    auto livre = CSocketMaster::Cria(mod);
    livre->Bind(0);
    const auto porta = livre->LocalPort();
    livre->CloseSck();

    auto cliente = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*cliente);
    cliente->Connect("127.0.0.1", porta);
    ASSERT_TRUE(EsperaAte([&] { return !eventos->empty(); }));
    EXPECT_EQ(cliente->State(), sckError);
    EXPECT_EQ(eventos->at(0).rfind("Error 10061 Connection refused. CSocketMaster.", 0), 0u);
    cliente->CloseSck();
    EXPECT_EQ(cliente->State(), sckClosed);
}

TEST_F(Socket_, OperacoesForaDoEstadoLevantamOErroDoChamador) {
    auto s = CSocketMaster::Cria(mod);
    EXPECT_EQ(Erro([&] { s->Connect("127.0.0.1", 0); }),
              "40014|The argument passed to a function was not in the correct format or in the "
              "specified range.|CSocketMaster.Connect");
    EXPECT_EQ(Erro([&] { s->Connect("127.0.0.1", "porta"); }),
              "40018|Unsupported variant type.|CSocketMaster.Connect");
    EXPECT_EQ(Erro([&] { s->LocalPort(65536); }).substr(0, 6), "40014|");
    std::string texto;
    EXPECT_EQ(Erro([&] { s->PeekData(texto); }),
              "40006|Wrong protocol or connection state for the requested transaction or "
              "request|CSocketMaster.PeekData");
    EXPECT_EQ(Erro([&] { s->Bind(0, "nome-que-nao-existe.invalid"); }),
              "40014|Invalid argument|CSocketMaster.BindInternal");
    s->Listen();
    EXPECT_EQ(Erro([&] { s->Connect(); }),
              "40020|Invalid operation at current state|CSocketMaster.Connect");
    EXPECT_EQ(Erro([&] { s->RemotePort(80); }).substr(0, 6), "40020|");
    EXPECT_EQ(Erro([&] { s->Protocol(sckUDPProtocol); }).substr(0, 6), "40020|");
    EXPECT_EQ(Erro([&] { s->Listen(); }).substr(0, 6), "40020|");

    // A socket that another object holds can't be accepted
    auto outro = CSocketMaster::Cria(mod);
    EXPECT_EQ(Erro([&] { outro->Accept(s->SocketHandle()); }).substr(0, 6), "40006|");
    EXPECT_EQ(outro->SocketHandle(), -1);
}

TEST_F(Socket_, DadosChegamEmBufferEPodemSerEspiadosOuLidosEmPartes) {
    auto p = Conecta(mod);
    std::vector<std::int32_t> totais;
    p.servidor->Eventos.DataArrival = [&](std::int32_t n) { totais.push_back(n); };
    EXPECT_EQ(p.cliente->SendData("abcdef"), 0);
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->BytesReceived() == 6; }));
    EXPECT_EQ(totais.back(), 6);

    std::string s;
    p.servidor->PeekData(s, 2);
    EXPECT_EQ(s, "ab");
    p.servidor->GetData(s, 4);
    EXPECT_EQ(s, "abcd");
    EXPECT_EQ(Erro([&] { p.servidor->GetData(s, -1); }).substr(0, 6), "40014|");
    p.servidor->GetData(s, 0);
    EXPECT_EQ(s, "");
    p.servidor->GetData(s);
    EXPECT_EQ(s, "ef");

    // Fixed-size values in the machine's byte order; too few bytes take nothing
    p.cliente->SendData(Dado{std::int32_t{-123456}});
    p.cliente->SendData(Dado{true});
    p.cliente->SendData(Dado{Moeda{123456789}});
    p.cliente->SendData(Dado{std::uint8_t{7}});
    ASSERT_TRUE(EsperaAte([&] { return p.servidor->BytesReceived() == 15; }));
    Dado d;
    p.servidor->GetData(d, TipoDado::Long);
    EXPECT_EQ(d, Dado{std::int32_t{-123456}});
    d = Dado{};
    p.servidor->GetData(d, TipoDado::Boolean);
    EXPECT_EQ(d, Dado{true});
    d = Dado{Moeda{}};
    p.servidor->GetData(d);
    EXPECT_EQ(d, Dado{Moeda{123456789}});
    d = Dado{0.0};
    p.servidor->GetData(d);
    EXPECT_EQ(d, Dado{0.0});
    EXPECT_EQ(p.servidor->BytesReceived(), 1);
    EXPECT_EQ(Erro([&] {
                  Dado x;
                  p.servidor->GetData(x, static_cast<TipoDado>(9));
              }).substr(0, 6),
              "40018|");
}

TEST_F(Socket_, FechoDoParDeixaOEstado8ComEnvioEDadosSilenciosos) {
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
    // State 8 stays until the owner closes
    Pausa(50);
    EXPECT_EQ(p.cliente->State(), sckClosing);
    p.cliente->CloseSck();
    EXPECT_EQ(p.cliente->State(), sckClosed);
    p.cliente->GetData(s);
    EXPECT_EQ(s, "intacto");
    EXPECT_EQ(p.cliente->SendData("x"), 1);
    EXPECT_EQ(p.cliente->BytesReceived(), 0);
}

TEST_F(Socket_, BytesAntesDoAcceptChegamNumSoDataArrivalDeDentroDoAccept) {
    auto escuta = CSocketMaster::Cria(mod);
    auto dono = CSocketMaster::Cria(mod);
    std::vector<std::string> dentro;
    bool noAccept = false;
    dono->Eventos.DataArrival = [&](std::int32_t n) {
        dentro.push_back((noAccept ? "Accept:DataArrival " : "DataArrival ") + std::to_string(n));
    };
    dono->Eventos.CloseSck = [&] { dentro.push_back(noAccept ? "Accept:CloseSck" : "CloseSck"); };
    escuta->Eventos.ConnectionRequest = [&](std::int32_t id) {
        // Events run before the owner answers, as in the handshake of the peers
        Pausa(300);
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
    ASSERT_TRUE(EsperaAte([&] { return !dentro.empty(); }));
    EXPECT_EQ(dentro, (std::vector<std::string>{"Accept:DataArrival 14", "Accept:CloseSck"}));
    EXPECT_EQ(dono->State(), sckClosing);
    EXPECT_EQ(escuta->State(), sckListening);
    EXPECT_FALSE(mod.IsAcceptedSocket(dono->SocketHandle()));
}

TEST_F(Socket_, PedidoSemRespostaEFechadoEOEscutadorContinua) {
    auto escuta = CSocketMaster::Cria(mod);
    int pedidos = 0;
    std::string quemChama;
    escuta->Eventos.ConnectionRequest = [&](std::int32_t) {
        ++pedidos;
        quemChama = escuta->RemoteHostIP();
    };
    escuta->RemoteHost("guardado");
    escuta->Listen();
    auto cliente = CSocketMaster::Cria(mod);
    cliente->Connect("127.0.0.1", escuta->LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return cliente->State() == sckClosing; }));
    EXPECT_EQ(pedidos, 1);
    EXPECT_EQ(quemChama, "127.0.0.1");
    EXPECT_EQ(escuta->State(), sckListening);
    EXPECT_EQ(escuta->RemoteHost(), "guardado");

    // The listener goes on: the next caller is offered too, and this time taken
    auto dono = CSocketMaster::Cria(mod);
    escuta->Eventos.ConnectionRequest = [&](std::int32_t id) {
        escuta->CloseSck();
        escuta->Accept(id);
    };
    auto segundo = CSocketMaster::Cria(mod);
    segundo->Connect("127.0.0.1", escuta->LocalPort());
    ASSERT_TRUE(EsperaAte([&] { return escuta->State() == sckConnected; }));
    segundo->SendData("ola");
    std::string s;
    ASSERT_TRUE(EsperaAte([&] { return escuta->BytesReceived() == 3; }));
    escuta->GetData(s);
    EXPECT_EQ(s, "ola");
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

    // Partial progress while the OS was full, then the whole total and the end
    ASSERT_GE(eventos->size(), 3u);
    EXPECT_EQ(eventos->at(eventos->size() - 2), "SendProgress " + std::to_string(tamanho) + " 0");
    EXPECT_EQ(std::count(eventos->begin(), eventos->end(), "SendComplete"), 1);
    const auto& primeiro = eventos->front();
    EXPECT_EQ(primeiro.rfind("SendProgress ", 0), 0u);
    EXPECT_NE(primeiro.substr(primeiro.rfind(' ')), " 0");
}

TEST_F(Socket_, DatagramasVaoEVoltamEntreDoisObjetos) {
    auto a = CSocketMaster::Cria(mod);
    auto b = CSocketMaster::Cria(mod);
    a->Protocol(sckUDPProtocol);
    b->Protocol(sckUDPProtocol);
    b->Bind(0, "127.0.0.1");
    EXPECT_EQ(b->State(), sckOpen);
    std::string recebido;
    b->Eventos.DataArrival = [&](std::int32_t n) {
        EXPECT_EQ(n, 5);
        b->GetData(recebido);
    };
    a->RemoteHost("127.0.0.1");
    a->RemotePort(b->LocalPort());
    EXPECT_EQ(a->SendData("ola!!"), 0);
    EXPECT_EQ(a->State(), sckOpen);
    ASSERT_TRUE(EsperaAte([&] { return !recebido.empty(); }));
    EXPECT_EQ(recebido, "ola!!");
    EXPECT_EQ(b->RemotePort(), a->LocalPort());
    EXPECT_EQ(b->RemoteHostIP(), "127.0.0.1");

    a->RemoteHost("");
    EXPECT_EQ(Erro([&] { a->SendData("x"); }).substr(0, 6), "10047|");
}

} // namespace
} // namespace velmora
