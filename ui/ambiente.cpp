#include "ui/ambiente.h"

#include <cstdlib>

namespace velmora::ui {

QUrl AmbienteUi::Ajuda() const {
    return QUrl::fromLocalFile(QString::fromStdString((pastaApp / "velmora.html").string()));
}

QString EnderecoServico() {
    if (const char* v = std::getenv("VELMORA_SERVICO"); v && *v) return QString::fromUtf8(v);
    return "http://127.0.0.1:8080";
}

} // namespace velmora::ui
