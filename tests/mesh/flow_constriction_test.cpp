// Flow-constriction data lists: reading and writing by hand-written lists,
// including short, malformed and hostile ones, and the mesh keeping them in step
// when vertices are inserted into or removed from a type-11 line.

#include <gtest/gtest.h>

#include "hy_util/mesh/flow_constriction_list.h"
#include "mesh_test_support.h"

namespace {

using List = std::vector<std::string>;

TEST(FlowConstrictionListTest, ReadsHeadersAndBlocksAsFarAsTheListGoes) {
  struct Case {
    const char* name;
    List input;
    int n, c, v;
    List written;
  } cases[] = {
      {"empty", {}, 0, 0, 0, {"0", "0", "0"}},
      {"shorter than the header", {"5", "1"}, 0, 0, 0, {"0", "0", "0"}},
      {"empty count", {"", "2", "2"}, 0, 1, 0, {"0", "1", "0"}},
      {"zero count", {"0", "0", "4"}, 0, 1, 0, {"0", "1", "0"}},
      {"negative count", {"-5", "0", "3"}, 0, 1, 0, {"0", "1", "0"}},
      {"current block out of range", {"2", "5", "3", "0", "0"}, 2, 1, 0, {"2", "1", "0", "0", "0"}},
      {"well formed",
       {"3", "1", "2", "1", "3", "7.5", "1", "0", "a", "b", "0"}, 3, 1, 2,
       {"3", "1", "2", "1", "3", "7.5", "1", "0", "a", "b", "0"}},
      {"values cut short", {"3", "0", "4", "1", "2", "x"}, 3, 0, 4, {"3", "0", "4", "1", "2", "x"}},
      {"unknown mode carries no values", {"1", "0", "2", "1", "5", "0"}, 1, 0, 2, {"1", "0", "2", "1", "5"}},
      {"negative vertex count", {"1", "0", "-3", "1", "0"}, 1, 0, 0, {"1", "0", "0", "1", "0"}},
      {"huge counts", {"1e9", "0", "2e9"}, 1000000000, 0, 2000000000, {"1e+09", "0", "2e+09"}},
  };
  for (const Case& c : cases) {
    const HU_FlowConstrictionList list = HU_FlowConstrictionList::Parse(c.input);
    EXPECT_EQ(list.GetBlockCount(), c.n) << c.name;
    EXPECT_EQ(list.GetCurrentBlock(), c.c) << c.name;
    EXPECT_EQ(list.GetVertexCount(), c.v) << c.name;
    EXPECT_EQ(list.Write(), c.written) << c.name;
    EXPECT_LE(list.GetBlocks().size(), c.input.size()) << c.name;  // nothing sized by the header
  }
  EXPECT_EQ(HU_FlowConstrictionList::ReadInt(" 12.9"), 12);
  EXPECT_EQ(HU_FlowConstrictionList::ReadInt("nan"), 0);
  EXPECT_EQ(HU_FlowConstrictionList::ReadInt("-1e99"), INT_MIN);
  EXPECT_EQ(HU_FlowConstrictionList::FormatG(1234567.0), "1.23457e+06");
}

TEST(FlowConstrictionListTest, SingleLayerInsertsZeroDoubleLayerTheNeighbourMean) {
  const List input{"3", "0", "3", "1", "2", "10", "20", "30", "1", "0", "5", "x", "7", "1", "1", "9"};
  HU_FlowConstrictionList single = HU_FlowConstrictionList::Parse(input);
  single.InsertVertex(1, false);
  EXPECT_EQ(single.Write(),
            (List{"3", "0", "4", "1", "2", "10", "0", "20", "30", "1", "0", "5", "0", "x", "7", "1", "1", "9"}));
  HU_FlowConstrictionList twin = HU_FlowConstrictionList::Parse(input);
  twin.InsertVertex(1, true);
  EXPECT_EQ(twin.Write(),
            (List{"3", "0", "4", "1", "2", "10", "15", "20", "30", "1", "0", "5", "0", "x", "7", "1", "1", "9"}));
  twin.InsertVertex(4, true);  // an append has one neighbour only
  EXPECT_EQ(twin.GetBlocks()[0].firstValues.back(), "0");
  twin.DeleteVertex(1);
  twin.DeleteVertex(99);  // past every value list: only the count changes
  EXPECT_EQ(twin.Write(), (List{"3", "0", "3", "1", "2", "10", "20", "30", "0", "1", "0", "5", "x", "7", "0",
                                "1", "1", "9"}));
}

struct ConstrictionLine {
  TestMesh mesh;
  CHU_MemoryAttributeStore store;
  int id = -1;
  ConstrictionLine() {
    mesh.SetAttributeStore(&store);
    const CHU_DPolyLine line = Line({P(0, 0), P(10, 0), P(20, 0)});
    id = mesh.AddPolyline(&line, 11, CHU_DBoundaryMesh::WELD_EXISTING);
  }
  List Get(const char* key) const { return store.GetStringList(id, key); }
};

TEST(FlowConstrictionMeshTest, ConstructionAppendsAndEditsKeepListsInStep) {
  ConstrictionLine c;
  EXPECT_EQ(c.Get("F_2D_FCNG_DATA"), (List{"3", "0", "3", "0", "0", "0"}));
  const List levels{"3", "0", "3", "1", "2", "10", "20", "30", "0", "0"};
  for (const char* key : {"F_2D_FCLG_DATA", "F_2D_FCLG_DATA_L2"}) c.store.SetStringList(c.id, key, levels, 10);

  ASSERT_GE(c.mesh.InsertVertex(P(5, 0), P(0, 0), P(10, 0)), 0);
  EXPECT_EQ(c.Get("F_2D_FCLG_DATA"), (List{"3", "0", "4", "1", "2", "10", "15", "20", "30", "0", "0"}));
  EXPECT_EQ(c.Get("F_2D_FCLG_DATA_L2"), (List{"3", "0", "4", "1", "2", "10", "0", "20", "30", "0", "0"}));

  ASSERT_TRUE(c.mesh.RemoveVertex(c.mesh.FindVertex(P(10, 0), -1)));
  EXPECT_EQ(c.Get("F_2D_FCLG_DATA"), (List{"3", "0", "3", "1", "2", "10", "15", "30", "0", "0"}));
  EXPECT_EQ(c.Get("F_2D_FCLG_DATA_L3")[2], "3");

  c.mesh.InsertVertexData(c.id, 11, 1, false);  // not an append and not forced
  EXPECT_TRUE(c.Get("F_2D_FCLG_DATA").empty());
  c.mesh.InsertVertexData(c.id, 0, 0, true);    // other types are left alone
  EXPECT_TRUE(c.Get("F_2D_FCLG_DATA").empty());

  c.mesh.DeleteVertexData(c.id, 11, -1);
  EXPECT_EQ(c.store.GetFieldValue(c.id, "F_2D_FCLG_DATA_L3"), -1);
  EXPECT_EQ(c.store.GetFieldValue(c.id, "F_2D_FCXL_STRUCTWIDTH"), 0);
  EXPECT_TRUE(c.store.HasField(c.id, "F_2D_FCNG_MANNING"));
  EXPECT_TRUE(c.Get("F_2D_FCNG_DATA").empty());
}

TEST(FlowConstrictionMeshTest, RejectedLinesResetTheirRecordAndOtherTypesHaveNone) {
  ConstrictionLine c;
  const CHU_DPolyLine single = Line({P(3, 3)});
  const int next = c.mesh.NextElementID();  // the ID the rejected line will take
  EXPECT_EQ(c.mesh.AddPolyline(&single, 11, CHU_DBoundaryMesh::NO_WELD), -1);
  EXPECT_EQ(c.store.GetFieldValue(next + 1, "F_2D_FCNG_DATA"), -1);
  EXPECT_TRUE(c.store.GetStringList(next + 1, "F_2D_FCNG_DATA").empty());

  const CHU_DPolyLine plain = Line({P(3, 3), P(4, 4)});
  const int other = c.mesh.AddPolyline(&plain, 0, CHU_DBoundaryMesh::NO_WELD);
  EXPECT_FALSE(c.store.HasField(other, "F_2D_FCNG_DATA"));
}

TEST(FlowConstrictionMeshTest, HostileStoredListsStayBounded) {
  ConstrictionLine c;
  c.store.SetStringList(c.id, "F_2D_FCNG_DATA", {"2147483647", "0", "2147483647", "1", "2"}, 5);
  ASSERT_GE(c.mesh.InsertVertex(P(15, 0), P(10, 0), P(20, 0)), 0);
  const List after = c.Get("F_2D_FCNG_DATA");
  EXPECT_EQ(after, (List{"2.14748e+09", "0", "2.14748e+09", "1", "2"}));  // no place for the entry
  for (int i = 0; i < 20; ++i) c.mesh.RemoveVertex(c.mesh.InsertVertex(P(12, 0), P(10, 0), P(15, 0)));
  EXPECT_EQ(c.Get("F_2D_FCNG_DATA"), after);  // edits do not make the list grow
}

}  // namespace
