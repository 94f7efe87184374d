#include "data/FolderQueries.h"

namespace ktrv::data::FolderQueries {
namespace {

constexpr CommandParameter kId{u"ID", ParameterKind::Integer, 0};
constexpr CommandParameter kName{u"NAME", ParameterKind::DialectText, 100};
constexpr StringView kCategory = u"REMOTE_CONTACTS_CATEGORY";
constexpr CommandParameter kNarrowCategory{kCategory, ParameterKind::NarrowText, 50};

}  // namespace

const std::vector<CommandText>& All() {
  static const std::vector<CommandText> kCommands{
      {u"INSERT INTO SMS_ABFOLDERS (TYPE, NAME, PARENTFOLDERID, USER_ID, REMOTE_CONTACTS_CATEGORY )"
       u" VALUES(?, ?, 0, ?, ?)",
       {{u"TYPE", ParameterKind::NarrowText, 1},
        kName,
        {u"USER_ID", ParameterKind::Integer, 0},
        {kCategory, ParameterKind::DialectText, 50}}},
      {u"UPDATE SMS_ABFOLDERS SET NAME = ?, REMOTE_CONTACTS_CATEGORY = ? WHERE ID = ?",
       {kName, {kCategory, ParameterKind::DialectText, 100}, kId}},
      {u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ?", {kName}},
      {u"SELECT 1 FROM SMS_ABFOLDERS WHERE NAME = ? AND ID <> ?", {kName, kId}},
      {u"SELECT * FROM SMS_ABFOLDERS WHERE REMOTE_CONTACTS_CATEGORY = ?", {kNarrowCategory}},
      {u"SELECT * FROM SMS_ABFOLDERS WHERE REMOTE_CONTACTS_CATEGORY = ? AND ID <> ?",
       {kNarrowCategory, kId}},
      // Here the id is a text parameter.
      {u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE ID = ? ",
       {{u"ID", ParameterKind::NarrowText, 100}}},
      {u"SELECT ID, NAME, TYPE, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS WHERE NAME = ? ",
       {kName}},
      {u"SELECT CATEGORY FROM ZUL$CONTACTS_CATEGORY", {}},
  };
  return kCommands;
}

}  // namespace ktrv::data::FolderQueries
