#!/bin/sh
# velmora-cli partida over the game session: scripted clicks, buttons, the dialog and the
# questions from standard input, and bad arguments.
set -u
cli="$1"
pasta=$(mktemp -d)
trap 'rm -rf "$pasta"' EXIT
export VELMORA_CONFIG="$pasta/registro.reg" VELMORA_DADOS="$pasta/dados"
falhas=0

falha() { echo "FALHOU: $1"; falhas=$((falhas + 1)); }
contem() { grep -qF -- "$2" "$1" || falha "$3: falta \"$2\""; }

# Bad arguments: a message and exit code 2.
for args in "--tipo XX" "--modo 2 --tipo HH" "--modo 3" "--resposta talvez" "--nivel1 9" "--cor azul"; do
    # shellcheck disable=SC2086
    "$cli" partida $args < /dev/null > "$pasta/saida" 2> "$pasta/erro"
    [ $? -eq 2 ] || falha "partida $args deveria sair com 2"
    [ -s "$pasta/erro" ] || falha "partida $args sem mensagem"
done

# Two players: clicks as square names, the board and the messages after each move.
printf 'C3 D4\nF6 E5\n' | "$cli" partida --tipo HH > "$pasta/hh" 2>&1 || falha "HH saiu com erro"
contem "$pasta/hh" "Jogador 1 inicie o jogo" "HH"
contem "$pasta/hh" "Jogada: C3-D4" "HH"
contem "$pasta/hh" "Jogada: F6-E5" "HH"
contem "$pasta/hh" "Posição 3/3, vez do lado 1" "HH"
contem "$pasta/hh" "Placar: Jogador 1 0 x 0 Jogador 2" "HH"

# "Reiniciar" between two people changes no score and alternates the starting side.
printf 'reiniciar\n' | "$cli" partida --tipo HH --nome1 Ana --nome2 Rui > "$pasta/rein" 2>&1
contem "$pasta/rein" "Ana inicie o jogo" "reiniciar"
contem "$pasta/rein" "Rui inicie o jogo" "reiniciar"
contem "$pasta/rein" "Placar: Ana 0 x 0 Rui" "reiniciar"

# "Novo jogo", cancelled: the board is idle and a click asks for a new game.
printf 'novo cancelar C3 s\n' | "$cli" partida --tipo HH > "$pasta/novo" 2>&1
contem "$pasta/novo" "Novo jogo (jogar, cancelar): cancelar" "novo jogo"
contem "$pasta/novo" "Deseja iniciar um novo jogo?] (s/n): sim" "novo jogo"

# The tournament: the welcome, and "Reiniciar" counted for the computer at the stage.
printf 'reiniciar\n' | "$cli" partida --modo 2 --comeca 1 --nome1 Ana > "$pasta/torneio" 2>&1
contem "$pasta/torneio" "Bem vindo ao torneio." "torneio"
contem "$pasta/torneio" "(Bot)" "torneio"
grep -q "Venceu1=1" "$pasta/dados/Velmora.sav" || falha "torneio: o placar do estágio 1"

# The close button, answered by --resposta: the settings are written.
rm -f "$VELMORA_CONFIG"
printf 'sair\n' | "$cli" partida --tipo HH --resposta sim > "$pasta/sair" 2>&1
contem "$pasta/sair" "[Deseja fechar o Velmora Ace?] (s/n): sim" "sair"
[ -f "$VELMORA_CONFIG" ] || falha "sair: as opções não foram gravadas"

[ "$falhas" -eq 0 ] && echo "cli: tudo certo"
exit "$falhas"
