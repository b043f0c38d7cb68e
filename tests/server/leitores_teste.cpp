// The request reader and the relay's first-message reader, on whole, split and bad input.
#include "server/nickrelay.h"
#include "server/pedido.h"

#include <gtest/gtest.h>

using namespace velmora::servidor;

TEST(LePedido, AsDuasFormasEOsSeusDetalhes) {
    // The game's bare line: absolute URL, no version, no headers; blanks of a password stay
    auto l = LePedido(
        "GET http://127.0.0.1:8080/html/cadastro.php?tipo=Entrar&nick=a%20b&senha=x y\r\n\r\n");
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.pedido.forma, FormaPedido::Nua);
    EXPECT_EQ(l.pedido.caminho, "/html/cadastro.php");
    EXPECT_EQ(l.pedido.consulta, "tipo=Entrar&nick=a%20b&senha=x y");

    l = LePedido("GET /update.php?prog=Velmora%20Ace HTTP/1.1\r\nHost: x\r\nX-Forwarded-For: "
                 "1.2.3.4, 5.6.7.8\r\n\r\n");
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.pedido.forma, FormaPedido::Http);
    EXPECT_EQ(l.pedido.caminho, "/update.php");
    EXPECT_EQ(l.pedido.consulta, "prog=Velmora%20Ace");
    EXPECT_EQ(l.pedido.encaminhadoPor, "1.2.3.4, 5.6.7.8");

    // Absolute form in HTTP, HEAD, a bare host with no path
    l = LePedido("HEAD http://h:1/html/getip.php HTTP/1.0\r\n\r\n");
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.pedido.metodo, "HEAD");
    EXPECT_EQ(l.pedido.caminho, "/html/getip.php");
    l = LePedido("GET http://127.0.0.1:8080\r\n\r\n");
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.pedido.caminho, "/");
}

TEST(LePedido, IncompletoInvalidoEGrande) {
    EXPECT_EQ(LePedido("").estado, Leitura::Incompleto);
    EXPECT_EQ(LePedido("GE").estado, Leitura::Incompleto);
    EXPECT_EQ(LePedido("GET http://h/x?a=1\r\n").estado, Leitura::Incompleto);
    EXPECT_EQ(LePedido("POST / HTTP/1.1\r\n\r\n").estado, Leitura::Invalido);
    EXPECT_EQ(LePedido("\x16\x03\x01\x02").estado, Leitura::Invalido); // a TLS hello
    EXPECT_EQ(LePedido("GET x HTTP/1.1\r\n\r\n").estado, Leitura::Invalido);
    // A bare line has no headers
    EXPECT_EQ(LePedido("GET http://h/x\r\nHost: h\r\n\r\n").estado, Leitura::Invalido);
    // Past the bound without an end: refused, not waited for
    const std::string longo = "GET /" + std::string(kTamanhoMaximoPedido, 'a');
    EXPECT_EQ(LePedido(longo).estado, Leitura::Invalido);
    // Every prefix of a good request is incomplete, never invalid
    const std::string bom = "GET http://127.0.0.1:8080/html/getip.php\r\n\r\n";
    for (std::size_t n = 0; n < bom.size(); ++n)
        EXPECT_EQ(LePedido(bom.substr(0, n)).estado, Leitura::Incompleto) << n;
}

TEST(LeConsulta, ChavesValoresEPercentuais) {
    const auto p = LeConsulta("a=1&&b=x%20y&c&d=%zz%4&e=+&a=2&%41=%42");
    EXPECT_EQ(Valor(p, "a"), "1"); // the first wins
    EXPECT_EQ(Valor(p, "b"), "x y");
    EXPECT_TRUE(Tem(p, "c"));
    EXPECT_EQ(Valor(p, "c"), "");
    EXPECT_EQ(Valor(p, "d"), "%zz%4");
    EXPECT_EQ(Valor(p, "e"), "+"); // a password may hold "+"
    EXPECT_EQ(Valor(p, "A"), "B");
    EXPECT_FALSE(Tem(p, "B"));
    std::string muitos;
    for (int i = 0; i < 1000; ++i) muitos += "k" + std::to_string(i) + "=v&";
    EXPECT_EQ(LeConsulta(muitos).size(), 64u);
}

