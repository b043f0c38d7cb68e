#include "server/armazem.h"

#include <cstdlib>

namespace velmora::servidor {

namespace {

constexpr std::string_view kEsquema = R"(
CREATE TABLE IF NOT EXISTS contas (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  nick TEXT NOT NULL,
  chave TEXT NOT NULL UNIQUE,
  hash TEXT NOT NULL,
  pontos INTEGER NOT NULL DEFAULT 1000,
  vitorias INTEGER NOT NULL DEFAULT 0,
  derrotas INTEGER NOT NULL DEFAULT 0,
  r REAL NOT NULL DEFAULT 1500,
  rd REAL NOT NULL DEFAULT 350,
  sigma REAL NOT NULL DEFAULT 0.06,
  criada INTEGER NOT NULL,
  endereco TEXT NOT NULL,
  login_endereco TEXT NOT NULL DEFAULT '',
  login_instante INTEGER NOT NULL DEFAULT 0);
CREATE INDEX IF NOT EXISTS contas_pontos ON contas (pontos DESC, id);
CREATE INDEX IF NOT EXISTS contas_endereco ON contas (endereco, criada);
CREATE TABLE IF NOT EXISTS banimentos (
  tipo TEXT NOT NULL,
  alvo TEXT NOT NULL,
  ate INTEGER NOT NULL,
  texto TEXT NOT NULL,
  PRIMARY KEY (tipo, alvo));
CREATE TABLE IF NOT EXISTS espera (
  endereco TEXT NOT NULL,
  chave TEXT NOT NULL,
  nick TEXT NOT NULL,
  porta INTEGER NOT NULL,
  grupo TEXT NOT NULL,
  visitante INTEGER NOT NULL,
  pab INTEGER NOT NULL,
  endereco_local TEXT NOT NULL,
  idcpt TEXT NOT NULL,
  ultimo TEXT NOT NULL,
  id_conta INTEGER NOT NULL,
  visto INTEGER NOT NULL,
  listado INTEGER NOT NULL,
  PRIMARY KEY (endereco, chave));
CREATE INDEX IF NOT EXISTS espera_grupo ON espera (grupo, listado, visto);
CREATE INDEX IF NOT EXISTS espera_chave ON espera (chave, visto);
CREATE TABLE IF NOT EXISTS pares (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  id1 INTEGER NOT NULL,
  id2 INTEGER NOT NULL,
  endereco1 TEXT NOT NULL,
  endereco2 TEXT NOT NULL,
  chave1 TEXT NOT NULL,
  chave2 TEXT NOT NULL,
  origem TEXT NOT NULL,
  criado INTEGER NOT NULL,
  ultimo_premio INTEGER NOT NULL DEFAULT 0,
  premios INTEGER NOT NULL DEFAULT 0);
CREATE INDEX IF NOT EXISTS pares_ids ON pares (id1, id2, criado);
CREATE TABLE IF NOT EXISTS jogos (
  id INTEGER PRIMARY KEY AUTOINCREMENT,
  vencedor INTEGER NOT NULL,
  perdedor INTEGER NOT NULL,
  chave_v TEXT NOT NULL,
  chave_p TEXT NOT NULL,
  ganho INTEGER NOT NULL,
  perda INTEGER NOT NULL,
  terminou INTEGER NOT NULL,
  instante INTEGER NOT NULL);
CREATE INDEX IF NOT EXISTS jogos_repeticao ON jogos (chave_v, chave_p, instante);
CREATE INDEX IF NOT EXISTS jogos_vencedor ON jogos (vencedor, instante);
CREATE INDEX IF NOT EXISTS jogos_perdedor ON jogos (perdedor, instante);
)";

std::string Troca(std::string s, std::string_view de, std::string_view para) {
    for (auto p = s.find(de); p != std::string::npos; p = s.find(de, p + para.size()))
        s.replace(p, de.size(), para);
    return s;
}

std::int64_t Num(const std::string& s) {
    return std::strtoll(s.c_str(), nullptr, 10);
}
double Real(const std::string& s) {
    return std::strtod(s.c_str(), nullptr);
}
std::string Txt(std::int64_t n) {
    return std::to_string(n);
}
std::string Txt(double d) {
    char b[64];
    std::snprintf(b, sizeof b, "%.6f", d);
    return b;
}

constexpr std::string_view kColunasConta =
    "id, nick, hash, pontos, vitorias, derrotas, r, rd, sigma, criada";

Conta LeConta(const std::vector<std::string>& l) {
    Conta c;
    c.id = Num(l[0]);
    c.nick = l[1];
    c.hash = l[2];
    c.pontos = Num(l[3]);
    c.vitorias = Num(l[4]);
    c.derrotas = Num(l[5]);
    c.glicko = {Real(l[6]), Real(l[7]), Real(l[8])};
    c.criada = Num(l[9]);
    return c;
}

constexpr std::string_view kColunasEspera =
    "endereco, nick, porta, grupo, visitante, pab, endereco_local, idcpt, ultimo, id_conta, visto";

EntradaEspera LeEspera(const std::vector<std::string>& l) {
    EntradaEspera e;
    e.endereco = l[0];
    e.nick = l[1];
    e.porta = Num(l[2]);
    e.grupo = l[3];
    e.visitante = Num(l[4]) != 0;
    e.portaAberta = Num(l[5]) != 0;
    e.local = l[6];
    e.idcpt = l[7];
    e.ultimo = l[8];
    e.idConta = Num(l[9]);
    e.visto = Num(l[10]);
    return e;
}

} // namespace

