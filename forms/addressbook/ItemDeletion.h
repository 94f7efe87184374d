#pragma once

#include <memory>

#include "forms/addressbook/BookPanes.h"
#include "forms/addressbook/ItemStatements.h"
#include "forms/addressbook/RowDeletion.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// The deletion command of the address book window: deletes the selected node of the tree or the
/// selected rows of the grid after the user has confirmed.
class ItemDeletion {
 public:
  /// Context of its error records. Log readers match it literally, including the doubled prefix.
  static constexpr StringView kContext =
      u"KTRVKTRVAddressBook: Error occurred. Sub: ContactDelete(), Module: frmAddressBook";

  /// Both must outlive the object.
  ItemDeletion(Workplace& place, const BookPanes& panes);
  ~ItemDeletion();

  /// Many rows are deleted in the background after it has returned. \throws Error
  void Delete();
  /// Whether rows are being deleted in the background.
  bool IsRunning() const { return rows_ != nullptr; }
  /// Cancels a running deletion; called when the window closes.
  void Stop();

 private:
  void DeleteNode();
  void SayThatGroupsRemain();
  /// Queries whether the node is a folder with groups. If so, shows a message and rebuilds the
  /// tree.
  bool HoldsUnseenGroups(const String& key);
  void ShowUnseenGroups();
  bool DeleteItemOf(const String& key);
  void RemoveNode(const String& key);
  void DeleteRows(const CurrentNode& node);
  void Finish();

  bool Confirm(StringView question, std::int32_t buttons, std::int16_t wanted);
  bool ConfirmItems();

  Workplace& place_;
  const BookPanes& panes_;
  ItemStatements statements_;
  std::shared_ptr<RowDeletion> rows_;
};

}  // namespace ktrv::forms
