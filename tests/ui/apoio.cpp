#include "apoio.h"

#include "core/casas.h"
#include "store/caminhos.h"
#include "ui/janelatabuleiro.h"
#include "ui/vistatabuleiro.h"

#include <QTest>

#include <cstdlib>

namespace velmora::ui::teste {

void CaixasRoteiro::Mensagem(QWidget*, const QString& texto, const QString& titulo) {
    vistas.push_back({"Mensagem", texto, titulo});
}

bool CaixasRoteiro::Pergunta(QWidget*, const QString& texto, const QString& titulo) {
    vistas.push_back({"Pergunta", texto, titulo});
    if (respostas.empty()) return false;
    const bool r = respostas.front();
    respostas.pop_front();
    return r;
}

std::optional<QString> CaixasRoteiro::Entrada(QWidget*, const QString& prompt,
                                              const QString& titulo) {
    vistas.push_back({"Entrada", prompt, titulo});
    if (entradas.empty()) return std::nullopt;
    const QString r = entradas.front();
    entradas.pop_front();
    if (r.isNull()) return std::nullopt;
    return std::optional<QString>(std::in_place, r);
}

void ComPastas::SetUp() {
    ASSERT_TRUE(pasta.isValid());
    setenv("VELMORA_CONFIG", (pasta.path() + "/registro.reg").toUtf8().constData(), 1);
    setenv("VELMORA_DADOS", (pasta.path() + "/dados").toUtf8().constData(), 1);
    reg = NovoRegistro();
    amb = std::make_unique<AmbienteUi>(
        AmbienteUi{*reg, caixas, [this](const std::string& s) { sons.push_back(s); },
                   std::filesystem::path(pasta.path().toStdString()),
                   [this](const QUrl& u) { enderecos.push_back(u); }});
}

void ComPastas::TearDown() {
    unsetenv("VELMORA_CONFIG");
    unsetenv("VELMORA_DADOS");
}

std::unique_ptr<clsRegistryAccess> ComPastas::NovoRegistro() const {
    return std::make_unique<clsRegistryAccess>(ArquivoRegistro());
}

void ComForm1::SetUp() {
    ComPastas::SetUp();
    tela = std::make_unique<TelaQt>(caixas, tocador,
                                    [this](const QUrl& u) { enderecos.push_back(u); });
    ValoresDoPrograma valores;
    valores.CaminhoApp = pasta.path().toStdString();
    tela->aoEncerrar = [this] { encerrou = true; };
    form1 = std::make_unique<Form1>(*tela, relogio, valores);
    tela->Liga(*form1);
    // the tests that want the first dialog open it themselves
    Janela().aoPrimeiraAtivacao = nullptr;
    form1->Form_Load();
    Janela().show();
    form1->AoProcessarEventos = [this] {
        if (!form1->ctx.EsperaClique()) return;
        if (passos_.empty()) {
            // a turn that waits with nothing left to click would wait for ever
            if (++esperasVazias_ > 5000) {
                ADD_FAILURE() << "a turn still waits for a click after the script ended";
                form1->ctx.Game.Fim = true;
            }
            return;
        }
        esperasVazias_ = 0;
        auto passo = std::move(passos_.front());
        passos_.pop_front();
        passo();
    };
}

void ComForm1::TearDown() {
    form1->AoProcessarEventos = nullptr;
    tela->Libera();
    form1.reset();
    tela.reset();
    ComPastas::TearDown();
}

void ComForm1::Clica(int casa) {
    VistaTabuleiro* v = Janela().Tabuleiro();
    QTest::mouseClick(v, Qt::LeftButton, {}, v->RetanguloCasa(casa).center().toPoint());
}

void ComForm1::AoEsperarClique(std::vector<std::function<void()>> passos) {
    for (auto& p : passos) passos_.push_back(std::move(p));
}

std::string TextoDePosicao(const std::vector<std::pair<int, int>>& pecas, int lado) {
    std::string t = std::to_string(lado) + ",";
    for (int i = 1; i <= 64; ++i) {
        const int casa = CasaDoIndice(i);
        int codigo = CasaClara(casa) ? 0 : 3;
        for (auto [c, p] : pecas)
            if (c == casa) codigo = p;
        t += std::to_string(codigo) + ",";
    }
    return t;
}

} // namespace velmora::ui::teste
