// What the scripts on the address book window share. A script plays its user on the other thread,
// because boxes and editors hold up the thread that the window is on.

/// The window's parts and what a hand does with them.
function Book() {
  this.window = Ui.Window("Address Book");
  this.tree = Ui.Child(this.window, "SysTreeView32");
  this.grid = Ui.Child(this.window, "SysListView32");
  this.tools = Ui.Child(this.window, "ToolbarWindow32");
  this.status = Ui.Child(this.window, "msctls_statusbar32");
  /// Chooses the node and waits until so many items are listed.
  this.choose = function(node, count) {
    var status = this.status;
    // The former node may have had as many.
    if (!Ui.IsSelected(this.tree, node)) Ui.SetPanel(status, 1, "");
    Ui.ClickNode(this.tree, node);
    until(function() { return Ui.Panel(status, 1) == count + " item(s)"; },
          node + " with " + count + " items");
    Ui.WaitRows(this.grid, count);
  };
  /// Clicks the [-] or [+] before the root.
  this.clickRootsButton = function() { Ui.ClickAt(this.tree, 9, 9); };
  this.listed = function() {
    var lines = Ui.Rows(this.grid).split("\n"), names = [];
    for (var i = 0; i < lines.length; i++) names.push(lines[i].split("\t")[0]);
    return names.join(";");
  };
  /// The row of this name, from 0, waited for.
  this.row = function(name) {
    var grid = this.grid, row = -1;
    until(function() {
      var lines = Ui.Rows(grid).split("\n");
      for (var i = 0; i < lines.length && row < 0; i++) if (lines[i].indexOf(name) == 0) row = i;
      return row >= 0;
    }, "a row " + name);
    return row;
  };
  this.clickRow = function(name, keys) {
    var window = this.window, grid = this.grid, row = this.row(name);
    Ui.ClickRow(grid, row, keys || 0);
    until(function() { return Ui.FocusClass(window) == "SysListView32"; }, "focus in the list");
    // The list may have had the focus, and the click arrive later, in the midst of what follows.
    if (!keys) until(function() { return Ui.SelectedRow(grid) == row; }, "the row " + name);
  };
  /// The box that is open says this, looks so, and gets this answer.
  this.answer = function(text, looks, button) {
    var box = Ui.Window("TALVERO Notification Server");
    Ui.ChildWithText(box, text);
    checkEqual(Ui.BoxLooks(box), looks, text);
    Ui.Click(Ui.ChildWithText(box, button));
    Ui.WaitGone(box);
  };
  /// What came before was answered without a box: what is typed now arrives, where a box would
  /// have the keyboard, or the window under one be out of use.
  this.noBox = function(what) {
    var find = Ui.Child(this.window, "Edit"), former = Ui.Text(find);
    Ui.Type(find, "~");
    Ui.WaitText(find, former + "~");
    Ui.Press(find, 8);  // Backspace
    Ui.WaitText(find, former);
    check(!Ui.IsShown("TALVERO Notification Server"), "no box: " + what);
  };
  /// Chooses from the node's menu.
  this.fromMenu = function(node, item) {
    Ui.RightClickNode(this.tree, node);
    Ui.Choose(item);
  };
  this.closed = function(editor) {
    Ui.WaitGone(editor);
    var window = this.window;
    until(function() { return Ui.IsEnabled(window); }, "the window is in use again");
  };
}

var kShared = [check, checkEqual, until, query, Book].join(";\n") +
    ";\nvar kEnter = 13, kEscape = 27, kDelete = 46, kControl = 8;\n";

/// Opens the window and lets this user work in it.
function playBook(book, runAt, userId, user) {
  checkEqual(book.Init("", connection, runAt, dialect, log), 1, "Init");
  checkEqual(book.LoadAddressBook(userId), 1, "LoadAddressBook");
  Player.Play(kShared + "(" + user + ")(new Book(), " + runAt + ", " + userId +
              ");");
  Player.Wait();
  var window = Ui.Window("Address Book");
  Ui.Close(window);
  Ui.WaitGone(window);
}
function checkLog() {
  var files = WScript.CreateObject("Scripting.FileSystemObject");
  var written = files.OpenTextFile(log).ReadAll();
  checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
}
