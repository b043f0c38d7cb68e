#pragma once
// Windows-1252 <-> UTF-8. Inside the program text is UTF-8; in the ini files, the settings
// store and on the peer wire it is 8-bit Windows-1252. Every crossing goes through here.
#include <string>
#include <string_view>

namespace velmora {

// Each byte becomes its character. The five bytes that Windows-1252 leaves undefined
// (81, 8D, 8F, 90, 9D) become the control characters of the same number, as Windows
// itself decodes them, so that any byte string survives a round trip.
std::string Cp1252ParaUtf8(std::string_view bytes);

// Each character becomes its byte; a character that Windows-1252 lacks, and each byte of
// a broken UTF-8 sequence, becomes "?".
std::string Utf8ParaCp1252(std::string_view texto);

// Lower case of one Windows-1252 byte: ASCII, the accented Latin-1 letters and the
// pairs Š/š, Œ/œ, Ž/ž, Ÿ/ÿ.
unsigned char MinusculaCp1252(unsigned char c);
std::string MinusculasCp1252(std::string_view bytes);
// Equality of two Windows-1252 texts without regard to case.
bool IguaisSemCaixa(std::string_view a, std::string_view b);

// Bytes of a file in a format that is Windows-1252 on disk. A file that a user saved
// from a UTF-8 editor (a byte order mark, or valid UTF-8 with characters beyond ASCII) is
// converted to Windows-1252 first, so that its accents read as they were typed.
std::string NormalizaParaCp1252(std::string bytes);

} // namespace velmora
