#!/usr/bin/env bash
# Installs, from Debian's packages, everything the build, the tests and the game need.
set -euo pipefail
pacotes=(
  build-essential cmake ninja-build g++ clang libclang-rt-14-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev qt6-qpa-plugins libgl-dev
  libsdl2-mixer-dev timgm6mb-soundfont
  libsqlite3-dev libcpp-httplib-dev libasio-dev libsodium-dev libpq-dev pkg-config
  xvfb xauth imagemagick sqlite3 curl
  dpkg-dev
)
faltam=()
for p in "${pacotes[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || faltam+=("$p")
done
[ ${#faltam[@]} -eq 0 ] && exit 0
sudo_cmd=""
[ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
$sudo_cmd apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${faltam[@]}"
