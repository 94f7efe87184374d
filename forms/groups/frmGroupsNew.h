#pragma once

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/Frame.h"
#include "controls/Label.h"
#include "controls/ProgressBar.h"
#include "controls/TextBox.h"
#include "forms/groups/ContactOpening.h"
#include "forms/groups/DialogStretch.h"
#include "forms/groups/FullNames.h"
#include "forms/groups/GroupCommands.h"
#include "forms/groups/GroupSaving.h"
#include "forms/groups/MemberCommands.h"
#include "forms/groups/MemberFind.h"
#include "forms/groups/MemberList.h"
#include "forms/groups/RecipientCount.h"
#include "forms/groups/SourceList.h"
#include "services/Workplace.h"

namespace ktrv::forms {

/// Modal dialog with two uses: edit a group or pick recipients. Local groups are stored by the
/// host; the dialog neither reads nor writes them.
class frmGroupsNew final : public controls::Form {
 public:
  frmGroupsNew(Workplace place, GroupRequest request);
  ~frmGroupsNew() override;

  // Open other dialogs, on a workplace of their own. Set by the opener.
  std::function<ContactResult(Workplace place, const ContactRequest& request)> OpenContact;
  std::function<GroupResult(Workplace place, const GroupRequest& request)> OpenProperties;

  /// The inner size that the user has given to dialogs of this use; kept up to date. Set by the
  /// opener; null: it is not kept.
  DialogSize* Size = nullptr;

  /// The request. For a new group, Mode becomes Modify when it is in the database.
  const GroupRequest& Request() const { return request_; }
  /// The result of the group editor; final after the dialog has closed.
  GroupResult Result() const;
  /// The result of the picker; nullopt if closed without OK.
  const std::optional<Recipients>& Picked() const { return picked_; }

  controls::Label lblGroupName{*this, {150, 210, 1200, 255}, u"Group Name"};
  controls::TextBox txtGroupName{*this, {1400, 165, 4300, 330}, 100};
  controls::CheckBox chkGroup{*this, {6000, 195, 3600, 285}, u"This is a Shared Group"};
  controls::Frame Frame2{*this, {150, 750, 11400, 6255}, u" Select Group Members "};
  controls::ComboBox cboContactType{*this, {345, 1080, 4785, 330}};
  controls::Label Label2{*this, {345, 1530, 4785, 255}, u"Type Name or select from list"};
  controls::TextBox txtFind{*this, {345, 1800, 3735, 330}};
  controls::CommandButton cmdFind{*this, {4170, 1785, 960, 360}, u"&Find"};
  controls::FlexGrid vsfFolderContacts{*this, {345, 2250, 4785, 4200}};
  controls::Label lblLoadingFolder{*this, {345, 6570, 3100, 255}, u"Loading..."};
  controls::ProgressBar pbrFolder{*this, {3530, 6570, 1600, 240}};
  controls::CommandButton cmdSelect{*this, {5190, 2100, 1515, 390}, u"&Select ->"};
  controls::CommandButton cmdSelectAll{*this, {5190, 2565, 1515, 390}, u"&All ->"};
  controls::CommandButton cmdRemove{*this, {5190, 3150, 1515, 390}, u"&Remove"};
  controls::CommandButton cmdRemoveAll{*this, {5190, 3615, 1515, 390}, u"Remove a&ll"};
  controls::CommandButton cmdUndo{*this, {5190, 4080, 1515, 390}, u"&Undo"};
  controls::CommandButton cmdPaste{*this, {5190, 4665, 1515, 390}, u"Pas&te"};
  controls::CommandButton cmdCopy{*this, {5190, 5130, 1515, 390}, u"Cop&y"};
  controls::CommandButton cmdProperty{*this, {5190, 5715, 1515, 390}, u"&Properties"};
  controls::CommandButton cmdNew{*this, {5190, 6180, 1515, 390}, u"&New Contact"};
  controls::Label lblFindMember{*this, {6765, 1125, 1400, 255}, u"F&ind in the list"};
  controls::TextBox txtFindMember{*this, {8265, 1080, 3090, 330}};
  controls::Label lblMemberCount{*this, {6765, 1530, 4590, 255}, {}};
  controls::FlexGrid vsfGroupContacts{*this, {6765, 1800, 4590, 3075}};
  controls::Label lblCounts{*this, {6765, 4920, 4590, 480}, {}};
  controls::CommandButton cmdWithoutNumber{*this, {6765, 5445, 2250, 345}, u"Without num&ber"};
  controls::CommandButton cmdTwice{*this, {9105, 5445, 2250, 345}, u"Numbers t&wice"};
  controls::CheckBox chkIncudeCountryCode{
      *this, {6765, 5865, 4590, 285}, u"Prefix Country code (if available)"};
  controls::Label lblOutcome{*this, {6765, 6195, 4590, 255}, {}};
  controls::Label lblLoadingGrp{*this, {6765, 6570, 3100, 255}, u"Loading..."};
  controls::ProgressBar PbrGrp{*this, {9900, 6570, 1455, 240}};
  controls::Label lblLeftOut{*this, {6765, 6480, 4590, 480}, {}};
  controls::Label lblSave{*this, {150, 7170, 4300, 255}, u"Saving Group..."};
  controls::ProgressBar pbrSave{*this, {4500, 7170, 3600, 240}};
  controls::CommandButton cmdOK{*this, {8700, 7110, 1350, 390}, u"&OK"};
  controls::CommandButton cmdCancel{
      *this, {10200, 7110, 1350, 390}, u"&Cancel", controls::CommandButton::Key::Escape};

