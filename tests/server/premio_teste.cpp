// Awards of a win: only for a pair the service brought together, once per game, from the
// winner's own address, never from a banned one; the reply always parses.
#include "apoio.h"

#include <gtest/gtest.h>

using namespace teste;

namespace {

std::string PedidoPremio(std::int64_t v, std::int64_t p) {
    return "/html/cadastro.php?programa=Velmora&id1=" + std::to_string(v) +
           "&id2=" + std::to_string(p) + "&tipo=AtribuiB&Olp=0&Ter=T&idt=0";
}

struct Jogador {
    std::string nick, origem;
    std::int64_t id = 0;
};

Jogador CriaEEntra(ServicoVivo& s, const std::string& nick, const std::string& origem) {
    s.Nua("/html/cadastro.php?tipo=Cadastro&nick=" + nick + "&senha=abcd&programa=Velmora", origem);
    const auto r = s.Nua(
        "/html/cadastro.php?tipo=Entrar&nick=" + nick + "&senha=abcd&programa=Velmora", origem);
    return {nick, origem, std::stoll(Pedaco(r, "#", 4))};
}

std::string NickRelay(const Jogador& j, const std::string& grupo = "") {
    return "Nick:#" + std::to_string(j.id) + "#" + j.nick + "#1000#17#NV#Chief#PC-" + j.nick +
           "#Port#IDT:0#" + grupo + "A#";
}

// Two copies meet on the relay; the sockets stay open until `fecha`
struct ParNoRelay {
    int a = -1, b = -1;
    ~ParNoRelay() {
        if (a >= 0) ::close(a);
        if (b >= 0) ::close(b);
    }
};

void Pareia(ServicoVivo& s, ParNoRelay& p, const Jogador& x, const Jogador& y,
            const std::string& grupo = "") {
    p.a = Conecta(s.rede->PortaRelay(), x.origem);
    EnviaTudo(p.a, NickRelay(x, grupo));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    p.b = Conecta(s.rede->PortaRelay(), y.origem);
    EnviaTudo(p.b, NickRelay(y, grupo));
    RecebeUma(p.a);
    // The pair is written by a worker thread
    for (int i = 0; grupo.empty() && i < 200 && !s.armazem->ParRecente(x.id, y.id, 0); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

std::int64_t Pt(const std::string& r, int n) {
    return std::stoll(Pedaco(Pedaco(r, "#", n + 1), ":", 2));
}

} // namespace

TEST(Premio, ParDoRelayUmaVezPorJogoDoEnderecoDoVencedor) {
    ServicoVivo s;
    const auto ana = CriaEEntra(s, "ana", "127.0.0.2");
    const auto bia = CriaEEntra(s, "bia", "127.0.0.3");
    const auto caio = CriaEEntra(s, "caio", "127.0.0.4");
    // No pair yet: the totals as they stand, in the reply's grammar
    auto r = s.Ambas(PedidoPremio(ana.id, bia.id), ana.origem);
    EXPECT_EQ(r, "OK#PT1:1000#PT2:1000");
    ParNoRelay par;
    Pareia(s, par, ana, bia);
    // A report from the loser's address, or about another pair, counts nothing
    EXPECT_EQ(s.Nua(PedidoPremio(ana.id, bia.id), bia.origem), "OK#PT1:1000#PT2:1000");
    EXPECT_EQ(s.Nua(PedidoPremio(ana.id, caio.id), ana.origem), "OK#PT1:1000#PT2:1000");
    // The winner's report: an even game
    r = s.Ambas(PedidoPremio(ana.id, bia.id), ana.origem);
    EXPECT_EQ(Pedaco(r, "#", 1), "OK");
    EXPECT_EQ(Pedaco(Pedaco(r, "#", 2), ":", 1), "PT1");
    EXPECT_EQ(Pt(r, 1), 1045);
    EXPECT_EQ(Pt(r, 2), 960);
    // The same game reported again (Ambas above sent it twice) counted once; a new game a
    // minute later counts, at half the value against the same opponent
    s.agora += 61;
    r = s.Nua(PedidoPremio(ana.id, bia.id), ana.origem);
    EXPECT_GT(Pt(r, 1), 1045);
    EXPECT_LT(Pt(r, 1) - 1045, 25);
    EXPECT_LT(Pt(r, 2), 960);
    // The loser never falls below 0, and the points show on the ranking
    EXPECT_NE(s.Get("/html/ranking_velmora.php").corpo.find("ana"), std::string::npos);
    // No more than five wins of one pair count
    for (int i = 0; i < 6; ++i) {
        s.agora += 61;
        s.Nua(PedidoPremio(bia.id, ana.id), bia.origem);
    }
    const auto b = s.armazem->ContaPorId(bia.id);
    ASSERT_TRUE(b);
    EXPECT_EQ(b->vitorias, 3);
}

TEST(Premio, GrupoBanimentoEListaDeEspera) {
    ServicoVivo s;
    const auto ana = CriaEEntra(s, "ana", "127.0.0.2");
    const auto bia = CriaEEntra(s, "bia", "127.0.0.3");
    {
        // Friends with a group password play for no points
        ParNoRelay par;
        Pareia(s, par, ana, bia, "segredo");
        EXPECT_EQ(s.Nua(PedidoPremio(ana.id, bia.id), ana.origem), "OK#PT1:1000#PT2:1000");
    }
    // Met through the waiting list: both listed, then each leaves the list
    const std::string lista =
        "&prog=Velmora%20Ace&Acao=&nvg=&versao=3.9.0&p=2001&grupo=&compatibilidade=17";
    s.Nua("/html/listar_velmora.php?NomeUsuario=ana" + lista, ana.origem);
    s.Nua("/html/listar_velmora.php?NomeUsuario=bia" + lista, bia.origem);
    s.Nua("/html/"
          "listar_velmora.php?v=N&Nick1=ana&Nick2=bia&prog=Velmora%20Ace&Acao=Deletar_Conectado&"
          "wPlayer=&mac=PC-bia",
          ana.origem);
    s.Nua("/html/"
          "listar_velmora.php?v=N&Nick1=bia&Nick2=ana&prog=Velmora%20Ace&Acao=Deletar_Conectado&"
          "wPlayer=S&mac=PC-ana",
          bia.origem);
    // A banned address reports in vain, and still gets a reply the game parses
    s.armazem->Bane({"endereco", bia.origem, 0, ""});
    EXPECT_EQ(s.Nua(PedidoPremio(bia.id, ana.id), bia.origem), "OK#PT1:1000#PT2:1000");
    const auto r = s.Nua(PedidoPremio(ana.id, bia.id), ana.origem);
    EXPECT_EQ(Pt(r, 1), 1045);
    EXPECT_EQ(Pt(r, 2), 960);
    // Nonsense ids: parsed, nothing changes
    for (const auto* q :
         {"id1=x&id2=1", "id1=-1&id2=2", "id1=99999999999999999999&id2=1", "id1=&id2="}) {
        const auto t = s.Nua(
            "/html/cadastro.php?programa=Velmora&tipo=AtribuiB&Olp=0&Ter=F&idt=0&" + std::string(q),
            ana.origem);
        EXPECT_EQ(Pedaco(t, "#", 1), "OK") << q;
        EXPECT_EQ(Pedaco(Pedaco(t, "#", 3), ":", 1), "PT2") << q;
    }
    EXPECT_EQ(s.armazem->ContaPorId(ana.id)->pontos, 1045);
}
