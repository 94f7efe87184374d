#include "tool/VCardWriter.h"

#include <algorithm>

#include "tool/ContactColumns.h"
#include "tool/Utf8.h"

namespace ktrv::tool {
namespace {

namespace Columns = ContactColumns;

constexpr std::size_t kLongestLine = 75;  ///< bytes, without the line break

StringView TextOf(const ContactRecord& contact, Columns::Index column) {
  return contact.Columns[column].value_or(StringView());
}

bool HasControls(StringView text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x20; });
}

void AppendQuotedPrintable(std::string& line, StringView text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string bytes;
  AppendUtf8(bytes, text);
  for (const char each : bytes) {
    const auto byte = static_cast<unsigned char>(each);
    line += '=';
    line += kDigits[byte >> 4];
    line += kDigits[byte & 0xF];
  }
}

}  // namespace

VCardWriter::VCardWriter(std::ostream& file, Version version)
    : ContactWriter(file), version_(version) {}

void VCardWriter::Write(const ContactRecord& contact) {
  Add("BEGIN", u"VCARD");
  Add("VERSION", version_ == Version::Three ? u"3.0" : u"4.0");
  WriteNames(contact);
  WriteNumbers(contact);
  WritePlaces(contact);
  WriteDates(contact);
  WriteOwn(contact);
  Add("END", u"VCARD");
  FlushIfLong();
}

void VCardWriter::WriteNames(const ContactRecord& contact) {
  String full;
  for (const auto column : {Columns::FirstName, Columns::MiddleName, Columns::LastName}) {
    const StringView name = TextOf(contact, column);
    if (name.empty()) continue;
    if (!full.empty()) full += u' ';
    full += name;
  }
  Add("FN", full);
  Open("N");
  Append(TextOf(contact, Columns::LastName));
  line_ += ';';
  Append(TextOf(contact, Columns::FirstName));
  line_ += ';';
  Append(TextOf(contact, Columns::MiddleName));
  line_ += ";;";
  Close();
}

void VCardWriter::WriteNumbers(const ContactRecord& contact) {
  const StringView code = TextOf(contact, Columns::CountryCode);
  const StringView mobile = TextOf(contact, Columns::MobileNo);
  // A number with its country code needs the plus sign to be dialled elsewhere.
  const bool plus = IsDecimalDigits(code) && code.front() != u'0';
  if (!mobile.empty()) {
    Add("TEL;TYPE=CELL", (plus ? u"+" : u"") + String(code) + String(mobile));
  }
  AddUnlessEmpty("TEL;TYPE=\"WORK,VOICE\"", TextOf(contact, Columns::OfficePhone));
  AddUnlessEmpty("TEL;TYPE=\"HOME,VOICE\"", TextOf(contact, Columns::HomePhone));
  AddUnlessEmpty("TEL;TYPE=FAX", TextOf(contact, Columns::Fax));
  AddUnlessEmpty("EMAIL", TextOf(contact, Columns::Email));
}

void VCardWriter::WritePlaces(const ContactRecord& contact) {
  AddUnlessEmpty("ORG", TextOf(contact, Columns::Organisation));
  Open("ADR");
  bool any = false;
  line_ += ";";
  for (const auto column :
       {Columns::Address, Columns::City, Columns::State, Columns::Zip, Columns::Country}) {
    const StringView part = TextOf(contact, column);
    any = any || !part.empty();
    line_ += ';';
    Append(part);
  }
  any ? Close() : line_.clear();
}

void VCardWriter::WriteDates(const ContactRecord& contact) {
  // Version 4 writes dates without hyphens; version 3 knows neither anniversary nor gender.
  const auto date = [this](StringView text) {
    String digits(text);
    if (version_ == Version::Four) std::erase(digits, u'-');
    return digits;
  };
  AddUnlessEmpty("BDAY", date(TextOf(contact, Columns::Birthday)));
  if (version_ == Version::Three) return;
  AddUnlessEmpty("ANNIVERSARY", date(TextOf(contact, Columns::Anniversary)));
  AddUnlessEmpty("GENDER", TextOf(contact, Columns::Sex));
}

void VCardWriter::WriteOwn(const ContactRecord& contact) {
  if (contact.Folder) AddOwn(Columns::kFolder, *contact.Folder);
  for (const StringView group : contact.Groups) AddOwn(Columns::kGroups, group);
  for (std::size_t column = 0; column < contact.Columns.size(); ++column) {
    if (contact.Columns[column]) AddOwn(Columns::kNames[column], *contact.Columns[column]);
  }
}

void VCardWriter::Open(std::string_view property) {
  line_ = property;
  line_ += ':';
}

void VCardWriter::Append(StringView value) {
  String escaped;
  for (const char16_t unit : value) {
    if (unit == u'\\' || unit == u',' || unit == u';') escaped += u'\\';
    if (unit == u'\n') {
      escaped += u"\\n";
    } else if (unit >= 0x20 || unit == u'\t') {
      escaped += unit;
    }
  }
  AppendUtf8(line_, escaped);
}

void VCardWriter::Close() {
  std::size_t start = 0;
  std::size_t room = kLongestLine;
  while (line_.size() - start > room) {
    std::size_t end = start + room;
    while ((line_[end] & 0xC0) == 0x80) --end;  // a character is not cut
    text_.append(line_, start, end - start).append("\r\n ");
    start = end;
    room = kLongestLine - 1;  // after the blank
  }
  text_.append(line_, start).append("\r\n");
}

void VCardWriter::Add(std::string_view property, StringView value) {
  Open(property);
  Append(value);
  Close();
}

void VCardWriter::AddUnlessEmpty(std::string_view property, StringView value) {
  if (!value.empty()) Add(property, value);
}

void VCardWriter::AddOwn(StringView name, StringView value) {
  const std::string property = "X-KTRV-" + ToUtf8(name);
  if (!HasControls(value)) return Add(property, value);
  // A vCard has no escape for other control characters than the line feed.
  Open(property + ";ENCODING=QUOTED-PRINTABLE");
  AppendQuotedPrintable(line_, value);
  Close();
}

}  // namespace ktrv::tool
