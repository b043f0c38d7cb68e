// The handshake of a new link ("Nick:", "Config:", "ConeCtado:", "ConectadoOK"), the block
// list, and the alignment at the start of each game of the session.
#include "peer/conexaopeer.h"

#include "peer/fio.h"
#include "store/configuracao.h"
#include "store/texto1252.h"

#include <cmath>

namespace velmora {

using namespace fio;

namespace {

// Points as "###,###" with the thousands separated by dots.
std::string FormataPontos(long p) {
    std::string d = std::to_string(p < 0 ? -p : p), r;
    for (size_t i = 0; i < d.size(); ++i) {
        if (i > 0 && (d.size() - i) % 3 == 0) r += '.';
        r += d[i];
    }
    return p < 0 ? "-" + r : r;
}

std::string IdOuZero(const std::string& id) {
    return id.empty() ? "0" : id;
}

} // namespace

void ConexaoPeer::WS_Connect(int Index) {
    auto& c = ctx();
    c.Jogador[1].Compatibilidade = std::to_string(Compatibilidade);
    FalhaNoServidor = false;
    const auto& j = c.Jogador[1];
    const std::string base = std::string(Nick) + "#" + IdOuZero(j.ID) + "#" + ParaFio(j.Nome) +
                             "#" + std::to_string(j.Pontos) + "#" +
                             std::to_string(Compatibilidade) + "#" + (j.Visitante ? "VS" : "NV");
    if (Index == 2 && TentandoServidor) {
        Envia(2, base + "#Chief#" + ParaFio(j.IDCPT) + "#Port#IDT:" + IdOuZero(j.IDT) + "#" +
                     ParaFio(form_.SenhaGrupo) + "A#");
        NoServidor = true;
        Fecha(1);
        return;
    }
    Descarrega(Index == 1 ? 2 : 1);
    form_.ConexaoAberta = Index != 0;
    Label4 = "Conectado.\r\rEstabelecento parametros";
    tela_->Status(Label4);
    BaseEspera = Agora() - 5;
    c.Tipo_c = "Cliente";
    ws_C = Index;
    Pump();
    Envia(Index, base + "#Ace#" + ParaFio(j.IDCPT) + "#Port");
    c.Game.valendo = false;
    AceitaVerifica = true;
    PortaConexao = WS.Loaded(Index) ? WS(Index).LocalPort() : 0;
}

void ConexaoPeer::WS_ConnectionRequest(int Index, std::int32_t requestID) {
    auto& c = ctx();
    Descarrega(Index == 1 ? 2 : 1);
    BaseEspera = Agora() - 5;
    form_.ConexaoAberta = Index != 0;
    Label4 = "Conectado.\r\rEstabelecento parametros";
    tela_->Status(Label4);
    ws_C = Index;
    c.Tipo_c = "Servidor";
    PortaConexaoOK = 1;
    PortaConexao = WS.Loaded(Index) ? WS(Index).LocalPort() : 0;
    Pump();
    if (WS.Loaded(Index)) {
        try {
            // The listener itself becomes the link: nobody else is accepted.
            WS(Index).CloseSck();
            WS(Index).Accept(requestID);
        } catch (const ErroSocket& e) {
            Log("Accept: " + e.Descricao);
        }
    }
    c.Game.valendo = false;
    AceitaVerifica = true;
}

int ConexaoPeer::IdtDosCampos(const std::string& texto, int apartirDe) {
    // One pass over the fields by "#", as Pedaco numbers them.
    const std::string t = Comeca(texto, "#") ? texto : "#" + texto;
    int n = 0;
    for (size_t pos = t.find('#'); pos != std::string::npos; pos = t.find('#', pos + 1)) {
        ++n;
        const size_t fim = t.find('#', pos + 1);
        const std::string campo =
            t.substr(pos + 1, fim == std::string::npos ? std::string::npos : fim - pos - 1);
        if (n >= apartirDe && Pedaco(campo, ":", 1) == "IDT")
            return NumeroBrando(Pedaco(campo, ":", 2));
    }
    return 0;
}

void ConexaoPeer::PainelDoPeer(int idt) {
    auto& j = ctx().Jogador[2];
    auto& m = form_.modelo;
    DicaNome2 = idt >= 1 ? "ID do jogador: " + std::to_string(idt) : "";
    if (!j.Visitante) m.LbNV[2].Texto = j.Pontos == 0 ? "(0)" : "(" + FormataPontos(j.Pontos) + ")";
    m.LbNV[2].Visivel = ctx().Game.Modo == 4 && !j.Visitante;
    if (!j.IDCPT.empty()) GravaOpcao(form_.registro(), "IDCPT_Remote", j.IDCPT);
    m.LbNome[2].Texto = j.Nome;
}

bool ConexaoPeer::EstaBloqueado(const std::string& nome, int idt) {
    if (ctx().Game.Modo != 4) return false;
    const std::string nick = Cp1252ParaUtf8(MinusculasCp1252(Utf8ParaCp1252(nome)));
    for (int k = 1; k <= 20; ++k) {
        const std::string b = LeOpcao(form_.registro(), "block" + std::to_string(k), "");
        if (b.empty()) continue;
        if (!Comeca(b, "ID:")) {
            if (b == nick) return true;
        } else if (idt != 0 && NumeroBrando(b.substr(3)) == idt) {
            return true;
        }
    }
    return false;
}

void ConexaoPeer::Bloqueado(const std::string& nome, int idt) {
    FechaSockets(0);
    Label4 =
        (idt >= 1 ? std::to_string(idt) + " : " : "") + nome + " está na sua lista de bloqueio.";
    tela_->Status(Label4);
    Log(Label4);
    Espera(1);
}

void ConexaoPeer::RecebeNick(int Index, const std::string& texto) {
    auto& c = ctx();
    if (NoServidor) {
        c.Tipo_c = "Servidor";
        ws_C = Index;
    }
    FechaSockets(Index == 1 ? 2 : 1);
    form_.PodeIniciar = false;
    c.Jogador[1].Compatibilidade = std::to_string(Compatibilidade);
    auto& j = c.Jogador[2];
    j.Nome = DoFio(Pedaco(texto, "#", 3));
    const int idt = IdtDosCampos(texto, 10);
    j.IDT = std::to_string(idt);
    if (EstaBloqueado(j.Nome, idt)) return Bloqueado(j.Nome, idt);
    j.ID = DoFio(Pedaco(texto, "#", 2));
    j.Pontos = NumeroEstrito(Pedaco(texto, "#", 4));
    const int compat = NumeroEstrito(Pedaco(texto, "#", 5));
    j.Compatibilidade = std::to_string(compat);
    j.Visitante = Pedaco(texto, "#", 6) == "VS";
    j.IDCPT = DoFio(Pedaco(texto, "#", 8));
    j.Lingua = Pedaco(texto, "#", 9) == "Ingles" ? "Ingles" : "";
    PainelDoPeer(idt);
    if (compat != Compatibilidade) {
        Fecha(Index);
        return;
    }
    const auto& eu = c.Jogador[1];
    std::string config = std::string(Config) + "#" + IdOuZero(eu.ID) + "#" + ParaFio(eu.Nome) +
                         "#" + std::to_string(eu.Pontos) + "#" + std::to_string(c.Game.Regra) +
                         "#0#" + std::to_string(c.Game.TempoLimite) + "#" +
                         (eu.Visitante ? "VS" : "NV") + "#" + ParaFio(eu.IDCPT);
    if (NumeroBrando(eu.IDT) > 0) config += "#IDT:" + std::to_string(NumeroBrando(eu.IDT));
    Envia(Index, config);
    Log(" -> " + DoFio(config));
}

void ConexaoPeer::RecebeConfig(int Index, const std::string& texto) {
    auto& c = ctx();
    if (NoServidor) {
        c.Tipo_c = "Cliente";
        ws_C = Index;
    }
    FechaSockets(Index == 1 ? 2 : 1);
    form_.PodeIniciar = false;
    c.Jogador[1].Compatibilidade = std::to_string(Compatibilidade);
    auto& j = c.Jogador[2];
    j.Nome = DoFio(Pedaco(texto, "#", 3));
    int idt = 0;
    for (int n : {10, 11})
        if (Pedaco(Pedaco(texto, "#", n), ":", 1) == "IDT" && idt == 0)
            idt = NumeroBrando(Pedaco(Pedaco(texto, "#", n), ":", 2));
    j.IDT = std::to_string(idt);
    if (EstaBloqueado(j.Nome, idt)) return Bloqueado(j.Nome, idt);
    j.ID = DoFio(Pedaco(texto, "#", 2));
    j.Pontos = NumeroEstrito(Pedaco(texto, "#", 4));
    const int regra = NumeroEstrito(Pedaco(texto, "#", 5));
    if (regra < 1 || regra > 4) ForaDoIntervalo(); // the rule's name has no such row
    c.Game.Regra = regra;
    const int tempo = NumeroBrando(Pedaco(texto, "#", 7));
    c.Game.TempoLimite = tempo >= 60 ? tempo : 60;
    j.Visitante = Pedaco(texto, "#", 8) == "VS";
    j.IDCPT = DoFio(Pedaco(texto, "#", 9));
    j.Lingua = Pedaco(texto, "#", 10) == "Ingles" ? "Ingles" : "";
    PainelDoPeer(idt);
    form_.modelo.Label21.Texto = NomeRegra(c.Game.Regra);
    c.Game.Comeca = c.Sorte(50) ? 1 : 2;
    Envia(Index, std::string(ConeCtado) + ":" + std::to_string(c.Game.Comeca));
    Log("Conectado: -> " + std::to_string(c.Game.Comeca));
}

void ConexaoPeer::RecebeConeCtado(int Index, const std::string& texto) {
    const int lado = NumeroEstrito(Pedaco(texto, ":", 2));
    if (lado != 1 && lado != 2) {
        Fecha(Index);
        return;
    }
    ctx().Game.Comeca = lado;
    Envia(Index, ConectadoOK);
    Log(" -> ConectadoOK");
    FimDoHandshake(" >1>> EstaConectado: Tipo_c=");
}

void ConexaoPeer::FimDoHandshake(const std::string& palavra) {
    auto& c = ctx();
    Log("Jogando_Online");
    if (aoJogandoOnline) aoJogandoOnline(NoServidor);
    c.Jogador[1].Vitorias = c.Jogador[2].Vitorias = 0;
    form_.Empatou = false;
    Log(palavra + c.Tipo_c + "   Comeca=" + std::to_string(c.Game.Comeca));
    form_.AtualizaPlacar();
    form_.EstaConectado();
    Close_Valendo = true;
    // Whose turn the first game begins with stands from now: the peer's start signal may
    // come before this copy's game loop has shown it.
    c.painel.PicVezDois.Visivel = c.Game.Comeca != c.LadoLocal();
}

// ---------------------------------------------------------------- start of each game

void ConexaoPeer::HandshakeInicio() {
    auto& c = ctx();
    auto& G = c.Game;
    Painel& p = c.painel;
    p.Label26.Texto =
        p.Label2.Texto < p.Label3.Texto ? "Entregar o jogo e desconectar" : "Desconectar";
    if (p.PicVezDois.Visivel) {
        p.Label27.Texto = NomePeer() + " irá iniciar";
        p.Label27.Visivel = true;
        form_.tela().Redesenha();
        Espera(1);
        EnviaPeer(std::string(fio::PodeIniciar));
        return;
    }
    const double nota = std::floor(Decorrido());
    G.AceitaClique = false;
    emInicio_ = true;
    // The wait flag stands over the whole sequence, so that a new dialog waits for it.
    form_.EmEspera[Form1::EsperaInicio] = true;
    // A start repair that comes meanwhile makes the sequence give way at once.
    const auto cede = [&] {
        if (!corrige_) return false;
        form_.EmEspera[Form1::EsperaInicio] = false;
        emInicio_ = false;
        saiuParaCorrigir_ = true;
        c.StartInitGame = true;
        return true;
    };
    for (auto [texto, segundos] : {std::pair<const char*, double>{"Você irá iniciar o jogo", 2},
                                   {"Aguarde um momento...", 2},
                                   {"Inicie o jogo", 1}}) {
        p.Label27.Texto = texto;
        p.Label27.Visivel = true;
        form_.tela().Redesenha();
        Espera(segundos);
        if (cede() || c.StartInitGame) break;
    }
    Log(std::string("Antes de entrar no loop PODEINICIAR = ") +
        (form_.PodeIniciar ? "True" : "False"));
    const bool cliente = c.Tipo_c == "Cliente";
    if (cliente && !c.StartInitGame) Espera(1);
    if (!c.StartInitGame && AceitaVerifica && !corrige_)
        EnviaPeer(std::string(Verifica) + std::to_string(c.Atual.Vez));
    if (!c.StartInitGame && !corrige_) AceitaVerifica = false;
    if (!cliente && !c.StartInitGame) Espera(1);
    const double inicio = Decorrido();
    while (!c.StartInitGame && !form_.PodeIniciar && Decorrido() - inicio < 10) {
        if (cede()) break;
        Pump();
        Pump();
        Pump();
        form_.plataforma.Dorme(5);
    }
    cede();
    form_.EmEspera[Form1::EsperaInicio] = false;
    emInicio_ = false;
    Log(std::string("Após o loop PODEINICIAR = ") + (form_.PodeIniciar ? "True" : "False"));
    if (c.StartInitGame) return;
    G.AceitaClique = true;
    form_.SegundosInicio = static_cast<int>(std::floor(Decorrido()) - nota);
}

void ConexaoPeer::RecebePodeIniciar() {
    if (ctx().painel.PicVezDois.Visivel) {
        Log(" : : : Aplicando solução : : :");
        EnviaPeer(std::string(ErroInicio));
    }
    form_.PodeIniciar = true;
}

} // namespace velmora
