#pragma once
// CHU_File2DM: reader of 2DM mesh files that describe a regular grid of
// quadrilateral cells, with optional triangles. Read only; it fills its own node
// and cell tables.
//
// Format: text, one card per line, the card name first. Cards read:
//   MESH2D x0 y0 angle nx ny width height offset   grid of nx x ny cells; the
//          first three numbers are read and ignored; sizes the tables
//   ND id x y z                                    node, stored at index id - 1
//   E4Q id n1 n2 n3 n4 a b c                       quadrilateral, stored at index
//          id (as written, not id - 1); the three trailing integers are ignored
//   E3T id n1 n2 n3                                triangle, appended; each of its
//          nodes has the grid's vertical offset subtracted from its z once
// Every other line (E2L, NS, comments, mesh-generator cards) is skipped and
// counted by its first word. The card name is the first word of the line (leading
// white space allowed), compared case-sensitively.
//
// Numbers are read exactly as sscanf reads "%f" (float), "%lf" (double) and "%d":
// "1.5x" is 1.5, an int that overflows wraps. A number that is missing or cannot be
// read reads as 0, and so do the ones after it on the card.
//
// Units: when the host's "Units" setting is 0, node x, y, z and the grid's cell
// width, height and vertical offset are multiplied by 3.28084 (metres to feet) as
// they are read. When the host has not set "Units" nothing is converted.
//
// Results kept exactly as this reader has always given them: nodes missing from a
// numbering with gaps are (0, 0, 0) and count in the extents; the node table ends
// at the highest ND id; an E4Q id at or beyond the cell table grows it to id + 1
// (record 0 is empty in a 1-based numbering); the lowest elevation ignores z = 0
// and the highest ignores z = 99999 (different values on purpose: 0 is unset when
// looking for the lowest point, 99999 marks a missing elevation).
//
// Sizes from the file are bounded, so that a hostile file cannot allocate
// gigabytes. A MESH2D card is honoured while its (nx + 1) x (ny + 1) nodes stay
// within kMaxGridNodes (30 million, beyond the grid models in use) and nx, ny are not
// negative; an ND or E4Q id may lie beyond the declared grid by at most
// kMinIdBound + file size / 4 (a card takes more than 4 bytes, so this leaves room
// for ordinary gaps in the numbering). A card beyond either bound, and an ND with
// id < 1 or an E4Q with id < 0, is refused: skipped and counted, and reading goes
// on. Memory is taken as the cards arrive, not when MESH2D declares the grid.
//
// Reading: the file is read in large blocks. On a machine with two cores or more a
// worker thread parses the tail of each block while the reading thread parses the
// head (the reading thread takes the tail back when the worker is late, so a busy
// machine costs no waiting); the cards are applied in file order, so the result is
// the same as a line-by-line reading. The file must not change while it is read.
// The object is not shared between threads.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hy_util/geometry/point.h"
#include "hy_util/platform/file.h"

class CHU_File2DM {
 public:
  // The most fields any card read here has (MESH2D and E4Q: the name and 8 numbers).
  static constexpr std::int32_t C_MAX_TOKENS = 9;
  // The largest grid a MESH2D card may declare, in nodes.
  static constexpr std::int64_t kMaxGridNodes = 30'000'000;
  // An id may always grow a table to this size, whatever the file's size.
  static constexpr std::int64_t kMinIdBound = 4096;

  struct CellRecord {
    std::int32_t id = -1;  // -1: no cell
    std::int32_t nodes[4] = {-1, -1, -1, -1};
  };
  struct TriangleRecord {
    std::int32_t id = -1;
    std::int32_t nodes[3] = {-1, -1, -1};
  };

  CHU_File2DM();
  ~CHU_File2DM();
  CHU_File2DM(const CHU_File2DM&) = delete;
  CHU_File2DM& operator=(const CHU_File2DM&) = delete;

  // Opens the file for reading; true when open.
  bool Open(const char* fileName);
  // Parses the whole file; false when it is not open, holds no MESH2D or ND card,
  // or cannot be read.
  bool Read();
  // Closes the file if open; always true. The tables stay.
  bool Close();

  // Grid.
  unsigned GetNbrCellsX() const { return static_cast<unsigned>(nx_); }
  unsigned GetNbrCellsY() const { return static_cast<unsigned>(ny_); }
  float GetCellWidth() const { return cellWidth_; }
  float GetCellHeight() const { return cellHeight_; }
  float GetVerticalOffset() const { return verticalOffset_; }
  std::int32_t GetCellCount() const { return cellCount_; }
  // The id at cell index nx * j + i, or -1 outside the table.
  std::int32_t GetCellIndex(int i, int j) const;
  // Bounding box of the cell's four nodes; false for an index outside the table, a
  // cell with id < 0, or a node index outside the node table.
  bool GetCellExtents(int cellIndex, double& minX, double& minY, double& maxX, double& maxY) const;
  // The cell's four zero-based node indices when its id is >= 0.
  bool GetNodeIndices(int cellIndex, int indices[4]) const;
  bool GetNodeIndices(int i, int j, int indices[4]) const;
  // Position of the first node of cell (i, j); (0, 0, 0) when there is no cell.
  CHU_DPoint GetNode(int i, int j) const;

