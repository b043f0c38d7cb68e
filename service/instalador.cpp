#include "service/instalador.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QString>

namespace velmora {

std::string NomeInstalador(const std::string& titulo) {
    std::string nome;
    for (char c : titulo)
        if (c != ' ') nome += c;
    return nome + ".deb";
}

bool ConfereInstalador(const std::filesystem::path& arquivo, const std::string& sha256) {
    QFile f(QString::fromStdString(arquivo.string()));
    if (!f.open(QIODevice::ReadOnly)) return false;
    // "!<arch>\n", then the first member's 60-byte header, which begins with its name
    const QByteArray cabeca = f.read(8 + 16);
    if (!cabeca.startsWith("!<arch>\n") || cabeca.mid(8, 13) != "debian-binary") return false;
    if (sha256.empty()) return true;
    f.seek(0);
    QCryptographicHash soma(QCryptographicHash::Sha256);
    if (!soma.addData(&f)) return false;
    return soma.result().toHex() == QByteArray::fromStdString(sha256).toLower();
}

} // namespace velmora
