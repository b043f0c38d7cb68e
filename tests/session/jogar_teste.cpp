// What "JOGAR" writes for each tab, the players' panel, and the controls of the turn.
#include "apoio.h"

#include <set>

namespace velmora::teste {
namespace {

using Jogar = Sessao;

TEST_F(Jogar, ContraOutroJogadorSorteiaQuemComecaEZeraAsVitorias) {
    std::set<int> comecos;
    for (int i = 0; i < 40; ++i) {
        form.ctx.Jogador[1].Vitorias = form.ctx.Jogador[2].Vitorias = 3;
        CamposNovoJogo c = Aba(2);
        c.Opt_regra2 = 4;
        ASSERT_TRUE(form.Jogar(c));
        comecos.insert(form.ctx.Game.Comeca);
        relogio.Avanca(0.037 * (i + 1));
    }
    EXPECT_EQ(comecos, (std::set<int>{1, 2}));
    const auto& G = form.ctx.Game;
    EXPECT_EQ(G.Modo, 3);
    EXPECT_EQ(G.Tipo, "HH");
    EXPECT_EQ(G.Regra, 4);
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias + form.ctx.Jogador[2].Vitorias, 0);
    EXPECT_EQ(form.modelo.LbNome[2].Texto, "Jogador 2");
    EXPECT_EQ(form.modelo.Label20.Texto, "Regra AFC");
    EXPECT_EQ(form.modelo.Label21.Texto, "Regra AFC");
    EXPECT_EQ(form.modelo.LbPT1.Texto, "0");
    EXPECT_EQ(LeOpcao(form.registro(), "OPTJ", ""), "2");
}

TEST_F(Jogar, ContraOComputadorNivelOuTorneio) {
    CamposNovoJogo c = Aba(1);
    c.Nivel = 0; // none selected: level 3
    c.TxtHC = "Bia";
    ASSERT_TRUE(form.Jogar(c));
    EXPECT_EQ(form.ctx.Game.Modo, 1);
    EXPECT_EQ(form.ctx.Jogador[2].Nome, "Computador");
    EXPECT_EQ(form.ctx.Jogador[2].Nivel, 3);
    EXPECT_EQ(form.modelo.lbnivel[2].Texto, "(Intermediário)");
    EXPECT_EQ(form.modelo.lbnivel[1].Texto, "");

    c.Nivel = 8;
    tela.dialogos = {{SaidaDialogo::Jogar, c}};
    humano.ativo = false;
    aCadaEvento = [&] {
        if (form.ctx.EsperaClique() || cpu.ativo) form.EncerraPrograma();
    };
    Roda([&] { form.Label6_Click(); });
    const auto& bot = form.ctx.Jogador[2];
    EXPECT_EQ(form.ctx.Game.Modo, 2);
    EXPECT_EQ(bot.Nivel, 1);
    EXPECT_TRUE(bot.Nome == "Valber (Bot)" || bot.Nome == "Rui (Bot)") << bot.Nome;
    EXPECT_EQ(form.modelo.lbnivel[2].Texto, "Primeiro oponente");
    EXPECT_FALSE(form.modelo.LbPT1.Visivel);
    ASSERT_EQ(tela.mensagens.size(), 1u);
    EXPECT_EQ(tela.mensagens[0], "Bem vindo ao torneio.\n\nPara ser campeão é preciso ganhar os "
                                 "8 jogos da eliminatória\n\nSeu primeiro oponente será: " +
                                     bot.Nome + "\n\nBoa sorte");
}

TEST_F(Jogar, OnLineValidaNomeESenhaETiraOsSustenidos) {
    CamposNovoJogo c = Aba(4);
    c.Text1 = "Ze#ca";
    c.Text3 = "   ";
    EXPECT_FALSE(form.Jogar(c));
    EXPECT_EQ(tela.mensagens.back(), "Informe a senha de grupo\n\nSomente as pessoas que "
                                     "colocarem a mesma senha de grupo poderão jogar com você");
    c.Text3 = "  SeNha Grupo ";
    EXPECT_FALSE(form.Jogar(c)); // the lobby closed without a link: the dialog stays
    EXPECT_EQ(form.ctx.Jogador[1].Nome, "Zeca");
    EXPECT_EQ(form.SenhaGrupo, "senha grupo");
    EXPECT_EQ(form.ctx.Game.Modo, 4);
    EXPECT_EQ(form.ctx.Jogador[1].Lingua, "Portugues");
    c.Text1 = "##";
    form.Jogar(c);
    EXPECT_EQ(form.ctx.Jogador[1].Nome, "Sem Nome");

    CamposNovoJogo t3 = Aba(3);
    t3.Combo3 = "#";
    EXPECT_FALSE(form.Jogar(t3));
    EXPECT_EQ(tela.mensagens.back(),
              "Por favor informe o seu Nick e senha, ou cadastre um novo nick");
    t3.Combo3 = "nick";
    EXPECT_FALSE(form.Jogar(t3));
    EXPECT_EQ(tela.mensagens.back(), "Informe a senha");
    EXPECT_TRUE(form.SenhaGrupo.empty());

    // The lobby's "play as a visitor" repeats JOGAR on tab 3 with the nick of tab 4.
    struct Lobby : RedeRoteiro {
        int aberturas = 0;
        ResultadoLobby AbreLobby() override { return {++aberturas == 1}; }
    } lobby;
    form.UsaRede(lobby);
    c.Text1 = "Visita";
    EXPECT_FALSE(form.Jogar(c));
    EXPECT_EQ(lobby.aberturas, 2);
    EXPECT_TRUE(form.ctx.Jogador[1].Visitante);
    EXPECT_EQ(form.ctx.Jogador[1].Nome, "Visita");
    EXPECT_EQ(c.Aba, 3);
}

TEST_F(Jogar, PorIPDefineOPapelEForcaOBatePapo) {
    form.config.HabilitaChat = false;
    CamposNovoJogo c = Aba(5);
    c.Option1 = false;
    c.TxtRede = "Rui";
    EXPECT_FALSE(form.Jogar(c));
    EXPECT_EQ(form.ctx.Tipo_c, "Cliente");
    EXPECT_TRUE(form.config.HabilitaChat);
    EXPECT_EQ(form.ctx.Game.Modo, 5);

    // "Cliente" sees the board turned round: image 12 takes the place of image 89.
    form.OrientaTabuleiro("Cliente");
    EXPECT_EQ(form.modelo.imgpd[12], form.modelo.PosicaoCasa[89]);
    EXPECT_EQ(form.modelo.imgpd[89], form.modelo.PosicaoCasa[12]);
    form.OrientaTabuleiro("Servidor");
    EXPECT_EQ(form.modelo.imgpd[12], form.modelo.PosicaoCasa[12]);
}

TEST_F(Jogar, VezEBotoesSeguemOTurnoEAConexao) {
    auto& c = form.ctx;
    c.Jogador[1].Nome = "Ana";
    c.Jogador[2].Nome = "Rui";
    struct Caso {
        std::string tipo;
        bool conectado;
        std::string cliente;
        int vez;
        std::string lbVez;
        bool podeReiniciar;
    };
    const Caso casos[] = {
        {"HH", true, "Servidor", 1, "Sua vez", true},
        {"HH", false, "Servidor", 1, "Ana", true},
        {"HC", false, "Servidor", 1, "Sua vez", true},
        {"HH", true, "Servidor", 2, "Aguarde...", false},
        {"HH", false, "Servidor", 2, "Rui", true},
        {"HC", false, "Servidor", 2, "Rui", true},
        {"HH", true, "Cliente", 2, "Sua vez", true},
        {"HH", true, "Cliente", 1, "Aguarde...", false},
    };
    for (const Caso& k : casos) {
        c.Game.Tipo = k.tipo;
        c.Game.Conectado = k.conectado;
        c.Tipo_c = k.cliente;
        c.Atual.Vez = static_cast<uint8_t>(k.vez);
        c.painel.PicVezDois.Visivel =
            (k.conectado && k.cliente == "Cliente") ? k.vez == 1 : k.vez == 2;
        form.exibevez();
        form.StatusBotoes();
        EXPECT_EQ(form.modelo.LbVez.Texto, k.lbVez) << k.tipo << k.conectado << k.vez;
        EXPECT_EQ(form.modelo.Label7.Habilitado, k.podeReiniciar);
        EXPECT_EQ(c.painel.Label24.Cor, k.podeReiniciar ? cor::Clara : cor::Cinza);
    }
    // Handing a game for points over needs fewer than six pieces.
    c.Game.Conectado = true;
    c.Game.Modo = 4;
    c.Tipo_c = "Servidor";
    c.Atual.Vez = 1;
    c.Jogador[2].ID = "77";
    c.painel.Label2.Texto = "6";
    form.HabilitaEntregar();
    EXPECT_FALSE(c.painel.Label22.Habilitado);
    c.painel.Label2.Texto = "5";
    form.HabilitaEntregar();
    EXPECT_TRUE(c.painel.Label22.Habilitado);
    c.painel.Label2.Texto = "9";
    c.Jogador[2].ID = "0"; // a visitor
    form.HabilitaEntregar();
    EXPECT_TRUE(c.painel.Label22.Habilitado);
}

TEST_F(Jogar, PlacarConectadoMostraEstrelasPelosPontos) {
    auto& c = form.ctx;
    c.Game.Conectado = true;
    c.Game.Modo = 4;
    c.Jogador[1].Pontos = 1500;
    c.Jogador[2].Pontos = 10000;
    c.Jogador[2].Nome = "Um nome muito comprido para o painel";
    form.AtualizaPlacar();
    EXPECT_EQ(form.modelo.Estrelas[1],
              (std::array<bool, 6>{false, true, false, false, false, false}));
    EXPECT_EQ(form.modelo.Estrelas[2], (std::array<bool, 6>{false, true, true, true, true, true}));
    EXPECT_EQ(form.modelo.ImagemEstrelas[2], 2);
    EXPECT_TRUE(form.modelo.Medalha[2].Visivel);
    EXPECT_FALSE(form.modelo.Medalha[1].Visivel);
    EXPECT_EQ(form.modelo.FonteLbNome[2], 8);
    EXPECT_EQ(form.modelo.FonteLbNome[1], 9);
    form.SenhaGrupo = "grupo"; // no stars in a group game
    form.AtualizaPlacar();
    EXPECT_EQ(form.modelo.Estrelas[2], (std::array<bool, 6>{}));
}

} // namespace
} // namespace velmora::teste
