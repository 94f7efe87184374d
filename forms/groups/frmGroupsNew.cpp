#include "forms/groups/frmGroupsNew.h"

#include <iterator>
#include <numeric>
#include <utility>

#include "forms/Messages.h"
#include "forms/groups/RecipientPick.h"

namespace ktrv::forms {

using data::GroupQueries::Purpose;

namespace {

constexpr int kNameRowHeight = 660;
constexpr int kWidth = 11700;
constexpr int kHeight = 7650;
/// What a larger dialog gains is shared by the two lists; below the row line all moves down.
constexpr int kColumnLines[] = {4000, 9000};
constexpr int kRowLine = 4870;
constexpr StringView kSavingContacts = u"Saving contacts...";

/// Context texts of error records. Log readers match them literally, including irregularities.
namespace Context {
constexpr StringView kFormLoad =
    u"KTRVAddressBook: Error occurred. Sub:Form_Load() Module: frmGroupsNew()";
constexpr StringView kNew =
    u"KTRVAddressBook: Error occured. Sub: cmdNew_Click(),  Module: frmGroupsNew()";
/// The properties command logs under the name of the new-contact command.
constexpr StringView kProperty =
    u"KTRVAddressBook: Error occured. Sub: cmdNew_Click(), Module: frmGroupsNew()";
constexpr StringView kSelect =
    u"KTRVAddressBook: Error occurred. Sub:SelectMembers(), Module: frmGroupsNew()";
constexpr StringView kSelectAll =
    u"KTRVAddressBook: Error occurred. Sub:SelectAllMembers(), Module: frmGroupsNew()";
constexpr StringView kValidate =
    u"KTRVAddressBook: Error occurred. Sub:Validate_Data(), Module: frmGroupsNew()";
constexpr StringView kSave =
    u"KTRVAddressBook: Error occurred. Sub:Save_Data(), Module: frmGroupsNew()";
constexpr StringView kRemove =
    u"KTRVAddressBook: Error occurred. Sub RemoveGroupMembers(), Module: frmGroupsNew()";
constexpr StringView kSourceLayout =
    u"KTRVAddressBook: Error occurred. Sub:vsfFolderContacts_AfterDataRefresh(), Module: "
    u"frmGroupsNew()";
constexpr StringView kMemberLayout =
    u"KTRVAddressBook: Error occurred. Sub:vsfGroupContacts_AfterDataRefresh(), Module: "
    u"frmGroupsNew()";
}  // namespace Context

controls::Form::Design DialogDesign(LoadGroupFor use) {
  const int names = use == LoadGroupFor::SelectReceipient ? kNameRowHeight : 0;
  return {.Caption = u"New Group",
          .Width = kWidth,
          .Height = kHeight,
          .Resizable = true,
          .MinimumWidth = kWidth,
          .MinimumHeight = kHeight - names};
}

}  // namespace

frmGroupsNew::frmGroupsNew(Workplace place, GroupRequest request)
    : Form(place.Services.Screen, DialogDesign(request.LoadGroupFor)),
      place_(std::move(place)),
      request_(std::move(request)),
      sources_(place_.Services, place_.Database, commands_, cboContactType,
               {vsfFolderContacts, lblLoadingFolder, pbrFolder}),
      members_(place_.Services, place_.Database, commands_, store_,
               {vsfGroupContacts, lblLoadingGrp, PbrGrp}, {lblMemberCount, lblLeftOut, lblOutcome}),
      memberCommands_(
          place_.Services, {sources_, vsfFolderContacts, members_, vsfGroupContacts, counts_},
          {cmdRemove, cmdRemoveAll, cmdUndo, cmdPaste, cmdCopy, cmdWithoutNumber, cmdTwice},
          Progress()),
      contacts_(place_.Services, commands_, vsfFolderContacts, vsfGroupContacts,
                {request_.GroupType, request_.SharedMode}) {
  cboContactType.AccessibleName = u"Source";
  vsfFolderContacts.AccessibleName = u"Contacts";
  vsfGroupContacts.AccessibleName = u"Members";
  vsfFolderContacts.Mark = {controls::Image::Tick, u"in the list", [this](int row) {
                              const ContactColumns columns(vsfFolderContacts);
                              return columns.Id() > 0 &&
                                     members_.Has(columns.ReadKind(row), columns.ReadId(row));
                            }};
  for (controls::FlexGrid* grid : {&vsfFolderContacts, &vsfGroupContacts}) {
    grid->FontName = u"Arial";
    ContactColumns::Empty(*grid);
  }
  chkGroup.SetEnabled(false);  // for display only
  for (controls::Control* control :
       std::initializer_list<controls::Control*>{&lblLoadingFolder, &pbrFolder, &lblLoadingGrp,
                                                 &PbrGrp, &lblLeftOut, &lblSave, &pbrSave}) {
    control->SetVisible(false);
  }
  contacts_.OpenEditor = [this](const ContactRequest& contact) {
    return OpenContact(place_.Another(), contact);
  };
  contacts_.OpenGroup = [this](const String& id, const String& name) {
    return OpenProperties(place_.Another(), {.Mode = ModeOfOperation::Modify,
                                             .GroupType = request_.GroupType,
                                             .SharedMode = contacts_.SharedMode(),
                                             .GroupId = id,
                                             .GroupName = name});
  };
  contacts_.RowWritten = [this](const ContactRow& contact) {
    members_.Edited(contact);
    candidateNames_.Forget();
    memberNames_.Forget();
    counts_.Forget();
  };
  contacts_.ListIsStale = [this] {
    // The host may have closed the dialog meanwhile.
    if (IsLoaded()) LoadChosenSource();
  };
  ConnectEvents();
}

frmGroupsNew::~frmGroupsNew() {
  Unload();
}

void frmGroupsNew::ConnectEvents() {
  cmdOK.Click = [this] { cmdOK_Click(); };
  cmdCancel.Click = [this] { cmdCancel_Click(); };
  cmdNew.Click = [this] { cmdNew_Click(); };
  cmdProperty.Click = [this] { cmdProperty_Click(); };
  cmdFind.Click = [this] { cmdFind_Click(); };
  cmdSelect.Click = [this] { SelectMembers(); };
  cmdSelectAll.Click = [this] { SelectAllMembers(); };
  txtFind.Change = [this] { txtFind_Change(); };
  cmdRemove.Click = [this] { RemoveGroupMembers(); };
  memberCommands_.Connect();
  memberFind_.Connect();
  candidateNames_.Connect();
  memberNames_.Connect();
  memberFind_.NotFound = [this](const String& text) {
    members_.Say(text.empty() ? String() : u"Not found: " + text);
  };
  vsfFolderContacts.DoubleClick = [this] { SelectMembers(); };
  vsfFolderContacts.KeyDown = [this](std::int16_t keyCode, std::int16_t) {
    if (keyCode == controls::KeyCode::Enter) cmdSelect.UserClicks();
  };
  vsfFolderContacts.AfterDataRefresh = [this] { vsfFolderContacts_AfterDataRefresh(); };
  vsfFolderContacts.AfterSort = [this](int column, controls::SortOrder order) {
    ContactColumns::ShowOrder(vsfFolderContacts, column, order);
    sources_.Sorted();
  };
  vsfGroupContacts.KeyDown = [this](std::int16_t keyCode, std::int16_t) {
    if (keyCode == controls::KeyCode::Delete) RemoveGroupMembers();
    if (keyCode == controls::KeyCode::Enter) cmdOK.UserClicks();
  };
  vsfGroupContacts.SelectionChange = [this] {
    ShowWhatIsPossible();
    counts_.Show();
  };
  vsfGroupContacts.AfterDataRefresh = [this] { vsfGroupContacts_AfterDataRefresh(); };
  vsfGroupContacts.AfterSort = [this](int column, controls::SortOrder order) {
    ContactColumns::ShowOrder(vsfGroupContacts, column, order);
    counts_.Update(members_.IsComplete());  // it knows rows by their place
  };
  sources_.Changed = [this] { ShowWhatIsPossible(); };
  counts_.Changed = [this] { ShowWhatIsPossible(); };
  members_.Changed = [this] {
    if (members_.HasFailed()) {
      counts_.Fail(u"Not all members could be loaded. OK tries again.");
    } else {
      counts_.Update(members_.IsComplete());
    }
    ShowWhatIsPossible();
    vsfFolderContacts.Refresh();
  };
}

void frmGroupsNew::Form_Load() {
  saved_.reset();
  picked_.reset();
  connected_ = place_.Services.Trap(Context::kFormLoad, false, [&] {
    InitAdoCommands();
    return true;
  });
  // Without a connection the dialog opens too, with the same restrictions.
  place_.Services.Trap(Context::kFormLoad, [&] {
    ApplyRights();
    if (IsPicker()) {
      LayOutAsPicker();
    } else if (IsShared()) {
      chkGroup.SetChecked(true);
    }
    const bool connected = connected_;
    if (connected) connected_ = FillSelector();
    ShowMembers(connected);
    ShowSource(connected);
    ShowWhatIsPossible();
  });
  const int rowLine = IsPicker() ? kRowLine - kNameRowHeight : kRowLine;
  stretch_.emplace(*this, std::vector<int>(std::begin(kColumnLines), std::end(kColumnLines)),
                   rowLine);
  if (Size && Size->Width > 0) Resize(Size->Width, Size->Height);
}

void frmGroupsNew::Form_Resize() {
  if (!stretch_) return;
  stretch_->Fit();
  if (Size) *Size = {ScaleWidth(), ScaleHeight()};
}

bool frmGroupsNew::FillSelector() {
  return !IsShared() || sources_.FillSelector();
}

bool frmGroupsNew::ConnectAgain() {
  if (connected_) return false;
  return connected_ = place_.Services.Trap(Context::kFormLoad, false, [&] {
    place_.Database.Open();
    cboContactType.Click = nullptr;
    const bool filled = FillSelector();
    if (!members_.IsComplete()) LoadMembers();
    ShowSource(true);
    return filled;
  });
}

void frmGroupsNew::Form_QueryUnload() {
  sources_.Cancel();
  members_.Cancel();
  counts_.Stop();
}

void frmGroupsNew::InitAdoCommands() {
  commands_.Prepare(data::GroupQueries::Commands());
  // Open last: after a failure the prepared commands exist, so the dialog works when the server is
  // back.
  if (IsShared()) place_.Database.Open();
}

GroupResult frmGroupsNew::Result() const {
  GroupResult result{.GroupType = request_.GroupType,
                     .Saved = saved_,
                     .HasOpenedContacts = contacts_.HasOpenedContacts(),
                     .EditedContacts = contacts_.EditedContacts()};
  if (!saved_ && store_.IsIncomplete() && !store_.GroupId().empty()) {
    result.Unfinished = {store_.GroupId(), store_.Known().Name};
  }
  return result;
}

void frmGroupsNew::ApplyRights() {
  if (place_.User.Rights != UserType::GeneralUser || !IsShared()) return;
  cmdOK.SetEnabled(false);
  cmdNew.SetEnabled(false);
}

void frmGroupsNew::LayOutAsPicker() {
  for (controls::Control* control : Controls()) {
    controls::Rectangle bounds = control->Bounds();
    bounds.Top -= kNameRowHeight;
    if (control == &lblGroupName || control == &txtGroupName || control == &chkGroup) {
      control->SetVisible(false);
    } else {
      control->Move(bounds);
    }
  }
  Resize(ScaleWidth(), ScaleHeight() - kNameRowHeight);
  SetCaption(u"Select Recipient");
}

void frmGroupsNew::ShowMembers(bool connected) {
  if (IsPicker() || request_.Mode == ModeOfOperation::Add) {
    members_.Empty();
    return;
  }
  SetCaption(u"Modify Group");
  if (connected) return LoadGroupContacts();
  ShowGroupName(request_.GroupName);
  members_.Fail();
}

void frmGroupsNew::ShowSource(bool connected) {
  if (!connected) sources_.Fail();
  if (cboContactType.ListCount() > 0) {
    cboContactType.SetListIndex(0);
    LoadFolderContacts(u"0");
  }
  // Connected only now, so that the first source is loaded once.
  cboContactType.Click = [this] { cboContactType_Click(); };
}

void frmGroupsNew::ShowWhatIsPossible() {
  cmdSelect.SetEnabled(members_.IsComplete());
  cmdSelectAll.SetEnabled(members_.IsComplete() && sources_.IsComplete());
  memberCommands_.ShowWhatIsPossible(cmdOK.Enabled());
}

void frmGroupsNew::LoadFolderContacts(StringView folderId) {
  sources_.Load(IsPicker() ? Purpose::PickRecipients : Purpose::EditGroup, folderId);
}

void frmGroupsNew::LoadGroupContacts() {
  ShowGroupName(request_.GroupName);
  if (!IsShared()) return members_.Empty();
  LoadMembers();
}

void frmGroupsNew::LoadMembers() {
  const bool typed = txtGroupName.Text() != shownName_;
  members_.Load();
  // The opener's name may be out of date; saving it would revert another user's rename.
  if (!typed && !store_.Known().Name.empty()) ShowGroupName(store_.Known().Name);
}

void frmGroupsNew::ShowGroupName(const String& name) {
  txtGroupName.SetText(name);
  shownName_ = txtGroupName.Text();
}

void frmGroupsNew::SelectMembers() {
  place_.Services.Trap(Context::kSelect, [&] { Take(vsfFolderContacts.SelectedRows()); });
}

void frmGroupsNew::SelectAllMembers() {
  place_.Services.Trap(Context::kSelectAll, [&] {
    if (!sources_.IsComplete()) return;
    std::vector<int> rows(static_cast<std::size_t>(vsfFolderContacts.Rows() - 1));
    std::iota(rows.begin(), rows.end(), 1);
    Take(rows);
  });
}

void frmGroupsNew::Take(const std::vector<int>& rows) {
  if (!members_.IsComplete()) return;
  {
    JobProgress progress(Progress(), u"Adding Contacts...", static_cast<std::int64_t>(rows.size()));
    members_.Take(vsfFolderContacts, rows, progress);
  }
  lblSave.SetCaption(String(kSavingContacts));
}

void frmGroupsNew::RemoveGroupMembers() {
  place_.Services.Trap(Context::kRemove, [&] {
    if (!members_.IsComplete() || vsfGroupContacts.Selection().Count() == 0) return;
    JobProgress progress(Progress(), u"Removing Contacts...",
                         2 * std::int64_t{vsfGroupContacts.Selection().Count()});
    members_.RemoveSelected(progress);
  });
}

void frmGroupsNew::cmdNew_Click() {
  ConnectAgain();
  place_.Services.Trap(Context::kNew, [&] {
    const int index = cboContactType.ListIndex();
    contacts_.New(index < 0 ? 0 : cboContactType.ItemData(index));
  });
}

void frmGroupsNew::cmdProperty_Click() {
  place_.Services.Trap(Context::kProperty, [&] { contacts_.Properties(); });
}

void frmGroupsNew::cmdFind_Click() {
  ConnectAgain();
  if (vsfFolderContacts.Rows() < 2) return;
  const StringView text = Trim(txtFind.Text());
  const int row = vsfFolderContacts.Row();
  if (sources_.Find(text, row + 1) || sources_.Find(text, 1)) return;
  sources_.FindElsewhere(text, row);
}

void frmGroupsNew::cboContactType_Click() {
  LoadChosenSource();
}

void frmGroupsNew::LoadChosenSource() {
  const int index = cboContactType.ListIndex();
  if (index >= 0) LoadFolderContacts(ToDecimal(cboContactType.ItemData(index)));
}

void frmGroupsNew::txtFind_Change() {
  if (vsfFolderContacts.Rows() < 2) return;
  const StringView text = Trim(txtFind.Text());
  if (!sources_.Find(text, 1)) sources_.FindElsewhere(text, 0);
}

void frmGroupsNew::vsfFolderContacts_AfterDataRefresh() {
  candidateNames_.Forget();
  place_.Services.Trap(Context::kSourceLayout, [&] { ContactColumns::LayOut(vsfFolderContacts); });
}

void frmGroupsNew::vsfGroupContacts_AfterDataRefresh() {
  memberNames_.Forget();
  place_.Services.Trap(Context::kMemberLayout, [&] { ContactColumns::LayOut(vsfGroupContacts); });
}

void frmGroupsNew::cmdOK_Click() {
  const controls::Form::Stay stay(*this);
  // If the lists were not loaded before, an empty selection was not intended.
  if (ConnectAgain() && IsPicker() && members_.Count() == 0) return;
  if (store_.IsCreationOpen() && !FindCreatedGroup()) return;
  if (!Validate_Data()) return;
  if (!IsPicker() && IsShared() && !MembersMayBeReplaced()) return;
  if (Save_Data()) Unload();
}

void frmGroupsNew::cmdCancel_Click() {
  if (Form_MayClose()) Unload();
}

bool frmGroupsNew::Form_MayClose() {
  const controls::Form::Stay stay(*this);
  if (store_.IsCreationOpen()) FindCreatedGroup();
  if (!store_.IsIncomplete()) return true;
  const bool close = place_.Services.ShowMessage(
                         u"The stored group is incomplete. Do you want to close the window and "
                         u"leave it so?",
                         Messages::kYesOrNo) == MessageAnswer::Yes;
  return close && IsLoaded();
}

bool frmGroupsNew::FindCreatedGroup() {
  const bool looked = place_.Services.Trap(Context::kSave, false, [&] {
    saving_.FindCreated();
    return true;
  });
  if (!looked) ShowNotSaved();
  return looked;
}

bool frmGroupsNew::Validate_Data() {
  if (IsPicker()) return true;
  const auto refuse = [&](StringView message) {
    place_.Services.ShowMessage(message, MessageStyle::Exclamation);
    txtGroupName.SetFocus();
    return false;
  };
  return place_.Services.Trap(Context::kValidate, false, [&] {
    const String name(Trim(txtGroupName.Text()));
    if (name.empty()) return refuse(u"Please enter the Group Name.");
    // Names of local groups are not known here.
    if (IsShared() && store_.IsNameTaken(name, request_.Mode)) {
      return refuse(u"A group with that name already exists. Please use a different group name.");
    }
    return true;
  });
}

bool frmGroupsNew::MembersMayBeReplaced() {
  if (members_.IsComplete()) return true;
  place_.Services.ShowMessage(
      members_.IsLoading()
          ? StringView(u"The members of the group are still being loaded. Please wait.")
          : StringView(u"The members of the group could not be loaded. Saving now would remove "
                       u"them from the group."),
      MessageStyle::Exclamation);
  // Load again, for the next OK.
  if (!members_.IsLoading() && IsLoaded()) LoadMembers();
  return false;
}

void frmGroupsNew::ShowNotSaved() {
  lblSave.SetCaption(IsPicker()              ? u"The recipients could not be selected."
                     : store_.IsIncomplete() ? u"The stored group is incomplete. OK tries again."
                                             : u"The group could not be saved.");
  lblSave.SetVisible(true);
}

void frmGroupsNew::ShowStopped() {
  if (store_.IsIncomplete()) return ShowNotSaved();
  lblSave.SetCaption(IsPicker() ? u"Stopped. Nothing was selected."
                                : u"Stopped. Nothing was saved.");
  lblSave.SetVisible(true);
}

bool frmGroupsNew::Save_Data() {
  String recipient;
  bool wanted = true;
  bool stopped = false;
  const auto save = [&] {
    if (IsPicker()) {
      JobProgress progress(Progress(), u"Selecting members..", members_.Count());
      picked_ = PickRecipients(commands_, vsfGroupContacts,
                               {request_.ExpandGroups, chkIncudeCountryCode.Checked()}, progress,
                               recipient);
    } else {
      const String name(Trim(txtGroupName.Text()));
      wanted = !IsShared() || saving_.Save(name);
      if (wanted) saved_ = {store_.GroupId(), name};
    }
  };
  const bool worked = place_.Services.Trap(Context::kSave, false, [&] {
    try {
      save();
    } catch (const Stopped&) {
      stopped = true;
    }
    return true;
  });
  if (stopped) {
    ShowStopped();
    return false;
  }
  if (!worked) {
    ShowNotSaved();
    if (!recipient.empty()) {
      place_.Services.ShowMessage(recipient +
                                      u" could not be selected as a recipient. Remove it from the "
                                      u"list, or try again.",
                                  MessageStyle::Exclamation);
    }
  }
  return worked && wanted;
}

bool frmGroupsNew::IsShared() const {
  return request_.GroupType == TypeOfGroup::SharedGroup;
}

bool frmGroupsNew::IsPicker() const {
  return request_.LoadGroupFor == ktrv::LoadGroupFor::SelectReceipient;
}

}  // namespace ktrv::forms
