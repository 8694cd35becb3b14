#pragma once
// The arithmetic of point and polygon queries on an HY binary grid: bounds, the
// enclosing cell of a point, nearest-node choice, bilinear interpolation with its
// fall-backs for missing nodes, a polygon's index range, and the query messages.
//
// CHU_HYBinaryGridFile and the batch query classes all go through these functions,
// so that every path computes the same node indices and the same values, bit for
// bit. Indices are clamped into the grid, which only matters where rounding of
// far-off coordinates would otherwise step one node past the edge; coordinates
// that are not finite count as outside the grid.

#include <string>

#include "hy_util/grids/binary_grid_format.h"

// The closed rectangle spanned by the grid's nodes.
struct HU_HYBGBounds {
  double xmin = 0.0;
  double ymin = 0.0;
  double xmax = 0.0;
  double ymax = 0.0;
};

// The cell around a point: columns c0 (west) and c1, rows r0 (north) and r1, and
// the node coordinates. c1 = c0 on the east edge and r1 = r0 on the south edge.
struct HU_HYBGCell {
  int c0 = 0;
  int c1 = 0;
  int r0 = 0;
  int r1 = 0;
  double x0 = 0.0;
  double x1 = 0.0;
  double y0 = 0.0;  // the upper row
  double y1 = 0.0;  // the lower row
};

// Columns c0..c1 and rows r0..r1 that a polygon's extent covers, and whether that
// extent touches or passes the grid's edge.
struct HU_HYBGPolygonRange {
  int c0 = 0;
  int c1 = -1;
  int r0 = 0;
  int r1 = -1;
  bool touchesEdge = false;
};

HU_HYBGBounds HU_HYBGGetBounds(const HU_HYBGHeader& header);
// Inside or on the bounds; false for NaN coordinates.
bool HU_HYBGContains(const HU_HYBGBounds& bounds, double x, double y);
// The enclosing cell of a point for which HU_HYBGContains holds.
HU_HYBGCell HU_HYBGLocate(const HU_HYBGHeader& header, const HU_HYBGBounds& bounds, double x, double y);
// The node nearest to the point; ties go to the west column and the north row.
void HU_HYBGNearestNode(const HU_HYBGCell& cell, double x, double y, int& row, int& column);
// True when the bilinear method is asked for a point exactly on the cell's
// upper-left node, which is then answered by that node's value.
bool HU_HYBGIsOnUpperLeftNode(const HU_HYBGCell& cell, double x, double y);

// Bilinear interpolation among the valid ones of the four nodes (those differing
// from noData), with the three- and two-node fall-backs; false when the point is not
// covered by the valid nodes.
bool HU_HYBGInterpolate(float zUL, float zUR, float zLL, float zLR, float noData, double cellSize,
                        double x, double y, const HU_HYBGCell& cell, float& result);

// False when the extent lies outside the grid or is not finite.
bool HU_HYBGGetPolygonRange(const HU_HYBGHeader& header, const HU_HYBGBounds& bounds, double left,
                            double top, double right, double bottom, HU_HYBGPolygonRange& range);

// The messages of the queries, naming the grid file.
std::string HU_HYBGOpenMessage(const std::string& fileName);
std::string HU_HYBGPointOutsideMessage(const std::string& fileName, double x, double y,
                                       const HU_HYBGBounds& bounds);
std::string HU_HYBGPointNoDataMessage(const std::string& fileName, double x, double y);
std::string HU_HYBGPolygonOutsideMessage(const std::string& fileName, const HU_HYBGBounds& bounds);
std::string HU_HYBGPolygonNullDataMessage(const std::string& fileName, bool entirely);
