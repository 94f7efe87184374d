// Adds, maps, renames, keeps, leaves, cancels and closes folders, for each dialect word of the host.
var kBox = "TALVERO Notification Server", kMap = "Map this folder to Contacts available in TALVERO";
var kEnter = 13, kEscape = 27, kDown = 40, kControl = 8;

function open(title) {
  var editor = {window: Ui.AnyWindow(title, 30000)};
  editor.name = Ui.Child(editor.window, "Edit");
  editor.list = Ui.Child(editor.window, "ComboBox");
  editor.box = Ui.ChildWithText(editor.window, kMap);
  return editor;
}
function rename(editor, text) {
  Ui.Press(editor.name, 65, kControl);  // Ctrl+A
  Ui.Type(editor.name, text);
  Ui.WaitText(editor.name, text);
}
function answer(message) {
  var box = Ui.AnyWindow(kBox);
  Ui.ChildWithText(box, message);
  Ui.Click(Ui.Child(box, "Button"));
  Ui.WaitGone(box);
}
function check(holds, what) {
  if (!holds) throw new Error(what);
}

function adds(dialect) {
  var editor = open("Add Folder");
  check(Ui.IsEnabled(editor.box), "A new folder can be mapped");
  check(!Ui.IsEnabled(editor.list), "The list is of no use before");
  Ui.Type(editor.name, "   ");
  Ui.Press(editor.name, kEnter);
  answer("Please enter the Folder Name.");
  rename(editor, "Customers");
  Ui.Click(Ui.ChildWithText(editor.window, "OK"));
  answer("A folder with that name already exists. Please use a different folder name.");
  var n = "";
  while (n.length < 50) n += "n";
  Ui.Press(editor.name, 65, kControl);
  Ui.Type(editor.name, n + "cut");
  Ui.WaitText(editor.name, n);
  rename(editor, "O'Brien's \"\u00FCnl\u00EFke\" " + dialect);
  Ui.Press(editor.name, kEnter);
  Ui.WaitGone(editor.window);
}
function maps(dialect) {
  var editor = open("Add Folder");
  rename(editor, "Suppliers " + dialect);
  Ui.Click(editor.box);
  Ui.WaitText(editor.list, "Dealers");
  Ui.Press(editor.name, kEnter);
  answer("Another folder (TALVERO Dealers) is already mapped to the selected Remote Contact " +
         "Category.\r\nYou can map only one folder to each Remote Contact Category.");
  Ui.Press(editor.list, kDown);
  Ui.WaitText(editor.list, "Suppliers");
  Ui.PressAlt(editor.window, 79);  // O
  Ui.WaitGone(editor.window);
}
function renames(dialect) {
  var editor = open("Edit Folder");
  Ui.WaitText(editor.name, "O'Brien's \"\u00FCnl\u00EFke\" " + dialect);
  check(!Ui.IsEnabled(editor.box), "A folder cannot be mapped later");
  rename(editor, "Friends " + dialect);
  Ui.Click(Ui.ChildWithText(editor.window, "OK"));
  Ui.WaitGone(editor.window);
}
function keeps(dialect) {
  var editor = open("Edit Folder");
  Ui.WaitText(editor.name, "Suppliers " + dialect);
  Ui.WaitText(editor.list, "Suppliers");
  check(Ui.IsEnabled(editor.list), "Another category can be chosen");
  Ui.Press(editor.name, kEnter);
  Ui.WaitGone(editor.window);
}
function leaves() {
  var editor = open("Edit Folder");
  rename(editor, "Nobody");
  Ui.Press(editor.name, kEscape);
  Ui.WaitGone(editor.window);
}
function cancels() {
  var editor = open("Add Folder");
  rename(editor, "Nobody");
  Ui.PressAlt(editor.window, 67);  // C
  Ui.WaitGone(editor.window);
}
function closes() {
  var editor = open("Add Folder");
  Ui.Close(editor.window);
  Ui.WaitGone(editor.window);
}

var dialects = ["SQL", "ORACLE", "MYSQL"];
for (var i = 0; i < dialects.length; i++) {
  adds(dialects[i]);
  maps(dialects[i]);
  renames(dialects[i]);
  keeps(dialects[i]);
  leaves();
  cancels();
  closes();
}
