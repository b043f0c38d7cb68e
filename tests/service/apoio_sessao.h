#pragma once
// A running copy for the service's tests: a Form1 over a fresh temporary folder, with a
// screen that notes its boxes, a peer link that notes what is sent, the real fetches
// against a fake service, and a clock that moves with the pump.
#include "apoio.h"
#include "net/bomba.h"
#include "net/modsocketmaster.h"
#include "service/online.h"
#include "session/form1.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace velmora::teste {

class PastaTemporaria {
  public:
    PastaTemporaria() {
        std::string modelo =
            (std::filesystem::temp_directory_path() / "velmora-servico-XXXXXX").string();
        if (!::mkdtemp(modelo.data())) std::abort();
        caminho = modelo;
        ::setenv("VELMORA_CONFIG", (caminho / "config" / "registro.reg").c_str(), 1);
        ::setenv("VELMORA_DADOS", (caminho / "dados").c_str(), 1);
        ::unsetenv("VELMORA_DEBUG");
        ::unsetenv("VELMORA_SERVICO");
        ::unsetenv("VELMORA_TESTEPORTA");
    }
    ~PastaTemporaria() {
        std::error_code ec;
        std::filesystem::remove_all(caminho, ec);
    }
    std::filesystem::path caminho;
};

class TelaNotas : public Tela {
  public:
    std::vector<std::string> mensagens;
    SaidaDialogo MostraNovoJogo(FrmNewGame&) override { return SaidaDialogo::Sair; }
    void Mensagem(const std::string& t, const std::string&) override { mensagens.push_back(t); }
    bool Pergunta(const std::string&, const std::string&) override { return false; }
};

class RedeNotas : public Rede {
  public:
    std::vector<std::string> enviadas;
    void EnviaPeer(const std::string& t) override { enviadas.push_back(t); }
};

// A clock that moves `passo` seconds at each pump, and pumps for real.
struct RelogioDoLaco {
    std::shared_ptr<double> agora = std::make_shared<double>(1000.0);
    Laco laco(double passo = 0.05) const {
        Laco l;
        auto a = agora;
        l.relogio = [a] { return *a; };
        l.bomba = [a, passo] {
            BombaPadrao();
            *a += passo;
        };
        return l;
    }
};

// The copy, the fake service and the client of the service on it.
class CopiaComServico : public ::testing::Test {
  protected:
    void SetUp() override {
        ::setenv("VELMORA_SERVICO", servico.Endereco().c_str(), 1);
        form = std::make_unique<Form1>(tela, relogio);
        form->UsaRede(rede);
        laco = tempo.laco();
        buscas = std::make_unique<BuscasReais>(wsg, laco);
        online = std::make_unique<ServicoOnline>(*form, *buscas);
        online->laco = laco;
        online->Hoje = [this] { return hoje; };
        online->AbrePagina = [this](const std::string& u) { paginas.push_back(u); };
    }
    void TearDown() override { ::unsetenv("VELMORA_SERVICO"); }

    // The fake service answers by path: the first entry whose key the request holds.
    void Respostas(std::vector<std::pair<std::string, std::string>> tabela) {
        servico.Responde = [tabela](const Pedido& p) {
            for (const auto& [chave, corpo] : tabela)
                if (p.caminho.find(chave) != std::string::npos) return Resposta{corpo};
            return Resposta{};
        };
    }
    int Pedidos(const std::string& parte) const {
        int n = 0;
        for (const auto& p : servico.pedidos)
            if (p.caminho.find(parte) != std::string::npos) ++n;
        return n;
    }

    PastaTemporaria pasta;
    ServicoFalso servico;
    TelaNotas tela;
    RelogioReal relogio;
    RedeNotas rede;
    std::unique_ptr<Form1> form;
    RelogioDoLaco tempo;
    Laco laco;
    modSocketMaster mod;
    ClienteGetConteudo wsg{mod};
    std::unique_ptr<BuscasReais> buscas;
    std::unique_ptr<ServicoOnline> online;
    std::string hoje = "23/11/2026";
    std::vector<std::string> paginas;
};

} // namespace velmora::teste
