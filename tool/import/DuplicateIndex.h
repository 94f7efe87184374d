#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "common/TextIndex.h"

namespace ktrv::tool {

/// The people that an import knows, to find them again: by the digits of the number, however it is
/// written, or by name and e-mail. Ignores the case of a to z.
class DuplicateIndex {
 public:
  struct Person {
    StringView FirstName = {};
    StringView MiddleName = {};
    StringView LastName = {};
    StringView CountryCode = {};
    StringView MobileNo = {};
    StringView Email = {};

    /// The parts of the name with blanks between them.
    String FullName() const;
  };

  static constexpr std::int64_t kNotStored = 0;
  static constexpr std::int64_t kUnknown = -2;  ///< stored, but nobody needs the id

  /// The person's number in order of Add; nullopt if it is not known.
  std::optional<std::size_t> Find(const Person& person);
  /// Adds a person. Its number and its e-mail may be those of others, who remain the ones found.
  /// \param id of the contact in the database
  std::size_t Add(const Person& person, std::int64_t id = kNotStored);

  /// Whether the person was added with this name, in any case of a to z.
  bool HasName(std::size_t number, const Person& person) const {
    return names_[number] == NameHash(person);
  }
  std::int64_t IdOf(std::size_t number) const { return ids_[number]; }
  void SetId(std::size_t number, std::int64_t id) { ids_[number] = id; }
  /// The person is not found any more.
  void Remove(std::size_t number) { ids_[number] = kGone; }

 private:
  static constexpr std::int64_t kGone = -1;

  static std::size_t NameHash(const Person& person);
  /// The keys of the person, which start differently; empty if it has none.
  const String& DialledKey(const Person& person);
  const String& MailKey(const Person& person);
  std::optional<std::size_t> FindKey(const String& key) const;
  void AddKey(const String& key, std::size_t number);

  TextIndex keys_;
  std::vector<std::uint32_t> owners_;  ///< person by number of key
  std::vector<std::int64_t> ids_;
  std::vector<std::size_t> names_;  ///< hashes
  String key_;
};

}  // namespace ktrv::tool
