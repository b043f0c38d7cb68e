#include "service/pedidos.h"

#include "core/utilidades.h"
#include "service/endereco.h"
#include "service/respostas.h"

#include <utility>

namespace velmora {

namespace {

const std::string Listar = "/html/listar_velmora.php";
const std::string CaminhoCadastro = "/html/cadastro.php";

bool CampoIgual(const std::string& r, const char* sep, const char* marca) {
    return Pedaco(Limpa(r), sep, 1) == marca;
}

} // namespace

std::string EspacosNaUrl(const std::string& texto) {
    return Troca(texto, " ", "%20");
}

Pedidos::Pedidos(Buscas& buscas, std::string endereco, std::string enderecoTeste)
    : buscas_(buscas), endereco_(std::move(endereco)), enderecoTeste_(std::move(enderecoTeste)) {}

// ---------------------------------------------------------------- URLs

std::string Pedidos::UrlLista(const PedidoLista& p) const {
    std::string u = endereco_ + Listar + "?NomeUsuario=" + EspacosNaUrl(p.nick) +
                    "&prog=Velmora%20Ace&Acao=" + p.acao +
                    "&nvg=&versao=" + std::string(VersaoServico) + "&p=" + std::to_string(p.porta) +
                    "&grupo=" + p.grupo + "&compatibilidade=17";
    if (p.portaOK) u += "&pab=s";
    if (p.visitante) u += "&v=S";
    if (p.naRede) u += "&prt=" + p.enderecoLocal;
    if (!p.idcptRemoto.empty() && p.grupo.empty() && !p.naRede)
        u += "&shd1=" + p.idcpt + "&shd2=" + p.idcptRemoto;
    return u;
}

std::string Pedidos::UrlParametros(const std::string& acao, const std::string& nick) const {
    return endereco_ + Listar + "?prog=Velmora%20Ace&Acao=" + acao +
           "&versao=" + std::string(VersaoServico) + "&nick=" + EspacosNaUrl(nick);
}

std::string Pedidos::UrlServidor() const {
    return endereco_ + Listar +
           "?prog=Velmora%20Chief&Acao=Server&versao=" + std::string(VersaoServico);
}

std::string Pedidos::UrlDeletar(const PedidoDeletar& p) const {
    return endereco_ + Listar + "?v=" + (p.visitante ? "S" : "N") +
           "&Nick1=" + EspacosNaUrl(p.nick1) + "&Nick2=" + EspacosNaUrl(p.nick2) +
           "&prog=Velmora%20Ace&Acao=Deletar_Conectado&wPlayer=" + (p.cliente ? "S" : "") +
           "&mac=" + p.mac;
}

std::string Pedidos::UrlEntrar(const std::string& nick, const std::string& senha, bool wb) const {
    return endereco_ + CaminhoCadastro + "?tipo=Entrar&nick=" + EspacosNaUrl(nick) +
           "&senha=" + senha + "&programa=Velmora" + (wb ? "&wb=t" : "");
}

std::string Pedidos::UrlCadastro(const std::string& nick, const std::string& senha) const {
    return endereco_ + CaminhoCadastro + "?tipo=Cadastro&nick=" + EspacosNaUrl(nick) +
           "&senha=" + senha + "&programa=Velmora";
}

std::string Pedidos::UrlPodeCadastrar() const {
    return endereco_ + CaminhoCadastro + "?programa=Velmora%20Ace&tipo=pc";
}

std::string Pedidos::UrlBloqueio() const {
    return endereco_ + CaminhoCadastro + "?tipo=ta&programa=Velmora";
}

std::string Pedidos::UrlAtribui(const std::string& id1, const std::string& id2, bool terminou,
                                std::int64_t idt) const {
    return endereco_ + CaminhoCadastro + "?programa=Velmora&id1=" + id1 + "&id2=" + id2 +
           "&tipo=AtribuiB&Olp=0&Ter=" + (terminou ? "T" : "F") + "&idt=" + std::to_string(idt);
}

std::string Pedidos::UrlTestePorta(const std::string& porta) const {
    return enderecoTeste_ + "/testaporta/nvping.php?porta=" + porta;
}

std::string Pedidos::UrlMeuIP() const {
    return endereco_ + "/html/getip.php";
}

// ---------------------------------------------------------------- fetches

std::string Pedidos::Lista(const PedidoLista& p) {
    return Limpa(buscas_.Dl(Instancia::DL1, UrlLista(p)));
}

std::string Pedidos::Parametros(const std::string& acao, const std::string& nick) {
    const std::string url = UrlParametros(acao, nick);
    std::string r = buscas_.GetConteudo(url, 4);
    if (!CampoIgual(r, "**", "R")) r = buscas_.Dl(Instancia::DL1, url);
    return r;
}

std::string Pedidos::Servidor() {
    const std::string url = UrlServidor();
    std::string r = buscas_.Dl(Instancia::DL2, url, 8);
    if (!CampoIgual(r, "#", "IPSERVER")) r = buscas_.GetConteudo(url, 8);
    return r;
}

std::string Pedidos::Deletar(const PedidoDeletar& p) {
    const std::string url = UrlDeletar(p);
    std::string r = buscas_.Dl(Instancia::DL1, url, 1);
    if (!Contem(r, "#OK#")) r = buscas_.GetConteudo(url, 1);
    return r;
}

std::string Pedidos::Entrar(const std::string& nick, const std::string& senha, bool wb) {
    const std::string url = UrlEntrar(nick, senha, wb);
    std::string r = buscas_.GetConteudo(url, 4);
    if (!CampoIgual(r, "#", "Resposta:")) r = buscas_.Dl(Instancia::DL1, url);
    return r;
}

std::string Pedidos::Cadastro(const std::string& nick, const std::string& senha) {
    const std::string url = UrlCadastro(nick, senha);
    std::string r = buscas_.Dl(Instancia::DL1, url);
    if (!CampoIgual(r, "#", "Resposta:")) r = buscas_.GetConteudo(url, 4);
    return r;
}

std::string Pedidos::PodeCadastrar() {
    const std::string url = UrlPodeCadastrar();
    std::string r = buscas_.Dl(Instancia::DL3, url, 4);
    if (!Contem(r, "RESP")) r = buscas_.GetConteudo(url, 4);
    return r;
}

std::string Pedidos::Bloqueio() {
    const std::string url = UrlBloqueio();
    std::string r = buscas_.Dl(Instancia::DL3, url);
    if (!Contem(r, "OK") && !Contem(r, "BLOQUEADO")) r = buscas_.GetConteudo(url, 4);
    return r;
}

std::string Pedidos::Atribui(const std::string& id1, const std::string& id2, bool terminou,
                             std::int64_t idt) {
    const std::string url = UrlAtribui(id1, id2, terminou, idt);
    std::string r = buscas_.Dl(Instancia::DL2, url, 12);
    if (!CampoIgual(r, "#", "OK")) r = buscas_.GetConteudo(url, 12);
    return r;
}

std::string Pedidos::TestePorta(const std::string& porta, std::int32_t tempo) {
    return buscas_.Dl(Instancia::DL3, UrlTestePorta(porta), tempo);
}

std::string Pedidos::MeuIP() {
    return buscas_.Dl(Instancia::DL1, UrlMeuIP(), 4);
}

// ---------------------------------------------------------------- pages

std::string Pedidos::PaginaRanking() const {
    return endereco_ + "/html/ranking_velmora.php";
}
std::string Pedidos::PaginaPerfilProprio(const std::string& senha, const std::string& id) const {
    return endereco_ + "/html/perfil.php?prog=velmora&senha=" + senha + "&id=" + id;
}
std::string Pedidos::PaginaPerfil(const std::string& id) const {
    return endereco_ + "/html/perfil.php?prog=velmora&id=" + id;
}
std::string Pedidos::PaginaPerfilNick(const std::string& nick, const std::string& senha) const {
    return endereco_ + "/html/perfil.php?prog=velmora&s=" + senha + "&n=" + EspacosNaUrl(nick);
}
std::string Pedidos::PaginaRoteador() const {
    return endereco_ + "/html/roteador.html";
}
std::string Pedidos::PaginaContato() const {
    return endereco_ + "/html/faleconosco.html";
}
std::string Pedidos::PaginaDownload() const {
    return endereco_ + "/html/download.php?prog=velmace";
}

} // namespace velmora
