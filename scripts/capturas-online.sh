#!/usr/bin/env bash
# Screenshot of an on-line game: a velmora-servico of its own on a free loopback port with a
# fresh database, two registered nicks, the desktop program (nick "ana", playing by clicks
# on its board) and a command-line copy (nick "bruno") that meet through the relay and play
# one game. When the game is over and the panels show the new points, the desktop
# photographs its board: docs/online-partida.png.
#
#   scripts/capturas-online.sh [build folder]     (default: build)
set -euo pipefail
raiz="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$raiz/build}"
for alvo in app/velmora-ace app/velmora-cli server/velmora-servico; do
    [ -x "$build/$alvo" ] || {
        cmake -S "$raiz" -B "$build" -G Ninja >/dev/null
        cmake --build "$build" -j2 --target velmora-ace velmora-cli velmora-servico
        break
    }
done
tmp="$(mktemp -d)"
servico=""
limpa() {
    [ -n "$servico" ] && kill "$servico" 2>/dev/null || true
    rm -rf "$tmp"
}
trap limpa EXIT
mkdir -p "$tmp/servico" "$tmp/ace" "$tmp/cli" "$tmp/fotos"

porta="$(python3 -c 'import socket; s=socket.socket(); s.bind(("127.0.0.1",0)); print(s.getsockname()[1])')"
"$build/server/velmora-servico" --porta "$porta" --porta-relay 0 --dados "$tmp/servico" \
    >"$tmp/servico/saida.txt" 2>&1 &
servico=$!
endereco="http://127.0.0.1:$porta"
for _ in $(seq 100); do
    curl -s "$endereco/html/getip.php" >/dev/null && break
    sleep 0.1
done
curl -s "$endereco/html/cadastro.php?tipo=Cadastro&nick=ana&senha=senha1&programa=Velmora" >/dev/null
curl -s "$endereco/html/cadastro.php?tipo=Cadastro&nick=bruno&senha=senha2&programa=Velmora" >/dev/null
# points that show stars (from 1,500) and the second picture (from 5,000), as an operator
# would have them after a season
sqlite3 "$tmp/servico/velmora-servico.db" \
    "UPDATE contas SET pontos = 5200 WHERE nick = 'ana'; UPDATE contas SET pontos = 2300 WHERE nick = 'bruno';"

cat >"$tmp/dentro.sh" <<'DENTRO'
#!/usr/bin/env bash
# $1 build folder, $2 scratch folder, $3 service address
export SDL_AUDIODRIVER=dummy VELMORA_SERVICO="$3"
VELMORA_CONFIG="$2/ace/r.reg" VELMORA_DADOS="$2/ace" VELMORA_CAPTURA_REDE="$2/fotos" \
    VELMORA_CAPTURA_PAPEL=online VELMORA_CAPTURA_NICK=ana VELMORA_CAPTURA_SENHA=senha1 \
    timeout 170 "$1/app/velmora-ace" &
sleep 3
VELMORA_CONFIG="$2/cli/r.reg" VELMORA_DADOS="$2/cli" QT_QPA_PLATFORM=offscreen timeout 170 \
    "$1/app/velmora-cli" partida --online --nome1 bruno --senha senha2 --tempo 0.1 --jogos 1 \
    >"$2/cli/saida.txt" 2>&1
wait
DENTRO
chmod +x "$tmp/dentro.sh"
xvfb-run -a -s "-screen 0 1600x900x24" "$tmp/dentro.sh" "$build" "$tmp" "$endereco"
grep -E "Resultado|Pontos de" "$tmp/cli/saida.txt" || true
cat "$tmp/fotos/online-ana.txt"
cp "$tmp/fotos/online-ana.png" "$raiz/docs/online-partida.png"
echo "docs/online-partida.png"
