// A person works on the lists of the group dialog with mouse and keyboard: takes, finds, sorts,
// removes, undoes, copies and pastes; what is seen in the end is what is saved.
var kSharedGroup = 1;

// What the user's hand knows; it is sent to the other thread as text.
function Lists(caption) {
  this.window = Ui.Window(caption);
  this.isPicker = caption == "Select Recipient";
  this.find = Ui.Child(this.window, "Edit", this.isPicker ? 0 : 1);
  this.findMember = Ui.Child(this.window, "Edit", this.isPicker ? 1 : 2);
  this.contacts = Ui.Child(this.window, "SysListView32", 0);
  this.members = Ui.Child(this.window, "SysListView32", 1);
  this.until = function(condition, what) {
    for (var i = 0; !condition(); i++) {
      if (i == 1000) throw new Error("Not in time: " + what);
      WScript.Sleep(20);
    }
  };
  this.cells = function(list, column) {
    var rows = Ui.Rows(list).split("\n"), cells = [];
    for (var i = 0; i < rows.length; i++) cells.push(rows[i].split("\t")[column]);
    return cells;
  };
  this.names = function(list) { return this.cells(list, 1).join(","); };
  this.row = function(list, name) {
    var names = this.cells(list, 1);
    for (var i = 0; i < names.length; i++) if (names[i] == name) return i;
    throw new Error("No row " + name + " in " + names);
  };
  this.waitSelected = function(list, name) {
    var self = this;
    this.until(function() {
      var row = Ui.SelectedRow(list);
      return row >= 0 && self.cells(list, 1)[row] == name;
    }, name + " is selected");
  };
  this.waitText = function(text) { Ui.ChildWithText(this.window, text); };
  this.press = function(caption) {
    var button = Ui.ChildWithText(this.window, caption);
    this.until(function() { return Ui.IsEnabled(button); }, caption + " is enabled");
    Ui.Click(button);
  };
  this.isEnabled = function(caption) {
    return Ui.IsEnabled(Ui.ChildWithText(this.window, caption));
  };
  /// Puts a text into the clipboard as a person does: types it, marks it, cuts it out.
  this.toClipboard = function(text) {
    var kHome = 36, kEnd = 35, kShift = 4, kControl = 8;
    Ui.Type(this.find, text);
    Ui.WaitText(this.find, text);
    Ui.Press(this.find, kHome);
    Ui.Press(this.find, kEnd, kShift);
    Ui.Press(this.find, "X".charCodeAt(0), kControl);
    this.until(function() { return Ui.Clipboard() == text; }, "the clipboard has " + text);
  };
}
function play(caption, user, operation) {
  Player.Play(Lists + ";\n(" + user + ")(new Lists('" + caption + "'));");
  var result = operation();
  Player.Wait();
  return result;
}

