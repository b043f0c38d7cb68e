// The settings over the registry layer: defaults, booleans, tolerant numbers, ports.
#include "ambiente.h"

#include "store/configuracao.h"

namespace velmora {
namespace {

class Ajustes : public teste::Ambiente {
  protected:
    clsRegistryAccess reg{configuracao};
};

TEST_F(Ajustes, ChaveVaziaDaOsPadroes) {
    const Configuracao c = GetConfig(reg);
    EXPECT_TRUE(c.TocarSom);
    EXPECT_FALSE(c.TocarMusica);
    EXPECT_TRUE(c.HabilitaChat);
    EXPECT_EQ(c.Velocit, 2);
    EXPECT_EQ(LeMemoria(reg, "OPTJ"), "1");
    EXPECT_EQ(LeMemoria(reg, "DF"), "3");
    EXPECT_EQ(LeMemoria(reg, "Regra1"), "1");
    EXPECT_EQ(LeMemoria(reg, "TxtHC"), "Jogador");
    EXPECT_TRUE(LeMarcado(reg, "ChkChat"));
    EXPECT_EQ(PortaPadrao(reg), 2001);
    EXPECT_EQ(PortaAtual(reg), 2001);
    EXPECT_FALSE(std::filesystem::exists(configuracao)); // reading creates nothing
}

TEST_F(Ajustes, TextoParaBoolEmPortuguesEIngles) {
    EXPECT_TRUE(TextoParaBool("Verdadeiro", false));
    EXPECT_TRUE(TextoParaBool("TRUE", false));
    EXPECT_FALSE(TextoParaBool("falso", true));
    EXPECT_TRUE(TextoParaBool("sim", true));

    GravaOpcao(reg, "TocarSom", "Verdadeiro");
    GravaOpcao(reg, "TocarMusica", "sim");
    GravaOpcao(reg, "HabilitaChat", "FALSO");
    const Configuracao c = GetConfig(reg);
    EXPECT_TRUE(c.TocarSom);
    EXPECT_FALSE(c.TocarMusica); // any other word: the option's default
    EXPECT_FALSE(c.HabilitaChat);
}

TEST_F(Ajustes, VelocitNuncaEhZero) {
    for (const char* guardado : {"0", "rápido", "", "300", "-1"}) {
        GravaOpcao(reg, "Velocit", guardado);
        EXPECT_EQ(GetConfig(reg).Velocit, 2) << guardado;
    }
    GravaOpcao(reg, "Velocit", "0");
    SetConfig(reg, GetConfig(reg));
    EXPECT_EQ(LeOpcao(reg, "Velocit", ""), "2");
    GravaOpcao(reg, "Velocit", "5 ");
    EXPECT_EQ(GetConfig(reg).Velocit, 5);
}

TEST_F(Ajustes, SetConfigGuardaTrueFalseEVoltaIgual) {
    Configuracao c;
    c.TocarSom = false;
    c.TocarMusica = true;
    c.Velocit = 6;
    c.HabilitaChatIngles = false;
    c.MarcaMovimentos = false;
    SetConfig(reg, c);
    EXPECT_EQ(LeOpcao(reg, "TocarSom", ""), "False");
    EXPECT_EQ(LeOpcao(reg, "TocarMusica", ""), "True");
    EXPECT_EQ(LeOpcao(reg, "Velocit", ""), "6");
    clsRegistryAccess outro(configuracao); // as the next run of the program
    EXPECT_EQ(GetConfig(outro), c);
    EXPECT_NE(Le(configuracao).find("[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]"),
              std::string::npos);
}

TEST_F(Ajustes, GravaConfigConfereOQueLeu) {
    EXPECT_TRUE(GravaConfig(reg, "J_20240101_7", "S", "St"));
    EXPECT_EQ(LeConfig(reg, "J_20240101_7", "", "St"), "S");
    EXPECT_EQ(LeOpcao(reg, "J_20240101_7", "não"), "não"); // the sub-key is apart
    EXPECT_TRUE(reg.KeyExists("HKCU\\Software\\Norvane\\Velmora Ace\\St"));
    // longer than a read can give back
    EXPECT_FALSE(GravaConfig(reg, "longo", std::string(2000, 'x')));
    EXPECT_TRUE(GravaOpcao(reg, "longo", std::string(2000, 'x')));
    EXPECT_EQ(LeOpcao(reg, "longo", "padrão"), "padrão");
    EXPECT_TRUE(GravaOpcao(reg, "TxtHC", "João"));
    EXPECT_EQ(LeMemoria(reg, "txthc"), "João"); // names match without regard to case
}

TEST_F(Ajustes, CaixasEPortas) {
    GravaOpcao(reg, "ChkChat", "True");
    EXPECT_FALSE(LeMarcado(reg, "ChkChat"));
    GravaOpcao(reg, "Check1", "1");
    EXPECT_TRUE(LeMarcado(reg, "Check1"));

    GravaOpcao(reg, "PortaDefault", "3050");
    EXPECT_EQ(PortaAtual(reg), 3050); // "mpt" missing: the default port
    GravaOpcao(reg, "mpt", "4000x");
    EXPECT_EQ(PortaAtual(reg), 4000);
    GravaOpcao(reg, "PortaDefault", "porta");
    EXPECT_EQ(PortaPadrao(reg), 0);
}

} // namespace
} // namespace velmora
