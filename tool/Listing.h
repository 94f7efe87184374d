#pragma once

#include <string>

#include "tool/Command.h"

namespace ktrv::tool {

struct ListOptions {
  std::string Folder;  ///< name in UTF-8 or "#ID"; empty: what stands outside any folder
};
/// Prints the contacts and groups of a folder, as the address book lists them.
int List(const ListOptions& options, Book& book, Console& console);

struct ShowOptions {
  std::string ContactId;
};
/// Prints all columns of a contact.
int Show(const ShowOptions& options, Book& book, Console& console);

/// Prints the folders, with the number of their contacts and groups.
int Folders(Book& book, Console& console);

/// Prints the groups, with the number of their members.
int Groups(Book& book, Console& console);

struct MembersOptions {
  std::string Group;    ///< name in UTF-8 or "#ID"
  bool Expand = false;  ///< as recipients of a message
};
/// Prints the members of a group, as the address book lists them or as the picker expands it.
int Members(const MembersOptions& options, Book& book, Console& console);

}  // namespace ktrv::tool
