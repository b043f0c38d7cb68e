#pragma once
// The settings store in memory: seven roots, each a tree of keys; a key holds typed values.
// Names and string data are kept as the Windows-1252 bytes that go to the disk, and are
// compared without regard to case.
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

enum TipoValor : int { RegSz = 1, RegExpandSz = 2, RegBinary = 3, RegDword = 4 };

// Limits that keep a hostile file or caller within bounds, as the registry's own do.
inline constexpr std::size_t MaxNomeChave = 255;
inline constexpr std::size_t MaxProfundidade = 512;
inline constexpr std::size_t MaxNomeValor = 16383;
// A value name fits on one line of the store file.
bool NomeDeValorValido(std::string_view nome);

struct ValorRegistro {
    std::string nome;
    int tipo = RegSz;
    std::string dados; // a DWORD as 4 bytes, least significant first
    std::uint64_t ordem = 0;
};

struct ChaveRegistro {
    std::string nome;
    std::map<std::string, ChaveRegistro> filhas;  // by lower-case name: the listing order
    std::map<std::string, ValorRegistro> valores; // by lower-case name
    std::uint64_t proximaOrdem = 0;

    const ChaveRegistro* Filha(std::string_view nome) const;
    ChaveRegistro* Filha(std::string_view nome);
    ChaveRegistro& CriaFilha(std::string_view nome);
    bool ApagaFilha(std::string_view nome);

    const ValorRegistro* Valor(std::string_view nome) const;
    void PoeValor(std::string_view nome, int tipo, std::string dados);
    bool ApagaValor(std::string_view nome);
    // The values in the order they were first written.
    std::vector<const ValorRegistro*> ValoresEmOrdem() const;
};

// The seven roots, in the order of their handles 0x80000000..0x80000006.
struct Raiz {
    const char* longo;
    const char* curto;
    std::uint32_t handle;
};
inline constexpr std::array<Raiz, 7> Raizes = {{
    {"HKEY_CLASSES_ROOT", "HKCR", 0x80000000},
    {"HKEY_CURRENT_USER", "HKCU", 0x80000001},
    {"HKEY_LOCAL_MACHINE", "HKLM", 0x80000002},
    {"HKEY_USERS", "HKUS", 0x80000003},
    {"HKEY_PERFORMANCE_DATA", "HKPD", 0x80000004},
    {"HKEY_CURRENT_CONFIG", "HKCC", 0x80000005},
    {"HKEY_DYN_DATA", "HKDD", 0x80000006},
}};
// Index in `Raizes` of a long or short root name in any case.
std::optional<std::size_t> IndiceDaRaiz(std::string_view nome);

struct ArvoreRegistro {
    std::array<ChaveRegistro, Raizes.size()> raizes;

    // The key at the end of the path, or null. An empty path is the root.
    const ChaveRegistro* Chave(std::size_t raiz, const std::vector<std::string>& partes) const;
    ChaveRegistro* Chave(std::size_t raiz, const std::vector<std::string>& partes);
    ChaveRegistro& CriaChave(std::size_t raiz, const std::vector<std::string>& partes);
};

// The parts of a sub-key path split at "\"; empty parts (doubled or trailing "\") are
// dropped. Nothing when a part is too long or holds a control character, or the path is
// too deep.
std::optional<std::vector<std::string>> PartesDoCaminho(std::string_view subchave);

} // namespace velmora
