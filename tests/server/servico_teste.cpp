// Every request of the game against a running service on loopback, through both fetch
// forms, with the replies cut as the game cuts them.
#include "apoio.h"

#include <gtest/gtest.h>

using namespace teste;

namespace {

const std::string kLista = "/html/listar_velmora.php?NomeUsuario=";
std::string Lista(const std::string& nick, int porta, const std::string& resto = "") {
    return kLista + nick +
           "&prog=Velmora%20Ace&Acao=&nvg=&versao=3.9.0&p=" + std::to_string(porta) +
           "&grupo=&compatibilidade=17" + resto;
}
std::string Cadastro(const std::string& nick, const std::string& senha) {
    return "/html/cadastro.php?tipo=Cadastro&nick=" + nick + "&senha=" + senha +
           "&programa=Velmora";
}
std::string Entrar(const std::string& nick, const std::string& senha) {
    return "/html/cadastro.php?tipo=Entrar&nick=" + nick + "&senha=" + senha + "&programa=Velmora";
}
} // namespace

TEST(Servico, PedidosSimplesNasDuasFormas) {
    ServicoVivo s;
    // Own address, from the address the request came from
    const auto ip = s.Ambas("/html/getip.php", "127.0.0.2");
    EXPECT_EQ(Pedaco(ip, ":", 1), "Seu IP");
    EXPECT_EQ(Pedaco(ip, ":", 2), "127.0.0.2");
    // Relay address
    const auto relay =
        s.Ambas("/html/listar_velmora.php?prog=Velmora%20Chief&Acao=Server&versao=3.9.0");
    EXPECT_EQ(Pedaco(relay, "#", 1), "IPSERVER");
    EXPECT_EQ(Pedaco(relay, "#", 2), "127.0.0.1");
    EXPECT_EQ(Pedaco(relay, "#", 3), std::to_string(s.rede->PortaRelay()));
    // Session parameters: eight fields, no notice
    const auto sessao =
        s.Ambas("/html/listar_velmora.php?prog=Velmora%20Ace&Acao=Parametros&versao=3.9.0&nick=ze");
    EXPECT_EQ(Pedaco(sessao, "**", 1), "R");
    EXPECT_NE(Pedaco(sessao, "**", 3), "Notificame:");
    EXPECT_EQ(Pedaco(sessao, "**", 6), "porta:2001");
    EXPECT_EQ(Pedaco(sessao, "**", 7), "tempo:60");
    EXPECT_EQ(Pedaco(sessao, "**", 8), "TA:30");
    // Update offer: begins with its separator, version of this program, optional
    const auto up = s.Ambas("/update.php?prog=Velmora%20Ace");
    EXPECT_EQ(up.rfind("!*!", 0), 0u);
    EXPECT_EQ(Pedaco(up, "!*!", 2), "3.9.0");
    EXPECT_EQ(Pedaco(up, "!*!", 3), s.Base() + "/html/download.php?prog=velmace");
    EXPECT_EQ(Pedaco(up, "!*!", 4), "opcional");
    // Ban test, may a nick be created
    EXPECT_EQ(s.Ambas("/html/cadastro.php?tipo=ta&programa=Velmora"), "OK");
    const auto pc = s.Ambas("/html/cadastro.php?programa=Velmora%20Ace&tipo=pc");
    EXPECT_NE(pc.find("RESP"), std::string::npos);
    EXPECT_EQ(pc.find("NOTPOD"), std::string::npos);
    // Leaving the waiting list
    EXPECT_NE(s.Ambas("/html/"
                      "listar_velmora.php?v=N&Nick1=a&Nick2=b&prog=Velmora%20Ace&Acao=Deletar_"
                      "Conectado&wPlayer=&mac=x")
                  .find("#OK#"),
              std::string::npos);
}

