#include "ui/frmrecordes.h"

#include "core/utilidades.h"
#include "store/placar.h"
#include "store/recordes.h"
#include "ui/barratitulo.h"
#include "ui/estilo.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

namespace velmora::ui {

namespace {
constexpr QRgb Amarelo = 0xFFFF00;
}

FrmMostraRecords::FrmMostraRecords(const Recordes& recordes, const Placar& placar, int nivel,
                                   int& posicaoRecord,
                                   std::function<void(const std::string&)> tocaSom, QWidget* pai)
    : QDialog(pai), recordes_(recordes), placar_(placar), posicaoRecord_(posicaoRecord),
      tocaSom_(std::move(tocaSom)), Label8(new Rotulo("", this)), Label7(new QLabel(this)),
      tabela_(new QTableWidget(0, 3, this)), Label6(new Rotulo("Fechar", this)) {
    setObjectName("FrmMostraRecords");
    setWindowTitle("Recordes");
    setModal(true);
    Label8->setObjectName("Label8");
    Label7->setObjectName("Label7");
    Label6->setObjectName("Label6");
    Label8->DefineDuploComoClique(true);
    Label8->setToolTip("Clique para ver o próximo nível");
    Label8->DefineDestaque(true);
    tabela_->setObjectName("Picture2");
    tabela_->setHorizontalHeaderLabels({"Posição", "Nome", "Tempo"});
    tabela_->verticalHeader()->hide();
    tabela_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    tabela_->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    tabela_->horizontalHeader()->setSectionResizeMode(2, QHeaderView::ResizeToContents);
    tabela_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tabela_->setSelectionMode(QAbstractItemView::NoSelection);
    tabela_->setFocusPolicy(Qt::NoFocus);
    tabela_->setStyleSheet("QTableWidget { background: #1F2B3A; color: #F0F0F0; "
                           "gridline-color: #33465E; }");
    tabela_->setTextElideMode(Qt::ElideRight);
    Label7->setWordWrap(true);
    Label7->setAlignment(Qt::AlignCenter);

    auto* tudo = new QVBoxLayout(this);
    tudo->addWidget(Label8);
    tudo->addWidget(tabela_, 1);
    tudo->addWidget(Label7);
    tudo->addWidget(Label6, 0, Qt::AlignHCenter);
    resize(420, 460);
    DaEstilo(this);

    connect(Label8, &Rotulo::clicado, this, &FrmMostraRecords::ProximoNivel);
    connect(Label6, &Rotulo::clicado, this, [this] {
        if (tocaSom_) tocaSom_("Click.wav");
        accept();
    });

    ExibeRecords(nivel);
    MarcaPosicao();
}

void FrmMostraRecords::ExibeRecords(int nivel) {
    nivel_ = nivel;
    const auto tabela = recordes_.Tabela(nivel);
    linhas_ = static_cast<int>(tabela.size());
    tabela_->setRowCount(linhas_);
    for (int i = 0; i < linhas_; ++i) {
        char posicao[16];
        std::snprintf(posicao, sizeof posicao, "%03d", i + 1);
        auto celula = [&](int coluna, const QString& texto, Qt::Alignment alinhamento) {
            auto item = std::make_unique<QTableWidgetItem>(texto);
            item->setTextAlignment(alinhamento | Qt::AlignVCenter);
            // a name wider than its column ends in "…": the whole name is its tooltip
            if (coluna == 1) item->setToolTip(texto);
            tabela_->setItem(i, coluna, item.release()); // the table takes the item
        };
        celula(0, posicao, Qt::AlignCenter);
        celula(1, QString::fromStdString(tabela[static_cast<std::size_t>(i)].nome), Qt::AlignLeft);
        celula(2, QString::fromStdString(FormataTempo(tabela[static_cast<std::size_t>(i)].tempo)),
               Qt::AlignCenter);
    }
    tabela_->verticalScrollBar()->setValue(0);
    const QString nome = QString::fromStdString(NomeDoNivel(nivel));
    Label8->DefineTexto(nome);
    Label7->setText(QString::fromStdString(placar_.Texto(nivel)));
    Label7->setVisible(nome != "Torneio");
}

void FrmMostraRecords::MarcaPosicao() {
    const int pos = posicaoRecord_;
    if (pos < 1 || pos > linhas_) return;
    for (int coluna : {1, 2})
        if (QTableWidgetItem* item = tabela_->item(pos - 1, coluna)) {
            item->setForeground(QColor(Amarelo));
            QFont f = item->font();
            f.setBold(true);
            item->setFont(f);
        }
}

void FrmMostraRecords::RolaParaMarca() {
    const int pos = posicaoRecord_;
    if (pos < 11 || pos > linhas_) return;
    // the bar goes to the same fraction of its range as the row is of the rows shown
    QScrollBar* barra = tabela_->verticalScrollBar();
    barra->setValue(static_cast<int>(static_cast<double>(barra->maximum()) * pos / linhas_));
}

void FrmMostraRecords::showEvent(QShowEvent* e) {
    QDialog::showEvent(e);
    // the bar has its range once the table is laid out
    QTimer::singleShot(0, this, &FrmMostraRecords::RolaParaMarca);
}

void FrmMostraRecords::ProximoNivel() {
    if (tocaSom_) tocaSom_("Click.wav");
    posicaoRecord_ = 0;
    int nivel = nivel_ + 1;
    if (nivel > 5) nivel = 1;
    ExibeRecords(nivel);
}

QString FrmMostraRecords::TextoLabel8() const {
    return Label8->Texto();
}
QString FrmMostraRecords::TextoLabel7() const {
    return Label7->text();
}
bool FrmMostraRecords::Label7Visivel() const {
    return !Label7->isHidden();
}

void FrmMostraRecords::keyPressEvent(QKeyEvent* e) {
    if (e->key() == Qt::Key_Return || e->key() == Qt::Key_Enter || e->key() == Qt::Key_Escape) {
        accept();
        return;
    }
    QDialog::keyPressEvent(e);
}

} // namespace velmora::ui
