#include "server/opcoes.h"

#include <cctype>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <map>

namespace velmora::servidor {

std::string Opcoes::HostPublico() const {
    if (!hostPublico.empty()) return hostPublico;
    if (endereco == "0.0.0.0" || endereco == "::") return "127.0.0.1";
    return endereco;
}

std::string Opcoes::UrlPublica() const {
    return "http://" + HostPublico() + (porta == 80 ? "" : ":" + std::to_string(porta));
}

std::filesystem::path Opcoes::PastaDados() const {
    if (!dados.empty()) return dados;
    if (const char* x = std::getenv("XDG_DATA_HOME"); x && *x)
        return std::filesystem::path(x) / "velmora-servico";
    if (const char* h = std::getenv("HOME"); h && *h)
        return std::filesystem::path(h) / ".local/share/velmora-servico";
    return "velmora-servico";
}

namespace {

using Aplica = std::function<bool(Opcoes&, const std::string&)>;

template <class T> bool Numero(const std::string& s, T& destino, T minimo, T maximo) {
    T n{};
    const auto [p, ec] = std::from_chars(s.data(), s.data() + s.size(), n);
    if (ec != std::errc{} || p != s.data() + s.size() || n < minimo || n > maximo) return false;
    destino = n;
    return true;
}

bool Real(const std::string& s, double& d, double minimo, double maximo) {
    char* fim = nullptr;
    const double v = std::strtod(s.c_str(), &fim);
    if (s.empty() || *fim != '\0' || !(v >= minimo && v <= maximo)) return false;
    d = v;
    return true;
}

bool Booleano(const std::string& s, bool& b) {
    if (s == "1" || s == "sim" || s == "true" || s == "s")
        b = true;
    else if (s == "0" || s == "nao" || s == "não" || s == "false" || s == "n")
        b = false;
    else
        return false;
    return true;
}

struct Item {
    const char* ajuda;
    Aplica aplica;
    bool semValor = false;
};

const std::map<std::string, Item>& Tabela() {
    static const std::map<std::string, Item> t = {
        {"endereco",
         {"endereço do serviço web (127.0.0.1)",
          [](Opcoes& o, const std::string& v) {
              o.endereco = v;
              return !v.empty();
          }}},
        {"porta",
         {"porta do serviço web (8080)",
          [](Opcoes& o, const std::string& v) {
              return Numero<std::uint16_t>(v, o.porta, 0, 65535);
          }}},
        {"endereco-relay",
         {"endereço do relay (o do serviço)",
          [](Opcoes& o, const std::string& v) {
              o.enderecoRelay = v;
              return true;
          }}},
        {"porta-relay",
         {"porta do relay (8081)",
          [](Opcoes& o, const std::string& v) {
              return Numero<std::uint16_t>(v, o.portaRelay, 0, 65535);
          }}},
        {"host-publico",
         {"nome do host que as respostas indicam",
          [](Opcoes& o, const std::string& v) {
              o.hostPublico = v;
              return true;
          }}},
        {"dados",
         {"pasta do banco SQLite ($XDG_DATA_HOME/velmora-servico)",
          [](Opcoes& o, const std::string& v) {
              o.dados = v;
              return !v.empty();
          }}},
        {"banco",
         {"URL de conexão PostgreSQL (vazio: SQLite)",
          [](Opcoes& o, const std::string& v) {
              o.banco = v;
              return true;
          }}},
        {"versao-nova",
         {"versão mais nova oferecida (3.9.0)",
          [](Opcoes& o, const std::string& v) {
              o.versaoNova = v;
              return !v.empty();
          }}},
        {"link-instalador",
         {"endereço do instalador",
          [](Opcoes& o, const std::string& v) {
              o.linkInstalador = v;
              return true;
          }}},
        {"obrigatorio",
         {"atualização obrigatória (sim/nao)",
          [](Opcoes& o, const std::string& v) { return Booleano(v, o.obrigatorio); }}},
        {"texto-atualizacao",
         {"texto da atualização (; quebra a linha)",
          [](Opcoes& o, const std::string& v) {
              o.textoAtualizacao = v;
              return true;
          }}},
        {"aviso",
         {"aviso mostrado na entrada (; quebra a linha)",
          [](Opcoes& o, const std::string& v) {
              o.aviso = v;
              return true;
          }}},
        {"aviso-bloqueia",
         {"o aviso impede de jogar (sim/nao)",
          [](Opcoes& o, const std::string& v) { return Booleano(v, o.avisoBloqueia); }}},
        {"contato",
         {"endereço de contato da página Fale conosco",
          [](Opcoes& o, const std::string& v) {
              o.contato = v;
              return true;
          }}},
        {"porta-padrao",
         {"porta padrão dos jogadores (2001)",
          [](Opcoes& o, const std::string& v) { return Numero(v, o.portaPadrao, 1, 65535); }}},
        {"tempo-jogada",
         {"segundos por jogada (60)",
          [](Opcoes& o, const std::string& v) { return Numero(v, o.tempoJogada, 60, 3600); }}},
        {"intervalo-lista",
         {"segundos entre pedidos da lista (30)",
          [](Opcoes& o, const std::string& v) { return Numero(v, o.intervaloLista, 10, 3600); }}},
        {"limite-cadastros",
         {"nicks por endereço em 24 horas (3)",
          [](Opcoes& o, const std::string& v) { return Numero(v, o.limiteCadastros, 0, 1000); }}},
        {"trabalhadores",
         {"threads de atendimento (4)",
          [](Opcoes& o, const std::string& v) { return Numero(v, o.trabalhadores, 1, 64); }}},
        {"max-conexoes",
         {"conexões web abertas (512)",
          [](Opcoes& o, const std::string& v) {
              return Numero<std::size_t>(v, o.maxConexoes, 1, 100000);
          }}},
        {"max-relay",
         {"conexões do relay (4096)",
          [](Opcoes& o, const std::string& v) {
              return Numero<std::size_t>(v, o.maxRelay, 2, 1000000);
          }}},
        {"max-relay-por-endereco",
         {"conexões do relay por endereço (16)",
          [](Opcoes& o, const std::string& v) {
              return Numero<std::size_t>(v, o.maxRelayPorEndereco, 1, 1000000);
          }}},
        {"tempo-pedido",
         {"segundos para enviar um pedido (10)",
          [](Opcoes& o, const std::string& v) { return Real(v, o.tempoPedido, 0.05, 600); }}},
        {"tempo-nick",
         {"segundos para a primeira mensagem no relay (30)",
          [](Opcoes& o, const std::string& v) { return Real(v, o.tempoNick, 0.05, 600); }}},
        {"tempo-assenta",
         {"segundos que uma primeira mensagem completa espera por mais bytes (0.05)",
          [](Opcoes& o, const std::string& v) { return Real(v, o.tempoAssenta, 0, 5); }}},
        {"tempo-ocioso",
         {"segundos de silêncio que encerram um par (600)",
          [](Opcoes& o, const std::string& v) { return Real(v, o.tempoOcioso, 0.05, 86400); }}},
        {"tempo-sonda",
         {"segundos do teste de porta (3)",
          [](Opcoes& o, const std::string& v) { return Real(v, o.tempoSonda, 0.05, 30); }}},
        {"sem-limites",
         {"desliga os limites por endereço (medições)",
          [](Opcoes& o, const std::string&) {
              o.semLimites = true;
              return true;
          },
          true}},
        {"proxy",
         {"endereço de um proxy reverso confiável",
          [](Opcoes& o, const std::string& v) {
              o.proxy = v;
              return true;
          }}},
        {"custo-senha",
         {"operações e MiB do argon2id (2,19)",
          [](Opcoes& o, const std::string& v) {
              const auto virgula = v.find(',');
              if (virgula == std::string::npos) return false;
              unsigned long long ops = 0;
              std::size_t mib = 0;
              if (!Numero<unsigned long long>(v.substr(0, virgula), ops, 1, 100) ||
                  !Numero<std::size_t>(v.substr(virgula + 1), mib, 1, 4096))
                  return false;
              o.custoSenha = {ops, mib * 1024 * 1024};
              return true;
          }}},
    };
    return t;
}

std::string Apara(std::string s) {
    const auto a = s.find_first_not_of(" \t\r");
    if (a == std::string::npos) return {};
    const auto b = s.find_last_not_of(" \t\r");
    return s.substr(a, b - a + 1);
}

std::string AplicaUma(Opcoes& o, const std::string& chave, const std::string& valor) {
    const auto it = Tabela().find(chave);
    if (it == Tabela().end()) return "opção desconhecida: " + chave;
    if (!it->second.aplica(o, valor)) return "valor inválido para " + chave + ": " + valor;
    return {};
}

} // namespace

std::string LeOpcoes(Opcoes& o, const std::vector<std::string>& args) {
    // A configuration file first, so that the command line wins
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string arquivo;
        if (args[i] == "--config" && i + 1 < args.size())
            arquivo = args[i + 1];
        else if (args[i].starts_with("--config="))
            arquivo = args[i].substr(9);
        if (arquivo.empty()) continue;
        std::ifstream f(arquivo);
        if (!f) return "não foi possível ler " + arquivo;
        std::string linha;
        int n = 0;
        while (std::getline(f, linha)) {
            ++n;
            linha = Apara(linha);
            if (linha.empty() || linha[0] == '#') continue;
            const auto igual = linha.find('=');
            if (igual == std::string::npos)
                return arquivo + ":" + std::to_string(n) + ": falta '='";
            const auto erro =
                AplicaUma(o, Apara(linha.substr(0, igual)), Apara(linha.substr(igual + 1)));
            if (!erro.empty()) return arquivo + ":" + std::to_string(n) + ": " + erro;
        }
    }
    // Then the environment: VELMORA_SERVICO_ and the name in capitals, "-" as "_"
    for (const auto& [chave, item] : Tabela()) {
        std::string nome = "VELMORA_SERVICO_";
        for (const char c : chave)
            nome += c == '-' ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        const char* valor = std::getenv(nome.c_str());
        if (!valor) continue;
        if (item.semValor && std::string(valor) != "1") continue;
        if (const auto erro = AplicaUma(o, chave, valor); !erro.empty()) return nome + ": " + erro;
    }
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (!a.starts_with("--")) return "argumento inesperado: " + a;
        std::string chave = a.substr(2), valor;
        const auto igual = chave.find('=');
        bool temValor = igual != std::string::npos;
        if (temValor) {
            valor = chave.substr(igual + 1);
            chave.erase(igual);
        }
        if (chave == "config") {
            if (!temValor) ++i;
            continue;
        }
        const auto it = Tabela().find(chave);
        if (it == Tabela().end()) return "opção desconhecida: --" + chave;
        if (!temValor && !it->second.semValor) {
            if (i + 1 >= args.size()) return "falta o valor de --" + chave;
            valor = args[++i];
        }
        const auto erro = AplicaUma(o, chave, valor);
        if (!erro.empty()) return erro;
    }
    return {};
}

std::string AjudaOpcoes() {
    std::string s = "  --config ARQUIVO   linhas 'chave = valor' com as opções abaixo\n";
    for (const auto& [k, v] : Tabela()) {
        std::string linha = "  --" + k + (v.semValor ? "" : " V");
        if (linha.size() < 28) linha.resize(28, ' ');
        s += linha + " " + v.ajuda + "\n";
    }
    return s;
}

} // namespace velmora::servidor
