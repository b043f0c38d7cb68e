// The port test: a port in use, each verdict of the endpoint and its silence, the status
// texts of the lobby, and the port dialog.
#include "apoio_sessao.h"
#include "service/testaporta.h"
#include "store/configuracao.h"

#include <QTcpServer>

using namespace velmora;
using namespace velmora::teste;

namespace {

class Porta : public CopiaComServico {
  protected:
    void SetUp() override {
        CopiaComServico::SetUp();
        teste = std::make_unique<TestePorta>(*online, mod);
    }
    void Responde(const std::string& corpo) {
        servico.Responde = [corpo](const Pedido&) { return Resposta{corpo}; };
    }
    std::unique_ptr<TestePorta> teste;
    std::vector<std::string> caixas;
    std::function<void(const std::string&)> caixa = [this](const std::string& t) {
        caixas.push_back(t);
    };
};

} // namespace

TEST_F(Porta, VereditosDoEndpoint) {
    const std::string p = std::to_string(PortaLivre());
    Responde("RESP Online");
    EXPECT_EQ(teste->TestaPorta(p, 4), 1);
    EXPECT_EQ(servico.pedidos.back().caminho, "/testaporta/nvping.php?porta=" + p);
    EXPECT_EQ(teste->WsTeste.State(), sckListening); // stays open until the next close
    Responde("RESP Offline");
    EXPECT_EQ(teste->TestaPorta(p, 4), 2);
    EXPECT_EQ(teste->WsTeste.State(), sckClosed);
    Responde("RESP");
    EXPECT_EQ(teste->TestaPorta(p, 4), 0);
    Responde("");
    EXPECT_EQ(teste->TestaPorta(p, 4), 4);
    EXPECT_EQ(teste->WsTeste.State(), sckClosed);
    servico.Responde = [](const Pedido&) {
        Resposta r;
        r.silencio = true;
        return r;
    };
    EXPECT_EQ(teste->TestaPorta(p, 2), 4);
    // an empty port text means the port in force
    Responde("RESP Offline");
    teste->Porta = [&] { return std::stoi(p); };
    int codigo = 9;
    teste->TestaPorta("", 4, codigo);
    EXPECT_EQ(codigo, 2);
    EXPECT_EQ(servico.pedidos.back().caminho, "/testaporta/nvping.php?porta=" + p);
}

TEST_F(Porta, PortaEmUsoNaoPerguntaAoEndpoint) {
    QTcpServer ocupante;
    ASSERT_TRUE(ocupante.listen(QHostAddress::Any, 0));
    Responde("RESP Online");
    EXPECT_EQ(teste->TestaPorta(std::to_string(ocupante.serverPort()), 4), 3);
    EXPECT_TRUE(servico.pedidos.empty());
}

TEST_F(Porta, TextosDoLobby) {
    std::string ajuda = "x";
    int codigo = 1;
    EXPECT_EQ(teste->StatusPorta("2001", codigo, {}, ajuda), "OK");
    EXPECT_EQ(ajuda, "");
    codigo = 2;
    EXPECT_EQ(teste->StatusPorta("2001", codigo, {}, ajuda),
              "A porta 2001 está inacessível\r\rIsto impede a conexão com jogadores que também "
              "estejam com a porta inacessível.\rPode demorar um pouco mais para conectar com um "
              "outro jogador\rÉ recomendavel que você libere a porta no seu Antivirus/firewall "
              "e/ou roteador");
    EXPECT_EQ(ajuda, "Clique aqui se você utiliza Roteador");
    codigo = 3;
    EXPECT_EQ(teste->StatusPorta("2001", codigo, {}, ajuda)
                  .rfind("(cod. 41)  Não foi possível abrir a porta 2001.\r\rA porta pode", 0),
              0u);
    EXPECT_EQ(ajuda, "Clique aqui para obter Ajuda");
    codigo = 4;
    EXPECT_EQ(teste->StatusPorta("2001", codigo, {}, ajuda), "");
    // code 0 asks for a new test, after closing the sockets
    Responde("RESP Offline");
    int fechou = 0;
    codigo = 0;
    teste->StatusPorta(
        std::to_string(PortaLivre()), codigo, [&] { ++fechou; }, ajuda);
    EXPECT_EQ(codigo, 2);
    EXPECT_EQ(fechou, 1);
}

TEST_F(Porta, DialogoDaPorta) {
    auto& reg = form->registro();
    FrmPorta d;
    std::string ip, padrao;
    d.Carrega(reg, "10.0.0.2", ip, padrao);
    EXPECT_EQ(ip, "Seu IP Local é 10.0.0.2");
    EXPECT_EQ(padrao, "A porta padrão do Velmora Chief é: 2001");
    EXPECT_EQ(d.Text1, "2001");
    int testes = 0, veredito = 2;
    const auto testa = [&](const std::string&) {
        ++testes;
        return veredito;
    };
    // the first, automatic test with code 2 shows no box; a later one does
    d.Testa(testa, caixa);
    EXPECT_TRUE(caixas.empty());
    EXPECT_TRUE(d.Command5Visivel);
    EXPECT_EQ(d.Label4, "A porta 2001 pode ser aberta mas está inacessível");
    d.Testa(testa, caixa);
    ASSERT_EQ(caixas.size(), 1u);
    EXPECT_EQ(caixas[0].rfind(
                  "A porta 2001 pode ser aberta mas não pode ser acessada externamente\r\rVer", 0),
              0u);
    veredito = 1;
    d.Testa(testa, caixa);
    EXPECT_EQ(caixas.back(), "A porta está pronta 2001 para ser utilizada");
    EXPECT_FALSE(d.Command5Visivel);
    veredito = 0; // neither word: nothing changes on the screen
    const std::string antes = d.Label4;
    d.Testa(testa, caixa);
    EXPECT_EQ(d.Label4, antes);
    // 1024 is refused, 1025 taken (tested first, since the box changed)
    d.MudouTexto("1024");
    EXPECT_TRUE(d.Label4.empty());
    d.Confirma(reg, testa, caixa);
    EXPECT_EQ(caixas.back(), "Por favor informe uma porta acima se 1024");
    EXPECT_TRUE(d.Text1.empty());
    EXPECT_FALSE(d.Fechou);
    d.MudouTexto("01025");
    testes = 0;
    veredito = 1;
    d.Confirma(reg, testa, caixa);
    EXPECT_EQ(testes, 1);
    EXPECT_TRUE(d.Fechou);
    EXPECT_EQ(LeOpcao(reg, "mpt", ""), "1025");
    d.Padrao(reg);
    EXPECT_EQ(LeOpcao(reg, "mpt", ""), "2001");
}
