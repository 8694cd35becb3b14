#include "hy_util/mesh/boundary_mesh.h"

#include <algorithm>
#include <climits>
#include <type_traits>

HU_IMPLEMENT_DYNCREATE(CHU_DBoundaryMesh)

CHU_DBoundaryMesh::CHU_DBoundaryMesh() = default;

CHU_DBoundaryMesh::~CHU_DBoundaryMesh() { Cleanup(); }

// ---- Life ----

void CHU_DBoundaryMesh::Cleanup() {
  // Elements and sets go first: they point at vertices and at each other.
  m_sets.Clear();
  m_elements.Clear();
  m_index.Clear();
  m_vertices.Clear();
  m_polygonCount = m_polylineCount = m_pointCount = 0;
  m_nextVertexId = m_nextElementId = m_nextElementSetId = 0;
  m_lastSelectedVertex = -1;
  m_selectedVertices.clear();
  m_nextMapOrder = 0;
}

void CHU_DBoundaryMesh::PreallocateElementStorage(int n) {
  if (!m_vertices.Empty() || !m_elements.Empty() || !m_sets.Empty()) Cleanup();
  if (n > 0) m_elements.Reserve(static_cast<std::size_t>(n * 1.2));
}

void CHU_DBoundaryMesh::PreallocateVertexStorage(int n) {
  if (!m_vertices.Empty() || !m_elements.Empty() || !m_sets.Empty()) Cleanup();
  if (n > 0) {
    m_vertices.Reserve(static_cast<std::size_t>(n * 1.2));
    m_index.Reserve(static_cast<std::size_t>(n * 1.2));
  }
}

// ---- IDs ----

int CHU_DBoundaryMesh::TakeNext(std::int64_t& counter) {
  if (counter > INT_MAX) return -1;
  return static_cast<int>(counter++);
}

int CHU_DBoundaryMesh::AllocateID(std::int64_t& counter, bool taken, int asked) {
  if (counter <= asked) counter = static_cast<std::int64_t>(asked) + 1;
  if (asked >= 0 && !taken) return asked;
  return TakeNext(counter);
}

int CHU_DBoundaryMesh::NextVertexID() { return TakeNext(m_nextVertexId); }
int CHU_DBoundaryMesh::NextElementID() { return TakeNext(m_nextElementId); }
int CHU_DBoundaryMesh::NextElementSetID() { return TakeNext(m_nextElementSetId); }

// ---- Element sets ----

int CHU_DBoundaryMesh::AddElementSet(const std::string& name) { return AddElementSet(-1, name); }

int CHU_DBoundaryMesh::AddElementSet(int id, const std::string& name) {
  const int setId = AllocateID(m_nextElementSetId, m_sets.Contains(id), id);
  if (setId < 0) return -1;
  m_sets.Adopt(setId, std::make_unique<CHU_DBoundaryMeshElementSet>(setId, name));
  return setId;
}

void CHU_DBoundaryMesh::AddElementToSet(CHU_DBoundaryMeshElement* element, int setId) {
  if (element == nullptr || setId < 0) return;
  CHU_DBoundaryMeshElementSet* set = m_sets.Find(setId);
  if (set == nullptr) {
    if (AddElementSet(setId, "Unnamed") != setId) return;
    set = m_sets.Find(setId);
  }
  set->AddElement(element);
  element->SetSetID(setId);
}

bool CHU_DBoundaryMesh::RemoveElementSet(int id, bool removeElements) {
  CHU_DBoundaryMeshElementSet* set = m_sets.Find(id);
  if (set == nullptr) return false;
  std::vector<int> members;
  for (const auto& entry : set->GetMembers()) members.push_back(entry.id);
  for (int elementId : members) {
    if (removeElements) {
      RemoveElement(elementId);
    } else {
      SetElementSetID(elementId, -1);
    }
  }
  m_sets.Erase(id);
  return true;
}

int CHU_DBoundaryMesh::GetElementSetID(int elementId) const {
  const CHU_DBoundaryMeshElement* element = m_elements.Find(elementId);
  return element == nullptr ? -1 : element->GetSetID();
}

