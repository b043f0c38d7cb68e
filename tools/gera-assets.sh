#!/usr/bin/env bash
# Regenerates the game's sounds, music and icon picture in assets/.
# Every generator is deterministic: run twice, the files come out byte for byte the same.
# Needs python3 (standard library only) and ImageMagick's convert for the icon.
set -euo pipefail
cd "$(dirname "$0")/.."
destino=assets

python3 tools/gera_sons.py "$destino"
python3 tools/gera_musica.py "$destino"

# The 256x256 icon, drawn from the SVG; dates and other metadata left out of the PNG
# so that the bytes depend on the picture alone.
convert -background none "$destino/velmora-ace.svg" -resize 256x256 -depth 8 \
  -define png:exclude-chunks=date,time -strip "$destino/velmora-ace.png"
echo "$destino/velmora-ace.png"