function picks(lists) {
  var kEnter = 13, kDelete = 46;
  Ui.WaitRows(lists.contacts, 10);
  if (lists.isEnabled("Remove all")) throw new Error("There is something to remove");

  // Letters find, Enter takes.
  Ui.ClickRow(lists.contacts, lists.row(lists.contacts, "Anna"));
  lists.waitSelected(lists.contacts, "Anna");
  Ui.Press(lists.contacts, kEnter);
  Ui.WaitRows(lists.members, 1);
  lists.waitText("1 added");
  Ui.Type(lists.contacts, "pri");
  lists.waitSelected(lists.contacts, "Priya");
  Ui.Press(lists.contacts, kEnter);
  Ui.WaitRows(lists.members, 2);

  // Who is taken is ticked.
  var kinds = lists.cells(lists.contacts, 0);
  var ticked = [];
  for (var i = 0; i < kinds.length; i++) {
    if (kinds[i].indexOf(", in the list") > 0) ticked.push(lists.cells(lists.contacts, 1)[i]);
  }
  if (ticked.join(",") != "Anna,Priya") throw new Error("Ticked are " + ticked);

  lists.press("All ->");
  Ui.WaitRows(lists.members, 8);  // a contact keeps a group of the same number out
  lists.waitText("6 added, 2 were in the list already");

  // Found by number and by name.
  Ui.Type(lists.findMember, "7700 900");
  lists.waitSelected(lists.members, "John");
  Ui.Press(lists.findMember, 40);  // Down
  lists.until(function() { return Ui.FocusClass(lists.window) == "SysListView32"; }, "the list");

  // The next row is current after Del; Undo brings back.
  var before = lists.names(lists.members), john = lists.row(lists.members, "John");
  var next = lists.cells(lists.members, 1)[john + 1];
  Ui.Press(lists.members, kDelete);
  Ui.WaitRows(lists.members, 7);
  if (next) lists.waitSelected(lists.members, next);
  lists.waitText("1 removed");
  lists.press("Undo");
  Ui.WaitRows(lists.members, 8);
  if (lists.names(lists.members) != before) throw new Error("Back are " + lists.names(lists.members));
  lists.press("Remove all");
  Ui.WaitRows(lists.members, 0);
  Ui.PressAlt(lists.window, "U".charCodeAt(0));
  Ui.WaitRows(lists.members, 8);
  if (lists.names(lists.members) != before) throw new Error("Back are " + lists.names(lists.members));

  // The copied list and a typed one are pasted.
  lists.press("Copy");
  lists.until(function() { return Ui.Clipboard().indexOf("Priya\t91 9820012345\r\n") >= 0; }, "a copy");
  lists.press("Remove all");
  Ui.WaitRows(lists.members, 0);
  lists.press("Paste");
  Ui.WaitRows(lists.members, 8);
  lists.press("Remove all");
  Ui.WaitRows(lists.members, 0);
  lists.toClipboard("anna;+91 98200-12345;07700 900123;Nobody;555");
  lists.press("Paste");
  var box = Ui.Window("TALVERO Notification Server");
  Ui.ChildWithText(box, "Not found in the list on the left: Nobody, 555.");
  Ui.Click(Ui.Child(box, "Button"));
  Ui.WaitGone(box);
  Ui.WaitRows(lists.members, 3);
  if (lists.names(lists.members) != "Anna,Priya,John") throw new Error(lists.names(lists.members));
  lists.waitText("3 entries, 3 people");

  // A group counts with its members, and who is one of them can be shown and taken out.
  Ui.DoubleClickRow(lists.contacts, lists.row(lists.contacts, "Management"));
  Ui.WaitRows(lists.members, 4);
  lists.waitText("4 entries, 6 people, 2 numbers twice");
  lists.press("Numbers twice");
  lists.waitText("2 selected");
  lists.press("Remove");
  Ui.WaitRows(lists.members, 2);
  lists.waitText("2 entries, 4 people");
  lists.press("Undo");
  lists.press("Undo");
  Ui.WaitRows(lists.members, 3);
  lists.waitText("3 entries, 3 people");

  // Sorted the other way round.
  var heading = Ui.Child(lists.members, "SysHeader32");
  Ui.ClickAt(heading, 100, 8);
  lists.until(function() { return lists.names(lists.members) == "Anna,John,Priya"; }, "A to Z");
  Ui.ClickAt(heading, 60, 8);  // elsewhere, which is no double click
  lists.until(function() { return lists.names(lists.members) == "Priya,John,Anna"; }, "Z to A");

  Ui.ClickRow(lists.members, 1);
  lists.waitSelected(lists.members, "John");
  Ui.Press(lists.members, kDelete);
  Ui.WaitRows(lists.members, 2);
  Ui.Press(lists.members, kEnter);
  Ui.WaitGone(lists.window);
}

function edits(lists) {
  Ui.WaitRows(lists.contacts, 8);
  Ui.WaitRows(lists.members, 3);
  // Alt+L, Alt+U, and Ctrl+Z in the list.
  Ui.PressAlt(lists.window, "L".charCodeAt(0));
  Ui.WaitRows(lists.members, 0);
  Ui.PressAlt(lists.window, "U".charCodeAt(0));
  Ui.WaitRows(lists.members, 3);
  Ui.ClickRow(lists.members, 1);
  lists.waitSelected(lists.members, lists.cells(lists.members, 1)[1]);
  Ui.Press(lists.members, 46);
  Ui.WaitRows(lists.members, 2);
  Ui.Press(lists.members, "Z".charCodeAt(0), 8);
  Ui.WaitRows(lists.members, 3);
  Ui.ClickRow(lists.members, lists.row(lists.members, "John"));
  lists.waitSelected(lists.members, "John");
  lists.press("Remove");
  Ui.WaitRows(lists.members, 2);
  lists.toClipboard("Anna");
  Ui.PressAlt(lists.window, "T".charCodeAt(0));
  Ui.WaitRows(lists.members, 3);
  lists.press("OK");
  Ui.WaitGone(lists.window);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, kServer, dialect, log), 1, "Init");

checkEqual(play("Select Recipient", picks, function() {
  return book.LoadRecipients(kAdministrator, false);
}), 1, "LoadRecipients");
var picked = [];
for (var i = 1; i <= book.SelectedRecipients.Count; i++) picked.push(book.SelectedRecipients.Item(i));
checkEqual(picked.join(" "), "SC|3|Priya|9820012345 SC|1|Anna|701740611", "SelectedRecipients");

checkEqual(play("Modify Group", edits, function() {
  return book.EditGroup(kAdministrator, "1", kSharedGroup, "");
}), 1, "EditGroup");
checkEqual(query("SELECT CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 1 " +
                 "ORDER BY CONTACT_ID"), "1|S 7|S 8|S", "members of the group");

var written = files.OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
