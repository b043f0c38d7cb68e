#pragma once
// The lobby (Form8) without widgets: from the update check to the relay, the direct way
// with the waiting list, the timers, the cancel and the error boxes. It reaches the peer
// sockets through LigacaoLobby and its window through JanelaLobby; the peer link calls the
// event methods below (ConectouServidor, ConexaoFeita...) as its sockets report.
#include "core/painel.h"
#include "service/online.h"
#include "service/testaporta.h"

#include <QTimer>

#include <functional>
#include <string>
#include <vector>

namespace velmora {

// What the lobby asks of the peer link: the board window's sockets WS(1), the listener,
// and WS(2), the dialler. Errors of the socket calls are the link's to swallow.
class Form8;

class LigacaoLobby {
  public:
    virtual ~LigacaoLobby() = default;
    // The lobby that receives the link's events: set when it is created, null when it ends.
    virtual void Lobby(Form8* lobby) { (void)lobby; }
    // 0 unloads WS(2) and WS(1); 1 or 2 unloads that socket and loads it anew.
    virtual void CarregaWS(int k) = 0;
    // 0 unloads both, 1 or 2 one of them.
    virtual void FechaSockets(int k) = 0;
    // CloseSck of WS(k).
    virtual void FechaWS(int k) = 0;
    // WS(2).Connect. Its Connect event, while the lobby's TentandoServidor is set, sends
    // the relay form of "Nick:" and calls Form8::ConectouServidor; otherwise it is a peer
    // connection: Form8::ConexaoFeita, then the handshake.
    virtual void Conecta(const std::string& host, int porta) = 0;
    // WS(1).LocalPort = porta, Listen, four rounds of the event loop; true when WS(1)
    // listens. An incoming peer calls Form8::ConexaoFeita, then the handshake.
    virtual bool Escuta(int porta) = 0;
    // WS(1).LocalPort.
    virtual int PortaEscuta() = 0;
    // This machine's address as the socket layer gives it (Winsock1.LocalIP).
    virtual std::string EnderecoLocal() = 0;
    // The connectivity test of the lost-link judge, with its overall limit in ms.
    virtual bool TestaInternet(int ms) {
        (void)ms;
        return true;
    }
};

// What the lobby asks of its window and of the desktop around it.
class JanelaLobby {
  public:
    virtual ~JanelaLobby() = default;
    virtual void Mensagem(const std::string& texto) = 0;
    virtual bool Pergunta(const std::string& texto) = 0;
    virtual void Ocupado(bool ocupado) { (void)ocupado; }
    // The lobby's state changed.
    virtual void Redesenha() {}
    // The lobby unloads: its modal wait ends.
    virtual void Descarrega() {}
    virtual void Esconde() {}
    virtual void TocaSom(const std::string& nome) { (void)nome; }
    virtual void AbrePagina(const std::string& url) { (void)url; }
    // The update window, modally, for the installer at `link`.
    virtual void AbreAtualizacao(const std::string& link) { (void)link; }
    // The tray: the icon, its balloon, and the windows hidden below the screen.
    virtual void BandejaAdiciona(const std::string& tip) { (void)tip; }
    virtual void BandejaAviso(const std::string& texto, const std::string& titulo) {
        (void)texto;
        (void)titulo;
    }
    virtual void BandejaRemove() {}
    // Notes where the lobby, the new game dialog and the board window stand, and moves
    // them below the screen.
    virtual void EscondeJanelas() {}
    // Takes the icon away and, when the windows stand hidden, puts them back.
    virtual void RetornaForms() {}
    // The board window stands hidden below the screen.
    virtual bool Escondida() { return false; }
    // The board window and the new game dialog centred again on the screen's height.
    virtual void CentraJanelas() {}
};

// The error boxes of the lobby.
extern const char* const Erro21;
extern const char* const Erro22;
extern const char* const Erro23;

class Form8 {
  public:
    Form8(Form1& f, ServicoOnline& servico, TestePorta& porta, LigacaoLobby& ligacao,
          JanelaLobby& janela);
    ~Form8();
    Form8(const Form8&) = delete;
    Form8& operator=(const Form8&) = delete;

    // The update check: its result text, as the about box's check gives it; empty or unset
    // means none.
    std::function<std::string()> GetUpdate;
    // The password typed in the new game dialog, for the login.
    std::string Senha;

    // ---------------------------------------------------------------- state
    std::string Acao; // "", "Atualizar", or "Deletar" for a cancelled lobby
    bool Form8Aberto = false;
    bool LobbyIniciado = false;
    bool CancelouLobby = false;
    bool SairLobby = false;
    bool TentandoServidor = false;
    bool NoServidor = false;
    bool TemInternet = false;
    bool PedeVisitante = false;
    bool JaNotificado = false;
    bool Descarregado = false;
    int Porta = 0;
    int TempoEspera = 30;
    int Rodadas = 0;
    double BaseEspera = 0;
    int PortaConexaoOK = 0, PortaConexao = 0;
    std::vector<std::string> List1;

    // ---------------------------------------------------------------- controls
    Controle Label4;                         // status
    Controle LbComunica;                     // the port line
    Controle Label2;                         // router help link
    Controle Label7;                         // go on as a visitor
    Controle Label6;                         // "Aguardar minimizado"
    Controle Label8;                         // the listening port
    Controle Command1;                       // "Cancelar" / "Sair"
    int PosicaoImagem = 0, PassoImagem = 80; // the sliding picture, in twips
    static constexpr int LarguraFaixa = 3000;
    QTimer Timer1, Timer2, Timer3, Timer5;

    // ---------------------------------------------------------------- life cycle
    void Form_Load();
    // The first activation runs Conectar(false).
    void Form_Activate();
    void Form_Unload();
    // Headless: load, activate, and pump until the lobby unloads.
    void Executa();

    void Conectar(bool retorno);
    void DeixaNaEspera(int p);
    void status(const std::string& texto);
    // Each digit as "?": no address stands on the screen.
    static std::string Mascara(std::string texto);
    void ParalizaTela();

    // ---------------------------------------------------------------- controls' events
    void Command1_Click(); // the cancel
    void Label2_Click();   // router help
    void Label7_Click();   // go on as a visitor
    void Label6_Click();   // wait in the tray
    void Timer1_Timer();
    void Timer2_Timer();
    void Timer3_Timer();
    void Timer5_Timer();

    // ---------------------------------------------------------------- the peer link's events
    // WS(2) reached the relay (the relay form of "Nick:" is sent).
    void ConectouServidor();
    // WS(1) or WS(2) was joined to another copy; the handshake follows.
    void ConexaoFeita();
    // The relay closed WS(2).
    void FechouServidor();
    // The handshake found the peer on the block list.
    void PeerBloqueado(const std::string& nick, long idt);
    // An error on WS(1).
    void ErroEscuta();
    // The handshake ended (after Form1::EstaConectado).
    void EstaConectado();

  private:
    enum class Fim { Tempo, Saiu, Juntou };
    bool Saiu() const { return Acao == "Deletar" || CancelouLobby; }
    // Waits until `limite` on the clock, testing on each turn: leave, then joined.
    Fim Aguarda(double limite, bool paraNoSair = false);
    void FechamentoDeErro();
    void TrataAtualizacao(const std::string& r);
    PedidoLista PedidoDaLista();
    double EsperaLista() const;
    void Descarrega();
    void Muda() { janela_.Redesenha(); }

    Form1& f_;
    ServicoOnline& servico_;
    TestePorta& porta_;
    LigacaoLobby& ligacao_;
    JanelaLobby& janela_;
};

} // namespace velmora
