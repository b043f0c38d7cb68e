#include "apoio.h"

#include "store/caminhos.h"

#include <cstdlib>

namespace velmora::ui::teste {

void CaixasRoteiro::Mensagem(QWidget*, const QString& texto, const QString& titulo) {
    vistas.push_back({"Mensagem", texto, titulo});
}

bool CaixasRoteiro::Pergunta(QWidget*, const QString& texto, const QString& titulo) {
    vistas.push_back({"Pergunta", texto, titulo});
    if (respostas.empty()) return false;
    const bool r = respostas.front();
    respostas.pop_front();
    return r;
}

std::optional<QString> CaixasRoteiro::Entrada(QWidget*, const QString& prompt,
                                              const QString& titulo) {
    vistas.push_back({"Entrada", prompt, titulo});
    if (entradas.empty()) return std::nullopt;
    const QString r = entradas.front();
    entradas.pop_front();
    if (r.isNull()) return std::nullopt;
    return std::optional<QString>(std::in_place, r);
}

void ComPastas::SetUp() {
    ASSERT_TRUE(pasta.isValid());
    setenv("VELMORA_CONFIG", (pasta.path() + "/registro.reg").toUtf8().constData(), 1);
    setenv("VELMORA_DADOS", (pasta.path() + "/dados").toUtf8().constData(), 1);
    reg = NovoRegistro();
    amb = std::make_unique<AmbienteUi>(
        AmbienteUi{*reg, caixas, [this](const std::string& s) { sons.push_back(s); },
                   std::filesystem::path(pasta.path().toStdString()),
                   [this](const QUrl& u) { enderecos.push_back(u); }});
}

void ComPastas::TearDown() {
    unsetenv("VELMORA_CONFIG");
    unsetenv("VELMORA_DADOS");
}

std::unique_ptr<clsRegistryAccess> ComPastas::NovoRegistro() const {
    return std::make_unique<clsRegistryAccess>(ArquivoRegistro());
}

} // namespace velmora::ui::teste
