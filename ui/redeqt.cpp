#include "ui/redeqt.h"

#include "ui/ambiente.h"
#include "ui/form2.h"
#include "ui/form8.h"
#include "ui/frmmsgbox.h"

#include "net/dl.h"
#include "service/atualizacao.h"
#include "service/endereco.h"

#include <QWidget>

namespace velmora::ui {

RedeQt::RedeQt(Form1& form, const AmbienteUi& amb, std::function<QWidget*()> janela)
    : mod_(std::make_unique<modSocketMaster>()),
      peer_(std::make_unique<ConexaoPeer>(form, *mod_, this)), janela_(std::move(janela)) {
    wsg_ = std::make_unique<ClienteGetConteudo>(*mod_);
    buscas_ = std::make_unique<BuscasReais>(*wsg_, Laco{});
    servico_ = std::make_unique<ServicoOnline>(form, *buscas_);
    porta_ = std::make_unique<TestePorta>(*servico_, *mod_);
    ligacao_ = std::make_unique<LigacaoPeer>(*peer_, form);
    LigaServico(*peer_, *servico_);
    comServico_ = std::make_unique<RedeComServico>(*peer_, *servico_);
    form.UsaRede(*comServico_);
    servico_->AbrePagina = [&amb](const std::string& url) {
        amb.Abre(QUrl(QString::fromStdString(url)));
    };
    comServico_->Lobby = [this, &form, &amb] {
        JanelaForm8 lobby(form, *servico_, *porta_, *ligacao_, amb.caixas, {},
                          janela_ ? janela_() : nullptr);
        lobby.lobby().Senha = form.SenhaDigitada;
        lobby.lobby().GetUpdate = [this, &form] {
            dl DL1;
            return GetUpdate(DL1, *wsg_, velmora::EnderecoServico(form.registro()), "Velmora Ace",
                             TemposLobby, std::string(VersaoServico));
        };
        lobby.exec();
        ResultadoLobby r;
        r.JogarComoVisitante = lobby.lobby().PedeVisitante;
        return r;
    };
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
