#include "forms/addressbook/ItemMenus.h"

#include <array>

#include "common/Error.h"
#include "forms/addressbook/CurrentNode.h"

namespace ktrv::forms {
namespace {

/// One item of the tree's menu, and the node kinds that show it at the server.
struct Row {
  StringView Name;
  StringView Caption;
  bool AtRoot = false;
  bool AtGroup = false;
  bool AtSharedFolder = false;
  bool AtRemoteFolder = false;
};

// The first four create local items, which no longer exist. They have no command and are disabled.
constexpr std::array<Row, 10> kRows = {{
    {u"mnuLocalContactContext", u"Create Local Contact"},
    {u"mnuLocalGroupContext", u"Create Local Group"},
    {u"mnuLocalFolderContext", u"Create Local Folder"},
    {u"mnuAddLocalContactGroupContext", u"Add Local Contact to this Group"},
    {u"mnuSharedContactContext", u"Create Shared Contact", true, true, true, false},
    {u"mnuSharedGroupContext", u"Create Shared Group", true, false, true, false},
    {u"mnuSharedFolderContext", u"Create Shared Folder", true, false, false, false},
    {u"mnuAddSharedContactGroupContext", u"Add Shared Contact to this Group", false, true, false,
     false},
    {u"mnuSeparator1", u"-", false, true, true, false},
    {u"mnuProperties", u"Properties", false, true, true, true},
}};

bool Row::*ColumnOf(StringView nodeKind) {
  if (nodeKind == NodeKey::KindOf(NodeKey::Shared)) return &Row::AtRoot;
  if (nodeKind == NodeKey::SharedGroup) return &Row::AtGroup;
  if (nodeKind == NodeKey::SharedFolder) return &Row::AtSharedFolder;
  if (nodeKind == NodeKey::RemoteFolder) return &Row::AtRemoteFolder;
  return nullptr;
}

}  // namespace

ItemMenus::ItemMenus()
    : mnuContactContext{.Caption = u"Contact Context Menu"},
      mnuPropertyContextmenu{.Caption = u"Property Context Menu",
                             .Items = {{.Name = u"mnuCopy", .Caption = u"Copy"},
                                       {.Name = u"mnuPaste", .Caption = u"Paste"}}},
      mnuTest{.Caption = u"Test Menu",
              .Items = {{.Name = u"mnuTest1", .Caption = u"Test 1"},
                        {.Name = u"mnuTest2", .Caption = u"Test 2"}}} {
  for (const Row& row : kRows) {
    const bool hasCommand = row.AtRoot || row.AtGroup || row.AtSharedFolder || row.AtRemoteFolder;
    mnuContactContext.Items.push_back(
        {.Name = String(row.Name), .Caption = String(row.Caption), .Enabled = hasCommand});
  }
}

void ItemMenus::ShowFor(StringView nodeKind) {
  const auto column = ColumnOf(nodeKind);
  if (!column) return;
  for (std::size_t item = 0; item < kRows.size(); ++item) {
    mnuContactContext.Items[item].Visible = kRows[item].*column;
  }
}

controls::MenuItem& ItemMenus::Item(StringView name) {
  for (controls::Menu* menu : {&mnuContactContext, &mnuPropertyContextmenu, &mnuTest}) {
    if (controls::MenuItem* item = menu->Find(name)) return *item;
  }
  throw Error(ErrorNumber::ElementNotFound);
}

}  // namespace ktrv::forms
