#include "store/registro.h"

#include "store/logdebug.h"
#include "store/regedit4.h"
#include "store/texto1252.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace velmora {

namespace {

constexpr std::size_t HKCU = 1, HKLM = 2;
constexpr std::size_t LimiteLeitura = 1024; // bytes of a string that ReadString gives
constexpr std::size_t LimiteImportacao = 16u << 20;

std::string_view Apara(std::string_view s) {
    const size_t i = s.find_first_not_of(' ');
    if (i == std::string_view::npos) return {};
    return s.substr(i, s.find_last_not_of(' ') - i + 1);
}

std::string_view AparaBrancos(std::string_view s) {
    const size_t i = s.find_first_not_of(" \t");
    if (i == std::string_view::npos) return {};
    return s.substr(i, s.find_last_not_of(" \t") - i + 1);
}

std::string SemBrancos(std::string_view s) {
    std::string r;
    for (char c : s)
        if (c != ' ') r += c;
    return r;
}

int Hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Replaces every long root name by its short form, without regard to case, anywhere.
std::string TrocaRaizesLongas(std::string s) {
    for (const auto& r : Raizes) {
        const std::string_view longo = r.longo;
        for (size_t i = 0; i + longo.size() <= s.size();) {
            if (IguaisSemCaixa(std::string_view(s).substr(i, longo.size()), longo)) {
                s.replace(i, longo.size(), r.curto);
                i += std::string_view(r.curto).size();
            } else {
                ++i;
            }
        }
    }
    return s;
}

std::string Maiusculas(std::string_view s) {
    std::string r(s);
    for (char& c : r)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    return r;
}

// Field n (from 1) of `texto` split at `sep`, empty when missing.
std::string_view Campo(std::string_view texto, char sep, int n) {
    for (int k = 1; k < n; ++k) {
        const size_t f = texto.find(sep);
        if (f == std::string_view::npos) return {};
        texto.remove_prefix(f + 1);
    }
    return texto.substr(0, texto.find(sep));
}

std::string Dword(std::uint32_t v) {
    return {static_cast<char>(v), static_cast<char>(v >> 8), static_cast<char>(v >> 16),
            static_cast<char>(v >> 24)};
}

std::uint32_t DoDword(std::string_view d) {
    std::uint32_t v = 0;
    for (int i = 3; i >= 0; --i) v = v << 8 | static_cast<unsigned char>(d[i]);
    return v;
}

} // namespace

clsRegistryAccess::clsRegistryAccess(std::filesystem::path arquivo, const Diario* diario)
    : arquivo_(std::move(arquivo)), diario_(diario) {}

void clsRegistryAccess::Log(const std::string& texto) const {
    if (diario_) diario_->LogDebug(texto);
}

// --- the file behind the store ---

void clsRegistryAccess::Sincroniza() {
    if (lote_ > 0) return;
    if (!carregado_ || IdentidadeDe(arquivo_) != identidade_) Carrega();
}

void clsRegistryAccess::Carrega() {
    identidade_ = IdentidadeDe(arquivo_);
    arvore_ = {};
    danificado_ = ilegivel_ = false;
    carregado_ = true;
    Leitura l = LeArquivo(arquivo_, LimiteArquivo);
    const std::string nome = arquivo_.string();
    switch (l.estado) {
    case Leitura::Estado::Ausente:
        break;
    case Leitura::Estado::Lido: {
        LeituraRegedit4 r = LeRegedit4(std::move(l.bytes));
        arvore_ = std::move(r.arvore);
        if (r.danificado) {
            danificado_ = true;
            Log("Registro: " + nome + " danificado a partir da linha " +
                std::to_string(r.linhaRuim) + "; o que não se lê fica vazio");
        }
        break;
    }
    case Leitura::Estado::Grande:
        danificado_ = true;
        Log("Registro: " + nome + " tem " + std::to_string(l.tamanho) +
            " bytes, grande demais; é lido como vazio");
        break;
    case Leitura::Estado::Erro:
        ilegivel_ = true;
        Log("Registro: " + nome + " não pode ser lido; nada será gravado nele");
        break;
    }
}

