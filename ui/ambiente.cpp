#include "ui/ambiente.h"

#include "service/endereco.h"

namespace velmora::ui {

QUrl AmbienteUi::Ajuda() const {
    return QUrl::fromLocalFile(QString::fromStdString((pastaApp / "velmora.html").string()));
}

QString EnderecoServico(clsRegistryAccess& reg) {
    return QString::fromStdString(velmora::EnderecoServico(reg));
}

} // namespace velmora::ui
