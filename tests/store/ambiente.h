#pragma once
// Every test runs in a fresh temporary folder: VELMORA_CONFIG and VELMORA_DADOS point into
// it, so nothing touches a real home, and it is removed afterwards. It is made in the
// constructor, so that the members of a derived fixture already see it.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <sys/resource.h>

namespace velmora::teste {

class Ambiente : public ::testing::Test {
  protected:
    Ambiente() {
        std::string modelo = (std::filesystem::temp_directory_path() / "velmora-XXXXXX").string();
        if (!::mkdtemp(modelo.data())) std::abort();
        pasta = modelo;
        configuracao = pasta / "config" / "registro.reg";
        dados = pasta / "dados";
        ::setenv("VELMORA_CONFIG", configuracao.c_str(), 1);
        ::setenv("VELMORA_DADOS", dados.c_str(), 1);
        ::unsetenv("VELMORA_DEBUG");
    }
    ~Ambiente() override {
        std::error_code ec;
        std::filesystem::remove_all(pasta, ec);
    }

    static std::string Le(const std::filesystem::path& p) {
        std::ifstream f(p, std::ios::binary);
        return {std::istreambuf_iterator<char>(f), {}};
    }
    static void Escreve(const std::filesystem::path& p, const std::string& bytes) {
        std::filesystem::create_directories(p.parent_path());
        std::ofstream(p, std::ios::binary) << bytes;
    }
    // A sparse file of the given size: gigantic on paper, instant to make.
    static void Gigante(const std::filesystem::path& p, std::uintmax_t bytes) {
        Escreve(p, "REGEDIT4\r\n");
        std::filesystem::resize_file(p, bytes);
    }

    std::filesystem::path pasta, configuracao, dados;
};

// While alive, no file may grow beyond `bytes`: writes fail as on a full disk.
class DiscoCheio {
  public:
    explicit DiscoCheio(rlim_t bytes) {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &antes_);
        rlimit r = antes_;
        r.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &r);
    }
    DiscoCheio(const DiscoCheio&) = delete;
    DiscoCheio& operator=(const DiscoCheio&) = delete;
    ~DiscoCheio() { ::setrlimit(RLIMIT_FSIZE, &antes_); }

  private:
    rlimit antes_{};
};

} // namespace velmora::teste
