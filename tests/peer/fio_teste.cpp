// The wire's helpers: fields cut as the handlers number them, replacement, and the two ways
// of reading numbers.
#include "peer/fio.h"

#include <gtest/gtest.h>

namespace velmora::fio {
namespace {

TEST(Fio, PedacoNumeraComoOsManipuladores) {
    EXPECT_EQ(Pedaco("ConeCtado:2", ":", 1), "ConeCtado");
    EXPECT_EQ(Pedaco("ConeCtado:2", ":", 2), "2");
    EXPECT_EQ(Pedaco("#VERIFICA#1", "#", 1), "VERIFICA");
    EXPECT_EQ(Pedaco("#VERIFICA#1", "#", 2), "1");
    EXPECT_EQ(Pedaco("Nick:#0#Ana#", "#", 3), "Ana");
    EXPECT_EQ(Pedaco("Nick:#0#Ana#", "#", 4), "");
    EXPECT_EQ(Pedaco("a:b", ":", 9), "");
    EXPECT_EQ(Pedaco("", ":", 1), "");
    // The move message read from its second character on.
    EXPECT_EQ(Pedaco(">)JG(>)AB(>)T(>)", "(>)", 2), "AB");
    EXPECT_EQ(Pedaco(">)JG(>)AB(>)T(>)", "(>)", 3), "T");
    EXPECT_EQ(Pedaco(">)JG(>)AB(>)", "(>)", 3), "");
}

TEST(Fio, TrocaProcuraDeNovoDoComeco) {
    EXPECT_EQ(Troca("PP/G/G", "P/G", ""), "");
    EXPECT_EQ(Troca("xJ_OKyJ_OK", "J_OK", ""), "xy");
    EXPECT_EQ(Troca("abc", "", "z"), "abc");
    EXPECT_EQ(Apara("  a b  "), "a b");
    EXPECT_EQ(Apara("   "), "");
    EXPECT_EQ(Apara("\ta\t"), "\ta\t"); // only blanks go
}

TEST(Fio, NumerosEstritosFalham) {
    EXPECT_EQ(NumeroEstrito(" 17 "), 17);
    EXPECT_EQ(NumeroEstrito("-3"), -3);
    EXPECT_EQ(NumeroEstrito("2.5"), 2);
    EXPECT_EQ(NumeroEstrito("3.5"), 4);
    for (const char* ruim : {"", "abc", "1x", "1 2", "+", ".", "--1"}) {
        try {
            NumeroEstrito(ruim);
            ADD_FAILURE() << "aceitou \"" << ruim << "\"";
        } catch (const Falha& f) {
            EXPECT_EQ(f.numero, 13);
            EXPECT_STREQ(f.what(), "Type mismatch");
        }
    }
    try {
        NumeroEstrito("99999999999");
        ADD_FAILURE();
    } catch (const Falha& f) {
        EXPECT_EQ(f.numero, 6);
    }
}

TEST(Fio, NumerosBrandosLeemOInicio) {
    EXPECT_EQ(NumeroBrando("90"), 90);
    EXPECT_EQ(NumeroBrando("30s"), 30);
    EXPECT_EQ(NumeroBrando("abc"), 0);
    EXPECT_EQ(NumeroBrando(""), 0);
    EXPECT_EQ(NumeroBrando(" -7"), -7);
    EXPECT_EQ(NumeroBrando("999999999999999"), 2147483647);
}

TEST(Fio, AcentosCruzamOFioEmWindows1252) {
    const std::string nome = "João Ávila";
    const std::string fio = ParaFio(nome);
    EXPECT_EQ(fio, std::string("Jo\xE3o \xC1vila"));
    EXPECT_EQ(DoFio(fio), nome);
}

} // namespace
} // namespace velmora::fio
