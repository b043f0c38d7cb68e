#pragma once
// Nicks on this computer and on the service: the saved logins of the new game dialog
// (slots combo3N k / combo3S k, the highest in NoCombo3, "xw?wx" for a forgotten one), the
// words a nick may not hold, and the registration dialog's confirm button.
#include "service/pedidos.h"
#include "store/registro.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

inline constexpr const char* NickApagado = "xw?wx";

// The nicks of the slots, from NoCombo3 down to 1, up to the first empty one, without the
// forgotten ones: the newest on top.
std::vector<std::string> PoeNoCombo(clsRegistryAccess& reg);
// The password kept for a nick (any case), searching slots 1 to NoCombo3; nothing when no
// slot holds the nick.
std::optional<std::string> SenhaGuardada(clsRegistryAccess& reg, const std::string& nick);
// Keeps a nick in its slot (the first that holds it, any case, or the first empty one) and
// makes that slot the highest in use. The password is kept only when `guardaSenha`.
void GravaCombo(clsRegistryAccess& reg, const std::string& nick, const std::string& senha,
                bool guardaSenha);
// Forgets a nick: its slot (among 1..30) keeps its place, marked, without a password.
void ApagadoCombo(clsRegistryAccess& reg, const std::string& nick);
// The text of the registration link: "Cadastrar um novo Nick" once a nick is kept.
std::string TextoLabel10(bool temNicks);

// True when the nick holds, anywhere and in any case, one of the refused words.
bool NickProibido(const std::string& nick);

// The registration dialog's state as its confirm button leaves it.
struct FrmCadastro {
    enum class Foco { Nenhum, Nick, Senha, NickSelecionado };
    std::string Text1, Text2, Text3; // nick, password, confirmation
    bool guardaSenha = true;         // the new game dialog's Check1
    bool BotoesHabilitados = true;
    bool Fechou = false;
    bool NickCriado = false;
    Foco foco = Foco::Nenhum;

    // The confirm button. Boxes go through `mensagem`; `ocupado` brackets the request.
    void Confirma(Pedidos& pedidos, clsRegistryAccess& reg,
                  const std::function<void(const std::string&)>& mensagem,
                  const std::function<void(bool)>& ocupado = {});
    // Enter: what it does with the boxes as they are ("senha", "confirmacao" or "confirma").
    std::string Enter() const;
};

// Row 7 asked, with its boxes: true when a nick may be made.
bool PodeCadastrar(Pedidos& pedidos, const std::function<void(const std::string&)>& mensagem);

} // namespace velmora
