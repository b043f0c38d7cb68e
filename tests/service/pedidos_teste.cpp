// The requests: each row's URL key for key, the order of the two fetches and their
// time-outs, and the real fetches against a fake service on loopback (both forms, a reply
// cut in two, silence, a service that is down).
#include "apoio.h"
#include "net/modsocketmaster.h"
#include "service/endereco.h"
#include "service/pedidos.h"
#include "service/respostas.h"
#include "store/configuracao.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <unistd.h>

using namespace velmora;
using namespace velmora::teste;

namespace {

const std::string E = "http://svc:1";

} // namespace

TEST(Urls, CadaLinhaComSuasChavesEmOrdem) {
    BuscasRoteiro b;
    Pedidos p(b, E, "http://porta:2");
    PedidoLista l;
    l.nick = "Ana Maria";
    l.porta = 2001;
    EXPECT_EQ(p.UrlLista(l),
              E + "/html/listar_velmora.php?NomeUsuario=Ana%20Maria&prog=Velmora%20Ace"
                  "&Acao=&nvg=&versao=3.9.0&p=2001&grupo=&compatibilidade=17");
    l.acao = "Atualizar";
    l.grupo = "amigos";
    l.portaOK = l.visitante = l.naRede = true;
    l.enderecoLocal = "192.168.0.5";
    l.idcpt = "PC1";
    l.idcptRemoto = "PC2"; // not sent with a group or inside a network
    EXPECT_EQ(p.UrlLista(l),
              E + "/html/listar_velmora.php?NomeUsuario=Ana%20Maria&prog=Velmora%20Ace"
                  "&Acao=Atualizar&nvg=&versao=3.9.0&p=2001&grupo=amigos"
                  "&compatibilidade=17&pab=s&v=S&prt=192.168.0.5");
    l.grupo.clear();
    l.naRede = false;
    l.portaOK = l.visitante = false;
    EXPECT_EQ(p.UrlLista(l),
              E + "/html/listar_velmora.php?NomeUsuario=Ana%20Maria&prog=Velmora%20Ace"
                  "&Acao=Atualizar&nvg=&versao=3.9.0&p=2001&grupo="
                  "&compatibilidade=17&shd1=PC1&shd2=PC2");
    EXPECT_EQ(
        p.UrlParametros("Parametros", "a b"),
        E + "/html/listar_velmora.php?prog=Velmora%20Ace&Acao=Parametros&versao=3.9.0&nick=a%20b");
    EXPECT_EQ(p.UrlServidor(),
              E + "/html/listar_velmora.php?prog=Velmora%20Chief&Acao=Server&versao=3.9.0");
    EXPECT_EQ(p.UrlDeletar({true, "eu mesmo", "ele", true, "PC9"}),
              E + "/html/listar_velmora.php?v=S&Nick1=eu%20mesmo&Nick2=ele&prog=Velmora%20Ace"
                  "&Acao=Deletar_Conectado&wPlayer=S&mac=PC9");
    EXPECT_EQ(p.UrlDeletar({false, "a", "b", false, ""}),
              E + "/html/listar_velmora.php?v=N&Nick1=a&Nick2=b&prog=Velmora%20Ace"
                  "&Acao=Deletar_Conectado&wPlayer=&mac=");
    // a password with spaces goes as typed
    EXPECT_EQ(p.UrlEntrar("meu nick", "se nha", false),
              E + "/html/cadastro.php?tipo=Entrar&nick=meu%20nick&senha=se nha&programa=Velmora");
    EXPECT_EQ(p.UrlEntrar("n", "s", true),
              E + "/html/cadastro.php?tipo=Entrar&nick=n&senha=s&programa=Velmora&wb=t");
    EXPECT_EQ(p.UrlCadastro("n n", "s"),
              E + "/html/cadastro.php?tipo=Cadastro&nick=n%20n&senha=s&programa=Velmora");
    EXPECT_EQ(p.UrlPodeCadastrar(), E + "/html/cadastro.php?programa=Velmora%20Ace&tipo=pc");
    EXPECT_EQ(p.UrlBloqueio(), E + "/html/cadastro.php?tipo=ta&programa=Velmora");
    EXPECT_EQ(
        p.UrlAtribui("12", "0", false, 77),
        E + "/html/cadastro.php?programa=Velmora&id1=12&id2=0&tipo=AtribuiB&Olp=0&Ter=F&idt=77");
    EXPECT_EQ(p.UrlTestePorta("2001"), "http://porta:2/testaporta/nvping.php?porta=2001");
    EXPECT_EQ(p.UrlMeuIP(), E + "/html/getip.php");
    EXPECT_EQ(p.PaginaPerfilNick("a b", "x y"), E + "/html/perfil.php?prog=velmora&s=x y&n=a%20b");
    EXPECT_EQ(p.PaginaPerfilProprio("pw", "3"), E + "/html/perfil.php?prog=velmora&senha=pw&id=3");
}

