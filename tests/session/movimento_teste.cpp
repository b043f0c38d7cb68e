// Buttons pressed while a move of the player plays on the board: the move ends on the board
// it began on, and only then does the button set up another one.
#include "apoio.h"

#include "core/casas.h"
#include "core/tabuleiro.h"

#include <initializer_list>
#include <utility>

namespace velmora::teste {
namespace {

// A board text: the side to move, then every dark square empty but the pieces given.
std::string Tabuleiro(int vez, std::initializer_list<std::pair<int, int>> pecas) {
    std::string t = std::to_string(vez) + ",";
    for (int i = 1; i <= 64; ++i) {
        const int s = CasaDoIndice(i);
        int codigo = CasaClara(s) ? 0 : 3;
        for (const auto& [casa, c] : pecas)
            if (casa == s) codigo = c;
        t += std::to_string(codigo) + ",";
    }
    return t;
}

// The man on 88 must take three men in a row: 88-66-44-22 over 77, 55 and 33.
const std::initializer_list<std::pair<int, int>> Captura = {{88, 1}, {84, 1}, {77, 2},
                                                            {55, 2}, {33, 2}, {19, 2}};

class Movimento : public Sessao {
  protected:
    // A game of `modo` from the board text, as the history would load it.
    void ComecaCom(int modo, const std::string& texto) {
        auto& G = form.ctx.Game;
        G.Modo = modo;
        G.Tipo = modo == 3 ? "HH" : "HC";
        G.Regra = 1;
        form.ctx.Jogador[1].Nome = "Ana";
        form.ctx.Jogador[2].Nome = modo == 3 ? "Rui" : "Computador";
        form.ctx.Jogador[2].Nivel = 3;
        form.OrientaTabuleiro("Servidor");
        form.AtualizaPlacar();
        G.Fim = true;
        ASSERT_TRUE(form.ctx.CarregaBoard(texto));
        form.Tempo.start();
        form.ctx.PlayGame();
    }
    // True once, in the second step of the capture: the first man taken is off the board
    // and the second still on it.
    bool NoSegundoSalto() {
        const Painel& p = form.ctx.painel;
        if (apertou_ || !form.ctx.NoMovePedra || p.imgpd[77] != 0 || p.imgpd[55] == 0) return false;
        return apertou_ = true;
    }

  private:
    bool apertou_ = false;
};

TEST_F(Movimento, ReiniciarDuranteACapturaDoJogadorEsperaOFimDoMovimento) {
    humano.ativo = false;
    bool clicou = false;
    std::string novo;
    int saldoNovo = -1;
    aCadaEvento = [&] {
        if (!clicou && form.ctx.EsperaClique()) {
            clicou = true;
            form.imgpd_MouseDown(88); // the one move there is
        }
        if (NoSegundoSalto()) form.Label7_Click();
    };
    cpu.aoPensar = [&](int passo) {
        // The new game: the computer begins, on a whole board.
        if (passo != 0 || form.ctx.Jogador[2].Vitorias != 1 || !novo.empty()) return;
        novo = form.ctx.TextoTabuleiro();
        saldoNovo = form.ctx.Atual.Saldo;
        form.EncerraPrograma();
    };
    Roda([&] { ComecaCom(1, Tabuleiro(1, Captura)); });

    EXPECT_TRUE(clicou);
    EXPECT_EQ(form.ctx.Jogador[2].Vitorias, 1);
    EXPECT_EQ(novo, TextoTabuleiro(PosicaoInicial()));
    EXPECT_EQ(saldoNovo, 0);
    LacosNuncaSobrepostos();
}

TEST_F(Movimento, HistoricoDuranteACapturaCarregaOTabuleiroGuardadoInteiro) {
    // Two people: side 2 plays 19-28, side 1 begins its capture, and "first position" is
    // pressed in its second jump.
    humano.ativo = false;
    const std::string inicio = Tabuleiro(2, Captura);
    const Posicao guardada = PosicaoDoTexto(inicio).value();
    int cliques = 0;
    bool voltou = false;
    std::string visto;
    int saldoVisto = -1, pecas2 = -1;
    aCadaEvento = [&] {
        auto& c = form.ctx;
        if (c.EsperaClique() && cliques == 0) {
            ++cliques;
            form.imgpd_MouseDown(19);
            form.imgpd_MouseDown(28);
        } else if (c.EsperaClique() && cliques == 1 && c.Atual.Vez == 1) {
            ++cliques;
            form.imgpd_MouseDown(88);
        }
        if (NoSegundoSalto()) {
            voltou = true;
            form.Image6_Click(0);
        }
        if (voltou && c.EsperaClique() && c.JogadaAtual == 1 && visto.empty()) {
            visto = c.TextoTabuleiro();
            saldoVisto = c.Atual.Saldo;
            pecas2 = c.QuantasPecas(2);
            form.EncerraPrograma();
        }
    };
    Roda([&] { ComecaCom(3, inicio); });

    EXPECT_TRUE(voltou);
    EXPECT_EQ(visto, TextoTabuleiro(guardada));
    EXPECT_EQ(saldoVisto, guardada.Saldo);
    EXPECT_EQ(pecas2, 4);
    EXPECT_EQ(form.ctx.UltimaJogada, 3); // the capture was recorded before the return
    LacosNuncaSobrepostos();
}

} // namespace
} // namespace velmora::teste
