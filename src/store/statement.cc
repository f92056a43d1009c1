#include "store/statement.h"

namespace orlune {

void Statement::Part::AppendTo(Statement& statement) const {
  const std::size_t begin = statement.text_.size();
  statement.text_ += text_;
  if (isValue_) {
    statement.values_.push_back({begin, text_.size()});
    return;
  }
  for (const ValueSpan& value : values_) statement.values_.push_back({begin + value.Begin, value.Length});
}

void Statement::AddFormatted(std::string_view format, std::span<const Part> parts) {
  for (const Part& part : parts) {
    const std::size_t place = format.find("{}");
    text_ += format.substr(0, place);
    part.AppendTo(*this);
    format.remove_prefix(place + 2);
  }
  text_ += format;
}

}  // namespace orlune
