// An administrator and a clerk, each with a host and an open address book window of their own, work
// on one database. Nothing that one did is undone by the other or hits something else, and neither
// has more or fewer rights because the other is there. This is the administrator; the clerk is in
// second/. They take turns, because they share one mouse.

function administrator(book, turns, editing, log) {
  var kSure = "Are you sure you want to delete the selected item(s)?", kYesNo = "question|Yes|No*";
  var remove = function(folder, name, rest) {
    Ui.ClickNode(book.tree, folder);
    book.clickRow(name);
    Ui.Press(book.grid, kDelete);
    book.answer(kSure, kYesNo, "Yes");
    Ui.WaitRows(book.grid, rest);
  };
  turns.say("administrator is in");
  turns.hear("clerk was refused", book.window);

  // The clerk's window takes no right away.
  remove("Shared Contacts", "Zolt", 9);
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE ID = 7"), "0", "Zoltan");
  Ui.ClickNode(book.tree, "Management");
  Ui.ClickTool(book.tools, 1);
  var group = Ui.Window("Modify Group");
  Ui.WaitText(Ui.Child(group, "Edit", 0), "Management");
  editing.membersOf(group);
  editing.append(group, 0, " 2");
  var ok = Ui.ChildWithText(group, "&OK");
  until(function() { return Ui.IsEnabled(ok); }, "an administrator may save a group");
  editing.ok(group);
  editing.closed(group);
  until(function() { return Ui.Nodes(book.tree).indexOf("Management 2") >= 0; }, "the new name");
  turns.say("administrator deleted Zoltan");

  // A name that changes while the clerk has the contact open.
  turns.hear("clerk has Tom open", book.window);
  var editor = editing.open("Customers", "Tom");
  editing.append(editor, 2, "s");
  editing.ok(editor);
  editing.closed(editor);
  turns.say("administrator renamed Tom");
  turns.hear("clerk saved Tom", book.window);

  // The other way round.
  editor = editing.open("Customers", "Maria");
  editing.append(editor, 16, "Chess");
  turns.say("administrator has Maria open");
  turns.hear("clerk renamed Maria", editor);
  Ui.Click(Ui.Child(editor, "Edit", 16));
  editing.ok(editor);
  editing.closed(editor);
  checkEqual(query("SELECT LNAME, HOBBY FROM SMS_ABCONTACTS WHERE ID = 9"), "Garcias|Chess",
             "what both did to Maria");
  turns.say("administrator saved Maria");

  // What one has open is deleted by the other.
  turns.hear("clerk has Fatima open", book.window);
  remove("Field Staff", "Fatima", 3);
  turns.say("administrator deleted Fatima");
  turns.hear("clerk gave up Fatima", book.window);
  editor = editing.open("Field Staff", "Carla");
  editing.append(editor, 2, "Lost");
  turns.say("administrator has Carla open");
  turns.hear("clerk deleted Carla", editor);
  Ui.Click(Ui.Child(editor, "Edit", 2));
  editing.ok(editor);
  checkEqual(recordsOf(log, 3021, 2), 2, "one refusal each in the log");
  Ui.WaitText(Ui.Child(editor, "Edit", 2), "Lost");
  editing.cancel(editor);
  turns.say("administrator gave up Carla");

  // A folder that the clerk is about to add to.
  turns.hear("clerk adds to Hobby", book.window);
  book.fromMenu("Field Staff", "Properties");
  var folder = Ui.Window("Edit Folder");
  Ui.WaitText(Ui.Child(folder, "Edit"), "Field Staff");
  editing.append(folder, 0, " 2");
  editing.ok(folder);
  editing.closed(folder);
  until(function() { return Ui.Nodes(book.tree).indexOf("  Hobby") >= 0; }, "Hobby's node");
  book.choose("Hobby", 0);
  Ui.Press(book.tree, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  book.answer("Are you sure you want to completely delete the  selected folder and all its " +
              "contents ?", "question|OK|Cancel*", "OK");
  until(function() { return Ui.Nodes(book.tree).indexOf("Hobby") < 0; }, "the folder goes");
  turns.say("administrator deleted Hobby");

  // Two new contacts at a time.
  turns.hear("clerk adds Chris", book.window);
  Ui.ClickNode(book.tree, "Customers");
  editor = editing.add("Adam");
  editing.ok(editor);
  editing.closed(editor);
  turns.say("administrator added Adam");
  turns.hear("clerk added Chris", book.window);
  book.clickRow("Adam");
  Ui.Press(book.grid, kEnter);
  editor = Ui.Window("Edit Shared Contact");
  Ui.WaitText(Ui.Child(editor, "Edit", 0), "Adam");
  editing.cancel(editor);

  // Whose row is selected, not whose place it has.
  book.clickRow("Tom");
  turns.say("administrator selected Tom");
  turns.hear("clerk deleted Maria", book.window);
  Ui.ClickTool(book.tools, 2);
  book.answer(kSure, kYesNo, "Yes");
  checkEqual(query("SELECT FNAME FROM SMS_ABCONTACTS WHERE FOLDER_ID = 1 ORDER BY FNAME"),
             "Adam Chris", "Maria and Tom are gone, and nobody else");
  remove("Shared Contacts", "Priya", 8);
  turns.say("administrator is done");
  turns.hear("clerk is done", book.window);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kClient, kAdministrator, inTurns(administrator));
checkEqual(recordsOf(log, "", 2), 2, "failures in the log");
