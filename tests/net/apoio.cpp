#include "apoio.h"

#include "net/bomba.h"

#include <QHostAddress>

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>

namespace velmora::teste {

bool EsperaAte(const std::function<bool()>& condicao, int ms) {
    const auto fim = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
    while (!condicao()) {
        if (std::chrono::steady_clock::now() > fim) return false;
        BombaPadrao();
    }
    return true;
}

void Pausa(int ms) {
    EsperaAte([] { return false; }, ms);
}

int ContaDescritores() {
    int n = 0;
    for ([[maybe_unused]] const auto& e : std::filesystem::directory_iterator("/proc/self/fd")) ++n;
    return n;
}

Par Escuta(modSocketMaster& mod) {
    Par p{CSocketMaster::Cria(mod), CSocketMaster::Cria(mod), CSocketMaster::Cria(mod)};
    p.escuta->Eventos.ConnectionRequest = [s = p.servidor.get()](std::int32_t id) {
        s->Accept(id);
    };
    p.escuta->Listen();
    return p;
}

Par Conecta(modSocketMaster& mod) {
    Par p = Escuta(mod);
    p.cliente->Connect("127.0.0.1", p.escuta->LocalPort());
    EXPECT_TRUE(EsperaAte(
        [&] { return p.cliente->State() == sckConnected && p.servidor->State() == sckConnected; }));
    return p;
}

ServidorWeb::ServidorWeb() {
    servidor_.listen(QHostAddress::LocalHost, 0);
    QObject::connect(&servidor_, &QTcpServer::newConnection, &servidor_, [this] {
        while (QTcpSocket* s = servidor_.nextPendingConnection()) {
            auto pedido = std::make_shared<QByteArray>();
            QObject::connect(s, &QTcpSocket::readyRead, s, [this, s, pedido] {
                const bool completo = pedido->contains("\r\n\r\n");
                pedido->append(s->readAll());
                if (completo || !pedido->contains("\r\n\r\n")) return;
                pedidos.push_back(*pedido);
                if (Responde) Responde(s, *pedido);
            });
            QObject::connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
        }
    });
}

std::string ServidorWeb::Url(const std::string& caminho) const {
    return "http://127.0.0.1:" + std::to_string(Porta()) + caminho;
}

int ServidorWeb::Porta() const {
    return servidor_.serverPort();
}

QByteArray Cabecalho(long tamanho) {
    QByteArray c = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nConnection: close\r\n";
    if (tamanho >= 0) c += "Content-Length: " + QByteArray::number(qint64(tamanho)) + "\r\n";
    return c + "\r\n";
}

std::shared_ptr<std::vector<std::string>> RegistraEventos(CSocketMaster& s) {
    auto r = std::make_shared<std::vector<std::string>>();
    s.Eventos.CloseSck = [r] { r->push_back("CloseSck"); };
    s.Eventos.Connect = [r] { r->push_back("Connect"); };
    s.Eventos.DataArrival = [r](std::int32_t n) {
        r->push_back("DataArrival " + std::to_string(n));
    };
    s.Eventos.Error = [r](std::int32_t n, const std::string& d, std::int32_t, const std::string& f,
                          const std::string&, std::int32_t, bool&) {
        r->push_back("Error " + std::to_string(n) + " " + d + " " + f);
    };
    s.Eventos.SendComplete = [r] { r->push_back("SendComplete"); };
    s.Eventos.SendProgress = [r](std::int32_t a, std::int32_t b) {
        r->push_back("SendProgress " + std::to_string(a) + " " + std::to_string(b));
    };
    return r;
}

} // namespace velmora::teste
