// "JOGAR" in the new game dialog: what each tab writes into the session, and the same for
// a game set up without the dialog.
#include "session/form1.h"

#include <algorithm>
#include <cctype>

namespace velmora {

namespace {
std::string Apara(const std::string& s) {
    const auto ini = s.find_first_not_of(' ');
    if (ini == std::string::npos) return "";
    return s.substr(ini, s.find_last_not_of(' ') - ini + 1);
}

std::string Minusculas(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}
} // namespace

bool Form1::Jogar(CamposNovoJogo& c) {
    ctx.Game.Conectado = false;
    ConexaoAberta = false;
    // A dialog that stays open after a failed link can only end the program or try again.
    if (dialogo_) dialogo_->Label2 = "Sair";
    GravaOpcao(registro_, "OPTJ", std::to_string(c.Aba));
    switch (c.Aba) {
    case 1:
    case 2:
        return JogarLocal(c);
    case 3:
    case 4:
        return JogarOnline(c);
    case 5:
        return JogarPorIP(c);
    default:
        return false;
    }
}

bool Form1::JogarLocal(CamposNovoJogo& c) {
    auto& G = ctx.Game;
    auto& j1 = ctx.Jogador[1];
    auto& j2 = ctx.Jogador[2];
    const bool contraComputador = c.Aba == 1;
    LimpaPlacar();
    G.Tipo = contraComputador ? "HC" : "HH";
    G.Regra = contraComputador ? c.Opt_regra : c.Opt_regra2;
    G.Comeca = ctx.Sorte(50) ? 1 : 2;
    ctx.Tipo_c = "Servidor";
    SenhaGrupo.clear();
    if (contraComputador) {
        const int nivel = FrmNewGame::PuxaNivel(c);
        if (nivel != 8) {
            G.Modo = 1;
            j2.Nome = "Computador";
            j2.Nivel = static_cast<int16_t>(nivel);
        } else {
            G.Modo = 2;
            j2.Nome = NomeBot(1);
            j2.Nivel = 1;
            boasVindas_ = true;
        }
        j1.Nome = c.TxtHC;
    } else {
        G.Modo = 3;
        j1.Nome = c.TxtHH1;
        j2.Nome = c.TxtHH2;
    }
    OrientaTabuleiro("Servidor");
    j1.Vitorias = j2.Vitorias = 0;
    AtualizaPlacar();
    return true;
}

bool Form1::JogarOnline(CamposNovoJogo& c) {
    auto& G = ctx.Game;
    auto& j1 = ctx.Jogador[1];
    const bool amigos = c.Aba == 4;
    j1.Lingua = "Portugues";
    LimpaPlacar();
    G.Tipo = "HH";
    G.Regra = 1; // the rule of an on-line game comes from the peer or the lobby
    if (amigos && Apara(c.Text3).empty()) {
        Mensagem("Informe a senha de grupo\n\nSomente as pessoas que colocarem a mesma senha "
                 "de grupo poderão jogar com você");
        return false;
    }
    NaRede = c.ChkNaRede;
    SenhaGrupo = amigos ? Minusculas(Apara(c.Text3)) : "";
    SenhaDigitada = amigos || c.Visitante ? "" : c.Text2;
    G.Modo = 4;
    j1.Visitante = !amigos && c.Visitante;
    std::string nome = amigos ? c.Text1 : (c.Visitante ? c.Text4 : c.Combo3);
    std::erase(nome, '#'); // "#" separates the fields of the wire
    j1.Nome = nome;
    ctx.Jogador[2].Nome.clear();
    if (nome.empty()) {
        if (!amigos) {
            Mensagem("Por favor informe o seu Nick e senha, ou cadastre um novo nick");
            return false;
        }
        j1.Nome = "Sem Nome";
    }
    if (!amigos && !c.Visitante && c.Text2.empty()) {
        Mensagem("Informe a senha");
        return false;
    }
    ctx.Tipo_c = "Servidor";
    OrientaTabuleiro("Servidor");
    j1.Vitorias = ctx.Jogador[2].Vitorias = 0;
    AtualizaPlacar();
    G.Conectado = false;
    G.valendo = false;
    const ResultadoLobby lobby = rede_->AbreLobby();
    if (lobby.JogarComoVisitante) {
        c.Aba = 3;
        c.Visitante = true;
        c.Text4 = c.Text1;
        return Jogar(c);
    }
    if (rede_->SocketConectado() && G.Conectado) {
        G.valendo = true;
        Som("alarme.wav");
        return true;
    }
    return false;
}

bool Form1::JogarPorIP(CamposNovoJogo& c) {
    auto& G = ctx.Game;
    LimpaPlacar();
    G.Tipo = "HH";
    if (c.Option1) G.Regra = c.Opt_regra3; // a joining copy takes the creator's rule
    SenhaGrupo.clear();
    G.Modo = 5;
    ctx.Jogador[1].Nome = c.TxtRede;
    ctx.Jogador[2].Nome.clear();
    OrientaTabuleiro("Servidor");
    ctx.Jogador[1].Vitorias = ctx.Jogador[2].Vitorias = 0;
    config.HabilitaChat = true; // stored by SetConfig at the end of the run
    ctx.Tipo_c = c.Option1 ? "Servidor" : "Cliente";
    AtualizaPlacar();
    rede_->AbreConexaoDireta();
    if (!G.Conectado) return false;
    AjeitaForm();
    return true;
}

void Form1::InicioSemTela(const PartidaSemTela& p) {
    if (encerrado_) return;
    ativado_ = true; // the first dialog is not shown
    auto& G = ctx.Game;
    G.Conectado = false;
    SenhaGrupo.clear();
    G.Modo = p.Modo;
    G.Tipo = p.Modo == 2 ? "HC" : p.Tipo;
    G.Regra = p.Regra;
    G.Comeca = p.Comeca == 1 || p.Comeca == 2 ? p.Comeca : (ctx.Sorte(50) ? 1 : 2);
    ctx.Tipo_c = "Servidor";
    auto& j1 = ctx.Jogador[1];
    auto& j2 = ctx.Jogador[2];
    j1.Nome = p.Nome1;
    j2.Nome = p.Nome2;
    j1.Nivel = static_cast<int16_t>(p.Nivel1);
    j2.Nivel = static_cast<int16_t>(p.Nivel2);
    if (G.Modo == 2) {
        j2.Nome = NomeBot(1);
        j2.Nivel = 1;
    }
    OrientaTabuleiro("Servidor");
    j1.Vitorias = j2.Vitorias = 0;
    AtualizaPlacar();
    if (G.Modo == 2) MostraBoasVindas();
    ctx.LadoCarregado = 0;
    G.Voltou = false;
    ctx.ContaEmpate = 0;
    G.Fim = true;
    AjeitaForm();
    ctx.defineinicio();
    Tempo.start();
    ctx.painel.Label18.Texto = "Jogo iniciado";
    ctx.PlayGame();
}

} // namespace velmora
