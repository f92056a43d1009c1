#pragma once

#include <string>

#include <sodium.h>

#include "drivers/schema/database_maintenance.h"

namespace orlune {

/// A checksum of rows and their order, the same for every engine: 128 bits of BLAKE2b over each field's kind
/// and content.
class RowDigest {
 public:
  RowDigest();

  void Add(const StoredRow& row);
  /// The checksum in hexadecimal digits; nothing can be added afterwards.
  std::string Finish();

 private:
  crypto_generichash_state state_;
  std::string scratch_;
};

}  // namespace orlune
