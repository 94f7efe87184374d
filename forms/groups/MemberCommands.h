#pragma once

#include "controls/CommandButton.h"
#include "forms/groups/JobProgress.h"
#include "forms/groups/MemberList.h"
#include "forms/groups/RecipientCount.h"
#include "forms/groups/SourceList.h"
#include "services/Services.h"

namespace ktrv::forms {

/// The buttons of the group dialog for its right list.
class MemberCommands {
 public:
  struct Buttons {
    controls::CommandButton& Remove;
    controls::CommandButton& RemoveAll;
    controls::CommandButton& Undo;
    controls::CommandButton& Paste;
    controls::CommandButton& Copy;
    controls::CommandButton& WithoutNumber;
    controls::CommandButton& Twice;
  };
  struct Lists {
    const SourceList& Source;
    controls::FlexGrid& SourceGrid;
    MemberList& Members;
    controls::FlexGrid& MemberGrid;
    RecipientCount& Count;
  };

  /// All references must outlive the object.
  MemberCommands(Services& services, Lists lists, Buttons buttons, JobProgress::Display progress)
      : services_(services), lists_(lists), buttons_(buttons), progress_(progress) {}

  /// Connects the buttons except Remove, and their keys in the right list.
  void Connect();
  /// Enables the buttons that have an effect. \param mayChange whether the user may change the list
  void ShowWhatIsPossible(bool mayChange);

 private:
  void Paste();
  void Copy();
  void Select(const controls::RowSelection& rows);

  Services& services_;
  Lists lists_;
  Buttons buttons_;
  JobProgress::Display progress_;
};

}  // namespace ktrv::forms
