#!/usr/bin/env bash
# 2DM reader benchmark: CHU_File2DM::Read against the physical limits measured in
# the same run (reading the bytes with cat from a warm cache, a from_chars-only
# scan of the same numbers) and against a sscanf-per-line reader, on synthetic
# grids of 10^5 and 10^6 quadrilateral cells. Not a test; it prints MB/s, the
# ratios and peak memory (/usr/bin/time) against the tables' own size.
#
#   bench/file_2dm_bench.sh [--work DIR] [--repeats N]
set -euo pipefail
cd "$(dirname "$0")/.."

work=${TMPDIR:-/tmp}/hy_util_mesh_bench
repeats=3
while [ $# -gt 0 ]; do
  case $1 in
    --work) work=$2; shift 2 ;;
    --repeats) repeats=$2; shift 2 ;;
    *) echo "usage: $0 [--work DIR] [--repeats N]" >&2; exit 2 ;;
  esac
done

command -v /usr/bin/time >/dev/null || { echo "bench: /usr/bin/time is needed (Debian package time)" >&2; exit 1; }
scripts/build build/bench -DHY_BUILD_TESTS=OFF -DHY_BUILD_BENCH=ON -DCMAKE_BUILD_TYPE=Release >/dev/null
bench=$PWD/build/bench/bench/bench_file_2dm
mkdir -p "$work"

# run MODE FILE: sets secs, rate and tables (MiB) from the best of the repeats, and
# peak (MiB) from a process that reads once (repeats would add heap left over
# from the run before).
run() {
  local out
  out=$("$bench" "$1" "$2" "$repeats")
  read -r secs rate tables <<<"$out"
  /usr/bin/time -f '%M' -o "$work/peak.txt" "$bench" "$1" "$2" 1 >/dev/null
  peak=$(awk '{printf "%.1f", $1/1024}' "$work/peak.txt")
}

echo "== machine: $(nproc) cores, load $(cut -d' ' -f1-3 /proc/loadavg)"
for cells in 100000 1000000; do
  file=$work/grid_$cells.2dm
  [ -s "$file" ] || "$bench" make "$cells" "$file"
  mb=$(awk -v b="$(stat -c %s "$file")" 'BEGIN{printf "%.1f", b/1e6}')
  cat "$file" >/dev/null
  best=999
  for _ in 1 2 3 4 5; do
    t0=$(date +%s.%N); cat "$file" >/dev/null; t1=$(date +%s.%N)
    best=$(awk -v a="$best" -v b="$t1" -v c="$t0" 'BEGIN{d = b - c; print (d < a ? d : a)}')
  done
  cat_rate=$(awk -v m="$mb" -v s="$best" 'BEGIN{printf "%.0f", (s > 0 ? m/s : 0)}')
  run baseline "$file"; base_peak=$peak
  run scan "$file"; scan_rate=$rate
  run sscanf "$file"; sscanf_rate=$rate; sscanf_peak=$peak
  run read1 "$file"; read1_rate=$rate
  run read "$file"; read_rate=$rate; read_peak=$peak; read_tables=$tables
  echo "== $cells cells: $mb MB"
  awk -v n="$cells" -v c="$cat_rate" -v s="$scan_rate" -v q="$sscanf_rate" -v r1="$read1_rate" -v r="$read_rate" \
      -v p="$read_peak" -v b="$base_peak" -v t="$read_tables" -v qp="$sscanf_peak" 'BEGIN{
    printf "  cat > /dev/null (warm cache)      %8.0f MB/s\n", c
    printf "  from_chars-only scan              %8.0f MB/s\n", s
    printf "  sscanf per line                   %8.0f MB/s   peak %6.1f MiB\n", q, qp
    printf "  CHU_File2DM::Read, 1 thread       %8.0f MB/s   %5.2fx sscanf  %4.0f%% of scan\n", r1, r1/q, 100*r1/s
    printf "  CHU_File2DM::Read, 2 threads      %8.0f MB/s   %5.2fx sscanf  %4.0f%% of scan%s\n", r, r/q, 100*r/s, sprintf("  %4.0f%% of cat", 100*r/c)
    printf "  peak memory: %.1f MiB (process alone %.1f MiB, tables %.1f MiB): %.2fx the tables, %.2fx beyond the process\n", p, b, t, p/t, (p-b)/t
    if (n == 1000000)
      printf "  reference (quoted, not measured here): the desktop-GIS mesh library reads this file at about 80 MB/s with 111 MiB peak: %.1fx its rate\n", r/80
  }'
done
