// The new game dialog: its memories through the settings, its keys, its validation, the
// on-line tabs of this build, and the session's fields that "JOGAR" writes.
#include "apoio.h"

#include "store/configuracao.h"
#include "ui/barratitulo.h"
#include "ui/frmnewgame.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

namespace velmora::ui::teste {

class NovoJogo : public ComPastas {
  protected:
    // A dialog over a session dialog whose "JOGAR" notes the fields and closes.
    std::unique_ptr<FrmNewGame> Abre(const std::string& cancelar = "Sair") {
        sessao = std::make_unique<velmora::FrmNewGame>(
            [this](CamposNovoJogo& c) {
                jogadas.push_back(c);
                return aceita;
            },
            cancelar);
        reg = NovoRegistro(); // the dialog reads its memories as a new run would
        amb = std::make_unique<AmbienteUi>(
            AmbienteUi{*reg, caixas, [this](const std::string& s) { sons.push_back(s); }, {}, {}});
        auto d = std::make_unique<FrmNewGame>(*amb, opcoes, *sessao);
        d->show();
        QCoreApplication::processEvents(); // the opening's level click
        return d;
    }
    std::string Memoria(const char* nome) { return LeOpcao(*NovoRegistro(), nome, "<nada>"); }

    Configuracao opcoes;
    std::unique_ptr<velmora::FrmNewGame> sessao;
    std::vector<CamposNovoJogo> jogadas;
    bool aceita = true;
};

TEST_F(NovoJogo, AFirstRunShowsTheDefaultsAndPlaysTheLevelsClick) {
    auto d = Abre();
    EXPECT_EQ(d->AbaSelecionada(), 1);
    EXPECT_EQ(d->LbActive->text(), "Jogar contra o computador");
    EXPECT_EQ(d->TxtHC->text(), "Jogador");
    EXPECT_EQ(d->TxtHH1->text(), "Jogador 1");
    EXPECT_EQ(d->TxtHH2->text(), "Jogador 2");
    EXPECT_EQ(d->PuxaRegra(1), 1);
    EXPECT_EQ(d->PuxaNivel(), 3);
    EXPECT_EQ(d->Label2->Texto(), "Sair");
    EXPECT_EQ(d->Label3->Texto(), "JOGAR");
    EXPECT_FALSE(d->Label18->isVisible());
    EXPECT_EQ(sons, std::vector<std::string>{"click.wav"});
}

TEST_F(NovoJogo, WhatWasTypedComesBackAtTheNextOpening) {
    {
        auto d = Abre();
        d->TxtHC->setText("Maria");
        d->Opt_regra[3]->setChecked(true);
        d->Opt_regra2[4]->setChecked(true);
        d->Label23_Click(4);
        d->TxtHH1->setText("Lia");
        d->TxtHH2->setText("Teo");
        d->Text1->setText("amigo");
        d->Text3->setText("grupo");
        d->TxtRede->setText("Rede");
        d->Label3_Click();
        ASSERT_TRUE(d->Fechado());
        EXPECT_EQ(d->Resultado(), SaidaDialogo::Jogar);
    }
    ASSERT_EQ(jogadas.size(), 1u);
    EXPECT_EQ(jogadas[0].Aba, 1);
    EXPECT_EQ(jogadas[0].Nivel, 4);
    EXPECT_EQ(jogadas[0].Opt_regra, 3);
    EXPECT_EQ(jogadas[0].TxtHC, "Maria");
    EXPECT_EQ(Memoria("TxtHC"), "Maria");
    EXPECT_EQ(Memoria("Regra1"), "3");
    EXPECT_EQ(Memoria("Regra2"), "4");
    EXPECT_EQ(Memoria("DF"), "4");
    EXPECT_EQ(Memoria("Nivel"), "4");
    EXPECT_EQ(Memoria("OPTJ"), "1");

    auto d = Abre();
    EXPECT_EQ(d->TxtHC->text(), "Maria");
    EXPECT_EQ(d->PuxaRegra(1), 3);
    EXPECT_EQ(d->PuxaRegra(2), 4);
    EXPECT_EQ(d->PuxaNivel(), 4);
    EXPECT_EQ(d->TxtHH1->text(), "Lia");
    EXPECT_EQ(d->TxtHH2->text(), "Teo");
    EXPECT_EQ(d->Text1->text(), "amigo");
    EXPECT_EQ(d->Text3->text(), "grupo");
    EXPECT_EQ(d->TxtRede->text(), "Rede");
}

TEST_F(NovoJogo, NoRuleCheckedStoresZeroAndOpensWithNoneChecked) {
    {
        auto d = Abre();
        d->Opt_regra[1]->group()->setExclusive(false);
        d->Opt_regra[1]->setChecked(false);
        EXPECT_EQ(d->PuxaRegra(1), 0);
        d->Label3_Click();
    }
    EXPECT_EQ(Memoria("Regra1"), "0");
    auto d = Abre();
    EXPECT_EQ(d->PuxaRegra(1), 0);
    for (int i = 1; i <= 4; ++i) EXPECT_FALSE(d->Opt_regra[i]->isChecked());
}

TEST_F(NovoJogo, TheTournamentIsLevelEightButTheNextOpeningShowsTheStoredLevel) {
    {
        auto d = Abre();
        d->Label23_Click(5);
        d->Torneio(true);
        EXPECT_FALSE(d->niveis->isVisible());
        EXPECT_TRUE(d->textoTorneio->isVisible());
        EXPECT_EQ(d->PuxaNivel(), 8);
        d->Label3_Click();
    }
    EXPECT_EQ(jogadas.back().Nivel, 8);
    EXPECT_EQ(Memoria("Nivel"), "8");
    EXPECT_EQ(Memoria("DF"), "5");
    auto d = Abre();
    EXPECT_EQ(d->PuxaNivel(), 5);
    EXPECT_TRUE(d->niveis->isVisible());
    EXPECT_FALSE(d->textoTorneio->isVisible());
}

TEST_F(NovoJogo, SairWritesNothingAndCancelarWritesTheMemories) {
    {
        auto d = Abre("Sair");
        d->TxtHC->setText("Nada");
        d->Label2_Click();
        EXPECT_EQ(d->Resultado(), SaidaDialogo::Sair);
    }
    EXPECT_EQ(Memoria("TxtHC"), "<nada>");
    {
        auto d = Abre("Cancelar");
        EXPECT_EQ(d->Label2->Texto(), "Cancelar");
        d->TxtHC->setText("Guardado");
        d->Label2_Click();
        EXPECT_EQ(d->Resultado(), SaidaDialogo::Cancelar);
    }
    EXPECT_EQ(Memoria("TxtHC"), "Guardado");
    EXPECT_TRUE(jogadas.empty());
}

TEST_F(NovoJogo, JogarTurnsTheCancelLabelIntoSairWhenTheDialogStaysOpen) {
    aceita = false;
    auto d = Abre("Cancelar");
    d->Label3_Click();
    EXPECT_FALSE(d->Fechado());
    EXPECT_EQ(d->Label2->Texto(), "Sair");
    EXPECT_EQ(sessao->Label2, "Sair");
}

TEST_F(NovoJogo, TheOnLineTabsValidateThenReachTheSession) {
    auto d = Abre();
    d->Image1_Click(4);
    EXPECT_EQ(d->LbActive->text(), "Jogar com meus amigos");
    d->Text1->setText("eu");
    d->Text3->clear();
    d->Label3_Click();
    EXPECT_TRUE(caixas.Ultima().startsWith("Informe a senha de grupo"));
    EXPECT_TRUE(caixas.Ultima().endsWith(
        "Somente as pessoas que colocarem a mesma senha de grupo poderão jogar com você"));

    d->Image1_Click(3);
    d->ImGTPON_Click(2);
    d->Combo3->setEditText("##");
    d->Label3_Click();
    EXPECT_EQ(caixas.Ultima(), "Por favor informe o seu Nick e senha, ou cadastre um novo nick");
    d->Combo3->setEditText("fulano");
    d->Text2->clear();
    d->Label3_Click();
    EXPECT_EQ(caixas.Ultima(), "Informe a senha");

    // a visitor needs no password: "JOGAR" reaches the session, which opens the lobby
    EXPECT_TRUE(jogadas.empty());
    d->ImGTPON_Click(1);
    d->Text4->setText("Visita");
    d->Label3_Click();
    ASSERT_EQ(jogadas.size(), 1u);
    EXPECT_EQ(jogadas[0].Aba, 3);
    EXPECT_TRUE(jogadas[0].Visitante);
    EXPECT_EQ(jogadas[0].Text4, "Visita");
    EXPECT_EQ(Memoria("OPTJ"), "3");
    // "Por IP" goes to the session, which opens the direct connection dialog
    d->Image1_Click(5);
    d->TxtRede->setText("Rede");
    d->Label3_Click();
    ASSERT_EQ(jogadas.size(), 2u);
    EXPECT_EQ(jogadas[1].Aba, 5);
    EXPECT_EQ(jogadas[1].TxtRede, "Rede");
    EXPECT_EQ(Memoria("OPTJ"), "5");
}

TEST_F(NovoJogo, EnterMovesBetweenTheNamesAndPlaysOnlyWhenBothAreThere) {
    auto d = Abre();
    d->Image1_Click(2);
    d->TxtHH2->clear();
    d->activateWindow();
    d->TxtHH1->setFocus();
    QTest::keyClick(d->TxtHH1, Qt::Key_Return);
    EXPECT_TRUE(jogadas.empty());
    EXPECT_EQ(d->focusWidget(), d->TxtHH2);
    d->TxtHH2->setText("Segundo");
    QTest::keyClick(d->TxtHH2, Qt::Key_Return);
    ASSERT_EQ(jogadas.size(), 1u);
    EXPECT_EQ(jogadas[0].Aba, 2);
    EXPECT_EQ(jogadas[0].TxtHH2, "Segundo");
}

TEST_F(NovoJogo, SavedLoginsListNewestFirstAndFillThePassword) {
    for (auto [nome, valor] : {std::pair<const char*, const char*>{"NoCombo3", "3"},
                               {"combo3N1", "Ana"},
                               {"combo3S1", "segredo"},
                               {"combo3N2", "xw?wx"},
                               {"combo3N3", "Bia"},
                               {"ImGTPON", "2"},
                               {"mpt", "2010"}})
        GravaOpcao(*reg, nome, valor);
    auto d = Abre();
    EXPECT_TRUE(d->Label18->isVisible()); // the port in use isn't the default one
    ASSERT_EQ(d->Combo3->count(), 2);
    EXPECT_EQ(d->Combo3->itemText(0), "Bia");
    EXPECT_EQ(d->Combo3->itemText(1), "Ana");
    EXPECT_EQ(d->Label10->Texto(), "Cadastrar um novo Nick");
    d->Image1_Click(3);
    EXPECT_TRUE(d->PicLogin->isVisible());
    EXPECT_FALSE(d->PicVisitante->isVisible());
    d->Combo3->setCurrentIndex(1);
    EXPECT_EQ(d->Text2->text(), "segredo");
    EXPECT_TRUE(d->Label21->isVisible());
    EXPECT_TRUE(d->ChkChat->isVisible());
    d->Text2->clear();
    EXPECT_FALSE(d->ChkChat->isVisible());
}

TEST_F(NovoJogo, ChkChatSwitchesTheChatAtOnce) {
    auto d = Abre();
    d->Combo3->setEditText("eu");
    d->Text2->setText("x");
    d->Image1_Click(3);
    ASSERT_TRUE(d->ChkChat->isChecked());
    QTest::mouseClick(d->ChkChat, Qt::LeftButton, {}, QPoint(5, d->ChkChat->height() / 2));
    EXPECT_FALSE(opcoes.HabilitaChat);
}

// ---------------------------------------------------------------- through the session

class NovoJogoNaSessao : public ComForm1 {};

TEST_F(NovoJogoNaSessao, JogarOnTheSecondTabStartsAGameOfTwoWithTheTypedNames) {
    tela->aoMostrarNovoJogo = [](FrmNewGame& d) {
        EXPECT_EQ(d.Label2->Texto(), "Cancelar");
        d.Image1_Click(2);
        d.TxtHH1->setText("Lia");
        d.TxtHH2->setText("Teo");
        d.Opt_regra2[2]->setChecked(true);
        d.Label3_Click();
    };
    AoEsperarClique({[this] {
        EXPECT_EQ(Janela().Texto("LbNome_1"), "Lia");
        EXPECT_EQ(Janela().Texto("LbNome_2"), "Teo");
        EXPECT_EQ(Janela().Texto("Label18"), "Jogo iniciado");
        EXPECT_EQ(Janela().Texto("Label20"), "Peão não captura para trás");
        Ctx().Game.Fim = true;
    }});
    Janela().Controle_("Label6")->setEnabled(true);
    QTest::mouseClick(Janela().Controle_("Label6"), Qt::LeftButton);
    EXPECT_EQ(Ctx().Game.Modo, 3);
    EXPECT_EQ(Ctx().Game.Tipo, "HH");
    EXPECT_EQ(Ctx().Game.Regra, 2);
    EXPECT_EQ(Ctx().Jogador[1].Nome, "Lia");
    EXPECT_EQ(LeOpcao(*NovoRegistro(), "TxtHH1", ""), "Lia");
    EXPECT_EQ(tocador.sons.front(), "Click.wav");
}

} // namespace velmora::ui::teste
