#include "exchange/row_text.h"

#include <chrono>

#include "base/text.h"

namespace orlune {
namespace {

constexpr std::size_t kMostTitleCharacters = 255;

/// A field of any content; none can be taken for another one.
void Add(std::string& text, std::string_view field) {
  text += std::to_string(field.size());
  text += ':';
  text += field;
}

void Add(std::string& text, Date date) {
  text += std::to_string(date.time_since_epoch().count());
  text += ' ';
}

void Add(std::string& text, std::optional<TimeOfDay> time) {
  text += time ? std::to_string(time->count()) : "-";
  text += ' ';
}

void Add(std::string& text, std::span<const Date> days) {
  for (const Date day : days) Add(text, day);
  text += ';';
}

bool HasWeekendRule(const OL_Event& event) {
  return (event.Type == Repetition::kMonthly || event.Type == Repetition::kYearly) &&
         event.RepeatWeekends != WeekendRule::kKeep;
}

void AddRule(std::string& text, const OL_Event& event, const Week& week) {
  Add(text, StoredText(event.Type));
  Add(text, event.BeginDate);
  if (event.Type == Repetition::kNone) return;
  Add(text, event.EndDate);
  if (event.Type == Repetition::kByWeekday) {
    Add(text, event.RepeatWeekday);
    Add(text, event.RepeatFrequency ? StoredText(*event.RepeatFrequency) : "");
  } else if (event.Type == Repetition::kMonthly || event.Type == Repetition::kYearly) {
    Add(text, event.RepeatDay);
    Add(text, StoredText(event.RepeatWeekends));
    if (HasWeekendRule(event)) Add(text, week.WeekendPositions());
  }
}

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The first characters, without a part of a character or of a reference at their end.
std::string Cut(std::string text, std::size_t mostCharacters) {
  std::size_t characters = 0;
  std::size_t end = 0;
  for (; end < text.size(); ++end) {
    if (!IsContinuation(text[end]) && ++characters > mostCharacters) break;
  }
  if (end == text.size()) return text;
  for (const std::string_view reference : {"&#39;", "&quot;"}) {
    const std::size_t begin = text.rfind(reference, end - 1);
    if (begin != std::string::npos && begin < end && begin + reference.size() > end) end = begin;
  }
  text.resize(end);
  return text;
}

std::string WithoutQuotes(std::string_view text) {
  return ReplaceAll(ReplaceAll(text, "'", "&#39;"), "\"", "&quot;");
}

std::optional<TimeOfDay> WithoutSeconds(std::optional<TimeOfDay> time) {
  if (!time) return time;
  return std::chrono::floor<std::chrono::minutes>(*time);
}

}  // namespace

std::string TextOfRows(std::span<const ObjectEvent> rows, const Week& week, std::string_view zone) {
  std::string text;
  for (const ObjectEvent& row : rows) {
    const OL_Event& event = row.Event;
    text += std::to_string(row.Place) + ' ';
    AddRule(text, event, week);
    Add(text, event.BeginTime);
    Add(text, event.EndTime);
    if (event.BeginTime) Add(text, zone);
    Add(text, row.Days.Listed);
    Add(text, row.Days.LeftOut);
    Add(text, event.EventName);
    Add(text, event.Comments);
    Add(text, event.EventType);
    Add(text, event.Private ? "private" : "public");
    Add(text, StoredText(event.SuggestState));
  }
  return text;
}

std::string ETagOfText(const Secrets& secrets, std::string_view text) {
  constexpr std::size_t kDigits = 32;
  return secrets.Digest(text).substr(0, kDigits);
}

std::string PlainText(std::string_view stored) {
  if (stored.find('&') == std::string_view::npos) return std::string(stored);
  return ReplaceAll(ReplaceAll(stored, "&#39;", "'"), "&quot;", "\"");
}

OL_Event AsStored(OL_Event event) {
  event.EventName = Cut(WithoutQuotes(event.EventName), kMostTitleCharacters);
  event.Comments = WithoutQuotes(event.Comments);
  event.EventType = ReplaceAll(event.EventType, "'", "&#39;");
  event.BeginTime = WithoutSeconds(event.BeginTime);
  event.EndTime = WithoutSeconds(event.EndTime);
  return event;
}

}  // namespace orlune
