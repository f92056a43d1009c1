#include "eventpages/found_events.h"

#include <algorithm>

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

std::optional<OL_Event> ReadOccurrenceRule(const ComponentState& state, int id) {
  const auto row =
      OpenQuery(*state.Database,
                Statement("SELECT EventName, Type, BeginDate, EndDate, BeginTime, EndTime, RepeatWeekday, "
                          "RepeatFrequency, RepeatDay, RepeatWeekends FROM Events WHERE (EventID = {})",
                          id));
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

/// The rows of the hits, numbered from 1.
class HitList {
 public:
  explicit HitList(const ComponentState& state) : state_(state), week_(state.FirstDayOfWeek, state.Weekend) {}

  void AddRows(Html& page, const EventSearch& search) {
    const auto rows = OpenQuery(*state_.Database, SearchQuery(state_, search));
    const int eventId = rows->Column("EventID");
    const int owner = rows->Column("Owner");
    const int beginTime = rows->Column("BeginTime");
    const int endTime = rows->Column("EndTime");
    while (rows->Next()) {
      ++count_;
      const int id = NumberOf(rows->Get(eventId)).value_or(0);
      page.Add("<TR><TD>{}</TD><TD>", Title(*rows, id));
      AddTime(page, TimeOf(rows->Get(beginTime)), TimeOf(rows->Get(endTime)));
      page.Add("</TD><TD>");
      AddOccurrences(page, id, TextOf(rows->Get(owner)));
      page.Add(
          "</TD><TD ALIGN=CENTER CLASS=\"captions\">"
          "<INPUT TYPE=checkbox NAME=\"id\" VALUE=\"{}\" TITLE=\"{}\"></TD></TR>\r\n",
          id, Attribute(LoadText(state_, 438)));
    }
  }
  int Count() const { return count_; }

 private:
  Html Title(const ResultSet& row, int id) const {
    const auto field = [&](std::string_view name) { return row.Get(row.Column(name)); };
    const bool isOpen = !YesNoOf(field("Private")) || MayChangeEventsOf(state_, TextOf(field("Owner")));
    const HtmlPart ownerName = Content(TextOf(field("FriendlyName")));
    if (!isOpen) return Html("{} ({})", Content(LoadText(state_, 329)), ownerName);
    const std::string_view hint = LoadText(state_, 210);
    return Html("<A HREF=\"{}?p=e&id={}\" TITLE=\"{}\" {}>{}</A> ({})", Attribute(state_.ScriptName), id,
                Attribute(hint), StatusHandler(hint), Content(TextOf(field("EventName"))), ownerName);
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
  page.Add("<FORM METHOD=post ACTION=\"{}?p=e&act=results\" NAME=\"acForm\">", Attribute(state.ScriptName));
  page.Add(HiddenSearch(search));
  page.Add(TitleBarOpen("90", Html("{}", Content(LoadText(state, 430))),
                        SearchToolbar(state).Add(SearchButton(state))));
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
