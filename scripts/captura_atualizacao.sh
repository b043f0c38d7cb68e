#!/usr/bin/env bash
# A picture of the update window in the middle of a download, for the README: runs the
# update window's test against its small service on loopback, on a virtual display, and
# writes docs/atualizacao.png.
#
#   scripts/captura_atualizacao.sh [build folder]     (default: build)
set -euo pipefail
raiz="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$raiz/build}"
cmake --build "$build" -j2 --target velmora_service_testes
export VELMORA_FOTO_ATUALIZACAO="$raiz/docs/atualizacao.png"
QT_QPA_PLATFORM=xcb xvfb-run -a -s "-screen 0 1024x768x24" \
  "$build/tests/service/velmora_service_testes" \
  --gtest_filter='Atualizacao.AsAPlainUserThePackageAndTheDownloadPageAreOpenedAndTheProgramEnds'
echo "docs/atualizacao.png written"
