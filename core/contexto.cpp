#include "core/contexto.h"

#include "core/casas.h"
#include "core/fazjogada.h"

#include <cmath>
#include <cstdlib>

namespace velmora {

void Ganchos::PreparaProximoJogo(Contexto& c) { c.PreparaProximoJogoPadrao(); }

Contexto::Contexto(Plataforma& p) : plataforma(p), gerador_(std::make_unique<Gerador>()) {
    Jogador[1].Nome = "Jogador 1";
    Jogador[2].Nome = "Jogador 2";
    Atual = PosicaoInicial();
    RedesenhaCasas();
}

// ---------------------------------------------------------------- helpers

void Contexto::Semeia() {
    const double agora = plataforma.Agora();
    rng.seed(static_cast<uint32_t>(std::fmod(agora * 1000.0, 4294967296.0)) ^
             (0x9e3779b9u * ++sementes));
}

int Contexto::Aleatorio(int n) {
    if (n <= 1) return 0;
    return static_cast<int>(rng() % static_cast<uint32_t>(n));
}

bool Contexto::Sorte(int p) {
    Semeia();
    return p >= 1 + Aleatorio(100);
}

void Contexto::Espera(double segundos) {
    const double inicio = plataforma.Decorrido();
    while (plataforma.Decorrido() - inicio < segundos) {
        plataforma.ProcessaEventos();
        plataforma.Dorme(5);
    }
}

// ---------------------------------------------------------------- board

void Contexto::RedesenhaCasas() {
    painel.imgpd.fill(0);
    for (int s = 12; s <= 89; ++s) {
        const int t = velmora::TipoCasa(Atual, s);
        if (t == 1 || t == 2 || t == 10 || t == 20) painel.imgpd[s] = static_cast<uint8_t>(t);
    }
    plataforma.Redesenha();
}

void Contexto::defineinicio() {
    ++TabuleirosPostos;
    painel.Timer3.Habilitado = false;
    Game.AceitaClique = true;
    Make_Enviar = true;
    PediuEMpate = EsperandoEmpate = Game.OfertaFeita = false;
    Anterior = 0;
    ContaEmpate = 0;
    Atual = PosicaoInicial();
    Semeia();
    gerador().SemeiaRotacao(static_cast<uint32_t>(rng()));
    gerador().EmbaralhaOrdem([this](int n) { return Aleatorio(n); });
    painel.VezLado2.Visivel = false;
    for (Controle* c : {&painel.lbValue, &painel.lbPly, &painel.lbCutoff, &painel.lbPosns,
                        &painel.lbMoves})
        c->Texto.clear();
    painel.lbSide.Cor = cor::Vermelho;
    DesmarcaTodas();
    RedesenhaCasas();
    InicioJogo = plataforma.Agora() - 1;
}

void Contexto::mostratabuleiro() {
    ++TabuleirosPostos;
    MontaPosicao(Atual, Tabuleiro_);
    RedesenhaCasas();
}

bool Contexto::CarregaBoard(const std::string& texto) {
    const auto lido = LeTextoTabuleiro(texto);
    if (!lido) return false;
    LadoCarregado = static_cast<int16_t>(lido->lado);
    Tabuleiro_ = lido->celulas;
    mostratabuleiro();
    Game.Comeca = LadoCarregado;
    Atual.Vez = static_cast<uint8_t>(LadoCarregado);
    return true;
}

void Contexto::AtualizaContagem() {
    painel.Label2.Texto = std::to_string(QuantasPecas(LadoLocal()));
    painel.Label3.Texto = std::to_string(QuantasPecas(3 - LadoLocal()));
}

bool Contexto::Minhavez() const {
    return (Tipo_c == "Cliente" && Atual.Vez == 2) || (Tipo_c == "Servidor" && Atual.Vez == 1);
}

void Contexto::MarcaCasa(int casa) {
    if (Game.Conectado && !Minhavez()) return;
    if (casa >= 1 && casa <= 100) painel.Marcadas[casa] = true;
    plataforma.Redesenha();
}

void Contexto::DesmarcaCasa(int casa) {
    if (casa >= 1 && casa <= 100) painel.Marcadas[casa] = false;
    plataforma.Redesenha();
}

void Contexto::DesmarcaTodas() {
    painel.Marcadas.fill(false);
    plataforma.Redesenha();
}

// ---------------------------------------------------------------- moves

bool Contexto::movepedra(int f, int t) {
    NoMovePedra = true;
    const bool image7 = painel.Image7.Habilitado;
    painel.Image7.Habilitado = false;
    painel.Label24.Cor = cor::Cinza;
    painel.Label22.Habilitado = false;
    painel.Label22.Cor = cor::Cinza;

    auto& img = painel.ImgMove;
    img.Peca = painel.imgpd[f];
    img.Esquerda = f % 10 - 2;
    img.Topo = f / 10 - 1;
    img.Largura = img.Altura = 1;
    painel.imgpd[f] = 0;
    painel.Marcadas[f] = false; // a cell redrawn loses its mark
    img.Visivel = true;
    plataforma.Redesenha();

    const int passos = std::abs(t - f);
    const double dx = ((t % 10) - (f % 10)) / static_cast<double>(passos);
    const double dy = ((t / 10) - (f / 10)) / static_cast<double>(passos);
    for (int k = 1; k <= passos; ++k) {
        if (SaidoMovePedra) {
            NoMovePedra = false;
            return true;
        }
        plataforma.Dorme(Velocit * 1.5);
        plataforma.ProcessaEventos();
        if (k == passos) img.Visivel = false;
        else {
            img.Esquerda += dx;
            img.Topo += dy;
        }
        plataforma.Redesenha();
        plataforma.ProcessaEventos();
        if (k == 1) plataforma.Dorme(10);
    }

    const bool dama = Atual.Casas[t] & DAMA;
    painel.imgpd[t] = static_cast<uint8_t>(Atual.Vez * (dama ? 10 : 1));
    painel.Marcadas[t] = false;
    if (dama) ++ContaEmpate;
    else ContaEmpate = 0;
    plataforma.Redesenha();
    plataforma.TocaSom("mover.wav");
    painel.Label22.Habilitado = true;
    painel.Label22.Cor = cor::Preto;
    painel.Image7.Habilitado = image7;
    NoMovePedra = false;
    return SaidoMovePedra;
}

bool Contexto::FazJogadaNaTela(const Jogada& j) {
    struct Movendo {
        bool& f;
        explicit Movendo(bool& flag) : f(flag) { f = true; }
        ~Movendo() { f = false; }
        Movendo(const Movendo&) = delete;
        Movendo& operator=(const Movendo&) = delete;
    } movendo(MovendoNaTela);
    bool desistiu = false;
    const bool ok = FazJogadaCom(Atual, j.c.data(), j.tam, true, [&](int f, int t, int c) {
        if (movepedra(f, t)) {
            desistiu = true;
            return true;
        }
        if (c != 0) {
            ContaEmpate = 0;
            painel.imgpd[c] = 0;
            AtualizaContagem();
            plataforma.ProcessaEventos();
            if (Game.Conectado) ganchos->AtualizaLabel26();
        }
        plataforma.ProcessaEventos();
        plataforma.Dorme(100);
        return false;
    });
    if (!ok || desistiu) return ok;
    if (Make_Enviar && Game.Conectado) {
        Recebeu_Jogada = false;
        ganchos->EnviaJogada(j);
    }
    return true;
}

// ---------------------------------------------------------------- turns

void Contexto::MostraVez() {
    const bool segundo =
        (Game.Conectado && Tipo_c == "Cliente") ? Atual.Vez == 1 : Atual.Vez == 2;
    painel.PicVezDois.Visivel = segundo;
    painel.Imglamp[1].Visivel = segundo;
    painel.Imglamp[0].Visivel = !segundo;
    plataforma.Redesenha();
}

void Contexto::AnotaClique(int casa) {
    if (painel.lbMoves.Texto.size() >= 2) painel.lbMoves.Texto += "-";
    TextoClicado += static_cast<char>(casa);
    painel.lbMoves.Texto += NomeCasa(casa);
    plataforma.Redesenha();
}

void Contexto::Clique(int casa) {
    AnotaClique(casa);
    cliquePendente = true;
}

uint8_t Contexto::JogadaHumano() {
    Gerador& g = gerador();
    Atual.IniLista = 1;
    g.ListaHumano(Atual);
    plataforma.ProcessaEventos();
    if (g.MaiorTexto < 2) {
        painel.lbMsg.Texto = "Você perdeu.";
        Game.Fim = true;
        Atual.Vez = static_cast<uint8_t>(3 - Atual.Vez);
        int r = Atual.Vez;
        if (Game.Conectado && Tipo_c == "Cliente") r = 3 - r;
        return static_cast<uint8_t>(r);
    }
    painel.lbMoves.Cor = painel.lbSide.Cor;
    painel.lbMoves.Texto.clear();
    painel.lbYMM.Texto = "Your move";
    TextoClicado.clear();
    cliquePendente = false;

    const int ini = Atual.IniLista, fim = Atual.FimLista;
    bool mesmaOrigem = true;
    for (int i = ini + 1; i <= fim; ++i) mesmaOrigem &= g.Slot(i)[0] == g.Slot(ini)[0];
    if (mesmaOrigem) MarcaCasa(g.Slot(ini)[0]);

    std::string marcadas; // squares marked for the last click
    for (;;) {
        esperandoClique = true;
        while (!cliquePendente) {
            if (Game.Fim || Game.JogaPorMim) break;
            if (Ja_Joguei) {
                Atual.Vez = static_cast<uint8_t>(3 - Atual.Vez);
                Ja_Joguei = false;
                esperandoClique = false;
                return 0;
            }
            plataforma.ProcessaEventos();
            plataforma.Dorme(2);
        }
        esperandoClique = false;
        cliquePendente = false;
        if (Game.Fim || Game.JogaPorMim) return 0;

        for (char c : marcadas) DesmarcaCasa(static_cast<uint8_t>(c));
        marcadas.clear();
        const int n = static_cast<int>(TextoClicado.size());
        int casamentos = 0, escolhida = 0;
        for (int i = ini; i <= fim && i <= g.ProximaLivre; ++i) {
            const Jogada& m = g.Slot(i);
            bool casa = n <= m.tam;
            for (int k = 0; casa && k < n; ++k)
                casa = TextoClicado[k] == '?' || static_cast<uint8_t>(TextoClicado[k]) == m[k];
            if (!casa) continue;
            ++casamentos;
            escolhida = i;
            if (marcadas.find(TextoClicado[0]) == std::string::npos) marcadas += TextoClicado[0];
            for (int p = 2; p <= n + 3 && p <= m.tam; p += 3) {
                const char q = static_cast<char>(m[p - 1]);
                if (marcadas.find(q) == std::string::npos) marcadas += q;
            }
        }
        plataforma.Dorme(100);

        if (casamentos == 0) {
            marcadas.clear();
            painel.lbMsg.Texto = "Movimento ilegal";
            const int clicada = n ? static_cast<uint8_t>(TextoClicado[n - 1]) : 0;
            TextoClicado.clear();
            painel.lbMoves.Texto.clear();
            if (clicada >= 1 && clicada <= 100 && (Atual.Casas[clicada] & (LADO1 | LADO2))) {
                std::string origens;
                for (int i = ini; i <= fim && origens.size() < 12; ++i) {
                    const char o = static_cast<char>(g.Slot(i)[0]);
                    if (origens.empty() || origens.back() != o) origens += o;
                }
                if (origens.size() >= 2) {
                    for (char o : origens) MarcaCasa(static_cast<uint8_t>(o));
                    plataforma.Dorme(200);
                    for (char o : origens) DesmarcaCasa(static_cast<uint8_t>(o));
                } else if (origens.size() == 1) {
                    DesmarcaCasa(static_cast<uint8_t>(origens[0]));
                    plataforma.Dorme(200);
                    MarcaCasa(static_cast<uint8_t>(origens[0]));
                }
            }
            plataforma.Redesenha();
            continue;
        }
        if (casamentos >= 2) {
            if (n >= 2) {
                TextoClicado += '?';
                TextoClicado += TextoClicado[n - 1];
            }
            painel.lbMsg.Texto = "Mais...";
            for (char c : marcadas) MarcaCasa(static_cast<uint8_t>(c));
            continue;
        }
        painel.lbMsg.Texto.clear();
        const Jogada jogada = g.Slot(escolhida);
        FazJogadaNaTela(jogada);
        DesmarcaTodas();
        GravaHistorico(3 - Atual.Vez, true);
        Atual.Vez = static_cast<uint8_t>(3 - Atual.Vez);
        plataforma.ProcessaEventos();
        return 0;
    }
}

void Contexto::IniciaJogo() {
    LadoCarregado = 0;
    Game.Voltou = false;
    ContaEmpate = 0;
    Game.Fim = true;
    defineinicio();
    PlayGame();
}

void Contexto::PreparaProximoJogoPadrao() {
    LadoCarregado = 0;
    Game.OfertaFeita = false;
    Game.Voltou = false;
    defineinicio();
    painel.Label18.Texto = "Jogo iniciado";
    ContaEmpate = 0;
}

void Contexto::PlayGame() {
    if (Game.EmPlay || IniciandoPlay) {
        // A handler ("Reiniciar", the history) set up the board it wants: the running loop
        // leaves first, and this call comes back through the hooks once it has.
        if (IniciandoPlay) playDuranteInicio = true;
        ganchos->AgendaPlayGame();
        return;
    }
    for (;;) {
        Game.valendo = true;
        Game.JogaPorMim = false;
        ganchos->ZeraRelogios();
        painel.Habilitado = true;
        if (Game.Comeca == 0) return;
        Atual.Vez = static_cast<uint8_t>(Game.Comeca);
        IniciandoPlay = true;
        playDuranteInicio = false;

        MostraVez();
        ganchos->exibevez();
        painel.Label26.Texto = "Desconectar";
        ganchos->StatusBotoes();
        Game.AceitaClique = true;
        if (!VoltouTabuleiro) GravaInicioHistorico();
        VoltouTabuleiro = false;
        AtualizaContagem();

        if (Game.Conectado) {
            ganchos->HandshakeInicio();
            if (StartInitGame) { // the handshake gave way to a new dialog
                IniciandoPlay = false;
                return;
            }
        } else if ((Game.Tipo == "HC" || Game.Tipo == "HH") && !RetomaHistorico) {
            const int s = Game.Comeca == 2 ? 2 : 1;
            if (Game.Tipo == "HC" && s == 2) painel.Label27.Texto = Jogador[2].Nome + " irá iniciar";
            else painel.Label27.Texto = Jogador[s].Nome + " inicie o jogo";
            painel.Label27.Visivel = true;
            plataforma.Redesenha();
            Espera(1);
        }
        painel.Label27.Visivel = false;
        ganchos->ParaTimer2();
        if (Game.Conectado && Game.Modo == 4) ganchos->IniciaVigilancia();
        IniciandoPlay = false;
        if (playDuranteInicio) {
            playDuranteInicio = false;
            return;
        }

        Game.Fim = false;
        Game.EmPlay = true;
        Log("-------- Entrei no PlayGame --------");
        uint8_t resultado = 0;
        for (;;) {
            if (Game.Fim) break;
            MostraVez();
            ganchos->exibevez();
            ganchos->StatusBotoes();
            plataforma.ProcessaEventos();
            Game.AceitaClique = true;
            if (Game.Modo == 2 || Game.Modo == 4) {
                if (Game.TempoLimite < 60) Game.TempoLimite = 60;
                ganchos->PreparaRelogioJogada();
            }
            const char quem = Game.Tipo.size() == 2 ? Game.Tipo[Atual.Vez - 1] : 'H';
            if (quem == 'C') {
                const bool contraCpu = Game.Tipo == "HC" || Game.Tipo == "CH";
                if (contraCpu) painel.Image7.Habilitado = false;
                resultado = pensador ? pensador->PensaJogada() : 0;
                if (contraCpu) painel.Image7.Habilitado = true;
            } else {
                resultado = JogadaHumano();
                if (resultado == 0 && Game.Tipo == "HH" && Game.JogaPorMim && Game.Conectado &&
                    Minhavez() && pensador && !Game.Fim) {
                    // The assisted turn: the computer plays for the local player.
                    plataforma.Dorme(100 + Aleatorio(3000));
                    const int16_t nivel = Jogador[1].Nivel;
                    Jogador[1].Nivel = Sorte(50) ? 5 : 2;
                    Make_Enviar = true;
                    resultado = pensador->PensaJogada();
                    Make_Enviar = false;
                    Jogador[1].Nivel = nivel;
                }
            }
            if (resultado != 0) break;
            if (ContaEmpate >= 30) {
                ContaEmpate = 0;
                painel.lbMsg.Texto = "Jogo empatado";
                Game.Fim = true;
                resultado = 4;
                break;
            }
            if (Game.SairPlay) {
                Game.SairPlay = false;
                Game.EmPlay = false;
                Log("-------- Saindo do Play --------");
                return;
            }
            if (Game.Fim) break;
            plataforma.ProcessaEventos();
        }
        Log("-------- Saí no PlayGame --------");
        Game.EmPlay = false;
        if (Game.SairPlay) {
            Game.SairPlay = false;
            Log("-------- Saindo do Play --------");
            return;
        }
        painel.lbYMM.Texto.clear();
        painel.lbMoves.Texto = "Game ends";
        painel.lbMoves.Cor = cor::Preto;
        painel.lbSide.Cor = cor::Fundo;
        painel.Ocupado = false;
        ganchos->ParaTimer2();
        plataforma.Redesenha();
        if (resultado == 4) {
            ganchos->Restart_Game();
            return;
        }
        if (resultado == 0) return;
        ganchos->finaliza(resultado);
        if (StartInitGame) return;
        ganchos->PreparaProximoJogo(*this);
    }
}

// ---------------------------------------------------------------- history

void Contexto::AtualizaLabel10() {
    painel.Label10.Texto = std::to_string(JogadaAtual) + "/" + std::to_string(UltimaJogada);
}

void Contexto::GravaInicioHistorico() {
    HistoricoCheio = false;
    UltimaJogada = 1;
    Historico[1] = TextoComVez(Atual);
    JogadaAtual = 1;
    AtualizaLabel10();
}

void Contexto::GravaHistorico(int lado, bool humano) {
    if (HistoricoCheio) return;
    if (UltimaJogada == JogadaAtual) {
        if (UltimaJogada >= MAX_HISTORICO) {
            // No room for another position: recording and browsing close for this game.
            HistoricoCheio = true;
            return;
        }
        ++UltimaJogada;
    } else if (humano) {
        UltimaJogada = static_cast<int16_t>(JogadaAtual + 1);
        Game.Voltou = true;
        ganchos->ParaTempo();
        painel.Label18.Texto = "Voltou jogadas";
        painel.Label12.Texto = "Desligado";
    } else {
        UltimaJogada = static_cast<int16_t>(JogadaAtual + 1);
    }
    if (UltimaJogada > MAX_HISTORICO) {
        HistoricoCheio = true;
        return;
    }
    JogadaAtual = UltimaJogada;
    Historico[JogadaAtual] = std::to_string(lado) + "," + TextoTabuleiro();
    AtualizaLabel10();
    LadoCarregado = 0;
}

void Contexto::Image6_Click(int Index) {
    if (Game.Modo != 1 && Game.Modo != 3) {
        plataforma.TocaSom("talk.wav");
        return;
    }
    if (Game.Modo == 1 && !painel.Imglamp[0].Visivel) return;
    if (HistoricoCheio || UltimaJogada < 1) return;
    if (MovendoNaTela) {
        // The move's remaining steps belong to the board on screen: load the other one after.
        ganchos->AdiaImage6(Index);
        return;
    }
    const int passo = Game.Modo == 1 ? 2 : 1;
    switch (Index) {
    case 1:
        if (JogadaAtual > passo) JogadaAtual = static_cast<int16_t>(JogadaAtual - passo);
        break;
    case 2:
        JogadaAtual = static_cast<int16_t>(std::min<int>(JogadaAtual + passo, UltimaJogada));
        break;
    case 0:
        if (JogadaAtual == 1) return;
        JogadaAtual = 1;
        break;
    case 3:
        if (JogadaAtual == UltimaJogada) return;
        JogadaAtual = UltimaJogada;
        break;
    default: return;
    }
    Game.Fim = true;
    CarregaBoard(Historico[JogadaAtual]);
    AtualizaLabel10();
    VoltouTabuleiro = true;
    if (Game.Modo == 1 && JogadaAtual != 1) Game.Comeca = 1;
    RetomaHistorico = true;
    PlayGame();
}

} // namespace velmora
