# What the scripts share. Sourced by bash with the project's folder as $root.

# The words that every failure ends with.
fail() {
    echo "${0##*/}: $*" >&2
    exit 1
}

# For a script that takes no arguments: says its usage, and ends where there are some.
no_arguments() {
    local usage="usage: $1"
    shift
    [ $# -gt 0 ] || return 0
    case $1 in
    --help | -h)
        echo "$usage"
        exit 0
        ;;
    *) fail "$usage" ;;
    esac
}

# Packages of the sections "$@" of packaging/debian-packages.txt, one a line.
packages_of() {
    awk -v wanted=" $* " '
        { sub(/#.*/, ""); gsub(/[ \t]+/, "") }
        /^\[.*\]$/ { inside = index(wanted, " " substr($0, 2, length($0) - 2) " "); next }
        inside && $0 != ""' "$root/packaging/debian-packages.txt"
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Installs what is missing of the sections "$@". Nothing missing: no network, no rights needed.
install_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: the packages named in packaging/debian-packages.txt are" \
            "taken as installed."
        return 0
    fi
    local package missing=()
    for package in $(packages_of "$@"); do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "these packages are missing, and only root may install" \
            "them (there is no sudo here). As root:
    apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
        as_root=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -q &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y \
            --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        rm -f "$log"
        fail "the packages could not be installed; apt-get's last words stand above"
    fi
    rm -f "$log"
}

# Configures and builds preset $1, with the further arguments given to the build.
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset" >"$scratch/configure" 2>&1 || {
        cat "$scratch/configure"
        return 1
    }
    cmake --build --preset "$preset" -j "$(nproc)" "$@"
}

# The notices of third parties for the package $1, "debian" or "windows". $2 is where the text of a
# licence is, with \1 for its name.
notices_of() {
    awk -v wanted="$1" '
        /^#/ { next }
        /^\[.*\]$/ { inside = $0 == "[all]" || $0 == "[" wanted "]"; next }
        inside' "$root/packaging/notices.txt" | sed -e "s|@LICENCES@/\([A-Z0-9]*-[0-9.]*[0-9]\)|$2|"
}

# A private folder for the length of the script. Qt wants one of mode 0700 for what it keeps at run
# time; none is there on a bare console.
make_scratch() {
    scratch=$(mktemp -d)
    mkdir -m 700 "$scratch/runtime"
    [ -n "${XDG_RUNTIME_DIR:-}" ] && [ -d "$XDG_RUNTIME_DIR" ] && [ -O "$XDG_RUNTIME_DIR" ] ||
        export XDG_RUNTIME_DIR=$scratch/runtime
}
