// Opens the address book as an administrator at the server, and reads what it lists.

function expect(what, actual, expected) {
  if (actual !== expected) {
    WScript.Echo(what + "\n  expected: " + expected + "\n  actual:   " + actual);
    WScript.Quit(1);
  }
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
expect("Init", book.Init("", connection, 1, dialect, log), 1);
expect("LoadAddressBook", book.LoadAddressBook(1), 1);

var window = Ui.Window("Address Book");
expect("The tree", Ui.Nodes(Ui.Child(window, "SysTreeView32")),
       ["Shared Contacts", "  Customers", "  Field Staff", "    Delivery Drivers",
        "  TALVERO Dealers", "  TALVERO Customers", "  Night Shift", "  Management"].join("\n"));

// Eight contacts and two groups stand outside any folder.
var grid = Ui.Child(window, "SysListView32");
Ui.WaitRows(grid, 10);
var rows = Ui.Rows(grid);
expect("A contact in the list", rows.indexOf("Priya  Sharma\t91 9820012345") >= 0, true);
expect("A name in Devanagari",
       rows.indexOf("\u0930\u093E\u091C\u0947\u0936  \u0915\u0941\u092E\u093E\u0930") >= 0, true);

Ui.Close(window);
Ui.WaitGone(window);
