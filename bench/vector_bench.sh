#!/usr/bin/env bash
# Vector benchmark: hyutil vector against GDAL/OGR on a synthetic polygon layer.
# Not a test; it prints each figure and its ratio to the peer.
#
#   bench/vector_bench.sh [--scale N] [--work DIR]
#
# The layer: 100,000 x N star-shaped polygons of 10 to 40 vertices with a text, an
# integer and a real column, made by ogr2ogr from generated WKT as a shapefile and
# as a MIF/MID pair. Measured in one run, side by side, with peak memory:
#   1. shapefile -> MIF/MID: hyutil vector convert vs ogr2ogr -f "MapInfo File";
#   2. MIF/MID -> shapefile: hyutil vector convert vs ogr2ogr -f "ESRI Shapefile";
#   3. summary: hyutil vector info (reads every object) vs ogrinfo -al -so.
# GDAL comes from Debian and is installed here for the benchmark only; the library
# does not use it. HYUTIL=path uses that tool instead of building build/bench.
set -euo pipefail
cd "$(dirname "$0")/.."

scale=1
work=build/bench/vector
while [ $# -gt 0 ]; do
  case $1 in
    --scale) scale=$2; shift 2 ;;
    --work) work=$2; shift 2 ;;
    *) echo "usage: $0 [--scale N] [--work DIR]" >&2; exit 2 ;;
  esac
done

install_peers() {
  local missing=()
  for p in gdal-bin time; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  echo "bench: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  "${sudo_cmd[@]}" apt-get update -qq
  "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

install_peers
if [ -n "${HYUTIL:-}" ]; then
  hyutil=$HYUTIL
else
  scripts/build build/bench -DHY_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
  hyutil=$PWD/build/bench/tools/hyutil/hyutil
fi
count=$((100000 * scale))
layer=$work/layer_$count
mkdir -p "$layer"

if [ ! -s "$layer/poly.shp" ] || [ ! -s "$layer/poly.mif" ]; then
  echo "bench: making $count polygons in $layer"
  # WKT and attributes as CSV (types in the .csvt), then both formats by ogr2ogr.
  awk -v n="$count" 'BEGIN {
    srand(20261123)
    print "WKT,NAME,CLASS,DEPTH"
    pi = atan2(0, -1)
    for (i = 0; i < n; i++) {
      cx = 300000 + rand() * 50000; cy = 6200000 + rand() * 50000
      k = 10 + int(rand() * 31); r = 5 + rand() * 40
      w = "\"POLYGON ((";
      for (j = 0; j < k; j++) {
        a = 2 * pi * j / k; d = r * (0.6 + 0.4 * rand())
        x = sprintf("%.3f %.3f", cx + d * cos(a), cy + d * sin(a))
        if (j == 0) first = x
        w = w x ","
      }
      w = w first "))\""
      printf "%s,catchment %d,%d,%.3f\n", w, i, int(rand() * 12), rand() * 8
    }
  }' >"$layer/poly.csv"
  echo '"WKT","String(24)","Integer","Real(10.3)"' >"$layer/poly.csvt"
  ogr2ogr -f "ESRI Shapefile" "$layer/poly.shp" "$layer/poly.csv" -oo GEOM_POSSIBLE_NAMES=WKT -oo KEEP_GEOM_COLUMNS=NO -nln poly
  ogr2ogr -f "MapInfo File" "$layer/poly.mif" "$layer/poly.csv" -oo GEOM_POSSIBLE_NAMES=WKT -oo KEEP_GEOM_COLUMNS=NO -nln poly
  rm -f "$layer/poly.csv" "$layer/poly.csvt"
fi

# measure NAME COMMAND...: runs once, keeps wall seconds, CPU seconds (user +
# system, which a busy machine disturbs less) and peak memory (MiB).
declare -A seconds cpu peak
measure() {
  local name=$1; shift
  /usr/bin/time -f '%e %U %S %M' -o "$work/time.txt" "$@" >/dev/null
  read -r s user sys kb <"$work/time.txt"
  seconds[$name]=$s
  cpu[$name]=$(awk -v u="$user" -v s="$sys" 'BEGIN{printf "%.2f", u + s}')
  peak[$name]=$(awk -v k="$kb" 'BEGIN{printf "%.1f", k/1024}')
}

# row LABEL NAME PEER: one line of figures, with the speed and memory ratios to
# the peer (above 1 means faster or smaller than the peer).
row() {
  awk -v l="$1" -v s="${seconds[$2]}" -v c="${cpu[$2]}" -v m="${peak[$2]}" -v p="${seconds[$3]}" \
    -v pc="${cpu[$3]}" -v pm="${peak[$3]}" -v self="$2" -v peer="$3" 'BEGIN{
    ratio = (self == peer) ? "" : sprintf("%5.2fx faster (cpu %5.2fx), %5.2fx less memory", \
      p / (s > 0 ? s : 0.01), pc / (c > 0 ? c : 0.01), pm / m)
    printf "  %-40s %7.2f s  (cpu %6.2f s)  %7.1f MiB  %s\n", l, s, c, m, ratio }'
}

out=$work/out
rm -rf "$out"; mkdir -p "$out"
echo "== $count polygons: $(du -ch "$layer"/poly.shp "$layer"/poly.shx "$layer"/poly.dbf | tail -n 1 | cut -f1) of shapefile," \
  "$(du -ch "$layer"/poly.mif "$layer"/poly.mid | tail -n 1 | cut -f1) of MIF/MID; $(nproc) cores, load $(cut -d' ' -f1-3 /proc/loadavg)"

echo "== 1. shapefile -> MIF/MID"
measure ogr_to_mif ogr2ogr -f "MapInfo File" "$out/ogr.mif" "$layer/poly.shp"
measure hy_to_mif "$hyutil" vector convert --quiet "$layer/poly.shp" "$out/hy.mif"
row "ogr2ogr -f \"MapInfo File\"" ogr_to_mif ogr_to_mif
row "hyutil vector convert" hy_to_mif ogr_to_mif

echo "== 2. MIF/MID -> shapefile"
measure ogr_to_shp ogr2ogr -f "ESRI Shapefile" "$out/ogr.shp" "$layer/poly.mif"
measure hy_to_shp "$hyutil" vector convert --quiet "$layer/poly.mif" "$out/hy.shp"
row "ogr2ogr -f \"ESRI Shapefile\"" ogr_to_shp ogr_to_shp
row "hyutil vector convert" hy_to_shp ogr_to_shp

echo "== 3. layer summary"
measure ogr_info_shp ogrinfo -ro -al -so "$layer/poly.shp"
measure hy_info_shp "$hyutil" vector info "$layer/poly.shp"
measure ogr_info_mif ogrinfo -ro -al -so "$layer/poly.mif"
measure hy_info_mif "$hyutil" vector info "$layer/poly.mif"
row "ogrinfo -al -so (shapefile)" ogr_info_shp ogr_info_shp
row "hyutil vector info (shapefile)" hy_info_shp ogr_info_shp
row "ogrinfo -al -so (MIF/MID)" ogr_info_mif ogr_info_mif
row "hyutil vector info (MIF/MID)" hy_info_mif ogr_info_mif

# The outputs agree in objects and vertices with what OGR reads from the inputs.
check() {
  "$hyutil" vector info --json "$1" | awk '/"objects"/ && !o {o=$2} /"vertices"/ {v+=$2} END {gsub(",", "", o); print o, v}'
}
echo "== objects and vertices: input $(check "$layer/poly.shp"), hyutil MIF $(check "$out/hy.mif"), hyutil shapefile $(check "$out/hy.shp")"
