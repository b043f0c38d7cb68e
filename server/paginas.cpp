// The pages the game opens in the browser: ranking, profiles, router help, contact and
// download. Plain HTML5 in Portuguese, one small style sheet, readable on a phone and on
// a desktop. Every stored text goes through EscapaHtml.
#include "server/senha.h"
#include "server/servico.h"

#include <ctime>

namespace velmora::servidor {

namespace {

constexpr std::string_view kEstilo = R"(
body{font-family:system-ui,-apple-system,"Segoe UI",Roboto,sans-serif;margin:0;background:#f4efe6;color:#2b2118}
header{background:#5b3a1e;color:#fff;padding:14px 18px}
header a{color:#ffe6b3;text-decoration:none;font-weight:600}
header h1{margin:0;font-size:1.4em}
nav{margin-top:6px;font-size:.95em}
nav a{margin-right:14px;display:inline-block;white-space:nowrap}
.medalha{display:inline-block;width:1.3em;height:1.3em;line-height:1.3em;border-radius:50%;background:#d4a017;color:#fff;text-align:center;font-size:.8em;font-weight:700;vertical-align:middle}
main{max-width:860px;margin:0 auto;padding:16px}
table{width:100%;border-collapse:collapse;background:#fff;box-shadow:0 1px 3px rgba(0,0,0,.15)}
th,td{padding:8px 10px;text-align:left;border-bottom:1px solid #eadfcd}
th{background:#eadfcd}
td.n,th.n{text-align:right}
tr:nth-child(even) td{background:#fbf8f2}
.estrelas{color:#c98a00;letter-spacing:1px;white-space:nowrap}
.cartao{background:#fff;padding:14px 16px;margin:12px 0;box-shadow:0 1px 3px rgba(0,0,0,.15)}
.aviso{background:#fff3cd;border-left:4px solid #c98a00;padding:10px 12px}
form input{padding:8px;margin:4px 0;font-size:1em;max-width:100%}
form button{padding:8px 16px;font-size:1em;background:#5b3a1e;color:#fff;border:0}
footer{text-align:center;color:#7a6a58;font-size:.85em;padding:20px}
@media (max-width:560px){th.op,td.op{display:none}header h1{font-size:1.15em}main{padding:10px}th,td{padding:7px 5px}td{word-break:break-word}.estrelas{letter-spacing:0;font-size:.85em}}
)";

std::string Cabeca(const std::string& titulo) {
    return "<!DOCTYPE html>\n<html lang=\"pt-BR\"><head><meta charset=\"utf-8\">"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">"
           "<title>" +
           EscapaHtml(titulo) + " - Velmora Ace</title><style>" + std::string(kEstilo) +
           "</style></head><body><header><h1>Velmora Ace</h1><nav>"
           "<a href=\"/html/ranking_velmora.php\">Ranking</a>"
           "<a href=\"/html/perfil.php?prog=velmora\">Meu perfil</a>"
           "<a href=\"/html/roteador.html\">Roteador</a>"
           "<a href=\"/html/download.php?prog=velmace\">Download</a>"
           "<a href=\"/html/faleconosco.html\">Fale conosco</a></nav></header><main><h2>" +
           EscapaHtml(titulo) + "</h2>";
}

std::string Pe() {
    return "</main><footer>Velmora Ace - damas on-line</footer></body></html>\n";
}

// The stars and the medal, as the game shows them
std::string Nivel(std::int64_t pontos) {
    int estrelas = 0;
    for (const std::int64_t limite : {1500, 2000, 3000, 4000, 5000})
        if (pontos >= limite) ++estrelas;
    std::string s;
    for (int i = 0; i < estrelas; ++i) s += "★";
    if (pontos >= 10000) s += " <span class=\"medalha\" title=\"Medalha\">M</span>";
    return s.empty() ? "-" : s;
}

std::string Milhares(std::int64_t n) {
    const std::string d = std::to_string(n < 0 ? -n : n);
    std::string s;
    if (n < 0) s.push_back('-');
    for (std::size_t i = 0; i < d.size(); ++i) {
        if (i > 0 && (d.size() - i) % 3 == 0) s.push_back('.');
        s.push_back(d[i]);
    }
    return s;
}

std::string Data(std::int64_t t) {
    const std::time_t tt = static_cast<std::time_t>(t);
    std::tm tm{};
    gmtime_r(&tt, &tm);
    char b[32];
    std::strftime(b, sizeof b, "%d/%m/%Y %H:%M", &tm);
    return b;
}

std::int64_t Id(const std::string& s) {
    if (s.empty() || s.size() > 15) return 0;
    std::int64_t n = 0;
    for (const char c : s) {
        if (c < '0' || c > '9') return 0;
        n = n * 10 + (c - '0');
    }
    return n;
}

Resposta Html(std::string corpo, int status = 200) {
    Resposta r;
    r.status = status;
    r.tipo = "text/html; charset=utf-8";
    r.corpo = std::move(corpo);
    return r;
}

std::string FormularioPerfil() {
    return "<div class=\"cartao\"><form method=\"get\" action=\"/html/perfil.php\">"
           "<input type=\"hidden\" name=\"prog\" value=\"velmora\">"
           "<input type=\"hidden\" name=\"f\" value=\"1\">"
           "<label>Nick<br><input name=\"n\" maxlength=\"20\" "
           "autocomplete=\"username\"></label><br>"
           "<label>Senha<br><input name=\"s\" type=\"password\" maxlength=\"128\" "
           "autocomplete=\"current-password\"></label><br>"
           "<button type=\"submit\">Ver meu perfil</button></form></div>";
}

} // namespace

Resposta Servico::Pagina(const std::string& caminho, const Parametros& q,
                         const std::string& endereco) {
    if (caminho == "/" || caminho == "/index.html" || caminho == "/html/ranking_velmora.php") {
        const auto contas = a_.Ranking(100);
        std::string h = Cabeca("Ranking");
        if (contas.empty()) {
            h += "<p class=\"aviso\">Ainda não há jogadores no ranking.</p>";
        } else {
            h += "<table><thead><tr><th class=\"n\">#</th><th>Nick</th><th class=\"n\">Pontos</th>"
                 "<th>Nível</th><th class=\"n op\">Vitórias</th><th class=\"n op\">Derrotas</th>"
                 "</tr></thead><tbody>";
            int pos = 0;
            for (const auto& c : contas) {
                h += "<tr><td class=\"n\">" + std::to_string(++pos) +
                     "</td><td><a href=\"/html/perfil.php?prog=velmora&amp;id=" +
                     std::to_string(c.id) + "\">" + EscapaHtml(c.nick) +
                     "</a></td><td class=\"n\">" + Milhares(c.pontos) +
                     "</td><td class=\"estrelas\">" + Nivel(c.pontos) + "</td><td class=\"n op\">" +
                     std::to_string(c.vitorias) + "</td><td class=\"n op\">" +
                     std::to_string(c.derrotas) + "</td></tr>";
            }
            h += "</tbody></table>";
        }
        h += "<p>Todos começam com 1.000 pontos. As estrelas chegam aos 1.500, 2.000, 3.000, "
             "4.000 e 5.000 pontos, e a medalha aos 10.000.</p>";
        return Html(h + Pe());
    }
    if (caminho == "/html/perfil.php") {
        // Own page: id and password, or nick and password (from the page's own form, whose
        // browser sends blanks as "+")
        std::string senha = Valor(q, "senha");
        if (senha.empty()) senha = Valor(q, "s");
        std::string nick = Valor(q, "n");
        if (Valor(q, "f") == "1") {
            for (auto& c : senha) c = c == '+' ? ' ' : c;
            for (auto& c : nick) c = c == '+' ? ' ' : c;
        }
        nick = TextoLimpo(nick, 64);
        while (!nick.empty() && nick.back() == ' ') nick.pop_back();
        while (!nick.empty() && nick.front() == ' ') nick.erase(0, 1);
        std::optional<Conta> conta;
        if (const auto id = Id(Valor(q, "id")); id > 0)
            conta = a_.ContaPorId(id);
        else if (!nick.empty())
            conta = a_.ContaPorNick(nick);
        bool dono = false;
        std::string erro;
        if (!senha.empty() && (conta || !nick.empty())) {
            if (senha.size() > 128 || !limiteEntrar_.Permite(endereco, Relogio()))
                erro = "Muitas tentativas. Aguarde um minuto e tente de novo.";
            else if (ConfereSenha(senha, conta ? conta->hash : std::string{}, o_.custoSenha) &&
                     conta)
                dono = true;
            else
                erro = "Nick ou senha incorretos.";
        }
        if (!conta && nick.empty() && Valor(q, "id").empty()) {
            return Html(Cabeca("Meu perfil") + "<p>Informe o seu nick e a sua senha.</p>" +
                        FormularioPerfil() + Pe());
        }
        if (!conta || (!dono && Valor(q, "id").empty())) {
            return Html(Cabeca("Perfil") + "<p class=\"aviso\">" +
                            EscapaHtml(erro.empty() ? "Jogador não encontrado." : erro) + "</p>" +
                            FormularioPerfil() + Pe(),
                        conta ? 200 : 404);
        }
        std::string h = Cabeca(dono ? "Meu perfil" : "Perfil do jogador");
        if (!erro.empty()) h += "<p class=\"aviso\">" + EscapaHtml(erro) + "</p>";
        h += "<div class=\"cartao\"><h3>" + EscapaHtml(conta->nick) +
             "</h3><p>ID: " + std::to_string(conta->id) + "<br>Pontos: <b>" +
             Milhares(conta->pontos) + "</b> <span class=\"estrelas\">" + Nivel(conta->pontos) +
             "</span><br>Posição no ranking: " + std::to_string(a_.Posicao(conta->pontos)) +
             "º<br>Vitórias: " + std::to_string(conta->vitorias) +
             " &middot; Derrotas: " + std::to_string(conta->derrotas) + "</p>";
        if (dono)
            h += "<p>Cadastrado em " + Data(conta->criada) +
                 " (UTC).<br>Força estimada: " + std::to_string(static_cast<int>(conta->glicko.r)) +
                 " &plusmn; " + std::to_string(static_cast<int>(2 * conta->glicko.rd)) + "</p>";
        h += "</div>";
        const auto jogos = a_.UltimosJogos(conta->id, dono ? 30 : 10);
        if (!jogos.empty()) {
            h += "<h3>Últimos jogos</h3><table><thead><tr><th>Data (UTC)</th><th>Adversário</th>"
                 "<th>Resultado</th><th class=\"n\">Pontos</th></tr></thead><tbody>";
            for (const auto& j : jogos)
                h += "<tr><td>" + Data(j.instante) + "</td><td>" + EscapaHtml(j.adversario) +
                     "</td><td>" + (j.venceu ? "Vitória" : "Derrota") + "</td><td class=\"n\">" +
                     (j.pontos > 0 ? "+" : "") + std::to_string(j.pontos) + "</td></tr>";
            h += "</tbody></table>";
        }
        return Html(h + Pe());
    }
    if (caminho == "/html/roteador.html") {
        return Html(
            Cabeca("Como liberar a porta no roteador") +
            "<p>O Velmora Ace procura outro jogador de dois jeitos: pelo servidor (funciona "
            "sempre) "
            "e conectando direto de um computador ao outro. A conexão direta só funciona se pelo "
            "menos um dos dois puder ser alcançado pela internet na porta do jogo (a porta "
            "padrão é " +
            std::to_string(o_.portaPadrao) +
            ").</p>"
            "<div class=\"cartao\"><ol>"
            "<li>Descubra o endereço do seu computador na rede de casa: no Velmora Ace, em "
            "<b>Opções &rarr; Testar porta</b>, aparece &quot;Seu IP Local é ...&quot;.</li>"
            "<li>Abra a página do roteador no navegador (geralmente <b>192.168.0.1</b> ou "
            "<b>192.168.1.1</b>) e entre com o usuário e a senha do roteador.</li>"
            "<li>Procure a seção <b>Encaminhamento de portas</b> (também chamada <i>Port "
            "Forwarding</i>, <i>Virtual Server</i> ou <i>NAT</i>).</li>"
            "<li>Crie uma regra: porta externa e interna iguais à porta do jogo, protocolo "
            "<b>TCP</b>, e o endereço local do seu computador.</li>"
            "<li>Salve, e libere também o Velmora Ace no firewall ou antivírus do computador.</li>"
            "<li>Volte ao jogo e clique em <b>Testar Porta</b>: deve aparecer &quot;A porta está "
            "pronta&quot;.</li></ol></div>"
            "<p>Se não conseguir, não tem problema: o jogo continua usando o servidor para "
            "encontrar adversários, só pode demorar um pouco mais.</p>" +
            Pe());
    }
    if (caminho == "/html/faleconosco.html") {
        return Html(Cabeca("Fale conosco") +
                    "<p>Dúvidas, sugestões, problemas com o seu nick ou denúncias de jogadores: "
                    "escreva para</p><div class=\"cartao\"><a href=\"mailto:" +
                    EscapaHtml(o_.contato) + "\">" + EscapaHtml(o_.contato) +
                    "</a></div><p>Informe o seu nick e, se for o caso, o ID do outro jogador "
                    "(aparece ao passar o mouse sobre o nome dele no tabuleiro).</p>" +
                    Pe());
    }
    if (caminho == "/html/download.php") {
        const std::string link = o_.linkInstalador.empty() ? std::string{} : o_.linkInstalador;
        std::string h = Cabeca("Download") + "<p>Versão mais recente do Velmora Ace: <b>" +
                        EscapaHtml(o_.versaoNova) + "</b></p>";
        if (!link.empty())
            h += "<div class=\"cartao\"><a href=\"" + EscapaHtml(link) +
                 "\">Baixar o instalador</a></div>";
        else
            h += "<p class=\"aviso\">O instalador ainda não está disponível neste servidor.</p>";
        if (!o_.textoAtualizacao.empty()) {
            // ";" is a line break in the game's texts
            std::string t, linha;
            for (const char c : o_.textoAtualizacao + ";") {
                if (c != ';') {
                    linha += c;
                    continue;
                }
                t += (t.empty() ? "" : "<br>") + EscapaHtml(linha);
                linha.clear();
            }
            h += "<p>" + t + "</p>";
        }
        return Html(h + Pe());
    }
    return Html(Cabeca("Página não encontrada") + "<p>Esta página não existe.</p>" + Pe(), 404);
}

} // namespace velmora::servidor
