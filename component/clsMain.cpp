#include "component/clsMain.h"

#include "data/EditorQueries.h"
#include "database/Recordset.h"
#include "forms/contact/frmNewContact.h"
#include "forms/groups/frmGroupsNew.h"

namespace ktrv {
namespace {

using Purpose = Session::Purpose;

/// The trimmed text of the query's one column. \throws Error NoCurrentRecord without a row.
String LookUp(Session& session, const String& query, StringView column) {
  database::Recordset rows(session.Environment);
  rows.Open(query, session.OpenConnection());
  String text(Trim(ToText(rows.Field(column))));
  rows.Close();
  return text;
}

/// \throws Error unless the folder can hold a group: one of any other folder has no place in the
/// tree, which nobody could open any more.
void CheckGroupFolder(Session& session, const String& folderId) {
  if (folderId == u"0") return;
  if (LookUp(session, data::EditorQueries::FolderType(folderId), u"TYPE") == u"S") return;
  throw Error(ErrorNumber::InvalidProcedureCall, u"Groups can be made in shared folders only");
}

/// The number as the database gives it back; a text that is no number as it is.
String WithoutZeros(StringView id) {
  while (id.size() > 1 && id.front() == u'0' && IsDecimalDigits(id)) id.remove_prefix(1);
  return String(id);
}

}  // namespace

clsMain::clsMain(Session& session, Dialogs& dialogs) : session_(session), dialogs_(dialogs) {
  dialogs_.Join();
}

clsMain::~clsMain() {
  if (!dialogs_.Leave()) return;
  dialogs_.UnloadAll();
  session_.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain",
                [&] { session_.CloseConnection(); });
  session_.Environment.CloseKept();
}

std::int32_t clsMain::Enter(const EntryOperation& operation, const Step& takeArguments,
                            const Work& work) {
  std::int32_t result = 0;
  return session_.Trap(operation.Context, result, [&] {
    if (!CheckInitialised(session_, operation)) return result;
    takeArguments();
    if (CheckRights(session_, operation)) work(result);
    return result;
  });
}

std::int16_t clsMain::Init(StringView /*p_ClientDBString*/, StringView p_RemoteDBString,
                           std::int32_t p_Runfor, StringView p_DbType, StringView LogFile) {
  const auto log = [&](StringView line) {
    session_.Logger.WriteLog(session_.LogFilePath, line, true, true);
  };
  const StringView path = Trim(LogFile);
  session_.LogFilePath = path.empty() ? DefaultLogFilePath(session_.Services.System) : String(path);
  return session_.Trap(
      u"KTRVAddressBook: Error occured. Sub: Init, Module: clsMain", std::int16_t{0}, [&] {
        log(u"KTRVAddressBook: Starting initialization routine...");
        session_.DbType = p_DbType;
        database::Connection& connection = session_.Database.Renew();
        session_.SessionConnectionString = p_RemoteDBString;
        connection.Open(session_.SessionConnectionString);
        if (connection.State() == database::ObjectState::Open) {
          session_.RunAt = p_Runfor;
          connection.Close();
          log(u"KTRVAddressBook: Initialization routine completed.....");
          session_.InitDone = 1;
        } else {
          log(u"KTRVAddressBook: Could not connect the remote database with the specified "
              u"parameters.");
          session_.InitDone = 0;
        }
        return session_.InitDone;
      });
}

std::int32_t clsMain::EditContacts(std::int32_t p_UserId, std::int32_t p_ContactType,
                                   std::int32_t p_ContactID, StringView /*p_ContactName*/,
                                   StringView /*p_MobileNo*/) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.SharedMode = p_ContactType;
    session_.EditContactId = ToDecimal(p_ContactID);
  };
  const auto work = [&](std::int32_t& result) {
    if (Is(session_.SharedMode, TypeOfContact::SharedContact)) {
      session_.PresetContactName =
          LookUp(session_, data::EditorQueries::ContactName(session_.EditContactId), u"FNAME");
    }
    session_.CloseConnection();
    Session own = session_.ForWindow();
    forms::frmNewContact editor(own);
    editor.Mode = ModeOfOperation::Modify;
    own.ShowModal(Purpose::Contact, editor);
    result = 1;
  };
  return Enter(EntryOperations::kEditContacts, takeArguments, work);
}

std::int32_t clsMain::AddContacts(std::int32_t p_UserId, std::int32_t p_ContactType,
                                  StringView p_ContactName, StringView p_MobileNo) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.SharedMode = p_ContactType;
    session_.PresetContactName = p_ContactName;
    session_.PresetMobileNo = p_MobileNo;
  };
  const auto work = [&](std::int32_t& result) {
    // The editor hands a new contact's id back only where no id stands.
    session_.EditContactId.clear();
    Session own = session_.ForWindow();
    forms::frmNewContact editor(own);
    editor.Mode = ModeOfOperation::Add;
    own.ShowModal(Purpose::Contact, editor);
    result = 1;
    session_.CloseConnection();
  };
  return Enter(EntryOperations::kAddContacts, takeArguments, work);
}

