// A hasty user: keys that are held, double clicks on a button, commands while others run, and ten
// thousand rows deleted in a window that goes on living.

function hurries(book) {
  // Enter held on a row opens one editor, in which it presses nothing.
  book.choose("Customers", 2);
  book.clickRow("Maria");
  Ui.Hold(book.grid, kEnter, 10);
  var editor = Ui.Window("Edit Shared Contact"), last = Ui.Child(editor, "Edit", 2);
  Ui.Type(last, "~");  // behind all that was held
  until(function() { return Ui.Text(last).indexOf("~") >= 0; }, "the editor stays");
  Ui.Press(last, kEscape);
  book.closed(editor);
  book.noBox("after the editor");
  check(!Ui.IsShown("Edit Shared Contact"), "no second editor");

  // So does a double click on a button.
  Ui.ClickTool(book.tools, 0);
  Ui.ClickTool(book.tools, 0);
  editor = Ui.Window("Add Shared Contact");
  Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
  book.closed(editor);
  book.noBox("after the editor");
  check(!Ui.IsShown("Add Shared Contact"), "no second editor");

  // Delete held asks once.
  book.clickRow("Maria");
  Ui.Hold(book.grid, kDelete, 10);
  book.answer("Are you sure you want to delete the selected item(s)?", "question|Yes|No*", "No");
  book.noBox("Delete was held");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1"), "2",
             "both are there");

  // Ten thousand rows.
  var digits = "(SELECT 0 I";
  for (var i = 1; i < 10; i++) digits += " UNION ALL SELECT " + i;
  digits += ")";
  checkEqual(query("INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, MNAME, LNAME, MOBILENO) " +
                   "SELECT 2, 'Extra', '', '', '1' FROM " + digits + " A, " + digits + " B, " +
                   digits + " C, " + digits + " D"), "", "the insert");
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
  for (i = 0; query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 2") != "0";
       i++) {
    check(i < 1000, "an end of the deletion");
    WScript.Sleep(200);
  }
  until(function() { return Ui.Panel(book.status, 1) == "2 item(s)"; }, "the current node's list");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kClient, kAdministrator, hurries);
checkLog();
