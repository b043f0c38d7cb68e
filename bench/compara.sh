#!/usr/bin/env bash
# Compares the engine of two builds on one machine: perft through the command line and the
# benchmarks, the two builds alternated so that the load of a shared machine falls on both;
# then the instructions of each (valgrind), which do not depend on the load.
#   bench/compara.sh BUILD_ANTES BUILD_DEPOIS [RODADAS]
# Each build directory must hold app/velmora-cli and bench/velmora-bench.
set -euo pipefail
antes=$1 depois=$2 rodadas=${3:-7}
reis='1,0,2,0,2,0,2,0,20,3,0,3,0,3,0,3,0,0,3,0,10,0,20,0,3,1,0,3,0,3,0,3,0,0,10,0,3,0,3,0,1,3,0,3,0,3,0,3,0,0,3,0,10,0,3,0,3,20,0,3,0,1,0,3,0,'
meio='1,0,2,0,2,0,2,0,2,2,0,3,0,2,0,2,0,0,2,0,2,0,3,0,2,3,0,2,0,3,0,3,0,0,3,0,3,0,1,0,3,1,0,3,0,1,0,1,0,0,1,0,1,0,3,0,1,1,0,1,0,1,0,1,0,'
damas='1,0,3,0,2,0,20,0,3,3,0,2,0,3,0,2,0,0,2,0,3,0,3,0,3,3,0,3,0,1,0,3,0,0,3,0,20,0,3,0,3,3,0,1,0,3,0,1,0,0,10,0,3,0,1,0,3,3,0,1,0,3,0,10,0,'
inicio='1,0,2,0,2,0,2,0,2,2,0,2,0,2,0,2,0,0,2,0,2,0,2,0,2,3,0,3,0,3,0,3,0,0,3,0,3,0,3,0,3,1,0,1,0,1,0,1,0,0,1,0,1,0,1,0,1,1,0,1,0,1,0,1,0,'
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

mediana() { sort -g | awk '{v[NR] = $1} END {print v[int((NR + 1) / 2)]}'; }

echo "perft, CPU seconds and leaves/s: medians of $rodadas alternated pairs"
for caso in "perft --regra 1 --modo humano --prof 10" \
    "perft --regra 4 --modo computador --prof 10" \
    "perft --regra 1 --modo humano --prof 7 --tabuleiro $reis"; do
  for _ in $(seq "$rodadas"); do
    for b in antes depois; do
      dir=$antes; [ $b = depois ] && dir=$depois
      /usr/bin/time -f %U -o "$tmp/t" "$dir/app/velmora-cli" $caso > "$tmp/$b.txt"
      cat "$tmp/t" >> "$tmp/$b.cpu"
      grep -o '[0-9]* folhas/s' "$tmp/$b.txt" | cut -d' ' -f1 >> "$tmp/$b.folhas"
    done
  done
  cmp -s <(grep -v tempo "$tmp/antes.txt") <(grep -v tempo "$tmp/depois.txt") || echo "  the counts differ"
  read -r ca < <(mediana < "$tmp/antes.cpu"); read -r cd < <(mediana < "$tmp/depois.cpu")
  read -r fa < <(mediana < "$tmp/antes.folhas"); read -r fd < <(mediana < "$tmp/depois.folhas")
  awk -v c="${caso:0:44}" -v ca="$ca" -v cd="$cd" -v fa="$fa" -v fd="$fd" 'BEGIN {
    printf "  %-44s %.2f s -> %.2f s (%.2f)   %.1f M -> %.1f M (%.2f)\n", c, ca, cd, ca / cd,
      fa / 1e6, fd / 1e6, fd / fa }'
  rm -f "$tmp"/*.cpu "$tmp"/*.folhas
done

echo "benchmarks, leaves or nodes per second: medians of $rodadas alternated runs"
filtro='Perft/regra1_prof10|Perft/regra4_computador_prof10|PerftReis|Busca'
for i in $(seq "$rodadas"); do
  "$antes/bench/velmora-bench" --benchmark_filter="$filtro" --benchmark_format=json > "$tmp/antes_$i.json" 2> /dev/null
  "$depois/bench/velmora-bench" --benchmark_filter="$filtro" --benchmark_format=json > "$tmp/depois_$i.json" 2> /dev/null
done
python3 - "$tmp" <<'FIM'
import collections, glob, json, statistics, sys
taxas = collections.defaultdict(list)
for f in glob.glob(sys.argv[1] + '/*.json'):
    lado = 'depois' if '/depois_' in f else 'antes'
    for b in json.load(open(f))['benchmarks']:
        taxas[(b['name'], lado)].append(b.get('folhas/s', b.get('nos/s')))
for nome in sorted({n for n, _ in taxas}):
    a = statistics.median(taxas[(nome, 'antes')]); d = statistics.median(taxas[(nome, 'depois')])
    print('  %-46s %7.2f M -> %7.2f M (%.2f)' % (nome, a / 1e6, d / 1e6, d / a))
FIM

echo "instructions (valgrind --tool=cachegrind)"
for caso in "perft --regra 1 --modo humano --prof 8" "perft --regra 4 --modo computador --prof 8" \
    "perft --regra 1 --modo humano --prof 5 --tabuleiro $reis" \
    "analisa --regra 1 --prof 12 --tabuleiro $inicio" "analisa --regra 1 --prof 12 --tabuleiro $meio" \
    "analisa --regra 1 --prof 9 --tabuleiro $damas"; do
  n=()
  for dir in "$antes" "$depois"; do
    n+=("$(valgrind --tool=cachegrind --cache-sim=no --cachegrind-out-file=/dev/null \
      "$dir/app/velmora-cli" $caso 2>&1 > /dev/null | awk '/I *refs/ {gsub(",", "", $4); print $4}')")
  done
  awk -v c="${caso:0:44}" -v a="${n[0]}" -v d="${n[1]}" 'BEGIN {
    printf "  %-44s %8.1f M -> %8.1f M (%.2f)\n", c, a / 1e6, d / 1e6, a / d }'
done
