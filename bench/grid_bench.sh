#!/usr/bin/env bash
# Grid benchmark: hyutil against GDAL and a numpy/rasterio reference on a synthetic
# terrain grid. Not a test; it prints each figure and its ratio to the peer.
#
#   bench/grid_bench.sh [--size 4000|8000] [--work DIR] [--convert-only]
#
# 1. conversion .asc -> binary grid vs gdal_translate to a deflate GeoTIFF (level 9,
#    one row per strip), with peak memory;
# 2. 100,000 random points, nearest node: hyutil grid sample (batch and one by one)
#    vs gdallocationinfo -valonly -geoloc on the GeoTIFF, points from standard input;
# 3. 1,000 random polygons: hyutil grid average (batch and one by one) vs numpy +
#    rasterio.features.geometry_mask with the grid in memory.
# GDAL, rasterio and numpy come from Debian and are installed here for the benchmark
# only; the library does not use them.
set -euo pipefail
cd "$(dirname "$0")/.."

size=4000
work=build/bench/grid
convert_only=0
while [ $# -gt 0 ]; do
  case $1 in
    --size) size=$2; shift 2 ;;
    --work) work=$2; shift 2 ;;
    --convert-only) convert_only=1; shift ;;
    *) echo "usage: $0 [--size 4000|8000] [--work DIR] [--convert-only]" >&2; exit 2 ;;
  esac
done

install_peers() {
  local missing=()
  for p in gdal-bin python3-gdal python3-rasterio python3-numpy time; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  echo "bench: installing ${missing[*]}"
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

install_peers
# Debian's interpreter, which sees the Debian numpy and rasterio (another python3
# may come first on PATH).
python=/usr/bin/python3
scripts/build build/bench -DHY_BUILD_TESTS=OFF -DCMAKE_BUILD_TYPE=Release >/dev/null
hyutil=$PWD/build/bench/tools/hyutil/hyutil
mkdir -p "$work"
if [ ! -s "$work/terrain.asc" ] || [ "$(head -n 1 "$work/terrain.asc" | awk '{print $2}')" != "$size" ]; then
  echo "bench: generating a ${size} x ${size} terrain grid, points and polygons in $work"
  "$python" bench/grid_bench_data.py make "$size" "$work"
fi

# measure NAME COMMAND...: runs once, keeps wall seconds, CPU seconds (user +
# system, which a busy machine disturbs less) and peak memory (MiB).
declare -A seconds cpu peak
measure() {
  local name=$1; shift
  /usr/bin/time -f '%e %U %S %M' -o "$work/time.txt" "$@"
  read -r s user sys kb <"$work/time.txt"
  seconds[$name]=$s
  cpu[$name]=$(awk -v u="$user" -v s="$sys" 'BEGIN{printf "%.2f", u + s}')
  peak[$name]=$(awk -v k="$kb" 'BEGIN{printf "%.0f", k/1024}')
}

# row LABEL NAME PEER: one line of figures, with the ratio to the peer's time.
row() {
  awk -v l="$1" -v s="${seconds[$2]}" -v c="${cpu[$2]:-0}" -v m="${peak[$2]}" -v p="${seconds[$3]:-}" \
    -v self="$2" -v peer="$3" 'BEGIN{
    ratio = (self == peer || p == "") ? "" : sprintf("%5.2fx the peer", p / s)
    printf "  %-44s %8.2f s  (cpu %6.2f s)  %6d MiB  %s\n", l, s, c, m, ratio }'
}

cores=$(nproc)
echo "== grid ${size} x ${size}, $(du -h "$work/terrain.asc" | cut -f1) of text; machine with ${cores} cores, load $(cut -d' ' -f1-3 /proc/loadavg)"

echo "== 1. conversion .asc -> compressed grid"
rm -f "$work/terrain.tif"
measure gdal gdal_translate -q -of GTiff -co COMPRESS=DEFLATE -co ZLEVEL=9 -co BLOCKYSIZE=1 \
  "$work/terrain.asc" "$work/terrain.tif"
measure z1 "$hyutil" grid convert --quiet --threads 1 --codec zlib "$work/terrain.asc" "$work/z1.hybg"
measure z2 "$hyutil" grid convert --quiet --threads 2 --codec zlib "$work/terrain.asc" "$work/z2.hybg"
measure d2 "$hyutil" grid convert --quiet --threads 2 --codec libdeflate "$work/terrain.asc" "$work/terrain.hybg"
measure f2 "$hyutil" grid convert --quiet --threads 2 --codec libdeflate "$work/terrain.flt" "$work/flt.hybg"
row "gdal_translate (deflate 9, 1-row strips)" gdal gdal
row "hyutil 1 thread, zlib 9" z1 gdal
row "hyutil 2 threads, zlib 9" z2 gdal
row "hyutil 2 threads, libdeflate" d2 gdal
row "hyutil 2 threads, libdeflate, from .flt" f2 gdal
cmp -s "$work/z1.hybg" "$work/z2.hybg" && echo "  (1- and 2-thread zlib files are identical)"
echo "  sizes: GeoTIFF $(du -h "$work/terrain.tif" | cut -f1), zlib $(du -h "$work/z1.hybg" | cut -f1), libdeflate $(du -h "$work/terrain.hybg" | cut -f1)"

[ "$convert_only" -eq 1 ] && exit 0

echo "== 2. 100,000 points, nearest node"
measure gpts sh -c "gdallocationinfo -valonly -geoloc '$work/terrain.tif' <'$work/points.txt' >'$work/gdal_points.txt'"
measure bpts sh -c "'$hyutil' grid sample '$work/terrain.hybg' --points '$work/points.txt' >'$work/ours_points.csv'"
measure opts sh -c "'$hyutil' grid sample --one-by-one '$work/terrain.hybg' --points '$work/points.txt' >/dev/null"
row "gdallocationinfo -valonly -geoloc" gpts gpts
row "hyutil grid sample (batch)" bpts gpts
row "hyutil grid sample --one-by-one" opts gpts

echo "== 3. 1,000 polygons, mean level"
measure bavg sh -c "'$hyutil' grid average '$work/terrain.hybg' --polygons '$work/polygons.wkt' >'$work/ours_avg.csv'"
measure oavg sh -c "'$hyutil' grid average --one-by-one '$work/terrain.hybg' --polygons '$work/polygons.wkt' >/dev/null"
read -r refs close total < <("$python" bench/grid_bench_data.py average "$work" "$work/ours_avg.csv")
seconds[ref]=$refs; cpu[ref]=$refs; peak[ref]=0
row "numpy + rasterio geometry_mask (in memory)" ref ref
row "hyutil grid average (batch)" bavg ref
row "hyutil grid average --one-by-one" oavg ref
echo "  ${close} of ${total} averages agree with the reference within 0.01"
