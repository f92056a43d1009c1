#include "eventpages/found_events.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "component/component_state.h"
#include "data/database_access.h"
#include "data/field.h"
#include "eventpages/event_search.h"
#include "eventpages/form_page.h"
#include "eventpages/occurrence_dates.h"
#include "frame/date_text.h"
#include "frame/dates.h"
#include "frame/form_parts.h"
#include "frame/links.h"
#include "frame/page_frame.h"
#include "frame/text.h"
#include "frame/texts.h"
#include "session/rights.h"

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

std::optional<OL_Event> ReadOccurrenceRule(const ComponentState& state, int id) {
  const auto row = OpenQuery(*state.Database, OccurrenceRuleQuery(id));
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

std::vector<Hit> FindHits(const ComponentState& state, const EventSearch& search) {
  const auto rows = OpenQuery(*state.Database, SearchQuery(state, search));
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
  explicit HitList(const ComponentState& state) : state_(state), week_(state.FirstDayOfWeek, state.Weekend) {}

  void AddRows(Html& page, const EventSearch& search) {
    const std::vector<Hit> hits = FindHits(state_, search);
    for (const Hit& hit : hits) state_.Database->Announce(OccurrenceRuleQuery(hit.Id));
    for (const Hit& hit : hits) {
      ++count_;
      page.Add("<TR><TD>{}</TD><TD>", Title(hit));
      AddTime(page, hit.BeginTime, hit.EndTime);
      page.Add("</TD><TD>");
      AddOccurrences(page, hit.Id, hit.Owner);
      page.Add(
          "</TD><TD ALIGN=CENTER CLASS=\"captions\">"
          "<INPUT TYPE=checkbox NAME=\"id\" VALUE=\"{}\" TITLE=\"{}\"></TD></TR>\r\n",
          hit.Id, Attribute(LoadText(state_, 438)));
    }
  }
  int Count() const { return count_; }

 private:
  Html Title(const Hit& hit) const {
    const bool isOpen = !hit.IsPrivate || MayChangeEventsOf(state_, hit.Owner);
    const HtmlPart ownerName = Content(hit.OwnerName);
    if (!isOpen) return Html("{} ({})", Content(LoadText(state_, 329)), ownerName);
    const std::string_view hint = LoadText(state_, 210);
    return Html("<A HREF=\"{}?p=e&id={}\" TITLE=\"{}\" {}>{}</A> ({})", Attribute(state_.ScriptName), hit.Id,
                Attribute(hint), StatusHandler(hint), Content(hit.Name), ownerName);
  }

  void AddTime(Html& page, std::optional<TimeOfDay> begin, std::optional<TimeOfDay> end) const {
    if (begin) page.Add("{}", Content(FormatTime(state_.TimeFormat, *begin)));
    if (end) page.Add("-{}", Content(FormatTime(state_.TimeFormat, *end)));
    if (!begin && !end) page.Add("&nbsp;");
  }

  void AddOccurrences(Html& page, int id, std::string_view owner) {
    const auto event = ReadOccurrenceRule(state_, id);
    const auto dates =
        event ? OccurrenceDates(*event, week_, std::clamp<std::size_t>(datesLeft_, 1, kMostDatesOfEvent))
              : std::vector<Date>();
    datesLeft_ -= std::min(datesLeft_, dates.size());
    if (dates.empty()) {
      page.Add("{}", Content(LoadText(state_, 437)));
      return;
    }
    page.Add("<NOBR><SELECT NAME=\"cd{}\" TITLE=\"{}\">\r\n", count_, Attribute(LoadText(state_, 435)));
    for (const Date date : dates) {
      const std::string text = FormatShortDate(state_.Surroundings->Regional, date);
      page.Add("<OPTION VALUE=\"{}\">{} {}\r\n", Attribute(text),
               Content(AbbreviatedWeekdayName(state_.Surroundings->Regional.Names, date)), Content(text));
    }
    page.Add(
        "</SELECT> <INPUT TYPE=button VALUE=\"{}\" onClick=\"javascript:f=document.acForm;"
        "f.action='{}?cn={}&cd='+f.cd{}.options[f.cd{}.selectedIndex].value;f.submit();\"></NOBR>",
        Attribute(LoadText(state_, 436)), ScriptAttribute(state_.ScriptName), ScriptAttribute(owner), count_,
        count_);
  }

  const ComponentState& state_;
  Week week_;
  int count_ = 0;
  std::size_t datesLeft_ = kMostDatesOnPage;
};

Html CaptionRow(const ComponentState& state) {
  return Html(
      "<TR><TD CLASS=\"captions\">{} ({})</TD><TD CLASS=\"captions\">{}</TD><TD CLASS=\"captions\">{}</TD>"
      "<TD ALIGN=CENTER CLASS=\"captions\">{}</TD></TR>\r\n",
      Content(LoadText(state, 432)), Content(LoadText(state, 433)), Content(LoadText(state, 434)),
      Content(LoadText(state, 435)), Content(LoadText(state, 438)));
}

/// Carries the search on to the page after a deletion.
Html HiddenSearch(const EventSearch& search) {
  return Html("{}{}{}{}", HiddenField("search", WithReferencesShown(search.Text)),
              HiddenField("cal", WithReferencesShown(search.Calendar)),
              HiddenField("type", WithReferencesShown(search.Kind)), HiddenField("date1", search.StartDate));
}

Html LastRow(const ComponentState& state, bool hasHits) {
  if (!hasHits) return Html("<TR><TD ALIGN=CENTER COLSPAN=4>{}</TD></TR>", Content(LoadText(state, 431)));
  return Html("<TR><TD ALIGN=CENTER COLSPAN=4 CLASS=\"captions\">{}</TD></TR>",
              ActionButton(state, LoadText(state, 460), Html("p=e&act=delete&ret=results")));
}

void ShowHits(ComponentState& state, const EventSearch& search) {
  HitList hits(state);
  Html page = PageHead(state, state.ProductTitle);
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(state, 430))),
                        SearchToolbar(state).Add(SearchButton(state))));
  page.Add("<FORM METHOD=post ACTION=\"{}?p=e&act=results\" NAME=\"acForm\">", Attribute(state.ScriptName));
  page.Add(HiddenSearch(search));
  page.Add("<TABLE CELLSPACING={} ALIGN=CENTER WIDTH=100%>", CellSpacing(state));
  page.Add(CaptionRow(state));
  hits.AddRows(page, search);
  page.Add(LastRow(state, hits.Count() > 0));
  page.Add("</TABLE>");
  FinishFormPage(state, std::move(page));
}

}  // namespace

void ShowFoundEvents(ComponentState& state) {
  const EventSearch search = PostedSearch(state);
  if (ParseDate(state.Surroundings->Regional, search.StartDate)) return ShowHits(state, search);
  AddAlert(state, 812);
  ShowSearchForm(state);
}

}  // namespace orlune
