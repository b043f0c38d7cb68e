// Two copies of velmora-cli meet through a velmora-servico started here on loopback, with
// a fresh database and settings of their own, and play; the service keeps the result.
#include "core/utilidades.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Relogio = std::chrono::steady_clock;

fs::path PastaNova(const std::string& nome) {
    std::random_device rd;
    const auto p =
        fs::temp_directory_path() /
        ("velmora-online-" + nome + "-" + std::to_string(::getpid()) + "-" + std::to_string(rd()));
    fs::create_directories(p);
    return p;
}

std::string LeArquivo(const fs::path& p) {
    std::ifstream f(p, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

// A child process with its standard output in a file; killed when it outlives the test.
class Processo {
  public:
    Processo(const std::string& bin, const std::vector<std::string>& args, const fs::path& saida,
             const std::vector<std::string>& ambiente = {})
        : saida_(saida) {
        pid_ = ::fork();
        if (pid_ == 0) {
            const int fd = ::open(saida.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(fd, 1);
            ::dup2(fd, 2);
            const int nada = ::open("/dev/null", O_RDONLY);
            ::dup2(nada, 0);
            for (const auto& e : ambiente) ::putenv(const_cast<char*>(e.c_str()));
            std::vector<char*> argv;
            std::string b = bin;
            argv.push_back(b.data());
            std::vector<std::string> copia = args;
            for (auto& a : copia) argv.push_back(a.data());
            argv.push_back(nullptr);
            ::execv(b.c_str(), argv.data());
            ::_exit(127);
        }
    }
    ~Processo() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    Processo(const Processo&) = delete;
    Processo& operator=(const Processo&) = delete;

    // The exit status once it ended, or -1 when `limite` passed first.
    int Espera(Relogio::time_point limite) {
        while (pid_ > 0) {
            int st = 0;
            if (::waitpid(pid_, &st, WNOHANG) == pid_) {
                pid_ = -1;
                status_ = WIFEXITED(st) ? WEXITSTATUS(st) : 128 + WTERMSIG(st);
                break;
            }
            if (Relogio::now() >= limite) return -1;
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return status_;
    }
    void Termina() {
        if (pid_ > 0) ::kill(pid_, SIGTERM);
    }
    std::string Saida() const { return LeArquivo(saida_); }

  private:
    pid_t pid_ = -1;
    int status_ = -1;
    fs::path saida_;
};

// The bare request line of the game, against the service's web port.
std::string Pede(int porta, const std::string& caminho) {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in alvo{};
    alvo.sin_family = AF_INET;
    alvo.sin_port = htons(static_cast<std::uint16_t>(porta));
    ::inet_pton(AF_INET, "127.0.0.1", &alvo.sin_addr);
    std::string r;
    if (::connect(s, reinterpret_cast<sockaddr*>(&alvo), sizeof alvo) == 0) {
        const std::string pedido =
            "GET http://127.0.0.1:" + std::to_string(porta) + caminho + "\r\n\r\n";
        (void)::send(s, pedido.data(), pedido.size(), MSG_NOSIGNAL);
        pollfd p{s, POLLIN, 0};
        char buf[4096];
        while (::poll(&p, 1, 3000) > 0) {
            const auto n = ::recv(s, buf, sizeof buf, 0);
            if (n <= 0) break;
            r.append(buf, static_cast<std::size_t>(n));
        }
    }
    ::close(s);
    return r;
}

// A free TCP port on loopback, as the system hands one out.
int PortaLivre() {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in a{};
    a.sin_family = AF_INET;
    ::inet_pton(AF_INET, "127.0.0.1", &a.sin_addr);
    ::bind(s, reinterpret_cast<sockaddr*>(&a), sizeof a);
    socklen_t n = sizeof a;
    ::getsockname(s, reinterpret_cast<sockaddr*>(&a), &n);
    ::close(s);
    return ntohs(a.sin_port);
}

// velmora-servico on free loopback ports with a database of its own.
class Servico {
  public:
    explicit Servico(const std::vector<std::string>& extra = {}) : pasta_(PastaNova("servico")) {
        porta = PortaLivre();
        std::vector<std::string> args = {"--porta", std::to_string(porta), "--porta-relay", "0",
                                         "--dados", pasta_.string(),       "--custo-senha", "1,8"};
        args.insert(args.end(), extra.begin(), extra.end());
        processo_ = std::make_unique<Processo>(VELMORA_SERVICO_BIN, args, pasta_ / "saida.txt");
        const auto limite = Relogio::now() + std::chrono::seconds(10);
        while (Relogio::now() < limite && Pede(porta, "/getip.php").empty())
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    ~Servico() {
        processo_.reset();
        std::error_code ec;
        fs::remove_all(pasta_, ec);
    }
    std::string Endereco() const { return "http://127.0.0.1:" + std::to_string(porta); }
    std::string Cadastra(const std::string& nick, const std::string& senha) {
        return Pede(porta, "/html/cadastro.php?tipo=Cadastro&nick=" + nick + "&senha=" + senha +
                               "&programa=Velmora");
    }
    // The points of a nick as the login reads them; -1 when it is refused.
    long Pontos(const std::string& nick, const std::string& senha) {
        const std::string r = Pede(porta, "/html/cadastro.php?tipo=Entrar&nick=" + nick +
                                              "&senha=" + senha + "&programa=Velmora");
        if (velmora::Pedaco(r, "#", 2) != "OK") return -1;
        return std::atol(velmora::Pedaco(r, "#", 3).c_str());
    }
    void Para() { processo_.reset(); }
    int porta = 0;

  private:
    fs::path pasta_;
    std::unique_ptr<Processo> processo_;
};

bool Tem(const std::string& texto, const std::string& parte) {
    return texto.find(parte) != std::string::npos;
}

Relogio::time_point Em(int segundos) {
    return Relogio::now() + std::chrono::seconds(segundos);
}

// Points as a panel writes them: "(1.016)".
std::string NoPainel(long pontos) {
    std::string d = std::to_string(pontos), r;
    for (std::size_t i = 0; i < d.size(); ++i) {
        if (i > 0 && (d.size() - i) % 3 == 0) r.push_back('.');
        r.push_back(d[i]);
    }
    return "(" + r + ")";
}

// One copy of velmora-cli with its own settings and data folders. `bloqueios` is the copy's
// block list, put into its settings through the program's own import before it starts,
// with a port of its own for the direct way (so that tests running side by side never
// reach each other's copies).
class Copia {
  public:
    Copia(const std::string& endereco, const std::vector<std::string>& args,
          const std::vector<std::string>& bloqueios = {})
        : pasta_(PastaNova("copia")) {
        ambiente_ = {"VELMORA_SERVICO=" + endereco, "VELMORA_DADOS=" + (pasta_ / "dados").string(),
                     "VELMORA_CONFIG=" + (pasta_ / "registro.reg").string(),
                     "QT_QPA_PLATFORM=offscreen"};
        {
            const fs::path arquivo = pasta_ / "ajustes.reg";
            std::ofstream f(arquivo, std::ios::binary);
            f << "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n";
            f << "\"mpt\"=\"" << PortaLivre() << "\"\r\n";
            for (std::size_t k = 0; k < bloqueios.size(); ++k)
                f << "\"block" << k + 1 << "\"=\"" << bloqueios[k] << "\"\r\n";
            f.close();
            Processo importa(VELMORA_CLI, {"configuracao", "importa", arquivo.string()},
                             pasta_ / "importa.txt", ambiente_);
            importado = importa.Espera(Em(10)) == 0;
        }
        std::vector<std::string> todos = {"partida", "--online"};
        todos.insert(todos.end(), args.begin(), args.end());
        processo_ = std::make_unique<Processo>(VELMORA_CLI, todos, pasta_ / "saida.txt", ambiente_);
    }
    ~Copia() {
        processo_.reset();
        std::error_code ec;
        fs::remove_all(pasta_, ec);
    }
    int Espera(Relogio::time_point limite) { return processo_->Espera(limite); }
    std::string Saida() const { return processo_->Saida(); }
    bool importado = true;

  private:
    fs::path pasta_;
    std::vector<std::string> ambiente_;
    std::unique_ptr<Processo> processo_;
};

} // namespace

// Two registered players meet through the relay and play one game to its end; the winner's
// points go up on the service and the loser's stay or go down.
TEST(OnlineLento, DoisJogadoresSeEncontramNoRelayEJogam) {
    Servico servico;
    ASSERT_EQ(servico.Cadastra("ana", "senha1"), "Resposta:#OK");
    ASSERT_EQ(servico.Cadastra("bruno", "senha2"), "Resposta:#OK");
    // the stronger side thinks longer, so that one game ends with a winner
    Copia ana(servico.Endereco(), {"--nome1", "ana", "--senha", "senha1", "--tempo", "0.2",
                                   "--jogos", "1", "--regra", "1"});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    Copia bruno(servico.Endereco(),
                {"--nome1", "bruno", "--senha", "senha2", "--tempo", "0.001", "--jogos", "1"});
    const auto limite = Em(240);
    const int sa = ana.Espera(limite), sb = bruno.Espera(limite);
    const std::string oa = ana.Saida(), ob = bruno.Saida();
    ASSERT_EQ(sa, 0) << oa;
    ASSERT_EQ(sb, 0) << ob;
    // the lobby's status lines, then the game with the other's nick
    EXPECT_TRUE(Tem(oa, "Autenticando")) << oa;
    EXPECT_TRUE(Tem(oa, "CONECTADO AO SERVIDOR")) << oa;
    EXPECT_TRUE(Tem(oa, "com bruno")) << oa;
    EXPECT_TRUE(Tem(ob, "com ana")) << ob;
    const bool anaVenceu = Tem(oa, "Resultado: ana venceu");
    const bool brunoVenceu = Tem(oa, "Resultado: bruno venceu");
    const long pa = servico.Pontos("ana", "senha1"), pb = servico.Pontos("bruno", "senha2");
    if (!anaVenceu && !brunoVenceu) {
        // the weaker side may hold a draw now and then: nobody's points move
        ASSERT_TRUE(Tem(oa, "Resultado: empate")) << oa;
        EXPECT_TRUE(Tem(ob, "Resultado: empate")) << ob;
        EXPECT_EQ(pa, 1000);
        EXPECT_EQ(pb, 1000);
        return;
    }
    // both copies saw the same result
    EXPECT_TRUE(Tem(ob, anaVenceu ? "Resultado: ana venceu" : "Resultado: bruno venceu")) << ob;
    if (anaVenceu) {
        EXPECT_GT(pa, 1000);
        EXPECT_LE(pb, 1000);
    } else {
        EXPECT_GT(pb, 1000);
        EXPECT_LE(pa, 1000);
    }
    // the winner's copy got the new totals from the service and passed them on: both
    // panels show the service's numbers
    for (const std::string* o : {&oa, &ob}) {
        EXPECT_TRUE(Tem(*o, "Pontos de ana: " + NoPainel(pa))) << *o;
        EXPECT_TRUE(Tem(*o, "Pontos de bruno: " + NoPainel(pb))) << *o;
    }
}

// The service for the direct way between copies on one machine: every copy reaches the
// service from 127.0.0.1, which is also the address each copy takes for its own and skips
// in the waiting list; published as 127.0.0.2 (the relay listening there too), the
// service lists each copy under that address, where its port also answers. A short list
// interval keeps the waits short.
const std::vector<std::string> DiretoNaMesmaMaquina = {
    "--intervalo-lista", "10", "--host-publico", "127.0.0.2", "--endereco-relay", "127.0.0.2"};

// Each of the two players meets first, on the relay, a nick of its block list, refuses it,
// and goes the direct way: it listens, puts itself on the waiting list, and one dials the
// other. The blocked copies lose the relay and end without a game; ana and bruno play one
// game to its end, and the winner's points change on the service and on both panels.
TEST(OnlineLento, BloqueadosNoRelayEncontroPeloCaminhoDireto) {
    Servico servico(DiretoNaMesmaMaquina);
    ASSERT_EQ(servico.Cadastra("ana", "senha1"), "Resposta:#OK");
    ASSERT_EQ(servico.Cadastra("bruno", "senha2"), "Resposta:#OK");
    const auto esperaTexto = [](Copia& c, const std::string& parte, int segundos) {
        const auto limite = Em(segundos);
        while (Relogio::now() < limite && !Tem(c.Saida(), parte))
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        return Tem(c.Saida(), parte);
    };
    Copia ana(servico.Endereco(),
              {"--nome1", "ana", "--senha", "senha1", "--tempo", "0.2", "--jogos", "1"}, {"zeca"});
    ASSERT_TRUE(ana.importado);
    ASSERT_TRUE(esperaTexto(ana, "CONECTADO AO SERVIDOR", 20)) << ana.Saida();
    Copia zeca(servico.Endereco(), {"--nome1", "Zeca", "--visitante", "--tempo", "0.001"});
    ASSERT_TRUE(esperaTexto(ana, "Zeca está na sua lista de bloqueio.", 20)) << ana.Saida();
    // the relay drops the refused copy, whose lobby closes by itself
    EXPECT_EQ(zeca.Espera(Em(20)), 1) << zeca.Saida();
    EXPECT_FALSE(Tem(zeca.Saida(), "Conectado como")) << zeca.Saida();

    Copia bruno(servico.Endereco(),
                {"--nome1", "bruno", "--senha", "senha2", "--tempo", "0.001", "--jogos", "1"},
                {"yara"});
    ASSERT_TRUE(esperaTexto(bruno, "CONECTADO AO SERVIDOR", 20)) << bruno.Saida();
    Copia yara(servico.Endereco(), {"--nome1", "yara", "--visitante", "--tempo", "0.001"});
    ASSERT_TRUE(esperaTexto(bruno, "yara está na sua lista de bloqueio.", 20)) << bruno.Saida();
    EXPECT_EQ(yara.Espera(Em(20)), 1) << yara.Saida();

    const auto limite = Em(240);
    const int sa = ana.Espera(limite), sb = bruno.Espera(limite);
    const std::string oa = ana.Saida(), ob = bruno.Saida();
    ASSERT_EQ(sa, 0) << oa << ob;
    ASSERT_EQ(sb, 0) << ob;
    EXPECT_TRUE(Tem(oa, "com bruno")) << oa;
    EXPECT_TRUE(Tem(ob, "com ana")) << ob;
    // the direct way: each listens on its port, which the service's test reaches, and one
    // dials the other's masked address
    EXPECT_TRUE(Tem(oa, "Porta: OK")) << oa;
    EXPECT_TRUE(Tem(ob, "Porta: OK")) << ob;
    EXPECT_TRUE(Tem(oa + ob, "Conectar a: ???.?.?.?")) << oa << ob;
    const bool anaVenceu = Tem(oa, "Resultado: ana venceu");
    const bool brunoVenceu = Tem(oa, "Resultado: bruno venceu");
    const long pa = servico.Pontos("ana", "senha1"), pb = servico.Pontos("bruno", "senha2");
    if (!anaVenceu && !brunoVenceu) {
        ASSERT_TRUE(Tem(oa, "Resultado: empate")) << oa;
        EXPECT_EQ(pa, 1000);
        EXPECT_EQ(pb, 1000);
        return;
    }
    EXPECT_GT(anaVenceu ? pa : pb, 1000);
    EXPECT_LE(anaVenceu ? pb : pa, 1000);
    for (const std::string* o : {&oa, &ob}) {
        EXPECT_TRUE(Tem(*o, "Pontos de ana: " + NoPainel(pa))) << *o;
        EXPECT_TRUE(Tem(*o, "Pontos de bruno: " + NoPainel(pb))) << *o;
    }
}

// A blocked nick is refused on both ways. zeca refuses yara on the relay and goes the
// direct way; ana refuses vera on the relay and goes the direct way too; there the two
// find each other on the waiting list, and ana refuses zeca again. Nobody plays.
TEST(OnlineLento, BloqueioRecusaNoRelayENoCaminhoDireto) {
    Servico servico(DiretoNaMesmaMaquina);
    const auto visitante = [](const std::string& nick) {
        return std::vector<std::string>{"--nome1", nick, "--visitante", "--tempo", "0.001"};
    };
    const auto esperaTexto = [](Copia& c, const std::string& parte, int segundos) {
        const auto limite = Em(segundos);
        while (Relogio::now() < limite && !Tem(c.Saida(), parte))
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        return Tem(c.Saida(), parte);
    };
    Copia zeca(servico.Endereco(), visitante("zeca"), {"yara"});
    ASSERT_TRUE(esperaTexto(zeca, "CONECTADO AO SERVIDOR", 20)) << zeca.Saida();
    {
        Copia yara(servico.Endereco(), visitante("yara"));
        ASSERT_TRUE(esperaTexto(zeca, "yara está na sua lista de bloqueio.", 20)) << zeca.Saida();
    }
    Copia ana(servico.Endereco(), visitante("ana"), {"ID:77", "vera", "zeca"});
    ASSERT_TRUE(ana.importado && zeca.importado);
    ASSERT_TRUE(esperaTexto(ana, "CONECTADO AO SERVIDOR", 20)) << ana.Saida();
    Copia vera(servico.Endereco(), visitante("vera"));
    ASSERT_TRUE(esperaTexto(ana, "vera está na sua lista de bloqueio.", 20)) << ana.Saida();
    // on the direct way: the refusal comes after the copy took its place there
    const auto limite = Em(60);
    std::string oa;
    std::size_t direto = std::string::npos;
    while (Relogio::now() < limite) {
        oa = ana.Saida();
        direto = oa.find("Porta: ");
        if (direto == std::string::npos) direto = oa.find("Não foi possível abrir a porta");
        if (direto != std::string::npos &&
            oa.find("zeca está na sua lista de bloqueio.", direto) != std::string::npos)
            break;
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
    }
    ASSERT_NE(direto, std::string::npos) << oa;
    EXPECT_NE(oa.find("zeca está na sua lista de bloqueio.", direto), std::string::npos) << oa;
    const std::string oz = zeca.Saida();
    EXPECT_TRUE(Tem(oa + oz, "Conectar a: ")) << oa << oz;
    EXPECT_FALSE(Tem(oa, "Conectado como")) << oa;
    EXPECT_FALSE(Tem(oz, "Conectado como")) << oz;
}

// A visitor plays a registered player through the relay. The visitor has no account and
// no panel shows points for it; only the registered player's total may move, as the
// service counts a game against a visitor.
TEST(OnlineLento, VisitanteJogaSemPontos) {
    Servico servico;
    ASSERT_EQ(servico.Cadastra("ana", "senha1"), "Resposta:#OK");
    Copia ana(servico.Endereco(),
              {"--nome1", "ana", "--senha", "senha1", "--tempo", "0.2", "--jogos", "1"});
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    Copia vito(servico.Endereco(),
               {"--nome1", "vito", "--visitante", "--tempo", "0.001", "--jogos", "1"});
    const auto limite = Em(240);
    const int sa = ana.Espera(limite), sv = vito.Espera(limite);
    const std::string oa = ana.Saida(), ov = vito.Saida();
    ASSERT_EQ(sa, 0) << oa;
    ASSERT_EQ(sv, 0) << ov;
    EXPECT_TRUE(Tem(oa, "com vito")) << oa;
    EXPECT_TRUE(Tem(ov, "com ana")) << ov;
    // the visitor logged in to nothing and has no account
    EXPECT_FALSE(Tem(ov, "Nick ou senha")) << ov;
    EXPECT_EQ(servico.Pontos("vito", ""), -1);
    EXPECT_FALSE(Tem(oa + ov, "Pontos de vito")) << oa << ov;
    const long pa = servico.Pontos("ana", "senha1");
    if (Tem(oa, "Resultado: ana venceu")) {
        EXPECT_GT(pa, 1000);
        EXPECT_TRUE(Tem(oa, "Pontos de ana: " + NoPainel(pa))) << oa;
        // the visitor sees the totals when it saw the win; a visitor that left straight
        // after a draw by the counter may be gone before ana's side reached the same end
        if (Tem(ov, "Resultado: ana venceu")) {
            EXPECT_TRUE(Tem(ov, "Pontos de ana: " + NoPainel(pa))) << ov;
        }
    } else {
        // a visitor's win, or a draw, gives nobody anything
        EXPECT_LE(pa, 1000);
    }
}

// A wrong password ends the lobby with its box, and the copy exits without a game.
TEST(Online, SenhaErradaNaoEntraNoLobby) {
    Servico servico;
    ASSERT_EQ(servico.Cadastra("carla", "certa1"), "Resposta:#OK");
    Copia c(servico.Endereco(), {"--nome1", "carla", "--senha", "errada"});
    const int s = c.Espera(Em(20));
    const std::string o = c.Saida();
    EXPECT_EQ(s, 1) << o;
    EXPECT_TRUE(Tem(o, "Nick ou senha incorretos.")) << o;
    EXPECT_FALSE(Tem(o, "CONECTADO AO SERVIDOR")) << o;
}

// With the service down the lobby says it could not connect, and the copy ends by itself.
TEST(Online, ServicoForaDoArNaoPrendeACopia) {
    const int porta = PortaLivre(); // nothing listens there
    Copia c("http://127.0.0.1:" + std::to_string(porta), {"--nome1", "davi", "--senha", "abcd"});
    const int s = c.Espera(Em(40));
    const std::string o = c.Saida();
    EXPECT_EQ(s, 1) << o;
    EXPECT_TRUE(Tem(o, "Não foi possível")) << o;
}

// The service answers but its relay can't be reached (it listens elsewhere than the
// address it names): error box 21 within the lobby's 8 seconds, and the copy ends.
TEST(OnlineLento, RelayInalcancavelDaOErro21) {
    Servico servico({"--host-publico", "127.0.0.3", "--endereco-relay", "127.0.0.2"});
    Copia c(servico.Endereco(), {"--nome1", "eva", "--visitante"});
    const int s = c.Espera(Em(40));
    const std::string o = c.Saida();
    EXPECT_EQ(s, 1) << o;
    EXPECT_TRUE(Tem(o, "Conectando ao servidor.....")) << o;
    EXPECT_TRUE(Tem(o, "[Erro 21: Não foi possível conectar ao sevidor.")) << o;
    EXPECT_FALSE(Tem(o, "CONECTADO AO SERVIDOR")) << o;
}

// Bad arguments are refused before any request.
TEST(Online, ArgumentosRuins) {
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"--senha", "x"},
          {"--nome1", "a#b", "--senha", "x"},
          {"--nome1", "eva"},
          {"--nome1", "eva", "--senha", "x", "--tipo", "Z"}}) {
        Copia c("http://127.0.0.1:1", args);
        EXPECT_EQ(c.Espera(Em(10)), 2) << c.Saida();
    }
}

// Friends with the same group password meet each other through the relay, and not a
// player of another group who waits there first. The copies are ended once they met.
TEST(Online, AmigosSeEncontramEOutroGrupoNao) {
    Servico servico;
    const std::vector<std::string> jogo = {"--tipo", "C", "--tempo", "0.001"};
    auto args = [&jogo](std::vector<std::string> a) {
        a.insert(a.end(), jogo.begin(), jogo.end());
        return a;
    };
    Copia estranho(servico.Endereco(), args({"--nome1", "zeca", "--grupo", "outra"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    Copia lia(servico.Endereco(), args({"--nome1", "lia", "--grupo", "Segredo"}));
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    Copia mel(servico.Endereco(), args({"--nome1", "mel", "--grupo", " segredo"}));
    const auto limite = Em(20);
    std::string ol, om;
    while (Relogio::now() < limite) {
        ol = lia.Saida();
        om = mel.Saida();
        if (Tem(ol, "Conectado como") && Tem(om, "Conectado como")) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    EXPECT_TRUE(Tem(ol, "com mel")) << ol;
    EXPECT_TRUE(Tem(om, "com lia")) << om;
    // friends log in to nobody: no password is asked for
    EXPECT_FALSE(Tem(ol, "Nick ou senha")) << ol;
    const std::string oe = estranho.Saida();
    EXPECT_TRUE(Tem(oe, "CONECTADO AO SERVIDOR")) << oe;
    EXPECT_FALSE(Tem(oe, "Conectado como")) << oe;
}

#ifdef VELMORA_ACE
// The desktop program's windows (board and lobby, without a screen) meet a command-line
// copy through the relay and play one game to its end; the desktop side plays by clicks on
// the board. The service's new totals stand on the desktop's panels and on the other
// copy's.
TEST(OnlineLento, JanelasDoProgramaJogamComALinhaDeComando) {
    Servico servico;
    ASSERT_EQ(servico.Cadastra("ana", "senha1"), "Resposta:#OK");
    ASSERT_EQ(servico.Cadastra("bruno", "senha2"), "Resposta:#OK");
    const fs::path pasta = PastaNova("ace");
    Processo ace(VELMORA_ACE, {}, pasta / "saida.txt",
                 {"VELMORA_SERVICO=" + servico.Endereco(),
                  "VELMORA_DADOS=" + (pasta / "dados").string(),
                  "VELMORA_CONFIG=" + (pasta / "registro.reg").string(),
                  "QT_QPA_PLATFORM=offscreen", "SDL_AUDIODRIVER=dummy",
                  "VELMORA_CAPTURA_REDE=" + pasta.string(), "VELMORA_CAPTURA_PAPEL=online",
                  "VELMORA_CAPTURA_NICK=ana", "VELMORA_CAPTURA_SENHA=senha1"});
    std::this_thread::sleep_for(std::chrono::seconds(2));
    Copia bruno(servico.Endereco(),
                {"--nome1", "bruno", "--senha", "senha2", "--tempo", "0.1", "--jogos", "1"});
    const auto limite = Em(280);
    const int sb = bruno.Espera(limite);
    const int sa = ace.Espera(limite);
    const std::string ob = bruno.Saida();
    ASSERT_EQ(sb, 0) << ob;
    ASSERT_EQ(sa, 0) << ace.Saida();
    EXPECT_TRUE(Tem(ob, "com ana")) << ob;
    EXPECT_TRUE(fs::file_size(pasta / "online-ana.png") > 1000);
    // what the desktop's two panels showed, by name
    std::map<std::string, std::string> painel;
    std::istringstream linhas(LeArquivo(pasta / "online-ana.txt"));
    for (std::string l; std::getline(linhas, l);)
        if (const auto i = l.find('='); i != std::string::npos)
            painel[l.substr(0, i)] = l.substr(i + 1);
    std::map<std::string, std::string> pontosNoPainel;
    for (const char* k : {"1", "2"})
        pontosNoPainel[painel[std::string("LbNome") + k]] = painel[std::string("LbNV") + k];
    ASSERT_EQ(pontosNoPainel.count("ana"), 1u) << LeArquivo(pasta / "online-ana.txt");
    ASSERT_EQ(pontosNoPainel.count("bruno"), 1u) << LeArquivo(pasta / "online-ana.txt");

    const long pa = servico.Pontos("ana", "senha1"), pb = servico.Pontos("bruno", "senha2");
    if (Tem(ob, "Resultado: empate")) {
        EXPECT_EQ(pa, 1000);
        EXPECT_EQ(pb, 1000);
    } else {
        const bool anaVenceu = Tem(ob, "Resultado: ana venceu");
        ASSERT_TRUE(anaVenceu || Tem(ob, "Resultado: bruno venceu")) << ob;
        EXPECT_GT(anaVenceu ? pa : pb, 1000);
        EXPECT_LE(anaVenceu ? pb : pa, 1000);
    }
    EXPECT_EQ(pontosNoPainel["ana"], NoPainel(pa));
    EXPECT_EQ(pontosNoPainel["bruno"], NoPainel(pb));
    EXPECT_TRUE(Tem(ob, "Pontos de ana: " + NoPainel(pa))) << ob;
    EXPECT_TRUE(Tem(ob, "Pontos de bruno: " + NoPainel(pb))) << ob;
    std::error_code ec;
    fs::remove_all(pasta, ec);
}
#endif
