#pragma once
// What the operator chooses: addresses, ports, the database, the update offer, the notice,
// the limits. From defaults, then a configuration file ("chave = valor" lines, "#"
// comments), then the environment (VELMORA_SERVICO_CHAVE), then the command line
// ("--chave valor" or "--chave=valor"), each overriding the one before. The same names
// serve all; `velmora-servico --ajuda` lists them.
#include "server/senha.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace velmora::servidor {

struct Opcoes {
    // The web service: the game's default base address is http://127.0.0.1:8080
    std::string endereco = "127.0.0.1";
    std::uint16_t porta = 8080;
    // The relay, whose address the request with "Acao=Server" returns
    std::string enderecoRelay; // empty: the same as `endereco`
    std::uint16_t portaRelay = 8081;
    // The host name the replies and pages name (relay address, installer links); empty:
    // the listening address, or 127.0.0.1 when that is 0.0.0.0
    std::string hostPublico;
    // SQLite folder; empty: $XDG_DATA_HOME/velmora-servico (~/.local/share/...)
    std::filesystem::path dados;
    // A PostgreSQL connection URL ("postgresql://..."), or empty for SQLite
    std::string banco;

    // The update offer: newest version, installer address (empty: the download page),
    // compulsory or not, and a text (";" is a line break in the game)
    std::string versaoNova = "3.9.0";
    std::string linkInstalador;
    bool obrigatorio = false;
    std::string textoAtualizacao;
    // The notice shown when entering the lobby; with `avisoBloqueia` nobody goes on
    std::string aviso;
    bool avisoBloqueia = false;
    std::string contato = "contato@velmora.example";

    // Session parameters handed to the game
    int portaPadrao = 2001;
    int tempoJogada = 60;
    int intervaloLista = 30;

    // Limits
    int limiteCadastros = 3;       // nicks created per address in 24 hours
    int trabalhadores = 4;         // threads for requests that touch the database
    std::size_t maxConexoes = 512; // open web connections
    std::size_t maxFila = 256;     // requests waiting for a worker
    std::size_t maxRelay = 4096;   // relay connections
    std::size_t maxRelayPorEndereco = 16;
    double tempoPedido = 10.0;        // seconds to send a whole request
    double tempoNick = 30.0;          // seconds for a relay copy to send its first message
    double tempoAssenta = 0.05;       // seconds a whole-looking relay first message waits for more
    double tempoEsperaRelay = 3600.0; // seconds a relay copy may wait for a partner
    double tempoOcioso = 600.0;       // seconds of silence that end a relay pair
    double tempoSonda = 3.0;          // seconds the port test waits for the dial-back
    bool semLimites = false;          // rate limits off (benchmarks only)
    std::string proxy;                // address of a trusted reverse proxy (X-Forwarded-For)
    CustoSenha custoSenha;

    std::string HostPublico() const;
    std::string UrlPublica() const;
    std::string EnderecoRelay() const { return enderecoRelay.empty() ? endereco : enderecoRelay; }
    std::filesystem::path PastaDados() const;
};

// Reads a file then the arguments into `o`. Returns an error text, empty when all is well.
std::string LeOpcoes(Opcoes& o, const std::vector<std::string>& argumentos);
std::string AjudaOpcoes();

} // namespace velmora::servidor
