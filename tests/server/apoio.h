#pragma once
// A running velmora-servico on loopback for the tests: its own SQLite folder, free ports,
// cheap password hashes, and small clients that speak as the game does (the bare request
// line, or HTTP), from a chosen loopback address.
#include "core/utilidades.h"
#include "server/armazem.h"
#include "server/opcoes.h"
#include "server/rede.h"
#include "server/servico.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace teste {

using namespace velmora::servidor;
using velmora::Pedaco;

inline std::filesystem::path PastaTemporaria() {
    std::random_device rd;
    auto p = std::filesystem::temp_directory_path() /
             ("velmora-servico-teste-" + std::to_string(::getpid()) + "-" + std::to_string(rd()));
    std::filesystem::create_directories(p);
    return p;
}

// A connected TCP socket from `origem` (a 127.x.y.z address), or -1
inline int Conecta(std::uint16_t porta, const std::string& origem = "127.0.0.1") {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    if (s < 0) return -1;
    sockaddr_in local{};
    local.sin_family = AF_INET;
    ::inet_pton(AF_INET, origem.c_str(), &local.sin_addr);
    if (::bind(s, reinterpret_cast<sockaddr*>(&local), sizeof local) != 0) {
        ::close(s);
        return -1;
    }
    sockaddr_in alvo{};
    alvo.sin_family = AF_INET;
    alvo.sin_port = htons(porta);
    ::inet_pton(AF_INET, "127.0.0.1", &alvo.sin_addr);
    if (::connect(s, reinterpret_cast<sockaddr*>(&alvo), sizeof alvo) != 0) {
        ::close(s);
        return -1;
    }
    const int um = 1;
    ::setsockopt(s, IPPROTO_TCP, TCP_NODELAY, &um, sizeof um);
    return s;
}

inline void EnviaTudo(int s, const std::string& dados) {
    std::size_t feito = 0;
    while (feito < dados.size()) {
        const auto n = ::send(s, dados.data() + feito, dados.size() - feito, MSG_NOSIGNAL);
        if (n <= 0) return;
        feito += static_cast<std::size_t>(n);
    }
}

// One read, waiting up to `ms`; "" on close or time-out
inline std::string RecebeUma(int s, int ms = 3000) {
    pollfd p{s, POLLIN, 0};
    if (::poll(&p, 1, ms) <= 0) return {};
    char buf[65536];
    const auto n = ::recv(s, buf, sizeof buf, 0);
    return n > 0 ? std::string(buf, static_cast<std::size_t>(n)) : std::string{};
}

// Everything until the peer closes (or `ms` pass); `fechou` tells which
inline std::string RecebeAteFechar(int s, bool* fechou = nullptr, int ms = 3000) {
    std::string tudo;
    const auto fim = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    for (;;) {
        const auto resta = std::chrono::duration_cast<std::chrono::milliseconds>(
                               fim - std::chrono::steady_clock::now())
                               .count();
        pollfd p{s, POLLIN, 0};
        if (resta <= 0 || ::poll(&p, 1, static_cast<int>(resta)) <= 0) {
            if (fechou) *fechou = false;
            return tudo;
        }
        char buf[65536];
        const auto n = ::recv(s, buf, sizeof buf, 0);
        if (n <= 0) {
            if (fechou) *fechou = true;
            return tudo;
        }
        tudo.append(buf, static_cast<std::size_t>(n));
    }
}

