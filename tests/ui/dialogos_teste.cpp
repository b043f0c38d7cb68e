// The small windows: the timed question, the chat filter, the block list, the records
// viewer and the options.
#include "apoio.h"

#include "store/configuracao.h"
#include "store/placar.h"
#include "store/recordes.h"
#include "peer/filtrapalavroes.h"
#include "ui/frmbloqueio.h"
#include "ui/frmmsgbox.h"
#include "ui/frmopcoes.h"
#include "ui/frmrecordes.h"
#include "ui/frmsobre.h"
#include "ui/estilo.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace velmora::ui::teste {

// ---------------------------------------------------------------- FrmMSGBOX

class CaixaTemporizada : public ComPastas {};

TEST_F(CaixaTemporizada, SilenceRefusesAfterElevenTicksHavingShownZero) {
    FrmMSGBOX caixa("Aceita empate?", nullptr, 0);
    caixa.show();
    EXPECT_EQ(caixa.TextoLabel2(), "10 segundos");
    for (int i = 0; i < 10; ++i) caixa.Tique();
    EXPECT_EQ(caixa.TextoLabel2(), "0 segundos");
    EXPECT_TRUE(caixa.isVisible());
    caixa.Tique();
    EXPECT_FALSE(caixa.isVisible());
    EXPECT_FALSE(caixa.RespostaEmpate());
    EXPECT_EQ(caixa.result(), QDialog::Rejected);
}

TEST_F(CaixaTemporizada, ModalQuestionAnswersYesOnlyThroughSim) {
    // the box is modal: the clicks come from inside its own loop
    QTimer::singleShot(0, [] {
        auto* caixa = qobject_cast<FrmMSGBOX*>(QApplication::activeModalWidget());
        ASSERT_NE(caixa, nullptr);
        QTest::mouseClick(caixa->findChild<QPushButton*>("Command1"), Qt::LeftButton);
    });
    EXPECT_TRUE(FrmMSGBOX::Pergunta(nullptr, "Aceita empate?", 0));

    QTimer::singleShot(0, [] {
        auto* caixa = qobject_cast<FrmMSGBOX*>(QApplication::activeModalWidget());
        ASSERT_NE(caixa, nullptr);
        for (int i = 0; i < 11; ++i) caixa->Tique();
    });
    EXPECT_FALSE(FrmMSGBOX::Pergunta(nullptr, "Aceita empate?", 0));
}

TEST_F(CaixaTemporizada, RealTimerCountsDown) {
    FrmMSGBOX caixa("Aceita empate?", nullptr, 5);
    caixa.show();
    QTRY_VERIFY_WITH_TIMEOUT(!caixa.isVisible(), 2000);
    EXPECT_FALSE(caixa.RespostaEmpate());
}

// ---------------------------------------------------------------- FiltraPalavroes

class Filtro : public ComPastas {};

TEST_F(Filtro, WholeWordsInLowerOrUpperCaseBecomeStars) {
    EXPECT_EQ(FiltraPalavroes("PORRA merda bosta"), "***** ***** *****");
    EXPECT_EQ(FiltraPalavroes("  que merda  "), "que *****");
    EXPECT_EQ(FiltraPalavroes("cu cu cu"), "** ** **");
    EXPECT_EQ(FiltraPalavroes("CÚ"), "**");
}

TEST_F(Filtro, WhatTheListDoesNotCatchPasses) {
    EXPECT_EQ(FiltraPalavroes("   "), "");
    EXPECT_EQ(FiltraPalavroes("merda!"), "merda!");
    EXPECT_EQ(FiltraPalavroes("Merda"), "Merda");
    EXPECT_EQ(FiltraPalavroes("cuidado"), "cuidado");
    EXPECT_EQ(FiltraPalavroes("bom jogo"), "bom jogo");
}

// ---------------------------------------------------------------- block list

class Bloqueio : public ComPastas {};

TEST_F(Bloqueio, NicksAreStoredInLowerCaseAndMatchInAnyCase) {
    Frmbloqueio janela(*reg, caixas);
    caixas.entradas = {QString("  Fulano  "), QString("   ")};
    janela.AdicionaNick();
    janela.AdicionaNick(); // blanks only: nothing
    EXPECT_EQ(janela.Linhas(), QStringList{"fulano"});
    EXPECT_EQ(caixas.vistas[0].titulo, "Bloquear Nick");
    EXPECT_EQ(caixas.vistas[0].texto, "Informe o nick do jogador que deseja bloquear");

    auto outro = NovoRegistro();
    EXPECT_TRUE(EstaBloqueado(*outro, 4, "FULANO", 0));
    EXPECT_FALSE(EstaBloqueado(*outro, 5, "fulano", 0)); // only through the service
    EXPECT_FALSE(EstaBloqueado(*outro, 4, "beltrano", 0));
}

