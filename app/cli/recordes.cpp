// recordes: the records table of one level and the tally line, as the records viewer shows them.
#include "comandos.h"
#include "opcoes.h"

#include "core/utilidades.h"
#include "store/configuracao.h"
#include "store/logdebug.h"
#include "store/numeros.h"
#include "store/placar.h"
#include "store/recordes.h"

#include <algorithm>
#include <cstdio>

namespace velmora::cli {

namespace {

// Characters, not bytes, so that accented names line up.
size_t Largura(const std::string& s) {
    size_t n = 0;
    for (char c : s) n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return n;
}

} // namespace

int ComandoRecordes(const Argumentos& args) {
    Opcoes o(args, {"nivel"});
    if (!o.ok()) return ErroDeUso(o.erro);
    // without --nivel: the level chosen last in the new game dialog
    const Diario diario;
    clsRegistryAccess reg(ArquivoRegistro(), &diario);
    long padrao = NumeroTolerante(LeMemoria(reg, "DF"));
    if (padrao < 1 || padrao > 5) padrao = 3;
    const auto nivel = o.inteiro("nivel", 1, 8, padrao);
    if (!nivel) return ErroDeUso(o.erro);
    const int n = static_cast<int>(*nivel);

    const auto tabela = Recordes().Tabela(n);
    size_t largura = 0;
    for (const auto& r : tabela) largura = std::max(largura, Largura(r.nome));
    if (!NomeDoNivel(n).empty()) std::printf("%s\n", NomeDoNivel(n).c_str());
    for (size_t i = 0; i < tabela.size(); ++i) {
        const std::string espaco(largura - Largura(tabela[i].nome) + 2, ' ');
        std::printf("%03zu  %s%s%s\n", i + 1, tabela[i].nome.c_str(), espaco.c_str(),
                    FormataTempo(tabela[i].tempo).c_str());
    }
    // the tournament's table has no tally
    if (NomeDoNivel(n) != "Torneio") std::printf("%s\n", Placar().Texto(n).c_str());
    return 0;
}

} // namespace velmora::cli
