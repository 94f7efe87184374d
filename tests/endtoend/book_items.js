// New contacts, groups and folders, their properties and a copy of the list, by toolbar, menu,
// key and mouse.

function makesItems(book) {
  var newContact = function(name) {
    var editor = Ui.Window("Add Shared Contact"), first = Ui.Child(editor, "Edit", 0);
    Ui.WaitText(Ui.Child(editor, "Edit", 4), "91");
    Ui.Type(first, name);
    Ui.WaitText(first, name);
    Ui.Click(Ui.ChildWithText(editor, "&OK"));
    book.closed(editor);
  };
  var newGroup = function(name) {
    var editor = Ui.Window("New Group"), box = Ui.Child(editor, "Edit", 0);
    Ui.Type(box, name);
    Ui.WaitText(box, name);
    Ui.Click(Ui.ChildWithText(editor, "&OK"));
    book.closed(editor);
  };

  // The toolbar makes a contact of the folder, which then stands at the end of the list.
  book.choose("Customers", 2);
  Ui.ClickTool(book.tools, 0);
  newContact("Aaron");
  Ui.WaitRows(book.grid, 3);
  check(/;Aaron *$/.test(book.listed()), "Aaron behind the others, not " + book.listed());
  checkEqual(Ui.Panel(book.status, 1), "3 item(s)", "the count");
  checkEqual(query("SELECT FOLDER_ID FROM SMS_ABCONTACTS WHERE FNAME = 'Aaron'"), "1",
             "Aaron's folder");

  // The arrow offers both.
  Ui.ClickToolArrow(book.tools, 0);
  checkEqual(Ui.Menu(), "Contact\nGroup", "what can be new");
  Ui.Choose("Group");
  newGroup("Buyers");
  until(function() { return Ui.Nodes(book.tree).indexOf("    Buyers") >= 0; }, "Buyers' node");
  Ui.WaitRows(book.grid, 4);
  checkEqual(query("SELECT FOLDER_ID FROM SMS_ABGROUPS WHERE NAME = 'Buyers'"), "1",
             "Buyers' folder");

  // A group's menu makes a member.
  book.choose("Buyers", 0);
  book.fromMenu("Buyers", "Add Shared Contact to this Group");
  newContact("Berta");
  Ui.WaitRows(book.grid, 1);
  checkEqual(query("SELECT C.FOLDER_ID, M.CONTACT_TYPE FROM SMS_ABCONTACTS C, " +
                   "SMS_ABGROUPMAPS M, SMS_ABGROUPS G WHERE C.FNAME = 'Berta' AND " +
                   "M.CONTACT_ID = C.ID AND M.GROUP_ID = G.ID AND G.NAME = 'Buyers'"),
             "1|S", "Berta's membership");

  // A new folder.
  book.fromMenu("Shared Contacts", "Create Shared Folder");
  var editor = Ui.Window("Add Folder"), name = Ui.Child(editor, "Edit");
  Ui.Type(name, "Partners");
  Ui.WaitText(name, "Partners");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  book.closed(editor);
  until(function() { return Ui.Nodes(book.tree).indexOf("  Partners") >= 0; }, "Partners' node");

  // Cancelled, nothing comes of it.
  var before = Ui.Nodes(book.tree);
  book.choose("Partners", 0);
  book.fromMenu("Partners", "Create Shared Group");
  editor = Ui.Window("New Group");
  Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
  book.closed(editor);
  checkEqual(Ui.Nodes(book.tree), before, "the tree after a cancel");
}

function opensItems(book) {
  // A group from the tree.
  book.choose("Buyers", 1);
  Ui.ClickTool(book.tools, 1);
  var editor = Ui.Window("Modify Group"), name = Ui.Child(editor, "Edit", 0);
  Ui.WaitText(name, "Buyers");
  Ui.WaitRows(Ui.Child(editor, "SysListView32", 1), 1);
  Ui.Type(name, "2");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  book.closed(editor);
  until(function() { return /Buyers2|2Buyers/.test(Ui.Nodes(book.tree)); }, "the new name");

  // A folder from its menu.
  book.choose("Partners", 0);
  book.fromMenu("Partners", "Properties");
  editor = Ui.Window("Edit Folder");
  Ui.WaitText(Ui.Child(editor, "Edit"), "Partners");
  Ui.Type(Ui.Child(editor, "Edit"), "Friends");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  book.closed(editor);
  until(function() { return Ui.Nodes(book.tree).indexOf("Friends") >= 0; }, "the folder's new name");
  book.fromMenu("TALVERO Dealers", "Properties");
  editor = Ui.Window("Edit Folder");
  Ui.WaitText(Ui.Child(editor, "Edit"), "TALVERO Dealers");
  Ui.Press(Ui.Child(editor, "Edit"), kEscape);
  book.closed(editor);

  // A contact by Enter, another by a double click, a group listed in its folder by the toolbar.
  book.choose("Customers", 5);
  book.clickRow("Maria");
  Ui.Press(book.grid, kEnter);
  editor = Ui.Window("Edit Shared Contact");
  Ui.WaitText(Ui.Child(editor, "Edit", 0), "Maria");
  Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
  book.closed(editor);
  Ui.WaitRows(book.grid, 5);
  Ui.DoubleClickRow(book.grid, book.row("Tom"));
  editor = Ui.Window("Edit Shared Contact");
  Ui.Type(Ui.Child(editor, "Edit", 2), "s");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  book.closed(editor);
  until(function() { return /Tom B (sBaker|Bakers)/.test(book.listed()); }, "Tom");
  Ui.WaitRows(book.grid, 5);
  book.clickRow("Tom");
  Ui.ClickTool(book.tools, 1);
  editor = Ui.Window("Edit Shared Contact");
  Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
  book.closed(editor);
  Ui.WaitRows(book.grid, 5);

  // A remote contact is only talked of.
  book.choose("TALVERO Dealers", 3);
  Ui.DoubleClickRow(book.grid, book.row("Coastal"));
  book.answer("This is a Shared Remote Contact. The detail of this contact can be edited from " +
              "TALVERO only.", "warning|OK*", "OK");

  // Copy.
  book.clickRow("Coastal");
  Ui.Press(book.grid, 67, kControl);  // C
  until(function() { return Ui.Clipboard().indexOf("Coastal Dealers\t") >= 0; }, "the clipboard");
  checkEqual(Ui.Clipboard().split("\r\n")[0], "Name\tMobile No\tEmail\tAddress\tOrganisation",
             "the headings");
}

