// Waiting in the notification area: the windows go below the screen with their places
// noted, and come back to them; without a notification area they are minimised.
#include "ui/bandeja.h"

#include <QIcon>
#include <QScreen>
#include <QWidget>
#include <gtest/gtest.h>

namespace velmora::ui {
namespace {

class Janelas : public ::testing::Test {
  protected:
    void SetUp() override {
        for (QWidget* w : {&lobby, &dialogo, &tabuleiro}) {
            w->resize(200, 150);
            w->show();
        }
        // places of the frames, as the windows' tops and lefts are read
        lobby.move(100, 120);
        dialogo.move(150, 140);
        tabuleiro.move(40, 30);
        altura = lobby.screen()->geometry().height();
    }
    QWidget lobby, dialogo, tabuleiro;
    Bandeja bandeja{QIcon()};
    int altura = 0;
};

TEST_F(Janelas, HiddenBelowTheScreenAndBackWhereTheyStood) {
    bandeja.usaBandeja = true;
    bandeja.AguardarMinimizado(&lobby, &dialogo, &tabuleiro);
    EXPECT_EQ(bandeja.PosicaoJanelas, "120,100,140,150,30,40");
    for (QWidget* w : {&lobby, &dialogo, &tabuleiro}) EXPECT_EQ(w->y(), 2 * altura + 1);
    EXPECT_EQ(lobby.x(), 100);

    bandeja.RetornaForms(bandeja.PosicaoJanelas, &lobby, &dialogo, &tabuleiro);
    EXPECT_EQ(lobby.pos(), QPoint(100, 120));
    EXPECT_EQ(dialogo.pos(), QPoint(150, 140));
    EXPECT_EQ(tabuleiro.pos(), QPoint(40, 30));
    EXPECT_FALSE(bandeja.NaBandeja());
}

TEST_F(Janelas, ReturnWithNothingHiddenMovesNothing) {
    bandeja.usaBandeja = true;
    bandeja.RetornaForms("0,0,0,0,0,0", &lobby, &dialogo, &tabuleiro);
    EXPECT_EQ(lobby.pos(), QPoint(100, 120));
    EXPECT_EQ(tabuleiro.pos(), QPoint(40, 30));
    // the board window back on the screen while the lobby is still hidden: nothing moves
    bandeja.AguardarMinimizado(&lobby, &dialogo, &tabuleiro);
    tabuleiro.move(40, 30);
    bandeja.RetornaForms(bandeja.PosicaoJanelas, &lobby, &dialogo, &tabuleiro);
    EXPECT_EQ(lobby.y(), 2 * altura + 1);
    // a text that isn't six numbers moves nothing either
    tabuleiro.move(40, 2 * altura + 1);
    bandeja.RetornaForms("1,2,3", &lobby, &dialogo, &tabuleiro);
    EXPECT_EQ(lobby.y(), 2 * altura + 1);
}

TEST_F(Janelas, WithoutANotificationAreaTheWindowsAreMinimised) {
    bandeja.usaBandeja = false;
    bandeja.AguardarMinimizado(&lobby, &dialogo, &tabuleiro);
    for (QWidget* w : {&lobby, &dialogo, &tabuleiro}) EXPECT_TRUE(w->isMinimized());
    bandeja.RetornaForms(bandeja.PosicaoJanelas, &lobby, &dialogo, &tabuleiro);
    for (QWidget* w : {&lobby, &dialogo, &tabuleiro}) EXPECT_FALSE(w->isMinimized());
    EXPECT_EQ(lobby.pos(), QPoint(100, 120));
}

} // namespace
} // namespace velmora::ui