TEST(LeConsulta, SenhasComoDigitadas) {
    // Reserved characters of a password and of a group password survive; the nick ends at
    // the first "&senha=", the password at the last "&programa="
    auto c = LeCredenciais("tipo=Entrar&nick=Ze%20Bento&senha=a&b=c #d%20e&programa=Velmora&wb=t");
    EXPECT_EQ(c.nick, "Ze Bento");
    EXPECT_EQ(c.senha, "a&b=c #d e");
    c = LeCredenciais("tipo=Cadastro&nick=ana&senha=x&senha=y&programa=z&programa=Velmora");
    EXPECT_EQ(c.nick, "ana");
    EXPECT_EQ(c.senha, "x&senha=y&programa=z");
    c = LeCredenciais("tipo=Entrar&nick=ana&senha=&programa=Velmora");
    EXPECT_EQ(c.senha, "");
    // Another shape: pair by pair, and a key must begin a pair ("apelido=" is not "nick=")
    c = LeCredenciais("senha=s1&tipo=Entrar&nick=bia");
    EXPECT_EQ(c.nick, "bia");
    EXPECT_EQ(c.senha, "s1");
    c = LeCredenciais("tipo=Entrar&xnick=a&senha=b&programa=Velmora");
    EXPECT_EQ(c.nick, "");
    EXPECT_EQ(c.senha, "b");
    for (const char* torto : {"", "nick", "nick=", "&senha=&programa=", "nick=&senha=",
                              "nick=a&programa=&senha=b", "nick=a&senha=b&programa"}) {
        const auto t = LeCredenciais(torto);
        const auto q = LeConsulta(torto);
        EXPECT_EQ(t.nick, Valor(q, "nick")) << torto;
        EXPECT_EQ(t.senha, Valor(q, "senha")) << torto;
    }

    const std::string lista = "NomeUsuario=ana&p=2001&grupo=nós & eles=1&compatibilidade=17&v=S";
    EXPECT_EQ(ValorAte(lista, "grupo", "compatibilidade"), "nós & eles=1");
    EXPECT_EQ(ValorAte("grupo=a&b", "grupo", "compatibilidade"), "a");
    EXPECT_EQ(ValorAte("x=1", "grupo", "compatibilidade"), "");

    Parametros p = LeConsulta("a=1&b=2");
    Define(p, "b", "3");
    Define(p, "c", "4");
    EXPECT_EQ(Valor(p, "b"), "3");
    EXPECT_EQ(Valor(p, "c"), "4");
    EXPECT_EQ(p.size(), 3u);
}

TEST(TextoLimpo, Utf8Cp1252ControlesELimite) {
    EXPECT_EQ(TextoLimpo("José", 64), "José");
    EXPECT_EQ(TextoLimpo("Jos\xe9", 64), "José"); // Windows-1252 from an old client
    EXPECT_EQ(TextoLimpo("a\r\nb\x01\x7f"
                         "c",
                         64),
              "abc");
    EXPECT_EQ(TextoLimpo("ééé", 5), "éé"); // never half a character
}

namespace {
const std::string kNick = "Nick:#12#ana#1500#17#NV#Chief#PC-1#Port#IDT:7#segredoA#";
}

TEST(LeNickRelay, CamposEGrupo) {
    auto l = LeNickRelay(kNick);
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.nick.id, "12");
    EXPECT_EQ(l.nick.nome, "ana");
    EXPECT_EQ(l.nick.compatibilidade, "17");
    EXPECT_FALSE(l.nick.visitante);
    EXPECT_EQ(l.nick.idcpt, "PC-1");
    EXPECT_EQ(l.nick.idt, 7);
    EXPECT_EQ(l.nick.grupo, "segredo");
    EXPECT_EQ(l.nick.tamanho, kNick.size());
    // Strangers: empty group; a group password holding "#"; a visitor; IDT not a number
    l = LeNickRelay("Nick:#0#bia#1000#17#VS#Chief#PC-2#Port#IDT:0#A#");
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.nick.grupo, "");
    EXPECT_TRUE(l.nick.visitante);
    l = LeNickRelay("Nick:#0#bia#1000#17#VS#Chief#PC-2#Port#IDT:x#a#bA#");
    ASSERT_EQ(l.estado, Leitura::Completo);
    EXPECT_EQ(l.nick.grupo, "a#b");
    EXPECT_EQ(l.nick.idt, 0);
}

TEST(LeNickRelay, PedacoAPedacoELixo) {
    // Split anywhere, the message is incomplete until its last byte
    for (std::size_t n = 0; n < kNick.size(); ++n)
        EXPECT_EQ(LeNickRelay(kNick.substr(0, n)).estado, Leitura::Incompleto) << n;
    EXPECT_EQ(LeNickRelay("GET / HTTP/1.1\r\n\r\n").estado, Leitura::Invalido);
    EXPECT_EQ(LeNickRelay("Config:#1#2").estado, Leitura::Invalido);
    // The direct form (no IDT field) is not the relay's
    EXPECT_EQ(LeNickRelay("Nick:#0#a#1000#17#VS#Ace#PC#Port#outra#").estado, Leitura::Invalido);
    // Never completed within the bound
    EXPECT_EQ(
        LeNickRelay("Nick:#0#a#1000#17#VS#Chief#PC#Port#IDT:0#" + std::string(2000, 'x')).estado,
        Leitura::Invalido);
}