TEST(Urls, EnderecoDoServico) {
    EXPECT_EQ(NormalizaEndereco(" exemplo.org:8080/ "), "http://exemplo.org:8080");
    EXPECT_EQ(NormalizaEndereco("http://a//"), "http://a");
    EXPECT_EQ(NormalizaEndereco("  "), "");
    const auto pasta =
        std::filesystem::temp_directory_path() / ("velmora_endereco_" + std::to_string(::getpid()));
    std::filesystem::create_directories(pasta);
    clsRegistryAccess reg(pasta / "reg.txt");
    ::unsetenv("VELMORA_SERVICO");
    ::unsetenv("VELMORA_TESTEPORTA");
    EXPECT_EQ(EnderecoServico(reg), "http://127.0.0.1:8080");
    EXPECT_EQ(EnderecoTestePorta(reg), "http://127.0.0.1:8080");
    GravaOpcao(reg, "EnderecoServico", "jogo.exemplo.org");
    EXPECT_EQ(EnderecoServico(reg), "http://jogo.exemplo.org");
    EXPECT_EQ(EnderecoTestePorta(reg), "http://jogo.exemplo.org");
    ::setenv("VELMORA_SERVICO", "http://10.1.1.1:9000", 1);
    EXPECT_EQ(EnderecoServico(reg), "http://10.1.1.1:9000");
    GravaOpcao(reg, "EnderecoTestePorta", "http://porta.exemplo.org");
    EXPECT_EQ(EnderecoTestePorta(reg), "http://porta.exemplo.org");
    ::unsetenv("VELMORA_SERVICO");
    std::filesystem::remove_all(pasta);
}

TEST(OrdemDasBuscas, SegundaSoSemMarcador) {
    BuscasRoteiro b;
    Pedidos p(b, E, E);
    // with the marker in the first reply, no second fetch
    b.Responde = [](const std::string&, const std::string&) {
        return std::string("Resposta:#NOT");
    };
    p.Entrar("n", "s", false);
    ASSERT_EQ(b.chamadas.size(), 1u);
    EXPECT_EQ(b.chamadas[0].substr(0, 4), "get ");
    EXPECT_EQ(b.tempos[0], 4);
    // without it, each row's own order and time-outs
    struct Caso {
        std::function<void()> pede;
        std::vector<std::string> como;
        std::vector<int> tempos;
    };
    const std::vector<Caso> casos = {
        {[&] { p.Parametros("Parametros", "n"); }, {"get", "dl1"}, {4, 8}},
        {[&] { p.Servidor(); }, {"dl2", "get"}, {8, 8}},
        {[&] { p.Deletar({}); }, {"dl1", "get"}, {1, 1}},
        {[&] { p.Entrar("n", "s", false); }, {"get", "dl1"}, {4, 8}},
        {[&] { p.Cadastro("n", "s"); }, {"dl1", "get"}, {8, 4}},
        {[&] { p.PodeCadastrar(); }, {"dl3", "get"}, {4, 4}},
        {[&] { p.Bloqueio(); }, {"dl3", "get"}, {8, 4}},
        {[&] { p.Atribui("1", "2", true, 0); }, {"dl2", "get"}, {12, 12}},
        {[&] { p.Lista({}); }, {"dl1"}, {8}},
        {[&] { p.TestePorta("2001", 4); }, {"dl3"}, {4}},
        {[&] { p.MeuIP(); }, {"dl1"}, {4}},
    };
    b.Responde = [](const std::string& como, const std::string&) {
        return como == "get" ? std::string("FALSE") : std::string("<html>404</html>\r\n");
    };
    for (std::size_t i = 0; i < casos.size(); ++i) {
        b.chamadas.clear();
        b.tempos.clear();
        casos[i].pede();
        ASSERT_EQ(b.chamadas.size(), casos[i].como.size()) << "caso " << i;
        for (std::size_t k = 0; k < b.chamadas.size(); ++k)
            EXPECT_EQ(b.chamadas[k].substr(0, b.chamadas[k].find(' ')), casos[i].como[k])
                << "caso " << i;
        EXPECT_EQ(b.tempos, casos[i].tempos) << "caso " << i;
    }
    // the list reply comes trimmed and without line ends
    b.Responde = [](const std::string&, const std::string&) { return std::string(" **!!a**\r\n"); };
    EXPECT_EQ(p.Lista({}), "**!!a**");
}

