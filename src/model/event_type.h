#pragma once

#include <string>

namespace orlune {

/// An event type and its icon, a file in `ImageDir`.
struct EventTypeEntry {
  std::string TypeName;
  std::string FileName;
};

}  // namespace orlune
