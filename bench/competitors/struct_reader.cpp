#include "bench/competitors/struct_reader.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <utility>

namespace struct_reader {

namespace {

struct FreeTree {
  void operator()(xmlDoc* tree) const { xmlFreeDoc(tree); }
};

bool Is(const xmlNode* node, const char* name) {
  return node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, reinterpret_cast<const xmlChar*>(name)) == 0;
}

std::string Taken(xmlChar* text) {
  if (text == nullptr) return {};
  std::string taken(reinterpret_cast<const char*>(text));
  xmlFree(text);
  return taken;
}

std::string Text(xmlNode* node, const char* attribute) {
  return Taken(xmlGetProp(node, reinterpret_cast<const xmlChar*>(attribute)));
}

double Number(xmlNode* node, const char* attribute) { return std::strtod(Text(node, attribute).c_str(), nullptr); }

bool IsTrue(xmlNode* node, const char* attribute) { return Text(node, attribute) == "true"; }

void ReadTwoValues(xmlNode* node, double& first, double& second) {
  const std::string text = Taken(xmlNodeGetContent(node));
  char* end = nullptr;
  first = std::strtod(text.c_str(), &end);
  second = std::strtod(end, nullptr);
}

Point ReadPoint(xmlNode* node) {
  Point point;
  point.code = Text(node, "code");
  point.location = Text(node, "location");
  point.componentType = Text(node, "componentType");
  point.dataType = Text(node, "dataType");
  point.seriesPnt = Text(node, "seriesPnt") != "false";
  point.existence = IsTrue(node, "existence");
  ReadTwoValues(node, point.x, point.y);
  return point;
}

Form ReadForm(xmlNode* node) {
  Form form;
  form.name = Text(node, "name");
  form.xSectType = Text(node, "xSectType");
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (Is(child, "ComposedPnt")) form.points.push_back(ReadPoint(child));
  }
  return form;
}

Ground ReadGround(xmlNode* node) {
  Ground ground;
  ground.name = Text(node, "name");
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (!Is(child, "ExistingComposedPnt")) continue;
    GroundPoint point;
    point.name = Text(child, "name");
    ReadTwoValues(child, point.distance, point.height);
    ground.points.push_back(std::move(point));
  }
  return ground;
}

Section ReadSection(xmlNode* node) {
  Section section;
  section.name = Text(node, "name");
  section.cumulativeDist = Number(node, "cumulativeDist");
  section.xSectChg = IsTrue(node, "xSectChg");
  section.controlSect = IsTrue(node, "controlSect");
  section.directionAngle = Text(node, "directionAngle");
  section.targetPntID = Text(node, "targetPntID");
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (Is(child, "BuildForm")) section.forms.push_back(ReadForm(child));
    if (Is(child, "ExistingBuildForm")) section.grounds.push_back(ReadGround(child));
  }
  return section;
}

Target ReadTarget(xmlNode* node) {
  Target target;
  target.workType = Text(node, "workType");
  target.controlItem = Text(node, "controlItem");
  target.targetScope = Text(node, "targetScope");
  target.targetRegio = Text(node, "targetRegio");
  target.targetPntType = Text(node, "targetPntType");
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (!Is(child, "FormCtrlTargetPnt")) continue;
    TargetPoint point;
    point.cumulativeDist = Number(child, "cumulativeDist");
    point.xSectChg = IsTrue(child, "xSectChg");
    point.buildFormName = Text(child, "buildFormName");
    point.code = Text(child, "code");
    target.points.push_back(std::move(point));
  }
  return target;
}

Set ReadSet(xmlNode* node) {
  Set set;
  set.refAlign = Text(node, "refAlign");
  set.refVertical = Text(node, "refVertical");
  set.projectPhase = Text(node, "projectPhase");
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (Is(child, "XSection")) set.sections.push_back(ReadSection(child));
    if (Is(child, "FormCtrlTarget")) set.targets.push_back(ReadTarget(child));
  }
  return set;
}

}  // namespace

Design Read(std::string_view bytes) {
  // Without the last option the parser refuses large documents; the others spare it what nobody needs here.
  constexpr int kOptions = XML_PARSE_NONET | XML_PARSE_COMPACT | XML_PARSE_NOBLANKS | XML_PARSE_HUGE;
  const std::unique_ptr<xmlDoc, FreeTree> tree(
      xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), "design.xml", nullptr, kOptions));
  xmlNode* const root = tree == nullptr ? nullptr : xmlDocGetRootElement(tree.get());
  if (root == nullptr) throw std::runtime_error("the document cannot be parsed");
  Design design;
  for (xmlNode* child = root->children; child != nullptr; child = child->next) {
    if (Is(child, "FileInfo")) {
      design.fileInfos.push_back({Text(child, "createDate"), Text(child, "changeDate"), Text(child, "note")});
    } else if (Is(child, "StructureType")) {
      design.structureType = Text(child, "type");
      design.jobName = Text(child, "jobName");
      design.company = Text(child, "company");
      design.stationType = Text(child, "stationType");
    } else if (Is(child, "XSections")) {
      design.sets.push_back(ReadSet(child));
    }
  }
  return design;
}

DocumentTally Tally(const Design& design) {
  DocumentTally tally;
  for (const Set& set : design.sets) {
    for (const Section& section : set.sections) {
      ++tally.sections;
      tally.stations += section.cumulativeDist;
      for (const Form& form : section.forms) {
        ++tally.forms;
        for (const Point& point : form.points) {
          ++tally.points;
          tally.leftPoints += point.location == "Left";
          tally.slopes += point.componentType == "Slope(Cut)" || point.componentType == "Slope(Fill)";
          tally.grades += point.dataType == "Percent";
          tally.existing += point.existence;
          tally.codeBytes += static_cast<std::int64_t>(point.code.size());
          tally.x += point.x;
          tally.y += point.y;
        }
      }
      for (const Ground& ground : section.grounds) {
        for (const GroundPoint& point : ground.points) {
          ++tally.groundPoints;
          tally.codeBytes += static_cast<std::int64_t>(point.name.size());
          tally.groundDistances += point.distance;
          tally.groundHeights += point.height;
        }
      }
    }
    for (const Target& target : set.targets) {
      ++tally.targets;
      tally.slopeTargets += target.controlItem == "SlopeLength";
      for (const TargetPoint& point : target.points) {
        ++tally.targetPoints;
        tally.codeBytes += static_cast<std::int64_t>(point.code.size());
        tally.targetStations += point.cumulativeDist;
      }
    }
  }
  return tally;
}

}  // namespace struct_reader