/// A general user at the client looks at groups only; the rest is as for administrators.
function worksAsGeneralUser(book) {
  var newContact = function(name) {
    var editor = Ui.Window("Add Shared Contact"), first = Ui.Child(editor, "Edit", 0);
    Ui.WaitText(Ui.Child(editor, "Edit", 4), "91");
    Ui.Type(first, name);
    Ui.WaitText(first, name);
    Ui.Click(Ui.ChildWithText(editor, "&OK"));
    book.closed(editor);
  };
  var looksOnly = function(title) {
    var editor = Ui.Window(title);
    check(!Ui.IsEnabled(Ui.ChildWithText(editor, "&OK")), title + " cannot be confirmed");
    check(!Ui.IsEnabled(Ui.ChildWithText(editor, "&New Contact")), "no new contact from " + title);
    Ui.Press(Ui.Child(editor, "Edit", 0), kEscape);
    book.closed(editor);
  };
  var before = Ui.Nodes(book.tree);
  book.choose("Field Staff", 3);
  Ui.ClickTool(book.tools, 0);
  newContact("Carla");
  Ui.WaitRows(book.grid, 4);
  Ui.ClickToolArrow(book.tools, 0);
  Ui.Choose("Group");
  looksOnly("New Group");
  book.choose("Management", 3);
  Ui.ClickTool(book.tools, 1);
  looksOnly("Modify Group");
  Ui.WaitRows(book.grid, 3);
  book.fromMenu("Management", "Add Shared Contact to this Group");
  newContact("Dora");
  Ui.WaitRows(book.grid, 4);
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABGROUPMAPS M, SMS_ABCONTACTS C WHERE " +
                   "C.FNAME = 'Dora' AND M.CONTACT_ID = C.ID AND M.GROUP_ID = 2"),
             "1", "Dora's membership");
  book.choose("Field Staff", 4);
  book.clickRow("Carla");
  Ui.Press(book.grid, kEnter);
  var editor = Ui.Window("Edit Shared Contact"), last = Ui.Child(editor, "Edit", 2);
  Ui.WaitText(Ui.Child(editor, "Edit", 0), "Carla");
  Ui.Type(last, "Jones");
  Ui.WaitText(last, "Jones");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  book.closed(editor);
  until(function() { return book.listed().indexOf("Jones") >= 0; }, "her new name");
  checkEqual(Ui.Nodes(book.tree), before, "the tree");
  book.fromMenu("Shared Contacts", "Create Shared Folder");
  var folder = Ui.Window("Add Folder");
  Ui.Type(Ui.Child(folder, "Edit"), "Hobby");
  Ui.WaitText(Ui.Child(folder, "Edit"), "Hobby");
  Ui.Click(Ui.ChildWithText(folder, "&OK"));
  book.closed(folder);
  until(function() { return Ui.Nodes(book.tree).indexOf("  Hobby") >= 0; }, "Hobby's node");
}

/// The sample data as it was.
function restore() {
  query("DELETE FROM SMS_ABCONTACTS WHERE ID > 12; DELETE FROM SMS_ABGROUPS WHERE ID > 3; " +
        "DELETE FROM SMS_ABGROUPMAPS WHERE GROUP_ID > 3; " +
        "DELETE FROM SMS_ABFOLDERS WHERE ID > 4; " +
        "UPDATE SMS_ABCONTACTS SET LNAME = 'Baker' WHERE ID = 10");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
function playAsAdministrator(runAt) {
  playBook(book, runAt, kAdministrator, makesItems);
  playBook(book, runAt, kAdministrator, opensItems);
  restore();
}
playAsAdministrator(kClient);
playBook(book, kClient, kGeneralUser, worksAsGeneralUser);
restore();
// Last, because at the client the menu keeps the items that the server showed.
playAsAdministrator(kServer);
checkLog();