TEST_F(Bloqueio, IdsNeedANumberAndNeverMatchIdZero) {
    Frmbloqueio janela(*reg, caixas);
    caixas.entradas = {QString("abc"), QString("77")};
    janela.AdicionaID();
    EXPECT_TRUE(caixas.Ultima().startsWith("IDs são dados numéricos\r\x0c"));
    janela.AdicionaID();
    EXPECT_EQ(janela.Linhas(), QStringList{"ID:77"});
    EXPECT_TRUE(EstaBloqueado(*reg, 4, "qualquer", 77));
    EXPECT_FALSE(EstaBloqueado(*reg, 4, "qualquer", 0));
    EXPECT_FALSE(EstaBloqueado(*reg, 4, "qualquer", 78));
}

TEST_F(Bloqueio, TheTwentyFirstIsRefusedAndRemovalLeavesNoGap) {
    Frmbloqueio janela(*reg, caixas);
    for (int i = 1; i <= 20; ++i) caixas.entradas.push_back(QString("nick%1").arg(i));
    caixas.entradas.push_back(QString("nick21"));
    for (int i = 1; i <= 21; ++i) janela.AdicionaNick();
    EXPECT_EQ(janela.Linhas().size(), 20);
    EXPECT_EQ(caixas.Ultima(), "Você pode bloquear no máximo 20 jogadores");

    janela.Remove(); // nothing selected
    EXPECT_EQ(caixas.Ultima(), "Selecione primeiro o nick que quer remover da lista");
    janela.SelecionaLinha(0);
    janela.Remove();
    Frmbloqueio relida(*NovoRegistro(), caixas);
    ASSERT_EQ(relida.Linhas().size(), 19);
    EXPECT_EQ(relida.Linhas().front(), "nick2");
    EXPECT_EQ(LeOpcao(*NovoRegistro(), "block20", "x"), "");
}

TEST_F(Bloqueio, RemovingFromAnEmptyListSaysSo) {
    Frmbloqueio janela(*reg, caixas);
    janela.Remove();
    EXPECT_EQ(caixas.Ultima(), "Não exite nenhum nick na lista para ser removido");
}

// ---------------------------------------------------------------- records viewer

class Recordes_ : public ComPastas {};

TEST_F(Recordes_, AnEmptyFileShowsTheLevelAndATallyOfNothing) {
    const Recordes r;
    const Placar p;
    int posicao = 0;
    FrmMostraRecords v(r, p, 3, posicao, nullptr);
    EXPECT_EQ(v.TextoLabel8(), "Intermediário");
    EXPECT_EQ(v.LinhasMostradas(), 0);
    EXPECT_TRUE(v.Label7Visivel());
    EXPECT_EQ(v.TextoLabel7(), "No nível Intermediário:\nCPU já obteve 0 vitórias e 0 Derrotas");
}

TEST_F(Recordes_, ANewRecordIsMarkedAndTheListScrollsToIt) {
    Recordes r;
    for (int i = 1; i <= 60; ++i)
        ASSERT_TRUE(r.GravaRecord("Jogador" + std::to_string(i), i * 10, 2, i));
    Placar p;
    p.SomaVenceu(2);
    int posicao = 30;
    FrmMostraRecords v(r, p, 2, posicao, nullptr);
    v.show();
    QTableWidget* t = v.Tabela();
    // the viewer scrolls once it is shown, from the event loop
    QTRY_VERIFY_WITH_TIMEOUT(t->verticalScrollBar()->value() > 0, 5000);
    ASSERT_EQ(t->rowCount(), 60);
    EXPECT_EQ(t->item(29, 0)->text(), "030");
    EXPECT_EQ(t->item(29, 2)->text(), "00:05:00");
    EXPECT_EQ(t->item(29, 1)->foreground().color(), QColor(Qt::yellow));
    EXPECT_NE(t->item(28, 1)->foreground().color(), QColor(Qt::yellow));
    QScrollBar* barra = t->verticalScrollBar();
    ASSERT_GT(barra->maximum(), 0);
    EXPECT_NEAR(static_cast<double>(barra->value()) / barra->maximum(), 0.5, 0.05);
    EXPECT_TRUE(v.TextoLabel7().contains("1 vitórias e 0 Derrotas"));
}

