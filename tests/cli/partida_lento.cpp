// A whole game between two computers of the first level, through the turn cycle.
#include "executa.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(CliLento, PartidaEntreComputadoresChegaAoFim) {
    const auto s = teste::Executa("partida --tipo CC --nivel1 1 --nivel2 1");
    ASSERT_EQ(s.codigo, 0) << s.texto;
    const size_t fim = s.texto.find_last_of('\n', s.texto.size() - 2);
    const std::string ultima = s.texto.substr(fim + 1);
    EXPECT_TRUE(ultima == "Vencedor: CPU 1\n" || ultima == "Vencedor: CPU 2\n" ||
                ultima == "Resultado: empate\n")
        << ultima;
    EXPECT_EQ(s.texto.rfind("Regra: Peão captura para trás\n", 0), 0u);
}

} // namespace
} // namespace velmora
