#include "commands/row_digest.h"

#include <array>
#include <string_view>
#include <variant>

namespace orlune {
namespace {

constexpr std::size_t kDigestBytes = 16;

void AppendNumber(std::string& bytes, std::int64_t number) {
  for (int shift = 0; shift < 64; shift += 8) {
    bytes += static_cast<char>(static_cast<std::uint64_t>(number) >> shift & 0xFF);
  }
}

/// Encodes a field so that different sequences of fields have different bytes.
struct FieldBytes {
  std::string& Bytes;

  void operator()(std::monostate) const { Bytes += 'n'; }
  void operator()(bool isYes) const { Bytes += isYes ? 'y' : 'f'; }
  void operator()(std::int64_t number) const { AppendNumber(Bytes += 'i', number); }
  void operator()(const std::string& text) const { AppendText('t', text); }
  void operator()(Date date) const { AppendNumber(Bytes += 'd', date.time_since_epoch().count()); }
  void operator()(TimeOfDay time) const { AppendNumber(Bytes += 'o', time.count()); }
  void operator()(const DateTime& moment) const {
    (*this)(moment.Day);
    (*this)(moment.Time);
  }
  void operator()(const Unreadable& field) const { AppendText('u', field.Stored); }

  void AppendText(char kind, std::string_view text) const {
    AppendNumber(Bytes += kind, static_cast<std::int64_t>(text.size()));
    Bytes += text;
  }
};

}  // namespace

RowDigest::RowDigest() : state_{} {
  crypto_generichash_init(&state_, nullptr, 0, kDigestBytes);
}

void RowDigest::Add(const StoredRow& row) {
  scratch_ = 'r';
  for (const StoredField& field : row) std::visit(FieldBytes{scratch_}, field);
  crypto_generichash_update(&state_, reinterpret_cast<const unsigned char*>(scratch_.data()),
                            scratch_.size());
}

std::string RowDigest::Finish() {
  std::array<unsigned char, kDigestBytes> digest{};
  crypto_generichash_final(&state_, digest.data(), digest.size());
  std::string digits(2 * kDigestBytes + 1, '\0');
  sodium_bin2hex(digits.data(), digits.size(), digest.data(), digest.size());
  digits.pop_back();
  return digits;
}

}  // namespace orlune
