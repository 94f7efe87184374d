#include "tool/import/Cleaning.h"

#include <array>

#include "common/Global.h"
#include "controls/DatePicker.h"
#include "controls/SoughtNumber.h"
#include "tool/PhoneNumber.h"
#include "tool/formats/TextSource.h"

namespace ktrv::tool {
namespace {

using data::ContactText;

constexpr std::size_t kLongestQuoted = 40;  // units of a value in a message

String InQuotes(StringView value) {
  const bool isLong = value.size() > kLongestQuoted;
  return u"\"" + String(value.substr(0, kLongestQuoted)) + (isLong ? u"...\"" : u"\"");
}

/// The text without white space around it.
StringView Stripped(StringView text) {
  constexpr StringView kWhite = u" \t\r\n\u00A0";
  const std::size_t first = text.find_first_not_of(kWhite);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

bool IsNumberOf(ContactText text) {
  return text == ContactText::OfficePhone || text == ContactText::HomePhone ||
         text == ContactText::Fax;
}

/// Up to three numbers between the separator.
std::optional<std::array<std::int64_t, 3>> Numbers(StringView text, char16_t separator) {
  std::array<std::int64_t, 3> numbers{};
  for (std::size_t index = 0; index < numbers.size(); ++index) {
    const std::size_t end = index < 2 ? text.find(separator) : text.size();
    if (end == StringView::npos || !IsDecimalDigits(text.substr(0, end))) return std::nullopt;
    numbers[index] = ParseInteger(text.substr(0, end)).value_or(0);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return numbers;
}

std::optional<DateTime> DateOf(std::int64_t year, std::int64_t month, std::int64_t day) {
  if (year < 1000 || year > 9999 || month > 12 || day > 31) return std::nullopt;
  const std::chrono::year_month_day date(std::chrono::year(static_cast<int>(year)),
                                         std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day)));
  if (!date.ok()) return std::nullopt;
  return DateTime(std::chrono::local_days(date));
}

/// Whether the text says that there is no date, or one without a year.
bool LacksYear(StringView text) {
  return text.starts_with(u"--");
}
/// Apple and Android write 1604, a leap year, for no year.
bool IsInYearForNone(DateTime date) {
  const std::chrono::year_month_day parts(std::chrono::floor<std::chrono::days>(date));
  return parts.year() == std::chrono::year(1604);
}
bool IsNoDate(StringView text) {
  return text.find_first_not_of(u"0/-. :") == StringView::npos && !LacksYear(text);
}

/// The steps of a check.
class Checking {
 public:
  Checking(const RawContact& raw, DateOrder order, CheckedContact& checked)
      : raw_(raw), order_(order), checked_(checked) {}

  void Run() {
    for (std::size_t text = 0; text < data::kContactTexts; ++text) {
      CheckText(static_cast<ContactText>(text));
    }
    TakeFullName();
    CheckAge();
    CheckSex();
    CheckDate(Field::Birthday, u"birthday", checked_.Cleaned.Birthday);
    CheckDate(Field::Anniversary, u"anniversary", checked_.Cleaned.Anniversary);
    CheckRules();
  }

 private:
  void Refuse(String reason) {
    if (checked_.Refusal.empty()) checked_.Refusal = std::move(reason);
  }

  void CheckText(ContactText text) {
    const data::ContactTextColumn column = data::ColumnOf(text);
    auto& value = checked_.Cleaned.Texts[static_cast<std::size_t>(text)];
    if (raw_.IsStoredAsItIs(FieldOf(text))) {
      if (raw_.Has(FieldOf(text))) value = String(raw_.Text(FieldOf(text)));
    } else {
      value = String(Stripped(raw_.Text(FieldOf(text))));  // as the editor stores an empty box
      if (text == ContactText::MobileNo || text == ContactText::CountryCode) {
        value = CleanNumber(*value);
      }
      if (IsNumberOf(text) && value->size() > Limit(column)) value = CleanNumber(*value);
    }
    if (value) CheckCharacters(*value, column);
  }

  static std::size_t Limit(const data::ContactTextColumn& column) {
    return static_cast<std::size_t>(column.Limit);
  }

  void CheckCharacters(const String& value, const data::ContactTextColumn& column) {
    const String name(Trim(column.Label));
    if (value.size() > Limit(column)) {
      Refuse(name + u" has " + ToDecimal(static_cast<std::int64_t>(value.size())) +
             u" characters; at most " + ToDecimal(column.Limit) + u" are allowed");
    }
    if (value.find(u'\0') != String::npos) Refuse(name + u" has a zero character");
    if (HasInvalid(value)) {
      Refuse(name + u" has characters that are not valid in the encoding of the file");
    }
  }

  /// The name of a contact whose name is not divided, such as that of a company.
  void TakeFullName() {
    const auto isEmpty = [&](ContactText text) { return checked_.Cleaned.Text(text).empty(); };
    if (raw_.IsOwn || !isEmpty(ContactText::FirstName) || !isEmpty(ContactText::LastName)) return;
    auto& name = checked_.Cleaned.Texts[static_cast<std::size_t>(ContactText::FirstName)];
    name = String(Stripped(raw_.Text(Field::FullName)));
    CheckCharacters(*name, data::ColumnOf(ContactText::FirstName));
  }