bool clsRegistryAccess::Salva() {
    if (ilegivel_) return false;
    const std::string texto = EscreveRegedit4(arvore_);
    if (texto.size() > LimiteArquivo) return false;
    if (danificado_ && IdentidadeDe(arquivo_).existe) {
        const auto copia = GuardaCopiaDanificada(arquivo_);
        if (!copia) {
            Log("Registro: não foi possível guardar uma cópia de " + arquivo_.string() +
                "; o arquivo não é regravado");
            return false;
        }
        Log("Registro: cópia do arquivo danificado guardada em " + copia->string());
    }
    danificado_ = false;
    if (!GravaArquivoAtomico(arquivo_, texto, 0600)) {
        Log("Registro: falha ao gravar " + arquivo_.string());
        return false;
    }
    identidade_ = IdentidadeDe(arquivo_);
    return true;
}

std::optional<ArvoreRegistro> clsRegistryAccess::Antes() const {
    if (lote_ > 0) return std::nullopt;
    return arvore_;
}

bool clsRegistryAccess::Confirma(std::optional<ArvoreRegistro> antes) {
    if (lote_ > 0) return pendente_ = true;
    if (Salva()) return true;
    if (antes) arvore_ = std::move(*antes);
    return false;
}

void clsRegistryAccess::IniciaLote() {
    if (lote_ > 0) {
        ++lote_;
        return;
    }
    // The store must hold the file before the run begins: a run that is the object's first
    // operation would otherwise rewrite the file from an empty tree.
    Sincroniza();
    lote_ = 1;
    antesDoLote_ = arvore_;
    pendente_ = false;
}

bool clsRegistryAccess::TerminaLote() {
    if (--lote_ > 0) return true;
    bool ok = true;
    if (pendente_ && !Salva()) {
        arvore_ = std::move(*antesDoLote_);
        ok = false;
    }
    antesDoLote_.reset();
    pendente_ = false;
    return ok;
}

void clsRegistryAccess::ProtegeRaiz(std::string_view raiz) {
    if (const auto i = IndiceDaRaiz(Utf8ParaCp1252(raiz))) protegidas_[*i] = true;
}

// --- paths and keys ---

clsRegistryAccess::Caminho clsRegistryAccess::Divide(std::string_view sPath) const {
    const std::string texto = TrocaRaizesLongas(Utf8ParaCp1252(sPath));
    const size_t barra = texto.find('\\');
    const std::string raiz = Maiusculas(barra == std::string::npos ? texto : texto.substr(0, 4));
    Caminho c;
    for (size_t i = 0; i < Raizes.size(); ++i)
        if (raiz == Raizes[i].curto) c.raiz = i;
    c.partes =
        PartesDoCaminho(barra == std::string::npos ? std::string_view{}
                                                   : std::string_view(texto).substr(barra + 1));
    return c;
}

const ChaveRegistro* clsRegistryAccess::Abre(const Caminho& c, bool escrita) {
    if (!c.raiz || !c.partes || (escrita && Protegida(c))) return nullptr;
    Sincroniza();
    return arvore_.Chave(*c.raiz, *c.partes);
}

ChaveRegistro* clsRegistryAccess::AbreParaEscrita(const Caminho& c) {
    if (!Abre(c, true)) return nullptr;
    return arvore_.Chave(*c.raiz, *c.partes);
}

clsRegistryAccess::Handle clsRegistryAccess::CreateKey(std::string_view sPath) {
    const Caminho c = Divide(sPath);
    if (!c.raiz || !c.partes || Protegida(c)) return 0;
    Sincroniza();
    const Handle h = Raizes[*c.raiz].handle;
    if (arvore_.Chave(*c.raiz, *c.partes)) return h;
    auto antes = Antes();
    arvore_.CriaChave(*c.raiz, *c.partes);
    return Confirma(std::move(antes)) ? h : 0;
}

void clsRegistryAccess::KillKey(std::string_view sPath) {
    const Caminho c = Divide(sPath);
    ChaveRegistro* chave = AbreParaEscrita(c);
    if (!chave) return;
    auto antes = Antes();
    // depth first: every sub-key goes, then the key itself from its parent
    const bool mudou = !chave->filhas.empty() || !c.partes->empty();
    chave->filhas.clear();
    if (!c.partes->empty()) {
        auto pai = *c.partes;
        const std::string ultimo = pai.back();
        pai.pop_back();
        arvore_.Chave(*c.raiz, pai)->ApagaFilha(ultimo);
    }
    if (mudou) Confirma(std::move(antes));
}

bool clsRegistryAccess::KeyExists(std::string_view sPath) {
    return Abre(Divide(sPath), true);
}