  // Triangles, in file order.
  int GetNbrTCells() const { return static_cast<int>(triangles_.size()); }
  // The triangle's id, or -1 outside the table.
  std::int32_t GetTCellID(int index) const;
  bool GetTCellIndices(int index, int indices[3]) const;

  // Nodes, by zero-based index (id - 1).
  int GetVertexCount() const { return static_cast<int>(x_.size()); }
  // The node, or a point with coordinates -99999 outside the table.
  CHU_DPoint GetVertex(int index) const { return GetNodeFromIndex(index); }
  CHU_DPoint GetNodeFromIndex(int index) const;
  // Extents of the nodes; -99999 when there are none.
  void GetExtents(double& minX, double& minY, double& maxX, double& maxY) const;
  // Lowest z other than 0.0 and highest z other than 99999.0, both starting from
  // the first node's z; -99999 when there are no nodes.
  double GetMinElevation() const;
  double GetMaxElevation() const;

  // Multiplies the three values by 3.28084 when the host's "Units" setting is 0.
  static void AdjustDataUnitsXYZ(double& x, double& y, double& z);

  // What Read passed over: lines read, cards of other kinds by first word (in order
  // of first appearance; at most 64 kinds, names cut to 24 characters) and cards
  // refused for their sizes, with the line and reason of the first one.
  std::int32_t GetLineCount() const { return lineCount_; }
  const std::vector<std::pair<std::string, std::int64_t>>& GetSkippedCards() const { return skipped_; }
  std::int64_t GetRefusedCount() const { return refusedCount_; }
  std::int64_t GetFirstRefusedLine() const { return firstRefusedLine_; }
  const std::string& GetFirstRefusedReason() const { return firstRefusedReason_; }

  // Raw tables, for callers that walk every record.
  const std::vector<double>& GetX() const { return x_; }
  const std::vector<double>& GetY() const { return y_; }
  const std::vector<double>& GetZ() const { return z_; }
  // The cell records held; records from here up to GetCellCount() have id -1.
  const std::vector<CellRecord>& GetCellRecords() const { return cells_; }
  const std::vector<TriangleRecord>& GetTriangleRecords() const { return triangles_; }

  // Parse blocks with two threads (the default) or one.
  void SetParallelRead(bool parallel) { parallel_ = parallel; }

 private:
  struct Card;
  struct ParsedPart;

  template <class Sink>
  static std::int64_t ParseLines(const char* from, const char* to, double factor, Sink&& sink,
                                 std::vector<std::string_view>& others);
  template <class Sink>
  static void ParseLine(const char* p, const char* end, std::int32_t line, double factor, Sink& sink,
                        std::vector<std::string_view>& others);
  void Clear();
  bool ReadBlocks();
  class TailWorker;
  void ReadBlock(const char* first, const char* last, std::int64_t offset, TailWorker* worker);
  void ParseAndApply(const char* first, const char* last, double factor);
  void Apply(const Card& card, std::int64_t line);
  void FinishPart(const std::vector<std::string_view>& others, std::int64_t lines);
  void ApplyGrid(const Card& card, std::int64_t line);
  void ApplyNode(const Card& card, std::int64_t line);
  void ApplyQuad(const Card& card, std::int64_t line);
  void ApplyTriangle(const Card& card);
  void CountSkipped(const std::string& name, std::int64_t count);
  void Refuse(std::int64_t line, std::string reason);
  bool GrowNodes(std::int64_t size);
  void ComputeExtents();

  CHU_StdioFile file_;
  bool fileOpen_ = false;
  std::vector<char> block_;  // the read buffer, created by Open
  std::int64_t fileSize_ = 0;
  bool parallel_ = true;
  unsigned cores_ = 1;
  double workerShare_ = 0.5;  // of each block, for the worker thread

  std::int64_t nodeCount_ = 0;  // declared nodes (MESH2D), raised by ND ids
  std::int64_t gridNodes_ = 0;  // as MESH2D declared them, for the growth bound
  std::int64_t gridCells_ = 0;
  std::int32_t highestNodeId_ = -1;
  std::int32_t lineCount_ = 0;
  std::int32_t cellCount_ = 0;
  std::int32_t nx_ = 0;
  std::int32_t ny_ = 0;
  float cellWidth_ = 0;
  float cellHeight_ = 0;
  float verticalOffset_ = 0;
  double minX_ = CHU_DPoint::C_NULL_VALL;
  double minY_ = CHU_DPoint::C_NULL_VALL;
  double maxX_ = CHU_DPoint::C_NULL_VALL;
  double maxY_ = CHU_DPoint::C_NULL_VALL;

  std::vector<CellRecord> cells_;  // records beyond the end up to cellCount_ are empty
  std::vector<TriangleRecord> triangles_;
  std::vector<double> x_, y_, z_;
  std::vector<std::uint8_t> lowered_;

  std::vector<std::pair<std::string, std::int64_t>> skipped_;
  std::int64_t refusedCount_ = 0;
  std::int64_t firstRefusedLine_ = 0;
  std::string firstRefusedReason_;
};
