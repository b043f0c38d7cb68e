#include "core/tabuleiro.h"

#include "core/casas.h"

namespace velmora {

void LimpaMailbox(Posicao& p) {
    p.Casas.fill(0);
    for (int k = 1; k <= 10; ++k) {
        p.Casas[k] = BORDA;
        p.Casas[k + 90] = BORDA;
        p.Casas[10 * k - 9] = BORDA;
        p.Casas[10 * k] = BORDA;
    }
}

Posicao PosicaoInicial() {
    static constexpr int lado1[12] = {62, 64, 66, 68, 73, 75, 77, 79, 82, 84, 86, 88};
    static constexpr int lado2[12] = {33, 35, 37, 39, 22, 24, 26, 28, 13, 15, 17, 19};
    Posicao p;
    LimpaMailbox(p);
    for (int n = 1; n <= 12; ++n) {
        p.Casas[lado1[n - 1]] = static_cast<uint8_t>(LADO1 + n);
        p.Peca(n, 1) = static_cast<uint8_t>(lado1[n - 1]);
        p.Casas[lado2[n - 1]] = static_cast<uint8_t>(LADO2 + n);
        p.Peca(n, 2) = static_cast<uint8_t>(lado2[n - 1]);
    }
    p.Saldo = 0;
    p.Vez = 1;
    return p;
}

void MontaPosicao(Posicao& p, const Tabuleiro& t) {
    for (auto& par : p.Pecas) par = {0, 0};
    LimpaMailbox(p);
    for (int i = 1; i <= 64; ++i) {
        const int s = CasaDoIndice(i);
        switch (t[i]) {
        case 10: p.Casas[s] = DAMA | LADO1; break;
        case 1: p.Casas[s] = LADO1; break;
        case 20: p.Casas[s] = DAMA | LADO2; break;
        case 2: p.Casas[s] = LADO2; break;
        default: break; // 3 empties the square, 0 leaves it
        }
    }
    p.Saldo = 0;
    auto numera = [&p](int s, int lado, int& numero) {
        const uint8_t v = p.Casas[s];
        if (!(v & BitDoLado(lado)) || numero >= 12) return;
        ++numero;
        p.Casas[s] = static_cast<uint8_t>(v | numero);
        p.Peca(numero, lado) = static_cast<uint8_t>(s | (v & DAMA));
        const int valor = (v & DAMA) ? 30 : 10;
        p.Saldo = static_cast<int16_t>(p.Saldo + (lado == 1 ? valor : -valor));
    };
    int n1 = 0, n2 = 0;
    for (int s = 89; s >= 12; --s) numera(s, 1, n1);
    for (int s = 12; s <= 89; ++s) numera(s, 2, n2);
}

int TipoCasa(const Posicao& p, int casa) {
    if (casa < 1 || casa > 100) return 0;
    const uint8_t v = p.Casas[casa];
    if (v & LADO2) return (v & DAMA) ? 20 : 2;
    if (v & LADO1) return (v & DAMA) ? 10 : 1;
    if (casa < 12 || casa > 89) return 0;
    return CasaClara(casa) ? 0 : 3;
}

Tabuleiro CelulasDe(const Posicao& p) {
    Tabuleiro t{};
    for (int i = 1; i <= 64; ++i) t[i] = static_cast<int16_t>(TipoCasa(p, CasaDoIndice(i)));
    return t;
}

std::string TextoTabuleiro(const Posicao& p) {
    std::string texto;
    texto.reserve(200);
    const Tabuleiro t = CelulasDe(p);
    for (int i = 1; i <= 64; ++i) {
        texto += std::to_string(t[i]);
        texto += ',';
    }
    return texto;
}

std::string TextoComVez(const Posicao& p) {
    return std::to_string(p.Vez) + "," + TextoTabuleiro(p);
}

std::optional<TextoLido> LeTextoTabuleiro(const std::string& texto) {
    TextoLido lido;
    size_t pos = 0;
    int pecas1 = 0, pecas2 = 0;
    for (int campo = 0; campo <= 64; ++campo) {
        size_t fim = texto.find(',', pos);
        if (fim == std::string::npos || fim == pos || fim - pos > 2) return std::nullopt;
        int valor = 0;
        for (size_t k = pos; k < fim; ++k) {
            if (texto[k] < '0' || texto[k] > '9') return std::nullopt;
            valor = valor * 10 + (texto[k] - '0');
        }
        pos = fim + 1;
        if (campo == 0) {
            if (valor != 1 && valor != 2) return std::nullopt;
            lido.lado = valor;
            continue;
        }
        if (valor != 0 && valor != 1 && valor != 2 && valor != 3 && valor != 10 && valor != 20)
            return std::nullopt;
        const bool clara = CasaClara(CasaDoIndice(campo));
        if (clara != (valor == 0)) return std::nullopt; // pieces stand on dark squares only
        pecas1 += valor == 1 || valor == 10;
        pecas2 += valor == 2 || valor == 20;
        lido.celulas[campo] = static_cast<int16_t>(valor);
    }
    if (pos != texto.size() || pecas1 > 12 || pecas2 > 12) return std::nullopt;
    return lido;
}

std::optional<Posicao> PosicaoDoTexto(const std::string& texto) {
    auto lido = LeTextoTabuleiro(texto);
    if (!lido) return std::nullopt;
    Posicao p;
    MontaPosicao(p, lido->celulas);
    p.Vez = static_cast<uint8_t>(lido->lado);
    return p;
}

int QuantasPecas(const Posicao& p, int lado) {
    int n = 0;
    for (int i = 1; i <= 64; ++i) {
        const int t = TipoCasa(p, CasaDoIndice(i));
        n += t == lado || t == 10 * lado;
    }
    return n;
}

int ValordasPecas(const Posicao& p, int lado) {
    int v = 0;
    for (int i = 1; i <= 64; ++i) {
        const int t = TipoCasa(p, CasaDoIndice(i));
        if (t == lado) v += 1;
        else if (t == 10 * lado) v += 3;
    }
    return v;
}

std::string DesenhoTabuleiro(const Posicao& p) {
    std::string d;
    for (int r = 1; r <= 8; ++r) {
        d += static_cast<char>('9' - r);
        d += ' ';
        for (int c = 1; c <= 8; ++c) {
            const int s = 10 * r + c + 1;
            switch (TipoCasa(p, s)) {
            case 1: d += 'o'; break;
            case 10: d += 'O'; break;
            case 2: d += 'x'; break;
            case 20: d += 'X'; break;
            case 3: d += '.'; break;
            default: d += ' '; break;
            }
            d += ' ';
        }
        d += '\n';
    }
    d += "  A B C D E F G H\n";
    return d;
}

} // namespace velmora
