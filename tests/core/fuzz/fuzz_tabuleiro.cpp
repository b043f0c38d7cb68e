// A board text and a move from outside, as the command line and the peer hand them over.
// Input: one byte for the rule set, the board text up to a line break, then the move's
// bytes. A board that reads is listed both ways (the fast lists must equal the slow ones),
// and the move is played on it when every square it names is on the board: the ring of
// border squares must stay whole.
#include "core/casas.h"
#include "core/fazjogada.h"
#include "core/gerador.h"
#include "core/jogada.h"
#include "core/tabuleiro.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

using namespace velmora;

namespace {

std::vector<std::string> Lista(const Posicao& inicio, int regra, bool atalho, bool humano,
                               int& maior) {
    Gerador g;
    g.Atalho = atalho;
    g.Regra = regra;
    g.SemeiaRotacao(1);
    Posicao p = inicio;
    p.IniLista = 1;
    if (humano) g.ListaHumano(p);
    else g.ListaComputador(p);
    maior = g.MaiorTexto;
    std::vector<std::string> r;
    for (int i = p.IniLista; i <= p.FimLista; ++i) r.push_back(g.Slot(i).texto());
    // side 2's flying kings of rule set 1 start at a random direction, drawn for each king
    // asked, and a capture list asks fewer kings the fast way: compare the sets there
    if (regra == 1 && p.Vez == 2 && maior >= 3) std::sort(r.begin(), r.end());
    return r;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
    if (tamanho < 1) return 0;
    const int regra = 1 + dados[0] % 4;
    const std::string_view resto(reinterpret_cast<const char*>(dados + 1), tamanho - 1);
    const auto quebra = resto.find('\n');
    const auto pos = PosicaoDoTexto(std::string(resto.substr(0, quebra)));
    if (!pos) return 0;
    for (bool humano : {true, false}) {
        int maiorLento = 0, maiorRapido = 0;
        const auto lenta = Lista(*pos, regra, false, humano, maiorLento);
        const auto rapida = Lista(*pos, regra, true, humano, maiorRapido);
        if (lenta != rapida || maiorLento != maiorRapido) __builtin_trap();
    }
    if (quebra == std::string_view::npos) return 0;
    const std::string_view jogada = resto.substr(quebra + 1);
    const auto* s = reinterpret_cast<const uint8_t*>(jogada.data());
    const int n = static_cast<int>(std::min<std::size_t>(jogada.size(), Jogada::MAXIMO));
    Posicao p = *pos;
    if (JogadaNoTabuleiro(s, n)) FazJogada(p, s, n, true);
    for (int casa = 1; casa <= 100; ++casa)
        if (!CasaDoTabuleiro(casa) && p.Casas[casa] != BORDA) __builtin_trap();
    return 0;
}
