#include "benchmarks/GroupDialog.h"

#include <stdexcept>

#include "benchmarks/UserInterfaceLoop.h"

namespace ktrv::benchmarks {

GroupDialog::GroupDialog(const std::string& path) {
  services_.LogFilePath = u"log";
  database_.ConnectionString = u"Driver=SQLite3;Database=" + FromUtf8(path);
  database_.DbType = u"SQL";
  database_.Renew();
}

forms::frmGroupsNew& GroupDialog::Open(const forms::GroupRequest& request) {
  form_ = std::make_unique<forms::frmGroupsNew>(
      Workplace{services_, database_.Another(), {.Rights = UserType::Administrator}}, request);
  form_->Load();
  Complete();
  return *form_;
}

forms::frmGroupsNew& GroupDialog::OpenPicker(bool expandGroups) {
  return Open({.LoadGroupFor = LoadGroupFor::SelectReceipient,
               .GroupType = TypeOfGroup::SharedGroup,
               .ExpandGroups = expandGroups});
}

forms::frmGroupsNew& GroupDialog::OpenGroup(const String& id, const String& name) {
  return Open({.Mode = ModeOfOperation::Modify,
               .GroupType = TypeOfGroup::SharedGroup,
               .GroupId = id,
               .GroupName = name});
}

void GroupDialog::Complete() {
  const bool came = screen_.WaitUntil(
      [&] { return !form_->Sources().IsLoading() && !form_->Members().IsLoading(); });
  if (!came || !form_->Members().IsComplete() || !system_.TextOf(services_.LogFilePath).empty()) {
    throw std::runtime_error("the group dialog failed");
  }
}

double GroupDialog::LoadSource(const String& folderId) {
  const auto start = Clock::now();
  form_->LoadFolderContacts(folderId);
  Complete();
  return SecondsSince(start);
}

std::vector<String> GroupDialog::MemberIds() {
  const auto& grid = form_->vsfGroupContacts;
  const int column = grid.ColIndex(u"ID");
  std::vector<String> ids;
  for (int row = 1; row < grid.Rows(); ++row) ids.push_back(grid.Text(row, column));
  return ids;
}

}  // namespace ktrv::benchmarks
