#!/usr/bin/env bash
# Writes a short front-camera clip (H.264 MP4) whose subtitle track carries
# the camera's telemetry records: ten "gsensor" records and one "GPRMC"
# sentence per second, driving north-east at a steady speed with a jolt at 8 s.
#   tools/make-sample-clip.sh OUT.mp4 [SECONDS]
set -euo pipefail
out=${1:?usage: make-sample-clip.sh OUT.mp4 [SECONDS]}
seconds=${2:-20}
mkdir -p "$(dirname "$out")"
srt=$(mktemp --suffix=.srt)
trap 'rm -f "$srt"' EXIT

awk -v seconds="$seconds" 'BEGIN {
    n = 0
    for (s = 0; s < seconds; s++) {
        for (k = 0; k < 10; k++) {
            x = int(10 * sin((s * 10 + k) / 7)); y = -20 + (s % 5); z = 128
            if (s == 8 && k >= 3 && k <= 5) { x = 300; y = -250 }
            emit(s * 1000 + k * 90, sprintf("gsensor,%d,%d,%d", x, y, z))
        }
        # 37 deg 23.2475 N, 126 deg 58.4100 E, moving ~0.0009 deg a second.
        latmin = 23.2475 + s * 0.054; lngmin = 58.41 + s * 0.061
        knots = 20 + 10 * sin(s / 6)
        emit(s * 1000 + 920, sprintf("GPRMC,0000%02d.00,A,37%07.4f,N,126%07.4f,E,%.1f,0.0,070316,,,A", s % 60, latmin, lngmin, knots))
    }
}
function stamp(ms) { return sprintf("%02d:%02d:%02d,%03d", int(ms / 3600000), int(ms / 60000) % 60, int(ms / 1000) % 60, ms % 1000) }
function emit(ms, text) { n++; printf "%d\n%s --> %s\n%s\n\n", n, stamp(ms), stamp(ms + 60), text }' > "$srt"

ffmpeg -loglevel error -y -f lavfi -i "testsrc2=size=640x360:rate=30:duration=${seconds}" \
    -i "$srt" -map 0:v -map 1:s -c:v libx264 -preset ultrafast -pix_fmt yuv420p \
    -c:s mov_text "$out"
echo "wrote $out"
