#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "request/page_context.h"
#include "texts/text.h"

namespace orlune {

struct Visit;

/// The text in the language of the hosting page. The view is valid for the whole request.
std::string_view LoadText(const PageContext& context, Text id);
/// The same with "%s" replaced by the first argument, then "%t" by the second, and so on; a later placeholder
/// within an argument is replaced as well.
std::string LoadText(const PageContext& context, Text id, std::initializer_list<std::string_view> arguments);

/// Appends the text to the alerts of the page.
void AddAlert(Visit& visit, Text id, std::initializer_list<std::string_view> arguments = {});

}  // namespace orlune
