// Fuzzer of the REGEDIT4 readers: the store file (whose writing must read back the same)
// and the import of an exported file into a store in a temporary folder.
#include "store/regedit4.h"
#include "store/registro.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

// A temporary folder for the whole run, removed at exit.
struct Pasta {
    Pasta() {
        std::string modelo =
            (std::filesystem::temp_directory_path() / "velmora-fuzz-XXXXXX").string();
        if (!::mkdtemp(modelo.data())) std::abort();
        caminho = modelo;
    }
    ~Pasta() {
        std::error_code ec;
        std::filesystem::remove_all(caminho, ec);
    }
    std::filesystem::path caminho;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
    const std::string bytes(reinterpret_cast<const char*>(dados), tamanho);

    const auto lido = velmora::LeRegedit4(bytes);
    const std::string escrito = velmora::EscreveRegedit4(lido.arvore);
    const auto relido = velmora::LeRegedit4(escrito);
    if (relido.danificado || velmora::EscreveRegedit4(relido.arvore) != escrito) std::abort();

    static const Pasta pasta;
    const auto entrada = pasta.caminho / "entrada.reg";
    const auto store = pasta.caminho / "registro.reg";
    const auto saida = pasta.caminho / "saida.reg";
    std::ofstream(entrada, std::ios::binary) << bytes;
    {
        velmora::clsRegistryAccess reg(store);
        reg.ImportFromReg(entrada);
        reg.ExportToReg("HKCU", saida, true);
        reg.ImportFromReg(saida);
    }
    std::error_code ec;
    std::filesystem::remove(store, ec);
    std::filesystem::remove(saida, ec);
    return 0;
}
