# Sourced by ./run and ./test: installs the packages of a list that are missing and builds a preset.

# install_packages [LIST]
install_packages() {
    local missing=() package
    while read -r package; do
        case "$package" in ""|\#*) continue ;; esac
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing+=("$package")
    done < "${1:-packages.txt}"
    [ ${#missing[@]} -eq 0 ] && return
    if ! command -v apt-get >/dev/null; then
        echo "Missing packages: ${missing[*]}. Install them with your system's package manager." >&2
        return 1
    fi
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET "TARGET..." [cmake options]: the targets, or everything for "all"
build() {
    local preset=$1 targets=$2
    shift 2
    export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
    cmake --preset "$preset" -DCMAKE_C_COMPILER_LAUNCHER=ccache \
        -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@" >/dev/null
    # Several names: split on purpose.
    # shellcheck disable=SC2086
    cmake --build --preset "$preset" --target $targets
}
