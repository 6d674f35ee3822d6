#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (ASan + UBSan) and runs them.
#   tools/fuzz.sh [SECONDS] [TARGET...]       each target SECONDS (default 20); crashes,
#                                             hangs and leaks fail the run
#   tools/fuzz.sh --campaign [TARGET...]      the long run: each target (default: all) until
#                                             10 million executions or an hour, one at a time
#   tools/fuzz.sh --queue FILE                the same for targets taken one by one from the
#                                             top of FILE (lines may be added while it runs;
#                                             several lanes may share one FILE)
# The campaign starts each target from fuzz/corpus/<target>/ merged into its working corpus
# build-fuzz/campaign/<target>/corpus/, keeps crash inputs in build-fuzz/campaign/<target>/,
# and appends one line per target to build-fuzz/campaign/summary.tsv (TAVRO_FUZZ_CAMPAIGN_DIR
# moves all of it):
#   target  executions  edges  features  seconds  date  result
#   tools/fuzz.sh --table                     the summary's last line per target as the
#                                             Markdown table of docs/fuzzing.md
# TAVRO_FUZZ_RUNS and TAVRO_FUZZ_SECONDS change the limits (10000000 and 3600).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${TAVRO_FUZZ_BUILD_DIR:-build-fuzz}
campaign_dir=${TAVRO_FUZZ_CAMPAIGN_DIR:-$build/campaign}
summary=$campaign_dir/summary.tsv
# Seconds one input may take before it counts as a hang (generous: the machine is shared).
hang_seconds=${TAVRO_FUZZ_HANG_SECONDS:-120}

configure() {
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
        -DTAVRO_BUILD_FUZZERS=ON -DTAVRO_BUILD_GUI=OFF -DTAVRO_BUILD_TESTS=OFF \
        -DTAVRO_BUILD_BENCH=OFF >/dev/null
}

# One build at a time in the build folder, whatever the number of lanes.
build_targets() {
    mkdir -p "$build"
    (
        flock 9
        [ -f "$build/build.ninja" ] || configure
        cmake --build "$build" --parallel "$(nproc)" ${1:+--target "$@"}
    ) 9>"$build/.build.lock"
}

# Inputs as long as the format needs: whole records and short texts stay small,
# clips with chunk streams get a few KB, the text block sits after 33006 bytes of video.
max_len() {
    case $1 in
        fuzz_telemetry_tail) echo 40000 ;;
        fuzz_telemetry_mp4_text) echo 16384 ;;
        fuzz_telemetry_chunk | fuzz_telemetry_kel | fuzz_telemetry_raw) echo 8192 ;;
        fuzz_export_roundtrip | fuzz_telemetry_subtitle) echo 8192 ;;
        fuzz_config_record | fuzz_editors_web) echo 2048 ;;
        *) echo 4096 ;;
    esac
}

# A hang reported on a shared machine may be the machine's stall, not the input's:
# true when the input replays well within the time limit.
replays_in_time() {
    timeout "$((hang_seconds * 2))" "$build/fuzz/$1" -timeout="$hang_seconds" -rss_limit_mb=2048 \
        "$2" >/dev/null 2>&1
}

