#include "ui/redeqt.h"

#include "ui/ambiente.h"
#include "ui/form2.h"
#include "ui/frmmsgbox.h"

#include <QWidget>

namespace velmora::ui {

RedeQt::RedeQt(Form1& form, const AmbienteUi& amb, std::function<QWidget*()> janela)
    : mod_(std::make_unique<modSocketMaster>()),
      peer_(std::make_unique<ConexaoPeer>(form, *mod_, this)), janela_(std::move(janela)) {
    form.UsaRede(*peer_);
    peer_->abreConexaoDireta = [this, &form, &amb] {
        Form2 dialogo(*peer_, form, amb, janela_ ? janela_() : nullptr);
        dialogo.exec();
    };
}

RedeQt::~RedeQt() = default;

bool RedeQt::PerguntaEmpate(const std::string& texto) {
    return FrmMSGBOX::Pergunta(janela_ ? janela_() : nullptr, QString::fromStdString(texto));
}

void RedeQt::RestauraJanela() {
    QWidget* j = janela_ ? janela_() : nullptr;
    if (j && j->isMinimized()) j->showNormal();
}

} // namespace velmora::ui
