// The board window over the session: moves played by clicks on the squares, the messages of
// the move routines, the mirrored board, the questions and the records viewer it opens.
#include "apoio.h"

#include "core/tabuleiro.h"
#include "store/configuracao.h"
#include "store/recordes.h"
#include "ui/barratitulo.h"
#include "ui/frmnewgame.h"
#include "ui/frmopcoes.h"
#include "ui/frmrecordes.h"
#include "ui/vistatabuleiro.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace velmora::ui::teste {

class Tabuleiro : public ComForm1 {
  protected:
    // Two people at one screen, side 1 to move.
    void JogoDeDois() {
        PartidaSemTela p;
        p.Modo = 3;
        p.Tipo = "HH";
        p.Comeca = 1;
        p.Nome1 = "Ana";
        p.Nome2 = "Rui";
        form1->InicioSemTela(p);
    }
    // Ends the running turn once the script is over.
    std::function<void()> Termina() {
        return [this] { Ctx().Game.Fim = true; };
    }
    std::string Msg() { return Ctx().painel.lbMsg.Texto; }
};

TEST_F(Tabuleiro, ClicksOnTheSquaresPlayAMoveAndRefuseAnIllegalOne) {
    std::vector<std::string> msgs;
    AoEsperarClique({
        [this] { Clica(64); }, // a man with two landing squares
        [this, &msgs] {
            msgs.push_back(Msg());
            EXPECT_TRUE(Ctx().painel.Marcadas[53]);
            EXPECT_TRUE(Ctx().painel.Marcadas[55]);
            Clica(55);
        },
        [this] {
            // side 2 to move: a man of side 1 is no move of theirs
            EXPECT_EQ(Ctx().painel.imgpd[55], 1);
            EXPECT_EQ(Ctx().painel.imgpd[64], 0);
            EXPECT_EQ(Janela().Texto("Label10"), "2/2");
            EXPECT_EQ(Janela().Texto("LbVez"), "Rui");
            Clica(82);
        },
        [this, &msgs] {
            msgs.push_back(Msg());
            EXPECT_EQ(Janela().Texto("lbMsg"), "Movimento ilegal");
        },
        Termina(),
    });
    JogoDeDois();
    ASSERT_EQ(msgs.size(), 2u);
    EXPECT_EQ(msgs[0], "Mais...");
    EXPECT_EQ(msgs[1], "Movimento ilegal");
    EXPECT_EQ(Janela().Texto("LbNome_1"), "Ana");
    EXPECT_EQ(Janela().Texto("LbNome_2"), "Rui");
    EXPECT_EQ(Janela().Texto("Label2"), "12");
}

TEST_F(Tabuleiro, ALongNameEndsInAnEllipsisWithTheWholeNameAsItsTooltip) {
    const std::string longo = "Maximiliano Bartolomeu de Albuquerque Siqueira";
    AoEsperarClique({Termina()});
    PartidaSemTela p;
    p.Modo = 3;
    p.Tipo = "HH";
    p.Comeca = 1;
    p.Nome1 = longo;
    p.Nome2 = "Rui";
    form1->InicioSemTela(p);
    auto* nome = qobject_cast<QLabel*>(Janela().Controle_("LbNome_1"));
    ASSERT_NE(nome, nullptr);
    const QString visto = nome->text();
    EXPECT_TRUE(visto.endsWith(QChar(0x2026))) << visto.toStdString();
    EXPECT_TRUE(QString::fromStdString(longo).startsWith(visto.chopped(1)));
    EXPECT_LE(nome->fontMetrics().horizontalAdvance(visto), nome->contentsRect().width());
    EXPECT_EQ(nome->toolTip().toStdString(), longo);
    EXPECT_EQ(Janela().Texto("LbNome_2"), "Rui");
    EXPECT_TRUE(nome->font().pixelSize() == 13); // the smaller size of a wide name
}

