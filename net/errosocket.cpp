#include "net/errosocket.h"

#include "net/modsocketmaster.h"

#include <cerrno>
#include <netdb.h>
#include <utility>

namespace velmora {

ErroSocket::ErroSocket(std::int32_t numero, std::string descricao, std::string fonte)
    : std::runtime_error(fonte + ": " + std::to_string(numero) + " " + descricao), Numero(numero),
      Descricao(std::move(descricao)), Fonte(std::move(fonte)) {}

std::string TextoErroSocket(std::int32_t numero) {
    switch (numero) {
    case sckOutOfMemory:
        return "Out of memory";
    case sckBadState:
        return "Wrong protocol or connection state for the requested transaction or request";
    case sckBadArgument:
        return "The argument passed to a function was not in the correct format or in the "
               "specified range.";
    case sckUnsupported:
        return "Unsupported variant type.";
    case sckInvalidOp:
        return "Invalid operation at current state";
    default:
        return modSocketMaster::ErrorDescription(numero);
    }
}

void Levanta(std::int32_t numero, const std::string& fonte) {
    throw ErroSocket(numero, TextoErroSocket(numero), fonte);
}

void Levanta(std::int32_t numero, std::string descricao, const std::string& fonte) {
    throw ErroSocket(numero, std::move(descricao), fonte);
}

std::int32_t NumeroWinsock(int errnum) {
    switch (errnum) {
    case 0:
        return 0;
    case EINTR:
        return 10004;
    case EACCES:
    case EPERM:
        return 10013;
    case EFAULT:
        return 10014;
    case EINVAL:
        return 10022;
    case EMFILE:
    case ENFILE:
        return 10024;
    case EAGAIN:
#if EWOULDBLOCK != EAGAIN
    case EWOULDBLOCK:
#endif
    case EINPROGRESS:
        return 10035;
    case EALREADY:
        return 10037;
    case EBADF:
    case ENOTSOCK:
        return 10038;
    case EDESTADDRREQ:
        return 10039;
    case EMSGSIZE:
        return 10040;
    case EPROTOTYPE:
        return 10041;
    case ENOPROTOOPT:
        return 10042;
    case EPROTONOSUPPORT:
        return 10043;
    case ESOCKTNOSUPPORT:
        return 10044;
    case EOPNOTSUPP:
        return 10045;
    case EPFNOSUPPORT:
        return 10046;
    case EAFNOSUPPORT:
        return 10047;
    case EADDRINUSE:
        return 10048;
    case EADDRNOTAVAIL:
        return 10049;
    case ENETDOWN:
        return 10050;
    case ENETUNREACH:
        return 10051;
    case ENETRESET:
        return 10052;
    case ECONNABORTED:
        return 10053;
    case ECONNRESET:
    case EPIPE:
        return 10054; // a send after the peer went away
    case ENOBUFS:
    case ENOMEM:
        return 10055;
    case EISCONN:
        return 10056;
    case ENOTCONN:
        return 10057;
    case ESHUTDOWN:
        return 10058;
    case ETIMEDOUT:
        return 10060;
    case ECONNREFUSED:
        return 10061;
    case EHOSTDOWN:
    case EHOSTUNREACH:
        return 10065;
    default:
        return 10107;
    }
}

std::int32_t NumeroWinsockBusca(int codigoGai) {
    switch (codigoGai) {
    case 0:
        return 0;
    case EAI_NONAME:
        return 11001;
    case EAI_AGAIN:
        return 11002;
#ifdef EAI_NODATA
    case EAI_NODATA:
        return 11004;
#endif
#ifdef EAI_ADDRFAMILY
    case EAI_ADDRFAMILY:
        return 11004;
#endif
    case EAI_SYSTEM:
        return NumeroWinsock(errno);
    default:
        return 11003;
    }
}

} // namespace velmora
