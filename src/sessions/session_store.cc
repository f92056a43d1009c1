#include "sessions/session_store.h"

namespace orlune {

void ApplyChanges(const NamedTexts& changes, NamedTexts& values) {
  for (const auto& [name, value] : changes) {
    if (value.empty()) {
      values.Remove(name);
    } else {
      values.Set(name, value);
    }
  }
}

}  // namespace orlune
