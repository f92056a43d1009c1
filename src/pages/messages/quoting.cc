#include "pages/messages/quoting.h"

#include <optional>

#include "base/text.h"

namespace orlune {
namespace {

constexpr std::string_view kMark = "&gt; ";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kReferenceCharacters =
    "&#0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::size_t kLongestReference = 10;
constexpr int kMarkLength = 5;
constexpr int kLineLength = 35;

/// Wraps and marks a text in one pass. Positions are bytes, lengths code points.
class Quoter {
 public:
  explicit Quoter(std::string_view text) : text_(text) { quoted_.reserve(text.size() + text.size() / 3); }

  std::string Quoted() {
    quoted_ += kMark;
    while (at_ < text_.size()) {
      const std::size_t size = FirstCharacter(text_.substr(at_)).size();
      TakeCharacter(at_ + size);
      at_ += size;
    }
    return quoted_.append(text_.substr(lineBegin_));
  }

 private:
  void TakeCharacter(std::size_t next) {
    ++length_;
    ++sinceSpace_;
    if (text_[at_] == ' ') {
      lastSpace_ = at_;
      sinceSpace_ = 0;
    }
    if (text_[at_] == '\n') {
      quoted_.append(text_.substr(lineBegin_, next - lineBegin_)).append(kMark);
      StartLine(next, 0);
    } else if (length_ >= kLineLength && lastSpace_) {
      EndLine(*lastSpace_);
      StartLine(*lastSpace_ + 1, sinceSpace_);
    } else if (length_ >= kLineLength && !text_.substr(at_).starts_with(kLineEnd)) {
      const std::size_t end = BreakWithinWord();
      EndLine(end);
      StartLine(end, static_cast<int>(at_ - end) + 1);
    }
  }

  /// The current position, or the beginning of the character reference that it is in: "&#39;" is not split.
  std::size_t BreakWithinWord() const {
    const std::string_view line = text_.substr(lineBegin_, at_ - lineBegin_);
    const std::size_t reference = line.rfind('&');
    const bool isInside = reference != std::string_view::npos && reference > 0 &&
                          line.size() - reference < kLongestReference &&
                          line.find_first_not_of(kReferenceCharacters, reference) == std::string_view::npos;
    return isInside ? lineBegin_ + reference : at_;
  }

  void EndLine(std::size_t end) {
    quoted_.append(text_.substr(lineBegin_, end - lineBegin_)).append(kLineEnd).append(kMark);
  }

  /// `length` characters of the line were read before.
  void StartLine(std::size_t begin, int length) {
    lineBegin_ = begin;
    length_ = kMarkLength + length;
    lastSpace_.reset();
  }

  std::string_view text_;
  std::string quoted_;
  std::size_t at_ = 0;
  std::size_t lineBegin_ = 0;
  int length_ = kMarkLength;
  std::optional<std::size_t> lastSpace_;
  int sinceSpace_ = 0;
};

}  // namespace

std::string QuoteForReply(std::string_view text) {
  return Quoter(text).Quoted();
}

}  // namespace orlune