bool CHU_DBoundaryMesh::SetElementSetID(int elementId, int setId) {
  CHU_DBoundaryMeshElement* element = m_elements.Find(elementId);
  if (element == nullptr) return false;
  if (CHU_DBoundaryMeshElementSet* old = m_sets.Find(element->GetSetID())) old->RemoveElement(element);
  element->SetSetID(-1);
  AddElementToSet(element, setId);
  return true;
}

std::string CHU_DBoundaryMesh::GetElementSetName(int setId) const {
  const CHU_DBoundaryMeshElementSet* set = m_sets.Find(setId);
  return set == nullptr ? std::string() : set->GetName();
}

bool CHU_DBoundaryMesh::SetElementSetName(int setId, const std::string& name) {
  CHU_DBoundaryMeshElementSet* set = m_sets.Find(setId);
  if (set != nullptr) set->SetName(name);
  return set != nullptr;
}

int CHU_DBoundaryMesh::GetElementSetType(int setId) const {
  const CHU_DBoundaryMeshElementSet* set = m_sets.Find(setId);
  return set == nullptr ? -1 : set->GetType();
}

bool CHU_DBoundaryMesh::SetElementSetType(int setId, int type) {
  CHU_DBoundaryMeshElementSet* set = m_sets.Find(setId);
  if (set != nullptr) set->SetType(type);
  return set != nullptr;
}

int CHU_DBoundaryMesh::EnsureElementsHaveAssignedSet(int type, const std::string& name) {
  int setId = -1;
  for (const auto& entry : m_sets) {
    if (entry.object->GetName() == name) {
      setId = entry.id;
      break;
    }
  }
  for (int elementId : CollectIDs(Kind::Any, type, -1, false)) {
    CHU_DBoundaryMeshElement* element = m_elements.Find(elementId);
    if (element->GetSetID() >= 0 && m_sets.Contains(element->GetSetID())) continue;
    if (setId < 0) setId = AddElementSet(name);
    if (setId < 0) return -1;
    SetElementSetID(elementId, setId);
  }
  return setId;
}

CHU_DBoundaryMesh_ElementSetIDIterator CHU_DBoundaryMesh::GetElementSetIDIterator(int type) const {
  return CHU_DBoundaryMesh_ElementSetIDIterator(&m_sets, type);
}

// ---- Vertices: creation and lookup ----

CHU_DBoundaryMeshVertex* CHU_DBoundaryMesh::CreateVertex(const CHU_DPoint& position) {
  const int id = NextVertexID();
  if (id < 0) return nullptr;
  auto vertex = std::make_unique<CHU_DBoundaryMeshVertex>(id);
  vertex->SetPosition(position);
  vertex->m_mapOrder = m_nextMapOrder++;
  CHU_DBoundaryMeshVertex* raw = vertex.get();
  m_vertices.Adopt(id, std::move(vertex));
  m_index.Insert(raw);
  return raw;
}

void CHU_DBoundaryMesh::DestroyVertex(CHU_DBoundaryMeshVertex* vertex) {
  if (vertex->GetID() == m_lastSelectedVertex) m_lastSelectedVertex = -1;
  m_index.Remove(vertex);
  m_vertices.Erase(vertex->GetID());
}

int CHU_DBoundaryMesh::AddVertex(const CHU_DPoint& position) {
  const CHU_DBoundaryMeshVertex* vertex = CreateVertex(position);
  return vertex == nullptr ? -1 : vertex->GetID();
}

CHU_DBoundaryMesh_VertexIDIterator CHU_DBoundaryMesh::GetVertexIDIterator() const {
  return CHU_DBoundaryMesh_VertexIDIterator(&m_vertices);
}

const CHU_DPoint* CHU_DBoundaryMesh::GetVertexPosition(int id) const {
  const CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(id);
  return vertex == nullptr ? nullptr : &vertex->GetPosition();
}

std::vector<CHU_DBoundaryMeshVertex*> CHU_DBoundaryMesh::VerticesAt(const CHU_DPoint& position) const {
  std::vector<CHU_DBoundaryMeshVertex*> found;
  m_index.FindExact(position, found);
  return found;
}

