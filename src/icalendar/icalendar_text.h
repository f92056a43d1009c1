#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "exchange/calendar_text.h"

namespace orlune {

struct NamedZone;

/// The texts of a server whose civil time is that of one zone. Events that come from reading hold plain text;
/// those that are written hold quotes as character references, as rows of the database do.
class IcalendarText final : public CalendarText {
 public:
  /// `zoneName` is a name of the machine's time zone database, such as "Europe/Helsinki". Throws
  /// ConfigurationError for any other.
  explicit IcalendarText(std::string_view zoneName);

  /// The name of the zone that the machine is set to; "UTC" when that cannot be told.
  static std::string MachineZone();

  std::string ObjectText(const CalendarObject& object, const Week& week) const override;
  std::string FileBegin(std::string_view calendarName) const override;
  std::string FileEntry(const CalendarObject& object, const Week& week) const override;
  std::string FileEnd() const override;
  PlannedObject ReadObject(std::string_view text, const ReadingSettings& settings) const override;
  PlannedFile ReadFile(std::string_view text, const ReadingSettings& settings) const override;
  std::string Expanded(std::string_view text, const UtcPeriod& period) const override;
  bool Matches(std::string_view text, std::span<const PropertyFilter> filters) const override;
  std::string FreeBusyText(const UtcPeriod& period, std::span<const BusyPeriod> busy) const override;
  DateTime LocalTime(std::chrono::sys_seconds moment) const override;
  std::chrono::sys_seconds Moment(const DateTime& local) const override;
  std::string_view ZoneName() const override;

 private:
  std::shared_ptr<const NamedZone> zone_;
};

}  // namespace orlune