// The real fetches against the fake service.
class BuscasReaisTeste : public ::testing::Test {
  protected:
    Laco laco = LacoRapido(10.0);
    modSocketMaster mod;
    ClienteGetConteudo wsg{mod};
    BuscasReais buscas{wsg, laco};
    ServicoFalso servico;
    Pedidos pedidos{buscas, servico.Endereco(), servico.Endereco()};
};

TEST_F(BuscasReaisTeste, AsDuasFormasChegamComOMesmoCaminho) {
    servico.Responde = [](const Pedido& p) {
        // the bare form gets nothing useful, so the second fetch (HTTP) must follow
        if (p.nu) return Resposta{"lixo"};
        return Resposta{"R**x**n**a**b**porta:2005**tempo:70**TA:12"};
    };
    const auto r = LeParametros(pedidos.Parametros("Parametros", "Ana Maria"));
    EXPECT_TRUE(r.valido);
    EXPECT_EQ(r.porta, 2005);
    ASSERT_EQ(servico.pedidos.size(), 2u);
    EXPECT_TRUE(servico.pedidos[0].nu);
    EXPECT_FALSE(servico.pedidos[1].nu);
    EXPECT_EQ(servico.pedidos[0].caminho, servico.pedidos[1].caminho);
    EXPECT_EQ(
        servico.pedidos[0].caminho,
        "/html/"
        "listar_velmora.php?prog=Velmora%20Ace&Acao=Parametros&versao=3.9.0&nick=Ana%20Maria");
    // a first reply with its marker: one request only
    servico.pedidos.clear();
    servico.Responde = [](const Pedido&) { return Resposta{"Resposta:#ok#1200#5"}; };
    const auto l = LeLogin(pedidos.Entrar("a", "b", false));
    EXPECT_EQ(l.pontos, 1200);
    EXPECT_EQ(servico.pedidos.size(), 1u);
}

TEST_F(BuscasReaisTeste, RespostaEmDoisPedacosSoValeOPrimeiro) {
    servico.Responde = [](const Pedido& p) {
        Resposta r{"Resposta:#ok#1500#42"};
        r.partida = p.nu;
        return r;
    };
    // the bare fetch takes the first arrival only: the fields in the second are lost
    const auto l = LeLogin(pedidos.Entrar("a", "b", false));
    EXPECT_EQ(l.tipo, RespostaLogin::Aceito);
    EXPECT_NE(l.id, "42");
    EXPECT_EQ(servico.pedidos.size(), 1u);
    // the download control reads the whole document
    servico.pedidos.clear();
    servico.Responde = [](const Pedido&) {
        Resposta r{"OK#PT1:1510#PT2:990"};
        r.partida = true;
        return r;
    };
    const auto a = LeAtribui(pedidos.Atribui("1", "2", true, 0));
    EXPECT_EQ(a.pt2, 990);
    EXPECT_EQ(servico.pedidos.size(), 1u);
}

TEST_F(BuscasReaisTeste, ServicoMudoOuForaDoArNaoTrava) {
    servico.Responde = [](const Pedido&) {
        Resposta r;
        r.silencio = true;
        return r;
    };
    EXPECT_FALSE(LeServidor(pedidos.Servidor()).valido);
    EXPECT_EQ(servico.pedidos.size(), 2u); // both fetches tried, both timed out
    servico.Responde = [](const Pedido&) {
        Resposta r;
        r.fechaSemNada = true;
        return r;
    };
    EXPECT_EQ(LeBloqueio(pedidos.Bloqueio()).tipo, RespostaBloqueio::SemResposta);
    // nobody listens at all
    Pedidos fora(buscas, "http://127.0.0.1:1", "http://127.0.0.1:1");
    EXPECT_EQ(LeLogin(fora.Entrar("a", "b", false)).tipo, RespostaLogin::SemResposta);
    EXPECT_EQ(fora.Lista({}), "");
    // a huge reply is read whole and found wanting, without a crash
    servico.Responde = [](const Pedido&) { return Resposta{std::string(3 << 20, 'x')}; };
    EXPECT_EQ(LeCadastro(pedidos.Cadastro("a", "b")).tipo, RespostaCadastro::SemResposta);
}
