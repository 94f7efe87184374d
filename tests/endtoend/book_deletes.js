// What can be deleted in the tree and in the list, what is asked before and what is gone then.

function deletesAtTheServer(book) {
  var kSure = "Are you sure you want to delete the selected item(s)?", kYesNo = "question|Yes|No*";
  var kOkCancel = "question|OK|Cancel*";

  // In the tree, by key and by toolbar.
  book.choose("Shared Contacts", 10);
  Ui.Press(book.tree, kDelete);
  book.answer("The item cannot be deleted.", "warning|OK*", "OK");
  // Collapsed above the current node, the root is current.
  book.choose("Customers", 2);
  book.clickRootsButton();
  until(function() { return !Ui.IsExpanded(book.tree, "Shared Contacts"); }, "it collapses");
  Ui.Press(book.tree, kDelete);
  book.answer("The item cannot be deleted.", "warning|OK*", "OK");
  Ui.WaitRows(book.grid, 10);
  book.clickRootsButton();
  until(function() { return Ui.IsExpanded(book.tree, "Shared Contacts"); }, "it expands");
  book.choose("Field Staff", 3);
  Ui.ClickTool(book.tools, 2);
  book.answer("Selected folder contains group(s) under it. Remove all group(s) first to delete " +
              "selected folder.", "error|OK*", "OK");
  book.choose("Night Shift", 3);
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "No");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABGROUPS WHERE ID = 1"), "1", "after No");
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  until(function() { return Ui.Nodes(book.tree).indexOf("Night Shift") < 0; }, "the node goes");
  // The next node is listed, and the tree still has the focus.
  until(function() { return book.listed().indexOf("Northern Dealers") >= 0; }, "its members");
  until(function() { return Ui.Panel(book.status, 1) == "3 item(s)"; }, "their number");
  checkEqual(query("SELECT (SELECT COUNT(*) FROM SMS_ABGROUPS WHERE ID = 1), " +
                   "(SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 1)"),
             "0|0", "the group's rows");

  book.choose("Customers", 2);
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  book.answer("Are you sure you want to completely delete the  selected folder and all its " +
              "contents ?", kOkCancel, "Cancel");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1"), "2",
             "after Cancel");
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  book.answer("Are you sure you want to completely delete the  selected folder and all its " +
              "contents ?", kOkCancel, "OK");
  until(function() { return Ui.Nodes(book.tree).indexOf("  Customers\n") < 0; }, "the folder goes");
  checkEqual(query("SELECT (SELECT COUNT(*) FROM SMS_ABFOLDERS WHERE ID = 1), " +
                   "(SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1)"),
             "0|0", "the folder's rows");

  book.choose("TALVERO Dealers", 3);
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  book.answer("Are you sure you want to completely delete the selected Shared Remote folder ?",
              kOkCancel, "OK");
  until(function() { return Ui.Nodes(book.tree).indexOf("TALVERO Dealers") < 0; }, "it goes");
  checkEqual(query("SELECT (SELECT COUNT(*) FROM SMS_ABFOLDERS WHERE ID = 3), " +
                   "(SELECT COUNT(*) FROM ZUL$CONTACTS WHERE CATEGORY = 'Dealers')"),
             "0|3", "the remote contacts stay");

  // In the list.
  book.choose("Field Staff", 3);
  Ui.ClickTool(book.tools, 2);
  book.answer("Selected folder contains group(s) under it. Remove all group(s) first to delete " +
              "selected folder.", "error|OK*", "OK");
  book.clickRow("Fatima");
  Ui.ClickTool(book.tools, 2);
  book.answer(kSure, kYesNo, "Yes");
  Ui.WaitRows(book.grid, 2);
  checkEqual(query("SELECT (SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE ID = 12), " +
                   "(SELECT COUNT(*) FROM SMS_ABGROUPMAPS WHERE CONTACT_ID = '12')"),
             "0|0", "Fatima's rows");
  book.clickRow("Delivery Drivers");
  Ui.Press(book.grid, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  until(function() { return Ui.Nodes(book.tree).indexOf("Delivery Drivers") < 0; }, "its node goes");

  // Nothing is selected in a list that was just loaded.
  Ui.ClickNode(book.tree, "Management");
  Ui.WaitRows(book.grid, 2);  // the third member's folder is gone
  Ui.ClickAt(book.grid, 50, Ui.Height(book.grid) - 5);
  Ui.Press(book.grid, kDelete);
  book.answer("No item(s) selected for deletion.", "warning|OK*", "OK");

  // Several at once.
  book.choose("Shared Contacts", 9);
  book.clickRow("Priya");
  Ui.ClickRow(book.grid, book.row("Management"), kControl);
  Ui.ClickRow(book.grid, book.row("Control"), kControl);
  Ui.Press(book.grid, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  Ui.WaitRows(book.grid, 6);
  checkEqual(query("SELECT (SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE ID IN (3, 8)), " +
                   "(SELECT COUNT(*) FROM SMS_ABGROUPS WHERE ID = 2)"),
             "0|0", "all three");

  // All of a remote folder's are left without a word.
  book.choose("TALVERO Customers", 3);
  book.clickRow("Sharma");
  Ui.Press(book.grid, kDelete);
  book.noBox("a remote folder's contacts");
}

function mayNotDeleteInTheRoot(book) {
  book.choose("Shared Contacts", 6);
  book.clickRow("Zolt");
  Ui.Press(book.grid, kDelete);
  book.noBox("a general user in the root");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 0"), "6", "all stay");
  Ui.ClickNode(book.tree, "Shared Contacts");
  Ui.Press(book.tree, kDelete);
  book.answer("The item cannot be deleted.", "warning|OK*", "OK");
}

function deletesElsewhereAsGeneralUser(book) {
  var kSure = "Are you sure you want to delete the selected item(s)?", kYesNo = "question|Yes|No*";
  book.choose("Mine", 2);
  book.clickRow("Hers");
  Ui.ClickTool(book.tools, 2);
  book.answer(kSure, kYesNo, "Yes");
  Ui.WaitRows(book.grid, 1);
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE ID = 40"), "0", "the row");
  book.choose("Ours", 0);
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  until(function() { return Ui.Nodes(book.tree).indexOf("Ours") < 0; }, "the group goes");
  book.choose("Mine", 0);
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  book.answer("Are you sure you want to completely delete the  selected folder and all its " +
              "contents ?", "question|OK|Cancel*", "OK");
  until(function() { return Ui.Nodes(book.tree).indexOf("Mine") < 0; }, "the folder goes");
  checkEqual(query("SELECT (SELECT COUNT(*) FROM SMS_ABGROUPS WHERE ID = 40), " +
                   "(SELECT COUNT(*) FROM SMS_ABFOLDERS WHERE ID = 40)"), "0|0", "both");
}

function warnsOfRemoteMembers(book) {
  book.choose("Mixed", 3);
  book.clickRow("Coastal");
  Ui.Press(book.grid, 65, kControl);  // A
  Ui.Press(book.grid, kDelete);
  book.answer("Are you sure you want to delete the selected item(s)?", "question|Yes|No*", "Yes");
  for (var i = 0; i < 2; i++) {
    book.answer("This is a Shared Remote Contact. This contact can be deleted from TALVERO only.",
                "warning|OK*", "OK");
  }
  Ui.WaitRows(book.grid, 2);
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE ID = 7"), "0", "Zoltan");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kServer, kAdministrator, deletesAtTheServer);
playBook(book, kClient, kGeneralUser, mayNotDeleteInTheRoot);
query("INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME) VALUES (40, 'S', 'Mine'); " +
      "INSERT INTO SMS_ABCONTACTS (ID, FOLDER_ID, FNAME, MNAME, LNAME) VALUES " +
      "(40, 40, 'Hers', '', ''); " +
      "INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (40, 'Ours', 40)");
playBook(book, kClient, kGeneralUser, deletesElsewhereAsGeneralUser);
query("INSERT INTO SMS_ABFOLDERS (ID, TYPE, NAME, REMOTE_CONTACTS_CATEGORY) VALUES " +
      "(30, 'R', 'Dealers again', 'Dealers'); " +
      "INSERT INTO SMS_ABGROUPS (ID, NAME, FOLDER_ID) VALUES (30, 'Mixed', 0); " +
      "INSERT INTO SMS_ABGROUPMAPS VALUES (30, 'D0001', 'R'), (30, '7', 'S'), " +
      "(30, 'D0002', 'R')");
playBook(book, kClient, kAdministrator, warnsOfRemoteMembers);
checkLog();
