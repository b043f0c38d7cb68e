#pragma once
// The session under test: a Form1 in a fresh temporary folder, with a scripted screen, a
// scripted peer, a scripted computer player, a clock that moves only when the game waits,
// and a player that clicks the first legal move of each human turn.
#include "session/form1.h"

#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTimer>

#include <cstdlib>
#include <deque>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace velmora::teste {

struct RespostaDialogo {
    SaidaDialogo saida = SaidaDialogo::Sair;
    CamposNovoJogo campos{};
};

class TelaRoteiro : public Tela {
  public:
    std::deque<RespostaDialogo> dialogos; // none left: "Sair"
    std::vector<std::string> rotulos;     // the cancel label at each opening
    std::function<void()> aoAbrirDialogo;
    std::function<void()> depoisDoDialogo;
    std::vector<std::string> mensagens, perguntas, titulos, musicas;
    std::deque<bool> respostas; // none left: No
    std::vector<std::pair<int, int>> recordes;
    int fechaMusica = 0, restaurou = 0, ajustes = 0;
    bool cheia = false, encerrou = false, janela = false;

    SaidaDialogo MostraNovoJogo(FrmNewGame& d) override {
        rotulos.push_back(d.Label2);
        if (aoAbrirDialogo) aoAbrirDialogo();
        if (depoisDoDialogo) QTimer::singleShot(0, depoisDoDialogo);
        while (!dialogos.empty()) {
            RespostaDialogo r = dialogos.front();
            dialogos.pop_front();
            if (r.saida != SaidaDialogo::Jogar || d.JOGAR(r.campos)) return r.saida;
        }
        return SaidaDialogo::Sair;
    }
    std::function<void(const std::string&)> aoMensagem;
    void Mensagem(const std::string& t, const std::string&) override {
        mensagens.push_back(t);
        if (aoMensagem) aoMensagem(t);
    }
    bool Pergunta(const std::string& t, const std::string& titulo) override {
        perguntas.push_back(t);
        titulos.push_back(titulo);
        const bool r = !respostas.empty() && respostas.front();
        if (!respostas.empty()) respostas.pop_front();
        return r;
    }
    void MostraRecordes(int nivel, int posicao) override { recordes.emplace_back(nivel, posicao); }
    void TocaMusica(const std::string& n) override { musicas.push_back(n); }
    void FechaMusica() override { ++fechaMusica; }
    bool TelaCheia() override { return cheia; }
    void RestauraTela() override {
        ++restaurou;
        cheia = false;
    }
    void AjustaEscala() override { ++ajustes; }
    void AjustaEscalaSplash() override { ++ajustes; }
    void MostraJanela() override { janela = true; }
    void EncerraPrograma() override { encerrou = true; }
};

class RedeRoteiro : public Rede {
  public:
    std::vector<std::string> enviadas;
    std::vector<std::pair<int, bool>> atribuicoes;
    std::function<void()> aoAtribuir; // runs inside AtribuiVitoria (a slow report)
    int fechou = 0, ws_close = 0;
    void EnviaPeer(const std::string& t) override { enviadas.push_back(t); }
    bool AtribuiVitoria(int v, bool terminou) override {
        atribuicoes.emplace_back(v, terminou);
        if (aoAtribuir) aoAtribuir();
        return true;
    }
    void FechaSocketEmUso() override { ++fechou; }
    void WS_Close() override { ++ws_close; }
};

// The computer's turn, scripted: it "thinks" for a while, pumping, then plays its first
// listed move, resigns (1) or claims the win (2).
class PensadorRoteiro : public Pensador {
  public:
    explicit PensadorRoteiro(Form1& f) : f_(f) {}
    std::function<int(int chamada)> decisao = [](int) { return 0; };
    std::function<void(int passo)> aoPensar;
    double segundos = 2;
    int chamadas = 0;
    bool ativo = false;

    uint8_t PensaJogada() override {
        Contexto& c = f_.ctx;
        ++chamadas;
        ativo = true;
        for (int k = 0; k < 10; ++k) {
            if (aoPensar) aoPensar(k);
            c.plataforma.ProcessaEventos();
            c.plataforma.Dorme(segundos * 100);
        }
        ativo = false;
        const int d = decisao(chamadas);
        if (d != 0) {
            c.Game.Fim = true;
            return static_cast<uint8_t>(d);
        }
        c.Atual.IniLista = 1;
        c.gerador().ListaHumano(c.Atual);
        c.FazJogadaNaTela(Jogada(c.gerador().Slot(1)));
        c.Atual.Vez = static_cast<uint8_t>(3 - c.Atual.Vez);
        c.GravaHistorico(c.Atual.Vez, false);
        return 0;
    }

  private:
    Form1& f_;
};

