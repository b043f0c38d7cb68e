// The lobby against the fake service and a scripted peer link: the first run to the relay
// and each way it stops, the direct way with the waiting list, the cancel in the middle of
// a wait (no request after it), the block path and the timers.
#include "apoio_sessao.h"
#include "service/cadastro.h"
#include "service/lobby.h"
#include "service/redeservico.h"
#include "store/configuracao.h"

#include <QTimer>

using namespace velmora;
using namespace velmora::teste;

namespace {

class LigacaoFalsa : public LigacaoLobby {
  public:
    Form8* lobby = nullptr;
    std::vector<std::string> notas;
    // What a dial does: by default the relay answers at once; a peer never.
    std::function<void(const std::string&, int)> aoConectar = [this](const std::string&, int) {
        QTimer::singleShot(5, [this] {
            if (lobby && lobby->TentandoServidor) lobby->ConectouServidor();
        });
    };
    bool escuta = true;
    void Lobby(Form8* l) override { lobby = l; }
    void CarregaWS(int k) override { notas.push_back("carrega " + std::to_string(k)); }
    void FechaSockets(int k) override { notas.push_back("descarrega " + std::to_string(k)); }
    void FechaWS(int k) override { notas.push_back("fecha " + std::to_string(k)); }
    void Conecta(const std::string& host, int porta) override {
        notas.push_back("conecta " + host + ":" + std::to_string(porta));
        if (aoConectar) aoConectar(host, porta);
    }
    bool Escuta(int porta) override {
        notas.push_back("escuta " + std::to_string(porta));
        return escuta;
    }
    int PortaEscuta() override { return 2010; }
    std::string EnderecoLocal() override { return "10.9.8.7"; }
    int Conectas() const {
        int n = 0;
        for (const auto& s : notas) n += s.rfind("conecta ", 0) == 0;
        return n;
    }
};

class JanelaFalsa : public JanelaLobby {
  public:
    std::vector<std::string> mensagens, perguntas, avisos, atualizacoes, sons, paginas;
    bool resposta = false;
    int descarregou = 0;
    void Mensagem(const std::string& t) override { mensagens.push_back(t); }
    bool Pergunta(const std::string& t) override {
        perguntas.push_back(t);
        return resposta;
    }
    void Descarrega() override { ++descarregou; }
    void AbreAtualizacao(const std::string& l) override { atualizacoes.push_back(l); }
    void BandejaAviso(const std::string& t, const std::string&) override { avisos.push_back(t); }
    void TocaSom(const std::string& n) override { sons.push_back(n); }
    void AbrePagina(const std::string& u) override { paginas.push_back(u); }
};

const char* const SemConexao = "Não foi possível estabelecer uma conexão.\r\rVerifique se está "
                               "conectado à internet e tente novamente ou tente mais tarde.";

class Lobby : public CopiaComServico {
  protected:
    void SetUp() override {
        CopiaComServico::SetUp();
        porta = std::make_unique<TestePorta>(*online, mod);
        lobby = std::make_unique<Form8>(*form, *online, *porta, ligacao, janela);
        form->ctx.Game.Modo = 4;
        form->ctx.Jogador[1].Nome = "ana";
        lobby->Senha = "1234";
        tabela = {{"tipo=ta", "OK"},
                  {"tipo=Entrar", "Resposta:#ok#1500#42"},
                  {"Acao=Parametros", "R**x**n**a**b**porta:2010**tempo:90**TA:15"},
                  {"Acao=Server", "IPSERVER#127.0.0.1#7000"},
                  {"nvping", "RESP Offline"},
                  {"NomeUsuario=", "**"}};
        Respostas(tabela);
    }
    void TearDown() override {
        lobby.reset();
        CopiaComServico::TearDown();
    }
    void Troca(const std::string& chave, const std::string& corpo) {
        for (auto& [k, v] : tabela)
            if (k == chave) v = corpo;
        Respostas(tabela);
    }
    // The paths asked, by their distinctive part, in order.
    std::vector<std::string> Sequencia() const {
        std::vector<std::string> s;
        for (const auto& p : servico.pedidos)
            for (const auto& [k, v] : tabela)
                if (p.caminho.find(k) != std::string::npos) {
                    if (s.empty() || s.back() != k) s.push_back(k);
                    break;
                }
        return s;
    }
    void Abre() {
        lobby->Form_Load();
        lobby->Form_Activate();
    }

