#include "store/regedit4.h"

#include "store/texto1252.h"

#include <cstdio>
#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

namespace {

constexpr std::string_view brancos = " \t";

std::string_view Apara(std::string_view s) {
    const size_t i = s.find_first_not_of(brancos);
    if (i == std::string_view::npos) return {};
    return s.substr(i, s.find_last_not_of(brancos) - i + 1);
}

bool ComecaSemCaixa(std::string_view s, std::string_view prefixo) {
    return s.size() >= prefixo.size() && IguaisSemCaixa(s.substr(0, prefixo.size()), prefixo);
}

int Hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

void PoeEscapado(std::string& s, std::string_view texto) {
    s += '"';
    for (char c : texto) {
        if (c == '\\' || c == '"') s += '\\';
        s += c;
    }
    s += '"';
}

// A quoted text at the start of `s`; moves `s` past it.
std::optional<std::string> LeEscapado(std::string_view& s) {
    if (s.empty() || s[0] != '"') return std::nullopt;
    std::string r;
    for (size_t i = 1; i < s.size(); ++i) {
        if (s[i] == '"') {
            s.remove_prefix(i + 1);
            return r;
        }
        if (s[i] == '\\' && i + 1 < s.size() && (s[i + 1] == '\\' || s[i + 1] == '"')) ++i;
        r += s[i];
    }
    return std::nullopt;
}

std::optional<std::string> LeListaHex(std::string_view s) {
    std::string bytes;
    s = Apara(s);
    while (!s.empty()) {
        const size_t f = std::min(s.find(','), s.size());
        const std::string_view par = Apara(s.substr(0, f));
        const bool ultimo = f == s.size();
        s.remove_prefix(ultimo ? f : f + 1);
        if (par.empty() && ultimo) break; // a trailing comma
        if (par.empty() || par.size() > 2) return std::nullopt;
        int v = 0;
        for (char c : par) {
            const int d = Hex(c);
            if (d < 0) return std::nullopt;
            v = v * 16 + d;
        }
        bytes += static_cast<char>(v);
    }
    return bytes;
}

void PoeListaHex(std::string& s, std::string_view bytes) {
    char b[4];
    for (size_t i = 0; i < bytes.size(); ++i) {
        std::snprintf(b, sizeof b, i ? ",%02X" : "%02X", static_cast<unsigned char>(bytes[i]));
        s += b;
    }
}

bool TemControle(std::string_view s) {
    for (char c : s)
        if (static_cast<unsigned char>(c) < 0x20) return true;
    return false;
}

void EscreveChave(std::string& s, const ChaveRegistro& chave, const std::string& caminho,
                  bool raiz) {
    if (!raiz || !chave.valores.empty()) {
        s += '[' + caminho + "]\r\n";
        for (const ValorRegistro* v : chave.ValoresEmOrdem()) {
            if (v->nome.empty())
                s += '@';
            else
                PoeEscapado(s, v->nome);
            s += '=';
            char b[32];
            if (v->tipo == RegSz && !TemControle(v->dados)) {
                PoeEscapado(s, v->dados);
            } else if (v->tipo == RegDword && v->dados.size() == 4) {
                std::uint32_t n = 0;
                for (int i = 3; i >= 0; --i) n = n << 8 | static_cast<unsigned char>(v->dados[i]);
                std::snprintf(b, sizeof b, "dword:%08X", n);
                s += b;
            } else {
                if (v->tipo == RegBinary)
                    s += "hex:";
                else
                    std::snprintf(b, sizeof b, "hex(%x):", static_cast<unsigned>(v->tipo)), s += b;
                PoeListaHex(s, v->dados);
            }
            s += "\r\n";
        }
        s += "\r\n";
    }
    for (const auto& [_, filha] : chave.filhas)
        EscreveChave(s, filha, caminho + '\\' + filha.nome, false);
}

} // namespace

