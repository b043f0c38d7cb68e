#include "peer/fio.h"

#include "store/texto1252.h"

#include <cmath>
#include <limits>

namespace velmora::fio {

void TipoIncompativel() {
    throw Falha(13, "Type mismatch");
}

void ForaDoIntervalo() {
    throw Falha(9, "Subscript out of range");
}

std::string Pedaco(std::string_view texto, std::string_view sep, int n) {
    if (sep.empty() || n < 1) return {};
    std::string t;
    t.reserve(texto.size() + 2 * sep.size());
    if (!Comeca(texto, sep)) t += sep;
    t += texto;
    if (t.size() < sep.size() || t.compare(t.size() - sep.size(), sep.size(), sep) != 0) t += sep;
    size_t pos = 0;
    for (int k = 1; k < n; ++k) {
        pos = t.find(sep, pos);
        if (pos == std::string::npos) return {};
        pos += sep.size();
    }
    pos = t.find(sep, pos);
    if (pos == std::string::npos) return {};
    const size_t ini = pos + sep.size();
    const size_t fim = t.find(sep, ini);
    if (fim == std::string::npos) return {};
    return t.substr(ini, fim - ini);
}

std::string Troca(std::string texto, std::string_view procurado, std::string_view novo) {
    if (procurado.empty()) return texto;
    for (size_t p = texto.find(procurado); p != std::string::npos; p = texto.find(procurado))
        texto.replace(p, procurado.size(), novo);
    return texto;
}

std::string Apara(std::string_view t) {
    const size_t ini = t.find_first_not_of(' ');
    if (ini == std::string_view::npos) return {};
    return std::string(t.substr(ini, t.find_last_not_of(' ') - ini + 1));
}

bool Contem(std::string_view texto, std::string_view parte) {
    return texto.find(parte) != std::string_view::npos;
}

bool Comeca(std::string_view texto, std::string_view inicio) {
    return texto.substr(0, inicio.size()) == inicio;
}

std::int32_t NumeroEstrito(std::string_view texto) {
    const std::string t = Apara(texto);
    size_t i = 0;
    bool negativo = false;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) negativo = t[i++] == '-';
    const size_t inicioDigitos = i;
    double valor = 0;
    while (i < t.size() && t[i] >= '0' && t[i] <= '9') valor = valor * 10 + (t[i++] - '0');
    bool temDigitos = i > inicioDigitos;
    if (i < t.size() && t[i] == '.') {
        double escala = 0.1;
        const size_t ini = ++i;
        while (i < t.size() && t[i] >= '0' && t[i] <= '9') {
            valor += (t[i++] - '0') * escala;
            escala /= 10;
        }
        temDigitos = temDigitos || i > ini;
    }
    if (!temDigitos || i != t.size()) TipoIncompativel();
    if (negativo) valor = -valor;
    const double r = std::nearbyint(valor); // the default rounding is half to even
    if (r > std::numeric_limits<std::int32_t>::max() ||
        r < std::numeric_limits<std::int32_t>::min())
        throw Falha(6, "Overflow");
    return static_cast<std::int32_t>(r);
}

std::int32_t NumeroBrando(std::string_view texto) {
    size_t i = 0;
    while (i < texto.size() && (texto[i] == ' ' || texto[i] == '\t')) ++i;
    bool negativo = false;
    if (i < texto.size() && (texto[i] == '+' || texto[i] == '-')) negativo = texto[i++] == '-';
    std::int64_t v = 0;
    while (i < texto.size() && texto[i] >= '0' && texto[i] <= '9') {
        v = v * 10 + (texto[i++] - '0');
        if (v > std::numeric_limits<std::int32_t>::max()) {
            v = std::numeric_limits<std::int32_t>::max();
            while (i < texto.size() && texto[i] >= '0' && texto[i] <= '9') ++i;
        }
    }
    return static_cast<std::int32_t>(negativo ? -v : v);
}

std::string DoFio(std::string_view bytes) {
    return Cp1252ParaUtf8(bytes);
}

std::string ParaFio(std::string_view texto) {
    return Utf8ParaCp1252(texto);
}

} // namespace velmora::fio
