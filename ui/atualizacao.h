#pragma once
// What the lobby and the about box do with the result of an update check (GetUpdate).
// Both open the update window through `abreFrmUp` with the offer they accepted.
#include "service/atualizacao.h"

#include <functional>
#include <string>

class QWidget;

namespace velmora::ui {

class Caixas;

using AbreFrmUp = std::function<void(const OfertaAtualizacao& oferta)>;

// On entering the lobby: an offer's message first (";" as a line break), then a compulsory
// update opens the window at once, any other asks "Está disponível uma atualização do
// Velmora Ace. Deseja atualizar agora?". Any result that isn't an offer is ignored.
void OfereceAtualizacaoLobby(const std::string& resultado, Caixas& caixas, QWidget* pai,
                             const AbreFrmUp& abreFrmUp);

// From the about box: a result that isn't an offer is shown as it is; an offer asks whether
// to move from this version to the offered one.
void RespondeAtualizacaoSobre(const std::string& resultado, Caixas& caixas, QWidget* pai,
                              const AbreFrmUp& abreFrmUp, const std::string& versao = "3.9.0");

} // namespace velmora::ui
