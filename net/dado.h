#pragma once
// The values that SendData takes and GetData/PeekData give: a byte string or one of the
// fixed-size numbers, and the optional arguments that may be a number or a text (a port, a
// maximum length). Text travels as its bytes: the caller decides the code page.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace velmora {

// Currency: a 64-bit count of ten-thousandths.
struct Moeda {
    std::int64_t dezMilesimos = 0;
    friend bool operator==(const Moeda&, const Moeda&) = default;
};
// Date: days since 30 December 1899, as a double.
struct DataVB {
    double dias = 0;
    friend bool operator==(const DataVB&, const DataVB&) = default;
};

// Empty (monostate), bytes, byte, 16-bit integer, boolean, 32-bit integer, single, double,
// currency, date.
using Dado = std::variant<std::monostate, std::string, std::uint8_t, std::int16_t, bool,
                          std::int32_t, float, double, Moeda, DataVB>;

// Type codes of the `type` argument of GetData and PeekData.
enum class TipoDado : std::int32_t {
    Integer = 2,
    Long = 3,
    Single = 4,
    Double = 5,
    Currency = 6,
    Date = 7,
    String = 8,
    Boolean = 11,
    Byte = 17,
    ByteArray = 8209,
};

// An optional argument: missing (monostate), a number or a text.
using Variante = std::variant<std::monostate, std::int64_t, double, std::string>;

// The number that the argument stands for: a number, or a text that reads wholly as a
// decimal number (blanks around it allowed). Missing and other texts give nothing.
std::optional<double> NumeroDe(const Variante& v);
// The number rounded to the nearest integer (halves to even); nothing when out of range.
std::optional<std::int64_t> InteiroDe(double numero);

// The bytes of a value, in the machine's byte order; nothing for Empty.
std::optional<std::string> BytesDe(const Dado& dado);

// The type of a value; nothing for Empty.
std::optional<TipoDado> TipoDe(const Dado& dado);
// Bytes that a fixed-size type needs (0 for the string types; nothing for an unknown code).
std::optional<std::size_t> TamanhoFixo(TipoDado tipo);
// A value of type `tipo` from bytes; `bytes` holds the fixed size of the type, or any count
// for the string types.
Dado DadoDe(TipoDado tipo, std::string_view bytes);

} // namespace velmora
