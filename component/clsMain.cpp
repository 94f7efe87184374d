#include "component/clsMain.h"

#include "data/EditorQueries.h"
#include "database/Recordset.h"

namespace ktrv {
namespace {

/// The trimmed value of the query's only column. \throws Error NoCurrentRecord when no row matches
String LookUp(Session& session, const String& query, StringView column) {
  database::Recordset rows(session.Database.Environment);
  rows.Open(query, session.Database.Open());
  String text(Trim(ToText(rows.Field(column))));
  rows.Close();
  return text;
}

/// Allows only folders that the tree shows groups in; a group in any other folder could not be
/// opened any more. \throws Error for other folders and if there is no such folder
void CheckGroupFolder(Session& session, const String& folderId) {
  if (folderId == u"0") return;
  if (LookUp(session, data::EditorQueries::FolderType(folderId), u"TYPE") == u"S") return;
  throw Error(ErrorNumber::InvalidProcedureCall, u"Groups can be made in shared folders only");
}

/// Removes leading zeros, as the database returns an id; other texts stay unchanged.
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
  session_.Services.Trap(u"KTRVAddressBook: Error occured. Sub: Class_Terminate, Module: clsMain",
                         [&] { session_.Database.Close(); });
  session_.Database.Environment.CloseKept();
}

Workplace clsMain::PlaceWithConnection() {
  Workplace place = session_.Place();
  place.Database.TakeConnectionOf(session_.Database);
  return place;
}

std::int32_t clsMain::Enter(const EntryOperation& operation, const Step& takeArguments,
                            const Work& work) {
  std::int32_t result = 0;
  return session_.Services.Trap(operation.Context, result, [&] {
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
  return session_.Services.Trap(
      u"KTRVAddressBook: Error occured. Sub: Init, Module: clsMain", std::int16_t{0}, [&] {
        log(u"KTRVAddressBook: Starting initialization routine...");
        session_.DbType = p_DbType;
        database::Connection& connection = session_.Database.Renew();
        session_.SessionConnectionString = p_RemoteDBString;
        connection.Open(session_.SessionConnectionString);
        if (connection.State() == database::ObjectState::Open) {
          session_.RunAt = static_cast<RunApplicationAt>(p_Runfor);
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
    session_.SharedMode = static_cast<TypeOfContact>(p_ContactType);
    session_.EditContactId = ToDecimal(p_ContactID);
  };
  const auto work = [&](std::int32_t& result) {
    if (session_.SharedMode == TypeOfContact::SharedContact) {
      session_.PresetContactName =
          LookUp(session_, data::EditorQueries::ContactName(session_.EditContactId), u"FNAME");
    }
    session_.Database.Close();
    dialogs_.Editors.Contact(session_.Place(), {.Mode = ModeOfOperation::Modify,
                                                .SharedMode = session_.SharedMode,
                                                .EditContactId = session_.EditContactId});
    result = 1;
  };
  return Enter(EntryOperations::kEditContacts, takeArguments, work);
}

std::int32_t clsMain::AddContacts(std::int32_t p_UserId, std::int32_t p_ContactType,
                                  StringView p_ContactName, StringView p_MobileNo) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.SharedMode = static_cast<TypeOfContact>(p_ContactType);
    session_.PresetContactName = p_ContactName;
    session_.PresetMobileNo = p_MobileNo;
  };
  const auto work = [&](std::int32_t& result) {
    dialogs_.Editors.Contact(session_.Place(), {.SharedMode = session_.SharedMode,
                                                .PresetContactName = session_.PresetContactName,
                                                .PresetMobileNo = session_.PresetMobileNo});
    result = 1;
    session_.Database.Close();
  };
  return Enter(EntryOperations::kAddContacts, takeArguments, work);
}

std::int32_t clsMain::AddGroup(std::int32_t p_UserId, StringView m_FolderId,
                               std::int32_t p_GroupType, StringView /*p_GroupName*/) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.GroupType = static_cast<TypeOfGroup>(p_GroupType);
  };
  const auto work = [&](std::int32_t& result) {
    session_.GroupId.clear();
    const String folderId = WithoutZeros(Trim(m_FolderId));
    // Local groups and their folders are stored by the host.
    if (session_.GroupType == TypeOfGroup::SharedGroup) CheckGroupFolder(session_, folderId);
    dialogs_.Editors.Group(PlaceWithConnection(), {.GroupType = session_.GroupType,
                                                   .SharedMode = session_.SharedMode,
                                                   .FolderId = folderId,
                                                   .GroupName = session_.GroupName});
    result = 1;
    session_.Database.Close();
  };
  return Enter(EntryOperations::kAddGroup, takeArguments, work);
}

std::int32_t clsMain::EditGroup(std::int32_t p_UserId, StringView p_GroupId,
                                std::int32_t p_GroupType, StringView /*p_GroupName*/) {
  const auto takeArguments = [&] {
    session_.SessionUserId = p_UserId;
    session_.GroupType = static_cast<TypeOfGroup>(p_GroupType);
    session_.GroupId = Trim(p_GroupId);
  };
  const auto work = [&](std::int32_t& result) {
    // Only shared groups can be edited here. For a local group `names` stays closed, so reading
    // NAME throws and the call returns 0.
    session_.GroupName.clear();
    const String asGiven = session_.GroupId;
    const String id = WithoutZeros(asGiven);
    database::Recordset names(session_.Database.Environment);
    if (session_.GroupType == TypeOfGroup::SharedGroup) {
      names.Open(data::EditorQueries::GroupName(id), session_.Database.Open());
    }
    session_.GroupName = Trim(ToText(names.Field(u"NAME")));
    names.Close();
    dialogs_.Editors.Group(PlaceWithConnection(), {.Mode = ModeOfOperation::Modify,
                                                   .GroupType = session_.GroupType,
                                                   .SharedMode = session_.SharedMode,
                                                   .GroupId = id,
                                                   .GroupName = session_.GroupName});
    // Restores the id exactly as the host wrote it.
    if (session_.GroupId == id) session_.GroupId = asGiven;
    result = 1;
    session_.Database.Close();
  };
  return Enter(EntryOperations::kEditGroup, takeArguments, work);
}

std::int32_t clsMain::LoadAddressBook(std::int32_t p_UserId) {
  const auto work = [&](std::int32_t& result) {
    if (session_.IsAtServer() && !session_.IsAdministrator()) {
      session_.Services.ShowMessage(
          u"You do not have rights to access address book. Please contact Administrator.",
          MessageStyle::Critical);
      session_.Database.Close();
      return;
    }
    dialogs_.ShowAddressBook();
    result = 1;
  };
  return Enter(
      EntryOperations::kLoadAddressBook, [&] { session_.SessionUserId = p_UserId; }, work);
}

std::int32_t clsMain::LoadRecipients(std::int32_t p_UserId, bool p_ExpandGroups) {
  // Arguments are stored even before Init. A refused call clears the previous recipients, so that a
  // host cannot send to them.
  session_.SessionUserId = p_UserId;
  session_.ExpandGroups = p_ExpandGroups;
  const forms::Recipients none;
  session_.Take(none);
  const auto work = [&](std::int32_t& result) {
    session_.OpenForProperties = false;
    if (session_.IsAtServer()) {
      session_.GroupType = TypeOfGroup::SharedGroup;
    }
    session_.Database.Close();
    const forms::GroupRequest request{.LoadGroupFor = LoadGroupFor::SelectReceipient,
                                      .GroupType = session_.GroupType,
                                      .SharedMode = session_.SharedMode,
                                      .ExpandGroups = session_.ExpandGroups};
    // Overwrites recipients that the host picked while this dialog was open.
    const auto picked = dialogs_.Editors.Pick(session_.Place(), request);
    session_.Take(picked.value_or(none));
    session_.GroupType = request.GroupType;
    result = 1;
  };
  return Enter(
      EntryOperations::kLoadRecipients, [] {}, work);
}

std::int32_t clsMain::LoadFolders(std::int32_t p_UserId) {
  const auto work = [&](std::int32_t& result) {
    session_.Database.Close();
    // No table holds local folders any more: the editor opens, but its save fails and is logged.
    dialogs_.Editors.Folder(session_.Place(), {.FolderType = TypeOfFolder::LocalFolder});
    result = 1;
  };
  return Enter(
      EntryOperations::kLoadFolders, [&] { session_.SessionUserId = p_UserId; }, work);
}

}  // namespace ktrv
