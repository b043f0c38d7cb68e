#pragma once
// The service client of one running copy: the board window's requests (login, ban test,
// the award of a win, leaving the waiting list) and what they change on the panel. It
// works on the copy's Form1: its records, flags, panel, boxes and debug log.
#include "service/buscas.h"
#include "service/laco.h"
#include "service/pedidos.h"
#include "session/form1.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace velmora {

// This computer's identifier, the same on every run: the setting "IDCPT", made once from
// /etc/machine-id (or at random where there is none) and kept.
std::string IDCPTLocal(clsRegistryAccess& reg);

// Points as the panel shows them: "(1.500)", and "(0)" for none.
std::string FormataPontos(long pontos);

class ServicoOnline {
  public:
    ServicoOnline(Form1& f, Buscas& buscas);

    // The waits' clock and pump: Form1's elapsed clock and its pump at first.
    Laco laco;
    // Today's date as the system writes it in short; the key of the daily limit uses it.
    std::function<std::string()> Hoje;
    // Opens a page in the browser.
    std::function<void(const std::string&)> AbrePagina;
    Pedidos& pedidos() { return pedidos_; }
    Buscas& buscas() { return buscas_; }

    // Clock in whole seconds of the last award request; 0 before the first.
    std::int64_t MarcaPontos = 0;
    // The password of the nick logged in, for the own profile page.
    std::string SenhaNick;

    // ---------------------------------------------------------------- points
    // `vencedor` 1 the local player, 2 the peer; `terminou` a regular end. True when the
    // service was asked.
    bool AtribuiVitoria(int vencedor, bool terminou);
    // "GETPT:a:b" from the peer.
    void RecebeGETPT(const std::string& mensagem);
    // True when the player may not go on (banned, or the service didn't answer).
    bool Bloqueado(bool mostrar);
    // Takes the joined pair off the waiting list; nothing on the relay.
    void Jogando_Online(bool noServidor);
    // A click on a name of the panel (1 own, 2 the peer's), and the ranking button.
    void ClicaNome(int i);
    void AbreRanking();

    // ---------------------------------------------------------------- login
    enum class ResultadoLogin { SemResposta, Recusado, Aceito };
    // The login of the lobby with the new game dialog's nick and password: on success the
    // first record's points and id, the panel, the saved logins; a refused nick is
    // forgotten here.
    ResultadoLogin Login(const std::string& nick, const std::string& senha, bool guardaSenha);

    void Log(const std::string& texto);
    void Mensagem(const std::string& texto);

  private:
    Form1& f_;
    Buscas& buscas_;
    Pedidos pedidos_;
};

} // namespace velmora