  void CheckAge() {
    const StringView text = Stripped(raw_.Text(Field::Age));
    if (text.empty()) return;
    const auto number = Global::PastedNumber(text);
    if (!number || text.size() > static_cast<std::size_t>(data::kAgeLimit)) {
      return Refuse(u"The age " + InQuotes(text) + u" is not a number of up to three digits");
    }
    checked_.Cleaned.Age = ParseNumber(*number);
  }

  void CheckSex() {
    const String text = ToUpperAscii(Stripped(raw_.Text(Field::Sex)));
    if (raw_.IsStoredAsItIs(Field::Sex) && !text.empty()) {
      checked_.Cleaned.Sex = String(raw_.Text(Field::Sex));
      if (text.size() > 1) Refuse(u"The sex " + InQuotes(text) + u" is neither M nor F");
    } else if (text == u"M" || text == u"MALE") {
      checked_.Cleaned.Sex = u"M";
    } else if (text == u"F" || text == u"FEMALE") {
      checked_.Cleaned.Sex = u"F";
    }
  }

  void LeaveOut(StringView name, StringView text, StringView reason,
                std::optional<DateTime>& date) {
    date.reset();
    checked_.Notes.push_back(u"The " + String(name) + u" " + InQuotes(text) + u" " +
                             String(reason) + u" and is left out");
  }

  void CheckDate(Field field, StringView name, std::optional<DateTime>& date) {
    const StringView text = Stripped(raw_.Text(field));
    const bool isStored = raw_.IsStoredAsItIs(field);
    if (text.empty() || (IsNoDate(text) && !isStored)) return;
    date = isStored ? ParseDateTime(text) : ParseDate(text, order_);
    const bool isOld = !isStored && date && *date < controls::DatePicker::kEarliest;
    if (LacksYear(text) || (isOld && IsInYearForNone(*date))) {
      return LeaveOut(name, text, u"has no year", date);
    }
    if (isOld) return LeaveOut(name, text, u"is before 1753", date);
    if (date) return;
    Refuse(u"The " + String(name) + u" " + InQuotes(text) + u" is no date" +
           (text.find(u'/') == StringView::npos ? u""
            : order_ == DateOrder::MonthFirst   ? u" (month/day/year; see --dates)"
                                                : u" (day/month/year; see --dates)"));
  }

  void CheckRules() {
    const Contact& contact = checked_.Cleaned;
    const StringView mobile = contact.Text(ContactText::MobileNo);
    auto refusal = data::ContactRefusalOf(contact.Text(ContactText::FirstName), mobile,
                                          contact.Text(ContactText::Email), Global::IsValidEmail);
    // The editor's box takes digits only. Spreadsheets make a number of our export 4.67E+10.
    const bool isStored = raw_.IsStoredAsItIs(FieldOf(ContactText::MobileNo));
    if (!refusal && (isStored ? !NotDialled(mobile).empty() : !IsDecimalDigits(mobile))) {
      refusal = {ContactText::MobileNo, u"Enter a proper Mobile No."};
    }
    if (!refusal) return;
    const StringView value = contact.Text(refusal->Field);
    Refuse(String(refusal->Message) + (Trim(value).empty() ? String() : u" " + InQuotes(value)));
  }

  const RawContact& raw_;
  DateOrder order_;
  CheckedContact& checked_;
};

}  // namespace

CheckedContact CheckContact(const RawContact& raw, DateOrder order) {
  CheckedContact checked;
  if (!raw.Note.empty()) checked.Notes.push_back(raw.Note);
  Checking(raw, order, checked).Run();
  return checked;
}

String CleanNumber(StringView number) {
  // Spreadsheets get a number to be taken as text by an apostrophe.
  if (number.starts_with(u'\'')) number.remove_prefix(1);
  const bool isNumber = number.find_first_of(u"123456789") != StringView::npos &&
                        !controls::SoughtNumber(number).IsEmpty();
  return isNumber ? controls::SoughtNumber::DigitsOf(number) : String(number);
}

std::optional<DateTime> ParseDate(StringView text, DateOrder order) {
  constexpr std::size_t kIso = 10;     // units of yyyy-mm-dd
  constexpr std::size_t kCompact = 8;  // of yyyymmdd
  text = Stripped(text);
  text = text.substr(0, text.find_first_of(u"T "));
  if (text.size() == kCompact && IsDecimalDigits(text)) {
    return DateOf(*ParseInteger(text.substr(0, 4)), *ParseInteger(text.substr(4, 2)),
                  *ParseInteger(text.substr(6)));
  }
  for (const char16_t separator : {u'-', u'/'}) {
    const auto ymd = text.size() <= kIso ? Numbers(text, separator) : std::nullopt;
    if (ymd && (*ymd)[0] > 31) return DateOf((*ymd)[0], (*ymd)[1], (*ymd)[2]);
  }
  if (const auto dmy = Numbers(text, u'.')) return DateOf((*dmy)[2], (*dmy)[1], (*dmy)[0]);
  if (const auto parts = Numbers(text, u'/')) {
    const bool isMonthFirst = order == DateOrder::MonthFirst;
    return DateOf((*parts)[2], (*parts)[isMonthFirst ? 0 : 1], (*parts)[isMonthFirst ? 1 : 0]);
  }
  return std::nullopt;
}

}  // namespace ktrv::tool
