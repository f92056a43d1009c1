#include "pages/script/script_texts.h"

#include <array>
#include <string_view>

#include "base/json_text.h"
#include "platform/localiser.h"
#include "texts/english_texts.h"

namespace orlune {
namespace {

static_assert(static_cast<int>(Text::kLanguageTag) == kLanguageTagText);

struct NamedText {
  std::string_view Name;
  Text Id;
};

constexpr auto kNamedTexts = std::to_array<NamedText>({
    {"language", Text::kLanguageTag},
    {"skipToContent", Text::kScriptSkipToContent},
    {"saved", Text::kScriptSaved},
    {"sent", Text::kScriptSent},
    {"deleted", Text::kScriptDeleted},
    {"deleteEvent", Text::kScriptDeleteEvent},
    {"deleteSeries", Text::kScriptDeleteSeries},
    {"deleteEvents", Text::kScriptDeleteEvents},
    {"deleteMessage", Text::kScriptDeleteMessage},
    {"deleteMessages", Text::kScriptDeleteMessages},
    {"deleteUser", Text::kScriptDeleteUser},
    {"deleteGroup", Text::kScriptDeleteGroup},
    {"deleteScheme", Text::kScriptDeleteScheme},
    {"deleteType", Text::kScriptDeleteType},
    {"deleteGroupView", Text::kScriptDeleteGroupView},
    {"messageRead", Text::kScriptMessageRead},
    {"messageNew", Text::kScriptMessageNew},
    {"startTime", Text::kScriptStartTime},
    {"endTime", Text::kScriptEndTime},
    {"applyChoice", Text::kScriptApplyChoice},
    {"earlier", Text::kScriptEarlier},
    {"later", Text::kScriptLater},
    {"findThese", Text::kScriptFindThese},
    {"opensNewTab", Text::kScriptOpensNewTab},
    {"draftKept", Text::kScriptDraftKept},
    {"draftRestore", Text::kScriptDraftRestore},
    {"draftDiscard", Text::kScriptDraftDiscard},
    {"toolbar", Text::kScriptToolbar},
    {"messageText", Text::kScriptMessageText},
    {"select", Text::kScriptSelect},
    {"occurrencesOf", Text::kScriptOccurrencesOf},
    {"close", Text::kScriptClose},
    {"inviteHint", Text::kScriptInviteHint},
});

std::string_view TextIn(const Localiser* localiser, Text id) {
  if (localiser != nullptr) {
    if (const auto text = localiser->Loadstring(static_cast<int>(id))) return *text;
  }
  return EnglishText(id);
}

/// The direction of the script that a language is written in, where packs are likely.
std::string_view DirectionOf(std::string_view tag) {
  for (const std::string_view language : {"ar", "fa", "he", "ur"}) {
    if (tag.substr(0, tag.find('-')) == language) return "rtl";
  }
  return "ltr";
}

}  // namespace

std::string ScriptTexts(const Localiser* localiser) {
  std::string json = "{";
  for (const auto& [name, id] : kNamedTexts)
    json.append(JsonText(name)).append(":").append(JsonText(TextIn(localiser, id))).append(",\n");
  const std::string_view direction = DirectionOf(TextIn(localiser, Text::kLanguageTag));
  return json.append("\"direction\":").append(JsonText(direction)).append("}");
}

}  // namespace orlune
