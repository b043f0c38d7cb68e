#include "ui/bandeja.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>
#include <QWidget>
#include <array>

namespace velmora::ui {

namespace {

int AlturaDaTela(const QWidget* w) {
    const QScreen* tela = w && w->screen() ? w->screen() : QGuiApplication::primaryScreen();
    return tela ? tela->geometry().height() : 0;
}

} // namespace

Bandeja::Bandeja(const QIcon& icone, QObject* pai)
    : QObject(pai), usaBandeja(QSystemTrayIcon::isSystemTrayAvailable()), icone_(icone) {
    connect(&icone_, &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason r) {
                if (r == QSystemTrayIcon::DoubleClick && aoDuploClique) aoDuploClique();
            });
}

void Bandeja::BandejaAdiciona(const QString& tip) {
    icone_.setToolTip(tip.left(127));
    if (usaBandeja) icone_.show();
}

void Bandeja::BandejaAviso(const QString& texto, const QString& titulo) {
    if (!icone_.isVisible()) return;
    icone_.showMessage(QString(), QString(), QSystemTrayIcon::NoIcon, 1);
    icone_.showMessage(titulo.left(63), texto.left(255), QSystemTrayIcon::Information);
}

void Bandeja::BandejaRemove() {
    icone_.hide();
}

void Bandeja::AguardarMinimizado(QWidget* lobby, QWidget* dialogo, QWidget* tabuleiro) {
    BandejaAdiciona("Velmora Ace");
    const std::array<QWidget*, 3> janelas = {lobby, dialogo, tabuleiro};
    QStringList numeros;
    for (QWidget* w : janelas) {
        numeros << QString::number(w ? w->y() : 0) << QString::number(w ? w->x() : 0);
    }
    PosicaoJanelas = numeros.join(',');
    for (QWidget* w : janelas) {
        if (!w) continue;
        if (usaBandeja)
            w->move(w->x(), 2 * AlturaDaTela(w) + 1);
        else
            w->showMinimized();
    }
    BandejaAviso("Quando estabelecer uma conexão a tela do Velmora Ace será restaurada "
                 "automaticamente",
                 "Velmora Ace");
}

void Bandeja::RetornaForms(const QString& posicoes, QWidget* lobby, QWidget* dialogo,
                           QWidget* tabuleiro) {
    BandejaRemove();
    const std::array<QWidget*, 3> janelas = {lobby, dialogo, tabuleiro};
    if (!usaBandeja) {
        for (QWidget* w : janelas)
            if (w && w->isMinimized()) w->showNormal();
        return;
    }
    const auto abaixo = [](const QWidget* w) { return w && w->y() >= AlturaDaTela(w); };
    if (!abaixo(tabuleiro) || !abaixo(lobby)) return;
    const QStringList n = posicoes.split(',');
    if (n.size() != 6) return;
    for (std::size_t i = 0; i < janelas.size(); ++i) {
        bool okTopo = false, okEsquerda = false;
        const int topo = n[static_cast<int>(2 * i)].trimmed().toInt(&okTopo);
        const int esquerda = n[static_cast<int>(2 * i + 1)].trimmed().toInt(&okEsquerda);
        if (janelas[i] && okTopo && okEsquerda) janelas[i]->move(esquerda, topo);
    }
}

} // namespace velmora::ui