struct ServicoVivo {
    std::filesystem::path pasta = PastaTemporaria();
    Opcoes opcoes;
    std::unique_ptr<Armazem> armazem;
    std::unique_ptr<Servico> servico;
    std::unique_ptr<velmora::servidor::Servidor> rede;
    std::mutex mutexLog;
    std::vector<std::string> log;
    std::atomic<std::int64_t> agora{1'800'000'000};

    explicit ServicoVivo(const std::function<void(Opcoes&)>& ajusta = {}) {
        opcoes.porta = 0;
        opcoes.portaRelay = 0;
        opcoes.dados = pasta;
        opcoes.custoSenha = {1, 8 * 1024};
        opcoes.tempoSonda = 1.0;
        // With VELMORA_TESTE_PG the same tests run on PostgreSQL, each in a schema of its own
        if (const char* pg = std::getenv("VELMORA_TESTE_PG"); pg && *pg) {
            const std::string esquema = "t" + std::to_string(::getpid()) + "_" + std::to_string(std::random_device{}() % 1000000);
            AbrePostgres(pg)->ExecutaScript("CREATE SCHEMA " + esquema);
            opcoes.banco = std::string(pg) + "?options=-csearch_path%3D" + esquema;
        }
        if (ajusta) ajusta(opcoes);
        if (opcoes.banco.empty())
            armazem = std::make_unique<Armazem>(AbreSqlite(pasta / "t.db"));
        else
            armazem = std::make_unique<Armazem>(AbrePostgres(opcoes.banco));
        servico = std::make_unique<Servico>(opcoes, *armazem);
        servico->Agora = [this] { return agora.load(); };
        rede = std::make_unique<velmora::servidor::Servidor>(opcoes, *servico,
                                                             [this](std::string_view l) {
                                                                 std::lock_guard t(mutexLog);
                                                                 log.emplace_back(l);
                                                             });
        rede->Abre();
        rede->Inicia();
    }
    ~ServicoVivo() {
        rede->Para();
        rede.reset();
        servico.reset();
        armazem.reset();
        std::error_code ec;
        std::filesystem::remove_all(pasta, ec);
    }

    std::string Base() const { return "http://127.0.0.1:" + std::to_string(rede->PortaWeb()); }

    // The game's own minimal fetch: "GET " + whole URL + two CR LF; the first arrival is the
    // whole reply. `inteiro` gets everything sent before the close, to prove it was one piece.
    std::string Nua(const std::string& caminho, const std::string& origem = "127.0.0.1",
                    std::string* inteiro = nullptr) {
        const int s = Conecta(rede->PortaWeb(), origem);
        if (s < 0) return "SEM CONEXAO";
        EnviaTudo(s, "GET " + Base() + caminho + "\r\n\r\n");
        const std::string primeira = RecebeUma(s);
        const std::string resto = RecebeAteFechar(s);
        ::close(s);
        if (inteiro) *inteiro = primeira + resto;
        return primeira;
    }

    struct Http {
        int status = 0;
        std::string cabecalhos;
        std::string corpo;
    };
    Http Get(const std::string& alvo, const std::string& origem = "127.0.0.1",
             const std::string& extra = "") {
        const int s = Conecta(rede->PortaWeb(), origem);
        Http r;
        if (s < 0) return r;
        EnviaTudo(s, "GET " + alvo + " HTTP/1.1\r\nHost: 127.0.0.1\r\nUser-Agent: teste\r\n" +
                         extra + "\r\n");
        const std::string tudo = RecebeAteFechar(s);
        ::close(s);
        const auto fim = tudo.find("\r\n\r\n");
        if (tudo.size() < 12 || fim == std::string::npos) return r;
        r.status = std::atoi(tudo.substr(9, 3).c_str());
        r.cabecalhos = tudo.substr(0, fim);
        r.corpo = tudo.substr(fim + 4);
        return r;
    }

    // Both forms must give the same text; returns it
    std::string Ambas(const std::string& caminho, const std::string& origem = "127.0.0.1") {
        const std::string a = Nua(caminho, origem);
        const std::string b = Get(caminho, origem).corpo;
        return a == b ? a : "DIFERENTES: [" + a + "] [" + b + "]";
    }

    std::string Log() {
        std::lock_guard t(mutexLog);
        std::string s;
        for (const auto& l : log) s += l + "\n";
        return s;
    }
};

} // namespace teste
