#pragma once

#include <string>

namespace orlune {

class Localiser;

/// The texts that site/js/orlune.js shows, by the names under which it knows them, as an object of JSON; with
/// them "language", the tag of the language, and "direction", "ltr" or "rtl". Null stands for English.
std::string ScriptTexts(const Localiser* localiser);

}  // namespace orlune
