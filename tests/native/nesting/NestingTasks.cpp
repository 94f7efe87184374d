#include "tests/native/nesting/NestingHost.h"

// What the user does, and what the host does meanwhile.
namespace ktrv::tests {
namespace {

using forms::frmGroupsNew;
using forms::frmNewContact;
using forms::frmSelectFolder;
using Outcome = NestingHost::Outcome;

constexpr std::int32_t kAdministrator = NestingHost::kAdministrator;
constexpr std::int32_t kOther = NestingHost::kOtherAdministrator;
constexpr std::int32_t kShared = 1;

// The user in a dialog; with a name something is confirmed, without one it is cancelled.

void InContact(NestingHost& host, String name) {
  host.In<frmNewContact>([&host, name = std::move(name)](frmNewContact& editor) {
    host.Think();
    editor.txtFname.SetText(name.empty() ? u"Typed" : name);
    host.Think();
    name.empty() ? editor.cmdCancel.UserClicks() : editor.cmdSave.UserClicks();
  });
}

void InGroup(NestingHost& host, String name) {
  host.In<frmGroupsNew>([&host, name = std::move(name)](frmGroupsNew& editor) {
    host.Think();
    host.Come(editor);
    editor.vsfFolderContacts.UserSelects({1}, 1);
    editor.cmdSelect.UserClicks();
    editor.txtGroupName.SetText(name.empty() ? u"Typed" : name);
    host.Think();
    name.empty() ? editor.cmdCancel.UserClicks() : editor.cmdOK.UserClicks();
  });
}

void InPicker(NestingHost& host, std::vector<int> rows) {
  host.In<frmGroupsNew>([&host, rows = std::move(rows)](frmGroupsNew& picker) {
    host.Think();
    host.Come(picker);
    picker.vsfFolderContacts.UserSelects(rows.empty() ? std::vector<int>{1} : rows, 1);
    picker.cmdSelect.UserClicks();
    host.Think();
    rows.empty() ? picker.cmdCancel.UserClicks() : picker.cmdOK.UserClicks();
  });
}

void InFolder(NestingHost& host, String name) {
  host.In<frmSelectFolder>([&host, name = std::move(name)](frmSelectFolder& editor) {
    host.Think();
    editor.txtFolderName.SetText(name.empty() ? u"Typed" : name);
    host.Think();
    name.empty() ? editor.cmdCancel.UserClicks() : editor.cmdOK.UserClicks();
  });
}

Outcome AddContact(NestingHost& host, String name, std::int32_t user = kAdministrator) {
  InContact(host, std::move(name));
  return host.Contact(host.main->AddContacts(user, kShared, u"Preset", u"4711"));
}

Outcome EditContact(NestingHost& host, std::int32_t id, String name,
                    std::int32_t user = kAdministrator) {
  InContact(host, std::move(name));
  return host.Contact(host.main->EditContacts(user, kShared, id, {}, {}));
}

Outcome AddGroup(NestingHost& host, String name, std::int32_t user = kAdministrator) {
  InGroup(host, std::move(name));
  return host.Group(host.main->AddGroup(user, u"1", kShared, {}));
}

Outcome EditGroup(NestingHost& host, StringView id, String name,
                  std::int32_t user = kAdministrator) {
  InGroup(host, std::move(name));
  return host.Group(host.main->EditGroup(user, id, kShared, {}));
}

Outcome Pick(NestingHost& host, std::vector<int> rows, std::int32_t user = kAdministrator) {
  InPicker(host, std::move(rows));
  return host.Recipients(host.main->LoadRecipients(user, true));
}

Outcome OnSecond(NestingHost& host, const std::function<Outcome()>& act) {
  host.main->SetRemoteDBString(host.databases.Second.ConnectionString());
  return act();
}

}  // namespace

const std::vector<NestingHost::Task>& NestingHost::Tasks() {
  using Host = NestingHost;
  static const std::vector<Task> tasks{
      {"a contact is added", [](Host& host) { return AddContact(host, u"Zoe"); }},
      {"a new contact is cancelled", [](Host& host) { return AddContact(host, {}); }},
      {"a contact is edited", [](Host& host) { return EditContact(host, 1, u"Anna"); }},
      {"an edited contact is cancelled", [](Host& host) { return EditContact(host, 1, {}); }},
      {"a group is added", [](Host& host) { return AddGroup(host, u"Dock"); }},
      {"a new group is cancelled", [](Host& host) { return AddGroup(host, {}); }},
      {"a group is edited", [](Host& host) { return EditGroup(host, u"5", u"Ship"); }},
      {"an edited group is cancelled", [](Host& host) { return EditGroup(host, u"5", {}); }},
      {"recipients are picked",
       [](Host& host) {
         return Pick(host, {1, 2});
       }},
      {"a pick is cancelled", [](Host& host) { return Pick(host, {}); }},
      {"a contact is made in a picker",
       [](Host& host) {
         host.In<frmGroupsNew>([&host](frmGroupsNew& picker) {
           host.Come(picker);
           InContact(host, u"Zoe");
           picker.cmdNew.UserClicks();
           InContact(host, {});
           picker.cmdNew.UserClicks();
           host.Think();
           picker.cmdSelectAll.UserClicks();
           picker.cmdOK.UserClicks();
         });
         return host.Recipients(host.main->LoadRecipients(kAdministrator, false));
       }},
      {"a folder of the host's user",
       [](Host& host) {
         InFolder(host, u"Mine");
         const auto returned = host.main->LoadFolders(kAdministrator);
         return Outcome{ToUtf8(ToDecimal(returned))};
       }},
      {"the address book adds a member",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SHGR5");
         InContact(host, u"Zoe");
         book.ContactNew({});
         return host.Book();
       }},
      {"the address book's new contact is cancelled",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SHGR5");
         InContact(host, {});
         book.ContactNew({});
         return host.Book();
       }},
      {"the address book edits a contact",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SHARED");
         host.SelectRowOf(u"Ann");
         InContact(host, u"Anna");
         book.ContactProperties();
         return host.Book();
       }},
      {"the address book adds a group",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SFLD1");
         InGroup(host, u"Dock");
         book.ContactNew(u"GR");
         return host.Book();
       }},
      {"the address book edits a group",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SHGR5");
         InGroup(host, u"Ship");
         book.ContactProperties();
         return host.Book();
       }},
      {"the address book adds a folder",
       [](Host& host) {
         auto& book = host.OpenBook();
         InFolder(host, u"People");
         book.Menus.Item(u"mnuSharedFolderContext").Click();
         return host.Book();
       }},
      {"the address book edits a folder",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SFLD1");
         InFolder(host, u"People");
         book.ContactProperties();
         return host.Book();
       }},
      {"the address book deletes a contact",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SHARED");
         host.SelectRowOf(u"Ann");
         host.Think();
         host.AnswerNext(MessageAnswer::Yes);
         book.ContactDelete();
         return host.Book();
       },
       2},
      {"the address book deletes a group",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SHGR5");
         host.Think();
         host.AnswerNext(MessageAnswer::Yes);
         book.ContactDelete();
         return host.Book();
       },
       2},
      {"the address book deletes a folder",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SFLD1");
         host.AnswerNext(MessageAnswer::Yes);
         host.AnswerNext(MessageAnswer::Ok);
         book.ContactDelete();
         return host.Book();
       },
       2},
      {"the address book's menu makes a contact",
       [](Host& host) {
         auto& book = host.OpenBook();
         host.Show(u"SFLD1");
         host.screen.WhileMenuIsOpen([&host] {
           host.Think();
           if (host.dialogs.AddressBook().IsLoaded()) InContact(host, u"Zoe");
         });
         host.screen.Choose(u"mnuSharedContactContext");
         book.ShowItemContextMenu();
         return host.Book();
       },
       1},
  };
  return tasks;
}

