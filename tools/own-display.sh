#!/usr/bin/env bash
# Runs one GUI test binary on a virtual X server of its own.
#
# CTest runs test binaries side by side. On one shared X server without a
# window manager their windows overlap, and a test that reads the screen back
# (the picture drawn straight into a window) would read another test's window.
# A server per test keeps them apart. Without Xvfb the test runs on the
# display it was given.
set -euo pipefail

if ! command -v Xvfb > /dev/null; then
    exec "$@"
fi

ready=$(mktemp)
# -displayfd takes the first free display number and writes it once the
# server accepts connections, so parallel tests never race for a number.
Xvfb -displayfd 3 -screen 0 1920x1080x24 -nolisten tcp -noreset 3> "$ready" 2> /dev/null &
server=$!
cleanup() {
    kill "$server" 2> /dev/null || true
    wait "$server" 2> /dev/null || true
    rm -f "$ready"
}
trap cleanup EXIT

for _ in $(seq 200); do
    [ -s "$ready" ] && break
    if ! kill -0 "$server" 2> /dev/null; then
        echo "own-display: Xvfb did not start" >&2
        exit 1
    fi
    sleep 0.05
done
display=$(head -n1 "$ready")
if [ -z "$display" ]; then
    echo "own-display: Xvfb gave no display within 10 s" >&2
    exit 1
fi

status=0
DISPLAY=":$display" "$@" || status=$?
exit "$status"