TEST(Servico, RespostaNuaEmUmaSoEscritaEHttpComCabecalhos) {
    ServicoVivo s;
    std::string inteiro;
    const auto primeira = s.Nua("/update.php?prog=Velmora%20Ace", "127.0.0.1", &inteiro);
    EXPECT_EQ(primeira, inteiro); // nothing after the first arrival
    EXPECT_EQ(primeira.find("HTTP/"), std::string::npos);
    const auto h = s.Get("/update.php?prog=Velmora%20Ace");
    EXPECT_EQ(h.status, 200);
    EXPECT_NE(h.cabecalhos.find("Content-Length: " + std::to_string(primeira.size())),
              std::string::npos);
    EXPECT_EQ(h.corpo, primeira);
    // The absolute form in HTTP, and HEAD without a body
    EXPECT_EQ(s.Get(s.Base() + "/html/getip.php").corpo, "Seu IP:127.0.0.1");
    const int c = Conecta(s.rede->PortaWeb());
    EnviaTudo(c, "HEAD /html/getip.php HTTP/1.1\r\n\r\n");
    const auto cab = RecebeAteFechar(c);
    ::close(c);
    EXPECT_NE(cab.find("Content-Length: 16"), std::string::npos);
    EXPECT_EQ(cab.substr(cab.size() - 4), "\r\n\r\n");
}

TEST(Servico, OfertaDeAtualizacaoEAvisoDoOperador) {
    ServicoVivo s([](Opcoes& o) {
        o.versaoNova = "3.9.1";
        o.linkInstalador = "http://exemplo/VelmoraAce.exe";
        o.obrigatorio = true;
        o.textoAtualizacao = "Nova versão;Mais rápida";
        o.aviso = "Manutenção às 22h";
        o.avisoBloqueia = false;
    });
    const auto up = s.Ambas("/update.php?prog=Velmora%20Ace");
    EXPECT_EQ(Pedaco(up, "!*!", 2), "3.9.1");
    EXPECT_EQ(Pedaco(up, "!*!", 3), "http://exemplo/VelmoraAce.exe");
    EXPECT_EQ(Pedaco(up, "!*!", 4), "obrigatorio");
    EXPECT_EQ(Pedaco(up, "!*!", 5), "Nova versão;Mais rápida");
    const auto sessao =
        s.Ambas("/html/listar_velmora.php?prog=Velmora%20Ace&Acao=&versao=3.9.0&nick=ze");
    EXPECT_EQ(Pedaco(sessao, "**", 3), "Notificame:");
    EXPECT_EQ(Pedaco(sessao, "**", 4), "Manutenção às 22h");
    EXPECT_EQ(Pedaco(sessao, "**", 5), "true");
}

TEST(Servico, CadastroEntradaELimitePorComputador) {
    ServicoVivo s([](Opcoes& o) { o.limiteCadastros = 2; });
    EXPECT_EQ(s.Nua(Cadastro("Jo%C3%A3o%20Silva", "abcd"), "127.0.0.2"), "Resposta:#OK");
    EXPECT_EQ(s.Nua(Cadastro("jOÃO%20SILVA", "x123"), "127.0.0.3"),
              "Resposta:#OK"); // other letters
    EXPECT_EQ(s.Nua(Cadastro("JOãO%20Silva", "abcd"), "127.0.0.3"), "Resposta:#Jatem");
    // Refusals carry a message in field 3, never the password
    const auto curta = s.Nua(Cadastro("novo", "abc"), "127.0.0.4");
    EXPECT_EQ(Pedaco(curta, "#", 1), "Resposta:");
    EXPECT_FALSE(Pedaco(curta, "#", 3).empty());
    for (const auto* ruim : {"a%23b", "a*b", "%20", "a%0Db", "abcdefghijklmnopqrstu"}) {
        const auto r = s.Nua(Cadastro(ruim, "abcd"), "127.0.0.4");
        EXPECT_EQ(Pedaco(r, "#", 1), "Resposta:") << ruim;
        EXPECT_NE(Pedaco(r, "#", 2), "OK") << ruim;
    }
    // Login: points and id as numbers; a wrong password and an unknown nick alike
    const auto ok = s.Ambas(Entrar("Jo%C3%A3o%20Silva", "abcd"), "127.0.0.2");
    EXPECT_EQ(Pedaco(ok, "#", 1), "Resposta:");
    EXPECT_NE(Pedaco(ok, "#", 2), "NOT");
    EXPECT_EQ(Pedaco(ok, "#", 3), "1000");
    EXPECT_GT(std::stoll(Pedaco(ok, "#", 4)), 0);
    EXPECT_EQ(s.Ambas(Entrar("Jo%C3%A3o%20Silva", "abce")), "Resposta:#NOT");
    EXPECT_EQ(s.Ambas(Entrar("ninguem", "abcd")), "Resposta:#NOT");
    // The limit per computer: 127.0.0.2 may create one more, then no more
    EXPECT_EQ(s.Nua(Cadastro("segundo", "abcd"), "127.0.0.2"), "Resposta:#OK");
    const auto pc = s.Nua("/html/cadastro.php?programa=Velmora%20Ace&tipo=pc", "127.0.0.2");
    EXPECT_NE(pc.find("RESP"), std::string::npos);
    EXPECT_NE(pc.find("NOTPOD"), std::string::npos);
    EXPECT_FALSE(Pedaco(pc, ":", 3).empty());
    EXPECT_EQ(Pedaco(s.Nua(Cadastro("terceiro", "abcd"), "127.0.0.2"), "#", 2), "Limite");
    // A day later it may again
    s.agora += 86401;
    EXPECT_EQ(
        s.Nua("/html/cadastro.php?programa=Velmora%20Ace&tipo=pc", "127.0.0.2").find("NOTPOD"),
        std::string::npos);
    // Passwords are neither stored nor logged
    const auto conta = s.armazem->ContaPorNick("joão silva");
    ASSERT_TRUE(conta);
    EXPECT_EQ(conta->hash.rfind("$argon2id$", 0), 0u);
    EXPECT_EQ(conta->hash.find("abcd"), std::string::npos);
    EXPECT_EQ(s.Log().find("abcd"), std::string::npos);
    EXPECT_NE(s.Log().find("tipo=Entrar"), std::string::npos);
}

