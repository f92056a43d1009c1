#include "drivers/dialect/shape.h"

#include <algorithm>
#include <charconv>

#include "drivers/dialect/catalogue.h"
#include "drivers/dialect/dialect_error.h"

namespace orlune::dialect {

namespace {

/// Stands before a value's kind in a key; fixed text never holds it.
constexpr char kMarker = '\x01';

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool TakeInteger(std::string_view& text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
  const auto digits = static_cast<std::size_t>(end - text.begin());
  text.remove_prefix(digits);
  return digits > 0;
}

void AppendClass(std::string_view value, std::size_t position, std::string& key) {
  const auto spliced = Classify(value);
  if (!spliced) throw DialectError(position, "expected a number, yes, no or Null");
  switch (spliced->Kind) {
    case SplicedKind::kYes:
      key += 'y';
      return;
    case SplicedKind::kNo:
      key += 'n';
      return;
    case SplicedKind::kNull:
      key += '0';
      return;
    case SplicedKind::kIntegers:
      key += 'i';
      if (spliced->Count > 1) key += std::to_string(spliced->Count);
      key += ';';
  }
}

}  // namespace

std::optional<SplicedClass> Classify(std::string_view value) {
  if (SameName(value, "yes")) return SplicedClass{SplicedKind::kYes, 0};
  if (SameName(value, "no")) return SplicedClass{SplicedKind::kNo, 0};
  if (SameName(value, "null")) return SplicedClass{SplicedKind::kNull, 0};
  std::size_t count = 1;
  if (!TakeInteger(value)) return std::nullopt;
  for (; !value.empty(); ++count) {
    if (!value.starts_with(", ")) return std::nullopt;
    value.remove_prefix(2);
    if (!TakeInteger(value)) return std::nullopt;
  }
  return SplicedClass{SplicedKind::kIntegers, count};
}

std::int64_t IntegerAt(std::string_view value, std::size_t item) {
  for (; item > 0; --item) value.remove_prefix(value.find(", ") + 2);
  value = value.substr(value.starts_with('+') ? 1 : 0, value.find(','));
  std::int64_t number = 0;
  if (std::from_chars(value.data(), value.data() + value.size(), number).ec != std::errc{}) {
    throw DatabaseError("whole number out of range");
  }
  return number;
}

void WriteShapeKey(const StatementText& statement, std::string& key) {
  key.clear();
  std::size_t position = 0;
  bool isInLiteral = false;
  const auto appendFixed = [&](std::size_t end) {
    const std::string_view fixed = statement.Text.substr(position, end - position);
    if (fixed.find(kMarker) != std::string_view::npos)
      throw DialectError(position, "unexpected control character");
    isInLiteral ^= std::count(fixed.begin(), fixed.end(), '\'') % 2 != 0;
    key += fixed;
  };
  for (const ValueSpan& value : statement.Values) {
    appendFixed(value.Begin);
    key += kMarker;
    if (isInLiteral) {
      key += 't';
    } else {
      AppendClass(statement.Text.substr(value.Begin, value.Length), value.Begin, key);
    }
    position = value.Begin + value.Length;
  }
  appendFixed(statement.Text.size());
}

void WriteResultKey(const StatementText& query, std::string& key) {
  key.assign(query.Text);
  const std::size_t count = query.Values.size();
  key.append(reinterpret_cast<const char*>(query.Values.data()), query.Values.size_bytes());
  key.append(reinterpret_cast<const char*>(&count), sizeof(count));
}

std::string MaskedText(const StatementText& statement) {
  std::string text;
  std::size_t position = 0;
  for (const ValueSpan& value : statement.Values) {
    text.append(statement.Text, position, value.Begin - position).append("{}");
    position = value.Begin + value.Length;
  }
  return text.append(statement.Text, position);
}

}  // namespace orlune::dialect
