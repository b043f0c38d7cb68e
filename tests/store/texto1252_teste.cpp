// Windows-1252 <-> UTF-8: every byte, the 80..9F table, the undefined bytes, broken input.
#include "store/texto1252.h"

#include <gtest/gtest.h>

#include <array>

namespace velmora {
namespace {

TEST(Texto1252, TodosOs256BytesVoltamIguais) {
    for (int b = 0; b < 256; ++b) {
        const std::string byte(1, static_cast<char>(b));
        const std::string utf8 = Cp1252ParaUtf8(byte);
        EXPECT_EQ(Utf8ParaCp1252(utf8), byte) << "byte " << b;
        if (b < 0x80)
            EXPECT_EQ(utf8, byte);
        else
            EXPECT_GE(utf8.size(), 2u) << "byte " << b;
    }
    std::string todos;
    for (int b = 0; b < 256; ++b) todos += static_cast<char>(b);
    EXPECT_EQ(Utf8ParaCp1252(Cp1252ParaUtf8(todos)), todos);
}

TEST(Texto1252, TabelaDe80a9F) {
    // the characters of 80..9F as Windows-1252 defines them; "" marks the undefined bytes
    const std::array<const char*, 32> esperado = {
        "€", "",  "‚", "ƒ", "„", "…", "†", "‡", "ˆ", "‰", "Š", "‹", "Œ", "", "Ž", "",
        "",  "‘", "’", "“", "”", "•", "–", "—", "˜", "™", "š", "›", "œ", "", "ž", "Ÿ"};
    for (int i = 0; i < 32; ++i) {
        const std::string byte(1, static_cast<char>(0x80 + i));
        if (*esperado[i] != '\0') {
            EXPECT_EQ(Cp1252ParaUtf8(byte), esperado[i]) << std::hex << 0x80 + i;
            EXPECT_EQ(Utf8ParaCp1252(esperado[i]), byte) << std::hex << 0x80 + i;
        } else {
            // undefined: the control character of the same number, both ways
            const std::string c1 = {'\xC2', static_cast<char>(0x80 + i)};
            EXPECT_EQ(Cp1252ParaUtf8(byte), c1) << std::hex << 0x80 + i;
            EXPECT_EQ(Utf8ParaCp1252(c1), byte) << std::hex << 0x80 + i;
        }
    }
}

TEST(Texto1252, CaracteresSemLugarViramInterrogacao) {
    EXPECT_EQ(Utf8ParaCp1252("日本"), "??");
    EXPECT_EQ(Utf8ParaCp1252("a😀b"), "a?b");
    EXPECT_EQ(Utf8ParaCp1252("\xC2\x80"), "?"); // U+0080 is no byte of the code page
    // broken UTF-8: a lone continuation, a cut sequence, an overlong form, a surrogate
    EXPECT_EQ(Utf8ParaCp1252("a\x80z"), "a?z");
    EXPECT_EQ(Utf8ParaCp1252("a\xE2\x82"), "a??");
    EXPECT_EQ(Utf8ParaCp1252("\xC0\xAF"), "??");
    EXPECT_EQ(Utf8ParaCp1252("\xED\xA0\x80"), "???");
    EXPECT_EQ(Utf8ParaCp1252(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(Texto1252, CaixaSemDiferenca) {
    EXPECT_TRUE(IguaisSemCaixa("NIVEL3", "nivel3"));
    EXPECT_TRUE(IguaisSemCaixa(Utf8ParaCp1252("JOSÉ ÇÃO ŠŒŽŸ"), Utf8ParaCp1252("josé ção šœžÿ")));
    EXPECT_FALSE(IguaisSemCaixa("\xD7", "\xF7")); // × and ÷ are no pair
}

TEST(Texto1252, ArquivoSalvoEmUtf8EhReconhecido) {
    EXPECT_EQ(NormalizaParaCp1252("N1=José"), "N1=Jos\xE9");
    EXPECT_EQ(NormalizaParaCp1252("\xEF\xBB\xBFN1=Ana"), "N1=Ana");
    EXPECT_EQ(NormalizaParaCp1252("N1=Jos\xE9"), "N1=Jos\xE9"); // already the code page
    EXPECT_EQ(NormalizaParaCp1252("N1=Ana"), "N1=Ana");
}

} // namespace
} // namespace velmora
