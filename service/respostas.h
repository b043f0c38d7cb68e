#pragma once
// The service's replies, read. Every reply is untrusted text: these functions take any
// bytes, never fail, and give the "no answer" reading whenever a marker or a field is
// missing. Fields are cut as Pedaco cuts them.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

// Trimmed of blanks at both ends, with every CR and LF taken out.
std::string Limpa(std::string_view texto);
bool Contem(std::string_view texto, std::string_view parte);
// Every field of `texto` by `sep`, in order, exactly as Pedaco(texto, sep, 1..n) gives
// them, in one pass. Fields past the last are not listed.
std::vector<std::string> Campos(std::string_view texto, std::string_view sep);
// A text's leading whole number (blanks, sign, digits), held within [minimo, maximo];
// 0 when it doesn't begin with a number.
long Numero(std::string_view texto, long minimo, long maximo);
// Each ";" as the given line break.
std::string QuebraLinhas(std::string texto, std::string_view quebra);

// ---------------------------------------------------------------- waiting list
enum class TipoLista { FaltamDados, Vazia, Lista, Erro };
// The reply as the direct way reads it (already cleaned with Limpa).
TipoLista ClassificaLista(std::string_view resposta);
// Runs of four or more "*" collapse two by two, as replacing "****" by "**" until none is
// left does: an even run becomes "**", an odd one "***".
std::string ColapsaSeparadores(std::string_view texto);
// The candidates of a list reply: the "!!" fields up to the first empty field, without the
// "!!", skipping this copy's own address and a repeat of the line just added. `parar` is
// asked after each field; when it says so the list is empty.
std::vector<std::string> CarregaIpstoList(std::string_view resposta, std::string_view enderecoLocal,
                                          const std::function<bool()>& parar = {});

// ---------------------------------------------------------------- session parameters
struct ParametrosSessao {
    bool valido = false;   // field 1 is "R"
    bool notifica = false; // field 3 is "Notificame:"
    std::string aviso;     // field 4, ";" already made CR LF
    bool impede = false;   // field 5 in lower case is "false"
    int porta = 0;         // from "porta:n" with n in 1..65535; 0 means the stored default
    int tempoLimite = 60;  // seconds of a move, at least 60
    int tempoEspera = 30;  // seconds between list requests, at least 10
};
ParametrosSessao LeParametros(std::string_view resposta);

// ---------------------------------------------------------------- relay address
struct EnderecoRelay {
    bool valido = false; // field 1 by "#" is "IPSERVER"
    std::string host;
    int porta = 0; // 0 when the field isn't a port
};
EnderecoRelay LeServidor(std::string_view resposta);

// ---------------------------------------------------------------- login
struct RespostaLogin {
    enum Tipo { SemResposta, Recusado, Aceito } tipo = SemResposta;
    long pontos = 0;
    std::string id = "0";
    std::string mensagem; // shown first when field 4 is "MSG:"
};
RespostaLogin LeLogin(std::string_view resposta);

// ---------------------------------------------------------------- new nick
struct RespostaCadastro {
    enum Tipo { SemResposta, Criado, JaTem, Erro, Outro } tipo = SemResposta;
    std::string texto; // field 3, for Outro
};
RespostaCadastro LeCadastro(std::string_view resposta);

// ---------------------------------------------------------------- may a nick be made
struct RespostaPodeCadastrar {
    enum Tipo { SemResposta, Pode, NaoPode } tipo = SemResposta;
    std::string texto; // what to show when it can't
};
RespostaPodeCadastrar LePodeCadastrar(std::string_view resposta);

// ---------------------------------------------------------------- ban test
struct RespostaBloqueio {
    enum Tipo { SemResposta, Bloqueado, Livre } tipo = SemResposta;
    std::string texto; // field 2 by ":", when banned
};
RespostaBloqueio LeBloqueio(std::string_view resposta);

// ---------------------------------------------------------------- award of a win
struct RespostaAtribui {
    bool ok = false;
    bool temPT1 = false, temPT2 = false;
    long pt1 = 0, pt2 = 0;
};
RespostaAtribui LeAtribui(std::string_view resposta);

// ---------------------------------------------------------------- port test
// 1 reached, 2 not reached, 0 "RESP" with neither word, 4 no answer.
int LeTestePorta(std::string_view resposta);

// ---------------------------------------------------------------- own public address
// The address after "Seu IP:", empty without the marker.
std::string LeMeuIP(std::string_view resposta);

// ---------------------------------------------------------------- peer's points
// "GETPT:a:b" from the peer: a the sender's total, b ours; blanks read as 0.
struct PontosRecebidos {
    long doPeer = 0, meus = 0;
};
PontosRecebidos LeGETPT(std::string_view mensagem);

} // namespace velmora
