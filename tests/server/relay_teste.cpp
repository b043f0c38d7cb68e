// The relay: pairing by group, the later copy's "Nick:" handed to the earlier one, bytes
// both ways unchanged, the other side closed when one leaves, and bad first messages.
#include "apoio.h"

#include <gtest/gtest.h>

using namespace teste;

namespace {

std::string Nick(const std::string& nome, const std::string& grupo = "",
                 const std::string& id = "0", const std::string& compat = "17") {
    return "Nick:#" + id + "#" + nome + "#1000#" + compat + "#" + (id == "0" ? "VS" : "NV") +
           "#Chief#PC-" + nome + "#Port#IDT:0#" + grupo + "A#";
}

// Dials the relay and sends the first message
int Entra(ServicoVivo& s, const std::string& nick, const std::string& origem = "127.0.0.1") {
    const int c = Conecta(s.rede->PortaRelay(), origem);
    EnviaTudo(c, nick);
    return c;
}

// Waits until the relay holds `n` pairs
bool EsperaPares(ServicoVivo& s, std::size_t n) {
    for (int i = 0; i < 200; ++i) {
        if (s.rede->ParesRelay() == n) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace

TEST(Relay, MesmoGrupoSeEncontraEOsBytesPassamIntactos) {
    ServicoVivo s;
    const int a = Entra(s, Nick("ana"));
    ASSERT_GE(a, 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const int b = Entra(s, Nick("bia"));
    // The earlier copy receives the later one's "Nick:" exactly; the later receives nothing
    EXPECT_EQ(RecebeAteFechar(a, nullptr, 500), Nick("bia"));
    EXPECT_EQ(RecebeUma(b, 200), "");
    // Every byte value, and a large block, both ways
    std::string todos;
    for (int i = 0; i < 256; ++i) todos += static_cast<char>(i);
    EnviaTudo(a, "Config:#0#ana#1000#1#0#60#VS#PC-ana" + todos);
    EXPECT_EQ(RecebeAteFechar(b, nullptr, 500), "Config:#0#ana#1000#1#0#60#VS#PC-ana" + todos);
    std::string grande;
    for (int i = 0; i < 300000; ++i) grande += static_cast<char>((i * 7) & 0xFF);
    std::thread envia([&] { EnviaTudo(b, grande); });
    std::string recebido;
    while (recebido.size() < grande.size()) {
        const auto pedaco = RecebeUma(a, 2000);
        if (pedaco.empty()) break;
        recebido += pedaco;
    }
    envia.join();
    EXPECT_EQ(recebido, grande);
    // One side leaves: the other is closed
    ::close(a);
    bool fechou = false;
    RecebeAteFechar(b, &fechou, 2000);
    EXPECT_TRUE(fechou);
    ::close(b);
}

TEST(Relay, GruposDiferentesNaoSeEncontramEUmTerceiroEspera) {
    ServicoVivo s;
    const int a = Entra(s, Nick("ana", "amigos"));
    const int b = Entra(s, Nick("bia", "outros"));
    const int c = Entra(s, Nick("caio"));                // strangers
    const int d = Entra(s, Nick("dani", "", "0", "16")); // another protocol number
    EXPECT_EQ(RecebeUma(a, 300), "");
    EXPECT_EQ(RecebeUma(b, 10), "");
    EXPECT_EQ(RecebeUma(c, 10), "");
    EXPECT_EQ(s.rede->ParesRelay(), 0u);
    // The same group meets, with "#" inside the group text
    const int e = Entra(s, Nick("eva", "amigos"));
    EXPECT_EQ(RecebeUma(a), Nick("eva", "amigos"));
    const int f = Entra(s, Nick("fabio"));
    EXPECT_EQ(RecebeUma(c), Nick("fabio"));
    ASSERT_TRUE(EsperaPares(s, 2));
    // A third stranger waits, and meets the fourth
    const int g = Entra(s, Nick("gil"));
    EXPECT_EQ(RecebeUma(g, 200), "");
    const int h = Entra(s, Nick("hugo"));
    EXPECT_EQ(RecebeUma(g), Nick("hugo"));
    ASSERT_TRUE(EsperaPares(s, 3));
    // A waiting copy that leaves is not paired afterwards
    ::close(b);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    const int i = Entra(s, Nick("iris", "outros"));
    EXPECT_EQ(RecebeUma(i, 200), "");
    const int j = Entra(s, Nick("juca", "outros"));
    EXPECT_EQ(RecebeUma(i), Nick("juca", "outros"));
    for (const int x : {a, c, d, e, f, g, h, i, j}) ::close(x);
}

TEST(Relay, PrimeiraMensagemPicadaOuJuntaComOResto) {
    // A generous wait for more bytes, so that a loaded machine can't split the test's timing
    ServicoVivo s([](Opcoes& o) { o.tempoAssenta = 0.5; });
    const int a = Entra(s, Nick("ana"));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    // Byte by byte
    const int b = Conecta(s.rede->PortaRelay());
    for (const char ch : Nick("bia")) {
        EnviaTudo(b, std::string(1, ch));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    EXPECT_EQ(RecebeUma(a), Nick("bia"));
    ::close(a);
    ::close(b);
    // Two copies whose reads merge nothing of the other's: each is read on its own
    const int c = Conecta(s.rede->PortaRelay());
    EnviaTudo(c, Nick("caio").substr(0, 10));
    const int d = Entra(s, Nick("dani"));
    EXPECT_EQ(RecebeUma(d, 200), "");
    EnviaTudo(c, Nick("caio").substr(10));
    EXPECT_EQ(RecebeUma(d), Nick("caio"));
    ::close(c);
    ::close(d);
    // A group text that holds "A#", cut right behind it: still one group, "xA#y"
    const int e = Entra(s, Nick("eva", "xA#y"));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const int f = Conecta(s.rede->PortaRelay());
    const auto nickF = Nick("fabio", "xA#y");
    EnviaTudo(f, nickF.substr(0, nickF.find("xA#") + 3));
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EnviaTudo(f, nickF.substr(nickF.find("xA#") + 3));
    EXPECT_EQ(RecebeUma(e), nickF);
    ::close(e);
    ::close(f);
}

TEST(Relay, LixoSilencioELimites) {
    ServicoVivo s([](Opcoes& o) {
        o.tempoNick = 0.3;
        o.maxRelayPorEndereco = 3;
    });
    bool fechou = false;
    // Garbage: closed at once
    int c = Entra(s, "GET / HTTP/1.1\r\n\r\n");
    RecebeAteFechar(c, &fechou, 1000);
    EXPECT_TRUE(fechou);
    ::close(c);
    // Endless first message: closed at the bound
    c = Entra(s, "Nick:#0#a#1000#17#VS#Chief#PC#Port#IDT:0#" + std::string(5000, 'x'));
    RecebeAteFechar(c, &fechou, 1000);
    EXPECT_TRUE(fechou);
    ::close(c);
    // Never sends "Nick:": closed after the deadline
    c = Conecta(s.rede->PortaRelay());
    const auto antes = std::chrono::steady_clock::now();
    RecebeAteFechar(c, &fechou, 3000);
    EXPECT_TRUE(fechou);
    EXPECT_LT(std::chrono::steady_clock::now() - antes, std::chrono::milliseconds(2000));
    ::close(c);
    // At most three connections from one address; another address still gets in
    std::vector<int> v;
    for (int i = 0; i < 4; ++i)
        v.push_back(Entra(s, Nick("x" + std::to_string(i), "g" + std::to_string(i)), "127.0.0.9"));
    RecebeAteFechar(v[3], &fechou, 1000);
    EXPECT_TRUE(fechou);
    const int outro = Entra(s, Nick("y", "g0"), "127.0.0.10");
    EXPECT_EQ(RecebeUma(v[0]), Nick("y", "g0"));
    for (const int x : v) ::close(x);
    ::close(outro);
}
