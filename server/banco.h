#pragma once
// The narrow door to a SQL database: run one statement with text parameters ($1, $2...)
// and get text rows back. Two doors exist: SQLite (one file, WAL) and PostgreSQL (a
// connection URL); everything above speaks the SQL both understand.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::servidor {

struct ErroBanco : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct ResultadoSql {
    std::vector<std::vector<std::string>> linhas; // NULL reads as ""
    std::int64_t afetadas = 0;
};

class Banco {
  public:
    virtual ~Banco() = default;
    // One statement; parameters are "$1", "$2"... in the text. Throws ErroBanco.
    virtual ResultadoSql Executa(std::string_view sql, const std::vector<std::string>& params) = 0;
    // Several statements with no parameters (the schema).
    virtual void ExecutaScript(std::string_view sql) = 0;
    virtual bool EhPostgres() const = 0;
};

std::unique_ptr<Banco> AbreSqlite(const std::filesystem::path& arquivo);
// Only when the build found libpq; otherwise throws ErroBanco.
std::unique_ptr<Banco> AbrePostgres(const std::string& url);

} // namespace velmora::servidor
