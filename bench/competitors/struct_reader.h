#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bench/competitors/document_tally.h"

/// What an application without the library would write: the parser's tree, a walk over it, and plain structures.
namespace struct_reader {

struct Point {
  std::string code;
  std::string location;
  std::string componentType;
  std::string dataType;
  bool seriesPnt = true;
  bool existence = false;
  double x = 0.0;
  double y = 0.0;
};

struct Form {
  std::string name;
  std::string xSectType;
  std::vector<Point> points;
};

struct GroundPoint {
  std::string name;
  double distance = 0.0;
  double height = 0.0;
};

struct Ground {
  std::string name;
  std::vector<GroundPoint> points;
};

struct Section {
  std::string name;
  double cumulativeDist = 0.0;
  bool xSectChg = false;
  bool controlSect = false;
  std::string directionAngle;
  std::string targetPntID;
  std::vector<Form> forms;
  std::vector<Ground> grounds;
};

struct TargetPoint {
  double cumulativeDist = 0.0;
  bool xSectChg = false;
  std::string buildFormName;
  std::string code;
};

struct Target {
  std::string workType;
  std::string controlItem;
  std::string targetScope;
  std::string targetRegio;
  std::string targetPntType;
  std::vector<TargetPoint> points;
};

struct Set {
  std::string refAlign;
  std::string refVertical;
  std::string projectPhase;
  std::vector<Section> sections;
  std::vector<Target> targets;
};

struct FileInfo {
  std::string createDate;
  std::string changeDate;
  std::string note;
};

struct Design {
  std::vector<FileInfo> fileInfos;
  std::string structureType;
  std::string jobName;
  std::string company;
  std::string stationType;
  std::vector<Set> sets;
};

/// Throws `std::runtime_error` when the parser refuses the bytes.
[[nodiscard]] Design Read(std::string_view bytes);

[[nodiscard]] DocumentTally Tally(const Design& design);

}  // namespace struct_reader