    std::vector<std::pair<std::string, std::string>> tabela;
    LigacaoFalsa ligacao;
    JanelaFalsa janela;
    std::unique_ptr<TestePorta> porta;
    std::unique_ptr<Form8> lobby;
};

} // namespace

TEST(Mascara, NenhumDigitoNaTela) {
    EXPECT_EQ(Form8::Mascara("192.168.0.1:2001"), "???.???.?.?:????");
    EXPECT_EQ(Form8::Mascara("host-a"), "host-a");
}

TEST_F(Lobby, PrimeiraPassagemAteORelay) {
    Abre();
    EXPECT_EQ(Sequencia(), (std::vector<std::string>{"tipo=ta", "tipo=Entrar", "Acao=Parametros",
                                                     "Acao=Server"}));
    EXPECT_TRUE(lobby->NoServidor);
    EXPECT_EQ(lobby->Label4.Texto, "\rCONECTADO AO SERVIDOR  |  Aguardando outro jogador "
                                   "entrar...\r\rPor favor aguarde...");
    EXPECT_EQ(lobby->LbComunica.Texto,
              "O jogo iniciará automaticamente quando outro jogador entrar");
    EXPECT_TRUE(lobby->Timer1.isActive());
    EXPECT_EQ(form->ctx.Game.TempoLimite, 90);
    EXPECT_EQ(lobby->TempoEspera, 15);
    EXPECT_EQ(LeOpcao(form->registro(), "PortaDefault", ""), "2010");
    EXPECT_EQ(lobby->Porta, 2010);
    EXPECT_EQ(form->ctx.Jogador[1].Pontos, 1500);
    EXPECT_EQ(form->ctx.Jogador[1].ID, "42");
    ASSERT_EQ(ligacao.Conectas(), 1);
    EXPECT_NE(std::find(ligacao.notas.begin(), ligacao.notas.end(), "conecta 127.0.0.1:7000"),
              ligacao.notas.end());
    EXPECT_EQ(janela.descarregou, 0);
    // the relay goes away before a game: the lobby closes at the next tick of Timer1
    lobby->FechouServidor();
    EXPECT_TRUE(EsperaAte([&] { return lobby->Descarregado; }, 2000));
    EXPECT_EQ(janela.descarregou, 1);
}

TEST_F(Lobby, AtualizacaoOferecida) {
    lobby->GetUpdate = [] {
        return std::string(
            "!*!Link!*!x!*!3.9.1!*!http://exemplo/instala.exe!*!obrigatorio!*!Nova;versão");
    };
    Abre();
    ASSERT_GE(janela.mensagens.size(), 1u);
    EXPECT_EQ(janela.mensagens[0], "Nova\rversão");
    EXPECT_TRUE(janela.perguntas.empty());
    EXPECT_EQ(janela.atualizacoes, std::vector<std::string>{"http://exemplo/instala.exe"});
    // not compulsory: a question, and "no" goes on without it
    Lobby::TearDown();
    janela = JanelaFalsa();
    lobby = std::make_unique<Form8>(*form, *online, *porta, ligacao, janela);
    lobby->GetUpdate = [] { return std::string("!*!Link!*!x!*!3.9.1!*!http://e/i.exe!*!!*!"); };
    Abre();
    EXPECT_EQ(janela.perguntas,
              std::vector<std::string>{
                  "Está disponível uma atualização do Velmora Ace. Deseja atualizar agora?"});
    EXPECT_TRUE(janela.atualizacoes.empty());
    EXPECT_TRUE(lobby->NoServidor);
}

TEST_F(Lobby, VisitanteEAmigosSemLogin) {
    form->ctx.Jogador[1].Visitante = true;
    Abre();
    EXPECT_EQ(Pedidos("tipo=Entrar"), 0);
    EXPECT_EQ(form->ctx.Jogador[1].Pontos, 1000);
    EXPECT_EQ(form->ctx.Jogador[1].ID, "0");
    EXPECT_TRUE(lobby->NoServidor);
}

TEST_F(Lobby, LoginRecusadoEsqueceONick) {
    GravaCombo(form->registro(), "ana", "1234", true);
    Troca("tipo=Entrar", "Resposta:#NOT");
    Abre();
    EXPECT_EQ(janela.mensagens.back(), "Nick ou senha incorretos.\r\rPor favor informe o Nick e "
                                       "senha novamente ou cadastre um novo nick e senha");
    EXPECT_TRUE(PoeNoCombo(form->registro()).empty());
    EXPECT_TRUE(lobby->Descarregado);
    EXPECT_EQ(Pedidos("Acao=Parametros"), 0);
}

