// velmora-servico on loopback: requests per second of the bare request line on the
// own-address request (no database: the baseline), the waiting list and the login (argon2id at
// the service's default cost); the relay's message rate over 1000 open pairs and its bulk
// throughput against plain loopback TCP, with the memory the pairs hold.
#include "tests/server/apoio.h"

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace {

using namespace teste;

ServicoVivo& Servico() {
    static ServicoVivo s([](Opcoes& o) {
        o.semLimites = true;
        o.custoSenha = CustoSenha{}; // the real cost
        o.maxRelay = 10000;
        o.maxRelayPorEndereco = 10000;
        o.maxConexoes = 4096;
        o.tempoEsperaRelay = 600;
    });
    return s;
}

std::string Origem(int t) {
    return "127.0.1." + std::to_string(t + 1);
}

void Pedidos(benchmark::State& estado, const std::function<std::string(int, std::int64_t)>& caminho,
             const std::string& marca) {
    auto& s = Servico();
    const int t = estado.thread_index();
    std::int64_t n = 0;
    for (auto _ : estado) {
        const auto r = s.Nua(caminho(t, n++), Origem(t));
        if (r.find(marca) == std::string::npos) estado.SkipWithError(("resposta: " + r).c_str());
    }
    estado.SetItemsProcessed(estado.iterations());
}

void ProprioEndereco(benchmark::State& estado) {
    Pedidos(
        estado, [](int, std::int64_t) { return std::string("/html/getip.php"); }, "Seu IP:");
}

void ListaDeEspera(benchmark::State& estado) {
    Pedidos(
        estado,
        [](int t, std::int64_t) {
            return "/html/listar_velmora.php?NomeUsuario=jogador" + std::to_string(t) +
                   "&prog=Velmora%20Ace&Acao=&nvg=&versao=3.9.0&p=2001&grupo=&compatibilidade=17";
        },
        "**");
}

void Entrada(benchmark::State& estado) {
    auto& s = Servico();
    const int t = estado.thread_index();
    s.Nua("/html/cadastro.php?tipo=Cadastro&nick=medidor" + std::to_string(t) +
              "&senha=abcd1234&programa=Velmora",
          Origem(t));
    Pedidos(
        estado,
        [](int t2, std::int64_t) {
            return "/html/cadastro.php?tipo=Entrar&nick=medidor" + std::to_string(t2) +
                   "&senha=abcd1234&programa=Velmora";
        },
        "Resposta:#OK#");
}

// Bytes in use on the heap (the service runs in this process)
double MemoriaKb() {
    return static_cast<double>(mallinfo2().uordblks) / 1024.0;
}

// 1000 pairs stay open; each iteration sends one 256-byte message through every pair and
// reads it on the other side
void RelayMilPares(benchmark::State& estado) {
    auto& s = Servico();
    const int pares = static_cast<int>(estado.range(0));
    const double antes = MemoriaKb();
    // All first messages go out before any pairing is awaited, so that the relay's short
    // wait on each whole-looking message runs for all of them at once
    std::vector<std::pair<int, int>> v;
    std::vector<std::string> nicksB;
    for (int i = 0; i < pares; ++i) {
        const std::string grupo = "m" + std::to_string(i);
        const int x = Conecta(s.rede->PortaRelay(), Origem(i % 200));
        EnviaTudo(x, "Nick:#0#a" + std::to_string(i) + "#1000#17#VS#Chief#PC#Port#IDT:0#" + grupo +
                         "A#");
        v.emplace_back(x, -1);
        nicksB.push_back("Nick:#0#b" + std::to_string(i) + "#1000#17#VS#Chief#PC#Port#IDT:0#" +
                         grupo + "A#");
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    for (int i = 0; i < pares; ++i) {
        v[static_cast<std::size_t>(i)].second = Conecta(s.rede->PortaRelay(), Origem(i % 200));
        EnviaTudo(v[static_cast<std::size_t>(i)].second, nicksB[static_cast<std::size_t>(i)]);
    }
    for (int i = 0; i < pares; ++i) {
        if (RecebeUma(v[static_cast<std::size_t>(i)].first) !=
            nicksB[static_cast<std::size_t>(i)]) {
            estado.SkipWithError("par não formado");
            return;
        }
    }
    const double depois = MemoriaKb();
    const std::string msg(256, 'j');
    for (auto _ : estado) {
        for (const auto& [x, y] : v) EnviaTudo(x, msg);
        for (const auto& [x, y] : v) {
            std::size_t lidos = 0;
            while (lidos < msg.size()) {
                const auto r = RecebeUma(y);
                if (r.empty()) break;
                lidos += r.size();
            }
        }
    }
    estado.SetItemsProcessed(estado.iterations() * pares);
    estado.SetBytesProcessed(estado.iterations() * pares * static_cast<std::int64_t>(msg.size()));
    estado.counters["pares_abertos"] = static_cast<double>(s.rede->ParesRelay());
    estado.counters["KB_por_par"] = (depois - antes) / pares;
    for (const auto& [x, y] : v) {
        ::close(x);
        ::close(y);
    }
    for (int i = 0; i < 500 && s.rede->ConexoesRelay() > 0; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
}

// Bulk bytes through one pair, and the same over a direct loopback connection
void Vazao(benchmark::State& estado, bool peloRelay) {
    auto& s = Servico();
    int x = -1, y = -1, l = -1;
    if (peloRelay) {
        x = Conecta(s.rede->PortaRelay());
        EnviaTudo(x, "Nick:#0#a#1000#17#VS#Chief#PC#Port#IDT:0#vazaoA#");
        y = Conecta(s.rede->PortaRelay());
        EnviaTudo(y, "Nick:#0#b#1000#17#VS#Chief#PC#Port#IDT:0#vazaoA#");
        RecebeUma(x);
    } else {
        l = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in a{};
        a.sin_family = AF_INET;
        ::inet_pton(AF_INET, "127.0.0.1", &a.sin_addr);
        ::bind(l, reinterpret_cast<sockaddr*>(&a), sizeof a);
        ::listen(l, 1);
        socklen_t t = sizeof a;
        ::getsockname(l, reinterpret_cast<sockaddr*>(&a), &t);
        x = Conecta(ntohs(a.sin_port));
        y = ::accept(l, nullptr, nullptr);
    }
    const std::string bloco(1 << 20, 'v');
    for (auto _ : estado) {
        std::thread envia([&] { EnviaTudo(x, bloco); });
        std::size_t lidos = 0;
        while (lidos < bloco.size()) {
            const auto r = RecebeUma(y);
            if (r.empty()) break;
            lidos += r.size();
        }
        envia.join();
    }
    estado.SetBytesProcessed(estado.iterations() * static_cast<std::int64_t>(bloco.size()));
    ::close(x);
    ::close(y);
    if (l >= 0) ::close(l);
}

} // namespace

BENCHMARK(ProprioEndereco)->Threads(1)->Threads(4)->UseRealTime();
BENCHMARK(ListaDeEspera)->Threads(1)->Threads(4)->UseRealTime();
BENCHMARK(Entrada)->Threads(1)->Threads(4)->UseRealTime();
BENCHMARK(RelayMilPares)->Arg(1000)->Iterations(20)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Vazao, loopback_direto, false)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Vazao, pelo_relay, true)->UseRealTime()->Unit(benchmark::kMillisecond);
