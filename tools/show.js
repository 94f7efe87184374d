// Opens the address book window and stays until it is closed; for the script host.
//   scripthost show.js CONNECTION LOG             for a person
//   scripthost show.js CONNECTION LOG READY DONE  prints what the window lists, makes the file
//                                                 READY, and closes the window once DONE is there
var kServer = 1, kAdministrator = 1;
var connection = WScript.Arguments(0), log = WScript.Arguments(1);
var files = WScript.CreateObject("Scripting.FileSystemObject");

function printIndented(title, text) {
  WScript.Echo(title);
  var lines = text.split("\n");
  for (var i = 0; i < lines.length; i++) WScript.Echo("  " + lines[i]);
}

function list(window) {
  var grid = Ui.Child(window, "SysListView32");
  for (var i = 0; Ui.RowCount(grid) == 0 && i < 100; i++) WScript.Sleep(100);
  printIndented("Folders and groups:", Ui.Nodes(Ui.Child(window, "SysTreeView32")));
  printIndented("Shared Contacts:", Ui.Rows(grid));
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, kServer, "SQL", log) != 1) {
  WScript.Echo("The database did not open; " + log + " tells why.");
  WScript.Quit(1);
}
if (book.LoadAddressBook(kAdministrator) != 1) {
  WScript.Echo("The address book did not open; " + log + " tells why.");
  WScript.Quit(1);
}

var title = "Address Book";
var window = Ui.Window(title);
if (WScript.Arguments.length > 2) {
  list(window);
  files.CreateTextFile(WScript.Arguments(2)).Close();
  while (!files.FileExists(WScript.Arguments(3))) WScript.Sleep(50);
  Ui.Close(window);
  Ui.WaitGone(window);
} else {
  while (Ui.IsShown(title)) WScript.Sleep(100);
}
