#include "pages/sharing/repetition_words.h"

#include <string_view>

#include "base/lists.h"
#include "base/text.h"
#include "html/repetition_labels.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {
namespace {

Text LabelOf(Repetition repetition) {
  return repetition == Repetition::kListed ? Text::kRepeatsOnListedDays
                                           : LabelOf(kRepetitionKinds, repetition);
}

Html Word(const PageContext& context, Text text) {
  return Html("{}", Content(LoadText(context, text)));
}

Html Weekdays(const PageContext& context, std::string_view numbers) {
  Html names;
  ForEachItem(numbers, [&](std::string_view item) {
    const auto number = WholeNumber<std::size_t>(item);
    if (!number || *number < 1 || *number > 7) return;
    names.Add("{}{}", names.IsEmpty() ? Markup("") : Markup(", "),
              Content(context.Regional.Names.Weekdays[*number - 1]));
  });
  return names;
}

Html DaysOfMonth(std::string_view numbers) {
  Html days;
  ForEachItem(numbers, [&](std::string_view item) {
    if (const auto number = RowNumber(item))
      days.Add("{}{}.", days.IsEmpty() ? Markup("") : Markup(", "), *number);
  });
  return days;
}

}  // namespace

Html RepetitionWords(const PageContext& context, const OL_Event& event) {
  Html words = Word(context, LabelOf(event.Type));
  if (event.Type == Repetition::kByWeekday) {
    words.Add(": {}", Weekdays(context, event.RepeatWeekday));
    if (event.RepeatFrequency)
      words.Add("; {}", Word(context, LabelOf(kFrequencyLabels, *event.RepeatFrequency)));
  }
  if (event.Type == Repetition::kMonthly) words.Add(": {}", DaysOfMonth(event.RepeatDay));
  const bool hasWeekendRule = event.Type == Repetition::kMonthly || event.Type == Repetition::kYearly;
  if (hasWeekendRule && event.RepeatWeekends != WeekendRule::kKeep)
    words.Add("; {}", Word(context, LabelOf(kWeekendRuleLabels, event.RepeatWeekends)));
  return words;
}

}  // namespace orlune
