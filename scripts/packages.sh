# Lists and installs the Debian packages that the project needs. Sourced by the other scripts.

build_packages=(
  cmake g++ ninja-build pkg-config
  libcairo2-dev libcli11-dev libexpat1-dev libisal-dev liblz4-dev libplist-dev libpng-dev libsdbus-c++-dev libsdl2-dev libutfcpp-dev libwayland-dev libx11-dev
  libxext-dev libxrandr-dev libxss-dev wayland-protocols
  zlib1g-dev
  nlohmann-json3-dev
)
run_packages=(dbus fontconfig fonts-inter)
test_packages=(
  at-spi2-core ffmpeg fish foot gir1.2-atspi-2.0 grim libgtest-dev openbox python3 python3-gi sway swaybg x11-utils x11-xserver-utils xserver-xephyr
  xvfb zsh
)
# For the settings window, which is built if the first of them is installed.
settings_packages=(adwaita-icon-theme libadwaita-1-dev)
bench_packages=(
  ffmpeg gifsicle libbenchmark-dev libopencv-core-dev libopencv-imgproc-dev libspng-dev mpv
  python3 python3-pil time xvfb
)
fuzz_packages=(clang python3)
device_packages=(
  binutils clang-19 cmake libc++-19-dev libc++abi-19-dev libcli11-dev libutfcpp-dev lld-13 lld-19
  llvm-19 ninja-build nlohmann-json3-dev python3
)
device_test_packages=(
  g++-aarch64-linux-gnu g++-arm-linux-gnueabi gobjc++ libblocksruntime-dev libgif-dev libgnustep-base-dev libgtest-dev
  libpng-dev qemu-user util-linux
)
lint_packages=(clang-format clang-tidy python3)

# Seconds to wait for another program that installs packages.
lock_timeout=600

# Installs the named packages that are missing.
install_missing() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing ${missing[*]}"
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "${0##*/}: cannot install packages: run this once as root, or install sudo" >&2
      exit 1
    }
    as_root=(sudo)
  fi
  local log
  log=$(mktemp)
  {
    "${as_root[@]}" apt-get update -qq -o DPkg::Lock::Timeout="$lock_timeout" &&
      "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends -o DPkg::Lock::Timeout="$lock_timeout" \
        "${missing[@]}"
  } >"$log" 2>&1 || {
    cat "$log" >&2
    exit 1
  }
  rm -f "$log"
}
