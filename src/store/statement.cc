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

void Statement::AddFormatted(std::span<const std::string_view> pieces, std::span<const Part> parts) {
  for (std::size_t i = 0; i < parts.size(); ++i) {
    text_ += pieces[i];
    parts[i].AppendTo(*this);
  }
  text_ += pieces.back();
}

}  // namespace orlune
