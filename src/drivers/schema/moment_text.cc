#include "drivers/schema/moment_text.h"

#include <utility>

#include "base/dates.h"
#include "drivers/dialect/evaluation.h"

namespace orlune::schema {

namespace {

/// The form, as a region.
const RegionalSettings& StoredForm() {
  static const RegionalSettings kForm{
      {}, {DateField::kYear, DateField::kMonth, DateField::kDay}, '-', true, true, {}, {}};
  return kForm;
}

bool IsKnownDay(Date day) {
  return day >= kFirstDate && day <= kLastDate;
}

}  // namespace

std::string MomentText(Date date) {
  return FormatShortDate(StoredForm(), date);
}

std::string MomentText(TimeOfDay time) {
  constexpr std::size_t kTimeBegins = 11;
  return MomentText(DateTime{kFirstDate, time}).substr(kTimeBegins);
}

std::string MomentText(const DateTime& moment) {
  return FormatDateTime(StoredForm(), moment);
}

StoredField ReadMoment(std::string stored, dialect::ColumnType type) {
  const Value value = dialect::ReadStoredText(type, stored);
  if (const auto* date = std::get_if<Date>(&value); date != nullptr && IsKnownDay(*date)) return *date;
  if (const auto* time = std::get_if<TimeOfDay>(&value)) return *time;
  if (const auto* moment = std::get_if<DateTime>(&value); moment != nullptr && IsKnownDay(moment->Day))
    return *moment;
  return Unreadable{std::move(stored)};
}

}  // namespace orlune::schema
