// The update check: version values and their comparison, the request to update.php through
// both fetches against a service on loopback, what an offer holds, and the installer's checks.
#include "servicofalso.h"

#include "core/utilidades.h"
#include "net/dl.h"
#include "net/getconteudo.h"
#include "net/modsocketmaster.h"
#include "service/atualizacao.h"
#include "service/instalador.h"

#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <random>

namespace velmora {
namespace {

using teste::ServicoFalso;

const std::string Oferta391 = "!*!x!*!3.9.1!*!http://exemplo/VelmoraAce.deb!*!!*!";

TEST(Versoes, ValueIsHundredsTensAndUnitsAsDecimalText) {
    EXPECT_EQ(ValorVersao("3.9.0"), "390");
    EXPECT_EQ(ValorVersao("3.9.1"), "391");
    EXPECT_EQ(ValorVersao("3.10.0"), "400");
    EXPECT_EQ(ValorVersao("4.0.0"), "400");
    EXPECT_EQ(ValorVersao("10.0.0"), "1000");
    EXPECT_EQ(ValorVersao("0.0.7"), "7");
    // missing parts and words count as 0; a part is read from its leading digits
    EXPECT_EQ(ValorVersao(""), "0");
    EXPECT_EQ(ValorVersao("4"), "400");
    EXPECT_EQ(ValorVersao("3.9.1\r\n"), "391");
    EXPECT_EQ(ValorVersao("três.9.1"), "91");
    EXPECT_EQ(ValorVersao("99999999999999999999.0.1"), "9999999999999999999901");
}

TEST(Versoes, ComparedAsTextsSoAFourthDigitSortsFirst) {
    EXPECT_TRUE(MaiorVersion("3.9.0", "3.9.1"));
    EXPECT_FALSE(MaiorVersion("3.9.0", "3.8.9"));
    EXPECT_FALSE(MaiorVersion("3.9.0", "3.9.0"));
    EXPECT_TRUE(MaiorVersion("3.9.0", "4.0.0"));
    EXPECT_FALSE(MaiorVersion("3.9.0", "3.10.0") && !MaiorVersion("3.9.0", "4.0.0"));
    // 1000 sorts before 390
    EXPECT_FALSE(MaiorVersion("3.9.0", "10.0.0"));
    EXPECT_TRUE(MaiorVersion("10.0.0", "3.9.0"));
    EXPECT_FALSE(MaiorVersion("3.9.0", ""));
    EXPECT_FALSE(MaiorVersion("3.9.0", "versão nova"));
}

TEST(Versoes, RequestAddressCarriesTheTitleWithItsSpacesEscaped) {
    EXPECT_EQ(EnderecoUpdate("http://127.0.0.1:8080", "Velmora Ace"),
              "http://127.0.0.1:8080/update.php?prog=Velmora%20Ace");
}

// ---------------------------------------------------------------- both fetches

class GetUpdateNoServico : public ::testing::Test {
  protected:
    std::string Pergunta(TemposUpdate tempos = TemposLobby) {
        return GetUpdate(DL1, wsg, servico.Base(), "Velmora Ace", tempos);
    }
    ServicoFalso servico;
    modSocketMaster mod;
    dl DL1;
    ClienteGetConteudo wsg{mod};
};

TEST_F(GetUpdateNoServico, NewerVersionThroughTheFirstFetchIsAnOffer) {
    servico.respostaHttp = Oferta391;
    const std::string r = Pergunta();
    EXPECT_EQ(r, "!*!Link" + Oferta391 + "\r\n"); // the download control ends lines with CR LF
    EXPECT_EQ(servico.pedidosHttp, 1);
    EXPECT_EQ(servico.pedidosNus, 0);
    ASSERT_EQ(servico.alvos.size(), 1u);
    EXPECT_EQ(servico.alvos[0], "/update.php?prog=Velmora%20Ace");
    const OfertaAtualizacao o = LeOferta(r);
    EXPECT_TRUE(o.link);
    EXPECT_EQ(o.versao, "3.9.1");
    EXPECT_EQ(o.endereco, "http://exemplo/VelmoraAce.deb");
    EXPECT_FALSE(o.Obrigatoria());
    EXPECT_EQ(o.mensagem, "");
}

TEST_F(GetUpdateNoServico, SameVersionSaysTheInstalledOneIsTheNewest) {
    servico.respostaHttp = "!*!x!*!3.9.0!*!http://exemplo/a.deb!*!!*!";
    EXPECT_EQ(Pergunta(), "Você já está utilizando a versão mais recente do Velmora Ace");
    servico.respostaHttp = "!*!x!*!3.8.9!*!http://exemplo/a.deb!*!obrigatorio!*!";
    EXPECT_EQ(Pergunta(), "Você já está utilizando a versão mais recente do Velmora Ace");
    // a four-digit value sorts before 390: no offer
    servico.respostaHttp = "!*!x!*!10.0.0!*!http://exemplo/a.deb!*!!*!";
    EXPECT_EQ(Pergunta(), "Você já está utilizando a versão mais recente do Velmora Ace");
}

TEST_F(GetUpdateNoServico, ReplyWithoutTheMarkerTriesTheBareRequestLine) {
    servico.respostaHttp = "Erro interno";
    servico.respostaNua = Oferta391;
    const std::string r = Pergunta(TemposSobre);
    EXPECT_EQ(r, "!*!Link" + Oferta391);
    EXPECT_EQ(servico.pedidosHttp, 1);
    EXPECT_EQ(servico.pedidosNus, 1);
    ASSERT_EQ(servico.alvos.size(), 2u);
    EXPECT_EQ(servico.alvos[1], servico.Base() + "/update.php?prog=Velmora%20Ace");
}

TEST_F(GetUpdateNoServico, NeitherFetchAnsweringCannotConnect) {
    // both forms get their connection closed without a word; the clocks run fast
    double agora = 0;
    wsg.Relogio = [&agora] { return agora += 0.25; };
    DL1.Relogio = [&agora] { return agora += 0.25; };
    EXPECT_EQ(Pergunta(), "Não foi possível conectar ao servidor");
    EXPECT_GE(servico.pedidosHttp, 1); // the web stack may try a closed request once more
    EXPECT_EQ(servico.pedidosNus, 1);
}

TEST(GetUpdateSemServico, ServiceDownCannotConnect) {
    std::string base;
    {
        ServicoFalso fechado; // its port, closed again
        base = fechado.Base();
    }
    modSocketMaster mod;
    dl DL1;
    ClienteGetConteudo wsg(mod);
    double agora = 0;
    wsg.Relogio = [&agora] { return agora += 0.25; };
    DL1.Relogio = [&agora] { return agora += 0.25; };
    EXPECT_EQ(GetUpdate(DL1, wsg, base, "Velmora Ace", TemposLobby),
              "Não foi possível conectar ao servidor");
}

TEST(GetUpdateFetches, TimeOutsOfTheLobbyAndOfTheAboutBox) {
    std::vector<std::pair<std::string, std::int32_t>> chamadas;
    const Busca nada = [&](const std::string& url, std::int32_t t) {
        chamadas.emplace_back(url, t);
        return std::string("FALSE");
    };
    GetUpdate(nada, nada, "http://s", "Velmora Ace", TemposLobby);
    GetUpdate(nada, nada, "http://s", "Velmora Ace", TemposSobre);
    ASSERT_EQ(chamadas.size(), 4u);
    EXPECT_EQ(chamadas[0].second, 8);
    EXPECT_EQ(chamadas[1].second, 8);
    EXPECT_EQ(chamadas[2].second, 8);
    EXPECT_EQ(chamadas[3].second, 4);
    for (const auto& c : chamadas) EXPECT_EQ(c.first, "http://s/update.php?prog=Velmora%20Ace");
}

// ---------------------------------------------------------------- the offer's fields

TEST(Oferta, FieldsOfACompulsoryOfferWithAMessageAndADigest) {
    const std::string soma(64, 'a');
    const OfertaAtualizacao o = LeOferta("!*!Link!*!x!*!3.9.1!*!http://s/p.deb!*!obrigatorio!*!"
                                         "Nova versão;Atualize já!*!sha256:" +
                                         soma + "\r\n");
    EXPECT_TRUE(o.link);
    EXPECT_TRUE(o.Obrigatoria());
    EXPECT_EQ(o.mensagem, "Nova versão;Atualize já");
    EXPECT_EQ(o.sha256, soma);
    // a digest that isn't 64 hex digits is no digest
    EXPECT_EQ(LeOferta("!*!Link!*!x!*!3.9.1!*!u!*!!*!!*!sha256:xyz").sha256, "");
    // other results are no offer
    EXPECT_FALSE(LeOferta("Não foi possível conectar ao servidor").link);
    EXPECT_FALSE(LeOferta("").link);
    // a short reply: the missing fields are empty
    const OfertaAtualizacao curta = LeOferta("!*!Link!*!x!*!3.9.1");
    EXPECT_TRUE(curta.link);
    EXPECT_EQ(curta.endereco, "");
    EXPECT_EQ(curta.tipo, "");
}

TEST(Oferta, HostileRepliesNeverBreakTheCheck) {
    std::mt19937 gerador(7);
    const std::string pecas[] = {"!*!",
                                 "!",
                                 "*",
                                 "3",
                                 ".",
                                 "9",
                                 "\r\n",
                                 "obrigatorio",
                                 ";",
                                 "sha256:",
                                 std::string(1, '\0'),
                                 "\xff",
                                 "Link"};
    for (int i = 0; i < 3000; ++i) {
        std::string r;
        const int n = static_cast<int>(gerador() % 12);
        for (int k = 0; k < n; ++k) r += pecas[gerador() % std::size(pecas)];
        const Busca fixa = [&r](const std::string&, std::int32_t) { return r; };
        const std::string resultado = GetUpdate(fixa, fixa, "http://s", "Velmora Ace", TemposLobby);
        const OfertaAtualizacao o = LeOferta(resultado);
        if (r.find("!*!") == std::string::npos)
            EXPECT_EQ(resultado, "Não foi possível conectar ao servidor");
        else if (!MaiorVersion("3.9.0", Pedaco(r, "!*!", 2)))
            EXPECT_EQ(resultado, "Você já está utilizando a versão mais recente do Velmora Ace");
        else // an offer; its first field is "Link" only when the reply began with the separator
            EXPECT_EQ(o.link, r.rfind("!*!", 0) == 0) << r;
    }
}

// ---------------------------------------------------------------- the installer

class Instalador : public ::testing::Test {
  protected:
    std::filesystem::path Grava(const QByteArray& bytes) {
        const QString nome = pasta.filePath(QString::fromStdString(NomeInstalador("Velmora Ace")));
        QFile f(nome);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
        return nome.toStdString();
    }
    QTemporaryDir pasta;
};

TEST_F(Instalador, NameIsTheTitleWithoutBlanks) {
    EXPECT_EQ(NomeInstalador("Velmora Ace"), "VelmoraAce.deb");
}

TEST_F(Instalador, OnlyADebianPackageWithItsDigestPasses) {
    const QByteArray pacote = teste::PacoteFalso(4096);
    const auto arquivo = Grava(pacote);
    EXPECT_TRUE(ConfereInstalador(arquivo));
    const std::string soma =
        QCryptographicHash::hash(pacote, QCryptographicHash::Sha256).toHex().toStdString();
    EXPECT_TRUE(ConfereInstalador(arquivo, soma));
    EXPECT_TRUE(
        ConfereInstalador(arquivo, QByteArray::fromStdString(soma).toUpper().toStdString()));
    std::string outra = soma;
    outra[0] = outra[0] == '0' ? '1' : '0';
    EXPECT_FALSE(ConfereInstalador(arquivo, outra));

    EXPECT_FALSE(ConfereInstalador(Grava("<html><body>Pagina nao encontrada</body></html>")));
    EXPECT_FALSE(ConfereInstalador(Grava(pacote.left(12)))); // cut inside the first header
    EXPECT_FALSE(ConfereInstalador(Grava(QByteArray())));
    EXPECT_FALSE(ConfereInstalador(pasta.filePath("nenhum.deb").toStdString()));
}

} // namespace
} // namespace velmora
