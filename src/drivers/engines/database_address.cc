#include "drivers/engines/database_address.h"

#include "drivers/postgresql/address.h"
#include "platform/database.h"

namespace orlune {

DatabaseAddress DatabaseAddress::Parse(const std::string& text) {
  if (IsMalformedAddress(text)) throw DatabaseError(std::string(kAddressSyntax));
  DatabaseAddress address;
  address.isFile_ = !IsPostgresqlAddress(text);
  address.target_ = text;
  address.displayed_ = WithoutPassword(text);
  return address;
}

DatabaseAddress DatabaseAddress::Parse(const std::string& text, const std::filesystem::path& folder) {
  DatabaseAddress address = Parse(text);
  if (address.isFile_) address.target_ = (folder / text).lexically_normal().string();
  return address;
}

}  // namespace orlune
