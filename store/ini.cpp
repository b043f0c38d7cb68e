#include "store/ini.h"

#include "store/texto1252.h"

#include <algorithm>

namespace velmora {

namespace {

std::string_view Apara(std::string_view s) {
    const size_t i = s.find_first_not_of(" \t");
    if (i == std::string_view::npos) return {};
    return s.substr(i, s.find_last_not_of(" \t") - i + 1);
}

// The name of a section line, or nothing for any other line.
std::optional<std::string_view> Secao(std::string_view linha) {
    linha = Apara(linha);
    if (linha.empty() || linha[0] != '[') return std::nullopt;
    linha.remove_prefix(1);
    return Apara(linha.substr(0, linha.find(']')));
}

bool EhChave(std::string_view linha, std::string_view chave) {
    const size_t igual = linha.find('=');
    return igual != std::string_view::npos && IguaisSemCaixa(Apara(linha.substr(0, igual)), chave);
}

std::string Limpo(std::string_view s) {
    std::string r(s);
    for (char& c : r)
        if (c == '\r' || c == '\n' || c == '\0') c = ' ';
    return r;
}

} // namespace

DocumentoIni DocumentoIni::Interpreta(std::string bytes) {
    DocumentoIni d;
    const std::string texto = NormalizaParaCp1252(std::move(bytes));
    for (size_t i = 0; i < texto.size();) {
        size_t f = texto.find('\n', i);
        if (f == std::string::npos) f = texto.size();
        std::string_view l(texto.data() + i, f - i);
        if (!l.empty() && l.back() == '\r') l.remove_suffix(1);
        d.linhas_.emplace_back(l);
        i = f + 1;
    }
    return d;
}

std::optional<std::string> DocumentoIni::Le(std::string_view secao, std::string_view chave) const {
    bool dentro = false;
    for (const auto& linha : linhas_) {
        if (const auto s = Secao(linha)) {
            dentro = IguaisSemCaixa(*s, secao);
        } else if (dentro && EhChave(linha, chave)) {
            std::string_view v = Apara(std::string_view(linha).substr(linha.find('=') + 1));
            if (v.size() >= 2 && (v[0] == '"' || v[0] == '\'') && v.back() == v[0])
                v = v.substr(1, v.size() - 2);
            return std::string(v);
        }
    }
    return std::nullopt;
}

void DocumentoIni::Grava(std::string_view secao, std::string_view chave, std::string_view valor) {
    const std::string linhaNova = Limpo(chave) + "=" + Limpo(valor);
    size_t cabecalho = linhas_.size();
    for (size_t i = 0; i < linhas_.size() && cabecalho == linhas_.size(); ++i)
        if (const auto s = Secao(linhas_[i]); s && IguaisSemCaixa(*s, secao)) cabecalho = i;
    if (cabecalho == linhas_.size()) {
        linhas_.push_back("[" + Limpo(secao) + "]");
        linhas_.push_back(linhaNova);
        return;
    }
    size_t ultima = cabecalho; // the last line of the section that isn't blank
    for (size_t i = cabecalho + 1; i < linhas_.size() && !Secao(linhas_[i]); ++i) {
        if (EhChave(linhas_[i], chave)) {
            linhas_[i] = linhaNova;
            return;
        }
        if (!Apara(linhas_[i]).empty()) ultima = i;
    }
    linhas_.insert(linhas_.begin() + static_cast<std::ptrdiff_t>(ultima + 1), linhaNova);
}

std::string DocumentoIni::Texto() const {
    std::string s;
    for (const auto& l : linhas_) s += l + "\r\n";
    return s;
}

EdicaoIni::EdicaoIni(std::filesystem::path arquivo) : arquivo_(std::move(arquivo)) {
    Leitura l = LeArquivo(arquivo_, LimiteArquivo);
    estado_ = l.estado;
    if (estado_ == Leitura::Estado::Lido) documento_ = DocumentoIni::Interpreta(std::move(l.bytes));
}

std::string EdicaoIni::Le(std::string_view secao, std::string_view chave,
                          std::string_view padrao) const {
    auto v = documento_.Le(Utf8ParaCp1252(secao), Utf8ParaCp1252(chave));
    if (!v) return std::string(padrao);
    v->resize(std::min({v->size(), v->find('\0'), std::size_t{254}}));
    if (v->empty()) return std::string(padrao);
    return Cp1252ParaUtf8(*v);
}

void EdicaoIni::Grava(std::string_view secao, std::string_view chave, std::string_view valor) {
    documento_.Grava(Utf8ParaCp1252(secao), Utf8ParaCp1252(chave), Utf8ParaCp1252(valor));
}

bool EdicaoIni::Salva() {
    if (estado_ == Leitura::Estado::Erro) return false;
    const std::string texto = documento_.Texto();
    if (texto.size() > LimiteArquivo) return false;
    if (estado_ == Leitura::Estado::Grande) {
        if (IdentidadeDe(arquivo_).existe && !GuardaCopiaDanificada(arquivo_)) return false;
        estado_ = Leitura::Estado::Lido;
    }
    return GravaArquivoAtomico(arquivo_, texto, 0644);
}

std::string LeIni(std::string_view secao, std::string_view chave,
                  const std::filesystem::path& arquivo, std::string_view padrao) {
    return EdicaoIni(arquivo).Le(secao, chave, padrao);
}

bool GravaIni(std::string_view secao, std::string_view chave, std::string_view valor,
              const std::filesystem::path& arquivo) {
    EdicaoIni e(arquivo);
    e.Grava(secao, chave, valor);
    return e.Salva();
}

} // namespace velmora
