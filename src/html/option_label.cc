#include "html/option_label.h"

#include "base/text.h"

namespace orlune {

Html OptionLabel(std::string_view text) {
  return Html("{}", Content(ReplaceAll(text, "<", "&lt;")));
}

}  // namespace orlune
