#pragma once
// A move: one byte per square, as square numbers. A plain move is "from, to"; a capture of n
// pieces is n steps of "from, landing square, square of the jumped piece". Fixed size, so
// that the search never touches the heap.
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora {

struct Jogada {
    // Twelve jumps at most: 36 squares.
    static constexpr int MAXIMO = 39;
    uint8_t tam = 0;
    // Only the first `tam` bytes mean anything; the rest is left unset on purpose, so that
    // making a move costs no clearing.
    std::array<uint8_t, MAXIMO> c;

    Jogada() : c() {}
    // A move whose bytes are all to be written by the caller.
    struct SemZerar {};
    explicit Jogada(SemZerar) {}
    // Takes at most MAXIMO bytes of the text.
    explicit Jogada(std::string_view texto) {
        tam = static_cast<uint8_t>(std::min<size_t>(texto.size(), MAXIMO));
        for (int i = 0; i < tam; ++i) c[i] = static_cast<uint8_t>(texto[i]);
    }
    bool vazia() const { return tam == 0; }
    int tamanho() const { return tam; }
    uint8_t operator[](int i) const { return c[i]; }
    void acrescenta(uint8_t a, uint8_t b, uint8_t d) {
        c[tam] = a;
        c[tam + 1] = b;
        c[tam + 2] = d;
        tam = static_cast<uint8_t>(tam + 3);
    }
    bool operator==(const Jogada& o) const {
        return tam == o.tam && std::equal(c.begin(), c.begin() + tam, o.c.begin());
    }
    std::string texto() const { return std::string(reinterpret_cast<const char*>(c.data()), tam); }
};

// The square numbers joined by "-", as in "66-44-55-44-22-33".
std::string JogadaEmNumeros(const Jogada& j);
// The square names joined by "-", as in "C3-D4".
std::string JogadaEmNomes(const Jogada& j);

} // namespace velmora
