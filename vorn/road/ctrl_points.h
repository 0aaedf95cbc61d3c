#pragma once

#include "vorn/platform/cstring.h"
#include "vorn/road/bench_mark.h"
#include "vorn/road/ctrl_point.h"
#include "vorn/road/gm_pnts.h"
#include "vorn/road/record.h"

/// The survey control points of a site: horizontal control points, bench marks, and groups of ground points.
class VornCtrlPoints : public VornRecord {
 public:
  /// Without points, but with one group of ground points, which is empty.
  VornCtrlPoints() { m_gmPnts.Add(VornGmPnts()); }
  VornCtrlPoints(const VornCtrlPoints&) = default;
  VornCtrlPoints(VornCtrlPoints&&) noexcept = default;
  /// Without the memory for a copy of all of it, the object stays as it was.
  VornCtrlPoints& operator=(const VornCtrlPoints& other) { return *this = VornCtrlPoints(other); }
  VornCtrlPoints& operator=(VornCtrlPoints&&) noexcept = default;

  /// The record of the project archive, the same for every store version. It does not tell whether it has the ground
  /// points: whoever loads has to know. What is not loaded stays. Archive and file exceptions pass through.
  /// @param withGmPnts whether the groups of ground points are part of it
  void Serialize(CArchive& ar, const char* tag, bool withGmPnts);

  /// Name of the site's points.
  [[nodiscard]] const CString& GetName() const { return m_name; }
  void SetName(const CString& name) { m_name = name; }
  /// The horizontal control points.
  [[nodiscard]] const VornCtrlPosArray& GetCtrlPos() const { return m_ctrlPos; }
  [[nodiscard]] VornCtrlPosArray& GetCtrlPos() { return m_ctrlPos; }
  void SetCtrlPos(const VornCtrlPosArray& points) { m_ctrlPos = points; }
  /// The bench marks.
  [[nodiscard]] const VornBenchMkArray& GetBenchMarks() const { return m_benchMarks; }
  [[nodiscard]] VornBenchMkArray& GetBenchMarks() { return m_benchMarks; }
  void SetBenchMarks(const VornBenchMkArray& benchMarks) { m_benchMarks = benchMarks; }
  /// The groups of ground points.
  [[nodiscard]] const VornGmPntsArray& GetGmPnts() const { return m_gmPnts; }
  [[nodiscard]] VornGmPntsArray& GetGmPnts() { return m_gmPnts; }
  void SetGmPnts(const VornGmPntsArray& groups) { m_gmPnts = groups; }

 private:
  CString m_name;
  VornCtrlPosArray m_ctrlPos;
  VornBenchMkArray m_benchMarks;
  VornGmPntsArray m_gmPnts;
};
