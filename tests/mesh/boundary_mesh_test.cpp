// The boundary mesh's rules as case tables: ID allocation, sets on demand, closure
// under the weld modes, insert/weld/split/remove, selection ties, snapping, and
// the answers bad input gets.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

#include "hy_util/mesh/mesh_gen_params.h"
#include "hy_util/platform/object.h"
#include "mesh_test_support.h"

namespace {

const CHU_DPoint A = P(0, 0), B = P(10, 0), C = P(10, 10), D = P(0, 10);
constexpr auto kWeld = CHU_DBoundaryMesh::WELD_EXISTING;
constexpr auto kNoWeld = CHU_DBoundaryMesh::NO_WELD;

TEST(BoundaryMeshTest, ExplicitIDsMoveTheCounterPastThemAndTakenOnesFallBackToIt) {
  TestMesh mesh;
  EXPECT_EQ(mesh.AddElementSet(5, "a"), 5);
  EXPECT_EQ(mesh.AddElementSet("b"), 6);
  EXPECT_EQ(mesh.AddElementSet(5, "c"), 7);  // taken: the counter's value
  EXPECT_EQ(mesh.NextElementSetID(), 8);

  const CHU_DPolyLine line = Line({A, B});
  struct Case { int asked, expected; } cases[] = {
      {3, 3}, {-1, 4}, {1, 1} /* free, below the counter */, {3, 5} /* taken */, {-7, 6}, {9, 9}, {-1, 10},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(mesh.ProtectedAddPolyline(&line, 0, c.asked, kNoWeld), c.expected) << "asked " << c.asked;
  }
  EXPECT_EQ(mesh.AddPoint(P(1, 1), 0, 2), 2);
  EXPECT_EQ(mesh.AddPoint(P(1, 1), 0), 11);
  EXPECT_EQ(mesh.AddPoint(P(1, 1), 0, 2147483647), 2147483647);
  EXPECT_EQ(mesh.AddPoint(P(1, 1), 0), -1);  // the ID range is used up
  EXPECT_EQ(mesh.GetPointCount(), 3);
  EXPECT_EQ(mesh.GetVertexCount(), 17);      // the failed point left no vertex behind
}

TEST(BoundaryMeshTest, SetsAreCreatedOnDemandAndRemovedWithOrWithoutMembers) {
  TestMesh mesh;
  const CHU_DPolyLine line = Line({A, B});
  const int first = mesh.AddPolyline(&line, 0, kWeld);
  const int second = mesh.AddPolyline(&line, 4, kNoWeld);
  EXPECT_TRUE(mesh.SetElementSetID(first, 7));
  EXPECT_TRUE(mesh.IsValidElementSetID(7));
  EXPECT_EQ(mesh.GetElementSetName(7), "Unnamed");
  EXPECT_EQ(mesh.GetElementSetID(first), 7);
  EXPECT_EQ(mesh.GetElementSet(7)->GetPolylineCount(), 1);
  EXPECT_EQ(mesh.AddElementSet("next"), 8);

  // Moving between sets updates both member maps.
  EXPECT_TRUE(mesh.SetElementSetID(first, 8));
  EXPECT_EQ(mesh.GetElementSet(7)->GetElementCount(), 0);
  EXPECT_EQ(mesh.GetElementSet(8)->GetElementCount(0), 1);

  EXPECT_EQ(mesh.EnsureElementsHaveAssignedSet(-1, "rest"), 9);
  EXPECT_EQ(mesh.GetElementSetID(second), 9);
  EXPECT_EQ(mesh.EnsureElementsHaveAssignedSet(-1, "none needed"), -1);

  EXPECT_TRUE(mesh.RemoveElementSet(8, false));
  EXPECT_EQ(mesh.GetElementSetID(first), -1);
  EXPECT_TRUE(mesh.IsValidElementID(first));
  EXPECT_TRUE(mesh.RemoveElementSet(9, true));
  EXPECT_FALSE(mesh.IsValidElementID(second));
  EXPECT_FALSE(mesh.RemoveElementSet(9, true));
  EXPECT_EQ(mesh.GetElementSetCount(), 1);  // set 7, now empty
}

TEST(BoundaryMeshTest, PolygonClosureUnderEachWeldMode) {
  struct Case {
    const char* name;
    std::vector<CHU_DPoint> points;
    CHU_DBoundaryMesh::WeldVerticesEnum weld;
    int entries;  // -1: not added
    int vertices;
  } cases[] = {
      {"ABCA welded", {A, B, C, A}, kWeld, 4, 3},
      {"ABC welded", {A, B, C}, kWeld, 4, 3},
      {"ABA welded collapses", {A, B, A}, kWeld, -1, 0},
      {"ABCA unwelded keeps the second A", {A, B, C, A}, kNoWeld, 5, 4},
      {"ABA unwelded", {A, B, A}, kNoWeld, 4, 3},
      {"AB", {A, B}, kNoWeld, -1, 0},
      {"empty", {}, kWeld, -1, 0},
  };
  for (const Case& c : cases) {
    TestMesh mesh;
    CHU_DPolygon ring;
    for (const CHU_DPoint& p : c.points) ring.AddPt(p);
    const int id = mesh.AddPolygon(&ring, 0, c.weld);
    if (c.entries < 0) {
      EXPECT_EQ(id, -1) << c.name;
    } else {
      const std::vector<int> list = mesh.VertexList(id);
      EXPECT_EQ(static_cast<int>(list.size()), c.entries) << c.name;
      EXPECT_EQ(list.front(), list.back()) << c.name;
    }
    EXPECT_EQ(mesh.GetVertexCount(), c.vertices) << c.name;  // a rejected polygon leaves no vertex
  }
}

TEST(BoundaryMeshTest, CoincidentTwoPointPolylineIsValidUnderEitherMode) {
  for (auto weld : {kWeld, kNoWeld}) {
    TestMesh mesh;
    const CHU_DPolyLine line = Line({A, A});
    const int id = mesh.AddPolyline(&line, 0, weld);
    ASSERT_GE(id, 0);
    EXPECT_EQ(mesh.VertexList(id).size(), 2u);
    EXPECT_EQ(mesh.GetVertexCount(), weld == kWeld ? 1 : 2);
  }
}

// A, B, B2, C with B and B2 inside the weld box; z of B2 is far off.
struct WeldFixture {
  TestMesh mesh;
  CHU_MemoryAttributeStore store;
  int line = -1;
  explicit WeldFixture(int type) {
    mesh.SetAttributeStore(&store);
    const CHU_DPolyLine chain = Line({A, P(5, 0), P(5.1, 0.1, 500), B});
    line = mesh.AddPolyline(&chain, type, kNoWeld);
  }
};

TEST(BoundaryMeshTest, WeldMergesNeighboursButTypeElevenLinesRefuse) {
  WeldFixture plain(0);
  EXPECT_TRUE(plain.mesh.WeldVertices(P(5, 0), 0.2));
  EXPECT_EQ(plain.mesh.VertexList(plain.line), (std::vector<int>{0, 1, 3}));
  EXPECT_EQ(plain.mesh.GetVertexCount(), 3);

  WeldFixture constriction(11);
  const auto before = constriction.store.GetStringList(constriction.line, "F_2D_FCLG_DATA_L2");
  EXPECT_TRUE(constriction.mesh.WeldVertices(P(5, 0), 0.2));
  EXPECT_EQ(constriction.mesh.VertexList(constriction.line), (std::vector<int>{0, 1, 2, 3}));
  EXPECT_EQ(constriction.mesh.GetVertexCount(), 4);  // the refused vertex stays
  EXPECT_EQ(constriction.store.GetStringList(constriction.line, "F_2D_FCLG_DATA_L2"), before);

  TestMesh mesh;
  EXPECT_FALSE(mesh.WeldVertices(P(5, 0), 0.2));  // fewer than two vertices
  const CHU_DPolyLine chain = Line({A, B});
  mesh.AddPolyline(&chain, 0, kNoWeld);
  EXPECT_FALSE(mesh.WeldVertices(P(5, 0), -1.0));
  EXPECT_FALSE(mesh.WeldVertices(P(NAN, 0), 100.0));
}

TEST(BoundaryMeshTest, WeldCollapsingElementsRemovesThemAndTheirOrphans) {
  TestMesh mesh;
  const CHU_DPolygon small = Ring({A, P(0.1, 0), P(0.1, 0.1)});
  const CHU_DPolyLine stub = Line({P(0.05, 0.05), P(50, 50)});
  const CHU_DPolyLine tiny = Line({P(0.02, 0), P(0.03, 0)});
  const int ring = mesh.AddPolygon(&small, 0, kWeld);
  const int kept = mesh.AddPolyline(&stub, 0, kWeld);
  const int gone = mesh.AddPolyline(&tiny, 0, kWeld);
  mesh.AddPoint(P(0.05, 0.0), 3);
  EXPECT_TRUE(mesh.WeldVertices(P(0.05, 0.05), 0.06));
  EXPECT_FALSE(mesh.IsValidElementID(ring));   // three corners became one
  EXPECT_FALSE(mesh.IsValidElementID(gone));   // both ends became one: a single entry remains
  ASSERT_TRUE(mesh.IsValidElementID(kept));
  EXPECT_EQ(mesh.GetPointCount(), 1);
  EXPECT_EQ(mesh.GetVertexCount(), 2);          // the survivor and the far end of the stub
  EXPECT_EQ(mesh.VertexList(kept).front(), 0);  // the first vertex in map order survives
}

TEST(BoundaryMeshTest, InsertVertexGoesIntoEveryEdgeBetweenTheTwoPositions) {
  TestMesh mesh;
  CHU_MemoryAttributeStore store;
  mesh.SetAttributeStore(&store);
  const CHU_DPolyLine forward = Line({A, B, C});
  const CHU_DPolyLine backward = Line({C, B, A});
  const CHU_DPolygon ring = Ring({A, B, C, D});
  const int l1 = mesh.AddPolyline(&forward, 11, kWeld);
  const int l2 = mesh.AddPolyline(&backward, 0, kWeld);
  const int r = mesh.AddPolygon(&ring, 0, kWeld);

  const int v = mesh.InsertVertex(P(5, 0), A, B);
  ASSERT_GE(v, 0);
  EXPECT_EQ(mesh.VertexList(l1), (std::vector<int>{0, v, 1, 2}));
  EXPECT_EQ(mesh.VertexList(l2), (std::vector<int>{2, 1, v, 0}));
  EXPECT_EQ(mesh.VertexList(r), (std::vector<int>{0, v, 1, 2, 3, 0}));
  EXPECT_EQ(store.GetStringList(l1, "F_2D_FCLG_DATA_L3")[2], "4");  // V grew to four

  // The closing edge of the ring takes a vertex too; positions without an edge don't.
  const int w = mesh.InsertVertex(P(0, 5), D, A);
  EXPECT_EQ(mesh.VertexList(r), (std::vector<int>{0, v, 1, 2, 3, w, 0}));
  const int vertices = mesh.GetVertexCount();
  for (const CHU_DPoint& other : {C, A, P(99, 99)}) EXPECT_EQ(mesh.InsertVertex(P(1, 1), A, other), -1);
  EXPECT_EQ(mesh.GetVertexCount(), vertices);  // the unused vertex was removed again
}

TEST(BoundaryMeshTest, SplitGivesEveryElementButTheFirstItsOwnVertex) {
  TestMesh mesh;
  const CHU_DPolyLine l1 = Line({A, B});
  const CHU_DPolygon ring = Ring({B, C, D});
  const int first = mesh.AddPolyline(&l1, 0, kWeld);
  const int second = mesh.AddPolygon(&ring, 0, kWeld);
  const int shared = mesh.FindVertex(B, -1);
  EXPECT_EQ(mesh.SplitVertex(shared), 1);
  EXPECT_EQ(mesh.VertexList(first)[1], shared);
  const std::vector<int> split = mesh.VertexList(second);
  EXPECT_NE(split.front(), shared);
  EXPECT_EQ(split.front(), split.back());  // the ring is still closed on the new vertex
  EXPECT_EQ(mesh.FindAllVerticesAtPosition(B).size(), 2u);
  EXPECT_EQ(std::pair(mesh.SplitVertex(shared), mesh.SplitVertex(12345)), std::pair(0, 0));
}

TEST(BoundaryMeshTest, RemovingElementsAndVerticesDropsOrphansOnly) {
  TestMesh mesh;
  const CHU_DPolyLine l1 = Line({A, B, C});
  const CHU_DPolyLine l2 = Line({C, D});
  const int first = mesh.AddPolyline(&l1, 0, kWeld);
  const int second = mesh.AddPolyline(&l2, 0, kWeld);
  EXPECT_TRUE(mesh.RemoveElement(first));
  EXPECT_EQ(mesh.GetVertexCount(), 2);  // C is still used
  EXPECT_FALSE(mesh.RemoveElement(first));

  // Removing a vertex of a two-vertex line leaves it invalid, so it goes too.
  EXPECT_TRUE(mesh.RemoveVertex(mesh.FindVertex(D, -1)));
  EXPECT_FALSE(mesh.IsValidElementID(second));
  EXPECT_EQ(mesh.GetVertexCount(), 0);
  EXPECT_FALSE(mesh.RemoveVertex(0));

  const CHU_DPolygon ring = Ring({A, B, C, D});
  const int r = mesh.AddPolygon(&ring, 0, kWeld);
  EXPECT_TRUE(mesh.RemoveVertex(mesh.FindVertex(A, -1)));  // the first corner: the ring re-closes
  const std::vector<int> list = mesh.VertexList(r);
  EXPECT_EQ(list.size(), 4u);
  EXPECT_EQ(list.front(), list.back());
  mesh.SelectPolygon(P(5, 5), 0.0);
  EXPECT_EQ(mesh.RemovePolygons(true), 1);
  EXPECT_EQ(mesh.GetVertexCount(), 0);
}

TEST(BoundaryMeshTest, SelectionPicksTheNearestAndBreaksTiesByMapOrder) {
  TestMesh mesh;
  const CHU_DPolyLine l1 = Line({P(0, 0), P(10, 0)});
  const CHU_DPolyLine l2 = Line({P(0, 2), P(10, 2)});
  const CHU_DPolyLine l3 = Line({P(0.2, 1.2), P(-10, 1.2)});
  mesh.AddPolyline(&l1, 0, kWeld);
  mesh.AddPolyline(&l2, 0, kWeld);
  mesh.AddPolyline(&l3, 5, kWeld);

  EXPECT_TRUE(mesh.SelectVertex(P(0, 1), 1.0, false));
  EXPECT_EQ(mesh.GetLastSelectedVertexID(), 4);
  // Of type 0, (0,0) and (0,2) are equally near (0,1): the earlier wins.
  EXPECT_TRUE(mesh.SelectVertex(P(0, 1), 1.0, false, 0));
  EXPECT_EQ(mesh.GetLastSelectedVertexID(), 0);
  EXPECT_TRUE(mesh.SelectVertex(P(0, 1.1), 1.0, false, 0));
  EXPECT_EQ(mesh.GetLastSelectedVertexID(), 2);
  EXPECT_FALSE(mesh.SelectVertex(P(0, 1.1), 1.0, true));
  EXPECT_EQ(mesh.GetLastSelectedVertexID(), -1);  // a failed selection forgets the last one
  EXPECT_FALSE(mesh.SelectVertex(P(0, 1), -1.0, false));

  EXPECT_EQ(mesh.SelectPolyline(P(5, 1), 1.0), 0);  // tie between lines 0 and 1
  EXPECT_EQ(mesh.SelectPolyline(P(5, 1.8), 1.0), 1);
  EXPECT_EQ(mesh.SelectPolyline(P(5, 5), 1.0), -1);
  EXPECT_EQ(mesh.GetSelectedPolylineCount(), 2);
  EXPECT_TRUE(mesh.SelectVertex(P(0, 1.1), 1.0, true));
  EXPECT_EQ(mesh.GetLastSelectedVertexID(), 2);  // (0.2, 1.2) is nearer but on an unselected line
  EXPECT_EQ(mesh.GetSelectedPolylineIDAtPoint(P(0.1, 1.3), 1.0), 1);
  EXPECT_EQ(mesh.DeselectAllElementsOfType(), 2);
  EXPECT_EQ(mesh.SelectPolyline(CHU_DRect(-11, 1.6, 11, -1)), 2);  // lines wholly inside the window
  std::vector<int> ids;
  EXPECT_EQ(mesh.GetAllSelectedPolylineIDs(ids), 2);
  EXPECT_EQ(ids, (std::vector<int>{0, 2}));

  const CHU_DPolygon outer = Ring({P(-10, -10), P(20, -10), P(20, 20), P(-10, 20)});
  const CHU_DPolygon inner = Ring({P(4, 4), P(6, 4), P(6, 6), P(4, 6)});
  const int o = mesh.AddPolygon(&outer, 0, kWeld);
  const int i = mesh.AddPolygon(&inner, 0, kWeld);
  EXPECT_EQ(mesh.SelectPolygon(P(5, 5.5), 0.0), i);  // inside both: the nearer boundary
  EXPECT_EQ(mesh.SelectPolygon(P(-10.5, 0), 1.0), o);
  EXPECT_EQ(mesh.SelectPoint(P(5, 5), 1.0), -1);
}

TEST(BoundaryMeshTest, VertexSnapTakesTheFirstMatchAndElementSnapProjects) {
  TestMesh mesh;
  const CHU_DPolyLine far = Line({P(1.0, 0, 7), P(20, 0, 9)});
  const CHU_DPolyLine near = Line({P(0.1, 0, 3), P(0.1, 20, 3)});
  mesh.AddPolyline(&far, 0, kWeld);
  mesh.AddPolyline(&near, 2, kWeld);
  CHU_DPoint out;
  EXPECT_TRUE(mesh.Snap(out, P(0, 0), 1.0, -1, -1, false));
  EXPECT_EQ(out.x, 1.0);  // first in map order, though (0.1, 0) is nearer
  EXPECT_EQ(out.z, 7.0);
  EXPECT_TRUE(mesh.Snap(out, P(0, 0), 1.0, 2, -1, false));
  EXPECT_EQ(out.x, 0.1);
  EXPECT_FALSE(mesh.Snap(out, P(0, 0), 1.0, 3, -1, false));
  EXPECT_FALSE(mesh.Snap(out, P(0, 0), -1.0, -1, -1, false));

  EXPECT_TRUE(mesh.Snap(out, P(10, 0.5), 1.0, -1, -1, true));  // onto the segment, z interpolated
  EXPECT_DOUBLE_EQ(out.x, 10.0);
  EXPECT_DOUBLE_EQ(out.y, 0.0);
  EXPECT_NEAR(out.z, 7.0 + 2.0 * 9.0 / 19.0, 1e-12);
  EXPECT_TRUE(mesh.Snap(out, P(19.5, 0.5), 1.0, -1, -1, true));  // a corner in the box wins
  EXPECT_EQ(out.x, 20.0);
  EXPECT_TRUE(mesh.Snap(out, P(0.5, 10), 1.0, -1, -1, true));
  EXPECT_EQ(out.x, 0.1);
  EXPECT_FALSE(mesh.Snap(out, P(5, 5), 1.0, -1, -1, true));
}

TEST(BoundaryMeshTest, ReadingBackGeometryCountsAndSequences) {
  TestMesh mesh;
  const CHU_DPolygon ring = Ring({A, B, C});
  const CHU_DPolyLine line = Line({C, D});
  const int r = mesh.ProtectedAddPolygon(&ring, 0, 9, kWeld);
  const int l = mesh.AddPolyline(&line, 1, kWeld);
  const int p = mesh.AddPoint(P(3, 4, 5), 1);
  CHU_DPolygon outRing;
  ASSERT_TRUE(mesh.GetPolygon(r, &outRing));
  EXPECT_EQ(outRing.GetCount(), 3);  // the closing repeat is left out
  CHU_DPolyLine outLine;
  EXPECT_FALSE(mesh.GetPolyline(r, &outLine));
  ASSERT_TRUE(mesh.GetPolyline(l, &outLine));
  EXPECT_EQ(outLine.GetAt(1)->y, 10.0);
  CHU_DPoint outPoint;
  ASSERT_TRUE(mesh.GetPoint(p, outPoint));
  EXPECT_EQ(outPoint.z, 5.0);
  CHU_DRect extent;
  ASSERT_TRUE(mesh.GetExtents(extent));
  EXPECT_EQ(std::pair(extent.Right(), extent.Top()), std::pair(10.0, 10.0));
  EXPECT_EQ(std::pair(mesh.GetElementCount(1), mesh.GetPolygonCount(1)), std::pair(2, 0));

  std::vector<int> ids;
  std::unordered_map<int, int> places;
  mesh.CreateElementIDSequence(ids, places);
  EXPECT_EQ(ids, (std::vector<int>{9, 10, 11}));  // ascending, though 9 was stored first
  EXPECT_EQ(places.at(11), 2);
  mesh.CreatePolylineIDSequence(ids, places);
  EXPECT_EQ(ids, (std::vector<int>{10}));

  std::vector<CHU_DPoint> around;
  EXPECT_EQ(mesh.GetAllConnectedVertices(C, around, true), 3);  // B and A from the ring, D from the line
  around.clear();
  EXPECT_EQ(mesh.GetConnectedVerticesInElement(r, A, around, false), 2);
  EXPECT_TRUE(around[0] == C && around[1] == B);
  std::vector<int> found;
  EXPECT_EQ(mesh.FindPolygonsAndPolylinesWithGivenVertices({C, A}, found), 1);
  EXPECT_EQ(found, (std::vector<int>{r}));

  EXPECT_TRUE(mesh.SetPolyline(l, &ring));  // a ring's points as a line: C stays shared
  EXPECT_EQ(mesh.VertexList(l).size(), 3u);
  EXPECT_EQ(mesh.GetVertexCount(), 6);     // D went; A and B are new: only the line's own corners are reused
  EXPECT_FALSE(mesh.SetPolyline(r, &line));
}

// The box index takes new vertices in batches and drops removed or moved ones
// lazily; through bulk loads, incremental batches and rebuilds it must keep
// answering exactly what a scan of the vertices answers.
TEST(BoundaryMeshTest, BoxSearchesMatchAScanThroughBatchesMovesAndRemovals) {
  TestMesh mesh;
  std::mt19937 rng(11);
  auto coordinate = [&rng] { return static_cast<double>(rng() % 200) * 0.5; };
  auto check = [&mesh, &coordinate](const char* phase) {
    for (int probe = 0; probe < 20; ++probe) {
      const CHU_DPoint p(coordinate(), coordinate(), 0.0);
      std::vector<int> scan;
      for (int id : mesh.VertexIDs()) {
        const CHU_DPoint* v = mesh.GetVertexPosition(id);
        if (std::abs(v->x - p.x) <= 2.0 && std::abs(v->y - p.y) <= 2.0) scan.push_back(id);
      }
      ASSERT_EQ(mesh.FindAllVerticesNearPosition(p, 2.0), scan) << phase;
    }
  };
  for (int i = 0; i < 3000; ++i) mesh.AddPoint(CHU_DPoint(coordinate(), coordinate(), 0.0), 0);
  check("bulk load");
  for (int i = 0; i < 300; ++i) mesh.AddPoint(CHU_DPoint(coordinate(), coordinate(), 0.0), 0);
  check("incremental batch");
  for (int round = 0; round < 6; ++round) {
    const std::vector<int> ids = mesh.VertexIDs();
    for (std::size_t i = 0; i < ids.size(); i += 3) mesh.MoveVertex(ids[i], CHU_DPoint(coordinate(), coordinate(), 0.0));
    for (std::size_t i = 1; i < ids.size(); i += 9) mesh.RemoveElement(static_cast<int>(i));
    for (int i = 0; i < 40; ++i) mesh.AddPoint(CHU_DPoint(coordinate(), coordinate(), 0.0), 0);
    check("moves and removals");
    if (HasFatalFailure()) return;
  }
}

TEST(BoundaryMeshTest, BadInputGetsNothingAndNeverCrashes) {
  TestMesh mesh;
  const CHU_DPolyLine empty;
  EXPECT_EQ(std::tuple(mesh.AddPolyline(nullptr, 0, kWeld), mesh.AddPolygon(nullptr, 0, kWeld),
                       mesh.AddPolyline(&empty, 0, kWeld), mesh.AddPolygonUsingVertices({4, 5, 6}, 0),
                       mesh.AddPoint(77, 0, -1)),
            std::tuple(-1, -1, -1, -1, -1));
  EXPECT_EQ(mesh.GetVertexCount(), 0);

  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const CHU_DPolyLine odd = Line({P(nan, 0), P(inf, 1), P(0.0, 1)});
  const int id = mesh.AddPolyline(&odd, 11, kWeld);  // a type-11 line without a store
  ASSERT_GE(id, 0);
  EXPECT_EQ(mesh.FindVertex(P(nan, 0), -1), -1);
  EXPECT_EQ(mesh.FindVertex(P(inf, 1), -1), 1);
  EXPECT_EQ(mesh.FindVertex(P(-0.0, 1), -1), 2);  // -0.0 equals 0.0, so it is the same position
  EXPECT_EQ(mesh.FindAllVerticesNearPosition(P(0, 0), inf), (std::vector<int>{1, 2}));
  EXPECT_TRUE(mesh.FindAllVerticesNearPosition(P(0, 0), nan).empty());
  EXPECT_FALSE(mesh.MoveVertex(99, P(0, 0)) || mesh.GetPolyline(id, nullptr) || mesh.SetElementSetID(99, 1) ||
               mesh.IsElementSelected(99));
  EXPECT_EQ(mesh.GetVertexPosition(99), nullptr);
  EXPECT_EQ(mesh.GetElementType(99), -1);
  EXPECT_EQ(mesh.InsertVertex(P(0, 0), P(nan, 0), P(1, 1)), -1);
  EXPECT_TRUE(mesh.MoveVertex(0, P(2, 2)));  // a NaN vertex moved back into the indexes
  EXPECT_EQ(mesh.FindVertex(P(2, 2), 11), 0);
  mesh.Cleanup();
  EXPECT_EQ(mesh.GetElementCount(), 0);
  EXPECT_EQ(mesh.NextElementID(), 0);
}

TEST(BoundaryMeshTest, MeshIsCreatableByClassNameAndCornerListsAreReplacedNotAppended) {
  const auto object = CHU_RuntimeClassRegistry::Create("CHU_DBoundaryMesh");
  EXPECT_NE(dynamic_cast<CHU_DBoundaryMesh*>(object.get()), nullptr);
  CMeshGenTechParams tech;
  CHU_DPoint p1, p2;
  tech.SetCoonsParams({&p1, &p2});
  tech.SetCoonsParams({&p2});
  std::vector<CHU_DPoint*> corners;
  tech.GetCoonsParams(corners);
  EXPECT_EQ(corners, (std::vector<CHU_DPoint*>{&p2}));
}

}  // namespace