TEST_F(Tabuleiro, TheHistoryButtonsTakeBackAndGoForward) {
    auto historico = [this](int i) {
        QTest::mouseClick(Janela().Controle_(QString("Image6_%1").arg(i)), Qt::LeftButton);
    };
    AoEsperarClique({
        [this] { Clica(62); }, // one landing square: played at once
        [this, historico] {
            EXPECT_EQ(Janela().Texto("Label10"), "2/2");
            historico(1);
        },
        [this, historico] {
            EXPECT_EQ(Janela().Texto("Label10"), "1/2");
            EXPECT_EQ(Ctx().painel.imgpd[62], 1);
            EXPECT_EQ(Ctx().painel.imgpd[53], 0);
            historico(2);
        },
        [this] {
            EXPECT_EQ(Janela().Texto("Label10"), "2/2");
            EXPECT_EQ(Ctx().painel.imgpd[53], 1);
            EXPECT_FALSE(Ctx().Game.Voltou);
            Ctx().Game.Fim = true;
        },
    });
    JogoDeDois();
    // each browse leaves the running turn, and the session starts the loop again
    for (int i = 0; i < 200 && !passos_.empty(); ++i) QTest::qWait(10);
    EXPECT_TRUE(passos_.empty());
}

TEST_F(Tabuleiro, OptionsChangedInTheDialogAreWrittenWhenTheWindowCloses) {
    bool visto = false;
    QTimer::singleShot(0, [&] {
        auto* opc = qobject_cast<FrmOpc*>(QApplication::activeModalWidget());
        ASSERT_NE(opc, nullptr);
        visto = true;
        opc->Check2->setChecked(false);
        opc->HScroll1->setValue(3);
        opc->Confirma();
    });
    QTest::mouseClick(Janela().Controle_("Image13"), Qt::LeftButton);
    ASSERT_TRUE(visto);
    EXPECT_FALSE(form1->config.TocarSom);
    EXPECT_EQ(Ctx().Velocit, 5);

    caixas.respostas = {true};
    QTest::mouseClick(Janela().Controle_("ImgCT_3"), Qt::LeftButton);
    EXPECT_TRUE(encerrou);
    const Configuracao lida = GetConfig(*NovoRegistro());
    EXPECT_FALSE(lida.TocarSom);
    EXPECT_EQ(lida.Velocit, 5);
}

TEST_F(Tabuleiro, TheComputersReplyIsDrawnAndItsReportShown) {
    relogio.porEvento = 0.1; // the search's budget runs out after a few pumps
    AoEsperarClique({[this] {
        QTest::qWait(150); // "Your move" is set just before the wait, without a repaint
        EXPECT_EQ(Janela().Texto("Label10"), "2/2");
        EXPECT_EQ(Janela().Texto("lbYMM"), "Your move");
        EXPECT_FALSE(Janela().Texto("lbPly").isEmpty());
        EXPECT_EQ(Janela().Texto("LbVez"), "Sua vez");
        EXPECT_EQ(Janela().Texto("lbnivel_2"), "(Iniciante)");
        int lado2 = 0;
        for (int casa = 12; casa <= 89; ++casa) lado2 += Ctx().painel.imgpd[casa] == 2;
        EXPECT_EQ(lado2, 12);
        EXPECT_EQ(Ctx().painel.imgpd[13] + Ctx().painel.imgpd[15] + Ctx().painel.imgpd[17] +
                      Ctx().painel.imgpd[19],
                  8); // the back row stands; a man of the front rows moved
        Ctx().Game.Fim = true;
    }});
    PartidaSemTela p;
    p.Modo = 1;
    p.Tipo = "HC";
    p.Comeca = 2;
    p.Nivel2 = 1;
    form1->InicioSemTela(p);
}

TEST_F(Tabuleiro, SairInTheFirstDialogEndsWithoutWritingTheOptions) {
    form1->config.TocarMusica = true; // as if changed in the dialog's options
    tela->aoMostrarNovoJogo = [](FrmNewGame& d) {
        EXPECT_EQ(d.Label2->Texto(), "Sair");
        d.Label2_Click();
    };
    Janela().aoPrimeiraAtivacao = [this] { form1->Form_Activate(); };
    // the activation comes from the window system, later on a loaded machine
    QTRY_VERIFY_WITH_TIMEOUT(encerrou, 5000);
    EXPECT_EQ(LeOpcao(*NovoRegistro(), "TocarMusica", "<nada>"), "<nada>");
    EXPECT_EQ(LeOpcao(*NovoRegistro(), "TxtHC", "<nada>"), "<nada>");
}

