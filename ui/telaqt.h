#pragma once
// The session's screen on Qt: the splash, the board window, the new game dialog, the
// message boxes, the records viewer, the sounds and music, full screen and the end.
#include "service/atualizacao.h"
#include "session/rede.h"
#include "session/tela.h"
#include "ui/ambiente.h"
#include "ui/frmup.h"

#include <QWidget>
#include <functional>
#include <memory>

namespace velmora {
class ClienteGetConteudo;
class Form1;
class modSocketMaster;
struct Tocador;
} // namespace velmora

namespace velmora::ui {

class FrmNewGame;
class FrmSplash;
class JanelaTabuleiro;
class RedeQt;

class TelaQt : public Tela {
  public:
    // `abreUrl` asks the shell to open a file or a page.
    TelaQt(Caixas& caixas, Tocador& tocador, std::function<void(const QUrl&)> abreUrl);
    ~TelaQt() override;

    // Where the session's controller is, once the splash has made it.
    std::function<Form1*()> localizaForm1;
    // Makes the board window over that controller (MostraJanela does it when needed).
    void Liga(Form1& form1);
    // Ends the window before the controller goes.
    void Libera();
    JanelaTabuleiro* Janela() const { return janela_.get(); }
    const AmbienteUi* Ambiente() const { return amb_.get(); }
    // Runs once each new game dialog is on the screen (screenshots, scripted runs).
    std::function<void(FrmNewGame&)> aoMostrarNovoJogo;
    // Ends the process's event loop; a test puts something harmless in its place.
    std::function<void()> aoEncerrar;
    // Runs once the board window is on the screen.
    std::function<void(JanelaTabuleiro&)> aoMostrarJanela;

    void MostraSplash(const std::string& versao) override;
    void EscondeSplash() override;
    void MostraJanela() override;
    void DescarregaSplash() override;
    Retangulo RetanguloDaCasa(int casa) override;
    int LarguraDoTexto(const std::string& texto, int fonte) override;

    SaidaDialogo MostraNovoJogo(velmora::FrmNewGame& dialogo) override;
    void Mensagem(const std::string& texto, const std::string& titulo) override;
    bool Pergunta(const std::string& texto, const std::string& titulo) override;
    void MostraRecordes(int nivel, int posicao) override;

    void TocaSom(const std::string& nome) override;
    void TocaMusica(const std::string& nome) override;
    void FechaMusica() override;
    void Beep() override;

    bool TelaCheia() override;
    void RestauraTela() override;
    void Redesenha() override;
    void DescarregaFormularios() override;
    void EncerraPrograma() override;

    // The about box: modal, or beside the board while a connected game goes on.
    void MostraSobre(QWidget* pai);
    // The update window for an accepted offer, modally.
    void AbreFrmUp(const OfertaAtualizacao& oferta, QWidget* pai);
    // The service's base address in force (environment, setting, default).
    std::string Servico() const;
    // The board window's own fetch (its GetConteudo); until the peer link brings one, a
    // minimal client of the screen's own.
    Busca getConteudoForm1;
    // The hand-over of an update; the real one unless a test puts another.
    std::function<EntregaAtualizacao()> entregaAtualizacao;

  private:
    QWidget* Pai() const;

    Caixas& caixas_;
    Tocador& tocador_;
    std::function<void(const QUrl&)> abreUrl_;
    Form1* form1_ = nullptr;
    std::unique_ptr<AmbienteUi> amb_;
    std::unique_ptr<JanelaTabuleiro> janela_;
    std::unique_ptr<RedeQt> rede_; // the peer link, made with the window
    Rede semRede_;                 // what the session keeps once the link is gone
    std::unique_ptr<FrmSplash> splash_;
    std::unique_ptr<modSocketMaster> sockets_;
    std::unique_ptr<ClienteGetConteudo> wsg_;
};

} // namespace velmora::ui
