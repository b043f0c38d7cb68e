// The board window's controller: construction, the timers, start-up and the ways out.
#include "session/form1.h"

#include <cmath>
#include <filesystem>
#include <system_error>
#include <utility>

namespace velmora {

std::string CaminhoDoPrograma(std::string pasta) {
    while (!pasta.empty() && pasta.back() == '/') pasta.pop_back();
    // Installed, the executables are in <prefix>/bin and their files in
    // <prefix>/share/velmora-ace; in the build tree the files lie beside the executables.
    std::error_code ec;
    const std::filesystem::path aoLado = std::filesystem::path(pasta) / "velmora.html";
    const std::filesystem::path instalado =
        std::filesystem::path(pasta).parent_path() / "share" / "velmora-ace";
    if (!std::filesystem::exists(aoLado, ec) &&
        std::filesystem::exists(instalado / "velmora.html", ec)) {
        std::string p = std::filesystem::weakly_canonical(instalado, ec).string();
        while (!p.empty() && p.back() == '/') p.pop_back();
        return ec ? pasta : p;
    }
    return pasta;
}

Retangulo Tela::RetanguloDaCasa(int casa) {
    // Eight rows of eight cells of 600 twips, square 12 at the top left.
    const int linha = (casa - 1) / 10, coluna = (casa - 1) % 10;
    return {720 + (linha - 1) * 600, 600 + (coluna - 1) * 600, 600, 600};
}

int Tela::LarguraDoTexto(const std::string& texto, int fonte) {
    int letras = 0;
    for (unsigned char c : texto)
        if ((c & 0xC0) != 0x80) ++letras; // one per UTF-8 character
    return letras * fonte * 11;
}

Form1::Form1(Tela& tela, Relogio& relogio, ValoresDoPrograma valores)
    : Programa(std::move(valores)), plataforma(relogio), ctx(plataforma), motor(ctx), tela_(tela),
      registro_(ArquivoRegistro(), &diario_), pensador_(*this) {
    ctx.ganchos = this;
    pensador_.real = &motor;
    ctx.pensador = &pensador_;
    diario_.relogio = [this] { return plataforma.Agora(); };
    plataforma.som = [this](const std::string& nome) { Som(nome); };
    plataforma.redesenha = [this] { tela_.Redesenha(); };
    plataforma.aoProcessar = [this] { AoProcessar(); };
    LigaTimers();
    TimerVerifica.start();
}

Form1::~Form1() {
    PararTimers();
}

void Form1::LigaTimers() {
    const auto liga = [](QTimer& t, int ms, auto&& f) {
        t.setInterval(ms);
        QObject::connect(&t, &QTimer::timeout, &t, std::forward<decltype(f)>(f));
    };
    liga(Tempo, 300, [this] { Tempo_Timer(); });
    liga(Timer2, 1000, [this] { Timer2_Timer(); });
    liga(Timer3, 5000, [this] { Timer3_Timer(); });
    liga(Timer1, 300, [this] {
        // The chat log flashes dark red for one tick.
        if (++piscadas_ == 1)
            modelo.Text4.Cor = cor::VermelhoEscuro;
        else {
            modelo.Text4.Cor = modelo.Text3.Cor;
            Timer1.stop();
        }
        tela_.Redesenha();
    });
    liga(tmr, 5000, [this] {
        ctx.painel.lbMsg.Texto.clear();
        lbMsgVisto_.clear();
        tmr.stop();
        tela_.Redesenha();
    });
    liga(TimerInitGame, 100, [this] {
        if (ctx.Game.EmPlay) return;
        TimerInitGame.stop();
        InitGame();
    });
    liga(TimerSaidoMovePedra, 100, [this] {
        ctx.SaidoMovePedra = true;
        if (AlgoEsperando()) return;
        TimerSaidoMovePedra.stop();
        InitGame();
    });
    liga(timerDentro, 10, [this] {
        if (ctx.Game.EmPlay) return;
        timerDentro.stop();
        if (!encerrado_) ctx.PlayGame();
    });
    liga(TimerSair, 300, [this] {
        TimerSair.stop();
        Form_Unload();
    });
    liga(TimerManda, 3000, [this] { rede_->TimerManda_Timer(); });
    liga(TimerVerifica, 1000, [this] { rede_->TimerVerifica_Timer(); });
    liga(TimerCorrige, 300, [this] { rede_->TimerCorrige_Timer(); });
    liga(adiaReiniciar_, 10, [this] {
        if (pensando_ || ctx.MovendoNaTela) return;
        adiaReiniciar_.stop();
        Label7_Click();
    });
    liga(adiaHistorico_, 10, [this] {
        if (ctx.MovendoNaTela) return;
        adiaHistorico_.stop();
        if (!encerrado_) ctx.Image6_Click(historicoAdiado_);
    });
}

void Form1::PararTimers() {
    for (QTimer* t : {&Tempo, &Timer2, &Timer3, &Timer1, &tmr, &TimerInitGame, &TimerSaidoMovePedra,
                      &timerDentro, &TimerSair, &TimerManda, &TimerVerifica, &TimerCorrige,
                      &adiaReiniciar_, &adiaHistorico_})
        t->stop();
}

void Form1::AoProcessar() {
    if (encerrado_) {
        // The program is ending: every loop on the stack must leave.
        ctx.Game.Fim = true;
        ctx.Game.SairPlay = ctx.Game.EmPlay;
        ctx.StartInitGame = ctx.SaidoMovePedra = true;
    }
    // Timer3 is switched by the turn cycle through its control.
    if (ctx.painel.Timer3.Habilitado != Timer3.isActive()) {
        if (ctx.painel.Timer3.Habilitado && !encerrado_)
            Timer3.start();
        else
            Timer3.stop();
    }
    // Each change of the message line restarts its 5 seconds.
    if (ctx.painel.lbMsg.Texto != lbMsgVisto_) {
        lbMsgVisto_ = ctx.painel.lbMsg.Texto;
        if (!encerrado_) tmr.start();
    }
    if (AoProcessarEventos) AoProcessarEventos();
}

bool Form1::AlgoEsperando() const {
    bool espera = ctx.NoMovePedra || iniciandoJogo_ || emFinaliza_ > 0;
    for (bool e : EmEspera) espera = espera || e;
    return espera;
}

void Form1::Som(const std::string& nome) {
    if (config.TocarSom) tela_.TocaSom(nome);
}

void Form1::Musica(const std::string& nome) {
    if (config.TocarMusica) tela_.TocaMusica(nome);
}

uint8_t Form1::PensadorSessao::PensaJogada() {
    if (!real) return 0;
    f_.pensando_ = true;
    const uint8_t r = real->PensaJogada();
    f_.pensando_ = false;
    return r;
}

// ---------------------------------------------------------------- start-up

void Form1::Form_Load() {
    modelo.Largura = 12000;
    modelo.Altura = 9000;
    LimpaPlacar();
    for (Controle* t : {&modelo.Text3, &modelo.Text4}) {
        t->Visivel = false;
        t->Texto.clear();
    }
    config = GetConfig(registro_);
    ctx.Velocit = config.Velocit;
    Painel& p = ctx.painel;
    p.Label18.Texto = "Jogo não iniciado";
    p.Label22.Texto = "Entregar partida";
    p.Label24.Texto = "Sugerir empate";
    p.Label26.Texto = "Desconectar";
    ctx.defineinicio();
    if (Programa.UsaEscala) tela_.AjustaEscala();
    MapeaCasasPosition();
    modelo.imgpd = modelo.PosicaoCasa;
    AjeitaForm();
}

void Form1::Form_Activate() {
    if (ativado_ || encerrado_) return;
    ativado_ = true;
    modelo.Foco = "Text3";
    Musica("sweethrt.mid");
    plataforma.ProcessaEventos();
    plataforma.Dorme(50);
    plataforma.ProcessaEventos();
    rotuloCancelar_ = "Sair";
    const SaidaDialogo saida = AbreNovoJogo();
    if (saida == SaidaDialogo::Sair) {
        SairDoDialogo();
        return;
    }
    if (saida == SaidaDialogo::Cancelar) {
        // Nothing to play: the board waits for a click or "Novo jogo".
        CancelouNovoJogo = false;
        tela_.FechaMusica();
        return;
    }
    auto& G = ctx.Game;
    ctx.LadoCarregado = 0;
    G.Voltou = false;
    ctx.ContaEmpate = 0;
    G.Fim = true;
    AjeitaForm();
    AtualizaPlacar();
    tela_.FechaMusica();
    Tempo.start();
    ctx.painel.Label18.Texto = "Jogo iniciado";
    ctx.defineinicio();
    ctx.PlayGame();
}

SaidaDialogo Form1::AbreNovoJogo() {
    FrmNewGame dialogo([this](CamposNovoJogo& c) { return Jogar(c); }, rotuloCancelar_);
    dialogo_ = &dialogo;
    const SaidaDialogo saida = tela_.MostraNovoJogo(dialogo);
    dialogo_ = nullptr;
    rotuloCancelar_ = "Sair"; // the next dialog is a new one, with the design text
    if (saida == SaidaDialogo::Cancelar) CancelouNovoJogo = true;
    if (saida == SaidaDialogo::Jogar && boasVindas_) {
        boasVindas_ = false;
        MostraBoasVindas();
    }
    if (saida != SaidaDialogo::Jogar) boasVindas_ = false;
    return saida;
}

void Form1::MapeaCasasPosition() {
    for (int s = 12; s <= 89; ++s) modelo.PosicaoCasa[s] = tela_.RetanguloDaCasa(s);
}

void Form1::AjeitaForm() {
    const bool c = ctx.Game.Conectado;
    Painel& p = ctx.painel;
    for (Controle* x :
         {&p.Label22, &p.Label24, &p.Label26, &modelo.Image8, &modelo.Text3, &modelo.Text4})
        x->Visivel = c;
    p.Label10.Visivel = !c;
    modelo.Label20.Visivel = !c;
    tela_.Redesenha();
}

// ---------------------------------------------------------------- the ways out

void Form1::Image1_Click() {
    if (encerrado_) return;
    if (ctx.Game.Conectado) {
        if (ctx.painel.Ocupado) return;
        Label26_Click();
        return;
    }
    if (!Pergunta("Deseja fechar o Velmora Ace?")) return;
    if (tela_.TelaCheia()) {
        // Unload once the screen mode has settled.
        tela_.RestauraTela();
        TimerSair.start();
    } else {
        Form_Unload();
    }
}

void Form1::Form_KeyDown(int tecla) {
    if (encerrado_) return;
    if (ctx.Game.Conectado) {
        modelo.Foco = "Text3";
        return;
    }
    if (tecla == TeclaEsc && Pergunta("Deseja fechar o Velmora Ace?")) Image1_Click();
}

void Form1::SairDoDialogo() {
    if (tela_.TelaCheia()) tela_.RestauraTela();
    plataforma.ProcessaEventos();
    plataforma.ProcessaEventos();
    EncerraPrograma();
}

void Form1::Form_Unload() {
    if (encerrado_) return;
    if (tela_.TelaCheia()) tela_.RestauraTela();
    SetConfig(registro_, config);
    rede_->FechaSockets(0);
    EncerraPrograma();
}

void Form1::EncerraPrograma() {
    if (encerrado_) return;
    encerrado_ = true;
    auto& G = ctx.Game;
    G.Fim = true;
    G.SairPlay = G.EmPlay;
    ctx.StartInitGame = ctx.SaidoMovePedra = true;
    PararTimers();
    tela_.DescarregaFormularios();
    tela_.EncerraPrograma();
}

// ---------------------------------------------------------------- hooks of the turn cycle

void Form1::AdiaImage6(int Index) {
    if (encerrado_) return;
    historicoAdiado_ = Index;
    adiaHistorico_.start();
}

void Form1::AgendaPlayGame() {
    if (!encerrado_) timerDentro.start();
}

void Form1::HandshakeInicio() {
    rede_->HandshakeInicio();
}

void Form1::IniciaVigilancia() {
    Conta_Verifica = 0;
    if (ctx.Tipo_c != "Cliente") TimerManda.start();
    TimerVerifica.start();
    rede_->IniciaVigilancia();
}

void Form1::EnviaJogada(const Jogada& j) {
    modelo.PicCrono[1].Largura = modelo.PicCrono[2].Largura = 0;
    Timer2.start();
    rede_->EnviaJogada(j);
}

void Form1::AtualizaLabel26() {
    rede_->AtualizaLabel26();
}

void Form1::ParaTempo() {
    Tempo.stop();
}

void Form1::IniciaTempo() {
    // After a take back the clock stays off for the rest of the game.
    if (!ctx.Game.Voltou && !encerrado_) Tempo.start();
}

void Form1::Mensagem(const std::string& texto) {
    tela_.Mensagem(texto, Programa.TituloApp);
}

bool Form1::Pergunta(const std::string& texto) {
    return tela_.Pergunta(texto, Programa.TituloApp);
}

void Form1::LogDebug(const std::string& texto) {
    diario_.LogDebug(texto);
}

void Form1::PiscaText4() {
    piscadas_ = 0;
    Timer1.start();
}

} // namespace velmora
