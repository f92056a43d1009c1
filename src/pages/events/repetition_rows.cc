#include "pages/events/repetition_rows.h"

#include <array>
#include <string>

#include "base/dates.h"
#include "html/form_parts.h"
#include "pages/events/form_page.h"
#include "request/component_state.h"
#include "request/texts.h"

namespace orlune {
namespace {

struct NamedChoice {
  Markup Value;
  int Text;
};

constexpr std::array<NamedChoice, 7> kFrequencies{{{"vko_1", 315},
                                                   {"vko_2", 316},
                                                   {"vko_3", 317},
                                                   {"kk_1", 318},
                                                   {"kk_2", 319},
                                                   {"kk_3", 320},
                                                   {"kk_4", 321}}};
constexpr std::array<NamedChoice, 4> kWeekends{
    {{"vkl_ok", 324}, {"vkl_no", 325}, {"vkl_ma", 326}, {"vkl_pe", 327}}};

/// The days of the week from the one that the user's week begins on.
Html WeekdaysRow(const ComponentState& state, const OL_Event& event) {
  Html list("<SELECT NAME=\"repweekday\" ID=\"repweekday\" SIZE=4 MULTIPLE>\r\n");
  for (int offset = 0; offset < 7; ++offset) {
    const int weekday = (state.FirstDayOfWeek - 1 + offset) % 7 + 1;
    const auto& name = state.Surroundings->Regional.Names.Weekdays[static_cast<std::size_t>(weekday - 1)];
    list.Add("<OPTION VALUE=\"{}\"{}>{}\r\n", weekday,
             SelectedIf(event.RepeatWeekday, std::to_string(weekday)), Content(name));
  }
  return FieldRow(state, 313, "repweekday", list.Add("</SELECT>"));
}

Html FrequencyRow(const ComponentState& state, const OL_Event& event) {
  Html list("<SELECT NAME=\"frequency\" ID=\"frequency\" SIZE=4>\r\n");
  for (const NamedChoice& frequency : kFrequencies) {
    list.Add("{}\r\n",
             Choice(state, frequency.Value, frequency.Text, frequency.Value.Text() == event.RepeatFrequency));
  }
  return FieldRow(state, 314, "frequency", list.Add("</SELECT>"));
}

Html DaysRow(const ComponentState& state, const OL_Event& event) {
  Html list("<SELECT NAME=\"repday\" ID=\"repday\" SIZE=4 MULTIPLE>\r\n");
  for (int day = 1; day <= 31; ++day)
    list.Add("<OPTION VALUE=\"{}\"{}>{}.\r\n", day, SelectedIf(event.RepeatDay, std::to_string(day)), day);
  return FieldRow(state, 322, "repday", list.Add("</SELECT>"));
}

Html WeekendsRow(const ComponentState& state, const OL_Event& event) {
  Html radios;
  for (const NamedChoice& rule : kWeekends) {
    radios.Add("<NOBR><LABEL><INPUT TYPE=radio NAME=\"repweekends\" VALUE=\"{}\"{}>{}</LABEL></NOBR>\r\n",
               rule.Value, CheckedIf(rule.Value.Text(), event.RepeatWeekends),
               Content(LoadText(state, rule.Text)));
  }
  return GroupRow(state, 323, radios);
}

void AddHidden(Html& fields, Markup name, std::string_view value) {
  if (!value.empty()) fields.Add(HiddenField(name, value));
}

}  // namespace

void AddRepetitionRows(Html& page, const ComponentState& state, const OL_Event& event) {
  if (event.Type == "weekday") {
    page.Add(WeekdaysRow(state, event));
    page.Add(FrequencyRow(state, event));
  }
  if (event.Type == "month") page.Add(DaysRow(state, event));
  if (event.Type == "month" || event.Type == "year") page.Add(WeekendsRow(state, event));
}

Html HiddenRepetition(const ComponentState& state, const EventDraft& draft) {
  const OL_Event& event = draft.Event;
  const bool hasTypedEnd = draft.EndDate != FormatShortDate(state.Surroundings->Regional, state.CurrentDate);
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
