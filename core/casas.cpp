#include "core/casas.h"

namespace velmora {

int CasaDoIndice(int i) {
    if (i < 1 || i > 64) return 0;
    const int linha = (i - 1) / 8; // 0..7
    return i + 11 + 2 * linha;
}

bool CasaClara(int casa) {
    if (!CasaDoTabuleiro(casa)) return false;
    const int r = casa / 10, c = casa % 10 - 1;
    return (r + c) % 2 == 0;
}

std::string NomeCasa(int casa) {
    const int r = casa / 10, u = casa % 10;
    std::string nome;
    nome += static_cast<char>('0' + u + 15); // units 2..9 give A..H
    nome += static_cast<char>('9' - r);
    return nome;
}

int CasaDoNome(const std::string& nome) {
    if (nome.size() != 2) return 0;
    char letra = nome[0];
    if (letra >= 'a' && letra <= 'h') letra = static_cast<char>(letra - 'a' + 'A');
    const char digito = nome[1];
    if (letra < 'A' || letra > 'H' || digito < '1' || digito > '8') return 0;
    const int u = letra - 15 - '0';
    const int r = '9' - digito;
    return 10 * r + u;
}

} // namespace velmora
