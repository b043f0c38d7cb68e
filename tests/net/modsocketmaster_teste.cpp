// The registry: late notifications, rows of the socket table, the window's life, the life
// of the service.
#include "apoio.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace teste;

TEST(Registro, NotificacaoAtrasadaNaoFazNadaEAdeSocketVivoChegaAoDono) {
    modSocketMaster mod;
    auto p = Conecta(mod);
    auto eventos = RegistraEventos(*p.cliente);
    const auto fd = p.cliente->SocketHandle();
    p.cliente->CloseSck();
    for (const auto evento : {FD_READ, FD_WRITE, FD_CONNECT, FD_CLOSE, FD_ACCEPT})
        mod.WindowProc(MensagemSocket, fd, FazLParam(evento, 0));
    mod.WindowProc(MensagemSocket, fd, FazLParam(FD_CLOSE, 10054));
    mod.WindowProc(MensagemBusca, 12345, FazLParam(0, 11001));
    EXPECT_TRUE(eventos->empty());
    EXPECT_EQ(p.cliente->State(), sckClosed);

    auto e = RegistraEventos(*p.servidor);
    mod.WindowProc(MensagemSocket, p.servidor->SocketHandle(), FazLParam(FD_READ, 10053));
    EXPECT_EQ(p.servidor->State(), sckError);
    EXPECT_EQ(*e, std::vector<std::string>{
                      "Error 10053 Software caused connection abort. CSocketMaster.PostSocket"});
}

TEST(Registro, NumeroReaproveitadoOcupaALinhaLivreEAJanelaVaiEVolta) {
    modSocketMaster mod;
    EXPECT_FALSE(mod.JanelaAtiva());
    auto a = CSocketMaster::Cria(mod);
    a->Listen();
    EXPECT_TRUE(mod.JanelaAtiva());
    const auto fd = a->SocketHandle();
    const auto linhas = mod.LinhasTabelaSockets();
    a->CloseSck();
    EXPECT_FALSE(mod.JanelaAtiva());

    auto b = CSocketMaster::Cria(mod);
    b->Listen();
    EXPECT_TRUE(mod.JanelaAtiva());
    ASSERT_EQ(b->SocketHandle(), fd); // the OS hands out the lowest free number
    EXPECT_EQ(mod.LinhasTabelaSockets(), linhas);
    mod.WindowProc(MensagemSocket, fd, FazLParam(FD_ACCEPT, 10024));
    EXPECT_EQ(b->State(), sckError); // the row leads to the new owner
    EXPECT_EQ(a->State(), sckClosed);
}

TEST(Registro, ServicoSobeComOPrimeiroObjetoEDesceComOUltimo) {
    modSocketMaster mod;
    {
        auto a = CSocketMaster::Cria(mod);
        auto b = CSocketMaster::Cria(mod);
        EXPECT_EQ(mod.ObjetosVivos(), 2);
        EXPECT_TRUE(mod.Iniciado());
        a->Listen(); // ending the object closes its socket
    }
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
    Pausa(300); // the answer comes when neither the object nor the registry exists
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
    EXPECT_EQ(mod.ObjetosVivos(), 2);
}

} // namespace
} // namespace velmora
