#pragma once

#include <string>

namespace orlune {

/// A record as the administration's selection lists show it.
struct RecordChoice {
  std::string Id;       ///< the value of the choice: its key, or its internal name
  std::string Name;     ///< display name
  std::string IntName;  ///< login name, group name or file name
};

/// A record that consists of a display name and a file name.
struct NamedFile {
  std::string Name;
  std::string File;
};

}  // namespace orlune
