// Measures how soon the address book window shows its contacts. For the script host.
//   scripthost window.js CONNECTION LOG
var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", WScript.Arguments(0), 1, "SQL", WScript.Arguments(1)) != 1) {
  throw new Error("The database did not open");
}
var start = new Date().getTime();
if (book.LoadAddressBook(1) != 1) throw new Error("The window did not open");
function elapsed() { return new Date().getTime() - start; }
var returned = elapsed();
var window = Ui.Window("Address Book");
var grid = Ui.Child(window, "SysListView32"), status = Ui.Child(window, "msctls_statusbar32");
var total = parseInt(Ui.Panel(status, 1), 10);
var first = 0;
while (Ui.RowCount(grid) < total) {
  if (!first && Ui.RowCount(grid) > 0) first = elapsed();
  if (elapsed() > 120000) throw new Error("The rows did not come");
  WScript.Sleep(1);
}
var complete = elapsed();
WScript.Echo("In the window, under Wine: " + total + " rows, LoadAddressBook returned after " +
             returned + " ms, rows in the grid after " + (first || complete) +
             " ms, all after " + complete + " ms");
Ui.Close(window);
Ui.WaitGone(window);
