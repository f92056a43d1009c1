#include "store/event_reader.h"

#include "store/field.h"

namespace orlune {

SuggestionState ReadSuggestionState(const Value& field) {
  return SuggestionStateOf(TextOf(field)).value_or(SuggestionState::kUndecided);
}

EventReader::EventReader(const ResultSet& rows)
    : columns_{.EventID = rows.Column("EventID"),
               .EventName = rows.Column("EventName"),
               .Owner = rows.Column("Owner"),
               .Type = rows.Column("Type"),
               .BeginDate = rows.Column("BeginDate"),
               .EndDate = rows.Column("EndDate"),
               .BeginTime = rows.Column("BeginTime"),
               .EndTime = rows.Column("EndTime"),
               .RepeatWeekday = rows.Column("RepeatWeekday"),
               .RepeatFrequency = rows.Column("RepeatFrequency"),
               .RepeatDay = rows.Column("RepeatDay"),
               .RepeatWeekends = rows.Column("RepeatWeekends"),
               .Private = rows.Column("Private"),
               .Comments = rows.Column("Comments"),
               .EventType = rows.Column("EventType"),
               .SuggID = rows.Column("SuggID"),
               .SuggestState = rows.Column("SuggestState")} {}

OL_Event EventReader::Read(const ResultSet& rows) const {
  const auto text = [&](int column) { return std::string(TextOf(rows.Get(column))); };
  OL_Event event;
  event.EventID = NumberOf(rows.Get(columns_.EventID)).value_or(0);
  event.EventName = text(columns_.EventName);
  event.Owner = text(columns_.Owner);
  event.Type = RepetitionOf(TextOf(rows.Get(columns_.Type))).value_or(Repetition::kUnknown);
  event.BeginDate = DateOf(rows.Get(columns_.BeginDate)).value_or(Date{});
  event.EndDate = DateOf(rows.Get(columns_.EndDate)).value_or(event.BeginDate);
  event.BeginTime = TimeOf(rows.Get(columns_.BeginTime));
  event.EndTime = TimeOf(rows.Get(columns_.EndTime));
  event.RepeatWeekday = text(columns_.RepeatWeekday);
  event.RepeatFrequency = FrequencyOf(TextOf(rows.Get(columns_.RepeatFrequency)));
  event.RepeatDay = text(columns_.RepeatDay);
  event.RepeatWeekends =
      WeekendRuleOf(TextOf(rows.Get(columns_.RepeatWeekends))).value_or(WeekendRule::kKeep);
  event.Private = YesNoOf(rows.Get(columns_.Private));
  event.Comments = text(columns_.Comments);
  event.EventType = text(columns_.EventType);
  event.SuggID = text(columns_.SuggID);
  event.SuggestState = ReadSuggestionState(rows.Get(columns_.SuggestState));
  return event;
}

}  // namespace orlune
