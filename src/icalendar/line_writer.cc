#include "icalendar/line_writer.h"

namespace orlune {
namespace {

constexpr std::size_t kLongestLine = 75;

bool IsContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

void AppendNumber(std::string& text, long long number, int digits) {
  long long power = 1;
  for (int i = 1; i < digits; ++i) power *= 10;
  for (; power > 0; power /= 10) text += static_cast<char>('0' + number / power % 10);
}

void AppendDate(std::string& text, Date date) {
  const std::chrono::year_month_day parts{date};
  AppendNumber(text, static_cast<int>(parts.year()), 4);
  AppendNumber(text, static_cast<unsigned>(parts.month()), 2);
  AppendNumber(text, static_cast<unsigned>(parts.day()), 2);
}

}  // namespace

void AppendLine(std::string& text, std::string_view line) {
  std::size_t most = kLongestLine;
  while (line.size() > most) {
    std::size_t end = most;
    while (end > 1 && IsContinuation(line[end])) --end;
    text += line.substr(0, end);
    text += "\r\n ";
    line.remove_prefix(end);
    most = kLongestLine - 1;
  }
  text += line;
  text += "\r\n";
}

void AppendLine(std::string& text, std::string_view nameWithColon, std::string_view value) {
  if (nameWithColon.size() + value.size() <= kLongestLine) {
    text += nameWithColon;
    text += value;
    text += "\r\n";
    return;
  }
  AppendLine(text, std::string(nameWithColon).append(value));
}

void AppendComponent(std::string& text, const Component& component) {
  AppendLine(text, "BEGIN:", component.Name);
  for (const ContentLine& line : component.Lines) AppendLine(text, line.Text);
  for (const Component& child : component.Children) AppendComponent(text, child);
  AppendLine(text, "END:", component.Name);
}

std::string EscapedText(std::string_view plain) {
  std::string text;
  text.reserve(plain.size());
  for (std::size_t i = 0; i < plain.size(); ++i) {
    const char c = plain[i];
    if (c == '\r' || c == '\n') {
      if (c == '\r' && i + 1 < plain.size() && plain[i + 1] == '\n') ++i;
      text += "\\n";
    } else if (c == '\\' || c == ';' || c == ',') {
      text += '\\';
      text += c;
    } else if (static_cast<unsigned char>(c) >= ' ' || c == '\t') {
      if (c != '\x7F') text += c;
    }
  }
  return text;
}

std::string DateText(Date date) {
  std::string text;
  AppendDate(text, date);
  return text;
}

std::string DateTimeText(const DateTime& time) {
  std::string text;
  AppendDate(text, time.Day);
  const std::chrono::hh_mm_ss parts{time.Time};
  text += 'T';
  AppendNumber(text, parts.hours().count(), 2);
  AppendNumber(text, parts.minutes().count(), 2);
  AppendNumber(text, parts.seconds().count(), 2);
  return text;
}

std::string UtcText(std::chrono::sys_seconds moment) {
  const Date day = std::chrono::floor<std::chrono::days>(moment);
  return DateTimeText({day, moment - day}) + "Z";
}

}  // namespace orlune