TEST(Servico, TentativasDeEntradaLimitadasPorEndereco) {
    ServicoVivo s;
    ASSERT_EQ(s.Nua(Cadastro("ana", "abcd"), "127.0.0.5"), "Resposta:#OK");
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(s.Nua(Entrar("ana", "errada"), "127.0.0.5"), "Resposta:#NOT");
    // The eleventh gets no marker: the game says the service did not answer, and keeps the nick
    const auto r = s.Nua(Entrar("ana", "abcd"), "127.0.0.5");
    EXPECT_NE(Pedaco(r, "#", 1), "Resposta:");
    // Another address is not held back
    EXPECT_EQ(Pedaco(s.Nua(Entrar("ana", "abcd"), "127.0.0.6"), "#", 2), "OK");
}

TEST(Servico, BanimentosPorEnderecoEPorNick) {
    ServicoVivo s;
    s.armazem->Bane({"endereco", "127.0.0.7", s.agora + 3600, "Linguagem ofensiva: no chat"});
    const auto ta = s.Ambas("/html/cadastro.php?tipo=ta&programa=Velmora", "127.0.0.7");
    EXPECT_EQ(ta.rfind("BLOQUEADO", 0), 0u);
    EXPECT_NE(Pedaco(ta, ":", 2).find("Linguagem ofensiva"), std::string::npos);
    EXPECT_EQ(s.Ambas("/html/cadastro.php?tipo=ta&programa=Velmora", "127.0.0.8"), "OK");
    // A banned address gets no place on the list and can't create nicks
    EXPECT_EQ(s.Nua(Lista("x", 2001), "127.0.0.7"), "**");
    EXPECT_NE(
        s.Nua("/html/cadastro.php?programa=Velmora%20Ace&tipo=pc", "127.0.0.7").find("NOTPOD"),
        std::string::npos);
    // The ban ends
    s.agora += 3601;
    EXPECT_EQ(s.Nua("/html/cadastro.php?tipo=ta&programa=Velmora", "127.0.0.7"), "OK");
    // A nick ban stops the player at the session parameters
    s.armazem->Bane({"nick", "troll", 0, ""});
    const auto sessao =
        s.Nua("/html/listar_velmora.php?prog=Velmora%20Ace&Acao=&versao=3.9.0&nick=TROLL");
    EXPECT_EQ(Pedaco(sessao, "**", 1), "R");
    EXPECT_EQ(Pedaco(sessao, "**", 3), "Notificame:");
    EXPECT_EQ(Pedaco(sessao, "**", 5), "false");
}

