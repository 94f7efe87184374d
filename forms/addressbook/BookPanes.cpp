#include "forms/addressbook/BookPanes.h"

#include "forms/Messages.h"

namespace ktrv::forms {

void BookPanes::Say(StringView text) const {
  Services.ShowMessage(text, MessageStyle::Exclamation);
}

const controls::TreeNode* BookPanes::ChosenNode() const {
  const controls::TreeNode* node = Tree.SelectedNode();
  const String& current = Folders.Current().Key;
  if (!node && !current.empty() && !Tree.Find(current)) Say(Messages::kPlaceIsGone);
  return node;
}

void BookPanes::RebuildTree(bool listIsStale) const {
  const String before = Folders.Current().Key;
  Folders.Build();
  // At the server a rebuild selects the root, which becomes current; the grid must follow.
  if (listIsStale || Folders.Current().Key != before) LoadContacts();
}

}  // namespace ktrv::forms
