#!/bin/sh
# velmora-cli recordes and configuracao, run in a temporary folder.
set -u
cli="$1"
pasta=$(mktemp -d)
trap 'rm -rf "$pasta"' EXIT
export VELMORA_CONFIG="$pasta/config/registro.reg" VELMORA_DADOS="$pasta/dados"
unset VELMORA_DEBUG
falhas=0
confere() { # descrição, esperado, obtido
    if [ "$2" != "$3" ]; then
        printf 'FALHOU: %s\n--- esperado\n%s\n--- obtido\n%s\n' "$1" "$2" "$3"
        falhas=$((falhas + 1))
    fi
}

mkdir -p "$VELMORA_DADOS"
printf '[Nivel3]\r\nN1=Jos\351\r\nP1=412\r\nN2=Ana Beatriz\r\nP2=3725\r\n' >"$VELMORA_DADOS/Velmora.rec"
printf '[CPU]\r\nVenceu3=12\r\nPerdeu3=4\r\n' >"$VELMORA_DADOS/Velmora.sav"

confere "tabela do nível 3" "Intermediário
001  José         00:06:52
002  Ana Beatriz  01:02:05
No nível Intermediário:
CPU já obteve 12 vitórias e 4 Derrotas" "$("$cli" recordes --nivel 3)"
confere "nível vazio" "Amador
No nível Amador:
CPU já obteve 0 vitórias e 0 Derrotas" "$("$cli" recordes --nivel 2)"
confere "torneio sem placar" "Torneio" "$("$cli" recordes --nivel 8)"

"$cli" recordes --nivel 0 2>/dev/null
confere "nível fora da faixa" 2 $?

# without --nivel: the level chosen last in the dialog ("DF")
mkdir -p "$pasta/config"
printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"DF"="2"\r\n"TxtHC"="Conceição"\r\n' \
    >"$VELMORA_CONFIG"
confere "nível da memória DF" "Amador" "$("$cli" recordes | head -n 1)"

"$cli" configuracao exporta "$pasta/exp.reg" >/dev/null
confere "exporta" 0 $?
confere "arquivo exportado" "$(printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"DF"="2"\r\n"TxtHC"="Concei\347\343o"\r\n\r\n_')" \
    "$(cat "$pasta/exp.reg"; printf _)"
"$cli" configuracao exporta "$pasta/exp.reg" 2>/dev/null
confere "não sobrescreve" 1 $?

rm "$VELMORA_CONFIG"
"$cli" configuracao exporta "$pasta/vazio.reg" 2>/dev/null
confere "nada a exportar" 1 $?
"$cli" configuracao importa "$pasta/exp.reg" >/dev/null
confere "importa" 0 $?
grep -q '"TxtHC"="Conceição"' "$VELMORA_CONFIG"
confere "importado no registro" 0 $?

# an import adds, changes or removes only what its file names
printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"DF"="2"\r\n"TxtHC"="Ana"\r\n"Velocit"="3"\r\n' \
    >"$VELMORA_CONFIG"
printf 'REGEDIT4\r\n\r\n[HKEY_CURRENT_USER\\Software\\Norvane\\Velmora Ace]\r\n"Velocit"="5"\r\n"DF"=-\r\n' \
    >"$pasta/um.reg"
"$cli" configuracao importa "$pasta/um.reg" >/dev/null
confere "importa um valor" 0 $?
confere "os outros valores ficam" "\"TxtHC\"=\"Ana\"
\"Velocit\"=\"5\"" "$(grep -e '"TxtHC"' -e '"Velocit"' -e '"DF"' "$VELMORA_CONFIG" | tr -d '\r')"

echo "isto não é registro" >"$pasta/ruim.reg"
"$cli" configuracao importa "$pasta/ruim.reg" 2>/dev/null
confere "arquivo que não é REGEDIT4" 2 $?
"$cli" configuracao importa "$pasta/nao-existe.reg" 2>/dev/null
confere "arquivo que falta" 1 $?
"$cli" configuracao apaga x 2>/dev/null
confere "ação desconhecida" 2 $?

[ "$falhas" -eq 0 ]