std::vector<CHU_DBoundaryMeshVertex*> CHU_DBoundaryMesh::VerticesNear(const CHU_DPoint& position,
                                                                     double tolerance) const {
  std::vector<CHU_DBoundaryMeshVertex*> found;
  if (m_index.FindInBox(position, tolerance, found)) return found;
  for (const auto& entry : m_vertices) {
    if (HU_VertexIndex::InBox(entry.object->GetPosition(), position, tolerance)) found.push_back(entry.object);
  }
  return found;
}

int CHU_DBoundaryMesh::FindVertex(const CHU_DPoint& position, int type) const {
  if (type == -1) {
    const CHU_DBoundaryMeshVertex* vertex = m_index.FindFirstExact(position);
    return vertex == nullptr ? -1 : vertex->GetID();
  }
  for (const CHU_DBoundaryMeshVertex* vertex : VerticesAt(position)) {
    if (type == -1 || vertex->IsAttachedToElementOfType(type, -1)) return vertex->GetID();
  }
  return -1;
}

std::vector<int> CHU_DBoundaryMesh::FindAllVerticesAtPosition(const CHU_DPoint& position) const {
  std::vector<int> ids;
  for (const CHU_DBoundaryMeshVertex* vertex : VerticesAt(position)) ids.push_back(vertex->GetID());
  return ids;
}

std::vector<int> CHU_DBoundaryMesh::FindAllVerticesNearPosition(const CHU_DPoint& position, double tolerance) const {
  std::vector<int> ids;
  for (const CHU_DBoundaryMeshVertex* vertex : VerticesNear(position, tolerance)) ids.push_back(vertex->GetID());
  return ids;
}

bool CHU_DBoundaryMesh::IsVertexAttachedToElementOfType(int vertexId, int type, int setId) const {
  const CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(vertexId);
  return vertex != nullptr && vertex->IsAttachedToElementOfType(type, setId);
}

// ---- Adding ----

int* CHU_DBoundaryMesh::KindCounter(const CHU_DBoundaryMeshElement* element) {
  if (dynamic_cast<const CHU_DBoundaryMeshPolygon*>(element) != nullptr) return &m_polygonCount;
  if (dynamic_cast<const CHU_DBoundaryMeshPolyline*>(element) != nullptr) return &m_polylineCount;
  if (dynamic_cast<const CHU_DBoundaryMeshPoint*>(element) != nullptr) return &m_pointCount;
  return nullptr;
}

bool CHU_DBoundaryMesh::StoreElement(std::unique_ptr<CHU_DBoundaryMeshElement> element) {
  CHU_DBoundaryMeshElement* raw = element.get();
  if (!m_elements.Adopt(raw->GetID(), std::move(element))) return false;
  if (int* counter = KindCounter(raw)) ++*counter;
  return true;
}

int CHU_DBoundaryMesh::AddPoint(const CHU_DPoint& point, int type) { return AddPoint(point, type, -1); }

int CHU_DBoundaryMesh::AddPoint(const CHU_DPoint& point, int type, int elementId) {
  const int vertexId = AddVertex(point);
  const int id = AddPoint(vertexId, type, elementId);
  if (id < 0 && vertexId >= 0) DestroyVertex(m_vertices.Find(vertexId));
  return id;
}

int CHU_DBoundaryMesh::AddPoint(int vertexId, int type, int elementId) {
  CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(vertexId);
  if (vertex == nullptr) return -1;
  const int id = AllocateID(m_nextElementId, m_elements.Contains(elementId), elementId);
  if (id < 0) return -1;
  auto point = std::make_unique<CHU_DBoundaryMeshPoint>(id);
  point->SetType(type);
  point->AddVertex(vertex);
  vertex->OnElementAttach(point.get());
  StoreElement(std::move(point));
  return id;
}

