#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/week.h"
#include "model/ol_event.h"

namespace orlune {

struct Visit;
class Statement;

/// The occurrences of one period in the viewed calendar, its groups, or a group view's members, read with one
/// query and expanded in memory. Not shared between threads; one object serves one page.
class OL_Events {
 public:
  explicit OL_Events(const Visit& visit);

  /// Replaces the list by the occurrences from `first` to `last`, both days included, which the user may see.
  /// Events come in the order of their `BeginTime`, each with all its occurrences. Throws DatabaseError.
  void GetEventsForPeriod(Date first, Date last);
  std::size_t Count() const { return occurrences_.size(); }
  /// The occurrence at `index`, which runs from 1 to `Count`.
  const OL_Event& Item(std::size_t index) const { return occurrences_.at(index - 1); }

  /// Rebuilds the day list for `date`, in the order of `BeginTime`; returns its length.
  std::size_t GetEventsForDay(Date date);
  std::size_t DayCount() const { return day_.size(); }
  /// The occurrence at `position` of the day list, which runs from 1 to `DayCount`; null before any
  /// `GetEventsForPeriod`.
  const OL_Event* EventsByDay(std::size_t position) const;

  /// Chooses other events than those of the viewed calendar: "lomat" the absences of everybody, "julkaisut"
  /// those of the calendar Julkaisut.
  void View(std::string_view view) { view_ = view; }

 private:
  Statement OwnerFilter(const std::vector<std::string>& viewed) const;
  bool IsShown(const OL_Event& event) const;
  void AddOccurrences(const OL_Event& event, Date first, Date last);

  const Visit* visit_;
  Week week_;
  std::string view_;
  bool isLoaded_ = false;
  std::vector<OL_Event> occurrences_;
  std::vector<std::size_t> day_;
};

}  // namespace orlune
