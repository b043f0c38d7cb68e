#pragma once
// The peer link of the board window: its four sockets, the dispatcher of everything the
// other copy says, the handshake, the move exchange and its repairs, draw, surrender,
// chat, the time and status questions, and what a silent or broken link means. It plugs
// into the session as its Rede and works on the session's Form1.
//
// The lobby and the service come later on top of this: they dial WS(2), set
// TentandoServidor or NoServidor, and report wins through AtribuiVitoria.
#include "net/matrizsocket.h"
#include "net/modsocketmaster.h"
#include "net/socket.h"
#include "session/form1.h"
#include "session/rede.h"

#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

// What the peer link asks of the screen beyond the session's Tela.
class TelaPeer {
  public:
    virtual ~TelaPeer() = default;
    // The draw question, closing by itself with a refusal; true for yes.
    virtual bool PerguntaEmpate(const std::string& texto) {
        (void)texto;
        return false;
    }
    // A received chat line (or notice) was appended to Text4.
    virtual void LinhaChat(const std::string& texto) { (void)texto; }
    // The window is brought back when minimised.
    virtual void RestauraJanela() {}
    // The status label of the connecting dialog (the lobby's Label4).
    virtual void Status(const std::string& texto) { (void)texto; }
};

class ConexaoPeer : public Rede {
  public:
    ConexaoPeer(Form1& form, modSocketMaster& mod, TelaPeer* tela = nullptr);
    ~ConexaoPeer() override;
    ConexaoPeer(const ConexaoPeer&) = delete;
    ConexaoPeer& operator=(const ConexaoPeer&) = delete;

    // ---------------------------------------------------------------- sockets
    MatrizSocket WS;
    Socket WsTeste, WSG;
    int ws_C = 1;
    bool NoServidor = false;

    // ---------------------------------------------------------------- link flags
    bool AceitaVerifica = false;
    bool Close_Valendo = false;
    bool FalhaNoServidor = false;
    bool TemInternet = false;
    bool TestandoInternet = false;
    bool RespostaEmpate = false;
    bool TentandoServidor = false; // the lobby dials the relay
    bool CancelouLobby = false;
    bool Form8Aberto = false; // the lobby window is open
    bool SairLobby = false;
    int PortaConexao = 0;
    int PortaConexaoOK = 0;
    double BaseEspera = 0;
    std::string Label4;     // the connecting dialog's status
    std::string DicaNome2;  // the tooltip of the peer's name
    std::string UltimoErro; // the last socket error, as "number: text"
    // The version of the build, as the status question reports it.
    int VersaoMaior = 3, VersaoMenor = 9, VersaoRevisao = 0;

    // ---------------------------------------------------------------- Rede
    void EnviaPeer(const std::string& texto) override;
    void FechaSockets(int k) override;
    bool AtribuiVitoria(int vencedor, bool terminou) override;
    void FechaSocketEmUso() override;
    void WS_Close() override;
    void DescarregaSocketEmUso() override;
    bool SocketConectado() override;
    void AbreConexaoDireta() override;
    void HandshakeInicio() override;
    void IniciaVigilancia() override;
    void EnviaJogada(const Jogada& j) override;
    void AtualizaLabel26() override;
    void TimerManda_Timer() override;
    void TimerVerifica_Timer() override;
    void TimerCorrige_Timer() override;

    // ---------------------------------------------------------------- events of WS
    void WS_DataArrival(int Index, std::int32_t bytesTotal);
    void WS_Connect(int Index);
    void WS_ConnectionRequest(int Index, std::int32_t requestID);
    void WS_CloseSck(int Index);
    void WS_Error(int Index, std::int32_t Number, const std::string& Description);
    // One read, as the dispatcher takes it (the socket's part already done).
    void Despacha(int Index, std::string texto);

