#!/usr/bin/env bash
# Builds the fuzz targets into $OUT, with their seeds and the words of the texts, as OSS-Fuzz asks:
# with its compilers, flags and engine. Beside these it needs cmake, ninja, zip and nlohmann-json.
set -euo pipefail
cd "$(dirname "$0")/../.."

# The flags come from $CFLAGS and $CXXFLAGS alone.
cmake -S . -B "$WORK/orvane" -G Ninja -DCMAKE_BUILD_TYPE=None -DBUILD_SHARED_LIBS=OFF \
  -DORVANE_BUILD_CLI=OFF -DORVANE_BUILD_TESTS=OFF -DORVANE_INSTALL=OFF -DORVANE_BUILD_FUZZ=ON \
  -DORVANE_FUZZ_SANITIZERS= -DORVANE_FUZZ_ENGINE="$LIB_FUZZING_ENGINE"
cmake --build "$WORK/orvane"

for target in "$WORK"/orvane/fuzz/*_fuzz; do
  name=$(basename "$target")
  cp "$target" "$OUT/"
  cp fuzz/keys.dict "$OUT/$name.dict"
  printf '[libfuzzer]\nmax_len = 4096\n' >"$OUT/$name.options"
  rm -f "$OUT/${name}_seed_corpus.zip"
  zip -jq "$OUT/${name}_seed_corpus.zip" "fuzz/corpus/${name%_fuzz}"/*
done
