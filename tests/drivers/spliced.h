#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/database.h"

namespace orlune::testing {

/// A statement composed at run time: each "{}" is replaced by a value.
class Spliced {
 public:
  Spliced(std::string_view format,
          const std::vector<std::string>& values) {  // NOLINT(google-explicit-constructor)
    for (const std::string& value : values) {
      const std::size_t place = format.find("{}");
      text_ += format.substr(0, place);
      spans_.push_back({text_.size(), value.size()});
      text_ += value;
      format.remove_prefix(place + 2);
    }
    text_ += format;
  }

  operator StatementText() const { return {text_, spans_}; }  // NOLINT(google-explicit-constructor)

 private:
  std::string text_;
  std::vector<ValueSpan> spans_;
};

}  // namespace orlune::testing
