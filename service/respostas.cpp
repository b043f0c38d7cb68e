#include "service/respostas.h"

#include "core/utilidades.h"
#include "store/numeros.h"

#include <algorithm>

namespace velmora {

namespace {

bool EhBranco(char c) {
    return c == ' ' || c == '\t';
}

std::string Minusculas(std::string s) {
    for (char& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

bool ComecaCom(std::string_view texto, std::string_view inicio) {
    return texto.substr(0, inicio.size()) == inicio;
}

// Pedaco over a cleaned reply.
std::string Campo(const std::string& texto, const char* sep, int n) {
    return Pedaco(texto, sep, n);
}

} // namespace

std::string Limpa(std::string_view texto) {
    std::string t;
    t.reserve(texto.size());
    for (char c : texto)
        if (c != '\r' && c != '\n') t.push_back(c);
    std::size_t ini = 0;
    while (ini < t.size() && EhBranco(t[ini])) ++ini;
    std::size_t fim = t.size();
    while (fim > ini && EhBranco(t[fim - 1])) --fim;
    return t.substr(ini, fim - ini);
}

bool Contem(std::string_view texto, std::string_view parte) {
    return texto.find(parte) != std::string_view::npos;
}

std::vector<std::string> Campos(std::string_view texto, std::string_view sep) {
    std::vector<std::string> campos;
    if (sep.empty()) return campos;
    // The same framing as Pedaco: a separator in front when the text lacks one, and one
    // behind when it doesn't end with one (or is too short to both begin and end so)
    std::string t;
    t.reserve(texto.size() + 2 * sep.size());
    if (!ComecaCom(texto, sep)) t.append(sep);
    t.append(texto);
    if (t.size() < 2 * sep.size() || t.compare(t.size() - sep.size(), sep.size(), sep) != 0)
        t.append(sep);
    std::size_t pos = 0;
    for (;;) {
        const std::size_t ini = pos + sep.size();
        const std::size_t fim = t.find(sep, ini);
        if (fim == std::string::npos) break;
        campos.emplace_back(t, ini, fim - ini);
        pos = fim;
    }
    return campos;
}

long Numero(std::string_view texto, long minimo, long maximo) {
    return static_cast<long>(NumeroTolerante(texto, minimo, maximo));
}

std::string QuebraLinhas(std::string texto, std::string_view quebra) {
    std::string r;
    r.reserve(texto.size());
    for (char c : texto) {
        if (c == ';')
            r.append(quebra);
        else
            r.push_back(c);
    }
    return r;
}

// ---------------------------------------------------------------- waiting list

TipoLista ClassificaLista(std::string_view resposta) {
    if (resposta == "Faltam dados") return TipoLista::FaltamDados;
    if (resposta.empty()) return TipoLista::Vazia;
    if (Contem(resposta, "**")) return TipoLista::Lista;
    return TipoLista::Erro;
}

std::string ColapsaSeparadores(std::string_view texto) {
    std::string r;
    r.reserve(texto.size());
    std::size_t i = 0;
    while (i < texto.size()) {
        if (texto[i] != '*') {
            r.push_back(texto[i++]);
            continue;
        }
        std::size_t fim = i;
        while (fim < texto.size() && texto[fim] == '*') ++fim;
        std::size_t n = fim - i;
        if (n >= 4) n = n % 2 == 0 ? 2 : 3;
        r.append(n, '*');
        i = fim;
    }
    return r;
}

std::vector<std::string> CarregaIpstoList(std::string_view resposta, std::string_view enderecoLocal,
                                          const std::function<bool()>& parar) {
    std::vector<std::string> lista;
    for (std::string& campo : Campos(ColapsaSeparadores(resposta), "**")) {
        if (campo.empty()) break;
        if (ComecaCom(campo, "!!")) {
            std::string linha = campo.substr(2);
            const std::string endereco = linha.substr(0, linha.find(':'));
            if (endereco != enderecoLocal && (lista.empty() || lista.back() != linha))
                lista.push_back(std::move(linha));
        }
        if (parar && parar()) return {};
    }
    return lista;
}

// ---------------------------------------------------------------- session parameters

ParametrosSessao LeParametros(std::string_view resposta) {
    ParametrosSessao p;
    const std::string r = Limpa(resposta);
    p.valido = Campo(r, "**", 1) == "R";
    if (!p.valido) return p;
    p.notifica = Campo(r, "**", 3) == "Notificame:";
    p.aviso = QuebraLinhas(Campo(r, "**", 4), "\r\n");
    p.impede = Minusculas(Campo(r, "**", 5)) == "false";
    const std::string porta = Campo(r, "**", 6);
    if (ComecaCom(porta, "porta:")) {
        const long n = Numero(std::string_view(porta).substr(6), -1, 65536);
        if (n > 0 && n <= 65535) p.porta = static_cast<int>(n);
    }
    const std::string tempo = Minusculas(Campo(r, "**", 7));
    if (ComecaCom(tempo, "tempo:"))
        p.tempoLimite =
            static_cast<int>(std::max(60L, Numero(std::string_view(tempo).substr(6), 0, 86400)));
    const std::string ta = Campo(r, "**", 8);
    if (ComecaCom(ta, "TA:"))
        p.tempoEspera =
            static_cast<int>(std::max(10L, Numero(std::string_view(ta).substr(3), 0, 32767)));
    return p;
}

// ---------------------------------------------------------------- relay address

EnderecoRelay LeServidor(std::string_view resposta) {
    EnderecoRelay e;
    const std::string r = Limpa(resposta);
    e.valido = Campo(r, "#", 1) == "IPSERVER";
    if (!e.valido) return e;
    e.host = Limpa(Campo(r, "#", 2));
    const long porta = Numero(Campo(r, "#", 3), 0, 65536);
    e.porta = porta <= 65535 ? static_cast<int>(porta) : 0;
    return e;
}

// ---------------------------------------------------------------- login

RespostaLogin LeLogin(std::string_view resposta) {
    RespostaLogin l;
    const std::string r = Limpa(resposta);
    if (Campo(r, "#", 1) != "Resposta:") return l;
    if (Campo(r, "#", 4) == "MSG:") l.mensagem = Campo(Campo(r, "#", 2), ":", 2);
    if (Campo(r, "#", 2) == "NOT") {
        l.tipo = RespostaLogin::Recusado;
        return l;
    }
    l.tipo = RespostaLogin::Aceito;
    l.pontos = Numero(Campo(r, "#", 3), INT32_MIN, INT32_MAX);
    l.id = std::to_string(Numero(Campo(r, "#", 4), INT32_MIN, INT32_MAX));
    return l;
}

// ---------------------------------------------------------------- new nick

RespostaCadastro LeCadastro(std::string_view resposta) {
    RespostaCadastro c;
    const std::string r = Limpa(resposta);
    if (Campo(r, "#", 1) != "Resposta:") return c;
    const std::string palavra = Campo(r, "#", 2);
    if (palavra == "OK")
        c.tipo = RespostaCadastro::Criado;
    else if (palavra == "Jatem")
        c.tipo = RespostaCadastro::JaTem;
    else if (palavra == "ERRO")
        c.tipo = RespostaCadastro::Erro;
    else {
        c.tipo = RespostaCadastro::Outro;
        c.texto = Campo(r, "#", 3);
    }
    return c;
}

// ---------------------------------------------------------------- may a nick be made

RespostaPodeCadastrar LePodeCadastrar(std::string_view resposta) {
    RespostaPodeCadastrar p;
    const std::string r = Limpa(resposta);
    if (!Contem(r, "RESP")) return p;
    if (!Contem(r, "NOTPOD")) {
        p.tipo = RespostaPodeCadastrar::Pode;
        return p;
    }
    p.tipo = RespostaPodeCadastrar::NaoPode;
    p.texto = QuebraLinhas(Campo(r, ":", 3), "\r");
    if (p.texto.empty()) p.texto = "Não é possível cadastrar mais nicks";
    return p;
}

// ---------------------------------------------------------------- ban test

RespostaBloqueio LeBloqueio(std::string_view resposta) {
    RespostaBloqueio b;
    const std::string r = Limpa(resposta);
    if (Contem(r, "BLOQUEADO")) {
        b.tipo = RespostaBloqueio::Bloqueado;
        b.texto = Campo(r, ":", 2);
    } else if (Contem(r, "OK")) {
        b.tipo = RespostaBloqueio::Livre;
    }
    return b;
}

// ---------------------------------------------------------------- award of a win

RespostaAtribui LeAtribui(std::string_view resposta) {
    RespostaAtribui a;
    const std::string r = Limpa(resposta);
    a.ok = Campo(r, "#", 1) == "OK";
    if (!a.ok) return a;
    const std::string pt1 = Campo(r, "#", 2), pt2 = Campo(r, "#", 3);
    a.temPT1 = ComecaCom(pt1, "PT1");
    a.temPT2 = ComecaCom(pt2, "PT2");
    if (a.temPT1) a.pt1 = Numero(Campo(pt1, ":", 2), INT32_MIN, INT32_MAX);
    if (a.temPT2) a.pt2 = Numero(Campo(pt2, ":", 2), INT32_MIN, INT32_MAX);
    return a;
}

// ---------------------------------------------------------------- port test

int LeTestePorta(std::string_view resposta) {
    if (!Contem(resposta, "RESP")) return 4;
    if (Contem(resposta, "Online")) return 1;
    if (Contem(resposta, "Offline")) return 2;
    return 0;
}

// ---------------------------------------------------------------- own public address

std::string LeMeuIP(std::string_view resposta) {
    const std::string r = Limpa(resposta);
    if (Campo(r, ":", 1) != "Seu IP") return {};
    return Limpa(Campo(r, ":", 2));
}

// ---------------------------------------------------------------- peer's points

PontosRecebidos LeGETPT(std::string_view mensagem) {
    const std::string m(mensagem);
    return {Numero(Campo(m, ":", 2), INT32_MIN, INT32_MAX),
            Numero(Campo(m, ":", 3), INT32_MIN, INT32_MAX)};
}

} // namespace velmora
