#include "core/registros.h"

namespace velmora {

const char* NomeRegra(int regra) {
    switch (regra) {
    case 1: return "Peão captura para trás";
    case 2: return "Peão não captura para trás";
    case 3: return "Peão não inicia captura para trás";
    case 4: return "Regra AFC";
    default: return "";
    }
}

const char* NomeNivel(int nivel) {
    switch (nivel) {
    case 1: return "Iniciante";
    case 2: return "Amador";
    case 3: return "Intermediário";
    case 4: return "Experiente";
    case 5: return "Profissional";
    default: return "";
    }
}

} // namespace velmora
