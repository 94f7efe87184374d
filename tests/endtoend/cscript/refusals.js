// Reads every property, is refused by every operation in each way, and opens two windows.
var kRuntAtServer = 1, kSharedContact = 1;
var kAdministrator = 1, kFrontDesk = 2, kLeftTheCompany = 4;

var book = new ActiveXObject("KTRVAddressBook.clsMain");
var files = new ActiveXObject("Scripting.FileSystemObject");
var log = files.GetSpecialFolder(2) + "\\" + files.GetTempName();

function callAll(user) {
  WScript.Echo("EditContacts: " + book.EditContacts(user, kSharedContact, 1));
  WScript.Echo("AddContacts: " + book.AddContacts(user, kSharedContact));
  WScript.Echo("AddGroup: " + book.AddGroup(user, "0"));
  WScript.Echo("EditGroup: " + book.EditGroup(user, "1"));
  WScript.Echo("LoadAddressBook: " + book.LoadAddressBook(user));
  WScript.Echo("LoadRecipients: " + book.LoadRecipients(user));
  WScript.Echo("LoadFolders: " + book.LoadFolders(user));
}

function readProperties() {
  WScript.Echo("LogFile: " + book.LogFile);
  WScript.Echo("ClientDBString: " + book.ClientDBString);
  WScript.Echo("RemoteDBString: " + book.RemoteDBString);
  WScript.Echo("NewContactId: " + book.NewContactId);
  WScript.Echo("NewContactType: " + book.NewContactType);
  WScript.Echo("NewGroupId: " + book.NewGroupId);
  WScript.Echo("NewGroupType: " + book.NewGroupType);
  WScript.Echo("NewGroupName: " + book.NewGroupName);
  WScript.Echo("SelectedRecipients: " + book.SelectedRecipients.Count);
  WScript.Echo("SelectedMobileNos: " + book.SelectedMobileNos.Count);
  WScript.Echo("strContactsName: " + book.strContactsName);
}

var nowhere = "Driver=SQLite3;Database=/nowhere/at/all.db";
WScript.Echo("Init: " + book.Init("", nowhere, kRuntAtServer, "SQL", log));
book.LogFile = "mine.log";
book.ClientDBString = "DSN=Mine";
readProperties();
callAll(kAdministrator);

WScript.Echo("Init: " + book.Init("", WScript.Arguments(0), kRuntAtServer, "SQL", log));
callAll(kLeftTheCompany);
WScript.Echo("LoadAddressBook: " + book.LoadAddressBook(kFrontDesk));

// The address book window lives while the picker handles the messages.
WScript.Echo("LoadAddressBook: " + book.LoadAddressBook(kAdministrator));
WScript.Echo("LoadRecipients: " + book.LoadRecipients(kAdministrator));

var lines = files.OpenTextFile(log).ReadAll().split("\r\n");
for (var i = 0; i < lines.length; i++) {
  if (lines[i].substr(0, 4) == "KTRV") WScript.Echo(lines[i]);
}
files.DeleteFile(log);
