// The about box from the board window: modal off-line, beside a connected game, and its link
// that looks for a newer version on the service.
#include "apoio.h"

#include "ui/frmsobre.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTcpServer>
#include <QTest>
#include <QTimer>
#include <cstdlib>

namespace velmora::ui::teste {

class Sobre : public ComForm1 {
  protected:
    void SetUp() override {
        ComForm1::SetUp();
        // an address where no service listens
        QTcpServer s;
        ASSERT_TRUE(s.listen(QHostAddress("127.0.0.1"), 0));
        const QByteArray base = "http://127.0.0.1:" + QByteArray::number(s.serverPort());
        s.close();
        setenv("VELMORA_SERVICO", base.constData(), 1);
    }
    void TearDown() override {
        unsetenv("VELMORA_SERVICO");
        ComForm1::TearDown();
    }
    void ClicaSobre() { QTest::mouseClick(Janela().Controle_("Image4"), Qt::LeftButton); }
};

TEST_F(Sobre, LinkWithTheServiceDownSaysSoAndTheBoxStaysOpen) {
    bool verificou = false;
    QTimer::singleShot(0, [&] {
        auto* sobre = qobject_cast<FrmSobre*>(QApplication::activeModalWidget());
        ASSERT_NE(sobre, nullptr);
        EXPECT_EQ(sobre->Label10->text(), "<a href=\"#\">Procurar uma versão mais nova</a>");
        sobre->Label10_Click();
        verificou = true;
        EXPECT_TRUE(sobre->isVisible());
        EXPECT_TRUE(sobre->Command1->isEnabled());
        sobre->Command1->click();
    });
    ClicaSobre(); // modal: returns when the box closes
    EXPECT_TRUE(verificou);
    EXPECT_EQ(caixas.Ultima(), "Não foi possível conectar ao servidor");
}

TEST_F(Sobre, BesideAConnectedGameTheBoxDoesNotBlock) {
    Ctx().Game.Conectado = true;
    ClicaSobre();
    FrmSobre* sobre = Janela().findChild<FrmSobre*>();
    ASSERT_NE(sobre, nullptr);
    EXPECT_TRUE(sobre->isVisible());
    EXPECT_FALSE(sobre->isModal());
    // the contact page opens in the browser
    QLabel* contato = sobre->findChild<QLabel*>("Label11");
    ASSERT_NE(contato, nullptr);
    emit contato->linkActivated("#");
    ASSERT_FALSE(enderecos.empty());
    EXPECT_TRUE(enderecos.back().toString().endsWith("/html/faleconosco.html"));
    sobre->close();
    Ctx().Game.Conectado = false;
}

} // namespace velmora::ui::teste
