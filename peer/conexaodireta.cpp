#include "peer/conexaodireta.h"

#include "store/configuracao.h"

#include <QByteArray>
#include <QUrl>

namespace velmora {

ConexaoDireta::ConexaoDireta(ConexaoPeer& peer, Form1& form) : peer_(peer), form_(form) {
    PortaDireta = PortaPadrao(form.registro());
}

bool ConexaoDireta::Servidor() const {
    return form_.ctx.Tipo_c == "Servidor";
}

void ConexaoDireta::Form_Load() {
    form_.ctx.Game.valendo = false;
    form_.ctx.Game.TempoLimite = 90;
    Porta = PortaAtual(form_.registro());
}

void ConexaoDireta::Form_Activate() {
    if (ativado_) return;
    ativado_ = true;
    form_.ctx.Game.Conectado = false;
    Label3.clear();
    Caption = form_.ctx.Tipo_c;
    if (!Servidor()) {
        Picture1Visivel = true;
        Command3Visivel = false;
        Text1 = LeOpcao(form_.registro(), "LC", "");
        Command1Habilitado = Command2Habilitado = true;
        Label2 = "Informe o IP do computador para qual quer se conectar e clique em "
                 "'Conectar'.";
        Label7 = "(Se for uma rede local você pode informar o nome do computador ou "
                 "selecionar o nome na lista)";
        return;
    }
    Label4 = "A pessoa que irá jogar com você deverá: \r\r1) Abrir o Velmora Ace  \r2) Na tela "
             "de novo jogo clicar em 'Rede Local'\r3) Selecionar 'Entrar no jogo' e informar o "
             "seu IP";
    Picture1Visivel = false;
    ErroEscuta = peer_.Escuta(PortaDireta);
    std::string local = "127.0.0.1";
    if (peer_.WS.Loaded(1)) local = peer_.WS(1).LocalIP();
    Label8 = "Seu IP local é: " + local;
    const std::string publico = meuIp ? meuIp() : "";
    if (!publico.empty()) Label8 += "\rSeu IP da internet é: " + publico;
    if (!ErroEscuta.empty()) Label3 = "\r" + ErroEscuta;
    Timer1Ativo = Timer4Ativo = true;
}

void ConexaoDireta::Command1_Click() {
    if (Text1.empty()) return;
    Label3 = "\rEstabelecendo conexão...";
    form_.plataforma.ProcessaEventos();
    const std::string erro = peer_.Disca(Text1, PortaDireta);
    if (!erro.empty()) Label3 = "\r" + erro;
    Timer1Ativo = true;
    GravaOpcao(form_.registro(), "LC", Text1);
}

void ConexaoDireta::Command2_Click() {
    peer_.FechaSocketEmUso();
    Timer1Ativo = false;
}

bool ConexaoDireta::Timer1_Timer() {
    auto& c = form_.ctx;
    if (!c.Game.Conectado) return false;
    const bool comeco = (Servidor() && c.Game.Comeca == 1) || (!Servidor() && c.Game.Comeca == 2);
    if (comeco) {
        // This copy starts: a moment for the other side to take its window in.
        form_.plataforma.ProcessaEventos();
        form_.plataforma.Dorme(1000);
        form_.plataforma.ProcessaEventos();
    }
    Timer1Ativo = Timer4Ativo = false;
    return true;
}

std::string ConexaoDireta::AvisoConvite() {
    return "Você não está conectado com a internet.\r\nSe deseja jogar com outro usuário "
           "através da internet você deve fazer a conexão antes de abrir o Velmora Ace.";
}

std::string ConexaoDireta::Convite(const std::string& ip) const {
    const QByteArray assunto = QUrl::toPercentEncoding("Vamos jogar Velmora Ace on-line");
    const std::string corpo =
        "Olá!\r\n\r\nVamos jogar damas no Velmora Ace? Se você ainda não tem o jogo, baixe-o em "
        "https://velmora.example/ace.\r\n\r\nAbra o Velmora Ace, clique em 'Rede Local' e "
        "depois em 'Entrar no jogo'.\r\nSerá solicitado o meu IP que é: " +
        ip;
    const QByteArray c = QUrl::toPercentEncoding(QString::fromStdString(corpo));
    return "mailto:?subject=" + assunto.toStdString() + "&body=" + c.toStdString();
}

} // namespace velmora
