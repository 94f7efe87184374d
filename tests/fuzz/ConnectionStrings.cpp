#include <optional>
#include <utility>
#include <vector>

#include "database/odbc/ConnectionString.h"
#include "tests/fuzz/Input.h"

namespace ktrv::fuzz {
namespace {

using database::odbc::CompleteConnectionString;
using database::odbc::KeywordValue;
using database::odbc::WithKeyword;

struct Pairs {
  std::vector<std::pair<String, String>> All;
  bool LeftOpen = false;  ///< a brace at the end

  std::optional<String> Value(StringView keyword) const {
    for (const auto& [name, value] : All) {
      if (EqualsIgnoringCase(name, keyword)) return value;
    }
    return std::nullopt;
  }
};

/// The pairs, read unit by unit.
Pairs Read(StringView text) {
  enum { Keyword, BeforeValue, Plain, Braced, MaybeClosed, Behind } state = Keyword;
  Pairs pairs;
  String keyword;
  String value;
  const auto end = [&] {
    const bool braced = state == Behind || state == MaybeClosed || state == Braced;
    pairs.All.emplace_back(Trim(keyword), braced ? value : String(Trim(value)));
    keyword.clear();
    value.clear();
    state = Keyword;
  };
  for (const char16_t unit : text) {
    if (state == MaybeClosed) {
      state = unit == u'}' ? Braced : Behind;
      if (unit == u'}') {
        value += unit;
        continue;
      }
    }
    if (unit == u';' && state != Braced) {
      end();
    } else if (state == Keyword && unit == u'=') {
      state = BeforeValue;
    } else if (state == Keyword) {
      keyword += unit;
    } else if (state == BeforeValue && unit == u'{') {
      state = Braced;
      value.clear();
    } else if (state == BeforeValue || state == Plain) {
      if (unit != u' ') state = Plain;
      value += unit;
    } else if (state == Braced && unit == u'}') {
      state = MaybeClosed;
    } else if (state == Braced) {
      value += unit;
    }
  }
  pairs.LeftOpen = state == Braced;
  end();
  return pairs;
}

void TryWith(StringView text, StringView keyword, StringView value) {
  const String longer = WithKeyword(text, keyword, value);
  Demand(longer.starts_with(text), "what was there stays");
  DemandEqual(KeywordValue(longer, keyword), value, "a value comes back");
}

void Try(Input input) {
  const String text = input.Line();
  const String user = input.Line();
  const String password = input.Text();
  const Pairs pairs = Read(text);
  for (const auto& [keyword, value] : pairs.All) {
    DemandEqual(KeywordValue(text, keyword), pairs.Value(keyword).value_or(u""), "a value");
  }
  Demand(KeywordValue(text, u"Not\x1there").empty() || pairs.Value(u"Not\x1there"), "no value");
  if (pairs.LeftOpen) return;  // it would swallow what comes behind it
  const bool isNew = !pairs.Value(u"Uid") && !pairs.Value(u"Pwd");
  if (isNew) {
    TryWith(text, u"Uid", user);
    TryWith(text, u"Pwd", password);
  }
  const String complete = CompleteConnectionString(text, user, password);
  Demand(complete.starts_with(text), "what was there stays");
  const Pairs all = Read(complete);
  for (const auto& [keyword, value] : pairs.All) {
    Demand(all.Value(keyword) == pairs.Value(keyword) || keyword.empty(), "each value stays");
  }
  if (isNew) {
    DemandEqual(all.Value(u"Uid").value_or(u""), user, "the user");
    DemandEqual(all.Value(u"Pwd").value_or(u""), password, "the password");
  }
  DemandEqual(CompleteConnectionString(complete, {}, {}), complete, "it is complete");
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