    // ---------------------------------------------------------------- operations
    // Loads WS(1) and listens on the port; the socket error's text when it can't.
    std::string Escuta(int porta);
    // Loads WS(1) anew and dials; the socket error's text when it can't start.
    std::string Disca(const std::string& host, int porta);
    // A chat line typed here (Text3): filtered, sent and logged. False when nothing went.
    bool EnviaChat(const std::string& texto);
    bool ChatAtivo() const;
    bool EstaBloqueado(const std::string& nome, int idt);
    void FechouWS(int Index, int& wVenceu);
    void ApuraCaiu(int& wVenceu);
    void DerrubouConexao();
    bool TestaInternet(int limiteMs);
    void ApagaMarca();

    // ---------------------------------------------------------------- plugs
    // The dialog of a game by typed address (the window's, or a headless driver's).
    std::function<void()> abreConexaoDireta;
    // The forecast of this copy's chances (the engine's, by default).
    std::function<int(double)> vaiVencer;
    // One reachability test of an address within a time limit (ms); true when it answered.
    std::function<bool(const std::string& endereco, int ms)> pingaEndereco;
    // Sees every message that goes out, and on which socket (logs and tests).
    std::function<void(int Index, const std::string& bytes)> aoEnviar;
    // New point totals from the other copy ("GETPT:a:b", the whole message): the service's
    // client shows them on the panel. Unset, they go to the debug log only.
    std::function<void(const std::string& mensagem)> aoReceberPontos;
    // The end of the handshake: the service's client takes the pair off the waiting list
    // (nothing on the relay, told by `noServidor`).
    std::function<void(bool noServidor)> aoJogandoOnline;
    // Sends nothing on the sockets: a test that takes what goes out through aoEnviar.
    bool semSockets = false;

  private:
    Contexto& ctx() { return form_.ctx; }
    void Log(const std::string& t) { form_.LogDebug(t); }
    void Envia(int Index, std::string_view bytes);
    void Fecha(int Index);
    void Descarrega(int Index);
    void LigaEventos();
    void Espera(double s) { form_.ctx.Espera(s); }
    void Pump() { form_.plataforma.ProcessaEventos(); }
    double Agora() { return form_.plataforma.Agora(); }
    double Decorrido() { return form_.plataforma.Decorrido(); }
    void Caixa(const std::string& t) { form_.Mensagem(t); }
    std::string NomePeer() const { return form_.ctx.Jogador[2].Nome; }
    bool JogoComRelogio() const;

    // The dispatcher's rows.
    void DespachaLinhas(int Index, std::string& texto);
    bool RecebeVerifica();
    void RecebeErroInicio(bool responde);
    void RecebePodeIniciar();
    void RecebeJOK();
    // False when the handling ends; else `texto` holds what is left.
    bool RecebeJogada(std::string& texto);
    void RecebeErroVez();
    void RecebeErroVezOK();
    void RecebeNick(int Index, const std::string& texto);
    void RecebeConfig(int Index, const std::string& texto);
    void RecebeConeCtado(int Index, const std::string& texto);
    void FimDoHandshake(const std::string& palavra);
    void Bloqueado(const std::string& nome, int idt);
    void PainelDoPeer(int idt);
    void RecebeInforma(int Index);
    void RecebeTMOK(bool ok);
    void RecebeRestartTimeOut(int Index);
    void RecebeChat(int Index, const std::string& texto);
    void RecebeEntregar(int Index, const std::string& texto);
    void RecebePedirEmpate(int Index);
    void RecebeEmpateSim(int Index);
    void RecebeEmpateNao(int Index);
    void AcrescentaChat(const std::string& texto);
    int IdtDosCampos(const std::string& texto, int apartirDe);

    Form1& form_;
    modSocketMaster& mod_;
    TelaPeer semTela_;
    TelaPeer* tela_;
    // A start repair is pending: the start sequence on the stack must give way.
    bool corrige_ = false;
    bool saiuParaCorrigir_ = false;
    bool emInicio_ = false; // the start sequence of a game that this copy starts is running
};

} // namespace velmora
