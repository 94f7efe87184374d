#include "tool/formats/VCardReader.h"

#include <algorithm>
#include <utility>

#include "tool/formats/QuotedPrintable.h"

namespace ktrv::tool {
namespace {

constexpr StringView kBegin = u"BEGIN:VCARD";
constexpr StringView kEnd = u"END:VCARD";

constexpr StringView kNoEnd = u"The vCard has no END:VCARD";
constexpr StringView kNoColon = u"The vCard has a line without a colon";
constexpr StringView kCardTooLong = u"The vCard is too long. An END:VCARD may be missing";

/// Whether the line is the text, apart from case and blanks.
bool Is(StringView line, StringView text) {
  String plain;
  for (const char16_t unit : line.substr(0, 2 * text.size())) {
    if (unit != u' ' && unit != u'\t') plain += unit;
  }
  return line.size() < 2 * text.size() && EqualsIgnoringCase(plain, text);
}

String ToLowerAscii(StringView text) {
  String lower(text);
  for (char16_t& unit : lower) {
    if (unit >= u'A' && unit <= u'Z') unit = static_cast<char16_t>(unit - u'A' + u'a');
  }
  return lower;
}

/// The text up to the separator outside of quotation marks, which is removed with it from the rest.
StringView TakeUntil(StringView& rest, char16_t separator) {
  bool isQuoted = false;
  std::size_t at = 0;
  for (; at < rest.size(); ++at) {
    if (rest[at] == u'"') isQuoted = !isQuoted;
    if (rest[at] == separator && !isQuoted) break;
  }
  const StringView taken = rest.substr(0, at);
  rest.remove_prefix(std::min(at + 1, rest.size()));
  return taken;
}

StringView Unquoted(StringView text) {
  if (text.size() >= 2 && text.front() == u'"' && text.back() == u'"') {
    return text.substr(1, text.size() - 2);
  }
  return text;
}

void AddParameter(StringView parameter, VCardProperty& property) {
  StringView values = parameter;
  const bool isNamed = parameter.find(u'=') != StringView::npos;
  const String name = isNamed ? ToUpperAscii(Trim(TakeUntil(values, u'='))) : String(u"TYPE");
  if (name == u"PREF") {
    property.Preference =
        static_cast<int>(std::clamp<std::int64_t>(ParseInteger(values).value_or(0), 0, 100));
  }
  if (EqualsIgnoringCase(values, u"QUOTED-PRINTABLE")) property.IsEncoded = true;
  if (name != u"TYPE") return;
  StringView types = Unquoted(values);
  while (!types.empty()) {
    property.Types.push_back(ToLowerAscii(Trim(TakeUntil(types, u','))));
    if (property.Types.back() == u"pref" && property.Preference == 0) property.Preference = 1;
  }
}

/// The line before its first colon outside of quotation marks. A mark that is not closed counts as
/// text. \return nullopt without a colon
std::optional<StringView> HeadOf(StringView line) {
  StringView rest = line;
  StringView head = TakeUntil(rest, u':');
  if (head.size() == line.size()) head = line.substr(0, line.find(u':'));
  if (head.size() == line.size()) return std::nullopt;
  return head;
}

/// Splits the part before the colon.
void ParseHead(StringView head, VCardProperty& property) {
  StringView name = TakeUntil(head, u';');
  if (const std::size_t dot = name.rfind(u'.'); dot != StringView::npos) {
    property.Group = Trim(name.substr(0, dot));
    name.remove_prefix(dot + 1);
  }
  property.Name = ToUpperAscii(Trim(name));
  while (!head.empty()) AddParameter(Trim(TakeUntil(head, u';')), property);
}

bool IsQuotedPrintable(StringView line) {
  const auto head = HeadOf(line);
  VCardProperty property;
  if (head) ParseHead(*head, property);
  return property.IsEncoded;
}

/// Appends the escaped text to plain text, up to a separator outside of escapes.
/// \return its position, or the size of the text
std::size_t Unescape(StringView text, StringView separators, String& plain) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (separators.find(text[at]) != StringView::npos) return at;
    const char16_t next = text[at] == u'\\' && at + 1 < text.size() ? text[at + 1] : u'\0';
    if (next == u'n' || next == u'N') {
      plain += u'\n';
    } else if (next == u'\\' || next == u',' || next == u';' || next == u':') {
      plain += next;
    } else {
      plain += text[at];
      continue;
    }
    ++at;
  }
  return text.size();
}

}  // namespace

bool VCardProperty::HasType(StringView type) const {
  return std::find(Types.begin(), Types.end(), type) != Types.end();
}

String VCardProperty::Text() const {
  String plain;
  Unescape(Value, {}, plain);
  return plain;
}

