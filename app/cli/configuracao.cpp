// configuracao: export and import of the settings key as a REGEDIT4 file.
#include "comandos.h"
#include "opcoes.h"

#include "store/configuracao.h"
#include "store/logdebug.h"
#include "store/texto1252.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace velmora::cli {

namespace {

bool ComecaComRegedit4(const std::filesystem::path& arquivo) {
    std::ifstream f(arquivo, std::ios::binary);
    std::string linha;
    std::getline(f, linha);
    if (linha.rfind("\xEF\xBB\xBF", 0) == 0) linha.erase(0, 3);
    while (!linha.empty() && (linha.back() == '\r' || linha.back() == ' ')) linha.pop_back();
    return IguaisSemCaixa(linha, "REGEDIT4");
}

} // namespace

int ComandoConfiguracao(const Argumentos& args) {
    if (args.size() != 2 || (args[0] != "exporta" && args[0] != "importa"))
        return ErroDeUso("uso: velmora-cli configuracao exporta|importa ARQUIVO");
    const std::filesystem::path arquivo = args[1];
    const Diario diario;
    clsRegistryAccess reg(ArquivoRegistro(), &diario);
    std::error_code ec;

    if (args[0] == "exporta") {
        if (std::filesystem::exists(arquivo, ec)) {
            std::fprintf(stderr, "velmora-cli: o arquivo já existe: %s\n", arquivo.c_str());
            return 1;
        }
        if (!reg.KeyExists(ChaveConfig)) {
            std::fprintf(stderr, "velmora-cli: ainda não há configuração para exportar\n");
            return 1;
        }
        if (!reg.ExportToReg(ChaveConfig, arquivo, true)) {
            std::fprintf(stderr, "velmora-cli: não foi possível gravar %s\n", arquivo.c_str());
            return 1;
        }
        std::printf("configuração exportada para %s\n", arquivo.c_str());
        return 0;
    }

    if (!std::filesystem::is_regular_file(arquivo, ec)) {
        std::fprintf(stderr, "velmora-cli: arquivo não encontrado: %s\n", arquivo.c_str());
        return 1;
    }
    if (!ComecaComRegedit4(arquivo)) {
        std::fprintf(stderr, "velmora-cli: %s não começa com REGEDIT4\n", arquivo.c_str());
        return 2;
    }
    if (!reg.ImportFromReg(arquivo)) {
        std::fprintf(stderr, "velmora-cli: não foi possível importar %s\n", arquivo.c_str());
        return 1;
    }
    std::printf("configuração importada de %s\n", arquivo.c_str());
    return 0;
}

} // namespace velmora::cli
