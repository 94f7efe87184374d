#include "common/Passwords.h"

#include <algorithm>
#include <vector>

namespace ktrv {
namespace {

constexpr StringView kHidden = u"***";

bool IsLetterOrDigit(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'z') ||
         (unit >= u'A' && unit <= u'Z') || unit > 0x7F;
}

/// Whether the text ends with a password keyword.
bool EndsWithKeyword(StringView text) {
  while (!text.empty() && text.back() <= u' ') text.remove_suffix(1);
  return std::ranges::any_of(
      std::initializer_list<StringView>{u"PWD", u"PASSWORD", u"PASSWD"}, [&](StringView keyword) {
        return text.size() >= keyword.size() &&
               EqualsIgnoringCase(text.substr(text.size() - keyword.size()), keyword);
      });
}

/// The character that ends the value; 0 if the value is not quoted.
char16_t ClosingQuote(StringView value) {
  const char16_t first = value.empty() ? u'\0' : value[0];
  if (first == u'{') return u'}';
  return first == u'\'' || first == u'"' ? first : u'\0';
}

/// The end of the value that starts at position 0, including quotes.
std::size_t EndOfValue(StringView text) {
  const char16_t quote = ClosingQuote(text);
  if (quote == u'\0') return std::min(text.find(u';'), text.size());
  std::size_t at = 1;
  while (at < text.size()) {
    if (text[at] != quote) {
      ++at;
    } else if (at + 1 < text.size() && text[at + 1] == quote) {
      at += 2;  // a doubled quote is an escaped one
    } else {
      return at + 1;
    }
  }
  return text.size();
}

struct Value {
  std::size_t Start;
  std::size_t End;
};

/// \param within true: also searches inside values, because the apparent opening quote of a value
/// may be an ordinary character.
std::vector<Value> PasswordValues(StringView text, bool within) {
  std::vector<Value> values;
  for (std::size_t at = 0; (at = text.find(u'=', at)) != StringView::npos;) {
    const StringView keyword = text.substr(0, at++);
    if (!EndsWithKeyword(keyword)) continue;
    while (at < text.size() && text[at] <= u' ') ++at;
    const std::size_t end = at + EndOfValue(text.substr(at));
    if (end > at) values.push_back({at, end});
    if (!within) at = end;
  }
  return values;
}

/// The passwords of a connection string: as written, without quotes, and unescaped. Drivers may
/// repeat any of these forms.
std::vector<String> PasswordsOf(StringView connectionString) {
  std::vector<String> passwords;
  for (const Value& value : PasswordValues(connectionString, true)) {
    const StringView written = connectionString.substr(value.Start, value.End - value.Start);
    passwords.emplace_back(Trim(written));
    const char16_t quote = ClosingQuote(written);
    if (quote == u'\0') continue;
    // The quote may be an ordinary character of a value that extends to the next ";".
    const StringView rest = connectionString.substr(value.Start);
    passwords.emplace_back(Trim(rest.substr(0, rest.find(u';'))));
    StringView inner = written.substr(1);
    if (!inner.empty() && inner.back() == quote) inner.remove_suffix(1);
    passwords.emplace_back(inner);
    String plain;
    for (std::size_t i = 0; i < inner.size(); ++i) {
      plain += inner[i];
      if (inner[i] == quote && i + 1 < inner.size() && inner[i + 1] == quote) ++i;
    }
    passwords.push_back(plain);
  }
  return passwords;
}

void Hide(String& text, StringView password) {
  constexpr std::size_t kShort = 4;
  // What consists of the replacement's character would only grow.
  if (password.find_first_not_of(kHidden[0]) == StringView::npos) return;
  for (std::size_t at = 0; (at = text.find(password, at)) != String::npos;) {
    const std::size_t end = at + password.size();
    const bool inWord = (at > 0 && IsLetterOrDigit(text[at - 1])) ||
                        (end < text.size() && IsLetterOrDigit(text[end]));
    if (password.size() < kShort && inWord) {
      ++at;
      continue;
    }
    text.replace(at, password.size(), kHidden);
    at += kHidden.size();
  }
}

}  // namespace

String HidePasswords(StringView text) {
  const std::vector<Value> values = PasswordValues(text, false);
  String hidden(text);
  for (auto value = values.rbegin(); value != values.rend(); ++value) {
    hidden.replace(value->Start, value->End - value->Start, kHidden);
  }
  return hidden;
}

String HidePasswords(StringView text, StringView connectionString, StringView password) {
  std::vector<String> passwords = PasswordsOf(connectionString);
  passwords.emplace_back(password);
  // The longest first: a shorter one may be part of a longer one.
  std::ranges::sort(passwords, std::ranges::greater(),
                    [](const String& each) { return std::pair(each.size(), StringView(each)); });
  passwords.erase(std::unique(passwords.begin(), passwords.end()), passwords.end());
  String hidden = HidePasswords(text);
  for (const String& each : passwords) Hide(hidden, each);
  return hidden;
}

}  // namespace ktrv