TEST_F(Lobby, ServicoQueNaoRespondeParaNaTela) {
    Troca("tipo=Entrar", "");
    Abre();
    EXPECT_EQ(lobby->Label4.Texto, SemConexao);
    EXPECT_EQ(lobby->Command1.Texto, "Sair");
    EXPECT_FALSE(lobby->Descarregado);
    EXPECT_FALSE(lobby->Timer1.isActive());
    EXPECT_EQ(Pedidos("Acao=Parametros"), 0);
    // "Sair" is the cancel
    lobby->Command1_Click();
    EXPECT_TRUE(lobby->Descarregado);
}

TEST_F(Lobby, ParametrosSemMarcador) {
    Troca("Acao=Parametros", "<html>erro</html>");
    Abre();
    EXPECT_EQ(lobby->Label4.Texto, SemConexao);
    EXPECT_EQ(lobby->Command1.Texto, "Sair");
    EXPECT_EQ(Pedidos("Acao=Server"), 0);
}

TEST_F(Lobby, BanidoNaoEntra) {
    Troca("tipo=ta", "BLOQUEADO:Você foi banido");
    Abre();
    EXPECT_EQ(tela.mensagens, std::vector<std::string>{"Você foi banido"});
    EXPECT_TRUE(lobby->Descarregado);
    EXPECT_EQ(Pedidos("tipo=Entrar"), 0);
}

TEST_F(Lobby, AvisoQueImpede) {
    Troca("Acao=Parametros", "R**x**Notificame:**Manutenção;volte logo**false");
    Abre();
    EXPECT_EQ(janela.mensagens, std::vector<std::string>{"Manutenção\r\nvolte logo"});
    EXPECT_TRUE(lobby->Descarregado);
    EXPECT_EQ(Pedidos("Acao=Server"), 0);
    EXPECT_NE(std::find(ligacao.notas.begin(), ligacao.notas.end(), "descarrega 0"),
              ligacao.notas.end());
}

TEST_F(Lobby, AvisoQueDeixaSeguir) {
    Troca("Acao=Parametros", "R**x**Notificame:**Bem-vindo**true");
    Abre();
    EXPECT_EQ(janela.mensagens, std::vector<std::string>{"Bem-vindo"});
    EXPECT_TRUE(lobby->JaNotificado);
    EXPECT_TRUE(lobby->NoServidor);
}

TEST_F(Lobby, Erro23SemEnderecoDoRelay) {
    Troca("Acao=Server", "nada");
    Abre();
    EXPECT_EQ(janela.mensagens.back(), Erro23);
    EXPECT_EQ(std::string(Erro23).rfind("Erro 23: Não foi possível conectar ao sevidor.\r\r", 0),
              0u);
    EXPECT_TRUE(lobby->Descarregado);
    EXPECT_TRUE(lobby->CancelouLobby);
    EXPECT_EQ(LeOpcao(form->registro(), "Numerodesistencias", ""), "1");
    EXPECT_EQ(lobby->Label4.Texto, "Cancelando \r\rAguarde um momento...");
    EXPECT_EQ(janela.sons, std::vector<std::string>{"Click.wav"});
}

TEST_F(Lobby, Erro21QuandoORelayNaoAtende) {
    ligacao.aoConectar = nullptr;
    const double antes = *tempo.agora;
    Abre();
    EXPECT_EQ(janela.mensagens.back(), Erro21);
    EXPECT_FALSE(lobby->TentandoServidor);
    EXPECT_GE(*tempo.agora - antes, 8.0);
    EXPECT_TRUE(lobby->Descarregado);
}

TEST_F(Lobby, CancelarDuranteUmaEsperaNaoPedeMaisNada) {
    // the session parameters never come: the cancel arrives during that wait
    servico.Responde = [this](const Pedido& p) {
        if (p.caminho.find("Acao=Parametros") != std::string::npos) {
            Resposta r;
            r.silencio = true;
            return r;
        }
        for (const auto& [chave, corpo] : tabela)
            if (p.caminho.find(chave) != std::string::npos) return Resposta{corpo};
        return Resposta{};
    };
    std::size_t pedidosAoCancelar = 0;
    int rodadasDepois = 0;
    online->laco.bomba = [this, &rodadasDepois, passo = online->laco.bomba] {
        passo();
        if (lobby->CancelouLobby) ++rodadasDepois;
    };
    QTimer::singleShot(100, [&] {
        pedidosAoCancelar = servico.pedidos.size();
        lobby->Command1_Click();
    });
    Abre();
    EXPECT_TRUE(lobby->CancelouLobby);
    EXPECT_TRUE(lobby->Descarregado);
    EXPECT_LE(rodadasDepois, 1); // the wait ended within one pass
    EsperaAte([] { return false; }, 300);
    EXPECT_EQ(servico.pedidos.size(), pedidosAoCancelar);
    EXPECT_EQ(Pedidos("Acao=Server"), 0);
}

