// The dispatcher row by row: merged reads, the cut tokens, the handshake on both sides,
// the block list, and bad input from the peer.
#include "apoio.h"

#include "core/casas.h"
#include "peer/fio.h"
#include "store/configuracao.h"

namespace velmora::teste {
namespace {

using Despacho = Copia;

TEST_F(Despacho, PingEPongJuntosEOutrasFusoes) {
    Conecta("Servidor");
    Recebe("P/G/P!G");
    EXPECT_EQ(enviadas, std::vector<std::string>{"P/G"});

    // A "Config:" merged behind a ping is read as a "Config:".
    enviadas.clear();
    form.ctx.Game.Conectado = false;
    Recebe("/P!GConfig:#0#Bia#0#3#0#90#NV#pc");
    ASSERT_EQ(enviadas.size(), 2u);
    EXPECT_EQ(enviadas[0], "P/G");
    EXPECT_EQ(enviadas[1].rfind("ConeCtado:", 0), 0u);
    EXPECT_EQ(form.ctx.Game.Regra, 3);

    // Lower case, blanks, unknown words and a merged conflict are dropped without a word.
    enviadas.clear();
    const auto vez = form.ctx.Atual.Vez;
    form.Conta_Verifica = 7;
    for (const char* t : {"conectadook", "      ", "palavra", "#/erro/#PedirEmpate", "wrestart"})
        Recebe(t);
    EXPECT_EQ(form.Conta_Verifica, 0);
    EXPECT_TRUE(enviadas.empty());
    EXPECT_TRUE(tela.mensagens.empty());
    EXPECT_EQ(form.ctx.Atual.Vez, vez);
}

TEST_F(Despacho, ConfirmacaoEJogadaNumaLeituraEChatAtras) {
    Conecta("Servidor");
    VezDoPeer();
    auto& c = form.ctx;
    c.Atual.IniLista = 1;
    c.gerador().ListaHumano(c.Atual);
    const Jogada j = c.gerador().Slot(c.Atual.IniLista);
    const std::string antes = c.TextoTabuleiro();
    c.Recebeu_Jogada = false;
    const int16_t jogada = c.JogadaAtual;

    Recebe("J_OK" + MensagemJogada(j.texto()) + "Mensagem:oi");
    EXPECT_TRUE(c.Recebeu_Jogada);
    EXPECT_NE(c.TextoTabuleiro(), antes);
    EXPECT_EQ(c.Atual.Casas[j[1]] & (LADO1 | LADO2), LADO2);
    EXPECT_TRUE(c.Ja_Joguei);
    EXPECT_EQ(c.JogadaAtual, jogada + 1);
    // Only the confirmation goes back: the received move isn't echoed.
    EXPECT_EQ(enviadas, std::vector<std::string>{"J_OK"});
    // The receiver's clock starts three steps in.
    EXPECT_DOUBLE_EQ(form.modelo.PicCrono[1].Largura, form.modelo.PicTIMER[1].Largura / 60 * 3);
    ASSERT_EQ(tela.chat.size(), 1u);
    EXPECT_EQ(tela.chat[0], "Bia diz:   oi");
}

TEST_F(Despacho, JogadaForaDoTabuleiroNaoMudaNada) {
    Conecta("Servidor");
    VezDoPeer();
    auto& c = form.ctx;
    const Posicao antes = c.Atual;
    for (const std::string& lance :
         {Lance({33, 44}), Lance({20, 31}), Lance({12}), std::string(60, '\x21'),
          Lance({33, 44, 99}), Lance({200, 44})}) {
        tela.mensagens.clear();
        enviadas.clear();
        Recebe(MensagemJogada(lance));
        if (lance == Lance({33, 44})) continue; // a square pair on the board is played blind
        ASSERT_EQ(tela.mensagens.size(), 1u) << lance.size();
        EXPECT_EQ(tela.mensagens[0], "Erro interno codigo D2\r\r9\r\nSubscript out of range");
        EXPECT_TRUE(enviadas.empty());
    }
    c.Atual = antes;
    // The ring round the board is whole after all of it.
    Recebe(MensagemJogada(Lance({12, 99})));
    for (int s = 0; s <= 100; ++s) {
        if (!CasaDoTabuleiro(s)) {
            EXPECT_EQ(c.Atual.Casas[s], antes.Casas[s]) << s;
        }
    }
}

TEST_F(Despacho, LixoGrandeEDepoisUmPing) {
    Conecta("Cliente");
    std::string lixo(1 << 20, '\0');
    uint32_t x = 12345;
    for (char& b : lixo) {
        x = x * 1103515245u + 12345u;
        b = static_cast<char>(x >> 24);
    }
    Recebe(lixo);
    Recebe(std::string(1 << 20, '#'));
    Recebe(std::string(100000, ':') + "ConeCtado");
    enviadas.clear();
    Recebe("/P!G");
    EXPECT_EQ(enviadas, std::vector<std::string>{"P/G"});
}

TEST_F(Despacho, CamposEstritosLevantamD2) {
    auto& c = form.ctx;
    c.Tipo_c = "Servidor";
    c.Game.Modo = 5;
    const std::string d2 = "Erro interno codigo D2\r\r13\r\nType mismatch";
    Recebe("Nick:#0#Bia#muitos#17#NV#Ace#pc#Port");
    Recebe("Nick:#0#Bia#10#dezessete#NV#Ace#pc#Port");
    Recebe("Config:#0#Bia#0#x#0#90#NV#pc");
    Recebe("ConeCtado:um");
    Recebe("ConeCtado:");
    EXPECT_EQ(tela.mensagens, std::vector<std::string>(5, d2));
    EXPECT_TRUE(enviadas.empty());
    EXPECT_FALSE(c.Game.Conectado);
    // A rule outside the four is a fault too; a side other than 1 or 2 closes silently.
    Recebe("Config:#0#Bia#0#7#0#90#NV#pc");
    EXPECT_EQ(tela.mensagens.back(), "Erro interno codigo D2\r\r9\r\nSubscript out of range");
    tela.mensagens.clear();
    Recebe("ConeCtado:3");
    EXPECT_TRUE(tela.mensagens.empty());
    EXPECT_TRUE(enviadas.empty());
    EXPECT_FALSE(c.Game.Conectado);
    // Lenient fields read 0 and go on.
    Recebe("Config:#0#Bia#0#2#0#dez#NV#pc#IDT:abc");
    EXPECT_EQ(c.Game.TempoLimite, 60);
    EXPECT_EQ(c.Jogador[2].IDT, "0");
}

TEST_F(Despacho, HandshakeDosDoisLados) {
    auto& c = form.ctx;
    // The listening side.
    c.Tipo_c = "Servidor";
    c.Game.Modo = 5;
    c.Game.Regra = 4;
    c.Game.TempoLimite = 90;
    c.Jogador[1].Nome = "João";
    c.Jogador[1].Lingua = "Portugues";
    form.PodeIniciar = true;
    Recebe("Nick:#0#Bi\xE1#120#17#NV#Ace#pc-7#Port");
    EXPECT_FALSE(form.PodeIniciar);
    EXPECT_EQ(c.Jogador[2].Nome, "Biá");
    EXPECT_EQ(c.Jogador[2].Pontos, 120);
    EXPECT_EQ(c.Jogador[2].IDT, "0");
    EXPECT_EQ(c.Jogador[2].Lingua, ""); // "Port" is not "Portugues"
    EXPECT_EQ(form.modelo.LbNome[2].Texto, "Biá");
    EXPECT_FALSE(form.modelo.LbNV[2].Visivel); // no points shown by typed address
    EXPECT_EQ(LeOpcao(form.registro(), "IDCPT_Remote", ""), "pc-7");
    ASSERT_EQ(enviadas.size(), 1u);
    EXPECT_EQ(enviadas[0], "Config:#0#Jo\xE3o#0#4#0#90#NV#");
    enviadas.clear();
    Recebe("ConeCtado:2");
    EXPECT_EQ(enviadas, std::vector<std::string>{"ConectadoOK"});
    EXPECT_TRUE(c.Game.Conectado);
    EXPECT_EQ(c.Game.Comeca, 2);
    EXPECT_TRUE(peer.Close_Valendo);
    EXPECT_TRUE(NoDiario(" >1>> EstaConectado: Tipo_c=Servidor   Comeca=2"));

    // Another protocol number: cut off without an answer.
    enviadas.clear();
    c.Game.Conectado = false;
    Recebe("Nick:#0#Bia#0#16#NV#Ace#pc#Port");
    EXPECT_TRUE(enviadas.empty());
}

TEST_F(Despacho, HandshakeDoLadoQueDisca) {
    auto& c = form.ctx;
    c.Tipo_c = "Cliente";
    c.Game.Modo = 5;
    Recebe("Config:#0#Bia#0#2#0#30#VS#pc#IDT:55");
    EXPECT_EQ(c.Game.Regra, 2);
    EXPECT_EQ(c.Game.TempoLimite, 60);
    EXPECT_TRUE(c.Jogador[2].Visitante);
    EXPECT_EQ(c.Jogador[2].IDT, "55");
    EXPECT_EQ(peer.DicaNome2, "ID do jogador: 55");
    EXPECT_EQ(form.modelo.Label21.Texto, NomeRegra(2));
    ASSERT_EQ(enviadas.size(), 1u);
    const std::string lado = enviadas[0].substr(std::string("ConeCtado:").size());
    EXPECT_TRUE(lado == "1" || lado == "2");
    EXPECT_EQ(std::to_string(c.Game.Comeca), lado);
    Recebe("Config:#0#Bia#0#2#0#90#NV#pc#Ingles");
    EXPECT_EQ(c.Game.TempoLimite, 90);
    EXPECT_EQ(c.Jogador[2].Lingua, "Ingles");
    Recebe("ConectadoOK");
    EXPECT_TRUE(c.Game.Conectado);
    EXPECT_EQ(c.Jogador[1].Vitorias, 0);
}

TEST_F(Despacho, NickBloqueadoDosDoisLados) {
    auto& c = form.ctx;
    GravaOpcao(form.registro(), "block1", "ana");
    GravaOpcao(form.registro(), "block2", "ID:77");
    c.Game.Modo = 4;
    c.Tipo_c = "Servidor";
    Recebe("Nick:#0#ANA#0#17#NV#Chief#pc#Port#IDT:5#senhaA#");
    EXPECT_TRUE(enviadas.empty());
    ASSERT_FALSE(tela.status.empty());
    EXPECT_EQ(tela.status.back(), "5 : ANA está na sua lista de bloqueio.");
    c.Tipo_c = "Cliente";
    Recebe("Config:#0#Outro#0#1#0#90#NV#pc#IDT:77");
    EXPECT_TRUE(enviadas.empty());
    EXPECT_EQ(tela.status.back(), "77 : Outro está na sua lista de bloqueio.");
    // An "ID:" entry never matches a peer without an id; and by typed address nobody is
    // blocked.
    Recebe("Config:#0#Outro#0#1#0#90#NV#pc");
    EXPECT_EQ(enviadas.size(), 1u);
    c.Game.Modo = 5;
    c.Tipo_c = "Servidor";
    Recebe("Nick:#0#ana#0#17#NV#Ace#pc#Port");
    EXPECT_EQ(enviadas.size(), 2u);
}

} // namespace
} // namespace velmora::teste
