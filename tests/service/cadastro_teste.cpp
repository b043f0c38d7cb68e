// Nicks: the saved logins' slots, the refused words, and the registration dialog's confirm
// button against the fake service.
#include "apoio_sessao.h"
#include "service/cadastro.h"
#include "store/configuracao.h"

using namespace velmora;
using namespace velmora::teste;

namespace {

class Nicks : public CopiaComServico {
  protected:
    clsRegistryAccess& reg() { return form->registro(); }
    std::vector<std::string> caixas;
    std::function<void(const std::string&)> caixa = [this](const std::string& t) {
        caixas.push_back(t);
    };
};

} // namespace

TEST_F(Nicks, SlotsDosLoginsGuardados) {
    GravaCombo(reg(), "Ana", "1111", true);
    GravaCombo(reg(), "Bia", "2222", false);
    GravaCombo(reg(), "Caio", "3333", true);
    EXPECT_EQ(PoeNoCombo(reg()), (std::vector<std::string>{"Caio", "Bia", "Ana"}));
    EXPECT_EQ(SenhaGuardada(reg(), "ANA"), "1111");
    EXPECT_EQ(SenhaGuardada(reg(), "bia"), "");
    EXPECT_FALSE(SenhaGuardada(reg(), "Davi").has_value());
    // the second login of the nick in slot 2 of 3 makes slot 2 the highest
    GravaCombo(reg(), "BIA", "2222", true);
    EXPECT_EQ(LeOpcao(reg(), "NoCombo3", ""), "2");
    EXPECT_EQ(PoeNoCombo(reg()), (std::vector<std::string>{"BIA", "Ana"}));
    // a forgotten slot keeps its place; a new nick goes behind it
    ApagadoCombo(reg(), "ana");
    EXPECT_EQ(LeOpcao(reg(), "combo3N1", ""), "xw?wx");
    EXPECT_EQ(PoeNoCombo(reg()), (std::vector<std::string>{"BIA"}));
    GravaCombo(reg(), "Davi", "4444", true);
    EXPECT_EQ(LeOpcao(reg(), "NoCombo3", ""), "4");
    EXPECT_EQ(PoeNoCombo(reg()), (std::vector<std::string>{"Davi", "Caio", "BIA"}));
    EXPECT_EQ(TextoLabel10(true), "Cadastrar um novo Nick");
    EXPECT_EQ(TextoLabel10(false), "Se você não possui Nick e senha, clique aqui");
    // a stored count that is no number lists nothing
    GravaOpcao(reg(), "NoCombo3", "muitos");
    EXPECT_TRUE(PoeNoCombo(reg()).empty());
}

TEST(NicksProibidos, PalavrasDentroDoNick) {
    EXPECT_TRUE(NickProibido("Marcus")); // holds "cu"
    EXPECT_TRUE(NickProibido("ZéCÚ"));
    EXPECT_TRUE(NickProibido("O Corno"));
    EXPECT_FALSE(NickProibido("Ana Maria"));
    EXPECT_FALSE(NickProibido(""));
}

TEST_F(Nicks, ValidacoesAntesDoPedido) {
    FrmCadastro d;
    d.Text1 = "  ";
    d.Confirma(online->pedidos(), reg(), caixa);
    EXPECT_EQ(caixas.back(), "Por favor informe um apelido");
    d.Text1 = "ana";
    d.Confirma(online->pedidos(), reg(), caixa);
    EXPECT_EQ(caixas.back(), "Por favor defina uma senha de acesso");
    d.Text2 = "abc";
    d.Confirma(online->pedidos(), reg(), caixa);
    EXPECT_EQ(caixas.back(), "Por favor defina uma senha de acesso com no mínimo 4 digitos");
    EXPECT_EQ(d.foco, FrmCadastro::Foco::Nick);
    d.Text2 = "abcd";
    d.Confirma(online->pedidos(), reg(), caixa);
    EXPECT_EQ(caixas.back(), "Por favor digite a confirmação da senha");
    EXPECT_EQ(d.Enter(), "confirmacao");
    d.Text3 = "abce";
    d.Confirma(online->pedidos(), reg(), caixa);
    EXPECT_EQ(caixas.back(),
              "A senha não é igual a confirmação. Por favor digite a senha novamente");
    EXPECT_TRUE(d.Text2.empty() && d.Text3.empty());
    EXPECT_EQ(d.foco, FrmCadastro::Foco::Senha);
    d.Text1 = "Marcus";
    d.Text2 = d.Text3 = "abcd";
    d.Confirma(online->pedidos(), reg(), caixa);
    EXPECT_EQ(caixas.back(), "Por favor utilize outro  nick");
    EXPECT_TRUE(d.Text1.empty());
    EXPECT_TRUE(servico.pedidos.empty()); // none of these asked the service
}

TEST_F(Nicks, RespostasDoCadastro) {
    struct Caso {
        std::string resposta, caixa;
        bool fecha, criado;
    };
    const std::vector<Caso> casos = {
        {"Resposta:#Jatem", "Este Nick já está em uso. Por favor tente outro nick", false, false},
        {"Resposta:#Curto#Nick muito curto", "Nick muito curto", false, false},
        {"Resposta:#Curto", "Não foi possível cadastrar este nick. Por favor tente outro nick",
         false, false},
        {"Resposta:#ERRO", "Não foi possível cadastrar o nick", true, false},
        {"", "Não foi possível acessar o servidor para cadastrar o seu nick", true, false},
        {"Resposta:#OK", "Nick cadastrado com sucesso!", true, true},
    };
    for (const auto& c : casos) {
        Respostas({{"tipo=Cadastro", c.resposta}});
        FrmCadastro d;
        d.Text1 = " novo nick ";
        d.Text2 = d.Text3 = "s e n h a";
        d.Confirma(online->pedidos(), reg(), caixa);
        EXPECT_EQ(caixas.back(), c.caixa) << c.resposta;
        EXPECT_EQ(d.Fechou, c.fecha) << c.resposta;
        EXPECT_EQ(d.NickCriado, c.criado) << c.resposta;
        if (!c.fecha) {
            EXPECT_TRUE(d.BotoesHabilitados);
            EXPECT_EQ(d.foco, FrmCadastro::Foco::NickSelecionado);
        }
    }
    // the password goes as typed (the web stack escapes the blanks on the wire)
    EXPECT_EQ(
        QByteArray::fromPercentEncoding(QByteArray::fromStdString(servico.pedidos.back().caminho))
            .toStdString(),
        "/html/cadastro.php?tipo=Cadastro&nick=novo nick&senha=s e n h a&programa=Velmora");
    // only the created nick was kept
    EXPECT_EQ(PoeNoCombo(reg()), std::vector<std::string>{"novo nick"});
    EXPECT_EQ(SenhaGuardada(reg(), "novo nick"), "s e n h a");
}

TEST_F(Nicks, PodeCadastrar) {
    Respostas({{"tipo=pc", "RESP"}});
    EXPECT_TRUE(PodeCadastrar(online->pedidos(), caixa));
    EXPECT_TRUE(caixas.empty());
    Respostas({{"tipo=pc", "RESP:NOTPOD:Limite de nicks;neste computador"}});
    EXPECT_FALSE(PodeCadastrar(online->pedidos(), caixa));
    EXPECT_EQ(caixas.back(), "Limite de nicks\rneste computador");
    Respostas({});
    EXPECT_FALSE(PodeCadastrar(online->pedidos(), caixa));
    EXPECT_EQ(caixas.back(),
              "Servidor inacessível no momento. Verifique se está conectado à internet");
}
