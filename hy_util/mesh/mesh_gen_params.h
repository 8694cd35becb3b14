#pragma once
// Parameter holders handed to the host's mesh generator: post-processing of the
// generated mesh, the generation technique and the element-size map. They hold
// values only and copy them in and out through reference arguments. Point and
// attractor lists hold pointers the caller owns; the holders never free them.

#include <climits>
#include <vector>

#include "hy_util/geometry/point.h"

class CMeshGenPostParams {
 public:
  void GetToQuad(double& angle) const { angle = m_toQuad; }
  void SetToQuad(double angle) { m_toQuad = angle; }
  void GetVertexShift(double& shift) const { shift = m_vertexShift; }
  void SetVertexShift(double shift) { m_vertexShift = shift; }
  // Placeholders kept for the generator's interface; they do nothing.
  void GetToDelauney() const {}
  void SetToDelauney() {}

 private:
  double m_toQuad = 0.5235987755982988;  // thirty degrees, in radians
  double m_vertexShift = 0.01;
};

class CMeshGenTechParams {
 public:
  // The two values are stored the other way round; Get returns them in the order
  // Set took them.
  void SetAdvDelauneyParams(double first, double second, int limit);
  void GetAdvDelauneyParams(double& first, double& second, int& limit) const;
  // Replaces the corner list by the given pointers.
  void SetCoonsParams(const std::vector<CHU_DPoint*>& corners) { m_coonsCorners = corners; }
  void GetCoonsParams(std::vector<CHU_DPoint*>& corners) const { corners = m_coonsCorners; }

 private:
  double m_advSecond = 2.0;
  double m_advFirst = 0.5;
  int m_advLimit = INT_MAX;
  std::vector<CHU_DPoint*> m_coonsCorners;
};

// How sizes from several sources combine at a place; the generator defines the
// arithmetic. The smallest size wins by default, the safe choice for flow paths.
enum SizeMapCombinationMethod { SMCM_MINIMUM = 0, SMCM_MAXIMUM = 1, SMCM_AVERAGE = 2 };

// An element size the generator pulls towards around a place.
struct CSizeMapAttractor {
  CHU_DPoint position;
  double size = 0.0;
  double radius = 0.0;
};

class CMeshGenSizeMapTechParams {
 public:
  void GetSizeMapCombinationParams(SizeMapCombinationMethod& method) const { method = m_combination; }
  void SetSizeMapCombinationParams(SizeMapCombinationMethod method) { m_combination = method; }
  void GetSizeMapMethod(bool& m1, bool& m2, bool& m3, bool& m4, bool& m5) const;
  void SetSizeMapMethod(bool m1, bool m2, bool m3, bool m4, bool m5);
  void GetSizeMapGlobalParams(double& size) const { size = m_globalSize; }
  void SetSizeMapGlobalParams(double size) { m_globalSize = size; }
  void GetSizeMapAttractorParams(std::vector<CSizeMapAttractor*>& attractors) const { attractors = m_attractors; }
  void SetSizeMapAttractorParams(const std::vector<CSizeMapAttractor*>& attractors) { m_attractors = attractors; }
  // Placeholders kept for the generator's interface; they do nothing.
  void GetSizeMapRasterParams() const {}
  void SetSizeMapRasterParams() {}
  void GetSizeMapTopoVarParams() const {}
  void SetSizeMapTopoVarParams() {}

 private:
  SizeMapCombinationMethod m_combination = SMCM_MINIMUM;
  bool m_methods[5] = {false, false, false, false, false};
  double m_globalSize = 0.0;
  std::vector<CSizeMapAttractor*> m_attractors;
};
