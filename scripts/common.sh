# Shared by ./run, ./test and ./bench: packages, builds, Wine prefixes. Sourced with $root set to the repository.
# All that these scripts write goes below build/ and out/.

build="$root/build"
wine=/usr/lib/wine/wine64
wineserver=/usr/lib/wine/wineserver64
packages=(g++ cmake ninja-build g++-mingw-w64-x86-64-posix wine64 libwine googletest xvfb xauth xdotool imagemagick
    fonts-wine fonts-liberation libboost-dev mingw-w64-tools python3 util-linux)

die() { printf '%s\n' "$1" >&2; exit 2; }

# Installs what is missing, or says the exact line that would.
need_packages() { # package...
    local missing=() p
    for p in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Abbrev}' "$p" 2>/dev/null)" = "ii " ] || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local line="apt-get install -y --no-install-recommends ${missing[*]}" sudo=""
    if [ "$(id -u)" -ne 0 ]; then
        sudo -n true 2>/dev/null || die "Missing packages. As root, run: apt-get update && $line"
        sudo="sudo -n"
    fi
    printf 'Installing: %s\n' "${missing[*]}" >&2
    mkdir -p "$build"
    { $sudo env DEBIAN_FRONTEND=noninteractive apt-get update &&
        $sudo env DEBIAN_FRONTEND=noninteractive $line; } >"$build/apt.log" 2>&1 ||
        die "Packages could not be installed (see build/apt.log). As root, run: apt-get update && $line"
}

# Configures once and builds what changed. Quiet when nothing is to do.
build_preset() { # preset [target...]
    local preset=$1; shift
    mkdir -p "$build"
    if [ ! -f "$build/$preset/build.ninja" ]; then
        (cd "$root" && cmake --preset "$preset") >"$build/configure-$preset.log" 2>&1 ||
            { cat "$build/configure-$preset.log" >&2; return 1; }
    fi
    ninja -C "$build/$preset" "$@" >"$build/build-$preset.log" 2>&1 || { tail -n 60 "$build/build-$preset.log" >&2; return 1; }
    tail -n 1 "$build/build-$preset.log"
}

# Wine writes only below build/: HOME too; no menu entries, no .NET, no browser, no debugger.
wine_environment() { # prefix name (make_prefixes)
    export XAUTHORITY="${XAUTHORITY:-$HOME/.Xauthority}"  # the user's display is opened by the user's own key
    export WINEPREFIX="$build/wine/$1" HOME="$build/wine/home" XDG_RUNTIME_DIR="$build/wine/home"
    export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=d;winedbg.exe=d" WINEDEBUG="${WINEDEBUG:--all}"
    unset WAYLAND_DISPLAY
    # Wine reads and writes file names in the locale's character set; that of the plain C locale is ASCII.
    [ "$(locale charmap 2>/dev/null)" != ANSI_X3.4-1968 ] || export LC_ALL=C.UTF-8
    mkdir -p "$HOME"; chmod 700 "$HOME"
}

registry() { # key, name, data (a string value)
    "$wine" reg add "$1" /v "$2" /t REG_SZ /d "$3" /f >/dev/null 2>&1
}

# A prefix like another one, on a screen of so many dots an inch. Links take no room; the registry is written in place and
# must be a copy.
make_scaled_prefix() { # like, dots an inch
    cp -al "$build/wine/$1" "$build/wine/$1-$2"
    cp -a --remove-destination "$build/wine/$1"/*.reg "$build/wine/$1/.update-timestamp" "$build/wine/$1-$2/"
    wine_environment "$1-$2"
    "$wine" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$2" /f >/dev/null 2>&1
    "$wineserver" -k; "$wineserver" -w
}

# Three prefixes out of one template: `tests` uses the null driver (no display), `demo` X11 on a display of its own, and
# `screen` X11 on the user's. There the window manager has the windows (task bar, Alt-Tab, its own buttons); where there is
# none, a managed window would cost 2 s at each hiding. The two are apart because a prefix's desktop belongs to one display.
# `tests-144`, `tests-192` and `demo-144` are like those without the number, on a finer screen.
make_prefixes() {
    local ready="$build/wine/ready-3"  # the number grows with each change of what is made here
    [ -f "$ready" ] && return 0
    rm -rf "$build/wine"; mkdir -p "$build/wine"
    (
        wine_environment template
        unset DISPLAY
        "$wine" wineboot -i >"$build/wine/boot.log" 2>&1 || { cat "$build/wine/boot.log" >&2; exit 1; }
        registry 'HKCU\Software\Wine\WineDbg' ShowCrashDialog 0
        "$wineserver" -w
        # The symbols of caption buttons; Wine does not find them where the package has them, and shows letters.
        cp "$(dpkg -L fonts-wine | grep '/marlett\.ttf$')" "$WINEPREFIX/drive_c/windows/Fonts/" || exit 1
        cp -a "$build/wine/template" "$build/wine/tests"
        cp -a "$build/wine/template" "$build/wine/demo"
        # Links take no room; the registry is written in place and must be a copy.
        cp -al "$build/wine/demo" "$build/wine/screen"
        cp -a --remove-destination "$WINEPREFIX"/*.reg "$WINEPREFIX/.update-timestamp" "$build/wine/screen/"
        rm -rf "$build/wine/template"
        wine_environment tests
        registry 'HKCU\Software\Wine\Drivers' Graphics null
        "$wineserver" -k; "$wineserver" -w
        wine_environment demo
        registry 'HKCU\Software\Wine\X11 Driver' Managed N
        "$wineserver" -k; "$wineserver" -w
        make_scaled_prefix demo 144
        unset DISPLAY
        make_scaled_prefix tests 144
        make_scaled_prefix tests 192
    ) || die "The Wine prefixes could not be made; see build/wine/boot.log"
    touch "$ready"
}

# The calculation servers, entered in a prefix's registry. Only when the prefix does not have them from this folder yet.
register_servers() { # prefix name
    local mark="$build/wine/$1.servers" folder="$build/windows/bin" server
    [ "$(cat "$mark" 2>/dev/null)" = "$folder" ] && return 0
    (
        wine_environment "$1"
        [ "$1" = tests ] && unset DISPLAY
        for server in QuorOptionServer QuorMarginServer; do
            "$wine" regsvr32 /s "Z:${folder//\//\\}\\$server.dll" || exit 1
        done
        # The prefix's desktop was made without this run's display: the next program would get no window on it.
        timeout 20 "$wineserver" -w || true
    ) >/dev/null 2>&1 || die "The calculation servers could not be registered in the prefix '$1'."
    printf '%s' "$folder" >"$mark"
}

# Starts the prefix's server and services, so that no test is their parent: they hold its output open, and the test
# would seem to run as long as they do.
start_wine() { # prefix name
    (wine_environment "$1"; unset DISPLAY; "$wineserver" -p; "$wine" cmd /c exit) </dev/null >/dev/null 2>&1
}
