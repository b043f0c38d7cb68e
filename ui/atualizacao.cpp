#include "ui/atualizacao.h"

#include "core/utilidades.h"
#include "ui/caixas.h"

#include <QString>

namespace velmora::ui {

namespace {
const QString Titulo = QStringLiteral("Velmora Ace");
}

void OfereceAtualizacaoLobby(const std::string& resultado, Caixas& caixas, QWidget* pai,
                             const AbreFrmUp& abreFrmUp) {
    const OfertaAtualizacao oferta = LeOferta(resultado);
    if (!oferta.link) return;
    if (!oferta.mensagem.empty())
        caixas.Mensagem(pai, QString::fromStdString(Troca(oferta.mensagem, ";", "\r")), Titulo);
    if (!oferta.Obrigatoria() &&
        !caixas.Pergunta(
            pai, "Está disponível uma atualização do Velmora Ace. Deseja atualizar agora?", Titulo))
        return;
    if (abreFrmUp) abreFrmUp(oferta);
}

void RespondeAtualizacaoSobre(const std::string& resultado, Caixas& caixas, QWidget* pai,
                              const AbreFrmUp& abreFrmUp, const std::string& versao) {
    const OfertaAtualizacao oferta = LeOferta(resultado);
    if (!oferta.link) {
        caixas.Mensagem(pai, QString::fromStdString(resultado), Titulo);
        return;
    }
    const std::string pergunta = "Você está utilizando a versão " + versao +
                                 "\r\n\r\nDeseja atualizar para a versão " + oferta.versao +
                                 " agora?";
    if (!caixas.Pergunta(pai, QString::fromStdString(pergunta), Titulo)) return;
    if (abreFrmUp) abreFrmUp(oferta);
}

} // namespace velmora::ui
