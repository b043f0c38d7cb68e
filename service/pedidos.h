#pragma once
// The service's requests: for each one its path and query, in the order the service reads
// the keys, and its fetches. A request that has a second fetch makes it only when the
// first reply lacks its marker. Nothing is URL-encoded except the spaces of a nick (and of
// a title), which go out as "%20"; passwords go as typed.
#include "service/buscas.h"

#include <cstdint>
#include <string>

namespace velmora {

// Row 1's inputs, the waiting list.
struct PedidoLista {
    std::string nick;
    std::string acao; // empty or "Atualizar"
    int porta = 0;
    std::string grupo;      // group password in lower case, empty for none
    bool portaOK = false;   // "&pab=s": the port test passed
    bool visitante = false; // "&v=S"
    bool naRede = false;    // "&prt=" and the local address
    std::string enderecoLocal;
    std::string idcpt;       // this computer
    std::string idcptRemoto; // the last peer's computer (setting IDCPT_Remote)
};

// Row 4's inputs, leaving the waiting list.
struct PedidoDeletar {
    bool visitante = false; // v=S, else N
    std::string nick1, nick2;
    bool cliente = false; // wPlayer=S
    std::string mac;      // the peer's computer id
};

class Pedidos {
  public:
    Pedidos(Buscas& buscas, std::string endereco, std::string enderecoTeste);

    // The URL of each row, without fetching.
    std::string UrlLista(const PedidoLista& p) const;
    std::string UrlParametros(const std::string& acao, const std::string& nick) const;
    std::string UrlServidor() const;
    std::string UrlDeletar(const PedidoDeletar& p) const;
    std::string UrlEntrar(const std::string& nick, const std::string& senha, bool wb) const;
    std::string UrlCadastro(const std::string& nick, const std::string& senha) const;
    std::string UrlPodeCadastrar() const;
    std::string UrlBloqueio() const;
    std::string UrlAtribui(const std::string& id1, const std::string& id2, bool terminou,
                           std::int64_t idt) const;
    std::string UrlTestePorta(const std::string& porta) const;
    std::string UrlMeuIP() const;

    // The rows, fetched. Each returns the last reply it got (which may lack its marker).
    // Row 1: trimmed, CR and LF removed.
    std::string Lista(const PedidoLista& p);
    std::string Parametros(const std::string& acao, const std::string& nick);
    std::string Servidor();
    std::string Deletar(const PedidoDeletar& p);
    std::string Entrar(const std::string& nick, const std::string& senha, bool wb);
    std::string Cadastro(const std::string& nick, const std::string& senha);
    std::string PodeCadastrar();
    std::string Bloqueio();
    std::string Atribui(const std::string& id1, const std::string& id2, bool terminou,
                        std::int64_t idt);
    std::string TestePorta(const std::string& porta, std::int32_t tempo);
    std::string MeuIP();

    // The pages opened in the browser.
    std::string PaginaRanking() const;
    std::string PaginaPerfilProprio(const std::string& senha, const std::string& id) const;
    std::string PaginaPerfil(const std::string& id) const;
    std::string PaginaPerfilNick(const std::string& nick, const std::string& senha) const;
    std::string PaginaRoteador() const;
    std::string PaginaContato() const;
    std::string PaginaDownload() const;

    const std::string& Endereco() const { return endereco_; }
    const std::string& EnderecoTeste() const { return enderecoTeste_; }

  private:
    Buscas& buscas_;
    std::string endereco_, enderecoTeste_;
};

// Spaces as "%20".
std::string EspacosNaUrl(const std::string& texto);

// The action word of the session parameters' request (row 2), agreed with velmora-servico.
inline constexpr const char* AcaoParametros = "Parametros";

} // namespace velmora
