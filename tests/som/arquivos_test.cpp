// The generated sounds and tunes: well-formed files that a player will accept, short enough
// for effects the game waits on, and tunes of the intended length.
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;
const std::filesystem::path kAssets = VELMORA_ASSETS;

Bytes Le(const std::filesystem::path& caminho) {
    std::ifstream arquivo(caminho, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(arquivo), {});
}

uint32_t Le32le(const Bytes& b, size_t i) {
    return b[i] | (b[i + 1] << 8) | (b[i + 2] << 16) | (uint32_t{b[i + 3]} << 24);
}
uint16_t Le16le(const Bytes& b, size_t i) {
    return static_cast<uint16_t>(b[i] | (b[i + 1] << 8));
}
uint32_t Le32be(const Bytes& b, size_t i) {
    return (uint32_t{b[i]} << 24) | (b[i + 1] << 16) | (b[i + 2] << 8) | b[i + 3];
}
uint16_t Le16be(const Bytes& b, size_t i) {
    return static_cast<uint16_t>((b[i] << 8) | b[i + 1]);
}
bool Marca(const Bytes& b, size_t i, const char* texto) {
    return b.size() >= i + 4 && std::equal(texto, texto + 4, b.begin() + i);
}

struct Onda {
    uint16_t formato = 0, canais = 0, bits = 0;
    uint32_t taxa = 0, bytesDados = 0;
    double Segundos() const { return double(bytesDados) / (taxa * canais * (bits / 8)); }
};

// Walks the RIFF chunks; fails the test on anything a player would stumble over.
Onda LeOnda(const std::string& nome) {
    const Bytes b = Le(kAssets / nome);
    Onda onda;
    EXPECT_TRUE(Marca(b, 0, "RIFF") && Marca(b, 8, "WAVE")) << nome;
    if (b.size() < 12) return onda;
    EXPECT_EQ(Le32le(b, 4), b.size() - 8) << nome << ": RIFF size";
    bool temFmt = false, temDados = false;
    for (size_t i = 12; i + 8 <= b.size();) {
        const uint32_t tamanho = Le32le(b, i + 4);
        EXPECT_LE(i + 8 + tamanho, b.size()) << nome << ": chunk runs past the end";
        if (Marca(b, i, "fmt ") && tamanho >= 16) {
            temFmt = true;
            onda.formato = Le16le(b, i + 8);
            onda.canais = Le16le(b, i + 10);
            onda.taxa = Le32le(b, i + 12);
            onda.bits = Le16le(b, i + 22);
            EXPECT_EQ(Le32le(b, i + 16), onda.taxa * onda.canais * onda.bits / 8) << nome;
        } else if (Marca(b, i, "data")) {
            temDados = true;
            onda.bytesDados = tamanho;
        }
        i += 8 + tamanho + (tamanho & 1);
    }
    EXPECT_TRUE(temFmt && temDados) << nome;
    return onda;
}

TEST(ArquivosDeSom, SaoOndasPcmCurtasEDistintas) {
    // name, and the longest the game should wait on it
    const std::map<std::string, double> sons = {{"mover.wav", 0.2},
                                                {"Click.wav", 0.15},
                                                {"click.wav", 0.15},
                                                {"alarme.wav", 1.5},
                                                {"talk.wav", 1.0}};
    std::set<Bytes> conteudos;
    for (const auto& [nome, maximo] : sons) {
        SCOPED_TRACE(nome);
        const Onda onda = LeOnda(nome);
        EXPECT_EQ(onda.formato, 1); // PCM
        EXPECT_EQ(onda.bits, 16);
        EXPECT_GE(onda.canais, 1);
        EXPECT_GE(onda.taxa, 22050u);
        EXPECT_GT(onda.Segundos(), 0.02);
        EXPECT_LE(onda.Segundos(), maximo);
        conteudos.insert(Le(kAssets / nome));
    }
    // "Click.wav" and "click.wav" are two files, and no two sounds are the same
    EXPECT_EQ(conteudos.size(), sons.size());
}

TEST(ArquivosDeSom, NaoSaturamNemComecamComEstalo) {
    for (const char* nome : {"mover.wav", "Click.wav", "click.wav", "alarme.wav", "talk.wav"}) {
        SCOPED_TRACE(nome);
        const Bytes b = Le(kAssets / nome);
        const size_t dados = b.size() - LeOnda(nome).bytesDados;
        int maior = 0;
        for (size_t i = dados; i + 1 < b.size(); i += 2) {
            maior = std::max(maior, std::abs(static_cast<int16_t>(Le16le(b, i))));
        }
        EXPECT_LT(maior, 32000) << "clipped";
        EXPECT_GT(maior, 8000) << "too quiet";
        EXPECT_EQ(static_cast<int16_t>(Le16le(b, dados)), 0) << "first sample";
        EXPECT_EQ(static_cast<int16_t>(Le16le(b, b.size() - 2)), 0) << "last sample";
    }
}

