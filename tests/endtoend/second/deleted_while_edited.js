// The host that deletes the contact; see the script of the same name beside this folder.
var files = new ActiveXObject("Scripting.FileSystemObject");

function until(condition, what) {
  for (var i = 0; !condition(); i++) {
    if (i == 1000) throw new Error("Waited in vain until " + what);
    WScript.Sleep(50);
  }
}

function deletesAnna() {
  var window = Ui.Window("Address Book"), grid = Ui.Child(window, "SysListView32");
  var row = -1;
  until(function() {
    var rows = Ui.Rows(grid).split("\n");
    for (var i = 0; i < rows.length; i++) if (rows[i].indexOf("Anna ") >= 0) row = i;
    return row >= 0;
  }, "the contact is listed");
  var count = Ui.RowCount(grid);
  Ui.ClickRow(grid, row);
  until(function() { return Ui.SelectedRow(grid) == row; }, "the contact is selected");
  Ui.Press(grid, 46);  // Delete
  var box = Ui.Window("TALVERO Notification Server");
  Ui.Click(Ui.ChildWithText(box, "Yes"));
  Ui.WaitGone(box);
  Ui.WaitRows(grid, count - 1);
  Ui.Close(window);
  Ui.WaitGone(window);
}

until(function() { return files.FileExists(log + ".open"); }, "the other host has the contact open");
var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, 1, dialect, log) != 1) throw new Error("Init");
if (book.LoadAddressBook(1) != 1) throw new Error("LoadAddressBook");
Player.Play(until + "(" + deletesAnna + ")();");
Player.Wait();
files.CreateTextFile(log + ".deleted").Close();
