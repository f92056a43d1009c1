#include "pages/events/found_events.h"

#include <algorithm>
#include <optional>
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
#include "store/database_access.h"
#include "store/field.h"

namespace orlune {
namespace {

/// The days that are listed at most, of an event (54 years of days) and on a page. Past the latter a hit
/// shows only its first day. Nobody looks through as many, and events of many centuries cannot exhaust the
/// server.
constexpr std::size_t kMostDatesOfEvent = 20'000;
constexpr std::size_t kMostDatesOnPage = 1'000'000;

Statement OccurrenceRuleQuery(int id) {
  return Statement(
      "SELECT EventName, Type, BeginDate, EndDate, BeginTime, EndTime, RepeatWeekday, "
      "RepeatFrequency, RepeatDay, RepeatWeekends FROM Events WHERE (EventID = {})",
      id);
}

std::optional<OL_Event> ReadOccurrenceRule(const Visit& visit, int id) {
  const auto row = OpenQuery(visit.Database, OccurrenceRuleQuery(id));
  if (!row->Next()) return std::nullopt;
  const auto field = [&](std::string_view name) { return row->Get(row->Column(name)); };
  const auto text = [&](std::string_view name) { return std::string(TextOf(field(name))); };
  OL_Event event;
  event.Type = text("Type");
  event.BeginDate = DateOf(field("BeginDate")).value_or(Date{});
  event.EndDate = DateOf(field("EndDate")).value_or(event.BeginDate);
  event.RepeatWeekday = text("RepeatWeekday");
  event.RepeatFrequency = text("RepeatFrequency");
  event.RepeatDay = text("RepeatDay");
  event.RepeatWeekends = text("RepeatWeekends");
  return event;
}

struct Hit {
  int Id;
  std::string Name;
  std::string Owner;
  std::string OwnerName;
  bool IsPrivate;
  std::optional<TimeOfDay> BeginTime;
  std::optional<TimeOfDay> EndTime;
};

std::vector<Hit> FindHits(const Visit& visit, const EventSearch& search) {
  const auto rows = OpenQuery(visit.Database, SearchQuery(visit, search));
  const auto field = [&](std::string_view name) { return rows->Get(rows->Column(name)); };
  const auto text = [&](std::string_view name) { return std::string(TextOf(field(name))); };
  std::vector<Hit> hits;
  while (rows->Next()) {
    hits.push_back({NumberOf(field("EventID")).value_or(0), text("EventName"), text("Owner"),
                    text("FriendlyName"), YesNoOf(field("Private")), TimeOf(field("BeginTime")),
                    TimeOf(field("EndTime"))});
  }
  return hits;
}

/// The rows of the hits, numbered from 1.
class HitList {
 public:
  explicit HitList(const Visit& visit)
      : visit_(visit), week_(visit.Context.Visitor.FirstDayOfWeek, visit.Context.Visitor.Weekend) {}

  void AddRows(Html& page, const EventSearch& search) {
    const std::vector<Hit> hits = FindHits(visit_, search);
    for (const Hit& hit : hits) visit_.Database.Announce(OccurrenceRuleQuery(hit.Id));
    for (const Hit& hit : hits) {
      ++count_;
      page.Add("<TR><TD>{}</TD><TD>", Title(hit));
      AddTime(page, hit.BeginTime, hit.EndTime);
      page.Add("</TD><TD>");
      AddOccurrences(page, hit.Id, hit.Owner);
      page.Add(
          "</TD><TD ALIGN=CENTER CLASS=\"captions\">"
          "<INPUT TYPE=checkbox NAME=\"id\" VALUE=\"{}\" TITLE=\"{}\"></TD></TR>\r\n",
          hit.Id, Attribute(LoadText(visit_, Text::kFoundDelete)));
    }
  }
  int Count() const { return count_; }

 private:
  Html Title(const Hit& hit) const {
    const bool isOpen = !hit.IsPrivate || visit_.Context.Visitor.MayChangeEventsOf(hit.Owner);
    const HtmlPart ownerName = Content(hit.OwnerName);
    if (!isOpen) return Html("{} ({})", Content(LoadText(visit_, Text::kPrivateEvent)), ownerName);
    const std::string_view hint = LoadText(visit_, Text::kEditEvent);
    return Html("<A HREF=\"{}?p=e&id={}\" TITLE=\"{}\" {}>{}</A> ({})",
                Attribute(visit_.Context.Hosting.ScriptName), hit.Id, Attribute(hint), StatusHandler(hint),
                Content(hit.Name), ownerName);
  }

