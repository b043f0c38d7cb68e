// The replies of the service, read: every reader against good replies, the corner cases of
// the field cutting, and hostile texts (empty, no marker, missing fields, huge).
#include "core/utilidades.h"
#include "service/respostas.h"

#include <gtest/gtest.h>

#include <random>

using namespace velmora;

namespace {

// The list collapse as the plain rule says it: replace "****" by "**" until none is left.
std::string ColapsoIngenuo(std::string t) {
    for (auto p = t.find("****"); p != std::string::npos; p = t.find("****")) t.replace(p, 4, "**");
    return t;
}

std::string Aleatorio(std::mt19937& g, const std::string& alfabeto, int max) {
    std::uniform_int_distribution<int> tam(0, max), letra(0, static_cast<int>(alfabeto.size()) - 1);
    std::string s(static_cast<std::size_t>(tam(g)), ' ');
    for (char& c : s) c = alfabeto[static_cast<std::size_t>(letra(g))];
    return s;
}

} // namespace

TEST(CorteDeCampos, UmaPassagemDaOsMesmosCamposQuePedaco) {
    std::mt19937 g(7);
    for (int i = 0; i < 3000; ++i) {
        const std::string sep = i % 2 ? "**" : "#";
        const std::string t = Aleatorio(g, "a*#:", 14);
        const auto campos = Campos(t, sep);
        for (std::size_t n = 1; n <= campos.size(); ++n)
            ASSERT_EQ(campos[n - 1], Pedaco(t, sep, static_cast<int>(n))) << t << " n=" << n;
        ASSERT_EQ(Pedaco(t, sep, static_cast<int>(campos.size()) + 1), "") << t;
    }
}

TEST(CorteDeCampos, SeparadoresNasPontasEColapso) {
    // the third field of a text with two is empty; separators at the ends add no field
    EXPECT_EQ(Pedaco("a#b", "#", 3), "");
    EXPECT_EQ(Campos("#a#b#", "#"), (std::vector<std::string>{"a", "b"}));
    std::mt19937 g(11);
    for (int i = 0; i < 3000; ++i) {
        const std::string t = Aleatorio(g, "**!a", 30);
        ASSERT_EQ(ColapsaSeparadores(t), ColapsoIngenuo(t)) << t;
    }
    EXPECT_EQ(Limpa("  a b\r\n c \r\n"), "a b c");
    EXPECT_EQ(Numero(" 42abc", 0, 100), 42);
    EXPECT_EQ(Numero("x42", 0, 100), 0);
    EXPECT_EQ(Numero("99999999999999999999", 0, 100), 100);
}

TEST(ListaDeEspera, ClassesDaResposta) {
    EXPECT_EQ(ClassificaLista("Faltam dados"), TipoLista::FaltamDados);
    EXPECT_EQ(ClassificaLista(""), TipoLista::Vazia);
    EXPECT_EQ(ClassificaLista("**"), TipoLista::Lista); // a list with no entries, not error 22
    EXPECT_EQ(ClassificaLista("<html>erro</html>"), TipoLista::Erro);
    EXPECT_TRUE(CarregaIpstoList("**", "10.0.0.1").empty());
}

