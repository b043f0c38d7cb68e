#pragma once
// What the service keeps: accounts, bans, the waiting list, the pairs it brought together
// and the wins it counted. One object over one database connection (SQLite or PostgreSQL),
// safe to call from several worker threads: calls are serialised by a mutex, and the steps
// that must hold across several service processes sharing one PostgreSQL database
// (claiming an award, creating a nick) are single atomic statements.
#include "server/banco.h"
#include "server/pontos.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace velmora::servidor {

struct Conta {
    std::int64_t id = 0;
    std::string nick;
    std::string hash; // argon2id, never the password
    std::int64_t pontos = kPontosIniciais;
    std::int64_t vitorias = 0;
    std::int64_t derrotas = 0;
    Glicko glicko;
    std::int64_t criada = 0;
};

struct Banimento {
    std::string tipo;     // "nick" or "endereco"
    std::string alvo;     // the nick in lower case, or the address
    std::int64_t ate = 0; // end, seconds since 1970; 0 for ever
    std::string texto;
};

struct EntradaEspera {
    std::string endereco; // the address the request came from
    std::string nick;
    std::int64_t porta = 0;
    std::string grupo;
    bool visitante = false;
    bool portaAberta = false;
    std::string local;  // the address inside a local network, when sent
    std::string idcpt;  // this computer (shd1)
    std::string ultimo; // the computer of its last peer (shd2)
    std::int64_t idConta = 0;
    std::int64_t visto = 0;
};

struct Par {
    std::int64_t id = 0;
    std::int64_t id1 = 0, id2 = 0; // account ids, 0 for a visitor
    std::string endereco1, endereco2;
    std::string chave1, chave2; // who each side is for the repetition count
    std::string origem;         // "relay" or "lista"
    std::int64_t criado = 0;
    std::int64_t premios = 0;
};

struct JogoPerfil {
    std::int64_t instante = 0;
    bool venceu = false;
    std::string adversario;  // nick, or "Visitante"
    std::int64_t pontos = 0; // gained or lost
};

class Armazem {
  public:
    explicit Armazem(std::unique_ptr<Banco> banco);

    std::optional<Conta> ContaPorNick(const std::string& nick);
    std::optional<Conta> ContaPorId(std::int64_t id);
    // The new id, or nothing when the nick (in any case) exists.
    std::optional<std::int64_t> CriaConta(const std::string& nick, const std::string& hash,
                                          const std::string& endereco, std::int64_t agora);
    void RegistraLogin(std::int64_t id, const std::string& endereco, std::int64_t agora);
    // The id of the account of that nick when it logged in from `endereco` since `desde`,
    // else 0: a waiting-list entry counts as that account only then.
    std::int64_t ContaLogada(const std::string& nick, const std::string& endereco,
                             std::int64_t desde);
    std::int64_t ContasCriadasDesde(const std::string& endereco, std::int64_t desde);

    std::optional<Banimento> BanimentoAtivo(const std::string& tipo, const std::string& alvo,
                                            std::int64_t agora);
    void Bane(const Banimento& b);
    bool Desbane(const std::string& tipo, const std::string& alvo);

    void PoeNaEspera(const EntradaEspera& e);
    // Entries seen since `desde`, still listed, of that group.
    std::vector<EntradaEspera> ListaEspera(const std::string& grupo, std::int64_t desde,
                                           std::size_t limite);
    std::int64_t ContaEspera(std::int64_t desde);
    // Takes the entry off the list; it stays known for pairing.
    void TiraDaEspera(const std::string& endereco, const std::string& nick);
    std::optional<EntradaEspera> VistoNaEspera(const std::string& nick, std::int64_t desde);
    void LimpaAntigos(std::int64_t antesDe);

    std::int64_t RegistraPar(const Par& p);
    std::optional<Par> ParRecente(std::int64_t idA, std::int64_t idB, std::int64_t desde);
    // Claims one award for the pair: true only if the last one is at least `intervalo`
    // seconds old and fewer than `maximo` were given. Atomic across processes.
    bool ReservaPremio(std::int64_t par, std::int64_t agora, std::int64_t intervalo,
                       std::int64_t maximo);
    int Repeticoes(const std::string& vencedor, const std::string& perdedor, std::int64_t desde);
    // Writes the new totals and ratings of both accounts (id 0: no account) and the game.
    void AplicaPremio(std::int64_t vencedor, std::int64_t perdedor, const std::string& chaveV,
                      const std::string& chaveP, const Premio& p, bool terminou,
                      std::int64_t agora);

    std::vector<Conta> Ranking(std::size_t limite);
    std::int64_t Posicao(std::int64_t pontos);
    std::vector<JogoPerfil> UltimosJogos(std::int64_t id, std::size_t limite);

  private:
    ResultadoSql Sql(std::string_view sql, const std::vector<std::string>& params);
    std::unique_ptr<Banco> banco_;
    std::mutex mutex_;
};

// Lower case of the ASCII letters: the key under which nicks are unique.
std::string ChaveNick(std::string_view nick);

} // namespace velmora::servidor
