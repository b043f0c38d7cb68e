#include "service/lobby.h"

#include "core/utilidades.h"
#include "service/cadastro.h"
#include "service/respostas.h"
#include "store/configuracao.h"

#include <cmath>

namespace velmora {

const char* const Erro21 =
    "Erro 21: Não foi possível conectar ao sevidor.\r\rPode ser um problema no servidor ou o "
    "seu antivirus/firewall pode estar bloqueando a conexão do Velmora Ace\r\r1 - Certifique de "
    "estar conectado a internet\r\r2 - Verifique se o seu antivirus/Firewall está bloqueando a "
    "conexão do Velmora Ace";
const char* const Erro22 =
    "Não foi possível conectar ao sevidor.\r\rPode ser um problema no servidor ou o seu "
    "antivirus/firewall pode estar bloqueando a conexão do Velmora Chief\r\r1 - Certifique dse "
    "estar conectado a internet\r\r2 - Verifique se o seu antivirus/Firewall está bloqueando a "
    "conexão do Velmora Chief";
const char* const Erro23 =
    "Erro 23: Não foi possível conectar ao sevidor.\r\rPode ser um problema no servidor ou o "
    "seu antivirus/firewall pode estar bloqueando a conexão do Velmora Ace\r\r1 - Certifique de "
    "estar conectado a internet\r\r2 - Verifique se o seu antivirus/Firewall está bloqueando a "
    "conexão do Velmora Ace";

namespace {

const char* const SemConexao = "Não foi possível estabelecer uma conexão.\r\rVerifique se está "
                               "conectado à internet e tente novamente ou tente mais tarde.";

} // namespace

std::string Form8::Mascara(std::string texto) {
    for (char& c : texto)
        if (c >= '0' && c <= '9') c = '?';
    return texto;
}

Form8::Form8(Form1& f, ServicoOnline& servico, TestePorta& porta, LigacaoLobby& ligacao,
             JanelaLobby& janela)
    : f_(f), servico_(servico), porta_(porta), ligacao_(ligacao), janela_(janela) {
    const auto liga = [](QTimer& t, int ms, auto&& fn) {
        t.setInterval(ms);
        QObject::connect(&t, &QTimer::timeout, &t, std::forward<decltype(fn)>(fn));
    };
    liga(Timer1, 300, [this] { Timer1_Timer(); });
    liga(Timer2, 20000, [this] { Timer2_Timer(); });
    liga(Timer3, 15, [this] { Timer3_Timer(); });
    liga(Timer5, 100, [this] { Timer5_Timer(); });
    porta_.Porta = [this] { return Porta; };
    servico_.buscas().Cancelado = [this] { return Saiu(); };
    ligacao_.Lobby(this);
    Label2.Visivel = false;
    Label7.Visivel = false;
}

Form8::~Form8() {
    Timer1.stop();
    Timer2.stop();
    Timer3.stop();
    Timer5.stop();
    porta_.Porta = nullptr;
    servico_.buscas().Cancelado = nullptr;
    ligacao_.Lobby(nullptr);
}

// ---------------------------------------------------------------- life cycle

void Form8::Form_Load() {
    if (f_.ctx.Game.Conectado) {
        Descarrega();
        return;
    }
    Form8Aberto = true;
    if (f_.ctx.Jogador[1].IDCPT.empty()) f_.ctx.Jogador[1].IDCPT = IDCPTLocal(f_.registro());
    JaNotificado = false;
    Acao.clear();
    SairLobby = false;
    f_.ctx.Game.Conectado = false;
    f_.ConexaoAberta = false;
    Label6.Visivel = true;
    Command1.Texto = "Cancelar";
    Command1.Habilitado = true;
    Timer1.start();
    Timer3.start();
    Muda();
}

void Form8::Form_Activate() {
    if (LobbyIniciado || Descarregado) return;
    LobbyIniciado = true;
    CancelouLobby = false;
    Conectar(false);
}

void Form8::Form_Unload() {
    janela_.BandejaRemove();
    Form8Aberto = false;
}

void Form8::Descarrega() {
    if (Descarregado) return;
    Descarregado = true;
    Timer1.stop();
    Timer2.stop();
    Timer3.stop();
    Timer5.stop();
    Form_Unload();
    janela_.Descarrega();
}

void Form8::Executa() {
    Form_Load();
    Form_Activate();
    while (!Descarregado) servico_.laco.Bomba();
}

void Form8::status(const std::string& texto) {
    if (Acao != "Deletar") Label4.Texto = texto;
    Label7.Visivel = false;
    Muda();
    servico_.laco.Bomba();
}

void Form8::ParalizaTela() {
    Timer1.stop();
    Timer2.stop();
    Timer3.stop();
    Timer5.stop();
    Label6.Visivel = false;
    Command1.Texto = "Sair";
    Command1.Habilitado = true;
    Muda();
    servico_.laco.Bomba();
    janela_.RetornaForms();
}

// ---------------------------------------------------------------- waits

Form8::Fim Form8::Aguarda(double limite, bool paraNoSair) {
    for (;;) {
        if (Saiu() || (paraNoSair && SairLobby)) return Fim::Saiu;
        if (f_.ConexaoAberta) return Fim::Juntou;
        if (servico_.laco.Agora() >= limite) return Fim::Tempo;
        servico_.laco.Bomba();
    }
}

double Form8::EsperaLista() const {
    if (f_.NaRede) return 10;
    return LbComunica.Texto == "Porta: OK" ? 2.0 * TempoEspera : TempoEspera;
}

PedidoLista Form8::PedidoDaLista() {
    const auto& j1 = f_.ctx.Jogador[1];
    PedidoLista p;
    p.nick = j1.Nome;
    p.acao = Acao;
    p.porta = Porta;
    p.grupo = f_.SenhaGrupo;
    p.portaOK = LbComunica.Texto == "Porta: OK";
    p.visitante = j1.Visitante;
    p.naRede = f_.NaRede;
    if (p.naRede) p.enderecoLocal = ligacao_.EnderecoLocal();
    p.idcpt = j1.IDCPT;
    p.idcptRemoto = LeOpcao(f_.registro(), "IDCPT_Remote", "");
    return p;
}

// ---------------------------------------------------------------- the first run

void Form8::TrataAtualizacao(const std::string& r) {
    if (Pedaco(r, "!*!", 1) != "Link") return;
    const std::string mensagem = Pedaco(r, "!*!", 6);
    if (!mensagem.empty()) janela_.Mensagem(QuebraLinhas(mensagem, "\r"));
    const std::string link = Pedaco(r, "!*!", 4);
    if (Pedaco(r, "!*!", 5) == "obrigatorio" ||
        janela_.Pergunta("Está disponível uma atualização do Velmora Ace. Deseja atualizar agora?"))
        janela_.AbreAtualizacao(link);
}

void Form8::FechamentoDeErro() {
    janela_.Esconde();
    if (janela_.Escondida()) janela_.RetornaForms();
    Command1_Click();
}

void Form8::Conectar(bool retorno) {
    auto& G = f_.ctx.Game;
    auto& j1 = f_.ctx.Jogador[1];
    auto& pedidos = servico_.pedidos();
    const auto& laco = servico_.laco;
    if (!retorno) {
        G.valendo = false;
        status("Verificando atualizações");
        janela_.Ocupado(true);
        Command1.Habilitado = false;
        const std::string atualizacao = GetUpdate ? GetUpdate() : std::string();
        TemInternet = ligacao_.TestaInternet(300);
        janela_.Ocupado(false);
        Command1.Habilitado = true;
        if (Saiu()) return;
        TrataAtualizacao(atualizacao);
        if (Saiu()) return;

        status("Autenticando...");
        if (servico_.Bloqueado(true)) {
            ParalizaTela();
            Descarrega();
            return;
        }
        if (Saiu()) return;

        if (f_.SenhaGrupo.empty() && !j1.Visitante) {
            const auto l = servico_.Login(j1.Nome, Senha, LeMarcado(f_.registro(), "Check1"));
            if (Saiu()) return;
            if (l == ServicoOnline::ResultadoLogin::SemResposta) {
                status(SemConexao);
                ParalizaTela();
                return;
            }
            if (l == ServicoOnline::ResultadoLogin::Recusado) {
                ParalizaTela();
                janela_.Mensagem("Nick ou senha incorretos.\r\rPor favor informe o Nick e senha "
                                 "novamente ou cadastre um novo nick e senha");
                ApagadoCombo(f_.registro(), j1.Nome);
                Descarrega();
                return;
            }
        } else {
            j1.Pontos = 1000;
            j1.ID = "0";
        }

        status("Conectando...");
        if (Aguarda(laco.Agora() + 0.3) == Fim::Saiu) return;
        const std::string resposta = pedidos.Parametros(AcaoParametros, j1.Nome);
        if (Saiu()) return;
        status("Autenticando");
        if (Aguarda(laco.Agora() + 0.5) == Fim::Saiu) return;
        const ParametrosSessao p = LeParametros(resposta);
        if (!p.valido) {
            status(SemConexao);
            ParalizaTela();
            return;
        }
        if (p.notifica) {
            if (p.impede || !JaNotificado) {
                janela_.Mensagem(p.aviso);
                JaNotificado = true;
            }
            if (p.impede) {
                ligacao_.FechaSockets(0);
                Descarrega();
                return;
            }
        }
        auto& reg = f_.registro();
        GravaOpcao(reg, "PortaDefault", std::to_string(p.porta > 0 ? p.porta : PortaPadrao(reg)));
        Porta = PortaAtual(reg);
        G.TempoLimite = p.tempoLimite;
        TempoEspera = p.tempoEspera;

        status("OK");
        if (Aguarda(laco.Agora() + 0.5) == Fim::Saiu) return;
        ligacao_.CarregaWS(1);
        ligacao_.CarregaWS(2);
        status("Conectando ao servidor...");
        const EnderecoRelay relay = LeServidor(pedidos.Servidor());
        if (Saiu()) return;
        if (!relay.valido) {
            TentandoServidor = false;
            janela_.Mensagem(Erro23);
            FechamentoDeErro();
            return;
        }
        NoServidor = false;
        TentandoServidor = true;
        ligacao_.FechaWS(2);
        ligacao_.Conecta(relay.host, relay.porta);
        status("Conectando ao servidor.....");
        const double inicio = std::floor(laco.Agora());
        while (!NoServidor) {
            if (Saiu()) return;
            if (laco.Agora() >= inicio + 8) {
                TentandoServidor = false;
                janela_.Mensagem(Erro21);
                FechamentoDeErro();
                return;
            }
            laco.Bomba();
        }
        status("\rCONECTADO AO SERVIDOR  |  Aguardando outro jogador entrar...\r\rPor favor "
               "aguarde...");
        LbComunica.Texto = "O jogo iniciará automaticamente quando outro jogador entrar";
        Timer1.start();
        Muda();
        return;
    }

    // ---------------------------------------------------------------- the direct way
    for (;;) {
        if (Saiu()) return;
        f_.ConexaoAberta = false;
        if (!f_.SenhaGrupo.empty()) j1.Visitante = true;
        const std::string resposta = pedidos.Lista(PedidoDaLista());
        if (Saiu()) return;
        if (f_.ConexaoAberta) break;
        const TipoLista tipo = ClassificaLista(resposta);
        if (tipo == TipoLista::FaltamDados) continue;
        if (tipo == TipoLista::Vazia) return;
        if (LbComunica.Texto == "Porta: OK") {
            status("Por favor aguarde um momento...");
            const Fim fim = Aguarda(laco.Agora() + 10);
            if (fim == Fim::Saiu) return;
            if (fim == Fim::Juntou) break;
        }
        BaseEspera = laco.Agora() - 4;
        if (tipo == TipoLista::Erro) {
            status("Erro 22: Não foi possível conectar ao servidor");
            janela_.Mensagem(Erro22);
            FechamentoDeErro();
            return;
        }
        List1 = CarregaIpstoList(resposta, ligacao_.EnderecoLocal(),
                                 [this] { return SairLobby || Acao == "Deletar"; });
        if (List1.empty()) {
            if (!f_.SenhaGrupo.empty()) {
                status("Seus amigos não estão on-line ou já estão jogando.\rConvide um amigo e "
                       "aguarde ele entrar.\r\rSe peferir tente novamente mais tarde");
                Label7.Visivel = true;
                Muda();
            } else {
                status("Aguarde a conexão com outro jogador ser estabelecida");
            }
            BaseEspera = laco.Agora();
            const Fim fim = Aguarda(BaseEspera + EsperaLista());
            if (fim == Fim::Saiu) return;
            if (fim == Fim::Juntou) break;
            if (++Rodadas >= 7) {
                Acao = "Atualizar";
                Rodadas = 0;
            } else {
                Acao.clear();
            }
            continue;
        }
        bool juntou = false;
        for (const std::string& linha : List1) {
            if (SairLobby) return;
            ligacao_.CarregaWS(2);
            const std::string endereco = Pedaco(linha, ":", 1);
            const std::string portaTexto = Pedaco(linha, ":", 2);
            const int porta = portaTexto.empty() ? PortaPadrao(f_.registro())
                                                 : static_cast<int>(Numero(portaTexto, 0, 65535));
            status("Conectar a: " + Mascara(endereco));
            ligacao_.Conecta(endereco, porta);
            if (Contem(linha, "192.168") || !f_.NaRede) {
                const double inicio = std::floor(laco.Agora());
                Fim fim = Fim::Tempo;
                for (;;) {
                    if (Saiu() || SairLobby) {
                        fim = Fim::Saiu;
                        break;
                    }
                    if (f_.ConexaoAberta) {
                        fim = Fim::Juntou;
                        break;
                    }
                    if (std::floor(laco.Agora()) >= inicio + 5) break;
                    laco.Bomba();
                }
                if (fim == Fim::Saiu) return;
                if (fim == Fim::Juntou) {
                    juntou = true;
                    break;
                }
                status("Não foi possivel conectar a " + Mascara(endereco));
                if (Aguarda(laco.Agora() + 0.5, true) == Fim::Saiu) return;
            } else {
                laco.Bomba();
            }
            if (Saiu()) return;
            if (f_.ConexaoAberta) {
                juntou = true;
                break;
            }
        }
        if (juntou) break;
        if (f_.NaRede)
            status("Aguarde um momento...");
        else if (LbComunica.Texto == "Porta: OK")
            status("Aguarde a conexão com outro jogador ser estabelecida");
        else
            status("Aguarde um momento...");
        BaseEspera = laco.Agora();
        const Fim fim = Aguarda(BaseEspera + EsperaLista());
        if (fim == Fim::Saiu) return;
        if (fim == Fim::Juntou) break;
        if (++Rodadas >= 5) {
            Acao = "Atualizar";
            Rodadas = 0;
        } else {
            Acao.clear();
        }
    }
    // Joined: the handshake has 20 seconds before the direct way starts again
    janela_.BandejaAviso("Conectado.\r\rEstabelecendo parametros", "Velmora Ace");
    Timer2.stop();
    Timer2.setInterval(20000);
    Timer2.start();
}

void Form8::DeixaNaEspera(int p) {
    if (f_.ConexaoAberta) return;
    if (p > 0) Porta = p;
    int codigo = 0;
    std::string ajuda;
    const std::string texto = porta_.StatusPorta(
        std::to_string(Porta), codigo, [this] { ligacao_.FechaSockets(0); }, ajuda);
    Label2.Texto = ajuda;
    Label2.Visivel = !ajuda.empty();
    LbComunica.Texto = "Porta: " + texto;
    if (texto == "OK") {
        PortaConexaoOK = 1;
        PortaConexao = Porta;
    }
    try {
        porta_.WsTeste.CloseSck();
    } catch (...) {
    }
    servico_.laco.Espera(0.01);
    ligacao_.CarregaWS(1);
    if (ligacao_.Escuta(Porta)) {
        Porta = ligacao_.PortaEscuta();
        GravaOpcao(f_.registro(), "PortaDefault", std::to_string(Porta));
        if (LbComunica.Texto == "Porta: OK")
            GravaOpcao(f_.registro(), "mpt", std::to_string(Porta));
    } else {
        LbComunica.Texto = "Não foi possível abrir a porta " + std::to_string(Porta);
    }
    Muda();
}

// ---------------------------------------------------------------- controls' events

void Form8::Command1_Click() {
    auto& G = f_.ctx.Game;
    if (G.Conectado || Descarregado) return;
    CancelouLobby = true;
    ligacao_.FechaWS(1);
    ligacao_.FechaWS(2);
    ligacao_.FechaSockets(2);
    Timer1.stop();
    Timer2.stop();
    Timer3.stop();
    Label7.Visivel = false;
    SairLobby = true;
    Acao = "Deletar";
    janela_.TocaSom("Click.wav");
    if (janela_.Escondida()) janela_.CentraJanelas();
    G.Conectado = false;
    f_.ConexaoAberta = false;
    auto& reg = f_.registro();
    GravaOpcao(
        reg, "Numerodesistencias",
        std::to_string(Numero(LeOpcao(reg, "Numerodesistencias", "0"), 0, INT32_MAX - 1) + 1));
    Command1.Habilitado = false;
    Label6.Visivel = false;
    Label4.Texto = "Cancelando \r\rAguarde um momento...";
    Muda();
    Descarrega();
}

void Form8::Label2_Click() {
    Command1_Click();
    janela_.AbrePagina(servico_.pedidos().PaginaRoteador());
}

void Form8::Label7_Click() {
    PedeVisitante = true;
    Command1_Click();
}

void Form8::Label6_Click() {
    janela_.BandejaAdiciona(f_.Programa.TituloApp);
    janela_.EscondeJanelas();
    janela_.BandejaAviso("Quando estabelecer uma conexão a tela do Velmora Ace será restaurada "
                         "automaticamente",
                         "Velmora Ace");
}

void Form8::Timer1_Timer() {
    if (f_.ctx.Game.Conectado || !SairLobby) return;
    Timer1.stop();
    ligacao_.FechaSockets(0);
    janela_.BandejaRemove();
    janela_.RetornaForms();
    Descarrega();
}

void Form8::Timer2_Timer() {
    Timer2.stop();
    // The direct way dials peers: a connect on WS(2) must take the plain branch
    TentandoServidor = false;
    NoServidor = false;
    if (!f_.ctx.Game.Conectado) {
        ligacao_.FechaSockets(0);
        DeixaNaEspera(0);
    }
    Conectar(true);
}

void Form8::Timer3_Timer() {
    PosicaoImagem += PassoImagem;
    if (PosicaoImagem <= 0 || PosicaoImagem >= LarguraFaixa) PassoImagem = -PassoImagem;
    Label8.Texto = std::to_string(ligacao_.PortaEscuta());
}

void Form8::Timer5_Timer() {
    if (!f_.ctx.Game.Conectado) return;
    Timer2.stop();
    Timer1.stop();
    Timer5.stop();
    Descarrega();
}

// ---------------------------------------------------------------- the peer link's events

void Form8::ConectouServidor() {
    NoServidor = true;
    ligacao_.FechaWS(1);
}

void Form8::ConexaoFeita() {
    f_.ConexaoAberta = true;
    Label4.Texto = "Conectado.\r\rEstabelecento parametros";
    BaseEspera = servico_.laco.Agora() - 5;
    Muda();
}

void Form8::FechouServidor() {
    if (NoServidor && !f_.ctx.Game.Conectado) SairLobby = true;
}

void Form8::PeerBloqueado(const std::string& nick, long idt) {
    ligacao_.FechaSockets(0);
    Label4.Texto = (idt >= 1 ? std::to_string(idt) + " : " : std::string()) + nick +
                   " está na sua lista de bloqueio.";
    Muda();
    servico_.laco.Espera(1);
    Timer2.stop();
    Timer2.setInterval(2000);
    Timer2.start();
}

void Form8::ErroEscuta() {
    if (Form8Aberto) DeixaNaEspera(0);
}

void Form8::EstaConectado() {
    janela_.BandejaRemove();
    // The windows waited below the screen: the board comes back for the game
    if (janela_.Escondida()) janela_.CentraJanelas();
    Timer5.start();
}

} // namespace velmora