LeituraRegedit4 LeRegedit4(std::string bytes) {
    LeituraRegedit4 r;
    const std::string texto = NormalizaParaCp1252(std::move(bytes));
    std::vector<std::string_view> linhas;
    for (size_t i = 0; i <= texto.size();) {
        size_t f = texto.find('\n', i);
        if (f == std::string::npos) f = texto.size();
        std::string_view l(texto.data() + i, f - i);
        if (!l.empty() && l.back() == '\r') l.remove_suffix(1);
        linhas.push_back(l);
        i = f + 1;
    }
    auto ruim = [&r](size_t linha) {
        if (!r.danificado) r.linhaRuim = linha;
        r.danificado = true;
    };
    if (!IguaisSemCaixa(Apara(linhas[0]), "REGEDIT4")) {
        ruim(1);
        return r;
    }
    ChaveRegistro* atual = nullptr;
    for (size_t n = 1; n < linhas.size(); ++n) {
        std::string_view l = Apara(linhas[n]);
        if (l.empty() || l[0] == ';') continue;
        if (l[0] == '[') {
            atual = nullptr;
            if (l.back() != ']') {
                ruim(n + 1);
                continue;
            }
            const std::string_view caminho = l.substr(1, l.size() - 2);
            const size_t barra = caminho.find('\\');
            const auto raiz = IndiceDaRaiz(caminho.substr(0, barra));
            const auto partes = PartesDoCaminho(
                barra == std::string_view::npos ? std::string_view{} : caminho.substr(barra + 1));
            if (!raiz || !partes)
                ruim(n + 1);
            else
                atual = &r.arvore.CriaChave(*raiz, *partes);
            continue;
        }
        const size_t linhaDoValor = n + 1;
        std::optional<std::string> nome;
        if (l[0] == '@')
            l.remove_prefix(1), nome = std::string();
        else
            nome = LeEscapado(l);
        l = Apara(l);
        if (!atual || !nome || !NomeDeValorValido(*nome) || l.empty() || l[0] != '=') {
            ruim(linhaDoValor);
            continue;
        }
        l = Apara(l.substr(1));
        std::optional<std::string> dados;
        int tipo = RegSz;
        if (!l.empty() && l[0] == '"') {
            dados = LeEscapado(l);
            if (!Apara(l).empty()) dados.reset();
        } else if (ComecaSemCaixa(l, "dword:")) {
            const std::string_view h = Apara(l.substr(6));
            std::uint32_t v = 0;
            bool ok = !h.empty() && h.size() <= 8;
            for (char c : h) {
                ok = ok && Hex(c) >= 0;
                v = v << 4 | static_cast<unsigned>(Hex(c) & 15);
            }
            if (ok) {
                tipo = RegDword;
                dados = std::string{static_cast<char>(v), static_cast<char>(v >> 8),
                                    static_cast<char>(v >> 16), static_cast<char>(v >> 24)};
            }
        } else if (ComecaSemCaixa(l, "hex")) {
            l.remove_prefix(3);
            tipo = RegBinary;
            bool ok = true;
            if (!l.empty() && l[0] == '(') {
                const size_t fim = l.find(')');
                ok = fim != std::string_view::npos && fim >= 2 && fim <= 5;
                tipo = 0;
                for (size_t i = 1; ok && i < fim; ++i)
                    ok = Hex(l[i]) >= 0, tipo = tipo * 16 + Hex(l[i]);
                if (ok) l.remove_prefix(fim + 1);
            }
            if (ok && !l.empty() && l[0] == ':') {
                // a long list goes on over lines that end in "\"
                std::string lista(Apara(l.substr(1)));
                while (!lista.empty() && lista.back() == '\\' && n + 1 < linhas.size()) {
                    lista.pop_back();
                    lista += Apara(linhas[++n]);
                }
                dados = LeListaHex(lista);
            }
        }
        if (!dados)
            ruim(linhaDoValor);
        else
            atual->PoeValor(*nome, tipo, std::move(*dados));
    }
    return r;
}

std::string EscreveRegedit4(const ArvoreRegistro& arvore) {
    std::string s = "REGEDIT4\r\n\r\n";
    for (size_t i = 0; i < Raizes.size(); ++i)
        EscreveChave(s, arvore.raizes[i], Raizes[i].longo, true);
    return Cp1252ParaUtf8(s);
}

} // namespace velmora
