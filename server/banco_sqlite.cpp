#include "server/banco.h"

#include <sqlite3.h>

#include <charconv>

namespace velmora::servidor {

namespace {

// A parameter that is a plain integer is bound as one, so that LIMIT and comparisons
// with integer columns behave as in PostgreSQL
bool InteiroCanonico(const std::string& s, long long& n) {
    if (s.empty() || s.size() > 18) return false;
    std::size_t i = s[0] == '-' ? 1 : 0;
    if (i == s.size() || (s[i] == '0' && s.size() > i + 1)) return false;
    for (std::size_t k = i; k < s.size(); ++k)
        if (s[k] < '0' || s[k] > '9') return false;
    return std::from_chars(s.data(), s.data() + s.size(), n).ec == std::errc{};
}

class BancoSqlite final : public Banco {
  public:
    explicit BancoSqlite(const std::filesystem::path& arquivo) {
        if (sqlite3_open_v2(arquivo.c_str(), &db_,
                            SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
                            nullptr) != SQLITE_OK) {
            const std::string erro = db_ ? sqlite3_errmsg(db_) : "sem memória";
            sqlite3_close(db_);
            db_ = nullptr;
            throw ErroBanco("não foi possível abrir " + arquivo.string() + ": " + erro);
        }
        sqlite3_busy_timeout(db_, 5000);
        ExecutaScript(
            "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA foreign_keys=ON;");
    }
    ~BancoSqlite() override {
        if (db_) sqlite3_close_v2(db_);
    }
    BancoSqlite(const BancoSqlite&) = delete;
    BancoSqlite& operator=(const BancoSqlite&) = delete;

    ResultadoSql Executa(std::string_view sql, const std::vector<std::string>& params) override {
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &st, nullptr) !=
            SQLITE_OK)
            throw ErroBanco(sqlite3_errmsg(db_));
        struct Fecha {
            sqlite3_stmt* s;
            ~Fecha() { sqlite3_finalize(s); }
        } fecha{st};
        for (std::size_t i = 0; i < params.size(); ++i) {
            const std::string nome = "$" + std::to_string(i + 1);
            const int idx = sqlite3_bind_parameter_index(st, nome.c_str());
            if (idx == 0) continue;
            long long n = 0;
            if (InteiroCanonico(params[i], n))
                sqlite3_bind_int64(st, idx, n);
            else
                sqlite3_bind_text(st, idx, params[i].data(), static_cast<int>(params[i].size()),
                                  SQLITE_TRANSIENT);
        }
        ResultadoSql r;
        for (;;) {
            const int rc = sqlite3_step(st);
            if (rc == SQLITE_DONE) break;
            if (rc != SQLITE_ROW) throw ErroBanco(sqlite3_errmsg(db_));
            std::vector<std::string> linha;
            const int n = sqlite3_column_count(st);
            for (int c = 0; c < n; ++c) {
                const auto* t = sqlite3_column_text(st, c);
                linha.emplace_back(t ? reinterpret_cast<const char*>(t) : "",
                                   static_cast<std::size_t>(sqlite3_column_bytes(st, c)));
            }
            r.linhas.push_back(std::move(linha));
        }
        r.afetadas = sqlite3_changes(db_);
        return r;
    }

    void ExecutaScript(std::string_view sql) override {
        char* erro = nullptr;
        const std::string texto(sql);
        if (sqlite3_exec(db_, texto.c_str(), nullptr, nullptr, &erro) != SQLITE_OK) {
            const std::string msg = erro ? erro : "erro";
            sqlite3_free(erro);
            throw ErroBanco(msg);
        }
    }

    bool EhPostgres() const override { return false; }

  private:
    sqlite3* db_ = nullptr;
};

} // namespace

std::unique_ptr<Banco> AbreSqlite(const std::filesystem::path& arquivo) {
    return std::make_unique<BancoSqlite>(arquivo);
}

#ifndef VELMORA_COM_POSTGRES
std::unique_ptr<Banco> AbrePostgres(const std::string&) {
    throw ErroBanco("este velmora-servico foi compilado sem PostgreSQL (libpq-dev)");
}
#endif

} // namespace velmora::servidor
