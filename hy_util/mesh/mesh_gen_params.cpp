#include "hy_util/mesh/mesh_gen_params.h"

void CMeshGenTechParams::SetAdvDelauneyParams(double first, double second, int limit) {
  m_advFirst = first;
  m_advSecond = second;
  m_advLimit = limit;
}

void CMeshGenTechParams::GetAdvDelauneyParams(double& first, double& second, int& limit) const {
  first = m_advFirst;
  second = m_advSecond;
  limit = m_advLimit;
}

void CMeshGenSizeMapTechParams::GetSizeMapMethod(bool& m1, bool& m2, bool& m3, bool& m4, bool& m5) const {
  m1 = m_methods[0], m2 = m_methods[1], m3 = m_methods[2], m4 = m_methods[3], m5 = m_methods[4];
}

void CMeshGenSizeMapTechParams::SetSizeMapMethod(bool m1, bool m2, bool m3, bool m4, bool m5) {
  m_methods[0] = m1, m_methods[1] = m2, m_methods[2] = m3, m_methods[3] = m4, m_methods[4] = m5;
}
