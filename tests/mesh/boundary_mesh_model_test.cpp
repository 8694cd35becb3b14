// Randomized model test: thousands of random edits applied both to the mesh and to
// a naive reference written here (plain vectors, linear scans), comparing every
// answer, the stored structure and the mesh's invariants after each step. The
// reference is also the oracle for the indexed searches.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <string>

#include "mesh_test_support.h"

namespace {

enum RefKind { kPoint, kLine, kRing };

struct RefVertex {
  int id;
  CHU_DPoint pos;
  std::vector<int> attached;
};

struct RefElement {
  int id;
  RefKind kind;
  int type;
  std::vector<int> verts;
};

bool SamePos(const CHU_DPoint& a, const CHU_DPoint& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }
bool InBox(const CHU_DPoint& v, const CHU_DPoint& p, double tol) {
  return std::abs(v.x - p.x) <= tol && std::abs(v.y - p.y) <= tol;
}

// The reference model: every rule written out plainly over vectors.
struct RefMesh {
  std::vector<RefVertex> vertices;
  std::vector<RefElement> elements;
  int nextVertex = 0, nextElement = 0;

  RefVertex* V(int id) {
    for (RefVertex& v : vertices) if (v.id == id) return &v;
    return nullptr;
  }
  RefElement* E(int id) {
    for (RefElement& e : elements) if (e.id == id) return &e;
    return nullptr;
  }
  int NewVertex(const CHU_DPoint& p) {
    vertices.push_back({nextVertex, p, {}});
    return nextVertex++;
  }
  void Attach(int v, int e) {
    auto& a = V(v)->attached;
    if (std::find(a.begin(), a.end(), e) == a.end()) a.push_back(e);
  }
  void Detach(int v, int e) {
    auto& a = V(v)->attached;
    a.erase(std::remove(a.begin(), a.end(), e), a.end());
  }
  void DropVertex(int v) {
    vertices.erase(std::remove_if(vertices.begin(), vertices.end(), [v](const RefVertex& x) { return x.id == v; }),
                   vertices.end());
  }
  std::vector<int> At(const CHU_DPoint& p) {
    std::vector<int> out;
    for (const RefVertex& v : vertices) if (SamePos(v.pos, p)) out.push_back(v.id);
    return out;
  }
  std::vector<int> Near(const CHU_DPoint& p, double tol) {
    std::vector<int> out;
    for (const RefVertex& v : vertices) if (InBox(v.pos, p, tol)) out.push_back(v.id);
    return out;
  }
  static void Close(std::vector<int>& r) {
    if (r.size() > 2 && r.front() != r.back()) r.push_back(r.front());
    while ((r.size() == 2 || r.size() == 3) && r.front() == r.back()) r.pop_back();
  }
  static bool Valid(const RefElement& e) {
    if (e.kind == kPoint) return e.verts.size() == 1;
    if (e.kind == kLine) return e.verts.size() >= 2;
    std::vector<int> distinct = e.verts;
    std::sort(distinct.begin(), distinct.end());
    distinct.erase(std::unique(distinct.begin(), distinct.end()), distinct.end());
    return e.verts.size() >= 3 && distinct.size() >= 3;
  }
  bool RemoveElement(int id) {
    RefElement* e = E(id);
    if (e == nullptr) return false;
    for (int v : e->verts) {
      if (V(v) == nullptr) continue;
      Detach(v, id);
      if (V(v)->attached.empty()) DropVertex(v);
    }
    elements.erase(std::remove_if(elements.begin(), elements.end(), [id](const RefElement& x) { return x.id == id; }),
                   elements.end());
    return true;
  }
  int AddChain(const std::vector<CHU_DPoint>& pts, int type, bool weld, RefKind kind) {
    const int id = nextElement++;
    elements.push_back({id, kind, type, {}});
    for (const CHU_DPoint& p : pts) {
      const std::vector<int> here = weld ? At(p) : std::vector<int>{};
      const int v = here.empty() ? NewVertex(p) : here.front();
      E(id)->verts.push_back(v);
      Attach(v, id);
    }
    if (kind == kRing) Close(E(id)->verts);
    if (!Valid(*E(id))) {
      RemoveElement(id);
      return -1;
    }
    return id;
  }
  int AddPoint(const CHU_DPoint& p, int type) {
    const int v = NewVertex(p);
    const int id = nextElement++;
    elements.push_back({id, kPoint, type, {v}});
    Attach(v, id);
    return id;
  }
  int Insert(const CHU_DPoint& p, const CHU_DPoint& a, const CHU_DPoint& b) {
    if (SamePos(a, b)) return -1;
    const std::vector<int> atA = At(a), atB = At(b);
    if (atA.empty() || atB.empty()) return -1;
    const int nv = NewVertex(p);
    for (int va : atA) {
      for (int vb : atB) {
        for (int eid : std::vector<int>(V(va)->attached)) {
          auto& r = E(eid)->verts;
          if (E(eid)->kind == kPoint) continue;
          for (std::size_t i = 1; i < r.size(); ++i) {
            if ((r[i - 1] == va && r[i] == vb) || (r[i - 1] == vb && r[i] == va)) {
              r.insert(r.begin() + static_cast<long>(i), nv);
              Attach(nv, eid);
              break;
            }
          }
        }
      }
    }
    if (!V(nv)->attached.empty()) return nv;
    DropVertex(nv);
    return -1;
  }
  bool Weld(const CHU_DPoint& p, double tol) {
    const std::vector<int> near = Near(p, tol);
    if (near.size() < 2) return false;
    const int s = near[0];
    std::vector<int> doomed;
    for (std::size_t k = 1; k < near.size(); ++k) {
      const int old = near[k];
      bool refused = false;
      for (int eid : std::vector<int>(V(old)->attached)) {
        RefElement& e = *E(eid);
        auto& r = e.verts;
        if (e.kind != kPoint && e.type == 11 && std::count(r.begin(), r.end(), s) > 0) {
          refused = true;
          continue;
        }
        std::replace(r.begin(), r.end(), old, s);
        std::vector<int> kept;
        for (std::size_t i = 0; i < r.size(); ++i) {
          if (!(i > 0 && r[i] == s && r[i - 1] == s)) kept.push_back(r[i]);
        }
        r = kept;
        if (e.kind == kRing) Close(r);
        Detach(old, eid);
        Attach(s, eid);
        if (!Valid(e) && std::count(doomed.begin(), doomed.end(), eid) == 0) doomed.push_back(eid);
      }
      if (!refused) DropVertex(old);
    }
    for (int eid : doomed) RemoveElement(eid);
    return true;
  }
  int Split(int id) {
    if (V(id) == nullptr) return 0;
    const std::vector<int> attached = V(id)->attached;
    for (std::size_t i = 1; i < attached.size(); ++i) {
      const int nv = NewVertex(V(id)->pos);
      RefElement& e = *E(attached[i]);
      std::replace(e.verts.begin(), e.verts.end(), id, nv);
      if (e.kind == kRing) Close(e.verts);
      Attach(nv, e.id);
      Detach(id, e.id);
    }
    return attached.empty() ? 0 : static_cast<int>(attached.size() - 1);
  }
  bool RemoveVertex(int id) {
    if (V(id) == nullptr) return false;
    std::vector<int> doomed;
    for (int eid : V(id)->attached) {
      RefElement& e = *E(eid);
      e.verts.erase(std::remove(e.verts.begin(), e.verts.end(), id), e.verts.end());
      if (e.kind == kRing) Close(e.verts);
      if (!Valid(e)) doomed.push_back(eid);
    }
    DropVertex(id);
    for (int eid : doomed) RemoveElement(eid);
    return true;
  }
  int SelectVertex(const CHU_DPoint& p, double tol) {
    int best = -1;
    double bestD = 0;
    for (int id : Near(p, tol)) {
      const double dx = V(id)->pos.x - p.x, dy = V(id)->pos.y - p.y, d = dx * dx + dy * dy;
      if (best < 0 || d < bestD) best = id, bestD = d;
    }
    return best;
  }
};

class ModelRun {
 public:
  explicit ModelRun(unsigned seed) : m_rng(seed) { m_mesh.SetAttributeStore(&m_store); }