const std::vector<NestingHost::Act>& NestingHost::Acts() {
  using Host = NestingHost;
  static const std::vector<Act> acts{
      {"another database is named",
       [](Host& host) { return OnSecond(host, [&] { return Outcome{}; }); }},
      {"another database is initialised",
       [](Host& host) {
         const auto result =
             host.main->Init({}, host.databases.Second.ConnectionString(), 0, u"ORACLE", u"log");
         return Outcome{ToUtf8(ToDecimal(result))};
       }},
      {"no database is reached",
       [](Host& host) {
         const auto result =
             host.main->Init({}, u"Driver=SQLite3;Database=/nowhere/at/all.db", 0, u"x", u"log");
         return Outcome{ToUtf8(ToDecimal(result))};
       }},
      {"another object begins and ends",
       [](Host& host) {
         const clsMain second(host.session, host.dialogs);
         return Outcome{};
       }},
      {"another object initialises and ends",
       [](Host& host) {
         clsMain second(host.session, host.dialogs);
         second.Init({}, host.databases.Second.ConnectionString(), 1, u"SQL", u"log");
         return Outcome{};
       }},
      {"a new contact is cancelled", [](Host& host) { return AddContact(host, {}, kOther); }},
      {"an edited contact is cancelled",
       [](Host& host) { return EditContact(host, 2, {}, kOther); }},
      {"a new group is cancelled", [](Host& host) { return AddGroup(host, {}, kOther); }},
      {"an edited group is cancelled",
       [](Host& host) { return EditGroup(host, u"6", {}, kOther); }},
      {"a pick is cancelled", [](Host& host) { return Pick(host, {}, kOther); }},
      {"recipients are picked", [](Host& host) { return Pick(host, {1}, kOther); }},
      {"a folder is cancelled",
       [](Host& host) {
         host.CancelNext();
         return Outcome{ToUtf8(ToDecimal(host.main->LoadFolders(kOther)))};
       }},
      {"a contact is added elsewhere",
       [](Host& host) { return OnSecond(host, [&] { return AddContact(host, u"Max", kOther); }); }},
      {"a contact is edited elsewhere",
       [](Host& host) {
         return OnSecond(host, [&] { return EditContact(host, 2, u"Max", kOther); });
       }},
      {"a group is added elsewhere",
       [](Host& host) { return OnSecond(host, [&] { return AddGroup(host, u"Quay", kOther); }); }},
      {"a group is edited elsewhere",
       [](Host& host) {
         return OnSecond(host, [&] { return EditGroup(host, u"6", u"Quay", kOther); });
       }},
      {"recipients are picked elsewhere",
       [](Host& host) { return OnSecond(host, [&] {
                          return Pick(host, {2, 3}, kOther);
                        }); }},
      {"a clerk edits a contact",
       [](Host& host) {
         host.CancelNext();
         return host.Contact(host.main->EditContacts(kClerk, 0, 2, {}, {}));
       }},
      {"a clerk adds a group",
       [](Host& host) {
         host.CancelNext();
         return host.Group(host.main->AddGroup(kClerk, u"0", kShared, {}));
       }},
      {"a clerk is refused the address book",
       [](Host& host) { return Outcome{ToUtf8(ToDecimal(host.main->LoadAddressBook(kClerk)))}; }},
      {"a stranger is refused a contact",
       [](Host& host) {
         return Outcome{ToUtf8(ToDecimal(host.main->EditContacts(kNobody, 0, 2, {}, {})))};
       }},
      {"a stranger is refused a pick",
       [](Host& host) { return host.Recipients(host.main->LoadRecipients(kNobody, false)); }},
      {"another administrator loads the address book",
       [](Host& host) { return Outcome{ToUtf8(ToDecimal(host.main->LoadAddressBook(kOther)))}; },
       true},
      {"the other database's address book is loaded",
       [](Host& host) {
         return OnSecond(host, [&] {
           return Outcome{ToUtf8(ToDecimal(host.main->LoadAddressBook(kAdministrator)))};
         });
       },
       true},
  };
  return acts;
}

}  // namespace ktrv::tests
