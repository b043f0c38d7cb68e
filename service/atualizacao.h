#pragma once
// The update check: the value of a version, the comparison of two versions, the request to
// update.php through the two fetches, and what an offer of a new version holds.
//
// A version "a.b.c" is worth a*100 + b*10 + c, and two versions are compared as the
// decimal texts of their values, so "3.10.0" equals "4.0.0" and 1000 sorts before 390.
#include <cstdint>
#include <functional>
#include <string>

namespace velmora {

class dl;
class ClienteGetConteudo;

// The value text of a version: "3.9.0" gives "390". Each part is read as a number from its
// leading digits (none gives 0); a missing part is 0.
std::string ValorVersao(const std::string& versao);
// True when the value text of `nova` sorts after that of `atual`.
bool MaiorVersion(const std::string& atual, const std::string& nova);

// The address of the update check: the service's base, "/update.php?prog=" and the title
// with its spaces as "%20".
std::string EnderecoUpdate(const std::string& servico, const std::string& titulo);

// One fetch of a URL with a time-out in seconds; what it returns is the reply's text,
// whatever came (empty, "FALSE", or the service's words).
using Busca = std::function<std::string(const std::string& url, std::int32_t tempo)>;

// The time-outs of the two fetches: the lobby's check and the about box's.
struct TemposUpdate {
    std::int32_t primeira; // DL1.GetConteudo
    std::int32_t segunda;  // the board window's GetConteudo
};
inline constexpr TemposUpdate TemposLobby{8, 8};
inline constexpr TemposUpdate TemposSobre{8, 4};

// The texts of the results.
inline constexpr const char* SemConexaoUpdate = "Não foi possível conectar ao servidor";
inline constexpr const char* VersaoRecente = "Você já está utilizando a versão mais recente do ";

// Asks the service for its newest version: first through `primeira`, then, if the reply
// lacks "!*!", through `segunda`. The result is "Não foi possível conectar ao servidor",
// "Você já está utilizando a versão mais recente do " and the title, or "!*!Link" followed
// by the reply when the service offers a newer version than `versao`.
std::string GetUpdate(const Busca& primeira, const Busca& segunda, const std::string& servico,
                      const std::string& titulo, TemposUpdate tempos,
                      const std::string& versao = "3.9.0");
// The same over a download control and the minimal client.
std::string GetUpdate(dl& DL1, ClienteGetConteudo& wsg, const std::string& servico,
                      const std::string& titulo, TemposUpdate tempos,
                      const std::string& versao = "3.9.0");

// The fields of a result of GetUpdate, by "!*!".
struct OfertaAtualizacao {
    bool link = false;    // field 1 is "Link": a newer version is offered
    std::string versao;   // field 3
    std::string endereco; // field 4, the installer's address
    std::string tipo;     // field 5, "obrigatorio" for a compulsory update
    std::string mensagem; // field 6, with ";" standing for a line break
    std::string sha256;   // field 7 when it reads "sha256:" and the hex digest, else empty
    bool Obrigatoria() const { return tipo == "obrigatorio"; }
};
OfertaAtualizacao LeOferta(const std::string& resultado);

} // namespace velmora
