// The registry: rows of the socket table, late notifications, the window's life, the life
// of the service, and the error numbers and texts.
#include "apoio.h"

#include "net/errosocket.h"

#include <cerrno>
#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace teste;

TEST(Registro, NotificacaoAtrasadaParaSocketFechadoNaoFazNada) {
    modSocketMaster mod;
    auto p = Conecta(mod);
    auto eventos = RegistraEventos(*p.cliente);
    const auto fd = p.cliente->SocketHandle();
    p.cliente->CloseSck();
    for (const auto evento : {FD_READ, FD_WRITE, FD_CONNECT, FD_CLOSE, FD_ACCEPT})
        mod.WindowProc(MensagemSocket, fd, FazLParam(evento, 0));
    mod.WindowProc(MensagemSocket, fd, FazLParam(FD_CLOSE, 10054));
    mod.WindowProc(MensagemBusca, 12345, FazLParam(0, 11001));
    mod.WindowProc(0x0400, fd, 0);
    EXPECT_TRUE(eventos->empty());
    EXPECT_EQ(p.cliente->State(), sckClosed);
}

TEST(Registro, NotificacaoDeSocketVivoChegaAoDono) {
    modSocketMaster mod;
    auto p = Conecta(mod);
    auto eventos = RegistraEventos(*p.cliente);
    // An error in a notification: the object fails and tells its owner
    mod.WindowProc(MensagemSocket, p.cliente->SocketHandle(), FazLParam(FD_READ, 10053));
    EXPECT_EQ(p.cliente->State(), sckError);
    ASSERT_EQ(eventos->size(), 1u);
    EXPECT_EQ(eventos->at(0),
              "Error 10053 Software caused connection abort. CSocketMaster.PostSocket");
}

TEST(Registro, NumeroReaproveitadoOcupaALinhaLivre) {
    modSocketMaster mod;
    EXPECT_FALSE(mod.JanelaAtiva());
    auto a = CSocketMaster::Cria(mod);
    a->Listen();
    EXPECT_TRUE(mod.JanelaAtiva());
    const auto fd = a->SocketHandle();
    const auto linhas = mod.LinhasTabelaSockets();
    a->CloseSck();
    EXPECT_FALSE(mod.JanelaAtiva());
    EXPECT_FALSE(mod.IsSocketRegistered(fd));

    auto b = CSocketMaster::Cria(mod);
    auto eventos = RegistraEventos(*b);
    b->Listen();
    EXPECT_TRUE(mod.JanelaAtiva());
    ASSERT_EQ(b->SocketHandle(), fd); // the OS hands out the lowest free number
    EXPECT_EQ(mod.LinhasTabelaSockets(), linhas);
    EXPECT_TRUE(mod.IsSocketRegistered(fd));
    // The row now leads to the new owner
    mod.WindowProc(MensagemSocket, fd, FazLParam(FD_ACCEPT, 10024));
    EXPECT_EQ(b->State(), sckError);
    EXPECT_EQ(a->State(), sckClosed);
}

TEST(Registro, ServicoSobeComOPrimeiroObjetoEDesceComOUltimo) {
    modSocketMaster mod;
    EXPECT_FALSE(mod.Iniciado());
    {
        auto a = CSocketMaster::Cria(mod);
        auto b = CSocketMaster::Cria(mod);
        EXPECT_TRUE(mod.Iniciado());
        EXPECT_EQ(mod.ObjetosVivos(), 2);
        a->Listen();
        // Ending an object closes its socket
    }
    EXPECT_EQ(mod.ObjetosVivos(), 0);
    EXPECT_FALSE(mod.Iniciado());
    EXPECT_FALSE(mod.JanelaAtiva());
    EXPECT_EQ(mod.SocketsNaColecao(), 0u);
}

TEST(Registro, RespostaDeBuscaDepoisDoFimDoRegistroEDescartada) {
    {
        modSocketMaster mod;
        auto cliente = CSocketMaster::Cria(mod);
        cliente->Connect("localhost", 9);
        EXPECT_EQ(cliente->State(), sckResolvingHost);
    }
    // The answer comes into a process where neither the object nor the registry exists
    Pausa(300);
}

TEST(Registro, DonoQueSoltaOObjetoDentroDoProprioEventoNaoDerrubaNada) {
    modSocketMaster mod;
    auto p = Conecta(mod);
    bool fechou = false;
    p.cliente->Eventos.CloseSck = [&] {
        fechou = true;
        p.cliente.reset(); // the last reference, from inside its own event
    };
    p.servidor->CloseSck();
    ASSERT_TRUE(EsperaAte([&] { return fechou; }));
    EXPECT_EQ(p.cliente, nullptr);
    EXPECT_EQ(mod.ObjetosVivos(), 2);
}

TEST(Registro, CancelDisplayFalsoPedeACaixaDeMensagem) {
    modSocketMaster mod;
    std::string caixa;
    mod.CaixaMensagem = [&](const std::string& titulo, const std::string& texto) {
        caixa = titulo + ": " + texto;
    };
    auto livre = CSocketMaster::Cria(mod);
    livre->Bind(0);
    const auto porta = livre->LocalPort();
    livre->CloseSck();
    auto cliente = CSocketMaster::Cria(mod);
    cliente->Eventos.Error = [](std::int32_t, const std::string&, std::int32_t, const std::string&,
                                const std::string&, std::int32_t, bool& CancelDisplay) {
        EXPECT_TRUE(CancelDisplay);
        CancelDisplay = false;
    };
    cliente->Connect("127.0.0.1", porta);
    ASSERT_TRUE(EsperaAte([&] { return !caixa.empty(); }));
    EXPECT_EQ(caixa.substr(caixa.find(':')), ": Connection refused.");
}

TEST(Registro, ErrosDoSistemaTomamOsNumerosETextosDoWinsock) {
    EXPECT_EQ(NumeroWinsock(ECONNREFUSED), 10061);
    EXPECT_EQ(NumeroWinsock(EAGAIN), 10035);
    EXPECT_EQ(NumeroWinsock(EINPROGRESS), 10035);
    EXPECT_EQ(NumeroWinsock(EADDRINUSE), 10048);
    EXPECT_EQ(NumeroWinsock(ECONNRESET), 10054);
    EXPECT_EQ(NumeroWinsock(EPIPE), 10054);
    EXPECT_EQ(NumeroWinsock(EMFILE), 10024);
    EXPECT_EQ(NumeroWinsock(EIO), 10107);
    EXPECT_EQ(modSocketMaster::ErrorDescription(10048), "Address already in use.");
    EXPECT_EQ(modSocketMaster::ErrorDescription(11004),
              "Valid name, no data record of requested type.");
    EXPECT_EQ(modSocketMaster::ErrorDescription(10107), "Unknown error.");
    EXPECT_EQ(modSocketMaster::ErrorDescription(0), "Unknown error.");
    EXPECT_EQ(TextoErroSocket(7), "Out of memory");
    EXPECT_EQ(TextoErroSocket(10061), "Connection refused.");
}

} // namespace
} // namespace velmora
