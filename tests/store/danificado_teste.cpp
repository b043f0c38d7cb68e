// Damaged, truncated, binary and gigantic files: nothing crashes and no file is lost.
#include "ambiente.h"

#include "store/ini.h"
#include "store/logdebug.h"
#include "store/recordes.h"
#include "store/registro.h"

namespace velmora {
namespace {

class Danificado : public teste::Ambiente {
  protected:
    Danificado() {
        diario.ouvinte = [this](const std::string& l) { linhas.push_back(l); };
    }
    bool Registrou(const std::string& trecho) const {
        for (const auto& l : linhas)
            if (l.find(trecho) != std::string::npos) return true;
        return false;
    }
    std::filesystem::path Copia(int n = 1) const {
        return configuracao.string() +
               (n == 1 ? ".danificado" : ".danificado." + std::to_string(n));
    }
    Diario diario{true, pasta / "debug.txt"};
    std::vector<std::string> linhas;
};

TEST_F(Danificado, ArquivoQueNaoEhRegedit4LeVazioEGuardaCopia) {
    const std::string original = "isto não é um registro\n[HKEY_CURRENT_USER\\K]\n\"v\"=\"1\"\n";
    Escreve(configuracao, original);
    clsRegistryAccess reg(configuracao, &diario);
    EXPECT_EQ(reg.ReadString("HKCU\\K", "v", "padrão"), "padrão");
    EXPECT_FALSE(std::filesystem::exists(Copia())); // reading alone changes nothing
    EXPECT_EQ(Le(configuracao), original);

    ASSERT_NE(reg.WriteString("HKCU\\K", "w", "2"), 0u);
    EXPECT_EQ(Le(Copia()), original);
    EXPECT_TRUE(Registrou("danificado"));
    EXPECT_TRUE(Registrou(Copia().string()));
    clsRegistryAccess depois(configuracao);
    EXPECT_EQ(depois.ReadString("HKCU\\K", "w", ""), "2");
    // the new file is sound: a further write makes no second copy
    depois.WriteString("HKCU\\K", "x", "3");
    EXPECT_FALSE(std::filesystem::exists(Copia(2)));
}

TEST_F(Danificado, LinhasRuinsSaoPuladasEOResteFica) {
    Escreve(configuracao, "REGEDIT4\r\n\r\n"
                          "[HKEY_CURRENT_USER\\Bom]\r\n\"a\"=\"1\"\r\n"
                          "\"b\"=dword:zz\r\n"
                          "\"c\"=\"sem fim\r\n"
                          "[HKEY_NENHUM\\X]\r\n\"d\"=\"4\"\r\n"
                          "[HKEY_CURRENT_USER\\Bom\\Filha]\r\n\"e\"=hex:0\r\n"
                          "[HKEY_CURRENT_USER\\Cortad");
    clsRegistryAccess reg(configuracao, &diario);
    EXPECT_EQ(reg.ReadString("HKCU\\Bom", "a", ""), "1");
    EXPECT_FALSE(reg.ValueExists("HKCU\\Bom", "b"));
    EXPECT_FALSE(reg.ValueExists("HKCU\\Bom", "c"));
    EXPECT_EQ(reg.ReadBinary("HKCU\\Bom\\Filha", "e", ""), " 00");
    EXPECT_TRUE(Registrou("linha 5"));
    reg.WriteString("HKCU\\Bom", "novo", "1");
    EXPECT_TRUE(std::filesystem::exists(Copia()));
}

TEST_F(Danificado, ArquivoGiganteLeVazioEGuardaCopia) {
    const std::uintmax_t tamanho = 50u << 20;
    Gigante(configuracao, tamanho);
    clsRegistryAccess reg(configuracao, &diario);
    EXPECT_EQ(reg.ReadString("HKCU\\K", "v", "padrão"), "padrão");
    EXPECT_TRUE(Registrou("grande demais"));
    ASSERT_NE(reg.WriteString("HKCU\\K", "v", "1"), 0u);
    EXPECT_EQ(std::filesystem::file_size(Copia()), tamanho);
    EXPECT_LT(std::filesystem::file_size(configuracao), 1000u);
}

TEST_F(Danificado, CopiaAnteriorNuncaEhSubstituida) {
    Escreve(configuracao, "lixo 1");
    clsRegistryAccess(configuracao).WriteString("HKCU\\K", "v", "1");
    Escreve(configuracao, "lixo 2");
    clsRegistryAccess(configuracao).WriteString("HKCU\\K", "v", "1");
    EXPECT_EQ(Le(Copia(1)), "lixo 1");
    EXPECT_EQ(Le(Copia(2)), "lixo 2");
}

TEST_F(Danificado, ArquivoIlegivelNuncaEhSubstituido) {
    std::filesystem::create_directories(configuracao); // a folder where the file should be
    clsRegistryAccess reg(configuracao, &diario);
    EXPECT_EQ(reg.ReadString("HKCU\\K", "v", "padrão"), "padrão");
    EXPECT_EQ(reg.WriteString("HKCU\\K", "v", "1"), 0u);
    EXPECT_TRUE(std::filesystem::is_directory(configuracao));
    EXPECT_TRUE(Registrou("não pode ser lido"));
}

TEST_F(Danificado, IniGiganteOuIlegivel) {
    const auto rec = dados / "Velmora.rec";
    Gigante(rec, 50u << 20);
    Recordes recordes(rec);
    EXPECT_EQ(recordes.NomeRecord(3, 1), "");
    EXPECT_EQ(recordes.TempoRecord(3, 1), TempoLivre);
    ASSERT_TRUE(recordes.GravaRecord("Ana", 100, 3, 1));
    EXPECT_EQ(std::filesystem::file_size(rec.string() + ".danificado"), 50u << 20);
    EXPECT_EQ(recordes.NomeRecord(3, 1), "Ana");

    const auto sav = dados / "Velmora.sav";
    std::filesystem::create_directories(sav);
    EXPECT_FALSE(GravaIni("CPU", "Venceu1", "1", sav));
    EXPECT_TRUE(std::filesystem::is_directory(sav));
}

TEST_F(Danificado, IniComBytesBinariosEhLidoERegravadoSemPerder) {
    const auto rec = dados / "Velmora.rec";
    std::string binario;
    for (int i = 0; i < 256; ++i) binario += static_cast<char>(i);
    Escreve(rec, binario + "\r\n[Nivel1]\r\nN1=Ana\r\nP1=10\r\n");
    Recordes recordes(rec);
    EXPECT_EQ(recordes.NomeRecord(1, 1), "Ana");
    ASSERT_TRUE(recordes.GravaRecord("Bia", 5, 1, 1));
    EXPECT_EQ(recordes.NomeRecord(1, 2), "Ana");
    EXPECT_NE(Le(rec).find(binario.substr(11)), std::string::npos); // the bytes after the LF stay
}

} // namespace
} // namespace velmora
