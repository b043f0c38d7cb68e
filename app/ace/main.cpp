// velmora-ace: the desktop program. The splash shows the version, the board window follows
// and opens the new game dialog; the game session behind it runs every game.
#include "captura.h"
#include "capturarede.h"

#include "session/form1.h"
#include "session/frmsplash.h"
#include "session/relogio.h"
#include "ui/caixas.h"
#include "ui/desenhos.h"
#include "ui/som/tocador.h"
#include "ui/telaqt.h"
#ifdef VELMORA_COM_SOM
#include "ui/som/sons.h"
#endif

#include <QApplication>
#include <QDesktopServices>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <memory>

namespace {

// The program's icon, drawn as the board's pieces are.
QIcon Icone() {
    QIcon icone;
    for (int lado : {32, 64, 128}) {
        QPixmap p(lado, lado);
        p.fill(Qt::transparent);
        QPainter pintor(&p);
        pintor.setRenderHint(QPainter::Antialiasing);
        pintor.setBrush(velmora::ui::paleta::CasaEscura);
        pintor.setPen(Qt::NoPen);
        pintor.drawRoundedRect(QRectF(0, 0, lado, lado), lado / 6.0, lado / 6.0);
        velmora::ui::DesenhaPeca(pintor, QRectF(0, 0, lado, lado), 20);
        icone.addPixmap(p);
    }
    return icone;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("Velmora Ace");
    QApplication::setApplicationVersion(velmora::VersaoPrograma);
    QApplication::setDesktopFileName("velmora-ace");
    QApplication::setWindowIcon(Icone());
    QApplication::setQuitOnLastWindowClosed(false);

    // the sounds and the music lie where the other files of the program lie
    const std::filesystem::path pasta =
        velmora::CaminhoDoPrograma(QCoreApplication::applicationDirPath().toStdString());
#ifdef VELMORA_COM_SOM
    velmora::Sons tocador(pasta);
#else
    velmora::TocadorMudo tocador;
#endif
    velmora::ui::CaixasQt caixas;
    velmora::ui::TelaQt tela(caixas, tocador,
                             [](const QUrl& url) { QDesktopServices::openUrl(url); });
    velmora::RelogioReal relogio;
    velmora::FrmSplash splash(tela, relogio);
    tela.localizaForm1 = [&splash] { return splash.form1.get(); };
    velmora::ace::PreparaCaptura(tela);
    velmora::ace::PreparaCapturaRede(tela);

    splash.Form_Load();
#ifdef VELMORA_COM_SOM
    // the sound device opens while the splash is up, not when the first click plays
    tocador.Disponivel();
#endif
    const int saida = QApplication::exec();
    tela.Libera();
    return saida;
}
