#include "drivers/postgresql/parameter_texts.h"

#include <algorithm>

#include "drivers/dialect/evaluation.h"
#include "drivers/unicode/case_folding.h"

namespace orlune::postgresql {

using dialect::ColumnType;
using dialect::LiteralUse;

namespace {

/// As in the other engine: matching takes as long as pattern times text.
constexpr std::ptrdiff_t kLongestPattern = 1000;

bool IsText(ColumnType type) {
  return type == ColumnType::kText || type == ColumnType::kMemo;
}

bool IsTooLong(const std::string& pattern) {
  const auto beginsCodePoint = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return std::count_if(pattern.begin(), pattern.end(), beginsCodePoint) > kLongestPattern;
}

}  // namespace

void ParameterTexts::Evaluate(const std::vector<dialect::Parameter>& parameters,
                              const StatementText& statement, const RegionalSettings& regional) {
  if (texts_.size() < parameters.size()) texts_.resize(parameters.size());
  values_.clear();
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const dialect::Parameter& parameter = parameters[i];
    const dialect::StoredValue value =
        dialect::Evaluate(parameter.Source, parameter.Target, statement, regional, scratch_);
    values_.push_back(WriteText(parameter, value, texts_[i]) ? texts_[i].c_str() : nullptr);
  }
}

/// False for Null.
bool ParameterTexts::WriteText(const dialect::Parameter& parameter, const dialect::StoredValue& value,
                               std::string& text) const {
  const ColumnType type = parameter.Target.Type;
  if (const auto* number = std::get_if<std::int64_t>(&value)) {
    text = type == ColumnType::kYesNo ? std::string(*number != 0 ? "t" : "f") : std::to_string(*number);
    return true;
  }
  const auto* stored = std::get_if<std::string_view>(&value);
  if (stored == nullptr) return false;
  if (stored->find('\0') != std::string_view::npos) throw DatabaseError("a text holds the character NUL");
  const bool isFolded = IsText(type) && parameter.Use != LiteralUse::kStored;
  text = isFolded ? unicode::FoldCase(*stored) : std::string(*stored);
  return parameter.Use != LiteralUse::kPattern || !IsTooLong(text);
}

}  // namespace orlune::postgresql
