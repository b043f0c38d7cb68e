#include "ui/frmbloqueio.h"

#include "store/configuracao.h"
#include "store/numeros.h"
#include "ui/caixas.h"
#include "ui/estilo.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <memory>
#include <string>

namespace velmora::ui {

namespace {

std::string Chave(int k) {
    return "block" + std::to_string(k);
}

QString Minusculas(std::string_view t) {
    return QString::fromUtf8(t.data(), static_cast<qsizetype>(t.size())).toLower();
}

} // namespace

bool EstaBloqueado(clsRegistryAccess& reg, int modo, std::string_view nick, long idt) {
    if (modo != 4) return false;
    const QString procurado = Minusculas(nick);
    for (int k = 1; k <= MaximoBloqueados; ++k) {
        const std::string valor = LeOpcao(reg, Chave(k), "");
        if (valor.empty()) continue;
        if (valor.rfind("ID:", 0) != 0) {
            if (QString::fromStdString(valor) == procurado) return true;
        } else if (idt != 0 && NumeroTolerante(std::string_view(valor).substr(3)) == idt) {
            return true;
        }
    }
    return false;
}

Frmbloqueio::Frmbloqueio(clsRegistryAccess& reg, Caixas& caixas, QWidget* pai)
    : QDialog(pai), reg_(reg), caixas_(caixas), List1(new QListWidget(this)),
      Command1(new QPushButton("Adicionar um nick a lista", this)),
      Command4(new QPushButton("Adicionar um ID a lista", this)),
      Command2(new QPushButton("Remover item selecionado", this)),
      Command3(new QPushButton("Fechar", this)) {
    setObjectName("Frmbloqueio");
    setWindowTitle("Bloqueio");
    List1->setObjectName("List1");
    Command1->setObjectName("Command1");
    Command2->setObjectName("Command2");
    Command3->setObjectName("Command3");
    Command4->setObjectName("Command4");
    for (int k = 1; k <= MaximoBloqueados; ++k) {
        const std::string valor = LeOpcao(reg_, Chave(k), "");
        if (!valor.empty()) List1->addItem(QString::fromStdString(valor));
    }
    auto* botoes = new QVBoxLayout;
    for (QPushButton* b : {Command1, Command4, Command2}) botoes->addWidget(b);
    botoes->addStretch();
    botoes->addWidget(Command3);
    auto* tudo = new QHBoxLayout(this);
    tudo->addWidget(List1, 1);
    tudo->addLayout(botoes);
    resize(460, 300);
    DaEstilo(this);
    connect(Command1, &QPushButton::clicked, this, &Frmbloqueio::AdicionaNick);
    connect(Command4, &QPushButton::clicked, this, &Frmbloqueio::AdicionaID);
    connect(Command2, &QPushButton::clicked, this, &Frmbloqueio::Remove);
    connect(Command3, &QPushButton::clicked, this, &QDialog::accept);
}

QStringList Frmbloqueio::Linhas() const {
    QStringList l;
    for (int i = 0; i < List1->count(); ++i) l << List1->item(i)->text();
    return l;
}

void Frmbloqueio::SelecionaLinha(int linha) {
    List1->setCurrentRow(linha);
}

bool Frmbloqueio::Cheia() {
    if (List1->count() < MaximoBloqueados) return false;
    caixas_.Mensagem(this, "Você pode bloquear no máximo 20 jogadores", windowTitle());
    return true;
}

void Frmbloqueio::Grava() {
    clsRegistryAccess::Lote lote(reg_);
    for (int k = 1; k <= List1->count() && k <= MaximoBloqueados; ++k)
        GravaOpcao(reg_, Chave(k), List1->item(k - 1)->text().toStdString());
}

void Frmbloqueio::AdicionaNick() {
    if (Cheia()) return;
    const auto texto =
        caixas_.Entrada(this, "Informe o nick do jogador que deseja bloquear", "Bloquear Nick");
    if (!texto) return;
    QString nick = *texto;
    while (nick.startsWith(' ')) nick.remove(0, 1);
    while (nick.endsWith(' ')) nick.chop(1);
    if (nick.isEmpty()) return;
    List1->addItem(nick.toLower());
    Grava();
}

void Frmbloqueio::AdicionaID() {
    if (Cheia()) return;
    const auto texto =
        caixas_.Entrada(this, "Informe o ID do jogador que deseja bloquear", "Bloquear ID");
    if (!texto) return;
    const auto id = NumeroTolerante(texto->toStdString());
    if (id == 0) {
        caixas_.Mensagem(this,
                         QString("IDs são dados numéricos") + "\r" + QChar(12) +
                             "Ao bloquear o jogador pelo ID, ele estará  bloqueado mesmo que "
                             "usar outro nick ou jogar como visitante",
                         windowTitle());
        return;
    }
    List1->addItem("ID:" + QString::number(id));
    Grava();
}

void Frmbloqueio::Remove() {
    if (List1->count() == 0) {
        caixas_.Mensagem(this, "Não exite nenhum nick na lista para ser removido", windowTitle());
        return;
    }
    const int linha = List1->currentRow();
    if (linha < 0 || !List1->item(linha)->isSelected()) {
        caixas_.Mensagem(this, "Selecione primeiro o nick que quer remover da lista",
                         windowTitle());
        return;
    }
    std::unique_ptr<QListWidgetItem> removida(List1->takeItem(linha));
    clsRegistryAccess::Lote lote(reg_);
    for (int k = 1; k <= MaximoBloqueados; ++k) GravaOpcao(reg_, Chave(k), "");
    Grava();
}

} // namespace velmora::ui
