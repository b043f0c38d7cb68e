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
}

} // namespace
} // namespace velmora::teste
