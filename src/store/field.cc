#include "store/field.h"

#include <limits>

namespace orlune {
namespace {

template <class Kind>
std::optional<Kind> As(const Value& value) {
  const Kind* held = std::get_if<Kind>(&value);
  return held ? std::optional<Kind>(*held) : std::nullopt;
}

}  // namespace

std::string_view TextOf(const Value& value) {
  return As<std::string_view>(value).value_or(std::string_view());
}

std::optional<int> NumberOf(const Value& value) {
  const auto number = As<std::int64_t>(value);
  if (!number || *number < std::numeric_limits<int>::min() || *number > std::numeric_limits<int>::max()) {
    return std::nullopt;
  }
  return static_cast<int>(*number);
}

bool YesNoOf(const Value& value) {
  return As<bool>(value).value_or(false);
}
std::optional<Date> DateOf(const Value& value) {
  if (const auto* moment = std::get_if<DateTime>(&value)) return moment->Day;
  return As<Date>(value);
}
std::optional<TimeOfDay> TimeOf(const Value& value) {
  return As<TimeOfDay>(value);
}
std::optional<DateTime> DateTimeOf(const Value& value) {
  return As<DateTime>(value);
}
bool IsNull(const Value& value) {
  return std::holds_alternative<std::monostate>(value);
}

}  // namespace orlune
