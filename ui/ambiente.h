#pragma once
// What every window of the desktop program reaches outside itself: the settings store, the
// message boxes, the sounds, the program's folder and the shell that opens files and pages.
// The program fills it with the real services; a test fills it with recorders.
#include <QUrl>
#include <filesystem>
#include <functional>
#include <string>

namespace velmora {
class clsRegistryAccess;
}

namespace velmora::ui {

class Caixas;

struct AmbienteUi {
    clsRegistryAccess& reg;
    Caixas& caixas;
    // Plays a sound of the program's folder ("Click.wav"), when sounds are on.
    std::function<void(const std::string&)> tocaSom;
    // CaminhoApp: the folder of the executable, where the help page lies.
    std::filesystem::path pastaApp;
    // Asks the shell to open a file or a page; reports nothing.
    std::function<void(const QUrl&)> abreUrl;

    void Som(const std::string& nome) const {
        if (tocaSom) tocaSom(nome);
    }
    void Abre(const QUrl& url) const {
        if (abreUrl) abreUrl(url);
    }
    // The help page beside the program.
    QUrl Ajuda() const;
};

// The base address of the on-line service: VELMORA_SERVICO, the setting, or the build's default.
QString EnderecoServico(clsRegistryAccess& reg);

} // namespace velmora::ui
