// Contacts are dragged onto a group with the mouse, and onto a folder, where nothing may be dropped.

function drags(book) {
  var kGroup = "Night Shift";
  var members = function() {
    return query("SELECT CONTACT_ID FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 1 ORDER BY CONTACT_ID");
  };
  var says = function(text) {
    var status = book.status;
    until(function() { return Ui.Panel(status, 2) == text; }, "in the status bar: " + text);
  };
  var nodes = Ui.Nodes(book.tree);

  // One that is no member yet.
  book.choose("Customers", 2);
  book.clickRow("Maria");
  Ui.DragRow(book.grid, book.row("Maria"), book.tree, kGroup);
  says("1 contact(s) added to Night Shift.");
  checkEqual(members(), "5 7 8 9", "members");
  checkEqual(Ui.RowCount(book.grid), 2, "rows of the list, which stays");

  // Both, of whom one is in it.
  Ui.Press(book.grid, 65, kControl);  // A
  says("2 selected");
  Ui.DragRow(book.grid, book.row("Tom"), book.tree, kGroup);
  says("1 contact(s) added to Night Shift, 1 were in it.");
  checkEqual(members(), "10 5 7 8 9", "members");

  // Onto a folder nothing is dropped.
  book.clickRow("Tom");
  Ui.DragRow(book.grid, book.row("Tom"), book.tree, "Field Staff");
  book.noBox("for a drop onto a folder");
  checkEqual(members(), "10 5 7 8 9", "members");
  checkEqual(Ui.Nodes(book.tree), nodes, "the tree");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1"), "2",
             "contacts of the folder");

  // A group's own list shows its new members.
  book.choose(kGroup, 5);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kServer, kAdministrator, drags);
checkLog();
