#include "service/cadastro.h"

#include "service/respostas.h"
#include "store/configuracao.h"
#include "store/texto1252.h"

#include <array>

namespace velmora {

namespace {

std::string Slot(const char* base, int k) {
    return base + std::to_string(k);
}

int UltimoSlot(clsRegistryAccess& reg) {
    return static_cast<int>(Numero(LeOpcao(reg, "NoCombo3", "0"), 0, 1000));
}

// Lower case of a text as the player typed it (UTF-8), accents included.
std::string Minusculas(const std::string& texto) {
    return Cp1252ParaUtf8(MinusculasCp1252(Utf8ParaCp1252(texto)));
}

bool Iguais(const std::string& a, const std::string& b) {
    return Minusculas(a) == Minusculas(b);
}

std::string Apara(const std::string& s) {
    const auto ini = s.find_first_not_of(' ');
    if (ini == std::string::npos) return {};
    return s.substr(ini, s.find_last_not_of(' ') - ini + 1);
}

// The refused words, one comma list read from the left up to an empty field.
constexpr const char* PalavrasProibidas =
    "buceta,caralho,porra,merda,bosta,viado,puta,boceta,cú,cu,fuder,foda,fudido,disgraça,fude,"
    "cusao,cusão,veado,viado,corno";

} // namespace

std::vector<std::string> PoeNoCombo(clsRegistryAccess& reg) {
    std::vector<std::string> nicks;
    for (int k = UltimoSlot(reg); k >= 1; --k) {
        const std::string nick = LeOpcao(reg, Slot("combo3N", k), "");
        if (nick.empty()) break;
        if (nick != NickApagado) nicks.push_back(nick);
    }
    return nicks;
}

std::optional<std::string> SenhaGuardada(clsRegistryAccess& reg, const std::string& nick) {
    const int ultimo = UltimoSlot(reg);
    for (int k = 1; k <= ultimo; ++k)
        if (Iguais(LeOpcao(reg, Slot("combo3N", k), ""), nick))
            return LeOpcao(reg, Slot("combo3S", k), "");
    return std::nullopt;
}

void GravaCombo(clsRegistryAccess& reg, const std::string& nick, const std::string& senha,
                bool guardaSenha) {
    int k = 1;
    for (;; ++k) {
        const std::string v = LeOpcao(reg, Slot("combo3N", k), "");
        if (v.empty() || Iguais(v, nick)) break;
    }
    GravaOpcao(reg, Slot("combo3N", k), nick);
    GravaOpcao(reg, Slot("combo3S", k), guardaSenha ? senha : "");
    GravaOpcao(reg, "NoCombo3", std::to_string(k));
}

void ApagadoCombo(clsRegistryAccess& reg, const std::string& nick) {
    for (int k = 1; k <= 30; ++k) {
        if (Iguais(LeOpcao(reg, Slot("combo3N", k), ""), nick)) {
            GravaOpcao(reg, Slot("combo3N", k), NickApagado);
            GravaOpcao(reg, Slot("combo3S", k), "");
            return;
        }
    }
}

std::string TextoLabel10(bool temNicks) {
    return temNicks ? "Cadastrar um novo Nick" : "Se você não possui Nick e senha, clique aqui";
}

bool NickProibido(const std::string& nick) {
    const std::string n = Minusculas(nick);
    const auto palavras = Campos(PalavrasProibidas, ",");
    for (std::size_t i = 0; i < palavras.size() && i < 100; ++i) {
        if (palavras[i].empty()) break;
        if (n.find(palavras[i]) != std::string::npos) return true;
    }
    return false;
}

void FrmCadastro::Confirma(Pedidos& pedidos, clsRegistryAccess& reg,
                           const std::function<void(const std::string&)>& mensagem,
                           const std::function<void(bool)>& ocupado) {
    Text1 = Apara(Text1);
    Text2 = Apara(Text2);
    Text3 = Apara(Text3);
    if (Text1.empty()) {
        mensagem("Por favor informe um apelido");
        foco = Foco::Nick;
        return;
    }
    if (Text2.empty()) {
        mensagem("Por favor defina uma senha de acesso");
        foco = Foco::Nick;
        return;
    }
    if (Utf8ParaCp1252(Text2).size() < 4) {
        mensagem("Por favor defina uma senha de acesso com no mínimo 4 digitos");
        foco = Foco::Nick;
        return;
    }
    if (Text3.empty()) {
        mensagem("Por favor digite a confirmação da senha");
        foco = Foco::Senha;
        return;
    }
    if (Text2 != Text3) {
        mensagem("A senha não é igual a confirmação. Por favor digite a senha novamente");
        Text2.clear();
        Text3.clear();
        foco = Foco::Senha;
        return;
    }
    if (NickProibido(Text1)) {
        mensagem("Por favor utilize outro  nick");
        Text1.clear();
        foco = Foco::Nick;
        return;
    }
    BotoesHabilitados = false;
    if (ocupado) ocupado(true);
    const RespostaCadastro r = LeCadastro(pedidos.Cadastro(Text1, Text2));
    if (ocupado) ocupado(false);
    switch (r.tipo) {
    case RespostaCadastro::SemResposta:
        mensagem("Não foi possível acessar o servidor para cadastrar o seu nick");
        Fechou = true;
        return;
    case RespostaCadastro::Criado:
        mensagem("Nick cadastrado com sucesso!");
        GravaCombo(reg, Text1, Text2, guardaSenha);
        Fechou = true;
        NickCriado = true;
        return;
    case RespostaCadastro::JaTem:
        mensagem("Este Nick já está em uso. Por favor tente outro nick");
        break;
    case RespostaCadastro::Erro:
        mensagem("Não foi possível cadastrar o nick");
        Fechou = true;
        return;
    case RespostaCadastro::Outro:
        mensagem(r.texto.empty()
                     ? "Não foi possível cadastrar este nick. Por favor tente outro nick"
                     : r.texto);
        break;
    }
    foco = Foco::NickSelecionado;
    BotoesHabilitados = true;
}

std::string FrmCadastro::Enter() const {
    if (!Text1.empty() && Text2.empty() && Text3.empty()) return "senha";
    if (!Text1.empty() && !Text2.empty() && Text3.empty()) return "confirmacao";
    if (!Text1.empty() && !Text2.empty() && !Text3.empty()) return "confirma";
    return "";
}

bool PodeCadastrar(Pedidos& pedidos, const std::function<void(const std::string&)>& mensagem) {
    const RespostaPodeCadastrar r = LePodeCadastrar(pedidos.PodeCadastrar());
    if (r.tipo == RespostaPodeCadastrar::NaoPode) mensagem(r.texto);
    if (r.tipo == RespostaPodeCadastrar::SemResposta)
        mensagem("Servidor inacessível no momento. Verifique se está conectado à internet");
    return r.tipo == RespostaPodeCadastrar::Pode;
}

} // namespace velmora
