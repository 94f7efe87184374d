#include "data/ToolQueries.h"

namespace ktrv::data::ToolQueries {

const std::vector<std::pair<StringView, std::vector<StringView>>>& Columns() {
  static const std::vector<std::pair<StringView, std::vector<StringView>>> kColumns = {
      {u"SMS_ABFOLDERS",
       {u"ID", u"TYPE", u"NAME", u"PARENTFOLDERID", u"USER_ID", u"REMOTE_CONTACTS_CATEGORY"}},
      {u"SMS_ABCONTACTS",
       {u"ID",       u"FOLDER_ID",   u"FNAME",       u"MNAME",   u"LNAME", u"COUNTRYCODE",
        u"MOBILENO", u"OFFICEPHONE", u"HOMEPHONE",   u"FAX",     u"EMAIL", u"ORGANISATION",
        u"ADDRESS",  u"CITY",        u"STATE",       u"COUNTRY", u"ZIP",   u"AGE",
        u"SEX",      u"BIRTHDAY",    u"ANNIVERSARY", u"HOBBY"}},
      {u"SMS_ABGROUPS", {u"ID", u"NAME", u"FOLDER_ID"}},
      {u"SMS_ABGROUPMAPS", {u"GROUP_ID", u"CONTACT_ID", u"CONTACT_TYPE"}},
      {u"SMS_USERS", {u"ID", u"ADMIN", u"DISABLED", u"DELETED"}},
      {u"ZUL$CONTACTS_CATEGORY", {u"CATEGORY"}},
      {u"V_ZUL$REMOTE_CONTACTS", {u"CODE", u"NAME", u"MOBILENO", u"EMAIL", u"CATEGORY"}},
  };
  return kColumns;
}

}  // namespace ktrv::data::ToolQueries
