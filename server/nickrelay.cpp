#include "server/nickrelay.h"

#include <vector>

namespace velmora::servidor {

namespace {

std::int64_t NumeroLeniente(std::string_view s) {
    std::int64_t n = 0;
    std::size_t i = 0;
    while (i < s.size() && s[i] == ' ') ++i;
    bool negativo = false;
    if (i < s.size() && (s[i] == '-' || s[i] == '+')) negativo = s[i++] == '-';
    for (; i < s.size() && s[i] >= '0' && s[i] <= '9'; ++i) {
        if (n > 100'000'000'000LL) return 0;
        n = n * 10 + (s[i] - '0');
    }
    return negativo ? -n : n;
}

} // namespace

LeituraNick LeNickRelay(std::string_view bytes) {
    LeituraNick r;
    constexpr std::string_view cabeca = "Nick:#";
    const auto n = std::min(bytes.size(), cabeca.size());
    if (bytes.substr(0, n) != cabeca.substr(0, n) || bytes.size() > kTamanhoMaximoNick) {
        r.estado = Leitura::Invalido;
        return r;
    }
    // The first nine fields end with "#": cut them one by one
    std::vector<std::string_view> campos;
    std::size_t pos = 0;
    while (campos.size() < 10) {
        const auto h = bytes.find('#', pos);
        if (h == std::string_view::npos) return r; // incomplete
        campos.push_back(bytes.substr(pos, h - pos));
        pos = h + 1;
    }
    // campos[0] "Nick:", [1] id, [2] nick, [3] points, [4] compat, [5] VS/NV, [6] edition,
    // [7] computer, [8] language, [9] "IDT:n"
    if (!campos[9].starts_with("IDT:")) {
        r.estado = Leitura::Invalido;
        return r;
    }
    // The rest is the group text and "A#"; it ends when the bytes end in "A#"
    const std::string_view resto = bytes.substr(pos);
    if (resto.size() < 2 || !resto.ends_with("A#")) return r;
    r.estado = Leitura::Completo;
    r.nick.id = TextoLimpo(campos[1], 20);
    r.nick.nome = TextoLimpo(campos[2], 64);
    r.nick.compatibilidade = TextoLimpo(campos[4], 16);
    r.nick.visitante = campos[5] == "VS";
    r.nick.idcpt = TextoLimpo(campos[7], 128);
    r.nick.idt = NumeroLeniente(campos[9].substr(4));
    r.nick.grupo = std::string(resto.substr(0, resto.size() - 2));
    r.nick.tamanho = bytes.size();
    return r;
}

} // namespace velmora::servidor
