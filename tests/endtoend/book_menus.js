// The tree's menu at every kind of node, as administrator at the server and as either user at the
// client, and what it refuses.

function walksTheMenus(book, runAt, userId) {
  var kUp = 38, kDown = 40;
  var kAll = "(Create Local Contact)\n(Create Local Group)\n(Create Local Folder)\n" +
      "(Add Local Contact to this Group)\nCreate Shared Contact\nCreate Shared Group\n" +
      "Create Shared Folder\nAdd Shared Contact to this Group\n-\nProperties";
  var kAtServer = {
    "Shared Contacts": "Create Shared Contact\nCreate Shared Group\nCreate Shared Folder",
    "Night Shift": "Create Shared Contact\nAdd Shared Contact to this Group\n-\nProperties",
    "Customers": "Create Shared Contact\nCreate Shared Group\n-\nProperties",
    "TALVERO Dealers": "Properties"
  };
  for (var node in kAtServer) {
    Ui.RightClickNode(book.tree, node);
    checkEqual(Ui.Menu(), runAt == 1 ? kAtServer[node] : kAll, "the menu of " + node);
    Ui.CloseMenu();
  }
  // Right of and below all nodes there is none.
  var besideNodes = function() {
    Ui.RightClickAt(book.tree, Ui.Width(book.tree) - 5, Ui.Height(book.tree) - 5);
  };
  besideNodes();
  // Nor when the keyboard led to the current node.
  book.choose("Customers", 2);
  Ui.Press(book.tree, kDown);
  until(function() { return !Ui.IsSelected(book.tree, "Customers"); }, "the next node");
  besideNodes();
  Ui.Press(book.tree, kUp);
  until(function() { return Ui.IsSelected(book.tree, "Customers"); }, "no menu takes the key");
  // Nor in the list.
  book.choose("Customers", 2);
  Ui.RightClickRow(book.grid, 0);
  until(function() { return Ui.SelectedRow(book.grid) == 0; }, "the row under the pointer");
  Ui.Press(book.grid, kDown);
  until(function() { return Ui.SelectedRow(book.grid) == 1; }, "no menu takes the key");
  if (runAt == 1) return;

  book.fromMenu("TALVERO Dealers", "Create Shared Contact");
  book.answer("Cannot create Shared Remote Contact here. Such contacts can be created from " +
              "TALVERO only.", "warning|OK*", "OK");
  book.fromMenu("TALVERO Dealers", "Create Shared Group");
  book.answer("Creating a Group in a Shared Remote Contacts folder is not allowed.", "warning|OK*",
              "OK");
  book.fromMenu("Customers", "Add Shared Contact to this Group");
  book.fromMenu("Shared Contacts", "Properties");
  book.noBox("nothing to do at such nodes");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kClient, kAdministrator, walksTheMenus);
playBook(book, kClient, kGeneralUser, walksTheMenus);
playBook(book, kServer, kAdministrator, walksTheMenus);
checkLog();
