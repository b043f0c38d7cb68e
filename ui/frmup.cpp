#include "ui/frmup.h"

#include "service/endereco.h"
#include "service/instalador.h"
#include "ui/caixas.h"
#include "ui/progressbarxp.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>
#include <unistd.h>

namespace velmora::ui {

EntregaAtualizacao EntregaDoSistema(std::function<void()> encerra) {
    EntregaAtualizacao e;
    e.administrador = [] { return ::geteuid() == 0; };
    e.instala = [](const QString& arquivo) {
        // started on its own, so that it outlives the program it replaces
        QProcess p;
        QProcessEnvironment ambiente = QProcessEnvironment::systemEnvironment();
        ambiente.insert("DEBIAN_FRONTEND", "noninteractive");
        p.setProcessEnvironment(ambiente);
        if (!QStandardPaths::findExecutable("apt-get").isEmpty()) {
            p.setProgram("apt-get");
            p.setArguments({"install", "-y", "--allow-downgrades", "--reinstall", arquivo});
        } else {
            p.setProgram("dpkg");
            p.setArguments({"-i", arquivo});
        }
        p.setStandardOutputFile(QDir::tempPath() + "/VelmoraAce-instalacao.log");
        p.setStandardErrorFile(QDir::tempPath() + "/VelmoraAce-instalacao.log", QIODevice::Append);
        p.startDetached();
    };
    e.abre = [](const QUrl& url) { QDesktopServices::openUrl(url); };
    e.encerra = std::move(encerra);
    return e;
}

FrmUp::FrmUp(Caixas& caixas, EntregaAtualizacao entrega, std::string LinkUpdate, std::string sha256,
             QWidget* pai)
    : QDialog(pai), caixas_(caixas), entrega_(std::move(entrega)), link_(std::move(LinkUpdate)),
      sha256_(std::move(sha256)) {
    setObjectName("FrmUp");
    setWindowTitle(QString::fromStdString("Norvane - Update do " + TituloApp));
    auto* legenda = new QLabel(windowTitle(), this);
    legenda->setObjectName("Label1");
    QFont fonte = legenda->font();
    fonte.setBold(true);
    legenda->setFont(fonte);
    ProgressBarXP1 = new ProgressBarXP(this);
    ProgressBarXP1->setObjectName("ProgressBarXP1");
    ProgressBarXP1->setFixedSize(320, 24);
    ProgressBarXP1->Color(RGB(49, 106, 197));
    ProgressBarXP1->Scrolling(0);
    ProgressBarXP1->ShowText(false);
    ProgressBarXP1->Max(100);
    auto* coluna = new QVBoxLayout(this);
    coluna->setContentsMargins(16, 16, 16, 16);
    coluna->addWidget(legenda);
    coluna->addWidget(ProgressBarXP1);
    coluna->setSizeConstraint(QLayout::SetFixedSize);
}

QString FrmUp::Arquivo() const {
    return QDir(QDir::tempPath()).filePath(QString::fromStdString(NomeInstalador(TituloApp)));
}

void FrmUp::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    if (ativado_) return;
    ativado_ = true;
    QTimer::singleShot(0, this, [this] { Form_Activate(); });
}

void FrmUp::reject() {
    // Closing the window during the download stops it; the failure box follows
    if (baixando_) {
        DL1.CancelDownload("Id");
        return;
    }
    QDialog::reject();
}

void FrmUp::Form_Activate() {
    const QString arquivo = Arquivo();
    QFile::remove(arquivo);
    const QString titulo = QString::fromStdString(TituloApp);
    const QString endereco = QString::fromStdString(servico.empty() ? EnderecoServico() : servico);

    baixando_ = true;
    const std::int16_t status =
        DL1.Download(link_, arquivo.toStdString(), ProgressBarXP1, "Id", TimeOut);
    baixando_ = false;
    if (status != 1) {
        fim_ = Fim::SemDownload;
        caixas_.Mensagem(this, "Não foi possivel fazer o download da atualização", titulo);
        QDialog::reject();
        return;
    }
    // Only a whole package of the program is handed on: anything else is thrown away
    if (!ConfereInstalador(arquivo.toStdString(), sha256_)) {
        QFile::remove(arquivo);
        fim_ = Fim::SemArquivo;
        caixas_.Mensagem(this,
                         "Não foi possivel localizar o arquivo de instalação\r\rTente novamente "
                         "mais tarde ou faça o download no site " +
                             endereco,
                         titulo);
        QDialog::reject();
        return;
    }
    caixas_.Mensagem(this, "O " + titulo + " será fechado para que a atualização seja feita",
                     titulo);
    fim_ = Fim::Entregue;
    if (entrega_.administrador && entrega_.administrador()) {
        if (entrega_.instala) entrega_.instala(arquivo);
    } else {
        caixas_.Mensagem(this, "Se a atualização automatica falhar faça o download em " + endereco,
                         titulo);
        if (entrega_.abre) {
            entrega_.abre(QUrl(endereco + "/html/download.php?prog=velmace"));
            entrega_.abre(QUrl::fromLocalFile(arquivo));
        }
    }
    QDialog::accept();
    if (entrega_.encerra) entrega_.encerra();
}

} // namespace velmora::ui