TEST_F(Tabuleiro, ClosingFromFullScreenLeavesItFirstAndEndsAMomentLater) {
    QTest::mouseClick(Janela().Controle_("ImgCT_2"), Qt::LeftButton);
    EXPECT_TRUE(Janela().TelaCheia());
    caixas.respostas = {true};
    QTest::mouseClick(Janela().Controle_("ImgCT_3"), Qt::LeftButton);
    EXPECT_FALSE(Janela().TelaCheia());
    EXPECT_FALSE(encerrou);
    QTRY_VERIFY_WITH_TIMEOUT(encerrou, 2000);
}

TEST_F(Tabuleiro, TwoCaptureRoutesSharingALandingAskForMoreUntilTheThirdClick) {
    // a man of side 1 on 66 takes 55 and lands on 44; from there it may take 33 or 35
    const auto pos = PosicaoDoTexto(TextoDePosicao({{66, 1}, {55, 2}, {33, 2}, {35, 2}, {13, 2}}));
    ASSERT_TRUE(pos);
    Ctx().Game.Modo = 3;
    Ctx().Game.Tipo = "HH";
    Ctx().Atual = *pos;
    Ctx().RedesenhaCasas();
    Ctx().Game.Fim = false;
    Ctx().Game.AceitaClique = true;
    std::vector<std::string> msgs;
    AoEsperarClique({
        [this] { Clica(66); },
        [this, &msgs] {
            msgs.push_back(Msg());
            Clica(44);
        },
        [this, &msgs] {
            msgs.push_back(Msg());
            EXPECT_EQ(Ctx().TextoClicado, std::string({66, 44, '?', 44}));
            EXPECT_TRUE(Ctx().painel.Marcadas[22]);
            EXPECT_TRUE(Ctx().painel.Marcadas[26]);
            Clica(26);
        },
    });
    EXPECT_EQ(Ctx().JogadaHumano(), 0);
    EXPECT_EQ(msgs, (std::vector<std::string>{"Mais...", "Mais..."}));
    EXPECT_EQ(Ctx().painel.imgpd[26], 1);
    EXPECT_EQ(Ctx().painel.imgpd[55], 0);
    EXPECT_EQ(Ctx().painel.imgpd[35], 0);
    EXPECT_EQ(Ctx().painel.imgpd[33], 2);
    EXPECT_EQ(Janela().Texto("Label3"), "2");
}

TEST_F(Tabuleiro, AClienteSeesTheBoardMirrored) {
    VistaTabuleiro* v = Janela().Tabuleiro();
    const QRectF cimaEsquerda = v->RetanguloCasa(12);
    form1->OrientaTabuleiro("Cliente");
    Janela().Atualiza();
    EXPECT_TRUE(v->Espelhado());
    EXPECT_EQ(v->RetanguloCasa(89), cimaEsquerda);
    EXPECT_EQ(v->CasaEm(cimaEsquerda.center()), 89);
    EXPECT_EQ(v->CasaEm(v->RetanguloCasa(12).center()), 12);
    form1->OrientaTabuleiro("Servidor");
    Janela().Atualiza();
    EXPECT_FALSE(v->Espelhado());
    EXPECT_EQ(v->RetanguloCasa(12), cimaEsquerda);
}

TEST_F(Tabuleiro, AClickOnAFinishedGameOffersANewOne) {
    Ctx().Game.Fim = true;
    Ctx().Game.AceitaClique = true;
    caixas.respostas = {false};
    Clica(64);
    ASSERT_EQ(caixas.vistas.size(), 1u);
    EXPECT_EQ(caixas.vistas[0].tipo, "Pergunta");
    EXPECT_EQ(caixas.vistas[0].titulo, "Pergunta");
    EXPECT_TRUE(caixas.vistas[0].texto.startsWith("O Jogo está concluído."));
    EXPECT_TRUE(caixas.vistas[0].texto.endsWith("Deseja iniciar um novo jogo?"));
}

