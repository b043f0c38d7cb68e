#pragma once
// What the tests of the windows share: a fresh settings store and data folder for each
// test, boxes that answer from a script and remember what they showed, and an ambient that
// records sounds and opened addresses.
#include "store/registro.h"
#include "ui/ambiente.h"
#include "ui/caixas.h"

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

} // namespace velmora::ui::teste