campaign_target() {
    local t=$1 dir=$campaign_dir/$1
    local runs=${TAVRO_FUZZ_RUNS:-10000000} limit=${TAVRO_FUZZ_SECONDS:-3600}
    mkdir -p "$dir/corpus"
    if ! build_targets "$t" >"$dir/build.log" 2>&1; then
        printf '%s\t0\t0\t0\t0\t%s\tbuild-failed\n' "$t" "$(date -u +%Y-%m-%dT%H:%MZ)" >>"$summary"
        tail -n 1 "$summary"
        return 0
    fi
    [ -d "fuzz/corpus/$t" ] && cp -n "fuzz/corpus/$t"/* "$dir/corpus/" 2>/dev/null || true
    local log=$dir/fuzz.log start code executions=0 stalls=0 done_runs result=ok
    echo "== $t (until $runs runs or $limit s) log: $log"
    : >"$log"
    start=$(date +%s)
    # Runs until the limits; a reported hang whose input replays in time is a stall of
    # the machine: the input is kept as stalled-… and fuzzing goes on (five times at most).
    while [ "$executions" -lt "$runs" ] && [ $(($(date +%s) - start)) -lt "$limit" ]; do
        code=0
        "$build/fuzz/$t" -runs="$((runs - executions))" -max_total_time="$((limit - ($(date +%s) - start)))" \
            -timeout="$hang_seconds" -rss_limit_mb=2048 -max_len="$(max_len "$t")" \
            -print_final_stats=1 -artifact_prefix="$dir/" "$dir/corpus" >"$log.run" 2>&1 || code=$?
        done_runs=$(grep -oE 'stat::number_of_executed_units: *[0-9]+' "$log.run" | grep -oE '[0-9]+$' | tail -1)
        [ -n "$done_runs" ] || done_runs=$(grep -oE '^#[0-9]+' "$log.run" | tail -1 | tr -d '#')
        executions=$((executions + ${done_runs:-0}))
        cat "$log.run" >>"$log" && rm -f "$log.run"
        echo "stat::campaign_executions: $executions" >>"$log"
        [ "$code" -eq 0 ] && break
        result=$(failure_of "$log")
        local artifact=$dir/${result#*:}
        if [[ $result == timeout:* ]] && [ "$stalls" -lt 5 ] && replays_in_time "$t" "$artifact"; then
            mv "$artifact" "$dir/stalled-${result#*:timeout-}"
            stalls=$((stalls + 1))
            result=ok
            continue
        fi
        break
    done
    local edges features
    edges=$(grep -oE 'cov: [0-9]+' "$log" | tail -1 | grep -oE '[0-9]+')
    features=$(grep -oE 'ft: [0-9]+' "$log" | tail -1 | grep -oE '[0-9]+')
    [ "$stalls" -gt 0 ] && [ "$result" = ok ] && result="ok, stalls: $stalls"
    printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\n' "$t" "$executions" "${edges:-0}" "${features:-0}" \
        "$(($(date +%s) - start))" "$(date -u +%Y-%m-%dT%H:%MZ)" "$result" >>"$summary"
    tail -n 1 "$summary"
}

# What stopped a run, from its log: the kind of failure and the input it left.
failure_of() {
    local kind artifact result=failed
    kind=$(grep -oE 'ERROR: (libFuzzer|AddressSanitizer|LeakSanitizer): [a-z-]+' "$1" | tail -1 |
        sed 's/.*: //')
    artifact=$(grep -oE "Test unit written to [^ ]+" "$1" | tail -1 | sed 's/.* //')
    [ -n "$kind" ] && result=$kind
    [ -z "$kind" ] && grep -q 'runtime error:' "$1" && result=ubsan
    [ -n "$artifact" ] && result="$result:$(basename "$artifact")"
    echo "$result"
}

# Takes the top line of the queue file under a lock, so lanes never share a target.
next_in_queue() {
    (
        flock 8
        local line
        line=$(grep -m1 -vE '^\s*(#|$)' "$1" || true)
        if [ -n "$line" ]; then
            awk -v t="$line" '!done && $0 == t { done = 1; next } 1' "$1" >"$1.next"
            mv "$1.next" "$1"
        fi
        echo "$line"
    ) 8>"$1.lock"
}

if [ "${1:-}" = "--table" ]; then
    for f in fuzz/fuzz_*.cpp; do
        t=$(basename "$f" .cpp)
        line=$( (grep -P "^$t\t" "$summary" 2>/dev/null || true) | tail -1)
        if [ -n "$line" ]; then
            printf '%s\n' "$line" | awk -F'\t' '{ printf "| %s | %s | %s | %s | %s | %s |\n", $1, $2, $3, $5, substr($6, 1, 10), $7 }'
        else
            printf '| %s | | | | | not run yet |\n' "$t"
        fi
    done
    exit 0
fi

if [ "${1:-}" = "--campaign" ] || [ "${1:-}" = "--queue" ]; then
    mkdir -p "$campaign_dir"
    [ -f "$summary" ] || printf 'target\texecutions\tedges\tfeatures\tseconds\tdate\tresult\n' >"$summary"
    if [ "$1" = "--queue" ]; then
        queue=${2:?--queue needs a file}
        while t=$(next_in_queue "$queue") && [ -n "$t" ]; do campaign_target "$t"; done
        exit 0
    fi
    shift
    targets=("$@")
    if [ ${#targets[@]} -eq 0 ]; then
        for f in fuzz/fuzz_*.cpp; do targets+=("$(basename "$f" .cpp)"); done
    fi
    for t in "${targets[@]}"; do campaign_target "$t"; done
    exit 0
fi

seconds=${1:-20}
shift || true
configure
build_targets
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for f in "$build"/fuzz/fuzz_*; do
        [ -x "$f" ] && [ -f "$f" ] && targets+=("$(basename "$f")")
    done
fi
for t in "${targets[@]}"; do
    corpus="$build/corpus/$t"
    log="$build/fuzz-$t.log"
    mkdir -p "$corpus"
    seeds=()
    [ -d "fuzz/corpus/$t" ] && seeds=("fuzz/corpus/$t")
    echo "== $t ($seconds s)"
    if ! "$build/fuzz/$t" -max_total_time="$seconds" -timeout=5 -rss_limit_mb=2048 \
        -max_len=65536 -print_final_stats=1 "$corpus" "${seeds[@]}" >"$log" 2>&1; then
        tail -n 60 "$log"
        echo "$t failed"
        exit 1
    fi
    grep -E 'stat::number_of_executed_units|Done [0-9]+ runs' "$log" || true
done
