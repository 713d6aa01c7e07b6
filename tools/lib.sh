# What the commands of this project share. Sourced, not run.

project="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

say() { printf '\n== %s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# Configures and builds one CMake preset: build_preset PRESET [TARGET...]
build_preset() {
    local preset=$1
    shift
    local generator=()
    [ -f "$project/build/$preset/CMakeCache.txt" ] || generator=(-G Ninja)
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    (
        cd "$project" &&
            cmake --preset "$preset" "${generator[@]}" --log-level=WARNING &&
            cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}"
    )
}

# The web engine's sandbox refuses to work for root; only test programs may switch it off on their own.
is_root() { [ "$(id -u)" = 0 ]; }