TEST(Servico, ListaDeEspera) {
    ServicoVivo s;
    EXPECT_EQ(s.Ambas(kLista + "&p=2001"), "Faltam dados");
    EXPECT_EQ(s.Nua(Lista("ana", 2001), "127.0.0.2"), "**"); // alone: a list with no entries
    const auto bia = s.Ambas(Lista("bia", 2002, "&pab=s"), "127.0.0.3");
    EXPECT_EQ(Pedaco(bia, "**", 1), "!!127.0.0.2:2001");
    EXPECT_EQ(Pedaco(bia, "**", 2), "");
    // The copy that can be reached comes first; nobody sees himself
    const auto ana = s.Nua(Lista("ana", 2001), "127.0.0.2");
    EXPECT_EQ(Pedaco(ana, "**", 1), "!!127.0.0.3:2002");
    EXPECT_EQ(Pedaco(ana, "**", 2), "");
    // Behind the same public address, the local address that was sent
    s.Nua(Lista("caio", 2003, "&prt=192.168.0.9"), "127.0.0.3");
    const auto bia2 = s.Nua(Lista("bia", 2002, "&pab=s"), "127.0.0.3");
    EXPECT_NE(bia2.find("**!!192.168.0.9:2003**"), std::string::npos);
    // Groups meet only their group
    const auto grupo = s.Nua(
        Lista("dani", 2004, "&grupo=amigos").replace(Lista("dani", 2004).find("&grupo=&"), 8, "&"),
        "127.0.0.4");
    EXPECT_EQ(grupo, "**");
    // Leaving takes the entry off
    s.Nua("/html/"
          "listar_velmora.php?v=N&Nick1=ana&Nick2=bia&prog=Velmora%20Ace&Acao=Deletar_Conectado&"
          "wPlayer=&mac=x",
          "127.0.0.2");
    EXPECT_EQ(s.Nua(Lista("bia", 2002, "&pab=s"), "127.0.0.3").find("127.0.0.2"),
              std::string::npos);
    // Entries expire
    s.agora += 200;
    EXPECT_EQ(s.Nua(Lista("eva", 2005), "127.0.0.5"), "**");
}

// A copy on the service's own machine is listed under the name the operator published, the
// only one by which the others reach it; a local-network address sent along still wins.
TEST(Servico, ListaDeEsperaNomeiaACopiaDaPropriaMaquinaPeloHostPublico) {
    ServicoVivo s([](Opcoes& o) { o.hostPublico = "damas.example.org"; });
    s.Nua(Lista("ana", 2001), "127.0.0.1");
    EXPECT_EQ(Pedaco(s.Nua(Lista("bia", 2002), "127.0.0.1"), "**", 1), "!!damas.example.org:2001");
    s.Nua(Lista("caio", 2003, "&prt=192.168.0.9"), "127.0.0.1");
    EXPECT_NE(s.Nua(Lista("bia", 2002), "127.0.0.1").find("!!192.168.0.9:2003"), std::string::npos);
}

TEST(Servico, TesteDePortaDiscaDeVoltaParaOProprioEndereco) {
    ServicoVivo s;
    // A port open on 127.0.0.2 only
    const int l = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    ::inet_pton(AF_INET, "127.0.0.2", &a.sin_addr);
    ASSERT_EQ(::bind(l, reinterpret_cast<sockaddr*>(&a), sizeof a), 0);
    ASSERT_EQ(::listen(l, 4), 0);
    socklen_t tam = sizeof a;
    ::getsockname(l, reinterpret_cast<sockaddr*>(&a), &tam);
    const auto porta = std::to_string(ntohs(a.sin_port));
    const auto online = s.Nua("/testaporta/nvping.php?porta=" + porta, "127.0.0.2");
    EXPECT_NE(online.find("RESP"), std::string::npos);
    EXPECT_NE(online.find("Online"), std::string::npos);
    // The same port asked from another address is dialled there, where nothing listens
    const auto offline = s.Get("/testaporta/nvping.php?porta=" + porta, "127.0.0.3").corpo;
    EXPECT_NE(offline.find("RESP"), std::string::npos);
    EXPECT_NE(offline.find("Offline"), std::string::npos);
    // Ports below 1024 are not dialled; neither word comes back
    const auto baixa = s.Nua("/testaporta/nvping.php?porta=80", "127.0.0.4");
    EXPECT_NE(baixa.find("RESP"), std::string::npos);
    EXPECT_EQ(baixa.find("Online"), std::string::npos);
    EXPECT_EQ(baixa.find("Offline"), std::string::npos);
    // At most four tests a minute from one address
    for (int i = 0; i < 3; ++i) s.Nua("/testaporta/nvping.php?porta=" + porta, "127.0.0.2");
    const auto demais = s.Nua("/testaporta/nvping.php?porta=" + porta, "127.0.0.2");
    EXPECT_NE(demais.find("RESP"), std::string::npos);
    EXPECT_EQ(demais.find("Online"), std::string::npos);
    ::close(l);
}

