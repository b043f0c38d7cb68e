#pragma once
// Move generation for the four rule sets. The generator works by playing: each jump of a
// capture is played on the position (in place, and taken back when the branch is done),
// and finished routes are offered to a list that keeps only the longest. All lists of a
// search are stacked in one table.
#include "core/analise.h"
#include "core/jogada.h"
#include "core/mascaras.h"
#include "core/posicao.h"

#include <array>
#include <cstdint>
#include <memory>

namespace velmora {

class Gerador {
  public:
    static constexpr int CAPACIDADE = 7488; // 156 moves for each of 48 plies

    Gerador();

    // What the side to move can play, found without building the list.
    using Analise = velmora::Analise;
    Analise Analisa(const Posicao& p) const;
    // The same with the masks of p at hand.
    Analise Analisa(const Posicao& p, const Mascaras& m) const;
    // The same for side `vez` to move on the board of m.
    Analise Analisa(int vez, const Mascaras& m) const { return AnalisaMascaras(Regra, vez, m); }
    int MaiorTipo(const Posicao& p) const { return Analisa(p).tipo; }

    // Slots 1..CAPACIDADE; a node's moves occupy IniLista..FimLista of its position.
    const Jogada& Slot(int i) const { return ListaJogadas[i]; }
    Jogada& Slot(int i) { return ListaJogadas[i]; }

    // Calls the generator of the rule set in force; any other rule set does nothing. The
    // position and the route are changed while a capture is followed and given back as they
    // were when the call returns.
    void GeraPeca(Posicao& p, int casa, int saltos, Jogada& texto, int barrada);
    void GeraRegra1(Posicao& p, int casa, int saltos, Jogada& texto, int barrada);
    void GeraRegra2(Posicao& p, int casa, int saltos, Jogada& texto, int barrada);
    void GeraRegra3(Posicao& p, int casa, int saltos, Jogada& texto, int barrada);
    void GeraRegra4(Posicao& p, int casa, int saltos, Jogada& texto, int barrada);
    // Offers a finished move to the list of the node being built.
    void AnotaJogada(const Jogada& m);

    // The computer's list: pieces in OrdemPecas; under rule sets 2 to 4 each capturing
    // piece keeps its own longest routes. Sets p.FimLista. Returns true at an all-kings
    // node: every piece asked stands on a square that holds a king on `referencia`.
    bool ListaComputador(Posicao& p, const Posicao& referencia);
    // The same with the analysis of p already made.
    bool ListaComputador(Posicao& p, const Posicao& referencia, const Analise& a);
    // The same with the kings of `referencia` given as the squares that hold one, and the
    // masks of p when the caller carries them (the capture routes are then read off them).
    bool ListaComputador(Posicao& p, Mascara damasReferencia, const Analise& a,
                         const Mascaras* m = nullptr);
    // The same for side Lado to move on p, known when compiling (the search's nodes).
    template <int Lado>
    bool ListaComputadorDe(Posicao& p, Mascara damasReferencia, const Analise& a,
                           const Mascaras* m);
    // The same without the all-kings test (perft and tools).
    void ListaComputador(Posicao& p);
    // The human's list: pieces in plain order, only the routes that take the most pieces.
    // Starts at p.IniLista and sets p.FimLista.
    void ListaHumano(Posicao& p);
    // The same with the analysis of p already made, and its masks when at hand.
    void ListaHumano(Posicao& p, const Analise& a, const Mascaras* m = nullptr);

    // Fills OrdemPecas: numbers 1..4 shuffled into entries 1..4, 5..8 into 5..8, 9..12
    // into 9..12. `sorteio(n)` gives a whole number 0..n-1.
    template <class Sorteio> void EmbaralhaOrdem(Sorteio&& sorteio) {
        OrdemPecas.fill(0);
        for (int grupo = 0; grupo < 3; ++grupo) {
            for (int k = 1; k <= 4; ++k) {
                int livres = 0;
                for (int e = 1; e <= 4; ++e) livres += OrdemPecas[grupo * 4 + e] == 0;
                int escolha = sorteio(livres);
                for (int e = 1; e <= 4; ++e) {
                    if (OrdemPecas[grupo * 4 + e] != 0) continue;
                    if (escolha-- == 0) {
                        OrdemPecas[grupo * 4 + e] = grupo * 4 + k;
                        break;
                    }
                }
            }
        }
        InverteOrdem();
    }
    void OrdemNatural();
    // Seeds the rotation of side 2's flying kings under rule set 1.
    void SemeiaRotacao(uint32_t semente) { rotacao = semente ? semente : 0x9e3779b9u; }
    // Advances the rotation as a list of side 2 with `reis` flying kings under rule set 1
    // does: perft plays its last ply without building the list.
    void PulaRotacoes(int reis) {
        while (reis-- > 0) Rotacao();
    }