std::string ChaveNick(std::string_view nick) {
    std::string s(nick);
    for (auto& c : s)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return s;
}

Armazem::Armazem(std::unique_ptr<Banco> banco) : banco_(std::move(banco)) {
    std::string esquema(kEsquema);
    if (banco_->EhPostgres()) {
        esquema = Troca(esquema, "INTEGER PRIMARY KEY AUTOINCREMENT", "BIGSERIAL PRIMARY KEY");
        esquema = Troca(esquema, "INTEGER", "BIGINT");
        esquema = Troca(esquema, "REAL", "DOUBLE PRECISION");
    }
    banco_->ExecutaScript(esquema);
}

ResultadoSql Armazem::Sql(std::string_view sql, const std::vector<std::string>& params) {
    return banco_->Executa(sql, params);
}

std::optional<Conta> Armazem::ContaPorNick(const std::string& nick) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("SELECT " + std::string(kColunasConta) + " FROM contas WHERE chave = $1",
                       {ChaveNick(nick)});
    if (r.linhas.empty()) return std::nullopt;
    return LeConta(r.linhas[0]);
}

std::optional<Conta> Armazem::ContaPorId(std::int64_t id) {
    std::lock_guard trava(mutex_);
    const auto r =
        Sql("SELECT " + std::string(kColunasConta) + " FROM contas WHERE id = $1", {Txt(id)});
    if (r.linhas.empty()) return std::nullopt;
    return LeConta(r.linhas[0]);
}

std::optional<std::int64_t> Armazem::CriaConta(const std::string& nick, const std::string& hash,
                                               const std::string& endereco, std::int64_t agora) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("INSERT INTO contas (nick, chave, hash, criada, endereco) "
                       "VALUES ($1, $2, $3, $4, $5) ON CONFLICT (chave) DO NOTHING RETURNING id",
                       {nick, ChaveNick(nick), hash, Txt(agora), endereco});
    if (r.linhas.empty()) return std::nullopt;
    return Num(r.linhas[0][0]);
}

std::int64_t Armazem::ContasCriadasDesde(const std::string& endereco, std::int64_t desde) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("SELECT COUNT(*) FROM contas WHERE endereco = $1 AND criada >= $2",
                       {endereco, Txt(desde)});
    return Num(r.linhas[0][0]);
}

std::optional<Banimento> Armazem::BanimentoAtivo(const std::string& tipo, const std::string& alvo,
                                                 std::int64_t agora) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("SELECT tipo, alvo, ate, texto FROM banimentos "
                       "WHERE tipo = $1 AND alvo = $2 AND (ate = 0 OR ate > $3)",
                       {tipo, alvo, Txt(agora)});
    if (r.linhas.empty()) return std::nullopt;
    return Banimento{r.linhas[0][0], r.linhas[0][1], Num(r.linhas[0][2]), r.linhas[0][3]};
}

void Armazem::Bane(const Banimento& b) {
    std::lock_guard trava(mutex_);
    Sql("INSERT INTO banimentos (tipo, alvo, ate, texto) VALUES ($1, $2, $3, $4) "
        "ON CONFLICT (tipo, alvo) DO UPDATE SET ate = excluded.ate, texto = excluded.texto",
        {b.tipo, b.alvo, Txt(b.ate), b.texto});
}

void Armazem::RegistraLogin(std::int64_t id, const std::string& endereco, std::int64_t agora) {
    std::lock_guard trava(mutex_);
    Sql("UPDATE contas SET login_endereco = $2, login_instante = $3 WHERE id = $1",
        {Txt(id), endereco, Txt(agora)});
}

std::int64_t Armazem::ContaLogada(const std::string& nick, const std::string& endereco,
                                  std::int64_t desde) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("SELECT id FROM contas WHERE chave = $1 AND login_endereco = $2 AND "
                       "login_instante >= $3",
                       {ChaveNick(nick), endereco, Txt(desde)});
    return r.linhas.empty() ? 0 : Num(r.linhas[0][0]);
}

