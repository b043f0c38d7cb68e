#!/usr/bin/env bash
# Makes the Debian package from a built tree, looks at its fields and files, unpacks it into
# a scratch root and starts the installed programs there: the command line one for a short
# count, the desktop one without a display through its scripted run, which reports the
# folder where it found its files.
#
#   pacote_teste.sh BUILD_FOLDER VERSION
set -euo pipefail
build="$1"
versao="$2"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
falhas=0
falha() { echo "FAIL: $*" >&2; falhas=$((falhas + 1)); }

(cd "$build" && cpack -G DEB -B "$tmp/saida" >"$tmp/cpack.txt" 2>&1) || {
  cat "$tmp/cpack.txt" >&2
  echo "FAIL: cpack" >&2
  exit 1
}
shopt -s nullglob
pacotes=("$tmp"/saida/*.deb)
[ ${#pacotes[@]} -eq 1 ] || { echo "FAIL: expected one package, got ${#pacotes[@]}" >&2; exit 1; }
deb="${pacotes[0]}"
arq="$(dpkg --print-architecture)"
[ "$(basename "$deb")" = "velmora-ace_${versao}_${arq}.deb" ] || falha "package file name $(basename "$deb")"

# --- fields
[ "$(dpkg-deb -f "$deb" Package)" = velmora-ace ] || falha "Package"
[ "$(dpkg-deb -f "$deb" Version)" = "$versao" ] || falha "Version"
[ "$(dpkg-deb -f "$deb" Architecture)" = "$arq" ] || falha "Architecture"
[ "$(dpkg-deb -f "$deb" Section)" = games ] || falha "Section"
depende="$(dpkg-deb -f "$deb" Depends)"
echo "Depends: $depende"
for lib in libc6 libstdc++6 libqt6core6 libqt6gui6 libqt6widgets6 libqt6network6 \
           libsdl2-mixer-2.0-0 timgm6mb-soundfont; do
  padrao="$(sed 's/[+.]/\\&/g' <<<"$lib")"
  grep -Eq "(^|, )$padrao( |,|$)" <<<"$depende" || falha "Depends lacks $lib"
done
# every package named is one this Debian knows and has installed here
IFS=',' read -ra itens <<<"$depende"
for item in "${itens[@]}"; do
  nome="$(sed -E 's/^ *//; s/ *\(.*//; s/ *\|.*//' <<<"$item")"
  dpkg-query -W -f='${Status}' "$nome" 2>/dev/null | grep -q 'install ok installed' ||
    falha "dependency $nome is not an installed package"
done

# --- files
dpkg-deb -c "$deb" | awk '{print $6}' | sed 's|^\./|/|' >"$tmp/lista.txt"
for f in /usr/bin/velmora-ace /usr/bin/velmora-cli \
         /usr/share/velmora-ace/velmora.html /usr/share/velmora-ace/Click.wav \
         /usr/share/velmora-ace/click.wav /usr/share/velmora-ace/mover.wav \
         /usr/share/velmora-ace/talk.wav /usr/share/velmora-ace/alarme.wav \
         /usr/share/velmora-ace/sweethrt.mid /usr/share/velmora-ace/passport.mid \
         /usr/share/applications/velmora-ace.desktop \
         /usr/share/icons/hicolor/256x256/apps/velmora-ace.png \
         /usr/share/icons/hicolor/scalable/apps/velmora-ace.svg; do
  grep -qx "$f" "$tmp/lista.txt" || falha "the package lacks $f"
done
grep -v '^/usr/\?' "$tmp/lista.txt" | grep -v '^/$' | grep . && falha "files outside /usr"
grep -q '/velmora-servico$' "$tmp/lista.txt" && falha "the service is not part of the game's package"

# --- installed into a scratch root
raiz="$tmp/raiz"
dpkg -x "$deb" "$raiz"
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$raiz/usr/share/applications/velmora-ace.desktop" || falha "desktop file"
fi
saida="$("$raiz/usr/bin/velmora-cli" perft --regra 1 --modo humano --prof 3)" || falha "velmora-cli"
grep -qx '3 302' <<<"$saida" || falha "perft printed: $saida"

export QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy
export VELMORA_CONFIG="$tmp/casa/registro.reg" VELMORA_DADOS="$tmp/casa/dados"
export VELMORA_CAPTURA="$tmp/fotos"
mkdir -p "$tmp/casa"
timeout 180 "$raiz/usr/bin/velmora-ace" >"$tmp/ace.txt" 2>&1 || {
  cat "$tmp/ace.txt" >&2
  falha "the installed velmora-ace did not end well"
}
[ -s "$VELMORA_CAPTURA/tabuleiro.png" ] || falha "no picture of the board from the installed program"
pasta="$(cat "$VELMORA_CAPTURA/pasta.txt" 2>/dev/null || true)"
[ "$pasta" = "$(cd "$raiz/usr/share/velmora-ace" && pwd -P)" ] ||
  falha "the installed program looked for its files in '$pasta'"
if [ -s "$VELMORA_CAPTURA/faltam.txt" ]; then
  falha "the installed program misses: $(cat "$VELMORA_CAPTURA/faltam.txt")"
fi

if [ "$falhas" -ne 0 ]; then
  echo "$falhas failed" >&2
  exit 1
fi
echo "package $(basename "$deb") ($(stat -c %s "$deb") bytes) installs and starts"
