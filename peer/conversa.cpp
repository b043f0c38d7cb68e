// What the two players say to each other besides the moves: the draw offer and its
// answers, the surrender, the question after a time-out, the status question, and chat.
#include "peer/conexaopeer.h"

#include "peer/filtrapalavroes.h"
#include "peer/fio.h"

#include <QString>

#include <cmath>

namespace velmora {

using namespace fio;

namespace {
const char* Booleano(bool b) {
    return b ? "True" : "False";
}

std::string Numero(double v) {
    // Widths print as whole numbers when they are, else with their fraction.
    if (v == std::floor(v)) return std::to_string(static_cast<long long>(v));
    std::string s = std::to_string(v);
    while (!s.empty() && s.back() == '0') s.pop_back();
    return s;
}
} // namespace

// ---------------------------------------------------------------- draw

void ConexaoPeer::RecebePedirEmpate(int Index) {
    auto& c = ctx();
    auto& G = c.Game;
    Painel& p = c.painel;
    form_.Timer2.stop();
    RespostaEmpate = false;
    RespostaEmpate = tela_->PerguntaEmpate("Aceita empate?");
    const bool aceitaClique = G.AceitaClique;
    G.AceitaClique = false;
    const char* palavra = RespostaEmpate ? "Aceitei" : "Não aceitei";
    if (RespostaEmpate) {
        p.Label27.Texto = "Você aceitou";
        Envia(Index, EmpateSim);
        Log(" -> Empate:sim");
        p.Label22.Habilitado = false;
        p.Label22.Cor = cor::Cinza;
    } else {
        p.Label27.Texto = "Você não aceitou";
        Envia(Index, EmpateNao);
        Log(" -> Empate:nao");
        form_.Timer2.start();
    }
    p.Label27.Visivel = true;
    form_.modelo.Label7.Habilitado = false;
    Log(std::string(":::: Entrei no loop 'Respondi empate' (") + palavra + ")");
    form_.EmEspera[Form1::EsperaDespacho] = true;
    const double nota = std::floor(Decorrido());
    for (;;) {
        Pump();
        Pump();
        if (Decorrido() >= nota + 2) {
            form_.Timer2.start();
            G.AceitaClique = true;
        }
        if (G.AceitaClique || c.StartInitGame) break;
        if (!G.Conectado) {
            p.Label27.Visivel = false;
            form_.EmEspera[Form1::EsperaDespacho] = false;
            Log(std::string(":::: Perdeu a conexão no loop de empate (") + palavra + ")");
            return;
        }
        Pump();
        Pump();
        form_.plataforma.Dorme(5);
    }
    form_.EmEspera[Form1::EsperaDespacho] = false;
    Log(":::: Saí no loop 'Respondi empate' ");
    if (c.StartInitGame) return;
    G.AceitaClique = aceitaClique;
    p.Label27.Visivel = false;
    form_.modelo.Label7.Habilitado = true;
    if (RespostaEmpate) form_.Restart_Game();
}

void ConexaoPeer::RecebeEmpateSim(int Index) {
    auto& c = ctx();
    Painel& p = c.painel;
    form_.Timer3.stop();
    p.Timer3.Habilitado = false;
    c.EsperandoEmpate = false;
    p.Label27.Texto = NomePeer() + " aceitou o empate";
    p.Label27.Visivel = true;
    Espera(2);
    p.Label27.Visivel = false;
    Envia(Index, EmpateFimSim);
    Log(" -> Empate:TerminateSim");
    form_.modelo.Label7.Habilitado = true;
    form_.HabilitaEntregar();
    p.Label24.Habilitado = true;
    p.Label24.Cor = cor::Clara;
    form_.Empatou = true;
    form_.Restart_Game();
    c.Game.AceitaClique = true;
}

void ConexaoPeer::RecebeEmpateNao(int Index) {
    auto& c = ctx();
    Painel& p = c.painel;
    form_.Timer3.stop();
    p.Timer3.Habilitado = false;
    c.EsperandoEmpate = false;
    form_.modelo.Label7.Habilitado = true;
    form_.HabilitaEntregar();
    form_.Timer2.start();
    p.Label27.Texto = NomePeer() + " não aceitou o empate";
    p.Label27.Visivel = true;
    Pump();
    Espera(2);
    p.Label27.Visivel = false;
    c.Game.AceitaClique = true;
    Envia(Index, EmpateFimNao);
    Log(" -> Empate:TerminateNao");
}

// ---------------------------------------------------------------- surrender

void ConexaoPeer::RecebeEntregar(int Index, const std::string& texto) {
    auto& c = ctx();
    Painel& p = c.painel;
    c.Game.AceitaClique = false;
    ++c.Jogador[1].Vitorias;
    const std::string palavra = Pedaco(texto, ":", 2);
    if (palavra == "Perder")
        p.Label27.Texto = NomePeer() + " entregou o jogo.";
    else if (palavra == "Timeout")
        p.Label27.Texto = NomePeer() + " Perdeu.";
    p.Label27.Visivel = true;
    const double nota = std::floor(Decorrido());
    p.Ocupado = true;
    form_.rede().AtribuiVitoria(1, true); // through the service when the game is on-line
    p.Ocupado = false;
    form_.AtualizaPlacar();
    while (Decorrido() < nota + 2 && !c.StartInitGame) {
        Pump();
        form_.plataforma.Dorme(5);
    }
    p.Label27.Visivel = false;
    Envia(Index, DesisteOK);
    Log(" -> Desiste:OK");
    form_.Ele_Desistiu = true;
    p.Label24.Cor = cor::Clara;
    p.Label22.Habilitado = true;
    form_.modelo.Label7.Habilitado = true;
    c.Game.AceitaClique = true;
    if (c.StartInitGame || !c.Game.Conectado) return;
    form_.Label7_Click();
}

// ---------------------------------------------------------------- time question

void ConexaoPeer::RecebeRestartTimeOut(int Index) {
    auto& c = ctx();
    auto& m = form_.modelo;
    if (m.PicCrono[1].Largura < m.PicTIMER[1].Largura) return; // time is left here
    form_.Timer2.stop();
    if (c.painel.PicVezDois.Visivel) {
        c.Game.valendo = false;
        EnviaPeer(std::string(TMNOTOK));
    } else {
        EnviaPeer(std::string(TMOK));
    }
    Espera(0.2);
    Fecha(Index);
    FechaSockets(0);
    Caixa(c.Game.valendo ? "Tempo limite esgotado.\r\rVocê perdeu" : "Tempo limite esgotado.");
    form_.LimpaPlacar();
    Log(":: ZeraPainel : InitGame ::");
    form_.InitGame();
}

void ConexaoPeer::RecebeTMOK(bool ok) {
    if (!ok) ctx().Game.valendo = false;
    form_.EsperaTimeOut = true;
}

// ---------------------------------------------------------------- status and chat

void ConexaoPeer::RecebeInforma(int Index) {
    auto& c = ctx();
    auto& m = form_.modelo;
    const bool segundo = c.painel.PicVezDois.Visivel;
    const int i = segundo ? 2 : 1;
    const std::string texto =
        std::string(fio::Mensagem) + "()  Versão:" + VersaoPrograma + " (" +
        std::to_string(VersaoMaior) + "." + std::to_string(VersaoMenor) + "." +
        std::to_string(VersaoRevisao) + ")" + "\r\n(Remoto: " + c.Tipo_c +
        ") - Vez: " + c.Jogador[segundo ? 2 : 1].Nome + "\r\nValendo: " + Booleano(c.Game.valendo) +
        "\rConectado: " + Booleano(c.Game.Conectado) +
        "\rPodeJogar: " + Booleano(c.Game.AceitaClique) + "\rPicCrono(" + std::to_string(i) +
        ").Width = " + Numero(m.PicCrono[i].Largura) + "\rPicTimer(" + std::to_string(i) +
        ").Width = " + Numero(m.PicTIMER[i].Largura);
    Envia(Index, ParaFio(texto));
}

bool ConexaoPeer::ChatAtivo() const {
    const auto& j = form_.ctx.Jogador;
    return form_.config.HabilitaChat &&
           (j[1].Lingua == j[2].Lingua || form_.config.HabilitaChatIngles);
}

void ConexaoPeer::AcrescentaChat(const std::string& texto) {
    auto& t4 = form_.modelo.Text4.Texto;
    t4 += "\r\n\r\n" + texto;
    // The log keeps its last 32 KB: a flood of lines can't grow it without end.
    constexpr size_t limite = 32 * 1024;
    if (t4.size() > limite) t4.erase(0, t4.size() - limite);
}

void ConexaoPeer::RecebeChat(int Index, const std::string& bytes) {
    auto& c = ctx();
    tela_->RestauraJanela();
    for (int k = 0; k < 4; ++k) Pump();
    const std::string texto = DoFio(bytes.substr(Mensagem.size()));
    if (!ChatAtivo()) {
        Envia(Index, ParaFio(std::string(fio::Mensagem) + "(" + c.Jogador[1].Nome +
                             " está com bate papo desativado)"));
        return;
    }
    std::string linha;
    if (texto == "(" + NomePeer() + " está com bate papo desativado)")
        linha = texto;
    else if (QString::fromStdString(texto).size() >= 20)
        linha = NomePeer() + " diz:\r\n" + texto;
    else
        linha = NomePeer() + " diz:   " + texto;
    AcrescentaChat(linha);
    tela_->LinhaChat(linha);
    form_.PiscaText4();
    if (form_.config.TocarSom) form_.tela().TocaSom("talk.wav");
    form_.modelo.Foco = "Text3";
}

bool ConexaoPeer::EnviaChat(const std::string& digitado) {
    auto& c = ctx();
    if (!ChatAtivo()) {
        const std::string aviso =
            "Você deve ativar o 'Bate papo' em 'Opções' para enviar mensagens";
        AcrescentaChat(aviso);
        tela_->LinhaChat(aviso);
        form_.PiscaText4();
        if (form_.config.TocarSom) form_.tela().TocaSom("talk.wav");
        return false;
    }
    const QString filtrado = FiltraPalavroes(QString::fromStdString(digitado));
    if (filtrado.isEmpty()) return false;
    const std::string texto = filtrado.toStdString();
    EnviaPeer(ParaFio(std::string(fio::Mensagem) + texto));
    const std::string& eu = c.Jogador[1].Nome;
    AcrescentaChat(filtrado.size() >= 20 ? eu + " diz:\r\n" + texto : eu + " diz:   " + texto);
    form_.modelo.Text3.Texto.clear();
    form_.modelo.Foco = "Text3";
    form_.tela().Redesenha();
    return true;
}

} // namespace velmora
