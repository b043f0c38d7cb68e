// The start of the program and the ways it stops.
#include "apoio.h"

#include "session/frmsplash.h"
#include "store/configuracao.h"

namespace velmora::teste {
namespace {

using Inicio = Sessao;

TEST_F(Inicio, PrimeiraExecucaoChegaAoDialogoComOsPadroesESairNaoGravaNada) {
    EXPECT_TRUE(form.config.TocarSom);
    EXPECT_FALSE(form.config.TocarMusica);
    EXPECT_TRUE(form.config.HabilitaChat);
    EXPECT_EQ(form.ctx.painel.Label18.Texto, "Jogo não iniciado");
    Roda([&] { form.Form_Activate(); });
    EXPECT_EQ(tela.rotulos, std::vector<std::string>{"Sair"});
    EXPECT_TRUE(tela.encerrou);
    EXPECT_TRUE(tela.musicas.empty()); // music is off
    EXPECT_EQ(cpu.chamadas, 0);
    EXPECT_FALSE(std::filesystem::exists(pasta.caminho / "config" / "registro.reg"));
}

TEST_F(Inicio, FecharGravaAsOpcoesEANovaExecucaoAsLe) {
    form.config.Velocit = 5;
    form.config.TocarMusica = true;
    tela.respostas = {true};
    form.Image1_Click();
    EXPECT_EQ(tela.perguntas, std::vector<std::string>{"Deseja fechar o Velmora Ace?"});
    EXPECT_TRUE(tela.encerrou);

    TelaRoteiro outra;
    Form1 depois(outra, relogio);
    depois.Form_Load();
    EXPECT_EQ(depois.config.Velocit, 5);
    EXPECT_TRUE(depois.config.TocarMusica);
    EXPECT_EQ(depois.ctx.Velocit, 5);
}

TEST_F(Inicio, FecharConectadoEncerraASessaoEAbreODialogo) {
    form.ctx.Game.Conectado = true;
    form.ctx.Game.Fim = true;
    tela.dialogos = {{SaidaDialogo::Cancelar, {}}};
    form.Image1_Click();
    EXPECT_TRUE(tela.perguntas.empty());
    EXPECT_FALSE(form.ctx.Game.Conectado);
    EXPECT_EQ(rede.fechou, 1);
    EXPECT_EQ(tela.rotulos, std::vector<std::string>{"Sair"});
    EXPECT_FALSE(tela.encerrou);
    form.Form_KeyDown('a'); // not connected any more: a plain key does nothing
    EXPECT_TRUE(tela.perguntas.empty());
}

TEST_F(Inicio, CaminhoDoProgramaSemBarraNoFim) {
    EXPECT_EQ(CaminhoDoPrograma("/"), "");
    EXPECT_EQ(CaminhoDoPrograma("/opt/velmora/"), "/opt/velmora");
    EXPECT_EQ(CaminhoDoPrograma("/opt/velmora"), "/opt/velmora");
}

TEST(Programa, SplashCriaAJanelaDepoisDe800msComAEscalaDaTela) {
    Pasta pasta;
    struct TelaEscala : TelaRoteiro {
        double MedeEscala() override { return 1.25; }
    } tela;
    RelogioSimulado relogio;
    FrmSplash splash(tela, relogio);
    splash.Form_Load();
    EXPECT_FALSE(splash.form1);
    EXPECT_EQ(splash.Timer1.interval(), 800);
    QEventLoop laco;
    QTimer::singleShot(1500, &laco, &QEventLoop::quit);
    laco.exec();
    ASSERT_TRUE(splash.form1);
    EXPECT_TRUE(tela.janela);
    EXPECT_TRUE(splash.Descarregado);
    EXPECT_TRUE(splash.form1->Programa.UsaEscala);
    EXPECT_EQ(tela.ajustes, 2); // the splash, then the board window
}

} // namespace
} // namespace velmora::teste
