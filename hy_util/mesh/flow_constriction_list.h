#pragma once
// The per-vertex data lists of a flow-constriction line (element type 11), as the
// host's attribute store keeps them: a list of strings holding numbers written
// with "%g".
//
//   header   N C V        block count, current block index, vertex count
//   N blocks, each:       presence (0 = empty block, nothing follows), then
//                         mode * 2 + constant, then the values: one value when
//                         constant, else V values; mode 1 fills the first value
//                         list, mode 0 the second, other modes carry none.
//
// Reading is forgiving, as the host's own reader is: a list too short for its
// header reads as N = C = V = 0; an empty, zero or negative N reads as N = 0,
// C = 1, V = 0; a C outside 0..N-1 reads as C = 1, V = 0; a list that ends early
// is read as far as it goes. Blocks the list announces but never reaches are not
// made up: they are neither kept nor written back (the header keeps its N), so
// nothing is sized by a number from the list and rewriting a list only ever adds
// the entries of an inserted vertex.
//
// The two rewriting routines add or delete one vertex's entry in every per-vertex
// value list and write the header with N (3 when it was 0), C and the new V:
//   single layer  inserts "0" at the index.
//   double layer  (the layer-1 and the non-layered lists, which describe the
//                 structure's levels along the line) inserts the mean of the two
//                 neighbouring values when the new entry lies between two numeric
//                 values, and "0" otherwise (at either end, or beside text), so
//                 that a vertex inserted into a line does not drop the levels
//                 there to zero.

#include <string>
#include <vector>

// One block of a data list.
struct CHU_FlowConstrictionElevationSet {
  int presence = 0;                      // 0: empty block
  std::vector<std::string> firstValues;  // mode 1
  std::vector<std::string> secondValues; // mode 0
  int mode = 0;
  bool constant = false;                 // one value for the whole line
};

class HU_FlowConstrictionList {
 public:
  static HU_FlowConstrictionList Parse(const std::vector<std::string>& list);
  std::vector<std::string> Write() const;

  // Adds an entry at index to each value list that reaches it (index <= its size)
  // and counts one more vertex; interpolate selects the double-layer rule.
  void InsertVertex(int index, bool interpolate);
  // Deletes entry index from each value list that has it; one vertex fewer (never
  // below 0).
  void DeleteVertex(int index);

  int GetBlockCount() const { return m_blockCount; }
  int GetCurrentBlock() const { return m_current; }
  int GetVertexCount() const { return m_vertexCount; }
  const std::vector<CHU_FlowConstrictionElevationSet>& GetBlocks() const { return m_blocks; }

  // "%g" formatting, independent of the process locale.
  static std::string FormatG(double value);
  // The number at the start of text (after blanks), as the host reads it: 0 when
  // there is none, truncated towards zero and clamped to the int range.
  static int ReadInt(const std::string& text);

 private:
  void EnsureDefaultBlocks();
  static std::vector<std::string>* ValuesOf(CHU_FlowConstrictionElevationSet& block);

  int m_blockCount = 0;
  int m_current = 0;
  int m_vertexCount = 0;
  std::vector<CHU_FlowConstrictionElevationSet> m_blocks;
};
