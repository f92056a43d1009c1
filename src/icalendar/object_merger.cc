#include "icalendar/object_merger.h"

#include "icalendar/object_writer.h"

namespace orlune {

std::string ObjectMerger::Merged(const CalendarObject& object, const Week& week) const {
  return ObjectWriter(*zone_).CalendarOf(object, week);
}

}  // namespace orlune
