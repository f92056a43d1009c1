#include "pages/events/found_events.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/date_text.h"
#include "base/dates.h"
#include "base/text.h"
#include "html/form_parts.h"
#include "html/links.h"
#include "html/page_frame.h"
#include "model/occurrence_dates.h"
#include "pages/events/event_search.h"
#include "pages/events/form_page.h"
#include "request/texts.h"
#include "request/visit.h"
#include "store/event_days.h"
#include "store/event_store.h"

namespace orlune {
namespace {

/// Limits on the listed days, for each event (54 years of a daily one) and for the page, so that events of
/// many centuries cannot exhaust the server's memory. Beyond the page's limit an event lists its first day
/// only.
constexpr std::size_t kMostDatesOfEvent = 20'000;
constexpr std::size_t kMostDatesOnPage = 1'000'000;

struct Hit {
  FoundEvent Event;
  std::vector<Date> Dates;
};

std::vector<Query<EventDays>> DayQueries(const PageContext& context, std::span<const FoundEvent> events) {
  std::vector<Query<EventDays>> queries(events.size());
  if (!context.Hosting.Sharing) return queries;
  for (std::size_t i = 0; i < events.size(); ++i) queries[i] = EventDaysOf(events[i].EventID);
  return queries;
}

std::vector<Hit> LoadHits(Connection& database, const PageContext& context, const EventSearch& search) {
  const Visitor& visitor = context.Visitor;
  const auto changeable =
      context.Hosting.Strict ? std::optional(visitor.ChangeableCalendars()) : std::nullopt;
  std::vector<FoundEvent> found = Ask(database, FindEvents(search, visitor.LoginName, changeable));
  std::vector<Query<std::optional<OL_Event>>> queries;
  queries.reserve(found.size());
  for (const FoundEvent& event : found) queries.push_back(OccurrenceRuleOf(event.EventID));
  const std::vector<Query<EventDays>> dayQueries = DayQueries(context, found);
  const auto [rules, days] =
      Ask(database, Queries<std::optional<OL_Event>>(queries), Queries<EventDays>(dayQueries));

  const Week week(visitor.FirstDayOfWeek, visitor.Weekend);
  std::size_t datesLeft = kMostDatesOnPage;
  std::vector<Hit> hits;
  hits.reserve(found.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    Hit& hit = hits.emplace_back(Hit{std::move(found[i]), {}});
    if (!rules[i]) continue;
    hit.Dates =
        OccurrenceDates(*rules[i], week, std::clamp<std::size_t>(datesLeft, 1, kMostDatesOfEvent), days[i]);
    datesLeft -= std::min(datesLeft, hit.Dates.size());
  }
  return hits;
}

Html Title(const PageContext& context, const FoundEvent& event) {
  const bool isOpen = !event.Private || context.Visitor.MayChangeEventsOf(event.Owner);
  const HtmlPart ownerName = Content(event.OwnerName);
  if (!isOpen) return Html("{} ({})", Content(LoadText(context, Text::kPrivateEvent)), ownerName);
  const std::string_view hint = LoadText(context, Text::kEditEvent);
  return Html("<A HREF=\"{}?p=e&id={}\" TITLE=\"{}\" {}>{}</A> ({})", Attribute(context.Hosting.ScriptName),
              event.EventID, Attribute(hint), StatusHandler(hint), Content(event.EventName), ownerName);
}

void AddTime(Html& page, const PageContext& context, const FoundEvent& event) {
  const std::string& format = context.Visitor.TimeFormat;
  if (event.BeginTime) page.Add("{}", Content(FormatTime(format, *event.BeginTime)));
  if (event.EndTime) page.Add("-{}", Content(FormatTime(format, *event.EndTime)));
  if (!event.BeginTime && !event.EndTime) page.Add("&nbsp;");
}

/// A list of the event's days with a button that goes to the selected one; `number` makes its name unique.
void AddOccurrences(Html& page, const PageContext& context, const Hit& hit, int number) {
  if (hit.Dates.empty()) {
    page.Add("{}", Content(LoadText(context, Text::kNoOccurrences)));
    return;
  }
  page.Add("<NOBR><SELECT NAME=\"cd{}\" TITLE=\"{}\">\r\n", number,
           Attribute(LoadText(context, Text::kFoundOccurrences)));
  for (const Date date : hit.Dates) {
    const std::string text = FormatShortDate(context.Regional, date);
    page.Add("<OPTION VALUE=\"{}\">{} {}\r\n", Attribute(text),
             Content(AbbreviatedWeekdayName(context.Regional.Names, date)), Content(text));
  }
  page.Add(
      "</SELECT> <INPUT TYPE=button VALUE=\"{}\" onClick=\"javascript:f=document.acForm;"
      "f.action='{}?cn={}&cd='+f.cd{}.options[f.cd{}.selectedIndex].value;f.submit();\"></NOBR>",
      Attribute(LoadText(context, Text::kGoToOccurrence)), ScriptAttribute(context.Hosting.ScriptName),
      ScriptAttribute(hit.Event.Owner), number, number);
}

void AddHits(Html& page, const PageContext& context, std::span<const Hit> hits) {
  int number = 0;
  for (const Hit& hit : hits) {
    ++number;
    page.Add("<TR><TD>{}</TD><TD>", Title(context, hit.Event));
    AddTime(page, context, hit.Event);
    page.Add("</TD><TD>");
    AddOccurrences(page, context, hit, number);
    page.Add(
        "</TD><TD ALIGN=CENTER CLASS=\"captions\">"
        "<INPUT TYPE=checkbox NAME=\"id\" VALUE=\"{}\" TITLE=\"{}\"></TD></TR>\r\n",
        hit.Event.EventID, Attribute(LoadText(context, Text::kFoundDelete)));
  }
}

Html CaptionRow(const PageContext& context) {
  return Html(
      "<TR><TD CLASS=\"captions\">{} ({})</TD><TD CLASS=\"captions\">{}</TD><TD CLASS=\"captions\">{}</TD>"
      "<TD ALIGN=CENTER CLASS=\"captions\">{}</TD></TR>\r\n",
      Content(LoadText(context, Text::kFoundTitle)), Content(LoadText(context, Text::kFoundOwner)),
      Content(LoadText(context, Text::kFoundTime)), Content(LoadText(context, Text::kFoundOccurrences)),
      Content(LoadText(context, Text::kFoundDelete)));
}

/// Keeps the search for the page after a deletion.
Html HiddenSearch(const EventSearch& search) {
  return Html("{}{}{}{}", HiddenField("search", WithReferencesShown(search.Text)),
              HiddenField("cal", WithReferencesShown(search.Calendar)),
              HiddenField("type", WithReferencesShown(search.Kind)), HiddenField("date1", search.StartDate));
}

Html LastRow(const PageContext& context, bool hasHits) {
  if (!hasHits)
    return Html("<TR><TD ALIGN=CENTER COLSPAN=4>{}</TD></TR>",
                Content(LoadText(context, Text::kNoEventsFound)));
  return Html("<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\">{}</TD></TR>",
              ActionButton(context, LoadText(context, Text::kDeleteSelectedEvents),
                           Html("p=e&act=delete&ret=results")));
}

Html WriteHits(const PageContext& context, const EventSearch& search, std::span<const Hit> hits) {
  Html page = PageHead(context, context.Hosting.ProductTitle);
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(context, Text::kFoundEventsTitle))),
                        SearchToolbar(context).Add(SearchButton(context))));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=e&act=results\" NAME=\"acForm\">",
           Attribute(context.Hosting.ScriptName));
  page.Add(HiddenSearch(search));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(context));
  page.Add(CaptionRow(context));
  AddHits(page, context, hits);
  page.Add(LastRow(context, !hits.empty()));
  page.Add("</TABLE>");
  return page;
}

}  // namespace

void ShowFoundEvents(Visit& visit) {
  const EventSearch search = PostedSearch(visit.Request);
  if (!ParseDate(visit.Context.Regional, search.StartDate)) {
    AddAlert(visit, Text::kInvalidStartDate);
    return ShowSearchForm(visit);
  }
  const std::vector<Hit> hits = LoadHits(visit.Database, visit.Context, search);
  FinishFormPage(visit, WriteHits(visit.Context, search, hits));
}

}  // namespace orlune
