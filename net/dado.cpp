#include "net/dado.h"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <type_traits>

namespace velmora {

namespace {

template <class T> std::string Crus(T valor) {
    std::string s(sizeof(T), '\0');
    std::memcpy(s.data(), &valor, sizeof(T));
    return s;
}

template <class T> T DeCrus(std::string_view bytes) {
    T valor{};
    if (bytes.size() >= sizeof(T)) std::memcpy(&valor, bytes.data(), sizeof(T));
    return valor;
}

} // namespace

std::optional<double> NumeroDe(const Variante& v) {
    if (const auto* i = std::get_if<std::int64_t>(&v)) return static_cast<double>(*i);
    if (const auto* d = std::get_if<double>(&v)) return *d;
    if (const auto* s = std::get_if<std::string>(&v)) {
        const auto ini = s->find_first_not_of(" \t");
        if (ini == std::string::npos) return std::nullopt;
        const auto fim = s->find_last_not_of(" \t");
        const std::string t = s->substr(ini, fim - ini + 1);
        // Decimal only: no hex, no "inf" or "nan"
        if (t.find_first_not_of("0123456789+-.eE") != std::string::npos) return std::nullopt;
        char* resto = nullptr;
        const double d = std::strtod(t.c_str(), &resto);
        if (resto != t.c_str() + t.size()) return std::nullopt;
        return d;
    }
    return std::nullopt;
}

std::optional<std::int64_t> InteiroDe(double numero) {
    if (!std::isfinite(numero) || std::fabs(numero) > 9.0e15) return std::nullopt;
    return static_cast<std::int64_t>(std::nearbyint(numero));
}

std::optional<std::string> BytesDe(const Dado& dado) {
    return std::visit(
        [](const auto& v) -> std::optional<std::string> {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::monostate>)
                return std::nullopt;
            else if constexpr (std::is_same_v<T, std::string>)
                return v;
            // A boolean is two bytes: True is all ones
            else if constexpr (std::is_same_v<T, bool>)
                return Crus<std::int16_t>(v ? -1 : 0);
            else if constexpr (std::is_same_v<T, Moeda>)
                return Crus(v.dezMilesimos);
            else if constexpr (std::is_same_v<T, DataVB>)
                return Crus(v.dias);
            else
                return Crus(v);
        },
        dado);
}

std::optional<TipoDado> TipoDe(const Dado& dado) {
    switch (dado.index()) {
    case 1:
        return TipoDado::String;
    case 2:
        return TipoDado::Byte;
    case 3:
        return TipoDado::Integer;
    case 4:
        return TipoDado::Boolean;
    case 5:
        return TipoDado::Long;
    case 6:
        return TipoDado::Single;
    case 7:
        return TipoDado::Double;
    case 8:
        return TipoDado::Currency;
    case 9:
        return TipoDado::Date;
    default:
        return std::nullopt;
    }
}

std::optional<std::size_t> TamanhoFixo(TipoDado tipo) {
    switch (tipo) {
    case TipoDado::String:
    case TipoDado::ByteArray:
        return 0;
    case TipoDado::Byte:
        return 1;
    case TipoDado::Integer:
    case TipoDado::Boolean:
        return 2;
    case TipoDado::Long:
    case TipoDado::Single:
        return 4;
    case TipoDado::Double:
    case TipoDado::Currency:
    case TipoDado::Date:
        return 8;
    }
    return std::nullopt;
}

Dado DadoDe(TipoDado tipo, std::string_view bytes) {
    switch (tipo) {
    case TipoDado::Byte:
        return DeCrus<std::uint8_t>(bytes);
    case TipoDado::Integer:
        return DeCrus<std::int16_t>(bytes);
    case TipoDado::Boolean:
        return DeCrus<std::int16_t>(bytes) != 0;
    case TipoDado::Long:
        return DeCrus<std::int32_t>(bytes);
    case TipoDado::Single:
        return DeCrus<float>(bytes);
    case TipoDado::Double:
        return DeCrus<double>(bytes);
    case TipoDado::Currency:
        return Moeda{DeCrus<std::int64_t>(bytes)};
    case TipoDado::Date:
        return DataVB{DeCrus<double>(bytes)};
    case TipoDado::String:
    case TipoDado::ByteArray:
        break;
    }
    return std::string(bytes);
}

} // namespace velmora
