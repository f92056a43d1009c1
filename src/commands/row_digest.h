#pragma once

#include <string>

#include <sodium.h>

#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// A checksum of rows and their order, the same whatever engine holds them: 128 bits of BLAKE2b over every
/// field's kind and content. Any difference in any field, row or the order of rows gives another one.
class RowDigest {
 public:
  RowDigest();

  void Add(const StoredRow& row);
  /// The checksum of all rows, in hexadecimal digits; nothing can be added any more.
  std::string Finish();

 private:
  crypto_generichash_state state_;
  std::string scratch_;
};

}  // namespace orlune
