#pragma once
// Small text helpers shared by every layer.
#include <string>

namespace velmora {

// Replaces every occurrence of `procurado`, searching again from the start after each
// replacement; `novo` must not contain `procurado` (then nothing is replaced).
std::string Troca(std::string texto, const std::string& procurado, const std::string& novo);
// The n-th field (from 1) of a text whose fields are separated by `sep`; a field that
// doesn't exist is empty.
std::string Pedaco(const std::string& texto, const std::string& sep, int n);
// Whole seconds as "hh:mm:ss".
std::string FormataTempo(long segundos);

} // namespace velmora