TEST(Servico, EntradaRuimTemRespostaLimitadaOuFechamento) {
    ServicoVivo s([](Opcoes& o) {
        o.tempoPedido = 0.3;
        o.maxConexoes = 8;
    });
    // Binary bytes: closed with a short answer
    int c = Conecta(s.rede->PortaWeb());
    EnviaTudo(c, std::string("\x00\xff\x16\x03garbage\r\n\r\n", 15));
    bool fechou = false;
    auto r = RecebeAteFechar(c, &fechou);
    ::close(c);
    EXPECT_TRUE(fechou);
    EXPECT_LT(r.size(), 200u);
    // A huge query: refused once the bound is passed, without waiting for the end
    c = Conecta(s.rede->PortaWeb());
    EnviaTudo(c, "GET /html/getip.php?" + std::string(20000, 'a'));
    r = RecebeAteFechar(c, &fechou);
    ::close(c);
    EXPECT_TRUE(fechou);
    EXPECT_NE(r.find("Pedido inválido"), std::string::npos);
    // A slow client that never ends its request is closed after the deadline
    c = Conecta(s.rede->PortaWeb());
    EnviaTudo(c, "GET /html/get");
    const auto antes = std::chrono::steady_clock::now();
    r = RecebeAteFechar(c, &fechou, 3000);
    ::close(c);
    EXPECT_TRUE(fechou);
    EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::milliseconds(2000));
    // Silent connections beyond the bound are dropped, and the service still answers after
    std::vector<int> mudas;
    for (int i = 0; i < 20; ++i) mudas.push_back(Conecta(s.rede->PortaWeb()));
    std::this_thread::sleep_for(std::chrono::milliseconds(600));
    for (const int m : mudas) ::close(m);
    EXPECT_EQ(s.Nua("/html/getip.php"), "Seu IP:127.0.0.1");
    // Unknown paths: a page, not a crash
    EXPECT_EQ(s.Get("/../../etc/passwd").status, 404);
}

TEST(Servico, PaginasEmPortuguesComTextoEscapado) {
    ServicoVivo s;
    ASSERT_EQ(s.Nua(Cadastro("%3Cscript%3Ex%3C/script%3E", "abcd"), "127.0.0.2"), "Resposta:#OK");
    ASSERT_EQ(s.Nua(Cadastro("Maria", "segredo1"), "127.0.0.3"), "Resposta:#OK");
    const auto ranking = s.Get("/html/ranking_velmora.php");
    EXPECT_EQ(ranking.status, 200);
    EXPECT_NE(ranking.cabecalhos.find("text/html; charset=utf-8"), std::string::npos);
    EXPECT_NE(ranking.corpo.find("lang=\"pt-BR\""), std::string::npos);
    EXPECT_NE(ranking.corpo.find("name=\"viewport\""), std::string::npos);
    EXPECT_NE(ranking.corpo.find("&lt;script&gt;x&lt;/script&gt;"), std::string::npos);
    EXPECT_EQ(ranking.corpo.find("<script>"), std::string::npos);
    EXPECT_NE(ranking.corpo.find("Maria"), std::string::npos);
    const auto maria = s.armazem->ContaPorNick("maria");
    ASSERT_TRUE(maria);
    const auto id = std::to_string(maria->id);
    // Public profile, own profile by id and password, by nick and password
    const auto publico = s.Get("/html/perfil.php?prog=velmora&id=" + id);
    EXPECT_NE(publico.corpo.find("Perfil do jogador"), std::string::npos);
    EXPECT_EQ(publico.corpo.find("Cadastrado em"), std::string::npos);
    EXPECT_NE(
        s.Get("/html/perfil.php?prog=velmora&senha=segredo1&id=" + id).corpo.find("Cadastrado em"),
        std::string::npos);
    EXPECT_NE(s.Get("/html/perfil.php?prog=velmora&s=segredo1&n=Maria").corpo.find("Meu perfil"),
              std::string::npos);
    const auto errada = s.Get("/html/perfil.php?prog=velmora&s=outra&n=Maria");
    EXPECT_NE(errada.corpo.find("Nick ou senha incorretos"), std::string::npos);
    EXPECT_EQ(errada.corpo.find("Cadastrado em"), std::string::npos);
    for (const auto* p :
         {"/html/roteador.html", "/html/faleconosco.html", "/html/download.php?prog=velmace"})
        EXPECT_EQ(s.Get(p).status, 200) << p;
    EXPECT_EQ(s.Get("/html/perfil.php?prog=velmora&id=999").status, 404);
}
