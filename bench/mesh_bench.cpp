// Boundary-mesh speed at 10^4, 10^5 and 10^6 vertices: random breaklines on a
// 50 km square with 10% of their corners shared. Prints, per size, the build time
// per vertex (weld mode 0, which looks every corner up, and the first box search,
// which bulk-loads the R-tree) and, for each per-click
// operation, the CPU time per call beside a linear scan of the vertex or element map
// in the same run (what the mesh would do without its indexes), with the ratio.
// Goals: build time per vertex within 2x from 10^4 to 10^6; every per-click
// operation under 20 us at 10^6 and at least 1000x faster than the scan there.
//
//   bench_mesh [max_vertices]     (default 1000000)

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <ctime>
#include <vector>

#include "hy_util/mesh/boundary_mesh.h"

namespace {

constexpr double kExtent = 50000.0;
constexpr double kWeldTolerance = 5.0;
// A click: a few screen pixels at 1:10,000.
constexpr double kClickTolerance = 20.0;

class BenchMesh : public CHU_DBoundaryMesh {
 public:
  using CHU_DBoundaryMesh::GetElementMap;
  using CHU_DBoundaryMesh::GetVertexMap;
};

// CPU time of this thread: the machine may be shared, and wall time would then
// measure the neighbours.
double Now() {
  timespec t{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
  return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

// Breaklines of 2 to 20 corners wandering in 20-200 m steps; each corner has a
// one-in-ten chance of sitting exactly on an earlier corner.
std::vector<CHU_DPolyLine> MakeLines(std::size_t corners, std::mt19937_64& rng) {
  std::uniform_real_distribution<double> where(0.0, kExtent), step(-200.0, 200.0), z(0.0, 50.0);
  std::vector<CHU_DPolyLine> lines;
  std::vector<CHU_DPoint> used;
  used.reserve(corners);
  while (used.size() < corners) {
    CHU_DPolyLine line;
    CHU_DPoint p(where(rng), where(rng), z(rng));
    const int n = 2 + static_cast<int>(rng() % 19);
    for (int i = 0; i < n; ++i) {
      CHU_DPoint corner = p;
      if (!used.empty() && rng() % 10 == 0) corner = used[rng() % used.size()];
      line.AddPt(corner);
      used.push_back(corner);
      p.SetPt(std::clamp(p.x + step(rng), 0.0, kExtent), std::clamp(p.y + step(rng), 0.0, kExtent), z(rng));
    }
    lines.push_back(std::move(line));
  }
  return lines;
}

// Microseconds per call of op over calls calls.
double TimePerCall(int calls, const std::function<void(int)>& op) {
  const double start = Now();
  for (int i = 0; i < calls; ++i) op(i);
  return (Now() - start) * 1e6 / calls;
}

struct Row {
  const char* name;
  double indexed, scan;
};

void PrintRow(const Row& row) {
  std::printf("  %-16s %10.3f us %14.1f us %12.0fx\n", row.name, row.indexed, row.scan, row.scan / row.indexed);
}

void RunSize(std::size_t targetVertices, double& buildPerVertex) {
  std::mt19937_64 rng(targetVertices);
  const std::vector<CHU_DPolyLine> lines = MakeLines(targetVertices * 10 / 9, rng);
  // One cold build, as an import is: a repeated build would reuse freed memory
  // and flatter the small sizes most.
  BenchMesh mesh;
  const double start = Now();
  mesh.PreallocateVertexStorage(static_cast<int>(targetVertices));  // an importer knows its counts
  for (const CHU_DPolyLine& line : lines) mesh.AddPolyline(&line, 0, CHU_DBoundaryMesh::WELD_EXISTING);
  // The first box search bulk-loads the R-tree; it belongs to the build.
  benchmark::DoNotOptimize(mesh.FindAllVerticesNearPosition(CHU_DPoint(0, 0, 0), 1.0));
  const double build = Now() - start;
  const int vertices = mesh.GetVertexCount();
  buildPerVertex = build * 1e9 / vertices;
  std::printf("\n%d vertices, %d breaklines: build %.2f s, %.0f ns per vertex\n", vertices, mesh.GetPolylineCount(),
              build, buildPerVertex);

  std::vector<CHU_DPoint> existing, random;
  std::vector<int> lineIds;
  for (const auto& entry : mesh.GetVertexMap()) existing.push_back(entry.object->GetPosition());
  for (const auto& entry : mesh.GetElementMap()) lineIds.push_back(entry.id);
  std::shuffle(existing.begin(), existing.end(), rng);
  std::shuffle(lineIds.begin(), lineIds.end(), rng);
  std::uniform_real_distribution<double> where(0.0, kExtent);
  for (int i = 0; i < 4096; ++i) random.emplace_back(where(rng), where(rng), 0.0);
  const int calls = 2000;
  // Lines edited: half of them at most, so that the scan's lines are still there.
  const int lineCalls = std::min(calls, static_cast<int>(lineIds.size()) / 2 - 50);
  const int scans = targetVertices >= 1000000 ? 10 : 50;
  const auto& vmap = mesh.GetVertexMap();
  std::printf("  %-16s %13s %17s %13s\n", "operation", "indexed", "linear scan", "ratio");

  Row find{"FindVertex", 0, 0};
  find.indexed = TimePerCall(calls, [&](int i) { benchmark::DoNotOptimize(mesh.FindVertex(existing[i], -1)); });
  find.scan = TimePerCall(scans, [&](int i) {
    int id = -1;
    for (const auto& e : vmap) {
      if (e.object->GetPosition() == existing[i]) {
        id = e.id;
        break;
      }
    }
    benchmark::DoNotOptimize(id);
  });
  PrintRow(find);

  Row select{"SelectVertex", 0, 0};
  select.indexed = TimePerCall(calls, [&](int i) { benchmark::DoNotOptimize(mesh.SelectVertex(random[i], kClickTolerance, false)); });
  select.scan = TimePerCall(scans, [&](int i) {
    int best = -1;
    double bestD = 0;
    for (const auto& e : vmap) {
      const CHU_DPoint& p = e.object->GetPosition();
      const double dx = p.x - random[i].x, dy = p.y - random[i].y;
      if (std::abs(dx) > kClickTolerance || std::abs(dy) > kClickTolerance) continue;
      if (best < 0 || dx * dx + dy * dy < bestD) best = e.id, bestD = dx * dx + dy * dy;
    }
    benchmark::DoNotOptimize(best);
  });
  PrintRow(select);

  Row snap{"Snap (vertex)", 0, 0};
  CHU_DPoint out;
  snap.indexed = TimePerCall(calls, [&](int i) {
    benchmark::DoNotOptimize(mesh.Snap(out, random[i], kClickTolerance, -1, -1, false));
  });
  snap.scan = TimePerCall(scans, [&](int i) {
    for (const auto& e : vmap) {
      const CHU_DPoint& p = e.object->GetPosition();
      if (std::abs(p.x - random[i].x) <= kClickTolerance && std::abs(p.y - random[i].y) <= kClickTolerance &&
          !e.object->IsOrphaned()) {
        out = p;
        break;
      }
    }
    benchmark::DoNotOptimize(out);
  });
  PrintRow(snap);

  Row weld{"WeldVertices", 0, 0};
  int welded = 0;
  weld.indexed = TimePerCall(calls, [&](int i) { welded += mesh.WeldVertices(random[i], kWeldTolerance) ? 1 : 0; });
  weld.scan = TimePerCall(scans, [&](int i) {
    std::vector<int> near;
    for (const auto& e : vmap) {
      const CHU_DPoint& p = e.object->GetPosition();
      if (std::abs(p.x - random[i + calls].x) <= kWeldTolerance && std::abs(p.y - random[i + calls].y) <= kWeldTolerance) {
        near.push_back(e.id);
      }
    }
    benchmark::DoNotOptimize(near);
  });
  PrintRow(weld);

  // Insert at the middle of a segment of a random line; the scan finds the
  // vertices at both ends.
  Row insert{"InsertVertex", 0, 0};
  std::vector<std::pair<CHU_DPoint, CHU_DPoint>> segments;
  for (int i = 0; i < lineCalls; ++i) {
    std::vector<int> ids;
    mesh.GetElementVertexIDList(lineIds[i], ids);
    if (ids.size() < 2) continue;
    segments.emplace_back(*mesh.GetVertexPosition(ids[0]), *mesh.GetVertexPosition(ids[1]));
  }
  int inserted = 0;
  insert.indexed = TimePerCall(static_cast<int>(segments.size()), [&](int i) {
    const auto& [a, b] = segments[i];
    const CHU_DPoint mid((a.x + b.x) / 2, (a.y + b.y) / 2, a.z);
    inserted += mesh.InsertVertex(mid, a, b) >= 0 ? 1 : 0;
  });
  insert.scan = TimePerCall(scans, [&](int i) {
    int found = 0;
    for (const auto& e : vmap) {
      const CHU_DPoint& p = e.object->GetPosition();
      found += p == segments[i].first || p == segments[i].second;
    }
    benchmark::DoNotOptimize(found);
  });
  PrintRow(insert);

  // The scan answers what the attached maps answer: which vertices of the line
  // no other element uses.
  Row remove{"RemoveElement", 0, 0};
  const auto& emap = mesh.GetElementMap();
  remove.scan = TimePerCall(scans, [&](int i) {
    std::vector<int> ids, others;
    mesh.GetElementVertexIDList(lineIds[lineCalls + i], ids);
    int orphans = 0;
    for (int v : ids) {
      bool used = false;
      for (const auto& e : emap) {
        if (e.id == lineIds[lineCalls + i]) continue;
        others.clear();
        e.object->GetVertexIDList(others);
        if (std::find(others.begin(), others.end(), v) != others.end()) {
          used = true;
          break;
        }
      }
      orphans += used ? 0 : 1;
    }
    benchmark::DoNotOptimize(orphans);
  });
  remove.indexed = TimePerCall(lineCalls, [&](int i) { mesh.RemoveElement(lineIds[i]); });
  PrintRow(remove);
  std::printf("  (%d of %d welds merged vertices; %d of %zu inserts placed)\n", welded, calls, inserted,
              segments.size());
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t maxVertices = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
  std::printf("Boundary mesh: CPU time per call, indexed beside a linear scan of the map (same run)\n");
  std::vector<double> perVertex;
  for (std::size_t n = 10000; n <= maxVertices; n *= 10) {
    perVertex.push_back(0.0);
    RunSize(n, perVertex.back());
  }
  if (perVertex.size() >= 2) {
    std::printf("\nbuild time per vertex, largest / smallest size: %.2f (goal: at most 2)\n",
                perVertex.back() / perVertex.front());
    // The smallest mesh fits in the caches; the last step shows the growth alone.
    std::printf("build time per vertex, largest / next smaller size: %.2f\n",
                perVertex.back() / perVertex[perVertex.size() - 2]);
  }
  return 0;
}
