#!/usr/bin/env bash
# Builds the game and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/dependencias.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$(nproc)"
if [ -x build/app/velmora-ace ]; then
  exec build/app/velmora-ace "$@"
else
  exec build/app/velmora-cli partida "$@"
fi
