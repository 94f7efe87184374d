#include "tests/native/randomuser/RandomUser.h"

#include <algorithm>

#include "forms/addressbook/AddressBookTools.h"

namespace ktrv::tests {
namespace {

using controls::MouseButton;
namespace KeyCode = controls::KeyCode;

constexpr std::int32_t kAdministrator = 1;
constexpr std::int32_t kClerk = 2;
constexpr std::int32_t kNobody = 9;
constexpr int kDeepest = 3;  // dialogs over one another

}  // namespace

// Screen

std::int16_t RandomUser::Screen::ShowMessage(StringView text, StringView title,
                                             std::int32_t style) {
  constexpr std::int32_t kButtons = 0xF;
  ScriptedScreen::ShowMessage(text, title, style);
  user_.Note("  asked: " + ToUtf8(text));
  user_.RememberDeletion(text);
  if (user_.Chance(5)) user_.HostActs();
  const bool agrees = user_.Chance(75);
  std::int16_t answer = MessageAnswer::Ok;
  if ((style & kButtons) == MessageStyle::YesNo) {
    answer = agrees ? MessageAnswer::Yes : MessageAnswer::No;
  } else if ((style & kButtons) == MessageStyle::OkCancel) {
    answer = agrees ? MessageAnswer::Ok : MessageAnswer::Cancel;
  }
  user_.TakeDeletion(text, answer);
  return answer;
}

void RandomUser::Screen::ShowMenu(controls::Form&, controls::Menu& menu, std::optional<Point>) {
  if (user_.Chance(10)) user_.HostActs();
  std::vector<std::function<void()>> possible;
  for (const controls::MenuItem& item : menu.Items) {
    if (item.Visible && item.Enabled && item.Click) possible.push_back(item.Click);
  }
  if (possible.empty() || user_.Chance(20)) return;
  possible[static_cast<std::size_t>(user_.Any(static_cast<int>(possible.size())))]();
}

// RandomUser

RandomUser::RandomUser(unsigned seed)
    : random_(seed),
      session_(screen_, system_,
               {[this](StringView) -> database::Driver& { return driver_; },
                [this](std::function<void()> closure) {
                  post_([this, closure = std::move(closure)] { Do(closure); });
                }}),
      dialogs_(std::make_unique<Dialogs>(session_)) {
  driver_.StartCounting();
  ExpectModal();
  Begin();
}

RandomUser::~RandomUser() {
  driver_.Heal();
  Close();
}

int RandomUser::Any(int count) {
  return count > 0 ? static_cast<int>(random_() % static_cast<unsigned>(count)) : 0;
}

String RandomUser::AnyText() {
  constexpr StringView kWords[] = {u"Ann",  u"O'Neill", u"12",         u"  ",   u"a@b.c",
                                   u"Team", u"%_[x]",   u"\x416\x436", u"ss\"", u"\xE9\x301"};
  switch (Any(8)) {
    case 0:
      return u"\xD83D\xDE00" + String(kWords[Any(std::size(kWords))]) + u"\xD800\xDF48";
    case 1: {
      String text;
      for (int each = Any(60); each >= 0; --each) text += u"\xD83D\xDE00";
      return text;
    }
    case 2:
      return Chance(30) ? String(32000, u'x') : String(kWords[Any(std::size(kWords))]);
    case 3:
      return ToDecimal(Any(100000));
    default:
      return String(kWords[Any(std::size(kWords))]) + (Chance(50) ? u" " : u"") +
             ToDecimal(Any(1000));
  }
}

template <class Map>
String RandomUser::AnyId(const Map& map) {
  if (map.empty() || Chance(5)) return ToDecimal(Any(50));
  return std::next(map.begin(), Any(static_cast<int>(map.size())))->first;
}

void RandomUser::Note(std::string what) {
  notes_.push_back(std::string(static_cast<std::size_t>(depth_) * 2, ' ') + std::move(what));
}

void RandomUser::Complain(const std::string& what) {
  wrong_ += "\n  " + what;
}

void RandomUser::Do(const std::function<void()>& act) {
  try {
    act();
  } catch (const std::exception& failure) {
    Complain(std::string("a failure came out of an event: ") + failure.what());
  } catch (...) {
    Complain("a failure came out of an event");
  }
}

RandomUser::Place& RandomUser::PlaceOf(StringView connectionString) {
  return connectionString == second_.Database.ConnectionString() ? second_ : first_;
}

void RandomUser::On(Place& place, const std::function<void()>& act) {
  working_.push_back(&place);
  Do(act);
  working_.pop_back();
}

// Dialogs

void RandomUser::ExpectModal() {
  screen_.PlayModal([this](controls::Form& form) {
    ExpectModal();
    ++depth_;
    ++counts_.Dialogs;
    Do([&] { Play(form); });
    for (int attempt = 0; form.IsLoaded() && attempt < 5; ++attempt) {
      Do([&] { form.UserCloses(); });
    }
    if (form.IsLoaded()) Do([&] { form.Unload(); });
    --depth_;
  });
}

void RandomUser::Play(controls::Form& form) {
  Note("dialog " + ToUtf8(form.Caption()));
  const String companion = std::exchange(companion_, String());
  auto* contact = dynamic_cast<forms::frmNewContact*>(&form);
  auto* group = dynamic_cast<forms::frmGroupsNew*>(&form);
  auto* folder = dynamic_cast<forms::frmSelectFolder*>(&form);
  forms::ContactFields::Entries before;
  if (contact) before = Book::EntriesOf(*contact);
  const auto come = [&] {
    if (!group) return;
    screen_.WaitUntil([&] {
      return !group->IsLoaded() || driver_.IsHanging() ||
             (!group->Sources().IsLoading() && !group->Members().IsLoading());
    });
    if (driver_.IsHanging()) EndFault();
  };
  for (int step = Any(12); step >= 0 && form.IsLoaded(); --step) {
    come();
    Do([&] { Poke(form); });
  }
  for (int press = Any(3); press > 0 && form.IsLoaded(); --press) {
    come();
    if (!form.IsLoaded()) return;
    if (contact) {
      if (Chance(80) && Trim(contact->txtFname.Text()).empty()) contact->txtFname.UserTypes(u"Eve");
      if (Chance(80)) contact->txtEmail.UserChanges({});
      if (Chance(80)) contact->txtMobileno.UserChanges(ToDecimal(7000 + Any(1000)));
      ConfirmContact(*contact, before, companion);
    }
    if (group) ConfirmGroup(*group);
    if (folder) ConfirmFolder(*folder);
  }
}

void RandomUser::Poke(controls::Form& form) {
  if (Chance(4)) return HostActs();
  const auto& all = form.Controls();
  controls::Control& control = *all[static_cast<std::size_t>(Any(static_cast<int>(all.size())))];
  if (!control.Enabled() || !control.Visible()) return;
  if (Chance(20)) control.UserFocuses(true);
  if (auto* box = dynamic_cast<controls::TextBox*>(&control)) {
    const int size = static_cast<int>(box->Text().size());
    if (Chance(50)) box->UserSelects(Any(size + 1), Any(size + 1));
    if (Chance(10)) return box->UserChanges({});
    box->UserTypes(AnyText());
  } else if (auto* list = dynamic_cast<controls::ComboBox*>(&control)) {
    if (list->ListCount() > 0) list->UserChooses(Any(list->ListCount()));
  } else if (auto* check = dynamic_cast<controls::CheckBox*>(&control)) {
    check->UserClicks();
  } else if (auto* date = dynamic_cast<controls::DatePicker*>(&control)) {
    date->UserPicks(Chance(30) ? std::nullopt
                               : ParseDateTime(u"19" + ToDecimal(10 + Any(90)) + u"-02-28"));
  } else if (auto* arrows = dynamic_cast<controls::UpDown*>(&control)) {
    arrows->UserSteps(Any(7) - 3);
  } else if (auto* grid = dynamic_cast<controls::FlexGrid*>(&control)) {
    PokeGrid(*grid);
  } else if (auto* button = dynamic_cast<controls::CommandButton*>(&control)) {
    const auto* group = dynamic_cast<forms::frmGroupsNew*>(&form);
    const bool opens = group && (button == &group->cmdNew || button == &group->cmdProperty);
    if (button->Caption() == u"&OK" || (opens && depth_ >= kDeepest)) return;
    if (button->Caption() == u"&Cancel" && Chance(70)) return;
    Note("clicks " + ToUtf8(button->Caption()));
    button->UserClicks();
  }
}

void RandomUser::PokeGrid(controls::FlexGrid& grid) {
  const int rows = grid.Rows() - 1;
  if (rows < 1) return;
  const int row = 1 + Any(rows);
  switch (Any(6)) {
    case 0:
      return grid.UserClicksHeading(Any(grid.Cols()));
    case 1:
      return grid.UserSelects({row}, row);
    case 2: {
      const int other = 1 + Any(rows);
      return grid.UserSelectsRange(std::min(row, other), std::max(row, other), Chance(70), row);
    }
    case 3:
      return grid.SelectAll();
    case 4:
      return grid.UserReleases(Chance(50) ? MouseButton::Right : MouseButton::Left, 0, row);
    default:
      if (Chance(50)) return grid.UserPresses(KeyCode::Delete, 0);
      if (depth_ < kDeepest) grid.UserDoubleClicks();
  }
}

bool RandomUser::Press(controls::Form& form, controls::CommandButton& ok) {
  if (!ok.Enabled() || !ok.Visible()) return false;
  Note("presses OK");
  Do([&] { ok.UserClicks(); });
  Note(form.IsLoaded() ? "which stays open" : "which closes");
  if (form.IsLoaded() && armed_) mayDiffer_ = true;
  return !form.IsLoaded();
}

template <class Map>
std::optional<String> RandomUser::NewId(const Map& wanted, const Map& stored) {
  std::optional<String> id;
  for (const auto& [each, row] : stored) {
    if (wanted.contains(each)) continue;
    if (id) {
      if (!mayDiffer_) Complain("two rows are new: " + ToUtf8(*id) + " and " + ToUtf8(each));
      continue;
    }
    id = each;
  }
  if (!id) Complain("confirmed, and nothing is new");
  return id;
}

void RandomUser::ConfirmContact(forms::frmNewContact& dialog,
                                const forms::ContactFields::Entries& before,
                                const String& companion) {
  Place& place = *working_.back();
  const auto now = Book::EntriesOf(dialog);
  const String id(Trim(dialog.Result().EditContactId));
  const bool isNew = id.empty();
  const String folder = ToDecimal(dialog.FolderId);
  if (!Press(dialog, dialog.cmdSave) || !dialog.Result().Saved) return;
  ++counts_.Confirmed;
  if (!isNew) {
    const auto contact = place.Wanted.Contacts.find(id);
    if (contact == place.Wanted.Contacts.end()) return Complain("one that is gone was saved");
    contact->second = Book::Written(contact->second, &before, now);
    return;
  }
  const Book stored = Book::Read(place.Database.ConnectionString());
  const auto made = NewId(place.Wanted.Contacts, stored.Contacts);
  if (!made) return;
  place.Wanted.Contacts[*made] = Book::Written({folder, {}, {}, {}, {}, {}, {}}, nullptr, now);
  if (!companion.empty()) place.Wanted.Members.insert({companion, *made, u"S"});
  if (dialog.Result().EditContactId != *made) Complain("another id was given back");
}

void RandomUser::ConfirmGroup(forms::frmGroupsNew& dialog) {
  Place& place = *working_.back();
  const forms::GroupRequest request = dialog.Request();
  const String name(Trim(dialog.txtGroupName.Text()));
  Book with = place.Wanted;
  with.ReplaceMembers(u"this", dialog.vsfGroupContacts);
  if (!Press(dialog, dialog.cmdOK)) return;
  const auto saved = dialog.Result().Saved;
  if (!saved || saved->Id.empty() || request.LoadGroupFor == LoadGroupFor::SelectReceipient) return;
  ++counts_.Confirmed;
  String folder(Trim(request.FolderId));
  if (request.Mode == ModeOfOperation::Add) {
    const Book stored = Book::Read(place.Database.ConnectionString());
    const auto made = NewId(place.Wanted.Groups, stored.Groups);
    if (made && *made != saved->Id) Complain("another id was given back");
  } else {
    const auto group = place.Wanted.Groups.find(saved->Id);
    if (group == place.Wanted.Groups.end()) return Complain("a group that is gone was saved");
    folder = group->second.Folder;
  }
  place.Wanted.Groups[saved->Id] = {name, folder};
  std::erase_if(place.Wanted.Members,
                [&](const Book::Member& member) { return member.Group == saved->Id; });
  for (const Book::Member& member : with.Members) {
    if (member.Group == u"this") place.Wanted.Members.insert({saved->Id, member.Id, member.Type});
  }
}

void RandomUser::ConfirmFolder(forms::frmSelectFolder& dialog) {
  Place& place = *working_.back();
  const String name(Trim(dialog.txtFolderName.Text()));
  const bool remote = dialog.chkRemoteFolder.Checked();
  const String category = remote ? dialog.cboRemoteFolderView.Text() : String();
  const bool isNew = dialog.Caption() == u"Add Folder";
  if (!Press(dialog, dialog.cmdOK)) return;
  const auto saved = dialog.Result().Saved;
  if (!saved) return;  // the component went
  ++counts_.Confirmed;
  String id = saved->Id;
  if (isNew) {
    const Book stored = Book::Read(place.Database.ConnectionString());
    const auto made = NewId(place.Wanted.Folders, stored.Folders);
    if (!made) return;
    id = *made;
  }
  place.Wanted.Folders[id] = {remote ? u"R" : u"S", name, category};
}

// The host

void RandomUser::Begin() {
  if (!main_) main_ = std::make_unique<clsMain>(session_, *dialogs_);
  const Place& place = Chance(70) ? first_ : second_;
  Note("the host initialises");
  main_->Init(u"", place.Database.ConnectionString(), Any(2), Chance(50) ? u"SQL" : u"ORACLE",
              u"log");
}

void RandomUser::Release() {
  Note("the last object is released");
  ++counts_.Releases;
  main_.reset();
}

void RandomUser::HostActs() {
  if (depth_ >= kDeepest) return;
  if (depth_ > 0) ++counts_.Nested;
  if (!main_) return Begin();
  struct Calling {
    int& Count;
    explicit Calling(int& count) : Count(++count) {}
    ~Calling() { --Count; }
  };
  const std::int32_t user = Chance(85) ? kAdministrator : Chance(70) ? kClerk : kNobody;
  const auto on = [&](const char* what, const std::function<void()>& act) {
    Note(what);
    const String companion = std::exchange(companion_, String());
    const Calling calling(hostCalls_);
    On(PlaceOf(session_.SessionConnectionString), act);
    companion_ = companion;
  };
  const Book& wanted = PlaceOf(session_.SessionConnectionString).Wanted;
  const std::int32_t shared = Chance(85) ? 1 : 0;
  switch (Any(13)) {
    case 0:
    case 1:
    case 2:
      return on("LoadAddressBook", [&] { main_->LoadAddressBook(user); });
    case 3:
      return on("AddContacts", [&] { main_->AddContacts(user, shared, AnyText(), AnyText()); });
    case 4: {
      const auto id = ParseInteger(AnyId(wanted.Contacts)).value_or(0);
      return on("EditContacts", [&] {
        main_->EditContacts(user, shared, static_cast<std::int32_t>(id), u"", u"");
      });
    }
    case 5: {
      const String folder = Chance(50) ? String(u"0") : AnyId(wanted.Folders);
      return on("AddGroup", [&] { main_->AddGroup(user, folder, shared, u""); });
    }
    case 6: {
      const String id = AnyId(wanted.Groups);
      return on("EditGroup", [&] { main_->EditGroup(user, id, shared, u""); });
    }
    case 7:
    case 8:
      return on("LoadRecipients", [&] { main_->LoadRecipients(user, Chance(50)); });
    case 9:
      return on("LoadFolders", [&] { main_->LoadFolders(user); });
    case 10:
      Note("another database is named");
      return main_->SetRemoteDBString((Chance(50) ? first_ : second_).Database.ConnectionString());
    case 11:
      if (Chance(50)) return Begin();
      Note("another object comes and goes");
      clsMain(session_, *dialogs_).SetLogFile(u"x");
      return;
    default:
      // A call that is under way holds its object.
      if (hostCalls_ == 0 && Chance(40)) Release();
  }
}

// The address book window

forms::frmAddressBook* RandomUser::Window() {
  forms::frmAddressBook& window = dialogs_->AddressBook();
  return window.IsLoaded() ? &window : nullptr;
}

void RandomUser::WindowActs() {
  forms::frmAddressBook* const window = Window();
  if (!window) return HostActs();
  Place& place = PlaceOf(window->Place().Database.ConnectionString);
  controls::TreeView& tree = window->tvwContacts;
  controls::FlexGrid& grid = window->vsfContacts;
  const auto atGroup = [&] {
    const String& key = window->Current().Key;
    companion_ = key.starts_with(u"SHGR") ? key.substr(4) : String();
  };
  On(place, [&] {
    switch (hasty_ ? (Chance(80) ? 0 : 19) : Any(20)) {
      case 0:
      case 1:
      case 2:
      case 3: {
        if (tree.Count() == 0) return;
        controls::TreeNode& node = tree.At(1 + Any(tree.Count()));
        Note("chooses node " + ToUtf8(node.Key));
        for (auto* above = node.Parent; above; above = above->Parent)
          tree.UserExpands(*above, true);
        tree.UserFocuses(true);
        tree.UserClicks(node);
        if (!Chance(10)) return;
        atGroup();
        return tree.UserReleases(MouseButton::Right, 0, 0, 0);
      }
      case 4:
      case 5:
      case 6:
        Note("is at the grid");
        grid.UserFocuses(true);
        if (grid.Rows() > 1) grid.UserSelects({1 + Any(grid.Rows() - 1)}, 0);
        return PokeGrid(grid);
      case 7:
        Note("is at the grid");
        grid.UserFocuses(true);
        return PokeGrid(grid);
      case 8:
        Note("finds");
        window->txtFind.UserFocuses(true);
        return window->txtFind.UserTypes(AnyText());
      case 9:
      case 10:
        Note("New");
        atGroup();
        return window->tlbMain.UserClicks(forms::ToolKey::New);
      case 11:
        Note("New, drops down");
        atGroup();
        return window->tlbMain.UserDropsDown(forms::ToolKey::New, 0, 0);
      case 12:
        Note("New folder");
        return window->Menus.Item(u"mnuSharedFolderContext").Click();
      case 13:
      case 14:
        Note("Properties");
        return window->tlbMain.UserClicks(forms::ToolKey::Properties);
      case 15:
        Note("Delete");
        return window->tlbMain.UserClicks(forms::ToolKey::Delete);
      case 16:
        Note("the item menu");
        atGroup();
        return window->ShowItemContextMenu();
      case 17:
        Note("Refresh");
        return window->tlbMain.UserClicks(forms::ToolKey::Refresh);
      case 18:
        Note("makes it another size");
        return window->UserResizes(Any(30000), Any(20000));
      default:
        if (!Chance(20)) return tree.UserPresses(KeyCode::Delete, 0);
        Note("closes the address book");
        return window->UserCloses();
    }
  });
  companion_.clear();
}

void RandomUser::RememberDeletion(StringView question) {
  if (!question.starts_with(u"Are you sure you want to delete the selected item")) return;
  const forms::frmAddressBook* const window = Window();
  deletion_.reset();
  if (!window) return;
  deletion_ = {window, {}, false};
  if (window->tvwContacts.HasFocus()) {
    const String key = window->tvwContacts.SelectedNode()->Key;
    deletion_->Keys = {key};
    deletion_->AsksAgain = key.substr(1, 3) == u"FLD";
    return;
  }
  const controls::FlexGrid& grid = window->vsfContacts;
  for (const int row : grid.SelectedRows()) {
    deletion_->Keys.push_back(grid.Text(row, grid.ColIndex(u"CONTACTTYPE")) + u":" +
                              grid.Text(row, grid.ColIndex(u"ID")));
  }
}

void RandomUser::TakeDeletion(StringView question, std::int16_t answer) {
  const bool first = question.starts_with(u"Are you sure you want to delete the selected item");
  const bool second = question.starts_with(u"Are you sure you want to completely delete");
  if ((!first && !second) || !deletion_) return;
  const bool agreed = answer == MessageAnswer::Yes || answer == MessageAnswer::Ok;
  // What the host did meanwhile may have closed the window that asked.
  if (!agreed || Window() != deletion_->Window) return deletion_.reset();
  if (first && deletion_->AsksAgain) return;
  ++counts_.Deletions;
  if (armed_ || shaken_) mayDiffer_ = true;
  Book& book = PlaceOf(Window()->Place().Database.ConnectionString).Wanted;
  for (const String& key : deletion_->Keys) {
    if (key.starts_with(u"1:")) book.DeleteContact(key.substr(2));
    if (key.starts_with(u"2:")) book.DeleteGroup(key.substr(2));
    if (key.starts_with(u"SHGR")) book.DeleteGroup(key.substr(4));
    if (key.starts_with(u"SFLD")) book.DeleteFolder(key.substr(4));
    if (key.starts_with(u"RFLD")) book.Folders.erase(key.substr(4));
  }
  deletion_.reset();
}

// Steps

void RandomUser::Complete() {
  const auto isDone = [&] {
    const forms::frmAddressBook* const window = Window();
    return !window || (!window->List().IsLoading() && !window->IsDeleting());
  };
  if (!screen_.WaitUntil([&] { return isDone() || driver_.IsHanging(); })) {
    Complain("the list or a deletion does not end");
  }
  if (!driver_.IsHanging()) return;
  EndFault();
  if (!screen_.WaitUntil(isDone)) Complain("the list or a deletion does not end");
}

void RandomUser::EndFault() {
  if (!armed_) return;
  driver_.Heal();
  if (driver_.Fired()) {
    ++counts_.Faults;
    shaken_ = true;
    Note("the fault occurred");
  }
}

void RandomUser::Step() {
  ++counts_.Steps;
  hasty_ = Chance(15);
  if (!hasty_) Complete();
  armed_ = Chance(1);
  if (armed_) {
    const int calls = 1 + Any(20);
    driver_.ArmAny(calls, static_cast<unsigned>(random_()));
    Note("a fault is to come");
  }
  if (!main_ || Chance(20)) {
    HostActs();
  } else {
    WindowActs();
  }
  if (armed_) {
    Complete();
    EndFault();
    armed_ = false;
    Complete();
  }
  if (!mayDiffer_) return;
  // Nobody was told the outcome.
  mayDiffer_ = false;
  for (Place* place : {&first_, &second_}) {
    place->Wanted = Book::Read(place->Database.ConnectionString());
  }
}

std::string RandomUser::Check() {
  Complete();
  for (const Place* place : {&first_, &second_}) {
    const Book stored = Book::Read(place->Database.ConnectionString());
    if (!(stored == place->Wanted)) {
      Complain("the database is not as it was told to be:" + place->Wanted.Difference(stored));
    }
  }
  if (forms::frmAddressBook* const window = Window()) {
    const Place& place = PlaceOf(window->Place().Database.ConnectionString);
    Do([&] { window->LoadTreeView(); });
    if (shaken_) Do([&] { window->LoadTreeView(); });
    std::set<String> nodes;
    for (int node = 1; node <= window->tvwContacts.Count(); ++node) {
      nodes.insert(window->tvwContacts.At(node).Key);
    }
    if (nodes != place.Wanted.Nodes()) Complain("the tree shows other nodes");
    const String key = window->Current().Key;
    // The first use notices a dead link.
    for (int load = shaken_ ? 0 : 1; load < 2; ++load) {
      Do([&] { window->LoadContacts(); });
      Complete();
    }
    if (nodes.contains(key)) {
      std::set<String> rows;
      const controls::FlexGrid& grid = window->vsfContacts;
      const int type = grid.ColIndex(u"CONTACTTYPE");
      const int id = std::max(grid.ColIndex(u"ID"), grid.ColIndex(u"CODE"));
      for (int row = 1; type >= 0 && row < grid.Rows(); ++row) {
        rows.insert(grid.Text(row, type) + u":" + grid.Text(row, id));
      }
      const bool oracle = window->Place().Database.DbType == u"ORACLE";
      const auto wanted = place.Wanted.Rows(key, oracle);
      if (rows != wanted) {
        std::string text = "the list of " + ToUtf8(key) + " shows other rows: ";
        for (const String& row : rows) text += ToUtf8(row) + " ";
        text += "and should show: ";
        for (const String& row : wanted) text += ToUtf8(row) + " ";
        Complain(text);
      }
    }
    int focused = 0;
    for (const controls::Control* control : window->Controls()) focused += control->HasFocus();
    if (focused > 1) Complain("two controls have the focus");
  }
  if (counts_.Faults == 0 && system_.TextOf(u"log").find(u"Number      : 51\r") != String::npos) {
    Complain("an internal error was logged");
  }
  shaken_ = false;
  if (wrong_.empty()) {
    notes_.clear();
    return {};
  }
  std::string text = std::exchange(wrong_, {}) + "\n  behind";
  constexpr std::size_t kNotes = 400;
  for (std::size_t at = notes_.size() > kNotes ? notes_.size() - kNotes : 0; at < notes_.size();
       ++at) {
    text += "\n    " + notes_[at].substr(0, 200);
  }
  return text;
}

std::string RandomUser::Close() {
  if (main_) Release();
  dialogs_.reset();
  session_.SessionConnection.reset();
  std::string left;
  if (!WaitForFetches()) left += "a fetch still runs; ";
  screen_.Pump();
  const auto count = [&](const char* what) {
    return std::count(screen_.Log.begin(), screen_.Log.end(), what);
  };
  if (driver_.LinksAlive() != 0) left += std::to_string(driver_.LinksAlive()) + " links; ";
  if (driver_.StatementsAlive() != 0) left += "statements; ";
  if (screen_.Dispatcher.Waiting() != 0) left += "closures; ";
  if (count("realise") != count("gone")) left += "forms; ";
  return left + std::exchange(wrong_, {});
}

}  // namespace ktrv::tests
