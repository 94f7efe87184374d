#include "forms/groups/OpenGroupProperties.h"

#include "forms/groups/frmGroupsNew.h"

namespace ktrv::forms {
namespace {

/// Says to all who read the session that a listed group is being shown, until it no longer is.
class PropertiesFlag {
 public:
  explicit PropertiesFlag(bool& flag) : flag_(flag), former_(flag) { flag_ = true; }
  ~PropertiesFlag() { flag_ = former_; }
  PropertiesFlag(const PropertiesFlag&) = delete;
  PropertiesFlag& operator=(const PropertiesFlag&) = delete;

 private:
  bool& flag_;
  bool former_;
};

}  // namespace

bool OpenGroupProperties(Session& session, const String& groupId, const String& groupName) {
  const PropertiesFlag open(session.OpenForProperties);
  Session own = session.ForWindow();
  own.GroupId = groupId;
  own.GroupName = groupName;
  frmGroupsNew properties(own);
  properties.Mode = ModeOfOperation::Modify;
  own.ShowModal(Session::Purpose::Group, properties);
  return properties.HasOpenedContacts();
}

}  // namespace ktrv::forms
