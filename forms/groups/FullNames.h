#pragma once

#include "forms/groups/ContactRow.h"
#include "forms/groups/GroupCommands.h"
#include "services/Services.h"

namespace ktrv::forms {

/// The tips of a list of the group dialog: who a contact is whose name, the first one only, another
/// row has too.
class FullNames {
 public:
  /// All references must outlive the object.
  FullNames(Services& services, GroupCommands& commands, controls::FlexGrid& grid)
      : services_(services), commands_(commands), grid_(grid) {}

  /// Lets the grid show them.
  void Connect();
  /// A contact was edited, or the list loaded: names are read again, also after a failure.
  void Forget();

 private:
  String TipOf(int row, int column);
  bool HasNamesake(int row, const ContactColumns& columns) const;
  String Read(const String& contactId);

  Services& services_;
  GroupCommands& commands_;
  controls::FlexGrid& grid_;
  // The last one.
  String contactId_;
  String name_;
  bool failed_ = false;  ///< then no other name is read: on a dead line each would wait
};

}  // namespace ktrv::forms
