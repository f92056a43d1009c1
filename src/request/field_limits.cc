#include "request/field_limits.h"

#include <algorithm>

#include "request/texts.h"
#include "request/visit.h"
#include "store/recipients.h"

namespace orlune {
namespace {

std::size_t CharactersIn(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

/// A label without the colon that stands behind it on a form, and the blank that some languages put before
/// it.
std::string_view LabelText(const Visit& visit, Text label) {
  constexpr std::string_view kColonsAndBlanks[] = {":", "\uFF1A", " ", "\u00A0", "\u202F"};
  std::string_view text = LoadText(visit.Context, label);
  while (true) {
    const auto end =
        std::ranges::find_if(kColonsAndBlanks, [text](auto mark) { return text.ends_with(mark); });
    if (end == std::end(kColonsAndBlanks)) return text;
    text.remove_suffix(end->size());
  }
}

}  // namespace

void CheckLengths(Visit& visit, std::initializer_list<NameField> fields) {
  for (const NameField& field : fields) {
    const std::size_t most = std::max(field.MostCharacters, CharactersIn(field.Stored));
    if (CharactersIn(field.Typed) > most)
      AddAlert(visit, Text::kNameTooLong,
               {LabelText(visit, field.Label), std::to_string(field.MostCharacters)});
  }
}

void CheckTextLength(Visit& visit, Text label, std::string_view typed, std::string_view stored) {
  if (typed.size() <= std::max(kMostTextBytes, stored.size())) return;
  AddAlert(visit, Text::kTextTooLong, {LabelText(visit, label), std::to_string(kMostTextBytes >> 10U)});
}

void CheckSending(Visit& visit, std::span<const std::string> recipients, std::size_t copyBytes) {
  const std::size_t copies = ExpandGroupRecipients(visit.Database, recipients).size();
  if (copies * copyBytes > kMostSentBytes) AddAlert(visit, Text::kSendingTooLarge, {std::to_string(copies)});
}

}  // namespace orlune
