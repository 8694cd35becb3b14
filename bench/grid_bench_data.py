#!/usr/bin/env python3
"""Data and the reference side of bench/grid_bench.sh.

  grid_bench_data.py make SIZE DIR
      writes DIR/terrain.asc (%.3f), DIR/terrain.flt + .hdr, DIR/points.txt
      (100,000 random points) and DIR/polygons.wkt (1,000 random polygons,
      convex and concave, 6-40 vertices, 500-50,000 cells each).
  grid_bench_data.py average DIR OURS.CSV
      the reference polygon averages: numpy + rasterio.features.geometry_mask
      over the grid held in memory; prints its time and how far our answers
      (OURS.CSV, from hyutil grid average) are from it.
"""
import math
import sys
import time

import numpy as np

CELL = 2.0
XLL, YLL = 500000.0, 7000000.0  # lower-left corner
NODATA = -9999.0


def terrain(size, rng):
    """A smooth synthetic terrain with ridges, a valley and a few no-data holes."""
    y, x = np.mgrid[0:size, 0:size].astype(np.float64) / size
    z = 40.0 + 25.0 * np.sin(3.1 * x) * np.cos(2.3 * y) + 12.0 * np.exp(-((x - 0.6) ** 2 + (y - 0.3) ** 2) * 18)
    z -= 8.0 * np.exp(-((y - 0.5 - 0.15 * np.sin(6 * x)) ** 2) * 400)
    z += rng.normal(0.0, 0.05, size=(size, size))
    for _ in range(6):
        cx, cy, r = rng.uniform(0.1, 0.9), rng.uniform(0.1, 0.9), rng.uniform(0.01, 0.04)
        z[(x - cx) ** 2 + (y - cy) ** 2 < r * r] = NODATA
    return np.round(z, 3).astype(np.float32)


def write_grid(z, directory):
    size = z.shape[0]
    header = (f"ncols {size}\nnrows {size}\nxllcorner {XLL:.1f}\nyllcorner {YLL:.1f}\n"
              f"cellsize {CELL:.1f}\nNODATA_value {NODATA:.0f}\n")
    with open(f"{directory}/terrain.asc", "w") as out:
        out.write(header)
        for row in z:
            out.write(" ".join(f"{v:.3f}" for v in row.tolist()))
            out.write("\n")
    with open(f"{directory}/terrain.hdr", "w") as out:
        out.write(header + "byteorder LSBFIRST\n")
    z.astype("<f4").tofile(f"{directory}/terrain.flt")


def write_points(size, rng, directory, count=100000):
    span = (size - 1) * CELL
    xs = XLL + CELL / 2 + rng.uniform(0, span, count)
    ys = YLL + CELL / 2 + rng.uniform(0, span, count)
    with open(f"{directory}/points.txt", "w") as out:
        for x, y in zip(xs, ys):
            out.write(f"{x:.3f} {y:.3f}\n")


def random_polygon(size, rng):
    """A star-shaped ring around a random centre: convex (equal radii) or concave."""
    n = int(rng.integers(6, 41))
    angles = np.sort(rng.uniform(0, 2 * math.pi, n))
    convex = rng.random() < 0.5
    radii = np.ones(n) if convex else rng.uniform(0.35, 1.0, n)
    area = 0.5 * sum(radii[i] * radii[(i + 1) % n] * math.sin((angles[(i + 1) % n] - angles[i]) % (2 * math.pi))
                     for i in range(n))
    cells = math.exp(rng.uniform(math.log(500), math.log(50000)))
    scale = math.sqrt(cells * CELL * CELL / max(area, 1e-9))
    reach = scale * radii.max()
    span = (size - 1) * CELL
    cx = XLL + CELL / 2 + rng.uniform(reach, span - reach)
    cy = YLL + CELL / 2 + rng.uniform(reach, span - reach)
    pts = [(cx + scale * r * math.cos(a), cy + scale * r * math.sin(a)) for r, a in zip(radii, angles)]
    return "POLYGON((" + ", ".join(f"{x:.3f} {y:.3f}" for x, y in pts + pts[:1]) + "))"


def make(size, directory):
    rng = np.random.default_rng(20240607)
    write_grid(terrain(size, rng), directory)
    write_points(size, rng, directory)
    with open(f"{directory}/polygons.wkt", "w") as out:
        for _ in range(1000):
            out.write(random_polygon(size, rng) + "\n")


def reference_averages(directory):
    from rasterio.features import geometry_mask
    from rasterio.transform import from_origin
    from rasterio.windows import Window, from_bounds
    from rasterio.windows import transform as window_transform

    header = dict(line.split() for line in open(f"{directory}/terrain.hdr"))
    size = int(header["ncols"])
    z = np.fromfile(f"{directory}/terrain.flt", dtype="<f4").reshape(size, size)
    transform = from_origin(XLL, YLL + size * CELL, CELL, CELL)
    polygons = []
    for line in open(f"{directory}/polygons.wkt"):
        coords = line[line.index("((") + 2:line.rindex("))")].split(",")
        ring = [tuple(map(float, c.split())) for c in coords]
        polygons.append({"type": "Polygon", "coordinates": [ring]})

    start = time.perf_counter()
    means = []
    for geometry in polygons:
        xs = [p[0] for p in geometry["coordinates"][0]]
        ys = [p[1] for p in geometry["coordinates"][0]]
        window = from_bounds(min(xs), min(ys), max(xs), max(ys), transform).round_offsets().round_lengths()
        window = Window(window.col_off, window.row_off, window.width + 1, window.height + 1)
        r0, c0 = max(int(window.row_off), 0), max(int(window.col_off), 0)
        block = z[r0:r0 + int(window.height), c0:c0 + int(window.width)]
        inside = ~geometry_mask([geometry], out_shape=block.shape,
                                transform=window_transform(Window(c0, r0, block.shape[1], block.shape[0]), transform))
        values = block[inside & (block != NODATA)]
        means.append(float(values.mean()) if values.size else None)
    return means, time.perf_counter() - start


def average(directory, ours_csv):
    means, seconds = reference_averages(directory)
    ours = {}
    for line in open(ours_csv).read().splitlines()[1:]:
        pid, code, value = line.split(",")
        ours[int(pid)] = float(value) if value else None
    close = sum(1 for i, m in enumerate(means) if m is not None and ours.get(i) is not None and abs(m - ours[i]) < 0.01)
    print(f"{seconds:.3f} {close} {len(means)}")


if __name__ == "__main__":
    if sys.argv[1] == "make":
        make(int(sys.argv[2]), sys.argv[3])
    elif sys.argv[1] == "average":
        average(sys.argv[2], sys.argv[3])
    else:
        sys.exit(__doc__)
