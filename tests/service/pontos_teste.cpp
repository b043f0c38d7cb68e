// Points on the service: every gate of the award of a win, the totals on the panel and to
// the peer, the peer's totals, the ban test, leaving the waiting list, the login.
#include "apoio_sessao.h"
#include "peer/conexaopeer.h"
#include "peer/fio.h"
#include "service/cadastro.h"
#include "service/ligacaopeer.h"
#include "service/redeservico.h"
#include "store/configuracao.h"

using namespace velmora;
using namespace velmora::teste;

namespace {

class Pontos : public CopiaComServico {
  protected:
    void SetUp() override {
        CopiaComServico::SetUp();
        auto& c = form->ctx;
        c.Game.Modo = 4;
        c.Jogador[1].Nome = "ana";
        c.Jogador[1].ID = "11";
        c.Jogador[1].IDT = "7";
        c.Jogador[2].Nome = "bia";
        c.Jogador[2].ID = "22";
        c.Jogador[2].IDCPT = "PC-BIA";
        c.Jogador[1].Vitorias = 1;
        Respostas({{"AtribuiB", "OK#PT1:1530#PT2:990"}});
    }
    int Atribuicoes() const { return Pedidos("tipo=AtribuiB"); }
};

} // namespace

TEST(FormatoDosPontos, SeparadorDeMilharEZero) {
    EXPECT_EQ(FormataPontos(0), "(0)");
    EXPECT_EQ(FormataPontos(999), "(999)");
    EXPECT_EQ(FormataPontos(1500), "(1.500)");
    EXPECT_EQ(FormataPontos(1234567), "(1.234.567)");
    EXPECT_EQ(FormataPontos(-2500), "(-2.500)");
}

TEST_F(Pontos, IdentificadorDoComputadorEstavel) {
    const std::string id = IDCPTLocal(form->registro());
    EXPECT_EQ(id.size(), 16u);
    EXPECT_EQ(IDCPTLocal(form->registro()), id);
    EXPECT_EQ(LeOpcao(form->registro(), "IDCPT", ""), id);
    GravaOpcao(form->registro(), "IDCPT", "OUTRO");
    EXPECT_EQ(IDCPTLocal(form->registro()), "OUTRO");
}

TEST_F(Pontos, VitoriaAceitaMostraOsTotaisEAvisaOPeer) {
    EXPECT_TRUE(online->AtribuiVitoria(1, true));
    ASSERT_EQ(Atribuicoes(), 1);
    EXPECT_EQ(servico.pedidos.back().caminho,
              "/html/cadastro.php?programa=Velmora&id1=11&id2=22&tipo=AtribuiB&Olp=0&Ter=T&idt=7");
    EXPECT_EQ(form->modelo.LbNV[1].Texto, "(1.530)");
    EXPECT_EQ(form->modelo.LbNV[2].Texto, "(990)");
    EXPECT_TRUE(form->modelo.LbNV[2].Visivel);
    ASSERT_FALSE(rede.enviadas.empty());
    EXPECT_EQ(rede.enviadas.back(), "GETPT:1530:990");
    // a second win within 120 seconds isn't reported
    *tempo.agora += 100;
    EXPECT_FALSE(online->AtribuiVitoria(1, false));
    EXPECT_EQ(Atribuicoes(), 1);
    *tempo.agora += 30;
    EXPECT_TRUE(online->AtribuiVitoria(1, false));
    EXPECT_EQ(Atribuicoes(), 2);
    EXPECT_NE(servico.pedidos.back().caminho.find("Ter=F"), std::string::npos);
}

TEST_F(Pontos, PortoesQueNaoPerguntamAoServico) {
    auto& c = form->ctx;
    form->NaRede = true;
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
    form->NaRede = false;
    form->SenhaGrupo = "amigos";
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
    form->SenhaGrupo.clear();
    c.Game.Modo = 5;
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
    c.Game.Modo = 4;
    c.Jogador[1].Visitante = c.Jogador[2].Visitante = true;
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
    EXPECT_EQ(c.Jogador[1].ID, "0"); // visitors lose their ids on the way
    c.Jogador[1].Visitante = c.Jogador[2].Visitante = false;
    // only the winner's copy reports
    EXPECT_FALSE(online->AtribuiVitoria(2, true));
    EXPECT_EQ(Atribuicoes(), 0);
    EXPECT_EQ(online->MarcaPontos, 0);
    // one visitor: the report goes, with the visitor's id as "0"
    c.Jogador[2].Visitante = true;
    EXPECT_TRUE(online->AtribuiVitoria(1, true));
    EXPECT_NE(servico.pedidos.back().caminho.find("&id2=0&"), std::string::npos);
    EXPECT_EQ(form->modelo.LbNV[2].Texto, ""); // a visitor's points aren't shown
}

