#pragma once
// The port test: a listening socket of its own (WsTeste) on the port, and the outside
// endpoint asked whether it can reach it. Codes: 0 the endpoint answered with neither word,
// 1 reached, 2 not reached, 3 the port couldn't be opened here, 4 no answer. Also the
// status text of the lobby (StatusPorta) and the port dialog's logic (FrmPorta).
#include "net/socket.h"
#include "service/online.h"

#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

class modSocketMaster;

class TestePorta {
  public:
    TestePorta(ServicoOnline& servico, modSocketMaster& mod);

    Socket WsTeste;
    // The port in force (the lobby's Porta), used when the port text is empty.
    std::function<int()> Porta;

    int TestaPorta(const std::string& porta, std::int32_t tempo);
    void TestaPorta(const std::string& porta, std::int32_t tempo, int& resultado) {
        resultado = TestaPorta(porta, tempo);
    }
    // The text for the lobby's port line. With `codigo` 0 a new test runs first (after
    // `fechaSockets`); `Label2` gets the help link's text, empty when it is hidden.
    std::string StatusPorta(const std::string& porta, int& codigo,
                            const std::function<void()>& fechaSockets, std::string& Label2);

  private:
    ServicoOnline& servico_;
};

// The port dialog: the box `Text1`, the result lines, the router help button.
struct FrmPorta {
    std::string Text1;
    std::string Label4, Label1;
    bool Command5Visivel = false;
    bool TesteManual = false;
    bool Fechou = false;

    // On load: the port in use in the box; the two information lines.
    void Carrega(clsRegistryAccess& reg, const std::string& ipLocal, std::string& linhaIp,
                 std::string& linhaPadrao);
    // The test button: `testa` runs the test on a port (already with its sockets closed).
    void Testa(const std::function<int(const std::string&)>& testa,
               const std::function<void(const std::string&)>& mensagem);
    // A change of the box.
    void MudouTexto(const std::string& texto);
    // The confirm button: refuses 1024 and below, tests an untested number, stores mpt.
    void Confirma(clsRegistryAccess& reg, const std::function<int(const std::string&)>& testa,
                  const std::function<void(const std::string&)>& mensagem);
    // The default button.
    void Padrao(clsRegistryAccess& reg);
};

} // namespace velmora
