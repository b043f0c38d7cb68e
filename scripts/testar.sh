#!/usr/bin/env bash
# Builds everything and runs every test: once with g++ and warnings as errors,
# once with clang under AddressSanitizer and UndefinedBehaviorSanitizer (with the fuzzers).
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/dependencias.sh
export QT_QPA_PLATFORM=offscreen

# A unity build: the headers are parsed once per batch of files (see cmake/unidade.cmake)
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVELMORA_WERROR=ON \
  -DCMAKE_UNITY_BUILD=ON
cmake --build build -j"$(nproc)"
ctest --test-dir build --output-on-failure -j"$(nproc)"

CC=clang CXX=clang++ cmake -S . -B build-san -G Ninja -DCMAKE_BUILD_TYPE=Debug \
  -DVELMORA_WERROR=ON -DVELMORA_SANITIZE=ON -DVELMORA_BENCH=OFF
cmake --build build-san -j"$(nproc)"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
  ctest --test-dir build-san --output-on-failure -j"$(nproc)" -LE lento
