// Flow-constriction data of type-11 lines: the per-vertex lists in the host's
// attribute store follow every insertion and deletion of a vertex.

#include <array>
#include <utility>

#include "hy_util/mesh/boundary_mesh.h"

namespace {

// Fields of a flow-constriction record and the value a whole-record reset gives.
constexpr std::array<std::pair<const char*, int>, 19> kRecordFields{{
    {"F_2D_FCXX_TYPE", 0},        {"F_2D_FCLG_EM_TYPE", 0},  {"F_2D_FCXL_STRUCTWIDTH", 0},
    {"F_2D_FCLG_NUMLAYERS", 0},   {"F_2D_FCLG_DZ", 0},       {"F_2D_FCLG_PBLK", 0},
    {"F_2D_FCLG_PBLK_L2", 0},     {"F_2D_FCLG_PBLK_L3", 0},  {"F_2D_FCLG_FLC", 0},
    {"F_2D_FCLG_FLC_L2", 0},      {"F_2D_FCLG_FLC_L3", 0},   {"F_2D_FCLG_DATA", -1},
    {"F_2D_FCLG_DATA_L2", -1},    {"F_2D_FCLG_DATA_L3", -1}, {"F_2D_FCNG_PBLK", 0},
    {"F_2D_FCNG_FLC_A", 0},       {"F_2D_FCNG_FLC_B", 0},    {"F_2D_FCNG_MANNING", 0},
    {"F_2D_FCNG_DATA", -1},
}};

const std::vector<std::string> kDoubleLayerLists{"F_2D_FCNG_DATA", "F_2D_FCLG_DATA"};
const std::vector<std::string> kSingleLayerLists{"F_2D_FCLG_DATA_L2", "F_2D_FCLG_DATA_L3"};
const std::vector<std::string> kAllLists{"F_2D_FCNG_DATA", "F_2D_FCLG_DATA", "F_2D_FCLG_DATA_L2",
                                         "F_2D_FCLG_DATA_L3"};

}  // namespace

void CHU_DBoundaryMesh::RewriteDataLists(int elementId, const std::vector<std::string>& keys, int index,
                                         bool insert, bool interpolate, bool forced) {
  for (const std::string& key : keys) {
    HU_FlowConstrictionList list = HU_FlowConstrictionList::Parse(m_store->GetStringList(elementId, key));
    if (insert && !forced && index != list.GetVertexCount()) {
      m_store->SetStringList(elementId, key, {}, 0);
      continue;
    }
    if (insert) {
      list.InsertVertex(index, interpolate);
    } else {
      list.DeleteVertex(index);
    }
    const std::vector<std::string> values = list.Write();
    m_store->SetStringList(elementId, key, values, static_cast<int>(values.size()));
  }
}

void CHU_DBoundaryMesh::InsertVertexData(int elementId, int type, int index, bool forced) {
  if (type != kFlowConstrictionType || m_store == nullptr) return;
  RewriteDataLists(elementId, kDoubleLayerLists, index, true, true, forced);
  RewriteDataLists(elementId, kSingleLayerLists, index, true, false, forced);
}

void CHU_DBoundaryMesh::DeleteVertexData(int elementId, int type, int index) {
  if (type != kFlowConstrictionType || m_store == nullptr || index < -1) return;
  if (index == -1) {
    for (const auto& [key, value] : kRecordFields) m_store->ResetField(elementId, key, value);
    return;
  }
  RewriteDataLists(elementId, kAllLists, index, false, false, false);
}