std::vector<CHU_DBoundaryMeshVertex*> CHU_DBoundaryMesh::CornersFor(const CHU_DPolyLine* chain,
                                                                   WeldVerticesEnum weld) {
  std::vector<CHU_DBoundaryMeshVertex*> corners;
  if (chain == nullptr) return corners;
  corners.reserve(static_cast<std::size_t>(chain->GetCount()));
  for (int i = 0; i < chain->GetCount(); ++i) {
    const CHU_DPoint& p = *chain->GetAt(i);
    CHU_DBoundaryMeshVertex* vertex = nullptr;
    if (weld == WELD_EXISTING) vertex = m_index.FindFirstExact(p);
    if (vertex == nullptr) vertex = CreateVertex(p);
    if (vertex != nullptr) corners.push_back(vertex);
  }
  return corners;
}

std::vector<CHU_DBoundaryMeshVertex*> CHU_DBoundaryMesh::CornersFor(const std::vector<int>& vertexIds) const {
  std::vector<CHU_DBoundaryMeshVertex*> corners;
  for (int id : vertexIds) {
    if (CHU_DBoundaryMeshVertex* vertex = m_vertices.Find(id)) corners.push_back(vertex);
  }
  return corners;
}

template <class Element>
int CHU_DBoundaryMesh::AddChain(const std::vector<CHU_DBoundaryMeshVertex*>& corners, int type, int id) {
  auto owned = std::make_unique<Element>(id);
  Element* element = owned.get();
  element->SetType(type);
  element->PreallocateVertexStorage(static_cast<int>(corners.size()) + 1);
  StoreElement(std::move(owned));
  for (CHU_DBoundaryMeshVertex* vertex : corners) {
    element->AddVertex(vertex);
    vertex->OnElementAttach(element);
    InsertVertexData(id, type, element->GetVertexCount() - 1, false);
  }
  if constexpr (std::is_same_v<Element, CHU_DBoundaryMeshPolygon>) element->EnforceClosure();
  if (!element->IsValid()) {
    RemoveElement(id);
    DeleteVertexData(id, type, -1);
    return -1;
  }
  return id;
}

int CHU_DBoundaryMesh::ProtectedAddPolyline(const std::vector<int>& vertexIds, int type, int elementId) {
  const int id = AllocateID(m_nextElementId, m_elements.Contains(elementId), elementId);
  return id < 0 ? -1 : AddChain<CHU_DBoundaryMeshPolyline>(CornersFor(vertexIds), type, id);
}

int CHU_DBoundaryMesh::ProtectedAddPolyline(const CHU_DPolyLine* polyline, int type, int elementId,
                                            WeldVerticesEnum weld) {
  const int id = AllocateID(m_nextElementId, m_elements.Contains(elementId), elementId);
  return id < 0 ? -1 : AddChain<CHU_DBoundaryMeshPolyline>(CornersFor(polyline, weld), type, id);
}

int CHU_DBoundaryMesh::ProtectedAddPolygon(const std::vector<int>& vertexIds, int type, int elementId) {
  const int id = AllocateID(m_nextElementId, m_elements.Contains(elementId), elementId);
  return id < 0 ? -1 : AddChain<CHU_DBoundaryMeshPolygon>(CornersFor(vertexIds), type, id);
}

int CHU_DBoundaryMesh::ProtectedAddPolygon(const CHU_DPolyLine* polygon, int type, int elementId,
                                           WeldVerticesEnum weld) {
  const int id = AllocateID(m_nextElementId, m_elements.Contains(elementId), elementId);
  return id < 0 ? -1 : AddChain<CHU_DBoundaryMeshPolygon>(CornersFor(polygon, weld), type, id);
}

int CHU_DBoundaryMesh::AddPolyline(const CHU_DPolyLine* polyline, int type, WeldVerticesEnum weld) {
  return ProtectedAddPolyline(polyline, type, -1, weld);
}

int CHU_DBoundaryMesh::AddPolygon(const CHU_DPolygon* polygon, int type, WeldVerticesEnum weld) {
  return ProtectedAddPolygon(polygon, type, -1, weld);
}