TEST_F(Pontos, SextaVitoriaDoParNoDiaNaoConta) {
    auto& c = form->ctx;
    c.Jogador[1].Vitorias = 4;
    c.Jogador[2].Vitorias = 1; // the fifth win of the pair
    EXPECT_TRUE(online->AtribuiVitoria(1, true));
    c.Jogador[1].Vitorias = 5; // the sixth
    *tempo.agora += 500;
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
    EXPECT_EQ(Atribuicoes(), 1);
    EXPECT_EQ(LeConfig(form->registro(), "J_23/11/2026_PC-BIA", "", "St"), "S");
    // a new session against the same computer the same day: no report either
    c.Jogador[1].Vitorias = 1;
    c.Jogador[2].Vitorias = 0;
    *tempo.agora += 500;
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
    // another date format is another key
    hoje = "2026-11-23";
    EXPECT_TRUE(online->AtribuiVitoria(1, true));
    EXPECT_EQ(Atribuicoes(), 2);
    // without the peer's computer id the limit still holds within the session
    c.Jogador[2].IDCPT.clear();
    c.Jogador[1].Vitorias = 6;
    *tempo.agora += 500;
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
}

TEST_F(Pontos, ServicoForaDoArPerdeOPremio) {
    Respostas({{"AtribuiB", "erro interno"}});
    EXPECT_TRUE(online->AtribuiVitoria(1, true));
    EXPECT_EQ(Atribuicoes(), 2); // both fetches
    EXPECT_EQ(rede.enviadas.back(), "GETPT: : :");
    EXPECT_EQ(form->ctx.painel.Label27.Texto, "Servidor inacessível no momento");
    EXPECT_GT(online->MarcaPontos, 0); // the next win inside 120 s doesn't report
    EXPECT_FALSE(online->AtribuiVitoria(1, true));
}

TEST_F(Pontos, TotaisDoPeer) {
    online->RecebeGETPT("GETPT:2100:1999");
    EXPECT_EQ(form->modelo.LbNV[2].Texto, "(2.100)");
    EXPECT_EQ(form->modelo.LbNV[1].Texto, "(1.999)");
    online->RecebeGETPT("GETPT: : :");
    EXPECT_EQ(form->modelo.LbNV[2].Texto, "(0)");
    EXPECT_EQ(form->modelo.LbNV[1].Texto, "(0)");
    form->ctx.Jogador[1].Visitante = true;
    online->RecebeGETPT("GETPT:5:6");
    EXPECT_EQ(form->modelo.LbNV[1].Texto, "(0)"); // unchanged for a visitor
    EXPECT_FALSE(form->modelo.LbNV[2].Visivel);
    online->RecebeGETPT("GETPT"); // fields missing
    online->RecebeGETPT(std::string(100000, ':'));
}

// The winner's copy reports, and the totals it got travel over the peer link to the other
// copy, whose panel shows them the other way round: its own points are the second number.
TEST_F(Pontos, PremioDeUmaCopiaChegaAoPainelDaOutra) {
    ConexaoPeer peerA(*form, mod);
    peerA.semSockets = true;
    RedeComServico redeA(peerA, *online);
    form->UsaRede(redeA);

    TelaNotas telaB;
    Form1 formB(telaB, relogio);
    formB.ctx.Game.Modo = 4;
    formB.ctx.Jogador[1].Nome = "bia";
    formB.ctx.Jogador[2].Nome = "ana";
    ConexaoPeer peerB(formB, mod);
    peerB.semSockets = true;
    BuscasReais buscasB(wsg, laco);
    ServicoOnline onlineB(formB, buscasB);
    LigaServico(peerB, onlineB);
    std::vector<std::string> chegaram;
    peerA.aoEnviar = [&](int, const std::string& bytes) {
        chegaram.push_back(bytes);
        peerB.Despacha(1, bytes);
    };

    EXPECT_TRUE(form->rede().AtribuiVitoria(1, true));
    ASSERT_EQ(chegaram.size(), 1u);
    EXPECT_EQ(chegaram[0], "GETPT:1530:990");
    EXPECT_EQ(form->modelo.LbNV[1].Texto, "(1.530)");
    EXPECT_EQ(form->modelo.LbNV[2].Texto, "(990)");
    EXPECT_EQ(formB.modelo.LbNV[1].Texto, "(990)");
    EXPECT_EQ(formB.modelo.LbNV[2].Texto, "(1.530)");
    EXPECT_TRUE(formB.modelo.LbNV[1].Visivel);
    EXPECT_TRUE(formB.modelo.LbNV[2].Visivel);

    // the service out of reach: the blanks show "(0)" on the other panel
    Respostas({{"AtribuiB", "erro interno"}});
    online->MarcaPontos = 0;
    EXPECT_TRUE(form->rede().AtribuiVitoria(1, true));
    EXPECT_EQ(chegaram.back(), "GETPT: : :");
    EXPECT_EQ(formB.modelo.LbNV[1].Texto, "(0)");
    EXPECT_EQ(formB.modelo.LbNV[2].Texto, "(0)");

    // merged with a ping in one read, the totals still arrive; without the plug only the
    // log sees them
    peerB.Despacha(1, "GETPT:1200:800" + std::string(fio::Ping));
    EXPECT_EQ(formB.modelo.LbNV[2].Texto, "(1.200)");
    peerB.aoReceberPontos = nullptr;
    peerB.Despacha(1, "GETPT:7:8");
    EXPECT_EQ(formB.modelo.LbNV[2].Texto, "(1.200)");
}