  /// Creates the prepared statements. \throws Error
  void InitAdoCommands();
  /// Whether the input is valid; shows a message if not.
  bool Validate_Data();
  bool Save_Data();
  void LoadFolderContacts(StringView folderId);
  void LoadGroupContacts();
  void SelectMembers();
  void SelectAllMembers();
  void RemoveGroupMembers();

  void cmdOK_Click();
  void cmdCancel_Click();
  void cmdNew_Click();
  void cmdProperty_Click();
  void cmdFind_Click();
  void cboContactType_Click();
  void txtFind_Change();
  void vsfFolderContacts_AfterDataRefresh();
  void vsfGroupContacts_AfterDataRefresh();

  const GroupCommands& Commands() const { return commands_; }
  const SourceList& Sources() const { return sources_; }
  const MemberList& Members() const { return members_; }
  MemberList& Members() { return members_; }
  const RecipientCount& Reached() const { return counts_; }

 protected:
  void Form_Load() override;
  void Form_Resize() override;
  bool Form_MayClose() override;
  void Form_QueryUnload() override;

 private:
  void ConnectEvents();
  void ApplyRights();
  void LayOutAsPicker();
  void ShowMembers(bool connected);
  bool FillSelector();
  void ShowSource(bool connected);
  void LoadMembers();
  void ShowGroupName(const String& name);
  void ShowWhatIsPossible();
  void LoadChosenSource();
  bool MembersMayBeReplaced();
  void Take(const std::vector<int>& rows);
  /// After a failed connection at opening: connects and loads again. \return whether it did
  bool ConnectAgain();
  bool FindCreatedGroup();
  void ShowNotSaved();
  void ShowStopped();
  JobProgress::Display Progress() { return {lblSave, pbrSave, cmdCancel}; }
  bool IsShared() const;
  bool IsPicker() const;

  Workplace place_;
  GroupRequest request_;
  GroupCommands commands_{place_.Database};
  GroupStore store_{commands_, request_.GroupId, request_.GroupName};
  GroupSaving saving_{place_, request_, store_, {*this, vsfGroupContacts, Progress()}};
  SourceList sources_;
  MemberList members_;
  RecipientCount counts_{place_.Services, place_.Database, vsfGroupContacts, lblCounts};
  MemberCommands memberCommands_;
  MemberFind memberFind_{txtFindMember, vsfGroupContacts};
  ContactOpening contacts_;
  FullNames candidateNames_{place_.Services, commands_, vsfFolderContacts};
  FullNames memberNames_{place_.Services, commands_, vsfGroupContacts};
  String shownName_;        ///< the group's name as loaded
  bool connected_ = false;  ///< the selector could be filled
  std::optional<DialogStretch> stretch_;
  std::optional<NamedGroup> saved_;
  std::optional<Recipients> picked_;
};

}  // namespace ktrv::forms
