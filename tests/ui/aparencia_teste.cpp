// The windows beside the board at the scale in force (QT_SCALE_FACTOR): every control shows
// its whole text inside its window. With VELMORA_FOTOS naming a folder, each window is also
// photographed there, as the README's pictures are made.
#include "apoio.h"

#include "store/configuracao.h"
#include "store/placar.h"
#include "store/recordes.h"
#include "ui/estilo.h"
#include "ui/frmbloqueio.h"
#include "ui/frmmsgbox.h"
#include "ui/frmopcoes.h"
#include "ui/frmrecordes.h"
#include "ui/frmsobre.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>

#include <cstdlib>

namespace velmora::ui::teste {
namespace {

class Aparencia : public ComPastas {
  protected:
    // Shows the window, checks that nothing in it is cut, and photographs it when asked.
    void Confere(QWidget& janela, const QString& nome) {
        janela.show();
        QApplication::processEvents();
        for (QWidget* w : janela.findChildren<QWidget*>()) {
            if (!w->isVisibleTo(&janela)) continue;
            const auto* rotulo = qobject_cast<QLabel*>(w);
            const bool texto = qobject_cast<QAbstractButton*>(w) ||
                               (rotulo && !rotulo->wordWrap() && !rotulo->text().isEmpty());
            if (texto) {
                EXPECT_GE(w->width(), w->minimumSizeHint().width())
                    << nome.toStdString() << ": " << w->objectName().toStdString();
                EXPECT_GE(w->height(), w->minimumSizeHint().height())
                    << nome.toStdString() << ": " << w->objectName().toStdString();
            }
            // a box holds what is in it
            if (auto* caixa = qobject_cast<QGroupBox*>(w)) {
                EXPECT_GE(caixa->height(), caixa->minimumSizeHint().height())
                    << nome.toStdString() << ": " << caixa->title().toStdString();
            }
            const QRect r(w->mapTo(&janela, QPoint(0, 0)), w->size());
            EXPECT_TRUE(janela.rect().contains(r))
                << nome.toStdString() << ": " << w->objectName().toStdString() << " outside";
        }
        if (const char* pasta = std::getenv("VELMORA_FOTOS")) {
            EXPECT_TRUE(janela.grab().save(QString(pasta) + "/" + nome + ".png"));
        }
        janela.hide();
    }
};

TEST_F(Aparencia, CadaJanelaMostraOsSeusTextosInteiros) {
    Recordes recordes;
    const char* nomes[] = {"Conceição", "Ana Beatriz", "Maximiliano Bartolomeu de Albuquerque",
                           "Zé", "Rui"};
    for (int i = 0; i < 5; ++i) ASSERT_TRUE(recordes.GravaRecord(nomes[i], 300 + 97 * i, 3, i + 1));
    Placar placar;
    placar.SomaVenceu(3);
    placar.SomaPerdeu(3);
    int posicao = 2;
    FrmMostraRecords viewer(recordes, placar, 3, posicao, nullptr);
    Confere(viewer, "recordes");

    Configuracao c;
    c.HabilitaChat = true;
    FrmOpc opcoes(c, *reg, caixas, nullptr);
    Confere(opcoes, "opcoes");

    GravaOpcao(*reg, "block1", "Fulano");
    GravaOpcao(*reg, "block2", "4711");
    Frmbloqueio bloqueio(*reg, caixas);
    Confere(bloqueio, "bloqueio");

    FrmMSGBOX pergunta("Aceita empate?", nullptr, 0);
    Confere(pergunta, "pergunta-empate");

    FrmSobre sobre("3.9.0");
    Confere(sobre, "sobre");

    QMessageBox caixa(QMessageBox::Question, "Velmora Ace", "Deseja fechar o Velmora Ace?",
                      QMessageBox::Yes | QMessageBox::No);
    caixa.button(QMessageBox::Yes)->setText("Sim");
    caixa.button(QMessageBox::No)->setText("Não");
    DaEstiloDeAviso(caixa, Aviso::Pergunta);
    Confere(caixa, "caixa-pergunta");

    QMessageBox aviso(QMessageBox::Information, "Velmora Ace", "Parabéns, você foi o vencedor!",
                      QMessageBox::Ok);
    DaEstiloDeAviso(aviso, Aviso::Informacao);
    Confere(aviso, "caixa-mensagem");
}

} // namespace
} // namespace velmora::ui::teste
