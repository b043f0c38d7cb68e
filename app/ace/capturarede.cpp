#include "capturarede.h"

#include "session/form1.h"
#include "ui/form2.h"
#include "ui/frmnewgame.h"
#include "ui/janelatabuleiro.h"
#include "ui/telaqt.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QTextStream>
#include <QTimer>

#include <cstdlib>
#include <deque>
#include <memory>

namespace velmora::ace {

namespace {
struct RoteiroRede {
    QString pasta, papel, nick, senha;
    bool dialogo = false, fotografado = false;
    int marcada = -1;
    std::deque<int> cliques;
    // on-line: the panels' points when the game began, and when it ended
    std::string pontosNoInicio;
    double fimDoJogo = -1;
};

std::string PontosDosPaineis(const Form1& f) {
    return f.modelo.LbNV[1].Texto + "|" + f.modelo.LbNV[2].Texto;
}

// Both panels as the window shows them: name, points (with whether they are shown) and
// stars of each side.
void EscrevePaineis(const ui::JanelaTabuleiro& janela, const QString& arquivo) {
    QFile saida(arquivo);
    if (!saida.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    QTextStream t(&saida);
    for (int k = 1; k <= 2; ++k) {
        const QString nv = QString("LbNV_%1").arg(k);
        const auto* estrelas =
            qobject_cast<const ui::Insignias*>(janela.Controle_(QString("LBEstrelas%1").arg(k)));
        t << "LbNome" << k << "=" << janela.Texto(QString("LbNome_%1").arg(k)) << "\n"
          << "LbNV" << k << "=" << janela.Texto(nv) << (janela.Visivel(nv) ? "" : " (oculto)")
          << "\n"
          << "Estrelas" << k << "=" << (estrelas ? estrelas->Estrelas() : -1) << "\n";
    }
}
} // namespace

bool PreparaCapturaRede(ui::TelaQt& tela) {
    const char* destino = std::getenv("VELMORA_CAPTURA_REDE");
    const char* papel = std::getenv("VELMORA_CAPTURA_PAPEL");
    if (!destino || !*destino || !papel || !*papel) return false;
    auto r = std::make_shared<RoteiroRede>();
    r->pasta = QString::fromUtf8(destino);
    r->papel = QString::fromUtf8(papel);
    const bool escuta = r->papel == "escuta";
    const bool online = r->papel == "online";
    if (online) {
        r->nick = QString::fromUtf8(std::getenv("VELMORA_CAPTURA_NICK"));
        r->senha = QString::fromUtf8(std::getenv("VELMORA_CAPTURA_SENHA"));
    }

    tela.aoMostrarNovoJogo = [r, escuta, online](ui::FrmNewGame& d) {
        if (r->dialogo) return;
        r->dialogo = true;
        if (online) {
            QTimer::singleShot(300, &d, [r, &d] {
                d.Image1_Click(3);
                d.ImGTPON_Click(2);
                d.Combo3->setEditText(r->nick);
                d.Text2->setText(r->senha);
                d.Label3_Click();
            });
            return;
        }
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

    tela.aoMostrarJanela = [r, &tela, online](ui::JanelaTabuleiro& janela) {
        Form1* f = tela.localizaForm1 ? tela.localizaForm1() : nullptr;
        if (!f) return;
        f->AoProcessarEventos = [r, f, &janela, online] {
            Contexto& c = f->ctx;
            if (r->fotografado) return;
            if (online && r->pontosNoInicio.empty() && c.Game.Conectado)
                r->pontosNoInicio = PontosDosPaineis(*f);
            // the end: a win on either side, or the link gone after the game began
            if (online && r->fimDoJogo < 0 &&
                (c.Jogador[1].Vitorias + c.Jogador[2].Vitorias > 0 ||
                 (!r->pontosNoInicio.empty() && !c.Game.Conectado)))
                r->fimDoJogo = f->plataforma.Decorrido();
            if (online && r->fimDoJogo >= 0) {
                // The award travels from the winner's copy: wait for the new totals
                if (PontosDosPaineis(*f) == r->pontosNoInicio &&
                    f->plataforma.Decorrido() < r->fimDoJogo + 10)
                    return;
                // at once, while the game's end still stands on the board (the loser's side
                // counts the win on its panel only once the winner lets play go on)
                r->fotografado = true;
                janela.Atualiza();
                const QString base = r->pasta + "/online-" + r->nick;
                janela.grab().save(base + ".png", "PNG");
                EscrevePaineis(janela, base + ".txt");
                QTimer::singleShot(500, &janela, [f] { f->EncerraPrograma(); });
                return;
            }
            if (!c.Game.Conectado) return;
            if (!online && c.JogadaAtual >= 13) {
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
