#include "controls/TextBox.h"

#include <algorithm>
#include <utility>

#include "common/Surrogates.h"

namespace ktrv::controls {
namespace {

/// At most `room` units of the text, without splitting a surrogate pair.
StringView Cut(StringView text, std::size_t room) {
  if (text.size() <= room) return text;
  const bool splitsPair = room > 0 && IsHighSurrogate(text[room - 1]);
  return text.substr(0, splitsPair ? room - 1 : room);
}

/// The position of an unpaired high surrogate; npos if there is none.
std::size_t HalfPair(StringView text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsHighSurrogate(text[i])) continue;
    if (i + 1 == text.size() || !IsLowSurrogate(text[i + 1])) return i;
    ++i;
  }
  return StringView::npos;
}

}  // namespace

TextBox::TextBox(Form& form, Rectangle bounds, int maxLength)
    : ControlOf(form, bounds), maxLength_(maxLength) {}

void TextBox::SetText(String text) {
  if (text == text_) return;
  text_ = std::move(text);
  selectionStart_ = 0;
  selectionLength_ = 0;
  if (peer_) peer_->TextChanged();
  if (Change) Change();
}

String TextBox::Fitting(StringView text) const {
  return String(maxLength_ > 0 ? Cut(text, static_cast<std::size_t>(maxLength_)) : text);
}

void TextBox::Select(int start, int length) {
  UserSelects(start, length);
  if (peer_) peer_->SelectionChanged();
}

void TextBox::UserSelects(int start, int length) {
  const int size = static_cast<int>(text_.size());
  selectionStart_ = std::clamp(start, 0, size);
  selectionLength_ = std::clamp(length, 0, size - selectionStart_);
}

void TextBox::SetBackColor(std::uint32_t color) {
  if (color == backColor_) return;
  backColor_ = color;
  if (peer_) peer_->BackColorChanged();
}

String TextBox::Admitted(StringView text) const {
  String admitted(text);
  if (text.size() == 1 && KeyPress) {
    auto code = static_cast<std::int16_t>(text.front());
    KeyPress(code);
    if (code == 0) return {};
    admitted.front() = static_cast<char16_t>(code);
  } else if (text.size() > 1 && Insertion) {
    Insertion(admitted);
  }
  return admitted;
}

void TextBox::UserTypes(StringView text) {
  String typed = Admitted(text);
  if (typed.empty() && !text.empty()) return;
  // A control character is a command (paste, copy), not text.
  if (typed.size() == 1 && typed.front() < u' ') return;
  const auto start = static_cast<std::size_t>(selectionStart_);
  const auto length = static_cast<std::size_t>(selectionLength_);
  if (maxLength_ > 0) {
    const std::size_t kept = text_.size() - length;
    const auto most = static_cast<std::size_t>(maxLength_);
    typed = Cut(typed, kept < most ? most - kept : 0);
  }
  if (typed.empty() && length == 0) return;
  text_.replace(start, length, typed);
  selectionStart_ += static_cast<int>(typed.size());
  selectionLength_ = 0;
  if (peer_) peer_->TextChanged();
  if (Change) Change();
  const bool isCharacter = typed.size() == 1 || (typed.size() == 2 && IsHighSurrogate(typed[0]));
  if (isCharacter && selectionStart_ == static_cast<int>(text_.size())) CompleteTyped();
}

void TextBox::CompleteTyped() {
  if (!Completion || text_.empty() || IsHighSurrogate(text_.back())) return;
  String whole = Completion(text_);
  if (whole.size() <= text_.size() || !whole.starts_with(text_) || Fitting(whole) != whole) return;
  const int typed = static_cast<int>(text_.size());
  text_ = std::move(whole);
  selectionStart_ = typed;
  selectionLength_ = static_cast<int>(text_.size()) - typed;
  if (peer_) peer_->TextChanged();
  if (Change) Change();
}

void TextBox::UserChanges(String text) {
  if (text == text_) return;
  // A full box truncates pasted text, possibly inside a surrogate pair.
  const bool full = maxLength_ > 0 && text.size() >= static_cast<std::size_t>(maxLength_);
  const std::size_t half = full ? HalfPair(text) : String::npos;
  if (half != String::npos) text.erase(half, 1);
  text_ = std::move(text);
  selectionStart_ = static_cast<int>(std::min(half, text_.size()));
  selectionLength_ = 0;
  if (half != String::npos && peer_) peer_->TextChanged();
  if (Change) Change();
}

}  // namespace ktrv::controls