  CHU_DPoint RandomPoint() {
    return CHU_DPoint(static_cast<double>(m_rng() % 12), static_cast<double>(m_rng() % 12),
                      static_cast<double>(m_rng() % 2));
  }
  double RandomTolerance() { return std::vector<double>{-1.0, 0.0, 0.5, 1.0, 1.5}[m_rng() % 5]; }
  int RandomVertexID() {
    if (m_ref.vertices.empty() || m_rng() % 20 == 0) return static_cast<int>(m_rng() % 1000) - 1;
    return m_ref.vertices[m_rng() % m_ref.vertices.size()].id;
  }
  int RandomElementID() {
    if (m_ref.elements.empty() || m_rng() % 20 == 0) return static_cast<int>(m_rng() % 1000) - 1;
    return m_ref.elements[m_rng() % m_ref.elements.size()].id;
  }

  void Step() {
    const unsigned op = m_rng() % (m_ref.vertices.size() > 150 ? 14 : 11);
    const int type = m_rng() % 3 == 0 ? 11 : 0;
    const bool weld = m_rng() % 3 != 0;
    const auto weldMode = weld ? CHU_DBoundaryMesh::WELD_EXISTING : CHU_DBoundaryMesh::NO_WELD;
    switch (op) {
      case 0:
      case 1: {
        std::vector<CHU_DPoint> pts(1 + m_rng() % 5);
        CHU_DPolyLine line;
        for (CHU_DPoint& p : pts) line.AddPt(p = RandomPoint());
        Expect("AddPolyline", m_mesh.AddPolyline(&line, type, weldMode), m_ref.AddChain(pts, type, weld, kLine));
        break;
      }
      case 2: {
        std::vector<CHU_DPoint> pts(2 + m_rng() % 4);
        CHU_DPolygon ring;
        for (CHU_DPoint& p : pts) ring.AddPt(p = RandomPoint());
        if (m_rng() % 2) ring.AddPt(pts.front()), pts.push_back(pts.front());
        Expect("AddPolygon", m_mesh.AddPolygon(&ring, type, weldMode), m_ref.AddChain(pts, type, weld, kRing));
        break;
      }
      case 3: {
        const CHU_DPoint p = RandomPoint();
        Expect("AddPoint", m_mesh.AddPoint(p, type), m_ref.AddPoint(p, type));
        break;
      }
      case 4:
      case 5: {
        CHU_DPoint a = RandomPoint(), b = RandomPoint();
        const int eid = RandomElementID();
        if (const RefElement* e = m_ref.E(eid); e != nullptr && e->verts.size() >= 2) {
          const std::size_t i = 1 + m_rng() % (e->verts.size() - 1);
          a = m_ref.V(e->verts[i - 1])->pos, b = m_ref.V(e->verts[i])->pos;
        }
        const CHU_DPoint p = RandomPoint();
        Expect("InsertVertex", m_mesh.InsertVertex(p, a, b), m_ref.Insert(p, a, b));
        break;
      }
      case 6: {
        CHU_DPoint p = RandomPoint();
        p.x += 0.25, p.y -= 0.25;
        const double tol = RandomTolerance();
        Expect("WeldVertices", m_mesh.WeldVertices(p, tol), m_ref.Weld(p, tol));
        break;
      }
      case 7: {
        const int id = RandomVertexID();
        Expect("SplitVertex", m_mesh.SplitVertex(id), m_ref.Split(id));
        break;
      }
      case 8: {
        const int id = RandomVertexID();
        const CHU_DPoint p = RandomPoint();
        const bool known = m_ref.V(id) != nullptr;
        if (known) m_ref.V(id)->pos = p;
        Expect("MoveVertex", m_mesh.MoveVertex(id, p), known);
        break;
      }
      case 9:
      case 11:
      case 12: {
        const int id = RandomElementID();
        Expect("RemoveElement", m_mesh.RemoveElement(id), m_ref.RemoveElement(id));
        break;
      }
      default: {
        const int id = RandomVertexID();
        Expect("RemoveVertex", m_mesh.RemoveVertex(id), m_ref.RemoveVertex(id));
        break;
      }
    }
    CompareStructure();
    CompareSearches();
  }

