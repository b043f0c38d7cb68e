// Where the program finds its files: beside the executable in the build tree, or, installed,
// in share/velmora-ace beside the bin folder.
#include "session/form1.h"

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>

namespace velmora {
namespace {

void Cria(const std::filesystem::path& arquivo) {
    std::filesystem::create_directories(arquivo.parent_path());
    std::ofstream(arquivo) << "<html></html>";
}

TEST(CaminhoDosArquivos, BesideTheExecutableFirstThenTheInstalledShareFolder) {
    QTemporaryDir tmp;
    ASSERT_TRUE(tmp.isValid());
    const std::filesystem::path raiz = std::filesystem::canonical(tmp.path().toStdString());
    const std::filesystem::path bin = raiz / "bin", dados = raiz / "share" / "velmora-ace";
    std::filesystem::create_directories(bin);

    // nothing anywhere: the executable's folder
    EXPECT_EQ(CaminhoDoPrograma(bin.string() + "/"), bin.string());
    // installed: the share folder
    Cria(dados / "velmora.html");
    EXPECT_EQ(CaminhoDoPrograma(bin.string()), dados.string());
    EXPECT_EQ(CaminhoDoPrograma(bin.string() + "/"), dados.string());
    // the build tree: the files beside the executable win
    Cria(bin / "velmora.html");
    EXPECT_EQ(CaminhoDoPrograma(bin.string()), bin.string());
}

} // namespace
} // namespace velmora
