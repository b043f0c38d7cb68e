// The operator's options: file, environment and command line, in that order of strength,
// and refusals of bad values.
#include "apoio.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace teste;

TEST(Opcoes, ArquivoAmbienteELinhaDeComando) {
    const auto pasta = PastaTemporaria();
    const auto arquivo = pasta / "velmora-servico.conf";
    std::ofstream(arquivo) << "# comentário\n porta = 9000 \nporta-relay=9001\naviso = Olá; mundo\n"
                              "obrigatorio = sim\nversao-nova = 3.9.2\n";
    ::setenv("VELMORA_SERVICO_PORTA_RELAY", "9101", 1);
    ::setenv("VELMORA_SERVICO_VERSAO_NOVA", "3.9.3", 1);
    Opcoes o;
    EXPECT_EQ(LeOpcoes(o, {"--config", arquivo.string(), "--versao-nova=3.9.4", "--sem-limites"}),
              "");
    ::unsetenv("VELMORA_SERVICO_PORTA_RELAY");
    ::unsetenv("VELMORA_SERVICO_VERSAO_NOVA");
    EXPECT_EQ(o.porta, 9000);
    EXPECT_EQ(o.portaRelay, 9101);    // the environment over the file
    EXPECT_EQ(o.versaoNova, "3.9.4"); // the command line over both
    EXPECT_EQ(o.aviso, "Olá; mundo");
    EXPECT_TRUE(o.obrigatorio);
    EXPECT_TRUE(o.semLimites);
    EXPECT_EQ(o.UrlPublica(), "http://127.0.0.1:9000");
    o.endereco = "0.0.0.0";
    EXPECT_EQ(o.HostPublico(), "127.0.0.1");
    o.hostPublico = "damas.example.org";
    EXPECT_EQ(o.HostPublico(), "damas.example.org");
    // Defaults: where the game looks for the service
    const Opcoes padrao;
    EXPECT_EQ(padrao.UrlPublica(), "http://127.0.0.1:8080");
    std::filesystem::remove_all(pasta);
}

TEST(Opcoes, ValoresRuinsSaoRecusados) {
    for (const std::vector<std::string>& args :
         std::vector<std::vector<std::string>>{{"--porta", "70000"},
                                               {"--porta", "x"},
                                               {"--nada", "1"},
                                               {"--tempo-jogada", "30"},
                                               {"--obrigatorio", "talvez"},
                                               {"--porta"},
                                               {"solto"},
                                               {"--config", "/nao/existe"},
                                               {"--custo-senha", "2"}}) {
        Opcoes o;
        EXPECT_NE(LeOpcoes(o, args), "") << args[0];
    }
}
