#include "tests/native/randomuser/Book.h"

#include "database/Recordset.h"
#include "tests/native/adversary/Stage.h"

namespace ktrv::tests {
namespace {

using Row = std::vector<String>;

/// Remote contacts of the sample and their categories.
const std::map<String, String> kRemote{{u"R1", u"D"}, {u"R2", u"D"}, {u"E1", u"E"}};

template <class Take>
void ReadRows(database::Connection& connection, StringView query, const Take& take) {
  database::Recordset rows(connection.Surroundings());
  rows.Open(query, connection);
  for (std::int64_t row = 0; row < rows.RecordCount(); ++row) {
    Row cells;
    for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
      cells.emplace_back(rows.CellText(row, column).value_or(u""));
    }
    take(cells);
  }
}

String DayOf(const std::optional<DateTime>& moment) {
  return moment ? ToText(Variant(*moment)).substr(0, 10) : String();
}

std::string Shown(const Book::Contact& contact) {
  String text = contact.Folder;
  for (const String& each : contact.Texts) text += u"|" + each;
  text += u"|" + (contact.Age ? NumberText(*contact.Age) : String());
  for (const String& each : {contact.Sex, contact.Birthday, contact.Anniversary, contact.Hobby}) {
    text += u"|" + each;
  }
  return ToUtf8(text);
}
std::string Shown(const Book::Group& group) {
  return ToUtf8(group.Name + u"|" + group.Folder);
}
std::string Shown(const Book::Folder& folder) {
  return ToUtf8(folder.Type + u"|" + folder.Name + u"|" + folder.Category);
}
std::string Shown(const Book::Member& member) {
  return ToUtf8(member.Group + u"|" + member.Id + u"|" + member.Type);
}

template <class Map>
void Compare(const char* what, const Map& left, const Map& right, std::string& difference) {
  for (const auto& [id, row] : left) {
    const auto other = right.find(id);
    if (other != right.end() && other->second == row) continue;
    difference += std::string("\n    - ") + what + " " + ToUtf8(id) + ": " + Shown(row);
  }
  for (const auto& [id, row] : right) {
    const auto other = left.find(id);
    if (other != left.end() && other->second == row) continue;
    difference += std::string("\n    + ") + what + " " + ToUtf8(id) + ": " + Shown(row);
  }
}

}  // namespace

Book Book::Read(const String& connectionString) {
  database::Connection connection(
      {[](StringView) -> database::Driver& { return SampleBook::Driver(); }, [](const auto&) {}});
  connection.Open(connectionString);
  Book book;
  ReadRows(connection,
           u"SELECT ID, FOLDER_ID, FNAME, MNAME, LNAME, COUNTRYCODE, MOBILENO, OFFICEPHONE, "
           u"HOMEPHONE, FAX, EMAIL, ORGANISATION, ADDRESS, CITY, STATE, COUNTRY, ZIP, AGE, SEX, "
           u"BIRTHDAY, ANNIVERSARY, HOBBY FROM SMS_ABCONTACTS",
           [&](const Row& row) {
             Contact& contact = book.Contacts[row[0]];
             contact.Folder = row[1];
             std::copy_n(row.begin() + 2, contact.Texts.size(), contact.Texts.begin());
             contact.Age = ParseNumber(row[17]);
             contact.Sex = row[18];
             contact.Birthday = row[19].substr(0, 10);
             contact.Anniversary = row[20].substr(0, 10);
             contact.Hobby = row[21];
           });
  ReadRows(connection, u"SELECT ID, NAME, FOLDER_ID FROM SMS_ABGROUPS", [&](const Row& row) {
    book.Groups[row[0]] = {row[1], row[2]};
  });
  ReadRows(connection, u"SELECT ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY FROM SMS_ABFOLDERS",
           [&](const Row& row) {
             book.Folders[row[0]] = {row[1], row[2], row[3]};
           });
  ReadRows(connection, u"SELECT GROUP_ID, CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS",
           [&](const Row& row) {
             book.Members.insert({row[0], row[1], row[2]});
           });
  return book;
}

std::string Book::Difference(const Book& other) const {
  std::string difference;
  Compare("contact", Contacts, other.Contacts, difference);
  Compare("group", Groups, other.Groups, difference);
  Compare("folder", Folders, other.Folders, difference);
  for (const Member& member : Members) {
    if (other.Members.count(member) < Members.count(member)) {
      difference += "\n    - member " + Shown(member);
    }
  }
  for (const Member& member : other.Members) {
    if (Members.count(member) < other.Members.count(member)) {
      difference += "\n    + member " + Shown(member);
    }
  }
  return difference;
}

