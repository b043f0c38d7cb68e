#include "service/ligacaopeer.h"

#include "peer/fio.h"

namespace velmora {

namespace {
const char* const FimBloqueio = " está na sua lista de bloqueio.";
} // namespace

void LigaServico(ConexaoPeer& peer, ServicoOnline& servico) {
    peer.aoReceberPontos = [&servico](const std::string& m) { servico.RecebeGETPT(m); };
    peer.aoJogandoOnline = [&servico](bool noServidor) { servico.Jogando_Online(noServidor); };
}

LigacaoPeer::~LigacaoPeer() {
    if (lobby_) Lobby(nullptr);
}

void LigacaoPeer::Lobby(Form8* lobby) {
    if (lobby && !lobby_) {
        originais_ = peer_.WS.Eventos;
        lobby_ = lobby;
        Liga();
    } else if (!lobby && lobby_) {
        peer_.WS.Eventos = originais_;
        lobby_ = nullptr;
    }
    peer_.Form8Aberto = lobby_ != nullptr;
    if (lobby_) {
        peer_.CancelouLobby = false;
        peer_.SairLobby = false;
    }
}

void LigacaoPeer::PassaFlags() {
    if (!lobby_) return;
    peer_.TentandoServidor = lobby_->TentandoServidor;
    peer_.NoServidor = lobby_->NoServidor;
    peer_.CancelouLobby = lobby_->CancelouLobby;
}

void LigacaoPeer::DepoisDoEvento(bool estavaConectado) {
    if (!lobby_) return;
    if (peer_.SairLobby && !lobby_->SairLobby) lobby_->FechouServidor();
    const std::string& l4 = peer_.Label4;
    if (l4.size() > std::char_traits<char>::length(FimBloqueio) &&
        l4.compare(l4.size() - std::char_traits<char>::length(FimBloqueio), std::string::npos,
                   FimBloqueio) == 0) {
        peer_.Label4.clear();
        const auto& j2 = form_.ctx.Jogador[2];
        lobby_->PeerBloqueado(j2.Nome, fio::NumeroBrando(j2.IDT));
        return;
    }
    if (!estavaConectado && form_.ctx.Game.Conectado) lobby_->EstaConectado();
}

void LigacaoPeer::Liga() {
    auto& e = peer_.WS.Eventos;
    auto conectado = [this] { return form_.ctx.Game.Conectado; };
    e.Connect = [this, conectado](int i) {
        const bool antes = conectado();
        PassaFlags();
        const bool relay = i == 2 && peer_.TentandoServidor;
        if (originais_.Connect) originais_.Connect(i);
        if (!lobby_) return;
        if (relay)
            lobby_->ConectouServidor();
        else
            lobby_->ConexaoFeita();
        DepoisDoEvento(antes);
    };
    e.ConnectionRequest = [this, conectado](int i, std::int32_t id) {
        const bool antes = conectado();
        PassaFlags();
        if (originais_.ConnectionRequest) originais_.ConnectionRequest(i, id);
        if (lobby_) lobby_->ConexaoFeita();
        DepoisDoEvento(antes);
    };
    e.DataArrival = [this, conectado](int i, std::int32_t n) {
        const bool antes = conectado();
        PassaFlags();
        peer_.Label4.clear();
        if (originais_.DataArrival) originais_.DataArrival(i, n);
        DepoisDoEvento(antes);
    };
    e.CloseSck = [this, conectado](int i) {
        const bool antes = conectado();
        PassaFlags();
        if (originais_.CloseSck) originais_.CloseSck(i);
        if (lobby_ && i == 2 && lobby_->NoServidor && !conectado()) lobby_->FechouServidor();
        DepoisDoEvento(antes);
    };
    e.Error = [this](int i, std::int32_t n, const std::string& d, std::int32_t s,
                     const std::string& f, const std::string& h, std::int32_t c, bool& cancela) {
        PassaFlags();
        if (originais_.Error) originais_.Error(i, n, d, s, f, h, c, cancela);
        if (!lobby_) return;
        if (i == 1)
            lobby_->ErroEscuta();
        else if (i == 2 && lobby_->TentandoServidor && !lobby_->NoServidor)
            // The relay refused the call: nothing will come on WS(2) any more
            peer_.FechaSockets(2);
    };
}

void LigacaoPeer::CarregaWS(int k) {
    PassaFlags();
    if (k == 0) {
        peer_.FechaSockets(0);
        return;
    }
    peer_.FechaSockets(k);
    peer_.WS.Load(k);
}

void LigacaoPeer::FechaSockets(int k) {
    PassaFlags();
    peer_.FechaSockets(k);
}

void LigacaoPeer::FechaWS(int k) {
    PassaFlags();
    if (!peer_.WS.Loaded(k)) return;
    try {
        peer_.WS(k).CloseSck();
    } catch (const ErroSocket&) {
    }
}

void LigacaoPeer::Conecta(const std::string& host, int porta) {
    PassaFlags();
    peer_.WS.Load(2);
    try {
        peer_.WS(2).CloseSck();
        peer_.WS(2).Connect(host, Variante(static_cast<std::int64_t>(porta)));
    } catch (const ErroSocket& e) {
        peer_.UltimoErro = std::to_string(e.Numero) + ": " + e.Descricao;
    }
}

bool LigacaoPeer::Escuta(int porta) {
    PassaFlags();
    peer_.WS.Load(1);
    try {
        peer_.WS(1).CloseSck();
        peer_.WS(1).LocalPort(porta);
        peer_.WS(1).Listen();
    } catch (const ErroSocket& e) {
        peer_.UltimoErro = std::to_string(e.Numero) + ": " + e.Descricao;
        return false;
    }
    for (int i = 0; i < 4; ++i) form_.plataforma.ProcessaEventos();
    return peer_.WS.Loaded(1) && peer_.WS(1).State() == sckListening;
}

int LigacaoPeer::PortaEscuta() {
    if (!peer_.WS.Loaded(1)) return 0;
    try {
        return peer_.WS(1).LocalPort();
    } catch (const ErroSocket&) {
        return 0;
    }
}

std::string LigacaoPeer::EnderecoLocal() {
    try {
        return peer_.WS(0).LocalIP();
    } catch (const ErroSocket&) {
        return {};
    }
}

bool LigacaoPeer::TestaInternet(int ms) {
    return peer_.TestaInternet(ms);
}

} // namespace velmora
