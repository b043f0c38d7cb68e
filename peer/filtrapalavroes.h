#pragma once
// The filter of the chat lines this player sends: whole words of a fixed list, in lower or
// upper case, become runs of "*" as long as the word.
#include <QString>

namespace velmora {

QString FiltraPalavroes(const QString& texto);

} // namespace velmora
