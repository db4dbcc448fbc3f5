# What the scripts share. Sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '\033[1m== %s\033[0m\n' "$*"; }
die() { printf '%s\n' "$*" >&2; exit 1; }

# Debian packages, by what they are for.
build_packages="g++ cmake ninja-build pkg-config ccache qt6-base-dev qt6-base-dev-tools qt6-svg-dev libgl-dev libssl-dev libssh-dev libcpprest-dev libboost-dev libxml2-dev"
run_packages="fonts-noto-cjk ca-certificates xdg-utils"
windows_packages="g++-mingw-w64-x86-64-posix cmake ninja-build ccache googletest"
wine_packages="wine wine64 fonts-noto-cjk"
test_packages="libgtest-dev libgmock-dev clang-format clang-tidy clang"
bench_packages="libbenchmark-dev libvterm-dev valgrind"
package_packages="dpkg-dev file git gzip lintian desktop-file-utils appstream man-db mandoc"
fuzz_packages="clang libclang-rt-14-dev llvm"

# Installs those of the named packages that are missing.
need() {
  local missing="" package
  command -v dpkg-query > /dev/null || return 0  # not Debian: the packages' names are in README.md
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2> /dev/null | grep -q '^install ok installed' || missing+=" $package"
  done
  [ -n "$missing" ] || return 0
  say "Installing:$missing"
  local as_root=""
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo > /dev/null || die "These packages are missing and only root may install them:$missing"
    as_root=sudo
  fi
  $as_root apt-get update -q
  # shellcheck disable=SC2086
  $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing
}

# What a script tells CMake besides the preset.
configure_options=()

# build PRESET [TARGET...]: configures when that is due, and builds with ninja's own progress line.
build() {
  local preset=$1
  shift
  local launcher=()
  command -v ccache > /dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_COMPRESS=1
  say "Configuring ($preset)"
  cmake --preset "$preset" "${launcher[@]}" "${configure_options[@]}" > "build-$preset.log" 2>&1 || { cat "build-$preset.log"; rm -f "build-$preset.log"; exit 1; }
  mkdir -p "build/$preset" && mv "build-$preset.log" "build/$preset/configure.log"
  say "Building ($preset)"
  cmake --build "build/$preset" ${1:+--target "$@"}
}
