#include "drivers/dialect/lexer.h"

#include <algorithm>
#include <charconv>

#include "drivers/dialect/dialect_error.h"
#include "drivers/dialect/shape.h"

namespace orlune::dialect {

namespace {

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}
bool IsNamePart(char c) {
  return IsLetter(c) || IsDigit(c);
}

class Lexer {
 public:
  explicit Lexer(const StatementText& statement) : statement_(statement) {}

  Token Next() {
    SkipBlanks();
    if (IsAtValue()) return SplicedValue();
    const std::string_view rest = Fixed();
    if (rest.empty()) return {TokenKind::kEnd, {}, {}, position_};
    const char first = rest.front();
    if (first == '\'') return TextLiteral();
    if (IsLetter(first)) return Take(TokenKind::kName, RunOf(rest, IsNamePart));
    if (IsDigit(first) || (first == '-' && rest.size() > 1 && IsDigit(rest[1]))) return Number();
    return Symbol();
  }

 private:
  bool IsAtValue() const {
    return nextValue_ < statement_.Values.size() && statement_.Values[nextValue_].Begin == position_;
  }

  /// The fixed text from here to the next value or the end.
  std::string_view Fixed() const {
    const std::size_t end =
        nextValue_ < statement_.Values.size() ? statement_.Values[nextValue_].Begin : statement_.Text.size();
    return statement_.Text.substr(position_, end - position_);
  }

  void SkipBlanks() { position_ += RunOf(Fixed(), IsBlank); }

  template <class Predicate>
  static std::size_t RunOf(std::string_view text, Predicate predicate) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), predicate) - text.begin());
  }

  Token Take(TokenKind kind, std::size_t length) {
    Token token{kind, statement_.Text.substr(position_, length), {}, position_};
    position_ += length;
    return token;
  }

  std::size_t TakeValue() {
    position_ += statement_.Values[nextValue_].Length;
    return nextValue_++;
  }

  Token SplicedValue() {
    const ValueSpan span = statement_.Values[nextValue_];
    const auto spliced = Classify(statement_.Text.substr(span.Begin, span.Length));
    if (!spliced) throw DialectError(position_, "expected a number, yes, no or Null");
    Token token{TokenKind::kLiteral, {}, {}, position_};
    const std::size_t value = TakeValue();
    switch (spliced->Kind) {
      case SplicedKind::kYes:
        token.Literals.push_back({true});
        break;
      case SplicedKind::kNo:
        token.Literals.push_back({false});
        break;
      case SplicedKind::kNull:
        token.Literals.push_back({Null{}});
        break;
      case SplicedKind::kIntegers:
        for (std::size_t item = 0; item < spliced->Count; ++item) {
          token.Literals.push_back({SplicedInteger{value, item}});
        }
    }
    return token;
  }

  Token Number() {
    const std::size_t sign = Fixed().front() == '-' ? 1 : 0;
    Token token = Take(TokenKind::kLiteral, sign + RunOf(Fixed().substr(sign), IsDigit));
    std::int64_t number = 0;
    const char* end = token.Text.data() + token.Text.size();
    if (std::from_chars(token.Text.data(), end, number).ec != std::errc{}) {
      throw DialectError(token.Position, "whole number out of range");
    }
    token.Literals.push_back({number});
    return token;
  }

  Token Symbol() {
    for (const std::string_view symbol : {"<>", "<=", ">=", "=", "<", ">", "(", ")", ",", ".", "*"}) {
      if (Fixed().starts_with(symbol)) return Take(TokenKind::kSymbol, symbol.size());
    }
    throw DialectError(position_, "unexpected character");
  }

  Token TextLiteral() {
    Token token = Take(TokenKind::kLiteral, 1);
    TextPieces pieces;
    std::string fixed;
    const auto endFixed = [&] {
      if (!fixed.empty()) pieces.emplace_back(std::move(fixed));
      fixed.clear();
    };
    while (!TakeClosingApostrophe(token.Position, fixed)) {
      endFixed();
      pieces.emplace_back(SplicedText{TakeValue()});
    }
    endFixed();
    token.Literals.push_back({std::move(pieces)});
    return token;
  }

  /// Moves literal text to `text`, past the closing apostrophe or, with false, up to the next value.
  bool TakeClosingApostrophe(std::size_t begin, std::string& text) {
    while (!IsAtValue()) {
      const std::string_view rest = Fixed();
      if (rest.empty()) throw DialectError(begin, "unterminated text");
      const std::size_t length = std::min(rest.find('\''), rest.size());
      text += rest.substr(0, length);
      position_ += length;
      if (length == rest.size()) continue;
      const bool isDoubled = rest.size() > length + 1 && rest[length + 1] == '\'';
      position_ += isDoubled ? 2 : 1;
      if (!isDoubled) return true;
      text += '\'';
    }
    return false;
  }

  StatementText statement_;
  std::size_t position_ = 0;
  std::size_t nextValue_ = 0;
};

}  // namespace

std::vector<Token> Tokenize(const StatementText& statement) {
  std::vector<Token> tokens;
  Lexer lexer(statement);
  do {
    tokens.push_back(lexer.Next());
  } while (tokens.back().Kind != TokenKind::kEnd);
  return tokens;
}

}  // namespace orlune::dialect