TEST_F(Lobby, CancelarNaEsperaDaListaNaoPedeMais) {
    Abre();
    QTimer::singleShot(150, [&] { lobby->Command1_Click(); });
    std::size_t depois = 0;
    lobby->Conectar(true); // "**": nobody waiting; it waits its round, and is cancelled
    depois = servico.pedidos.size();
    EXPECT_TRUE(lobby->Descarregado);
    EsperaAte([] { return false; }, 300);
    EXPECT_EQ(servico.pedidos.size(), depois);
    EXPECT_EQ(Pedidos("NomeUsuario="), 1);
    EXPECT_EQ(lobby->Acao, "Deletar");
}

TEST_F(Lobby, CaminhoDiretoDiscaAteJuntar) {
    Troca("NomeUsuario=", "**!!10.9.8.7:2001**!!192.168.1.20:2003**!!203.0.113.5**");
    Abre();
    form->ConexaoAberta = false;
    // the second candidate answers the dial
    ligacao.aoConectar = [this](const std::string& host, int) {
        if (host == "203.0.113.5") QTimer::singleShot(5, [this] { lobby->ConexaoFeita(); });
    };
    lobby->Conectar(true);
    // our own address was skipped; the one without a port takes the default port
    EXPECT_EQ(lobby->List1, (std::vector<std::string>{"192.168.1.20:2003", "203.0.113.5"}));
    EXPECT_NE(std::find(ligacao.notas.begin(), ligacao.notas.end(), "conecta 203.0.113.5:2010"),
              ligacao.notas.end());
    EXPECT_EQ(lobby->Label4.Texto, "Conectado.\r\rEstabelecento parametros");
    EXPECT_EQ(janela.avisos.back(), "Conectado.\r\rEstabelecendo parametros");
    EXPECT_TRUE(lobby->Timer2.isActive());
    EXPECT_EQ(lobby->Timer2.interval(), 20000);
    const auto& u = servico.pedidos.back().caminho;
    EXPECT_NE(u.find("NomeUsuario=ana&prog=Velmora%20Ace&Acao=&nvg=&versao=3.9.0&p=2010&grupo="
                     "&compatibilidade=17"),
              std::string::npos);
    // the handshake ends: Timer5 closes the lobby
    form->ctx.Game.Conectado = true;
    lobby->EstaConectado();
    EXPECT_TRUE(EsperaAte([&] { return lobby->Descarregado; }, 2000));
    EXPECT_FALSE(lobby->Timer2.isActive());
}

TEST_F(Lobby, ListaRecusadaVaziaOuComErro) {
    Abre();
    // "Faltam dados" asks again at once; then an empty reply leaves with the window open
    int n = 0;
    servico.Responde = [&n](const Pedido& p) {
        if (p.caminho.find("NomeUsuario=") == std::string::npos) return Resposta{};
        return Resposta{++n == 1 ? "Faltam dados" : ""};
    };
    lobby->Conectar(true);
    EXPECT_EQ(n, 2);
    EXPECT_FALSE(lobby->Descarregado);
    // any other text: error 22
    servico.Responde = [](const Pedido&) { return Resposta{"<html>502</html>"}; };
    lobby->Conectar(true);
    EXPECT_EQ(lobby->Label4.Texto, "Cancelando \r\rAguarde um momento...");
    EXPECT_EQ(janela.mensagens.back(), Erro22);
    EXPECT_TRUE(lobby->Descarregado);
}

TEST_F(Lobby, AmigosSemNinguemEsperando) {
    form->SenhaGrupo = "segredo";
    Abre();
    QTimer::singleShot(100, [&] { lobby->Label7_Click(); });
    lobby->Conectar(true);
    EXPECT_TRUE(form->ctx.Jogador[1].Visitante);
    EXPECT_TRUE(lobby->PedeVisitante);
    EXPECT_TRUE(lobby->Descarregado);
    const auto& u = servico.pedidos.back().caminho;
    EXPECT_NE(u.find("&grupo=segredo&compatibilidade=17&v=S"), std::string::npos);
}

