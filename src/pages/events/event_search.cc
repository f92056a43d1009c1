#include "pages/events/event_search.h"

#include "base/dates.h"
#include "base/text.h"
#include "html/calendar_options.h"
#include "html/form_parts.h"
#include "html/page_frame.h"
#include "pages/events/repetition_kinds.h"
#include "pages/events/form_page.h"
#include "request/component_state.h"
#include "request/texts.h"
#include "store/database_access.h"

namespace orlune {
namespace {

Html TextRow(const ComponentState& state, const EventSearch& search) {
  return FieldRow(state, 401, "search",
                  Html("<INPUT TYPE=text NAME=\"search\" ID=\"search\" VALUE=\"{}\" SIZE={}>",
                       Attribute(WithReferencesShown(search.Text)), InputSize(state, 18, 38)));
}

Html CalendarRow(const ComponentState& state, const EventSearch& search) {
  const auto rows = OpenQuery(*state.Database,
                              Statement("SELECT Name, FriendlyName, IsGroup FROM Calendars "
                                        "WHERE (IsHidden = no OR Name = '{}') ORDER BY IsGroup, FriendlyName",
                                        state.LoginName));
  Html list("<SELECT NAME=\"cal\" ID=\"cal\">\r\n{}\r\n", Choice(state, "", 403, search.Calendar.empty()));
  AddCalendarOptions(
      list, *rows, [&](std::string_view name) { return name == search.Calendar; }, "\r\n");
  return FieldRow(state, 402, "cal", list.Add("</SELECT>"));
}

Html KindRow(const ComponentState& state, const EventSearch& search) {
  Html list("<SELECT NAME=\"reptype\" ID=\"reptype\">\r\n{}\r\n",
            Choice(state, "", 303, search.Kind.empty()));
  for (const RepetitionKind& kind : kRepetitionKinds)
    list.Add("{}\r\n", Choice(state, kind.Name, kind.Text, kind.Name.Text() == search.Kind));
  return FieldRow(state, 404, "reptype", list.Add("</SELECT>"));
}

Html StartDateRow(const ComponentState& state, const EventSearch& search) {
  const bool isFirstShow = state.Context.Request->FormFieldCount() == 0;
  return FieldRow(state, 405, "date1",
                  DateInput(state, 1,
                            isFirstShow ? FormatShortDate(state.Surroundings->Regional, state.CurrentDate)
                                        : search.StartDate));
}

}  // namespace

EventSearch PostedSearch(const ComponentState& state) {
  const Request& request = *state.Context.Request;
  const std::string_view chosenKind = request.FormField("reptype");
  const std::string_view carriedKind = request.FormField("type");
  return {.Text = std::string(request.FormField("search")),
          .Calendar = std::string(request.FormField("cal")),
          .Kind = std::string(chosenKind.empty() ? carriedKind : chosenKind),
          .StartDate = std::string(request.FormField("date1"))};
}

Statement SearchQuery(const ComponentState& state, const EventSearch& search) {
  Statement query(
      "SELECT SuggestState, FriendlyName, EventID, EventName, Owner, Type, BeginDate, "
      "EndDate, BeginTime, EndTime, Private FROM Events "
      "INNER JOIN Calendars ON Events.Owner = Calendars.Name "
      "WHERE ((EventName LIKE '%{}%') OR (Comments LIKE '%{}%')) ",
      search.Text, search.Text);
  if (search.Calendar.empty()) {
    query.Add("AND (IsHidden = no OR Owner = '{}') ", state.LoginName);
  } else {
    query.Add("AND (Owner = '{}') ", search.Calendar);
  }
  if (!search.Kind.empty()) query.Add("AND (Type = '{}') ", search.Kind);
  query.Add("AND (BeginDate >= DateValue('{}') OR EndDate >= DateValue('{}')) ", search.StartDate,
            search.StartDate);
  return query.Add(
      "AND (SuggestState In ('accepted', '-') OR SuggestState Is Null) ORDER BY BeginDate, BeginTime");
}

void ShowSearchForm(ComponentState& state) {
  const EventSearch search = PostedSearch(state);
  Html page = FormPageOpen(state, Html("p=e&act=results"), 400, SearchToolbar(state));
  page.Add(TextRow(state, search));
  page.Add(CalendarRow(state, search));
  page.Add(KindRow(state, search));
  page.Add(StartDateRow(state, search));
  FinishFormRows(state, std::move(page),
                 Html("<INPUT TYPE=submit VALUE=\"{}\">", Attribute(LoadText(state, 420))));
}

}  // namespace orlune