int CHU_DBoundaryMesh::AddPolygonUsingVertices(const std::vector<int>& vertexIds, int type) {
  return ProtectedAddPolygon(vertexIds, type, -1);
}

bool CHU_DBoundaryMesh::SetPolyline(int id, const CHU_DPolyLine* polyline) {
  auto* line = dynamic_cast<CHU_DBoundaryMeshPolyline*>(m_elements.Find(id));
  if (line == nullptr || dynamic_cast<CHU_DBoundaryMeshPolygon*>(line) != nullptr) return false;
  if (polyline == nullptr || polyline->GetCount() < 2) return false;
  std::vector<CHU_DBoundaryMeshVertex*> old = line->GetVertices();
  const int oldCount = static_cast<int>(old.size());
  std::vector<CHU_DBoundaryMeshVertex*> corners;
  for (int i = 0; i < polyline->GetCount(); ++i) {
    const CHU_DPoint& p = *polyline->GetAt(i);
    const auto reuse = std::find_if(old.begin(), old.end(), [&p](const auto* v) { return v->GetPosition() == p; });
    CHU_DBoundaryMeshVertex* vertex = reuse != old.end() ? *reuse : CreateVertex(p);
    if (vertex == nullptr) return false;
    corners.push_back(vertex);
  }
  std::sort(old.begin(), old.end());
  old.erase(std::unique(old.begin(), old.end()), old.end());
  for (CHU_DBoundaryMeshVertex* vertex : old) vertex->OnElementDetach(line);
  line->RemoveAllVertices();
  for (CHU_DBoundaryMeshVertex* vertex : corners) {
    line->AddVertex(vertex);
    vertex->OnElementAttach(line);
  }
  for (CHU_DBoundaryMeshVertex* vertex : old) {
    if (vertex->IsOrphaned()) DestroyVertex(vertex);
  }
  const int type = line->GetType();
  const int newCount = line->GetVertexCount();
  for (int i = oldCount - 1; i >= newCount; --i) DeleteVertexData(id, type, i);
  for (int i = oldCount; i < newCount; ++i) InsertVertexData(id, type, i, false);
  return true;
}

// ---- Reading ----

int CHU_DBoundaryMesh::GetElementType(int id) const {
  const CHU_DBoundaryMeshElement* element = m_elements.Find(id);
  return element == nullptr ? -1 : element->GetType();
}

bool CHU_DBoundaryMesh::SetElementType(int id, int type) {
  CHU_DBoundaryMeshElement* element = m_elements.Find(id);
  if (element != nullptr) element->SetType(type);
  return element != nullptr;
}

bool CHU_DBoundaryMesh::GetPoint(int id, CHU_DPoint& point) const {
  const auto* element = dynamic_cast<const CHU_DBoundaryMeshPoint*>(m_elements.Find(id));
  if (element == nullptr || element->GetVertex() == nullptr) return false;
  point = element->GetVertex()->GetPosition();
  return true;
}

bool CHU_DBoundaryMesh::GetPolyline(int id, CHU_DPolyLine* polyline) const {
  const auto* line = dynamic_cast<const CHU_DBoundaryMeshPolyline*>(m_elements.Find(id));
  if (line == nullptr || dynamic_cast<const CHU_DBoundaryMeshPolygon*>(line) != nullptr || polyline == nullptr) {
    return false;
  }
  polyline->RemoveAll();
  for (const CHU_DBoundaryMeshVertex* vertex : line->GetVertices()) polyline->AddPt(vertex->GetPosition());
  return true;
}

bool CHU_DBoundaryMesh::GetPolygon(int id, CHU_DPolygon* polygon) const {
  const auto* ring = dynamic_cast<const CHU_DBoundaryMeshPolygon*>(m_elements.Find(id));
  if (ring == nullptr || polygon == nullptr) return false;
  polygon->RemoveAll();
  const auto& entries = ring->GetVertices();
  std::size_t count = entries.size();
  if (count >= 2 && entries.front() == entries.back()) --count;
  for (std::size_t i = 0; i < count; ++i) polygon->AddPt(entries[i]->GetPosition());
  return true;
}

