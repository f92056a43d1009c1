#include "icalendar/content_lines.h"

#include <algorithm>

#include "base/ascii.h"
#include "base/utf8.h"
#include "exchange/calendar_text.h"

namespace orlune {
namespace {

constexpr std::size_t kMostLines = 1'000'000;
constexpr std::size_t kMostDepth = 8;
constexpr std::size_t kMostQuoted = 60;

[[noreturn]] void Refuse(const std::string& sentence) {
  throw InvalidCalendarText(TextFault::kInvalidText, sentence);
}

bool IsBreak(char c) {
  return c == '\r' || c == '\n';
}

bool IsNameCharacter(char c) {
  const char lower = ToLowerAscii(c);
  return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '_';
}

/// The first characters of a line for a message.
std::string Quoted(std::string_view line) {
  return "\"" + RepairUtf8(std::string(line.substr(0, kMostQuoted))) + "\"";
}

ContentLine ParseLine(std::string_view text) {
  std::size_t nameEnd = 0;
  while (nameEnd < text.size() && IsNameCharacter(text[nameEnd])) ++nameEnd;
  bool isQuoted = false;
  std::size_t colon = nameEnd;
  for (; colon < text.size() && (isQuoted || text[colon] != ':'); ++colon) {
    if (text[colon] == '"') isQuoted = !isQuoted;
  }
  const bool hasParameters = colon > nameEnd && nameEnd < text.size() && text[nameEnd] == ';';
  if (nameEnd == 0 || colon >= text.size() || (colon > nameEnd && !hasParameters))
    Refuse("The line " + Quoted(text) + " is not a property of iCalendar.");
  return {text, text.substr(0, nameEnd), text.substr(nameEnd, colon - nameEnd), text.substr(colon + 1)};
}

std::string_view TrimmedEnd(std::string_view text) {
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

/// Puts lines together to components.
class ComponentReader {
 public:
  void Add(const ContentLine& line) {
    if (EqualsIgnoringAsciiCase(line.Name, "BEGIN")) return Begin(line);
    if (EqualsIgnoringAsciiCase(line.Name, "END")) return End(line);
    if (open_.empty()) Refuse("The text does not begin with BEGIN:VCALENDAR.");
    if (++lines_ > kMostLines) Refuse("The text has more than a million lines.");
    open_.back().Lines.push_back(line);
  }

  std::vector<Component> Finish() {
    if (!open_.empty()) Refuse("The text ends within " + std::string(open_.back().Name) + ".");
    return std::move(done_);
  }

 private:
  void Begin(const ContentLine& line) {
    if (open_.size() == kMostDepth) Refuse("Components are nested too deeply.");
    if (++lines_ > kMostLines) Refuse("The text has more than a million lines.");
    open_.push_back({TrimmedEnd(line.Value)});
  }

  void End(const ContentLine& line) {
    if (open_.empty() || !open_.back().Is(TrimmedEnd(line.Value)))
      Refuse("The line " + Quoted(line.Text) + " ends nothing that began.");
    Component finished = std::move(open_.back());
    open_.pop_back();
    (open_.empty() ? done_ : open_.back().Children).push_back(std::move(finished));
  }

  std::vector<Component> open_;
  std::vector<Component> done_;
  std::size_t lines_ = 0;
};

}  // namespace

bool Component::Is(std::string_view name) const {
  return EqualsIgnoringAsciiCase(Name, name);
}

const ContentLine* Component::Find(std::string_view name) const {
  const auto found = std::ranges::find_if(
      Lines, [name](const ContentLine& line) { return EqualsIgnoringAsciiCase(line.Name, name); });
  return found == Lines.end() ? nullptr : &*found;
}

std::string_view Component::ValueOf(std::string_view name) const {
  const ContentLine* line = Find(name);
  return line == nullptr ? std::string_view() : line->Value;
}

std::string Unfolded(std::string_view text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::string unfolded;
  unfolded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsBreak(text[i])) {
      unfolded += text[i];
      continue;
    }
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
    const bool isFolded = i + 1 < text.size() && (text[i + 1] == ' ' || text[i + 1] == '\t');
    if (isFolded) {
      ++i;
    } else {
      unfolded += '\n';
    }
  }
  if (RepairUtf8(unfolded) != unfolded) Refuse("The text is not valid UTF-8.");
  return unfolded;
}

std::vector<Component> ReadComponents(std::string_view unfolded) {
  ComponentReader reader;
  while (!unfolded.empty()) {
    const std::size_t end = std::min(unfolded.find('\n'), unfolded.size());
    const std::string_view line = unfolded.substr(0, end);
    unfolded.remove_prefix(std::min(end + 1, unfolded.size()));
    if (!TrimmedEnd(line).empty()) reader.Add(ParseLine(line));
  }
  return reader.Finish();
}

std::optional<std::string_view> ParameterOf(const ContentLine& line, std::string_view name) {
  std::string_view rest = line.Parameters;
  while (!rest.empty()) {
    rest.remove_prefix(1);
    bool isQuoted = false;
    std::size_t end = 0;
    for (; end < rest.size() && (isQuoted || rest[end] != ';'); ++end) {
      if (rest[end] == '"') isQuoted = !isQuoted;
    }
    const std::string_view parameter = rest.substr(0, end);
    rest.remove_prefix(end);
    const std::size_t equals = parameter.find('=');
    if (equals == std::string_view::npos || !EqualsIgnoringAsciiCase(parameter.substr(0, equals), name))
      continue;
    std::string_view value = parameter.substr(equals + 1);
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
      value = value.substr(1, value.size() - 2);
    return value;
  }
  return std::nullopt;
}

std::vector<std::string_view> ValueItems(std::string_view value) {
  std::vector<std::string_view> items;
  std::size_t begin = 0;
  for (std::size_t i = 0; i <= value.size(); ++i) {
    if (i == value.size() || value[i] == ',') {
      items.push_back(value.substr(begin, i - begin));
      begin = i + 1;
    } else if (value[i] == '\\') {
      ++i;
    }
  }
  if (begin < value.size()) items.push_back(value.substr(begin));
  return items;
}

std::string UnescapedText(std::string_view value) {
  std::string plain;
  plain.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    char c = value[i];
    if (c == '\\' && i + 1 < value.size()) {
      c = value[++i];
      if (c == 'n' || c == 'N') c = '\n';
    }
    const bool isControl = (static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n') || c == '\x7F';
    if (!isControl) plain += c;
  }
  return plain;
}

}  // namespace orlune
