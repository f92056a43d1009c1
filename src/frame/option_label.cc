#include "frame/option_label.h"

#include "frame/text.h"

namespace orlune {

Html OptionLabel(std::string_view text) {
  return Html("{}", Content(ReplaceAll(text, "<", "&lt;")));
}

}  // namespace orlune
