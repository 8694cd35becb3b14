#pragma once
// Element filters: small predicates over boundary-mesh elements that every walk of
// the mesh goes through (counts by type and set, selection, removal by kind, the
// iterators). Filters are cloned rather than shared; a composite owns its operands.

#include <memory>

class CHU_DBoundaryMeshElement;

class IHU_DBoundaryMesh_ElementFilter {
 public:
  virtual ~IHU_DBoundaryMesh_ElementFilter() = default;
  virtual bool AcceptElement(const CHU_DBoundaryMeshElement* element) const = 0;
  // A new filter of the same kind and state, owned by the caller.
  virtual IHU_DBoundaryMesh_ElementFilter* Clone() const = 0;
};

// Accepts a non-null element whose type code equals the filter's.
class CHU_DBoundaryMesh_ElementTypeFilter : public IHU_DBoundaryMesh_ElementFilter {
 public:
  explicit CHU_DBoundaryMesh_ElementTypeFilter(int type) : m_type(type) {}
  bool AcceptElement(const CHU_DBoundaryMeshElement* element) const override;
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;

 private:
  int m_type;
};

// Accepts a non-null element in the given set.
class CHU_DBoundaryMesh_ElementSetIDFilter : public IHU_DBoundaryMesh_ElementFilter {
 public:
  explicit CHU_DBoundaryMesh_ElementSetIDFilter(int setId) : m_setId(setId) {}
  bool AcceptElement(const CHU_DBoundaryMeshElement* element) const override;
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;

 private:
  int m_setId;
};

class CHU_DBoundaryMesh_PointFilter : public IHU_DBoundaryMesh_ElementFilter {
 public:
  bool AcceptElement(const CHU_DBoundaryMeshElement* element) const override;
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;
};

// Polylines only: a polygon is a polyline by class but is not accepted here.
class CHU_DBoundaryMesh_PolylineFilter : public IHU_DBoundaryMesh_ElementFilter {
 public:
  bool AcceptElement(const CHU_DBoundaryMeshElement* element) const override;
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;
};

class CHU_DBoundaryMesh_PolygonFilter : public IHU_DBoundaryMesh_ElementFilter {
 public:
  bool AcceptElement(const CHU_DBoundaryMeshElement* element) const override;
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;
};

// Combines two operand filters (either may be null, which counts as accepting)
// with BooleanOperation; both operands are always asked. The composite takes
// ownership of the operands given to its constructor. Copying a composite shares
// the source's operands (the last composite holding them deletes them, so copies
// may outlive each other in any order); use Clone for an independent composite.
class CHU_DBoundaryMesh_CompositeElementFilter : public IHU_DBoundaryMesh_ElementFilter {
 public:
  CHU_DBoundaryMesh_CompositeElementFilter(IHU_DBoundaryMesh_ElementFilter* first,
                                           IHU_DBoundaryMesh_ElementFilter* second)
      : m_first(first), m_second(second) {}
  CHU_DBoundaryMesh_CompositeElementFilter(const CHU_DBoundaryMesh_CompositeElementFilter&) = default;
  CHU_DBoundaryMesh_CompositeElementFilter& operator=(const CHU_DBoundaryMesh_CompositeElementFilter&) = default;

  bool AcceptElement(const CHU_DBoundaryMeshElement* element) const override;
  virtual bool BooleanOperation(bool a, bool b) const = 0;

  const IHU_DBoundaryMesh_ElementFilter* GetFirst() const { return m_first.get(); }
  const IHU_DBoundaryMesh_ElementFilter* GetSecond() const { return m_second.get(); }

 protected:
  IHU_DBoundaryMesh_ElementFilter* CloneFirst() const { return m_first ? m_first->Clone() : nullptr; }
  IHU_DBoundaryMesh_ElementFilter* CloneSecond() const { return m_second ? m_second->Clone() : nullptr; }

 private:
  std::shared_ptr<IHU_DBoundaryMesh_ElementFilter> m_first;
  std::shared_ptr<IHU_DBoundaryMesh_ElementFilter> m_second;
};

class CHU_DBoundaryMesh_CompositeElementFilter_Intersection : public CHU_DBoundaryMesh_CompositeElementFilter {
 public:
  using CHU_DBoundaryMesh_CompositeElementFilter::CHU_DBoundaryMesh_CompositeElementFilter;
  bool BooleanOperation(bool a, bool b) const override { return a && b; }
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;
};

class CHU_DBoundaryMesh_CompositeElementFilter_Union : public CHU_DBoundaryMesh_CompositeElementFilter {
 public:
  using CHU_DBoundaryMesh_CompositeElementFilter::CHU_DBoundaryMesh_CompositeElementFilter;
  bool BooleanOperation(bool a, bool b) const override { return a || b; }
  IHU_DBoundaryMesh_ElementFilter* Clone() const override;
};
