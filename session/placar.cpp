// The players' panel and the board's layout: names, wins, levels or stages, ranking stars,
// the rule's name, and where each board image stands for the role in play.
#include "session/form1.h"

namespace velmora {

void Form1::LimpaPlacar() {
    for (int lado = 1; lado <= 2; ++lado) {
        modelo.Estrelas[lado].fill(false);
        modelo.Medalha[lado].Visivel = false;
        modelo.LbNome[lado].Texto.clear();
        modelo.lbnivel[lado].Texto.clear();
        modelo.LbNV[lado].Texto.clear();
    }
    tela_.Redesenha();
}

void Form1::AtualizaPlacar() {
    auto& G = ctx.Game;
    if (G.Modo != 4) {
        ctx.Jogador[1].Pontos = 0;
        ctx.Jogador[1].ID = "0";
    }
    for (int lado = 1; lado <= 2; ++lado) {
        const std::string& nome = ctx.Jogador[lado].Nome;
        modelo.LbNome[lado].Texto = nome;
        modelo.FonteLbNome[lado] = tela_.LarguraDoTexto(nome, 9) > 1500 ? 8 : 9;
    }
    const bool torneio = G.Modo == 2;
    modelo.LbPT1.Visivel = modelo.LbPT2.Visivel = !torneio;
    if (!torneio) {
        modelo.LbPT1.Texto = std::to_string(ctx.Jogador[1].Vitorias);
        modelo.LbPT2.Texto = std::to_string(ctx.Jogador[2].Vitorias);
    }
    MostraNivel(1);
    MostraNivel(2);
    modelo.Label20.Texto = NomeRegra(G.Regra);
    modelo.Label21.Texto = modelo.Label20.Texto;
    tela_.Redesenha();
}

void Form1::MostraNivel(int lado) {
    if (lado != 1 && lado != 2) return;
    auto& G = ctx.Game;
    Controle& nivel = modelo.lbnivel[lado];
    if (G.Conectado) {
        modelo.Estrelas[lado].fill(false);
        if (!SenhaGrupo.empty()) {
            nivel.Texto.clear();
            return;
        }
        const long pontos = ctx.Jogador[lado].Pontos;
        modelo.ImagemEstrelas[lado] = pontos < 5000 ? 1 : 2;
        modelo.Medalha[lado].Visivel = pontos >= 10000;
        constexpr long limites[] = {1500, 2000, 3000, 4000, 5000};
        for (int k = 0; k < 5; ++k) modelo.Estrelas[lado][k + 1] = pontos >= limites[k];
        nivel.Texto.clear();
        return;
    }
    if (lado == 2 && G.Modo == 2) {
        nivel.Texto = NomeFase(ctx.Jogador[2].Nivel);
        return;
    }
    const std::string nome = NomeNivel(ctx.Jogador[lado].Nivel);
    const bool computador = G.Tipo.size() == 2 && G.Tipo[lado - 1] == 'C';
    nivel.Texto = computador && !nome.empty() ? "(" + nome + ")" : "";
}

void Form1::OrientaTabuleiro(const std::string& tipo) {
    // A "Cliente" sees the board turned round: image i takes the place of image 101 - i.
    for (int i = 12; i <= 89; ++i)
        modelo.imgpd[i] = modelo.PosicaoCasa[tipo == "Cliente" ? 101 - i : i];
    ctx.defineinicio();
    // The fresh board is the only position so far: the counter must not show the last
    // game's history while a message box stands before the first turn.
    ctx.GravaInicioHistorico();
}

void Form1::EstaConectado() {
    auto& G = ctx.Game;
    AjeitaForm();
    OrientaTabuleiro(ctx.Tipo_c);
    G.AceitaClique = true;
    Conta_Verifica = 0;
    if (ctx.Tipo_c != "Cliente") TimerManda.start();
    TimerVerifica.start();
    G.valendo = true;
    G.Conectado = true;
}

} // namespace velmora
