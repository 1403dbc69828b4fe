# Sourced by ./run, ./test, ./bench and .ci/run: the packages, the build, and how they speak.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
top=$PWD

# What builds the programs and what they run on.
build_packages=(
    g++ cmake ninja-build pkg-config
    libsqlitecpp-dev libsqlite3-dev sqlite3 libicu-dev libfmt-dev libcli11-dev nlohmann-json3-dev libplist-dev
    libgtest-dev libgmock-dev libexpat1-dev
    qt6-base-dev qt6-declarative-dev qt6-tools-dev qt6-l10n-tools
    qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-layouts qml6-module-qtquick-templates
    qml6-module-qtquick-window qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
    qml6-module-qt-labs-platform qml6-module-qt-labs-folderlistmodel qml6-module-qtquick-dialogs
    fonts-material-design-icons-iconfont
    rsync tzdata dbus-daemon openssl fonts-dejavu-core
)
# What the checks of .ci/run need besides.
check_packages=(clang-16 clang-tidy-16 clang-format-16 libclang-rt-16-dev qt6-declarative-dev-tools)

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# Installs those of the named packages that are missing; asks for rights only then.
install_packages() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    say "Installing ${missing[*]}"
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -o Acquire::Retries=5 -o DPkg::Lock::Timeout=120)
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || fail "Installing packages needs root or sudo, and there is neither."
        apt=(sudo "${apt[@]}")
    fi
    quietly "Packages could not be installed." "${apt[@]}" update
    quietly "Packages could not be installed." "${apt[@]}" install -y --no-install-recommends "${missing[@]}"
}

# progress LOG: until its input ends, says every 20 seconds how long it has been and what the log says last.
progress() {
    local start=$SECONDS status=0
    while true; do
        read -r -t 20 _ || status=$?
        [ "$status" -gt 128 ] || return 0 # not a time-out
        status=0
        say "  $((SECONDS - start)) s: $(tail -c 1000 "$1" | tr '\r' '\n' | grep . | tail -n 1 | cut -c 1-100)"
    done
}

# logged LOG COMMAND...: runs the command with its output in the file, shows its progress, and returns its status.
logged() {
    local log=$1 status=0 gate reporter
    shift
    exec {gate}> >(progress "$log")
    reporter=$!
    "$@" >"$log" 2>&1 {gate}>&- || status=$?
    exec {gate}>&-
    wait "$reporter"
    return "$status"
}

# quietly WORDS COMMAND...: runs the command; only when it fails is its output shown, after the words.
quietly() {
    local words=$1 log status=0
    shift
    log=$(mktemp)
    logged "$log" "$@" || status=$?
    if [ "$status" -ne 0 ]; then
        printf '%s It said:\n' "$words" >&2
        tail -n 60 "$log" >&2
    fi
    rm -f "$log"
    [ "$status" -eq 0 ] || exit 1
}

# build PRESET [TARGET...]: configures and builds; on a terminal ninja's one line shows how far it is.
build() {
    local preset=$1 targets=()
    shift
    [ $# -gt 0 ] && targets=(--target "$@")
    say "Building ($preset)"
    quietly "The build could not be configured." cmake --preset "$preset"
    if [ -t 1 ]; then
        NINJA_STATUS='[%f/%t] ' cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}" ||
            fail "The build failed."
    else
        quietly "The build failed." cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
    fi
}

# run_tests PRESET: runs all tests of a built preset, prints "N passed, N failed", and what failed.
run_tests() {
    local preset=$1 log status=0 failed total
    local run=(ctest --preset "$preset" --parallel "$(nproc)" --progress)
    log=$(mktemp)
    say "Testing ($preset)"
    if [ -t 1 ]; then
        "${run[@]}" 2>&1 | tee "$log" || status=$?
    else
        logged "$log" "${run[@]}" || status=$?
    fi
    read -r failed total < <(sed -nE 's/.*, ([0-9]+) tests failed out of ([0-9]+).*/\1 \2/p' "$log") || true
    if [ -z "${total:-}" ] || [ "$total" -eq 0 ]; then
        tail -n 40 "$log" >&2
        fail "No test ran."
    fi
    [ "$status" -eq 0 ] || [ -t 1 ] || tail -n 400 "$log" >&2
    rm -f "$log"
    say "$((total - failed)) passed, $failed failed"
    [ "$status" -eq 0 ]
}
