// How soon the address book window lists its contacts; for the script host.
//   scripthost window.js CONNECTION LOG
var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", WScript.Arguments(0), 1, "SQL", WScript.Arguments(1)) != 1) {
  throw new Error("The database did not open");
}
var start = new Date().getTime();
if (book.LoadAddressBook(1) != 1) throw new Error("The window did not open");
var returned = new Date().getTime() - start;
var window = Ui.Window("Address Book");
var grid = Ui.Child(window, "SysListView32"), status = Ui.Child(window, "msctls_statusbar32");
var total = parseInt(Ui.Panel(status, 1), 10);
while (Ui.RowCount(grid) < total) {
  if (new Date().getTime() - start > 120000) throw new Error("The rows did not come");
  WScript.Sleep(1);
}
var complete = new Date().getTime() - start;
WScript.Echo("In the window, under Wine: " + total + " rows, LoadAddressBook returned after " +
             returned + " ms, all rows in the grid after " + complete + " ms");
Ui.Close(window);
Ui.WaitGone(window);
