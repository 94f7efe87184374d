#include "data/FolderQueries.h"

namespace ktrv::data::FolderQueries {
namespace {

constexpr Parameter kId{u"ID", ParameterKind::Integer, 0};
constexpr Parameter kName{u"NAME", ParameterKind::DialectText, 100};
constexpr StringView kCategory = u"REMOTE_CONTACTS_CATEGORY";
constexpr Parameter kNarrowCategory{kCategory, ParameterKind::NarrowText, 50};

}  // namespace

const std::array<Command, kCount>& All() {
  static const std::array<Command, kCount> kCommands{{
      {u"InsertFolderCommand",
       u"INSERT INTO SMS_ABFOLDERS (TYPE, NAME, PARENTFOLDERID, USER_ID, REMOTE_CONTACTS_CATEGORY )"
       u" VALUES(?, ?, 0, ?, ?)",
       {{u"TYPE", ParameterKind::NarrowText, 1},
        kName,
        {u"USER_ID", ParameterKind::Integer, 0},
        {kCategory, ParameterKind::DialectText, 50}}},
      {u"UpdateFolderCommand",
       u"UPDATE SMS_ABFOLDERS SET NAME = ?, REMOTE_CONTACTS_CATEGORY = ? WHERE ID = ?",
       {kName, {kCategory, ParameterKind::DialectText, 100}, kId}},
      {u"NameExistsCommand", u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ?", {kName}},
      {u"NameExistsOtherCommand",
       u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ? AND ID <> ?",
       {kName, kId}},
      {u"CategoryMappedCommand",
       u"SELECT * FROM SMS_ABFOLDERS WHERE REMOTE_CONTACTS_CATEGORY = ?",
       {kNarrowCategory}},
      {u"CategoryMappedOtherCommand",
       u"SELECT * FROM SMS_ABFOLDERS WHERE REMOTE_CONTACTS_CATEGORY = ? AND ID <> ?",
       {kNarrowCategory, kId}},
      // The id goes as text here.
      {u"FolderByIdCommand",
       u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ? ",
       {{u"ID", ParameterKind::NarrowText, 100}}},
      {u"FolderByNameCommand",
       u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE NAME = ? ",
       {kName}},
      {u"CategoriesCommand", u"SELECT CATEGORY FROM ZUL$CONTACTS_CATEGORY", {}},
  }};
  return kCommands;
}

}  // namespace ktrv::data::FolderQueries
