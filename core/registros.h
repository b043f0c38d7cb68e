#pragma once
// The records of the game in progress and of its two players.
#include <cstdint>
#include <string>

namespace velmora {

struct RegistroJogo {
    int Modo = 1;             // 1 vs computer, 2 tournament, 3 two at one screen, 4 on-line, 5 direct
    int Regra = 1;            // rule set 1..4
    std::string Tipo = "HC";  // who plays side 1 and side 2: H human, C computer
    int Comeca = 1;           // side that moves first; 0 makes PlayGame return at once
    bool valendo = false;     // the game in progress counts
    bool Conectado = false;   // a peer connection stands
    bool Fim = true;          // the game is over; every waiting turn leaves
    bool SairPlay = false;    // PlayGame must return at once
    bool EmPlay = false;      // PlayGame's inner loop is running
    bool AceitaClique = true; // the board accepts clicks
    bool JogaPorMim = false;  // the computer plays the local side's turns
    int TempoLimite = 0;      // seconds allowed per move
    bool Voltou = false;      // play went on from an earlier position
    bool OfertaFeita = false; // a draw offer was made in this game
};

struct RegistroJogador {
    std::string Nome;
    int16_t Nivel = 1;
    int Vitorias = 0;
    long Pontos = 0;
    std::string ID;
    bool Visitante = false;
    std::string Lingua;
    std::string IDT;
    std::string IDCPT;
    std::string Compatibilidade;
};

// The names of the rule sets, shown to the players.
const char* NomeRegra(int regra);
// The names of the levels 1..5; empty above.
const char* NomeNivel(int nivel);

} // namespace velmora
