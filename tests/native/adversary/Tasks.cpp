#include "tests/native/adversary/Tasks.h"

#include <algorithm>
#include <iterator>

#include "forms/addressbook/ContactGridLayout.h"

namespace ktrv::tests {
namespace {

using forms::frmAddressBook;
using forms::frmGroupsNew;
using forms::frmNewContact;
using forms::frmSelectFolder;

constexpr std::int32_t kAdministrator = 1;
constexpr std::int32_t kShared = 1;

// What the user does in the dialogs.

/// A new contact of this name in the next contact editor; `done` tells whether OK closed it.
void PlayNewContact(Stage& stage, bool& done) {
  stage.InContact = [&](frmNewContact& editor) {
    editor.txtFname.UserTypes(u"Nils");
    editor.txtLname.UserTypes(u"Holm");
    editor.txtMobileno.SetText(u"4670");
    editor.txtEmail.UserTypes(u"nils@holm.se");
    editor.txtCity.UserTypes(u"Lund");
    editor.txtAge.UserTypes(u"12");
    editor.cboSex.UserChooses(1);
    done = stage.PressOk(editor, editor.cmdSave);
  };
}

/// Another city and hobby for a contact. The user who sees a box empty that must not be fills it
/// in.
void PlayEditContact(Stage& stage, bool& done) {
  stage.InContact = [&](frmNewContact& editor) {
    editor.txtCity.SetText(u"Oslo");
    editor.txtHobby.SetText(u"Go");
    if (editor.txtFname.Text().empty()) editor.txtFname.SetText(u"Ann");
    if (editor.txtMobileno.Text().empty()) editor.txtMobileno.SetText(u"7700900");
    done = stage.PressOk(editor, editor.cmdSave);
  };
}

bool WaitForLists(Stage& stage, frmGroupsNew& editor) {
  return stage.Wait([&] { return !editor.Sources().IsLoading() && !editor.Members().IsLoading(); });
}

bool ChooseSource(Stage& stage, frmGroupsNew& editor, StringView name) {
  const int index = editor.cboContactType.IndexOf(name);
  if (index < 0) return false;
  stage.Do([&] { editor.cboContactType.UserChooses(index); });
  return WaitForLists(stage, editor);
}

/// Takes the contact out of the source. \return false when it is not to be seen there
bool Take(Stage& stage, frmGroupsNew& editor, StringView name) {
  const int row = Stage::RowOf(editor.vsfFolderContacts, name);
  if (row == 0) return false;
  const int before = editor.vsfGroupContacts.Rows();
  editor.vsfFolderContacts.UserSelects({row}, row);
  stage.Do([&] { editor.cmdSelect.UserClicks(); });
  return editor.vsfGroupContacts.Rows() == before + 1;
}

bool Remove(Stage& stage, frmGroupsNew& editor, StringView name) {
  const int row = Stage::RowOf(editor.vsfGroupContacts, name);
  if (row == 0) return false;
  editor.vsfGroupContacts.UserSelects({row}, row);
  stage.Do([&] { editor.vsfGroupContacts.UserPresses(controls::KeyCode::Delete, 0); });
  return Stage::RowOf(editor.vsfGroupContacts, name) == 0;
}

void PlayNewGroup(Stage& stage, bool& done) {
  stage.InGroup = [&](frmGroupsNew& editor) {
    if (!WaitForLists(stage, editor)) return;
    editor.txtGroupName.UserTypes(u"Fleet");
    if (!Take(stage, editor, u"Bert  Al") && !Take(stage, editor, u"Bert")) return;
    if (!ChooseSource(stage, editor, u"Dealers")) return;
    if (!Take(stage, editor, u"Rolf")) return;
    done = stage.PressOk(editor, editor.cmdOK);
  };
}

/// Another name, one member more and one less for the group Team.
void PlayEditGroup(Stage& stage, bool& done) {
  stage.InGroup = [&](frmGroupsNew& editor) {
    if (!WaitForLists(stage, editor)) return;
    editor.txtGroupName.SetText(u"Squad");
    if (!ChooseSource(stage, editor, u"Staff")) return;
    if (!Take(stage, editor, u"Dora  Vik") && !Take(stage, editor, u"Dora")) return;
    if (!Remove(stage, editor, u"Bert  Al") && !Remove(stage, editor, u"Bert")) return;
    done = stage.PressOk(editor, editor.cmdOK);
  };
}

/// The same for a user who takes all members out, thinks again, and pastes the new one's name.
void PlayUndoneEditGroup(Stage& stage, bool& done) {
  stage.InGroup = [&](frmGroupsNew& editor) {
    if (!WaitForLists(stage, editor)) return;
    const auto members = [&] { return editor.vsfGroupContacts.Rows() - 1; };
    const int before = members();
    editor.txtGroupName.SetText(u"Squad");
    stage.Do([&] { editor.cmdRemoveAll.UserClicks(); });
    if (members() != 0) return;
    stage.Do([&] { editor.cmdUndo.UserClicks(); });
    if (members() != before || !ChooseSource(stage, editor, u"Staff")) return;
    const int dora = std::max(Stage::RowOf(editor.vsfFolderContacts, u"Dora  Vik"),
                              Stage::RowOf(editor.vsfFolderContacts, u"Dora"));
    if (dora == 0) return;
    stage.screen.Clipboard = forms::ContactColumns(editor.vsfFolderContacts).Read(dora).Name;
    stage.Do([&] { editor.cmdPaste.UserClicks(); });
    if (members() != before + 1) return;
    if (!Remove(stage, editor, u"Bert  Al") && !Remove(stage, editor, u"Bert")) return;
    done = stage.PressOk(editor, editor.cmdOK);
  };
}

void PlayPick(Stage& stage, bool& done) {
  stage.InGroup = [&](frmGroupsNew& editor) {
    if (!WaitForLists(stage, editor)) return;
    if (!Take(stage, editor, u"Anna  Ek") && !Take(stage, editor, u"Anna")) return;
    if (!Take(stage, editor, u"Boat")) return;
    if (!ChooseSource(stage, editor, u"Dealers")) return;
    if (!Take(stage, editor, u"Rita")) return;
    if (!stage.Wait([&] { return !editor.Reached().IsCounting(); })) return;
    done = stage.PressOk(editor, editor.cmdOK);
  };
}

void PlayFolder(Stage& stage, StringView name, int category, bool& done) {
  stage.InFolder = [&stage, name, category, &done](frmSelectFolder& editor) {
    editor.txtFolderName.SetText(String(name));
    if (category >= 0) {
      if (!editor.chkRemoteFolder.Checked()) stage.Do([&] { editor.chkRemoteFolder.UserClicks(); });
      if (category >= editor.cboRemoteFolderView.ListCount()) return;
      editor.cboRemoteFolderView.UserChooses(category);
    }
    done = stage.PressOk(editor, editor.cmdOK);
  };
}

// The tasks of the address book window.

/// The window, where the task begins: that it opens and lists is a task of its own.
frmAddressBook* BookAt(Stage& stage, StringView key, bool inTree) {
  frmAddressBook* book = stage.Book(key, inTree);
  stage.driver.StartCounting();
  return book;
}

bool ListAll(Stage& stage) {
  stage.driver.StartCounting();
  for (const StringView key : {u"SHARED", u"SFLD1", u"RFLD2", u"SHGR11"}) {
    if (!stage.Book(key, true)) return false;
  }
  stage.Do([&] { stage.dialogs->AddressBook().tlbMain.UserClicks(u"REFRESH"); });
  return stage.Book(u"SFLD3", true) != nullptr;
}

bool NewContactAt(Stage& stage, StringView key) {
  frmAddressBook* book = BookAt(stage, key, true);
  if (!book) return false;
  bool done = false;
  PlayNewContact(stage, done);
  stage.Do([&] { book->ContactNew({}); });
  // A member of a group is listed there, and is not confirmed before.
  return done && Stage::RowOf(book->vsfContacts, u"4670") > 0;
}

bool NewGroupIn(Stage& stage, StringView key) {
  frmAddressBook* book = BookAt(stage, key, true);
  if (!book) return false;
  bool done = false;
  PlayNewGroup(stage, done);
  stage.Do([&] { book->ContactNew(forms::ItemCommands::kNewGroup); });
  stage.Wait([&] { return !book->List().IsLoading(); });
  return done;
}

bool NewFolder(Stage& stage, StringView name, int category) {
  frmAddressBook* book = BookAt(stage, u"SHARED", true);
  if (!book) return false;
  bool done = false;
  PlayFolder(stage, name, category, done);
  stage.Do([&] { book->Menus.Item(u"mnuSharedFolderContext").Click(); });
  stage.Wait([&] { return !book->List().IsLoading(); });
  return done;
}

bool NodeProperties(Stage& stage, StringView key, const std::function<void(bool& done)>& play) {
  frmAddressBook* book = BookAt(stage, key, true);
  if (!book) return false;
  bool done = false;
  play(done);
  stage.Do([&] { book->tlbMain.UserClicks(u"PROPERTIES"); });
  stage.Wait([&] { return !book->List().IsLoading(); });
  return done;
}

bool DeleteNode(Stage& stage, StringView key) {
  frmAddressBook* book = BookAt(stage, key, true);
  if (!book) return false;
  stage.Do([&] { book->tlbMain.UserClicks(u"DELETE"); });
  stage.Wait([&] { return !book->List().IsLoading(); });
  return book->tvwContacts.Find(key) == nullptr;
}

bool DeleteRows(Stage& stage, StringView key, std::initializer_list<StringView> numbers) {
  frmAddressBook* book = BookAt(stage, key, false);
  if (!book) return false;
  // The user who looks again and finds none of them has nothing left to do.
  const auto isListed = [&](StringView text) { return Stage::RowOf(book->vsfContacts, text) > 0; };
  std::vector<StringView> listed;
  std::copy_if(numbers.begin(), numbers.end(), std::back_inserter(listed), isListed);
  if (listed.empty()) return true;
  if (!stage.SelectRow(*book, listed)) return false;
  stage.Do([&] { book->tlbMain.UserClicks(u"DELETE"); });
  stage.Wait([&] { return !book->IsDeleting() && !book->List().IsLoading(); });
  if (!Stage::IsListed(*book)) return false;
  return std::none_of(numbers.begin(), numbers.end(), isListed);
}

/// Drags contacts onto the group, once more if the window says that not all were added.
bool AddToGroup(Stage& stage, StringView key, const std::vector<StringView>& numbers) {
  // Where the group is not in the tree, the window is opened again.
  if (!BookAt(stage, key, true)) return false;
  frmAddressBook* book = stage.Book(u"SHARED", false);
  if (!book) return false;
  const auto said = [&](StringView text) {
    return book->StatusBar1.PanelAt(2).Text.find(text) != String::npos;
  };
  const auto add = [&] {
    if (!stage.SelectRow(*book, numbers)) return false;
    stage.Do([&] {
      book->AddToGroup(String(key), forms::ContactGridLayout::SelectedItems(book->vsfContacts));
    });
    stage.Wait([&] { return !book->IsAdding() && !book->List().IsLoading(); });
    return said(u" added to ") && !said(u"not all") && !said(u"no longer exist");
  };
  return add() || (stage.TriesAgain && book->IsLoaded() && add());
}

bool RowProperties(Stage& stage, StringView key, StringView text,
                   const std::function<void(bool& done)>& play) {
  frmAddressBook* book = BookAt(stage, key, false);
  if (!book || !stage.SelectRow(*book, {text})) return false;
  bool done = false;
  play(done);
  stage.Do([&] { book->tlbMain.UserClicks(u"PROPERTIES"); });
  stage.Wait([&] { return !book->List().IsLoading(); });
  return done;
}

// What a host reads.

String Texts(const std::shared_ptr<TextCollection>& collection) {
  String texts;
  for (std::int32_t item = 1; collection && item <= collection->Count(); ++item) {
    texts += collection->Item(item) + u";";
  }
  return texts;
}

String NewContactOf(Stage& stage) {
  return stage.main->NewContactId() + u"/" + stage.main->NewContactType();
}

String NewGroupOf(Stage& stage) {
  return stage.main->NewGroupId() + u"/" + stage.main->NewGroupType() + u"/" +
         stage.main->NewGroupName();
}

String PickOf(Stage& stage) {
  return Texts(stage.main->SelectedRecipients()) + u"/" + Texts(stage.main->SelectedMobileNos()) +
         u"/" + stage.main->strContactsName();
}

String Nothing(Stage&) {
  return {};
}

template <class Play>
std::function<void(bool&)> With(Stage& stage, Play play) {
  return [&stage, play](bool& done) { play(stage, done); };
}

std::vector<UserTask> MakeTasks() {
  return {
      {"AddContacts",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayNewContact(stage, done);
         return Stage::Work([&] {
                  return stage.main->AddContacts(kAdministrator, kShared, u"", u"");
                }) == 1 &&
                done;
       },
       NewContactOf},
      {"EditContacts",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayEditContact(stage, done);
         return Stage::Work([&] {
                  return stage.main->EditContacts(kAdministrator, kShared, 5, u"", u"");
                }) == 1 &&
                done;
       },
       NewContactOf},
      {"AddGroup",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayNewGroup(stage, done);
         return Stage::Work([&] {
                  return stage.main->AddGroup(kAdministrator, u"1", kShared, u"");
                }) == 1 &&
                done;
       },
       NewGroupOf},
      {"EditGroup",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayEditGroup(stage, done);
         return Stage::Work([&] {
                  return stage.main->EditGroup(kAdministrator, u"11", kShared, u"");
                }) == 1 &&
                done;
       },
       NewGroupOf},
      {"EditGroupUndone",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayUndoneEditGroup(stage, done);
         return Stage::Work([&] {
                  return stage.main->EditGroup(kAdministrator, u"11", kShared, u"");
                }) == 1 &&
                done;
       },
       NewGroupOf},
      {"LoadRecipients",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayPick(stage, done);
         stage.session.GroupType = TypeOfGroup::SharedGroup;
         return Stage::Work([&] { return stage.main->LoadRecipients(kAdministrator, false); }) ==
                    1 &&
                done;
       },
       PickOf},
      {"LoadRecipientsExpanded",
       [](Stage& stage) {
         stage.driver.StartCounting();
         bool done = false;
         PlayPick(stage, done);
         stage.session.GroupType = TypeOfGroup::SharedGroup;
         return Stage::Work([&] { return stage.main->LoadRecipients(kAdministrator, true); }) ==
                    1 &&
                done;
       },
       PickOf},
      {"LoadFolders",
       [](Stage& stage) {
         stage.driver.StartCounting();
         // Local folders cannot be stored: what is confirmed is only that the editor was shown.
         bool done = false;
         PlayFolder(stage, u"Mine", -1, done);
         return Stage::Work([&] { return stage.main->LoadFolders(kAdministrator); }) == 1 && !done;
       },
       Nothing},
      {"ListAll", ListAll, Nothing},
      {"NewContactOutside", [](Stage& stage) { return NewContactAt(stage, u"SHARED"); }, Nothing},
      {"NewContactInFolder", [](Stage& stage) { return NewContactAt(stage, u"SFLD3"); }, Nothing},
      {"NewContactInGroup", [](Stage& stage) { return NewContactAt(stage, u"SHGR12"); }, Nothing},
      {"NewGroupInFolder", [](Stage& stage) { return NewGroupIn(stage, u"SFLD3"); }, Nothing},
      {"NewFolder", [](Stage& stage) { return NewFolder(stage, u"Clients", -1); }, Nothing},
      {"MapFolder", [](Stage& stage) { return NewFolder(stage, u"Remote", 1); }, Nothing},
      {"RenameFolder",
       [](Stage& stage) {
         return NodeProperties(stage, u"SFLD3",
                               [&](bool& done) { PlayFolder(stage, u"Family", -1, done); });
       },
       Nothing},
      {"MapFolderAnew",
       [](Stage& stage) {
         return NodeProperties(stage, u"RFLD2",
                               [&](bool& done) { PlayFolder(stage, u"Dealers", 2, done); });
       },
       Nothing},
      {"GroupProperties",
       [](Stage& stage) { return NodeProperties(stage, u"SHGR11", With(stage, PlayEditGroup)); },
       Nothing},
      {"ContactProperties",
       [](Stage& stage) {
         return RowProperties(stage, u"SFLD3", u"44 7700900", With(stage, PlayEditContact));
       },
       Nothing},
      {"ListedGroupProperties",
       [](Stage& stage) {
         return RowProperties(stage, u"SHARED", u"Team", With(stage, PlayEditGroup));
       },
       Nothing},
      {"DeleteContact", [](Stage& stage) { return DeleteRows(stage, u"SHARED", {u"91 98001"}); },
       Nothing},
      {"DeleteSeveral",
       [](Stage& stage) {
         return DeleteRows(stage, u"SHARED", {u"91 98001", u"Boat", u"98002"});
       },
       Nothing},
      {"DeleteMember", [](Stage& stage) { return DeleteRows(stage, u"SHGR12", {u"46 98003"}); },
       Nothing},
      {"AddToGroup",
       [](Stage& stage) {
         return AddToGroup(stage, u"SHGR12", {u"91 98001", u"98002"});
       },
       Nothing},
      {"DeleteGroup", [](Stage& stage) { return DeleteNode(stage, u"SHGR11"); }, Nothing},
      {"DeleteFolder", [](Stage& stage) { return DeleteNode(stage, u"SFLD4"); }, Nothing},
      {"DeleteRemoteFolder", [](Stage& stage) { return DeleteNode(stage, u"RFLD2"); }, Nothing},
  };
}

}  // namespace

const std::vector<UserTask>& UserTasks() {
  static const std::vector<UserTask> tasks = MakeTasks();
  return tasks;
}

}  // namespace ktrv::tests
