// The registry layer over the store file: paths, values, keys, enumeration, export/import.
#include "ambiente.h"

#include "store/registro.h"

namespace velmora {
namespace {

using teste::Ambiente;

class Registro : public Ambiente {
  protected:
    clsRegistryAccess reg{configuracao};
};

TEST_F(Registro, RaizLongaOuCurtaEmQualquerCaixaSaoAMesmaChave) {
    ASSERT_NE(reg.WriteString("hkey_current_user\\Software\\Teste", "a", "1"), 0u);
    EXPECT_EQ(reg.ReadString("HKCU\\software\\TESTE", "A", "x"), "1");
    EXPECT_EQ(reg.ReadString("HKEY_CURRENT_USER\\Software\\Teste", "a", "x"), "1");
    EXPECT_TRUE(reg.KeyExists("HKCU"));
    // a root that isn't in the table fails every call
    EXPECT_EQ(reg.WriteString("HKXX\\Software", "a", "1"), 0u);
    EXPECT_EQ(reg.CreateKey("HKEY_NADA\\Software"), 0u);
    EXPECT_EQ(reg.ReadString("HKXX\\Software", "a", "padrão"), "padrão");
    std::vector<std::string> nomes;
    EXPECT_EQ(reg.EnumKeys("HKXX", nomes), -1);
}

TEST_F(Registro, TextoPadraoLimiteEValorPadraoDaChave) {
    EXPECT_EQ(reg.ReadString("HKCU\\Nada", "v", "padrão"), "padrão");
    reg.WriteString("HKCU\\K", "@", "arroba");
    EXPECT_EQ(reg.ReadString("HKCU\\K", "", "x"), "arroba");
    reg.WriteString("HKCU\\K", "", "vazio");
    EXPECT_EQ(reg.ReadString("HKCU\\K", "", "x"), "vazio");
    EXPECT_FALSE(reg.ValueExists("HKCU\\K", "@"));

    reg.WriteString("HKCU\\K", "cheio", std::string(1024, 'a'));
    reg.WriteString("HKCU\\K", "demais", std::string(1025, 'a'));
    EXPECT_EQ(reg.ReadString("HKCU\\K", "cheio", "x"), std::string(1024, 'a'));
    EXPECT_EQ(reg.ReadString("HKCU\\K", "demais", "x"), "x");
    // the limit counts bytes on disk, where "é" is one
    std::string acentos;
    for (int i = 0; i < 1024; ++i) acentos += "é";
    reg.WriteString("HKCU\\K", "acentos", acentos);
    EXPECT_NE(reg.ReadString("HKCU\\K", "acentos", "x"), "x");
}

TEST_F(Registro, HklmRecorreAHkcu) {
    reg.WriteString("HKCU\\Software\\V", "so_hkcu", "sim");
    EXPECT_EQ(reg.ReadString("HKLM\\Software\\V", "so_hkcu", "não", true), "sim");
    EXPECT_EQ(reg.ReadString("HKLM\\Software\\V", "so_hkcu", "não", false), "não");

    reg.ProtegeRaiz("HKEY_LOCAL_MACHINE");
    EXPECT_EQ(reg.WriteString("HKLM\\Software\\V", "w", "1", false), 0u);
    EXPECT_EQ(reg.WriteString("HKLM\\Software\\V", "w", "1", true), 0x80000001u);
    EXPECT_EQ(reg.ReadString("HKCU\\Software\\V", "w", ""), "1");
    EXPECT_FALSE(reg.KeyExists("HKLM")); // no full access
    EXPECT_EQ(reg.ReadString("HKLM\\Software\\V", "so_hkcu", "não", true, true), "sim");
    // only HKLM falls back
    reg.ProtegeRaiz("HKCR");
    EXPECT_EQ(reg.WriteString("HKCR\\V", "w", "1", true), 0u);
}

TEST_F(Registro, DwordEBinario) {
    EXPECT_EQ(reg.ReadDWORD("HKCU\\D", "n", 96), 96u);
    reg.CreateKeyIfDoesntExists = false;
    EXPECT_EQ(reg.WriteDWORD("HKCU\\D", "n", 7), 0u);
    EXPECT_EQ(reg.WriteBinary("HKCU\\D", "b", "0A"), 0u);
    EXPECT_FALSE(reg.KeyExists("HKCU\\D"));
    reg.CreateKey("HKCU\\D");
    EXPECT_NE(reg.WriteDWORD("HKCU\\D", "n", 0xFFFFFFFF), 0u);
    EXPECT_EQ(reg.ReadDWORD("HKCU\\D", "n", 0), 0xFFFFFFFFu);
    reg.CreateKeyIfDoesntExists = true;

    EXPECT_NE(reg.WriteBinary("HKCU\\D", "b", "0a ff 00"), 0u);
    EXPECT_EQ(reg.ReadBinary("HKCU\\D", "b", "x"), " 0A FF 00");
    EXPECT_NE(reg.WriteBinary("HKCU\\D", "vazio", ""), 0u);
    EXPECT_TRUE(reg.ValueExists("HKCU\\D", "vazio"));
    EXPECT_EQ(reg.ReadBinary("HKCU\\D", "vazio", "x"), "");
    EXPECT_EQ(reg.WriteBinary("HKCU\\D", "ruim", "0G"), 0u);
    // a value of another type is no DWORD
    EXPECT_EQ(reg.ReadDWORD("HKCU\\D", "b", 5), 5u);
    EXPECT_EQ(reg.ReadString("HKCU\\D", "n", "texto"), "texto");
}

TEST_F(Registro, ConversoesDeBinario) {
    EXPECT_EQ(clsRegistryAccess::BinToStr("\x0A\xFF"), " 0A FF");
    EXPECT_EQ(clsRegistryAccess::StrToBin(" 0A FF"), "\x0A\xFF");
    EXPECT_EQ(clsRegistryAccess::StrToBin("00 41"), std::string("\0A", 2));
    EXPECT_TRUE(clsRegistryAccess::isBinValid(" 0a FF "));
    EXPECT_FALSE(clsRegistryAccess::isBinValid("   "));
    EXPECT_FALSE(clsRegistryAccess::isBinValid("0A,FF"));
}

TEST_F(Registro, ChavesEnumeracaoEApagamento) {
    reg.CreateKey("HKCU\\A\\B\\C");
    reg.WriteString("HKCU\\A\\B\\C", "v", "1");
    reg.CreateKey("HKCU\\A\\d");
    reg.CreateKey("HKCU\\A\\Ç");
    std::vector<std::string> nomes;
    EXPECT_EQ(reg.EnumKeys("HKCU\\A", nomes), 3);
    EXPECT_EQ(nomes, (std::vector<std::string>{"B", "d", "Ç"}));
    EXPECT_EQ(reg.EnumKeys("HKCU\\Nada", nomes), -1);
    EXPECT_TRUE(reg.HaveSubkey("HKCU\\A"));
    EXPECT_FALSE(reg.HaveSubkey("HKCU\\A\\d"));

    reg.KillKey("HKCU\\A\\B\\"); // a trailing "\" is ignored; everything below goes too
    EXPECT_FALSE(reg.KeyExists("HKCU\\A\\B"));
    EXPECT_FALSE(reg.KeyExists("HKCU\\A\\B\\C"));
    EXPECT_TRUE(reg.KeyExists("HKCU\\A\\d"));
    reg.KillKey("HKCU\\A"); // directly under the root
    EXPECT_FALSE(reg.KeyExists("HKCU\\A"));
    EXPECT_EQ(reg.EnumKeys("HKCU", nomes), 0);

    reg.WriteString("HKCU\\V", "x", "1");
    EXPECT_NE(reg.KillValue("HKCU\\V", "X"), 0u);
    EXPECT_EQ(reg.KillValue("HKCU\\V", "x"), 0u);
    EXPECT_FALSE(reg.ValueExists("HKCU\\V", "x"));
}

TEST_F(Registro, NomesQueNaoCabemNumaLinhaSaoRecusados) {
    EXPECT_EQ(reg.CreateKey("HKCU\\a\nb"), 0u);
    EXPECT_EQ(reg.WriteString("HKCU\\K", "a\r\nb", "1"), 0u);
    EXPECT_EQ(reg.CreateKey("HKCU\\" + std::string(256, 'k')), 0u);
    EXPECT_NE(reg.CreateKey("HKCU\\" + std::string(255, 'k')), 0u);
    EXPECT_NE(reg.WriteString("HKCU\\K", "tab\tno nome", "1"), 0u);
    EXPECT_EQ(clsRegistryAccess(configuracao).ReadString("HKCU\\K", "tab\tno nome", ""), "1");
}

TEST_F(Registro, EnumValuesPorTipo) {
    reg.WriteString("HKCU\\E", " nome ", "texto");
    reg.WriteBinary("HKCU\\E", "bin", "01 02");
    reg.WriteBinary("HKCU\\E", "nada", "");
    reg.WriteDWORD("HKCU\\E", "num", 300);
    std::vector<std::string> nomes, valores;
    EXPECT_EQ(reg.EnumValues("HKCU\\E", nomes, valores), 4);
    EXPECT_EQ(nomes, (std::vector<std::string>{"nome", "bin", "nada", "num"}));
    EXPECT_EQ(valores, (std::vector<std::string>{"texto", "01 02", "", "300"}));
    EXPECT_EQ(reg.EnumValues("HKCU\\E", nomes, valores, 4), 1);
    EXPECT_EQ(valores, std::vector<std::string>{"300"});
    EXPECT_EQ(reg.EnumValues("HKCU\\Nada", nomes, valores), -1);
}

TEST_F(Registro, ExportaNoFormatoRegedit4) {
    const std::string k = "HKCU\\Software\\Norvane\\Velmora Ace";
    reg.WriteString(k, "@", "padrão");
    reg.WriteString(k, "TocarSom", "True");
    reg.WriteDWORD(k, "n", 10);
    reg.WriteBinary(k, "b", "0a ff");
    reg.WriteString(k + "\\St", "J_1", "S");
    std::vector<std::string> mostrados;
    const auto arquivo = pasta / "exp.reg";
    ASSERT_EQ(
        reg.ExportToReg(k, arquivo, true, [&](const std::string& p) { mostrados.push_back(p); }),
        1);
    EXPECT_EQ(Le(arquivo), "REGEDIT4\r\n\r\n"
                           "[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"
                           "@=\"padr\xE3o\"\r\n"
                           "\"TocarSom\"=\"True\"\r\n"
                           "\"b\"=hex:0A,FF\r\n"
                           "\"n\"=dword:0000000A\r\n"
                           "\r\n"
                           "[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace\\St]\r\n"
                           "\"J_1\"=\"S\"\r\n"
                           "\r\n");
    EXPECT_EQ(mostrados.size(), 2u);
    // an existing file is left alone
    EXPECT_EQ(reg.ExportToReg(k, arquivo, true), 0);
    EXPECT_EQ(Le(arquivo).substr(0, 8), "REGEDIT4");
    const auto semFilhas = pasta / "so.reg";
    ASSERT_EQ(reg.ExportToReg(k, semFilhas, false), 1);
    EXPECT_EQ(Le(semFilhas).find("\\St]"), std::string::npos);
    EXPECT_EQ(reg.ExportToReg("HKCU\\Nada", pasta / "nada.reg"), 0);
    EXPECT_FALSE(std::filesystem::exists(pasta / "nada.reg"));
}

TEST_F(Registro, ImportaOQueExportou) {
    const std::string k = "HKCU\\Software\\Norvane\\Velmora Ace";
    reg.WriteString(k, "TxtHC", "José");
    reg.WriteDWORD(k + "\\Sub", "n", 42);
    reg.WriteBinary(k + "\\Sub", "b", "00 7F");
    const auto arquivo = pasta / "exp.reg";
    ASSERT_EQ(reg.ExportToReg(k, arquivo), 1);
    reg.KillKey(k);
    ASSERT_FALSE(reg.KeyExists(k));
    reg.CreateKeyIfDoesntExists = false;
    ASSERT_EQ(reg.ImportFromReg(arquivo), 1);
    EXPECT_TRUE(reg.CreateKeyIfDoesntExists);
    EXPECT_EQ(reg.ReadString(k, "TxtHC", ""), "José");
    EXPECT_EQ(reg.ReadDWORD(k + "\\Sub", "n", 0), 42u);
    EXPECT_EQ(reg.ReadBinary(k + "\\Sub", "b", ""), " 00 7F");
}

TEST_F(Registro, ImportaComoOTextoManda) {
    reg.WriteString("HKCU\\I", "apaga", "x");
    reg.WriteString("HKCU\\I", "@", "x");
    reg.WriteString("HKCU\\Velha\\Filha", "v", "x");
    const auto arquivo = pasta / "imp.reg";
    Escreve(arquivo, "regedit4\r\n"
                     "\r\n"
                     "[-HKEY_CURRENT_USER\\Velha]\r\n"
                     "[HKEY_CURRENT_USER\\I]\r\n"
                     "; a comment\r\n"
                     "\"igual\"=\"a=b=c\"\r\n"
                     "\"apaga\"=-\r\n"
                     "@=\"\"\r\n"
                     "\"d\"=DWORD:ff\r\n"
                     "\"h\"=HEX:01,02\r\n"
                     "sem igual\r\n");
    ASSERT_EQ(reg.ImportFromReg(arquivo), 1);
    EXPECT_EQ(reg.ReadString("HKCU\\I", "igual", ""), "a"); // behind the second "=" is lost
    EXPECT_FALSE(reg.ValueExists("HKCU\\I", "apaga"));
    EXPECT_FALSE(reg.ValueExists("HKCU\\I", ""));
    EXPECT_EQ(reg.ReadDWORD("HKCU\\I", "d", 0), 255u);
    EXPECT_EQ(reg.ReadBinary("HKCU\\I", "h", ""), " 01 02");
    EXPECT_FALSE(reg.KeyExists("HKCU\\Velha"));

    Escreve(arquivo, "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER\\N]\r\n");
    EXPECT_EQ(reg.ImportFromReg(arquivo), 0);
    EXPECT_FALSE(reg.KeyExists("HKCU\\N"));
    EXPECT_EQ(reg.ImportFromReg(pasta / "nao-existe.reg"), 0);
}

TEST_F(Registro, ImportarComoPrimeiraOperacaoSoMudaOQueOArquivoNomeia) {
    const std::string k = "HKCU\\Software\\Norvane\\Velmora Ace";
    reg.WriteString(k, "TocarSom", "False");
    reg.WriteString(k, "Velocit", "3");
    reg.WriteString(k + "\\Nicks", "ana", "segredo");
    const auto arquivo = pasta / "um.reg";
    Escreve(arquivo, "REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"
                     "\"Velocit\"=\"5\"\r\n\"TocarSom\"=-\r\n");
    {
        // A new object reads the file on its first call, which is the import.
        clsRegistryAccess outro(configuracao);
        ASSERT_EQ(outro.ImportFromReg(arquivo), 1);
    }
    clsRegistryAccess depois(configuracao);
    EXPECT_EQ(depois.ReadString(k, "Velocit", ""), "5");
    EXPECT_FALSE(depois.ValueExists(k, "TocarSom"));
    EXPECT_EQ(depois.ReadString(k + "\\Nicks", "ana", ""), "segredo");
}

TEST_F(Registro, OArquivoGuardaTudoExatamente) {
    const std::string k = "HKCU\\Software\\Norvane\\Velmora Ace";
    const std::string estranho = "aspas \" barra \\ fim\r\nlinha 2\ttab";
    reg.WriteString(k, "nome \"com\" aspas", estranho);
    reg.WriteString(k, "TxtHC", "Zé Ñandú €");
    reg.WriteDWORD(k, "d", 1);
    reg.CreateKey(k + "\\Vazia");
    const std::string texto = Le(configuracao);
    EXPECT_EQ(texto.substr(0, 12), "REGEDIT4\r\n\r\n");
    EXPECT_NE(texto.find("[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"),
              std::string::npos);
    EXPECT_NE(texto.find("\"TxtHC\"=\"Zé Ñandú €\"\r\n"), std::string::npos);

    clsRegistryAccess outro(configuracao);
    EXPECT_EQ(outro.ReadString(k, "nome \"com\" aspas", ""), estranho);
    EXPECT_EQ(outro.ReadString(k, "txthc", ""), "Zé Ñandú €");
    EXPECT_EQ(outro.ReadDWORD(k, "d", 0), 1u);
    EXPECT_TRUE(outro.KeyExists(k + "\\Vazia"));
}

TEST_F(Registro, VeAsMudancasDeOutraCopia) {
    clsRegistryAccess outro(configuracao);
    EXPECT_EQ(outro.ReadString("HKCU\\K", "v", "nada"), "nada");
    reg.WriteString("HKCU\\K", "v", "1");
    EXPECT_EQ(outro.ReadString("HKCU\\K", "v", "nada"), "1");
    outro.WriteString("HKCU\\K", "w", "2");
    EXPECT_EQ(reg.ReadString("HKCU\\K", "w", ""), "2");
    EXPECT_EQ(reg.ReadString("HKCU\\K", "v", ""), "1");
}

TEST_F(Registro, ArquivoEditadoAMao) {
    Escreve(configuracao, "\xEF\xBB\xBFRegedit4\n"
                          "; editado à mão\n"
                          "[hkey_current_user\\software\\norvane\\velmora ace]\n"
                          "  \"TxtHC\" = \"Conceição\"  \n"
                          "\"Lista\"=hex:01,02,\\\n"
                          "  03\n"
                          "\"Caminho\"=\"C:\\Jogos\"\n");
    EXPECT_EQ(reg.ReadString("HKCU\\Software\\Norvane\\Velmora Ace", "TxtHC", ""), "Conceição");
    EXPECT_EQ(reg.ReadBinary("HKCU\\Software\\Norvane\\Velmora Ace", "Lista", ""), " 01 02 03");
    EXPECT_EQ(reg.ReadString("HKCU\\Software\\Norvane\\Velmora Ace", "Caminho", ""), "C:\\Jogos");
    reg.WriteString("HKCU\\Software\\Norvane\\Velmora Ace", "x", "1");
    EXPECT_FALSE(std::filesystem::exists(configuracao.string() + ".danificado"));
}

TEST_F(Registro, FalhaDeGravacaoNaoMexeNoArquivoNemNaMemoria) {
    reg.WriteString("HKCU\\K", "v", "antigo");
    const std::string antes = Le(configuracao);
    {
        teste::DiscoCheio cheio(16);
        EXPECT_EQ(reg.WriteString("HKCU\\K", "v", "novo"), 0u);
        EXPECT_EQ(reg.CreateKey("HKCU\\Outra"), 0u);
        clsRegistryAccess::Lote lote(reg);
        reg.WriteString("HKCU\\K", "a", "1");
        reg.WriteString("HKCU\\K", "b", "2");
        EXPECT_FALSE(lote.Termina());
    }
    EXPECT_EQ(Le(configuracao), antes);
    EXPECT_EQ(reg.ReadString("HKCU\\K", "v", ""), "antigo");
    EXPECT_FALSE(reg.KeyExists("HKCU\\Outra"));
    EXPECT_FALSE(reg.ValueExists("HKCU\\K", "a"));
    // no temporary file is left behind
    int arquivos = 0;
    for ([[maybe_unused]] auto& e : std::filesystem::directory_iterator(configuracao.parent_path()))
        ++arquivos;
    EXPECT_EQ(arquivos, 1);
}

} // namespace
} // namespace velmora
