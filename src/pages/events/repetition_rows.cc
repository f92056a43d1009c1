#include "pages/events/repetition_rows.h"

#include <array>
#include <string>

#include "base/dates.h"
#include "html/form_parts.h"
#include "pages/events/form_page.h"
#include "request/texts.h"
#include "request/visit.h"

namespace orlune {
namespace {

struct NamedChoice {
  Markup Value;
  Text Label;
};

constexpr std::array<NamedChoice, 7> kFrequencies{{{"vko_1", Text::kEveryWeek},
                                                   {"vko_2", Text::kEvery2Weeks},
                                                   {"vko_3", Text::kEvery3Weeks},
                                                   {"kk_1", Text::kFirstInMonth},
                                                   {"kk_2", Text::kSecondInMonth},
                                                   {"kk_3", Text::kThirdInMonth},
                                                   {"kk_4", Text::kFourthInMonth}}};
constexpr std::array<NamedChoice, 4> kWeekends{{{"vkl_ok", Text::kAlsoOnWeekends},
                                                {"vkl_no", Text::kSkipWeekends},
                                                {"vkl_ma", Text::kMoveForward},
                                                {"vkl_pe", Text::kMoveBack}}};

/// The days of the week from the one that the user's week begins on.
Html WeekdaysRow(const Visit& visit, const OL_Event& event) {
  Html list("<SELECT NAME=\"repweekday\" ID=\"repweekday\" SIZE=4 MULTIPLE>\r\n");
  for (int offset = 0; offset < 7; ++offset) {
    const int weekday = (visit.Context.Visitor.FirstDayOfWeek - 1 + offset) % 7 + 1;
    const auto& name = visit.Context.Regional.Names.Weekdays[static_cast<std::size_t>(weekday - 1)];
    list.Add("<OPTION VALUE=\"{}\"{}>{}\r\n", weekday,
             SelectedIf(event.RepeatWeekday, std::to_string(weekday)), Content(name));
  }
  return FieldRow(visit, Text::kRepeatWeekdays, "repweekday", list.Add("</SELECT>"));
}

Html FrequencyRow(const Visit& visit, const OL_Event& event) {
  Html list("<SELECT NAME=\"frequency\" ID=\"frequency\" SIZE=4>\r\n");
  for (const NamedChoice& frequency : kFrequencies) {
    list.Add("{}\r\n", Choice(visit, frequency.Value, frequency.Label,
                              frequency.Value.Text() == event.RepeatFrequency));
  }
  return FieldRow(visit, Text::kRepeatFrequency, "frequency", list.Add("</SELECT>"));
}

Html DaysRow(const Visit& visit, const OL_Event& event) {
  Html list("<SELECT NAME=\"repday\" ID=\"repday\" SIZE=4 MULTIPLE>\r\n");
  for (int day = 1; day <= 31; ++day)
    list.Add("<OPTION VALUE=\"{}\"{}>{}.\r\n", day, SelectedIf(event.RepeatDay, std::to_string(day)), day);
  return FieldRow(visit, Text::kRepeatDays, "repday", list.Add("</SELECT>"));
}

Html WeekendsRow(const Visit& visit, const OL_Event& event) {
  Html radios;
  for (const NamedChoice& rule : kWeekends) {
    radios.Add("<NOBR><LABEL><INPUT TYPE=radio NAME=\"repweekends\" VALUE=\"{}\"{}>{}</LABEL></NOBR>\r\n",
               rule.Value, CheckedIf(rule.Value.Text(), event.RepeatWeekends),
               Content(LoadText(visit, rule.Label)));
  }
  return GroupRow(visit, Text::kRepeatWeekends, radios);
}

void AddHidden(Html& fields, Markup name, std::string_view value) {
  if (!value.empty()) fields.Add(HiddenField(name, value));
}

}  // namespace

void AddRepetitionRows(Html& page, const Visit& visit, const OL_Event& event) {
  if (event.Type == "weekday") {
    page.Add(WeekdaysRow(visit, event));
    page.Add(FrequencyRow(visit, event));
  }
  if (event.Type == "month") page.Add(DaysRow(visit, event));
  if (event.Type == "month" || event.Type == "year") page.Add(WeekendsRow(visit, event));
}

Html HiddenRepetition(const Visit& visit, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const bool hasTypedEnd =
      draft.EndDate != FormatShortDate(visit.Context.Regional, visit.Context.Visitor.CurrentDate);
  Html fields;
  if (event.Type == "none" && hasTypedEnd) AddHidden(fields, "date2", draft.EndDate);
  if (event.Type != "weekday") {
    AddHidden(fields, "repweekday", event.RepeatWeekday);
    AddHidden(fields, "frequency", event.RepeatFrequency);
  }
  if (event.Type != "month") AddHidden(fields, "repday", event.RepeatDay);
  if (event.Type != "month" && event.Type != "year" && event.RepeatWeekends != kWeekends[0].Value.Text())
    AddHidden(fields, "repweekends", event.RepeatWeekends);
  return fields;
}

}  // namespace orlune
