#!/usr/bin/env bash
# Installs the Debian packages that building and testing need; does nothing when they are all there. With --platforms,
# those too that builds for 32-bit Linux and for Windows need.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config doxygen
  libpugixml-dev libtomlplusplus-dev zlib1g-dev libcli11-dev nlohmann-json3-dev
  libgtest-dev libgmock-dev libbenchmark-dev libcereal-dev libxml2-dev xsdcxx libxerces-c-dev strace valgrind
  clang-14 clang-format-14 clang-tidy-14 cppcheck gcovr libclang-rt-14-dev
  chromium chromium-driver fonts-noto-cjk
  git python3 python3-ezdxf python3-selenium
  zsh fish man-db groff lintian
  pybind11-dev python3-dev python3-numpy python3-matplotlib python3-pytest mypy
  python3-pip python3-setuptools python3-venv python3-wheel
)
if [[ ${1:-} == --platforms ]]; then
  packages+=(
    g++-multilib lib32z1-dev
    g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine64
    googletest dpkg-dev
  )
fi

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  echo "This system does not use apt: please see to it that these are installed: ${packages[*]}" >&2
  exit 0
fi

installed=$(dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for package in "${packages[@]}"; do
  grep -qxF "$package installed" <<<"$installed" || missing+=("$package")
done
if [[ ${#missing[@]} -eq 0 ]]; then
  exit 0
fi

as_root=()
if [[ $(id -u) -ne 0 ]]; then
  if ! command -v sudo >/dev/null; then
    echo "Missing packages: ${missing[*]}. Install them as root, or install sudo, then try again." >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "Installing missing packages: ${missing[*]}"
"${as_root[@]}" apt-get update
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
