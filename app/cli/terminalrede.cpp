#include "terminalrede.h"

#include "core/casas.h"
#include "core/registros.h"
#include "core/tabuleiro.h"
#include "peer/conexaopeer.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>
#include <sstream>

namespace velmora::cli {

SaidaDialogo TelaTerminal::MostraNovoJogo(FrmNewGame& d) {
    if (++dialogos_ > 1) return SaidaDialogo::Sair; // the session is over
    CamposNovoJogo c = CamposDoJogo();
    return d.JOGAR(c) ? SaidaDialogo::Jogar : SaidaDialogo::Sair;
}

void TelaTerminal::Mensagem(const std::string& texto, const std::string&) {
    std::printf("[%s]\n", ParaTerminal(texto).c_str());
    std::fflush(stdout);
}

bool TelaTerminal::Pergunta(const std::string& texto, const std::string&) {
    std::printf("[%s] (s/n): não\n", ParaTerminal(texto).c_str());
    std::fflush(stdout);
    return false;
}

bool TelaTerminal::PerguntaEmpate(const std::string& texto) {
    std::printf("[%s] (s/n): ", texto.c_str());
    std::fflush(stdout);
    bool r = false;
    if (computador_) {
        r = decideEmpate && decideEmpate();
    } else {
        // The answer is the next line; ten seconds without one is a refusal.
        QTimer limite;
        limite.setSingleShot(true);
        limite.start(10000);
        while (linhas_.Vazia() && !linhas_.Fim() && limite.isActive())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
        if (!linhas_.Vazia()) r = SimOuNao(linhas_.Tira()).value_or(false);
    }
    std::printf("%s\n", r ? "sim" : "não");
    std::fflush(stdout);
    return r;
}

void TelaTerminal::LinhaChat(const std::string& texto) {
    std::printf("Chat: %s\n", ParaTerminal(texto).c_str());
    std::fflush(stdout);
}

void TelaTerminal::Status(const std::string& texto) {
    std::printf("%s\n", ParaTerminal(texto).c_str());
    std::fflush(stdout);
}

bool EmpateConvem(const Form1& f) {
    const auto& c = f.ctx;
    return c.ValordasPecas(c.LadoLocal()) <= c.ValordasPecas(3 - c.LadoLocal());
}

void Relato::Mostra() {
    const Contexto& c = f_.ctx;
    const std::string tab = TextoTabuleiro(c.Atual);
    if (tab != tabuleiro_ && c.Game.Conectado) {
        tabuleiro_ = tab;
        std::printf("%sVez do lado %d\n", DesenhoTabuleiro(c.Atual).c_str(), c.Atual.Vez);
    }
    for (const Controle* x : {&c.painel.lbMsg, &c.painel.Label27}) {
        std::string& visto = vistos_[x == &c.painel.lbMsg ? 0 : 1];
        const std::string agora = x->Visivel ? x->Texto : "";
        if (agora == visto) continue;
        visto = agora;
        if (agora.empty()) continue;
        std::printf("%s\n", agora.c_str());
        if (agora == "Jogo empatado" || agora == "Você aceitou" ||
            agora == c.Jogador[2].Nome + " aceitou o empate") {
            std::printf("Resultado: empate\n");
            ++terminados;
        }
    }
    for (int k = 1; k <= 2; ++k) {
        if (c.Jogador[k].Vitorias > vitorias_[k]) {
            std::printf("Resultado: %s venceu\n", c.Jogador[k].Nome.c_str());
            ++terminados;
        }
        vitorias_[k] = c.Jogador[k].Vitorias;
    }
    std::fflush(stdout);
}

ComandosRede::ComandosRede(Form1& f, ConexaoPeer& peer, Linhas& linhas, Relato& relato,
                           const AjustesRede& a)
    : f_(f), peer_(peer), linhas_(linhas), relato_(relato), a_(a) {}

void ComandosRede::Liga() {
    f_.AoProcessarEventos = [this] { AoProcessar(); };
    despertador_.setSingleShot(true);
    QObject::connect(&despertador_, &QTimer::timeout, [this] { AoProcessar(); });
}

void ComandosRede::Desconecta() {
    if (saindo_) return;
    saindo_ = true;
    // Left from the event loop, not from inside the wait that runs these commands
    QTimer::singleShot(0, QCoreApplication::instance(), [&f = f_] {
        if (f.ctx.Game.Conectado) f.Label26_Click();
    });
}

// False when the line must wait: squares typed before this side's turn.
bool ComandosRede::Executa(const std::string& linha) {
    std::istringstream in(linha);
    std::string p;
    in >> p;
    if (p.empty()) return true;
    if (p == "chat") {
        std::string resto;
        std::getline(in, resto);
        peer_.EnviaChat(resto);
        return true;
    }
    if (p == "empate") {
        f_.Label24_Click();
    } else if (p == "entregar") {
        f_.Label22_Click();
    } else if (p == "desconectar" || p == "sair") {
        Desconecta();
    } else if (CasaDoNome(p) != 0) {
        if (!f_.ctx.EsperaClique()) return false;
        do {
            if (const int casa = CasaDoNome(p); casa != 0) f_.imgpd_MouseDown(casa);
        } while (in >> p);
    } else {
        std::printf("Entrada inválida: %s (casas A1 a H8, empate, entregar, desconectar, "
                    "chat TEXTO)\n",
                    p.c_str());
    }
    return true;
}

void ComandosRede::AoProcessar() {
    relato_.Mostra();
    if (executando_ || f_.Encerrado()) return;
    executando_ = true;
    if (a_.jogos > 0 && relato_.terminados >= a_.jogos && EntreJogos(f_) && OutroViuOFim())
        Desconecta();
    if (!linhas_.Vazia()) {
        std::string l = linhas_.Tira();
        if (!Executa(l)) linhas_.Devolve(l);
    } else if (linhas_.Fim() && !a_.computador && f_.ctx.Game.Conectado) {
        Desconecta(); // nobody is left to play this side
    }
    executando_ = false;
}

bool ComandosRede::OutroViuOFim() {
    // Closing the link while the move that ended the game is still on its way would make
    // the other copy count the close as a surrender, and award itself the game.
    if (f_.ctx.Recebeu_Jogada) return true;
    const double agora = f_.ctx.plataforma.Decorrido();
    if (fimEm_ < 0) {
        fimEm_ = agora;
        despertador_.start(5100); // should nothing else wake the commands up
    }
    return agora - fimEm_ >= 5.0;
}

void ComecaPartidaRede(Form1& f, PensadorRede& pensador, const AjustesRede& a) {
    auto& c = f.ctx;
    std::printf("Conectado como %s com %s, regra: %s\n", c.Tipo_c.c_str(),
                c.Jogador[2].Nome.c_str(), NomeRegra(c.Game.Regra));
    std::fflush(stdout);
    c.Jogador[1].Nivel = c.Jogador[2].Nivel = static_cast<int16_t>(a.nivel);
    if (a.computador) {
        c.Game.Tipo = c.Tipo_c == "Cliente" ? "HC" : "CH";
        f.UsaPensador(&pensador);
    }
}

void RodaAteEncerrar(Form1& f, Relato& relato) {
    f.Form_Load();
    f.Form_Activate();
    while (!f.Encerrado()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    relato.Mostra();
}

void ImprimePlacar(const Form1& f) {
    const auto& j = f.ctx.Jogador;
    std::printf("Placar: %s %d x %d %s\n", j[1].Nome.c_str(), j[1].Vitorias, j[2].Vitorias,
                j[2].Nome.c_str());
    std::fflush(stdout);
}

} // namespace velmora::cli
