#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orlune {

/// One property of a component; its parts are views into the text that it was read of.
struct ContentLine {
  std::string_view Text;        ///< whole, unfolded
  std::string_view Name;        ///< in any case
  std::string_view Parameters;  ///< ";TZID=Europe/Helsinki"
  std::string_view Value;       ///< escaped
};

/// A component of iCalendar with its subcomponents.
struct Component {
  std::string_view Name{};
  std::vector<ContentLine> Lines{};
  std::vector<Component> Children{};

  bool Is(std::string_view name) const;
  /// The first property of that name; null when there is none.
  const ContentLine* Find(std::string_view name) const;
  /// Its value; "" when there is none.
  std::string_view ValueOf(std::string_view name) const;
};

/// The text without the breaks of folded lines and without a byte order mark. Throws InvalidCalendarText when
/// it is not UTF-8.
std::string Unfolded(std::string_view text);

/// The components of `unfolded`, which must outlive them. Throws InvalidCalendarText.
std::vector<Component> ReadComponents(std::string_view unfolded);

/// The value of a parameter, without quotes; nothing when the property has none of that name.
std::optional<std::string_view> ParameterOf(const ContentLine& line, std::string_view name);

/// The items between commas, still escaped.
std::vector<std::string_view> ValueItems(std::string_view value);

/// A TEXT value without its escapes; control characters but tabs and line feeds are left out.
std::string UnescapedText(std::string_view value);

}  // namespace orlune
