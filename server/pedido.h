#pragma once
// Reading one request from the bytes a client sent. Two forms arrive on the same port:
// - HTTP/1.x: "GET /path?query HTTP/1.1", headers, an empty line;
// - the bare line of the game's own small client: "GET " + the whole URL + two CR LF,
//   with no version and no headers, whose answer must be the reply text alone.
// Only the request line and the headers are read; a request carries no body.
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::servidor {

// Bound on the bytes of one request, headers included
inline constexpr std::size_t kTamanhoMaximoPedido = 8192;

enum class FormaPedido { Http, Nua };
enum class Leitura { Incompleto, Completo, Invalido };

struct Pedido {
    FormaPedido forma = FormaPedido::Http;
    std::string metodo;         // "GET" or "HEAD"
    std::string caminho;        // percent-decoded path, e.g. "/html/cadastro.php"
    std::string consulta;       // the raw query, without "?"
    std::string encaminhadoPor; // X-Forwarded-For, when an HTTP request carries it
};

struct LeituraPedido {
    Leitura estado = Leitura::Incompleto;
    Pedido pedido;
    std::size_t consumidos = 0; // bytes up to the end of the empty line
};

// Reads the bytes received so far. Incompleto while the empty line hasn't come and the
// bound isn't passed; Invalido for anything that is neither form.
LeituraPedido LePedido(std::string_view bytes);

using Parametros = std::vector<std::pair<std::string, std::string>>;

// The query cut at "&" and at the first "=", with %XX sequences decoded (a "+" stays a
// "+": the game sends a password as typed). At most `maximo` pairs are kept.
Parametros LeConsulta(std::string_view consulta, std::size_t maximo = 64);

// %XX decoding; a "%" not followed by two hex digits stays as it is.
std::string DecodificaPercentual(std::string_view texto);

// Value of the first pair with that key (keys are case-sensitive), or empty.
std::string Valor(const Parametros& p, std::string_view chave);
bool Tem(const Parametros& p, std::string_view chave);
// Sets the value of the first pair with that key, or adds the pair.
void Define(Parametros& p, std::string_view chave, std::string valor);

// The game sends passwords as typed, unescaped, so they may hold "&", "=", "#" or blanks;
// its keys come in a fixed order, and that order is what bounds such a value.
//
// The value of `chave` up to the first "&`seguinte`=" after it, %XX decoded; without
// that key after it, the value as the pairs give it.
std::string ValorAte(std::string_view consulta, std::string_view chave, std::string_view seguinte);

// Nick and password of a login or of a new nick ("...nick=N&senha=S&programa=..."): the
// nick up to the first "&senha=", the password from there to the last "&programa=". A
// query of another shape is read pair by pair.
struct Credenciais {
    std::string nick, senha;
};
Credenciais LeCredenciais(std::string_view consulta);

// Text from the outside as UTF-8 with no control characters: valid UTF-8 stays as it
// is, anything else is read as Windows-1252; the result is cut to `maximo` bytes on a
// character boundary.
std::string TextoLimpo(std::string_view bytes, std::size_t maximo);

} // namespace velmora::servidor
