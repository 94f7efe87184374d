#pragma once

#include <functional>

#include "component/Dialogs.h"
#include "component/EntryOperation.h"

namespace ktrv {

/// The component's public class, without COM. Each member implements the member of the same name in
/// the type library. All objects of a thread share one session and one set of dialogs.
///
/// The entry operations return 1 when their dialog was shown, and 0 when a guard refused the call
/// or a failure was trapped and logged.
class clsMain {
 public:
  /// Both must outlive the object.
  clsMain(Session& session, Dialogs& dialogs);
  /// Class_Terminate: the last object of the thread unloads the dialogs and closes the connection.
  ~clsMain();
  clsMain(const clsMain&) = delete;
  clsMain& operator=(const clsMain&) = delete;

  const String& LogFile() const { return session_.StoredLogFile; }
  void SetLogFile(String path) { session_.StoredLogFile = std::move(path); }
  const String& ClientDBString() const { return session_.StoredClientDBString; }
  void SetClientDBString(String text) { session_.StoredClientDBString = std::move(text); }
  /// The connection string for later opens of the session's connection. Open windows keep theirs.
  const String& RemoteDBString() const { return session_.SessionConnectionString; }
  void SetRemoteDBString(String text) { session_.SessionConnectionString = std::move(text); }
  const String& NewContactId() const { return session_.EditContactId; }
  String NewContactType() const {
    return ToDecimal(static_cast<std::int32_t>(session_.SharedMode));
  }
  const String& NewGroupId() const { return session_.GroupId; }
  String NewGroupType() const { return ToDecimal(static_cast<std::int32_t>(session_.GroupType)); }
  const String& NewGroupName() const { return session_.GroupName; }
  std::shared_ptr<TextCollection> SelectedRecipients() const { return session_.SelectedRecipients; }
  std::shared_ptr<TextCollection> SelectedMobileNos() const { return session_.SelectedMobileNos; }
  const String& strContactsName() const { return session_.ContactsName; }

  /// \param p_ClientDBString ignored; accepted for old hosts.
  /// \param LogFile full path of the log; blank selects AddressBook.log in the component's folder.
  /// \return 1 when the database could be opened, else 0
  std::int16_t Init(StringView p_ClientDBString, StringView p_RemoteDBString, std::int32_t p_Runfor,
                    StringView p_DbType, StringView LogFile);
  /// \param p_ContactName, p_MobileNo ignored; accepted for old hosts, like p_GroupName of the
  /// group operations. The values come from the database.
  std::int32_t EditContacts(std::int32_t p_UserId, std::int32_t p_ContactType,
                            std::int32_t p_ContactID, StringView p_ContactName,
                            StringView p_MobileNo);
  std::int32_t AddContacts(std::int32_t p_UserId, std::int32_t p_ContactType,
                           StringView p_ContactName, StringView p_MobileNo);
  std::int32_t AddGroup(std::int32_t p_UserId, StringView m_FolderId, std::int32_t p_GroupType,
                        StringView p_GroupName);
  std::int32_t EditGroup(std::int32_t p_UserId, StringView p_GroupId, std::int32_t p_GroupType,
                         StringView p_GroupName);
  /// Shows the window modeless and returns. The host must pump messages.
  std::int32_t LoadAddressBook(std::int32_t p_UserId);
  std::int32_t LoadRecipients(std::int32_t p_UserId, bool p_ExpandGroups);
  std::int32_t LoadFolders(std::int32_t p_UserId);

 private:
  using Step = std::function<void()>;
  /// Shows the operation's dialog or refuses. Sets `result` to 1 once the dialog was shown; later
  /// failures do not change it.
  using Work = std::function<void(std::int32_t& result)>;

  /// The common steps of all operations: guard, store arguments, check rights, work.
  std::int32_t Enter(const EntryOperation& operation, const Step& takeArguments, const Work& work);

  /// A workplace that takes over the session's open connection.
  Workplace PlaceWithConnection();

  Session& session_;
  Dialogs& dialogs_;
};

}  // namespace ktrv
