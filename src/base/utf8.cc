#include "base/utf8.h"

#include <cstddef>
#include <string_view>

namespace orlune {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

struct LeadByte {
  unsigned char First;
  unsigned char Last;
  unsigned char SecondFrom;  // the range of the second byte excludes overlong forms and surrogates
  unsigned char SecondTo;
  std::size_t Length;
};

constexpr LeadByte kLeadBytes[] = {
    {0x01, 0x7F, 0x00, 0x00, 1}, {0xC2, 0xDF, 0x80, 0xBF, 2}, {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3}, {0xED, 0xED, 0x80, 0x9F, 3}, {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4}, {0xF1, 0xF3, 0x80, 0xBF, 4}, {0xF4, 0xF4, 0x80, 0x8F, 4},
};

bool IsBetween(char c, unsigned char first, unsigned char last) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= first && byte <= last;
}

// The length of the well-formed UTF-8 sequence that `text` begins with; 0 when there is none.
std::size_t CharacterLength(std::string_view text) {
  for (const LeadByte& lead : kLeadBytes) {
    if (!IsBetween(text[0], lead.First, lead.Last)) continue;
    if (text.size() < lead.Length) return 0;
    if (lead.Length > 1 && !IsBetween(text[1], lead.SecondFrom, lead.SecondTo)) return 0;
    for (std::size_t i = 2; i < lead.Length; ++i) {
      if (!IsBetween(text[i], 0x80, 0xBF)) return 0;
    }
    return lead.Length;
  }
  return 0;
}

std::size_t WellFormedPrefix(std::string_view text) {
  std::size_t end = 0;
  while (end < text.size()) {
    const std::size_t length = CharacterLength(text.substr(end));
    if (length == 0) break;
    end += length;
  }
  return end;
}

}  // namespace

std::string RepairUtf8(std::string text) {
  std::string_view rest = text;
  std::size_t good = WellFormedPrefix(rest);
  if (good == rest.size()) return text;
  std::string repaired;
  repaired.reserve(text.size() + 16);
  while (good < rest.size()) {
    repaired.append(rest.substr(0, good)).append(kReplacement);
    rest.remove_prefix(good + 1);
    good = WellFormedPrefix(rest);
  }
  return repaired.append(rest);
}

void AppendUtf8(std::string& text, char32_t codePoint) {
  const auto append = [&](char32_t bits) { text += static_cast<char>(bits); };
  if (codePoint < 0x80) {
    append(codePoint);
    return;
  }
  if (codePoint < 0x800) {
    append(0xC0 | codePoint >> 6);
  } else if (codePoint < 0x10000) {
    append(0xE0 | codePoint >> 12);
    append(0x80 | (codePoint >> 6 & 0x3F));
  } else {
    append(0xF0 | codePoint >> 18);
    append(0x80 | (codePoint >> 12 & 0x3F));
    append(0x80 | (codePoint >> 6 & 0x3F));
  }
  append(0x80 | (codePoint & 0x3F));
}

}  // namespace orlune