int clsRegistryAccess::EnumKeys(std::string_view sPath, std::vector<std::string>& names) {
    names.clear();
    const ChaveRegistro* chave = Abre(Divide(sPath), false);
    if (!chave) return -1;
    for (const auto& [_, filha] : chave->filhas)
        names.push_back(Cp1252ParaUtf8(filha.nome.substr(0, MaxNomeChave)));
    return static_cast<int>(names.size());
}

bool clsRegistryAccess::HaveSubkey(std::string_view sPath) {
    const ChaveRegistro* chave = Abre(Divide(sPath), false);
    return chave && !chave->filhas.empty();
}

// --- values ---

clsRegistryAccess::Handle clsRegistryAccess::Grava(const Caminho& c, std::string_view nome,
                                                   int tipo, std::string dados) {
    if (!c.raiz || !c.partes || Protegida(c) || !NomeDeValorValido(nome)) return 0;
    Sincroniza();
    auto antes = Antes();
    arvore_.CriaChave(*c.raiz, *c.partes).PoeValor(nome, tipo, std::move(dados));
    return Confirma(std::move(antes)) ? Raizes[*c.raiz].handle : 0;
}

clsRegistryAccess::Handle clsRegistryAccess::WriteString(std::string_view sPath,
                                                         std::string_view sName,
                                                         std::string_view sValue, bool hkcu) {
    Caminho c = Divide(sPath);
    std::string nome = Utf8ParaCp1252(sName);
    if (nome == "@") nome.clear();
    for (;;) {
        if (const Handle h = Grava(c, nome, RegSz, Utf8ParaCp1252(sValue))) return h;
        if (!hkcu || c.raiz != HKLM) return 0;
        c.raiz = HKCU;
    }
}

std::optional<std::string> clsRegistryAccess::LeTexto(const Caminho& c, std::string_view nome,
                                                      bool tudo) {
    const ChaveRegistro* chave = Abre(c, tudo);
    const ValorRegistro* v = chave ? chave->Valor(nome) : nullptr;
    if (!v || (v->tipo != RegSz && v->tipo != RegExpandSz) || v->dados.size() > LimiteLeitura)
        return std::nullopt;
    return Cp1252ParaUtf8(v->dados);
}

std::string clsRegistryAccess::ReadString(std::string_view sPath, std::string_view sName,
                                          std::string_view sDefault, bool hkcu, bool AllAcess) {
    Caminho c = Divide(sPath);
    const std::string nome = Utf8ParaCp1252(sName);
    for (;;) {
        if (auto t = LeTexto(c, nome, AllAcess)) return *t;
        if (!hkcu || c.raiz != HKLM) return std::string(sDefault);
        c.raiz = HKCU;
    }
}

clsRegistryAccess::Handle clsRegistryAccess::WriteDWORD(std::string_view sPath,
                                                        std::string_view sName,
                                                        std::uint32_t lValue) {
    const Caminho c = Divide(sPath);
    if (!CreateKeyIfDoesntExists && !Abre(c, false)) return 0;
    return Grava(c, Utf8ParaCp1252(sName), RegDword, Dword(lValue));
}

std::uint32_t clsRegistryAccess::ReadDWORD(std::string_view sPath, std::string_view sName,
                                           std::uint32_t lDefault) {
    const ChaveRegistro* chave = Abre(Divide(sPath), false);
    const ValorRegistro* v = chave ? chave->Valor(Utf8ParaCp1252(sName)) : nullptr;
    if (!v || v->tipo != RegDword || v->dados.size() != 4) return lDefault;
    return DoDword(v->dados);
}

clsRegistryAccess::Handle clsRegistryAccess::WriteBinary(std::string_view sPath,
                                                         std::string_view sName,
                                                         std::string_view sValue) {
    if (!Apara(sValue).empty() && !isBinValid(sValue)) return 0;
    const Caminho c = Divide(sPath);
    if (!CreateKeyIfDoesntExists && !Abre(c, false)) return 0;
    return Grava(c, Utf8ParaCp1252(sName), RegBinary, StrToBin(sValue));
}

std::string clsRegistryAccess::ReadBinary(std::string_view sPath, std::string_view sName,
                                          std::string_view sDefault) {
    const ChaveRegistro* chave = Abre(Divide(sPath), false);
    const ValorRegistro* v = chave ? chave->Valor(Utf8ParaCp1252(sName)) : nullptr;
    return v ? BinToStr(v->dados) : std::string(sDefault);
}

