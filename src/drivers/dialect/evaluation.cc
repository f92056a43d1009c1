#include "drivers/dialect/evaluation.h"

#include <charconv>
#include <chrono>
#include <optional>

#include "base/dates.h"
#include "drivers/dialect/shape.h"

namespace orlune::dialect {

namespace {

[[noreturn]] void FailToFit(const Column& column) {
  throw DatabaseError("column " + column.Name + ": expected " + std::string(DescribeType(column.Type)));
}

std::string_view PieceText(const TextPieces::value_type& piece, const StatementText& statement) {
  if (const auto* fixed = std::get_if<std::string>(&piece)) return *fixed;
  const ValueSpan span = statement.Values[std::get<SplicedText>(piece).Value];
  return statement.Text.substr(span.Begin, span.Length);
}

std::string_view WholeText(const TextPieces& pieces, const StatementText& statement, std::string& scratch) {
  if (pieces.empty()) return "";
  if (pieces.size() == 1) return PieceText(pieces.front(), statement);
  scratch.clear();
  for (const auto& piece : pieces) scratch += PieceText(piece, statement);
  return scratch;
}

void WriteDigits(char* to, int digits, unsigned number) {
  for (; digits > 0; number /= 10) to[--digits] = static_cast<char>('0' + number % 10);
}

std::string_view WriteDate(Date date, std::string& scratch) {
  const std::chrono::year_month_day parts{date};
  scratch.assign("0000-00-00");
  WriteDigits(scratch.data(), 4, static_cast<unsigned>(static_cast<int>(parts.year())));
  WriteDigits(scratch.data() + 5, 2, static_cast<unsigned>(parts.month()));
  WriteDigits(scratch.data() + 8, 2, static_cast<unsigned>(parts.day()));
  return scratch;
}

std::string_view WriteTime(TimeOfDay time, std::string& scratch) {
  const auto seconds = static_cast<unsigned>(time.count());
  scratch.assign("00:00:00");
  WriteDigits(scratch.data(), 2, seconds / 3600);
  WriteDigits(scratch.data() + 3, 2, seconds / 60 % 60);
  WriteDigits(scratch.data() + 6, 2, seconds % 60);
  return scratch;
}

std::string_view WriteDateTime(const DateTime& dateTime, std::string& scratch) {
  std::string time;
  WriteTime(dateTime.Time, time);
  WriteDate(dateTime.Day, scratch);
  return scratch.append(" ").append(time);
}

std::optional<std::int64_t> ParseInteger(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  std::int64_t number = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number);
  if (result.ec != std::errc{} || result.ptr != end) return std::nullopt;
  return number;
}

std::optional<bool> ParseYesNo(std::string_view text) {
  if (SameName(text, "yes") || SameName(text, "true")) return true;
  if (SameName(text, "no") || SameName(text, "false")) return false;
  const auto number = ParseInteger(text);
  if (!number) return std::nullopt;
  return *number != 0;
}

StoredValue ConvertText(std::string_view text, const Column& column, const RegionalSettings& regional,
                        std::string& scratch) {
  switch (column.Type) {
    case ColumnType::kText:
    case ColumnType::kMemo:
      return text;
    case ColumnType::kCounter:
    case ColumnType::kLong:
      if (const auto number = ParseInteger(text)) return *number;
      break;
    case ColumnType::kYesNo:
      if (const auto isYes = ParseYesNo(text)) return std::int64_t{*isYes};
      break;
    case ColumnType::kDate:
      if (const auto date = ParseDate(regional, text)) return WriteDate(*date, scratch);
      break;
    case ColumnType::kTime:
      if (const auto time = ParseTime(text)) return WriteTime(*time, scratch);
      break;
    case ColumnType::kDateTime:
      if (const auto dateTime = ParseDateTime(regional, text)) return WriteDateTime(*dateTime, scratch);
  }
  FailToFit(column);
}

StoredValue ConvertInteger(std::int64_t number, const Column& column, std::string& scratch) {
  switch (column.Type) {
    case ColumnType::kCounter:
    case ColumnType::kLong:
      return number;
    case ColumnType::kYesNo:
      return std::int64_t{number != 0};
    case ColumnType::kText:
    case ColumnType::kMemo:
      scratch = std::to_string(number);
      return std::string_view(scratch);
    default:
      FailToFit(column);
  }
}

bool HoldsDays(ColumnType type) {
  return type == ColumnType::kDate || type == ColumnType::kDateTime;
}

/// Reads "dd" digits off a text of fixed form; negative when one is no digit.
int ReadDigits(std::string_view text, std::size_t begin, std::size_t count) {
  int number = 0;
  for (const char c : text.substr(begin, count)) {
    if (c < '0' || c > '9') return -1;
    number = number * 10 + (c - '0');
  }
  return number;
}

std::optional<Date> ReadDate(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const int year = ReadDigits(text, 0, 4);
  const int month = ReadDigits(text, 5, 2);
  const int day = ReadDigits(text, 8, 2);
  if (year < 0 || month < 0 || day < 0) return std::nullopt;
  const std::chrono::year_month_day parts{std::chrono::year{year},
                                          std::chrono::month{static_cast<unsigned>(month)},
                                          std::chrono::day{static_cast<unsigned>(day)}};
  if (!parts.ok()) return std::nullopt;
  return Date{parts};
}

std::optional<TimeOfDay> ReadTime(std::string_view text) {
  if (text.size() != 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
  const int hours = ReadDigits(text, 0, 2);
  const int minutes = ReadDigits(text, 3, 2);
  const int seconds = ReadDigits(text, 6, 2);
  if (hours < 0 || hours > 23 || minutes < 0 || minutes > 59 || seconds < 0 || seconds > 59)
    return std::nullopt;
  return TimeOfDay{hours * 3600 + minutes * 60 + seconds};
}

std::optional<DateTime> ReadDateTime(std::string_view text) {
  if (text.size() != 19 || text[10] != ' ') return std::nullopt;
  const auto date = ReadDate(text.substr(0, 10));
  const auto time = ReadTime(text.substr(11));
  if (!date || !time) return std::nullopt;
  return DateTime{*date, *time};
}

template <class Content>
Value ToValue(const std::optional<Content>& content) {
  return content ? Value(*content) : Value();
}

}  // namespace

StoredValue Evaluate(const Literal& literal, const Column& column, const StatementText& statement,
                     const RegionalSettings& regional, std::string& scratch) {
  if (literal.IsDate && !HoldsDays(column.Type)) FailToFit(column);
  if (std::holds_alternative<Null>(literal.Content)) return std::monostate{};
  if (const auto* isYes = std::get_if<bool>(&literal.Content)) {
    if (column.Type != ColumnType::kYesNo) FailToFit(column);
    return std::int64_t{*isYes};
  }
  if (const auto* number = std::get_if<std::int64_t>(&literal.Content)) {
    return ConvertInteger(*number, column, scratch);
  }
  if (const auto* spliced = std::get_if<SplicedInteger>(&literal.Content)) {
    const ValueSpan span = statement.Values[spliced->Value];
    const std::string_view value = statement.Text.substr(span.Begin, span.Length);
    return ConvertInteger(IntegerAt(value, spliced->Item), column, scratch);
  }
  const std::string_view text = WholeText(std::get<TextPieces>(literal.Content), statement, scratch);
  return ConvertText(text, column, regional, scratch);
}

Value ReadStoredText(ColumnType type, std::string_view text) {
  switch (type) {
    case ColumnType::kDate:
      return ToValue(ReadDate(text));
    case ColumnType::kTime:
      return ToValue(ReadTime(text));
    case ColumnType::kDateTime:
      return ToValue(ReadDateTime(text));
    default:
      return text;
  }
}

}  // namespace orlune::dialect
