// Requests a picture of each window in one state. For the script host.
//   scripthost --with taking.js states.js CONNECTION LOG FOLDER STATE DPI
// STATE: empty, long, many, loading or failed, as tools/pictures makes the database.
var kServer = 1, kAdministrator = 1, kShared = 1;
var state = WScript.Arguments(3), ending = "-" + state + "-" + WScript.Arguments(4);

/// Waits until the lists of the window have stopped growing. Sent to the player as text too.
function settle(window, lists) {
  var former = "";
  for (var still = 0; still < 8; ) {
    WScript.Sleep(200);
    var rows = "";
    for (var i = 0; i < lists; i++) rows += Ui.RowCount(Ui.Child(window, "SysListView32", i)) + ";";
    still = rows == former ? still + 1 : 0;
    former = rows;
  }
}
function nothing() {}
/// Loads as far as the state wants it.
function waits(lists) {
  return state == "loading" ? nothing
                            : "function(window) { (" + settle + ")(window, " + lists + "); }";
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", WScript.Arguments(0), kServer, "SQL", WScript.Arguments(1)) != 1 ||
    book.LoadAddressBook(kAdministrator) != 1) {
  throw new Error("The address book did not open");
}
var window = Ui.Window("Address Book");
if (state != "loading") settle(window, 1);
take(folder, "address-book" + ending);
if (state == "empty" || state == "long") {
  var tree = "Ui.Child(Ui.Window('Address Book'), 'SysTreeView32')";
  if (state == "empty") {
    takeDialog("Add Folder", "folder" + ending, nothing,
               "Ui.RightClickNode(" + tree + ", 'Shared Contacts');" +
                   "Ui.Choose('Create Shared Folder');");
  } else {
    takeDialog("Edit Folder", "folder" + ending, nothing,
               "Ui.RightClickNode(" + tree + ", '" + WScript.Arguments(5) + "');" +
                   "Ui.Choose('Properties');");
  }
}
Ui.Close(window);
Ui.WaitGone(window);

if (state == "failed") {
  takeDialog("Add Folder", "folder" + ending, nothing, function() { book.LoadFolders(1); });
}
if (state == "empty") {
  takeDialog("Add Shared Contact", "contact" + ending, nothing,
             function() { book.AddContacts(kAdministrator, 1); });
  takeDialog("New Group", "group" + ending, waits(2),
             function() { book.AddGroup(kAdministrator, "0", kShared, ""); });
} else {
  if (state == "long" || state == "failed") {
    takeDialog("Edit Shared Contact", "contact" + ending, nothing,
               function() { book.EditContacts(kAdministrator, kShared, 3); });
  }
  takeDialog("Modify Group", "group" + ending, waits(2),
             function() { book.EditGroup(kAdministrator, "1", kShared); });
}
takeDialog("Select Recipient", "recipients" + ending, waits(2),
           function() { book.LoadRecipients(kAdministrator); });
