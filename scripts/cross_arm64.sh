#!/usr/bin/env bash
# Builds for 64-bit ARM and runs tests there, on a machine that is none: scripts/cross_arm64.sh [TARGET…]
#
# From nothing but Debian: installs the cross compiler and user-mode emulation, gathers the libraries for arm64 in a
# folder of their own (this machine's packages stay as they are), configures build/arm64 with
# cmake/aarch64-linux-gnu.cmake, builds the targets and runs those that are tests under emulation. Without targets: the
# rooms with kernels, what stands on them, and their tests. Not part of ./test: emulation is some twenty times slower,
# and the libraries are a download of half a gigabyte.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
root=${PLOTIX_ARM64_ROOT:-$here/build/arm64-root}
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  targets=(test_base test_base_png test_storage test_records_columns test_records_store test_records_sqlite
    test_plotkit_model test_plotkit_layout test_plotkit_raster test_plotkit_render test_plugins_plotixplugin_logic)
fi

as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }

# apt as if this were an arm64 machine on which nothing is installed yet.
foreign_apt() {
  apt-get -o Dir::State="$root/apt/state" -o Dir::State::status="$root/apt/status" -o Dir::Cache="$root/apt/cache" \
    -o APT::Architecture=arm64 -o APT::Architectures=arm64 -o Debug::NoLocking=1 -o APT::Sandbox::User=root \
    -o APT::Install-Recommends=false -qq "$@"
}

"$here/scripts/setup.sh"
command -v aarch64-linux-gnu-g++ >/dev/null || as_root apt-get install -y -qq g++-aarch64-linux-gnu
command -v qemu-aarch64 >/dev/null || as_root apt-get install -y -qq qemu-user

if [ ! -e "$root/complete" ]; then
  mkdir -p "$root/apt/state/lists/partial" "$root/apt/cache/archives/partial"
  : >"$root/apt/status"
  foreign_apt update
  mapfile -t packages < <(grep -E '^(lib|qt6-base|nlohmann).*-dev$' "$here/scripts/packages.txt")
  foreign_apt --download-only -y install libc6-dev libstdc++-12-dev "${packages[@]}"
  for package in "$root"/apt/cache/archives/*.deb; do
    dpkg -x "$package" "$root"
  done
  touch "$root/complete"
fi

cmake -S "$here" -B "$here/build/arm64" -G Ninja -DCMAKE_BUILD_TYPE=Release -DPLOTIX_TEST_PER_PROGRAM=ON \
  -DCMAKE_TOOLCHAIN_FILE="$here/cmake/aarch64-linux-gnu.cmake" -DPLOTIX_ARM64_ROOT="$root"
cmake --build "$here/build/arm64" --target "${targets[@]}"

export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 TZ=UTC
failed=0
for target in "${targets[@]}"; do
  case $target in
    test_*)
      echo "== $target"
      qemu-aarch64 -L "$root" -E LD_LIBRARY_PATH="$root/usr/lib/aarch64-linux-gnu" \
        -E QT_PLUGIN_PATH="$root/usr/lib/aarch64-linux-gnu/qt6/plugins" \
        "$here/build/arm64/bin/$target" --gtest_brief=1 || failed=1
      ;;
  esac
done
exit $failed
