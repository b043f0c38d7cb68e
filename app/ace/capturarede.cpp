#include "capturarede.h"

#include "session/form1.h"
#include "ui/form2.h"
#include "ui/frmnewgame.h"
#include "ui/janelatabuleiro.h"
#include "ui/telaqt.h"

#include <QApplication>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <cstdlib>
#include <deque>
#include <memory>

namespace velmora::ace {

namespace {
struct RoteiroRede {
    QString pasta, papel;
    bool dialogo = false, fotografado = false;
    int marcada = -1;
    std::deque<int> cliques;
};
} // namespace

bool PreparaCapturaRede(ui::TelaQt& tela) {
    const char* destino = std::getenv("VELMORA_CAPTURA_REDE");
    const char* papel = std::getenv("VELMORA_CAPTURA_PAPEL");
    if (!destino || !*destino || !papel || !*papel) return false;
    auto r = std::make_shared<RoteiroRede>();
    r->pasta = QString::fromUtf8(destino);
    r->papel = QString::fromUtf8(papel);
    const bool escuta = r->papel == "escuta";

    tela.aoMostrarNovoJogo = [r, escuta](ui::FrmNewGame& d) {
        if (r->dialogo) return;
        r->dialogo = true;
        QTimer::singleShot(300, &d, [r, escuta, &d] {
            d.Image1_Click(5);
            d.TxtRede->setText(escuta ? "Ana" : "Bia");
            (escuta ? d.Option1 : d.Option2)->setChecked(true);
            if (!escuta) {
                // The dialog of the typed address: the address, then "Conectar".
                auto* t = new QTimer(&d);
                QObject::connect(t, &QTimer::timeout, t, [r, t] {
                    auto* f2 = qobject_cast<ui::Form2*>(QApplication::activeModalWidget());
                    if (!f2) return;
                    t->stop();
                    f2->Text1->setText(r->papel);
                    f2->Command1->click();
                });
                t->start(200);
            }
            d.Label3_Click();
        });
    };

    tela.aoMostrarJanela = [r, &tela](ui::JanelaTabuleiro& janela) {
        Form1* f = tela.localizaForm1 ? tela.localizaForm1() : nullptr;
        if (!f) return;
        f->AoProcessarEventos = [r, f, &janela] {
            Contexto& c = f->ctx;
            if (!c.Game.Conectado || r->fotografado) return;
            if (c.JogadaAtual >= 13) {
                r->fotografado = true;
                QTimer::singleShot(800, &janela, [r, f, &janela] {
                    janela.grab().save(r->pasta + "/tabuleiro-" +
                                           QString::fromStdString(f->ctx.Tipo_c) + ".png",
                                       "PNG");
                    QTimer::singleShot(1500, &janela, [f] { f->EncerraPrograma(); });
                });
                return;
            }
            if (c.Game.Fim || !c.EsperaClique() || !c.Minhavez()) return;
            if (r->marcada != c.JogadaAtual) {
                r->marcada = c.JogadaAtual;
                Gerador& g = c.gerador();
                const int ini = c.Atual.IniLista, fim = c.Atual.FimLista;
                if (fim < ini) return;
                const Jogada& m = g.Slot(ini + (c.JogadaAtual * 7) % (fim - ini + 1));
                r->cliques = {m[0]};
                for (int p = 1; p < m.tam; p += 3) r->cliques.push_back(m[p]);
            }
            if (r->cliques.empty()) return;
            const int casa = r->cliques.front();
            r->cliques.pop_front();
            janela.imgpd_MouseDown(casa, Qt::LeftButton);
        };
    };
    return true;
}

} // namespace velmora::ace