TEST_F(Recordes_, StepsThroughTheLevelsAndClearsTheMark) {
    const Recordes r;
    const Placar p;
    int posicao = 4;
    std::vector<std::string> tocados;
    FrmMostraRecords v(r, p, 5, posicao, [&](const std::string& s) { tocados.push_back(s); });
    v.ProximoNivel();
    EXPECT_EQ(v.Nivel(), 1);
    EXPECT_EQ(v.TextoLabel8(), "Iniciante");
    EXPECT_EQ(posicao, 0);
    EXPECT_EQ(tocados, std::vector<std::string>{"Click.wav"});

    FrmMostraRecords torneio(r, p, 8, posicao, nullptr);
    EXPECT_EQ(torneio.TextoLabel8(), "Torneio");
    EXPECT_FALSE(torneio.Label7Visivel());
    torneio.ProximoNivel();
    EXPECT_EQ(torneio.TextoLabel8(), "Iniciante");

    FrmMostraRecords fase6(r, p, 6, posicao, nullptr); // a tournament stage has no table
    EXPECT_EQ(fase6.TextoLabel8(), "");
    fase6.ProximoNivel();
    EXPECT_EQ(fase6.Nivel(), 1);
}

// ---------------------------------------------------------------- options

class Opcoes : public ComPastas {};

TEST_F(Opcoes, TheSliderRunsFromSlowToFastAndOkAppliesEverything) {
    Configuracao c;
    int musicaFechada = 0;
    c.Velocit = 2;
    c.TocarMusica = true;
    FrmOpc janela(c, *reg, caixas, [&] { ++musicaFechada; });
    EXPECT_EQ(janela.HScroll1->value(), 6);
    EXPECT_EQ(janela.HScroll1->maximum(), 6);
    janela.HScroll1->setValue(2);
    janela.Check1->setChecked(false);
    janela.Check2->setChecked(false);
    janela.Confirma();
    EXPECT_EQ(c.Velocit, 6);
    EXPECT_FALSE(c.TocarMusica);
    EXPECT_FALSE(c.TocarSom);
    EXPECT_EQ(musicaFechada, 1);
}

TEST_F(Opcoes, ClosingWithoutOkChangesNothingAndAHiddenCheck4KeepsItsState) {
    Configuracao c;
    {
        FrmOpc janela(c, *reg, caixas, nullptr);
        janela.Check2->setChecked(false);
        janela.reject();
    }
    EXPECT_TRUE(c.TocarSom);

    FrmOpc janela(c, *reg, caixas, nullptr);
    janela.show();
    EXPECT_TRUE(janela.Check4->isVisible());
    QTest::mouseClick(janela.Check3, Qt::LeftButton, {}, QPoint(5, janela.Check3->height() / 2));
    EXPECT_FALSE(janela.Check3->isChecked());
    EXPECT_FALSE(janela.Check4->isVisible());
    janela.Confirma();
    EXPECT_FALSE(c.HabilitaChat);
    EXPECT_TRUE(c.HabilitaChatIngles);
}

} // namespace velmora::ui::teste

// ---------------------------------------------------------------- the one look

namespace velmora::ui::teste {

class UmEstilo : public ComPastas {};

TEST_F(UmEstilo, CadaJanelaTomaOEstiloDoProgramaEGuardaAsSuasRegras) {
    FrmMSGBOX caixa("Aceita empate?", nullptr, 0);
    FrmSobre sobre("3.9.0");
    for (QWidget* janela : std::initializer_list<QWidget*>{&caixa, &sobre}) {
        EXPECT_TRUE(janela->styleSheet().startsWith(FolhaDeEstilo()))
            << janela->objectName().toStdString();
        EXPECT_EQ(janela->styleSheet().count(FolhaDeEstilo()), 1)
            << janela->objectName().toStdString();
    }
    EXPECT_TRUE(caixa.styleSheet().contains("QDialog#FrmMSGBOX"));
    EXPECT_EQ(caixa.findChild<QPushButton*>("Command1")->text(), "SIM");
}

TEST_F(UmEstilo, NomeLargoDemaisTerminaEmReticenciasComONomeNaDica) {
    QLabel rotulo;
    rotulo.setFixedWidth(90);
    const QString longo = "Maximiliano Bartolomeu de Albuquerque";
    TextoElidido(&rotulo, longo);
    EXPECT_TRUE(rotulo.text().endsWith(QChar(0x2026))) << rotulo.text().toStdString();
    EXPECT_TRUE(longo.startsWith(rotulo.text().chopped(1)));
    EXPECT_LE(rotulo.fontMetrics().horizontalAdvance(rotulo.text()), 90);
    EXPECT_EQ(rotulo.toolTip(), longo);
    TextoElidido(&rotulo, "Ana"); // fits: whole, and no tooltip
    EXPECT_EQ(rotulo.text(), "Ana");
    EXPECT_TRUE(rotulo.toolTip().isEmpty());
}

} // namespace velmora::ui::teste