bool CHU_DBoundaryMesh::GetExtents(CHU_DRect& rect) const {
  if (m_vertices.Empty()) return false;
  const CHU_DPoint& first = m_vertices.begin()->object->GetPosition();
  double left = first.x, right = first.x, top = first.y, bottom = first.y;
  for (const auto& entry : m_vertices) {
    const CHU_DPoint& p = entry.object->GetPosition();
    left = std::min(left, p.x), right = std::max(right, p.x);
    bottom = std::min(bottom, p.y), top = std::max(top, p.y);
  }
  rect.SetRect(left, top, right, bottom);
  return true;
}

IHU_DBoundaryMesh_ElementFilter* CHU_DBoundaryMesh::MakeFilter(Kind kind, int type, int setId) const {
  IHU_DBoundaryMesh_ElementFilter* typeSet = nullptr;
  if (type != -1 && setId != -1) {
    typeSet = new CHU_DBoundaryMesh_CompositeElementFilter_Intersection(
        new CHU_DBoundaryMesh_ElementTypeFilter(type), new CHU_DBoundaryMesh_ElementSetIDFilter(setId));
  } else if (type != -1) {
    typeSet = new CHU_DBoundaryMesh_ElementTypeFilter(type);
  } else if (setId != -1) {
    typeSet = new CHU_DBoundaryMesh_ElementSetIDFilter(setId);
  }
  IHU_DBoundaryMesh_ElementFilter* kindFilter = nullptr;
  switch (kind) {
    case Kind::Any: return typeSet;
    case Kind::Point: kindFilter = new CHU_DBoundaryMesh_PointFilter; break;
    case Kind::Polyline: kindFilter = new CHU_DBoundaryMesh_PolylineFilter; break;
    case Kind::Polygon: kindFilter = new CHU_DBoundaryMesh_PolygonFilter; break;
  }
  if (typeSet == nullptr) return kindFilter;
  return new CHU_DBoundaryMesh_CompositeElementFilter_Intersection(kindFilter, typeSet);
}

bool CHU_DBoundaryMesh::Accepts(const CHU_DBoundaryMeshElement* element, Kind kind, int type, int setId) const {
  if (type != -1 && element->GetType() != type) return false;
  if (setId != -1 && element->GetSetID() != setId) return false;
  const bool polygon = dynamic_cast<const CHU_DBoundaryMeshPolygon*>(element) != nullptr;
  switch (kind) {
    case Kind::Any: return true;
    case Kind::Point: return dynamic_cast<const CHU_DBoundaryMeshPoint*>(element) != nullptr;
    case Kind::Polyline: return !polygon && dynamic_cast<const CHU_DBoundaryMeshPolyline*>(element) != nullptr;
    case Kind::Polygon: return polygon;
  }
  return false;
}

std::vector<int> CHU_DBoundaryMesh::CollectIDs(Kind kind, int type, int setId, bool selectedOnly) const {
  std::vector<int> ids;
  for (const auto& entry : m_elements) {
    if (Accepts(entry.object, kind, type, setId) && (!selectedOnly || entry.object->IsSelected())) {
      ids.push_back(entry.id);
    }
  }
  return ids;
}

int CHU_DBoundaryMesh::CountKind(Kind kind, int type, int setId, bool selectedOnly) const {
  if (type == -1 && setId == -1 && !selectedOnly) {
    switch (kind) {
      case Kind::Any: return static_cast<int>(m_elements.Size());
      case Kind::Point: return m_pointCount;
      case Kind::Polyline: return m_polylineCount;
      case Kind::Polygon: return m_polygonCount;
    }
  }
  return static_cast<int>(CollectIDs(kind, type, setId, selectedOnly).size());
}

int CHU_DBoundaryMesh::GetElementCount(int type, int setId) const { return CountKind(Kind::Any, type, setId, false); }
int CHU_DBoundaryMesh::GetPointCount(int type, int setId) const { return CountKind(Kind::Point, type, setId, false); }
int CHU_DBoundaryMesh::GetPolylineCount(int type, int setId) const {
  return CountKind(Kind::Polyline, type, setId, false);
}
int CHU_DBoundaryMesh::GetPolygonCount(int type, int setId) const {
  return CountKind(Kind::Polygon, type, setId, false);
}

CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMesh::GetElementIDIterator(int type, int setId) const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_elements, MakeFilter(Kind::Any, type, setId));
}
CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMesh::GetPointIDIterator(int type, int setId) const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_elements, MakeFilter(Kind::Point, type, setId));
}
CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMesh::GetPolylineIDIterator(int type, int setId) const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_elements, MakeFilter(Kind::Polyline, type, setId));
}
CHU_DBoundaryMesh_ElementIDIterator CHU_DBoundaryMesh::GetPolygonIDIterator(int type, int setId) const {
  return CHU_DBoundaryMesh_ElementIDIterator(&m_elements, MakeFilter(Kind::Polygon, type, setId));
}

int CHU_DBoundaryMesh::GetAllElementIDsOfTypeAtPoint(const CHU_DPoint& point, std::vector<int>& ids,
                                                     int type) const {
  const std::size_t start = ids.size();
  for (const CHU_DBoundaryMeshVertex* vertex : VerticesAt(point)) {
    for (const auto& [id, element] : vertex->GetAttachedElements()) {
      if (type != -1 && element->GetType() != type) continue;
      if (std::find(ids.begin() + static_cast<std::ptrdiff_t>(start), ids.end(), id) == ids.end()) ids.push_back(id);
    }
  }
  return static_cast<int>(ids.size() - start);
}

int CHU_DBoundaryMesh::FindPolygonsAndPolylinesWithGivenVertices(const std::vector<CHU_DPoint>& points,
                                                                 std::vector<int>& ids) const {
  if (points.empty()) return 0;
  std::vector<int> candidates;
  GetAllElementIDsOfTypeAtPoint(points.front(), candidates, -1);
  int found = 0;
  for (int id : candidates) {
    const auto* line = dynamic_cast<const CHU_DBoundaryMeshPolyline*>(m_elements.Find(id));
    if (line == nullptr) continue;
    const bool all = std::all_of(points.begin() + 1, points.end(), [line](const CHU_DPoint& p) {
      return std::any_of(line->GetVertices().begin(), line->GetVertices().end(),
                         [&p](const CHU_DBoundaryMeshVertex* v) { return v->GetPosition() == p; });
    });
    if (all) ids.push_back(id), ++found;
  }
  return found;
}

// ---- Export support ----

void CHU_DBoundaryMesh::CreateSequence(Kind kind, std::vector<int>& ids, std::unordered_map<int, int>& places) const {
  ids = CollectIDs(kind, -1, -1, false);
  std::sort(ids.begin(), ids.end());
  places.clear();
  for (std::size_t i = 0; i < ids.size(); ++i) places[ids[i]] = static_cast<int>(i);
}

void CHU_DBoundaryMesh::CreatePointIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const {
  CreateSequence(Kind::Point, ids, places);
}
void CHU_DBoundaryMesh::CreatePolylineIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const {
  CreateSequence(Kind::Polyline, ids, places);
}
void CHU_DBoundaryMesh::CreatePolygonIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const {
  CreateSequence(Kind::Polygon, ids, places);
}
void CHU_DBoundaryMesh::CreateElementIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const {
  CreateSequence(Kind::Any, ids, places);
}

void CHU_DBoundaryMesh::CreateVertexIDSequence(std::vector<int>& ids, std::unordered_map<int, int>& places) const {
  ids.clear();
  for (const auto& entry : m_vertices) ids.push_back(entry.id);
  std::sort(ids.begin(), ids.end());
  places.clear();
  for (std::size_t i = 0; i < ids.size(); ++i) places[ids[i]] = static_cast<int>(i);
}

bool CHU_DBoundaryMesh::GetElementVertexIDList(int elementId, std::vector<int>& ids) const {
  const CHU_DBoundaryMeshElement* element = m_elements.Find(elementId);
  if (element == nullptr) return false;
  element->GetVertexIDList(ids);
  return true;
}
