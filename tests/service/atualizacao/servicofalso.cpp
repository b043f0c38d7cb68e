#include "servicofalso.h"

#include <QTimer>
#include <memory>

namespace velmora::teste {

QByteArray PacoteFalso(int tamanho) {
    QByteArray p = "!<arch>\n";
    p += QByteArray("debian-binary").leftJustified(16, ' ');
    p += QByteArray("0").leftJustified(12, ' ') + QByteArray("0").leftJustified(6, ' ') +
         QByteArray("0").leftJustified(6, ' ') + QByteArray("100644").leftJustified(8, ' ') +
         QByteArray("4").leftJustified(10, ' ') + "`\n" + "2.0\n";
    while (p.size() < tamanho) p += static_cast<char>('a' + p.size() % 26);
    return p;
}

ServicoFalso::ServicoFalso() {
    servidor_.listen(QHostAddress("127.0.0.1"), 0);
    QObject::connect(&servidor_, &QTcpServer::newConnection, &servidor_, [this] {
        while (QTcpSocket* s = servidor_.nextPendingConnection()) {
            auto dados = std::make_shared<QByteArray>();
            QObject::connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
            QObject::connect(s, &QTcpSocket::readyRead, s, [this, s, dados] {
                *dados += s->readAll();
                if (!dados->contains("\r\n\r\n")) return;
                const QByteArray pedido = *dados;
                dados->clear();
                Atende(s, pedido);
            });
        }
    });
}

int ServicoFalso::Porta() const {
    return servidor_.serverPort();
}

std::string ServicoFalso::Base() const {
    return "http://127.0.0.1:" + std::to_string(Porta());
}

std::string ServicoFalso::UrlPacote() const {
    return Base() + "/pacote/VelmoraAce.deb";
}

void ServicoFalso::Atende(QTcpSocket* s, const QByteArray& pedido) {
    const QByteArray linha = pedido.left(pedido.indexOf("\r\n"));
    const QList<QByteArray> partes = linha.split(' ');
    const bool http = partes.size() >= 3 && partes[2].startsWith("HTTP/");
    QByteArray alvo = partes.size() >= 2 ? partes[1] : QByteArray();
    alvos.push_back(alvo.toStdString());
    // the bare form carries the whole URL: the path starts after the host
    if (alvo.startsWith("http://")) alvo = alvo.mid(alvo.indexOf('/', 7));

    const auto texto = [&](const std::string& corpo) {
        if (!http) {
            s->write(QByteArray::fromStdString(corpo));
        } else {
            s->write("HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\nConnection: close\r\n"
                     "Content-Length: " +
                     QByteArray::number(static_cast<qsizetype>(corpo.size())) + "\r\n\r\n" +
                     QByteArray::fromStdString(corpo));
        }
        s->disconnectFromHost();
    };

    if (alvo.startsWith("/update.php")) {
        (http ? pedidosHttp : pedidosNus)++;
        const std::string& r = http ? respostaHttp : respostaNua;
        if (r.empty()) {
            s->abort(); // a service that says nothing
            return;
        }
        texto(r);
        return;
    }
    if (alvo == "/pacote/VelmoraAce.deb" && http) {
        ++downloads;
        s->write("HTTP/1.1 200 OK\r\nContent-Type: application/vnd.debian.binary-package\r\n"
                 "Connection: close\r\nContent-Length: " +
                 QByteArray::number(pacote.size()) + "\r\n\r\n");
        if (modo == Modo::Inteiro) {
            s->write(pacote);
            s->disconnectFromHost();
        } else if (modo == Modo::Cortado) {
            s->write(pacote.left(pacote.size() / 2));
            s->flush();
            QTimer::singleShot(100, s, [s] { s->abort(); });
        } else {
            auto enviado = std::make_shared<int>(0);
            auto relogio = new QTimer(s);
            QObject::connect(relogio, &QTimer::timeout, s, [this, s, enviado, relogio] {
                const int pedaco = (static_cast<int>(pacote.size()) + pedacos - 1) / pedacos;
                s->write(pacote.mid(*enviado, pedaco));
                *enviado += pedaco;
                if (*enviado >= pacote.size()) {
                    relogio->stop();
                    s->disconnectFromHost();
                }
            });
            relogio->start(intervaloMs);
        }
        return;
    }
    if (http) {
        s->write("HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        s->disconnectFromHost();
        return;
    }
    s->abort();
}

} // namespace velmora::teste
