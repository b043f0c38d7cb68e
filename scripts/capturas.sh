#!/usr/bin/env bash
# Screenshots of the desktop program for the README: the first new game dialog and the board
# in the middle of a game against the computer. Runs velmora-ace under Xvfb in its scripted
# mode (VELMORA_CAPTURA), with settings and data in a temporary folder, and writes
# docs/novo-jogo.png, docs/tabuleiro.png and docs/tela-cheia.png (the board in full
# screen). Also prints how long the program took from its
# launch to the first dialog.
#
#   scripts/capturas.sh [build folder]     (default: build)
set -euo pipefail
raiz="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$raiz/build}"
programa="$build/app/velmora-ace"
if [ ! -x "$programa" ]; then
  cmake -S "$raiz" -B "$build" -G Ninja >/dev/null
  cmake --build "$build" -j2 --target velmora-ace
fi
for cmd in xvfb-run Xvfb; do
  command -v "$cmd" >/dev/null || { echo "capturas: $cmd is missing (apt-get install xvfb xauth)" >&2; exit 1; }
done

tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
export VELMORA_CONFIG="$tmp/registro.reg"
export VELMORA_DADOS="$tmp/dados"
export VELMORA_CAPTURA="$tmp/fotos"
export SDL_AUDIODRIVER=dummy

# The display starts first, so that the time measured is the program's own.
cat >"$tmp/dentro.sh" <<'DENTRO'
#!/usr/bin/env bash
set -euo pipefail
sleep 0.5
inicio=$(date +%s%3N)
timeout 120 "$1"
echo $(( $(cat "$VELMORA_CAPTURA/inicio-ms.txt") - inicio )) >"$VELMORA_CAPTURA/ate-o-dialogo-ms.txt"
DENTRO
chmod +x "$tmp/dentro.sh"
xvfb-run -a -s "-screen 0 1024x768x24" "$tmp/dentro.sh" "$programa"

mkdir -p "$raiz/docs"
cp "$VELMORA_CAPTURA/novo-jogo.png" "$raiz/docs/novo-jogo.png"
cp "$VELMORA_CAPTURA/tabuleiro.png" "$raiz/docs/tabuleiro.png"
cp "$VELMORA_CAPTURA/tela-cheia.png" "$raiz/docs/tela-cheia.png"
echo "docs/novo-jogo.png, docs/tabuleiro.png and docs/tela-cheia.png written"
echo "from launch to the first dialog: $(cat "$VELMORA_CAPTURA/ate-o-dialogo-ms.txt") ms"
