#include "tool/import/DuplicateIndex.h"

#include "tool/PhoneNumber.h"

namespace ktrv::tool {

String DuplicateIndex::Person::FullName() const {
  String full;
  for (const StringView name : {FirstName, MiddleName, LastName}) {
    if (Trim(name).empty()) continue;
    if (!full.empty()) full += u' ';
    full += Trim(name);
  }
  return full;
}

std::optional<std::size_t> DuplicateIndex::Find(const Person& person) {
  if (const auto found = FindKey(DialledKey(person))) return found;
  return FindKey(MailKey(person));
}

std::size_t DuplicateIndex::Add(const Person& person, std::int64_t id) {
  const std::size_t number = ids_.size();
  ids_.push_back(id);
  names_.push_back(NameHash(person));
  AddKey(DialledKey(person), number);
  AddKey(MailKey(person), number);
  return number;
}

std::size_t DuplicateIndex::NameHash(const Person& person) {
  return std::hash<String>()(ToUpperAscii(person.FullName()));
}

const String& DuplicateIndex::DialledKey(const Person& person) {
  key_.clear();
  std::uint64_t number = NumberKey(person.CountryCode, person.MobileNo);
  if (number == 0) return key_;
  key_ += u'#';
  for (; number != 0; number >>= 16) key_ += static_cast<char16_t>(number & 0xFFFF);
  return key_;
}

const String& DuplicateIndex::MailKey(const Person& person) {
  key_.clear();
  const StringView email = Trim(person.Email);
  if (email.empty()) return key_;
  key_ += u'@';
  key_ += email;
  for (const StringView name : {person.FirstName, person.MiddleName, person.LastName}) {
    if (Trim(name).empty()) continue;
    key_ += u'\n';
    key_ += Trim(name);
  }
  key_ = ToUpperAscii(key_);
  return key_;
}

std::optional<std::size_t> DuplicateIndex::FindKey(const String& key) const {
  if (key.empty()) return std::nullopt;
  const auto found = keys_.Find(key);
  if (!found || ids_[owners_[*found]] == kGone) return std::nullopt;
  return owners_[*found];
}

void DuplicateIndex::AddKey(const String& key, std::size_t number) {
  if (key.empty()) return;
  const auto owner = static_cast<std::uint32_t>(number);
  if (keys_.Add(key)) {
    owners_.push_back(owner);
  } else if (std::uint32_t& former = owners_[*keys_.Find(key)]; ids_[former] == kGone) {
    former = owner;
  }
}

}  // namespace ktrv::tool
