#include "measured_pages.h"

#include <stdexcept>
#include <utility>

#include "calendar_file.h"

namespace orlune::bench {
namespace {

testing::FakeHost::Fields Lunch() {
  return {{"title", "Lunch"},
          {"reptype", "none"},
          {"date1", "9/15/2004"},
          {"time1", "12:00"},
          {"time2", "13:00"},
          {"addinfo", "At the usual place"},
          {"calendar", std::string(kUser)}};
}

}  // namespace

MeasuredPage LoginPage() {
  return {"login", {{{"p", "l"}}, {{"Name", std::string(kUser)}, {"Passwd", std::string(kPassword)}}}, true};
}

MeasuredPage MonthPage() {
  return {"month", {{{"dm", "month"}}, {}}};
}

MeasuredPage WeekPage() {
  return {"week", {{{"dm", "week"}}, {}}};
}

MeasuredPage EventForm() {
  return {"event form", {{{"p", "e"}}, {}}};
}

MeasuredPage MessageForm() {
  return {"message form", {{{"p", "m"}, {"act", "new"}}, {}}};
}

MeasuredPage MessageListPage() {
  return {"message list", {{{"p", "m"}}, {}}};
}

MeasuredPage SearchEverywhere() {
  return {"search, all calendars",
          {{{"p", "e"}, {"act", "results"}}, {{"search", std::string(kShownTitle)}, {"date1", "1/1/1990"}}}};
}

MeasuredPage SearchOneCalendar() {
  return {
      "search, one calendar",
      {{{"p", "e"}, {"act", "results"}}, {{"search", "event 9"}, {"cal", "sales"}, {"date1", "1/1/1990"}}}};
}

MeasuredPage SavedEvent() {
  return {"event saved", {{{"p", "e"}, {"act", "save"}}, Lunch()}, true};
}

MeasuredPage SentSuggestion() {
  auto fields = Lunch();
  fields["vastaanottaja"] =
      "user002, user003, user004, user005, user006, user007, user008, user009, user010, user011";
  return {"suggestion to 10 users", {{{"p", "e"}, {"act", "send"}}, std::move(fields)}, true};
}

void Try(Visitor& visitor, const MeasuredPage& page) {
  const testing::Answer& answer = visitor.Ask(page.Request);
  if (answer.RedirectedTo.empty() == page.IsStored)
    throw std::runtime_error("the page \"" + page.Name + "\" was refused");
}

}  // namespace orlune::bench
