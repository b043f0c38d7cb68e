// The end of a game: score, tally, records, the starting side, and the waits of a
// connected game, all timed on the simulated clock.
#include "apoio.h"

namespace velmora::teste {
namespace {

class Finaliza : public Sessao {
  protected:
    // A finished game against the computer at level 3, human at side 1, of `segundos`.
    void ContraComputador(double segundos, bool voltou = false) {
        auto& c = form.ctx;
        c.Game.Modo = 1;
        c.Game.Tipo = "HC";
        c.Game.Comeca = 1;
        c.Game.Voltou = voltou;
        c.Jogador[1].Nome = "Ana";
        c.Jogador[2].Nivel = 3;
        c.InicioJogo = relogio.Agora() - segundos;
    }
    void Conectado(int resultado) {
        auto& c = form.ctx;
        c.Game.Modo = 4;
        c.Game.Tipo = "HH";
        c.Game.Conectado = true;
        c.Game.Comeca = 1;
        c.Jogador[2].Nome = "Rui";
        form.finaliza(static_cast<uint8_t>(resultado));
    }
};

TEST_F(Finaliza, VitoriaContraOComputadorEntraNosRecordesEAlternaQuemComeca) {
    form.recordes().GravaRecord("Primeiro", 40, 3, 1);
    form.recordes().GravaRecord("Segundo", 60, 3, 2);
    form.config.TocarMusica = true;
    ContraComputador(40.6); // equal to the first: goes behind it
    form.finaliza(1);
    EXPECT_EQ(tela.mensagens, std::vector<std::string>{"Parabéns, você foi o vencedor!"});
    EXPECT_EQ(form.recordes().NomeRecord(3, 2), "Ana");
    EXPECT_EQ(form.recordes().TempoRecord(3, 2), 40);
    EXPECT_EQ(form.recordes().NomeRecord(3, 3), "Segundo");
    EXPECT_EQ(tela.recordes, (std::vector<std::pair<int, int>>{{3, 2}}));
    EXPECT_EQ(tela.musicas, std::vector<std::string>{"passport.mid"});
    EXPECT_EQ(tela.fechaMusica, 1);
    EXPECT_EQ(form.placar().Perdeu(3), 1);
    EXPECT_EQ(form.placar().Venceu(3), 0);
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias, 1);
    EXPECT_EQ(form.ctx.Game.Comeca, 2);
    EXPECT_EQ(form.ctx.painel.Label12.Texto, "00:00:40");
    EXPECT_EQ(form.ctx.painel.Label18.Texto, "Jogo terminado");
}

TEST_F(Finaliza, TabelaCheiaNaoAbreNadaEDerrotaComVoltouContaParaOComputador) {
    for (int r = 1; r <= 100; ++r) form.recordes().GravaRecord("X", 100, 3, r);
    ContraComputador(101);
    form.finaliza(1);
    EXPECT_TRUE(tela.recordes.empty());
    EXPECT_TRUE(tela.musicas.empty());
    EXPECT_EQ(form.recordes().NomeRecord(3, 100), "X");

    ContraComputador(10, true);
    form.finaliza(2);
    EXPECT_EQ(tela.mensagens.back(), "Você perdeu!");
    EXPECT_EQ(form.placar().Venceu(3), 1);
    EXPECT_EQ(form.ctx.Jogador[2].Vitorias, 1);
}

TEST_F(Finaliza, VencedorConectadoEsperaCincoSegundosAoTodo) {
    rede.aoAtribuir = [&] { relogio.Avanca(1); };
    double inicio = relogio.Decorrido();
    Conectado(1);
    EXPECT_NEAR(relogio.Decorrido() - inicio, 5, 0.1);
    EXPECT_EQ(rede.enviadas, std::vector<std::string>{"/PODJOGAR\\"});
    EXPECT_EQ(form.ctx.Game.Comeca, 2);
    EXPECT_TRUE(form.ctx.Game.AceitaClique);
    EXPECT_FALSE(form.ctx.painel.Label27.Visivel);

    rede.aoAtribuir = [&] { relogio.Avanca(7); };
    inicio = relogio.Decorrido();
    Conectado(1);
    EXPECT_NEAR(relogio.Decorrido() - inicio, 7, 0.01);
    EXPECT_EQ(form.ctx.Jogador[1].Vitorias, 2);
}

TEST_F(Finaliza, PerdedorConectadoEsperaPODJOGAROuVinteECincoSegundos) {
    aCadaEvento = [&] {
        if (relogio.Decorrido() > 3) form.ctx.Game.AceitaClique = true; // "/PODJOGAR\"
    };
    Conectado(2);
    EXPECT_LT(relogio.Decorrido(), 4);
    EXPECT_EQ(rede.atribuicoes, (std::vector<std::pair<int, bool>>{{2, true}}));
    EXPECT_EQ(form.ctx.painel.Label27.Texto, "Rui venceu");
    EXPECT_FALSE(form.ctx.painel.Label27.Visivel);
    EXPECT_TRUE(form.modelo.Label7.Habilitado);
    EXPECT_FALSE(form.EmEspera[Form1::EsperaAtribui]);
    EXPECT_EQ(rede.fechou, 0);

    aCadaEvento = nullptr;
    const double inicio = relogio.Decorrido();
    Conectado(2);
    EXPECT_NEAR(relogio.Decorrido() - inicio, 25, 1); // noted to the whole second
    EXPECT_EQ(rede.fechou, 1);
    EXPECT_EQ(rede.ws_close, 1);
    EXPECT_TRUE(form.ctx.painel.Label27.Visivel);
    EXPECT_FALSE(form.EmEspera[Form1::EsperaAtribui]);
}

TEST_F(Finaliza, NovoJogoDuranteAEsperaDoPerdedorSaiSemMexerNaSessao) {
    tela.dialogos = {{SaidaDialogo::Cancelar, {}}};
    aCadaEvento = [&] {
        if (relogio.Decorrido() > 2 && tela.rotulos.empty()) form.Label6_Click();
    };
    Roda([&] {
        Conectado(2);
        EXPECT_TRUE(form.ctx.StartInitGame);
        EXPECT_TRUE(form.ctx.painel.Label27.Visivel); // returned without touching the rest
        QTimer::singleShot(500, [&] { form.EncerraPrograma(); });
    });
    EXPECT_EQ(tela.rotulos, std::vector<std::string>{"Cancelar"});
}

TEST_F(Finaliza, EntregarConectadoEsperaAResposta) {
    auto& c = form.ctx;
    c.Game.Modo = 4;
    c.Game.Conectado = true;
    c.Game.Fim = false;
    c.Game.Comeca = 1;
    aCadaEvento = [&] {
        if (!rede.atribuicoes.empty()) c.Game.AceitaClique = true; // the peer's answer
        if (c.Game.EmPlay || c.EsperaClique()) form.EncerraPrograma();
    };
    humano.ativo = false;
    Roda([&] { form.Label7_Click(); });
    EXPECT_EQ(rede.enviadas, std::vector<std::string>{"Entregar:Perder"});
    EXPECT_EQ(rede.atribuicoes, (std::vector<std::pair<int, bool>>{{2, true}}));
    EXPECT_EQ(c.Jogador[2].Vitorias, 1);
    EXPECT_EQ(c.Game.Comeca, 2);
    EXPECT_FALSE(c.painel.Label27.Visivel);
}

} // namespace
} // namespace velmora::teste
