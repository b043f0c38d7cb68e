#include "service/testaporta.h"

#include "net/errosocket.h"
#include "service/respostas.h"
#include "store/configuracao.h"

namespace velmora {

namespace {

template <class F> void SemErro(F&& f) {
    try {
        f();
    } catch (const ErroSocket&) {
    }
}

} // namespace

TestePorta::TestePorta(ServicoOnline& servico, modSocketMaster& mod)
    : WsTeste(mod), servico_(servico) {
    WsTeste.Eventos.ConnectionRequest = [this](std::int32_t id) {
        SemErro([&] {
            if (WsTeste.State() != sckClosed) WsTeste.CloseSck();
            WsTeste.Accept(id);
        });
    };
    WsTeste.Eventos.DataArrival = [this](std::int32_t) { SemErro([&] { WsTeste.CloseSck(); }); };
}

int TestePorta::TestaPorta(const std::string& porta, std::int32_t tempo) {
    const std::string p = porta.empty() && Porta ? std::to_string(Porta()) : porta;
    SemErro([&] {
        WsTeste.CloseSck();
        WsTeste.LocalPort(static_cast<std::int32_t>(Numero(p, 0, 65535)));
        WsTeste.Listen();
    });
    servico_.Log("WsTeste.State = " + std::to_string(WsTeste.State()));
    servico_.laco.Bomba();
    servico_.laco.Bomba();
    if (WsTeste.State() != sckListening) {
        servico_.Log("Não foi possível abrir a porta " + p + " para teste");
        return 3;
    }
    servico_.Log("DL3 Timeout = " + std::to_string(tempo));
    const std::string resposta = servico_.pedidos().TestePorta(p, tempo);
    servico_.Log("::: teste = " + resposta);
    const int codigo = LeTestePorta(resposta);
    if (codigo == 4) {
        servico_.Log("O servidor parece estar inacessível (verifique a conexão)");
        SemErro([&] { WsTeste.CloseSck(); });
    } else if (codigo == 2) {
        SemErro([&] { WsTeste.CloseSck(); });
    }
    return codigo;
}

std::string TestePorta::StatusPorta(const std::string& porta, int& codigo,
                                    const std::function<void()>& fechaSockets,
                                    std::string& Label2) {
    if (codigo == 0) {
        if (fechaSockets) fechaSockets();
        codigo = TestaPorta(porta, 4);
    }
    Label2.clear();
    switch (codigo) {
    case 1:
        return "OK";
    case 2:
        Label2 = "Clique aqui se você utiliza Roteador";
        return "A porta " + porta +
               " está inacessível\r\rIsto impede a conexão com jogadores que também estejam com "
               "a porta inacessível.\rPode demorar um pouco mais para conectar com um outro "
               "jogador\rÉ recomendavel que você libere a porta no seu Antivirus/firewall e/ou "
               "roteador";
    case 3:
        Label2 = "Clique aqui para obter Ajuda";
        return "(cod. 41)  Não foi possível abrir a porta " + porta +
               ".\r\rA porta pode estar sendo utilizada por outro aplicativo.\rVocê pode alterar "
               "a porta em 'Opções'\r\rPode demorar um pouco mais para conectar com um outro "
               "jogador";
    default:
        return "";
    }
}

// ---------------------------------------------------------------- FrmPorta

void FrmPorta::Carrega(clsRegistryAccess& reg, const std::string& ipLocal, std::string& linhaIp,
                       std::string& linhaPadrao) {
    linhaIp = "Seu IP Local é " + ipLocal;
    linhaPadrao = "A porta padrão do Velmora Chief é: " + std::to_string(PortaPadrao(reg));
    Text1 = std::to_string(PortaAtual(reg));
}

void FrmPorta::Testa(const std::function<int(const std::string&)>& testa,
                     const std::function<void(const std::string&)>& mensagem) {
    const std::string p = Text1;
    const int codigo = testa(std::to_string(Numero(p, 0, 65535)));
    Command5Visivel = false;
    switch (codigo) {
    case 1:
        Label4 = "A porta " + p + " está pronta.";
        Label1 = "Não é necessário fazer qualquer alteração";
        mensagem("A porta está pronta " + p + " para ser utilizada");
        break;
    case 2:
        Label4 = "A porta " + p + " pode ser aberta mas está inacessível";
        Label1 = "Se você utiliza roteador pode ser necessário liberar a porta no roteador";
        if (TesteManual)
            mensagem("A porta " + p +
                     " pode ser aberta mas não pode ser acessada externamente\r\rVerifique o seu "
                     "antivirus e/ou firewall está bloqueando\r\rSe você utiliza Roteador é "
                     "necessário liberar a porta no roteador");
        Command5Visivel = true;
        break;
    case 3:
        Label4 = "Não foi possível abrir a porta " + p +
                 ". Pode estar sendo utilizada por outro aplicativo\r\rAumente um numero na "
                 "porta e clique em 'Testar Porta'";
        mensagem(Label4);
        break;
    case 4:
        Label4 = "A porta " + p + " pode ser aberta mas não foi possível fazer o teste de acesso";
        Label1 = "Verifique se está conectado à internet";
        mensagem(Label4 + "\r\rVerifique se está conectado à internet.");
        break;
    default:
        break;
    }
    TesteManual = true;
}

void FrmPorta::MudouTexto(const std::string& texto) {
    Text1 = texto;
    Label4.clear();
    Label1.clear();
}

void FrmPorta::Confirma(clsRegistryAccess& reg, const std::function<int(const std::string&)>& testa,
                        const std::function<void(const std::string&)>& mensagem) {
    const long n = Numero(Text1, 0, 65535);
    if (n <= 1024) {
        mensagem("Por favor informe uma porta acima se 1024");
        Text1.clear();
        return;
    }
    if (Label4.empty()) Testa(testa, mensagem);
    Text1 = std::to_string(n);
    GravaOpcao(reg, "mpt", Text1);
    Fechou = true;
}

void FrmPorta::Padrao(clsRegistryAccess& reg) {
    Text1 = std::to_string(PortaPadrao(reg));
    GravaOpcao(reg, "mpt", Text1);
}

} // namespace velmora
