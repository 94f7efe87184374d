// For two people at one screen, each in a process: who works, and who lets the other one work.
function Turns(log) {
  var files = new ActiveXObject("Scripting.FileSystemObject");
  this.say = function(what) { files.CreateTextFile(log + "." + what).Close(); };
  /// Waits for the other one, and puts the window in use before those of the other one.
  this.hear = function(what, window) {
    for (var i = 0; !files.FileExists(log + "." + what); i++) {
      if (i == 1000) throw new Error("Not heard in time: " + what);
      WScript.Sleep(30);
    }
    Ui.BringToFront(window);
  };
}

/// How many failures of this number are in the log, waited for.
function recordsOf(log, number, count) {
  var files = new ActiveXObject("Scripting.FileSystemObject"), found = -1;
  for (var i = 0; found < count && i < 1000; i++) {
    WScript.Sleep(30);
    try {
      found = files.OpenTextFile(log).ReadAll().split("Error Number      : " + number).length - 1;
    } catch (failure) {  // one of the hosts is writing it
    }
  }
  return found;
}

/// What both people do with contacts.
function Editing(book) {
  this.open = function(folder, name) {
    Ui.ClickNode(book.tree, folder);
    book.clickRow(name);
    Ui.Press(book.grid, kEnter);
    var editor = Ui.Window("Edit Shared Contact");
    Ui.WaitText(Ui.Child(editor, "Edit", 0), name);
    return editor;
  };
  this.append = function(editor, ordinal, text) {
    var box = Ui.Child(editor, "Edit", ordinal), former = Ui.Text(box);
    Ui.Click(box);
    Ui.Press(box, 35);  // End
    Ui.Type(box, text);
    Ui.WaitText(box, former + text);
  };
  this.add = function(name) {
    Ui.ClickTool(book.tools, 0);
    var editor = Ui.Window("Add Shared Contact");
    Ui.WaitText(Ui.Child(editor, "Edit", 4), "91");
    this.append(editor, 0, name);
    return editor;
  };
  /// Waits for the members of Management; one family of words leaves the remote one out.
  this.membersOf = function(group) {
    var members = Ui.Child(group, "SysListView32", 1);
    until(function() { return Ui.RowCount(members) >= 2; }, "the group's members");
  };
  /// Under an editor the other one's window may be before this one's.
  this.closed = function(editor) {
    book.closed(editor);
    Ui.BringToFront(book.window);
  };
  this.ok = function(editor) { Ui.Click(Ui.ChildWithText(editor, "&OK")); };
  this.cancel = function(editor) {
    Ui.Click(Ui.ChildWithText(editor, "&Cancel"));
    this.closed(editor);
  };
}

/// The text of a user function(book, turns, editing, log) as playBook takes it.
function inTurns(user) {
  return "function(book) {" + Turns + recordsOf + Editing + "var log = '" +
      log.replace(/\\/g, "\\\\") + "';\n(" + user +
      ")(book, new Turns(log), new Editing(book), log); }";
}
