#pragma once
// The small modal boxes every window uses: a message with OK, a question with Yes and No,
// an input line. The program shows real boxes; a test plugs in a script of answers.
#include <QString>
#include <optional>

class QWidget;

namespace velmora::ui {

class Caixas {
  public:
    virtual ~Caixas() = default;
    virtual void Mensagem(QWidget* pai, const QString& texto, const QString& titulo) = 0;
    // True for "Sim".
    virtual bool Pergunta(QWidget* pai, const QString& texto, const QString& titulo) = 0;
    // The typed text, or nothing when the box was cancelled.
    virtual std::optional<QString> Entrada(QWidget* pai, const QString& prompt,
                                           const QString& titulo) = 0;
};

// The boxes of Qt, with the buttons in Portuguese.
class CaixasQt final : public Caixas {
  public:
    void Mensagem(QWidget* pai, const QString& texto, const QString& titulo) override;
    bool Pergunta(QWidget* pai, const QString& texto, const QString& titulo) override;
    std::optional<QString> Entrada(QWidget* pai, const QString& prompt,
                                   const QString& titulo) override;
};

// A message's line breaks (CR, CR LF, CR CR) as the screen shows them: one "\n" each, with
// other control characters left out.
QString TextoParaTela(const QString& texto);

} // namespace velmora::ui
