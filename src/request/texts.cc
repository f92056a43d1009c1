#include "request/texts.h"

#include "base/text.h"
#include "request/visit.h"
#include "texts/english_texts.h"

namespace orlune {

std::string_view LoadText(const PageContext& context, Text id) {
  if (context.Hosting.Localiser) {
    if (const auto text = context.Hosting.Localiser->Loadstring(static_cast<int>(id))) return *text;
  }
  return EnglishText(id);
}

std::string LoadText(const PageContext& context, Text id, std::initializer_list<std::string_view> arguments) {
  std::string text(LoadText(context, id));
  std::string placeholder = "%s";
  for (const std::string_view argument : arguments) {
    text = ReplaceAll(text, placeholder, argument);
    ++placeholder[1];
  }
  return text;
}

void AddAlert(Visit& visit, Text id, std::initializer_list<std::string_view> arguments) {
  visit.Alerts += LoadText(visit.Context, id, arguments);
}

}  // namespace orlune
