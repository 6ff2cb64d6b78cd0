#!/bin/sh
# Installs, on Debian, whatever building and testing orb needs and is missing
# (llvm for llvm-symbolizer: sanitizer reports then name their source lines).
set -e
SUDO=
[ "$(id -u)" = 0 ] || SUDO=sudo
pkgs="g++ clang libclang-rt-14-dev llvm make cmake ninja-build pkg-config binutils ca-certificates git
      libhwy-dev libfftw3-dev libgtest-dev libgmock-dev libbenchmark-dev libedit-dev
      libopencv-imgproc-dev libsndfile1-dev gnuplot-nox"
missing=
for p in $pkgs; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'ok installed' || missing="$missing $p"
done
if [ -n "$missing" ]; then
  echo "installing:$missing"
  $SUDO apt-get update -qq
  $SUDO env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
fi
