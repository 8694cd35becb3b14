// Feeds arbitrary flow-constriction data lists (one string per line) to a type-11
// line of a boundary mesh and edits the line: inserts inside it and at its end,
// removes a vertex, resets the record. Whatever the stored lists claim, the lists
// written back stay within a small multiple of the stored ones.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "hy_util/mesh/boundary_mesh.h"

namespace {

const char* const kLists[] = {"F_2D_FCNG_DATA", "F_2D_FCLG_DATA", "F_2D_FCLG_DATA_L2", "F_2D_FCLG_DATA_L3"};

std::vector<std::string> SplitLines(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines(1);
  for (std::size_t i = 0; i < size; ++i) {
    if (data[i] == '\n') {
      lines.emplace_back();
    } else {
      lines.back().push_back(static_cast<char>(data[i]));
    }
  }
  return lines;
}

void CheckBounded(const CHU_MemoryAttributeStore& store, int id, std::size_t stored) {
  for (const char* key : kLists) {
    if (store.GetStringList(id, key).size() > 4 * stored + 16) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::string> stored = SplitLines(data, size);
  CHU_MemoryAttributeStore store;
  CHU_DBoundaryMesh mesh;
  mesh.SetAttributeStore(&store);
  CHU_DPolyLine line;
  for (int i = 0; i < 4; ++i) line.AddPt(10.0 * i, 0.0, 0.0);
  const int id = mesh.AddPolyline(&line, 11, CHU_DBoundaryMesh::WELD_EXISTING);
  for (const char* key : kLists) store.SetStringList(id, key, stored, static_cast<int>(stored.size()));

  mesh.InsertVertex(CHU_DPoint(5.0, 0.0, 0.0), CHU_DPoint(0.0, 0.0, 0.0), CHU_DPoint(10.0, 0.0, 0.0));
  CheckBounded(store, id, stored.size());
  mesh.RemoveVertex(mesh.FindVertex(CHU_DPoint(20.0, 0.0, 0.0), -1));
  CheckBounded(store, id, stored.size() + 1);
  for (const char* key : kLists) {
    const HU_FlowConstrictionList list = HU_FlowConstrictionList::Parse(store.GetStringList(id, key));
    if (list.GetBlocks().size() > stored.size() + 8) std::abort();
  }
  mesh.WeldVertices(CHU_DPoint(4.0, 0.0, 0.0), 2.0);
  mesh.RemoveElement(id);
  return 0;
}
