#include "hy_util/mesh/vertex_index.h"

// Boost.Geometry 1.74 trips GCC's flow analysis inside its own headers.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <utility>

#include "hy_util/mesh/boundary_mesh_vertex.h"

namespace bg = boost::geometry;
namespace bgi = boost::geometry::index;

namespace {

using BPoint = bg::model::point<double, 2, bg::cs::cartesian>;
using BBox = bg::model::box<BPoint>;
using TreeValue = std::pair<BPoint, int>;

struct ExactKey {
  double x, y, z;
  bool operator==(const ExactKey& other) const { return x == other.x && y == other.y && z == other.z; }
};

// Mixes every bit of the input into the low bits, which pick the slot: map
// coordinates that are whole numbers have long runs of zero low bits.
std::uint64_t Mix(std::uint64_t h) {
  h ^= h >> 33;
  h *= 0xFF51AFD7ED558CCDull;
  h ^= h >> 33;
  h *= 0xC4CEB9FE1A85EC53ull;
  return h ^ (h >> 33);
}

struct ExactKeyHash {
  std::size_t operator()(const ExactKey& key) const {
    // + 0.0 maps -0.0 to +0.0, which compares equal and must hash alike.
    std::uint64_t h = Mix(std::bit_cast<std::uint64_t>(key.x + 0.0));
    h = Mix(h ^ std::bit_cast<std::uint64_t>(key.y + 0.0));
    h = Mix(h ^ std::bit_cast<std::uint64_t>(key.z + 0.0));
    return static_cast<std::size_t>(h);
  }
};

// An open-addressing hash table from exact position to vertex, several vertices
// per position allowed. Slots hold the key beside the pointer, so a lookup reads
// one run of adjacent slots and no vertex; linear probing with backward-shift
// deletion keeps runs short without tombstones.
class ExactTable {
 public:
  struct Slot {
    ExactKey key;
    CHU_DBoundaryMeshVertex* vertex = nullptr;
  };

  void Insert(const ExactKey& key, CHU_DBoundaryMeshVertex* vertex) {
    if ((m_count + 1) * 2 > m_slots.size()) Grow(std::max<std::size_t>(64, m_slots.size() * 2));
    std::size_t i = Home(key);
    while (m_slots[i].vertex != nullptr) i = (i + 1) & m_mask;
    m_slots[i] = Slot{key, vertex};
    ++m_count;
  }
  void Erase(const ExactKey& key, const CHU_DBoundaryMeshVertex* vertex) {
    if (m_slots.empty()) return;
    std::size_t i = Home(key);
    for (; m_slots[i].vertex != nullptr; i = (i + 1) & m_mask) {
      if (m_slots[i].vertex == vertex) break;
    }
    if (m_slots[i].vertex == nullptr) return;
    // Shift later members of the run back over the gap where their home allows.
    for (std::size_t j = (i + 1) & m_mask; m_slots[j].vertex != nullptr; j = (j + 1) & m_mask) {
      const std::size_t home = Home(m_slots[j].key);
      const bool movable = i <= j ? (home <= i || home > j) : (home <= i && home > j);
      if (movable) {
        m_slots[i] = m_slots[j];
        i = j;
      }
    }
    m_slots[i] = Slot{};
    --m_count;
  }
  template <class Visit>
  void ForEachAt(const ExactKey& key, Visit visit) const {
    if (m_slots.empty()) return;
    for (std::size_t i = Home(key); m_slots[i].vertex != nullptr; i = (i + 1) & m_mask) {
      if (m_slots[i].key == key) visit(m_slots[i].vertex);
    }
  }
  void Clear() {
    m_slots.clear();
    m_mask = 0;
    m_count = 0;
  }
  void Reserve(std::size_t n) {
    std::size_t size = 64;
    while (size < 2 * n) size *= 2;
    if (size > m_slots.size()) Grow(size);
  }

 private:
  std::size_t Home(const ExactKey& key) const { return ExactKeyHash()(key) & m_mask; }
  void Grow(std::size_t size) {
    std::vector<Slot> old = std::move(m_slots);
    m_slots.assign(size, Slot{});
    m_mask = size - 1;
    m_count = 0;
    for (const Slot& slot : old) {
      if (slot.vertex != nullptr) Insert(slot.key, slot.vertex);
    }
  }

  std::vector<Slot> m_slots;
  std::size_t m_mask = 0;
  std::size_t m_count = 0;
};

bool HasNaN(const CHU_DPoint& p) { return std::isnan(p.x) || std::isnan(p.y) || std::isnan(p.z); }
bool PlanFinite(const CHU_DPoint& p) { return std::isfinite(p.x) && std::isfinite(p.y); }
ExactKey KeyOf(const CHU_DPoint& p) { return ExactKey{p.x, p.y, p.z}; }

}  // namespace

struct HU_VertexIndex::Impl {
  explicit Impl(const HU_VertexMap& map) : vertices(map) {}
  void RebuildTree();
  void Settle();
  void Collect(const TreeValue& value, const CHU_DPoint& position, double tolerance,
               std::vector<CHU_DBoundaryMeshVertex*>& out) const;

  const HU_VertexMap& vertices;
  ExactTable exact;
  bgi::rtree<TreeValue, bgi::quadratic<16>> tree;
  // New entries wait here until a box search needs them: a few are scanned, a
  // batch (a whole import) is bulk-loaded in one go.
  std::vector<TreeValue> pending;
  std::size_t stale = 0;  // entries whose vertex is gone or has moved
};

constexpr std::size_t kPendingScanned = 64;

