#include "service/online.h"

#include "service/cadastro.h"
#include "service/endereco.h"
#include "service/respostas.h"
#include "store/configuracao.h"

#include <QCryptographicHash>
#include <QDate>
#include <QLocale>
#include <QThread>

#include <cmath>
#include <fstream>
#include <random>

namespace velmora {

std::string IDCPTLocal(clsRegistryAccess& reg) {
    std::string id = LeOpcao(reg, "IDCPT", "");
    if (!id.empty()) return id;
    std::string semente;
    if (std::ifstream f("/etc/machine-id"); f) std::getline(f, semente);
    if (semente.empty()) {
        std::random_device r;
        semente = std::to_string(r()) + std::to_string(r());
    }
    // A digest of the machine's id, so that the service never sees the id itself
    const QByteArray h = QCryptographicHash::hash(QByteArray::fromStdString(semente + "velmora"),
                                                  QCryptographicHash::Sha256);
    id = h.toHex().left(16).toUpper().toStdString();
    GravaOpcao(reg, "IDCPT", id);
    return id;
}

std::string FormataPontos(long pontos) {
    if (pontos == 0) return "(0)";
    std::string digitos = std::to_string(pontos < 0 ? -static_cast<long long>(pontos) : pontos);
    std::string agrupado;
    const int n = static_cast<int>(digitos.size());
    for (int i = 0; i < n; ++i) {
        if (i > 0 && (n - i) % 3 == 0) agrupado.push_back('.');
        agrupado.push_back(digitos[static_cast<std::size_t>(i)]);
    }
    return "(" + std::string(pontos < 0 ? "-" : "") + agrupado + ")";
}

ServicoOnline::ServicoOnline(Form1& f, Buscas& buscas)
    : f_(f), buscas_(buscas),
      pedidos_(buscas, EnderecoServico(f.registro()), EnderecoTestePorta(f.registro())) {
    laco.relogio = [&f] { return f.plataforma.Decorrido(); };
    laco.bomba = [&f] {
        f.plataforma.ProcessaEventos();
        QThread::msleep(1);
    };
    Hoje = [] {
        return QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat).toStdString();
    };
}

void ServicoOnline::Log(const std::string& texto) {
    f_.diario().LogDebug(texto);
}

void ServicoOnline::Mensagem(const std::string& texto) {
    f_.tela().Mensagem(texto, f_.Programa.TituloApp);
}

// ---------------------------------------------------------------- points

bool ServicoOnline::AtribuiVitoria(int vencedor, bool terminou) {
    auto& G = f_.ctx.Game;
    auto& J = f_.ctx.Jogador;
    Log(":::: AtribuiVitoria (" + std::to_string(vencedor) + ")");
    if (f_.NaRede) return false;
    if (!f_.SenhaGrupo.empty() || G.Modo != 4) return false;
    for (int i = 1; i <= 2; ++i)
        if (J[static_cast<std::size_t>(i)].Visitante) J[static_cast<std::size_t>(i)].ID = "0";
    const int outro = vencedor == 1 ? 2 : 1;
    if (vencedor != 1 && vencedor != 2) return false;
    if (J[static_cast<std::size_t>(vencedor)].Visitante &&
        J[static_cast<std::size_t>(outro)].Visitante)
        return false;
    const long soma = static_cast<long>(J[1].Vitorias) + J[2].Vitorias;
    const std::string& idcpt = J[2].IDCPT;
    if (!idcpt.empty()) {
        const std::string chave = "J_" + Hoje() + "_" + idcpt;
        if (LeConfig(f_.registro(), chave, "", "St") == "S") return false;
        if (soma > 5) {
            GravaConfig(f_.registro(), chave, "S", "St");
            return false;
        }
    } else if (soma > 5) {
        return false;
    }
    if (vencedor != 1) return false;
    const auto agora = static_cast<std::int64_t>(std::floor(laco.Agora()));
    if (MarcaPontos > 0 && agora - MarcaPontos < 120) return false;
    MarcaPontos = agora;

    const auto& w = J[static_cast<std::size_t>(vencedor)];
    const auto& o = J[static_cast<std::size_t>(outro)];
    const std::string resposta =
        pedidos_.Atribui(w.ID, o.ID, terminou, Numero(w.IDT, INT32_MIN, INT32_MAX));
    Log("::AtribuiVitoria: getc = " + resposta);
    auto& LbNV = f_.modelo.LbNV;
    LbNV[1].Texto.clear();
    LbNV[2].Texto.clear();
    const RespostaAtribui a = LeAtribui(resposta);
    if (!a.ok) {
        f_.rede().EnviaPeer("GETPT: : :");
        Log(" -> GETPT: : :   (timeout)");
        f_.ctx.painel.Label27.Texto = "Servidor inacessível no momento";
        f_.ctx.painel.Label27.Visivel = true;
        f_.tela().Redesenha();
        laco.Espera(1);
        return true;
    }
    const bool modo4 = G.Modo == 4;
    if (!J[1].Visitante && a.temPT1) {
        LbNV[1].Texto = FormataPontos(a.pt1);
        LbNV[1].Visivel = modo4;
    }
    if (!J[2].Visitante && a.temPT2) {
        LbNV[2].Texto = FormataPontos(a.pt2);
        LbNV[2].Visivel = modo4 && !J[1].Visitante;
    }
    const std::string getpt = "GETPT:" + std::to_string(a.pt1) + ":" + std::to_string(a.pt2);
    f_.rede().EnviaPeer(getpt);
    Log(" -> " + getpt);
    f_.AtualizaPlacar();
    return true;
}