std::vector<String> VCardProperty::Parts() const {
  std::vector<String> parts(1);
  StringView rest = Value;
  for (;;) {
    const std::size_t end = Unescape(rest, u";,", parts.back());
    if (end == rest.size()) return parts;
    if (rest[end] == u';') {
      parts.emplace_back();
    } else {
      parts.back() += u' ';
    }
    rest.remove_prefix(end + 1);
  }
}

const VCardProperty* VCard::Find(StringView name) const {
  for (const VCardProperty& property : Properties) {
    if (property.Name == name) return &property;
  }
  return nullptr;
}

bool VCardReader::Fill() {
  if (at_ < text_.size()) return true;
  at_ = 0;
  return source_.Next(text_);
}

bool VCardReader::ReadLine(Line& line, bool isFolded) {
  if (!Fill()) return false;
  if (isFolded) line.Raw += text_[at_++];
  bool isEnded = false;
  while (!isEnded && Fill()) {
    const std::size_t end = std::min(text_.find_first_of(u"\r\n", at_), text_.size());
    const StringView part = StringView(text_).substr(at_, end - at_);
    if (line.Raw.size() + part.size() > kLongest) {
      line.IsTooLong = true;
    } else {
      line.Raw += part;
      line.Text += part;
    }
    at_ = end;
    isEnded = at_ < text_.size();
  }
  if (isEnded) {
    const bool mayBeTwo = text_[at_++] == u'\r';
    if (mayBeTwo && Fill() && text_[at_] == u'\n') ++at_;
  }
  ++line_;
  line.Raw += u'\n';
  return true;
}

bool VCardReader::IsFoldedCode() {
  constexpr std::size_t kUnits = 3;  // a blank and two digits
  for (String more; text_.size() - at_ < kUnits && source_.Next(more);) {
    text_ = text_.substr(at_) + more;
    at_ = 0;
  }
  const StringView next = StringView(text_).substr(at_, kUnits);
  return next.size() == kUnits && next[0] == u' ' &&
         next.find_first_not_of(u"0123456789ABCDEF", 1) == StringView::npos;
}

bool VCardReader::ReadUnfolded(Line& line) {
  line = {};
  line.Number = line_;
  if (!ReadLine(line, false)) return false;
  bool isKnown = false;
  bool isQuotedPrintable = false;
  while (Fill()) {
    if (!line.Text.empty() && line.Text.back() == u'=') {
      // Whether the text ends with a soft line break. It is asked once, because the head of the
      // line is complete by then.
      if (!std::exchange(isKnown, true)) isQuotedPrintable = IsQuotedPrintable(line.Text);
      if (isQuotedPrintable && !IsFoldedCode()) {
        line.Text.pop_back();
        ReadLine(line, false);
        continue;
      }
    }
    if (text_[at_] != u' ' && text_[at_] != u'\t') break;
    ReadLine(line, true);
  }
  return true;
}

bool VCardReader::Next(VCard& card) {
  card = {};
  Line line;
  do {
    if (pushedBack_) {
      line = *std::exchange(pushedBack_, std::nullopt);
    } else if (!ReadUnfolded(line)) {
      return false;
    }
  } while (!Is(line.Text, kBegin));
  card.Line = line.Number;
  card.Raw = line.Raw;
  const auto complain = [&](StringView problem) {
    if (card.Problem.empty()) card.Problem = problem;
  };
  for (int depth = 0; ReadUnfolded(line);) {
    const bool isNested =
        !card.Properties.empty() && card.Properties.back().Name == u"AGENT" && depth == 0;
    if (Is(line.Text, kBegin) && depth == 0 && !isNested) {
      pushedBack_ = std::move(line);
      complain(kNoEnd);
      return true;
    }
    if (line.IsTooLong || card.Raw.size() + line.Raw.size() > kLongest) {
      complain(kCardTooLong);
    } else {
      card.Raw += line.Raw;
    }
    if (Is(line.Text, kBegin)) ++depth;
    const bool isEnd = Is(line.Text, kEnd);
    if (isEnd && depth-- == 0) return true;
    if (depth > 0 || isEnd || !card.Problem.empty() || Trim(line.Text).empty()) continue;
    const auto head = HeadOf(line.Text);
    if (!head) {
      complain(kNoColon);
      continue;
    }
    VCardProperty property;
    ParseHead(*head, property);
    property.Value = StringView(line.Text).substr(head->size() + 1);
    if (property.IsEncoded) property.Value = FromQuotedPrintable(property.Value);
    card.Properties.push_back(std::move(property));
  }
  complain(kNoEnd);
  return true;
}

}  // namespace ktrv::tool