// What a MIDI player needs from a file, gathered by reading every event.
struct Peca {
    uint16_t formato = 0, trilhas = 0, divisao = 0;
    int trilhasLidas = 0, trilhasComFim = 0, notasLigadas = 0, notasPendentes = 0;
    double segundos = 0;
    std::set<int> canais;
};

uint32_t NumeroVariavel(const Bytes& b, size_t& i, size_t fim) {
    uint32_t valor = 0;
    for (int n = 0; n < 4 && i < fim; ++n) {
        const unsigned char c = b[i++];
        valor = (valor << 7) | (c & 0x7F);
        if ((c & 0x80) == 0) break;
    }
    return valor;
}

Peca LePeca(const std::string& nome) {
    const Bytes b = Le(kAssets / nome);
    Peca peca;
    EXPECT_TRUE(Marca(b, 0, "MThd")) << nome;
    if (b.size() < 14) return peca;
    EXPECT_EQ(Le32be(b, 4), 6u);
    peca.formato = Le16be(b, 8);
    peca.trilhas = Le16be(b, 10);
    peca.divisao = Le16be(b, 12);
    // tempo changes by tick, to turn the last tick into seconds
    std::map<uint64_t, uint32_t> tempos{{0, 500000}};
    uint64_t ultimoTick = 0;
    std::map<std::pair<int, int>, int> soando;
    for (size_t i = 14; i + 8 <= b.size();) {
        EXPECT_TRUE(Marca(b, i, "MTrk")) << nome << " at " << i;
        const size_t fim = std::min(b.size(), i + 8 + Le32be(b, i + 4));
        ++peca.trilhasLidas;
        uint64_t tick = 0;
        unsigned char status = 0;
        for (size_t j = i + 8; j < fim;) {
            tick += NumeroVariavel(b, j, fim);
            if (j >= fim) break;
            if (b[j] & 0x80) status = b[j++];
            if (status == 0xFF) {
                const unsigned char tipo = b[j++];
                const uint32_t tamanho = NumeroVariavel(b, j, fim);
                if (tipo == 0x51 && tamanho == 3) {
                    tempos[tick] = (b[j] << 16) | (b[j + 1] << 8) | b[j + 2];
                }
                if (tipo == 0x2F) {
                    ++peca.trilhasComFim;
                    EXPECT_EQ(j + tamanho, fim) << nome << ": end of track before the end";
                }
                j += tamanho;
                continue;
            }
            const int tipo = status & 0xF0, canal = status & 0x0F;
            const bool doisBytes = tipo != 0xC0 && tipo != 0xD0;
            const int nota = b[j], forca = doisBytes ? b[j + 1] : 0;
            j += doisBytes ? 2 : 1;
            if (tipo == 0x90 && forca > 0) {
                ++peca.notasLigadas;
                ++soando[{canal, nota}];
                peca.canais.insert(canal);
            } else if (tipo == 0x80 || tipo == 0x90) {
                --soando[{canal, nota}];
            }
        }
        ultimoTick = std::max(ultimoTick, tick);
        i = fim;
    }
    for (const auto& [chave, n] : soando) peca.notasPendentes += n != 0;
    // seconds: each stretch of ticks at its own tempo
    for (auto it = tempos.begin(); it != tempos.end() && it->first < ultimoTick; ++it) {
        const auto proximo = std::next(it);
        const uint64_t ate = proximo == tempos.end() ? ultimoTick : proximo->first;
        peca.segundos += double(ate - it->first) / peca.divisao * it->second / 1e6;
    }
    return peca;
}

TEST(ArquivosDeMusica, SaoMidiCompletosDeMeioMinutoAUmMinuto) {
    EXPECT_NE(Le(kAssets / "sweethrt.mid"), Le(kAssets / "passport.mid"));
    for (const char* nome : {"sweethrt.mid", "passport.mid"}) {
        SCOPED_TRACE(nome);
        const Peca peca = LePeca(nome);
        EXPECT_EQ(peca.formato, 1);
        EXPECT_GT(peca.divisao, 0);
        EXPECT_LT(peca.divisao, 0x8000); // ticks per beat, not SMPTE
        EXPECT_EQ(peca.trilhasLidas, peca.trilhas);
        EXPECT_EQ(peca.trilhasComFim, peca.trilhas);
        EXPECT_EQ(peca.notasPendentes, 0) << "a note is never released";
        // a melody, a bass line and an accompaniment
        EXPECT_GE(peca.canais.size(), 3u);
        EXPECT_GT(peca.notasLigadas, 150);
        EXPECT_GE(peca.segundos, 30.0);
        EXPECT_LE(peca.segundos, 60.0);
    }
}

} // namespace
