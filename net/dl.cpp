#include "net/dl.h"

#include "net/bomba.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTemporaryFile>
#include <QUrl>

#include <QVariant>

#include <cctype>
#include <fstream>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>
#include <vector>

namespace velmora {

namespace {

// One read in progress: its key and the temporary file that it fills.
struct Leitura {
    std::string chave;
    QTemporaryFile arquivo;
    std::int64_t bytes = 0;
};

// Moves a finished read's file over the target, replacing it; failures are ignored.
void Move(QTemporaryFile& arquivo, const std::filesystem::path& destino) {
    const std::filesystem::path origem = arquivo.fileName().toStdString();
    arquivo.close();
    std::error_code ec;
    std::filesystem::rename(origem, destino, ec);
    if (!ec) {
        arquivo.setAutoRemove(false);
        return;
    }
    // Another file system: copied, and the temporary file goes with its holder
    std::filesystem::copy_file(origem, destino, std::filesystem::copy_options::overwrite_existing,
                               ec);
}

// The file as text: each line, ended by CR LF, LF or CR, followed by CR LF.
std::string LeLinhas(const std::filesystem::path& arquivo) {
    std::ifstream f(arquivo, std::ios::binary);
    if (!f) return {};
    const std::string bytes((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    std::string texto;
    texto.reserve(bytes.size() + 2);
    std::size_t i = 0;
    while (i < bytes.size()) {
        const auto fim = bytes.find_first_of("\r\n", i);
        if (fim == std::string::npos) {
            texto.append(bytes, i, std::string::npos).append("\r\n");
            break;
        }
        texto.append(bytes, i, fim - i).append("\r\n");
        i = fim + (bytes.compare(fim, 2, "\r\n") == 0 ? 2 : 1);
    }
    return texto;
}

} // namespace

struct dl::Estado {
    QNetworkAccessManager rede;
    QObject contexto; // receiver of the reads' signals: ends before the replies
    std::map<std::string, std::string> pendentes; // target of each read, by key
    bool cancelado = false;
    std::int32_t percent = 0;
    double ultimaAtividade = 0;
    std::int32_t timeOut = 8;
    std::int16_t status = 0;
    bool vivo = true;
    std::function<void(std::int64_t, std::int64_t, const std::string&)> progress;
    std::function<void(std::int64_t, const std::string&)> completed;
    std::function<double()> relogio = RelogioPadrao;
    std::function<void()> bomba = BombaPadrao;
    struct Corrente {
        QPointer<QNetworkReply> resposta;
        std::string chave;
    };
    std::vector<Corrente> correntes; // reads in progress

    // Stops the reads under `chave` (all reads when null); nothing of them arrives later.
    void Aborta(const std::string* chave) {
        auto copia = correntes;
        for (auto& c : copia) {
            if (chave && c.chave != *chave) continue;
            if (c.resposta) {
                QObject::disconnect(c.resposta, nullptr, &contexto, nullptr);
                c.resposta->abort();
                c.resposta->deleteLater();
            }
        }
        std::erase_if(correntes, [&](const Corrente& c) { return !chave || c.chave == *chave; });
    }
};

dl::dl()
    : e_(std::make_shared<Estado>()), Progress(e_->progress), Completed(e_->completed),
      Relogio(e_->relogio), Bomba(e_->bomba) {}

dl::~dl() {
    e_->vivo = false;
    e_->Aborta(nullptr);
}

std::int16_t dl::Status() const {
    return e_->status;
}
std::int32_t dl::Percent() const {
    return e_->percent;
}
bool dl::Cancelled() const {
    return e_->cancelado;
}

std::filesystem::path dl::ArquivoConteudo() {
    return std::filesystem::path(QDir::tempPath().toStdString()) / "temp01.dat";
}

namespace {

// The address as the program wrote it, bytes kept: a blank, a control or 8-bit byte, a "%"
// that begins no %XX, and a "#" in the query (a password goes out as typed: it belongs to
// the value, it begins no fragment) are each sent as their %XX; the rest goes as it is.
QUrl UrlDoTexto(const std::string& texto) {
    const auto hex = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    QByteArray b;
    bool consulta = false;
    for (std::size_t i = 0; i < texto.size(); ++i) {
        const auto c = static_cast<unsigned char>(texto[i]);
        const bool escapa =
            c <= 0x20 || c >= 0x7F || (c == '#' && consulta) ||
            (c == '%' && !(i + 2 < texto.size() && hex(texto[i + 1]) && hex(texto[i + 2])));
        consulta |= c == '?';
        if (escapa)
            b += '%' + QByteArray::number(c, 16).rightJustified(2, '0').toUpper();
        else
            b += static_cast<char>(c);
    }
    return QUrl::fromEncoded(b);
}

} // namespace

void dl::AsyncRead(const std::string& url, const std::string& chave) {
    QNetworkRequest pedido{UrlDoTexto(url)};
    // Always a fresh copy, never a cached one
    pedido.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    QNetworkReply* r = e_->rede.get(pedido);
    e_->correntes.push_back({r, chave});

    auto leitura = std::make_shared<Leitura>();
    leitura->chave = chave;
    leitura->arquivo.setFileTemplate(QDir::tempPath() + "/velmora-dl-XXXXXX");
    leitura->arquivo.open();
    const std::weak_ptr<Estado> fraco = e_;

    // Each arrival of bytes is a progress report (Qt's own progress signal is throttled
    // and would miss a first burst followed by silence)
    QObject::connect(r, &QNetworkReply::readyRead, &e_->contexto, [fraco, leitura, r] {
        const QByteArray bloco = r->readAll();
        leitura->bytes += bloco.size();
        leitura->arquivo.write(bloco);
        const auto e = fraco.lock();
        if (!e || e->cancelado) return;
        const QVariant tamanho = r->header(QNetworkRequest::ContentLengthHeader);
        const qint64 total = tamanho.isValid() ? tamanho.toLongLong() : -1;
        if (auto f = e->progress) f(leitura->bytes, total, leitura->chave);
        // A report without a known size leaves Percent as it was
        if (total > 0) e->percent = static_cast<std::int32_t>(100 * leitura->bytes / total);
        e->ultimaAtividade = e->relogio();
    });
    QObject::connect(r, &QNetworkReply::finished, &e_->contexto, [fraco, leitura, r] {
        r->deleteLater();
        const auto e = fraco.lock();
        if (!e) return;
        std::erase_if(e->correntes, [r](const Estado::Corrente& c) { return c.resposta == r; });
        if (e->cancelado) return;
        const QByteArray resto = r->readAll();
        leitura->bytes += resto.size();
        leitura->arquivo.write(resto);
        leitura->arquivo.flush();
        // A read that failed (no connection, an HTTP error) leaves no file behind
        const bool falhou = r->error() != QNetworkReply::NoError;
        const auto alvo = e->pendentes.find(leitura->chave);
        if (alvo != e->pendentes.end()) {
            if (!falhou) Move(leitura->arquivo, alvo->second);
            e->pendentes.erase(alvo);
        }
        if (auto f = e->completed) f(leitura->bytes, leitura->chave);
        e->status = !falhou && e->percent > 99 ? 1 : 3;
    });
}

std::string dl::GetConteudo(const std::string& sWWWFile, const std::string& sID,
                            std::int32_t TimeOut) {
    const auto e = e_;
    const auto alvo = ArquivoConteudo();
    e->timeOut = TimeOut;
    // A key already pending keeps its old target
    e->pendentes.try_emplace(sID, alvo.string());
    AsyncRead(sWWWFile, sID);
    e->ultimaAtividade = e->relogio();
    e->status = 0;
    for (;;) {
        if (!e->vivo) return {};
        if (e->status != 0) {
            std::string texto = LeLinhas(alvo);
            std::error_code ec;
            std::filesystem::remove(alvo, ec);
            return texto;
        }
        if (e->relogio() > e->ultimaAtividade + e->timeOut) {
            e->cancelado = true;
            e->Aborta(nullptr);
            return {};
        }
        const auto bomba = e->bomba;
        bomba();
    }
}

std::int16_t dl::Download(const std::string& sWWWFile, const std::string& sDestination,
                          ObjetoProgresso* objprogress, const std::string& sID,
                          std::int32_t TimeOut) {
    const auto e = e_;
    e->timeOut = TimeOut;
    e->pendentes.try_emplace(sID, sDestination);
    AsyncRead(sWWWFile, sID);
    e->ultimaAtividade = e->relogio();
    e->status = 0;
    for (;;) {
        if (!e->vivo) return 3;
        if (e->status != 0) return e->status;
        if (objprogress) objprogress->Value(e->percent);
        if (e->relogio() > e->ultimaAtividade + e->timeOut) {
            e->cancelado = true;
            e->Aborta(nullptr);
            return 3;
        }
        const auto bomba = e->bomba;
        bomba();
    }
}

void dl::CancelDownload(const std::string& sID) {
    e_->Aborta(&sID);
    e_->status = 2;
}

} // namespace velmora
