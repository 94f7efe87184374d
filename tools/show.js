// Opens the address book window and runs until it is closed. For the script host.
//   scripthost show.js CONNECTION LOG
var kServer = 1, kAdministrator = 1;
var log = WScript.Arguments(1);

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", WScript.Arguments(0), kServer, "SQL", log) != 1) {
  WScript.Echo("The database did not open; " + log + " tells why.");
  WScript.Quit(1);
}
if (book.LoadAddressBook(kAdministrator) != 1) {
  WScript.Echo("The address book did not open; " + log + " tells why.");
  WScript.Quit(1);
}
while (Ui.IsShown("Address Book")) WScript.Sleep(100);
