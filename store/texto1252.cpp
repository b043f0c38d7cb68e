#include "store/texto1252.h"

#include <array>
#include <cstdint>

namespace velmora {

namespace {

// Characters of the bytes 80..9F; the undefined bytes keep their own number.
constexpr std::array<char32_t, 32> tabela80 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool Indefinido(unsigned char b) {
    return b == 0x81 || b == 0x8D || b == 0x8F || b == 0x90 || b == 0x9D;
}

void PoeUtf8(std::string& s, char32_t c) {
    if (c < 0x80) {
        s += static_cast<char>(c);
    } else if (c < 0x800) {
        s += static_cast<char>(0xC0 | (c >> 6));
        s += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        s += static_cast<char>(0xE0 | (c >> 12));
        s += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        s += static_cast<char>(0x80 | (c & 0x3F));
    }
}

char ByteDe(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    for (size_t i = 0; i < tabela80.size(); ++i)
        if (tabela80[i] == c) return static_cast<char>(0x80 + i);
    return '?';
}

// Decodes one UTF-8 character at `i`; gives its length, 0 when the sequence is broken.
size_t LeUtf8(std::string_view s, size_t i, char32_t& c) {
    const auto b0 = static_cast<unsigned char>(s[i]);
    if (b0 < 0x80) return c = b0, 1;
    size_t n;
    char32_t minimo;
    if ((b0 & 0xE0) == 0xC0)
        n = 2, c = b0 & 0x1F, minimo = 0x80;
    else if ((b0 & 0xF0) == 0xE0)
        n = 3, c = b0 & 0x0F, minimo = 0x800;
    else if ((b0 & 0xF8) == 0xF0)
        n = 4, c = b0 & 0x07, minimo = 0x10000;
    else
        return 0;
    if (i + n > s.size()) return 0;
    for (size_t k = 1; k < n; ++k) {
        const auto b = static_cast<unsigned char>(s[i + k]);
        if ((b & 0xC0) != 0x80) return 0;
        c = (c << 6) | (b & 0x3F);
    }
    if (c < minimo || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) return 0;
    return n;
}

} // namespace

std::string Cp1252ParaUtf8(std::string_view bytes) {
    std::string s;
    s.reserve(bytes.size());
    for (char ch : bytes) {
        const auto b = static_cast<unsigned char>(ch);
        PoeUtf8(s, b >= 0x80 && b < 0xA0 ? tabela80[b - 0x80] : b);
    }
    return s;
}

std::string Utf8ParaCp1252(std::string_view texto) {
    std::string s;
    s.reserve(texto.size());
    for (size_t i = 0; i < texto.size();) {
        char32_t c = 0;
        const size_t n = LeUtf8(texto, i, c);
        if (n == 0) {
            s += '?';
            ++i;
            continue;
        }
        // U+0080..U+009F other than the five undefined bytes have no place in the code page
        if (c >= 0x80 && c < 0xA0 && !Indefinido(static_cast<unsigned char>(c)))
            s += '?';
        else
            s += ByteDe(c);
        i += n;
    }
    return s;
}

unsigned char MinusculaCp1252(unsigned char c) {
    if (c >= 'A' && c <= 'Z') return c + 32;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
    switch (c) {
    case 0x8A:
        return 0x9A; // Š
    case 0x8C:
        return 0x9C; // Œ
    case 0x8E:
        return 0x9E; // Ž
    case 0x9F:
        return 0xFF; // Ÿ
    default:
        return c;
    }
}

std::string MinusculasCp1252(std::string_view bytes) {
    std::string s(bytes);
    for (char& c : s) c = static_cast<char>(MinusculaCp1252(static_cast<unsigned char>(c)));
    return s;
}

bool IguaisSemCaixa(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (MinusculaCp1252(static_cast<unsigned char>(a[i])) !=
            MinusculaCp1252(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

std::string NormalizaParaCp1252(std::string bytes) {
    std::string_view v(bytes);
    const bool bom = v.substr(0, 3) == "\xEF\xBB\xBF";
    if (bom) v.remove_prefix(3);
    bool alemDoAscii = false;
    for (size_t i = 0; i < v.size();) {
        char32_t c = 0;
        const size_t n = LeUtf8(v, i, c);
        if (n == 0) return bytes; // not UTF-8: already the code page, as it stands
        alemDoAscii |= n > 1;
        i += n;
    }
    if (!bom && !alemDoAscii) return bytes;
    return Utf8ParaCp1252(v);
}

} // namespace velmora
