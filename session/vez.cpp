// The controls that follow the turn: whose turn the panel names, and which of "Reiniciar",
// "Sugerir empate" and "Entregar partida" may be pressed.
#include "session/form1.h"

#include <cstdlib>

namespace velmora {

void Form1::StatusBotoes() {
    Painel& p = ctx.painel;
    // Connected, only the player to move may restart or offer a draw.
    const bool pode = !ctx.Game.Conectado || ctx.Minhavez();
    p.Label24.Habilitado = modelo.Label7.Habilitado = pode;
    p.Label24.Cor = pode ? cor::Clara : cor::Cinza;
}

void Form1::exibevez() {
    auto& G = ctx.Game;
    const bool segundo = ctx.painel.PicVezDois.Visivel; // the second record is to move
    const int registro = segundo ? 2 : 1;
    std::string texto;
    if (G.Tipo == "HH") {
        if (G.Conectado)
            texto = segundo ? "Aguarde..." : "Sua vez";
        else
            texto = ctx.Jogador[registro].Nome;
    } else {
        // Against the computer the person is told "Sua vez", the computer is named.
        const char quem = G.Tipo.size() == 2 ? G.Tipo[ctx.Atual.Vez == 2 ? 1 : 0] : 'H';
        texto = quem == 'H' ? "Sua vez" : ctx.Jogador[registro].Nome;
    }
    modelo.LbVez.Texto = texto;
    if (G.Conectado) HabilitaEntregar();
    tela_.Redesenha();
}

void Form1::HabilitaEntregar() {
    auto& G = ctx.Game;
    Controle& l = ctx.painel.Label22;
    // In a game for points a player with six or more pieces can't hand it over.
    const bool pode =
        ctx.Minhavez() && (ctx.Jogador[2].ID == "0" || !SenhaGrupo.empty() || G.Modo != 4 ||
                           std::atoi(ctx.painel.Label2.Texto.c_str()) < 6);
    l.Habilitado = pode;
    l.Cor = pode ? cor::Preto : cor::Cinza;
}

} // namespace velmora
