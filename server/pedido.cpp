#include "server/pedido.h"

#include "store/texto1252.h"

#include <algorithm>

namespace velmora::servidor {

namespace {

int Hex(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool Utf8Valido(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size()) {
        const auto c = static_cast<unsigned char>(s[i]);
        std::size_t n = 0;
        if (c < 0x80)
            n = 0;
        else if (c >= 0xC2 && c <= 0xDF)
            n = 1;
        else if (c >= 0xE0 && c <= 0xEF)
            n = 2;
        else if (c >= 0xF0 && c <= 0xF4)
            n = 3;
        else
            return false;
        if (i + n >= s.size() && n > 0) return false;
        for (std::size_t k = 1; k <= n; ++k)
            if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
        if (n == 2) {
            const auto d = static_cast<unsigned char>(s[i + 1]);
            if ((c == 0xE0 && d < 0xA0) || (c == 0xED && d >= 0xA0)) return false;
        }
        if (n == 3) {
            const auto d = static_cast<unsigned char>(s[i + 1]);
            if ((c == 0xF0 && d < 0x90) || (c == 0xF4 && d >= 0x90)) return false;
        }
        i += n + 1;
    }
    return true;
}

std::string_view Apara(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
        s.remove_suffix(1);
    return s;
}

bool IguaisSemCaixaAscii(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        auto x = a[i], y = b[i];
        if (x >= 'A' && x <= 'Z') x = static_cast<char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z') y = static_cast<char>(y - 'A' + 'a');
        if (x != y) return false;
    }
    return true;
}

} // namespace

LeituraPedido LePedido(std::string_view bytes) {
    LeituraPedido r;
    const auto limite = std::min(bytes.size(), kTamanhoMaximoPedido);
    const std::string_view visto = bytes.substr(0, limite);
    // The end of the request: an empty line (CR LF CR LF, or bare LF LF from hand tools)
    std::size_t fim = visto.find("\r\n\r\n");
    std::size_t tamFim = 4;
    const std::size_t fimLf = visto.find("\n\n");
    if (fimLf != std::string_view::npos && (fim == std::string_view::npos || fimLf < fim)) {
        fim = fimLf;
        tamFim = 2;
    }
    // A first line that can't begin a GET is refused before the rest comes
    constexpr std::string_view get = "GET ", head = "HEAD ";
    const auto prefixoOk = [&](std::string_view m) {
        const auto n = std::min(m.size(), visto.size());
        return visto.substr(0, n) == m.substr(0, n);
    };
    if (!prefixoOk(get) && !prefixoOk(head)) {
        r.estado = Leitura::Invalido;
        return r;
    }
    if (fim == std::string_view::npos) {
        r.estado = bytes.size() >= kTamanhoMaximoPedido ? Leitura::Invalido : Leitura::Incompleto;
        return r;
    }
    r.consumidos = fim + tamFim;
    const std::string_view cabeca = visto.substr(0, fim);
    std::size_t fimLinha = cabeca.find('\n');
    std::string_view linha = cabeca.substr(0, fimLinha);
    if (!linha.empty() && linha.back() == '\r') linha.remove_suffix(1);

    const auto espaco = linha.find(' ');
    r.pedido.metodo = std::string(linha.substr(0, espaco));
    std::string_view alvo = linha.substr(espaco + 1);
    // "HTTP/1.x" at the end makes it HTTP; without it, the bare form, whose URL may hold
    // blanks (a password goes out as typed)
    const auto ultimo = alvo.rfind(' ');
    if (ultimo != std::string_view::npos && alvo.substr(ultimo + 1).starts_with("HTTP/1.") &&
        alvo.size() - ultimo - 1 == 8) {
        r.pedido.forma = FormaPedido::Http;
        alvo = alvo.substr(0, ultimo);
    } else {
        r.pedido.forma = FormaPedido::Nua;
        if (fimLinha != std::string_view::npos) {
            // A bare request has no headers: anything between the line and the empty
            // line is not ours
            r.estado = Leitura::Invalido;
            return r;
        }
    }
    // Absolute form: drop the scheme and the host
    if (alvo.size() >= 7 && IguaisSemCaixaAscii(alvo.substr(0, 7), "http://")) {
        alvo.remove_prefix(7);
        const auto barra = alvo.find_first_of("/?");
        alvo = barra == std::string_view::npos ? std::string_view{} : alvo.substr(barra);
    }
    if (alvo.empty() || (alvo.front() != '/' && alvo.front() != '?')) {
        if (alvo.empty()) {
            alvo = "/";
        } else {
            r.estado = Leitura::Invalido;
            return r;
        }
    }
    const auto interrogacao = alvo.find('?');
    r.pedido.caminho = DecodificaPercentual(alvo.substr(0, interrogacao));
    if (r.pedido.caminho.empty()) r.pedido.caminho.push_back('/');
    if (interrogacao != std::string_view::npos)
        r.pedido.consulta = std::string(alvo.substr(interrogacao + 1));
    const auto cerquilha = r.pedido.consulta.find('#');
    if (r.pedido.forma == FormaPedido::Http && cerquilha != std::string::npos)
        r.pedido.consulta.erase(cerquilha);

    // Headers: only X-Forwarded-For is of use
    while (fimLinha != std::string_view::npos) {
        const std::string_view resto = cabeca.substr(fimLinha + 1);
        const auto prox = resto.find('\n');
        std::string_view h = resto.substr(0, prox);
        fimLinha = prox == std::string_view::npos ? std::string_view::npos : fimLinha + 1 + prox;
        const auto dp = h.find(':');
        if (dp == std::string_view::npos) continue;
        if (IguaisSemCaixaAscii(Apara(h.substr(0, dp)), "X-Forwarded-For"))
            r.pedido.encaminhadoPor = std::string(Apara(h.substr(dp + 1)));
    }
    if (r.pedido.metodo != "GET" && r.pedido.metodo != "HEAD") {
        r.estado = Leitura::Invalido;
        return r;
    }
    r.estado = Leitura::Completo;
    return r;
}

