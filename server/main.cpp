// velmora-servico: the on-line service of Velmora Ace.
//   velmora-servico [opções]                     serve (web service, relay, port test)
//   velmora-servico banir --nick N | --endereco A [--dias D] [--texto T] [opções]
//   velmora-servico desbanir --nick N | --endereco A [opções]
//   velmora-servico simular [jogadores] [rodadas]  the points rule over a simulated season
#include "server/armazem.h"
#include "server/opcoes.h"
#include "server/rede.h"
#include "server/servico.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <pthread.h>

using namespace velmora::servidor;

namespace {

std::unique_ptr<Armazem> AbreArmazem(const Opcoes& o) {
    if (!o.banco.empty()) return std::make_unique<Armazem>(AbrePostgres(o.banco));
    const auto pasta = o.PastaDados();
    std::filesystem::create_directories(pasta);
    std::filesystem::permissions(pasta, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::replace);
    return std::make_unique<Armazem>(AbreSqlite(pasta / "velmora-servico.db"));
}

std::string Hora() {
    const std::time_t t = std::time(nullptr);
    std::tm tm{};
    gmtime_r(&t, &tm);
    char b[32];
    std::strftime(b, sizeof b, "%Y-%m-%dT%H:%M:%SZ", &tm);
    return b;
}

int Banir(bool banir, std::vector<std::string> args) {
    std::string nick, endereco, texto;
    long dias = 0;
    std::vector<std::string> resto;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const auto proximo = [&]() -> std::string { return i + 1 < args.size() ? args[++i] : ""; };
        if (args[i] == "--nick")
            nick = proximo();
        else if (args[i] == "--endereco-banido")
            endereco = proximo();
        else if (args[i] == "--ip")
            endereco = proximo();
        else if (args[i] == "--dias")
            dias = std::strtol(proximo().c_str(), nullptr, 10);
        else if (args[i] == "--texto")
            texto = proximo();
        else
            resto.push_back(args[i]);
    }
    Opcoes o;
    if (const auto erro = LeOpcoes(o, resto); !erro.empty()) {
        std::cerr << "velmora-servico: " << erro << "\n";
        return 2;
    }
    if (nick.empty() == endereco.empty()) {
        std::cerr << "velmora-servico: informe --nick ou --ip\n";
        return 2;
    }
    auto a = AbreArmazem(o);
    const std::string tipo = nick.empty() ? "endereco" : "nick";
    const std::string alvo = nick.empty() ? endereco : ChaveNick(nick);
    if (!banir) {
        std::cout << (a->Desbane(tipo, alvo) ? "desbanido\n" : "não estava banido\n");
        return 0;
    }
    Banimento b{tipo, alvo,
                dias > 0 ? static_cast<std::int64_t>(std::time(nullptr)) + dias * 86400 : 0,
                TextoLimpo(texto, 200)};
    a->Bane(b);
    std::cout << "banido " << tipo << " " << alvo
              << (dias > 0 ? " por " + std::to_string(dias) + " dias" : " sem prazo") << "\n";
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    try {
        if (!args.empty() && (args[0] == "--ajuda" || args[0] == "--help")) {
            std::cout << "velmora-servico [opções]\n"
                      << AjudaOpcoes()
                      << "velmora-servico banir --nick N | --ip A [--dias D] [--texto T]\n"
                         "velmora-servico desbanir --nick N | --ip A\n"
                         "velmora-servico simular [jogadores] [rodadas]\n";
            return 0;
        }
        if (!args.empty() && (args[0] == "banir" || args[0] == "desbanir"))
            return Banir(args[0] == "banir", {args.begin() + 1, args.end()});
        if (!args.empty() && args[0] == "simular") {
            const int jogadores = args.size() > 1 ? std::atoi(args[1].c_str()) : 300;
            const int rodadas = args.size() > 2 ? std::atoi(args[2].c_str()) : 300;
            for (unsigned semente = 1; semente <= 5; ++semente) {
                const auto r =
                    SimulaTemporada(std::max(10, jogadores), std::max(1, rodadas), semente);
                std::printf(
                    "semente %u: correlação de postos %.3f, medalha do mais forte em %d jogos, "
                    "média %.0f, quintis:",
                    semente, r.correlacaoPosto, r.jogosAteMedalha, r.pontosMedios);
                for (const auto q : r.pontosPorQuintil)
                    std::printf(" %lld", static_cast<long long>(q));
                std::printf("\n");
            }
            return 0;
        }
        Opcoes o;
        if (const auto erro = LeOpcoes(o, args); !erro.empty()) {
            std::cerr << "velmora-servico: " << erro << "\n(--ajuda lista as opções)\n";
            return 2;
        }
        // SIGTERM and SIGINT are taken by sigwait below, in no other thread
        sigset_t sinais;
        sigemptyset(&sinais);
        sigaddset(&sinais, SIGTERM);
        sigaddset(&sinais, SIGINT);
        pthread_sigmask(SIG_BLOCK, &sinais, nullptr);
        std::signal(SIGPIPE, SIG_IGN);

        auto armazem = AbreArmazem(o);
        Servico servico(o, *armazem);
        Servidor servidor(o, servico, [](std::string_view linha) {
            std::cout << Hora() << " " << linha << std::endl;
        });
        servidor.Abre();
        servidor.Inicia();
        std::cout << Hora() << " velmora-servico em http://" << o.endereco << ":"
                  << servidor.PortaWeb() << ", relay em " << o.EnderecoRelay() << ":"
                  << servidor.PortaRelay() << ", banco "
                  << (o.banco.empty() ? (o.PastaDados() / "velmora-servico.db").string()
                                      : "PostgreSQL")
                  << std::endl;
        // Old waiting-list entries and pairs are cleared once an hour
        int sinal = 0;
        for (;;) {
            timespec espera{3600, 0};
            sinal = sigtimedwait(&sinais, nullptr, &espera);
            if (sinal == SIGTERM || sinal == SIGINT) break;
            try {
                armazem->LimpaAntigos(static_cast<std::int64_t>(std::time(nullptr)) - 2 * 86400);
            } catch (const std::exception& e) {
                std::cerr << "velmora-servico: limpeza: " << e.what() << std::endl;
            }
        }
        std::cout << Hora() << " encerrando (sinal " << sinal << ")" << std::endl;
        servidor.Para();
        std::cout << Hora() << " encerrado" << std::endl;
        return 0;
    } catch (const std::exception& e) {
        std::cerr << "velmora-servico: " << e.what() << "\n";
        return 1;
    }
}
