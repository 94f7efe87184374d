#include "forms/addressbook/frmAddressBook.h"

#include <algorithm>
#include <utility>

#include "common/ScopeExit.h"
#include "forms/Messages.h"
#include "forms/addressbook/AddressBookTools.h"
#include "forms/addressbook/ContactGridLayout.h"
#include "services/RowText.h"

namespace ktrv::forms {
namespace {

using controls::Image;
using controls::MouseButton;
using controls::SortOrder;
namespace KeyCode = controls::KeyCode;

// Lengths in twips.
constexpr int kTreeWidth = 3000;
constexpr int kSliderWidth = 50;
constexpr int kShadowWidth = 25;
constexpr int kHeadingGap = 60;  ///< above the headings of the panes
constexpr int kHeadingHeight = 285;
constexpr int kHeadingIndent = 15;  ///< of the right pane's heading, from the bar
constexpr int kReserve = 800;       ///< below the panes: status bar and margins
constexpr int kRightMargin = 50;

constexpr int kMinimumWidth = 6000;
constexpr int kMinimumList = 1000;  ///< of the splitter's limits

constexpr StringView kContacts = u"&Contacts";
constexpr StringView kRemoteContacts = u"&Contacts from TALVERO (read-only)";

controls::Form::Design WindowDesign() {
  return {.Caption = u"Address Book",
          .Width = 12000,
          .Height = 8000,
          .Resizable = true,
          .MinimumWidth = kMinimumWidth,
          .MinimumHeight = 4000};
}

/// Images of the tree nodes; indices are 1-based. The second one is no longer used.
std::vector<Image> imgTreeView() {
  return {Image::SharedContacts, Image::Contact, Image::Group, Image::Folder};
}

}  // namespace

frmAddressBook::frmAddressBook(Workplace place, Editors& editors)
    : Form(place.Services.Screen, WindowDesign()),
      lblFolders(*this, {0, 0, kTreeWidth, kHeadingHeight}, u"F&olders"),
      tvwContacts(*this, {0, 0, kTreeWidth, 0}, imgTreeView()),
      picSlider(*this, {kTreeWidth, 0, kSliderWidth, 0}, controls::MousePointer::SizeWestEast),
      lblContacts(*this, {0, 0, 0, kHeadingHeight}, String(kContacts)),
      vsfContacts(*this, {}),
      picShadow(*this, {kTreeWidth, 0, kShadowWidth, 0}),
      place_(std::move(place)),
      folderTree_(place_, tvwContacts),
      contactList_(place_.Services, place_.Database,
                   {*this, vsfContacts, StatusBar1, ProgressBar1}),
      panel_(StatusBar1, vsfContacts),
      find_(txtFind, vsfContacts, panel_),
      splitter_(picSlider, picShadow),
      commands_(place_, editors,
                {place_.Services, *this, tvwContacts, vsfContacts, StatusBar1, folderTree_,
                 contactList_, panel_}) {
  StatusBar1.AddPanel({.Width = 3000, .Springs = true});
  StatusBar1.AddPanel({.Width = 3000, .Springs = true});
  ProgressBar1.AccessibleName = u"Progress";
  ConnectToolBar();
  ConnectMenus();
  ConnectTree();
  ConnectGrid();
  drag_.Dropped = [this](const String& groupKey, const std::vector<ListedItem>& items) {
    AddToGroup(groupKey, items);
  };
  ConnectSplitter();
  ConnectFind();
  ConnectKeys();
}

frmAddressBook::~frmAddressBook() {
  Unload();
}

template <class Body>
void frmAddressBook::Event(StringView procedure, Body&& body) {
  const String context =
      u"KTRVAddressBook: Error occurred. Sub: " + String(procedure) + u", Module: frmAddressBook";
  place_.Services.Trap(context, std::forward<Body>(body));
}

void frmAddressBook::Form_Load() {
  Event(u"Form_Load", [&] {
    drag_.Cancel();
    folderTree_.Start();
    txtFind.SetText({});
    LoadTreeView();
    PlaceProgressBar(StatusBar1, ProgressBar1, 2);
    ProgressBar1.SetValue(ProgressBar1.Min());
    ProgressBar1.SetVisible(true);
    // If this fails, loading the list prepares the statements again, and reports the failure.
    Event(u"PrepareCommands", [&] { contactList_.Prepare(); });
    LoadContacts();
    ProgressBar1.SetVisible(false);
    picSlider.SetWidth(kSliderWidth);
    picSlider.SetBackColor(controls::kSystemButtonFace);
    picShadow.SetWidth(kShadowWidth);
    picShadow.SetBackColor(controls::kSystemButtonShadow);
  });
}

void frmAddressBook::Form_QueryUnload() {
  commands_.Stop();
  Event(u"Form_QueryUnload", [&] {
    contactList_.Close();
    place_.Database.Close();
  });
}

void frmAddressBook::LoadContacts() {
  contactList_.Load(folderTree_.Current().Key);
}

void frmAddressBook::ChangeSortOrder(StringView columnKey, SortOrder order) {
  contactList_.ChangeSortOrder(columnKey, order);
}

// Toolbar, menus and find box.

void frmAddressBook::ConnectToolBar() {
  AddAddressBookTools(tlbMain);
  tlbMain.SetBand(lblFind, txtFind);
  tlbMain.ButtonClick = [this](const String& key) { tlbMain_ButtonClick(key); };
  tlbMain.ButtonDropDown = [this](const String& key, int x, int y) {
    tlbMain_ButtonDropDown(key, x, y);
  };
  mnuNew_.Items.push_back({.Name = u"mnuNewContact",
                           .Caption = u"&Contact",
                           .Click = MenuClick([this] { ContactNew({}); })});
  mnuNew_.Items.push_back({.Name = u"mnuNewGroup",
                           .Caption = u"&Group",
                           .Click = MenuClick([this] { ContactNew(ItemCommands::kNewGroup); })});
}

void frmAddressBook::tlbMain_ButtonClick(StringView key) {
  Event(u"tlbMain_ButtonClick", [&] {
    if (key == ToolKey::New) ContactNew({});
    if (key == ToolKey::Properties) ContactProperties();
    if (key == ToolKey::Delete) ContactDelete();
    if (key == ToolKey::Refresh) LoadContacts();
  });
}

void frmAddressBook::tlbMain_ButtonDropDown(StringView key, int x, int y) {
  const Stay stay(*this);
  Event(u"tlbMain_ButtonDropDown", [&] {
    if (key == ToolKey::New) ShowMenu(mnuNew_, controls::Screen::Point{x, y});
  });
}

void frmAddressBook::ConnectMenus() {
  const auto connect = [this](StringView item, std::function<void()> command) {
    Menus.Item(item).Click = MenuClick(std::move(command));
  };
  connect(u"mnuSharedContactContext", [this] { ContactNew({}); });
  connect(u"mnuSharedGroupContext", [this] { ContactNew(ItemCommands::kNewGroup); });
  connect(u"mnuSharedFolderContext", [this] { commands_.NewFolder(); });
  connect(u"mnuAddSharedContactGroupContext", [this] { commands_.NewMember(); });
  connect(u"mnuProperties", [this] { ContactProperties(); });
  connect(u"mnuCopy", [this] { Copy(); });
  connect(u"mnuPaste", [this] { Paste(); });
}

std::function<void()> frmAddressBook::MenuClick(std::function<void()> command) {
  return [this, command = std::move(command)] {
    if (!menuPlace_ || *menuPlace_ == Current().Key) return command();
    if (!IsLoaded()) return;
    place_.Services.ShowMessage(u"Another place was selected meanwhile.",
                                MessageStyle::Exclamation);
  };
}

void frmAddressBook::ShowMenu(controls::Menu& menu, std::optional<controls::Screen::Point> at) {
  menuPlace_ = Current().Key;
  const ScopeExit closed([this] { menuPlace_.reset(); });
  Display().ShowMenu(*this, menu, at);
}

void frmAddressBook::ShowItemContextMenu(std::optional<int> x, std::optional<int> y) {
  const Stay stay(*this);
  Event(u"ShowItemContextMenu", [&] {
    // At the client all items stay visible.
    if (place_.User.IsAtServer()) Menus.ShowFor(NodeKey::KindOf(Current().Key));
    std::optional<controls::Screen::Point> at;
    if (x || y) at = {x.value_or(0), y.value_or(0)};
    ShowMenu(Menus.mnuContactContext, at);
  });
}

void frmAddressBook::Copy() {
  Event(u"Copy", [&] {
    const String text = SelectedRowsText(vsfContacts);
    if (text.empty()) return panel_.Note(Messages::kNothingSelected);
    Display().SetClipboardText(text);
  });
}

void frmAddressBook::ConnectFind() {
  txtFind.Change = [this] { txtFind_Change(); };
  contactList_.LoadStarts = [this] {
    find_.Forget();
    ShowKindOfList();
  };
  contactList_.RowsCame = [this](bool isComplete) { find_.RowsCame(isComplete); };
}

void frmAddressBook::txtFind_Change() {
  Event(u"txtFind_Change", [&] {
    contactList_.LeavePlace();
    find_.Search(contactList_.IsLoading());
  });
}

void frmAddressBook::FindNext(bool backward) {
  if (Trim(txtFind.Text()).empty()) return ToFindBox();
  Event(u"FindNext", [&] { find_.GoOn(backward); });
}

void frmAddressBook::ToFindBox() {
  txtFind.SetFocus();
  txtFind.Select(0, static_cast<int>(txtFind.Text().size()));
}

void frmAddressBook::ToList() {
  if (ContactGridLayout::HasRows(vsfContacts)) {
    if (vsfContacts.ChosenRow() == 0) vsfContacts.SetRow(1);
    vsfContacts.ShowRow(vsfContacts.ChosenRow());
  }
  vsfContacts.SetFocus();
}

// Keys of the window. Each command acts on the pane that has the focus, as its button does.

void frmAddressBook::ConnectKeys() {
  using namespace controls;
  const auto inFind = [this] { return txtFind.HasFocus(); };
  const auto inTree = [this] { return tvwContacts.HasFocus(); };
  const auto add = [this](std::int16_t key, std::int16_t shift, std::function<void()> run,
                          std::function<bool()> when = {}, bool repeats = false) {
    Shortcuts.push_back({key, shift, std::move(run), std::move(when), repeats});
  };
  constexpr std::int16_t kCtrlShift = ShiftMask::Ctrl | ShiftMask::Shift;
  const auto next = [this] { FindNext(false); };
  const auto previous = [this] { FindNext(true); };
  const auto properties = [this] { ContactProperties(); };
  add(KeyCode::F3, ShiftMask::None, next, {}, true);
  add(KeyCode::F3, ShiftMask::Shift, previous, {}, true);
  add(KeyCode::Enter, ShiftMask::None, next, inFind, true);
  add(KeyCode::Enter, ShiftMask::Shift, previous, inFind, true);
  add(
      KeyCode::Down, ShiftMask::None, [this] { ToList(); }, inFind);
  add(
      KeyCode::Escape, ShiftMask::None, [this] { txtFind.SetText({}); }, inFind);
  add(
      u'A', ShiftMask::Ctrl, [this] { ToFindBox(); }, inFind);
  add(u'F', ShiftMask::Ctrl, [this] { ToFindBox(); });
  add(u'N', ShiftMask::Ctrl, [this] { ContactNew({}); });
  add(u'N', kCtrlShift, [this] { ContactNew(ItemCommands::kNewGroup); });
  add(KeyCode::Enter, ShiftMask::Alt, properties);
  add(KeyCode::F2, ShiftMask::None, properties);
  add(KeyCode::Enter, ShiftMask::None, properties, inTree);
  add(KeyCode::F5, ShiftMask::None, [this] { tlbMain_ButtonClick(ToolKey::Refresh); });
}

// Tree.

void frmAddressBook::ConnectTree() {
  tvwContacts.NodeClick = [this](const controls::TreeNode& node) { tvwContacts_NodeClick(node); };
  tvwContacts.Collapse = [this](const controls::TreeNode& node) {
    folderTree_.Remember(node, false);
  };
  tvwContacts.Expand = [this](const controls::TreeNode& node) { folderTree_.Remember(node, true); };
  tvwContacts.KeyDown = [this](std::int16_t keyCode, std::int16_t) {
    tvwContacts_KeyDown(keyCode);
  };
  tvwContacts.MouseUp = [this](MouseButton button, std::int16_t, int x, int y) {
    tvwContacts_MouseUp(button, x, y);
  };
}

void frmAddressBook::tvwContacts_NodeClick(const controls::TreeNode& node) {
  Event(u"tvwContacts_NodeClick", [&] {
    if (folderTree_.Click(node)) LoadContacts();
  });
}

void frmAddressBook::tvwContacts_KeyDown(std::int16_t keyCode) {
  Event(u"tvwContacts_KeyDown", [&] {
    if (keyCode == KeyCode::Delete) ContactDelete();
  });
}

void frmAddressBook::tvwContacts_MouseUp(MouseButton button, int x, int y) {
  Event(u"tvwContacts_MouseUp", [&] {
    // Ignores a mouse button released over empty space.
    const bool nodeClicked = folderTree_.TakeClick();
    if (!nodeClicked || button != MouseButton::Right) return;
    ShowItemContextMenu(tvwContacts.Left() + x, tvwContacts.Top() + y);
  });
}

// Grid.

void frmAddressBook::ShowKindOfList() {
  const bool isRemote = NodeKey::KindOf(Current().Key) == NodeKey::RemoteFolder;
  const StringView caption = isRemote ? kRemoteContacts : kContacts;
  if (lblContacts.Caption() != caption) lblContacts.SetCaption(String(caption));
}

void frmAddressBook::ConnectGrid() {
  vsfContacts.FirstColumns = ContactGridLayout::FirstColumns();
  vsfContacts.AfterDataRefresh = [this] { ContactGridLayout::Apply(vsfContacts); };
  vsfContacts.AfterSort = [this](int column, SortOrder order) {
    vsfContacts_AfterSort(column, order);
  };
  vsfContacts.KeyDown = [this](std::int16_t keyCode, std::int16_t shift) {
    vsfContacts_KeyDown(keyCode, shift);
  };
  vsfContacts.SelectionChange = [this] {
    Event(u"vsfContacts_SelectionChange", [&] { panel_.ShowSelection(); });
  };
  vsfContacts.DoubleClick = [this] {
    if (ContactGridLayout::HasRows(vsfContacts)) vsfContacts_KeyDown(KeyCode::Enter, 0);
  };
  vsfContacts.MouseUp = [this](MouseButton button, std::int16_t, int row) {
    vsfContacts_MouseUp(button, row);
  };
}

void frmAddressBook::vsfContacts_AfterSort(int column, SortOrder order) {
  Event(u"vsfContacts_AfterSort",
        [&] { ChangeSortOrder(vsfContacts.ColumnAt(column).Key, order); });
}

void frmAddressBook::vsfContacts_KeyDown(std::int16_t keyCode, std::int16_t shift) {
  Event(u"vsfContacts_KeyDown", [&] {
    if (keyCode == u'C' && shift == controls::ShiftMask::Ctrl) Copy();
    if (keyCode == KeyCode::Enter) ContactProperties();
    if (keyCode == KeyCode::Delete) ContactDelete();
  });
}

void frmAddressBook::vsfContacts_MouseUp(MouseButton button, int row) {
  Event(u"vsfContacts_MouseUp", [&] {
    if (button == MouseButton::Right && vsfContacts.Selection().Count() == 1 && row > 0) {
      vsfContacts.SetRow(row);
    }
  });
}

// Layout.

void frmAddressBook::Form_Resize() {
  Event(u"Form_Resize", [&] { ResizeControls(); });
}

int frmAddressBook::PanesTop() const {
  return tlbMain.Height() + kHeadingGap + kHeadingHeight;
}

void frmAddressBook::ResizeControls() {
  const int top = PanesTop();
  const int height = std::max(ScaleHeight() - top - kReserve, 0);
  const int left = tvwContacts.Width();
  tvwContacts.Move({0, top, left, height});
  picSlider.Move({left, top, picSlider.Width(), height});
  picShadow.Move({left, top, picShadow.Width(), height});
  vsfContacts.Move({0, top, 0, height});
  lblFolders.Move({0, top - kHeadingHeight, left, kHeadingHeight});
  PlaceRightPane();
}

void frmAddressBook::PlaceRightPane() {
  const int left = picSlider.Left() + picSlider.Width();
  const int width = std::max(ScaleWidth() - left - kRightMargin, 0);
  vsfContacts.Move({left, vsfContacts.Top(), width, vsfContacts.Height()});
  lblContacts.Move({left + kHeadingIndent, lblFolders.Top(), std::max(width - kHeadingIndent, 0),
                    kHeadingHeight});
}

void frmAddressBook::PlaceProgressBar(controls::StatusBar& statusBar,
                                      controls::ProgressBar& progressBar, int panel) {
  progressBar.PlaceIn(statusBar, panel);
}

void frmAddressBook::ConnectSplitter() {
  picSlider.MouseDown = [this](MouseButton, std::int16_t, int, int) { picSlider_MouseDown(); };
  picSlider.MouseMove = [this](MouseButton, std::int16_t, int x, int) { picSlider_MouseMove(x); };
  picSlider.MouseUp = [this](MouseButton, std::int16_t, int, int) { picSlider_MouseUp(); };
}

void frmAddressBook::picSlider_MouseDown() {
  splitter_.Press();
}

void frmAddressBook::picSlider_MouseMove(int x) {
  place_.Services.Trap(
      u"KTRVAddressBook: Error occured. Sub: picSlider_MouseMove, Module: frmAddressBook",
      [&] { splitter_.Drag(x, ScaleWidth()); });
}

void frmAddressBook::picSlider_MouseUp() {
  place_.Services.Trap(
      u"KTRVAddressBook: Error occured. Sub: picSlider_MouseUp, Module: frmAddressBook", [&] {
        splitter_.Release();
        tvwContacts.SetWidth(picSlider.Left());
        lblFolders.SetWidth(picSlider.Left());
        PlaceRightPane();
        LimitWidth();
      });
}

void frmAddressBook::LimitWidth() {
  SetMinimumWidth(std::max(kMinimumWidth, picSlider.Left() + kMinimumList));
}

}  // namespace ktrv::forms
