// The program itself: it starts with its options, serves, ends cleanly on SIGTERM, and what
// it stored is there on the next start.
#include "apoio.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <sys/wait.h>

using namespace teste;

namespace {

struct Processo {
    pid_t pid = -1;
    FILE* saida = nullptr;
    std::uint16_t porta = 0;

    explicit Processo(const std::vector<std::string>& args) {
        int canos[2];
        if (::pipe(canos) != 0) return;
        pid = ::fork();
        if (pid == 0) {
            ::dup2(canos[1], 1);
            ::close(canos[0]);
            std::vector<char*> argv;
            std::string bin = VELMORA_SERVICO_BIN;
            argv.push_back(bin.data());
            std::vector<std::string> copia = args;
            for (auto& a : copia) argv.push_back(a.data());
            argv.push_back(nullptr);
            ::execv(bin.c_str(), argv.data());
            ::_exit(127);
        }
        ::close(canos[1]);
        saida = ::fdopen(canos[0], "r");
        // The first line names the address it serves on
        char linha[512] = {};
        if (saida && std::fgets(linha, sizeof linha, saida)) {
            const std::string l = linha;
            const auto p = l.find("http://127.0.0.1:");
            if (p != std::string::npos)
                porta = static_cast<std::uint16_t>(std::atoi(l.c_str() + p + 17));
        }
    }
    // SIGTERM; the exit status, or -1 if it didn't end within 5 s
    int Termina() {
        ::kill(pid, SIGTERM);
        for (int i = 0; i < 500; ++i) {
            int st = 0;
            if (::waitpid(pid, &st, WNOHANG) == pid) {
                pid = -1;
                return WIFEXITED(st) ? WEXITSTATUS(st) : 128 + WTERMSIG(st);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return -1;
    }
    ~Processo() {
        if (pid > 0) {
            ::kill(pid, SIGKILL);
            ::waitpid(pid, nullptr, 0);
        }
        if (saida) std::fclose(saida);
    }
};

std::string PedidoNu(std::uint16_t porta, const std::string& caminho) {
    const int s = Conecta(porta);
    EnviaTudo(s, "GET http://127.0.0.1:" + std::to_string(porta) + caminho + "\r\n\r\n");
    const auto r = RecebeUma(s);
    ::close(s);
    return r;
}

} // namespace

TEST(Processo, SigtermEncerraSemPerderOQueFoiGravado) {
    const auto pasta = PastaTemporaria();
    const std::vector<std::string> args = {
        "--porta", "0", "--porta-relay", "0", "--dados", pasta.string(), "--custo-senha", "1,8"};
    {
        Processo p(args);
        ASSERT_GT(p.porta, 0);
        EXPECT_EQ(
            PedidoNu(p.porta,
                     "/html/cadastro.php?tipo=Cadastro&nick=persiste&senha=abcd&programa=Velmora"),
            "Resposta:#OK");
        EXPECT_EQ(p.Termina(), 0);
    }
    EXPECT_TRUE(std::filesystem::exists(pasta / "velmora-servico.db"));
    {
        Processo p(args);
        ASSERT_GT(p.porta, 0);
        EXPECT_EQ(
            Pedaco(PedidoNu(
                       p.porta,
                       "/html/cadastro.php?tipo=Entrar&nick=persiste&senha=abcd&programa=Velmora"),
                   "#", 3),
            "1000");
        EXPECT_EQ(p.Termina(), 0);
    }
    // A bad option is refused with a message, not served
    Processo ruim({"--porta", "banana"});
    EXPECT_EQ(ruim.porta, 0);
    std::filesystem::remove_all(pasta);
}
