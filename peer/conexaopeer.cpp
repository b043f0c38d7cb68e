// The peer link's sockets: loading, listening, dialling, sending and closing, and the
// wiring of their events to the handlers.
#include "peer/conexaopeer.h"

#include "peer/fio.h"

namespace velmora {

namespace {
constexpr std::int32_t sckAddressInUse = 10048;
} // namespace

ConexaoPeer::ConexaoPeer(Form1& form, modSocketMaster& mod, TelaPeer* tela)
    : WS(mod), WsTeste(mod), WSG(mod), form_(form), mod_(mod), tela_(tela ? tela : &semTela_) {
    vaiVencer = [this](double s) { return form_.motor.VaiVencer(static_cast<float>(s)); };
    LigaEventos();
}

ConexaoPeer::~ConexaoPeer() {
    WS.Eventos = {};
    for (int i : {2, 1}) {
        if (!WS.Loaded(i)) continue;
        try {
            WS(i).CloseSck();
        } catch (const ErroSocket&) {
        }
        WS.Unload(i);
    }
}

void ConexaoPeer::LigaEventos() {
    auto& e = WS.Eventos;
    e.DataArrival = [this](int i, std::int32_t n) { WS_DataArrival(i, n); };
    e.Connect = [this](int i) { WS_Connect(i); };
    e.ConnectionRequest = [this](int i, std::int32_t id) { WS_ConnectionRequest(i, id); };
    e.CloseSck = [this](int i) { WS_CloseSck(i); };
    e.Error = [this](int i, std::int32_t n, const std::string& d, std::int32_t, const std::string&,
                     const std::string&, std::int32_t, bool&) { WS_Error(i, n, d); };
}

void ConexaoPeer::Envia(int Index, std::string_view bytes) {
    if (aoEnviar) aoEnviar(Index, std::string(bytes));
    if (semSockets || !WS.Loaded(Index)) return;
    try {
        WS(Index).SendData(bytes);
    } catch (const ErroSocket&) {
        // A send on a link that has gone is silent.
    }
}

void ConexaoPeer::EnviaPeer(const std::string& texto) {
    Envia(NoServidor ? 2 : ws_C, texto);
}

void ConexaoPeer::Fecha(int Index) {
    if (!WS.Loaded(Index)) return;
    try {
        WS(Index).CloseSck();
    } catch (const ErroSocket&) {
    }
}

void ConexaoPeer::Descarrega(int Index) {
    Fecha(Index);
    WS.Unload(Index);
}

void ConexaoPeer::FechaSockets(int k) {
    if (k == 0 || k == 2) Descarrega(2);
    if (k == 0 || k == 1) Descarrega(1);
}

void ConexaoPeer::FechaSocketEmUso() {
    Fecha(ws_C);
}

void ConexaoPeer::WS_Close() {
    WS_CloseSck(ws_C);
}

void ConexaoPeer::DescarregaSocketEmUso() {
    Descarrega(ws_C);
}

bool ConexaoPeer::SocketConectado() {
    const int i = NoServidor ? 2 : ws_C;
    return WS.Loaded(i) && WS(i).State() == sckConnected;
}

bool ConexaoPeer::AtribuiVitoria(int vencedor, bool terminou) {
    // Games through the service report here; a game by typed address has nothing to report.
    Log("AtribuiVitoria(" + std::to_string(vencedor) + ", " + (terminou ? "True" : "False") + ")");
    return false;
}

void ConexaoPeer::AbreConexaoDireta() {
    if (abreConexaoDireta) abreConexaoDireta();
}

std::string ConexaoPeer::Escuta(int porta) {
    FechaSockets(0);
    WS.Load(1);
    try {
        WS(1).CloseSck();
        WS(1).LocalPort(porta);
        WS(1).Listen();
    } catch (const ErroSocket& e) {
        Descarrega(1);
        return std::to_string(e.Numero) + ": " + e.Descricao;
    }
    if (WS(1).State() != sckListening) {
        // The port couldn't be bound: another program holds it.
        Descarrega(1);
        return std::to_string(sckAddressInUse) + ": " + TextoErroSocket(sckAddressInUse);
    }
    return {};
}

std::string ConexaoPeer::Disca(const std::string& host, int porta) {
    Descarrega(1);
    WS.Load(1);
    try {
        WS(1).Connect(host, Variante(static_cast<std::int64_t>(porta)));
    } catch (const ErroSocket& e) {
        return std::to_string(e.Numero) + ": " + e.Descricao;
    }
    return {};
}

} // namespace velmora
