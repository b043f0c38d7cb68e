#pragma once
// The text of the peer wire: the messages' fixed words, cutting fields, the two ways of
// reading numbers, and the crossing between the program's UTF-8 and the wire's
// Windows-1252. Messages are handled as the bytes that travel; only the fields that hold
// names and chat text are converted, where they are taken in or put out.
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace velmora::fio {

inline constexpr std::string_view Ping = "/P!G";
inline constexpr std::string_view Pong = "P/G";
inline constexpr std::string_view Nick = "Nick:";
inline constexpr std::string_view Config = "Config:";
inline constexpr std::string_view ConeCtado = "ConeCtado";
inline constexpr std::string_view ConectadoOK = "ConectadoOK";
inline constexpr std::string_view PodeIniciar = ":/PODEINICIAR:\\";
inline constexpr std::string_view Verifica = "#VERIFICA#";
inline constexpr std::string_view ErroInicio = "#erro..inicio#";
inline constexpr std::string_view ErroInicioOK = "#erro.inicio:OK#";
inline constexpr std::string_view MarcaJogada = "(>)JG(>)";
inline constexpr std::string_view Separador = "(>)";
inline constexpr std::string_view JogadaOK = "J_OK";
inline constexpr std::string_view ErroVez = "#/erro/#";
inline constexpr std::string_view ErroVezOK = "#/XerroX/#";
inline constexpr std::string_view PodJogar = "/PODJOGAR\\";
inline constexpr std::string_view Pontos = "GETPT:";
inline constexpr std::string_view PedirEmpate = "PedirEmpate";
inline constexpr std::string_view EmpateSim = "Empate:sim";
inline constexpr std::string_view EmpateNao = "Empate:nao";
inline constexpr std::string_view EmpateFimSim = "Empate:TerminateSim";
inline constexpr std::string_view EmpateFimNao = "Empate:TerminateNao";
inline constexpr std::string_view Entregar = "Entregar";
inline constexpr std::string_view EntregarPerder = "Entregar:Perder";
inline constexpr std::string_view DesisteOK = "Desiste:OK";
inline constexpr std::string_view RestartTimeOut = "RestartTimeOut";
inline constexpr std::string_view TMOK = "TMOK";
inline constexpr std::string_view TMNOTOK = "TMNOTOK";
inline constexpr std::string_view Mensagem = "Mensagem:";
inline constexpr std::string_view Informa = ">>Informa:V--";
inline constexpr std::string_view Reservado = "wrestart";

// The protocol number of this version.
inline constexpr int Compatibilidade = 17;

// A fault while a message is handled: its handling ends with the internal error box.
struct Falha : std::runtime_error {
    Falha(int n, const std::string& t) : std::runtime_error(t), numero(n) {}
    int numero;
};
[[noreturn]] void TipoIncompativel(); // 13 "Type mismatch"
[[noreturn]] void ForaDoIntervalo();  // 9 "Subscript out of range"

// The text between the n-th and the next `sep`, after `sep` is put in front of the text,
// and behind it when it lacks one; n counts from 1; a field that doesn't exist is empty.
std::string Pedaco(std::string_view texto, std::string_view sep, int n);
// Replaces every occurrence, searching again from the start after each replacement.
std::string Troca(std::string texto, std::string_view procurado, std::string_view novo);
// Blanks (spaces only) taken off both ends.
std::string Apara(std::string_view texto);
bool Contem(std::string_view texto, std::string_view parte);
bool Comeca(std::string_view texto, std::string_view inicio);

// A strict number: blanks round an optional sign and digits, with an optional fraction
// that is rounded half to even. Anything else is a fault (13); beyond 32 bits, 6.
std::int32_t NumeroEstrito(std::string_view texto);
// A lenient number: the number at the head of the text, 0 when there is none.
std::int32_t NumeroBrando(std::string_view texto);

// Wire bytes to the program's text and back.
std::string DoFio(std::string_view bytes);
std::string ParaFio(std::string_view texto);

} // namespace velmora::fio
