#pragma once
// clsRegistryAccess: the registry layer, over a store of our own (one REGEDIT4 text file).
// It takes whole key paths ("HKCU\Software\...", long or short root in any case), never
// raises an error, and rewrites the file atomically after each change. The parsed store
// lives in the object: one object per running copy, passed to whoever needs settings.
// Texts in and out are UTF-8; the store compares names in Windows-1252 and without regard
// to case. Export files are Windows-1252, like REGEDIT4 files from Windows.
#include "store/arquivos.h"
#include "store/arvoreregistro.h"
#include "store/caminhos.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class Diario;

class clsRegistryAccess {
  public:
    // Not 0 on success: the root's predefined handle.
    using Handle = std::uint32_t;

    // The store file is read at the first call; `diario`, when given, must outlive this.
    explicit clsRegistryAccess(std::filesystem::path arquivo = ArquivoRegistro(),
                               const Diario* diario = nullptr);
    // One per running copy: a copy would hold a second, diverging view of the store.
    clsRegistryAccess(const clsRegistryAccess&) = delete;
    clsRegistryAccess& operator=(const clsRegistryAccess&) = delete;
    clsRegistryAccess(clsRegistryAccess&&) = default;
    clsRegistryAccess& operator=(clsRegistryAccess&&) = default;

    // When false, WriteDWORD and WriteBinary fail on a missing key. ImportFromReg sets it.
    bool CreateKeyIfDoesntExists = true;

    Handle CreateKey(std::string_view sPath);
    void KillKey(std::string_view sPath);
    bool KeyExists(std::string_view sPath);
    // Count of sub-keys, or -1 when the key doesn't open.
    int EnumKeys(std::string_view sPath, std::vector<std::string>& names);
    bool HaveSubkey(std::string_view sPath);

    // "@" or "" is the key's default value. With `hkcu`, a failed write under HKLM is
    // tried again under HKCU; the same holds for a failed read.
    Handle WriteString(std::string_view sPath, std::string_view sName, std::string_view sValue,
                       bool hkcu = false);
    // `sDefault` when the key or the value is missing, or the text exceeds 1024 bytes.
    std::string ReadString(std::string_view sPath, std::string_view sName,
                           std::string_view sDefault, bool hkcu = false, bool AllAcess = false);
    Handle WriteDWORD(std::string_view sPath, std::string_view sName, std::uint32_t lValue);
    std::uint32_t ReadDWORD(std::string_view sPath, std::string_view sName, std::uint32_t lDefault);
    // The value from hex text ("0A FF"); an empty text writes a value of length 0.
    Handle WriteBinary(std::string_view sPath, std::string_view sName, std::string_view sValue);
    std::string ReadBinary(std::string_view sPath, std::string_view sName,
                           std::string_view sDefault);
    Handle KillValue(std::string_view sPath, std::string_view sName);
    bool ValueExists(std::string_view sPath, std::string_view sName);
    // Count, or -1 when the key doesn't open. `OnlyType` -1 takes every type; strings
    // give their text, binaries their hex text, DWORDs their decimal number.
    int EnumValues(std::string_view sPath, std::vector<std::string>& names,
                   std::vector<std::string>& values, int OnlyType = -1);

    // Writes the key (and its sub-keys) to a new REGEDIT4 file; 0 when the file exists
    // already or anything fails. `Output` is told each key path as it is written.
    int ExportToReg(std::string_view sPath, const std::filesystem::path& sRegFile,
                    bool IncludeSubkeys = true,
                    const std::function<void(const std::string&)>& Output = {});
    // Applies a REGEDIT4 file; 1 when every line was passed, else 0.
    int ImportFromReg(const std::filesystem::path& sRegFile);

    // " 0A FF": a blank and two upper-case hex digits per byte.
    static std::string BinToStr(std::string_view bytes);
    static std::string StrToBin(std::string_view texto);
    static bool isBinValid(std::string_view texto);

    // Makes writes (and opening with full access) under a root fail, as a machine-wide
    // root does for a user without rights.
    void ProtegeRaiz(std::string_view raiz);

    // Holds the disk rewrites back until it ends, so that a run of changes costs one
    // rewrite. If that rewrite fails, the whole run is undone.
    class Lote {
      public:
        explicit Lote(clsRegistryAccess& r) : r_(r) { r_.IniciaLote(); }
        Lote(const Lote&) = delete;
        Lote& operator=(const Lote&) = delete;
        ~Lote() {
            if (!feito_) r_.TerminaLote();
        }
        // Ends the run now; false when its rewrite failed.
        bool Termina() {
            feito_ = true;
            return r_.TerminaLote();
        }

      private:
        clsRegistryAccess& r_;
        bool feito_ = false;
    };

    // Largest store file that is read; a larger one counts as damaged.
    static constexpr std::size_t LimiteArquivo = 4u << 20;

  private:
    struct Caminho {
        std::optional<std::size_t> raiz;                // index in Raizes
        std::optional<std::vector<std::string>> partes; // the sub-key, Windows-1252
    };
    Caminho Divide(std::string_view sPath) const;
    const ChaveRegistro* Abre(const Caminho& c, bool escrita);
    ChaveRegistro* AbreParaEscrita(const Caminho& c);
    bool Protegida(const Caminho& c) const { return c.raiz && protegidas_[*c.raiz]; }
    Handle Grava(const Caminho& c, std::string_view nome, int tipo, std::string dados);
    std::optional<std::string> LeTexto(const Caminho& c, std::string_view nome, bool tudo);

    void Sincroniza();
    void Carrega();
    bool Salva();
    // Takes the state before a change, to undo it when the rewrite fails.
    std::optional<ArvoreRegistro> Antes() const;
    bool Confirma(std::optional<ArvoreRegistro> antes);
    void IniciaLote();
    bool TerminaLote();
    void Log(const std::string& texto) const;

    std::filesystem::path arquivo_;
    const Diario* diario_;
    ArvoreRegistro arvore_;
    Identidade identidade_;
    bool carregado_ = false;
    bool danificado_ = false; // the file on disk must be copied aside before it is replaced
    bool ilegivel_ = false;   // the file can't be read, so it is never replaced
    std::array<bool, Raizes.size()> protegidas_{};
    int lote_ = 0;
    bool pendente_ = false;
    std::optional<ArvoreRegistro> antesDoLote_;
};

} // namespace velmora
