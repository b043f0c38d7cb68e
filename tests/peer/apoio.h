#pragma once
// A copy of the game under test with its peer link: a session on a simulated clock, in a
// fresh settings and data folder, whose sockets are never used: what it sends is kept, and
// the test hands it reads as the dispatcher would get them.
#include "net/modsocketmaster.h"
#include "peer/conexaopeer.h"
#include "session/form1.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmora::teste {

class Pasta {
  public:
    Pasta() {
        std::string modelo =
            (std::filesystem::temp_directory_path() / "velmora-peer-XXXXXX").string();
        if (!::mkdtemp(modelo.data())) std::abort();
        caminho = modelo;
        ::setenv("VELMORA_CONFIG", (caminho / "config" / "registro.reg").c_str(), 1);
        ::setenv("VELMORA_DADOS", (caminho / "dados").c_str(), 1);
        ::unsetenv("VELMORA_DEBUG");
    }
    ~Pasta() { std::filesystem::remove_all(caminho); }
    Pasta(const Pasta&) = delete;
    Pasta& operator=(const Pasta&) = delete;
    std::filesystem::path caminho;
};

class TelaTeste : public Tela, public TelaPeer {
  public:
    std::vector<std::string> mensagens, chat, status;
    int dialogos = 0;
    bool respostaEmpate = false;
    std::function<void()> aoPerguntarEmpate;
    SaidaDialogo MostraNovoJogo(FrmNewGame&) override {
        ++dialogos;
        return SaidaDialogo::Cancelar;
    }
    void Mensagem(const std::string& t, const std::string&) override { mensagens.push_back(t); }
    bool Pergunta(const std::string&, const std::string&) override { return false; }
    bool PerguntaEmpate(const std::string&) override {
        if (aoPerguntarEmpate) aoPerguntarEmpate();
        return respostaEmpate;
    }
    void LinhaChat(const std::string& t) override { chat.push_back(t); }
    void Status(const std::string& t) override { status.push_back(t); }
};

class Copia : public ::testing::Test {
  protected:
    Pasta pasta;
    RelogioSimulado relogio;
    TelaTeste tela;
    Form1 form{tela, relogio};
    modSocketMaster mod;
    ConexaoPeer peer{form, mod, &tela};
    std::vector<std::string> enviadas;
    std::vector<std::string> diario;
    std::function<void()> aCadaEvento;
    std::deque<int> previsoes; // what the forecast answers, one a call (then 0)
    int chamadasPrevisao = 0;

    Copia() {
        form.UsaRede(peer);
        peer.semSockets = true;
        peer.aoEnviar = [this](int, const std::string& b) { enviadas.push_back(b); };
        peer.vaiVencer = [this](double) {
            ++chamadasPrevisao;
            if (previsoes.empty()) return 0;
            const int v = previsoes.front();
            previsoes.pop_front();
            return v;
        };
        peer.pingaEndereco = [](const std::string&, int) { return false; };
        form.AoProcessarEventos = [this] {
            if (aCadaEvento) aCadaEvento();
        };
        form.diario().Liga(true);
        form.diario().ouvinte = [this](const std::string& l) { diario.push_back(l); };
        form.Form_Load();
        form.config.TocarSom = false;
    }

    // A copy connected as `tipo` in a game by typed address (or through the service, mode 4),
    // with no game running: Comeca 0 keeps PlayGame from starting one.
    void Conecta(const std::string& tipo, int modo = 5) {
        auto& c = form.ctx;
        c.Game.Modo = modo;
        c.Game.Tipo = "HH";
        c.Tipo_c = tipo;
        c.Jogador[1].Nome = "Ana";
        c.Jogador[2].Nome = "Bia";
        c.Jogador[1].Lingua = "Portugues";
        c.Game.TempoLimite = 60;
        form.EstaConectado();
        peer.Close_Valendo = true; // as the end of the handshake leaves it
        c.Game.Comeca = 0;
        c.Game.Fim = false;
        c.Atual.Vez = tipo == "Cliente" ? 2 : 1; // this copy to move
        c.painel.PicVezDois.Visivel = false;
        enviadas.clear();
    }
    void VezDoPeer() {
        auto& c = form.ctx;
        c.Atual.Vez = static_cast<uint8_t>(3 - c.LadoLocal());
        c.painel.PicVezDois.Visivel = true;
    }
    void Recebe(const std::string& t) { peer.Despacha(1, t); }
    bool Enviou(const std::string& t) const {
        for (const auto& e : enviadas)
            if (e == t) return true;
        return false;
    }
    bool NoDiario(const std::string& parte) const {
        for (const auto& l : diario)
            if (l.find(parte) != std::string::npos) return true;
        return false;
    }
    static std::string Lance(std::initializer_list<int> casas) {
        std::string s;
        for (int c : casas) s += static_cast<char>(c);
        return s;
    }
    static std::string MensagemJogada(const std::string& lance, const std::string& flag = "T") {
        return "(>)JG(>)" + lance + "(>)" + flag + "(>)";
    }
};

} // namespace velmora::teste
