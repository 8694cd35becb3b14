#pragma once
// CHU_DBoundaryMeshElementSet: a numbered, named group of boundary-mesh elements
// (for example all breaklines of one source layer). It does not own its members;
// the mesh keeps each member's set ID and the set's member map in step.

#include <string>
#include <utility>

#include "hy_util/mesh/id_iterators.h"

class CHU_DBoundaryMeshElementSet {
 public:
  CHU_DBoundaryMeshElementSet(int id, std::string name) : m_id(id), m_name(std::move(name)) {}
  CHU_DBoundaryMeshElementSet(const CHU_DBoundaryMeshElementSet&) = delete;
  CHU_DBoundaryMeshElementSet& operator=(const CHU_DBoundaryMeshElementSet&) = delete;

  int GetID() const { return m_id; }
  void SetID(int id) { m_id = id; }
  int GetType() const { return m_type; }
  void SetType(int type) { m_type = type; }
  const std::string& GetName() const { return m_name; }
  void SetName(const std::string& name) { m_name = name; }

  // False for null or an element already (or not) a member.
  bool AddElement(CHU_DBoundaryMeshElement* element);
  bool RemoveElement(const CHU_DBoundaryMeshElement* element);
  // Members whose type code equals type; all members for -1.
  int GetElementCount(int type = -1) const;
  int GetPointCount() const { return m_pointCount; }
  int GetPolylineCount() const { return m_polylineCount; }
  int GetPolygonCount() const { return m_polygonCount; }
  const HU_ElementMap& GetMembers() const { return m_members; }

 private:
  int* KindCounter(const CHU_DBoundaryMeshElement* element);

  int m_id;
  int m_type = -1;
  int m_pointCount = 0;
  int m_polylineCount = 0;
  int m_polygonCount = 0;
  std::string m_name;
  HU_ElementMap m_members{false};
};
