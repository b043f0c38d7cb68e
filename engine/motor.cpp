#include "engine/motor.h"

#include "core/casas.h"
#include "core/fazjogada.h"

#include <cstdlib>

namespace velmora {

Motor::Motor(Contexto& contexto)
    : ctx(contexto), g(contexto.gerador()), LinhaPrincipal(std::make_unique<Tabela>()) {}

void Motor::ZeraContadores() {
    LimiteProf = 0;
    g.SegueLinha = 0;
    Nos = 0;
    MaxPly = 0;
    Cortes = 0;
    JogadaUnica = false;
}

namespace {

// The value of a position for side Vez, to move.
template <int Vez> int Valor(const Posicao& p) {
    return Vez == 1 ? p.Saldo : -p.Saldo;
}

} // namespace

template <int Vez> Gerador::Analise Motor::Entra(int ply, int iniLista, const Mascaras& m) {
    if (ply > MaxPly) MaxPly = ply;
    ++Nos;
    Tabela& linha = *LinhaPrincipal;
    if (g.SegueLinha == 1) {
        if (linha[0][ply].vazia())
            g.SegueLinha = 0;
        else
            g.Slot(iniLista) = linha[0][ply];
    }
    linha[ply][ply].tam = 0;
    if (!g.Atalho || g.Regra < 1 || g.Regra > 4) return {};
    return analise::AnalisaLado<Vez>(m, g.Regra);
}

template <bool Silencioso, int Vez>
int Motor::No(Posicao& p, const Mascaras& m, int ply, int profundidade, int alfa, int beta) {
    const Gerador::Analise analise = Entra<Vez>(ply, p.IniLista, m);
    // At the horizon a quiet position is valued as it stands: its list would be thrown away.
    if (ply >= profundidade && analise.tipo == 2) return Valor<Vez>(p);
    return Expande<Silencioso, Vez>(p, m, analise, ply, profundidade, alfa, beta);
}

template <bool Silencioso, int Vez>
int Motor::Expande(Posicao& p, const Mascaras& m, const Gerador::Analise& analise, int ply,
                   int profundidade, int alfa, int beta) {
    Tabela& linha = *LinhaPrincipal;
    const bool naLinha = g.SegueLinha == 1;
    bool todasDamas = g.ListaComputadorDe<Vez>(p, damasReferencia, analise, &m);
    if constexpr (Silencioso) todasDamas = false;
    if (g.Estouro) return 0; // the iteration is given up by the deepening loop
    if ((ply >= profundidade && g.MaiorTexto == 2) || ply == PLY_MAXIMO) return Valor<Vez>(p);

    int melhor = ply - 10000;
    const int ini = p.IniLista, fim = p.FimLista;
    const int n = fim - ini + 1;
    constexpr int vez = Vez, outro = 3 - Vez;
    // Whether the children stand at the horizon.
    const bool horizonte = ply + 1 >= profundidade;
    for (int k = 0; k < n; ++k) {
        const int i = todasDamas ? fim - k : ini + k;
        // Walking backwards, the stored move stands last: the children before it lie off
        // the stored line and get no stored move of their own.
        if (todasDamas && naLinha) g.SegueLinha = i == ini ? 1 : 0;
        const Jogada& jogada = g.Slot(i);
        int valor;
        const int de = jogada.c[0], para = jogada.c[1];
        if (!Silencioso && fim == 1) {
            valor = Valor<Vez>(p);
            JogadaUnica = true;
        } else if (jogada.tam == 2 && (p.Casas[de] & BitDoLado(vez)) && p.Casas[para] == 0) {
            // A plain move of the mover's piece to a free square: the masks and the balance
            // first; at the horizon the child is built only when it has something to take.
            // (The stored move of the line may not belong to this board: it goes the
            // general way below, as the rest of its walk does.)
            // a man reaching the far row; both tests made, neither guessed
            const bool coroa =
                !(p.Casas[de] & DAMA) & (static_cast<unsigned>(para - (vez == 1 ? 12 : 82)) < 8u);
            const Mascaras mc = ComSimples(m, Bit(de), Bit(para), coroa);
            auto filho = [&] {
                Posicao copia = p;
                JogaSimples(copia, de, para, coroa);
                copia.IniLista = static_cast<int16_t>(fim + 1);
                copia.Vez = static_cast<uint8_t>(outro);
                return copia;
            };
            if (horizonte) {
                const Gerador::Analise a = Entra<outro>(ply + 1, fim + 1, mc);
                if (a.tipo == 2) {
                    const int saldo = p.Saldo + (coroa ? (vez == 1 ? 20 : -20) : 0);
                    valor = vez == 1 ? saldo : -saldo;
                } else {
                    Posicao copia = filho();
                    valor = -Expande<Silencioso, outro>(copia, mc, a, ply + 1, profundidade, -beta,
                                                        -alfa);
                    if (g.Estouro) return melhor;
                }
            } else {
                Posicao copia = filho();
                valor = -No<Silencioso, outro>(copia, mc, ply + 1, profundidade, -beta, -alfa);
                if (g.Estouro) return melhor;
            }
        } else if (horizonte && jogada.tam >= 3 && m.fiel && !(naLinha && i == ini)) {
            // A capture of the list to the horizon: the masks and the balance first, the
            // child built only when it has something to take.
            const CapturaLida c = LeCaptura(m, vez, jogada.c.data(), jogada.tam);
            const Mascaras mc = ComCaptura(m, vez, c);
            const Gerador::Analise a = Entra<outro>(ply + 1, fim + 1, mc);
            if (a.tipo == 2) {
                valor = vez == 1 ? p.Saldo + c.ganho : c.ganho - p.Saldo;
            } else {
                Posicao copia = p;
                FazJogadaGerada(copia, jogada.c.data(), jogada.tam, true);
                copia.IniLista = static_cast<int16_t>(fim + 1);
                copia.Vez = static_cast<uint8_t>(outro);
                valor =
                    -Expande<Silencioso, outro>(copia, mc, a, ply + 1, profundidade, -beta, -alfa);
                if (g.Estouro) return melhor;
            }
        } else {
            Posicao copia = p;
            FazJogadaGerada(copia, jogada.c.data(), jogada.tam, true);
            copia.IniLista = static_cast<int16_t>(fim + 1);
            copia.Vez = static_cast<uint8_t>(outro);
            Mascaras mc = m;
            AplicaJogada(mc, jogada.c.data(), jogada.tam, copia);
            if (naLinha && i == ini) {
                // the stored move: carried over the masks it may have left them apart from
                // the mailbox, if it did not belong to this board
                const Mascaras lidas = LeMascaras(copia);
                mc.fiel = mc.fiel && lidas.fiel && lidas.vazias == mc.vazias &&
                          lidas.lados == mc.lados && lidas.damas == mc.damas;
            }
            valor = -No<Silencioso, outro>(copia, mc, ply + 1, profundidade, -beta, -alfa);
            if (g.Estouro) return melhor;
        }
        if (valor > melhor) {
            melhor = valor;
            for (int j = ply + 1; j < PLY_MAXIMO; ++j) {
                linha[ply][j] = linha[ply + 1][j];
                if (linha[ply + 1][j].vazia()) break;
            }
            linha[ply][ply] = g.Slot(i);
            if (melhor >= beta) {
                ++Cortes;
                return melhor;
            }
            if (melhor > alfa) alfa = melhor;
        }
    }
    return melhor;
}

template <bool Silencioso>
int Motor::Raiz(Posicao& p, int ply, int profundidade, int alfa, int beta) {
    damasReferencia = DamasDe(ctx.Atual);
    // Each side has its own copy of the node: no branch on the side to move is left in it.
    if (p.Vez == 1) return No<Silencioso, 1>(p, LeMascaras(p), ply, profundidade, alfa, beta);
    if (p.Vez == 2) return No<Silencioso, 2>(p, LeMascaras(p), ply, profundidade, alfa, beta);
    return ValorPosicao(p); // no side to move: nothing is listed
}

int Motor::AlfaBeta(Posicao& p, int ply, int profundidade, int alfa, int beta) {
    return Raiz<false>(p, ply, profundidade, alfa, beta);
}

int Motor::AlfaBetaSilencioso(Posicao& p, int ply, int profundidade, int alfa, int beta) {
    return Raiz<true>(p, ply, profundidade, alfa, beta);
}

int Motor::Aprofunda(Posicao& raiz, double segundos, int profMaxima, bool silencioso) {
    ZeraContadores();
    EstourouLista = false;
    g.Regra = ctx.Game.Regra;
    LimiteTempo = ctx.plataforma.Decorrido() + segundos;
    Tabela& linha = *LinhaPrincipal;
    for (auto& m : linha[0]) m.tam = 0;
    int v = 0;
    for (;;) {
        raiz.IniLista = 1;
        raiz.FimLista = 0;
        ++LimiteProf;
        linhaGuardada = linha[0];
        g.Estouro = false;
        const int valor = silencioso ? AlfaBetaSilencioso(raiz, 0, LimiteProf, -10000, 10000)
                                     : AlfaBeta(raiz, 0, LimiteProf, -10000, 10000);
        if (g.Estouro) {
            // The move table is full: keep the last finished iteration's line and value.
            g.Estouro = false;
            EstourouLista = true;
            --LimiteProf;
            linha[0] = linhaGuardada;
            if (LimiteProf == 0) {
                // Not even one iteration finished: play the first move of the root list.
                linha[0].fill(Jogada{});
                if (raiz.FimLista >= raiz.IniLista) linha[0][0] = g.Slot(raiz.IniLista);
                v = ValorPosicao(raiz);
            }
            break;
        }
        v = valor;
        g.SegueLinha = 1;
        ctx.plataforma.ProcessaEventos();
        if (ctx.plataforma.Decorrido() >= LimiteTempo || LimiteProf >= PLY_MAXIMO ||
            LimiteProf >= profMaxima || JogadaUnica || std::abs(v) >= 361)
            break;
    }
    return v;
}

void Motor::MostraEstatisticas(int v) {
    Painel& p = ctx.painel;
    p.lbPly.Texto = std::to_string(MaxPly);
    p.lbCutoff.Texto = std::to_string(Cortes);
    p.lbPosns.Texto = std::to_string(Nos);
    p.lbValue.Texto = JogadaUnica ? "Unknown" : std::to_string(v);
    p.lbValue.Cor = ctx.Atual.Vez == 1 ? cor::Vermelho : cor::Azul;
}

double Motor::TempoNivel(int nivel) {
    static constexpr double fora[] = {0.4, 0.8, 1.2, 2.4, 3, 5, 6, 10, 12};
    static constexpr double torneio[] = {1.5, 3, 4, 5, 6, 7, 10, 12, 14};
    const int k = nivel < 1 ? 0 : (nivel > 9 ? 8 : nivel - 1);
    const double T = ctx.Game.Modo == 2 ? torneio[k] : fora[k];
    if (nivel >= 5 && ctx.JogadaAtual < 3) return T * 0.7;
    const int q1 = ctx.QuantasPecas(1), q2 = ctx.QuantasPecas(2);
    if (nivel > 3 && q2 < q1 - 1) return T * 1.2;
    ctx.Semeia();
    const int r = 1 + ctx.Aleatorio(5);
    if (r == 1) return q2 >= q1 ? T * 0.8 : T;
    if (r == 2) return T * 1.2;
    return T;
}

bool Motor::LinhaRepete() const {
    const int L = LimiteProf;
    if (L <= 15 || L > PLY_MAXIMO) return false;
    auto inversa = [](const Jogada& m) {
        Jogada r = m;
        if (m.tam == 0) return r;
        for (int i = 0; i + 1 < m.tam; ++i) r.c[i] = m.c[i + 1];
        r.c[m.tam - 1] = m.c[0];
        return r;
    };
    const auto& l = (*LinhaPrincipal)[0];
    // An empty entry is the end of the line, not a move that shuffles.
    for (int j = L - 4; j <= L - 1; ++j)
        if (l[j].vazia()) return false;
    return l[L - 3] == inversa(l[L - 1]) && l[L - 4] == inversa(l[L - 2]);
}

uint8_t Motor::PensaJogada() {
    Plataforma& plat = ctx.plataforma;
    Painel& painel = ctx.painel;
    plat.ProcessaEventos();
    const int nivel = ctx.Jogador[ctx.Atual.Vez].Nivel;
    // The level's budget runs from here, so the pause of the first two levels is spent out
    // of it: they mostly finish a single iteration. A fixed time is the search's own.
    const double inicio = plat.Decorrido();
    const uint32_t tabuleiro = ctx.TabuleirosPostos;
    const double budget = TempoFixo > 0 ? TempoFixo : TempoNivel(nivel);
    painel.lbMoves.Cor = cor::CinzaEscuro;
    painel.lbYMM.Texto = "Pensando...";
    painel.Ocupado = true;
    plat.Redesenha();
    if (nivel < 3) plat.Dorme(400);

    const double restante = TempoFixo > 0 ? budget : inicio + budget - plat.Decorrido();
    const int v = Aprofunda(ctx.Atual, restante);
    painel.Ocupado = false;
    MostraEstatisticas(v);
    // A handler that ran between iterations may have ended the game (a new dialog waits, a
    // clock ran out): the turn still ends as usual and the loop then leaves. Only when it
    // set up another board does the move found belong to a board that is gone.
    if (ctx.TabuleirosPostos != tabuleiro) return 0;

    // The move comes from the list of the position it is played on, so it has two squares
    // at least; no move at all is the loss of step 4, whatever the value said.
    const Jogada s = v == -10000 ? Jogada{} : JogadaDaRaiz(ctx.Atual);
    if (s.tam < 2) {
        painel.lbMsg.Texto = "CPU Perdeu.";
        ctx.Game.Fim = true;
        ctx.Atual.Vez = static_cast<uint8_t>(3 - ctx.Atual.Vez);
        return ctx.Atual.Vez;
    }
    if (v < -360) {
        if (ctx.Sorte(30)) {
            ctx.ganchos->Mensagem(ctx.Jogador[2].Nome + " entregou o jogo");
            ctx.Game.Fim = true;
            return 1;
        }
    } else {
        painel.lbYMM.Texto = "Minha vez de jogar";
        painel.lbMoves.Cor = painel.lbValue.Cor;
        painel.lbMoves.Texto = NomeCasa(s[0]) + "-" + NomeCasa(s[1]);
        ctx.MarcaCasa(s[0]);
        plat.Redesenha();
        plat.Dorme(200);
        for (int p = 2; p <= s.tam; p += 3) ctx.MarcaCasa(s[p - 1]);
        plat.Dorme(500);
        ctx.FazJogadaNaTela(s);
        ctx.VaiEmpatar = false;
        ctx.DesmarcaCasa(s[s.tam == 2 ? 1 : s.tam - 2]); // the last landing square
        if (LinhaRepete()) {
            if (ctx.Game.Tipo == "CC") {
                ctx.Game.Fim = true;
                return 3;
            }
            ctx.VaiEmpatar = true;
        }
        ctx.Atual.Vez = static_cast<uint8_t>(3 - ctx.Atual.Vez);
    }
    plat.ProcessaEventos();
    ctx.GravaHistorico(ctx.Atual.Vez, false);
    return 0;
}

Jogada Motor::JogadaDaRaiz(Posicao& raiz) {
    Gerador& lista = ctx.gerador();
    lista.SegueLinha = 0;
    raiz.IniLista = 1;
    lista.ListaComputador(raiz, ctx.Atual);
    const Jogada& linha = Linha(0, 0);
    for (int i = raiz.IniLista; i <= raiz.FimLista; ++i)
        if (lista.Slot(i) == linha) return linha;
    return raiz.FimLista >= raiz.IniLista ? lista.Slot(raiz.IniLista) : Jogada{};
}

int Motor::VaiVencer(float segundos) {
    Posicao copia = ctx.Atual;
    const int v = Aprofunda(copia, segundos, PLY_MAXIMO, true);
    for (int i = 1; i <= Gerador::CAPACIDADE; ++i) g.Slot(i) = Jogada{};
    ZeraContadores();
    const int meu = ctx.Tipo_c == "Servidor" ? 1 : 2;
    if (v > 26 || v < -26) {
        const int melhor = v > 26 ? copia.Vez : 3 - copia.Vez;
        return melhor == meu ? 1 : 2;
    }
    const int proprio = ctx.ValordasPecas(meu), outro = ctx.ValordasPecas(3 - meu);
    if (proprio > outro + 4) return 1;
    if (outro > proprio + 4) return 2;
    return 0;
}

bool Motor::CPU_Pede_Empate() {
    if (ctx.Game.Modo != 1 && ctx.Game.Modo != 2) return false;
    if (ctx.Game.Modo == 1 && !ctx.Sorte(30)) return false;
    const bool fimDeJogo = ctx.QuantasPecas(1) < 4 && ctx.QuantasPecas(2) < 4 &&
                           ctx.ContaEmpate >= 8 && ctx.ContaEmpate <= 27;
    const bool oferece = (ctx.Sorte(60) && ctx.VaiEmpatar) || (ctx.Sorte(30) && fimDeJogo);
    if (!oferece || ctx.PediuEMpate) return false;
    Plataforma& plat = ctx.plataforma;
    ctx.ganchos->ParaTempo();
    ctx.TempoJogo = plat.Agora() - ctx.InicioJogo;
    plat.Dorme(1000);
    ctx.PediuEMpate = true;
    if (ctx.ganchos->Pergunta(ctx.Jogador[2].Nome + " está sugerindo um empate. Você aceita?"))
        return true;
    ctx.InicioJogo = plat.Agora() - ctx.TempoJogo;
    ctx.ganchos->IniciaTempo();
    ctx.Espera(0.5);
    return false;
}

} // namespace velmora
