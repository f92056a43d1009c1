#pragma once

#include <string>
#include <string_view>

namespace orlune::testing {

/// The text from `from` to the next `to`, both inclusive; "" when either is missing.
std::string Cut(const std::string& page, std::string_view from, std::string_view to);

/// The attributes of a link that show `text` in the status bar.
std::string Status(std::string_view text);

/// A toolbar button.
std::string Button(std::string_view query, std::string_view text, std::string_view image);

/// The text of a page's alert, as escaped in its script; "" when there is none.
std::string AlertOf(const std::string& page);

/// The last row of a page's frame, for the user anna.
std::string FooterOfAnna();

}  // namespace orlune::testing
