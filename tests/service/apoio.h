#pragma once
// Helpers of the service client's tests: a fake service on 127.0.0.1 and an ephemeral
// port that answers both fetch forms (the bare request line and HTTP/1.1) and counts every
// request, a loop whose clock runs faster than the wall clock, and a scripted fetcher.
#include "service/buscas.h"
#include "service/laco.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace velmora::teste {

// How the fake service answers one request.
struct Resposta {
    std::string corpo;
    bool silencio = false;     // never answers, keeps the connection open
    bool partida = false;      // the body in two writes, 150 ms apart
    bool fechaSemNada = false; // closes without a byte
};

// One request as it came: its path with the query, and whether it was the bare form.
struct Pedido {
    std::string caminho;
    bool nu = false;
};

class ServicoFalso {
  public:
    ServicoFalso();
    ~ServicoFalso();
    // By path and query ("/html/cadastro.php?tipo=ta&programa=Velmora"); an empty body by
    // default.
    std::function<Resposta(const Pedido&)> Responde;
    std::string Endereco() const; // "http://127.0.0.1:port"
    int Porta() const;
    std::vector<Pedido> pedidos;
    // Requests whose path (before "?") equals `caminho`.
    int Conta(const std::string& caminho) const;

  private:
    void Atende(QTcpSocket* s);
    QTcpServer servidor_;
};

// A loop whose clock is the wall clock times `fator`: waits of seconds take tenths.
Laco LacoRapido(double fator = 10.0);

// A fetcher that answers from a script and notes each call as "dl1 url", "dl2 url",
// "dl3 url" or "get url".
class BuscasRoteiro : public Buscas {
  public:
    std::function<std::string(const std::string& como, const std::string& url)> Responde;
    std::vector<std::string> chamadas;
    std::vector<int> tempos;
    std::string Dl(Instancia dl, const std::string& url, std::int32_t TimeOut) override;
    std::string GetConteudo(const std::string& url, std::int32_t tempo) override;
};

// Pumps events until `condicao` holds or `ms` pass.
bool EsperaAte(const std::function<bool()>& condicao, int ms = 5000);

// A port the system handed out a moment ago and nobody listens on now.
int PortaLivre();

} // namespace velmora::teste
