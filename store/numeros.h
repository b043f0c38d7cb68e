#pragma once
// The tolerant reading of numbers stored as text: what doesn't begin with a number is 0.
#include <cstdint>
#include <string_view>

namespace velmora {

// Leading blanks, an optional sign and the decimal digits that follow; anything after them
// is ignored, and text that doesn't begin so reads as 0. Saturates at the int64 range.
std::int64_t NumeroTolerante(std::string_view texto);

// The same, held within [minimo, maximo].
std::int64_t NumeroTolerante(std::string_view texto, std::int64_t minimo, std::int64_t maximo);

} // namespace velmora
