// The clerk; the administrator is in the script of the same name beside this folder.

function clerk(book, turns, editing, log) {
  var kSure = "Are you sure you want to delete the selected item(s)?", kYesNo = "question|Yes|No*";
  /// Delete in the root does nothing: what Enter opens after it was pressed later.
  var mayNotDelete = function(name) {
    Ui.ClickNode(book.tree, "Shared Contacts");
    book.clickRow(name);
    Ui.Press(book.grid, kDelete);
    Ui.Press(book.grid, kEnter);
    var editor = Ui.Window("Edit Shared Contact");
    Ui.WaitText(Ui.Child(editor, "Edit", 0), name);
    check(!Ui.IsShown("TALVERO Notification Server"), "no question before the editor");
    editing.cancel(editor);
  };
  turns.hear("administrator is in", book.window);

  // The administrator's window gives no right.
  mayNotDelete("Priya");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABCONTACTS WHERE FOLDER_ID = 0"), "8", "all stay");
  book.choose("Management", 3);
  Ui.ClickTool(book.tools, 1);
  var group = Ui.Window("Modify Group");
  editing.membersOf(group);
  check(!Ui.IsEnabled(Ui.ChildWithText(group, "&OK")), "a clerk may not save a group");
  editing.cancel(group);
  book.choose("Field Staff", 3);
  var editor = editing.add("Carla");
  editing.ok(editor);
  editing.closed(editor);
  Ui.WaitRows(book.grid, 4);
  turns.say("clerk was refused");
  turns.hear("administrator deleted Zoltan", book.window);

  editor = editing.open("Customers", "Tom");
  editing.append(editor, 16, " bread");
  turns.say("clerk has Tom open");
  turns.hear("administrator renamed Tom", editor);
  Ui.Click(Ui.Child(editor, "Edit", 16));
  editing.ok(editor);
  editing.closed(editor);
  checkEqual(query("SELECT LNAME, HOBBY FROM SMS_ABCONTACTS WHERE ID = 10"), "Bakers|Baking bread",
             "what both did to Tom");
  turns.say("clerk saved Tom");

  turns.hear("administrator has Maria open", book.window);
  editor = editing.open("Customers", "Maria");
  editing.append(editor, 2, "s");
  editing.ok(editor);
  editing.closed(editor);
  turns.say("clerk renamed Maria");
  turns.hear("administrator saved Maria", book.window);

  editor = editing.open("Field Staff", "Fatima");
  editing.append(editor, 2, "Lost");
  turns.say("clerk has Fatima open");
  turns.hear("administrator deleted Fatima", editor);
  Ui.Click(Ui.Child(editor, "Edit", 2));
  editing.ok(editor);
  checkEqual(recordsOf(log, 3021, 1), 1, "the refusal in the log");
  Ui.WaitText(Ui.Child(editor, "Edit", 2), "KhanLost");
  editing.cancel(editor);
  turns.say("clerk gave up Fatima");
  turns.hear("administrator has Carla open", book.window);
  Ui.ClickNode(book.tree, "Field Staff");
  book.clickRow("Carla");
  Ui.Press(book.grid, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  Ui.WaitRows(book.grid, 2);
  turns.say("clerk deleted Carla");
  turns.hear("administrator gave up Carla", book.window);

  book.fromMenu("Shared Contacts", "Create Shared Folder");
  var folder = Ui.Window("Add Folder");
  editing.append(folder, 0, "Hobby");
  editing.ok(folder);
  editing.closed(folder);
  until(function() { return Ui.Nodes(book.tree).indexOf("  Hobby") >= 0; }, "Hobby's node");
  book.choose("Hobby", 0);
  editor = editing.add("Lost");
  turns.say("clerk adds to Hobby");
  turns.hear("administrator deleted Hobby", editor);
  Ui.Click(Ui.Child(editor, "Edit", 0));
  editing.ok(editor);
  book.answer("The selected folder or group does not exist any more. Please select another one.",
              "warning|OK*", "OK");
  Ui.WaitText(Ui.Child(editor, "Edit", 0), "Lost");
  editing.cancel(editor);

  Ui.ClickNode(book.tree, "Customers");
  editor = editing.add("Chris");
  turns.say("clerk adds Chris");
  turns.hear("administrator added Adam", editor);
  Ui.Click(Ui.Child(editor, "Edit", 0));
  editing.ok(editor);
  editing.closed(editor);
  book.clickRow("Chris");
  Ui.Press(book.grid, kEnter);
  editor = Ui.Window("Edit Shared Contact");
  Ui.WaitText(Ui.Child(editor, "Edit", 0), "Chris");
  editing.cancel(editor);
  turns.say("clerk added Chris");

  turns.hear("administrator selected Tom", book.window);
  Ui.ClickNode(book.tree, "Customers");
  book.clickRow("Maria");
  Ui.Press(book.grid, kDelete);
  book.answer(kSure, kYesNo, "Yes");
  until(function() { return book.listed().indexOf("Maria") < 0; }, "Maria goes");
  turns.say("clerk deleted Maria");
  turns.hear("administrator is done", book.window);
  mayNotDelete("Anna");
  turns.say("clerk is done");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
playBook(book, kClient, kGeneralUser, inTurns(clerk));
