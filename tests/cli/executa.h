#pragma once
// Runs velmora-cli through the shell and keeps what it printed and how it ended.
#include <array>
#include <cstdio>
#include <string>
#include <sys/wait.h>

namespace velmora::teste {

struct Saida {
    std::string texto; // standard output
    int codigo = -1;   // exit code; -1 when the process died of a signal
};

inline Saida Executa(const std::string& argumentos) {
    const std::string comando = std::string(VELMORA_CLI) + " " + argumentos + " 2>/dev/null";
    Saida s;
    FILE* f = popen(comando.c_str(), "r");
    if (!f) return s;
    std::array<char, 4096> b;
    for (size_t n; (n = fread(b.data(), 1, b.size(), f)) > 0;) s.texto.append(b.data(), n);
    const int estado = pclose(f);
    if (WIFEXITED(estado)) s.codigo = WEXITSTATUS(estado);
    return s;
}

// A board text as one shell word.
inline std::string Aspas(const std::string& t) {
    return "'" + t + "'";
}

} // namespace velmora::teste