TEST_F(Tabuleiro, AClickOnAPositionWithTheComputerToMoveIsRefused) {
    Ctx().Game.Modo = 1;
    Ctx().Game.Tipo = "HC";
    Ctx().Game.Fim = false;
    Ctx().Game.AceitaClique = true;
    Ctx().LadoCarregado = 2;
    Clica(64);
    EXPECT_EQ(tocador.sons, std::vector<std::string>{"talk.wav"});
    EXPECT_EQ(Janela().Texto("lbMsg"),
              "Você deve voltar ou avançar uma jogada para que seja a sua vez de jogar");
    EXPECT_TRUE(Ctx().TextoClicado.empty());
}

TEST_F(Tabuleiro, EscAsksTwiceBeforeClosingAndNoKeepsTheProgram) {
    caixas.respostas = {true, false};
    QTest::keyClick(&Janela(), Qt::Key_Escape);
    ASSERT_EQ(caixas.vistas.size(), 2u);
    EXPECT_EQ(caixas.vistas[0].texto, "Deseja fechar o Velmora Ace?");
    EXPECT_EQ(caixas.vistas[1].texto, "Deseja fechar o Velmora Ace?");
    EXPECT_FALSE(form1->Encerrado());
}

TEST_F(Tabuleiro, TheOffLineLayoutHidesTheChatAndTheOnLineButtons) {
    for (const char* oculto :
         {"Text3", "Text4", "Label22", "Label24", "Label26", "PicCrono_1", "PicCrono_2", "Label28"})
        EXPECT_FALSE(Janela().Visivel(oculto)) << oculto;
    for (const char* visivel : {"Label6", "Label7", "Label10", "Label20", "Image6_0", "Image12"})
        EXPECT_TRUE(Janela().Visivel(visivel)) << visivel;
    EXPECT_EQ(Janela().Texto("Label6"), "Novo jogo");
    EXPECT_EQ(Janela().Texto("Label7"), "Reiniciar");
    EXPECT_EQ(Janela().Texto("Label18"), "Jogo não iniciado");
    Janela().Image9_RightClick();
    EXPECT_TRUE(Janela().Visivel("Label28"));
}

TEST_F(Tabuleiro, HelpAndRankingGoToTheShell) {
    Janela().Image14_Click();
    Janela().Image15_Click();
    ASSERT_EQ(enderecos.size(), 2u);
    EXPECT_TRUE(enderecos[0].isLocalFile());
    EXPECT_TRUE(enderecos[0].toLocalFile().endsWith("/velmora.html"));
    EXPECT_TRUE(enderecos[1].toString().endsWith("/html/ranking_velmora.php"));
}

TEST_F(Tabuleiro, ANewRecordOpensTheViewerWithItsRowMarked) {
    Recordes r;
    for (int i = 1; i <= 5; ++i) ASSERT_TRUE(r.GravaRecord("Outro", 100 * i, 1, i));
    ASSERT_TRUE(r.GravaRecord("Ana", 250, 1, 3));
    bool visto = false;
    QTimer::singleShot(0, [&] {
        auto* v = qobject_cast<FrmMostraRecords*>(QApplication::activeModalWidget());
        ASSERT_NE(v, nullptr);
        visto = true;
        EXPECT_EQ(v->TextoLabel8(), "Iniciante");
        QTableWidget* t = v->Tabela();
        EXPECT_EQ(t->item(2, 1)->text(), "Ana");
        EXPECT_EQ(t->item(2, 1)->foreground().color(), QColor(Qt::yellow));
        EXPECT_EQ(t->item(2, 2)->foreground().color(), QColor(Qt::yellow));
        EXPECT_NE(t->item(1, 1)->foreground().color(), QColor(Qt::yellow));
        v->accept();
    });
    tela->MostraRecordes(1, 3);
    EXPECT_TRUE(visto);
}

} // namespace velmora::ui::teste