bool Armazem::Desbane(const std::string& tipo, const std::string& alvo) {
    std::lock_guard trava(mutex_);
    return Sql("DELETE FROM banimentos WHERE tipo = $1 AND alvo = $2", {tipo, alvo}).afetadas > 0;
}

void Armazem::PoeNaEspera(const EntradaEspera& e) {
    std::lock_guard trava(mutex_);
    Sql("INSERT INTO espera (endereco, chave, nick, porta, grupo, visitante, pab, endereco_local, "
        "idcpt, ultimo, id_conta, visto, listado) "
        "VALUES ($1, $2, $3, $4, $5, $6, $7, $8, $9, $10, $11, $12, 1) "
        "ON CONFLICT (endereco, chave) DO UPDATE SET nick = excluded.nick, porta = excluded.porta, "
        "grupo = excluded.grupo, visitante = excluded.visitante, pab = excluded.pab, "
        "endereco_local = excluded.endereco_local, idcpt = excluded.idcpt, "
        "ultimo = excluded.ultimo, id_conta = excluded.id_conta, visto = excluded.visto, "
        "listado = 1",
        {e.endereco, ChaveNick(e.nick), e.nick, Txt(e.porta), e.grupo, e.visitante ? "1" : "0",
         e.portaAberta ? "1" : "0", e.local, e.idcpt, e.ultimo, Txt(e.idConta), Txt(e.visto)});
}

std::vector<EntradaEspera> Armazem::ListaEspera(const std::string& grupo, std::int64_t desde,
                                                std::size_t limite) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("SELECT " + std::string(kColunasEspera) +
                           " FROM espera WHERE grupo = $1 AND listado = 1 AND visto >= $2 "
                           "ORDER BY pab DESC, visto DESC LIMIT $3",
                       {grupo, Txt(desde), Txt(static_cast<std::int64_t>(limite))});
    std::vector<EntradaEspera> v;
    for (const auto& l : r.linhas) v.push_back(LeEspera(l));
    return v;
}

std::int64_t Armazem::ContaEspera(std::int64_t desde) {
    std::lock_guard trava(mutex_);
    return Num(Sql("SELECT COUNT(*) FROM espera WHERE listado = 1 AND visto >= $1", {Txt(desde)})
                   .linhas[0][0]);
}

void Armazem::TiraDaEspera(const std::string& endereco, const std::string& nick) {
    std::lock_guard trava(mutex_);
    Sql("UPDATE espera SET listado = 0 WHERE endereco = $1 AND chave = $2",
        {endereco, ChaveNick(nick)});
}

std::optional<EntradaEspera> Armazem::VistoNaEspera(const std::string& nick, std::int64_t desde) {
    std::lock_guard trava(mutex_);
    const auto r =
        Sql("SELECT " + std::string(kColunasEspera) +
                " FROM espera WHERE chave = $1 AND visto >= $2 ORDER BY visto DESC LIMIT 1",
            {ChaveNick(nick), Txt(desde)});
    if (r.linhas.empty()) return std::nullopt;
    return LeEspera(r.linhas[0]);
}

void Armazem::LimpaAntigos(std::int64_t antesDe) {
    std::lock_guard trava(mutex_);
    Sql("DELETE FROM espera WHERE visto < $1", {Txt(antesDe)});
    Sql("DELETE FROM pares WHERE criado < $1", {Txt(antesDe)});
}

std::int64_t Armazem::RegistraPar(const Par& p) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("INSERT INTO pares (id1, id2, endereco1, endereco2, chave1, chave2, origem, "
                       "criado) VALUES ($1, $2, $3, $4, $5, $6, $7, $8) RETURNING id",
                       {Txt(p.id1), Txt(p.id2), p.endereco1, p.endereco2, p.chave1, p.chave2,
                        p.origem, Txt(p.criado)});
    return Num(r.linhas[0][0]);
}

std::optional<Par> Armazem::ParRecente(std::int64_t idA, std::int64_t idB, std::int64_t desde) {
    std::lock_guard trava(mutex_);
    const auto r =
        Sql("SELECT id, id1, id2, endereco1, endereco2, chave1, chave2, origem, criado, "
            "premios FROM pares WHERE ((id1 = $1 AND id2 = $2) OR (id1 = $2 AND id2 = $1)) "
            "AND criado >= $3 ORDER BY criado DESC, id DESC LIMIT 1",
            {Txt(idA), Txt(idB), Txt(desde)});
    if (r.linhas.empty()) return std::nullopt;
    const auto& l = r.linhas[0];
    Par p;
    p.id = Num(l[0]);
    p.id1 = Num(l[1]);
    p.id2 = Num(l[2]);
    p.endereco1 = l[3];
    p.endereco2 = l[4];
    p.chave1 = l[5];
    p.chave2 = l[6];
    p.origem = l[7];
    p.criado = Num(l[8]);
    p.premios = Num(l[9]);
    return p;
}

