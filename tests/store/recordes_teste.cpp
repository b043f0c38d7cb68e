// The records tables and the tally file.
#include "ambiente.h"

#include "store/ini.h"
#include "store/placar.h"
#include "store/recordes.h"

namespace velmora {
namespace {

class Tabelas : public teste::Ambiente {
  protected:
    Recordes recordes; // in the data folder that the environment names
    Placar placar;
};

TEST_F(Tabelas, PrimeiroRecordeCriaOArquivo) {
    EXPECT_EQ(recordes.Arquivo(), dados / "Velmora.rec");
    EXPECT_EQ(recordes.NomeRecord(3, 1), "");
    EXPECT_EQ(recordes.TempoRecord(3, 1), 999999);
    ASSERT_TRUE(recordes.GravaRecord("Jogador", 412, 3, 1));
    EXPECT_EQ(recordes.NomeRecord(3, 1), "Jogador");
    EXPECT_EQ(recordes.TempoRecord(3, 1), 412);
    // the free places below are copied too: empty names with the time 999999
    const std::string texto = Le(dados / "Velmora.rec");
    EXPECT_EQ(texto.substr(0, 10), "[Nivel3]\r\n");
    EXPECT_NE(texto.find("\r\nN100=\r\nP100=999999\r\n"), std::string::npos);
    EXPECT_NE(texto.find("\r\nN1=Jogador\r\nP1=412\r\n"), std::string::npos);
}

TEST_F(Tabelas, InsercaoEmpurraParaBaixo) {
    recordes.GravaRecord("A", 100, 2, 1);
    recordes.GravaRecord("B", 200, 2, 2);
    recordes.GravaRecord("C", 300, 2, 3);
    ASSERT_TRUE(recordes.GravaRecord("Novo", 200, 2, 3)); // equal to B: enters below it
    const auto t = recordes.Tabela(2);
    ASSERT_EQ(t.size(), 4u);
    EXPECT_EQ(t[0].nome, "A");
    EXPECT_EQ(t[1].nome, "B");
    EXPECT_EQ(t[2].nome, "Novo");
    EXPECT_EQ(t[3].nome, "C");
    EXPECT_EQ(t[3].tempo, 300);
    EXPECT_EQ(recordes.Tabela(1).size(), 0u); // levels never mix
    EXPECT_FALSE(recordes.GravaRecord("X", 1, 2, 0));
    EXPECT_FALSE(recordes.GravaRecord("X", 1, 2, 101));
    EXPECT_EQ(recordes.Tabela(2).size(), 4u);
}

TEST_F(Tabelas, TabelaCheiaPerdeAUltima) {
    for (int p = 1; p <= 100; ++p) recordes.GravaRecord("J" + std::to_string(p), p * 10, 5, p);
    ASSERT_EQ(recordes.Tabela(5).size(), 100u);
    ASSERT_TRUE(recordes.GravaRecord("Rápido", 5, 5, 1));
    const auto t = recordes.Tabela(5);
    ASSERT_EQ(t.size(), 100u);
    EXPECT_EQ(t[0].nome, "Rápido");
    EXPECT_EQ(t[99].nome, "J99");
    EXPECT_EQ(recordes.NomeRecord(5, 101), "");
    ASSERT_TRUE(recordes.GravaRecord("Ultimo", 995, 5, 100));
    EXPECT_EQ(recordes.NomeRecord(5, 100), "Ultimo");
    EXPECT_EQ(recordes.NomeRecord(5, 99), "J98");
}

TEST_F(Tabelas, TempoQueNaoEhNumeroValeZero) {
    Escreve(dados / "Velmora.rec", "[Nivel1]\r\nN1=Ana\r\nP1=muito\r\nN2=Bia\r\nP2=\r\n");
    EXPECT_EQ(recordes.TempoRecord(1, 1), 0);
    EXPECT_EQ(recordes.TempoRecord(1, 2), 999999); // empty is missing
    ASSERT_TRUE(recordes.GravaRecord("Cai", 50, 1, 1));
    EXPECT_EQ(LeIni("Nivel1", "P2", dados / "Velmora.rec", ""), "0");
    EXPECT_EQ(LeIni("Nivel1", "P3", dados / "Velmora.rec", ""), "999999");
}

TEST_F(Tabelas, NomeComAcentosVoltaIgual) {
    ASSERT_TRUE(recordes.GravaRecord("Conceição Ñ", 60, 8, 1));
    EXPECT_EQ(recordes.NomeRecord(8, 1), "Conceição Ñ");
    EXPECT_NE(Le(dados / "Velmora.rec").find("N1=Concei\xE7\xE3o \xD1\r\n"), std::string::npos);
}

TEST_F(Tabelas, TabelaParaNoPrimeiroNomeVazio) {
    Escreve(dados / "Velmora.rec", "[Nivel4]\r\nN1=Ana\r\nP1=10\r\nN3=Caio\r\nP3=30\r\n");
    ASSERT_EQ(recordes.Tabela(4).size(), 1u);
    EXPECT_EQ(recordes.Tabela(4)[0].tempo, 10);
}

TEST_F(Tabelas, DiscoCheioDeixaATabelaAntiga) {
    recordes.GravaRecord("A", 100, 1, 1);
    const std::string antes = Le(dados / "Velmora.rec");
    {
        teste::DiscoCheio cheio(16);
        EXPECT_FALSE(recordes.GravaRecord("B", 50, 1, 1));
        EXPECT_FALSE(placar.SomaVenceu(1));
    }
    EXPECT_EQ(Le(dados / "Velmora.rec"), antes);
    EXPECT_EQ(placar.Venceu(1), 0);
}

TEST_F(Tabelas, PlacarContaUmAUm) {
    EXPECT_EQ(placar.Venceu(3), 0);
    EXPECT_EQ(placar.Perdeu(3), 0);
    EXPECT_EQ(placar.Texto(3), "No nível Intermediário:\nCPU já obteve 0 vitórias e 0 Derrotas");
    ASSERT_TRUE(placar.SomaVenceu(3));
    ASSERT_TRUE(placar.SomaVenceu(3));
    ASSERT_TRUE(placar.SomaPerdeu(3));
    ASSERT_TRUE(placar.SomaVenceu(8));
    EXPECT_EQ(Le(dados / "Velmora.sav"), "[CPU]\r\nVenceu3=2\r\nPerdeu3=1\r\nVenceu8=1\r\n");
    EXPECT_EQ(placar.Texto(3), "No nível Intermediário:\nCPU já obteve 2 vitórias e 1 Derrotas");
    EXPECT_EQ(placar.Venceu(2), 0);
}

TEST_F(Tabelas, PlacarComTextoQueNaoEhNumero) {
    Escreve(dados / "Velmora.sav", "[cpu]\nperdeu1=muitas\nVENCEU1= 7 \n");
    EXPECT_EQ(placar.Perdeu(1), 0);
    EXPECT_EQ(placar.Venceu(1), 7);
    ASSERT_TRUE(placar.SomaPerdeu(1));
    EXPECT_EQ(placar.Perdeu(1), 1);
}

} // namespace
} // namespace velmora
