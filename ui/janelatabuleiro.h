#pragma once
// Form1 as a window: the board, the players' panel, the buttons, the message line, the
// history, the clock bars and the chat. It draws the view-model of the game (the turn
// cycle's panel and the session's Form1Modelo) and hands the player's clicks to the
// session's handlers, which decide what they mean.
#include "session/form1.h"

#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>

class QLabel;
class QLineEdit;
class QTextEdit;

namespace velmora::ui {

struct AmbienteUi;
class BarraTitulo;
class BotaoIcone;
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
    JanelaTabuleiro(Form1& form1, const AmbienteUi& ambiente, QWidget* pai = nullptr);
    ~JanelaTabuleiro() override;

    // Opens the about box.
    std::function<void(QWidget* pai)> abreSobre;
    // Runs on the first activation of the window (Form_Activate).
    std::function<void()> aoPrimeiraAtivacao;

    // Brings every widget in line with the view-model (the platform's Redesenha lands here).
    void Atualiza();
    bool TelaCheia() const { return telaCheia_; }
    // Leaves full screen and centres the window.
    void RestauraTela();
    // The window of a board square in the Servidor layout, in this window's pixels.
    static QRect RetanguloServidor(int casa);

    // The clicks the window handles itself; the others go straight to Form1.
    void Image12_Click(); // records
    void Image13_Click(); // options
    void Image14_Click(); // help
    void Image15_Click(); // ranking
    void Image9_RightClick();
    void imgpd_MouseDown(int casa, Qt::MouseButton botao);
    void imgpd_DblClick(int casa);
    void TelaCheiaClick();
    void Label25_Click(); // sends the chat line

    // For those who read the window back.
    VistaTabuleiro* Tabuleiro() const { return VistaTabuleiro_; }
    QString Texto(const QString& controle) const;
    bool Visivel(const QString& controle) const;
    QWidget* Controle_(const QString& nome) const;
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
    void PrimeiraAtivacao();
    static void Estilo(QWidget* w, const QString& estilo);
    // The off-line or the on-line places of the buttons and the chat.
    void PosicionaControles(bool conectado);
    void Sincroniza(QLabel* r, const Controle& c);
    void Sincroniza(Rotulo* r, const Controle& c);

    Form1& f_;
    Contexto& ctx_;
    const AmbienteUi& amb_;
    bool ativado_ = false;
    bool telaCheia_ = false;

    QWidget* palco_;
    BarraTitulo* Image3;
    std::array<BotaoIcone*, 4> ImgCT{};
    VistaTabuleiro* VistaTabuleiro_;
    QLabel* Label27;
    QLabel* lbMsg;
    QLabel* lbYMM;
    QLabel* lbMoves;
    QLabel* lbSide;
    QWidget* relatorio_;
    std::array<QLabel*, 4> relatorioCampos_{}; // lbValue, lbPly, lbCutoff, lbPosns
    bool layoutConectado_ = false;
    bool posicionado_ = false;
    bool ocupado_ = false;
    std::array<QLabel*, 3> LbNome{};
    std::array<QLabel*, 3> lbnivel{};
    std::array<QLabel*, 3> LbPT{};
    std::array<QLabel*, 3> rotuloVitorias{};
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
    QLabel* rotuloRegra_;
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
    QWidget* historico_;
    QTimer atualizador_;
};

} // namespace velmora::ui