forms::ContactFields::Entries Book::EntriesOf(const forms::frmNewContact& dialog) {
  const auto& d = dialog;
  forms::ContactFields::Entries entries;
  entries.Texts = {d.txtFname.Text(),        d.txtMname.Text(),    d.txtLname.Text(),
                   d.txtCountryCode.Text(),  d.txtMobileno.Text(), d.txtOfficePhone.Text(),
                   d.txtHomePhone.Text(),    d.txtFax.Text(),      d.txtEmail.Text(),
                   d.txtOrganisation.Text(), d.txtAddress.Text(),  d.txtCity.Text(),
                   d.txtState.Text(),        d.txtCountry.Text(),  d.txtZip.Text()};
  entries.Age = d.txtAge.Text();
  entries.Sex = d.cboSex.ListIndex();
  entries.Birthday = d.dtBirthday.Value();
  entries.Anniversary = d.dtAnniversary.Value();
  entries.Hobby = d.txtHobby.Text();
  return entries;
}

Book::Contact Book::Written(Contact contact, const forms::ContactFields::Entries* before,
                            const forms::ContactFields::Entries& now) {
  for (std::size_t index = 0; index < contact.Texts.size(); ++index) {
    if (!before || now.Texts[index] != before->Texts[index])
      contact.Texts[index] = now.Texts[index];
  }
  const StringView age = Trim(now.Age);
  if (!age.empty() && (!before || now.Age != before->Age)) contact.Age = ParseNumber(age);
  if (!before || now.Sex != before->Sex) {
    constexpr StringView kLetters[] = {u"", u"M", u"F"};
    contact.Sex = now.Sex < 0 ? u"" : kLetters[now.Sex];
  }
  if (now.Birthday) {
    contact.Birthday = DayOf(now.Birthday);
    if (!before || now.Anniversary != before->Anniversary) {
      contact.Anniversary = DayOf(now.Anniversary);
    }
  }
  if (!before || now.Hobby != before->Hobby) contact.Hobby = now.Hobby;
  return contact;
}

void Book::ReplaceMembers(const String& group, const controls::FlexGrid& members) {
  std::erase_if(Members, [&](const Member& member) { return member.Group == group; });
  const int kind = members.ColIndex(u"CONTACTTYPE");
  const int id = members.ColIndex(u"ID");
  String letter;
  for (int row = 1; row < members.Rows(); ++row) {
    if (members.Text(row, kind) == u"1") letter = u"S";
    if (members.Text(row, kind) == u"3") letter = u"R";
    Members.insert({group, members.Text(row, id), letter});
  }
}

void Book::DeleteContact(const String& id) {
  Contacts.erase(id);
  std::erase_if(Members, [&](const Member& member) { return member.Id == id; });
}

void Book::DeleteGroup(const String& id) {
  Groups.erase(id);
  std::erase_if(Members, [&](const Member& member) { return member.Group == id; });
}

void Book::DeleteFolder(const String& id) {
  const auto isHere = [&](const auto& item) { return item.second.Folder == id; };
  if (std::any_of(Groups.begin(), Groups.end(), isHere)) return;
  std::erase_if(Contacts, isHere);
  Folders.erase(id);
}

std::set<String> Book::Nodes() const {
  std::set<String> keys{u"SHARED"};
  for (const auto& [id, folder] : Folders)
    keys.insert((folder.Type == u"S" ? u"SFLD" : u"RFLD") + id);
  for (const auto& [id, group] : Groups) keys.insert(u"SHGR" + id);
  return keys;
}

std::set<String> Book::Rows(const String& node, bool oracle) const {
  std::set<String> rows;
  const String kind = node.substr(0, 4);
  const String place = node == u"SHARED" ? String(u"0") : node.substr(4);
  const auto category = [&](const String& folder) {
    const auto found = Folders.find(folder);
    return found == Folders.end() ? String() : found->second.Category;
  };
  if (kind == u"RFLD") {
    for (const auto& [code, its] : kRemote) {
      if (its == category(place)) rows.insert(u"3:" + code);
    }
  } else if (kind == u"SHGR") {
    for (const Member& member : Members) {
      if (member.Group != place) continue;
      if (Contacts.contains(member.Id) && (!oracle || member.Type == u"S")) {
        rows.insert(u"1:" + member.Id);
      }
      const auto remote = kRemote.find(member.Id);
      if (remote == kRemote.end() || member.Type != u"R") continue;
      for (const auto& [id, folder] : Folders) {
        if (folder.Category == remote->second) rows.insert(u"3:" + member.Id);
      }
    }
  } else {
    for (const auto& [id, contact] : Contacts) {
      if (contact.Folder == place) rows.insert(u"1:" + id);
    }
    for (const auto& [id, group] : Groups) {
      if (group.Folder == place) rows.insert(u"2:" + id);
    }
  }
  return rows;
}

}  // namespace ktrv::tests
