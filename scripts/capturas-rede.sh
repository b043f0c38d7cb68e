#!/usr/bin/env bash
# Screenshots of a game by typed address between two desktop windows on one machine: one
# copy creates the game and listens on port 2001, the other dials 127.0.0.1; each plays its
# side by clicks until twelve moves are on the board and photographs its board. Writes
# docs/rede-servidor.png and docs/rede-cliente.png (the "Cliente" board is turned round).
#
#   scripts/capturas-rede.sh [build folder]     (default: build)
set -euo pipefail
raiz="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$raiz/build}"
programa="$build/app/velmora-ace"
[ -x "$programa" ] || { cmake -S "$raiz" -B "$build" -G Ninja >/dev/null; cmake --build "$build" -j2 --target velmora-ace; }
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
mkdir -p "$tmp/a" "$tmp/b" "$tmp/fotos"
cat >"$tmp/dentro.sh" <<'DENTRO'
#!/usr/bin/env bash
export SDL_AUDIODRIVER=dummy VELMORA_CAPTURA_REDE="$2/fotos"
VELMORA_CONFIG="$2/a/r.reg" VELMORA_DADOS="$2/a" VELMORA_CAPTURA_PAPEL=escuta timeout 120 "$1" &
sleep 4
VELMORA_CONFIG="$2/b/r.reg" VELMORA_DADOS="$2/b" VELMORA_CAPTURA_PAPEL=127.0.0.1 timeout 120 "$1" &
wait
DENTRO
chmod +x "$tmp/dentro.sh"
xvfb-run -a -s "-screen 0 1600x900x24" "$tmp/dentro.sh" "$programa" "$tmp"
cp "$tmp/fotos/tabuleiro-Servidor.png" "$raiz/docs/rede-servidor.png"
cp "$tmp/fotos/tabuleiro-Cliente.png" "$raiz/docs/rede-cliente.png"
echo "docs/rede-servidor.png docs/rede-cliente.png"
