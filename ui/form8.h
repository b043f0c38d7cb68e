#pragma once
// The lobby's window: the status text, the port line, the links (router help, visitor,
// "Aguardar minimizado"), the listening port, the cancel button and a picture that slides
// while the lobby works. It shows the lobby logic's state and hands its clicks back; the
// tray icon and the hiding of the windows below the screen live here too.
#include "service/lobby.h"

#include <QDialog>
#include <QPointer>
#include <QSystemTrayIcon>

#include <array>
#include <functional>
#include <memory>
#include <vector>

class QLabel;
class QPushButton;

namespace velmora::ui {

class Caixas;
class Rotulo;

class JanelaForm8 : public QDialog, public JanelaLobby {
    Q_OBJECT
  public:
    // `janelas`: the new game dialog and the board window, hidden with the lobby in the tray.
    JanelaForm8(Form1& f, ServicoOnline& servico, TestePorta& porta, LigacaoLobby& ligacao,
                Caixas& caixas, std::vector<QPointer<QWidget>> janelas = {},
                QWidget* pai = nullptr);
    ~JanelaForm8() override;

    Form8& lobby() { return *lobby_; }
    // The update window, given by the self-update code.
    std::function<void(const std::string&)> Atualiza;

    // ---------------------------------------------------------------- JanelaLobby
    void Mensagem(const std::string& texto) override;
    bool Pergunta(const std::string& texto) override;
    void Ocupado(bool ocupado) override;
    void Redesenha() override;
    void Descarrega() override;
    void Esconde() override { hide(); }
    void TocaSom(const std::string& nome) override;
    void AbrePagina(const std::string& url) override;
    void AbreAtualizacao(const std::string& link) override;
    void BandejaAdiciona(const std::string& tip) override;
    void BandejaAviso(const std::string& texto, const std::string& titulo) override;
    void BandejaRemove() override;
    void EscondeJanelas() override;
    void RetornaForms() override;
    bool Escondida() override;
    void CentraJanelas() override;

    QLabel *Label4, *LbComunica, *Label8;
    Rotulo *Label2, *Label7, *Label6;
    QPushButton* Command1;

  protected:
    void showEvent(QShowEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    void reject() override;

  private:
    std::vector<QWidget*> Janelas();
    Caixas& caixas_;
    std::vector<QPointer<QWidget>> outras_;
    std::unique_ptr<Form8> lobby_;
    QWidget* faixa_;
    QSystemTrayIcon bandeja_;
    std::vector<QPoint> PosicaoJanelas;
    bool ativado_ = false;
};

} // namespace velmora::ui
