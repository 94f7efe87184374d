#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <unordered_set>
#include <utility>
#include <vector>

#include "database/Command.h"
#include "tool/import/Contact.h"

namespace ktrv::tool {

/// A row of the file on its way to the database.
struct ImportEntry {
  enum class Kind {
    Add,    ///< a new contact
    Merge,  ///< values for the gaps of a contact in the database
    Join,   ///< nothing but memberships
  };
  Kind What = Kind::Add;
  std::int64_t Line = 0;
  String Raw;
  Contact Values;
  std::int64_t FolderId = 0;         ///< of a new contact
  std::vector<std::int64_t> Groups;  ///< ids of groups to be a member of
  std::int64_t Id = 0;  ///< of the contact; 0: not known. Set by the writer for a new contact
  std::optional<std::size_t> Original;  ///< the entry of the same block that adds the contact
  std::size_t Person = 0;               ///< in the index of duplicates
  String Refusal;                       ///< set by the writer if the database refuses the row
};

/// Writes rows in blocks, each in one transaction: all of them, or none.
class BlockWriter {
 public:
  /// \param connection open; must outlive the writer
  explicit BlockWriter(database::Connection& connection);

  /// Whether the ids of all new contacts are found. Else only those of blocks with groups.
  bool FindsAllIds = false;

  /// Writes the entries in order. If the database refuses one, they are written one by one, each in
  /// a transaction of its own. \throws Error for other failures; then Finished, Unknown tell what
  /// is stored
  void Write(std::vector<ImportEntry>& entries);

  /// The number of entries, from the first one, that the last Write has stored or refused.
  std::size_t Finished() const { return finished_; }
  /// The number of entries behind those of which it is unknown whether all or none are stored. The
  /// others are not.
  std::size_t Unknown() const { return unknown_; }

 private:
  using Entries = std::vector<ImportEntry>;
  using Membership = std::pair<std::int64_t, std::int64_t>;  ///< group and contact
  struct Refused {
    String Message;
  };

  /// \throws Refused if the database refuses one of them; then nothing is stored
  void WriteTogether(Entries& entries, std::size_t begin, std::size_t end);
  using Rows = std::vector<std::vector<Variant>>;
  /// \param makeRows the values for each execution of the command; may be called twice
  void Run(database::Command& command, const std::function<Rows()>& makeRows);
  void Insert(const Entries& entries, std::size_t begin, std::size_t end);
  void FindIds(Entries& entries, std::size_t begin, std::size_t end, std::int64_t newest);
  /// \throws Error if a table keeps what is rolled back
  void RequireTransactions();
  void FillGapsOf(const ImportEntry& entry);
  /// \throws Refused if another user has deleted what the entries belong to
  void RequirePlaces(const Entries& entries, std::size_t begin, std::size_t end,
                     const std::vector<Membership>& memberships);
  /// \throws Refused if another user has deleted a former contact that becomes a member
  void RequireContacts(const Entries& entries, std::size_t begin, std::size_t end,
                       const std::vector<Membership>& memberships);
  void RequireRows(StringView table, StringView kind, const std::set<std::int64_t>& ids);
  std::vector<Membership> NewMemberships(const Entries& entries, std::size_t begin,
                                         std::size_t end);
  /// Must come first in the transaction: on some engines the other statements see what was stored
  /// before their first one. Without it another user's save of a group could remove new members
  /// unseen.
  void LockGroups(const Entries& entries, std::size_t begin, std::size_t end);
  std::unordered_set<std::int64_t>& MembersOf(std::int64_t groupId);

  database::Connection& connection_;
  bool findsIds_ = false;       ///< in this block
  bool writesTogether_ = true;  ///< until it turns out to be unsupported
  std::size_t finished_ = 0;
  std::size_t unknown_ = 0;
  database::Command insertContact_;
  database::Command insertMember_;
  std::map<std::int64_t, std::unordered_set<std::int64_t>> members_;  ///< contacts by group
};

}  // namespace ktrv::tool
