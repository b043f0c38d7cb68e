// WS_DataArrival: every message of the other copy is read here, by thirty tests in a
// fixed order. Pings, the start and points signals, the confirmation and the move are cut
// out of a read wherever they stand, so that they survive being merged with another
// message; every other message must be the whole read.
#include "peer/conexaopeer.h"

#include "peer/fio.h"

namespace velmora {

using namespace fio;

void ConexaoPeer::WS_DataArrival(int Index, std::int32_t bytesTotal) {
    (void)bytesTotal;
    if (!ctx().Game.Conectado && CancelouLobby) return;
    std::string texto;
    if (WS.Loaded(Index)) {
        try {
            WS(Index).GetData(texto);
        } catch (const ErroSocket&) {
            texto.clear();
        }
    }
    Despacha(Index, std::move(texto));
}

void ConexaoPeer::Despacha(int Index, std::string texto) {
    // Any data at all proves the link alive.
    form_.Conta_Verifica = 0;
    BaseEspera = Agora() - 5;
    texto = Apara(texto);
    Log(" <- " + DoFio(texto));
    try {
        DespachaLinhas(Index, texto);
    } catch (const Falha& f) {
        Caixa("Erro interno codigo D2\r\r" + std::to_string(f.numero) + "\r\n" + f.what());
    }
}

void ConexaoPeer::DespachaLinhas(int Index, std::string& texto) {
    auto& G = ctx().Game;
    // A cut token: every occurrence goes, and the handling ends when nothing remains.
    const auto corta = [&texto](std::string_view token) {
        texto = Apara(Troca(std::move(texto), token, ""));
        return texto.empty();
    };

    if (Contem(texto, Pong) && corta(Pong)) return;
    if (Contem(texto, Ping)) {
        Envia(ws_C, Pong);
        if (corta(Ping)) return;
    }
    if (Pedaco(texto, "#", 1) == "VERIFICA" && AceitaVerifica && RecebeVerifica()) return;
    if (texto == ErroVez) return RecebeErroVez();
    if (texto == ErroVezOK) return RecebeErroVezOK();
    if (Contem(texto, ErroInicio)) return RecebeErroInicio(true);
    if (Contem(texto, ErroInicioOK)) return RecebeErroInicio(false);
    if (Contem(texto, PodeIniciar)) {
        RecebePodeIniciar();
        if (corta(PodeIniciar)) return;
    }
    if (Contem(texto, PodJogar)) {
        G.AceitaClique = true;
        if (corta(PodJogar)) return;
    }
    if (Contem(texto, JogadaOK)) {
        RecebeJOK();
        if (corta(JogadaOK)) return;
    }
    if (Contem(texto, MarcaJogada) && !RecebeJogada(texto)) return;
    if (texto.empty()) return;

    if (Comeca(texto, Nick)) return RecebeNick(Index, texto);
    if (Comeca(texto, Config)) return RecebeConfig(Index, texto);
    if (Pedaco(texto, ":", 1) == ConeCtado) return RecebeConeCtado(Index, texto);
    if (texto == ConectadoOK) return FimDoHandshake(" >2>> EstaConectado: Tipo_c=");
    if (Comeca(texto, Pontos)) {
        // New totals after a report: the service's client shows them.
        Log("GETPT: " + std::to_string(NumeroBrando(Pedaco(texto, ":", 2))) + " " +
            std::to_string(NumeroBrando(Pedaco(texto, ":", 3))));
        if (aoReceberPontos) aoReceberPontos(texto);
        return;
    }
    if (texto == Informa) return RecebeInforma(Index);
    if (Comeca(texto, TMOK)) return RecebeTMOK(true);
    if (Comeca(texto, TMNOTOK)) return RecebeTMOK(false);
    if (Comeca(texto, RestartTimeOut)) return RecebeRestartTimeOut(Index);
    if (texto == Reservado) return;
    if (Comeca(texto, Mensagem)) return RecebeChat(Index, texto);
    if (Pedaco(texto, ":", 1) == Entregar) return RecebeEntregar(Index, texto);
    if (texto == DesisteOK) {
        G.AceitaClique = true;
        return;
    }
    if (texto == fio::PedirEmpate) return RecebePedirEmpate(Index);
    if (texto == EmpateSim) return RecebeEmpateSim(Index);
    if (texto == EmpateNao) return RecebeEmpateNao(Index);
    if (texto == EmpateFimSim) {
        form_.Empatou = true;
        G.AceitaClique = true;
        return;
    }
    if (texto == EmpateFimNao) {
        G.AceitaClique = true;
        form_.Timer2.start();
        return;
    }
    // Anything else is dropped without a word.
}

} // namespace velmora
