#pragma once

#include <array>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "forms/contact/frmNewContact.h"
#include "forms/groups/frmGroupsNew.h"

namespace ktrv::tests {

/// Expected contents of an address book, by id. Null counts as an empty text.
struct Book {
  struct Contact {
    String Folder;
    std::array<String, 15> Texts;
    std::optional<double> Age;
    String Sex;
    String Birthday;
    String Anniversary;
    String Hobby;
    bool operator==(const Contact&) const = default;
  };
  struct Group {
    String Name;
    String Folder;
    bool operator==(const Group&) const = default;
  };
  struct Folder {
    String Type;
    String Name;
    String Category;
    bool operator==(const Folder&) const = default;
  };
  struct Member {
    String Group;
    String Id;
    String Type;
    // NOLINTNEXTLINE(modernize-use-nullptr): its generated body compares with 0
    auto operator<=>(const Member&) const = default;
  };

  std::map<String, Contact> Contacts;
  std::map<String, Group> Groups;
  std::map<String, Folder> Folders;
  std::multiset<Member> Members;

  bool operator==(const Book&) const = default;

  static Book Read(const String& connectionString);
  /// Rows that differ in the other book; empty if none do.
  std::string Difference(const Book& other) const;

  // Changes by the user.
  static forms::ContactFields::Entries EntriesOf(const forms::frmNewContact& dialog);
  /// \param before what the boxes showed first; null for a new contact.
  static Contact Written(Contact contact, const forms::ContactFields::Entries* before,
                         const forms::ContactFields::Entries& now);
  void ReplaceMembers(const String& group, const controls::FlexGrid& members);
  void DeleteContact(const String& id);
  void DeleteGroup(const String& id);
  /// No effect on a folder with groups.
  void DeleteFolder(const String& id);

  // What the address book window must show.
  std::set<String> Nodes() const;
  /// Kinds and ids at the node of this key.
  std::set<String> Rows(const String& node, bool oracle) const;
};

}  // namespace ktrv::tests
