// A hasty user: keys that are held, double clicks on a button, commands while others run, and ten
// thousand rows deleted in a window that goes on living.
var database = WScript.Arguments(0), log = WScript.Arguments(1);
var files = WScript.CreateObject("Scripting.FileSystemObject");
eval(files.OpenTextFile(WScript.ScriptFullName.replace(/[^\\\/]*$/, "support\\book.js")).ReadAll());

function hurries(book, database) {
  // Enter held on a row opens one editor, in which it presses nothing.
  book.choose("Customers", 2);
  book.clickRow("Maria");
  Ui.Hold(book.grid, kEnter, 10);
  var editor = Ui.Window("Edit Shared Contact");
  WScript.Sleep(300);
  check(Ui.IsShown("Edit Shared Contact"), "the editor stays");
  Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
  book.closed(editor);
  WScript.Sleep(300);
  check(!Ui.IsShown("Edit Shared Contact"), "no second editor");

  // So does a double click on a button.
  Ui.ClickTool(book.tools, 0);
  Ui.ClickTool(book.tools, 0);
  editor = Ui.Window("Add Shared Contact");
  Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
  book.closed(editor);
  WScript.Sleep(300);
  check(!Ui.IsShown("Add Shared Contact"), "no second editor");

  // Delete held asks once.
  book.clickRow("Maria");
  Ui.Hold(book.grid, kDelete, 10);
  book.answer("Are you sure you want to delete the selected item(s)?", "question|Yes|No*", "No");
  book.noBox("Delete was held");
  checkEqual(query(database, "SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1"), "2",
             "both are there");

  // Ten thousand rows.
  query(database, "WITH RECURSIVE N(I) AS (SELECT 1 UNION ALL SELECT I + 1 FROM N WHERE I < 10000) " +
                  "INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, MNAME, LNAME, MOBILENO) " +
                  "SELECT 2, 'Extra', '', 'No ' || I, '1' FROM N");
  Ui.ClickNode(book.tree, "Field Staff");
  until(function() { return Ui.Panel(book.status, 1) == "10003 item(s)"; }, "they are listed");
  Ui.WaitRows(book.grid, 10003);
  book.clickRow("Extra");
  Ui.Press(book.grid, 65, kControl);  // A
  Ui.Press(book.grid, kDelete);
  book.answer("Are you sure you want to delete the selected item(s)?", "question|Yes|No*", "Yes");
  until(function() { return /^Deleting item/.test(Ui.Panel(book.status, 1)); }, "it says so");
  // The tree answers meanwhile.
  Ui.ClickNode(book.tree, "Customers");
  Ui.WaitRows(book.grid, 2);
  for (var i = 0; query(database, "SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 2") != "0";
       i++) {
    check(i < 300, "an end of the deletion");
    WScript.Sleep(200);
  }
  until(function() { return Ui.Panel(book.status, 1) == "2 item(s)"; }, "the current node's list");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kClient, kAdministrator, hurries);
checkLog();
