#include "service/redeservico.h"

namespace velmora {

ResultadoLobby AbreLobbySemTela(Form1& f, ServicoOnline& servico, TestePorta& porta,
                                LigacaoLobby& ligacao, JanelaLobby& janela,
                                const std::function<std::string()>& getUpdate) {
    Form8 lobby(f, servico, porta, ligacao, janela);
    lobby.GetUpdate = getUpdate;
    lobby.Senha = f.SenhaDigitada;
    lobby.Executa();
    ResultadoLobby r;
    r.JogarComoVisitante = lobby.PedeVisitante;
    return r;
}

} // namespace velmora
