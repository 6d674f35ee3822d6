#!/usr/bin/env bash
# The on-screen tests: the viewer on real display servers, judged by what the
# server shows (its whole screen), not by what a widget or a texture holds.
#
#   tools/screen.sh BUILD_DIR [SERVER...]
#
# SERVER is one of (default: all of them)
#   x11            Xvfb, no window manager
#   x11-openbox    Xvfb with openbox (a window manager)
#   x11-xcompmgr   Xvfb with xcompmgr (a compositing manager)
#   x11-scale2     Xvfb with openbox at QT_SCALE_FACTOR=2
#   wayland        sway, headless
#   wayland-scale2 sway, headless, output scale 2
#
# The screen is read where the server keeps it: Xvfb's own framebuffer file
# (-fbdir) on X11 and grim (the compositor's screen copy) on Wayland. The
# screenshots of each run land in BUILD_DIR/screen/SERVER/ to be looked at.
# sway refuses to run as root: as root it runs as an unprivileged user made
# for the test (tavro-screen); the viewer connects to it as root.
set -uo pipefail

build=$(cd "${1:?usage: tools/screen.sh BUILD_DIR [SERVER...]}" && pwd)
shift
servers=("$@")
[ ${#servers[@]} -gt 0 ] || servers=(x11 x11-openbox x11-xcompmgr x11-scale2 wayland wayland-scale2)
test_binary=$build/tests/screen_test
[ -x "$test_binary" ] || { echo "screen: $test_binary is missing (build first)" >&2; exit 2; }

work=$(mktemp -d /tmp/tavro-screen.XXXXXX)
chmod 755 "$work"
pids=()
stop_all() {
    for pid in "${pids[@]}"; do kill "$pid" 2> /dev/null; done
    for pid in "${pids[@]}"; do wait "$pid" 2> /dev/null; done
    pids=()
}
trap 'stop_all; rm -rf "$work"' EXIT

wait_for() { # wait_for SECONDS COMMAND...: until COMMAND succeeds
    local tries=$(($1 * 20))
    shift
    for _ in $(seq "$tries"); do "$@" && return 0; sleep 0.05; done
    return 1
}

start_x11() { # start_x11 NAME WIDTHxHEIGHT [openbox|xcompmgr]
    local dir=$work/$1 ready=$work/$1.display
    mkdir -p "$dir"
    Xvfb -displayfd 3 -screen 0 "${2}x24" +extension Composite -fbdir "$dir" \
        -nolisten tcp -noreset 3> "$ready" 2> /dev/null &
    pids+=($!)
    wait_for 10 test -s "$ready" || { echo "screen: Xvfb did not start" >&2; return 1; }
    export DISPLAY=":$(head -n1 "$ready")" QT_QPA_PLATFORM=xcb
    export TAVRO_SCREEN_XWD=$dir/Xvfb_screen0
    case "${3:-}" in
    openbox)
        openbox > /dev/null 2>&1 &
        pids+=($!)
        # openbox names itself on the root window once it manages the screen.
        wait_for 10 sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q window' \
            || { echo "screen: openbox did not start" >&2; return 1; }
        ;;
    xcompmgr)
        xcompmgr > /dev/null 2>&1 &
        pids+=($!)
        sleep 0.5
        kill -0 "${pids[-1]}" || { echo "screen: xcompmgr did not start" >&2; return 1; }
        ;;
    esac
}

start_wayland() { # start_wayland NAME SCALE
    local runtime=$work/$1.runtime user=() width=1600 height=1000
    [ "$2" = 1 ] || { width=$((1600 * $2)); height=$((1000 * $2)); }
    mkdir -p "$runtime"
    if [ "$(id -u)" -eq 0 ]; then
        id tavro-screen > /dev/null 2>&1 \
            || useradd --system --no-create-home --shell /usr/sbin/nologin tavro-screen
        chown tavro-screen "$runtime"
        user=("$(command -v runuser)" -u tavro-screen --)
    fi
    chmod 700 "$runtime"
    cat > "$work/$1.sway" << EOF
output HEADLESS-1 resolution ${width}x${height} scale $2
default_border none
default_floating_border none
focus_follows_mouse no
EOF
    chmod 644 "$work/$1.sway"
    env -i PATH=/usr/bin:/bin HOME="$runtime" XDG_RUNTIME_DIR="$runtime" \
        WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 \
        "${user[@]}" sway -c "$work/$1.sway" > "$work/$1.sway.log" 2>&1 &
    pids+=($!)
    wait_for 10 test -S "$runtime/wayland-1" || {
        echo "screen: sway did not start:" >&2
        cat "$work/$1.sway.log" >&2
        return 1
    }
    wait_for 10 sh -c "ls '$runtime'/sway-ipc.*.sock > /dev/null 2>&1"
    unset DISPLAY TAVRO_SCREEN_XWD
    # The viewer may run as another user than sway: an absolute socket path.
    export WAYLAND_DISPLAY=$runtime/wayland-1 QT_QPA_PLATFORM=wayland
    export SWAYSOCK
    SWAYSOCK=$(ls "$runtime"/sway-ipc.*.sock)
    export TAVRO_SCREEN_COMMAND="grim -"
    mkdir -p "$work/$1.own-runtime"
    chmod 700 "$work/$1.own-runtime"
    export XDG_RUNTIME_DIR=$work/$1.own-runtime
}

run_on() { # run_on SERVER
    local server=$1
    (
        trap stop_all EXIT
        unset QT_SCALE_FACTOR
        case "$server" in
        x11) start_x11 "$server" 1600x1000 ;;
        x11-openbox) start_x11 "$server" 1600x1000 openbox ;;
        x11-xcompmgr) start_x11 "$server" 1600x1000 xcompmgr ;;
        x11-scale2) start_x11 "$server" 3200x2000 openbox && export QT_SCALE_FACTOR=2 ;;
        wayland) start_wayland "$server" 1 ;;
        wayland-scale2) start_wayland "$server" 2 ;;
        *) echo "screen: no server called $server" >&2; exit 2 ;;
        esac || exit 1
        shots=$build/screen/$server
        rm -rf "$shots"
        mkdir -p "$shots"
        export TAVRO_SCREEN_SHOTS=$shots TAVRO_SCREEN_SERVER=$server
        export TAVRO_VIEWER_BINARY=$build/bin/tavro-viewer
        export QTWEBENGINE_CHROMIUM_FLAGS=--no-sandbox
        export QT_LOGGING_RULES="qt.webenginecontext.debug=false;qt.qpa.wayland.warning=false"
        timeout 600 "$test_binary" --gtest_brief=1
    )
}

failed=()
for server in "${servers[@]}"; do
    echo "== on-screen tests: $server"
    start=$SECONDS
    if run_on "$server"; then
        echo "== $server: passed ($((SECONDS - start)) s; screenshots in $build/screen/$server)"
    else
        echo "== $server: FAILED ($((SECONDS - start)) s; screenshots in $build/screen/$server)"
        failed+=("$server")
    fi
done
if [ ${#failed[@]} -gt 0 ]; then
    echo "on-screen tests failed on: ${failed[*]}" >&2
    exit 1
fi
echo "on-screen tests passed on: ${servers[*]}"
