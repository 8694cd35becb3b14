#!/usr/bin/env python3
"""Writes terrain.asc, the small synthetic terrain grid of the examples.

A 100 x 80 grid of 5 m cells: ground falling gently to the south-east, a
meandering creek, two low hills, and an unsurveyed pond in the north-east
corner left as no-data. The output is deterministic, so the file can be
regenerated and compared: python3 examples/make_terrain.py > examples/terrain.asc
"""
import math
import sys

NCOLS, NROWS = 100, 80
XLL, YLL, CELL = 315000.0, 6250000.0, 5.0
NODATA = -9999


def elevation(x, y):
    """Ground level at a point given relative to the grid's lower-left corner (m)."""
    ground = 32.0 - 0.018 * x - 0.012 * (400.0 - y)
    creek_y = 200.0 + 60.0 * math.sin(x / 90.0)
    ground -= 3.5 * math.exp(-((y - creek_y) / 18.0) ** 2)
    for hx, hy, height, radius in ((120.0, 320.0, 6.0, 70.0), (380.0, 90.0, 4.0, 55.0)):
        ground += height * math.exp(-((x - hx) ** 2 + (y - hy) ** 2) / radius**2)
    return ground


def is_pond(x, y):
    return (x - 455.0) ** 2 + (y - 360.0) ** 2 < 35.0**2


def main(out):
    out.write(f"ncols         {NCOLS}\nnrows         {NROWS}\n")
    out.write(f"xllcorner     {XLL:.1f}\nyllcorner     {YLL:.1f}\n")
    out.write(f"cellsize      {CELL:.1f}\nNODATA_value  {NODATA}\n")
    for row in range(NROWS):
        y = (NROWS - 1 - row) * CELL + CELL / 2
        values = []
        for col in range(NCOLS):
            x = col * CELL + CELL / 2
            values.append(str(NODATA) if is_pond(x, y) else f"{elevation(x, y):.2f}")
        out.write(" ".join(values) + "\n")


if __name__ == "__main__":
    main(sys.stdout)
