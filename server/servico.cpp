#include "server/servico.h"

#include "server/senha.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace velmora::servidor {

namespace {

// Bounds on what a request may carry
constexpr std::size_t kMaxNick = 20;  // characters of a new nick
constexpr std::size_t kMaxTexto = 64; // bytes of a nick or group as read
constexpr std::size_t kMinSenha = 4;
constexpr std::size_t kMaxSenha = 128;
constexpr std::int64_t kParValido = 3 * 3600; // a pair may report wins this long
constexpr std::int64_t kIntervaloPremio = 60; // seconds between two wins of one pair
constexpr std::int64_t kMaxPremiosPar = 5;    // wins of one pair that count
constexpr std::int64_t kLoginValido = 12 * 3600;

std::string Numero(std::int64_t n) {
    return std::to_string(n);
}

// A strict whole number, or -1
std::int64_t Inteiro(const std::string& s, std::int64_t maximo) {
    std::int64_t n = 0;
    const auto [p, ec] = std::from_chars(s.data(), s.data() + s.size(), n);
    if (s.empty() || ec != std::errc{} || p != s.data() + s.size() || n < 0 || n > maximo)
        return -1;
    return n;
}

std::string Minusculas(std::string s) {
    for (auto& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

// Removes every occurrence of a separator from a text that goes inside a reply
std::string SemSeparador(std::string s, std::string_view sep) {
    for (auto p = s.find(sep); p != std::string::npos; p = s.find(sep)) s.erase(p, sep.size());
    return s;
}

std::size_t Caracteres(std::string_view s) {
    return static_cast<std::size_t>(std::count_if(
        s.begin(), s.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

bool EnderecoSimples(std::string_view s) {
    return !s.empty() && s.size() <= 45 && std::all_of(s.begin(), s.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F') ||
               c == '.' || c == ':';
    });
}

std::string DataCurta(std::int64_t t) {
    const std::time_t tt = static_cast<std::time_t>(t);
    std::tm tm{};
    gmtime_r(&tt, &tm);
    char b[32];
    std::strftime(b, sizeof b, "%d/%m/%Y", &tm);
    return b;
}

} // namespace

Servico::Servico(const Opcoes& opcoes, Armazem& armazem)
    : Agora([] {
          return static_cast<std::int64_t>(std::chrono::duration_cast<std::chrono::seconds>(
                                               std::chrono::system_clock::now().time_since_epoch())
                                               .count());
      }),
      Relogio([] {
          return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
              .count();
      }),
      o_(opcoes), a_(armazem), portaWeb_(opcoes.porta), portaRelay_(opcoes.portaRelay),
      limiteEntrar_(10, 10.0 / 60), limiteCadastro_(5, 5.0 / 600), limitePremio_(20, 20.0 / 600),
      limiteSonda_(4, 4.0 / 60) {
    if (o_.semLimites) {
        limiteEntrar_.Desliga();
        limiteCadastro_.Desliga();
        limitePremio_.Desliga();
        limiteSonda_.Desliga();
    }
}

std::string Servico::Resumo(const Pedido& p) {
    const auto q = LeConsulta(p.consulta);
    std::string s = p.caminho.substr(0, 80);
    for (const char* chave : {"tipo", "Acao"}) {
        const auto v = Valor(q, chave);
        if (Tem(q, chave)) s += std::string(" ") + chave + "=" + TextoLimpo(v, 24);
    }
    return s;
}

std::int64_t Servico::ValidadeEspera() const {
    return std::max<std::int64_t>(90, 3 * static_cast<std::int64_t>(o_.intervaloLista));
}

std::optional<Banimento> Servico::Banido(const std::string& endereco, const std::string& nick) {
    const auto agora = Agora();
    if (auto b = a_.BanimentoAtivo("endereco", endereco, agora)) return b;
    if (!nick.empty())
        if (auto b = a_.BanimentoAtivo("nick", ChaveNick(nick), agora)) return b;
    return std::nullopt;
}

Resposta Servico::Responde(const Pedido& p, const std::string& endereco) {
    const auto q = LeConsulta(p.consulta);
    Resposta r;
    try {
        if (p.caminho == "/html/listar_velmora.php") {
            const auto acao = Valor(q, "Acao");
            if (acao == "Deletar_Conectado")
                r.corpo = SaiDaLista(q, endereco);
            else if (acao == "Server" || Valor(q, "prog") == "Velmora Chief")
                r.corpo = "IPSERVER#" + o_.HostPublico() + "#" + Numero(portaRelay_);
            else if (Tem(q, "NomeUsuario")) {
                // the group password goes out as typed, bounded by the key after it
                auto lista = q;
                Define(lista, "grupo", ValorAte(p.consulta, "grupo", "compatibilidade"));
                r.corpo = Lista(lista, endereco);
            } else if (Tem(q, "nick"))
                r.corpo = ParametrosSessao(q, endereco);
            else
                r.corpo = "Faltam dados";
        } else if (p.caminho == "/html/cadastro.php") {
            const auto tipo = Valor(q, "tipo");
            // nick and password as typed, reserved characters and all
            auto conta = q;
            if (tipo == "Entrar" || tipo == "Cadastro") {
                auto [nick, senha] = LeCredenciais(p.consulta);
                Define(conta, "nick", std::move(nick));
                Define(conta, "senha", std::move(senha));
            }
            if (tipo == "Entrar")
                r.corpo = Entrar(conta, endereco);
            else if (tipo == "Cadastro")
                r.corpo = Cadastrar(conta, endereco);
            else if (tipo == "pc")
                r.corpo = PodeCadastrar(endereco);
            else if (tipo == "ta")
                r.corpo = TesteBanimento(endereco);
            else if (tipo == "AtribuiB")
                r.corpo = AtribuiVitoria(q, endereco);
            else
                r.corpo = "Faltam dados";
        } else if (p.caminho == "/update.php") {
            r.corpo = Atualizacao();
        } else if (p.caminho == "/html/getip.php") {
            r.corpo = "Seu IP:" + endereco;
        } else {
            r = Pagina(p.caminho, q, endereco);
        }
    } catch (const std::exception&) {
        // The database failed: a reply without its marker, which the game reads as "the
        // service did not answer"; a new nick has a word of its own for it
        r = Resposta{};
        r.status = 500;
        r.corpo = p.caminho == "/html/cadastro.php" && Valor(q, "tipo") == "Cadastro"
                      ? "Resposta:#ERRO"
                      : "Erro no servidor";
    }
    return r;
}

std::string Servico::Lista(const Parametros& q, const std::string& endereco) {
    const std::string nick = TextoLimpo(Valor(q, "NomeUsuario"), kMaxTexto);
    if (nick.empty()) return "Faltam dados";
    if (Banido(endereco, nick)) return "**";
    const auto agora = Agora();
    EntradaEspera e;
    e.endereco = endereco;
    e.nick = nick;
    e.porta = std::max<std::int64_t>(0, Inteiro(Valor(q, "p"), 65535));
    e.grupo = Minusculas(TextoLimpo(Valor(q, "grupo"), kMaxTexto));
    e.visitante = Valor(q, "v") == "S";
    e.portaAberta = Valor(q, "pab") == "s";
    const auto local = Valor(q, "prt");
    if (EnderecoSimples(local)) e.local = local;
    e.idcpt = TextoLimpo(Valor(q, "shd1"), 128);
    e.ultimo = TextoLimpo(Valor(q, "shd2"), 128);
    e.idConta =
        e.visitante || !e.grupo.empty() ? 0 : a_.ContaLogada(nick, endereco, agora - kLoginValido);
    e.visto = agora;
    if (e.porta > 0) a_.PoeNaEspera(e);

    const auto entradas = a_.ListaEspera(e.grupo, agora - ValidadeEspera(), 60);
    std::vector<std::string> primeiro, depois;
    for (const auto& x : entradas) {
        if (x.endereco == endereco && ChaveNick(x.nick) == ChaveNick(nick)) continue;
        if (x.porta <= 0) continue;
        // Behind the same public address, the address inside the local network
        std::string alvo = x.endereco == endereco && !x.local.empty() ? x.local : x.endereco;
        // A copy on this machine is reached by the others at the name the service is
        // published under, when the operator gave one
        if (!o_.hostPublico.empty() && alvo.rfind("127.", 0) == 0) alvo = o_.hostPublico;
        auto linha = "!!" + alvo + ":" + Numero(x.porta);
        // The last peer of this computer goes to the end, so that a pair doesn't meet
        // again and again while others wait
        if (!e.ultimo.empty() && x.idcpt == e.ultimo)
            depois.push_back(std::move(linha));
        else
            primeiro.push_back(std::move(linha));
    }
    primeiro.insert(primeiro.end(), depois.begin(), depois.end());
    if (primeiro.size() > 30) primeiro.resize(30);
    std::string r = "**";
    for (const auto& l : primeiro) r += l + "**";
    return r;
}

std::string Servico::ParametrosSessao(const Parametros& q, const std::string& endereco) {
    const std::string nick = TextoLimpo(Valor(q, "nick"), kMaxTexto);
    const auto agora = Agora();
    std::string notifica = "SemAviso", aviso, segue = "true";
    if (const auto b = Banido(endereco, nick)) {
        notifica = "Notificame:";
        aviso = "Acesso bloqueado";
        if (b->ate > 0) aviso += " até " + DataCurta(b->ate);
        aviso += ".";
        if (!b->texto.empty()) aviso += ";" + b->texto;
        segue = "false";
    } else if (!o_.aviso.empty()) {
        notifica = "Notificame:";
        aviso = o_.aviso;
        segue = o_.avisoBloqueia ? "false" : "true";
    }
    const auto esperando = a_.ContaEspera(agora - ValidadeEspera());
    return "R**" + Numero(esperando) + "**" + notifica + "**" + SemSeparador(aviso, "*") + "**" +
           segue + "**porta:" + Numero(o_.portaPadrao) + "**tempo:" + Numero(o_.tempoJogada) +
           "**TA:" + Numero(o_.intervaloLista);
}

std::string Servico::SaiDaLista(const Parametros& q, const std::string& endereco) {
    const std::string nick1 = TextoLimpo(Valor(q, "Nick1"), kMaxTexto);
    const std::string nick2 = TextoLimpo(Valor(q, "Nick2"), kMaxTexto);
    if (nick1.empty()) return "#OK#";
    a_.TiraDaEspera(endereco, nick1);
    const auto agora = Agora();
    // Both copies were on the waiting list in the last hour: the service brought them
    // together, and a win between them may count
    const auto e1 = a_.VistoNaEspera(nick1, agora - 3600);
    const auto e2 = nick2.empty() ? std::nullopt : a_.VistoNaEspera(nick2, agora - 3600);
    if (e1 && e2 && e1->endereco == endereco && e1->grupo.empty() && e2->grupo.empty() &&
        !(e1->endereco == e2->endereco && ChaveNick(e1->nick) == ChaveNick(e2->nick))) {
        // Each copy reports the pair; one record is enough
        const auto ja = a_.ParRecente(e1->idConta, e2->idConta, agora - 120);
        if (!ja || ja->origem != "lista") {
            Par p;
            p.id1 = e1->idConta;
            p.id2 = e2->idConta;
            p.endereco1 = e1->endereco;
            p.endereco2 = e2->endereco;
            p.chave1 = p.id1 > 0 ? "c:" + Numero(p.id1) : "v:" + e1->endereco;
            p.chave2 = p.id2 > 0 ? "c:" + Numero(p.id2) : "v:" + e2->endereco;
            p.origem = "lista";
            p.criado = agora;
            a_.RegistraPar(p);
        }
    }
    return "#OK#";
}

void Servico::RegistraParRelay(const NickRelay& a, const std::string& enderecoA, const NickRelay& b,
                               const std::string& enderecoB) {
    // Groups of friends play for no points
    if (!a.grupo.empty()) return;
    Par p;
    p.id1 = a.visitante ? 0 : std::max<std::int64_t>(0, Inteiro(a.id, 1'000'000'000'000LL));
    p.id2 = b.visitante ? 0 : std::max<std::int64_t>(0, Inteiro(b.id, 1'000'000'000'000LL));
    const auto agora = Agora();
    // An id counts only for the address it logged in from
    if (p.id1 > 0 && a_.ContaLogada(a.nome, enderecoA, agora - kLoginValido) != p.id1) p.id1 = 0;
    if (p.id2 > 0 && a_.ContaLogada(b.nome, enderecoB, agora - kLoginValido) != p.id2) p.id2 = 0;
    if (p.id1 == 0 && p.id2 == 0) return;
    p.endereco1 = enderecoA;
    p.endereco2 = enderecoB;
    p.chave1 = p.id1 > 0 ? "c:" + Numero(p.id1) : "v:" + (a.idcpt.empty() ? enderecoA : a.idcpt);
    p.chave2 = p.id2 > 0 ? "c:" + Numero(p.id2) : "v:" + (b.idcpt.empty() ? enderecoB : b.idcpt);
    p.origem = "relay";
    p.criado = agora;
    try {
        a_.RegistraPar(p);
    } catch (const std::exception&) {
        // The pair then simply earns no points
    }
}

std::string Servico::Entrar(const Parametros& q, const std::string& endereco) {
    if (!limiteEntrar_.Permite(endereco, Relogio()))
        return "Muitas tentativas de entrada. Aguarde um minuto.";
    const std::string nick = TextoLimpo(Valor(q, "nick"), kMaxTexto);
    const std::string senha = Valor(q, "senha");
    if (nick.empty() || senha.size() > kMaxSenha) return "Resposta:#NOT";
    const auto conta = a_.ContaPorNick(nick);
    if (!ConfereSenha(senha, conta ? conta->hash : std::string{}, o_.custoSenha) || !conta)
        return "Resposta:#NOT";
    a_.RegistraLogin(conta->id, endereco, Agora());
    return "Resposta:#OK#" + Numero(conta->pontos) + "#" + Numero(conta->id);
}

std::string Servico::Cadastrar(const Parametros& q, const std::string& endereco) {
    if (!limiteCadastro_.Permite(endereco, Relogio()))
        return "Resposta:#Limite#Muitas tentativas de cadastro. Aguarde alguns minutos.";
    const std::string bruto = Valor(q, "nick");
    const bool controle = std::any_of(bruto.begin(), bruto.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
    });
    const std::string nick = TextoLimpo(bruto, kMaxTexto);
    const std::string senha = Valor(q, "senha");
    if (controle || nick.empty() || Caracteres(nick) > kMaxNick || nick.front() == ' ' ||
        nick.back() == ' ' || nick.find_first_of("#*") != std::string::npos)
        return "Resposta:#Invalido#Este nick não pode ser usado. Use até 20 letras ou números.";
    if (senha.size() < kMinSenha || senha.size() > kMaxSenha)
        return "Resposta:#Senha#A senha deve ter de 4 a 128 caracteres.";
    if (Banido(endereco, nick)) return "Resposta:#Bloqueado#Acesso temporariamente bloqueado.";
    const auto agora = Agora();
    if (a_.ContasCriadasDesde(endereco, agora - 86400) >= o_.limiteCadastros)
        return "Resposta:#Limite#Este computador já criou o número máximo de nicks por hoje.";
    if (a_.ContaPorNick(nick)) return "Resposta:#Jatem";
    const auto hash = HashSenha(senha, o_.custoSenha);
    if (hash.empty()) return "Resposta:#ERRO";
    return a_.CriaConta(nick, hash, endereco, agora) ? "Resposta:#OK" : "Resposta:#Jatem";
}

std::string Servico::PodeCadastrar(const std::string& endereco) {
    if (Banido(endereco, {})) return "RESP:NOTPOD:Acesso temporariamente bloqueado.";
    if (a_.ContasCriadasDesde(endereco, Agora() - 86400) >= o_.limiteCadastros)
        return "RESP:NOTPOD:Este computador já criou o número máximo de nicks por hoje.;"
               "Tente novamente amanhã.";
    return "RESP:PODE";
}

std::string Servico::TesteBanimento(const std::string& endereco) {
    const auto b = a_.BanimentoAtivo("endereco", endereco, Agora());
    if (!b) return "OK";
    std::string texto = "Acesso bloqueado";
    if (b->ate > 0) texto += " até " + DataCurta(b->ate);
    texto += ".";
    if (!b->texto.empty()) texto += " " + b->texto;
    return "BLOQUEADO:" + SemSeparador(texto, ":");
}

std::string Servico::Totais(std::int64_t id1, std::int64_t id2) {
    const auto pontos = [&](std::int64_t id) {
        if (id <= 0) return kPontosIniciais;
        const auto c = a_.ContaPorId(id);
        return c ? c->pontos : kPontosIniciais;
    };
    return "OK#PT1:" + Numero(pontos(id1)) + "#PT2:" + Numero(pontos(id2));
}

std::string Servico::AtribuiVitoria(const Parametros& q, const std::string& endereco) {
    const auto id1 = Inteiro(Valor(q, "id1"), 1'000'000'000'000LL);
    const auto id2 = Inteiro(Valor(q, "id2"), 1'000'000'000'000LL);
    // A report that can't count still gets the totals as they stand
    const auto inalterado = [&] {
        return Totais(std::max<std::int64_t>(0, id1), std::max<std::int64_t>(0, id2));
    };
    if (id1 < 0 || id2 < 0 || (id1 == 0 && id2 == 0) || id1 == id2) return inalterado();
    if (!limitePremio_.Permite(endereco, Relogio())) return inalterado();
    if (a_.BanimentoAtivo("endereco", endereco, Agora())) return inalterado();
    const auto agora = Agora();
    const auto par = a_.ParRecente(id1, id2, agora - kParValido);
    if (!par) return inalterado();
    // Only the winner's copy reports, from the address it played from
    const bool vencedorEh1 = par->id1 == id1;
    if ((vencedorEh1 ? par->endereco1 : par->endereco2) != endereco) return inalterado();
    std::optional<Conta> cv, cp;
    if (id1 > 0 && !(cv = a_.ContaPorId(id1))) return inalterado();
    if (id2 > 0 && !(cp = a_.ContaPorId(id2))) return inalterado();
    if (cv && a_.BanimentoAtivo("nick", ChaveNick(cv->nick), agora)) return inalterado();
    if (!a_.ReservaPremio(par->id, agora, kIntervaloPremio, kMaxPremiosPar)) return inalterado();
    const auto chaveV = vencedorEh1 ? par->chave1 : par->chave2;
    const auto chaveP = vencedorEh1 ? par->chave2 : par->chave1;
    const int repeticoes = a_.Repeticoes(chaveV, chaveP, agora - 86400);
    auto premio = CalculaPremio(cv ? cv->pontos : kPontosIniciais, cv ? cv->glicko : Glicko{},
                                cp ? cp->pontos : kPontosIniciais, cp ? cp->glicko : Glicko{},
                                repeticoes, id2 == 0);
    if (id1 == 0) premio.perda = (premio.perda + 1) / 2; // lost to a visitor
    a_.AplicaPremio(id1, id2, chaveV, chaveP, premio, Valor(q, "Ter") == "T", agora);
    return Totais(id1, id2);
}

std::string Servico::UrlPublica() const {
    const std::uint16_t porta = portaWeb_;
    return "http://" + o_.HostPublico() + (porta == 80 ? "" : ":" + Numero(porta));
}

std::string Servico::Atualizacao() const {
    const std::string link = o_.linkInstalador.empty()
                                 ? UrlPublica() + "/html/download.php?prog=velmace"
                                 : o_.linkInstalador;
    return "!*!Velmora Ace!*!" + SemSeparador(o_.versaoNova, "!*!") + "!*!" +
           SemSeparador(link, "!*!") + "!*!" + (o_.obrigatorio ? "obrigatorio" : "opcional") +
           "!*!" + SemSeparador(o_.textoAtualizacao, "!*!");
}

Servico::TestePorta Servico::PreparaTestePorta(const Pedido& p, const std::string& endereco) {
    const auto q = LeConsulta(p.consulta);
    const auto porta = Inteiro(Valor(q, "porta"), 65535);
    if (porta < 1024) return {0, "RESP:PortaInvalida"};
    if (!limiteSonda_.Permite(endereco, Relogio())) return {0, "RESP:Aguarde"};
    return {static_cast<std::uint16_t>(porta), {}};
}

std::string EscapaHtml(std::string_view s) {
    std::string r;
    r.reserve(s.size());
    for (const char c : s) {
        switch (c) {
        case '&':
            r += "&amp;";
            break;
        case '<':
            r += "&lt;";
            break;
        case '>':
            r += "&gt;";
            break;
        case '"':
            r += "&quot;";
            break;
        case '\'':
            r += "&#39;";
            break;
        default:
            r += c;
        }
    }
    return r;
}

} // namespace velmora::servidor
