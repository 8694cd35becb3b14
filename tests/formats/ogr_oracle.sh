#!/usr/bin/env bash
# Installs GDAL's command-line tools (Debian gdal-bin) for the tests that compare
# the MIF/MID and shapefile readers with ogrinfo. A test oracle only, never a
# library dependency: when it cannot be installed those tests skip.
set -uo pipefail

if command -v ogrinfo >/dev/null 2>&1; then
  exit 0
fi
prefix=()
[ "$(id -u)" -ne 0 ] && prefix=(sudo)
export DEBIAN_FRONTEND=noninteractive
install() { "${prefix[@]}" apt-get install -y -qq --no-install-recommends gdal-bin >/dev/null 2>&1; }
if install || { "${prefix[@]}" apt-get update -qq && install; }; then
  echo "ogr_oracle: installed gdal-bin"
else
  echo "ogr_oracle: gdal-bin could not be installed; the tests against ogrinfo will skip"
fi
exit 0
