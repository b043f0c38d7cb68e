#include "captura.h"

#include "session/form1.h"
#include "ui/frmnewgame.h"
#include "ui/janelatabuleiro.h"
#include "ui/telaqt.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QPixmap>
#include <QTimer>
#include <cstdlib>
#include <deque>
#include <memory>

namespace velmora::ace {

namespace {

struct Roteiro {
    QString pasta;
    bool dialogoFotografado = false;
    int jogadasFeitas = 0;
    int jogadaMarcada = -1; // JogadaAtual when the clicks in the queue were planned
    std::deque<int> cliques;
    bool terminando = false;
};

void Salva(QWidget& w, const QString& arquivo) {
    const QPixmap foto = w.grab();
    foto.save(arquivo, "PNG");
}

void Escreve(const QString& arquivo, const QString& texto) {
    QFile f(arquivo);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) f.write(texto.toUtf8());
}

// The clicks of the n-th legal move of the turn: its first square and each landing square.
std::deque<int> CliquesDe(Contexto& ctx, int escolha) {
    Gerador& g = ctx.gerador();
    const int ini = ctx.Atual.IniLista, fim = ctx.Atual.FimLista;
    if (fim < ini) return {};
    const Jogada& m = g.Slot(ini + escolha % (fim - ini + 1));
    std::deque<int> c{m[0]};
    for (int p = 1; p < m.tam; p += 3) c.push_back(m[p]);
    return c;
}

// A piece of the player with two or more moves, to show its marked landing squares.
int PecaComEscolha(Contexto& ctx) {
    Gerador& g = ctx.gerador();
    const int ini = ctx.Atual.IniLista, fim = ctx.Atual.FimLista;
    for (int i = ini; i <= fim; ++i) {
        int n = 0;
        for (int k = ini; k <= fim; ++k) n += g.Slot(k)[0] == g.Slot(i)[0] ? 1 : 0;
        if (n >= 2) return g.Slot(i)[0];
    }
    return 0;
}

} // namespace

bool PreparaCaptura(ui::TelaQt& tela) {
    const char* destino = std::getenv("VELMORA_CAPTURA");
    if (!destino || !*destino) return false;
    auto roteiro = std::make_shared<Roteiro>();
    roteiro->pasta = QString::fromUtf8(destino);
    QDir().mkpath(roteiro->pasta);

    tela.aoMostrarNovoJogo = [roteiro](ui::FrmNewGame& dialogo) {
        if (roteiro->dialogoFotografado) return;
        roteiro->dialogoFotografado = true;
        QFile inicio(roteiro->pasta + "/inicio-ms.txt");
        if (inicio.open(QIODevice::WriteOnly))
            inicio.write(QByteArray::number(QDateTime::currentMSecsSinceEpoch()));
        QTimer::singleShot(500, &dialogo, [roteiro, &dialogo] {
            Salva(dialogo, roteiro->pasta + "/novo-jogo.png");
            dialogo.Image1_Click(1);
            dialogo.TxtHC->setText("Ana");
            dialogo.Torneio(false);
            dialogo.Label23_Click(2);
            dialogo.Label3_Click();
        });
    };

    tela.aoMostrarJanela = [roteiro, &tela](ui::JanelaTabuleiro& janela) {
        Form1* f = tela.localizaForm1 ? tela.localizaForm1() : nullptr;
        if (!f) return;
        f->ctx.Velocit = 1;
        // where the program found its files, and which of them it misses
        Escreve(roteiro->pasta + "/pasta.txt", QString::fromStdString(f->Programa.CaminhoApp));
        QString faltam;
        for (const char* nome : {"velmora.html", "Click.wav", "click.wav", "mover.wav", "talk.wav",
                                 "alarme.wav", "sweethrt.mid", "passport.mid"})
            if (!QFile::exists(QString::fromStdString(f->Programa.CaminhoApp) + "/" + nome))
                faltam += QString(nome) + "\n";
        Escreve(roteiro->pasta + "/faltam.txt", faltam);
        f->AoProcessarEventos = [roteiro, f, &janela] {
            Contexto& ctx = f->ctx;
            if (roteiro->terminando || ctx.Game.Fim || !ctx.EsperaClique() || ctx.Atual.Vez != 1)
                return;
            if (roteiro->jogadaMarcada != ctx.JogadaAtual) {
                roteiro->cliques.clear();
                roteiro->jogadaMarcada = ctx.JogadaAtual;
                if (roteiro->jogadasFeitas == 6) {
                    // the board in the middle of the game, one piece chosen
                    roteiro->terminando = true;
                    if (const int peca = PecaComEscolha(ctx))
                        janela.imgpd_MouseDown(peca, Qt::LeftButton);
                    QTimer::singleShot(700, &janela, [roteiro, f, &janela] {
                        Salva(janela, roteiro->pasta + "/tabuleiro.png");
                        // the same board in full screen, then back in its window
                        janela.TelaCheiaClick();
                        QTimer::singleShot(700, &janela, [roteiro, f, &janela] {
                            Salva(janela, roteiro->pasta + "/tela-cheia.png");
                            janela.TelaCheiaClick();
                            f->EncerraPrograma();
                        });
                    });
                    return;
                }
                roteiro->cliques = CliquesDe(ctx, 3 * roteiro->jogadasFeitas + 1);
                ++roteiro->jogadasFeitas;
            }
            if (roteiro->cliques.empty()) return;
            const int casa = roteiro->cliques.front();
            roteiro->cliques.pop_front();
            janela.imgpd_MouseDown(casa, Qt::LeftButton);
        };
    };
    return true;
}

} // namespace velmora::ace
