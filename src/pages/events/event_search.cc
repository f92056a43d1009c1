#include "pages/events/event_search.h"

#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "base/dates.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "html/repetition_labels.h"
#include "pages/events/form_page.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/calendars.h"

namespace orlune {
namespace {

Html TextRow(const PageContext& context, const EventSearch& search) {
  return FieldRow(context, Text::kSearchText, "search",
                  Html("<INPUT TYPE=text NAME=\"search\" ID=\"search\" VALUE=\"{}\" SIZE={}>",
                       Attribute(WithReferencesShown(search.Text)), InputSize(context, 18, 38)));
}

Html CalendarRow(const PageContext& context, const EventSearch& search, std::span<const Calendar> calendars) {
  Html list("<SELECT NAME=\"cal\" ID=\"cal\">\r\n{}\r\n",
            Choice(context, "", Text::kAllCalendars, search.Calendar.empty()));
  AddCalendarOptions(
      list, calendars, [&](std::string_view name) { return name == search.Calendar; }, "\r\n");
  return FieldRow(context, Text::kSearchCalendar, "cal", list.Add("</SELECT>"));
}

Html KindRow(const PageContext& context, const EventSearch& search) {
  Html list("<SELECT NAME=\"reptype\" ID=\"reptype\">\r\n{}\r\n",
            Choice(context, "", Text::kAnyRepetition, search.Kind.empty()));
  for (const auto& [kind, label] : kRepetitionKinds)
    list.Add("{}\r\n", Choice(context, StoredText(kind), label, StoredText(kind) == search.Kind));
  return FieldRow(context, Text::kSearchKind, "reptype", list.Add("</SELECT>"));
}

Html StartDateRow(const PageContext& context, const EventSearch& search) {
  return FieldRow(context, Text::kSearchStartDate, "date1", DateInput(context, 1, search.StartDate));
}

Html WriteSearchForm(const PageContext& context, const EventSearch& search,
                     std::span<const Calendar> calendars) {
  Html page = FormPageOpen(context, Html("p=e&act=results"), Text::kSearchTitle, SearchToolbar(context));
  page.Add(TextRow(context, search));
  page.Add(CalendarRow(context, search, calendars));
  page.Add(KindRow(context, search));
  page.Add(StartDateRow(context, search));
  return CloseFormRows(std::move(page), Html("<INPUT TYPE=submit VALUE=\"{}\">",
                                             Attribute(LoadText(context, Text::kFindEventsButton))));
}

}  // namespace

EventSearch PostedSearch(const Request& request) {
  const std::string_view chosenKind = request.FormField("reptype");
  const std::string_view carriedKind = request.FormField("type");
  return {.Text = std::string(request.FormField("search")),
          .Calendar = std::string(request.FormField("cal")),
          .Kind = std::string(chosenKind.empty() ? carriedKind : chosenKind),
          .StartDate = std::string(request.FormField("date1"))};
}

void ShowSearchForm(Visit& visit) {
  const PageContext& context = visit.Context;
  EventSearch search = PostedSearch(visit.Request);
  if (visit.Request.FormFieldCount() == 0)
    search.StartDate = FormatShortDate(context.Regional, context.Visitor.CurrentDate);
  const std::vector<Calendar> calendars = Ask(visit.Database, CalendarsVisibleTo(context.Visitor.LoginName));
  FinishFormPage(visit, WriteSearchForm(context, search, calendars));
}

}  // namespace orlune