clsRegistryAccess::Handle clsRegistryAccess::KillValue(std::string_view sPath,
                                                       std::string_view sName) {
    const Caminho c = Divide(sPath);
    ChaveRegistro* chave = AbreParaEscrita(c);
    const std::string nome = Utf8ParaCp1252(sName);
    if (!chave || !chave->Valor(nome)) return 0;
    auto antes = Antes();
    chave->ApagaValor(nome);
    return Confirma(std::move(antes)) ? Raizes[*c.raiz].handle : 0;
}

bool clsRegistryAccess::ValueExists(std::string_view sPath, std::string_view sName) {
    const ChaveRegistro* chave = Abre(Divide(sPath), false);
    return chave && chave->Valor(Utf8ParaCp1252(sName));
}

int clsRegistryAccess::EnumValues(std::string_view sPath, std::vector<std::string>& names,
                                  std::vector<std::string>& values, int OnlyType) {
    names.clear();
    values.clear();
    const ChaveRegistro* chave = Abre(Divide(sPath), false);
    if (!chave) return -1;
    for (const ValorRegistro* v : chave->ValoresEmOrdem()) {
        if (OnlyType != -1 && v->tipo != OnlyType) continue;
        names.push_back(Cp1252ParaUtf8(AparaBrancos(v->nome)));
        switch (v->tipo) {
        case RegSz:
            values.push_back(v->dados.size() <= LimiteLeitura ? Cp1252ParaUtf8(v->dados) : "");
            break;
        case RegBinary:
            values.emplace_back(Apara(BinToStr(v->dados)));
            break;
        case RegDword:
            values.push_back(v->dados.size() == 4 ? std::to_string(DoDword(v->dados)) : "");
            break;
        default:
            values.emplace_back();
            break;
        }
    }
    return static_cast<int>(names.size());
}

// --- export and import ---

