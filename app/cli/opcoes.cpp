#include "opcoes.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace velmora::cli {

Opcoes::Opcoes(const Argumentos& args, const std::set<std::string>& validas) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a.rfind("--", 0) != 0 || !validas.count(a.substr(2))) {
            erro = "opção desconhecida: " + a;
            return;
        }
        if (i + 1 >= args.size()) {
            erro = "falta o valor de " + a;
            return;
        }
        valores[a.substr(2)] = args[++i];
    }
}

std::string Opcoes::texto(const std::string& nome, const std::string& padrao) const {
    auto it = valores.find(nome);
    return it == valores.end() ? padrao : it->second;
}

std::optional<long> Opcoes::inteiro(const std::string& nome, long min, long max, long padrao) {
    auto it = valores.find(nome);
    if (it == valores.end()) return padrao;
    const char* s = it->second.c_str();
    char* fim = nullptr;
    errno = 0;
    const long v = std::strtol(s, &fim, 10);
    if (errno || fim == s || *fim != '\0' || v < min || v > max) {
        erro = "--" + nome + " espera um número inteiro de " + std::to_string(min) + " a " +
               std::to_string(max) + ", não \"" + it->second + "\"";
        return std::nullopt;
    }
    return v;
}

std::optional<double> Opcoes::real(const std::string& nome, double min, double max) {
    auto it = valores.find(nome);
    if (it == valores.end()) return std::nullopt;
    const char* s = it->second.c_str();
    char* fim = nullptr;
    errno = 0;
    const double v = std::strtod(s, &fim);
    if (errno || fim == s || *fim != '\0' || !std::isfinite(v) || v < min || v > max) {
        erro = "--" + nome + " espera um número de segundos, não \"" + it->second + "\"";
        return std::nullopt;
    }
    return v;
}

int ErroDeUso(const std::string& mensagem) {
    std::fprintf(stderr, "velmora-cli: %s\n", mensagem.c_str());
    return 2;
}

} // namespace velmora::cli
