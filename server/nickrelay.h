#pragma once
// The first message a copy sends to the relay: "Nick:#id#nick#points#compat#VS|NV#Chief#
// computer#Port#IDT:n#" + group text + "A#". The group text (the group password, empty
// among strangers) may itself hold "#", so it is everything between the IDT field and the
// closing "A#". Bytes may come split or merged by TCP: the reader is given everything
// received so far.
#include "server/pedido.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velmora::servidor {

// Bound on the first message; a copy that sends more without completing it is dropped
inline constexpr std::size_t kTamanhoMaximoNick = 1024;

struct NickRelay {
    std::string id;   // account id on the service, "0" for a visitor
    std::string nome; // nick
    std::string compatibilidade;
    bool visitante = false;
    std::string idcpt;       // the computer's identifier
    std::int64_t idt = 0;    // lenient number: 0 when not a number
    std::string grupo;       // group text, "" among strangers
    std::size_t tamanho = 0; // bytes of the whole message, closing "#" included
};

struct LeituraNick {
    Leitura estado = Leitura::Incompleto;
    NickRelay nick;
};

LeituraNick LeNickRelay(std::string_view bytes);

} // namespace velmora::servidor