bool Armazem::ReservaPremio(std::int64_t par, std::int64_t agora, std::int64_t intervalo,
                            std::int64_t maximo) {
    std::lock_guard trava(mutex_);
    return Sql("UPDATE pares SET premios = premios + 1, ultimo_premio = $2 "
               "WHERE id = $1 AND premios < $3 AND (premios = 0 OR ultimo_premio <= $4)",
               {Txt(par), Txt(agora), Txt(maximo), Txt(agora - intervalo)})
               .afetadas == 1;
}

int Armazem::Repeticoes(const std::string& vencedor, const std::string& perdedor,
                        std::int64_t desde) {
    std::lock_guard trava(mutex_);
    return static_cast<int>(Num(Sql("SELECT COUNT(*) FROM jogos WHERE chave_v = $1 AND "
                                    "chave_p = $2 AND instante >= $3",
                                    {vencedor, perdedor, Txt(desde)})
                                    .linhas[0][0]));
}

void Armazem::AplicaPremio(std::int64_t vencedor, std::int64_t perdedor, const std::string& chaveV,
                           const std::string& chaveP, const Premio& p, bool terminou,
                           std::int64_t agora) {
    std::lock_guard trava(mutex_);
    Sql("BEGIN", {});
    try {
        if (vencedor > 0)
            Sql("UPDATE contas SET pontos = pontos + $2, vitorias = vitorias + 1, r = $3, rd = $4, "
                "sigma = $5 WHERE id = $1",
                {Txt(vencedor), Txt(p.ganho), Txt(p.vencedor.r), Txt(p.vencedor.rd),
                 Txt(p.vencedor.sigma)});
        if (perdedor > 0)
            Sql("UPDATE contas SET pontos = CASE WHEN pontos - $2 < 0 THEN 0 ELSE pontos - $2 END, "
                "derrotas = derrotas + 1, r = $3, rd = $4, sigma = $5 WHERE id = $1",
                {Txt(perdedor), Txt(p.perda), Txt(p.perdedor.r), Txt(p.perdedor.rd),
                 Txt(p.perdedor.sigma)});
        Sql("INSERT INTO jogos (vencedor, perdedor, chave_v, chave_p, ganho, perda, terminou, "
            "instante) VALUES ($1, $2, $3, $4, $5, $6, $7, $8)",
            {Txt(vencedor), Txt(perdedor), chaveV, chaveP, Txt(p.ganho), Txt(p.perda),
             terminou ? "1" : "0", Txt(agora)});
        Sql("COMMIT", {});
    } catch (...) {
        try {
            Sql("ROLLBACK", {});
        } catch (...) {
        }
        throw;
    }
}

std::vector<Conta> Armazem::Ranking(std::size_t limite) {
    std::lock_guard trava(mutex_);
    const auto r = Sql("SELECT " + std::string(kColunasConta) +
                           " FROM contas ORDER BY pontos DESC, id LIMIT $1",
                       {Txt(static_cast<std::int64_t>(limite))});
    std::vector<Conta> v;
    for (const auto& l : r.linhas) v.push_back(LeConta(l));
    return v;
}

std::int64_t Armazem::Posicao(std::int64_t pontos) {
    std::lock_guard trava(mutex_);
    return 1 +
           Num(Sql("SELECT COUNT(*) FROM contas WHERE pontos > $1", {Txt(pontos)}).linhas[0][0]);
}

std::vector<JogoPerfil> Armazem::UltimosJogos(std::int64_t id, std::size_t limite) {
    std::lock_guard trava(mutex_);
    const auto r =
        Sql("SELECT j.instante, j.vencedor, j.ganho, j.perda, c.nick FROM jogos j "
            "LEFT JOIN contas c ON c.id = CASE WHEN j.vencedor = $1 THEN j.perdedor ELSE "
            "j.vencedor END "
            "WHERE j.vencedor = $1 OR j.perdedor = $1 ORDER BY j.instante DESC, j.id DESC LIMIT $2",
            {Txt(id), Txt(static_cast<std::int64_t>(limite))});
    std::vector<JogoPerfil> v;
    for (const auto& l : r.linhas) {
        JogoPerfil j;
        j.instante = Num(l[0]);
        j.venceu = Num(l[1]) == id;
        j.pontos = j.venceu ? Num(l[2]) : -Num(l[3]);
        j.adversario = l[4].empty() ? "Visitante" : l[4];
        v.push_back(j);
    }
    return v;
}

} // namespace velmora::servidor