  void AddTime(Html& page, std::optional<TimeOfDay> begin, std::optional<TimeOfDay> end) const {
    if (begin) page.Add("{}", Content(FormatTime(visit_.Context.Visitor.TimeFormat, *begin)));
    if (end) page.Add("-{}", Content(FormatTime(visit_.Context.Visitor.TimeFormat, *end)));
    if (!begin && !end) page.Add("&nbsp;");
  }

  void AddOccurrences(Html& page, int id, std::string_view owner) {
    const auto event = ReadOccurrenceRule(visit_, id);
    const auto dates =
        event ? OccurrenceDates(*event, week_, std::clamp<std::size_t>(datesLeft_, 1, kMostDatesOfEvent))
              : std::vector<Date>();
    datesLeft_ -= std::min(datesLeft_, dates.size());
    if (dates.empty()) {
      page.Add("{}", Content(LoadText(visit_, Text::kNoOccurrences)));
      return;
    }
    page.Add("<NOBR><SELECT NAME=\"cd{}\" TITLE=\"{}\">\r\n", count_,
             Attribute(LoadText(visit_, Text::kFoundOccurrences)));
    for (const Date date : dates) {
      const std::string text = FormatShortDate(visit_.Context.Regional, date);
      page.Add("<OPTION VALUE=\"{}\">{} {}\r\n", Attribute(text),
               Content(AbbreviatedWeekdayName(visit_.Context.Regional.Names, date)), Content(text));
    }
    page.Add(
        "</SELECT> <INPUT TYPE=button VALUE=\"{}\" onClick=\"javascript:f=document.acForm;"
        "f.action='{}?cn={}&cd='+f.cd{}.options[f.cd{}.selectedIndex].value;f.submit();\"></NOBR>",
        Attribute(LoadText(visit_, Text::kGoToOccurrence)),
        ScriptAttribute(visit_.Context.Hosting.ScriptName), ScriptAttribute(owner), count_, count_);
  }

  const Visit& visit_;
  Week week_;
  int count_ = 0;
  std::size_t datesLeft_ = kMostDatesOnPage;
};

Html CaptionRow(const Visit& visit) {
  return Html(
      "<TR><TD CLASS=\"captions\">{} ({})</TD><TD CLASS=\"captions\">{}</TD><TD CLASS=\"captions\">{}</TD>"
      "<TD ALIGN=CENTER CLASS=\"captions\">{}</TD></TR>\r\n",
      Content(LoadText(visit, Text::kFoundTitle)), Content(LoadText(visit, Text::kFoundOwner)),
      Content(LoadText(visit, Text::kFoundTime)), Content(LoadText(visit, Text::kFoundOccurrences)),
      Content(LoadText(visit, Text::kFoundDelete)));
}

/// Carries the search on to the page after a deletion.
Html HiddenSearch(const EventSearch& search) {
  return Html("{}{}{}{}", HiddenField("search", WithReferencesShown(search.Text)),
              HiddenField("cal", WithReferencesShown(search.Calendar)),
              HiddenField("type", WithReferencesShown(search.Kind)), HiddenField("date1", search.StartDate));
}

Html LastRow(const Visit& visit, bool hasHits) {
  if (!hasHits)
    return Html("<TR><TD ALIGN=CENTER COLSPAN=4>{}</TD></TR>",
                Content(LoadText(visit, Text::kNoEventsFound)));
  return Html(
      "<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\">{}</TD></TR>",
      ActionButton(visit, LoadText(visit, Text::kDeleteSelectedEvents), Html("p=e&act=delete&ret=results")));
}

void ShowHits(Visit& visit, const EventSearch& search) {
  HitList hits(visit);
  Html page = PageHead(visit, visit.Context.Hosting.ProductTitle);
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(visit, Text::kFoundEventsTitle))),
                        SearchToolbar(visit).Add(SearchButton(visit))));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=e&act=results\" NAME=\"acForm\">",
           Attribute(visit.Context.Hosting.ScriptName));
  page.Add(HiddenSearch(search));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(visit));
  page.Add(CaptionRow(visit));
  hits.AddRows(page, search);
  page.Add(LastRow(visit, hits.Count() > 0));
  page.Add("</TABLE>");
  FinishFormPage(visit, std::move(page));
}

}  // namespace

void ShowFoundEvents(Visit& visit) {
  const EventSearch search = PostedSearch(visit);
  if (ParseDate(visit.Context.Regional, search.StartDate)) return ShowHits(visit, search);
  AddAlert(visit, Text::kInvalidStartDate);
  ShowSearchForm(visit);
}

}  // namespace orlune
