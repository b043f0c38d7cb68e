#pragma once
// Reading "--name value" options of the subcommands, with clear messages for bad ones.
#include "comandos.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace velmora::cli {

class Opcoes {
public:
    // Accepts only the names in `validas`; `erro` says what was wrong.
    Opcoes(const Argumentos& args, const std::set<std::string>& validas);
    bool ok() const { return erro.empty(); }
    bool tem(const std::string& nome) const { return valores.count(nome) != 0; }
    std::string texto(const std::string& nome, const std::string& padrao = "") const;
    // A whole number within [min, max]; sets `erro` when the text is not one.
    std::optional<long> inteiro(const std::string& nome, long min, long max, long padrao);
    std::optional<double> real(const std::string& nome, double min, double max);
    std::string erro;

private:
    std::map<std::string, std::string> valores;
};

// Prints the message to standard error and gives the exit code of bad arguments.
int ErroDeUso(const std::string& mensagem);

} // namespace velmora::cli
