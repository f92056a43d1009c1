#include "drivers/postgresql/case_folding_function.h"

#include "drivers/dialect/engine_sql.h"

namespace orlune::postgresql {

namespace {

/// Lower case of upper case of lower case is what Unicode calls case folding, but for a few letters. They are
/// exchanged before, so that changing case does not reach them, and after.
struct Exchange {
  std::u32string From;
  std::u32string To;

  void Add(char32_t from, char32_t to) {
    From += from;
    To += to;
  }
};

constexpr char32_t kDotlessI = 0x131;
constexpr char32_t kFinalSigma = 0x3C2;
constexpr char32_t kSigma = 0x3C3;
constexpr char32_t kNoCharacter = 0xFDD0;  // stands for the dotless i, whose upper case is that of i

Exchange Before() {
  Exchange before;
  before.Add(kDotlessI, kNoCharacter);
  return before;
}

/// Cherokee letters fold to what were the only ones when folding was defined, now the capitals.
Exchange After() {
  Exchange after;
  after.Add(kNoCharacter, kDotlessI);
  after.Add(kFinalSigma, kSigma);
  for (char32_t i = 0; i < 80; ++i) after.Add(0xAB70 + i, 0x13A0 + i);
  for (char32_t i = 0; i < 6; ++i) after.Add(0x13F8 + i, 0x13F0 + i);
  return after;
}

/// A text of SQL that only holds ASCII.
std::string Escaped(const std::u32string& text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string literal = "U&'";
  for (const char32_t c : text) {
    literal += '\\';
    for (int shift = 12; shift >= 0; shift -= 4) literal += kDigits[(c >> shift) & 0xF];
  }
  return literal += '\'';
}

std::string Translated(const std::string& expression, const Exchange& exchange) {
  return "translate(" + expression + ", " + Escaped(exchange.From) + ", " + Escaped(exchange.To) + ")";
}

}  // namespace

std::string CreateCaseFoldingFunction() {
  const std::string folded =
      Translated("lower(upper(lower(" + Translated("$1", Before()) + " COLLATE \"und-x-icu\")))", After()) +
      " COLLATE \"C\"";
  return std::string("CREATE OR REPLACE FUNCTION ")
      .append(kCaseFoldingFunction)
      .append(
          "(text) RETURNS text LANGUAGE sql IMMUTABLE PARALLEL SAFE AS $$ SELECT CASE "
          "WHEN octet_length($1) = char_length($1) THEN lower($1 COLLATE \"C\") ELSE ")
      .append(folded)
      .append(" END $$");
}

}  // namespace orlune::postgresql
