// Prints what the address book lists and requests a picture of each window. For the script host.
//   scripthost --with taking.js pictures.js CONNECTION LOG FOLDER
var kServer = 1, kAdministrator = 1, kShared = 1;
var connection = WScript.Arguments(0), log = WScript.Arguments(1);

function printIndented(title, text) {
  WScript.Echo(title);
  var lines = text.split("\n");
  for (var i = 0; i < lines.length; i++) WScript.Echo("  " + lines[i]);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, kServer, "SQL", log) != 1 ||
    book.LoadAddressBook(kAdministrator) != 1) {
  WScript.Echo("The address book did not open; " + log + " tells why.");
  WScript.Quit(1);
}
var window = Ui.Window("Address Book");
var grid = Ui.Child(window, "SysListView32");
for (var i = 0; Ui.RowCount(grid) == 0 && i < 100; i++) WScript.Sleep(100);
printIndented("Folders and groups:", Ui.Nodes(Ui.Child(window, "SysTreeView32")));
printIndented("Shared Contacts:", Ui.Rows(grid));
take(folder, "address-book");
takeDialog("Add Folder", "folder", function(editor) {
  Ui.Type(Ui.Child(editor, "Edit"), "Partners");
  Ui.WaitText(Ui.Child(editor, "Edit"), "Partners");
}, "Ui.RightClickNode(Ui.Child(Ui.Window('Address Book'), 'SysTreeView32'), 'Shared Contacts');" +
   "Ui.Choose('Create Shared Folder');");
Ui.Close(window);
Ui.WaitGone(window);

takeDialog("Edit Shared Contact", "contact", function(editor) {
  Ui.WaitText(Ui.Child(editor, "Edit", 0), "Priya");
}, function() { book.EditContacts(kAdministrator, kShared, 3); });

takeDialog("Modify Group", "group", function(editor) {
  Ui.WaitRows(Ui.Child(editor, "SysListView32", 1), 3);
  Ui.WaitRows(Ui.Child(editor, "SysListView32"), 8);
}, function() { book.EditGroup(kAdministrator, "1", kShared); });

takeDialog("Select Recipient", "recipients", function(picker) {
  Ui.WaitRows(Ui.Child(picker, "SysListView32"), 10);
  var all = Ui.ChildWithText(picker, "All ->");
  while (!Ui.IsEnabled(all)) WScript.Sleep(20);
  Ui.Click(all);
  Ui.WaitRows(Ui.Child(picker, "SysListView32", 1), 8);  // of each id only the first
}, function() { book.LoadRecipients(kAdministrator); });
