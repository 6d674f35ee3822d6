#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) and runs each one for
# a short while (default 20 s). Crashes, hangs and leaks fail the run.
#   tools/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
shift || true
build=${TAVRO_FUZZ_BUILD_DIR:-build-fuzz}
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
    -DTAVRO_BUILD_FUZZERS=ON -DTAVRO_BUILD_GUI=OFF -DTAVRO_BUILD_TESTS=OFF -DTAVRO_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" --parallel "$(nproc)"
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for f in "$build"/fuzz/fuzz_*; do targets+=("$(basename "$f")"); done
fi
for t in "${targets[@]}"; do
    corpus="$build/corpus/$t"
    log="$build/fuzz-$t.log"
    mkdir -p "$corpus"
    echo "== $t ($seconds s)"
    if ! "$build/fuzz/$t" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 \
        -max_len=65536 -print_final_stats=1 "$corpus" >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "$t failed"
        exit 1
    fi
    grep -E 'stat::number_of_executed_units|Done [0-9]+ runs' "$log" || true
done
