#pragma once

#include <string>

namespace orlune {

/// A colour scheme as selection lists show it.
struct StyleSheetChoice {
  int Id = 0;
  std::string Name;
};

}  // namespace orlune
