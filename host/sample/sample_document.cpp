#include "host/sample/sample_document.h"

#include <utility>

namespace vorn_host {

DesignDocument ToDocument(SampleDesign design) {
  DesignDocument document;
  document.fileInfos = std::move(design.fileInfos);
  document.structureType = std::move(design.structureType);
  document.hasStructureType = true;
  document.sets = std::move(design.sets);
  return document;
}

}  // namespace vorn_host
