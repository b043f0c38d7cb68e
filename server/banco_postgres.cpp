#include "server/banco.h"

#include <libpq-fe.h>

#include <cstdlib>

namespace velmora::servidor {

namespace {

class BancoPostgres final : public Banco {
  public:
    explicit BancoPostgres(const std::string& url) : con_(PQconnectdb(url.c_str())) {
        if (!con_ || PQstatus(con_) != CONNECTION_OK) {
            const std::string erro = con_ ? PQerrorMessage(con_) : "sem memória";
            if (con_) PQfinish(con_);
            con_ = nullptr;
            throw ErroBanco("PostgreSQL: " + erro);
        }
        Executa("SET client_min_messages TO WARNING", {});
    }
    ~BancoPostgres() override {
        if (con_) PQfinish(con_);
    }
    BancoPostgres(const BancoPostgres&) = delete;
    BancoPostgres& operator=(const BancoPostgres&) = delete;

    ResultadoSql Executa(std::string_view sql, const std::vector<std::string>& params) override {
        std::vector<const char*> valores;
        for (const auto& p : params) valores.push_back(p.c_str());
        const std::string texto(sql);
        PGresult* res = PQexecParams(con_, texto.c_str(), static_cast<int>(params.size()), nullptr,
                                     valores.data(), nullptr, nullptr, 0);
        struct Libera {
            PGresult* r;
            ~Libera() { PQclear(r); }
        } libera{res};
        const auto st = PQresultStatus(res);
        if (st != PGRES_COMMAND_OK && st != PGRES_TUPLES_OK)
            throw ErroBanco(std::string("PostgreSQL: ") + PQerrorMessage(con_));
        ResultadoSql r;
        const int linhas = PQntuples(res), colunas = PQnfields(res);
        for (int l = 0; l < linhas; ++l) {
            std::vector<std::string> linha;
            for (int c = 0; c < colunas; ++c)
                linha.emplace_back(PQgetvalue(res, l, c),
                                   static_cast<std::size_t>(PQgetlength(res, l, c)));
            r.linhas.push_back(std::move(linha));
        }
        const char* afetadas = PQcmdTuples(res);
        r.afetadas = afetadas && *afetadas ? std::atoll(afetadas) : 0;
        return r;
    }

    void ExecutaScript(std::string_view sql) override {
        const std::string texto(sql);
        PGresult* res = PQexec(con_, texto.c_str());
        const auto st = PQresultStatus(res);
        const std::string erro = PQerrorMessage(con_);
        PQclear(res);
        if (st != PGRES_COMMAND_OK && st != PGRES_TUPLES_OK) throw ErroBanco("PostgreSQL: " + erro);
    }

    bool EhPostgres() const override { return true; }

  private:
    PGconn* con_ = nullptr;
};

} // namespace

std::unique_ptr<Banco> AbrePostgres(const std::string& url) {
    return std::make_unique<BancoPostgres>(url);
}

} // namespace velmora::servidor
