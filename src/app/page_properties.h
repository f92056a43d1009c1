#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "component/orlune.h"

namespace orlune {

/// A property of the component that a hosting page can set.
struct PageProperty {
  using TextSetter = void (*)(Orlune&, const std::string&);
  using SwitchSetter = void (*)(Orlune&, bool);

  std::string_view Name;
  std::variant<TextSetter, SwitchSetter> Set;
  std::string_view Default;  ///< for `--help`
  std::string_view Help;
  bool LinksFiles = false;  ///< of the site folder: a text in which "{version}" is the folder's version
};

/// All of them, in the order of the component's functions.
std::span<const PageProperty> PageProperties();

}  // namespace orlune
