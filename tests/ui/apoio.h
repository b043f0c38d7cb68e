#pragma once
// What the tests of the windows share: a fresh settings store and data folder for each
// test, boxes that answer from a script and remember what they showed, and an ambient that
// records sounds and opened addresses.
#include "session/form1.h"
#include "session/relogio.h"
#include "store/registro.h"
#include "ui/ambiente.h"
#include "ui/caixas.h"
#include "ui/janelatabuleiro.h"
#include "ui/som/tocador.h"
#include "ui/telaqt.h"

#include <QTemporaryDir>
#include <deque>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace velmora::ui::teste {

class CaixasRoteiro : public Caixas {
  public:
    struct Vista {
        QString tipo, texto, titulo;
    };
    std::vector<Vista> vistas;
    std::deque<bool> respostas;   // for Pergunta; No when empty
    std::deque<QString> entradas; // for Entrada; a null text or none left cancels

    void Mensagem(QWidget*, const QString& texto, const QString& titulo) override;
    bool Pergunta(QWidget*, const QString& texto, const QString& titulo) override;
    std::optional<QString> Entrada(QWidget*, const QString& prompt, const QString& titulo) override;
    QString Ultima() const { return vistas.empty() ? QString() : vistas.back().texto; }
};

// A fixture with its own folder for the settings and the data files.
class ComPastas : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;
    // A registry object over the test's store file (the file is read at the first call).
    std::unique_ptr<clsRegistryAccess> NovoRegistro() const;

    QTemporaryDir pasta;
    std::unique_ptr<clsRegistryAccess> reg;
    CaixasRoteiro caixas;
    std::vector<std::string> sons;
    std::vector<QUrl> enderecos;
    std::unique_ptr<AmbienteUi> amb;
};

// Remembers the sounds and the music asked for.
struct TocadorGravador final : Tocador {
    std::vector<std::string> sons, musicas;
    int fechamentos = 0;
    void TocaSom(const std::string& nome) override { sons.push_back(nome); }
    void TocaMusica(const std::string& nome) override { musicas.push_back(nome); }
    void FechaMusica() override { ++fechamentos; }
};

// The session's controller with the real board window over it, on a clock that moves only
// when something sleeps, so the animations and pauses take no time.
class ComForm1 : public ComPastas {
  protected:
    void SetUp() override;
    void TearDown() override;
    JanelaTabuleiro& Janela() { return *tela->Janela(); }
    Contexto& Ctx() { return form1->ctx; }
    // A left click on a square of the board widget, where the layout in force draws it.
    void Clica(int casa);
    // Runs `passo` at the next pumps where a human turn waits for a click, one a pump.
    void AoEsperarClique(std::vector<std::function<void()>> passos);

    TocadorGravador tocador;
    RelogioSimulado relogio;
    bool encerrou = false;
    std::unique_ptr<TelaQt> tela;
    std::unique_ptr<Form1> form1;
    std::deque<std::function<void()>> passos_;
    int esperasVazias_ = 0;
};

// A position of side 1 to move from a list of pieces: square and cell code (1, 10, 2, 20).
std::string TextoDePosicao(const std::vector<std::pair<int, int>>& pecas, int lado = 1);

} // namespace velmora::ui::teste
