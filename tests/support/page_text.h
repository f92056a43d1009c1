#pragma once

#include <string>
#include <string_view>

namespace orlune::testing {

/// What stands between `from` and the next `to`, both included; "" when either is missing.
std::string Cut(const std::string& page, std::string_view from, std::string_view to);

/// The attributes of a link that show `text` in the status bar.
std::string Status(std::string_view text);

/// A button of a tool bar.
std::string Button(std::string_view query, std::string_view text, std::string_view image);

/// The text that a page alerts, as it stands in its script; "" when it alerts nothing.
std::string AlertOf(const std::string& page);

}  // namespace orlune::testing
