#pragma once
// The installer fetched by an update: its local name, and the checks it passes before it is
// handed to the system. Only a whole Debian package of this program is ever opened.
#include <filesystem>
#include <string>

namespace velmora {

// The title without blanks and ".deb": "VelmoraAce.deb".
std::string NomeInstalador(const std::string& titulo);

// True when `arquivo` is a Debian package (an "ar" archive whose first member is
// "debian-binary") and, when `sha256` isn't empty, its SHA-256 is that hex digest (either
// case). A file that can't be read passes nothing.
bool ConfereInstalador(const std::filesystem::path& arquivo, const std::string& sha256 = {});

} // namespace velmora
