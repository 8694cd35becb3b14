// Filters and ID iterators: what each filter accepts, composites with missing
// operands, iterator copies owning their own filter clones, and walks in
// insertion order.

#include <gtest/gtest.h>

#include <tuple>

#include "hy_util/mesh/element_filter.h"
#include "mesh_test_support.h"

namespace {

std::vector<int> Drain(CHU_DBoundaryMesh_ElementIDIterator it) {
  std::vector<int> ids;
  while (it.HasNext()) ids.push_back(it.Next());
  return ids;
}

TEST(ElementFilterTest, KindTypeAndSetFiltersAndTheirComposites) {
  CHU_DBoundaryMeshPoint point(1);
  CHU_DBoundaryMeshPolyline line(2);
  CHU_DBoundaryMeshPolygon ring(3);
  line.SetType(11);
  ring.SetSetID(4);
  struct Case {
    const char* name;
    std::unique_ptr<IHU_DBoundaryMesh_ElementFilter> filter;
    bool point, line, ring, null;
  };
  Case cases[] = {
      {"point", std::make_unique<CHU_DBoundaryMesh_PointFilter>(), true, false, false, false},
      {"polyline", std::make_unique<CHU_DBoundaryMesh_PolylineFilter>(), false, true, false, false},
      {"polygon", std::make_unique<CHU_DBoundaryMesh_PolygonFilter>(), false, false, true, false},
      {"type 11", std::make_unique<CHU_DBoundaryMesh_ElementTypeFilter>(11), false, true, false, false},
      {"type -1", std::make_unique<CHU_DBoundaryMesh_ElementTypeFilter>(-1), true, false, true, false},
      {"set 4", std::make_unique<CHU_DBoundaryMesh_ElementSetIDFilter>(4), false, false, true, false},
      {"and of nulls", std::make_unique<CHU_DBoundaryMesh_CompositeElementFilter_Intersection>(nullptr, nullptr),
       true, true, true, true},
      {"or of nulls", std::make_unique<CHU_DBoundaryMesh_CompositeElementFilter_Union>(nullptr, nullptr), true,
       true, true, true},
      {"point or set 4",
       std::make_unique<CHU_DBoundaryMesh_CompositeElementFilter_Union>(
           new CHU_DBoundaryMesh_PointFilter, new CHU_DBoundaryMesh_ElementSetIDFilter(4)),
       true, false, true, false},
      {"polyline and type 11",
       std::make_unique<CHU_DBoundaryMesh_CompositeElementFilter_Intersection>(
           new CHU_DBoundaryMesh_PolylineFilter, new CHU_DBoundaryMesh_ElementTypeFilter(11)),
       false, true, false, false},
  };
  for (const Case& c : cases) {
    const std::unique_ptr<IHU_DBoundaryMesh_ElementFilter> clone(c.filter->Clone());
    for (const IHU_DBoundaryMesh_ElementFilter* f : {c.filter.get(), clone.get()}) {
      EXPECT_EQ(f->AcceptElement(&point), c.point) << c.name;
      EXPECT_EQ(f->AcceptElement(&line), c.line) << c.name;
      EXPECT_EQ(f->AcceptElement(&ring), c.ring) << c.name;
      EXPECT_EQ(f->AcceptElement(nullptr), c.null) << c.name;
    }
  }
}

TEST(ElementFilterTest, CopiedCompositesShareOperandsAndOutliveTheirSource) {
  CHU_DBoundaryMeshPoint point(1);
  auto source = std::make_unique<CHU_DBoundaryMesh_CompositeElementFilter_Union>(
      new CHU_DBoundaryMesh_PointFilter, new CHU_DBoundaryMesh_PolygonFilter);
  CHU_DBoundaryMesh_CompositeElementFilter_Union copy(*source);
  CHU_DBoundaryMesh_CompositeElementFilter_Union assigned(nullptr, nullptr);
  assigned = copy;
  EXPECT_EQ(copy.GetFirst(), source->GetFirst());
  source.reset();
  EXPECT_TRUE(copy.AcceptElement(&point) && assigned.AcceptElement(&point));
}

TEST(IdIteratorTest, WalksInInsertionOrderWithTheRightFilters) {
  TestMesh mesh;
  EXPECT_FALSE(mesh.GetElementIDIterator().HasNext());
  EXPECT_EQ(std::tuple(mesh.GetElementIDIterator().Next(), mesh.GetVertexIDIterator().Next(),
                       mesh.GetElementSetIDIterator().Next()),
            std::tuple(-1, -1, -1));

  const CHU_DPolyLine line = Line({P(0, 0), P(1, 0)});
  const CHU_DPolygon ring = Ring({P(0, 0), P(1, 0), P(1, 1)});
  mesh.ProtectedAddPolygon(&ring, 3, 20, CHU_DBoundaryMesh::WELD_EXISTING);
  mesh.ProtectedAddPolyline(&line, 3, 5, CHU_DBoundaryMesh::WELD_EXISTING);
  mesh.AddPoint(P(0, 0), 7, 9);
  mesh.SetElementSetID(5, 2);
  mesh.SetElementSetID(9, 2);

  EXPECT_EQ(Drain(mesh.GetElementIDIterator()), (std::vector<int>{20, 5, 9}));
  EXPECT_EQ(Drain(mesh.GetPolylineIDIterator()), (std::vector<int>{5}));
  EXPECT_EQ(Drain(mesh.GetPolygonIDIterator(3)), (std::vector<int>{20}));
  EXPECT_EQ(Drain(mesh.GetElementIDIterator(3, 2)), (std::vector<int>{5}));
  EXPECT_EQ(Drain(mesh.GetElementIDIterator(-1, 2)), (std::vector<int>{5, 9}));
  EXPECT_EQ(Drain(mesh.GetPointIDIterator(3)), (std::vector<int>{}));

  const CHU_DBoundaryMeshVertex* origin = mesh.GetVertex(mesh.FindVertex(P(0, 0), -1));
  EXPECT_EQ(Drain(origin->GetElementIDIterator()), (std::vector<int>{20, 5}));
  EXPECT_EQ(Drain(origin->GetPolygonIDIterator()), (std::vector<int>{20}));
  EXPECT_EQ(Drain(origin->GetPointIDIterator()), (std::vector<int>{}));

  mesh.SetElementSetType(2, 4);
  mesh.AddElementSet("other");
  auto sets = mesh.GetElementSetIDIterator(4);
  EXPECT_EQ(sets.Next(), 2);
  EXPECT_FALSE(sets.HasNext());
  sets.Reset();
  EXPECT_TRUE(sets.HasNext());
}

TEST(IdIteratorTest, CopiesCloneTheFilterAndResetStartsOver) {
  TestMesh mesh;
  const CHU_DPolyLine line = Line({P(0, 0), P(1, 0)});
  for (int i = 0; i < 3; ++i) mesh.AddPolyline(&line, i % 2, CHU_DBoundaryMesh::NO_WELD);
  auto source = mesh.GetPolylineIDIterator(1, -1);
  {
    auto copy = source;
    EXPECT_EQ(copy.Next(), 1);
    auto assigned = mesh.GetElementIDIterator();
    assigned = copy;
    EXPECT_FALSE(assigned.HasNext());
  }
  EXPECT_EQ(source.Next(), 1);  // the source's filter survived the copies
  EXPECT_EQ(source.Next(), -1);
  source.Reset();
  EXPECT_EQ(Drain(source), (std::vector<int>{1}));
}

}  // namespace
