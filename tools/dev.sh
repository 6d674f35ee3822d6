#!/usr/bin/env bash
# Set up a Debian 12 machine, build, and run the demo or the tests.
#   tools/dev.sh run    install what is missing, build, open the viewer on the demo card
#   tools/dev.sh test   install what is missing, build, run every test (the
#                       on-screen tests last)
#   tools/dev.sh screen [SERVER...]  install what is missing, build, run the
#                       on-screen tests on real display servers (tools/screen.sh)
#   tools/dev.sh build  install what is missing, build
#   tools/dev.sh package  install what is missing, build, make build/tavro-viewer_<version>_<arch>.deb
#   tools/dev.sh asan   build in build-asan/ with AddressSanitizer + UBSan, run every test (leak checks on)
#   tools/dev.sh tsan   build the threaded tests in build-tsan/ with ThreadSanitizer and run them
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${TAVRO_BUILD_DIR:-$root/build}

install_missing() {
    local wanted missing=()
    mapfile -t wanted < <(grep -vE '^\s*(#|$)' tools/debian-packages.txt)
    for pkg in "${wanted[@]}"; do
        dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' || missing+=("$pkg")
    done
    # npm: the machine's own Node.js may bundle it (Debian's npm package would conflict).
    command -v npm >/dev/null 2>&1 || missing+=(npm)
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing: ${missing[*]}"
    local sudo=()
    [ "$(id -u)" -eq 0 ] || sudo=(sudo)
    "${sudo[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

build() {
    cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
    cmake --build "$build" --parallel "$(nproc)"
}

run_demo() {
    # A demo memory card with clips of every format (kept up to date, not rewritten).
    "$build/bin/make-demo-card" --out "$build/demo-card"
    exec "$build/bin/tavro-viewer" --card "$build/demo-card"
}

run_tests() {
    # Each widget and OpenGL test starts a virtual X server of its own
    # (tools/own-display.sh); the other tests need no display.
    ctest --test-dir "$build" --output-on-failure --parallel "$(nproc)"
}

package_deb() {
    # CPack installs the build into a staging root under /usr and packs it;
    # dpkg-shlibdeps computes the library dependencies.
    (cd "$build" && cpack -G DEB)
}

# Sanitizer builds live in their own directories and never touch build/.
# Optimised just enough (-O1) to keep the suite's run time bearable.
sanitizer_build() {
    local dir=$1 flags=$2 factor=${SANITIZER_TIMEOUT_FACTOR:-4}
    shift 2
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    if [ -z "${CMAKE_CXX_COMPILER_LAUNCHER:-}" ] && command -v ccache >/dev/null 2>&1; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    cmake -S "$root" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -g" -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_EXE_LINKER_FLAGS="$flags" -DCMAKE_SHARED_LINKER_FLAGS="$flags" \
        -DTAVRO_BUILD_BENCH=OFF -DTAVRO_TEST_TIMEOUT_FACTOR="$factor"
    cmake --build "$dir" --parallel "$(nproc)" "${targets[@]}"
}

run_asan() {
    local dir=${TAVRO_ASAN_BUILD_DIR:-$root/build-asan}
    sanitizer_build "$dir" "-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
    local supp=$root/tools/sanitizers
    # Child processes we start (the tavro CLI) inherit these; ffmpeg and the
    # QtWebEngine helper process are not instrumented and ignore them.
    # Chromium (inside libQt6WebEngineCore) frees some objects with a sized delete of
    # another size, inside its own code: new_delete_type_mismatch stays off for that.
    # (Full unwinding on every malloc would make Chromium too slow to start; the GUI
    # tests check for leaks before the GL driver unloads instead.)
    export ASAN_OPTIONS=detect_leaks=1:check_initialization_order=1:strict_init_order=1:new_delete_type_mismatch=0
    export LSAN_OPTIONS=suppressions=$supp/lsan.supp:print_suppressions=0
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    # The tests' own waits for players, pages and processes stretch as their limits do.
    export TAVRO_TEST_TIME_FACTOR=4
    ctest --test-dir "$dir" --output-on-failure --parallel "$(nproc)" "$@"
}

# The tests whose code runs on more than one thread: clip conversion and
# telemetry loading off the GUI thread, the export workers, the card format's
# background job, and the player's callbacks from mpv's threads.
readonly TSAN_TESTS=(library_tests export_tests session_tests route_export_controller_tests
    settings_format_tests player_view_test)

run_tsan() {
    local dir=${TAVRO_TSAN_BUILD_DIR:-$root/build-tsan}
    # Players under the thread sanitizer run about ten times slower.
    SANITIZER_TIMEOUT_FACTOR=10 sanitizer_build "$dir" "-fsanitize=thread" "${TSAN_TESTS[@]}"
    # Qt is not built with the thread sanitizer: tools/sanitizers/tsan.supp names
    # the hand-overs inside Qt that it cannot see (each line says why).
    # QProcess forks from a process with threads and the child only execs. The
    # lock-order detector is off: Mesa's rasteriser holds more locks at once
    # than it can track.
    export TAVRO_TEST_TIME_FACTOR=10
    # SDL (which mpv's audio outputs load) starts an ALSA hot-plug thread that
    # loads libasound while other threads load libraries too; under the thread
    # sanitizer that hangs in the sanitizer's own library bookkeeping. The tests
    # play no sound anyway.
    export SDL_AUDIODRIVER=dummy
    export TSAN_OPTIONS="halt_on_error=1:detect_deadlocks=0:die_after_fork=0:suppressions=$root/tools/sanitizers/tsan.supp"
    local pattern
    pattern="^($(IFS='|'; echo "${TSAN_TESTS[*]}"))\$"
    ctest --test-dir "$dir" --output-on-failure --parallel "$(nproc)" -R "$pattern" "$@"
}

case "${1:-}" in
    run)   install_missing; build; run_demo ;;
    test)  install_missing; build; run_tests; tools/screen.sh "$build" ;;
    screen) shift; install_missing; build; tools/screen.sh "$build" "$@" ;;
    build) install_missing; build ;;
    package) install_missing; build; package_deb ;;
    asan)  shift; install_missing; run_asan "$@" ;;
    tsan)  shift; install_missing; run_tsan "$@" ;;
    *) echo "usage: tools/dev.sh run|test|screen|build|package|asan|tsan" >&2; exit 2 ;;
esac
