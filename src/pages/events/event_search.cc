#include "pages/events/event_search.h"

#include "base/dates.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/events/form_page.h"
#include "pages/events/repetition_kinds.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/database_access.h"

namespace orlune {
namespace {

Html TextRow(const Visit& visit, const EventSearch& search) {
  return FieldRow(visit, Text::kSearchText, "search",
                  Html("<INPUT TYPE=text NAME=\"search\" ID=\"search\" VALUE=\"{}\" SIZE={}>",
                       Attribute(WithReferencesShown(search.Text)), InputSize(visit, 18, 38)));
}

Html CalendarRow(const Visit& visit, const EventSearch& search) {
  const auto rows = OpenQuery(visit.Database,
                              Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars "
                                        "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
                                        visit.Context.Visitor.LoginName));
  Html list("<SELECT NAME=\"cal\" ID=\"cal\">\r\n{}\r\n",
            Choice(visit, "", Text::kAllCalendars, search.Calendar.empty()));
  AddCalendarOptions(
      list, *rows, [&](std::string_view name) { return name == search.Calendar; }, "\r\n");
  return FieldRow(visit, Text::kSearchCalendar, "cal", list.Add("</SELECT>"));
}

Html KindRow(const Visit& visit, const EventSearch& search) {
  Html list("<SELECT NAME=\"reptype\" ID=\"reptype\">\r\n{}\r\n",
            Choice(visit, "", Text::kAnyRepetition, search.Kind.empty()));
  for (const RepetitionKind& kind : kRepetitionKinds)
    list.Add("{}\r\n", Choice(visit, kind.Name, kind.Label, kind.Name.Text() == search.Kind));
  return FieldRow(visit, Text::kSearchKind, "reptype", list.Add("</SELECT>"));
}

Html StartDateRow(const Visit& visit, const EventSearch& search) {
  const bool isFirstShow = visit.Request.FormFieldCount() == 0;
  return FieldRow(
      visit, Text::kSearchStartDate, "date1",
      DateInput(visit, 1,
                isFirstShow ? FormatShortDate(visit.Context.Regional, visit.Context.Visitor.CurrentDate)
                            : search.StartDate));
}

}  // namespace

EventSearch PostedSearch(const Visit& visit) {
  const Request& request = visit.Request;
  const std::string_view chosenKind = request.FormField("reptype");
  const std::string_view carriedKind = request.FormField("type");
  return {.Text = std::string(request.FormField("search")),
          .Calendar = std::string(request.FormField("cal")),
          .Kind = std::string(chosenKind.empty() ? carriedKind : chosenKind),
          .StartDate = std::string(request.FormField("date1"))};
}

Statement SearchQuery(const Visit& visit, const EventSearch& search) {
  Statement query(
      "SELECT SuggestState, FriendlyName, EventID, EventName, Owner, Type, BeginDate, "
      "EndDate, BeginTime, EndTime, Private FROM Events "
      "INNER JOIN Calendars ON Events.Owner = Calendars.Name "
      "WHERE ((EventName LIKE '%{}%') OR (Comments LIKE '%{}%')) ",
      search.Text, search.Text);
  if (search.Calendar.empty()) {
    query.Add("AND (IsHidden = no OR Owner = '{}') ", visit.Context.Visitor.LoginName);
  } else {
    query.Add("AND (Owner = '{}') ", search.Calendar);
  }
  if (!search.Kind.empty()) query.Add("AND (Type = '{}') ", search.Kind);
  query.Add("AND (BeginDate >= DateValue('{}') OR EndDate >= DateValue('{}')) ", search.StartDate,
            search.StartDate);
  return query.Add(
      "AND (SuggestState In ('accepted', '-') OR SuggestState Is Null) ORDER BY BeginDate, BeginTime");
}

void ShowSearchForm(Visit& visit) {
  const EventSearch search = PostedSearch(visit);
  Html page = FormPageOpen(visit, Html("p=e&act=results"), Text::kSearchTitle, SearchToolbar(visit));
  page.Add(TextRow(visit, search));
  page.Add(CalendarRow(visit, search));
  page.Add(KindRow(visit, search));
  page.Add(StartDateRow(visit, search));
  FinishFormRows(
      visit, std::move(page),
      Html("<INPUT TYPE=submit VALUE=\"{}\">", Attribute(LoadText(visit, Text::kFindEventsButton))));
}

}  // namespace orlune
