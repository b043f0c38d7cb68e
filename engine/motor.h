#pragma once
// The computer player: iterative deepening over a plain negamax alpha-beta search, whose
// only judgement is the running material balance. The levels differ by thinking time only.
#include "core/contexto.h"
#include "core/jogada.h"
#include "core/mascaras.h"
#include "core/posicao.h"

#include <array>
#include <cstdint>
#include <memory>

namespace velmora {

// The value of a position for the side to move.
inline int ValorPosicao(const Posicao& p) {
    return p.Vez == 1 ? p.Saldo : -p.Saldo;
}

class Motor : public Pensador {
  public:
    static constexpr int PLY_MAXIMO = 48;

    explicit Motor(Contexto& contexto);

    // One node: the value of p for its side to move; fills row `ply` of the best lines.
    int AlfaBeta(Posicao& p, int ply, int profundidade, int alfa, int beta);
    // The same node for the forecast: always walks forwards and never stops at one move.
    int AlfaBetaSilencioso(Posicao& p, int ply, int profundidade, int alfa, int beta);

    // Deepens from `raiz` until the budget ends (measured on the platform's elapsed clock),
    // ply 48, a single root move, a forced end, or `profMaxima`. Returns the value; the
    // move is Linha(0, 0).
    int Aprofunda(Posicao& raiz, double segundos, int profMaxima = PLY_MAXIMO,
                  bool silencioso = false);

    uint8_t PensaJogada() override;
    // The move to play at `raiz`, always one of its own list: the first of the last search's
    // line when it is one of them, else the first listed; empty when raiz has no move.
    Jogada JogadaDaRaiz(Posicao& raiz);
    double TempoNivel(int nivel);
    // 0 no clear winner, 1 this copy's player stands better, 2 the other.
    int VaiVencer(float segundos);
    // The computer's own draw offer; true when the human accepts.
    bool CPU_Pede_Empate();

    const Jogada& Linha(int p, int j) const { return (*LinhaPrincipal)[p][j]; }
    // The shuffling test on the root line of the last search.
    bool LinhaRepete() const;

    // Above 0: the thinking time of every move, in seconds, in place of the level's
    // (scripts that want quick games).
    double TempoFixo = 0;
    int LimiteProf = 0;
    double LimiteTempo = 0; // on the platform's elapsed clock
    int MaxPly = 0;
    int Cortes = 0;
    int64_t Nos = 0;
    bool JogadaUnica = false;
    // The last deepening had to give up an iteration because the move table was full.
    bool EstourouLista = false;

  private:
    // m: the masks of p, carried down from the root; side Vez is to move on p.
    template <bool Silencioso> int Raiz(Posicao& p, int ply, int profundidade, int alfa, int beta);
    template <bool Silencioso, int Vez>
    int No(Posicao& p, const Mascaras& m, int ply, int profundidade, int alfa, int beta);
    // What every node does first: the counters, the stored line, the analysis of the board
    // of m with side Vez to move, whose list will begin at slot `iniLista`.
    template <int Vez> Gerador::Analise Entra(int ply, int iniLista, const Mascaras& m);
    // The rest of a node once it is known to be searched: its list and its children.
    template <bool Silencioso, int Vez>
    int Expande(Posicao& p, const Mascaras& m, const Gerador::Analise& analise, int ply,
                int profundidade, int alfa, int beta);
    void ZeraContadores();
    void MostraEstatisticas(int v);

    Contexto& ctx;
    Gerador& g;
    using Tabela = std::array<std::array<Jogada, PLY_MAXIMO + 1>, PLY_MAXIMO + 1>;
    std::unique_ptr<Tabela> LinhaPrincipal;
    std::array<Jogada, PLY_MAXIMO + 1> linhaGuardada{};
    // The kings of the board being played (ctx.Atual) when the search began: a node whose
    // pieces all stand on them lists its moves backwards.
    Mascara damasReferencia = 0;
};

} // namespace velmora