  void Expect(const char* what, int got, int want) {
    ASSERT_EQ(got, want) << what << " at step " << m_step;
  }
  void Expect(const char* what, bool got, bool want) {
    ASSERT_EQ(got, want) << what << " at step " << m_step;
  }

  void CompareStructure() {
    std::vector<int> refVertices, refElements;
    for (const RefVertex& v : m_ref.vertices) refVertices.push_back(v.id);
    for (const RefElement& e : m_ref.elements) refElements.push_back(e.id);
    ASSERT_EQ(m_mesh.VertexIDs(), refVertices) << "vertex map at step " << m_step;
    ASSERT_EQ(m_mesh.ElementIDs(), refElements) << "element map at step " << m_step;
    int points = 0, lines = 0, rings = 0;
    std::vector<int> list;
    for (const RefElement& e : m_ref.elements) {
      list.clear();
      m_mesh.GetElementVertexIDList(e.id, list);
      if (list != e.verts) {
        ASSERT_EQ(list, e.verts) << "element " << e.id << " at step " << m_step;
      }
      points += e.kind == kPoint, lines += e.kind == kLine, rings += e.kind == kRing;
    }
    ASSERT_EQ(m_mesh.GetPointCount(), points);
    ASSERT_EQ(m_mesh.GetPolylineCount(), lines);
    ASSERT_EQ(m_mesh.GetPolygonCount(), rings);
    ASSERT_EQ(m_mesh.GetPolylineCount(0) + m_mesh.GetPolylineCount(11), lines);
    std::map<int, std::vector<int>> users;  // vertex -> elements naming it, ascending
    for (const RefElement& e : m_ref.elements) {
      for (int v : e.verts) {
        if (users[v].empty() || users[v].back() != e.id) users[v].push_back(e.id);
      }
    }
    for (auto& [v, list] : users) {
      std::sort(list.begin(), list.end());
      list.erase(std::unique(list.begin(), list.end()), list.end());
    }
    for (const RefVertex& v : m_ref.vertices) {
      const CHU_DBoundaryMeshVertex* vertex = m_mesh.GetVertex(v.id);
      // No orphans, and the attached map holds exactly the elements whose lists
      // name the vertex.
      std::vector<int> attached;
      for (const auto& entry : vertex->GetAttachedElements()) attached.push_back(entry.first);
      std::sort(attached.begin(), attached.end());
      if (SamePos(vertex->GetPosition(), v.pos) && !attached.empty() && attached == users[v.id]) continue;
      ASSERT_TRUE(SamePos(vertex->GetPosition(), v.pos)) << "vertex " << v.id << " at step " << m_step;
      ASSERT_EQ(attached, users[v.id]) << "attached map of " << v.id << " at step " << m_step;
    }
  }

