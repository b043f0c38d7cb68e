// Full screen: the title bar's button fills the screen and comes back centred, and every way
// out of the program leaves full screen before the program ends.
#include "apoio.h"

#include "ui/frmnewgame.h"

#include <QCloseEvent>
#include <QScreen>
#include <QTest>

namespace velmora::ui::teste {

class TelaCheia : public ComForm1 {
  protected:
    void Liga() {
        QTest::mouseClick(Janela().Controle_("ImgCT_2"), Qt::LeftButton);
        ASSERT_TRUE(Janela().TelaCheia());
    }
    // Whether the board was back in its window when the program ended.
    bool saiuDaTelaCheia = false;
    void Observa() {
        tela->aoEncerrar = [this] {
            encerrou = true;
            saiuDaTelaCheia = !Janela().TelaCheia() && !Janela().isFullScreen();
        };
    }
};

TEST_F(TelaCheia, ButtonFillsTheScreenFromTheCornerAndTheSecondClickCentresTheWindow) {
    const QRect telaInteira = Janela().screen()->geometry();
    Liga();
    QTRY_VERIFY_WITH_TIMEOUT(Janela().isFullScreen(), 2000);
    QTRY_COMPARE_WITH_TIMEOUT(Janela().geometry().topLeft(), telaInteira.topLeft(), 2000);
    EXPECT_EQ(Janela().size(), telaInteira.size());
    // the board keeps its size, in the middle of the screen
    EXPECT_EQ(Janela().Controle_("imgpd")->size(), QSize(512, 512));

    QTest::mouseClick(Janela().Controle_("ImgCT_2"), Qt::LeftButton);
    EXPECT_FALSE(Janela().TelaCheia());
    EXPECT_FALSE(Janela().isFullScreen());
    EXPECT_EQ(Janela().size(), QSize(800, 600));
    const QRect area = Janela().screen()->availableGeometry();
    EXPECT_LE((Janela().geometry().center() - area.center()).manhattanLength(), 2);
}

TEST_F(TelaCheia, EscAnsweredYesLeavesFullScreenBeforeTheEnd) {
    Observa();
    Liga();
    caixas.respostas = {true, true};
    QTest::keyClick(&Janela(), Qt::Key_Escape);
    QTRY_VERIFY_WITH_TIMEOUT(encerrou, 3000);
    EXPECT_TRUE(saiuDaTelaCheia);
}

TEST_F(TelaCheia, EscAnsweredNoStaysInFullScreen) {
    Liga();
    caixas.respostas = {false};
    QTest::keyClick(&Janela(), Qt::Key_Escape);
    EXPECT_TRUE(Janela().TelaCheia());
    EXPECT_FALSE(encerrou);
}

TEST_F(TelaCheia, WindowManagersCloseLeavesFullScreenBeforeTheEnd) {
    Observa();
    Liga();
    caixas.respostas = {true};
    QCloseEvent fecha;
    QCoreApplication::sendEvent(&Janela(), &fecha);
    QTRY_VERIFY_WITH_TIMEOUT(encerrou, 3000);
    EXPECT_TRUE(saiuDaTelaCheia);
}

TEST_F(TelaCheia, UnloadingTheBoardWindowLeavesFullScreenFirst) {
    Observa();
    Liga();
    form1->Form_Unload();
    EXPECT_TRUE(encerrou);
    EXPECT_TRUE(saiuDaTelaCheia);
}

TEST_F(TelaCheia, SairInTheNewGameDialogLeavesFullScreenFirst) {
    Observa();
    Liga();
    tela->aoMostrarNovoJogo = [](FrmNewGame& d) { d.Label2_Click(); };
    form1->Form_Activate();
    QTRY_VERIFY_WITH_TIMEOUT(encerrou, 5000);
    EXPECT_TRUE(saiuDaTelaCheia);
}

} // namespace velmora::ui::teste
