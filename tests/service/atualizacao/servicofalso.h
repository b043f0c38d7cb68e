#pragma once
// A small web service for the update tests, on 127.0.0.1 and an ephemeral port. It answers
// update.php in both forms the client uses (HTTP/1.1, and the bare request line whose reply
// is the text alone in one write), and serves a package at /pacote/VelmoraAce.deb: whole,
// cut in the middle, or slowly in pieces.
#include <QByteArray>
#include <QTcpServer>
#include <QTcpSocket>
#include <string>
#include <vector>

namespace velmora::teste {

// A Debian package as far as the checks look (an "ar" archive whose first member is
// "debian-binary"), padded to `tamanho` bytes.
QByteArray PacoteFalso(int tamanho);

class ServicoFalso {
  public:
    ServicoFalso();
    std::string Base() const; // "http://127.0.0.1:<port>"
    std::string UrlPacote() const;
    int Porta() const;

    // What update.php says; to each form its own, so a test can make one form fail.
    std::string respostaHttp;
    std::string respostaNua;
    // The package and how it is sent.
    enum class Modo { Inteiro, Cortado, Lento };
    QByteArray pacote;
    Modo modo = Modo::Inteiro;
    int pedacos = 8;      // Lento: the number of pieces
    int intervaloMs = 40; // Lento: the pause between two pieces

    int pedidosHttp = 0, pedidosNus = 0, downloads = 0;
    std::vector<std::string> alvos; // the target of each request, as it came

  private:
    void Atende(QTcpSocket* s, const QByteArray& pedido);
    QTcpServer servidor_;
};

} // namespace velmora::teste
