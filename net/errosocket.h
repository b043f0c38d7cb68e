#pragma once
// The error that the socket layer raises to the caller of an operation: a Winsock-style
// number, its text and the member that raised it ("CSocketMaster.Listen"). Failures found
// while handling a notification are not thrown; they reach the owner through the Error
// event instead.
#include <cstdint>
#include <stdexcept>
#include <string>

namespace velmora {

class ErroSocket : public std::runtime_error {
  public:
    ErroSocket(std::int32_t numero, std::string descricao, std::string fonte);

    std::int32_t Numero;
    std::string Descricao;
    std::string Fonte;
};

// Numbers of the layer's own errors.
inline constexpr std::int32_t sckOutOfMemory = 7;
inline constexpr std::int32_t sckBadArgument = 40014;
inline constexpr std::int32_t sckBadState = 40006;
inline constexpr std::int32_t sckUnsupported = 40018;
inline constexpr std::int32_t sckInvalidOp = 40020;
inline constexpr std::int32_t sckWouldBlock = 10035;
inline constexpr std::int32_t sckMsgTooBig = 10040;
inline constexpr std::int32_t sckAddressFamily = 10047;
inline constexpr std::int32_t sckAddressNotAvailable = 10049;

// Text of one of the layer's own numbers (7, 40006, 40014, 40018, 40020); any other number
// gets the text of the Winsock table.
std::string TextoErroSocket(std::int32_t numero);

// Throws the layer's error `numero` with its text.
[[noreturn]] void Levanta(std::int32_t numero, const std::string& fonte);
// Throws the error with a text of its own (40014 "Invalid argument" of the binding).
[[noreturn]] void Levanta(std::int32_t numero, std::string descricao, const std::string& fonte);

// The Winsock number of an errno value, as Windows would report the same condition: an
// unfinished non-blocking connect is 10035, a refused one 10061. An errno without a Winsock
// counterpart becomes 10107 (a system call failed), whose text is "Unknown error.".
std::int32_t NumeroWinsock(int errnum);

// The Winsock number of a getaddrinfo failure (11001 host not found, ...).
std::int32_t NumeroWinsockBusca(int codigoGai);

} // namespace velmora
