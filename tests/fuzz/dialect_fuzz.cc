#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drivers/dialect/parser.h"
#include "drivers/dialect/shape.h"
#include "fuzz/require.h"

namespace {

using orlune::DatabaseError;
using orlune::StatementText;
using orlune::ValueSpan;

struct Composed {
  std::string Text;
  std::vector<ValueSpan> Values;

  operator StatementText() const { return {Text, Values}; }  // NOLINT(google-explicit-constructor)

  void AddValue(std::string_view value) {
    Values.push_back({Text.size(), value.size()});
    Text += value;
  }
};

/// The input as a statement; the texts between "{" and "}" are its values.
Composed Compose(std::string_view input) {
  Composed composed;
  while (true) {
    const std::size_t begin = input.find('{');
    composed.Text += input.substr(0, begin);
    if (begin == std::string_view::npos) return composed;
    const std::size_t end = std::min(input.find('}', begin), input.size());
    composed.AddValue(input.substr(begin + 1, end - begin - 1));
    input.remove_prefix(std::min(end + 1, input.size()));
  }
}

struct Understood {
  orlune::dialect::Statement Tree;
  std::string Key;
};

/// Nothing when the statement is rejected.
std::optional<Understood> Understand(const StatementText& statement) {
  try {
    Understood understood{orlune::dialect::Parse(statement), {}};
    orlune::dialect::WriteShapeKey(statement, understood.Key);
    return understood;
  } catch (const DatabaseError&) {
    return std::nullopt;
  }
}

/// The same statement with every value between apostrophes replaced by `text`.
Composed WithTexts(const Composed& original, std::string_view text) {
  Composed changed;
  std::size_t position = 0;
  bool isInLiteral = false;
  const auto copyFixed = [&](std::size_t end) {
    for (; position < end; ++position) {
      isInLiteral ^= original.Text[position] == '\'';
      changed.Text += original.Text[position];
    }
  };
  for (const ValueSpan& value : original.Values) {
    copyFixed(value.Begin);
    const std::string_view kept = std::string_view(original.Text).substr(value.Begin, value.Length);
    changed.AddValue(isInLiteral ? text : kept);
    position += value.Length;
  }
  copyFixed(original.Text.size());
  return changed;
}

}  // namespace

/// No statement crashes the parser, and no value between apostrophes changes the parsed statement.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const Composed original = Compose({reinterpret_cast<const char*>(bytes), size});
  const auto understood = Understand(original);
  for (const std::string_view text : {"", "x", "'", "' OR ''='", "'; DELETE FROM Events --", "\x01t"}) {
    const auto changed = Understand(WithTexts(original, text));
    Require(understood.has_value() == changed.has_value());
    if (!understood) continue;
    Require(understood->Tree == changed->Tree);
    Require(understood->Key == changed->Key);
  }
  return 0;
}
