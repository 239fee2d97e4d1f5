# Shared by the commands of this repository; sourced, never run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

run_packages=(
  g++ make cmake ninja-build
  qtbase5-dev qtdeclarative5-dev qtquickcontrols2-5-dev
  qml-module-qtqml qml-module-qtquick2 qml-module-qtquick-controls2
  qml-module-qtquick-templates2 qml-module-qtquick-window2 qml-module-qtquick-layouts
  qml-module-qtquick-shapes qml-module-qt-labs-folderlistmodel
  qttools5-dev-tools qttranslations5-l10n
  libpcap-dev
  qtwayland5 libgl1-mesa-dri libgl-dev fonts-dejavu-core xvfb xauth imagemagick
)
test_packages=(openbox xdotool)
lint_packages=(clang clang-format clang-tidy clazy qtdeclarative5-dev-tools git codespell python3)
fuzz_packages=(clang libclang-rt-14-dev)
bench_packages=(libbenchmark-dev)
windows_packages=(g++-mingw-w64-x86-64-posix wine wine64 xz-utils)
# For building Qt where there is no ready-made one, and other libraries.
windows_build_packages=(
  g++ make cmake ninja-build g++-mingw-w64-x86-64-posix dpkg-dev patch perl python3 flex bison debian-archive-keyring
  ca-certificates xz-utils
)

# Installs those of the named Debian packages that are missing. Quick when none is.
install_packages() {
  local missing=() package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
      missing+=("$package")
  done
  [ ${#missing[@]} -gt 0 ] || return 0
  echo "Installing: ${missing[*]}"
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null ||
      { echo "These packages need root or sudo to install: ${missing[*]}" >&2; return 1; }
    sudo=(sudo)
  fi
  "${sudo[@]}" apt-get -qq update
  "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get -qq -y --no-install-recommends install "${missing[@]}" >/dev/null
}

# Configures and builds a preset, or some of its targets.
build_preset() {
  local preset=$1
  shift
  (
    cd "$root"
    if [ ! -f "build/$preset/build.ninja" ]; then
      echo "Configuring the $preset build in build/$preset"
      cmake --preset "$preset" >/dev/null
    fi
    NINJA_STATUS="[%f of %t] " cmake --build --preset "$preset" ${1:+--target "$@"}
  )
}

# Builds for Windows, or some targets of it; gets the libraries first if they are missing.
build_windows() {
  GAUGE_WINDOWS_QT=$("$root/packaging/windows/qt")
  GAUGE_WINDOWS_LIBRARIES=$("$root/packaging/windows/libraries")
  export GAUGE_WINDOWS_QT GAUGE_WINDOWS_LIBRARIES
  build_preset windows-mingw "$@"
}

has_display() {
  [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]
}

# Runs a command on a virtual screen of its own.
on_virtual_screen() {
  # Servers and containers have none, and Qt warns.
  if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
    export XDG_RUNTIME_DIR="$root/build/runtime"
    mkdir -p -m 700 "$XDG_RUNTIME_DIR"
  fi
  xvfb-run -a -s "-screen 0 1600x1000x24 -nolisten tcp -noreset" "$@"
}