TEST(ListaDeEspera, Candidatos) {
    // own address skipped; non-entries skipped; an empty field ends the list
    EXPECT_EQ(CarregaIpstoList("**!!1.2.3.4:2001**xx**!!10.0.0.1:2001**!!5.6.7.8****!!9.9.9.9"
                               "**** **!!7.7.7.7",
                               "10.0.0.1"),
              (std::vector<std::string>{"1.2.3.4:2001", "5.6.7.8", "9.9.9.9", "7.7.7.7"}));
    // only our own address: nothing to dial
    EXPECT_TRUE(CarregaIpstoList("**!!10.0.0.1:2001**", "10.0.0.1").empty());
    // two equal lines in a row give one; the same again after another line gives a second
    EXPECT_EQ(CarregaIpstoList("!!a:1**!!a:1**!!b**!!a:1", "z"),
              (std::vector<std::string>{"a:1", "b", "a:1"}));
    // "****" doesn't end a list: it collapses first; an odd run leaves a field with "*"
    EXPECT_EQ(CarregaIpstoList("!!a****!!b", "z"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(CarregaIpstoList("!!a******!!b", "z"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(CarregaIpstoList("!!a*****!!b", "z"), (std::vector<std::string>{"a"}));
    // a stop asked for after a field empties the list
    int vistos = 0;
    EXPECT_TRUE(CarregaIpstoList("!!a**!!b**!!c", "z", [&] { return ++vistos == 2; }).empty());
    EXPECT_EQ(vistos, 2);
}

TEST(Parametros, CamposELimites) {
    auto p =
        LeParametros("R**x**Notificame:**linha 1;linha 2**true**porta:2010**Tempo:90**TA:45\r\n");
    EXPECT_TRUE(p.valido);
    EXPECT_TRUE(p.notifica);
    EXPECT_EQ(p.aviso, "linha 1\r\nlinha 2");
    EXPECT_FALSE(p.impede);
    EXPECT_EQ(p.porta, 2010);
    EXPECT_EQ(p.tempoLimite, 90); // the word's case doesn't matter
    EXPECT_EQ(p.tempoEspera, 45);
    p = LeParametros("R**x**nada**aviso**FALSE**porta:0**tempo:30**TA:3");
    EXPECT_FALSE(p.notifica);
    EXPECT_TRUE(p.impede);
    EXPECT_EQ(p.porta, 0); // the stored default stays
    EXPECT_EQ(p.tempoLimite, 60);
    EXPECT_EQ(p.tempoEspera, 10);
    p = LeParametros("R**x"); // the rest missing
    EXPECT_TRUE(p.valido);
    EXPECT_EQ(p.tempoLimite, 60);
    EXPECT_EQ(p.tempoEspera, 30);
    EXPECT_EQ(LeParametros("R**x**a**b**c**porta:99999").porta, 0);
    EXPECT_EQ(LeParametros("R**x**a**b**c**porta:-5").porta, 0);
    EXPECT_FALSE(LeParametros("FALSE").valido);
    EXPECT_FALSE(LeParametros("").valido);
    EXPECT_FALSE(LeParametros("r**x").valido); // case-sensitive
}

TEST(Respostas, ServidorLoginCadastro) {
    auto e = LeServidor("IPSERVER#relay.example#7000\r\n");
    EXPECT_TRUE(e.valido);
    EXPECT_EQ(e.host, "relay.example");
    EXPECT_EQ(e.porta, 7000);
    EXPECT_FALSE(LeServidor("IPSERVE#a#1").valido);
    EXPECT_EQ(LeServidor("IPSERVER").porta, 0);
    EXPECT_EQ(LeServidor("IPSERVER#h#70000").porta, 0);

    EXPECT_EQ(LeLogin("Resposta:#NOT\r\n").tipo, RespostaLogin::Recusado);
    auto l = LeLogin("Resposta:#ok#1500#42");
    EXPECT_EQ(l.tipo, RespostaLogin::Aceito);
    EXPECT_EQ(l.pontos, 1500);
    EXPECT_EQ(l.id, "42");
    l = LeLogin("Resposta:#x");
    EXPECT_EQ(l.tipo, RespostaLogin::Aceito);
    EXPECT_EQ(l.pontos, 0);
    EXPECT_EQ(l.id, "0");
    l = LeLogin("Resposta:#aviso:Bem vindo#10#MSG:");
    EXPECT_EQ(l.mensagem, "Bem vindo");
    EXPECT_EQ(l.id, "0");
    EXPECT_EQ(LeLogin("FALSE").tipo, RespostaLogin::SemResposta);
    EXPECT_EQ(LeLogin("resposta:#NOT").tipo, RespostaLogin::SemResposta);

    EXPECT_EQ(LeCadastro("Resposta:#OK").tipo, RespostaCadastro::Criado);
    EXPECT_EQ(LeCadastro("Resposta:#Jatem").tipo, RespostaCadastro::JaTem);
    EXPECT_EQ(LeCadastro("Resposta:#ERRO").tipo, RespostaCadastro::Erro);
    auto c = LeCadastro("Resposta:#X#Nick curto demais");
    EXPECT_EQ(c.tipo, RespostaCadastro::Outro);
    EXPECT_EQ(c.texto, "Nick curto demais");
    EXPECT_EQ(LeCadastro("Resposta:#X").texto, "");
    EXPECT_EQ(LeCadastro("").tipo, RespostaCadastro::SemResposta);
}

TEST(Respostas, PodeCadastrarBloqueioAtribuiPortaIP) {
    EXPECT_EQ(LePodeCadastrar("RESP").tipo, RespostaPodeCadastrar::Pode);
    auto p = LePodeCadastrar("RESP:NOTPOD:Limite;atingido");
    EXPECT_EQ(p.tipo, RespostaPodeCadastrar::NaoPode);
    EXPECT_EQ(p.texto, "Limite\ratingido");
    EXPECT_EQ(LePodeCadastrar("RESP:NOTPOD").texto, "Não é possível cadastrar mais nicks");
    EXPECT_EQ(LePodeCadastrar("FALSE").tipo, RespostaPodeCadastrar::SemResposta);

    EXPECT_EQ(LeBloqueio("OK").tipo, RespostaBloqueio::Livre);
    auto b = LeBloqueio("BLOQUEADO:Banido até amanhã");
    EXPECT_EQ(b.tipo, RespostaBloqueio::Bloqueado);
    EXPECT_EQ(b.texto, "Banido até amanhã");
    EXPECT_EQ(LeBloqueio("OK BLOQUEADO").tipo, RespostaBloqueio::Bloqueado); // the ban first
    EXPECT_EQ(LeBloqueio("ok").tipo, RespostaBloqueio::SemResposta);

    auto a = LeAtribui("OK#PT1:1530#PT2:980\r\n");
    EXPECT_TRUE(a.ok && a.temPT1 && a.temPT2);
    EXPECT_EQ(a.pt1, 1530);
    EXPECT_EQ(a.pt2, 980);
    a = LeAtribui("OK#X:1#PT2");
    EXPECT_TRUE(a.ok);
    EXPECT_FALSE(a.temPT1);
    EXPECT_TRUE(a.temPT2);
    EXPECT_EQ(a.pt2, 0);
    EXPECT_FALSE(LeAtribui("FALSE").ok);

    EXPECT_EQ(LeTestePorta("RESP Online"), 1);
    EXPECT_EQ(LeTestePorta("RESP Offline"), 2);
    EXPECT_EQ(LeTestePorta("RESP"), 0);
    EXPECT_EQ(LeTestePorta("Online"), 4);
    EXPECT_EQ(LeMeuIP("Seu IP:203.0.113.9\r\n"), "203.0.113.9");
    EXPECT_EQ(LeMeuIP("IP:1.2.3.4"), "");

    auto g = LeGETPT("GETPT: : :");
    EXPECT_EQ(g.doPeer, 0);
    EXPECT_EQ(g.meus, 0);
    g = LeGETPT("GETPT:1200:800");
    EXPECT_EQ(g.doPeer, 1200);
    EXPECT_EQ(g.meus, 800);
}

TEST(Respostas, TextosHostisNaoDerrubam) {
    const std::string enorme(4 << 20, '*');
    EXPECT_TRUE(CarregaIpstoList(enorme, "").empty());
    std::string muitos;
    for (int i = 0; i < 200000; ++i) muitos += "!!10.0.0." + std::to_string(i % 250) + "**";
    EXPECT_EQ(CarregaIpstoList(muitos, "").size(), 200000u);
    EXPECT_FALSE(LeParametros(std::string(1 << 20, 'R')).valido);
    EXPECT_EQ(LeLogin("Resposta:#x#" + std::string(1 << 20, '9')).pontos, INT32_MAX);
    const std::string binario("R**\0\xff**Notificame:**\0**", 22);
    EXPECT_TRUE(LeParametros(binario).valido);
}