  void CompareSearches() {
    for (int probe = 0; probe < 3; ++probe) {
      CHU_DPoint p = RandomPoint();
      if (probe == 2) p.x += 0.5;
      const double tol = RandomTolerance();
      const std::vector<int> at = m_ref.At(p);
      ASSERT_EQ(m_mesh.FindVertex(p, -1), at.empty() ? -1 : at.front());
      ASSERT_EQ(m_mesh.FindAllVerticesAtPosition(p), at);
      ASSERT_EQ(m_mesh.FindAllVerticesNearPosition(p, tol), m_ref.Near(p, tol));
      const int selected = m_ref.SelectVertex(p, tol);
      ASSERT_EQ(m_mesh.SelectVertex(p, tol, false), selected >= 0);
      ASSERT_EQ(m_mesh.GetLastSelectedVertexID(), selected);
      CHU_DPoint snapped;
      const std::vector<int> near = m_ref.Near(p, tol);
      ASSERT_EQ(m_mesh.Snap(snapped, p, tol, -1, -1, false), !near.empty());
      if (!near.empty()) {
        ASSERT_TRUE(SamePos(snapped, m_ref.V(near.front())->pos));
      }
    }
  }

  void Run(int steps) {
    for (m_step = 0; m_step < steps; ++m_step) {
      Step();
      if (::testing::Test::HasFatalFailure()) return;
    }
  }

 private:
  std::mt19937 m_rng;
  TestMesh m_mesh;
  CHU_MemoryAttributeStore m_store;
  RefMesh m_ref;
  int m_step = 0;
};

TEST(BoundaryMeshModelTest, RandomEditsAgreeWithNaiveReference) {
  for (unsigned seed : {1u, 2u, 3u}) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    ModelRun run(seed);
    run.Run(1200);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