// Clicks, square by square, the first listed move of each human turn. A click is taken
// when the turn has written lbMsg or cut TextoClicado; a marker in lbMsg tells.
class JogadorRoteiro {
  public:
    explicit JogadorRoteiro(Form1& f) : f_(f) {}
    bool ativo = true;

    void operator()() {
        Contexto& c = f_.ctx;
        if (!ativo || !c.EsperaClique()) return;
        if (aguardando_ && c.painel.lbMsg.Texto == Marca && c.TextoClicado.size() >= tamanho_)
            return;
        aguardando_ = false;
        if (c.TextoClicado.empty()) {
            alvo_ = c.gerador().Slot(c.Atual.IniLista);
            k_ = 0;
        }
        const int i = k_ == 0 ? 0 : 1 + 3 * (k_ - 1);
        if (i >= alvo_.tam) return;
        c.painel.lbMsg.Texto = Marca;
        aguardando_ = true;
        ++k_;
        f_.imgpd_MouseDown(alvo_[i]);
        tamanho_ = c.TextoClicado.size();
    }

  private:
    static constexpr const char* Marca = "\x01";
    Form1& f_;
    Jogada alvo_;
    int k_ = 0;
    bool aguardando_ = false;
    size_t tamanho_ = 0;
};

// A fresh temporary folder for the settings and the data files.
class Pasta {
  public:
    Pasta() {
        std::string modelo =
            (std::filesystem::temp_directory_path() / "velmora-sessao-XXXXXX").string();
        if (!::mkdtemp(modelo.data())) std::abort();
        caminho = modelo;
        ::setenv("VELMORA_CONFIG", (caminho / "config" / "registro.reg").c_str(), 1);
        ::setenv("VELMORA_DADOS", (caminho / "dados").c_str(), 1);
        ::unsetenv("VELMORA_DEBUG");
    }
    ~Pasta() { std::filesystem::remove_all(caminho); }
    std::filesystem::path caminho;
};

class Sessao : public ::testing::Test {
  protected:
    Pasta pasta;
    RelogioSimulado relogio;
    TelaRoteiro tela;
    RedeRoteiro rede;
    Form1 form{tela, relogio};
    PensadorRoteiro cpu{form};
    JogadorRoteiro humano{form};
    std::function<void()> aCadaEvento;
    std::vector<std::string> diario; // the PlayGame lines of the debug log

    Sessao() {
        form.UsaRede(rede);
        form.UsaPensador(&cpu);
        form.AoProcessarEventos = [this] {
            humano();
            if (aCadaEvento) aCadaEvento();
        };
        form.diario().Liga(true);
        form.diario().ouvinte = [this](const std::string& l) {
            if (l.find(" Play") != std::string::npos) diario.push_back(l.substr(10));
        };
        form.Form_Load();
    }

    // Runs `inicio` from inside a running event loop until the program has ended. A
    // scenario that outlives `limite` real seconds fails and is ended.
    void Roda(const std::function<void()>& inicio, int limite = 30) {
        QEventLoop laco;
        bool estourou = false;
        QTimer vigia, prazo;
        QObject::connect(&vigia, &QTimer::timeout, &laco, [&] {
            if (form.Encerrado()) laco.quit();
        });
        QObject::connect(&prazo, &QTimer::timeout, &laco, [&] {
            estourou = true;
            form.EncerraPrograma();
        });
        vigia.start(5);
        prazo.setSingleShot(true);
        prazo.start(limite * 1000);
        QTimer::singleShot(0, &laco, inicio);
        laco.exec();
        EXPECT_FALSE(estourou) << "the scenario did not end";
    }

    // A game started without the dialog, as the headless program does.
    void Comeca(int modo, int comeca) {
        form.InicioSemTela({.Modo = modo, .Comeca = comeca, .Nome1 = "Ana", .Nivel2 = 3});
    }

    // No two inner loops of PlayGame ever ran at once: each "Entrei" is closed by "Saí",
    // or by "Saindo" when the loop left straight from a turn.
    void LacosNuncaSobrepostos() {
        int dentro = 0;
        bool saiu = false;
        for (const auto& l : diario) {
            if (l.find("Entrei") != std::string::npos) ++dentro;
            if (l.find("Saí no") != std::string::npos ||
                (l.find("Saindo") != std::string::npos && !saiu))
                --dentro;
            saiu = l.find("Saí no") != std::string::npos;
            ASSERT_LE(dentro, 1) << "two loops of PlayGame at once";
            ASSERT_GE(dentro, 0);
        }
    }
};

inline CamposNovoJogo Aba(int aba) {
    CamposNovoJogo c;
    c.Aba = aba;
    return c;
}

} // namespace velmora::teste