// The end of the handshake takes a pair that met the direct way off the waiting list; a
// relay game was never on it.
TEST_F(Pontos, FimDoHandshakeTiraOParDaListaDeEspera) {
    ConexaoPeer peer(*form, mod);
    peer.semSockets = true;
    LigaServico(peer, *online);
    Respostas({{"Deletar_Conectado", "#OK#"}});
    peer.NoServidor = true;
    peer.Despacha(1, std::string(fio::ConectadoOK));
    EXPECT_TRUE(form->ctx.Game.Conectado);
    EXPECT_EQ(Pedidos("Deletar_Conectado"), 0);
    form->ctx.Game.Conectado = false;
    peer.NoServidor = false;
    peer.Despacha(1, std::string(fio::ConectadoOK));
    ASSERT_EQ(Pedidos("Deletar_Conectado"), 1);
    EXPECT_NE(servico.pedidos.back().caminho.find("Nick1=ana&Nick2=bia"), std::string::npos);
}

TEST_F(Pontos, BloqueioESaidaDaLista) {
    Respostas({{"tipo=ta", "OK"}});
    EXPECT_FALSE(online->Bloqueado(true));
    Respostas({{"tipo=ta", "BLOQUEADO:Conta suspensa"}});
    EXPECT_TRUE(online->Bloqueado(true));
    EXPECT_EQ(tela.mensagens.back(), "Conta suspensa");
    Respostas({{"tipo=ta", "BLOQUEADO"}});
    EXPECT_TRUE(online->Bloqueado(true));
    EXPECT_EQ(tela.mensagens.back(), "Acesso temporariamente bloqueado.");
    const auto n = tela.mensagens.size();
    EXPECT_TRUE(online->Bloqueado(false));
    EXPECT_EQ(tela.mensagens.size(), n);
    Respostas({});
    EXPECT_TRUE(online->Bloqueado(false)); // no answer: shown whatever the argument says
    EXPECT_EQ(tela.mensagens.back(),
              "Não foi possível acessar o servidor.\r\rVerifique se está conectado a internet e "
              "tente novamente");

    servico.pedidos.clear();
    online->Jogando_Online(true);
    EXPECT_TRUE(servico.pedidos.empty());
    Respostas({{"Deletar_Conectado", "#OK#"}});
    form->ctx.Tipo_c = "Cliente";
    online->Jogando_Online(false);
    ASSERT_EQ(servico.pedidos.size(), 1u);
    EXPECT_EQ(servico.pedidos[0].caminho,
              "/html/listar_velmora.php?v=N&Nick1=ana&Nick2=bia&prog=Velmora%20Ace"
              "&Acao=Deletar_Conectado&wPlayer=S&mac=PC-BIA");
}

TEST_F(Pontos, LoginGuardaONickEOsPontos) {
    GravaOpcao(form->registro(), "WB", "TRUE");
    Respostas({{"tipo=Entrar", "Resposta:#ok#1500#42"}});
    EXPECT_EQ(online->Login(" ana maria ", "se nha", true), ServicoOnline::ResultadoLogin::Aceito);
    EXPECT_EQ(servico.pedidos.back().caminho,
              "/html/cadastro.php?tipo=Entrar&nick=ana%20maria&senha=se nha&programa=Velmora&wb=t");
    EXPECT_EQ(LeOpcao(form->registro(), "WB", "x"), "");
    EXPECT_EQ(form->ctx.Jogador[1].Pontos, 1500);
    EXPECT_EQ(form->ctx.Jogador[1].ID, "42");
    EXPECT_EQ(form->modelo.LbNV[1].Texto, "(1.500)");
    EXPECT_EQ(PoeNoCombo(form->registro()), std::vector<std::string>{"ana maria"});
    // the flag went with the first login
    online->Login("ana maria", "se nha", true);
    EXPECT_EQ(servico.pedidos.back().caminho.find("wb=t"), std::string::npos);
    Respostas({{"tipo=Entrar", "Resposta:#NOT"}});
    EXPECT_EQ(online->Login("x", "y", true), ServicoOnline::ResultadoLogin::Recusado);
    Respostas({});
    EXPECT_EQ(online->Login("x", "y", true), ServicoOnline::ResultadoLogin::SemResposta);
    form->ctx.Game.Conectado = true;
    online->ClicaNome(1);
    online->ClicaNome(2);
    ASSERT_EQ(paginas.size(), 2u);
    EXPECT_NE(paginas[0].find("perfil.php?prog=velmora&senha=se nha&id=42"), std::string::npos);
}