TEST_F(Lobby, RodadasPedemAtualizar) {
    Abre();
    online->laco = tempo.laco(0.5);
    lobby->TempoEspera = 10;
    int listas = 0;
    servico.Responde = [&](const Pedido& p) {
        if (p.caminho.find("NomeUsuario=") == std::string::npos) return Resposta{};
        if (++listas == 8) QTimer::singleShot(0, [this] { lobby->Command1_Click(); });
        return Resposta{"**"};
    };
    lobby->Conectar(true);
    ASSERT_EQ(listas, 8);
    // the eighth request came after seven empty rounds: "Atualizar" at the seventh
    const auto& ultimo = servico.pedidos.back().caminho;
    EXPECT_NE(ultimo.find("Acao=Atualizar"), std::string::npos);
}

TEST_F(Lobby, PeerBloqueadoVoltaAoCaminhoDireto) {
    Abre();
    lobby->PeerBloqueado("Fulano", 12);
    EXPECT_EQ(lobby->Label4.Texto, "12 : Fulano está na sua lista de bloqueio.");
    EXPECT_EQ(ligacao.notas.back(), "descarrega 0");
    EXPECT_TRUE(lobby->Timer2.isActive());
    EXPECT_EQ(lobby->Timer2.interval(), 2000);
    lobby->PeerBloqueado("beltrano", 0);
    EXPECT_EQ(lobby->Label4.Texto, "beltrano está na sua lista de bloqueio.");
}

TEST_F(Lobby, DeixaNaEsperaTestaAPortaEEscuta) {
    Troca("nvping", "RESP Online");
    lobby->Form_Load();
    lobby->Porta = 0;
    lobby->DeixaNaEspera(PortaLivre());
    EXPECT_EQ(lobby->LbComunica.Texto, "Porta: OK");
    EXPECT_EQ(lobby->PortaConexaoOK, 1);
    EXPECT_EQ(LeOpcao(form->registro(), "mpt", ""), "2010"); // the port WS(1) listens on
    EXPECT_FALSE(lobby->Label2.Visivel);
    // WS(1) can't listen
    ligacao.escuta = false;
    Troca("nvping", "RESP Offline");
    const int outra = PortaLivre();
    lobby->DeixaNaEspera(outra);
    EXPECT_EQ(lobby->LbComunica.Texto, "Não foi possível abrir a porta " + std::to_string(outra));
    EXPECT_TRUE(lobby->Label2.Visivel);
    // nothing while a connection is being made
    form->ConexaoAberta = true;
    const auto n = servico.pedidos.size();
    lobby->DeixaNaEspera(PortaLivre());
    EXPECT_EQ(servico.pedidos.size(), n);
}

TEST_F(Lobby, SessaoAbreOLobbyEPremiaPeloServico) {
    lobby.reset();
    RedeNotas peer;
    RedeComServico rede2(peer, *online);
    form->UsaRede(rede2);
    form->SenhaDigitada = "1234";
    // the relay is reached, a peer joins through it, and the handshake ends
    ligacao.aoConectar = [this](const std::string&, int) {
        QTimer::singleShot(5, [this] {
            ligacao.lobby->ConectouServidor();
            QTimer::singleShot(50, [this] {
                ligacao.lobby->ConexaoFeita();
                form->EstaConectado();
                ligacao.lobby->EstaConectado();
            });
        });
    };
    rede2.Lobby = [&] { return AbreLobbySemTela(*form, *online, *porta, ligacao, janela); };
    const ResultadoLobby r = form->rede().AbreLobby();
    EXPECT_FALSE(r.JogarComoVisitante);
    EXPECT_TRUE(form->ctx.Game.Conectado);
    EXPECT_EQ(ligacao.lobby, nullptr); // the lobby ended
    EXPECT_NE(servico.pedidos[1].caminho.find("senha=1234"), std::string::npos);
    // the session's award reaches the service; the rest goes to the peer link
    Troca("tipo=ta", "OK");
    tabela.push_back({"AtribuiB", "OK#PT1:1600#PT2:900"});
    Respostas(tabela);
    form->ctx.Jogador[1].Vitorias = 1;
    EXPECT_TRUE(form->rede().AtribuiVitoria(1, true));
    EXPECT_EQ(peer.enviadas.back(), "GETPT:1600:900");
    form->rede().EnviaPeer("ola");
    EXPECT_EQ(peer.enviadas.back(), "ola");
}
