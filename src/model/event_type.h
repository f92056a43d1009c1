#pragma once

#include <string>

namespace orlune {

/// One event type and the file of its icon under `ImageDir`.
struct EventTypeEntry {
  std::string TypeName;
  std::string FileName;
};

}  // namespace orlune
