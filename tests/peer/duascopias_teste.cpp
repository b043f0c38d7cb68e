// Two copies of velmora-cli play whole sessions against each other on loopback, one
// listening and one dialling, under each rule set; and the ways a link can't be made.
#include "core/registros.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#ifdef VELMORA_CLI
namespace {

namespace fs = std::filesystem;

// A port that nobody listens on right now.
int PortaLivre() {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(s, reinterpret_cast<sockaddr*>(&sa), sizeof sa);
    socklen_t n = sizeof sa;
    ::getsockname(s, reinterpret_cast<sockaddr*>(&sa), &n);
    ::close(s);
    return ntohs(sa.sin_port);
}

struct Processo {
    pid_t pid = -1;
    fs::path saida;
    int codigo = -1;
    std::string Texto() const {
        std::ifstream f(saida);
        std::stringstream s;
        s << f.rdbuf();
        return s.str();
    }
};

class Pasta {
  public:
    Pasta() {
        std::string m = (fs::temp_directory_path() / "velmora-rede-XXXXXX").string();
        if (!::mkdtemp(m.data())) std::abort();
        caminho = m;
    }
    ~Pasta() { fs::remove_all(caminho); }
    fs::path caminho;
};

// Starts velmora-cli partida with the arguments, in its own settings and data folders.
Processo Inicia(const fs::path& pasta, const std::string& nome, const std::string& argumentos) {
    Processo p;
    fs::create_directories(pasta / nome);
    p.saida = pasta / nome / "saida.txt";
    const std::string comando = "VELMORA_DADOS='" + (pasta / nome).string() + "' VELMORA_CONFIG='" +
                                (pasta / nome / "registro.reg").string() +
                                "' exec " VELMORA_CLI " partida " + argumentos +
                                " < /dev/null > '" + p.saida.string() + "' 2>&1";
    p.pid = ::fork();
    if (p.pid == 0) {
        ::execl("/bin/sh", "sh", "-c", comando.c_str(), static_cast<char*>(nullptr));
        ::_exit(127);
    }
    return p;
}

// Waits for the process at most `segundos`; kills it when it takes longer.
void Aguarda(Processo& p, int segundos) {
    const auto fim = std::chrono::steady_clock::now() + std::chrono::seconds(segundos);
    int estado = 0;
    while (::waitpid(p.pid, &estado, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > fim) {
            ::kill(p.pid, SIGKILL);
            ::waitpid(p.pid, &estado, 0);
            p.codigo = -1;
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    p.codigo = WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

int Conta(const std::string& texto, const std::string& parte) {
    int n = 0;
    for (size_t p = texto.find(parte); p != std::string::npos; p = texto.find(parte, p + 1)) ++n;
    return n;
}

// One session of `jogos` games between a listening and a dialling copy under `regra`.
void Sessao(int regra, int jogos, const std::string& ip) {
    Pasta pasta;
    const int porta = PortaLivre();
    const std::string comum = " --tipo C --tempo 0.02 --jogos " + std::to_string(jogos);
    Processo s = Inicia(pasta.caminho, "s",
                        "--rede escuta --porta " + std::to_string(porta) + " --regra " +
                            std::to_string(regra) + " --nome1 Sérvio" + comum);
    // the listening copy says so before the other dials (at most 20 s on a loaded machine)
    for (int i = 0; i < 200 && s.Texto().find("Aguardando conexão") == std::string::npos; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    Processo c = Inicia(pasta.caminho, "c",
                        "--rede " + ip + ":" + std::to_string(porta) + " --nome1 Clía" + comum);
    Aguarda(c, 240);
    Aguarda(s, 20);
    const std::string ts = s.Texto(), tc = c.Texto();
    ASSERT_EQ(s.codigo, 0) << ts;
    ASSERT_EQ(c.codigo, 0) << tc;
    // Both see the other's accented name, the creator's rule, and the same results.
    EXPECT_NE(ts.find("Conectado como Servidor com Clía"), std::string::npos) << ts;
    EXPECT_NE(tc.find("Conectado como Cliente com Sérvio, regra: " +
                      std::string(velmora::NomeRegra(regra))),
              std::string::npos)
        << tc;
    EXPECT_GE(Conta(ts, "Resultado: "), jogos) << ts;
    EXPECT_GE(Conta(tc, "Resultado: "), jogos) << tc;
    // The scores agree, each seen from its own side.
    const auto placar = [](const std::string& t) {
        const size_t p = t.rfind("Placar: ");
        return p == std::string::npos ? std::string() : t.substr(p, t.find('\n', p) - p);
    };
    const std::string ps = placar(ts), pc = placar(tc);
    ASSERT_FALSE(ps.empty());
    ASSERT_FALSE(pc.empty());
    const auto numeros = [](const std::string& p) {
        std::istringstream in(p);
        std::string rotulo, nome, vezes;
        int a = -1, b = -1;
        in >> rotulo >> nome >> a >> vezes >> b;
        return std::pair{a, b};
    };
    const auto [a, b] = numeros(ps);
    const auto [x, y] = numeros(pc);
    EXPECT_EQ(a, y) << ps << " / " << pc;
    EXPECT_EQ(b, x) << ps << " / " << pc;
    EXPECT_GE(a + b, 0);
}

TEST(DuasCopiasLento, PartidasInteirasEmCadaRegraEDoisJogos) {
    // Four sessions at once: each rule set once, the last of two games, so that the
    // starter alternates and the later start needs no wait.
    std::thread t1([] { Sessao(1, 1, "127.0.0.1"); });
    std::thread t2([] { Sessao(2, 1, "127.0.0.2"); });
    std::thread t3([] { Sessao(3, 1, "127.0.0.3"); });
    Sessao(4, 2, "127.0.0.1");
    t1.join();
    t2.join();
    t3.join();
}

TEST(DuasCopias, PortaOcupadaEnderecoInalcancavelEArgumentos) {
    Pasta pasta;
    // A port already taken.
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_addr.s_addr = htonl(INADDR_ANY);
    ASSERT_EQ(::bind(s, reinterpret_cast<sockaddr*>(&sa), sizeof sa), 0);
    ASSERT_EQ(::listen(s, 1), 0);
    socklen_t n = sizeof sa;
    ::getsockname(s, reinterpret_cast<sockaddr*>(&sa), &n);
    const int ocupada = ntohs(sa.sin_port);
    Processo p =
        Inicia(pasta.caminho, "ocupada", "--rede escuta --porta " + std::to_string(ocupada));
    Aguarda(p, 20);
    EXPECT_EQ(p.codigo, 1);
    EXPECT_NE(p.Texto().find("Address"), std::string::npos) << p.Texto();
    ::close(s);
    // Nobody listens there.
    Processo q =
        Inicia(pasta.caminho, "recusada", "--rede 127.0.0.1:" + std::to_string(PortaLivre()));
    Aguarda(q, 20);
    EXPECT_EQ(q.codigo, 1);
    EXPECT_NE(q.Texto().find("10061"), std::string::npos) << q.Texto();
    // Bad arguments.
    for (const char* ruim :
         {"--rede", "--rede escuta --porta 0", "--rede host:abc", "--rede escuta --tipo X",
          "--rede escuta --regra 5", "--rede escuta --jogos 0", "--rede escuta --nome1 a#b"}) {
        Processo r = Inicia(pasta.caminho, "args", ruim);
        Aguarda(r, 20);
        EXPECT_EQ(r.codigo, 2) << ruim;
    }
}

} // namespace
#endif
