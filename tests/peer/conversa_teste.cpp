// Draw, surrender, chat, the time and status questions, the start check and the two
// conflicts, on one copy whose peer is the test.
#include "apoio.h"

#include "peer/fio.h"

namespace velmora::teste {
namespace {

using Conversa = Copia;

TEST_F(Conversa, EmpateAceitoDosDoisLados) {
    Conecta("Servidor");
    auto& c = form.ctx;
    c.Jogador[1].Vitorias = 1;
    // The answering side: yes, then the offerer's terminate ends its wait.
    tela.respostaEmpate = true;
    int pumps = 0;
    aCadaEvento = [&] {
        if (++pumps == 20) Recebe("Empate:TerminateSim");
    };
    Recebe("PedirEmpate");
    EXPECT_EQ(enviadas, std::vector<std::string>{"Empate:sim"});
    EXPECT_TRUE(form.Empatou);
    EXPECT_EQ(c.Jogador[1].Vitorias, 1);
    EXPECT_EQ(c.Jogador[2].Vitorias, 0);
    EXPECT_LT(relogio.Decorrido(), 2.0); // the terminate ended the wait before its limit
    EXPECT_TRUE(NoDiario(":::: Entrei no loop 'Respondi empate' (Aceitei)"));
    aCadaEvento = nullptr;

    // The offering side.
    enviadas.clear();
    form.Empatou = false;
    c.EsperandoEmpate = true;
    Recebe("Empate:sim");
    EXPECT_EQ(enviadas, std::vector<std::string>{"Empate:TerminateSim"});
    EXPECT_TRUE(form.Empatou);
    EXPECT_FALSE(c.EsperandoEmpate);
    EXPECT_TRUE(c.Game.AceitaClique);
}

TEST_F(Conversa, EmpateRecusadoDosDoisLados) {
    Conecta("Cliente");
    auto& c = form.ctx;
    tela.respostaEmpate = false;
    const double antes = relogio.Decorrido();
    c.Game.AceitaClique = false;
    Recebe("PedirEmpate");
    // No terminate came: the wait ends by itself after two seconds, the clock running.
    EXPECT_EQ(enviadas, std::vector<std::string>{"Empate:nao"});
    EXPECT_GE(relogio.Decorrido() - antes, 1.0);
    EXPECT_TRUE(form.Timer2.isActive());
    EXPECT_FALSE(c.Game.AceitaClique); // the value kept before the question
    EXPECT_FALSE(form.Empatou);

    enviadas.clear();
    c.EsperandoEmpate = true;
    c.Game.OfertaFeita = true;
    Recebe("Empate:nao");
    EXPECT_EQ(enviadas, std::vector<std::string>{"Empate:TerminateNao"});
    EXPECT_TRUE(c.Game.AceitaClique);
    EXPECT_TRUE(c.Game.OfertaFeita);
    EXPECT_FALSE(c.EsperandoEmpate);
    EXPECT_EQ(c.painel.Label27.Texto, "Bia não aceitou o empate");
}

TEST_F(Conversa, EntregaComPalavrasConhecidasEDesconhecida) {
    Conecta("Servidor");
    auto& c = form.ctx;
    // The next game of the session would start: it leaves at its first turn.
    aCadaEvento = [&] {
        if (c.EsperaClique() || c.Game.EmPlay) {
            c.Game.SairPlay = true;
            c.Game.Fim = true;
        }
    };
    c.painel.Label27.Texto = "antes";
    Recebe("Entregar:Perder");
    EXPECT_EQ(c.Jogador[1].Vitorias, 1);
    EXPECT_TRUE(Enviou("Desiste:OK"));
    EXPECT_EQ(c.Game.Comeca, 2); // the next game starts with the other side
    EXPECT_TRUE(NoDiario("AtribuiVitoria(1, True)"));
    c.Game.Comeca = 0;
    c.painel.Label27.Texto = "antes";
    std::string perdeu;
    peer.aoEnviar = [&](int, const std::string& b) {
        if (b == "Desiste:OK") perdeu = c.painel.Label27.Texto;
    };
    Recebe("Entregar:Timeout");
    EXPECT_EQ(c.Jogador[1].Vitorias, 2);
    EXPECT_EQ(perdeu, "Bia Perdeu.");
    c.Game.Comeca = 0;
    c.painel.Label27.Texto = "antes";
    std::string mostrado; // Label27 while the surrender is handled
    peer.aoEnviar = [&](int, const std::string& b) {
        if (b == "Desiste:OK") mostrado = c.painel.Label27.Texto;
    };
    Recebe("Entregar:Sei-la");
    EXPECT_EQ(c.Jogador[1].Vitorias, 3);
    EXPECT_EQ(mostrado, "antes");
}

TEST_F(Conversa, ChatDe19E20CaracteresEAvisos) {
    Conecta("Servidor");
    auto& c = form.ctx;
    Recebe("Mensagem:" + std::string(19, 'a'));
    Recebe("Mensagem:" + std::string(20, 'b'));
    Recebe("Mensagem:ol\xE1, tudo bem?");
    ASSERT_EQ(tela.chat.size(), 3u);
    EXPECT_EQ(tela.chat[0], "Bia diz:   " + std::string(19, 'a'));
    EXPECT_EQ(tela.chat[1], "Bia diz:\r\n" + std::string(20, 'b'));
    EXPECT_EQ(tela.chat[2], "Bia diz:   olá, tudo bem?");
    EXPECT_NE(form.modelo.Text4.Texto.find("\r\n\r\nBia diz:   olá"), std::string::npos);
    // The peer's notice is logged as it came.
    Recebe("Mensagem:(Bia est\xE1 com bate papo desativado)");
    EXPECT_EQ(tela.chat.back(), "(Bia está com bate papo desativado)");
    // Chat off here: the peer is told, and nothing is logged.
    form.config.HabilitaChat = false;
    Recebe("Mensagem:oi");
    EXPECT_EQ(enviadas.back(), "Mensagem:(Ana est\xE1 com bate papo desativado)");
    EXPECT_EQ(tela.chat.size(), 4u);
    // A different language with English chat off is off as well.
    form.config.HabilitaChat = true;
    form.config.HabilitaChatIngles = false;
    c.Jogador[2].Lingua = "Ingles";
    EXPECT_FALSE(peer.EnviaChat("hello"));
    EXPECT_EQ(tela.chat.back(), "Você deve ativar o 'Bate papo' em 'Opções' para enviar mensagens");
}

TEST_F(Conversa, ChatEnviadoPassaPeloFiltro) {
    Conecta("Cliente");
    EXPECT_TRUE(peer.EnviaChat("que merda de jogada"));
    EXPECT_EQ(enviadas.back(), "Mensagem:que ***** de jogada");
    EXPECT_NE(form.modelo.Text4.Texto.find("Ana diz:   que ***** de jogada"), std::string::npos);
    const size_t n = enviadas.size();
    EXPECT_FALSE(peer.EnviaChat("   "));
    EXPECT_EQ(enviadas.size(), n);
    EXPECT_TRUE(peer.EnviaChat("boa, Zé"));
    EXPECT_EQ(enviadas.back(), "Mensagem:boa, Z\xE9");
}

TEST_F(Conversa, PerguntaDeTempo) {
    Conecta("Servidor");
    auto& m = form.modelo;
    auto& c = form.ctx;
    m.PicTIMER[1].Largura = 60;
    m.PicCrono[1].Largura = 30;
    Recebe("RestartTimeOut");
    EXPECT_TRUE(enviadas.empty()); // time is left here: no answer
    m.PicCrono[1].Largura = 60;
    VezDoPeer();
    Recebe("RestartTimeOut");
    EXPECT_EQ(enviadas, std::vector<std::string>{"TMNOTOK"});
    EXPECT_FALSE(c.Game.valendo);
    ASSERT_EQ(tela.mensagens.size(), 1u);
    EXPECT_EQ(tela.mensagens[0], "Tempo limite esgotado.");

    form.EsperaTimeOut = false;
    c.Game.valendo = true;
    Recebe("TMOK");
    EXPECT_TRUE(form.EsperaTimeOut);
    EXPECT_TRUE(c.Game.valendo);
    form.EsperaTimeOut = false;
    Recebe("TMNOTOK");
    EXPECT_TRUE(form.EsperaTimeOut);
    EXPECT_FALSE(c.Game.valendo);
}

TEST_F(Conversa, PerguntaDeEstado) {
    Conecta("Cliente");
    Recebe(">>Informa:V--");
    ASSERT_EQ(enviadas.size(), 1u);
    EXPECT_EQ(enviadas[0].rfind("Mensagem:()  Vers\xE3o:3.9.0 (", 0), 0u);
    EXPECT_NE(
        enviadas[0].find("\r\n(Remoto: Cliente) - Vez: Ana\r\nValendo: True\rConectado: "
                         "True\rPodeJogar: True\rPicCrono(1).Width = 0\rPicTimer(1).Width = "),
        std::string::npos)
        << enviadas[0];
}

TEST_F(Conversa, ChecagemDeInicio) {
    Conecta("Cliente");
    auto& c = form.ctx;
    VezDoPeer();
    peer.AceitaVerifica = true;
    Recebe("#VERIFICA#1");
    EXPECT_FALSE(peer.AceitaVerifica);
    EXPECT_FALSE(c.Game.Fim);
    EXPECT_FALSE(form.TimerCorrige.isActive());
    // Both believe that they start: the "Cliente" yields to the sender.
    c.painel.PicVezDois.Visivel = false;
    peer.AceitaVerifica = true;
    Recebe("#VERIFICA#2");
    EXPECT_TRUE(c.Game.Fim);
    EXPECT_EQ(c.Game.Comeca, 1);
    EXPECT_TRUE(form.TimerCorrige.isActive());
    // A second check on the same connection is ignored.
    c.Game.Fim = false;
    Recebe("#VERIFICA#2");
    EXPECT_FALSE(c.Game.Fim);
}

TEST_F(Conversa, ConflitosDeInicioReparados) {
    Conecta("Servidor");
    auto& c = form.ctx;
    // Both wait for the other: the start signal on a copy that waits too.
    VezDoPeer();
    Recebe(":/PODEINICIAR:\\");
    EXPECT_EQ(enviadas, std::vector<std::string>{"#erro..inicio#"});
    EXPECT_TRUE(form.PodeIniciar);
    enviadas.clear();
    c.Game.Comeca = 2;
    Recebe("#erro..inicio#");
    EXPECT_EQ(enviadas, std::vector<std::string>{"#erro.inicio:OK#"});
    EXPECT_EQ(c.Game.Comeca, 1);
    EXPECT_EQ(c.Atual.Vez, 1);
    EXPECT_TRUE(c.Game.Fim);
    enviadas.clear();
    c.Game.Comeca = 2;
    c.Atual.Vez = 2;
    Recebe("#erro.inicio:OK#");
    EXPECT_TRUE(enviadas.empty());
    EXPECT_EQ(c.Game.Comeca, 1);
    EXPECT_EQ(c.Atual.Vez, 1);
    // The repair starts the game over with side 1 to move.
    c.Game.Comeca = 0;
    peer.TimerCorrige_Timer();
    EXPECT_FALSE(form.TimerCorrige.isActive());
    EXPECT_EQ(c.TextoTabuleiro(), TextoTabuleiro(PosicaoInicial()));
}

TEST_F(Conversa, ConflitoDeVezFechaOLink) {
    Conecta("Servidor");
    auto& c = form.ctx;
    const std::string antes = c.TextoTabuleiro();
    Recebe(MensagemJogada(Lance({33, 44})));
    EXPECT_EQ(enviadas, std::vector<std::string>{"#/erro/#"});
    EXPECT_EQ(c.TextoTabuleiro(), antes);
    enviadas.clear();
    Recebe("#/erro/#");
    EXPECT_EQ(enviadas, std::vector<std::string>{"#/XerroX/#"});
    EXPECT_FALSE(c.Game.valendo);
    EXPECT_FALSE(peer.Close_Valendo);
    EXPECT_TRUE(c.Game.Conectado);
    c.Game.valendo = true;
    Recebe("#/XerroX/#");
    EXPECT_FALSE(c.Game.valendo);
    EXPECT_FALSE(c.Game.Conectado); // this side disconnected
}

} // namespace
} // namespace velmora::teste
