// The service through the game's own two fetches: the minimal client on its socket (the
// bare line, first arrival only) and the download control over Qt's web stack.
#include "tests/server/apoio.h"

#include "net/dl.h"
#include "net/getconteudo.h"
#include "net/modsocketmaster.h"

#include <QCoreApplication>
#include <functional>
#include <gtest/gtest.h>

using namespace teste;

namespace {

// What the game does with a reply before cutting it: trimmed, CR and LF removed
std::string Limpa(std::string s) {
    std::erase(s, '\r');
    std::erase(s, '\n');
    while (!s.empty() && s.back() == ' ') s.pop_back();
    return s;
}

} // namespace

TEST(ClientesDoJogo, AsDuasBuscasRecebemAsMesmasRespostas) {
    ServicoVivo s;
    velmora::modSocketMaster mod;
    velmora::ClienteGetConteudo cliente(mod);
    velmora::dl controle;
    const std::string base = s.Base();
    const std::vector<std::string> pedidos = {
        "/html/getip.php",
        "/update.php?prog=Velmora%20Ace",
        "/html/listar_velmora.php?prog=Velmora%20Chief&Acao=Server&versao=3.9.0",
        "/html/listar_velmora.php?prog=Velmora%20Ace&Acao=&versao=3.9.0&nick=ze",
        "/html/cadastro.php?programa=Velmora%20Ace&tipo=pc",
        "/html/cadastro.php?tipo=ta&programa=Velmora",
    };
    for (const auto& p : pedidos) {
        std::int32_t tempo = 4;
        const std::string nua = cliente.GetConteudo(base + p, tempo);
        const std::string web = Limpa(controle.GetConteudo(base + p, "Id", 8));
        EXPECT_FALSE(nua.empty()) << p;
        EXPECT_NE(nua, "FALSE") << p;
        EXPECT_EQ(nua, web) << p;
    }
    // A new nick through the first, its login through the second; a password with a blank
    // goes out as typed in the bare line
    std::int32_t tempo = 4;
    EXPECT_EQ(
        cliente.GetConteudo(base + "/html/cadastro.php?tipo=Cadastro&nick=Ze%20Bento&senha=minha "
                                   "senha&programa=Velmora",
                            tempo),
        "Resposta:#OK");
    const auto login = cliente.GetConteudo(
        base + "/html/cadastro.php?tipo=Entrar&nick=Ze%20Bento&senha=minha senha&programa=Velmora",
        tempo);
    EXPECT_EQ(Pedaco(login, "#", 2), "OK");
    EXPECT_EQ(Pedaco(login, "#", 3), "1000");
    // The port test as the lobby asks it, through the download control
    const auto porta = Limpa(controle.GetConteudo(
        base + "/testaporta/nvping.php?porta=" + std::to_string(s.rede->PortaRelay()), "Id", 4));
    EXPECT_NE(porta.find("RESP"), std::string::npos);
    EXPECT_NE(porta.find("Online"), std::string::npos);
}

TEST(ClientesDoJogo, SenhasComCaracteresReservados) {
    // A password goes out as typed by either fetch: a new nick made through one and its
    // login through the other both hold the whole password, and a cut one is refused
    ServicoVivo s([](Opcoes& o) {
        o.semLimites = true;
        o.limiteCadastros = 10;
    });
    velmora::modSocketMaster mod;
    velmora::ClienteGetConteudo cliente(mod);
    velmora::dl controle;
    using Busca = std::function<std::string(const std::string&)>;
    const Busca nua = [&](const std::string& url) {
        std::int32_t tempo = 4;
        return cliente.GetConteudo(url, tempo);
    };
    const Busca web = [&](const std::string& url) {
        return Limpa(controle.GetConteudo(url, "Id", 8));
    };
    const std::string base = s.Base() + "/html/cadastro.php?tipo=";
    const std::vector<std::pair<std::string, std::string>> contas = {
        {"ana", "a&b=cd"}, {"bia", "um#dois"}, {"caio", "50% de & #x = y"}, {"davi", "x&senha=y"}};
    for (std::size_t i = 0; i < contas.size(); ++i) {
        const auto& [nick, senha] = contas[i];
        const Busca& cria = i % 2 == 0 ? web : nua;
        const Busca& entra = i % 2 == 0 ? nua : web;
        EXPECT_EQ(cria(base + "Cadastro&nick=" + nick + "&senha=" + senha + "&programa=Velmora"),
                  "Resposta:#OK")
            << senha;
        for (const Busca* busca : {&nua, &web}) {
            const auto login =
                (*busca)(base + "Entrar&nick=" + nick + "&senha=" + senha + "&programa=Velmora");
            EXPECT_EQ(Pedaco(login, "#", 2), "OK") << senha << (busca == &nua ? " (linha nua)" : " (web)");
        }
        const std::string cortada = senha.substr(0, senha.find_first_of("&#", 1));
        EXPECT_EQ(entra(base + "Entrar&nick=" + nick + "&senha=" + cortada + "&programa=Velmora"),
                  "Resposta:#NOT")
            << cortada;
    }
}

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