int clsRegistryAccess::ExportToReg(std::string_view sPath, const std::filesystem::path& sRegFile,
                                   bool IncludeSubkeys,
                                   const std::function<void(const std::string&)>& Output) {
    std::error_code ec;
    if (std::filesystem::exists(sRegFile, ec) || ec) return 0;
    const Caminho c = Divide(sPath);
    const ChaveRegistro* chave = Abre(c, false);
    if (!chave) return 0;

    std::string caminho = Raizes[*c.raiz].longo;
    for (const auto& p : *c.partes) caminho += '\\' + p;
    std::string texto = "REGEDIT4\r\n\r\n";
    auto exporta = [&](auto& self, const ChaveRegistro& k, const std::string& p) -> void {
        if (Output) Output(Cp1252ParaUtf8(p));
        texto += '[' + p + "]\r\n";
        const auto ordem = k.ValoresEmOrdem();
        if (const ValorRegistro* padrao = k.Valor(""); padrao && padrao->tipo == RegSz)
            texto +=
                "@=\"" + (padrao->dados.size() <= LimiteLeitura ? padrao->dados : "") + "\"\r\n";
        for (const ValorRegistro* v : ordem)
            if (v->tipo == RegSz && !AparaBrancos(v->nome).empty())
                texto += '"' + std::string(AparaBrancos(v->nome)) + "\"=\"" +
                         (v->dados.size() <= LimiteLeitura ? v->dados : "") + "\"\r\n";
        for (const ValorRegistro* v : ordem) {
            if (v->tipo != RegBinary) continue;
            std::string hex(Apara(BinToStr(v->dados)));
            for (char& ch : hex)
                if (ch == ' ') ch = ',';
            texto += '"' + std::string(AparaBrancos(v->nome)) + "\"=hex:" + hex + "\r\n";
        }
        for (const ValorRegistro* v : ordem) {
            if (v->tipo != RegDword || v->dados.size() != 4) continue;
            char b[16];
            std::snprintf(b, sizeof b, "%08X", DoDword(v->dados));
            texto += '"' + std::string(AparaBrancos(v->nome)) + "\"=dword:" + b + "\r\n";
        }
        texto += "\r\n";
        if (IncludeSubkeys)
            for (const auto& [_, filha] : k.filhas) self(self, filha, p + '\\' + filha.nome);
    };
    exporta(exporta, *chave, caminho);

    // O_EXCL: a file that appeared meanwhile is never overwritten
    const int fd = ::open(sRegFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (fd < 0) return 0;
    bool ok = true;
    for (size_t feito = 0; ok && feito < texto.size();) {
        const ssize_t k = ::write(fd, texto.data() + feito, texto.size() - feito);
        if (k < 0 && errno == EINTR) continue;
        ok = k > 0;
        if (ok) feito += static_cast<size_t>(k);
    }
    ok = ::close(fd) == 0 && ok;
    if (!ok) ::unlink(sRegFile.c_str());
    return ok ? 1 : 0;
}

int clsRegistryAccess::ImportFromReg(const std::filesystem::path& sRegFile) {
    CreateKeyIfDoesntExists = true;
    Leitura l = LeArquivo(sRegFile, LimiteImportacao);
    if (l.estado != Leitura::Estado::Lido) return 0;
    const std::string texto = Cp1252ParaUtf8(NormalizaParaCp1252(std::move(l.bytes)));
    std::vector<std::string_view> linhas;
    for (size_t i = 0; i <= texto.size();) {
        size_t f = texto.find('\n', i);
        if (f == std::string::npos) f = texto.size();
        std::string_view linha(texto.data() + i, f - i);
        if (!linha.empty() && linha.back() == '\r') linha.remove_suffix(1);
        linhas.push_back(linha);
        i = f + 1;
    }
    if (Maiusculas(AparaBrancos(linhas[0])) != "REGEDIT4") return 0;

    Lote lote(*this);
    std::string chave; // the key of the value lines, empty before the first or after a deletion
    for (size_t n = 1; n < linhas.size(); ++n) {
        std::string linha;
        for (char ch : AparaBrancos(linhas[n]))
            if (ch != '"') linha += ch;
        if (!linha.empty() && linha[0] == '[') {
            const size_t fim = linha.rfind(']');
            std::string k = linha.substr(1, fim == std::string::npos ? fim : fim - 1);
            chave.clear();
            if (!k.empty() && k[0] == '-')
                KillKey(k.substr(1));
            else
                chave = std::move(k);
            continue;
        }
        if (chave.empty() || linha.empty() || linha[0] == ';' ||
            linha.find('=') == std::string::npos)
            continue;
        const std::string nome(Campo(linha, '=', 1));
        const std::string_view dados = AparaBrancos(Campo(linha, '=', 2));
        if (dados == "-") {
            KillValue(chave, nome);
        } else if (IguaisSemCaixa(dados.substr(0, 4), "hex:")) {
            std::string hex(dados.substr(4));
            for (char& ch : hex)
                if (ch == ',') ch = ' ';
            WriteBinary(chave, nome, hex);
        } else if (IguaisSemCaixa(dados.substr(0, 6), "dword:")) {
            const std::string_view h = AparaBrancos(dados.substr(6));
            std::uint64_t v = 0;
            for (size_t i = 0; i < h.size() && Hex(h[i]) >= 0; ++i) {
                v = v << 4 | static_cast<unsigned>(Hex(h[i]));
                if (v > 0xFFFFFFFFu) return 0; // overflow ends the import
            }
            WriteDWORD(chave, nome, static_cast<std::uint32_t>(v));
        } else {
            WriteString(chave, nome, dados);
            if (dados.empty() && nome == "@") KillValue(chave, "");
        }
    }
    return lote.Termina() ? 1 : 0;
}

// --- conversions ---

std::string clsRegistryAccess::BinToStr(std::string_view bytes) {
    std::string s;
    char b[4];
    for (char c : bytes) {
        std::snprintf(b, sizeof b, " %02X", static_cast<unsigned char>(c));
        s += b;
    }
    return s;
}

std::string clsRegistryAccess::StrToBin(std::string_view texto) {
    const std::string hex(AparaBrancos(SemBrancos(texto)));
    std::string bytes;
    for (size_t i = 0; i < hex.size(); i += 2) {
        // each pair is read as far as it is hexadecimal: "0Z" is 0, "7Z" is 7
        int v = 0;
        for (size_t k = i; k < std::min(i + 2, hex.size()) && Hex(hex[k]) >= 0; ++k)
            v = v * 16 + Hex(hex[k]);
        bytes += static_cast<char>(v);
    }
    return bytes;
}

bool clsRegistryAccess::isBinValid(std::string_view texto) {
    const std::string s = Maiusculas(SemBrancos(texto));
    if (s.empty()) return false;
    return s.find_first_not_of("0123456789ABCDEF ") == std::string::npos;
}

} // namespace velmora
