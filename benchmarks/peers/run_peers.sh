#!/usr/bin/env bash
# Installs, builds and runs peers of the grid and of the evaluator on workload W; prints one JSON line a figure, and keeps
# them in build/peers/<peer>.jsonl. All that is made goes into build/peers.
#   run_peers.sh [peer...]   qt expr (the default), web (AG Grid), perspective, gtk
#   SIZES="10000 100000 1000000"   rows        REPEATS=5
set -u
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
. "$root/scripts/common.sh"
export SIZES="${SIZES:-10000 100000 1000000}" REPEATS="${REPEATS:-5}" PEERS_BUILD="$build/peers" LANG=C.UTF-8
[ $# -gt 0 ] || set -- qt expr
mkdir -p "$PEERS_BUILD"
chmod 700 "$PEERS_BUILD"
flags=(-O2 -std=c++20 -fPIC)

need_node() {
    command -v node >/dev/null && command -v npm >/dev/null || need_packages nodejs npm
    cmp -s "$here/web/package.json" "$PEERS_BUILD/package.json" && return
    cp "$here/web/package.json" "$PEERS_BUILD/"
    (cd "$PEERS_BUILD" && npm install --no-audit --no-fund --no-package-lock --silent) ||
        { rm "$PEERS_BUILD/package.json"; die "The node packages of benchmarks/peers/web could not be installed."; }
}

compile() { # source, program, flags of its libraries...
    local source=$1 program=$2
    shift 2
    g++ "${flags[@]}" "$here/$source" -o "$PEERS_BUILD/$program" "$@" || die "$source does not build."
}

run_qt() {
    need_packages g++ pkg-config qt6-base-dev fonts-dejavu-core
    compile qt/bench_qt.cpp bench_qt $(pkg-config --cflags --libs Qt6Widgets Qt6Gui Qt6Core)
    local rows status=0
    for rows in $SIZES; do
        QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$PEERS_BUILD" "$PEERS_BUILD/bench_qt" "$rows" "$REPEATS" || status=1
    done
    return $status
}

run_expr() {
    need_packages g++ pkg-config libmuparser-dev libluajit-5.1-dev
    compile expr/bench_expr.cpp expr_floor
    compile expr/bench_expr.cpp expr_muparser -DUSE_MUPARSER -lmuparser
    compile expr/bench_expr.cpp expr_luajit -DUSE_LUAJIT $(pkg-config --cflags --libs luajit)
    "$PEERS_BUILD/expr_floor" && "$PEERS_BUILD/expr_muparser" && "$PEERS_BUILD/expr_luajit"
}

run_gtk() {
    need_packages g++ pkg-config libgtk-4-dev xvfb fonts-dejavu-core
    compile gtk/bench_gtk.cpp bench_gtk $(pkg-config --cflags --libs gtk4)
    local number server rows status=0
    coproc XVFB { exec Xvfb -displayfd 1 -screen 0 1700x1000x24 -nolisten tcp 2>/dev/null; }
    server=$XVFB_PID
    read -r -t 20 number <&"${XVFB[0]}" || die "The virtual display (Xvfb) did not start."
    for rows in $SIZES; do
        [ "$rows" -le 100000 ] || continue # a million rows take it hours
        DISPLAY=":$number" GSK_RENDERER=cairo GDK_BACKEND=x11 GTK_A11Y=none GSETTINGS_BACKEND=memory \
            XDG_RUNTIME_DIR="$PEERS_BUILD" "$PEERS_BUILD/bench_gtk" "$rows" "$REPEATS" || status=1
    done
    kill "$server" 2>/dev/null
    return $status
}

run_web() {
    need_packages chromium fonts-dejavu-core
    need_node
    node "$here/web/bench_aggrid.js"
}

run_perspective() {
    need_node
    node --expose-gc "$here/web/bench_perspective.js"
}

status=0
for peer in "$@"; do
    case "$peer" in
        qt | expr | gtk | web | perspective)
            "run_$peer" > >(tee "$PEERS_BUILD/$peer.jsonl") 2>"$PEERS_BUILD/$peer.log" ||
                { printf '%s did not finish; see build/peers/%s.log\n' "$peer" "$peer" >&2; status=1; }
            wait $! 2>/dev/null ;;
        *) die "run_peers.sh: found \"$peer\", expected qt, expr, web, perspective or gtk" ;;
    esac
done
exit $status
