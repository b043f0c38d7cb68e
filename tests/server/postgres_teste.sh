#!/bin/sh
# Runs the service's tests against a real PostgreSQL started in a scratch folder, when the
# server package is installed; otherwise says so and reports the test as skipped (77).
set -eu
testes="$1"
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1 || true)
if [ -z "$bin" ] || [ ! -x "$bin/initdb" ]; then
  echo "PostgreSQL não está instalado (pacote postgresql): teste do banco PostgreSQL pulado"
  exit 77
fi
pasta=$(mktemp -d /tmp/velmora-pg.XXXXXX)
porta=$(( 20000 + $$ % 20000 ))
# PostgreSQL refuses to run as root: run it as nobody in that case
como=""
if [ "$(id -u)" -eq 0 ]; then
  if ! command -v runuser >/dev/null 2>&1; then
    echo "sem runuser para rodar o PostgreSQL fora do root: teste pulado"
    rm -rf "$pasta"
    exit 77
  fi
  chown nobody "$pasta"
  como="runuser -u nobody --"
fi
fim() {
  $como "$bin/pg_ctl" -D "$pasta/dados" -m immediate stop >/dev/null 2>&1 || true
  rm -rf "$pasta"
}
trap fim EXIT
$como "$bin/initdb" -D "$pasta/dados" -U velmora --auth=trust >"$pasta/initdb.log" 2>&1 || {
  cat "$pasta/initdb.log"; exit 1; }
$como "$bin/pg_ctl" -D "$pasta/dados" -w -t 30 -l "$pasta/pg.log" \
  -o "-p $porta -k $pasta -c listen_addresses=127.0.0.1 -c fsync=off" start >/dev/null || {
  cat "$pasta/pg.log"; exit 1; }
VELMORA_TESTE_PG="postgresql://velmora@127.0.0.1:$porta/postgres" \
  "$testes" --gtest_filter='Servico.*:Premio.*:Relay.*' --gtest_brief=1
