#pragma once
// Helpers of the socket tests: waits that pump events, a count of open descriptors, a
// connected pair of sockets and a small web server of our own on an ephemeral port.
#include "net/csocketmaster.h"
#include "net/modsocketmaster.h"

#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace velmora::teste {

// Pumps events until `condicao` holds or `ms` pass; the result is the condition.
bool EsperaAte(const std::function<bool()>& condicao, int ms = 5000);
// Pumps events for `ms`.
void Pausa(int ms);
// Open descriptors of the process.
int ContaDescritores();

// A listener on an ephemeral loopback port that accepts its caller into `servidor`, and a
// client: not yet connected (Escuta) or connected (Conecta).
struct Par {
    std::shared_ptr<CSocketMaster> escuta;
    std::shared_ptr<CSocketMaster> servidor; // the accepted end
    std::shared_ptr<CSocketMaster> cliente;
};
Par Escuta(modSocketMaster& mod);
Par Conecta(modSocketMaster& mod);

// The error that an operation raises, as "number|text|source".
template <class F> std::string Erro(F&& f) {
    try {
        f();
    } catch (const ErroSocket& e) {
        return std::to_string(e.Numero) + "|" + e.Descricao + "|" + e.Fonte;
    }
    return "nenhum";
}

// A web server on 127.0.0.1 and an ephemeral port. `Responde` is called once a request's
// head has arrived; it writes the reply (now, or later by timers) on the socket.
class ServidorWeb {
  public:
    ServidorWeb();
    std::function<void(QTcpSocket*, const QByteArray& pedido)> Responde;
    std::string Url(const std::string& caminho = "/") const;
    int Porta() const;
    std::vector<QByteArray> pedidos; // heads of the requests, as they came

  private:
    QTcpServer servidor_;
};

// Head of a reply with status 200 and, when `tamanho` isn't negative, a Content-Length.
QByteArray Cabecalho(long tamanho);

// Events of one object, as a text per event, in their order.
std::shared_ptr<std::vector<std::string>> RegistraEventos(CSocketMaster& s);

} // namespace velmora::teste