    int Regra = 1;
    int ProximaLivre = 0;
    int BaseCaptura = 0;
    int MaiorTexto = 1;
    int SegueLinha = 0;
    // Set when a list would pass the end of the table; the move is dropped and the search
    // that sees it gives up its iteration.
    bool Estouro = false;
    // With false, every list is built the slow way only (the tests compare both ways).
    bool Atalho = true;
    // The order in which the computer's list asks the pieces, by piece number; changed
    // only through EmbaralhaOrdem, OrdemNatural and DefineOrdem.
    const std::array<int, 13>& Ordem() const { return OrdemPecas; }
    // Puts a given order: entries 1..12 hold the numbers 1..12, each once.
    void DefineOrdem(const std::array<int, 13>& ordem) {
        OrdemPecas = ordem;
        InverteOrdem();
    }

  private:
    // Asks the pieces whose squares in Pecas are those of `tomam` for their routes: in
    // OrdemPecas for the computer's list, where under rule sets 2 to 4 each keeps its own
    // longest routes; in number order for the human's. With the masks of p, the short
    // pieces' routes are read off them.
    template <int Lado>
    void GeraQueTomam(Posicao& p, Mascara tomam, bool computador, const Mascaras* m);
    template <int Lado> void ListaHumanoDe(Posicao& p, const Analise& a, const Mascaras* m);
    void InverteOrdem();

    std::array<int, 13> OrdemPecas{};
    std::array<uint8_t, 16> lugarNaOrdem{}; // the entry of OrdemPecas that holds each number
    template <int Geradora, int Lado>
    void GeraCurta(Posicao& p, int casa, int saltos, Jogada& texto, int barrada);
    // Offers a plain move: the common case, written straight into its slot.
    void AnotaSimples(int de, int para);
    void GeraDama(Posicao& p, int casa, int saltos, Jogada& texto, int barrada,
                  const int* direcoes);
    // The capture routes of the piece on `casa`, read off the masks of the board: the same
    // routes in the same order as GeraCurta (a man, or a king of rule set 4) or GeraDama (a
    // flying king). False, with nothing offered, when the piece is not one of the side's on
    // the masks or cannot take: the mailbox's generator is then asked.
    template <int Lado> bool RotasNasMascaras(int casa, const Mascaras& m);
    // From bit s, with the free squares and the other side's pieces not yet jumped; true
    // when the piece jumped at least once.
    template <int Geradora, int Lado, bool Dama>
    bool RotasCurtas(int s, Mascara vazias, Mascara alheias, Jogada& rota);
    // A flying king's routes in GeraDama's order, the same way: side 2 under rule set 1
    // draws its rotation at each square as GeraRegra1 does. `Vinda` is the direction of
    // the jump that led to s (0 at the first square); along it the king sees `frente`,
    // landing squares behind the piece of bit `saltadaFrente`, as at every landing square
    // of that jump.
    template <int Geradora, int Lado, int Vinda>
    bool RotasLongas(int s, Mascara vazias, Mascara alheias, Jogada& rota, Mascara frente,
                     int saltadaFrente);
    // Plays the jump (de, para, saltada) and goes on from `para` with `segue(posicao,
    // rota)`: with the short cuts on, in place on p and on the route, taken back afterwards
    // (the generators read only the squares); otherwise on copies of both.
    template <class Segue>
    void Salto(Posicao& p, Jogada& rota, int de, int para, int saltada, Segue&& segue);
    void Continua(Posicao& copia, int casa, int saltos, Jogada& texto, int barrada, int geradora);
    int Rotacao();
    // Builds the list of a node where no piece can take, in the order the slow way would,
    // without the generators' tests for captures.
    template <int Lado, class Numero> void ListaSemCaptura(const Posicao& p, Numero&& numero);

    std::unique_ptr<Jogada[]> ListaJogadas;
    int iniNo = 1; // IniLista of the node whose list is being built
    uint32_t rotacao = 0x9e3779b9u;
};

} // namespace velmora
