// The direct connection dialog's logic, and two copies in one process that find each other
// through it on loopback: one listens, the other dials, and the handshake connects both.
#include "apoio.h"

#include "peer/conexaodireta.h"
#include "store/configuracao.h"

#include <QCoreApplication>
#include <QElapsedTimer>

namespace velmora::teste {
namespace {

// One copy: its own folder (and so its own settings), clock, screen and link.
struct Lado {
    Pasta pasta;
    RelogioSimulado relogio;
    TelaTeste tela;
    Form1 form{tela, relogio};
    ConexaoPeer peer;
    explicit Lado(modSocketMaster& mod) : peer(form, mod, &tela) {
        form.UsaRede(peer);
        peer.vaiVencer = [](double) {
            return 0;
        }; // the engine would search the simulated clock forever
        form.Form_Load();
        form.config.TocarSom = false;
    }
};

// Lets events run until `feito` or about five seconds.
template <class F> bool Aguarda(F feito) {
    QElapsedTimer t;
    t.start();
    while (!feito() && t.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return feito();
}

TEST(ConexaoDireta, DuasCopiasSeConectamPeloDialogo) {
    modSocketMaster mod;
    Lado a(mod), b(mod);
    auto& ca = a.form.ctx;
    auto& cb = b.form.ctx;
    ca.Tipo_c = "Servidor";
    ca.Game.Modo = cb.Game.Modo = 5;
    ca.Game.Tipo = cb.Game.Tipo = "HH";
    ca.Game.Regra = 3;
    ca.Jogador[1].Nome = "Ana";
    cb.Jogador[1].Nome = "Bia";
    cb.Tipo_c = "Cliente";

    ConexaoDireta da(a.peer, a.form);
    da.PortaDireta = 0; // any free port
    da.Form_Load();
    EXPECT_EQ(ca.Game.TempoLimite, 90);
    da.Form_Activate();
    ASSERT_TRUE(da.ErroEscuta.empty()) << da.ErroEscuta;
    EXPECT_FALSE(da.Picture1Visivel);
    EXPECT_EQ(da.Caption, "Servidor");
    EXPECT_EQ(da.Label8.rfind("Seu IP local é: ", 0), 0u);
    EXPECT_NE(da.Label4.find("3) Selecionar 'Entrar no jogo' e informar o seu IP"),
              std::string::npos);
    const int porta = a.peer.WS(1).LocalPort();
    ASSERT_GT(porta, 0);

    ConexaoDireta db(b.peer, b.form);
    db.PortaDireta = porta;
    db.Form_Load();
    db.Form_Activate();
    EXPECT_TRUE(db.Picture1Visivel);
    EXPECT_FALSE(db.Command3Visivel);
    // An empty address dials nothing.
    db.Command1_Click();
    EXPECT_FALSE(b.peer.WS.Loaded(1));
    db.Text1 = "127.0.0.1";
    db.Command1_Click();
    EXPECT_EQ(LeOpcao(b.form.registro(), "LC", ""), "127.0.0.1");
    ASSERT_TRUE(Aguarda([&] { return ca.Game.Conectado && cb.Game.Conectado; }));
    EXPECT_EQ(ca.Tipo_c, "Servidor");
    EXPECT_EQ(cb.Tipo_c, "Cliente");
    EXPECT_EQ(ca.Jogador[2].Nome, "Bia");
    EXPECT_EQ(cb.Jogador[2].Nome, "Ana");
    EXPECT_EQ(cb.Game.Regra, 3);
    EXPECT_EQ(cb.Game.TempoLimite, 90);
    EXPECT_EQ(ca.Game.Comeca, cb.Game.Comeca);
    // Each side's belief about the first turn agrees with the other's.
    EXPECT_NE(ca.painel.PicVezDois.Visivel, cb.painel.PicVezDois.Visivel);
    EXPECT_TRUE(da.Timer1_Timer());
    EXPECT_TRUE(db.Timer1_Timer());

    // A chat line crosses with its accents, and a ping is answered.
    EXPECT_TRUE(b.peer.EnviaChat("olá, Ana"));
    ASSERT_TRUE(Aguarda([&] { return !a.tela.chat.empty(); }));
    EXPECT_EQ(a.tela.chat[0], "Bia diz:   olá, Ana");

    // The dialler leaves: the listener goes to the new game dialog, with nothing to report.
    b.form.Label26_Click();
    EXPECT_FALSE(cb.Game.Conectado);
    ASSERT_TRUE(Aguarda([&] { return a.tela.dialogos > 0; }));
    EXPECT_TRUE(a.tela.mensagens.empty());
}

TEST(ConexaoDireta, PortaOcupadaEConvite) {
    modSocketMaster mod;
    Lado a(mod), b(mod);
    a.form.ctx.Tipo_c = b.form.ctx.Tipo_c = "Servidor";
    ConexaoDireta da(a.peer, a.form);
    da.PortaDireta = 0;
    da.Form_Activate();
    ConexaoDireta db(b.peer, b.form);
    db.PortaDireta = a.peer.WS(1).LocalPort();
    db.Form_Activate();
    EXPECT_EQ(db.ErroEscuta.rfind("10048: ", 0), 0u) << db.ErroEscuta;
    const std::string convite = da.Convite("203.0.113.7");
    EXPECT_EQ(convite.rfind("mailto:?subject=Vamos%20jogar%20Velmora%20Ace%20on-line&body=", 0),
              0u);
    EXPECT_NE(convite.find("203.0.113.7"), std::string::npos);
    EXPECT_NE(convite.find("Rede%20Local"), std::string::npos);
}

} // namespace
} // namespace velmora::teste