std::string DecodificaPercentual(std::string_view texto) {
    std::string s;
    s.reserve(texto.size());
    for (std::size_t i = 0; i < texto.size(); ++i) {
        if (texto[i] == '%' && i + 2 < texto.size()) {
            const int a = Hex(texto[i + 1]), b = Hex(texto[i + 2]);
            if (a >= 0 && b >= 0) {
                s += static_cast<char>(a * 16 + b);
                i += 2;
                continue;
            }
        }
        s += texto[i];
    }
    return s;
}

Parametros LeConsulta(std::string_view consulta, std::size_t maximo) {
    Parametros p;
    while (!consulta.empty() && p.size() < maximo) {
        const auto e = consulta.find('&');
        const std::string_view par = consulta.substr(0, e);
        consulta = e == std::string_view::npos ? std::string_view{} : consulta.substr(e + 1);
        if (par.empty()) continue;
        const auto igual = par.find('=');
        std::string chave = DecodificaPercentual(par.substr(0, igual));
        std::string valor = igual == std::string_view::npos
                                ? std::string{}
                                : DecodificaPercentual(par.substr(igual + 1));
        p.emplace_back(std::move(chave), std::move(valor));
    }
    return p;
}

std::string Valor(const Parametros& p, std::string_view chave) {
    for (const auto& [k, v] : p)
        if (k == chave) return v;
    return {};
}

void Define(Parametros& p, std::string_view chave, std::string valor) {
    for (auto& [k, v] : p)
        if (k == chave) {
            v = std::move(valor);
            return;
        }
    p.emplace_back(std::string(chave), std::move(valor));
}

namespace {

// Where the value of `chave` begins: after "chave=" at the start of the query or just
// after an "&"; npos when the key isn't there.
std::size_t InicioDoValor(std::string_view consulta, std::string_view chave) {
    for (std::size_t i = 0; i < consulta.size(); ++i) {
        if (i > 0 && consulta[i - 1] != '&') continue;
        const std::string_view resto = consulta.substr(i);
        if (resto.size() > chave.size() && resto.starts_with(chave) && resto[chave.size()] == '=')
            return i + chave.size() + 1;
    }
    return std::string_view::npos;
}

} // namespace

std::string ValorAte(std::string_view consulta, std::string_view chave, std::string_view seguinte) {
    const auto inicio = InicioDoValor(consulta, chave);
    const std::string marca = "&" + std::string(seguinte) + "=";
    const auto fim =
        inicio == std::string_view::npos ? std::string_view::npos : consulta.find(marca, inicio);
    if (fim == std::string_view::npos) return Valor(LeConsulta(consulta), chave);
    return DecodificaPercentual(consulta.substr(inicio, fim - inicio));
}

Credenciais LeCredenciais(std::string_view consulta) {
    constexpr std::string_view marcaSenha = "&senha=", marcaPrograma = "&programa=";
    const auto nick = InicioDoValor(consulta, "nick");
    const auto senha = nick == std::string_view::npos ? nick : consulta.find(marcaSenha, nick);
    const auto programa = consulta.rfind(marcaPrograma);
    if (senha == std::string_view::npos || programa == std::string_view::npos ||
        programa < senha + marcaSenha.size()) {
        const auto q = LeConsulta(consulta);
        return {Valor(q, "nick"), Valor(q, "senha")};
    }
    const auto inicioSenha = senha + marcaSenha.size();
    return {DecodificaPercentual(consulta.substr(nick, senha - nick)),
            DecodificaPercentual(consulta.substr(inicioSenha, programa - inicioSenha))};
}

bool Tem(const Parametros& p, std::string_view chave) {
    return std::any_of(p.begin(), p.end(), [&](const auto& kv) { return kv.first == chave; });
}

std::string TextoLimpo(std::string_view bytes, std::size_t maximo) {
    std::string utf8 = Utf8Valido(bytes) ? std::string(bytes) : Cp1252ParaUtf8(bytes);
    std::string s;
    s.reserve(std::min(utf8.size(), maximo));
    for (std::size_t i = 0; i < utf8.size();) {
        const auto c = static_cast<unsigned char>(utf8[i]);
        std::size_t n = c < 0x80 ? 1 : c < 0xE0 ? 2 : c < 0xF0 ? 3 : 4;
        n = std::min(n, utf8.size() - i);
        if (s.size() + n > maximo) break;
        const bool controle =
            c < 0x20 || c == 0x7F ||
            (c == 0xC2 && n == 2 && static_cast<unsigned char>(utf8[i + 1]) < 0xA0);
        if (!controle) s.append(utf8, i, n);
        i += n;
    }
    return s;
}

} // namespace velmora::servidor