// Brings the tree up to date before a search. Runs only from searches, when the
// vertex map is settled (Remove runs before a vertex leaves the map).
void HU_VertexIndex::Impl::Settle() {
  const std::size_t entries = tree.size() + pending.size();
  if (stale > std::max<std::size_t>(1024, entries / 2) ||
      pending.size() > std::max(kPendingScanned, tree.size() / 4)) {
    RebuildTree();
  } else if (pending.size() > kPendingScanned) {
    tree.insert(pending.begin(), pending.end());
    pending.clear();
  }
}

void HU_VertexIndex::Impl::Collect(const TreeValue& value, const CHU_DPoint& position, double tolerance,
                                   std::vector<CHU_DBoundaryMeshVertex*>& out) const {
  CHU_DBoundaryMeshVertex* vertex = vertices.Find(value.second);
  if (vertex == nullptr) return;
  const CHU_DPoint& p = vertex->GetPosition();
  // An entry left behind by a move no longer matches the vertex.
  if (p.x != bg::get<0>(value.first) || p.y != bg::get<1>(value.first)) return;
  if (HU_VertexIndex::InBox(p, position, tolerance)) out.push_back(vertex);
}

void HU_VertexIndex::Impl::RebuildTree() {
  std::vector<TreeValue> live;
  live.reserve(vertices.Size());
  for (const auto& entry : vertices) {
    const CHU_DPoint& p = entry.object->GetPosition();
    if (PlanFinite(p)) live.emplace_back(BPoint(p.x, p.y), entry.id);
  }
  tree = decltype(tree)(live.begin(), live.end());  // packing: one pass, well-shaped nodes
  pending.clear();
  stale = 0;
}

HU_VertexIndex::HU_VertexIndex(const HU_VertexMap& vertices) : m_impl(std::make_unique<Impl>(vertices)) {}
HU_VertexIndex::~HU_VertexIndex() = default;

void HU_VertexIndex::Insert(CHU_DBoundaryMeshVertex* vertex) {
  const CHU_DPoint& p = vertex->GetPosition();
  if (!HasNaN(p)) m_impl->exact.Insert(KeyOf(p), vertex);
  if (PlanFinite(p)) m_impl->pending.emplace_back(BPoint(p.x, p.y), vertex->GetID());
}

void HU_VertexIndex::Remove(CHU_DBoundaryMeshVertex* vertex) {
  const CHU_DPoint& p = vertex->GetPosition();
  if (!HasNaN(p)) {
    m_impl->exact.Erase(KeyOf(p), vertex);
  }
  if (PlanFinite(p)) ++m_impl->stale;
}

void HU_VertexIndex::Clear() {
  m_impl->exact.Clear();
  m_impl->tree.clear();
  m_impl->pending.clear();
  m_impl->stale = 0;
}

void HU_VertexIndex::Reserve(std::size_t n) { m_impl->exact.Reserve(n); }

void HU_VertexIndex::FindExact(const CHU_DPoint& position, std::vector<CHU_DBoundaryMeshVertex*>& out) const {
  if (HasNaN(position)) return;
  const std::size_t start = out.size();
  m_impl->exact.ForEachAt(KeyOf(position), [&out](CHU_DBoundaryMeshVertex* v) { out.push_back(v); });
  if (out.size() - start > 1) {
    std::sort(out.begin() + static_cast<std::ptrdiff_t>(start), out.end(),
              [](const auto* a, const auto* b) { return a->m_mapOrder < b->m_mapOrder; });
  }
}

CHU_DBoundaryMeshVertex* HU_VertexIndex::FindFirstExact(const CHU_DPoint& position) const {
  if (HasNaN(position)) return nullptr;
  CHU_DBoundaryMeshVertex* first = nullptr;
  m_impl->exact.ForEachAt(KeyOf(position), [&first](CHU_DBoundaryMeshVertex* v) {
    if (first == nullptr || v->m_mapOrder < first->m_mapOrder) first = v;
  });
  return first;
}

bool HU_VertexIndex::FindInBox(const CHU_DPoint& position, double tolerance,
                               std::vector<CHU_DBoundaryMeshVertex*>& out) const {
  if (!(tolerance >= 0.0)) return true;  // negative or NaN: nothing is within it
  if (!PlanFinite(position) || !std::isfinite(tolerance)) return false;
  // The box is widened by a few units in the last place so that rounding in
  // x +- tolerance never loses a vertex the exact rule below accepts.
  const double mx = (std::abs(position.x) + tolerance) * 1e-15 + 1e-300;
  const double my = (std::abs(position.y) + tolerance) * 1e-15 + 1e-300;
  const BBox box(BPoint(position.x - tolerance - mx, position.y - tolerance - my),
                 BPoint(position.x + tolerance + mx, position.y + tolerance + my));
  m_impl->Settle();
  const std::size_t start = out.size();
  const Impl& impl = *m_impl;
  impl.tree.query(bgi::intersects(box), boost::make_function_output_iterator([&](const TreeValue& value) {
                    impl.Collect(value, position, tolerance, out);
                  }));
  for (const TreeValue& value : impl.pending) {
    if (bg::covered_by(value.first, box)) impl.Collect(value, position, tolerance, out);
  }
  const auto first = out.begin() + static_cast<std::ptrdiff_t>(start);
  std::sort(first, out.end(), [](const auto* a, const auto* b) { return a->m_mapOrder < b->m_mapOrder; });
  // A vertex moved away and back has two live-looking entries.
  out.erase(std::unique(first, out.end()), out.end());
  return true;
}

bool HU_VertexIndex::InBox(const CHU_DPoint& vertex, const CHU_DPoint& position, double tolerance) {
  return std::abs(vertex.x - position.x) <= tolerance && std::abs(vertex.y - position.y) <= tolerance;
}
