#include "drivers/icu/icu_regional_settings.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <unicode/dtfmtsym.h>
#include <unicode/locid.h>
#include <unicode/smpdtfmt.h>
#include <unicode/unistr.h>
#include <unicode/ures.h>

namespace orlune {
namespace {

using icu::DateFormatSymbols;

void Require(UErrorCode status, const std::string& region) {
  if (U_FAILURE(status) != 0) {
    throw std::runtime_error("The regional settings of \"" + region +
                             "\" could not be read: " + u_errorName(status) + ".");
  }
}

std::string Utf8(const icu::UnicodeString& text) {
  std::string result;
  text.toUTF8String(result);
  return result;
}

std::string UpperCase(const std::string& text, const icu::Locale& locale) {
  return Utf8(icu::UnicodeString::fromUTF8(text).toUpper(locale));
}

icu::Locale FindLocale(const std::string& region) {
  icu::Locale locale(icu::Locale::createCanonical(region.c_str()).getBaseName());
  UErrorCode status = U_ZERO_ERROR;
  ures_close(ures_open(nullptr, locale.getName(), &status));
  if (status != U_ZERO_ERROR || std::string_view(locale.getLanguage()).empty()) {
    throw std::invalid_argument("unknown region \"" + region + "\"; expected one such as en_US or fi_FI");
  }
  return locale;
}

icu::Locale WithPlainDates(const icu::Locale& locale, const std::string& region) {
  icu::Locale plain = locale;
  UErrorCode status = U_ZERO_ERROR;
  plain.setUnicodeKeywordValue("calendar", "gregorian", status);
  plain.setUnicodeKeywordValue("numbers", "latn", status);
  Require(status, region);
  return plain;
}

/// A stretch of a date pattern: a field, such as "MMMM", or literal text where `Field` is 0.
struct PatternPiece {
  char16_t Field;
  int Length;
  icu::UnicodeString Text;
};

bool IsPatternLetter(char32_t unit) {
  return (unit >= U'a' && unit <= U'z') || (unit >= U'A' && unit <= U'Z');
}

void AppendLiteral(std::vector<PatternPiece>& pieces, char16_t unit) {
  if (pieces.empty() || pieces.back().Field != 0) pieces.push_back({0, 0, {}});
  icu::UnicodeString& text = pieces.back().Text;
  if (unit != u' ' || !text.endsWith(u" ")) text.append(unit);
}

void AppendField(std::vector<PatternPiece>& pieces, char16_t letter) {
  // The Gregorian calendar's own era goes without saying.
  if (letter == u'G') return;
  if (pieces.empty() || pieces.back().Field != letter) pieces.push_back({letter, 0, {}});
  ++pieces.back().Length;
}

std::vector<PatternPiece> SplitPattern(const icu::UnicodeString& pattern) {
  constexpr char16_t kQuote = u'\'';
  std::vector<PatternPiece> pieces;
  bool isQuoted = false;
  for (std::int32_t i = 0; i < pattern.length(); ++i) {
    const char16_t unit = pattern[i];
    if (unit == kQuote && i + 1 < pattern.length() && pattern[i + 1] == kQuote) {
      AppendLiteral(pieces, kQuote);
      ++i;
    } else if (unit == kQuote) {
      isQuoted = !isQuoted;
    } else if (!isQuoted && IsPatternLetter(unit)) {
      AppendField(pieces, unit);
    } else {
      AppendLiteral(pieces, unit);
    }
  }
  return pieces;
}

std::vector<PatternPiece> DatePattern(icu::DateFormat::EStyle style, const icu::Locale& locale) {
  const std::unique_ptr<icu::DateFormat> format(icu::DateFormat::createDateInstance(style, locale));
  const auto* simple = dynamic_cast<const icu::SimpleDateFormat*>(format.get());
  if (simple == nullptr) {
    throw std::runtime_error("The date format of \"" + std::string(locale.getName()) + "\" has no pattern.");
  }
  icu::UnicodeString pattern;
  simple->toPattern(pattern);
  return SplitPattern(pattern);
}

bool IsMonth(const PatternPiece& piece) {
  return piece.Field == u'M' || piece.Field == u'L';
}
bool IsWeekday(const PatternPiece& piece) {
  return piece.Field == u'E' || piece.Field == u'c' || piece.Field == u'e';
}

char ShortDateSeparator(const std::vector<PatternPiece>& pieces) {
  for (const PatternPiece& piece : pieces) {
    if (piece.Field != 0) continue;
    for (const char separator : {'/', '-', '.'}) {
      if (piece.Text.indexOf(static_cast<char16_t>(separator)) >= 0) return separator;
    }
  }
  return '-';
}

void FillShortDate(RegionalSettings& settings, const std::vector<PatternPiece>& pieces) {
  std::vector<DateField> order;
  for (const PatternPiece& piece : pieces) {
    if (piece.Field == u'd') {
      settings.PadsDay = piece.Length > 1;
      order.push_back(DateField::kDay);
    } else if (IsMonth(piece)) {
      settings.PadsMonth = piece.Length > 1;
      order.push_back(DateField::kMonth);
    } else if (piece.Field == u'y') {
      order.push_back(DateField::kYear);
    }
  }
  if (order.size() != settings.ShortDateOrder.size()) {
    throw std::runtime_error("The short date of \"" + settings.Region + "\" is not day, month and year.");
  }
  std::ranges::copy(order, settings.ShortDateOrder.begin());
  settings.ShortDateSeparator = ShortDateSeparator(pieces);
}

template <std::size_t size>
std::array<std::string, size> Names(const icu::UnicodeString* names) {
  std::array<std::string, size> result;
  std::transform(names, names + size, result.begin(), Utf8);
  return result;
}

std::array<std::string, 12> Months(const DateFormatSymbols& symbols, DateFormatSymbols::DtContextType context,
                                   DateFormatSymbols::DtWidthType width) {
  std::int32_t count = 0;
  return Names<12>(symbols.getMonths(count, context, width));
}

std::array<std::string, 7> Weekdays(const DateFormatSymbols& symbols, DateFormatSymbols::DtWidthType width) {
  std::int32_t count = 0;
  // The first element is a placeholder: ICU's weekdays start at 1.
  return Names<7>(symbols.getWeekdays(count, DateFormatSymbols::STANDALONE, width) + 1);
}

std::array<std::string, 12> LongDateMonths(const DateFormatSymbols& symbols,
                                           const std::vector<PatternPiece>& longDate) {
  const auto month = std::ranges::find_if(longDate, IsMonth);
  if (month != longDate.end() && month->Length < 3) {
    std::array<std::string, 12> numbers;
    for (std::size_t i = 0; i < numbers.size(); ++i) numbers[i] = std::to_string(i + 1);
    return numbers;
  }
  const bool standsAlone = month != longDate.end() && month->Field == u'L';
  return Months(symbols, standsAlone ? DateFormatSymbols::STANDALONE : DateFormatSymbols::FORMAT,
                DateFormatSymbols::WIDE);
}

std::string QuoteLiteral(const std::string& text) {
  const bool hasLetters = std::ranges::any_of(text, IsPatternLetter);
  std::string result;
  if (hasLetters) result += '\'';
  for (const char unit : text) result.append(unit == '\'' ? 2 : 1, unit);
  if (hasLetters) result += '\'';
  return result;
}

std::string PatternText(const std::vector<PatternPiece>& pieces, const icu::Locale* upperCaseOf) {
  std::string result;
  for (const PatternPiece& piece : pieces) {
    if (piece.Field == 0) {
      icu::UnicodeString text = piece.Text;
      result += QuoteLiteral(Utf8(upperCaseOf != nullptr ? text.toUpper(*upperCaseOf) : text));
    } else if (IsWeekday(piece)) {
      result += "dddd";
    } else if (IsMonth(piece)) {
      result += "mmmm";
    } else if (piece.Field == u'y') {
      result += "yyyy";
    } else if (piece.Field == u'd') {
      result += piece.Length > 1 ? "dd" : "d";
    }
  }
  return result;
}

DateNames UpperCaseNames(DateNames names, const std::vector<PatternPiece>& longDate,
                         const icu::Locale& locale) {
  const auto toUpper = [&locale](auto& list) {
    for (std::string& name : list) name = UpperCase(name, locale);
  };
  toUpper(names.Months);
  toUpper(names.AbbreviatedMonths);
  toUpper(names.LongDateMonths);
  toUpper(names.Weekdays);
  toUpper(names.AbbreviatedWeekdays);
  names.LongDatePattern = PatternText(longDate, &locale);
  return names;
}

}  // namespace

RegionalSettings LoadRegionalSettings(const std::string& region) {
  const icu::Locale locale = FindLocale(region);
  const icu::Locale plain = WithPlainDates(locale, region);
  UErrorCode status = U_ZERO_ERROR;
  const DateFormatSymbols symbols(plain, status);
  Require(status, region);

  RegionalSettings settings{};
  settings.Region = locale.getName();
  FillShortDate(settings, DatePattern(icu::DateFormat::kShort, plain));
  const std::vector<PatternPiece> longDate = DatePattern(icu::DateFormat::kFull, plain);
  settings.Names = {
      .Months = Months(symbols, DateFormatSymbols::STANDALONE, DateFormatSymbols::WIDE),
      .AbbreviatedMonths = Months(symbols, DateFormatSymbols::STANDALONE, DateFormatSymbols::ABBREVIATED),
      .LongDateMonths = LongDateMonths(symbols, longDate),
      .Weekdays = Weekdays(symbols, DateFormatSymbols::WIDE),
      .AbbreviatedWeekdays = Weekdays(symbols, DateFormatSymbols::ABBREVIATED),
      .LongDatePattern = PatternText(longDate, nullptr),
  };
  settings.UpperCaseNames = UpperCaseNames(settings.Names, longDate, locale);
  return settings;
}

}  // namespace orlune
