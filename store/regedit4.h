#pragma once
// The settings store on disk: a text file in the REGEDIT4 form with CR LF lines. Unlike the
// export file of the registry layer it keeps every value exactly: names and strings escape
// "\" and the double quote, strings with control characters are written as hex(1), and
// values of any type survive. It is written in UTF-8 (every Windows-1252 byte has its
// character, so nothing is lost) and read in UTF-8 or, when it isn't valid UTF-8, in
// Windows-1252, so that a file edited by hand in either reads right.
#include "store/arvoreregistro.h"

#include <cstddef>
#include <string>

namespace velmora {

struct LeituraRegedit4 {
    ArvoreRegistro arvore;
    bool danificado = false;   // a line, or the whole file, couldn't be read
    std::size_t linhaRuim = 0; // the first such line, from 1
};

// Reads what it can: a file that doesn't begin with "REGEDIT4" is empty; a line that can't
// be read is passed over (with the values under a key that can't be read).
LeituraRegedit4 LeRegedit4(std::string bytes);

std::string EscreveRegedit4(const ArvoreRegistro& arvore);

} // namespace velmora