std::int32_t clsMain::AddGroup(std::int32_t p_UserId, StringView m_FolderId,
                               std::int32_t p_GroupType, StringView /*p_GroupName*/) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.GroupType = p_GroupType;
  };
  const auto work = [&](std::int32_t& result) {
    session_.GroupId.clear();
    const String folderId(Trim(m_FolderId));
    // A local group is kept by the host, folder and all.
    if (Is(session_.GroupType, TypeOfGroup::SharedGroup)) CheckGroupFolder(session_, folderId);
    Session own = session_.ForWindow();
    own.Database.TakeConnectionOf(session_.Database);
    forms::frmGroupsNew editor(own);
    editor.Mode = ModeOfOperation::Add;
    editor.FolderId = folderId;
    own.ShowModal(Purpose::Group, editor);
    result = 1;
    session_.CloseConnection();
  };
  return Enter(EntryOperations::kAddGroup, takeArguments, work);
}

std::int32_t clsMain::EditGroup(std::int32_t p_UserId, StringView p_GroupId,
                                std::int32_t p_GroupType, StringView /*p_GroupName*/) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.GroupType = p_GroupType;
    session_.GroupId = Trim(p_GroupId);
  };
  const auto work = [&](std::int32_t& result) {
    // Only shared groups can be opened this way: for a local one the name is read from a result
    // that was never opened, and that failure is the answer.
    session_.GroupName.clear();
    const String asGiven = session_.GroupId;
    const String id = WithoutZeros(asGiven);
    database::Recordset names(session_.Environment);
    if (Is(session_.GroupType, TypeOfGroup::SharedGroup)) {
      names.Open(data::EditorQueries::GroupName(id), session_.OpenConnection());
    }
    session_.GroupName = Trim(ToText(names.Field(u"NAME")));
    names.Close();
    Session own = session_.ForWindow();
    own.Database.TakeConnectionOf(session_.Database);
    own.GroupId = id;
    forms::frmGroupsNew editor(own);
    editor.Mode = ModeOfOperation::Modify;
    own.ShowModal(Purpose::Group, editor);
    // The host finds its id as it wrote it.
    if (session_.GroupId == id) session_.GroupId = asGiven;
    result = 1;
    session_.CloseConnection();
  };
  return Enter(EntryOperations::kEditGroup, takeArguments, work);
}

std::int32_t clsMain::LoadAddressBook(std::int32_t p_UserId) {
  const auto work = [&](std::int32_t& result) {
    if (session_.IsAtServer() && !session_.IsAdministrator()) {
      session_.ShowMessage(
          u"You do not have rights to access address book. Please contact Administrator.",
          MessageStyle::Critical);
      session_.CloseConnection();
      return;
    }
    dialogs_.ShowAddressBook();
    result = 1;
  };
  return Enter(
      EntryOperations::kLoadAddressBook, [&] { session_.SessionUserId = p_UserId; }, work);
}

std::int32_t clsMain::LoadRecipients(std::int32_t p_UserId, bool p_ExpandGroups) {
  // This one takes its arguments even when it is refused for want of Init, and a refused call
  // leaves no recipients of a former one that a host could send to.
  session_.SessionUserId = p_UserId;
  session_.ExpandGroups = p_ExpandGroups;
  session_.RenewResults();
  session_.ContactsName.clear();
  const auto work = [&](std::int32_t& result) {
    session_.OpenForProperties = false;
    if (session_.IsAtServer()) {
      session_.GroupType = static_cast<std::int32_t>(TypeOfGroup::SharedGroup);
    }
    session_.CloseConnection();
    Session own = session_.ForWindow();
    forms::frmGroupsNew picker(own);
    picker.LoadGroupFor = LoadGroupFor::SelectReceipient;
    own.ShowModal(Purpose::Recipients, picker);
    result = 1;
  };
  return Enter(
      EntryOperations::kLoadRecipients, [] {}, work);
}

std::int32_t clsMain::LoadFolders(std::int32_t p_UserId) {
  const auto work = [&](std::int32_t& result) {
    session_.CloseConnection();
    // Local folders are kept nowhere any more: the editor opens, and its save fails and is logged.
    dialogs_.Editors.Folder(session_.Place(), {.FolderType = TypeOfFolder::LocalFolder});
    result = 1;
  };
  return Enter(
      EntryOperations::kLoadFolders, [&] { session_.SessionUserId = p_UserId; }, work);
}

}  // namespace ktrv
