#pragma once
// The answers of the web service: every request the game makes (waiting list, session
// parameters, relay address, leaving the list, login, new nick, may a nick be created,
// ban test, award of a win, update offer, own address) and the pages it opens in the
// browser. Replies to the game are short texts cut on separators, never HTML. This object
// holds no sockets: the listener hands it a request and the caller's address.
#include "server/armazem.h"
#include "server/limites.h"
#include "server/nickrelay.h"
#include "server/opcoes.h"
#include "server/pedido.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>

namespace velmora::servidor {

struct Resposta {
    int status = 200;
    std::string tipo = "text/plain; charset=utf-8";
    std::string corpo;
};

class Servico {
  public:
    Servico(const Opcoes& opcoes, Armazem& armazem);

    // Wall clock (seconds since 1970) and a steady clock (seconds) for the rate limits;
    // tests replace them.
    std::function<std::int64_t()> Agora;
    std::function<double()> Relogio;

    Resposta Responde(const Pedido& p, const std::string& endereco);

    // The port test needs a dial-back from the listener: this decides which port to dial,
    // or gives the reply that ends the request at once (bad port, too many tests).
    static bool EhTestePorta(const Pedido& p) { return p.caminho == "/testaporta/nvping.php"; }
    struct TestePorta {
        std::uint16_t porta = 0;
        std::string resposta;
    };
    TestePorta PreparaTestePorta(const Pedido& p, const std::string& endereco);

    // The relay brought two copies together: the later one's first message went to the
    // earlier one. Recorded so that a win between them can count.
    void RegistraParRelay(const NickRelay& a, const std::string& enderecoA, const NickRelay& b,
                          const std::string& enderecoB);

    // What a log line says of a request: the path and the kind of request, never the
    // query (it carries passwords).
    static std::string Resumo(const Pedido& p);

    // The ports actually opened (the options may ask for port 0, any free port).
    void DefinePortas(std::uint16_t web, std::uint16_t relay) {
        portaWeb_ = web;
        portaRelay_ = relay;
    }
    std::string UrlPublica() const;

  private:
    std::string Lista(const Parametros& q, const std::string& endereco);
    std::string ParametrosSessao(const Parametros& q, const std::string& endereco);
    std::string SaiDaLista(const Parametros& q, const std::string& endereco);
    std::string Entrar(const Parametros& q, const std::string& endereco);
    std::string Cadastrar(const Parametros& q, const std::string& endereco);
    std::string PodeCadastrar(const std::string& endereco);
    std::string TesteBanimento(const std::string& endereco);
    std::string AtribuiVitoria(const Parametros& q, const std::string& endereco);
    std::string Atualizacao() const;
    std::string Totais(std::int64_t id1, std::int64_t id2);
    std::optional<Banimento> Banido(const std::string& endereco, const std::string& nick);
    std::int64_t ValidadeEspera() const;

    Resposta Pagina(const std::string& caminho, const Parametros& q, const std::string& endereco);

    const Opcoes& o_;
    Armazem& a_;
    std::atomic<std::uint16_t> portaWeb_, portaRelay_;
    LimiteTaxa limiteEntrar_, limiteCadastro_, limitePremio_, limiteSonda_;
};

// Text made safe inside HTML.
std::string EscapaHtml(std::string_view s);

} // namespace velmora::servidor
