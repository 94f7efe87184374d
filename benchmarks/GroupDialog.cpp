#include "benchmarks/GroupDialog.h"

#include <stdexcept>

#include "benchmarks/UserInterfaceLoop.h"

namespace ktrv::benchmarks {

GroupDialog::GroupDialog(const std::string& path)
    : session_(screen_, system_,
               {[this](StringView) -> database::Driver& { return driver_; },
                screen_.Dispatcher.Post()}) {
  session_.SessionConnection = std::make_unique<database::Connection>(session_.Environment);
  session_.SessionConnectionString = u"Driver=SQLite3;Database=" + FromUtf8(path);
  session_.DbType = u"SQL";
  session_.IsAdmin = 1;
  session_.InitDone = 1;
  session_.GroupType = static_cast<std::int32_t>(TypeOfGroup::SharedGroup);
}

forms::frmGroupsNew& GroupDialog::OpenPicker() {
  form_ = std::make_unique<forms::frmGroupsNew>(session_);
  form_->LoadGroupFor = LoadGroupFor::SelectReceipient;
  form_->Load();
  Complete();
  return *form_;
}

forms::frmGroupsNew& GroupDialog::OpenGroup(const String& id, const String& name) {
  session_.GroupId = id;
  session_.GroupName = name;
  form_ = std::make_unique<forms::frmGroupsNew>(session_);
  form_->Mode = ModeOfOperation::Modify;
  form_->Load();
  Complete();
  return *form_;
}

void GroupDialog::Complete() {
  const bool came = screen_.WaitUntil(
      [&] { return !form_->Sources().IsLoading() && !form_->Members().IsLoading(); });
  if (!came || !form_->Members().IsComplete() || !system_.TextOf(session_.LogFilePath).empty()) {
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
