#include "service/atualizacao.h"

#include "core/utilidades.h"
#include "net/dl.h"
#include "net/getconteudo.h"

#include <cctype>

namespace velmora {

namespace {

constexpr const char* Separador = "!*!";

// A number from the leading digits of a text, as a whole number; none gives 0. Past nine
// digits the value no longer matters to the comparison of texts: the digits are kept.
std::string Numero(const std::string& parte) {
    std::string digitos;
    std::size_t i = 0;
    while (i < parte.size() && parte[i] == ' ') ++i;
    while (i < parte.size() && std::isdigit(static_cast<unsigned char>(parte[i])))
        digitos += parte[i++];
    const auto zeros = digitos.find_first_not_of('0');
    return zeros == std::string::npos ? std::string("0") : digitos.substr(zeros);
}

// Adds two decimal texts of whole numbers.
std::string Soma(const std::string& a, const std::string& b) {
    std::string r;
    int vai = 0;
    for (std::size_t i = 0; i < a.size() || i < b.size() || vai; ++i) {
        int d = vai;
        if (i < a.size()) d += a[a.size() - 1 - i] - '0';
        if (i < b.size()) d += b[b.size() - 1 - i] - '0';
        r.insert(r.begin(), static_cast<char>('0' + d % 10));
        vai = d / 10;
    }
    const auto zeros = r.find_first_not_of('0');
    return zeros == std::string::npos ? std::string("0") : r.substr(zeros);
}

std::string Vezes(std::string n, int zeros) {
    if (n != "0") n.append(static_cast<std::size_t>(zeros), '0');
    return n;
}

bool HexSha256(const std::string& t) {
    if (t.size() != 64) return false;
    for (char c : t)
        if (!std::isxdigit(static_cast<unsigned char>(c))) return false;
    return true;
}

} // namespace

std::string ValorVersao(const std::string& versao) {
    // a*100 + b*10 + c, on texts, so that no version text can overflow
    const std::string a = Numero(Pedaco(versao, ".", 1));
    const std::string b = Numero(Pedaco(versao, ".", 2));
    const std::string c = Numero(Pedaco(versao, ".", 3));
    return Soma(Soma(Vezes(a, 2), Vezes(b, 1)), c);
}

bool MaiorVersion(const std::string& atual, const std::string& nova) {
    return ValorVersao(nova) > ValorVersao(atual);
}

std::string EnderecoUpdate(const std::string& servico, const std::string& titulo) {
    return servico + "/update.php?prog=" + Troca(titulo, " ", "%20");
}

std::string GetUpdate(const Busca& primeira, const Busca& segunda, const std::string& servico,
                      const std::string& titulo, TemposUpdate tempos, const std::string& versao) {
    const std::string url = EnderecoUpdate(servico, titulo);
    std::string resposta = primeira ? primeira(url, tempos.primeira) : std::string();
    if (resposta.find(Separador) == std::string::npos)
        resposta = segunda ? segunda(url, tempos.segunda) : std::string();
    if (resposta.find(Separador) == std::string::npos) return SemConexaoUpdate;
    if (!MaiorVersion(versao, Pedaco(resposta, Separador, 2))) return VersaoRecente + titulo;
    return std::string(Separador) + "Link" + resposta;
}

std::string GetUpdate(dl& DL1, ClienteGetConteudo& wsg, const std::string& servico,
                      const std::string& titulo, TemposUpdate tempos, const std::string& versao) {
    return GetUpdate(
        [&DL1](const std::string& url, std::int32_t tempo) {
            return DL1.GetConteudo(url, "Id", tempo);
        },
        [&wsg](const std::string& url, std::int32_t tempo) { return wsg.GetConteudo(url, tempo); },
        servico, titulo, tempos, versao);
}

OfertaAtualizacao LeOferta(const std::string& resultado) {
    OfertaAtualizacao o;
    o.link = Pedaco(resultado, Separador, 1) == "Link";
    if (!o.link) return o;
    o.versao = Pedaco(resultado, Separador, 3);
    o.endereco = Pedaco(resultado, Separador, 4);
    o.tipo = Pedaco(resultado, Separador, 5);
    o.mensagem = Pedaco(resultado, Separador, 6);
    // A reply read by the download control ends its lines with CR LF: the last field loses it
    const auto limpa = [](std::string t) {
        while (!t.empty() && (t.back() == '\r' || t.back() == '\n' || t.back() == ' '))
            t.pop_back();
        return t;
    };
    o.endereco = limpa(o.endereco);
    o.tipo = limpa(o.tipo);
    o.mensagem = limpa(o.mensagem);
    const std::string soma = limpa(Pedaco(resultado, Separador, 7));
    if (soma.rfind("sha256:", 0) == 0 && HexSha256(soma.substr(7))) o.sha256 = soma.substr(7);
    return o;
}

} // namespace velmora
