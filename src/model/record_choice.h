#pragma once

#include <string>

namespace orlune {

/// A record as the lists of the administration show it.
struct RecordChoice {
  std::string Id;       ///< its key, or the internal name where that is what is chosen
  std::string Name;     ///< for display
  std::string IntName;  ///< login name, group name or file name
};

/// A record that is a display name and a file.
struct NamedFile {
  std::string Name;
  std::string File;
};

}  // namespace orlune
