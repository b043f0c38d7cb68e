#include "apoio.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include "net/bomba.h"

#include <chrono>
#include <memory>

namespace velmora::teste {

ServicoFalso::ServicoFalso() {
    servidor_.listen(QHostAddress::LocalHost, 0);
    QObject::connect(&servidor_, &QTcpServer::newConnection, [this] {
        while (QTcpSocket* s = servidor_.nextPendingConnection()) {
            auto dados = std::make_shared<QByteArray>();
            QObject::connect(s, &QTcpSocket::readyRead, s, [this, s, dados] {
                dados->append(s->readAll());
                if (!dados->contains("\r\n\r\n") || s->property("atendido").toBool()) return;
                s->setProperty("atendido", true);
                s->setProperty("pedido", *dados);
                Atende(s);
            });
            QObject::connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
        }
    });
}

ServicoFalso::~ServicoFalso() {
    servidor_.close();
}

std::string ServicoFalso::Endereco() const {
    return "http://127.0.0.1:" + std::to_string(Porta());
}

int ServicoFalso::Porta() const {
    return servidor_.serverPort();
}

int ServicoFalso::Conta(const std::string& caminho) const {
    int n = 0;
    for (const auto& p : pedidos)
        if (p.caminho.substr(0, p.caminho.find('?')) == caminho) ++n;
    return n;
}

void ServicoFalso::Atende(QTcpSocket* s) {
    const QByteArray cabeca = s->property("pedido").toByteArray();
    const QByteArray linha = cabeca.left(cabeca.indexOf("\r\n"));
    Pedido p;
    // "GET <url>" alone is the bare form; "GET <path> HTTP/1.1" the normal one
    QByteArray alvo = linha.mid(4);
    if (alvo.endsWith(" HTTP/1.1")) {
        alvo.chop(9);
    } else {
        p.nu = true;
        if (alvo.startsWith("http://")) alvo = alvo.mid(alvo.indexOf('/', 7));
    }
    p.caminho = alvo.toStdString();
    pedidos.push_back(p);
    const Resposta r = Responde ? Responde(p) : Resposta{};
    if (r.silencio) return;
    if (r.fechaSemNada) {
        s->disconnectFromHost();
        return;
    }
    QByteArray corpo = QByteArray::fromStdString(r.corpo);
    QByteArray primeira, segunda;
    if (p.nu) {
        primeira = corpo;
    } else {
        primeira = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nConnection: close\r\n"
                   "Content-Length: " +
                   QByteArray::number(corpo.size()) + "\r\n\r\n" + corpo;
    }
    if (r.partida) {
        const qsizetype meio = primeira.size() - corpo.size() / 2;
        segunda = primeira.mid(meio);
        primeira = primeira.left(meio);
    }
    s->write(primeira);
    s->flush();
    if (segunda.isEmpty()) {
        s->disconnectFromHost();
        return;
    }
    QPointer<QTcpSocket> ps(s);
    QTimer::singleShot(150, s, [ps, segunda] {
        if (!ps) return;
        ps->write(segunda);
        ps->disconnectFromHost();
    });
}

Laco LacoRapido(double fator) {
    Laco l;
    auto inicio = std::make_shared<QElapsedTimer>();
    inicio->start();
    l.relogio = [inicio, fator] { return static_cast<double>(inicio->elapsed()) / 1000.0 * fator; };
    l.bomba = BombaPadrao;
    return l;
}

std::string BuscasRoteiro::Dl(Instancia dl, const std::string& url, std::int32_t TimeOut) {
    const std::string como = "dl" + std::to_string(static_cast<int>(dl) + 1);
    chamadas.push_back(como + " " + url);
    tempos.push_back(TimeOut);
    return Responde ? Responde(como, url) : std::string();
}

std::string BuscasRoteiro::GetConteudo(const std::string& url, std::int32_t tempo) {
    chamadas.push_back("get " + url);
    tempos.push_back(tempo);
    return Responde ? Responde("get", url) : std::string("FALSE");
}

bool EsperaAte(const std::function<bool()>& condicao, int ms) {
    QElapsedTimer t;
    t.start();
    while (!condicao()) {
        if (t.elapsed() > ms) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

int PortaLivre() {
    QTcpServer s;
    s.listen(QHostAddress::Any, 0);
    return s.serverPort();
}

} // namespace velmora::teste
