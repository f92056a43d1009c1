#include "pages/sharing/repetition_words.h"

#include <string_view>

#include "base/lists.h"
#include "base/text.h"
#include "request/page_context.h"
#include "request/texts.h"

namespace orlune {
namespace {

Text LabelOf(Repetition repetition) {
  switch (repetition) {
    case Repetition::kDaily:
      return Text::kRepeatsDaily;
    case Repetition::kByWeekday:
      return Text::kRepeatsByWeekday;
    case Repetition::kMonthly:
      return Text::kRepeatsMonthly;
    case Repetition::kYearly:
      return Text::kRepeatsYearly;
    case Repetition::kListed:
      return Text::kRepeatsOnListedDays;
    default:
      return Text::kNoRepetition;
  }
}

Text LabelOf(Frequency frequency) {
  switch (frequency) {
    case Frequency::kEveryWeek:
      return Text::kEveryWeek;
    case Frequency::kEvery2Weeks:
      return Text::kEvery2Weeks;
    case Frequency::kEvery3Weeks:
      return Text::kEvery3Weeks;
    case Frequency::kFirstInMonth:
      return Text::kFirstInMonth;
    case Frequency::kSecondInMonth:
      return Text::kSecondInMonth;
    case Frequency::kThirdInMonth:
      return Text::kThirdInMonth;
    case Frequency::kFourthInMonth:
      return Text::kFourthInMonth;
  }
  return Text::kEveryWeek;
}

Text LabelOf(WeekendRule rule) {
  switch (rule) {
    case WeekendRule::kKeep:
      return Text::kAlsoOnWeekends;
    case WeekendRule::kSkip:
      return Text::kSkipWeekends;
    case WeekendRule::kMoveForward:
      return Text::kMoveForward;
    case WeekendRule::kMoveBack:
      return Text::kMoveBack;
  }
  return Text::kAlsoOnWeekends;
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
    if (event.RepeatFrequency) words.Add("; {}", Word(context, LabelOf(*event.RepeatFrequency)));
  }
  if (event.Type == Repetition::kMonthly) words.Add(": {}", DaysOfMonth(event.RepeatDay));
  const bool hasWeekendRule = event.Type == Repetition::kMonthly || event.Type == Repetition::kYearly;
  if (hasWeekendRule && event.RepeatWeekends != WeekendRule::kKeep)
    words.Add("; {}", Word(context, LabelOf(event.RepeatWeekends)));
  return words;
}

}  // namespace orlune
