// The ini format: reading with defaults, writing in place, case, blanks, code page, CR LF.
#include "ambiente.h"

#include "store/ini.h"

namespace velmora {
namespace {

class Ini : public teste::Ambiente {
  protected:
    std::filesystem::path arquivo() const { return dados / "teste.ini"; }
};

TEST_F(Ini, FaltandoDaOPadrao) {
    EXPECT_EQ(LeIni("S", "k", arquivo(), "padrão"), "padrão");
    Escreve(arquivo(), "[S]\r\nvazia=\r\nk=1\r\n[T]\r\nj=2\r\n");
    EXPECT_EQ(LeIni("S", "vazia", arquivo(), "padrão"), "padrão");
    EXPECT_EQ(LeIni("S", "j", arquivo(), "padrão"), "padrão");
    EXPECT_EQ(LeIni("U", "k", arquivo(), "padrão"), "padrão");
    EXPECT_EQ(LeIni("S", "k", arquivo(), "padrão"), "1");
}

TEST_F(Ini, GravaCriaPastaArquivoESecaoComCrLf) {
    ASSERT_TRUE(GravaIni("Nivel3", "N1", "Jogador", arquivo()));
    EXPECT_EQ(Le(arquivo()), "[Nivel3]\r\nN1=Jogador\r\n");
    ASSERT_TRUE(GravaIni("Nivel3", "P1", "412", arquivo()));
    ASSERT_TRUE(GravaIni("CPU", "Venceu3", "1", arquivo()));
    ASSERT_TRUE(GravaIni("nivel3", "n1", "Outro", arquivo()));
    EXPECT_EQ(Le(arquivo()), "[Nivel3]\r\nn1=Outro\r\nP1=412\r\n[CPU]\r\nVenceu3=1\r\n");
    // line breaks in a text can't break the file
    ASSERT_TRUE(GravaIni("CPU", "x", "a\r\nb", arquivo()));
    EXPECT_EQ(LeIni("CPU", "x", arquivo(), ""), "a  b");
}

TEST_F(Ini, ArquivoEditadoAMaoEhAceitoComoEsta) {
    const std::string manual = "; recordes\n"
                               "  [ nivel2 ]  \n"
                               "n1 = Maria  \n"
                               "\n"
                               "P1=\"300\"\n"
                               "[Nivel2]\n"
                               "N2=duplicada\n"
                               "[outra]\n"
                               "N1=fora\n";
    Escreve(arquivo(), manual);
    EXPECT_EQ(LeIni("NIVEL2", "N1", arquivo(), ""), "Maria");
    EXPECT_EQ(LeIni("Nivel2", "P1", arquivo(), ""), "300");
    EXPECT_EQ(LeIni("Nivel2", "N2", arquivo(), ""), "duplicada");
    EXPECT_EQ(Le(arquivo()), manual); // reading never writes
    ASSERT_TRUE(GravaIni("Nivel2", "N3", "Nova", arquivo()));
    EXPECT_EQ(Le(arquivo()), "; recordes\r\n"
                             "  [ nivel2 ]  \r\n"
                             "n1 = Maria  \r\n"
                             "\r\n"
                             "P1=\"300\"\r\n"
                             "N3=Nova\r\n"
                             "[Nivel2]\r\n"
                             "N2=duplicada\r\n"
                             "[outra]\r\n"
                             "N1=fora\r\n");
}

TEST_F(Ini, AcentosNaPaginaDeCodigoDoWindows) {
    ASSERT_TRUE(GravaIni("Nivel1", "N1", "Conceição", arquivo()));
    EXPECT_EQ(Le(arquivo()), "[Nivel1]\r\nN1=Concei\xE7\xE3o\r\n");
    EXPECT_EQ(LeIni("Nivel1", "N1", arquivo(), ""), "Conceição");
    ASSERT_TRUE(GravaIni("Nível", "Ação", "sim", arquivo()));
    EXPECT_EQ(LeIni("NÍVEL", "AÇÃO", arquivo(), ""), "sim");
    // a file saved by a UTF-8 editor keeps its accents
    Escreve(arquivo(), "\xEF\xBB\xBF[Nivel1]\nN1=José\n");
    EXPECT_EQ(LeIni("Nivel1", "N1", arquivo(), ""), "José");
    ASSERT_TRUE(GravaIni("Nivel1", "P1", "9", arquivo()));
    EXPECT_EQ(Le(arquivo()), "[Nivel1]\r\nN1=Jos\xE9\r\nP1=9\r\n");
}

TEST_F(Ini, LeituraCabeEm255Bytes) {
    Escreve(arquivo(), "[S]\r\nlongo=" + std::string(300, 'x') + "\r\nnul=ab" +
                           std::string(1, '\0') + "cd\r\nsonul=" + std::string(1, '\0') + "z\r\n");
    EXPECT_EQ(LeIni("S", "longo", arquivo(), ""), std::string(254, 'x'));
    EXPECT_EQ(LeIni("S", "nul", arquivo(), ""), "ab");
    EXPECT_EQ(LeIni("S", "sonul", arquivo(), "p"), "p");
}

TEST_F(Ini, DiscoCheioDeixaOArquivoAntigo) {
    ASSERT_TRUE(GravaIni("S", "k", "antigo", arquivo()));
    {
        teste::DiscoCheio cheio(8);
        EXPECT_FALSE(GravaIni("S", "k", "novo e mais comprido", arquivo()));
    }
    EXPECT_EQ(LeIni("S", "k", arquivo(), ""), "antigo");
}

} // namespace
} // namespace velmora
