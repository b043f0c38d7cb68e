#include "store/arquivos.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace velmora {

namespace {

// A file descriptor closed on every path out.
class Descritor {
  public:
    explicit Descritor(int fd = -1) : fd_(fd) {}
    Descritor(const Descritor&) = delete;
    Descritor& operator=(const Descritor&) = delete;
    ~Descritor() { Fecha(); }
    int fd() const { return fd_; }
    bool Fecha() {
        if (fd_ < 0) return true;
        const bool ok = ::close(fd_) == 0;
        fd_ = -1;
        return ok;
    }

  private:
    int fd_;
};

bool EscreveTudo(int fd, const char* dados, size_t n) {
    while (n > 0) {
        const ssize_t k = ::write(fd, dados, n);
        if (k < 0 && errno == EINTR) continue;
        if (k <= 0) return false;
        dados += k;
        n -= static_cast<size_t>(k);
    }
    return true;
}

void SincronizaPasta(const std::filesystem::path& pasta) {
    Descritor d(::open(pasta.empty() ? "." : pasta.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (d.fd() >= 0) ::fsync(d.fd());
}

std::filesystem::path PastaDe(const std::filesystem::path& arquivo) {
    const auto p = arquivo.parent_path();
    return p.empty() ? std::filesystem::path(".") : p;
}

// A temporary file beside `arquivo`, filled by `enche`, flushed and closed. Gives its path,
// or nothing (and no file left behind) when any step failed.
template <class Enche>
std::optional<std::filesystem::path> Temporario(const std::filesystem::path& arquivo, mode_t modo,
                                                Enche enche) {
    const auto pasta = PastaDe(arquivo);
    std::error_code ec;
    std::filesystem::create_directories(pasta, ec);
    std::string modelo = (pasta / ("." + arquivo.filename().string() + ".XXXXXX")).string();
    std::vector<char> nome(modelo.begin(), modelo.end());
    nome.push_back('\0');
    Descritor d(::mkostemp(nome.data(), O_CLOEXEC));
    if (d.fd() < 0) return std::nullopt;
    const std::filesystem::path temp(nome.data());
    const bool ok = ::fchmod(d.fd(), modo) == 0 && enche(d.fd()) && ::fsync(d.fd()) == 0;
    if (!d.Fecha() || !ok) {
        ::unlink(temp.c_str());
        return std::nullopt;
    }
    return temp;
}

} // namespace

Leitura LeArquivo(const std::filesystem::path& arquivo, std::size_t limite) {
    Leitura r;
    Descritor d(::open(arquivo.c_str(), O_RDONLY | O_CLOEXEC));
    if (d.fd() < 0) {
        r.estado =
            errno == ENOENT || errno == ENOTDIR ? Leitura::Estado::Ausente : Leitura::Estado::Erro;
        return r;
    }
    struct stat st {};
    if (::fstat(d.fd(), &st) != 0 || !S_ISREG(st.st_mode)) {
        r.estado = Leitura::Estado::Erro;
        return r;
    }
    r.tamanho = static_cast<std::uintmax_t>(st.st_size);
    if (r.tamanho > limite) {
        r.estado = Leitura::Estado::Grande;
        return r;
    }
    char bloco[65536];
    for (;;) {
        const ssize_t k = ::read(d.fd(), bloco, sizeof bloco);
        if (k < 0 && errno == EINTR) continue;
        if (k < 0) {
            r.bytes.clear();
            r.estado = Leitura::Estado::Erro;
            return r;
        }
        if (k == 0) break;
        r.bytes.append(bloco, static_cast<size_t>(k));
        if (r.bytes.size() > limite) { // grew while being read
            r.bytes.clear();
            r.estado = Leitura::Estado::Grande;
            return r;
        }
    }
    r.tamanho = r.bytes.size();
    r.estado = Leitura::Estado::Lido;
    return r;
}

bool GravaArquivoAtomico(const std::filesystem::path& arquivo, std::string_view bytes,
                         mode_t modoNovo) {
    struct stat st {};
    const mode_t modo = ::stat(arquivo.c_str(), &st) == 0 ? (st.st_mode & 07777) : modoNovo;
    const auto temp = Temporario(
        arquivo, modo, [&](int fd) { return EscreveTudo(fd, bytes.data(), bytes.size()); });
    if (!temp) return false;
    if (::rename(temp->c_str(), arquivo.c_str()) != 0) {
        ::unlink(temp->c_str());
        return false;
    }
    SincronizaPasta(PastaDe(arquivo));
    return true;
}

std::optional<std::filesystem::path> GuardaCopiaDanificada(const std::filesystem::path& arquivo) {
    Descritor origem(::open(arquivo.c_str(), O_RDONLY | O_CLOEXEC));
    if (origem.fd() < 0) return std::nullopt;
    const auto temp = Temporario(arquivo, 0600, [&](int fd) {
        char bloco[65536];
        for (;;) {
            const ssize_t k = ::read(origem.fd(), bloco, sizeof bloco);
            if (k < 0 && errno == EINTR) continue;
            if (k < 0) return false;
            if (k == 0) return true;
            if (!EscreveTudo(fd, bloco, static_cast<size_t>(k))) return false;
        }
    });
    if (!temp) return std::nullopt;
    // link() never replaces an existing name, so an earlier copy is never lost
    for (int n = 1; n <= 1000; ++n) {
        std::filesystem::path copia = arquivo;
        copia += n == 1 ? ".danificado" : ".danificado." + std::to_string(n);
        if (::link(temp->c_str(), copia.c_str()) == 0) {
            ::unlink(temp->c_str());
            SincronizaPasta(PastaDe(arquivo));
            return copia;
        }
        if (errno == EEXIST) continue;
        // a file system without hard links: rename, after checking the name is free
        std::error_code ec;
        if (!std::filesystem::exists(copia, ec) && !ec &&
            ::rename(temp->c_str(), copia.c_str()) == 0) {
            SincronizaPasta(PastaDe(arquivo));
            return copia;
        }
        if (ec) break;
    }
    ::unlink(temp->c_str());
    return std::nullopt;
}

Identidade IdentidadeDe(const std::filesystem::path& arquivo) {
    struct stat st {};
    if (::stat(arquivo.c_str(), &st) != 0) return {};
    return {true, st.st_dev, st.st_ino, st.st_size, st.st_mtim.tv_sec, st.st_mtim.tv_nsec};
}

} // namespace velmora
