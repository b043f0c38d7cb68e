// Fuzzer of the ini reader and writer: any bytes parse, and a key written reads back.
#include "store/ini.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dados, std::size_t tamanho) {
    const std::string bytes(reinterpret_cast<const char*>(dados), tamanho);
    auto doc = velmora::DocumentoIni::Interpreta(bytes);
    (void)doc.Le("Nivel3", "N1");
    (void)doc.Le("CPU", "Venceu1");
    doc.Grava("Nivel3", "N1", "Jogador");
    doc.Grava("cpu", "venceu1", "7");
    const auto relido = velmora::DocumentoIni::Interpreta(doc.Texto());
    if (relido.Le("NIVEL3", "n1") != "Jogador" || relido.Le("CPU", "Venceu1") != "7") std::abort();
    return 0;
}
