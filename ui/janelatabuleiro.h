#pragma once
// Form1 as a window: the board, the players' panel, the buttons, the message line, the
// history, the clock bars and the chat. It draws the view-model of the game and reports the
// player's clicks back; the session behind it (ControleSessao) decides what they mean.
#include "core/contexto.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QTextEdit;

namespace velmora {
struct Configuracao;
}

namespace velmora::ui {

struct AmbienteUi;
class BarraTitulo;
class BotaoIcone;
class ControleSessao;
class Rotulo;
class VistaTabuleiro;

// One clock bar of a player: PicTIMER is the whole, PicCrono the part gone.
class BarraRelogio : public QWidget {
    Q_OBJECT
  public:
    explicit BarraRelogio(QWidget* pai = nullptr);
    void Define(double fracao, QColor cor);
    double Fracao() const { return fracao_; }

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    double fracao_ = 0;
    QColor cor_{0, 192, 0};
};

// A player's stars and medal.
class Insignias : public QWidget {
    Q_OBJECT
  public:
    explicit Insignias(QWidget* pai = nullptr);
    void Define(int estrelas, bool ouro, bool medalha);
    int Estrelas() const { return estrelas_; }
    bool Medalha() const { return medalha_; }

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    int estrelas_ = 0;
    bool ouro_ = false;
    bool medalha_ = false;
};

class Lampada : public QWidget {
    Q_OBJECT
  public:
    explicit Lampada(QWidget* pai = nullptr);
    void Acende(bool acesa);
    bool Acesa() const { return acesa_; }

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    bool acesa_ = false;
};

class JanelaTabuleiro : public QWidget {
    Q_OBJECT
  public:
    JanelaTabuleiro(Contexto& ctx, const AmbienteUi& ambiente, Configuracao& opcoes,
                    QWidget* pai = nullptr);
    ~JanelaTabuleiro() override;

    void DefineControle(ControleSessao* controle) { controle_ = controle; }
    // Opens the new game dialog on the first activation, once.
    std::function<void()> aoPrimeiraAtivacao;
    // Opens the about box.
    std::function<void(QWidget* pai)> abreSobre;

    // Brings every widget in line with the view-model and the records (the platform's
    // Redesenha lands here).
    void Atualiza();
    // The players' panel: names, levels, wins, stars, rule.
    void AtualizaPlacar();
    void LimpaPlacar();
    void MostraNivel(int lado);
    // The off-line or on-line layout, by Game.Conectado.
    void AjeitaForm();
    // The turn label of exibevez.
    void exibevez();
    // A clock bar: i 1 the local player, 2 the opponent.
    void DefineRelogio(int i, double fracao, bool visivel, QColor cor);
    // Points and rank of a player on-line (LbNV).
    void DefineLbNV(int lado, const QString& texto);
    // The cancel label the next new game dialog must show: "Cancelar" after "Novo jogo".
    QString CancelarDoDialogo() const { return cancelarDoDialogo_; }
    void DefineCancelarDoDialogo(const QString& t) { cancelarDoDialogo_ = t; }

    // The clicks, as the mouse sends them.
    void imgpd_MouseDown(int casa, Qt::MouseButton botao);
    void imgpd_DblClick(int casa);
    void Label6_Click();  // "Novo jogo"
    void Image7_Click();  // the new game picture
    void Label7_Click();  // "Reiniciar"
    void Label22_Click(); // "Entregar partida"
    void Label24_Click(); // "Sugerir empate"
    void Label26_Click(); // "Desconectar"
    void Image12_Click(); // records
    void Image13_Click(); // options
    void Image14_Click(); // help
    void Image15_Click(); // ranking
    void Image6_Click(int i);
    void Image9_RightClick();
    void FechaClick(); // Image1, ImgCT(3)
    void TelaCheiaClick();
    void Label25_Click(); // send the chat line
    // Form_Unload: the window goes, and with it the program.
    void Descarrega();

    // For those who read the window back.
    VistaTabuleiro* Tabuleiro() const { return VistaTabuleiro_; }
    QString Texto(const QString& controle) const;
    bool Visivel(const QString& controle) const;
    int Clicado() const { return Clicado_; }
    bool Encerrada() const { return encerrada_; }
    // A chat line as it is logged: the local name, " diz:" and the text, on one line or two.
    static QString LinhaDeChat(const QString& nome, const QString& texto);

  protected:
    void paintEvent(QPaintEvent*) override;
    void resizeEvent(QResizeEvent*) override;
    void keyPressEvent(QKeyEvent*) override;
    void closeEvent(QCloseEvent*) override;
    bool event(QEvent*) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;
    void mouseMoveEvent(QMouseEvent*) override;

  private:
    void Monta();
    void SincronizaRotulo(QLabel* r, const Controle& c);
    void SincronizaBotao(Rotulo* r, const Controle& c);
    bool Pergunta(const QString& texto, const QString& titulo);
    void Toca(const std::string& nome);
    void PiscaText4();

    Contexto& ctx_;
    const AmbienteUi& amb_;
    Configuracao& opcoes_;
    ControleSessao* controle_ = nullptr;
    QString cancelarDoDialogo_ = "Sair";
    int Clicado_ = 0;
    bool ativado_ = false;
    bool encerrada_ = false;
    bool telaCheia_ = false;
    std::string msgVista_;

    QWidget* palco_;
    BarraTitulo* Image3;
    std::array<BotaoIcone*, 7> ImgCT{};
    VistaTabuleiro* VistaTabuleiro_;
    QLabel* Label27;
    QLabel* lbMsg;
    QLabel* lbYMM;
    QLabel* lbMoves;
    QLabel* lbSide;
    QLabel* lbRelatorio; // lbValue, lbPly, lbCutoff, lbPosns
    std::array<QLabel*, 3> LbNome{};
    std::array<QLabel*, 3> lbnivel{};
    std::array<QLabel*, 3> LbPT{};
    std::array<QLabel*, 3> LbNV{};
    std::array<Insignias*, 3> Estrelas{};
    std::array<Lampada*, 2> Imglamp{};
    std::array<BarraRelogio*, 3> PicCrono{};
    QLabel* Label2;
    QLabel* Label3;
    QLabel* LbVez;
    QLabel* Label18;
    QLabel* Label12;
    QLabel* Label20;
    QLabel* Label10;
    std::array<BotaoIcone*, 4> Image6{};
    Rotulo* Label6;
    Rotulo* Label7;
    Rotulo* Label22;
    Rotulo* Label24;
    Rotulo* Label26;
    BotaoIcone* Image7;
    BotaoIcone* Image12;
    BotaoIcone* Image13;
    BotaoIcone* Image4;
    BotaoIcone* Image14;
    BotaoIcone* Image15;
    BotaoIcone* Image9;
    QLabel* Label28;
    QTextEdit* Text4;
    QLineEdit* Text3;
    Rotulo* Label25;
    QWidget* Image8;
    QWidget* historico_;
    QTimer tmr;
    QTimer Timer1;
    QTimer TimerSair;
    int tiquesTimer1_ = 0;
};

} // namespace velmora::ui
