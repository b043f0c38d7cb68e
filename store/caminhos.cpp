#include "store/caminhos.h"

#include <cstdlib>
#include <string>

namespace velmora {

namespace {

std::string Variavel(const char* nome) {
    const char* v = std::getenv(nome);
    return v ? v : "";
}

// An XDG folder: the variable when it holds an absolute path, else the default under HOME.
std::filesystem::path PastaXdg(const char* variavel, const char* padraoSobHome) {
    const std::filesystem::path v = Variavel(variavel);
    if (v.is_absolute()) return v;
    const std::string home = Variavel("HOME");
    return (home.empty() ? std::filesystem::path(".") : std::filesystem::path(home)) /
           padraoSobHome;
}

} // namespace

std::filesystem::path ArquivoRegistro() {
    const std::string v = Variavel("VELMORA_CONFIG");
    if (!v.empty()) return v;
    return PastaXdg("XDG_CONFIG_HOME", ".config") / "velmora-ace" / "registro.reg";
}

std::filesystem::path PastaDados() {
    const std::string v = Variavel("VELMORA_DADOS");
    if (!v.empty()) return v;
    return PastaXdg("XDG_DATA_HOME", ".local/share") / "velmora-ace";
}

std::filesystem::path ArquivoRecordes() {
    return PastaDados() / "Velmora.rec";
}
std::filesystem::path ArquivoPlacar() {
    return PastaDados() / "Velmora.sav";
}

} // namespace velmora