void ServicoOnline::RecebeGETPT(const std::string& mensagem) {
    const PontosRecebidos p = LeGETPT(mensagem);
    auto& J = f_.ctx.Jogador;
    auto& LbNV = f_.modelo.LbNV;
    const bool modo4 = f_.ctx.Game.Modo == 4;
    if (!J[2].Visitante) {
        LbNV[2].Texto = FormataPontos(p.doPeer);
        LbNV[2].Visivel = modo4 && !J[1].Visitante;
    }
    if (!J[1].Visitante) {
        LbNV[1].Texto = FormataPontos(p.meus);
        LbNV[1].Visivel = modo4;
    }
    f_.tela().Redesenha();
}

bool ServicoOnline::Bloqueado(bool mostrar) {
    const RespostaBloqueio b = LeBloqueio(pedidos_.Bloqueio());
    switch (b.tipo) {
    case RespostaBloqueio::SemResposta:
        Mensagem("Não foi possível acessar o servidor.\r\rVerifique se está conectado a internet e "
                 "tente novamente");
        return true;
    case RespostaBloqueio::Bloqueado:
        if (mostrar) Mensagem(b.texto.empty() ? "Acesso temporariamente bloqueado." : b.texto);
        return true;
    case RespostaBloqueio::Livre:
        break;
    }
    return false;
}

void ServicoOnline::Jogando_Online(bool noServidor) {
    if (noServidor) return;
    const auto& J = f_.ctx.Jogador;
    PedidoDeletar p;
    p.visitante = J[1].Visitante;
    p.nick1 = J[1].Nome;
    p.nick2 = J[2].Nome;
    p.cliente = f_.ctx.Tipo_c == "Cliente";
    p.mac = J[2].IDCPT;
    Log(" :: 'Jogando_Online' ==> 'Deletar_Conectado' - " + Limpa(pedidos_.Deletar(p)));
}

void ServicoOnline::ClicaNome(int i) {
    const auto& G = f_.ctx.Game;
    if (!G.Conectado || G.Modo != 4 || !f_.SenhaGrupo.empty() || !AbrePagina) return;
    if (i == 1)
        AbrePagina(pedidos_.PaginaPerfilProprio(SenhaNick, f_.ctx.Jogador[1].ID));
    else if (i == 2)
        AbrePagina(pedidos_.PaginaPerfil(f_.ctx.Jogador[2].ID));
}

void ServicoOnline::AbreRanking() {
    if (AbrePagina) AbrePagina(pedidos_.PaginaRanking());
}

// ---------------------------------------------------------------- login

ServicoOnline::ResultadoLogin ServicoOnline::Login(const std::string& nick,
                                                   const std::string& senha, bool guardaSenha) {
    auto& reg = f_.registro();
    const bool wb = LeOpcao(reg, "WB", "") == "TRUE";
    if (wb) GravaOpcao(reg, "WB", "");
    const std::string n = Limpa(nick), s = Limpa(senha);
    const RespostaLogin l = LeLogin(pedidos_.Entrar(n, s, wb));
    if (l.tipo == RespostaLogin::SemResposta) return ResultadoLogin::SemResposta;
    if (!l.mensagem.empty()) Mensagem(l.mensagem);
    if (l.tipo == RespostaLogin::Recusado) return ResultadoLogin::Recusado;
    auto& j1 = f_.ctx.Jogador[1];
    j1.Pontos = l.pontos;
    j1.ID = l.id;
    f_.modelo.LbNome[1].Texto = j1.Nome;
    f_.modelo.LbNV[1].Texto = FormataPontos(l.pontos);
    f_.modelo.LbNV[1].Visivel = f_.ctx.Game.Modo == 4;
    Log("Meu ID: " + l.id);
    SenhaNick = senha;
    GravaCombo(reg, n, senha, guardaSenha);
    f_.tela().Redesenha();
    return ResultadoLogin::Aceito;
}

} // namespace velmora
