// The debug log: off unless VELMORA_DEBUG=1; time, two blanks, text; file and listener.
#include "ambiente.h"

#include "store/logdebug.h"

namespace velmora {
namespace {

using Diarios = teste::Ambiente;

TEST_F(Diarios, DesligadoNaoFazNada) {
    for (const char* valor : {"", "0", "sim", "true"}) {
        if (*valor) ::setenv("VELMORA_DEBUG", valor, 1);
        Diario d;
        int chamadas = 0;
        d.ouvinte = [&](const std::string&) { ++chamadas; };
        d.LogDebug("nada");
        EXPECT_FALSE(d.Ligado()) << valor;
        EXPECT_EQ(chamadas, 0);
    }
    EXPECT_FALSE(std::filesystem::exists(dados / "debug.txt"));
}

TEST_F(Diarios, LigadoEscreveArquivoEOuvinte) {
    ::setenv("VELMORA_DEBUG", "1", 1);
    Diario d;
    ASSERT_TRUE(d.Ligado());
    EXPECT_EQ(d.Arquivo(), dados / "debug.txt");
    std::vector<std::string> ouvidas;
    d.ouvinte = [&](const std::string& l) { ouvidas.push_back(l); };
    d.relogio = [] { return 3600.0 + 2 * 60 + 3.75; };
    d.LogDebug(" <- /PODJOGAR\\");
    d.relogio = [] { return 23 * 3600.0 + 59 * 60 + 59; };
    d.LogDebug("conexão");
    EXPECT_EQ(ouvidas,
              (std::vector<std::string>{"01:02:03   <- /PODJOGAR\\", "23:59:59  conexão"}));
    EXPECT_EQ(Le(dados / "debug.txt"), "01:02:03   <- /PODJOGAR\\\n23:59:59  conexão\n");
    Diario outro; // appends to what is there
    outro.relogio = [] { return 0.0; };
    outro.LogDebug("x");
    EXPECT_TRUE(Le(dados / "debug.txt").ends_with("conexão\n00:00:00  x\n"));
}

} // namespace
} // namespace velmora
